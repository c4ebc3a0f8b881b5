#include <gmock/gmock.h>

#include <numeric>
#include <random>

#include "model/modelbuilder.h"
#include "model/normals.h"
#include "support/scriptedquestions.h"

namespace veldra::testing {

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using Indices = std::vector<int32_t>;

std::unique_ptr<CBinFace> Triangle(CBinModel& model, int32_t a, int32_t b, int32_t c, CBinTexture* texture = nullptr) {
  auto face = std::make_unique<CBinFace>(model);
  CBinVertex* const corners[] = {&model.Vertex(a), &model.Vertex(b), &model.Vertex(c)};
  face->SetCorners(corners);
  face->SetTexture(texture);
  face->SetType(texture == nullptr ? kFaceUntextured : kFaceTextured);
  return face;
}

CBinModel::Faces Triangles(CBinModel& model, const std::vector<std::array<int32_t, 3>>& corners) {
  CBinModel::Faces faces;
  for (const auto& [a, b, c] : corners)
    faces.push_back(Triangle(model, a, b, c));
  return faces;
}

/// Six vertices in a row along x, at 0, 10, 20 and so on, and three triangles.
class CBinModelTest : public ::testing::Test {
 protected:
  CBinModelTest() : model(builder.model) {
    for (int32_t i = 0; i < 6; ++i)
      model.AddVertex({10 * i, i % 2, -i});
    builder.Face({0, 1, 2});
    builder.Face({1, 2, 3});
    builder.Face({0, 1, 3});
    builder.TakeReports();
  }
  ~CBinModelTest() override { EXPECT_EQ(model.CheckInvariants(), ""); }

  const Indices& Group(EGroupKind kind, std::string_view name) { return model.FindGroup(kind, name)->Members(); }
  std::vector<int32_t> Xs() const {
    std::vector<int32_t> xs;
    for (const SPoint& position : builder.Positions())
      xs.push_back(position.x);
    return xs;
  }

