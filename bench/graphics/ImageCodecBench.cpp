// PNG and JPEG decoding and encoding of a 2-megapixel photo-like image through
// ImageDecode/ImageEncode, beside libpng and libjpeg-turbo called directly
// with the same settings (B, G, R rows; libpng defaults; JPEG quality 90).

#include <benchmark/benchmark.h>

#include <png.h>
#include <stdio.h>
#include <jpeglib.h>
#ifdef VXBENCH_HAVE_SPNG
#include <spng.h>
#endif

#include <cmath>
#include <csetjmp>
#include <cstdint>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include <vxutility/ImageCodec.h>

#include "bench/support/RatioReporter.h"

namespace {

constexpr int kWidth = 1600, kHeight = 1250;  // 2 megapixels

/// Smooth shading, a few hard edges and sensor-like noise, as in a photo.
std::unique_ptr<CCA_Dib> MakePhoto() {
  std::unique_ptr<CCA_Dib> dib(new CCA_Dib);
  dib->Create(kWidth, kHeight, CA_DibFormat_Rgb24);
  std::uint32_t seed = 12345;
  for (int y = 0; y < kHeight; ++y) {
    std::uint8_t* row = dib->GetScanline(y);
    for (int x = 0; x < kWidth; ++x) {
      seed = seed * 1664525u + 1013904223u;
      const int noise = int(seed >> 28) - 8;
      const double shade = 0.5 + 0.5 * std::sin(x * 0.004 + y * 0.003);
      const bool edge = ((x / 200) + (y / 150)) % 3 == 0;
      const int base = int(shade * 180) + (edge ? 60 : 0);
      auto clamp = [](int v) { return std::uint8_t(v < 0 ? 0 : v > 255 ? 255 : v); };
      row[x * 3 + 0] = clamp(base / 2 + noise + y / 10);
      row[x * 3 + 1] = clamp(base + noise);
      row[x * 3 + 2] = clamp(base + 40 - x / 20 + noise);
    }
  }
  return dib;
}

const CCA_Dib& Photo() {
  static std::unique_ptr<CCA_Dib> photo = MakePhoto();
  return *photo;
}

std::string Encoded(CA_ImageFormat format) {
  CCA_MemoryStreamWriter writer;
  ImageEncode(const_cast<CCA_Dib*>(&Photo()), format, &writer);
  return std::string(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
}

// ---- libpng directly ----

struct PngInput {
  const std::string* bytes;
  std::size_t at;
};

void PngRead(png_structp png, png_bytep data, size_t length) {
  PngInput* in = static_cast<PngInput*>(png_get_io_ptr(png));
  if (length > in->bytes->size() - in->at) png_error(png, "short");
  std::memcpy(data, in->bytes->data() + in->at, length);
  in->at += length;
}

bool LibpngDecode(const std::string& bytes, std::vector<std::uint8_t>& pixels) {
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  PngInput in{&bytes, 0};
  bool ok = false;
  if (setjmp(png_jmpbuf(png)) == 0) {
    png_set_read_fn(png, &in, PngRead);
    png_read_info(png, info);
    png_set_bgr(png);
    png_read_update_info(png, info);
    const size_t rowBytes = png_get_rowbytes(png, info);
    const png_uint_32 height = png_get_image_height(png, info);
    pixels.resize(rowBytes * height);
    for (png_uint_32 y = 0; y < height; ++y) png_read_row(png, pixels.data() + y * rowBytes, nullptr);
    png_read_end(png, nullptr);
    ok = true;
  }
  png_destroy_read_struct(&png, &info, nullptr);
  return ok;
}

void PngWrite(png_structp png, png_bytep data, size_t length) {
  static_cast<CCA_MemoryStreamWriter*>(png_get_io_ptr(png))->Write(data, length);
}

bool LibpngEncode(const CCA_Dib& dib, CCA_MemoryStreamWriter& out) {
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
  png_infop info = png_create_info_struct(png);
  bool ok = false;
  if (setjmp(png_jmpbuf(png)) == 0) {
    png_set_write_fn(png, &out, PngWrite, nullptr);
    png_set_IHDR(png, info, dib.GetWidth(), dib.GetHeight(), 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                 PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_bgr(png);
    for (int y = 0; y < dib.GetHeight(); ++y) png_write_row(png, dib.GetScanline(y));
    png_write_end(png, nullptr);
    ok = true;
  }
  png_destroy_write_struct(&png, &info);
  return ok;
}

#ifdef VXBENCH_HAVE_SPNG
// libspng, the other PNG decoder Debian ships, in its own byte order (R, G,
// B): what a switch to it could gain at best.
bool SpngDecode(const std::string& bytes, std::vector<std::uint8_t>& pixels) {
  spng_ctx* ctx = spng_ctx_new(0);
  size_t size = 0;
  bool ok = spng_set_png_buffer(ctx, bytes.data(), bytes.size()) == 0 &&
            spng_decoded_image_size(ctx, SPNG_FMT_RGB8, &size) == 0;
  if (ok) {
    pixels.resize(size);
    ok = spng_decode_image(ctx, pixels.data(), size, SPNG_FMT_RGB8, 0) == 0;
  }
  spng_ctx_free(ctx);
  return ok;
}

void PngDecodeSpng(benchmark::State& state) {
  const std::string bytes = Encoded(CA_ImageFormat_PNG);
  for (auto _ : state) {
    std::vector<std::uint8_t> pixels;
    if (!SpngDecode(bytes, pixels)) state.SkipWithError("decode failed");
    benchmark::DoNotOptimize(pixels.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}
BENCHMARK(PngDecodeSpng)->Name("png_decode/libspng")->Unit(benchmark::kMillisecond);
#endif

// ---- libjpeg-turbo directly ----

bool LibjpegDecode(const std::string& bytes, std::vector<std::uint8_t>& pixels) {
  jpeg_decompress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_decompress(&info);
  jpeg_mem_src(&info, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
  jpeg_read_header(&info, TRUE);
  info.out_color_space = JCS_EXT_BGR;
  jpeg_start_decompress(&info);
  const std::size_t pitch = (info.output_width * 3 + 3) / 4 * 4;
  pixels.resize(pitch * info.output_height);
  while (info.output_scanline < info.output_height) {
    JSAMPROW row = pixels.data() + pitch * info.output_scanline;
    jpeg_read_scanlines(&info, &row, 1);
  }
  jpeg_finish_decompress(&info);
  jpeg_destroy_decompress(&info);
  return true;
}

std::size_t LibjpegEncode(const CCA_Dib& dib) {
  jpeg_compress_struct info;
  jpeg_error_mgr errors;
  info.err = jpeg_std_error(&errors);
  jpeg_create_compress(&info);
  unsigned char* buffer = nullptr;
  unsigned long size = 0;
  jpeg_mem_dest(&info, &buffer, &size);
  info.image_width = dib.GetWidth();
  info.image_height = dib.GetHeight();
  info.input_components = 3;
  info.in_color_space = JCS_EXT_BGR;
  jpeg_set_defaults(&info);
  jpeg_set_quality(&info, 90, TRUE);
  jpeg_start_compress(&info, TRUE);
  while (info.next_scanline < info.image_height) {
    JSAMPROW row = const_cast<JSAMPROW>(dib.GetScanline(info.next_scanline));
    jpeg_write_scanlines(&info, &row, 1);
  }
  jpeg_finish_compress(&info);
  jpeg_destroy_compress(&info);
  free(buffer);
  return size;
}

// ---- cases ----

void Decode(benchmark::State& state, CA_ImageFormat format) {
  const std::string bytes = Encoded(format);
  for (auto _ : state) {
    CCA_MemoryStreamReader reader(bytes.data(), bytes.size());
    std::unique_ptr<CCA_Dib> dib(ImageDecode(&reader));
    if (!dib) state.SkipWithError("decode failed");
    benchmark::DoNotOptimize(dib.get());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void Encode(benchmark::State& state, CA_ImageFormat format) {
  for (auto _ : state) {
    CCA_MemoryStreamWriter writer;
    if (ImageEncode(const_cast<CCA_Dib*>(&Photo()), format, &writer) == 0) state.SkipWithError("encode failed");
    benchmark::DoNotOptimize(writer.GetData());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void PngDecodeDirect(benchmark::State& state) {
  const std::string bytes = Encoded(CA_ImageFormat_PNG);
  for (auto _ : state) {
    // A fresh buffer each time, as ImageDecode makes a fresh bitmap.
    std::vector<std::uint8_t> pixels;
    if (!LibpngDecode(bytes, pixels)) state.SkipWithError("decode failed");
    benchmark::DoNotOptimize(pixels.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void PngEncodeDirect(benchmark::State& state) {
  for (auto _ : state) {
    CCA_MemoryStreamWriter writer;
    if (!LibpngEncode(Photo(), writer)) state.SkipWithError("encode failed");
    benchmark::DoNotOptimize(writer.GetData());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void JpegDecodeDirect(benchmark::State& state) {
  const std::string bytes = Encoded(CA_ImageFormat_JPEG);
  for (auto _ : state) {
    std::vector<std::uint8_t> pixels;
    LibjpegDecode(bytes, pixels);
    benchmark::DoNotOptimize(pixels.data());
  }
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

void JpegEncodeDirect(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(LibjpegEncode(Photo()));
  state.SetItemsProcessed(state.iterations() * kWidth * kHeight);
}

BENCHMARK_CAPTURE(Decode, png, CA_ImageFormat_PNG)->Name("png_decode/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(PngDecodeDirect)->Name("png_decode/libpng")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Encode, png, CA_ImageFormat_PNG)->Name("png_encode/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(PngEncodeDirect)->Name("png_encode/libpng")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Decode, jpeg, CA_ImageFormat_JPEG)->Name("jpeg_decode/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(JpegDecodeDirect)->Name("jpeg_decode/libjpeg")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Encode, jpeg, CA_ImageFormat_JPEG)->Name("jpeg_encode/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(JpegEncodeDirect)->Name("jpeg_encode/libjpeg")->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) { return RunBenchmarksWithRatios(argc, argv); }
