#include <algorithm>
#include <array>

#include "document/history.h"
#include "documentfixture.h"

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
  /// Takes three unused vertices out of the model as a deletion that the history owns.
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
  std::sort(log.lines.begin(), log.lines.end());
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

TEST_F(CHistoryTest, VerticesComeBackAsTheSameObjects) {
  for (int32_t x = 0; x < 5; ++x)
    document.Model().AddVertex({x, 0, 0});
  CHistory history(document, 10);
  const CBinVertex* const second = &document.Model().Vertex(2);
  AddDeletion(history);
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 3}));
  history.Undo();
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 1, 2, 3, 4}));
  EXPECT_EQ(&document.Model().Vertex(2), second);
  EXPECT_EQ(document.Model().CheckInvariants(), "");
  history.Redo();
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 3}));
  EXPECT_EQ(history.Action(0).GetName(), "Delete 3 Vertices");

  CBinVertex* const added[] = {&document.Model().AddVertex({7, 0, 0})};
  history.Add(std::make_unique<CVertexAction>(history, added, true));
  EXPECT_EQ(history.Action(1).GetName(), "Add Vertex");
  history.Undo();
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 3}));
  history.Redo();
  EXPECT_EQ(Xs(), (std::vector<int32_t>{0, 3, 7}));
}

// What these prove shows under the address sanitizer: nothing is deleted twice, and nothing is left.
TEST_F(CHistoryTest, VerticesBelongToWhoHoldsThem) {
  for (int32_t x = 0; x < 5; ++x)
    document.Model().AddVertex({x, 0, 0});
  {
    CHistory history(document, 10);
    AddDeletion(history);
    history.Undo();
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

TEST_F(CHistoryTest, RecordingIsSwitchedOff) {
  CHistory history(document, 100);
  CBinVertex* const added[] = {&document.Model().AddVertex({1, 2, 3})};
  EXPECT_FALSE(CHistory::RecordVertexChange(history, added, true));
  EXPECT_EQ(history.Size(), 0);
}

}  // namespace
}  // namespace veldra::testing
