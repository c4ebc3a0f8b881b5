#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "model/geometry.h"
#include "model/mergecount.h"
#include "model/modelbuilder.h"

namespace veldra {
namespace {

using testing::CModelBuilder;
using testing::kLeast;
using testing::kMost;
using Indices = std::vector<int32_t>;
using Positions = std::vector<SPoint>;
using Polygons = std::vector<Indices>;

/// The definition, as literally as it can be written, on plain lists.
struct SReference {
  Positions positions;
  Polygons polygons;
  std::vector<std::vector<double>> marks;  ///< for each face what is attached to its corners
  Indices face_of;                         ///< for each face the old index
  Indices seed_of;

  static bool Matches(const SPoint& a, const SPoint& b, int32_t threshold) {
    const uint32_t d[3] = {static_cast<uint32_t>(a.x) - static_cast<uint32_t>(b.x),
                           static_cast<uint32_t>(a.y) - static_cast<uint32_t>(b.y),
                           static_cast<uint32_t>(a.z) - static_cast<uint32_t>(b.z)};
    const auto sum = static_cast<int32_t>(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
    return sum >= 0 && static_cast<int32_t>(std::sqrt(static_cast<double>(sum))) <= threshold;
  }

  static bool Same(const Indices& a, const Indices& b) {
    if (a.size() != b.size()) return false;
    for (size_t turn = 0; turn < a.size(); ++turn) {
      Indices turned = b;
      std::rotate(turned.begin(), turned.begin() + static_cast<std::ptrdiff_t>(turn), turned.end());
      if (turned == a) return true;
    }
    return false;
  }

  void Remove(size_t face) {
    const auto at = static_cast<std::ptrdiff_t>(face);
    polygons.erase(polygons.begin() + at);
    marks.erase(marks.begin() + at);
    face_of.erase(face_of.begin() + at);
  }

  /// True when the face went.
  bool Replace(size_t face, int32_t member, int32_t seed) {
    Indices& polygon = polygons[face];
    const auto corner = std::find(polygon.begin(), polygon.end(), member);
    if (corner == polygon.end()) return false;
    const bool falls_together = std::count(polygon.begin(), polygon.end(), seed) > 0;
    if (!falls_together) {
      *corner = seed;
    } else {
      marks[face].erase(marks[face].begin() + (corner - polygon.begin()));
      polygon.erase(corner);
    }
    bool goes = polygon.size() < 3;
    for (size_t other = 0; other < polygons.size(); ++other) {
      goes = goes || (other != face && Same(polygons[face], polygons[other]));
    }
    if (goes) Remove(face);
    return goes;
  }

  int32_t Merge(int32_t threshold) {
    const auto count = static_cast<int32_t>(positions.size());
    seed_of.assign(positions.size(), -1);
    Indices seeds;
    int32_t merged = 0;
    for (int32_t i = 0; i < count; ++i) {
      if (seed_of[static_cast<size_t>(i)] >= 0) continue;
      seeds.push_back(i);
      seed_of[static_cast<size_t>(i)] = i;
      for (int32_t j = i + 1; j < count; ++j) {
        const auto at = static_cast<size_t>(j);
        if (seed_of[at] >= 0 || !Matches(positions[at], positions[static_cast<size_t>(i)], threshold)) continue;
        seed_of[at] = i;
        ++merged;
      }
    }
    for (const int32_t seed : seeds) {
      for (int32_t member = 0; member < count; ++member) {
        if (member == seed || seed_of[static_cast<size_t>(member)] != seed) continue;
        for (size_t face = 0; face < polygons.size();)
          face += Replace(face, member, seed) ? 0 : 1;
      }
    }
    Renumber(seeds);
    return merged;
  }

  void Renumber(const Indices& seeds) {
    Positions left;
    Indices number(positions.size(), -1);
    for (const int32_t seed : seeds) {
      number[static_cast<size_t>(seed)] = static_cast<int32_t>(left.size());
      left.push_back(positions[static_cast<size_t>(seed)]);
    }
    for (Indices& polygon : polygons) {
      for (int32_t& corner : polygon)
        corner = number[static_cast<size_t>(corner)];
    }
    for (int32_t& seed : seed_of)
      seed = number[static_cast<size_t>(seed)];
    positions = left;
  }
};

SReference ReferenceOf(const CModelBuilder& b) {
  SReference reference{b.Positions(), b.Polygons(), {}, {}, {}};
  for (int32_t i = 0; i < b.model.FaceCount(); ++i) {
    reference.face_of.push_back(i);
    reference.marks.emplace_back();
    for (int k = 0; k < b.model.Face(i).CornerCount(); ++k)
      reference.marks.back().push_back(b.model.Face(i).TexCoord(k).u);
  }
  return reference;
}

/// Merges both ways and compares everything that can differ.
void ExpectLikeReference(CModelBuilder& b, int32_t threshold) {
  SReference reference = ReferenceOf(b);
  const auto old_vertices = static_cast<int32_t>(reference.positions.size());
  const int32_t expected = reference.Merge(threshold);
  b.TakeReports();
  const auto faces = static_cast<int32_t>(b.model.FaceCount() - static_cast<int32_t>(reference.polygons.size()));
  EXPECT_EQ(CMergeCounter(b.model).Count(threshold), (SMergeCount{expected, faces}));
  ASSERT_EQ(MergeVertices(b.model, threshold), expected);
  EXPECT_EQ(b.TakeReports().size(), expected > 0 ? 1U : 0U);
  EXPECT_EQ(b.model.CheckInvariants(), "");
  EXPECT_EQ(b.Positions(), reference.positions);
  ASSERT_EQ(b.Polygons(), reference.polygons);
  for (int32_t i = 0; i < b.model.FaceCount(); ++i) {
    const CBinFace& face = b.model.Face(i);
    const auto at = static_cast<size_t>(i);
    EXPECT_EQ(face.StoredMagic(), reference.face_of[at]);
    for (int k = 0; k < face.CornerCount(); ++k)
      EXPECT_EQ(face.TexCoord(k).u, reference.marks[at][static_cast<size_t>(k)]);
  }
  if (b.model.VertexGroups().empty()) return;
  Indices members;
  for (int32_t i = 0; i < old_vertices; ++i) {
    const int32_t number = reference.seed_of[static_cast<size_t>(i)];
    if (std::find(members.begin(), members.end(), number) == members.end()) members.push_back(number);
  }
  EXPECT_EQ(b.model.VertexGroups()[0].Members(), members);
}

int32_t Pick(std::mt19937& random, const Indices& values) {
  return values[random() % values.size()];
}

/// A face over random vertices, remembering its index in the stored magic and its corners in u.
void AddRandomFace(CModelBuilder& b, std::mt19937& random, CBinTexture* texture) {
  Indices all(static_cast<size_t>(b.model.VertexCount()));
  for (size_t i = 0; i < all.size(); ++i)
    all[i] = static_cast<int32_t>(i);
  std::shuffle(all.begin(), all.end(), random);
  all.resize(std::min<size_t>(all.size(), 3 + random() % 2));
  CBinFace& face = b.Face(all, texture);
  face.SetStored({}, face.Index());
  for (int k = 0; k < face.CornerCount(); ++k)
    face.SetTexCoord(k, {face.Index() + k / 8.0, 0.0});
}

/// COUNT vertices with coordinates out of VALUES, and as many faces.
void FillRandom(CModelBuilder& b, std::mt19937& random, int count, const Indices& values) {
  CBinTexture* const texture = &b.Plain("A.RAW");
  for (int i = 0; i < count; ++i)
    b.model.AddVertex({Pick(random, values), Pick(random, values), Pick(random, values)});
  for (int i = 0; i < count && count >= 3; ++i)
    AddRandomFace(b, random, random() % 3 == 0 ? nullptr : texture);
  Indices all(static_cast<size_t>(count));
  for (size_t i = 0; i < all.size(); ++i)
    all[i] = static_cast<int32_t>(i);
  if (count > 0) b.model.AddGroup(EGroupKind::kVertices, "all", all);
  if (b.model.FaceCount() > 0) b.model.AddGroup(EGroupKind::kFaces, "some", Indices{0, b.model.FaceCount() / 2});
}

TEST(Merge, RandomModelsMatchTheDefinition) {
  const Indices near = {0, 1, 2, 3, 5, 8, 12, -1, -4};
  const Indices spread = {0, 100, 200, 300, 1000, 20000, 26000, -400, 65535, 46340, 30000};
  const Indices wrapping = {0, 1, -1, 65536, 65537, -65536, 131072, 46340, 46341, 92682, kLeast, kMost, 1 << 30, 12345};
  const Indices thresholds = {0,     0,     1,     2,      5,         100,   463, 46340,
                              46341, 65535, 65536, 200000, kMost - 1, kMost, -1,  kLeast};
  std::mt19937 random(20021);
  for (int round = 0; round < 4000; ++round) {
    CModelBuilder b;
    FillRandom(b, random, static_cast<int>(random() % 14), round % 3 == 0 ? near : round % 3 == 1 ? spread : wrapping);
    const int32_t threshold = Pick(random, thresholds);
    ASSERT_NO_FATAL_FAILURE(ExpectLikeReference(b, threshold)) << "round " << round << ", threshold " << threshold;
    ASSERT_FALSE(HasFailure()) << "round " << round << ", threshold " << threshold;
  }
}

/// Enough vertices for many cells and boxes, in extents on both sides of where sums begin to wrap.
TEST(Merge, LargerRandomModelsMatchTheDefinition) {
  std::mt19937 random(7);
  for (const int32_t extent : {20, 300, 37000, 46340, 70000, 100000, 3000000, kMost}) {
    for (const int32_t threshold : {0, 1, 3, 40, 2000, 46341, kMost}) {
      CModelBuilder b;
      std::uniform_int_distribution<int32_t> along(-extent / 2, extent / 2);
      const bool is_flat = threshold % 2 == 0;
      for (int i = 0; i < 700; ++i) {
        const SPoint p{along(random), along(random), is_flat ? 0 : along(random)};
        b.model.AddVertex(p);
        // Vertices that the wrapping brings together by chance are rare: some are put in their place.
        if (i % 5 == 0) b.model.AddVertex({p.x / 2 + 65536, p.y, p.z});
        if (i % 7 == 0) b.model.AddVertex({p.x, p.y > 0 ? p.y - 65536 : p.y + 65536, p.z});
      }
      for (int i = 0; i < 300; ++i)
        AddRandomFace(b, random, nullptr);
      ASSERT_NO_FATAL_FAILURE(ExpectLikeReference(b, threshold)) << extent << ' ' << threshold;
      ASSERT_FALSE(HasFailure()) << extent << ' ' << threshold;
    }
  }
}

TEST(Merge, GroupsAndTexturesFollow) {
  CModelBuilder b;
  b.Vertices({{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 0, 0}, {20, 0, 0}});
  CBinTexture& texture = b.Plain("A.RAW");
  b.Face({0, 1, 2}, &texture);
  b.Face({1, 2, 3}, &texture);
  b.Face({2, 3, 4}, &texture).SetStored({1, 2, 3}, 4);
  b.model.AddGroup(EGroupKind::kFaces, "faces", Indices{2, 1, 0});
  b.model.AddGroup(EGroupKind::kVertices, "vertices", Indices{4, 3, 0});
  EXPECT_EQ(MergeVertices(b.model, 0), 1);
  EXPECT_EQ(b.Polygons(), (Polygons{{0, 1, 2}, {2, 0, 3}}));
  EXPECT_EQ(b.model.FaceGroups()[0].Members(), (Indices{1, 0}));
  EXPECT_EQ(b.model.VertexGroups()[0].Members(), (Indices{3, 0}));
  EXPECT_EQ(texture.UseCount(), 2);
  EXPECT_EQ(b.model.Face(1).StoredNormal(), (SPoint{1, 2, 3}));
  EXPECT_EQ(b.model.Face(1).StoredMagic(), 4);
}

}  // namespace
}  // namespace veldra
