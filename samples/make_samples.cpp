#include <cstdio>

#include "platform/process.h"
#include "samples/workspace.h"

namespace {

using namespace veldra;

/// Prints messages and answers every question with a no: nothing is asked while a workspace is made.
class CNoQuestions : public CQuestions {
 public:
  void Message(const SMessage& message) override {
    std::fprintf(stderr, "%s: %s %s\n", message.caption.c_str(), message.text.c_str(), message.details.c_str());
  }
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kNo; }
  EAnswer AskYesNoCancel(const SMessage&) override { return EAnswer::kCancel; }
  std::optional<std::string> AskOpenFile(const SFilePrompt&) override { return std::nullopt; }
  std::optional<SSavePath> AskSaveFile(const SFilePrompt&) override { return std::nullopt; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t) override { return {}; }
  SUnusedVerticesAnswer AskUnusedVertices() override { return {}; }
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override { return {}; }
  std::optional<double> AskScaleFactor(double) override { return std::nullopt; }
  std::unique_ptr<CProgress> BeginWork(const std::string&, bool) override {
    return std::make_unique<CSilentProgress>();
  }

 private:
  class CSilentProgress : public CProgress {
   public:
    bool Step(uint64_t, uint64_t) override { return true; }
  };
};

}  // namespace

int main(int argc, char** argv) {
  const auto arguments = CommandLineArguments(argc, argv);
  if (arguments.size() != 1 || arguments[0].empty() || arguments[0][0] == '-') {
    std::fprintf(stderr, "usage: make_samples DIR\nWrites a sample workspace for Veldra into the folder DIR.\n");
    return 2;
  }
  CNoQuestions questions;
  SError error;
  if (samples::WriteWorkspace(arguments[0], questions, &error)) return 0;
  std::fprintf(stderr, "make_samples: %s\n", error.what.c_str());
  return 1;
}