  CScriptedQuestions questions;
  CModelBuilder builder;
  CBinModel& model;
};

TEST_F(CBinModelTest, InsertedFacesStandInPlaceWithComputedNormals) {
  model.AddGroup(EGroupKind::kFaces, "g", Indices{2, 0, 1});
  auto faces = Triangles(model, {{3, 4, 5}, {0, 2, 4}});
  faces[0]->SetStored({1, 1, 1}, 1);
  const CBinFace* const first = faces[0].get();
  builder.TakeReports();
  model.InsertFaces(std::move(faces), 1);
  EXPECT_EQ(&model.Face(1), first);
  EXPECT_THAT(builder.Polygons(), ElementsAre(ElementsAre(0, 1, 2), ElementsAre(3, 4, 5), ElementsAre(0, 2, 4),
                                              ElementsAre(1, 2, 3), ElementsAre(0, 1, 3)));
  EXPECT_EQ(first->StoredNormal(), CalcFaceNormal(*first));
  EXPECT_EQ(first->StoredMagic(), CalcMagic(*first));
  EXPECT_THAT(Group(EGroupKind::kFaces, "g"), ElementsAre(4, 0, 3));
  EXPECT_EQ(builder.TakeReports().size(), 1U);
}

TEST_F(CBinModelTest, RemovedFacesLetGoOfVerticesTexturesAndGroups) {
  CBinTexture& road = builder.Plain("ROAD.RAW");
  model.SetFaceTexture(0, &road);
  model.SetFaceTexture(2, &road);
  model.AddGroup(EGroupKind::kFaces, "g", Indices{2, 1});
  model.AddGroup(EGroupKind::kFaces, "first", Indices{0});
  EXPECT_EQ(road.UseCount(), 2);
  builder.TakeReports();
  model.RemoveFaces(Indices{0, 1});
  EXPECT_EQ(builder.TakeReports().size(), 1U);
  EXPECT_THAT(builder.Polygons(), ElementsAre(ElementsAre(0, 1, 3)));
  EXPECT_THAT(Group(EGroupKind::kFaces, "g"), ElementsAre(0));
  EXPECT_THAT(Group(EGroupKind::kFaces, "first"), IsEmpty());
  EXPECT_TRUE(model.Vertex(2).Faces().Empty());
  model.RemoveFaces(0, 1);
  EXPECT_EQ(road.UseCount(), 0);
}

TEST_F(CBinModelTest, TakenVerticesGoBackToTheirPlaces) {
  model.RemoveFaces(0, 3);
  const struct {
    Indices taken;
    std::vector<int32_t> left;
    Indices group;  ///< what remains of {5, 3, 0}
  } rows[] = {
      {{0}, {10, 20, 30, 40, 50}, {4, 2}}, {{1, 2, 4}, {0, 30, 50}, {2, 1, 0}},      {{3, 5}, {0, 10, 20, 40}, {0}},
      {{0, 1, 2, 3, 4, 5}, {}, {}},        {{}, {0, 10, 20, 30, 40, 50}, {5, 3, 0}},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(row.taken.size());
    model.AddGroup(EGroupKind::kVertices, "v", Indices{5, 3, 0});
    CBinModel::Vertices taken = model.TakeVertices(row.taken);
    EXPECT_EQ(Xs(), row.left);
    EXPECT_EQ(Group(EGroupKind::kVertices, "v"), row.group);
    EXPECT_EQ(model.CheckInvariants(), "");
    std::vector<const CBinVertex*> objects;
    for (const auto& vertex : taken) {
      EXPECT_FALSE(model.IsValid(vertex.get()));
      objects.push_back(vertex.get());
    }
    model.InsertVertices(std::move(taken), -1);
    EXPECT_THAT(Xs(), ElementsAre(0, 10, 20, 30, 40, 50));
    for (size_t k = 0; k < row.taken.size(); ++k)
      EXPECT_EQ(&model.Vertex(row.taken[k]), objects[k]);
    for (size_t k = 0; k < row.group.size(); ++k)
      EXPECT_GE(Group(EGroupKind::kVertices, "v")[k], row.group[k]);
    EXPECT_EQ(model.CheckInvariants(), "");
    model.DeleteGroup(EGroupKind::kVertices, "v");
  }
}

TEST_F(CBinModelTest, UsedVerticesAreNotDeleted) {
  EXPECT_FALSE(model.DeleteVertices(Indices{2, 4, 5}, questions));
  EXPECT_FALSE(model.DeleteVertices(3, 3, questions));
  EXPECT_EQ(model.VertexCount(), 6);
  EXPECT_EQ(questions.TakeMessageTexts().size(), 2U);
  model.RemoveFaces(0, 2);
  EXPECT_TRUE(model.DeleteVertices(Indices{2}, questions));
  EXPECT_THAT(builder.Corners(0), ElementsAre(0, 1, 2));
  EXPECT_EQ(model.TakeVertices(model.UnusedVertices()).size(), 2U);
  EXPECT_EQ(model.Bounds(), (SBounds{{0, 0, -3}, {30, 1, 0}})) << "recomputed";
}

TEST_F(CBinModelTest, BoundsFollowTheVertices) {
  EXPECT_EQ(model.BoundsOfFaces(Indices{1}), (SBounds{{10, 0, -3}, {30, 1, -1}}));
  EXPECT_EQ(model.BoundsOfVertices(Indices{5}), (SBounds{{50, 1, -5}, {50, 1, -5}}));
  EXPECT_EQ(model.BoundsOfFaces({}), std::nullopt);
  EXPECT_EQ(model.BoundsOfVertices({}), std::nullopt);
  model.SetVertexPosition(5, {1, 1, 1});
  EXPECT_EQ(model.Bounds(), (SBounds{{0, 0, -4}, {40, 1, 1}}));
  EXPECT_EQ(builder.TakeReports().size(), 1U);

  // The last vertex gone, the maxima stay; the next vertex starts anew.
  CBinModel emptied;
  emptied.AddVertex({5, 6, 7});
  emptied.TakeVertices(emptied.UnusedVertices());
  EXPECT_EQ(emptied.Bounds(), (SBounds{{0, 0, 0}, {5, 6, 7}}));
  emptied.RecomputeMinima(1);
  emptied.AddVertex({-1, 1, 1});
  EXPECT_EQ(emptied.Bounds(), (SBounds{{-1, 1, 1}, {-1, 1, 1}}));
}

TEST_F(CBinModelTest, GroupNamesAreUniqueWithinTheirKind) {
  model.AddGroup(EGroupKind::kFaces, "hood", Indices{1, 0, 1});
  EXPECT_THAT(Group(EGroupKind::kFaces, "hood"), ElementsAre(1, 0));
  EXPECT_EQ(model.GroupNameFault(EGroupKind::kFaces, ""), "Please enter a name.");
  EXPECT_EQ(model.GroupNameFault(EGroupKind::kFaces, "hood"),
            "Specified name is already in use.\nPlease enter a different name.");
  EXPECT_EQ(model.GroupNameFault(EGroupKind::kFaces, "Hood"), "");
  EXPECT_EQ(model.GroupNameFault(EGroupKind::kVertices, "hood"), "");
  CBinModel::Groups more;
  for (const char* name : {"hood", "door", "hood", "hood 2", ""})
    more.emplace_back(name, EGroupKind::kFaces, Indices{2});
  EXPECT_THAT(model.AddGroups(EGroupKind::kFaces, more), ElementsAre("hood 2", "door", "hood 3", "hood 2 2", "group"));
}

/// One random change; what it needs of the model is made sure of here.
class CRandomEdits {
 public:
  CRandomEdits(CModelBuilder& builder, uint32_t seed) : builder_(builder), model_(builder.model), random_(seed) {}

