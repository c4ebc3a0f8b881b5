#include <functional>
#include <random>

#include "document/documentfixture.h"
#include "document/modelcopy.h"
#include "editing/modelcommands.h"
#include "editing/vertexcommands.h"
#include "model/appendmodel.h"
#include "model/snapshot.h"
#include "support/richmodel.h"

namespace veldra::testing {
namespace {

std::vector<uint8_t> BytesOf(const CBinModel& model) {
  CByteWriter out;
  WriteSnapshot(model, out);
  return {out.Bytes().begin(), out.Bytes().end()};
}

class CStepsTest : public CDocumentTest {
 protected:
  void MoveVertexTo(int32_t x) { document.Model().SetVertexPosition(0, {x, 0, 0}); }
  int32_t X() const { return document.Model().Vertex(0).Position().x; }

  CTarnDoc document{Services()};
  CSteps& steps = document.Steps();
};

/// What a model had at one time.
struct SState {
  std::vector<uint8_t> content;
  SBounds bounds;
  bool operator==(const SState&) const = default;
};

/// Every operation of the model, on models that hold everything, in any order and several to a step.
class CAllOperations {
 public:
  CAllOperations(CTarnDoc& document, CTextureSet& textures, unsigned seed)
      : document_(document), model_(document.Model()), textures_(textures), random_(seed) {}

  void DoOne() {
    using A = CAllOperations;
    static constexpr void (A::*kAll[])() = {&A::Move,    &A::MoveAll, &A::Add,         &A::Remove, &A::Insert,
                                            &A::Unused,  &A::Types,   &A::Coordinates, &A::Turn,   &A::Corners,
                                            &A::Texture, &A::Groups,  &A::Regroup,     &A::Merge,  &A::Append,
                                            &A::Replace, &A::PutBack, &A::Above};
    (this->*kAll[Below(std::size(kAll))])();
  }

 private:
  template <typename Count>
  int32_t Below(Count count) {
    return static_cast<int32_t>(random_() % static_cast<unsigned>(count));
  }
  std::vector<int32_t> Some(int32_t count) {
    std::vector<int32_t> some;
    for (int32_t i = 0; i < count; ++i)
      if (Below(5) == 0) some.push_back(i);
    return some;
  }
  SPoint Point() { return {Below(40), Below(40), Below(40)}; }
  bool HasFaces() const { return model_.FaceCount() > 0; }

