#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "model/helperclasses.h"
#include "model/movenotes.h"

namespace veldra {

class CBinModel;
class CQuestions;
class CStepRecorder;

/// What an operation changed.
struct SModelChange {
  /// What a file would hold is different.
  bool Any() const { return positions || topology || faces || textures || groups; }
  bool IsDrawn() const { return positions || topology || faces || textures || visibility; }
  void Add(const SModelChange& other);

  bool positions = false;  ///< vertex coordinates only
  bool topology = false;   ///< vertices, faces or their corners
  bool faces = false;      ///< face types, texture coordinates or which texture a face has
  bool textures = false;   ///< the texture entries
  bool groups = false;
  bool selection = false;   ///< which vertices and faces are selected
  bool visibility = false;  ///< which faces are hidden
};

/// Told after each operation that changed the model; the document is one.
class CModelObserver {
 public:
  virtual ~CModelObserver() = default;
  virtual void OnModelChanged(const CBinModel& model, const SModelChange& change) = 0;
  /// VERTICES are in the model now, ascending. At once, whatever is under way; not for a model that is built anew.
  virtual void OnVerticesAdded(std::span<CBinVertex* const>) {}
  /// VERTICES are out of the model, in the order in which they stood there. They are deleted unless they are moved out
  /// of the list: InsertVertices can put them back.
  virtual void OnVerticesDeleted(std::vector<std::unique_ptr<CBinVertex>>&) {}
};

/// Inclusive; all zero for a model that never had a vertex.
struct SBounds {
  SPoint min;
  SPoint max;
  bool operator==(const SBounds&) const = default;
};

/// One model of the game: integer vertices, faces, the texture entries that the faces use, named groups.
///
/// Between operations: indices equal array positions, a vertex's face set holds exactly the faces that use it, a
/// texture entry's use count equals the number of its faces, the bounds enclose every vertex, group members lie within
/// the counts. CheckInvariants() proves it.
class CBinModel {
 public:
  using Vertices = std::vector<std::unique_ptr<CBinVertex>>;
  using Faces = std::vector<std::unique_ptr<CBinFace>>;
  using Textures = std::vector<std::unique_ptr<CBinTexture>>;
  using Groups = std::vector<CBinGroup>;

  CBinModel();
  CBinModel(const CBinModel&) = delete;
  CBinModel& operator=(const CBinModel&) = delete;

  /// At most one; null for none.
  void SetObserver(CModelObserver* observer) { observer_ = observer; }
  /// No other model that this process ever had has it: whoever caches compares it, as addresses are used again.
  uint64_t Identity() const { return identity_; }
  /// Grows with every change of what is drawn (positions, topology, faces, textures): whoever caches compares it.
  uint64_t Revision() const { return revision_; }
  /// Which vertices all that was drawn differently since REVISION is about: they were moved, or a face at them got
  /// other texture coordinates. Some may be named twice; nothing when more than that may have changed.
  std::optional<std::span<const int32_t>> MovedSince(uint64_t revision) const { return moves_.Since(revision); }

  // --- Access -------------------------------------------------------------------------------------------------------
  int32_t VertexCount() const { return static_cast<int32_t>(vertices_.size()); }
  int32_t FaceCount() const { return static_cast<int32_t>(faces_.size()); }
  int32_t TextureCount() const { return static_cast<int32_t>(textures_.size()); }
  CBinVertex& Vertex(int32_t index) const;
  CBinFace& Face(int32_t index) const;
  CBinTexture& Texture(int32_t index) const;
  /// By name and kind, or null. Names are compared without regard to case.
  CBinTexture* FindTexture(std::string_view name, ETextureKind kind) const;
  /// Position of ENTRY in the model's list, or -1.
  int32_t TextureIndex(const CBinTexture* entry) const;
  const Groups& FaceGroups() const { return face_groups_; }
  const Groups& VertexGroups() const { return vertex_groups_; }
  const Groups& GroupsOf(EGroupKind kind) const { return kind == EGroupKind::kFaces ? face_groups_ : vertex_groups_; }
  const CBinGroup* FindGroup(EGroupKind kind, std::string_view name) const;
  int32_t ScaleWord() const { return scale_word_; }
  void SetScaleWord(int32_t word) { scale_word_ = word; }

  /// Index 0 to 5: minimum x, y, z, maximum x, y, z.
  int32_t Bound(int index) const;
  const SBounds& Bounds() const { return bounds_; }
  /// Nothing for an empty list.
  std::optional<SBounds> BoundsOfFaces(std::span<const int32_t> faces) const;
  std::optional<SBounds> BoundsOfVertices(std::span<const int32_t> vertices) const;

