#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <limits>
#include <random>
#include <string>
#include <vector>

#include "platform/text.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "textures/texturefinder.h"

namespace veldra::testing {

/// Textures for models that a test makes up: T0.RAW to T3.RAW of widths 64 to 512, found without a question.
class CTextureSet {
 public:
  CTextureSet() : store_(questions_, GreyRamp()), finder_(store_, questions_, folder_.Path()) {
    for (size_t i = 0; i < kTextureSizes.size(); ++i)
      folder_.Write(Name(i), std::string(static_cast<size_t>(kTextureSizes[i]) * kTextureSizes[i], 'x'));
  }
  static std::string Name(size_t i) { return Format("T%zu.RAW", i); }
  const STextureImage* Image(size_t i) { return finder_.Find(Name(i)); }
  CTextureFinder& Finder() { return finder_; }

 private:
  CTempFolder folder_;
  CScriptedQuestions questions_;
  CTextureStore store_;
  CTextureFinder finder_;
};

/// Fills an empty model with what files and editing can leave in one: all kinds of faces and textures, coordinates on
/// and off the grid, stored normals of any value, groups in any order. The same SEED makes the same model.
class CRichModelMaker {
 public:
  CRichModelMaker(CBinModel& model, CTextureSet& textures, unsigned seed)
      : model_(model), textures_(textures), random_(seed) {}

  void Make(int32_t vertices, int32_t faces) {
    model_.SetScaleWord(Word());
    for (int32_t i = 0; i < vertices; ++i)
      model_.AddVertex({Value(), Value(), Value()});
    for (size_t i = 0; i < kTextureSizes.size(); ++i)
      model_.AddTexture(std::make_unique<CBinTexture>(model_, CTextureSet::Name(i), textures_.Image(i)));
    const double rates[] = {12.5, std::numeric_limits<double>::infinity(), 65536.0 / 4369};
    for (const double rate : rates)
      AddAnimation(rate);
    for (int32_t i = 0; i < faces && vertices >= 4; ++i)
      AddFace();
    for (const EGroupKind kind : {EGroupKind::kFaces, EGroupKind::kVertices})
      AddGroups(kind);
  }

 private:
  int Below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  /// Mostly small, sometimes anything.
  /// Any 32 bits.
  int32_t Word() {
    return static_cast<int32_t>(static_cast<uint32_t>(random_()) << 16 ^ static_cast<uint32_t>(random_()));
  }
  int32_t Value() { return Below(8) == 0 ? Word() : Below(2001) - 1000; }

  double Coord() {
    switch (Below(6)) {
      case 0:
        return std::uniform_real_distribution<double>(0, 1)(random_);
      case 1:
        return std::bit_cast<double>(uint64_t{static_cast<uint32_t>(Word())} << 32 | static_cast<uint32_t>(Word()));
      case 2:
        return Below(2) == 0 ? -0.0 : 1.0;
      default:
        return Below(64) / 63.0;
    }
  }

  void AddAnimation(double rate) {
    std::vector<CBinTexture::SFrame> frames;
    for (int i = 0; i <= Below(4); ++i) {
      const auto number = static_cast<size_t>(Below(4));
      frames.push_back({LowerCase(CTextureSet::Name(number)), textures_.Image(number)});
    }
    model_.AddTexture(std::make_unique<CBinTexture>(model_, Format("ANIM \xE9 %d", Below(3)), frames, rate));
  }

  void AddFace() {
    std::vector<int32_t> corners;
    while (corners.size() < static_cast<size_t>(3 + Below(2))) {
      const int32_t vertex = Below(model_.VertexCount());
      if (std::find(corners.begin(), corners.end(), vertex) == corners.end()) corners.push_back(vertex);
    }
    const uint32_t types[] = {0x0E, 0x11, 0x18, 0x19, 0x29, 0x33, 0, 0xFFFFFFFF};
    const uint32_t type = types[Below(8)];
    CBinTexture* const texture = type == kFaceUntextured ? nullptr : &model_.Texture(Below(model_.TextureCount()));
    CBinFace& face = MakeFace(model_, corners, texture, type);
    for (int k = 0; k < 4; ++k)
      face.SetTexCoord(k, {Coord(), Coord()});
    face.SetStored({Value(), Value(), std::numeric_limits<int32_t>::min()}, Value());
  }