  void Step() {
    switch (Below(9)) {
      case 0:
        return InsertVertices();
      case 1:
      case 2:
        return InsertFaces();
      case 3:
        return model_.RemoveFaces(Some(model_.FaceCount(), 8));
      case 4:
        return TakeAndPutBack();
      case 5:
        static_cast<void>(model_.DeleteVertices(Some(model_.VertexCount(), 16), questions_));
        return;
      case 6:
        return model_.TurnFacesRound(Some(model_.FaceCount(), 2));
      case 7:
        return AddGroup();
      default:
        for (const int32_t face : Some(model_.FaceCount(), 4))
          model_.SetFaceTexture(face, Below(2) == 0 ? nullptr : &model_.Texture(Below(model_.TextureCount())));
    }
  }

 private:
  int32_t Below(int32_t limit) { return static_cast<int32_t>(random_() % static_cast<uint32_t>(limit)); }

  /// One in PART of COUNT indices.
  Indices Some(int32_t count, int32_t part) {
    Indices indices;
    for (int32_t i = 0; i < count; ++i) {
      if (Below(part) == 0) indices.push_back(i);
    }
    return indices;
  }

  void InsertVertices() {
    CBinModel::Vertices vertices;
    for (int32_t i = Below(5); i >= 0; --i)
      vertices.push_back(std::make_unique<CBinVertex>(model_, SPoint{Below(99) - 50, Below(99), -Below(99)}));
    model_.InsertVertices(std::move(vertices), Below(model_.VertexCount() + 1));
  }

  void InsertFaces() {
    if (model_.VertexCount() < 4) return InsertVertices();
    CBinModel::Faces faces;
    for (int32_t i = Below(9); i >= 0; --i) {
      Indices corners(static_cast<size_t>(model_.VertexCount()));
      std::iota(corners.begin(), corners.end(), 0);
      std::shuffle(corners.begin(), corners.end(), random_);
      faces.push_back(Triangle(model_, corners[0], corners[1], corners[2], &model_.Texture(Below(2))));
    }
    model_.InsertFaces(std::move(faces), Below(model_.FaceCount() + 1));
  }

  void TakeAndPutBack() {
    const auto before = builder_.Positions();
    model_.InsertVertices(model_.TakeVertices(model_.UnusedVertices()), -1);
    EXPECT_EQ(builder_.Positions(), before);
  }

  void AddGroup() {
    const EGroupKind kind = Below(2) == 0 ? EGroupKind::kFaces : EGroupKind::kVertices;
    if (model_.GroupsOf(kind).size() == 4) return model_.DeleteGroup(kind, model_.GroupsOf(kind)[1].Name());
    CBinModel::Groups groups;
    groups.emplace_back("g", kind, Some(kind == EGroupKind::kFaces ? model_.FaceCount() : model_.VertexCount(), 3));
    model_.AddGroups(kind, groups);
  }

  CModelBuilder& builder_;
  CBinModel& model_;
  std::mt19937 random_;
  CScriptedQuestions questions_;
};

TEST(BinModelRandom, InvariantsHoldAfterEveryOperation) {
  for (uint32_t seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(::testing::Message() << "seed " << seed);
    CModelBuilder builder;
    builder.Plain("A.RAW");
    builder.Animated("B", {"B.RAW"}, 5.0);
    CRandomEdits edits(builder, seed);
    for (int step = 0; step < 200; ++step) {
      edits.Step();
      ASSERT_EQ(builder.model.CheckInvariants(), "") << "step " << step;
    }
  }
}

}  // namespace

}  // namespace veldra::testing
