#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <span>
#include <vector>

#include "document/tarn2doc.h"
#include "model/binmodel.h"

namespace veldra {

/// Where the editing commands of one view work: the current face, the current vertex and the vertices tagged for a new
/// face. Each view has its own; the selection belongs to the model.
///
/// The items are followed through changes of the model. One that is gone is replaced by the one that stands at its
/// index now (the last one, where the array has become shorter; -1 in an empty one); a tag on it is dropped. The cursor
/// observes the document for this: made before a view observes it, it is right when the view hears of a change. Must
/// not outlive DOCUMENT.
class CEditCursor : private CDocumentObserver {
 public:
  static constexpr size_t kMostTags = 4;

  explicit CEditCursor(CTarnDoc& document);
  ~CEditCursor() override;
  CEditCursor(const CEditCursor&) = delete;
  CEditCursor& operator=(const CEditCursor&) = delete;

  CTarnDoc& Document() { return document_; }
  const CTarnDoc& Document() const { return document_; }
  const CBinModel& Model() const { return model_; }

  /// Called after each change of what the cursor says, also one that a change of the model brings about.
  void SetOnChanged(std::function<void()> on_changed) { on_changed_ = std::move(on_changed); }

  int32_t Face() const { return face_.index; }      ///< -1 for none
  int32_t Vertex() const { return vertex_.index; }  ///< -1 for none
  /// At which corner of the current face the current vertex is, 0 to 3; -1 when it is at none.
  int Corner() const;
  /// Vertex indices in the order in which they were tagged, each once, at most kMostTags.
  std::vector<int32_t> Tagged() const;
  /// CBinModel::SelectedCount, counted anew only after a change: menus ask for it all the time.
  int32_t SelectedCount(EGroupKind kind) const;
  /// CBinModel::HiddenCount, likewise.
  int32_t HiddenCount() const;
  CBinFace* FaceObject() const;      ///< null for none
  CBinVertex* VertexObject() const;  ///< null for none

  // INDEX: -1 or within the model.
  void SetFace(int32_t index);
  void SetVertex(int32_t index);
  /// The vertex at CORNER of the current face becomes the current one. Without a current face nothing happens.
  void SetCorner(int corner);

  // Round and round: behind the last comes the first. From -1 the first one, backwards the last one. Nothing happens
  // where there is none to go to.
  void CycleFaces(bool forward);
  void CycleVertices(bool forward);
  void CycleSelectedFaces(bool forward);
  void CycleSelectedVertices(bool forward);
  void CycleCorners(bool forward);
  void FirstCorner() { SetCorner(0); }
  void LastCorner();

  /// Tags the vertex, or takes its tag off. False, nothing changed, when kMostTags others are tagged already.
  bool ToggleTag(int32_t vertex);
  void ClearTags();

 private:
  /// An item and where it was last. The address only tells whether another one stands there: it may be gone.
  struct SPlace {
    int32_t index = -1;
    const void* item = nullptr;
    bool operator==(const SPlace&) const = default;
  };
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc&) override {}
  void Set(SPlace& place, const SPlace& now);
  void Cycle(EGroupKind kind, SPlace& place, bool forward, bool selected_only);
  SPlace PlaceOf(EGroupKind kind, int32_t index) const;
  int32_t Find(EGroupKind kind, const SPlace& place) const;
  SPlace Followed(EGroupKind kind, const SPlace& place) const;
  void Report() const;

  CTarnDoc& document_;
  const CBinModel& model_;
  SPlace face_;
  SPlace vertex_;
  std::vector<SPlace> tagged_;
  struct SCount {
    uint64_t revision = 0;
    int32_t count = -1;  ///< never counted
  };
  mutable std::array<SCount, 2> selected_counts_;  ///< of faces and vertices
  mutable int32_t hidden_count_ = -1;              ///< not counted since the last change
  std::function<void()> on_changed_;
};

}  // namespace veldra
