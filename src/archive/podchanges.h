#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "archive/poddocument.h"
#include "archive/podwriter.h"
#include "platform/questions.h"

namespace veldra {

/// Changes to the list of an archive's entries, which nothing of is on the disk before SavePod, and the way back
/// through them. What a step keeps is what it changed, not the list. Positions ascend, each once.
class CPodChanges {
 public:
  /// ARCHIVE outlives it. Once it is loaded anew, Clear.
  explicit CPodChanges(CPodDocument& archive) : archive_(archive) {}

  // Each is one step. False, nothing changed, when there is nothing to do, or after a message.

  /// SOURCES come last, with the names that CreatePod would give them. Whether one takes the place of the entry that
  /// has its name is asked, unless ASKS is false; after Cancel nothing at all is changed.
  bool Add(CQuestions& questions, const std::vector<SPodSource>& sources, bool asks = true);
  /// The entry gets the bytes of the file at PATH, and keeps its name.
  bool Replace(CQuestions& questions, size_t entry, const std::string& path);
  /// NEW_NAME as for a file that is added; a file of no known type keeps its folder unless NEW_NAME has one.
  bool Rename(CQuestions& questions, size_t entry, const std::string& new_name);
  bool Remove(const std::vector<size_t>& entries);
  /// They stand together then, the first of them at TO of the list without them.
  bool Move(const std::vector<size_t>& entries, size_t to);
  /// ORDER: all positions, in their new order.
  bool Arrange(const std::vector<size_t>& order);

  bool CanStepBack() const { return done_ > 0; }
  bool CanStepForward() const { return done_ < steps_.size(); }
  /// What the step was: "Rename SKY.RAW". "" where there is none.
  std::string BackName() const { return CanStepBack() ? steps_[done_ - 1].name : ""; }
  std::string ForwardName() const { return CanStepForward() ? steps_[done_].name : ""; }
  void StepBack();
  void StepForward();
  /// The entries that the last step, in whichever direction, has brought, by their positions now.
  const std::vector<size_t>& Touched() const { return touched_; }
  void Clear();

 private:
  using Places = std::vector<std::pair<size_t, SPodEntry>>;  ///< entries and where they stand, ascending
  struct SStep {
    std::string name;
    Places taken;  ///< out of the list before
    Places put;    ///< into the list behind
  };
  bool Do(SStep step);
  void Apply(const Places& taken, const Places& put);

  CPodDocument& archive_;
  std::vector<SStep> steps_;
  size_t done_ = 0;
  std::vector<size_t> touched_;
};

}  // namespace veldra
