#include <iostream>

#include "cli/cli.h"
#include "platform/endsignals.h"
#include "platform/process.h"

int main(int argc, char** argv) {
  veldra::SetBinaryStandardOutput();
  veldra::TidyOnEndSignals();
  return veldra::RunCli(veldra::CommandLineArguments(argc, argv), std::cout, std::cerr);
}