  bool IsValid(const CBinVertex* vertex) const;
  bool IsValid(const CBinFace* face) const;
  bool HasFaceType(uint32_t type) const;
  bool HasFaceTypeAbove(uint32_t limit) const;

  // --- Building and editing -----------------------------------------------------------------------------------------
  void Clear();
  void Reserve(size_t vertices, size_t faces);
  /// Becomes exactly what OTHER is, selection included, which is empty afterwards. The observer hears of it once.
  void TakeContents(CBinModel& other);

  CBinVertex& AddVertex(const SPoint& position);
  /// Takes a filled face of this model; registers it with its corners and its texture.
  CBinFace& AddFace(std::unique_ptr<CBinFace> face);
  CBinTexture& AddTexture(std::unique_ptr<CBinTexture> entry);

  /// FACES (not empty) come to stand at POSITION in order, get their computed normal and magic as stored ones, and push
  /// the face groups' members behind them up.
  void InsertFaces(Faces faces, int32_t position);
  void RemoveFaces(std::span<const int32_t> indices);  ///< ascending, each once
  void RemoveFaces(int32_t position, int32_t count);

  /// VERTICES come to stand at POSITION in order. With POSITION -1 each goes back to the place it had: the list is in
  /// the order in which TakeVertices gave it, and vertex k of it comes to stand at its recorded place + k. Objects and
  /// coordinates are kept.
  void InsertVertices(Vertices vertices, int32_t position);
  /// Takes unused vertices out; each records its place among those that stay, so that InsertVertices can put it back. A
  /// used one in the list is a programming error: ask AreUnused first.
  Vertices TakeVertices(std::span<const int32_t> indices);  ///< ascending, each once
  bool AreUnused(std::span<const int32_t> indices) const;
  /// Refused as a whole, with "Vertex is currently in use and cannot be deleted", when a face uses one of them.
  bool DeleteVertices(std::span<const int32_t> indices, CQuestions& questions);
  bool DeleteVertices(int32_t position, int32_t count, CQuestions& questions);
  std::vector<int32_t> UnusedVertices() const;

  /// Refused with "Animation "%s" is currently\n in use and cannot be deleted." while a face uses it.
  bool DeleteTexture(CBinTexture& entry, CQuestions& questions);

  void SetVertexPosition(int32_t index, const SPoint& position);
  /// New positions for the vertices INDICES, in the same order; bounds and observers follow once.
  void SetVertexPositions(std::span<const int32_t> indices, std::span<const SPoint> positions);
  /// New texture coordinates for FACES, in the same order, once for all.
  void SetTexCoords(std::span<const int32_t> faces, std::span<const std::array<STexCoord, 4>> coords);
  void SetFaceCorners(int32_t index, std::span<CBinVertex* const> corners);
  void SetFaceTexture(int32_t index, CBinTexture* texture);
  /// The other way round: the first corner stays, the others come in reverse order, each with its texture coordinate.
  void TurnFacesRound(std::span<const int32_t> indices);
  /// Every face of type FROM becomes TO; returns how many.
  int32_t ReplaceFaceType(uint32_t from, uint32_t to);
  /// Every face whose type is above LIMIT becomes TO; returns how many.
  int32_t ReplaceFaceTypesAbove(uint32_t limit, uint32_t to);
  /// To call after SetType or SetTexCoord of faces in the model.
  void ReportFacesChanged();

  /// From all vertices. Without vertices only the minima become zero, the maxima stay.
  void RecomputeBounds();
  /// The minima of the axes in MASK (1 = x, 2 = y, 4 = z); without vertices all three become zero.
  void RecomputeMinima(int mask);

  // --- Groups -------------------------------------------------------------------------------------------------------
  /// What is wrong with NAME for a new group of KIND, or "": "Please enter a name.", "Specified name is already in
  /// use.\nPlease enter a different name.". Names are compared exactly.
  std::string GroupNameFault(EGroupKind kind, std::string_view name) const;
  /// NAME must be free; MEMBERS lie within the counts. A repeated member is taken once.
  void AddGroup(EGroupKind kind, const std::string& name, std::span<const int32_t> members);
  void DeleteGroup(EGroupKind kind, std::string_view name);
  void RenameGroup(EGroupKind kind, std::string_view name, const std::string& new_name);
  /// Many at once, from a file or another model: an empty name becomes "group", and a name that is taken gets the first
  /// free number from 2 appended ("hood 2"). Returns the names that they have now, in order.
  std::vector<std::string> AddGroups(EGroupKind kind, Groups groups);

