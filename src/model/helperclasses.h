#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "platform/vector3.h"
#include "textures/texturestore.h"

/// The parts of a CBinModel: vertices, faces, texture entries and groups.
namespace veldra {

class CBinFace;
class CBinModel;

/// A position or a direction in model units.
struct SPoint {
  int32_t x = 0;
  int32_t y = 0;
  int32_t z = 0;
  bool operator==(const SPoint&) const = default;
};

constexpr Vector3 ToVector(const SPoint& point) {
  return {double(point.x), double(point.y), double(point.z)};
}

/// The values that open a face record in a model file.
enum EFaceType : uint32_t {
  kFaceUntyped = 0x00,
  kFaceHellbender = 0x0E,
  kFaceTransparentMtm = 0x11,
  kFaceTextured = 0x18,
  kFaceUntextured = 0x19,
  kFaceShiny = 0x29,
  kFaceTransparentMtm2 = 0x33,
};

/// The six types that a user can choose from, ascending.
inline constexpr std::array<uint32_t, 6> kFaceTypes = {0x0E, 0x11, 0x18, 0x19, 0x29, 0x33};
/// One of kFaceTypes, or 0: a tag that opens a face record.
bool IsFaceTag(uint32_t tag);
/// "0x18 Normal Texture (MTM)"; "0x?? Unknown Face Type" for any other.
const char* FaceTypeLabel(uint32_t type);

/// The faces that use a vertex, each once, in no order that means anything. Small sets live inside the vertex: a
/// separate block for each of a million vertices would cost more than the model.
class CFaceSet {
 public:
  CFaceSet() = default;
  CFaceSet(const CFaceSet&) = delete;
  CFaceSet& operator=(const CFaceSet&) = delete;
  ~CFaceSet();

  bool Empty() const { return size_ == 0; }
  int32_t Size() const { return static_cast<int32_t>(size_); }
  CBinFace* const* begin() const { return Data(); }
  CBinFace* const* end() const { return Data() + size_; }
  bool Contains(const CBinFace* face) const;

 private:
  friend class CBinModel;
  static constexpr uint32_t kInline = 6;
  CBinFace* const* Data() const { return capacity_ == kInline ? inline_ : heap_; }
  CBinFace** MutableData() { return capacity_ == kInline ? inline_ : heap_; }
  void Insert(CBinFace* face);  ///< must not be in the set
  void Erase(CBinFace* face);   ///< must be in the set
  void EraseRemoved();          ///< every face without an index
  void Clear();
  void Grow();

  // In front of the faces, so that clearing or freeing a vertex touches one cache line.
  uint32_t size_ = 0;
  uint32_t capacity_ = kInline;
  union {
    CBinFace* inline_[kInline] = {};
    CBinFace** heap_;
  };
};

class CBinVertex {
 public:
  CBinVertex(CBinModel& owner, const SPoint& position) : owner_(&owner), position_(position) {}

  CBinModel& Owner() const { return *owner_; }
  const SPoint& Position() const { return position_; }
  int32_t Index() const { return index_ < 0 ? -1 : index_; }  ///< position in the model's vertex array; -1 outside it
  const CFaceSet& Faces() const { return faces_; }
  bool IsSelected() const { return selected_; }
  /// All faces that use it are; one that none uses never is.
  bool IsHidden() const;

 private:
  friend class CBinModel;
  friend class CModelStep;
  CBinModel* owner_;
  SPoint position_;
  bool selected_ = false;  ///< here rather than in a list of indices, so that it goes where the vertex goes
  uint32_t pick_ = 0;      ///< grows with each that is selected by itself; 0 for one that was not
  int32_t index_ = -1;     ///< outside the array: -1 minus the place it had among the vertices that stayed
  CFaceSet faces_;
};

enum class ETextureKind { kPlain = 1, kAnimated = 2 };

/// A texture as the model knows it: a plain one, or an animation made of several.
class CBinTexture {
 public:
  /// A plain entry. NAME: upper-case 8.3 name with extension RAW. IMAGE is not null.
  CBinTexture(CBinModel& owner, std::string name, const STextureImage* image);
  struct SFrame {
    std::string name;
    const STextureImage* image;
    bool operator==(const SFrame&) const = default;
  };
  /// An animation of at least one frame at RATE frames per second (infinite when the file's period is 0).
  CBinTexture(CBinModel& owner, std::string name, std::vector<SFrame> frames, double rate);

