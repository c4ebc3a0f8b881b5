#include "document/history.h"

#include "document/tarn2doc.h"
#include "platform/assert.h"
#include "platform/text.h"

// The tests of the mechanism set it.
#ifndef VELDRA_RECORD_HISTORY
#define VELDRA_RECORD_HISTORY false
#endif

namespace veldra {

namespace {

/// The whole mechanism below works and is tested; this is the one line that keeps it out of use.
constexpr bool kRecordVertexChanges = VELDRA_RECORD_HISTORY;

}  // namespace

CHistoryAction::CHistoryAction(CHistory& history) : history_(history), document_(history.Document()) {}

CVertexAction::CVertexAction(CHistory& history, std::span<CBinVertex* const> vertices, bool is_add)
    : CHistoryAction(history), vertices_(vertices.begin(), vertices.end()), is_add_(is_add) {
  VELDRA_ASSERT(!vertices_.empty());
}

CVertexAction::~CVertexAction() {
  const bool outside_model = is_add_ == history_.IsDeletingUndone();
  if (!outside_model) return;
  for (CBinVertex* vertex : vertices_)
    std::unique_ptr<CBinVertex>{vertex}.reset();
}

void CVertexAction::Undo() {
  is_add_ ? TakeOut() : PutBack();
}

void CVertexAction::Redo() {
  is_add_ ? PutBack() : TakeOut();
}

std::string CVertexAction::GetName() const {
  const char* verb = is_add_ ? "Add" : "Delete";
  if (vertices_.size() < 2) return Format("%s Vertex", verb);
  return Format("%s %d Vertices", verb, static_cast<int>(vertices_.size()));
}

void CVertexAction::PutBack() {
  CBinModel::Vertices owned;
  for (CBinVertex* vertex : vertices_)
    owned.emplace_back(vertex);
  document_.Model().InsertVertices(std::move(owned), -1);
}

void CVertexAction::TakeOut() {
  std::vector<int32_t> indices;
  indices.reserve(vertices_.size());
  for (const CBinVertex* vertex : vertices_)
    indices.push_back(vertex->Index());
  CBinModel::Vertices taken = document_.Model().TakeVertices(indices);
  for (size_t i = 0; i < taken.size(); ++i)
    vertices_[i] = taken[i].release();
}

CHistory::CHistory(CTarnDoc& document, int32_t maximum_depth) : document_(document), maximum_depth_(maximum_depth) {
  VELDRA_ASSERT(maximum_depth >= 1);
}

CHistory::~CHistory() {
  Clear();
  VELDRA_ASSERT(actions_.empty());
}

void CHistory::Add(std::unique_ptr<CHistoryAction> action) {
  VELDRA_ASSERT(action != nullptr);
  VELDRA_ASSERT(!IsBusy());
  VELDRA_ASSERT(Size() <= maximum_depth_);
  VELDRA_ASSERT(0 <= current_ && current_ <= Size());
  if (current_ == maximum_depth_) {
    VELDRA_ASSERT(Size() == maximum_depth_);
    DeleteActions(0, 1, false);
    --current_;
  } else if (current_ < Size()) {
    DeleteActions(current_, Size(), true);
  }
  actions_.push_back(std::move(action));
  VELDRA_ASSERT(Size() - 1 == current_);
  ++current_;
}

void CHistory::Undo() {
  VELDRA_ASSERT(!IsBusy());
  VELDRA_ASSERT(Size() >= 1 && current_ >= 1);
  in_undo_ = true;
  --current_;
  actions_[static_cast<size_t>(current_)]->Undo();
  in_undo_ = false;
}

void CHistory::Redo() {
  VELDRA_ASSERT(!IsBusy());
  VELDRA_ASSERT(0 <= current_ && current_ < Size());
  in_redo_ = true;
  CHistoryAction& action = *actions_[static_cast<size_t>(current_)];
  ++current_;
  action.Redo();
  in_redo_ = false;
}

void CHistory::SetMaxDepth(int32_t maximum_depth) {
  VELDRA_ASSERT(maximum_depth >= 1);
  if (Size() > maximum_depth) DeleteActions(0, Size() - maximum_depth, false);
  maximum_depth_ = maximum_depth;
}

void CHistory::Clear() {
  VELDRA_ASSERT(!IsBusy());
  DeleteActions(0, current_, false);
  DeleteActions(0, Size(), true);
  current_ = 0;
}

bool CHistory::RecordVertexChange(CHistory& history, std::span<CBinVertex* const> vertices, bool is_add) {
  if (!kRecordVertexChanges) return false;
  VELDRA_ASSERT(!vertices.empty());
  history.Add(std::make_unique<CVertexAction>(history, vertices, is_add));
  return true;
}

void CHistory::DeleteActions(int32_t first, int32_t last, bool undone) {
  deleting_undone_ = undone;
  actions_.erase(actions_.begin() + first, actions_.begin() + last);
}

}  // namespace veldra