  // --- Selection ----------------------------------------------------------------------------------------------------
  // Part of no file. New vertices and faces are not selected; the others keep their mark wherever they move.
  std::vector<int32_t> Selected(EGroupKind kind) const;  ///< ascending indices of the selected faces or vertices
  int32_t SelectedCount(EGroupKind kind) const;
  /// The selected vertices in the order in which they were selected one at a time; empty where several were at once.
  std::vector<int32_t> PickedVertices() const;
  void Select(EGroupKind kind, std::span<const int32_t> indices, bool selected);
  void SelectAll(EGroupKind kind, bool selected);
  void InvertSelection(EGroupKind kind);
  /// Hidden faces, and vertices that only they use, are neither drawn nor picked, never selected, and left alone by
  /// what works on all. They are saved like the others.
  void Hide(std::span<const int32_t> faces);
  void ShowAll();
  int32_t HiddenCount() const;
  /// Grows with every change of the selection.
  uint64_t SelectionRevision() const { return selection_revision_; }

  // --- Whole-model rebuilding, for operations that touch everything ------------------------------------------------
  /// Replaces both arrays and recomputes indices, face sets, use counts and bounds. VERTEX_MAP and FACE_MAP give for
  /// each old index the new one or -1; groups follow them (two members that fall together count once). An empty map
  /// leaves its groups as they are. Vertices and faces of another model become this one's; their textures must be this
  /// one's.
  void Rebuild(Vertices vertices, Faces faces, std::span<const int32_t> vertex_map, std::span<const int32_t> face_map);
  /// Both arrays, handed out to be given back through Rebuild: indices and face sets are stale until then. Texture
  /// entries and groups stay.
  std::pair<Vertices, Faces> TakeAll();
  /// Makes FACE, which TakeAll handed out, one of this model's with 3 or 4 CORNERS (given to Rebuild as well) and
  /// TEXTURE.
  void Adopt(CBinFace& face, std::span<CBinVertex* const> corners, CBinTexture* texture);
  /// Deletes VERTICES, which TakeAll handed out and Rebuild was not given: they stood at INDICES, ascending.
  void Discard(Vertices vertices, std::span<const int32_t> indices);

  /// "" or the first broken invariant, in words. For tests and the fuzzers; walks the whole model.
  std::string CheckInvariants() const;

  bool IsBusy() const { return busy_; }
  /// Brackets a load, save, import or merge: asserts that none is under way. What changes meanwhile is reported to the
  /// observer once, at the end.
  class CBusy {
   public:
    explicit CBusy(CBinModel& model);
    explicit CBusy(const CBinModel& model);  ///< for an operation that changes nothing
    ~CBusy();
    CBusy(const CBusy&) = delete;
    CBusy& operator=(const CBusy&) = delete;

   private:
    const CBinModel& model_;
    CBinModel* changing_ = nullptr;
  };

 private:
  friend class CBinFace;
  friend class CModelStep;
  friend class CStepRecorder;

  void MoveContentsTo(CBinModel& empty);
  void Mark(CBinVertex& vertex, bool selected, uint32_t pick = 0);
  void NoteGroups();
  void NoteCame(std::span<CBinVertex* const> vertices);
  void Attach(CBinFace& face);
  void RegisterCorners(CBinFace& face);
  void UnregisterCorners(CBinFace& face);
  void ForgetRemovedFaces(std::vector<CBinVertex*> vertices);
  void PutBack(Vertices vertices);
  static void NotePlaces(const Vertices& taken, std::span<const int32_t> indices);
  void RenumberVertices(size_t first);
  void RenumberFaces(size_t first);
  void Widen(const SPoint& position, bool first);
  /// IS_NOTED: what it changes of the drawing is in moves_.
  void Report(const SModelChange& change, bool is_noted = false);
  void ReportSelection();
  std::string FaceFault() const;
  std::string VertexFault() const;
  std::string TextureFault() const;
  std::string GroupFault(EGroupKind kind) const;
  CBinGroup& GroupNamed(EGroupKind kind, std::string_view name);
  Groups& MutableGroups(EGroupKind kind) { return kind == EGroupKind::kFaces ? face_groups_ : vertex_groups_; }
  static void ShiftMembers(Groups& groups, int32_t position, int32_t count);
  static void RemapMembers(Groups& groups, std::span<const int32_t> map);

  Vertices vertices_;
  Faces faces_;
  Textures textures_;
  Groups face_groups_;
  Groups vertex_groups_;
  SBounds bounds_;
  int32_t scale_word_ = 0x10000;
  CModelObserver* observer_ = nullptr;
  CStepRecorder* recorder_ = nullptr;  ///< told before anything changes
  uint64_t identity_;
  uint64_t revision_ = 0;
  CMoveNotes moves_;
  bool are_moves_all_ = true;  ///< of what the next revision brings
  uint64_t selection_revision_ = 0;
  uint32_t last_pick_ = 0;
  mutable bool busy_ = false;
  SModelChange pending_;  ///< changes made while busy
};

}  // namespace veldra
