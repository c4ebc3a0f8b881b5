#include <QAbstractSpinBox>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QtTest>
#include <algorithm>
#include <set>

#include "app/editorfixture.h"
#include "model/snapshot.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

/// Numbers that are the same everywhere; not the library's, see docs/architecture.md.
class CDice {
 public:
  explicit CDice(uint32_t seed) : state_(seed) {}
  int Below(int limit) {
    state_ = state_ * 1664525 + 1013904223;
    return static_cast<int>((state_ >> 8) % static_cast<uint32_t>(limit));
  }

 private:
  uint32_t state_;
};

/// Enters something into each dialog that opens, and says OK where that is possible.
class CRandomUser {
 public:
  explicit CRandomUser(CDice& dice) : dice_(dice) {
    QObject::connect(&timer_, &QTimer::timeout, [this] {
      if (QWidget* dialog = QApplication::activeModalWidget(); dialog != nullptr && dialog->isVisible()) Use(*dialog);
    });
    timer_.start(1);
  }

 private:
  void Use(QWidget& dialog) {
    for (auto* edit : dialog.findChildren<QLineEdit*>())
      if (edit->isEnabled() && !edit->isReadOnly() && dice_.Below(2) == 0)
        edit->setText(QString::number(dice_.Below(6)));
    for (auto* choice : dialog.findChildren<QRadioButton*>())
      if (choice->isEnabled() && dice_.Below(3) == 0) choice->setChecked(true);
    auto* buttons = dialog.findChild<QDialogButtonBox*>();
    QPushButton* const ok = buttons == nullptr ? nullptr : buttons->button(QDialogButtonBox::Ok);
    if (ok != nullptr && ok->isEnabled()) {
      ok->click();
    } else {
      dialog.close();
    }
  }

  CDice& dice_;
  QTimer timer_;
};

std::vector<uint8_t> ContentOf(const CBinModel& model) {
  CByteWriter out;
  WriteSnapshot(model, out);
  return {out.Bytes().begin(), out.Bytes().end()};
}

/// All that stands in the menus which change models.
std::vector<const SCommandRow*> EditingCommands() {
  // Those that ask for files are tried elsewhere, with the functions that they call.
  const std::set<ECommand> asking = {ECommand::kModelReplaceTexture, ECommand::kInsertBin,     ECommand::kTextureLoad,
                                     ECommand::kTextureAnimation,    ECommand::kTextureImport, ECommand::kTexturePaste,
                                     ECommand::kTextureExport,       ECommand::kTextureChange, ECommand::kTextureColors,
                                     ECommand::kTextureEdit};
  const std::set<std::string> other_menus = {"menuFile",  "menuImport", "menuExport", "menuEdit",   "menuView",
                                             "menuSides", "menuDocks",  "menuTools",  "menuWindow", "menuHelp"};
  std::vector<const SCommandRow*> rows;
  for (const SMenuRow& menu : MenuRows()) {
    if (other_menus.contains(menu.name)) continue;
    for (const ECommand id : menu.commands)
      if (id != ECommand::kNone && FindSubmenu(id) == nullptr && !asking.contains(id)) rows.push_back(&CommandRow(id));
  }
  return rows;
}

}  // namespace

TEST_F(CEditorTest, EveryCommandStepsBackAndForward) {
  const std::vector<const SCommandRow*> rows = EditingCommands();
  std::set<std::string> changed;
  for (uint32_t seed = 1; seed <= 2; ++seed) {
    StartWith(WriteModel("box.bin", {.unused_vertex = seed % 2 == 0}));
    CTarnDoc& document = *frame->ActiveDocument();
    CBinModel& model = document.Model();
    CDice dice(seed);
    CRandomUser user(dice);
    std::vector<std::vector<uint8_t>> states = {ContentOf(model)};
    for (const SCommandRow* row : rows) {
      for (const EGroupKind kind : {kFaces, kVertices}) {
        const int32_t count = kind == kFaces ? model.FaceCount() : model.VertexCount();
        for (int32_t i = 0; i < count; ++i)
          model.Select(kind, {&i, 1}, dice.Below(3) == 0);
        const int32_t current = count == 0 ? -1 : dice.Below(count);
        kind == kFaces ? frame->ActiveView()->Cursor().SetFace(current)
                       : frame->ActiveView()->Cursor().SetVertex(current);
      }
      Settle();
      const size_t before = document.Steps().Count();
      frame->Action(row->id)->trigger();
      Settle();
      const std::vector<uint8_t> now = ContentOf(model);
      const bool is_change = now != states.back();
      // A run of one key stays one step.
      if (document.Steps().Count() > before) states.push_back(now);
      if (is_change && document.Steps().Count() == before) states.back() = now;
      if (is_change) changed.insert(row->name);
      ASSERT_EQ(document.Steps().Count() + 1, states.size()) << row->name;
      questions.TakeMessageTexts();
    }
    for (size_t i = states.size() - 1; i-- > 0;) {
      const std::string name = document.Steps().BackName();
      document.StepBack();
      ASSERT_TRUE(ContentOf(model) == states[i]) << "back over " << name;
    }
    EXPECT_FALSE(document.IsModified());
    for (size_t i = 1; i < states.size(); ++i) {
      const std::string name = document.Steps().ForwardName();
      document.StepForward();
      ASSERT_TRUE(ContentOf(model) == states[i]) << "forward over " << name;
    }
    document.SetModified(false);
  }
  EXPECT_GT(changed.size(), 25u);
}

TEST_F(CEditorTest, StepsAreNamedInTheMenuAndTakenWithKeys) {
  CTarnView& view = StartWith(WriteModel("box.bin"));
  CBinModel& model = frame->ActiveDocument()->Model();
  EXPECT_FALSE(frame->Action(ECommand::kEditUndo)->isEnabled());
  view.Cursor().SetVertex(0);
  const SPoint old = model.Vertex(0).Position();
  for (int i = 0; i < 3; ++i)
    QTest::keyClick(&view, Qt::Key_X);
  Settle();
  const SPoint moved = model.Vertex(0).Position();
  EXPECT_NE(moved, old);
  EXPECT_EQ(frame->Action(ECommand::kEditStepBack)->text(), "&Step Back: Move Vertices");
  QTest::keyClick(&view, Qt::Key_Backspace, Qt::AltModifier);
  Settle();
  EXPECT_EQ(model.Vertex(0).Position(), old);
  EXPECT_FALSE(frame->ActiveDocument()->IsModified());
  EXPECT_FALSE(frame->Action(ECommand::kEditStepBack)->isEnabled());
  QTest::keyClick(&view, Qt::Key_Backspace, Qt::AltModifier | Qt::ShiftModifier);
  EXPECT_EQ(model.Vertex(0).Position(), moved);
}

TEST_F(CEditorTest, GoesBackToAnEarlierStateInPlace) {
  StartWith(WriteModel("m.bin", {.shift_x = 50}));
  const CTarnDoc& document = *frame->ActiveDocument();
  Do(ECommand::kModelCenterX);
  CDialogDriver driver;
  driver.Click("earlierStates", "Go back to this state");
  Do(ECommand::kEditEarlierStates);
  EXPECT_EQ(document.Model().Bound(0), -950);
  EXPECT_EQ(document.Steps().BackName(), "Earlier State");
  Do(ECommand::kEditStepBack);
  EXPECT_EQ(document.Model().Bound(0), -1000);
}

}  // namespace veldra::testing