  CBinModel& Owner() const { return *owner_; }
  ETextureKind Kind() const { return kind_; }
  const std::string& Name() const { return name_; }
  int32_t UseCount() const { return use_count_; }  ///< number of faces that use it
  /// Texels a side, of the first frame for an animation.
  int32_t Width() const { return frames_.front().image->size; }
  /// The image shown while nothing runs: that of the first frame for an animation.
  const STextureImage* Image() const { return frames_.front().image; }
  /// A plain entry has one frame: itself.
  const std::vector<SFrame>& Frames() const { return frames_; }
  double Rate() const { return rate_; }

 private:
  friend class CBinModel;
  friend class CModelStep;
  CBinModel* owner_;
  ETextureKind kind_;
  std::string name_;
  std::vector<SFrame> frames_;
  double rate_ = 0.0;
  int32_t use_count_ = 0;
};

struct STexCoord {
  double u = 0.0;  ///< 0..1, left to right
  double v = 0.0;  ///< 0..1, first row of the texture file to its last
  bool operator==(const STexCoord&) const = default;
};

/// A direction of length 1, or zero for a face without area.
struct SUnitNormal {
  double x = 0.0;
  double y = 0.0;
  double z = 0.0;
};

/// A triangle or a quad. Filled with the setters, then added to its model; from then on only the model changes what
/// others depend on (corners, texture).
class CBinFace {
 public:
  explicit CBinFace(CBinModel& owner) : owner_(&owner) {}

  CBinModel& Owner() const { return *owner_; }
  int32_t Index() const { return index_; }  ///< position in the model's face array; -1 outside it
  uint32_t Type() const { return type_; }
  int CornerCount() const { return corners_[3] != nullptr ? 4 : 3; }
  CBinVertex* Corner(int k) const { return corners_[static_cast<size_t>(k)]; }
  std::span<CBinVertex* const> Corners() const { return {corners_.data(), static_cast<size_t>(CornerCount())}; }
  bool HasCorner(const CBinVertex* vertex) const;
  CBinTexture* Texture() const { return texture_; }  ///< null only for type 0x19
  const STexCoord& TexCoord(int k) const { return tex_coords_[static_cast<size_t>(k)]; }
  bool IsSelected() const { return selected_; }
  bool IsHidden() const { return hidden_; }

  const SPoint& StoredNormal() const { return stored_normal_; }  ///< as last read from a file
  int32_t StoredMagic() const { return stored_magic_; }          ///< likewise
  /// The direction that CalcFaceNormal last found.
  const SUnitNormal& UnitNormal() const { return unit_normal_; }

  // Only while the face is outside its model (Index() == -1).
  void SetCorners(std::span<CBinVertex* const> corners);  ///< 3 or 4 distinct vertices of the same model
  void SetTexture(CBinTexture* texture);
  // At any time; the model learns of it through its own operations.
  void SetType(uint32_t type) {
    if (index_ >= 0) NoteChange();
    type_ = type;
  }
  void SetTexCoord(int k, const STexCoord& coord) {
    if (index_ >= 0) NoteChange();
    tex_coords_[static_cast<size_t>(k)] = coord;
  }
  void SetStored(const SPoint& normal, int32_t magic);
  void SetUnitNormal(const SUnitNormal& normal) const { unit_normal_ = normal; }

 private:
  friend class CBinModel;
  friend class CModelStep;
  void NoteChange() const;
  // What ties the face to its model comes first, so that walks over large models fetch one cache line a face.
  CBinModel* owner_;
  int32_t index_ = -1;
  uint32_t type_ = kFaceTextured;
  std::array<CBinVertex*, 4> corners_ = {};
  CBinTexture* texture_ = nullptr;
  std::array<STexCoord, 4> tex_coords_ = {};
  mutable SUnitNormal unit_normal_;  ///< derived from the corners by whoever computes the normal
  SPoint stored_normal_;
  int32_t stored_magic_ = 0;
  bool selected_ = false;
  bool hidden_ = false;
};

/// Both have the same corners in the same cyclic order; the first corner may differ.
bool IsSamePolygon(const CBinFace& a, const CBinFace& b);

enum class EGroupKind { kFaces = 1, kVertices = 2 };

/// A named list of faces or vertices.
class CBinGroup {
 public:
  CBinGroup(std::string name, EGroupKind kind, std::vector<int32_t> members = {})
      : name_(std::move(name)), kind_(kind), members_(std::move(members)) {}
  const std::string& Name() const { return name_; }
  EGroupKind Kind() const { return kind_; }
  /// Face or vertex indices, each once, in the order in which they were chosen.
  const std::vector<int32_t>& Members() const { return members_; }

 private:
  friend class CBinModel;
  std::string name_;
  EGroupKind kind_;
  std::vector<int32_t> members_;
};

}  // namespace veldra
