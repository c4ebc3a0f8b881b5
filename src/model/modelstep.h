#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <vector>

#include "model/binmodel.h"

namespace veldra {

/// One change of a model as what differs, to go back over it and forward again. Items are named by their indices, so a
/// step holds no part of the model, and nothing of what stayed the same.
///
/// Between two swaps the model must be as the last one left it.
class CModelStep {
 public:
  explicit CModelStep(const CBinModel& model);
  CModelStep(const CModelStep&) = delete;
  CModelStep& operator=(const CModelStep&) = delete;

  bool IsEmpty() const { return edits_.empty() && !groups_; }
  /// The memory that it takes, roughly.
  size_t Bytes() const;
  /// Makes MODEL what it was before the step, or what it was after it, by turns. The observer hears of it once. When
  /// memory runs out MODEL stays what it was.
  void Swap(CBinModel& model);

 private:
  friend class CStepRecorder;

  struct SVertexValues {
    SPoint position;
    bool is_selected = false;
  };
  /// All that a face holds but for what follows from the rest.
  struct SFaceValues {
    std::array<int32_t, 4> corners = {-1, -1, -1, -1};
    int32_t texture = -1;
    uint32_t type = 0;
    std::array<STexCoord, 4> coords = {};
    SPoint stored_normal;
    int32_t stored_magic = 0;
    bool is_selected = false;
    bool IsSameContent(const SFaceValues& other) const;
  };
  enum class EWhat { kPositions, kFaceValues, kVertices, kFaces, kTexture, kContents };
  /// Values that change places with the model's, or items that are in the model by turns.
  struct SEdit {
    EWhat what;
    bool is_in = false;                 ///< the items are in the model; what follows is empty then
    std::vector<int32_t> indices = {};  ///< of items ascending, each once
    std::vector<SVertexValues> vertices = {};
    std::vector<SFaceValues> faces = {};
    std::unique_ptr<CBinTexture> texture = {};
    std::unique_ptr<CBinModel> contents = {};
  };
  struct SGroups {
    CBinModel::Groups faces;
    CBinModel::Groups vertices;
  };

  /// Finds the positions of texture entries; those of many faces in a row are the same.
  class CTextureNumbers {
   public:
    explicit CTextureNumbers(const CBinModel& model) : model_(model) {}
    int32_t Of(const CBinTexture* entry);

   private:
    const CBinModel& model_;
    const CBinTexture* last_ = nullptr;
    int32_t number_ = -1;
  };

  static SFaceValues ValuesOf(const CBinFace& face, CTextureNumbers& textures);
  static void SetValues(CBinModel& model, CBinFace& face, const SFaceValues& values);
  static void SwapEdits(CBinModel& model, std::span<SEdit* const> edits);
  static void SwapEdit(CBinModel& model, SEdit& edit);
  static void SwapPositions(CBinModel& model, SEdit& edit);
  static void SwapFaceValues(CBinModel& model, SEdit& edit);
  static void TakeVertices(CBinModel& model, SEdit& edit);
  static void PutVertices(CBinModel& model, SEdit& edit);
  static void TakeFaces(CBinModel& model, SEdit& edit);
  static void PutFaces(CBinModel& model, SEdit& edit);
  static void ToggleTexture(CBinModel& model, SEdit& edit);
  static void SwapContents(CBinModel& model, SEdit& edit);
  SModelChange Change() const;

  std::vector<SEdit> edits_;  ///< in the order in which they were made
  std::optional<SGroups> groups_;
  SBounds bounds_;
  int32_t scale_word_;
  bool is_back_ = false;  ///< the model is as it was before the step
};

/// Notes what happens to a model, at the one place where it happens: the model itself tells it before it changes
/// anything. Nothing here throws; what cannot be noted is lost, and said to be.
class CStepRecorder {
 public:
  /// Records from now on. MODEL must outlive it.
  explicit CStepRecorder(CBinModel& model);
  ~CStepRecorder();
  CStepRecorder(const CStepRecorder&) = delete;
  CStepRecorder& operator=(const CStepRecorder&) = delete;

  /// What a step may take in memory at most.
  void SetMostBytes(size_t bytes) { most_bytes_ = bytes; }
  /// Something was changed since the last Take.
  bool HasNotes() const { return step_ != nullptr || is_lost_; }
  /// Memory, or the bound on it, did not allow to note what was changed.
  bool IsLost() const { return is_lost_; }
  /// What was changed since the last Take; null when nothing is different from what it was, or when it is lost.
  std::unique_ptr<CModelStep> Take();
  /// STEP goes on: the last one taken, with nothing changed since.
  void GoOnWith(std::unique_ptr<CModelStep> step);

  // --- For the model: what is about to change, or what has just come ------------------------------------------------
  void BeforeVerticesCome();
  void BeforePositions(std::span<const int32_t> vertices);
  void BeforeFace(const CBinFace& face);
  void BeforeVerticesGo(std::span<const int32_t> vertices);
  void AfterVerticesCame(std::span<const int32_t> vertices);
  void BeforeFacesGo(std::span<const int32_t> faces);
  void AfterFacesCame(int32_t position, int32_t count);
  void BeforeTextureGoes(int32_t index);
  void AfterTextureCame(int32_t index);
  void BeforeGroups();
  /// Both arrays are handed out. AfterRebuild finds out what has become of them.
  void BeforeRebuild();
  void AfterRebuild(std::span<const int32_t> vertex_map, std::span<const int32_t> face_map);
  /// All of it is about to be replaced: an empty model, which is to take what is there. Null when nothing is recorded.
  CBinModel* ForOldContents();
  void Lose();

 private:
  using EWhat = CModelStep::EWhat;
  /// The arrays as they were.
  struct SBefore {
    std::vector<CModelStep::SVertexValues> vertices;
    std::vector<CModelStep::SFaceValues> faces;
  };
  template <typename Note>
  void Noting(const Note& note);
  CModelStep& Step();
  CModelStep::SEdit& Edit(EWhat what);
  CModelStep::SEdit& NewEdit(EWhat what);
  bool IsFirstNote(int32_t index, int32_t count);
  void CheckBytes();
  void NoteRebuilt(std::span<const int32_t> vertex_map, std::span<const int32_t> face_map);
  void NoteChangedPositions(std::span<const int32_t> vertex_now);
  bool NoteChangedFaces(std::span<const int32_t> vertex_now, std::span<const int32_t> face_now);
  void DropUnchanged();

  CBinModel& model_;
  std::unique_ptr<CModelStep> step_;
  std::optional<SBefore> before_;  ///< while the model is being rebuilt
  /// Which items the last edit holds already: those whose mark is its number.
  std::vector<uint32_t> marks_;
  uint32_t edit_number_ = 0;
  size_t noted_bytes_ = 0;
  size_t most_bytes_ = SIZE_MAX;
  bool is_rebuilding_ = false;
  bool is_lost_ = false;
};

}  // namespace veldra
