#include <iostream>

#include "cli/cli.h"
#include "platform/process.h"

int main(int argc, char** argv) {
  veldra::SetBinaryStandardOutput();
  return veldra::RunCli(veldra::CommandLineArguments(argc, argv), std::cout, std::cerr);
}
