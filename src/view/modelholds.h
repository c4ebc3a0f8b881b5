#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "document/steps.h"
#include "editing/texturetransfer.h"
#include "render/gizmo.h"
#include "view/vertexdrag.h"
#include "view/vertexsnap.h"
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

/// Vertices of a model, held by the mouse: the whole drag is one step, and Escape puts them back. With Shift what was
/// grabbed goes exactly onto the vertex at the pointer.
class CPartHold : public CViewHold {
 public:
  /// STEP: what the step is called.
  CPartHold(CTarnView& view, const QPointF& from, const SPoint& grabbed, std::vector<int32_t> moving, const char* step)
      : view_(view), from_(from), to_(from), grabbed_(grabbed), moving_(std::move(moving)), step_name_(step) {}
  ~CPartHold() override;

  void MoveTo(const QPointF& to) override;
  void Drop(Qt::KeyboardModifiers modifiers) override;
  void Cancel() override;
  void TakeKey(int key, bool is_down) override;

 protected:
  /// Brings the vertices of DRAG to where the pointer wants them; returns what it has done, in words.
  virtual std::string Apply(CVertexDrag& drag) = 0;

  CTarnView& View() const { return view_; }
  const QPointF& From() const { return from_; }
  const QPointF& To() const { return to_; }
  /// Ctrl is held.
  static bool Snaps();
  std::string MoveBy(CVertexDrag& drag, std::optional<EAxis> axis);

 private:
  void Move();
  std::optional<int32_t> VertexUnderPointer(CVertexDrag& drag);

  CTarnView& view_;
  QPointF from_;
  QPointF to_;
  SPoint grabbed_;
  std::vector<int32_t> moving_;
  const char* step_name_;
  std::unique_ptr<CStep> step_;
  std::unique_ptr<CVertexDrag> drag_;  ///< from the first movement on
  std::optional<CVertexSnap> snap_;    ///< once it has been wanted
  bool was_modified_ = false;
};

/// While X, Y or Z is held they move along that axis; Ctrl brings what was grabbed onto the grid.
class CVertexHold : public CPartHold {
 public:
  CVertexHold(CTarnView& view, const QPointF& from, const SPoint& grabbed, std::vector<int32_t> moving)
      : CPartHold(view, from, grabbed, std::move(moving), "Move Vertices") {}
  void TakeKey(int key, bool is_down) override;

 private:
  std::string Apply(CVertexDrag& drag) override { return MoveBy(drag, axis_); }

  std::optional<EAxis> axis_;  ///< whose key is held
};

/// A handle of the view's gizmo. Ctrl brings the pivot onto the grid, or turns by steps of 15 degrees, or resizes by
/// tenths; with Shift a box resizes all axes evenly.
class CGizmoHold : public CPartHold {
 public:
  CGizmoHold(CTarnView& view, const QPointF& from, const CGizmo& gizmo, const SGizmoHandle& handle,
             std::vector<int32_t> moving);
  ~CGizmoHold() override;

 private:
  std::string Apply(CVertexDrag& drag) override;
  std::string Turn(CVertexDrag& drag);
  std::string Resize(CVertexDrag& drag) const;
  SScreenPoint Pixels(const QPointF& at) const;

  CGizmo gizmo_;
  SGizmoHandle handle_;
  SScreenPoint last_;     ///< the pointer
  double degrees_ = 0.0;  ///< turned so far, also more than once round
};

}  // namespace veldra
