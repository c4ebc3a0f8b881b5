#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <vector>

namespace veldra::bench {

/// Does its work once and returns the seconds that the measured part took.
using Work = std::function<double()>;

/// The seconds that DO_IT takes.
template <typename Action>
double Seconds(const Action& do_it) {
  const auto start = std::chrono::steady_clock::now();
  do_it();
  return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// Ends the run where not DONE: figures of something that failed mean nothing.
void Require(bool done, const char* what);

/// What a measured time is compared with.
struct SFloor {
  std::string label;
  Work work;
  double aim = 0;  ///< the largest ratio that is wanted; 0 where none is
};

/// Has WORK measured under NAME, and beside it, in the same run, each of FLOORS.
void Compare(const std::string& name, Work work, std::vector<SFloor> floors);

/// Has WORK measured under NAME and compared with what was registered as OTHER before.
void CompareWith(const std::string& name, Work work, const std::string& other, double aim);

/// Runs everything registered and prints a line for each comparison:
/// "load 1M   123.0 ms   read the file   20.0 ms   ratio 6.15 (aim 12)". The times are the best of several runs, as
/// other programs on the machine can only make them longer.
void RunComparisons(int argc, char** argv);

void AddArchiveComparisons();
void AddInterchangeComparisons();
void AddListComparisons();
void AddMappingComparisons();
void AddModelComparisons();
void AddStepComparisons();
void AddTextureComparisons();
void AddRendererComparisons();

}  // namespace veldra::bench
