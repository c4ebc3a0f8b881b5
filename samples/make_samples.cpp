#include <cstdio>

#include "platform/process.h"
#include "platform/unattendedquestions.h"
#include "samples/workspace.h"

using namespace veldra;

int main(int argc, char** argv) {
  const auto arguments = CommandLineArguments(argc, argv);
  if (arguments.size() != 1 || arguments[0].empty() || arguments[0][0] == '-') {
    std::fprintf(stderr, "usage: make_samples DIR\nWrites a sample workspace for Veldra into the folder DIR.\n");
    return 2;
  }
  CUnattendedQuestions questions;
  SError error;
  if (samples::WriteWorkspace(arguments[0], questions, &error)) return 0;
  std::fprintf(stderr, "make_samples: %s\n", error.what.c_str());
  return 1;
}
