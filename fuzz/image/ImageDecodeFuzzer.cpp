// One decoder per target (FUZZ_FORMAT). An input that starts with the
// format's signature is decoded as it is; any other input is spliced into a
// small valid file made by our own encoder (first two bytes: where), so the
// fuzzer reaches deep into the format without a corpus. A decoded bitmap
// must match the size Open reported and must encode again.

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string>

#include <vxbase/Context.h>

namespace {

CCA_CodecFactory* Factory() { return CCA_Context::Get()->GetCodecFactory(); }

/// A 23 x 17 image with colour ramps and a few transparent pixels.
std::string MakeSeed() {
  CCA_Dib dib;
  dib.Create(23, 17, CA_DibFormat_Argb32);
  for (int y = 0; y < 17; ++y) {
    for (int x = 0; x < 23; ++x) dib.SetPixel(x, y, ((x + y) % 7 ? 0xFF000000u : 0u) | x * 11u << 16 | y * 15u << 8 | 0x40u);
  }
  std::unique_ptr<ICA_ImageEncoder> encoder(Factory()->CreateImageEncoder(FUZZ_FORMAT));
  CCA_MemoryStreamWriter writer;
  if (!encoder || !encoder->Encode(&dib, &writer)) std::abort();
  return std::string(reinterpret_cast<const char*>(writer.GetData()), writer.GetSize());
}

std::string Splice(const std::uint8_t* data, std::size_t size) {
  static const std::string seed = MakeSeed();
  std::string file = seed;
  if (size < 2) return file;
  const std::size_t at = (std::size_t(data[0]) << 8 | data[1]) % file.size();
  // Overwrites from `at`; a longer input runs past the seed's end.
  file.resize(at);
  file.append(reinterpret_cast<const char*>(data + 2), size - 2);
  if (file.size() < seed.size()) file.append(seed, file.size(), std::string::npos);
  return file;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size > (1u << 20)) return 0;
  std::string file(reinterpret_cast<const char*>(data), size);
  CCA_MemoryStreamReader probe(file.data(), file.size());
  if (CA_GetImageFormat(&probe) != FUZZ_FORMAT) file = Splice(data, size);

  CCA_MemoryStreamReader reader(file.data(), file.size());
  std::unique_ptr<ICA_ImageDecoder> decoder(Factory()->CreateImageDecoder(FUZZ_FORMAT));
  if (!decoder || decoder->Open(&reader, 1) == 0) return 0;
  std::unique_ptr<CCA_Dib> dib(decoder->DecodeFrame(0, 0, 0));
  if (!dib) return 0;
  if (dib->GetWidth() != decoder->GetWidth() || dib->GetHeight() != decoder->GetHeight() ||
      dib->GetFormat() != decoder->GetDibFormat()) {
    std::abort();
  }
  if (std::int64_t(dib->GetWidth()) * dib->GetHeight() <= (1 << 16)) {
    std::unique_ptr<ICA_ImageEncoder> encoder(Factory()->CreateImageEncoder(FUZZ_FORMAT));
    CCA_MemoryStreamWriter writer;
    if (encoder->Encode(dib.get(), &writer) == 0) std::abort();
  }
  return 0;
}
