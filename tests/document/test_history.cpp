#include <array>

#include "document/documentfixture.h"
#include "document/history.h"
#include "editing/modelcommands.h"

namespace veldra::testing {
namespace {

/// Notes what the history does with it.
struct SLog {
  std::vector<std::string> lines;
};

class CLoggedAction : public CHistoryAction {
 public:
  CLoggedAction(CHistory& history, SLog& log, std::string name)
      : CHistoryAction(history), log_(log), name_(std::move(name)) {}
  ~CLoggedAction() override { Note(history_.IsDeletingUndone() ? "deleted undone" : "deleted done"); }
  void Undo() override { Note(history_.IsBusy() ? "undo" : "undo, not busy"); }
  void Redo() override { Note(history_.IsBusy() ? "redo" : "redo, not busy"); }
  std::string GetName() const override { return name_; }

 private:
  void Note(const std::string& what) { log_.lines.push_back(name_ + ' ' + what); }
  SLog& log_;
  std::string name_;
};

using Lines = std::vector<std::string>;

class CHistoryTest : public CDocumentTest {
 protected:
  void Add(CHistory& history, const std::string& name) {
    history.Add(std::make_unique<CLoggedAction>(history, log, name));
  }
  /// Takes three unused vertices out of the model as a deletion that HISTORY, not the document's, owns.
  void AddDeletion(CHistory& history) {
    const std::array<int32_t, 3> indices = {1, 2, 4};
    CBinModel::Vertices taken = document.Model().TakeVertices(indices);
    std::vector<CBinVertex*> vertices;
    for (auto& vertex : taken)
      vertices.push_back(vertex.release());
    history.Add(std::make_unique<CVertexAction>(history, vertices, false));
  }
  std::vector<int32_t> Xs() {
    std::vector<int32_t> xs;
    for (int32_t i = 0; i < document.Model().VertexCount(); ++i)
      xs.push_back(document.Model().Vertex(i).Position().x);
    return xs;
  }

  CTarnDoc document{Services()};
  SLog log;
};

TEST_F(CHistoryTest, AFullListDropsTheOldestAsDone) {
  CHistory history(document, 3);
  for (const char* name : {"a", "b", "c", "d"})
    Add(history, name);
  EXPECT_EQ(history.Size(), 3);
  EXPECT_EQ(history.Current(), 3);
  EXPECT_EQ(log.lines, Lines{"a deleted done"});
  EXPECT_EQ(history.Action(0).GetName(), "b");
}

TEST_F(CHistoryTest, AddingDiscardsWhatWasUndone) {
  CHistory history(document, 100);
  for (const char* name : {"a", "b", "c"})
    Add(history, name);
  history.Undo();
  history.Undo();
  EXPECT_TRUE(history.CanRedo());
  Add(history, "d");
  EXPECT_EQ(log.lines, (Lines{"c undo", "b undo", "b deleted undone", "c deleted undone"}));
  EXPECT_EQ(history.Current(), 2);
  EXPECT_EQ(history.Size(), 2);
  EXPECT_FALSE(history.CanRedo());
}

TEST_F(CHistoryTest, ClearTellsDoneFromUndone) {
  CHistory history(document, 5);
  for (const char* name : {"a", "b", "c"})
    Add(history, name);
  history.Undo();
  history.Redo();
  history.Undo();
  log.lines.clear();
  history.Clear();
  EXPECT_EQ(history.Size(), 0);
  EXPECT_EQ(history.Current(), 0);
  EXPECT_FALSE(history.CanUndo());
  EXPECT_EQ(log.lines, (Lines{"a deleted done", "b deleted done", "c deleted undone"}));
}

TEST_F(CHistoryTest, ASmallerDepthDropsTheOldestAndLeavesTheCursor) {
  CHistory history(document, 5);
  for (const char* name : {"a", "b", "c"})
    Add(history, name);
  history.Undo();
  history.SetMaxDepth(2);
  EXPECT_EQ(history.Size(), 2);
  EXPECT_EQ(history.Current(), 2);
  EXPECT_EQ(history.Action(0).GetName(), "b");
}

TEST_F(CHistoryTest, WhatTheModelGetsAndLosesIsUndoneAndRedoneWhole) {
  CBinModel& model = document.Model();
  FillGood(model);  // vertices 0 to 2
  settings.unused_verts_msg = 0;
  struct SState {
    std::vector<SPoint> positions;
    std::vector<CBinVertex*> objects;
    bool operator==(const SState&) const = default;
  };
  const auto state = [&] {
    SState now;
    for (int32_t i = 0; i < model.VertexCount(); ++i) {
      now.positions.push_back(model.Vertex(i).Position());
      now.objects.push_back(&model.Vertex(i));
    }
    return now;
  };
  std::vector<SState> states = {state()};
  const auto did = [&](bool well) {
    EXPECT_TRUE(well);
    states.push_back(state());
  };
  for (int32_t x = 0; x < 4; ++x)
    did(AddVertex(document, {{100 * x, 7, x}}));
  CBinModel::Vertices inserted;
  for (int32_t x = 0; x < 2; ++x)
    inserted.push_back(std::make_unique<CBinVertex>(model, SPoint{-x, -100, 0}));
  model.InsertVertices(std::move(inserted), 1);
  did(true);
  did(model.DeleteVertices(std::vector<int32_t>{1, 6}, questions));
  did(MergeCloseVertices(document, {40}) > 0);  // the corners of the face become one vertex
  did(document.DeleteAllUnused() > 0);

  for (size_t k = states.size(); k-- > 1;) {
    EXPECT_EQ(state(), states[k]) << "before undo " << k;
    document.Undo();
    EXPECT_EQ(model.CheckInvariants(), "");
  }
  EXPECT_EQ(state(), states.front());
  for (size_t k = 1; k < states.size(); ++k) {
    document.Redo();
    EXPECT_EQ(state(), states[k]) << "after redo " << k;
    EXPECT_EQ(model.CheckInvariants(), "");
  }
}

// What these prove shows under the address sanitizer: nothing is deleted twice, and nothing is left.
TEST_F(CHistoryTest, VerticesBelongToWhoHoldsThem) {
  for (int32_t x = 0; x < 5; ++x)
    document.Model().AddVertex({x, 0, 0});
  {
    CHistory history(document, 10);
    AddDeletion(history);
    EXPECT_EQ(history.Action(0).GetName(), "Delete 3 Vertices");
    history.Undo();
    CBinVertex* const one[] = {&document.Model().Vertex(0)};
    EXPECT_EQ(CVertexAction(history, one, true).GetName(), "Add Vertex");
    Add(history, "discards the deletion that was undone");
  }
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 1, 2, 3, 4}));
  {
    CHistory history(document, 10);
    AddDeletion(history);
    CBinVertex* const added[] = {&document.Model().AddVertex({8, 0, 0}), &document.Model().AddVertex({9, 0, 0})};
    history.Add(std::make_unique<CVertexAction>(history, added, true));
    EXPECT_EQ(history.Action(1).GetName(), "Add 2 Vertices");
    history.Undo();
  }
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 3}));
}

}  // namespace
}  // namespace veldra::testing
