#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

class CHistory;
class CTarnDoc;

/// One reversible edit. It knows how to undo and redo itself and what it is called.
class CHistoryAction {
 public:
  explicit CHistoryAction(CHistory& history);
  virtual ~CHistoryAction() = default;
  CHistoryAction(const CHistoryAction&) = delete;
  CHistoryAction& operator=(const CHistoryAction&) = delete;

  virtual void Undo() = 0;
  virtual void Redo() = 0;
  virtual std::string GetName() const = 0;

 protected:
  CHistory& history_;
  CTarnDoc& document_;
};

/// Vertices that were added to the model or deleted from it. While they are outside the model (a deletion in effect, an
/// addition undone) the action owns them; while they are in it, the model does.
class CVertexAction : public CHistoryAction {
 public:
  /// VERTICES is not empty. With IS_ADD they are in the model; else they were taken out of it and belong to the action
  /// from now on.
  CVertexAction(CHistory& history, std::span<CBinVertex* const> vertices, bool is_add);
  /// Deletes the vertices that are outside the model, which the history's IsDeletingUndone tells.
  ~CVertexAction() override;

  void Undo() override;
  void Redo() override;
  /// "Add Vertex", "Add 3 Vertices", "Delete Vertex", "Delete 3 Vertices".
  std::string GetName() const override;

 private:
  void PutBack();
  void TakeOut();

  std::vector<CBinVertex*> vertices_;  ///< ascending by index; owned or not as the class comment says
  bool is_add_;
};

/// A bounded list of actions and a cursor: those below it are in effect, those at and above it were undone. While
/// recording is switched off the program itself adds, undoes and redoes nothing.
class CHistory {
 public:
  CHistory(CTarnDoc& document, int32_t maximum_depth);  ///< depth at least 1
  ~CHistory();
  CHistory(const CHistory&) = delete;
  CHistory& operator=(const CHistory&) = delete;

  /// Discards what was undone, or, when the list is full with nothing undone, the oldest action.
  void Add(std::unique_ptr<CHistoryAction> action);
  void Undo();
  void Redo();
  bool CanUndo() const { return current_ >= 1; }
  bool CanRedo() const { return current_ < Size(); }
  bool IsBusy() const { return in_undo_ || in_redo_; }
  /// While the history deletes actions: whether the one being deleted was undone.
  bool IsDeletingUndone() const { return deleting_undone_; }
  /// Drops the oldest actions over the new maximum. The cursor stays where it was.
  void SetMaxDepth(int32_t maximum_depth);
  void Clear();

  int32_t Size() const { return static_cast<int32_t>(actions_.size()); }
  int32_t Current() const { return current_; }
  const CHistoryAction& Action(int32_t index) const { return *actions_[static_cast<size_t>(index)]; }
  CTarnDoc& Document() const { return document_; }

  /// Where vertex additions and deletions are reported. Recording is switched off in this release: it returns false at
  /// once and the caller keeps the vertices. When it returns true, those of a deletion belong to the history.
  static bool RecordVertexChange(CHistory& history, std::span<CBinVertex* const> vertices, bool is_add);

 private:
  void DeleteActions(int32_t first, int32_t last, bool undone);

  CTarnDoc& document_;
  std::vector<std::unique_ptr<CHistoryAction>> actions_;
  int32_t current_ = 0;
  int32_t maximum_depth_;
  bool deleting_undone_ = false;
  bool in_undo_ = false;
  bool in_redo_ = false;
};

}  // namespace veldra
