#include "comparison.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

namespace veldra::bench {

namespace {

struct SRow {
  std::string name;
  std::string floor;
  std::string label;
  double aim;
};

std::vector<SRow>& Rows() {
  static std::vector<SRow> rows;
  return rows;
}

/// Keeps the best time of each benchmark.
class CBestTimes : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context&) override { return true; }

  void ReportRuns(const std::vector<Run>& runs) override {
    for (const Run& run : runs) {
      if (run.run_type != Run::RT_Iteration || run.error_occurred) continue;
      const double seconds = run.real_accumulated_time / static_cast<double>(run.iterations);
      double& best = best_.try_emplace(run.run_name.function_name, seconds).first->second;
      best = std::min(best, seconds);
    }
    std::fprintf(stderr, ".");
  }

  void Print() const {
    std::printf("\n%-16s %12s   %-24s %12s   %8s\n", "", "time", "floor", "time", "ratio");
    for (const SRow& row : Rows())
      PrintRow(row);
  }

 private:
  void PrintRow(const SRow& row) const {
    const auto time = best_.find(row.name);
    const auto floor = best_.find(row.floor);
    if (time == best_.end() || floor == best_.end()) return;
    const double ratio = time->second / floor->second;
    std::printf("%-16s %9.3f ms   %-24s %9.3f ms   %8.2f", row.name.c_str(), time->second * 1e3, row.label.c_str(),
                floor->second * 1e3, ratio);
    if (row.aim > 0) std::printf("  (aim %g)%s", row.aim, ratio > row.aim ? "  MISSED" : "");
    std::printf("\n");
  }

  std::map<std::string, double> best_;
};

void Register(const std::string& name, Work work) {
  benchmark::RegisterBenchmark(name.c_str(),
                               [work = std::move(work)](benchmark::State& state) {
                                 for ([[maybe_unused]] auto _ : state)
                                   state.SetIterationTime(work());
                               })
      ->UseManualTime()
      ->MinTime(0.05)
      ->Repetitions(5);
}

}  // namespace

void Require(bool done, const char* what) {
  if (done) return;
  std::fprintf(stderr, "%s failed\n", what);
  std::exit(1);
}

void Compare(const std::string& name, Work work, std::vector<SFloor> floors) {
  Register(name, std::move(work));
  for (SFloor& floor : floors) {
    const std::string floor_name = name + ": " + floor.label;
    Register(floor_name, std::move(floor.work));
    Rows().push_back({name, floor_name, floor.label, floor.aim});
  }
}

void CompareWith(const std::string& name, Work work, const std::string& other, double aim) {
  Register(name, std::move(work));
  Rows().push_back({name, other, other, aim});
}

void RunComparisons(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  CBestTimes best;
  benchmark::RunSpecifiedBenchmarks(&best);
  best.Print();
}

}  // namespace veldra::bench
