#include "document/steps.h"

#include <new>
#include <utility>

#include "document/tarn2doc.h"
#include "platform/assert.h"
#include "platform/trace.h"

namespace veldra {

namespace {

/// Of what no command has named: a tool window, a script.
constexpr const char* kUnnamed = "Change";

}  // namespace

CSteps::CSteps(CTarnDoc& document, CBinModel& model) : document_(document), model_(model), recorder_(model) {}

uint64_t CSteps::State() const {
  if (IsUnderWay()) return under_way_;
  return done_.empty() ? first_state_ : done_.back().state;
}

void CSteps::NoteSaved() {
  // What is changed from now on is another state.
  Close();
  saved_ = State();
  can_join_ = false;
}

// --- Taking them -----------------------------------------------------------------------------------------------------

void CSteps::Begin(const std::string& name) {
  // What is done within another step says best what it is, as long as it is the first thing done there.
  if (depth_ == 0 || !IsUnderWay()) name_ = name;
  if (depth_++ == 0) DropOldest();
}

void CSteps::End() {
  if (depth_ == 1) {
    Close();
    join_.clear();
  }
  --depth_;
}

void CSteps::OnModelChanged() {
  if (depth_ == 0 && !is_going_) Close();
}

void CSteps::Join(const std::string& text) {
  VELDRA_ASSERT(!text.empty());
  join_ = text;
  if (!can_join_ || IsUnderWay() || done_.empty() || done_.back().join != text) return;
  bytes_ -= done_.back().bytes;
  recorder_.GoOnWith(std::move(done_.back().step));
  done_.pop_back();
}

void CSteps::Close() {
  if (!IsUnderWay()) return;
  const bool is_lost = recorder_.IsLost();
  const std::string name = depth_ > 0 ? name_ : kUnnamed;
  std::unique_ptr<CModelStep> step = recorder_.Take();
  const bool is_step = !is_lost && step != nullptr;
  if (is_lost) {
    // There is no way back over what was not noted.
    Trace(">> CSteps: \"%s\" takes too much memory to be taken back\n", name.c_str());
    Drop(done_);
    Drop(undone_);
    first_state_ = under_way_;
  } else if (is_step) {
    Drop(undone_);
    const size_t bytes = step->Bytes();
    bytes_ += bytes;
    done_.push_back({name, join_, under_way_, std::move(step), bytes});
  }
  can_join_ = is_step;
  under_way_ = ++last_state_ + 1;
  DropOldest();
}

void CSteps::Clear() {
  static_cast<void>(recorder_.Take());
  Drop(done_);
  Drop(undone_);
  first_state_ = ++last_state_;
  under_way_ = last_state_ + 1;
  saved_ = kNever;
  can_join_ = false;
}

// --- Memory ----------------------------------------------------------------------------------------------------------

void CSteps::Drop(std::deque<STaken>& steps) {
  for (const STaken& taken : steps)
    bytes_ -= taken.bytes;
  steps.clear();
}

void CSteps::DropOldest() {
  const size_t most = static_cast<size_t>(document_.Settings().step_memory) << 20;
  recorder_.SetMostBytes(most);
  for (; bytes_ > most && !done_.empty(); done_.pop_front()) {
    bytes_ -= done_.front().bytes;
    first_state_ = done_.front().state;
  }
}

// --- Going over them -------------------------------------------------------------------------------------------------

void CSteps::Back() {
  if (CanGoBack()) Go(done_, undone_);
}

void CSteps::Forward() {
  if (CanGoForward()) Go(undone_, done_);
}

void CSteps::Go(std::deque<STaken>& from, std::deque<STaken>& to) {
  to.push_back(std::move(from.back()));
  from.pop_back();
  is_going_ = true;
  can_join_ = false;
  try {
    to.back().step->Swap(model_);
  } catch (const std::bad_alloc&) {
    is_going_ = false;
    from.push_back(std::move(to.back()));
    to.pop_back();
    throw;
  }
  is_going_ = false;
  bytes_ -= to.back().bytes;
  to.back().bytes = to.back().step->Bytes();
  bytes_ += to.back().bytes;
  document_.SetModified(!IsSaved());
}

// --- One of them -----------------------------------------------------------------------------------------------------

CStep::CStep(CTarnDoc& document, const std::string& name) : steps_(document.SharedSteps()) {
  document.Steps().Begin(name);
}

CStep::~CStep() {
  if (const auto steps = steps_.lock()) steps->End();
}

}  // namespace veldra