  void AddGroups(EGroupKind kind) {
    const int32_t limit = kind == EGroupKind::kFaces ? model_.FaceCount() : model_.VertexCount();
    for (int i = 0; i < 3; ++i) {
      std::vector<int32_t> members;
      for (int k = Below(20); k > 0 && limit > 0; --k)
        members.push_back(Below(limit));
      model_.AddGroup(kind, Format("group %d\n\"\xC3\xA4\"", i), members);
    }
  }

  CBinModel& model_;
  CTextureSet& textures_;
  std::minstd_rand random_;
};

inline uint64_t Bits(double value) {
  return std::bit_cast<uint64_t>(value);
}

inline void ExpectEqualTextures(const CBinModel& a, const CBinModel& b) {
  ASSERT_EQ(a.TextureCount(), b.TextureCount());
  for (int32_t i = 0; i < a.TextureCount(); ++i) {
    ASSERT_EQ(a.Texture(i).Kind(), b.Texture(i).Kind());
    ASSERT_EQ(a.Texture(i).Name(), b.Texture(i).Name());
    ASSERT_EQ(Bits(a.Texture(i).Rate()), Bits(b.Texture(i).Rate()));
    ASSERT_EQ(a.Texture(i).Frames().size(), b.Texture(i).Frames().size());
    for (size_t k = 0; k < a.Texture(i).Frames().size(); ++k) {
      ASSERT_EQ(a.Texture(i).Frames()[k].name, b.Texture(i).Frames()[k].name);
      ASSERT_EQ(a.Texture(i).Frames()[k].image, b.Texture(i).Frames()[k].image);
    }
  }
}

inline void ExpectEqualFaces(const CBinModel& a, const CBinModel& b) {
  ASSERT_EQ(a.FaceCount(), b.FaceCount());
  for (int32_t i = 0; i < a.FaceCount(); ++i) {
    const CBinFace& face = a.Face(i);
    const CBinFace& other = b.Face(i);
    ASSERT_EQ(face.Type(), other.Type());
    ASSERT_EQ(face.CornerCount(), other.CornerCount());
    for (int k = 0; k < face.CornerCount(); ++k)
      ASSERT_EQ(face.Corner(k)->Index(), other.Corner(k)->Index());
    for (int k = 0; k < 4; ++k) {
      ASSERT_EQ(Bits(face.TexCoord(k).u), Bits(other.TexCoord(k).u)) << "face " << i << " corner " << k;
      ASSERT_EQ(Bits(face.TexCoord(k).v), Bits(other.TexCoord(k).v)) << "face " << i << " corner " << k;
    }
    ASSERT_EQ(a.TextureIndex(face.Texture()), b.TextureIndex(other.Texture()));
    ASSERT_EQ(face.StoredNormal(), other.StoredNormal());
    ASSERT_EQ(face.StoredMagic(), other.StoredMagic());
  }
}

/// Everything that a user can see or save.
inline void ExpectEqualModels(const CBinModel& a, const CBinModel& b) {
  EXPECT_EQ(b.CheckInvariants(), "");
  ASSERT_EQ(a.ScaleWord(), b.ScaleWord());
  ASSERT_EQ(a.VertexCount(), b.VertexCount());
  for (int32_t i = 0; i < a.VertexCount(); ++i)
    ASSERT_EQ(a.Vertex(i).Position(), b.Vertex(i).Position());
  ExpectEqualTextures(a, b);
  ExpectEqualFaces(a, b);
  for (const EGroupKind kind : {EGroupKind::kFaces, EGroupKind::kVertices}) {
    ASSERT_EQ(a.GroupsOf(kind).size(), b.GroupsOf(kind).size());
    for (size_t i = 0; i < a.GroupsOf(kind).size(); ++i) {
      ASSERT_EQ(a.GroupsOf(kind)[i].Name(), b.GroupsOf(kind)[i].Name());
      ASSERT_EQ(a.GroupsOf(kind)[i].Members(), b.GroupsOf(kind)[i].Members());
    }
  }
}

}  // namespace veldra::testing
