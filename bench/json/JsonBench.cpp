// The JSON model beside raw RapidJSON in the same run: parse and write
// throughput on three document shapes, a keyed read through a handle, and the
// memory a parsed tree holds. Ends with one ratio line per comparison.

#include <malloc.h>
#include <time.h>

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

double ThreadSeconds() {
  timespec now;
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
  return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

template <typename Action>
double TimeOf(Action& action) {
  const double start = ThreadSeconds();
  action();
  return ThreadSeconds() - start;
}

/// Runs `raw` and `ours` alternately, each timed on this thread's CPU clock
/// and each going first every other time, so that other load on the shared
/// machine and warm caches weigh on both alike. Reports both speeds and the
/// ratio of our time to the raw time.
template <typename Raw, typename Ours>
void RunPaired(benchmark::State& state, Raw raw, Ours ours, double bytesPerRun) {
  double rawSeconds = 0;
  double ourSeconds = 0;
  bool rawFirst = true;
  for (auto _ : state) {
    if (rawFirst) {
      rawSeconds += TimeOf(raw);
      ourSeconds += TimeOf(ours);
    } else {
      ourSeconds += TimeOf(ours);
      rawSeconds += TimeOf(raw);
    }
    rawFirst = !rawFirst;
  }
  const double runs = static_cast<double>(state.iterations());
  if (bytesPerRun > 0) {
    state.counters["raw_MB/s"] = bytesPerRun * runs / rawSeconds / 1e6;
    state.counters["ours_MB/s"] = bytesPerRun * runs / ourSeconds / 1e6;
  } else {
    state.counters["raw_us"] = rawSeconds / runs * 1e6;
    state.counters["ours_us"] = ourSeconds / runs * 1e6;
  }
  state.counters["time_ratio"] = ourSeconds / rawSeconds;
}

void BM_Parse(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  RunPaired(
      state,
      [&] {
        rapidjson::Document document;
        RawParse(document, text);
        benchmark::DoNotOptimize(document.IsArray());
      },
      [&] {
        VXSharedPtr<VXJson> root = OurParse(text);
        benchmark::DoNotOptimize(root.get());
      },
      static_cast<double>(text.size()));
}

void BM_Build(benchmark::State& state) {
  const std::string& text = Document(static_cast<int>(state.range(0)));
  rapidjson::Document document;
  RawParse(document, text);
  VXSharedPtr<VXJson> root = OurParse(text);
  RunPaired(
      state,
      [&] {
        rapidjson::StringBuffer buffer(nullptr, 256);
        rapidjson::Writer<rapidjson::StringBuffer> writer(buffer);
        document.Accept(writer);
        std::string copy(buffer.GetString(), buffer.GetSize());  // ours hands out a copy too
        benchmark::DoNotOptimize(copy.data());
      },
      [&] {
        CCA_String written = VXJsonFactory::BuildJsonString(root, nullptr);
        benchmark::DoNotOptimize(written.c_str());
      },
      static_cast<double>(text.size()));
}

std::string Key(int k) { return "field_" + std::to_string(k); }

// Keyed reads of one record of the keyed shape, every key in turn: a raw
// FindMember plus read against our handles (argument 0: GetMember then
// GetInt, 1: GetIntMember).
void BM_KeyedRead(benchmark::State& state) {
  rapidjson::Document document;
  RawParse(document, Document(1));
  const rapidjson::Value& rawRecord = document["records"][7];
  VXSharedPtr<VXJson> root = OurParse(Document(1));
  VXSharedPtr<const VXJson> record = root->GetMember("records")->GetAt(7);
  std::string keys[32];
  for (int k = 0; k < 32; ++k) keys[k] = Key(k);
  const bool throughChild = state.range(0) == 0;
  RunPaired(
      state,
      [&] {
        long sum = 0;
        for (const std::string& key : keys) {
          auto it = rawRecord.FindMember(key.c_str());
          if (it != rawRecord.MemberEnd() && it->value.IsInt()) sum += it->value.GetInt();
        }
        benchmark::DoNotOptimize(sum);
      },
      [&] {
        long sum = 0;
        for (const std::string& key : keys) {
          sum += throughChild ? record->GetMember(key.c_str())->GetInt() : record->GetIntMember(key.c_str(), 0);
        }
        benchmark::DoNotOptimize(sum);
      },
      0);
}

BENCHMARK(BM_Parse)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Build)->DenseRange(0, 2)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_KeyedRead)->DenseRange(0, 1);

/// Keeps each run's time ratio, by name, to print them at the end.
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
      auto ratio = run.counters.find("time_ratio");
      if (ratio != run.counters.end()) m_ratios[name] = ratio->second.value;
    }
    ConsoleReporter::ReportRuns(runs);
  }
  double Ratio(const std::string& name) const {
    auto it = m_ratios.find(name);
    return it == m_ratios.end() ? 0.0 : it->second;
  }

 private:
  std::map<std::string, double> m_ratios;
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
                1.0 / reporter.Ratio("BM_Parse" + arg));
    std::printf("build/%s: ours %.3fx raw throughput (limit 0.90)\n", kShapeNames[shape],
                1.0 / reporter.Ratio("BM_Build" + arg));
  }
  // Time ratios: ours over raw (at most 3).
  std::printf("keyed read GetMember+GetInt: %.2fx raw time (limit 3)\n", reporter.Ratio("BM_KeyedRead/0"));
  std::printf("keyed read GetIntMember: %.2fx raw time (limit 3)\n", reporter.Ratio("BM_KeyedRead/1"));
  for (int shape = 0; shape < 3; ++shape) PrintMemoryRatio(shape);
  benchmark::Shutdown();
  return 0;
}
