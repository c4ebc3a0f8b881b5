#pragma once

#include "model/binfile.h"
#include "platform/unattendedquestions.h"

namespace veldra::fuzz {

/// Says yes to everything, so that a load gets as far as it can; missing textures become blank ones.
class CFuzzQuestions : public CUnattendedQuestions {
 public:
  void Message(const SMessage&) override {}
  EAnswer AskYesNo(const SMessage&) override { return EAnswer::kYes; }
  EAnswer AskYesNoCancel(const SMessage&) override { return EAnswer::kYes; }
  SUnknownFaceAnswer AskUnknownFace(uint32_t type) override {
    using EChoice = SUnknownFaceAnswer::EChoice;
    return {type % 4 == 0 ? EChoice::kIgnore : EChoice::kChange, kFaceTypes[type % kFaceTypes.size()]};
  }
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {STextureAnswer::EChoice::kBlank, "", 64};
  }
  std::optional<double> AskScaleFactor(double offered) override { return offered; }
};

/// What one input is loaded with. No textures are on the disk.
struct SFuzzLoad {
  CFuzzQuestions questions;
  CTextureStore store{questions, GreyRamp()};
  CTextureFinder finder{store, questions, "/nonexistent"};
  SLoadContext context{finder, questions};
};

}  // namespace veldra::fuzz
