#pragma once

#include "model/binfile.h"

namespace veldra::fuzz {

/// Says yes to everything, so that a load gets as far as it can; missing textures become blank ones.
class CFuzzQuestions : public CQuestions {
 public:
  void Message(const SMessage&) override {}
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kYes; }
  EAnswer AskYesNoCancel(const SMessage&) override { return EAnswer::kYes; }
  std::optional<std::string> AskOpenFile(const SFilePrompt&) override { return std::nullopt; }
  std::optional<SSavePath> AskSaveFile(const SFilePrompt&) override { return std::nullopt; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t type) override {
    using EChoice = SUnknownFaceAnswer::EChoice;
    return {type % 4 == 0 ? EChoice::kIgnore : EChoice::kChange, kFaceTypes[type % kFaceTypes.size()]};
  }
  SUnusedVerticesAnswer AskUnusedVertices() override { return {}; }
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {STextureAnswer::EChoice::kBlank, "", 64};
  }
  std::optional<double> AskScaleFactor(double offered) override { return offered; }
  std::unique_ptr<CProgress> BeginWork(const std::string&, bool) override { return std::make_unique<CEndless>(); }

 private:
  class CEndless : public CProgress {
    bool Step(uint64_t, uint64_t) override { return true; }
  };
};

/// What one input is loaded with. No textures are on the disk.
struct SFuzzLoad {
  CFuzzQuestions questions;
  CTextureStore store{questions, GreyRamp()};
  CTextureFinder finder{store, questions, "/nonexistent"};
  SLoadContext context{finder, questions};
};

}  // namespace veldra::fuzz
