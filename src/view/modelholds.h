#pragma once

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "document/steps.h"
#include "editing/texturetransfer.h"
#include "view/vertexdrag.h"
#include "view/viewmouse.h"

namespace veldra {

class CTarnView;

/// A rubber band over a model, from where the button went down. What shows in it is selected when it is dropped, and
/// with Ctrl joins what was.
class CBandHold : public CViewHold {
 public:
  CBandHold(CTarnView& view, const QPointF& from) : view_(view), from_(from), to_(from) {}
  ~CBandHold() override;

  void MoveTo(const QPointF& to) override;
  void Drop(Qt::KeyboardModifiers modifiers) override;
  void Cancel() override {}

 private:
  CTarnView& view_;
  QPointF from_;
  QPointF to_;
};

/// The texture of a face, given to the faces under the pointer. Shift: to all in their plane; Ctrl: without folding.
class CTextureHold : public CViewHold {
 public:
  CTextureHold(CTarnView& view, int32_t face);

  void MoveTo(const QPointF& to) override;
  void Drop(Qt::KeyboardModifiers modifiers) override;
  void Cancel() override { transfer_.Cancel(); }

 private:
  CTarnView& view_;
  CTextureTransfer transfer_;
};

/// Vertices of a model, taken hold of at one of them. While X, Y or Z is held they move along that axis; Ctrl brings
/// the one that is held onto the grid.
class CVertexHold : public CViewHold {
 public:
  CVertexHold(CTarnView& view, const QPointF& from, int32_t vertex, std::vector<int32_t> moving)
      : view_(view), from_(from), vertex_(vertex), moving_(std::move(moving)) {}

  void MoveTo(const QPointF& to) override;
  void Drop(Qt::KeyboardModifiers modifiers) override;
  void Cancel() override;
  void TakeKey(int key, bool is_down) override;

 private:
  void Move();
  CVertexDrag::SPull Pull() const;

  CTarnView& view_;
  QPointF from_;
  QPointF to_;
  int32_t vertex_;
  std::vector<int32_t> moving_;
  std::unique_ptr<CStep> step_;        ///< the whole drag is one
  std::unique_ptr<CVertexDrag> drag_;  ///< from the first movement on
  std::optional<EAxis> axis_;          ///< whose key is held
  bool was_modified_ = false;
  bool has_kept_state_ = false;
};

}  // namespace veldra
