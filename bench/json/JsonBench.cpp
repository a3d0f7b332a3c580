// The JSON model beside raw RapidJSON in the same run: parse and write
// throughput on three document shapes, a keyed read through a handle, and the
// memory a parsed tree holds. Ends with one ratio line per comparison.

#include <malloc.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <vxutility/VXJsonFactory.h>

#include "bench/support/RatioReporter.h"

namespace {

constexpr std::size_t kMinBytes = 1 << 20;

/// Many small objects with strings, like a social feed.
std::string FeedDocument() {
  std::string text = "[";
  for (int i = 0; text.size() < kMinBytes; ++i) {
    if (i > 0) text += ",";
    text += "{\"id\":" + std::to_string(1000000 + i) + ",\"user\":{\"name\":\"user" + std::to_string(i % 977) +
            "\",\"verified\":" + (i % 7 == 0 ? "true" : "false") +
            "},\"text\":\"Posting update number " + std::to_string(i) +
            " with a few words \\u00e9 and a link http:\\/\\/example.org\\/p\\/" + std::to_string(i) +
            "\",\"likes\":" + std::to_string(i * 37 % 5000) + ",\"tags\":[\"news\",\"t" + std::to_string(i % 13) +
            "\"]}";
  }
  return text + "]";
}

std::string Key(int k);

/// Records with many keys each, nested two levels.
std::string KeyedDocument() {
  std::string text = "{\"records\":[";
  for (int i = 0; text.size() < kMinBytes; ++i) {
    if (i > 0) text += ",";
    text += "{";
    for (int k = 0; k < 32; ++k) text += "\"" + Key(k) + "\":" + std::to_string(i * 32 + k) + ",";
    text += "\"detail\":{\"level\":{\"code\":" + std::to_string(i) + ",\"name\":\"r" + std::to_string(i) + "\"}}}";
  }
  return text + "]}";
}

/// A large array of floating-point numbers.
std::string NumbersDocument() {
  std::string text = "[";
  char number[40];
  for (int i = 0; text.size() < kMinBytes; ++i) {
    std::snprintf(number, sizeof number, "%s%.9g", i > 0 ? "," : "", (i * 0.7315) - 1e4 / (i + 1.5));
    text += number;
  }
  return text + "]";
}

const std::string& Document(int shape) {
  static const std::string shapes[] = {FeedDocument(), KeyedDocument(), NumbersDocument()};
  return shapes[shape];
}

const char* const kShapeNames[] = {"feed", "keyed", "numbers"};

using Input = rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream>;

void RawParse(rapidjson::Document& document, const std::string& text) {
  rapidjson::MemoryStream bytes(text.data(), text.size());
  Input input(bytes);
  document.ParseStream<rapidjson::kParseDefaultFlags, rapidjson::UTF8<>>(input);
}

VXSharedPtr<VXJson> OurParse(const std::string& text) {
  return VXJsonFactory::ParseJsonString(text.data(), static_cast<unsigned>(text.size()), nullptr);
}

/// Registers "<name>/ours" and "<name>/raw"; `bytes` > 0 also reports
/// throughput. The ratio reporter prints raw time over our time per case.
template <typename Raw, typename Ours>
void RegisterPair(const std::string& name, Raw raw, Ours ours, std::size_t bytes) {
  const auto add = [&](const std::string& side, auto body) {
    benchmark::RegisterBenchmark((name + "/" + side).c_str(), [=](benchmark::State& state) {
      for (auto _ : state) body();
      if (bytes > 0) state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(bytes));
    });
  };
  add("ours", ours);
  add("raw", raw);
}

void RegisterParse(int shape) {
  const std::string& text = Document(shape);
  RegisterPair(
      std::string("parse/") + kShapeNames[shape],
      [&text] {
        rapidjson::Document document;
        RawParse(document, text);
        benchmark::DoNotOptimize(document.IsArray());
      },
      [&text] {
        VXSharedPtr<VXJson> root = OurParse(text);
        benchmark::DoNotOptimize(root.get());
      },
      text.size());
}

void RegisterBuild(int shape) {
  const std::string& text = Document(shape);
  auto document = std::make_shared<rapidjson::Document>();
  RawParse(*document, text);
  VXSharedPtr<VXJson> root = OurParse(text);
  RegisterPair(
      std::string("build/") + kShapeNames[shape],
      [document] {
        rapidjson::StringBuffer buffer(nullptr, 256);
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document->Accept(writer);
        std::string copy(buffer.GetString(), buffer.GetSize());  // ours hands out a copy too
        benchmark::DoNotOptimize(copy.data());
      },
      [root] {
        CCA_String written = VXJsonFactory::BuildJsonString(root, nullptr);
        benchmark::DoNotOptimize(written.c_str());
      },
      text.size());
}

std::string Key(int k) { return "field_" + std::to_string(k); }

// Keyed reads of one record of the keyed shape, every key in turn: a raw
// FindMember plus read against our handles (GetMember then GetInt, or
// GetIntMember).
void RegisterKeyedRead(bool throughChild) {
  auto document = std::make_shared<rapidjson::Document>();
  RawParse(*document, Document(1));
  const rapidjson::Value* rawRecord = &(*document)["records"][7];
  VXSharedPtr<VXJson> root = OurParse(Document(1));
  VXSharedPtr<const VXJson> record = root->GetMember("records")->GetAt(7);
  auto keys = std::make_shared<std::vector<std::string>>();
  for (int k = 0; k < 32; ++k) keys->push_back(Key(k));
  RegisterPair(
      throughChild ? "keyed-read/GetMember+GetInt" : "keyed-read/GetIntMember",
      [document, rawRecord, keys] {
        long sum = 0;
        for (const std::string& key : *keys) {
          auto it = rawRecord->FindMember(key.c_str());
          if (it != rawRecord->MemberEnd() && it->value.IsInt()) sum += it->value.GetInt();
        }
        benchmark::DoNotOptimize(sum);
      },
      [root, record, keys, throughChild] {
        long sum = 0;
        for (const std::string& key : *keys) {
          sum += throughChild ? record->GetMember(key.c_str())->GetInt() : record->GetIntMember(key.c_str(), 0);
        }
        benchmark::DoNotOptimize(sum);
      },
      0);
}

std::size_t HeapInUse() { return mallinfo2().uordblks; }

/// Heap held by a parsed tree of `text`: raw document, then ours.
void PrintMemoryRatio(int shape) {
  const std::string& text = Document(shape);
  std::size_t before = HeapInUse();
  auto* raw = new rapidjson::Document();
  RawParse(*raw, text);
  const std::size_t rawBytes = HeapInUse() - before;
  delete raw;
  before = HeapInUse();
  VXSharedPtr<VXJson> ours = OurParse(text);
  const std::size_t ourBytes = HeapInUse() - before;
  std::printf("memory/%s: raw %zu bytes, ours %zu bytes, ratio %.3f (limit 1.10)\n", kShapeNames[shape], rawBytes,
              ourBytes, static_cast<double>(ourBytes) / static_cast<double>(rawBytes));
}

}  // namespace

int main(int argc, char** argv) {
  for (int shape = 0; shape < 3; ++shape) RegisterParse(shape);
  for (int shape = 0; shape < 3; ++shape) RegisterBuild(shape);
  RegisterKeyedRead(true);
  RegisterKeyedRead(false);
  const int status = RunBenchmarksWithRatios(argc, argv);
  for (int shape = 0; shape < 3; ++shape) PrintMemoryRatio(shape);
  return status;
}
