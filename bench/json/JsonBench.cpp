// The JSON model beside raw RapidJSON in the same run: parse and write
// throughput on three document shapes, a keyed read through a handle, and the
// memory a parsed tree holds. Ends with one ratio line per comparison.

#include <malloc.h>

#include <cstdio>
#include <map>
#include <string>

#include <benchmark/benchmark.h>
#include <rapidjson/document.h>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/stringbuffer.h>
#include <rapidjson/writer.h>

#include <vxutility/VXJsonFactory.h>

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

std::string Key(int k) { return "field_" + std::to_string(k); }

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

void BM_Parse_Raw(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    rapidjson::Document document;
    RawParse(document, text);
    benchmark::DoNotOptimize(document.IsArray());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void BM_Parse_Ours(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  for (auto _ : state) {
    VXSharedPtr<VXJson> root = OurParse(text);
    benchmark::DoNotOptimize(root.get());
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}

void BM_Build_Raw(benchmark::State& state) {
  rapidjson::Document document;
  RawParse(document, Document(static_cast<int>(state.range(0))));
  std::size_t bytes = 0;
  for (auto _ : state) {
    rapidjson::StringBuffer buffer(nullptr, 256);
    rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
    document.Accept(writer);
    std::string copy(buffer.GetString(), buffer.GetSize());  // ours hands out a copy too
    bytes += copy.size();
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

void BM_Build_Ours(benchmark::State& state) {
  VXSharedPtr<VXJson> root = OurParse(Document(static_cast<int>(state.range(0))));
  std::size_t bytes = 0;
  for (auto _ : state) {
    CCA_String text = VXJsonFactory::BuildJsonString(root, nullptr);
    bytes += static_cast<std::size_t>(text.GetLength());
  }
  state.SetBytesProcessed(static_cast<int64_t>(bytes));
}

// Keyed reads: one record of the keyed shape, every key in turn.
void BM_KeyedRead_Raw(benchmark::State& state) {
  rapidjson::Document document;
  RawParse(document, Document(1));
  const rapidjson::Value& record = document["records"][7];
  std::string keys[32];
  for (int k = 0; k < 32; ++k) keys[k] = Key(k);
  for (auto _ : state) {
    long sum = 0;
    for (const std::string& key : keys) {
      auto it = record.FindMember(key.c_str());
      if (it != record.MemberEnd() && it->value.IsInt()) sum += it->value.GetInt();
    }
    benchmark::DoNotOptimize(sum);
  }
}

/// One record of the keyed shape, held through our handles, and its keys.
struct OurRecord {
  OurRecord() : root(OurParse(Document(1))), record(root->GetMember("records")->GetAt(7)) {
    for (int k = 0; k < 32; ++k) keys[k] = Key(k);
  }
  VXSharedPtr<VXJson> root;
  VXSharedPtr<const VXJson> record;
  std::string keys[32];
};

void BM_KeyedRead_Ours(benchmark::State& state) {
  const OurRecord fixture;
  for (auto _ : state) {
    long sum = 0;
    for (const std::string& key : fixture.keys) sum += fixture.record->GetMember(key.c_str())->GetInt();
    benchmark::DoNotOptimize(sum);
  }
}

void BM_KeyedReadDefault_Ours(benchmark::State& state) {
  const OurRecord fixture;
  for (auto _ : state) {
    long sum = 0;
    for (const std::string& key : fixture.keys) sum += fixture.record->GetIntMember(key.c_str(), 0);
    benchmark::DoNotOptimize(sum);
  }
}

BENCHMARK(BM_Parse_Raw)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Parse_Ours)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build_Raw)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build_Ours)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_KeyedRead_Raw);
BENCHMARK(BM_KeyedRead_Ours);
BENCHMARK(BM_KeyedReadDefault_Ours);

/// Keeps each run's time per iteration, by name, to print the ratios.
class RatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    // With repetitions, the mean (reported after the single runs) wins.
    for (const Run& run : runs) {
      std::string name = run.benchmark_name();
      const std::string mean = "_mean";
      if (run.run_type == Run::RT_Aggregate) {
        if (name.size() <= mean.size() || name.compare(name.size() - mean.size(), mean.size(), mean) != 0) continue;
        name.erase(name.size() - mean.size());
      }
      m_times[name] = run.GetAdjustedCPUTime();  // CPU time: the machine is shared
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double Time(const std::string& name) const {
    auto it = m_times.find(name);
    return it == m_times.end() ? 0.0 : it->second;
  }

 private:
  std::map<std::string, double> m_times;
};

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
  benchmark::Initialize(&argc, argv);
  RatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  for (int shape = 0; shape < 3; ++shape) {
    const std::string arg = "/" + std::to_string(shape);
    // Throughput ratios: ours over raw (at least 0.90).
    std::printf("parse/%s: ours %.3fx raw throughput (limit 0.90)\n", kShapeNames[shape],
                reporter.Time("BM_Parse_Raw" + arg) / reporter.Time("BM_Parse_Ours" + arg));
    std::printf("build/%s: ours %.3fx raw throughput (limit 0.90)\n", kShapeNames[shape],
                reporter.Time("BM_Build_Raw" + arg) / reporter.Time("BM_Build_Ours" + arg));
  }
  // Time ratios: ours over raw (at most 3).
  std::printf("keyed read GetMember+GetInt: %.2fx raw time (limit 3)\n",
              reporter.Time("BM_KeyedRead_Ours") / reporter.Time("BM_KeyedRead_Raw"));
  std::printf("keyed read GetIntMember: %.2fx raw time (limit 3)\n",
              reporter.Time("BM_KeyedReadDefault_Ours") / reporter.Time("BM_KeyedRead_Raw"));
  for (int shape = 0; shape < 3; ++shape) PrintMemoryRatio(shape);
  benchmark::Shutdown();
  return 0;
}
