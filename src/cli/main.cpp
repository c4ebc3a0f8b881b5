#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>

#include "cli/cli.h"
#include "cli/commandrow.h"
#include "platform/endsignals.h"
#include "platform/process.h"
#include "platform/temporaries.h"

namespace {

bool IsOutOfMemory() try {
  if (const auto thrown = std::current_exception()) std::rethrow_exception(thrown);
  return false;
} catch (const std::bad_alloc&) {
  return true;
} catch (...) {
  return false;
}

/// Libraries may take memory where no exception may leave, so that RunCli never hears of it.
void EndWithoutMemory() {
  if (!IsOutOfMemory()) std::abort();
  veldra::RemoveOpenTemporaries();
  std::cerr << veldra::kNotEnoughMemoryText;
  std::_Exit(veldra::EExitStatus::kFailed);
}

}  // namespace

int main(int argc, char** argv) {
  std::set_terminate(EndWithoutMemory);
  veldra::SetBinaryStandardOutput();
  veldra::TidyOnEndSignals();
  return veldra::RunCli(veldra::CommandLineArguments(argc, argv), std::cout, std::cerr);
}