  void Move() { model_.SetVertexPosition(Below(model_.VertexCount()), Point()); }
  void MoveAll() { Translate(model_, {}, Below(9), Below(9), 1); }
  void Add() {
    model_.AddVertex(Point());
    const int32_t n = model_.AddVertex(Point()).Index();
    MakeFace(model_, {0, n - 1, n}, nullptr, kFaceUntextured);
  }
  void Remove() { model_.RemoveFaces(Some(model_.FaceCount())); }
  void Insert() {
    CBinModel::Faces faces;
    faces.push_back(std::make_unique<CBinFace>(model_));
    faces.back()->SetCorners(std::vector{&model_.Vertex(0), &model_.Vertex(1), &model_.Vertex(2)});
    model_.InsertFaces(std::move(faces), Below(model_.FaceCount() + 1));
    CBinModel::Vertices vertices;
    vertices.push_back(std::make_unique<CBinVertex>(model_, Point()));
    model_.InsertVertices(std::move(vertices), Below(model_.VertexCount()));
  }
  void Unused() {
    if (model_.VertexCount() - static_cast<int32_t>(model_.UnusedVertices().size()) > 4) document_.DeleteAllUnused();
  }
  void Types() { model_.ReplaceFaceType(HasFaces() ? model_.Face(0).Type() : 0, kFaceShiny); }
  void Above() { model_.ReplaceFaceTypesAbove(0x29, kFaceTextured); }
  void Coordinates() {
    for (const int32_t i : Some(model_.FaceCount())) {
      model_.Face(i).SetTexCoord(Below(3), {0.5, 0.25});
      model_.Face(i).SetStored(Point(), Below(9));
    }
    model_.ReportFacesChanged();
  }
  void Turn() { model_.TurnFacesRound(Some(model_.FaceCount())); }
  void Corners() {
    if (HasFaces())
      model_.SetFaceCorners(Below(model_.FaceCount()),
                            std::vector{&model_.Vertex(2), &model_.Vertex(1), &model_.Vertex(0)});
  }
  void Texture() {
    CBinTexture& entry = model_.AddTexture(
        std::make_unique<CBinTexture>(model_, "NEW.RAW", textures_.Image(static_cast<size_t>(Below(4)))));
    for (const int32_t i : Some(model_.FaceCount()))
      model_.SetFaceTexture(i, &entry);
    for (int32_t i = model_.TextureCount() - 1; i >= 0; --i)
      if (model_.Texture(i).UseCount() == 0 && Below(2) == 0) model_.DeleteTexture(model_.Texture(i), questions_);
  }
  void Groups() {
    const auto kind = Below(2) == 0 ? EGroupKind::kFaces : EGroupKind::kVertices;
    model_.AddGroups(kind, {CBinGroup("made", kind, {0})});
  }
  void Regroup() {
    if (!HasFaces() || model_.FaceGroups().empty()) return;
    const std::string name = model_.FaceGroups().front().Name();
    if (model_.GroupNameFault(EGroupKind::kFaces, "renamed").empty())
      model_.RenameGroup(EGroupKind::kFaces, name, "renamed");
    else
      model_.DeleteGroup(EGroupKind::kFaces, name);
  }
  void Merge() { MergeVertices(model_, 4); }
  void Append() {
    CBinModel other;
    CRichModelMaker(other, textures_, static_cast<unsigned>(random_())).Make(6, 4);
    AppendModel(model_, other, true);
  }
  void Replace() {
    CBinModel other;
    CRichModelMaker(other, textures_, static_cast<unsigned>(random_())).Make(30, 20);
    model_.TakeContents(other);
  }
  void PutBack() {
    std::vector<int32_t> unused = model_.UnusedVertices();
    if (!unused.empty()) model_.InsertVertices(model_.TakeVertices(unused), -1);
  }

