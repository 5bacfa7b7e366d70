// Runs every registered conversion and prints, after Google Benchmark's own
// lines, a table of lumcc against each peer on the same work.
#include <cstdio>
#include <map>

#include "bench_support.h"

namespace lumbench {

void add(const std::string& name, const std::string& who, MakeWork make) {
  for (Size s : kSizes) {
    const std::string full = name + "/" + who + "/" + std::to_string(s.w) + "x" + std::to_string(s.h);
    benchmark::RegisterBenchmark(full.c_str(), [make, s](benchmark::State& st) {
      Work w = make(s);
      for (auto _ : st) w();
      st.counters["MP/s"] = benchmark::Counter(double(s.w) * s.h * double(st.iterations()) / 1e6,
                                               benchmark::Counter::kIsRate);
    })->Unit(benchmark::kMicrosecond);
  }
}

namespace {
// Collects MP/s per "<case>/<who>/<size>" and prints the side-by-side table.
class SideBySide : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& runs) override {
    ConsoleReporter::ReportRuns(runs);
    for (const Run& r : runs) {
      auto it = r.counters.find("MP/s");
      if (it == r.counters.end()) continue;
      const std::string n = r.benchmark_name();
      const size_t a = n.find('/'), b = n.find('/', a + 1);
      if (a == std::string::npos || b == std::string::npos) continue;
      const std::string key = n.substr(0, a) + " " + n.substr(b + 1);
      table_[key][n.substr(a + 1, b - a - 1)] = it->second.value;
    }
  }
  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n%-44s %10s  %-10s %10s %7s\n", "conversion and size", "lumcc MP/s", "peer", "peer MP/s", "ratio");
    for (const auto& [key, whos] : table_) {
      auto self = whos.find("lumcc");
      if (self == whos.end()) continue;
      bool any = false;
      for (const auto& [who, mps] : whos) {
        if (who == "lumcc") continue;
        any = true;
        std::printf("%-44s %10.0f  %-10s %10.0f %7.2f\n", key.c_str(), self->second, who.c_str(), mps,
                    self->second / mps);
      }
      if (!any) std::printf("%-44s %10.0f\n", key.c_str(), self->second);
    }
  }

 private:
  std::map<std::string, std::map<std::string, double>> table_;
};
}  // namespace
}  // namespace lumbench

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
  lumbench::SideBySide reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
  benchmark::Shutdown();
  return 0;
}
