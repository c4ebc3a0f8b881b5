#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "model/modelstep.h"

namespace veldra {

class CTarnDoc;

/// The steps that a document has taken, and can go back over and forward again. Whatever changes the model becomes a
/// step: all changes while a CStep lives are one, with its name; a change outside of any is a step of its own.
class CSteps {
 public:
  /// MODEL is DOCUMENT's and outlives this.
  CSteps(CTarnDoc& document, CBinModel& model);
  CSteps(const CSteps&) = delete;
  CSteps& operator=(const CSteps&) = delete;

  bool CanGoBack() const { return !IsUnderWay() && !done_.empty(); }
  bool CanGoForward() const { return !IsUnderWay() && !undone_.empty(); }
  /// Of what Back and Forward would go over; "" for nothing.
  std::string BackName() const { return CanGoBack() ? done_.back().name : ""; }
  std::string ForwardName() const { return CanGoForward() ? undone_.back().name : ""; }
  /// Over the step that the name says. May throw std::bad_alloc; the model is what it was then.
  void Back();
  void Forward();
  /// While one of them changes the model.
  bool IsGoing() const { return is_going_; }

  size_t Count() const { return done_.size(); }
  size_t Bytes() const { return bytes_; }

  /// The file holds the model as it is now.
  void NoteSaved();
  /// No file holds any of the states.
  void ForgetSaved() { saved_ = kNever; }
  /// The model is as it was when NoteSaved was last called.
  bool IsSaved() const { return State() == saved_; }

  /// What leads to the present model is no step, and what was before cannot come back.
  void Clear();
  /// The model is about to be replaced by what it was before the step under way, or by what is no step at all.
  void StopNoting() { recorder_.Lose(); }
  /// It has been.
  void DropUnderWay() { static_cast<void>(recorder_.Take()); }
  /// The step under way goes on with the last one, when that was joined under the same TEXT and nothing was done
  /// between: so that a run of keys is one step.
  void Join(const std::string& text);

  /// For the document: the model has been changed.
  void OnModelChanged();

 private:
  friend class CStep;
  struct STaken {
    std::string name;
    std::string join;  ///< what joins it; "" for nothing
    uint64_t state;    ///< of the model after it
    std::unique_ptr<CModelStep> step;
    size_t bytes = 0;
  };
  static constexpr uint64_t kNever = 0;

  bool IsUnderWay() const { return recorder_.HasNotes(); }
  uint64_t State() const;
  void Begin(const std::string& name);
  void End();
  void Close();
  void Go(std::deque<STaken>& from, std::deque<STaken>& to);
  void Drop(std::deque<STaken>& steps);
  void DropOldest();

  CTarnDoc& document_;
  CBinModel& model_;
  CStepRecorder recorder_;
  std::deque<STaken> done_;    ///< the newest last
  std::deque<STaken> undone_;  ///< the next one last
  uint64_t first_state_ = 1;   ///< before all of them
  uint64_t last_state_ = 1;    ///< that any of them had
  uint64_t under_way_ = 2;     ///< the state to which the step under way leads
  uint64_t saved_ = 1;
  size_t bytes_ = 0;
  int depth_ = 0;
  std::string name_;  ///< of the step under way
  std::string join_;
  bool can_join_ = false;  ///< the last step was the last thing done
  bool is_going_ = false;
};

/// While it lives, whatever changes the document is one step. Within another one it adds to that, and names it if
/// nothing has been changed yet. The document may go meanwhile.
class CStep {
 public:
  CStep(CTarnDoc& document, const std::string& name);
  ~CStep();
  CStep(const CStep&) = delete;
  CStep& operator=(const CStep&) = delete;

 private:
  std::weak_ptr<CSteps> steps_;
};

}  // namespace veldra