  CTarnDoc& document_;
  CBinModel& model_;
  CTextureSet& textures_;
  std::minstd_rand random_;
  CScriptedQuestions questions_;
};

TEST_F(CStepsTest, AllOperationsGoBackAndForwardToEqualModels) {
  CTextureSet set;
  for (unsigned seed = 1; seed <= 30; ++seed) {
    CTarnDoc changed(Services());
    CBinModel& model = changed.Model();
    CRichModelMaker(model, set, seed).Make(40, 50);
    changed.Steps().Clear();
    const auto state = [&]() -> SState { return {BytesOf(model), model.Bounds()}; };
    CAllOperations operations(changed, set, seed);
    std::vector<SState> states = {state()};
    for (unsigned i = 0; i < 40; ++i) {
      {
        const CStep step(changed, "several");
        for (unsigned k = 0; k <= i % 4; ++k)
          operations.DoOne();
      }
      if (changed.Steps().Count() == states.size()) states.push_back(state());
      ASSERT_EQ(states.back(), state()) << "a change without a step, seed " << seed << ", step " << i;
    }
    for (int round = 0; round < 2; ++round) {
      for (size_t i = states.size() - 1; i-- > 0;) {
        changed.StepBack();
        ASSERT_EQ(model.CheckInvariants(), "") << "seed " << seed << ", back to " << i;
        ASSERT_EQ(state(), states[i]) << "seed " << seed << ", back to " << i;
      }
      EXPECT_FALSE(changed.CanStepBack());
      for (size_t i = 1; i < states.size(); ++i) {
        changed.StepForward();
        ASSERT_EQ(model.CheckInvariants(), "") << "seed " << seed << ", forward to " << i;
        ASSERT_EQ(state(), states[i]) << "seed " << seed << ", forward to " << i;
      }
    }
  }
}

TEST_F(CStepsTest, NamesJoinsAndDropsThem) {
  document.Model().AddVertex({});
  EXPECT_EQ(steps.BackName(), "Change");
  {
    const CStep outer(document, "Outer");
    const CStep inner(document, "Inner");
    MoveVertexTo(1);
    EXPECT_FALSE(steps.CanGoBack());  // half of one
  }
  EXPECT_EQ(steps.BackName(), "Inner");
  const auto run = [&](int32_t x, const char* join) {
    const CStep step(document, "Run");
    steps.Join(join);
    MoveVertexTo(x);
  };
  for (const int32_t x : {2, 3, 4})
    run(x, "a");
  run(5, "b");
  EXPECT_EQ(steps.Count(), 4u);
  document.StepBack();
  EXPECT_EQ(X(), 4);
  run(6, "a");  // after a step back nothing joins, and what was undone is gone
  EXPECT_FALSE(document.CanStepForward());
  document.StepBack();
  document.StepBack();
  EXPECT_EQ(X(), 1);
  document.StepForward();
  EXPECT_EQ(X(), 4);
  {
    const CStep nothing(document, "There and back");
    MoveVertexTo(9);
    MoveVertexTo(4);
  }
  EXPECT_TRUE(document.CanStepForward());  // nothing has changed
}

TEST_F(CStepsTest, TheModifiedMarkGoesWithTheSavedState) {
  AddTriangle(document.Model(), -10, 10, nullptr, kFaceUntextured);
  ASSERT_TRUE(document.SaveMTM(folder.File("a.bin")));
  MoveVertexTo(3);
  document.StepBack();
  EXPECT_FALSE(document.IsModified());
  document.StepForward();
  EXPECT_TRUE(document.IsModified());
  ASSERT_TRUE(document.Saver().Save());
  document.StepBack();
  EXPECT_TRUE(document.IsModified());
  document.StepForward();
  EXPECT_FALSE(document.IsModified());
  document.OnFileGone();
  document.StepBack();
  document.StepForward();
  EXPECT_TRUE(document.IsModified());
  document.SetReadOnly(true);
  EXPECT_FALSE(document.CanStepBack());
  document.Reload();
  EXPECT_EQ(steps.Count(), 0u);
}

TEST_F(CStepsTest, TheOldestGoAndAStepThatIsTooLargeEndsThem) {
  settings.step_memory = 1;
  CBinModel& model = document.Model();
  for (int32_t i = 0; i < 20'000; ++i)
    model.AddVertex({i, 0, 0});
  steps.Clear();
  for (int32_t i = 0; i < 10; ++i)
    Translate(document, {.x = 1});
  EXPECT_LT(steps.Bytes(), size_t{1} << 20);
  EXPECT_GT(steps.Count(), 1u);
  EXPECT_LT(steps.Count(), 10u);
  while (document.CanStepBack())
    document.StepBack();
  EXPECT_TRUE(document.IsModified());
  EXPECT_GT(X(), 0);
  for (int32_t i = 0; i < 60'000; ++i)
    model.AddVertex({});
  Translate(document, {.x = 1});
  EXPECT_FALSE(document.CanStepBack());
}

TEST_F(CStepsTest, GoesBackToACopyAsAStep) {
  AddTriangle(document.Model(), -10, 10, nullptr, kFaceUntextured);
  const std::vector<uint8_t> copy = WriteModelCopy({}, document.Model());
  MoveVertexTo(77);
  folder.Write("copy", std::string(copy.begin(), copy.end()));
  ASSERT_TRUE(document.GoBackTo(ReadCopyFile(folder.File("copy"))));
  EXPECT_EQ(X(), 0);
  document.StepBack();
  EXPECT_EQ(X(), 77);
  EXPECT_FALSE(document.GoBackTo({.bytes = {}, .fault = "cut short"}));
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1u);
}

}  // namespace
}  // namespace veldra::testing
