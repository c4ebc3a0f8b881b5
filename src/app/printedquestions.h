#pragma once

#include "platform/unattendedquestions.h"

namespace veldra {

/// For runs that only look: whether to go on is answered Yes, all else as when nobody is there.
class CPrintedQuestions : public CUnattendedQuestions {
 public:
  EAnswer AskYesNo(const SMessage& question) override {
    Message(question);
    return EAnswer::kYes;
  }
};

}  // namespace veldra
