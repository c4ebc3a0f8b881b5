#pragma once

#include <QString>

#include "editing/facecommands.h"
#include "editing/vertexcommands.h"

namespace veldra {

class CTarnView;

/// The face, vertex, texture and key commands of one view, each without arguments as the command table wants them.
/// Those with "..." in their menu text open a dialog over the view. What they do to the model stands with the functions
/// of document/facecommands.h, vertexcommands.h and texturecommands.h. Each does nothing where its enabling rule, there
/// as well, forbids it.
class CEditCommands {
 public:
  explicit CEditCommands(CTarnView& view) : view_(view) {}

  // --- Faces -------------------------------------------------------------------------------------------------------
  void SelectFace();
  void SelectAllFaces();
  void DeselectAllFaces();
  void InvertFaceSelection();
  void SelectByFacing();
  void CycleFaces();
  void ReverseCycleFaces();
  void CycleSelectedFaces();
  void ReverseCycleSelectedFaces();
  void NoCurrentFace();
  void JumpTo();
  void EditFace();
  void FlipFaces();
  void DeleteFace();
  void DeleteSelectedFaces();
  void TagVertex();
  void ClearTags();
  void MakeTaggedFace();
  void GroupFaceType();
  void FaceGroups();

  // --- Vertices ----------------------------------------------------------------------------------------------------
  void SelectVertex();
  void SelectAllVertices();
  void DeselectAllVertices();
  void InvertVertexSelection();
  void CycleVertices();
  void ReverseCycleVertices();
  void CycleSelectedVertices();
  void ReverseCycleSelectedVertices();
  void CycleFaceVertices();
  void ReverseCycleFaceVertices();
  void FirstFaceVertex();
  void LastFaceVertex();
  void NoCurrentVertex();
  void SetVertexCoordinates();
  void SetToPlane();
  void DeleteVertex();
  void DeleteSelectedVertices();
  void VertexGroups();
  // By the step of the settings: the current vertex; the selected ones.
  void MoveVertexX();
  void MoveVertexY();
  void MoveVertexZ();
  void ReverseMoveVertexX();
  void ReverseMoveVertexY();
  void ReverseMoveVertexZ();
  void MoveSelectionX();
  void MoveSelectionY();
  void MoveSelectionZ();
  void ReverseMoveSelectionX();
  void ReverseMoveSelectionY();
  void ReverseMoveSelectionZ();

  // --- Textures ----------------------------------------------------------------------------------------------------
  void OpenBinMapper();
  void NormalizeTexture();
  void OffsetU();
  void OffsetV();
  void ReverseOffsetU();
  void ReverseOffsetV();
  void FlipTextureX();
  void FlipTextureY();
  void RotateTexture();
  void LoadTexture();
  void DefineAnimation();

  // --- The model and the view --------------------------------------------------------------------------------------
  void ShowInfo();
  // By the step of the settings.
  void TurnUp();
  void TurnDown();
  void TurnLeft();
  void TurnRight();
  void TurnPageUp();
  void TurnPageDown();

 private:
  CEditCursor& Cursor() const;
  CBinModel& Model() const;
  void Say(const QString& text) const;
  void SayOfTags() const;
  void ShowGroups(EGroupKind kind);

  CTarnView& view_;
  // What the dialogs offer again.
  EGroupKind jump_ = EGroupKind::kFaces;
  SFacingInput facing_;
  SPlaneInput plane_;
};

}  // namespace veldra
