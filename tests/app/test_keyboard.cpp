#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QtTest>
#include <map>

#include "app/editorfixture.h"
#include "platform/text.h"
#include "settings/keyfield.h"
#include "support/dialogdriver.h"
#include "view/keyboardtable.h"

namespace veldra::testing {

namespace {

/// The keys that the Keys text of a row names: "Shift+X,Y,Z" are three.
QStringList KeysOf(int row) {
  static const std::map<QString, QStringList> words = {{"Up/Down Arrows", {"Up", "Down"}},
                                                       {"Left/Right Arrows", {"Left", "Right"}},
                                                       {"Page Up/Page Down", {"PgUp", "PgDown"}}};
  const QString text = kKeyboardKeys[static_cast<size_t>(row)];
  if (words.contains(text)) return words.at(text);
  const auto behind_modifiers = text.size() == 1 ? 0 : text.lastIndexOf('+') + 1;
  QStringList keys;
  for (const QString& key : text.mid(behind_modifiers).split(','))
    keys.append(text.left(behind_modifiers) + key);
  return keys;
}

struct SKey {
  Qt::Key key;
  Qt::KeyboardModifiers modifiers;
};

SKey ParseKey(QString text) {
  const bool on_number_pad = text.endsWith(" (Number Pad)");
  const QKeyCombination key = QKeySequence(text.remove(" (Number Pad)"))[0];
  if (on_number_pad) return {key.key(), Qt::KeypadModifier};
  const bool is_back_tab = key.key() == Qt::Key_Tab && key.keyboardModifiers() == Qt::ShiftModifier;
  return {is_back_tab ? Qt::Key_Backtab : key.key(), key.keyboardModifiers()};
}

}  // namespace

class Keyboard : public CEditorTest {
 protected:
  /// A box of 8 vertices and 6 quads.
  void Open() {
    view = &StartWith(WriteModel("box.bin"));
    document = &view->Document();
    model = &document->Model();
  }
  /// Face 0 (of vertices 0 1 3 2) and its vertex 3 current, faces 1 and 4 and vertices 4 and 5 selected, turned.
  void Prepare() {
    document->SetModified(false);
    ASSERT_TRUE(document->Reload());
    if (view->IsPlaying()) view->TogglePlay();
    frame->Docks().Dock(EToolDock::kMapping).hide();
    view->RestoreRotation();
    view->Turn({.model_y = 33});
    view->Cursor().SetFace(0);
    view->Cursor().SetVertex(3);
    for (const EGroupKind kind : {kFaces, kVertices})
      model->SelectAll(kind, false);
    model->Select(kFaces, std::vector<int32_t>{1, 4}, true);
    model->Select(kVertices, std::vector<int32_t>{4, 5}, true);
    model->Face(0).SetTexCoord(2, {10.0 / 63, 20.0 / 63});
    document->SetModified(true);
    zoom = view->State().zoom;
    opened = "no dialog";
    Settle();
  }
  void Press(const QString& text) {
    const SKey key = ParseKey(text);
    view->setFocus();
    QTest::keyClick(view, key.key, key.modifiers);
    Settle();
  }
  std::string SelectedText(EGroupKind kind) const {
    std::string text = kind == kFaces ? "faces" : "vertices";
    for (const int32_t item : model->Selected(kind))
      text += Format(" %d", item);
    return text;
  }
  /// What the keys of the list act on, thing by thing.
  std::vector<std::string> State() const {
    std::vector<std::string> state = {Format("face %d", view->Cursor().Face()),
                                      Format("vertex %d", view->Cursor().Vertex()),
                                      SelectedText(kFaces),
                                      SelectedText(kVertices),
                                      Format("of %d", model->FaceCount()),
                                      document->IsModified() ? "modified" : "saved",
                                      opened,
                                      Format("zoom %d", qRound((view->State().zoom - zoom) / view->State().zoom_step))};
    const STexCoord& coord = model->Face(0).TexCoord(2);
    state.push_back(Format("texel %.6g,%.6g", coord.u * 63, coord.v * 63));
    state.push_back(view->IsPlaying() ? "playing" : Format("turned %d", qRound(view->State().rotation.y)));
    if (frame->Docks().IsOpen(EToolDock::kMapping)) state.push_back("mapping");
    for (int32_t i = 0; i < model->VertexCount(); ++i) {
      const SPoint at = model->Vertex(i).Position();
      state.push_back(Format("%d at %d %d %d", i, at.x, at.y, at.z));
    }
    return state;
  }

  CDialogDriver driver;
  std::string opened;
  double zoom = 0;
  CTarnView* view = nullptr;
  CTarnDoc* document = nullptr;
  CBinModel* model = nullptr;
};

TEST_F(Keyboard, EveryRowHasItsEffectInTheView) {
  settings.move_step = 25;
  settings.offset_step = 3;
  settings.follow_face = 0;
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  Open();
  const struct {
    int row;
    std::vector<std::string> changes;
    const char* dialog = nullptr;
  } cases[] = {
      {2, {"saved"}},
      {3, {"opened"}, "modelInformation"},
      {4, {"opened"}, "jumpTo"},
      {5, {"faces 0 1 4"}},
      {6, {"faces 0 1 2 3 4 5"}},
      {7, {"faces"}},
      {8, {"face 1"}},
      {9, {"face 5"}},
      {10, {"face 1"}},
      {11, {"face 4"}},
      {12, {"faces 0 2 3 5"}},
      {13, {"faces 0 3", "of 5", "texel 63,63"}},
      {14, {"face -1"}},
      {15, {"vertices 3 4 5"}},
      {16, {"vertices 0 1 2 3 4 5 6 7"}},
      {17, {"vertices"}},
      {18, {"vertex 4"}},
      {19, {"vertex 2"}},
      {20, {"vertex 4"}},
      {21, {"vertex 5"}},
      {22, {"vertices 0 1 2 3 6 7"}},
      {23, {"3 at -975 625 425"}},
      {24, {"3 at -1025 575 375"}},
      {25, {"4 at 1025 -575 -375", "5 at 1025 -575 425"}},
      {26, {"4 at 975 -625 -425", "5 at 975 -625 375"}},
      {27, {"vertex 2"}},
      {28, {"vertex 1"}},
      {29, {"vertex 0"}},
      {30, {"vertex 2"}},
      {31, {"vertex -1"}},
      {32, {"mapping"}},
      {33, {"opened"}, "normalizeTexture"},
      {34, {"texel 13,20"}},
      {35, {"texel 10,23"}},
      {36, {"texel 7,20"}},
      {37, {"texel 10,17"}},
      {38, {"playing"}},
      {42, {"turned 0"}},
      {43, {"zoom 1"}},
      {44, {"zoom -1"}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(Format("row %d", test.row));
    Prepare();
    const auto before = State();
    if (test.dialog != nullptr)
      driver.On(test.dialog, [this](QWidget& window) {
        opened = "opened";
        static_cast<QDialog&>(window).reject();
      });
    for (const QString& key : KeysOf(test.row))
      Press(key);
    std::vector<std::string> changes = State();
    std::erase_if(changes, [&](const std::string& thing) { return std::ranges::count(before, thing) > 0; });
    EXPECT_EQ(changes, test.changes);
  }
}

TEST_F(Keyboard, TheDialogListsAllRowsAndPrintsTheSheet) {
  Start();
  const std::string path = folder.File("sheet.pdf");
  questions.OnSaveFile("Keyboard Sheet", SSavePath{path});
  driver.On("keyboard", [](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "commands");
    ASSERT_EQ(list->topLevelItemCount(), kKeyboardRows);
    QStringList texts;
    for (int column = 0; column < 4; ++column)
      texts.append(list->topLevelItem(13)->text(column));
    EXPECT_EQ(texts.join('|'), "Face|Delete current|Ctrl+Del|Deletes the current face");
    Child<QTabWidget>(dialog, "pages")->setCurrentIndex(1);
    const QString text = Child<QTextBrowser>(dialog, "sheet")->toPlainText();
    for (const char* key : kKeyboardKeys)
      EXPECT_TRUE(text.contains(key)) << key;
    const auto* others = Child<QTreeWidget>(dialog, "otherKeys");
    EXPECT_EQ(others->findItems("Alt+Del", Qt::MatchExactly, 1).size(), 1);
    for (const char* listed : {"Ctrl+Del", "Alt+Shift+X", "PgUp", "Left", "+", "5 (Number Pad)"})
      EXPECT_TRUE(others->findItems(listed, Qt::MatchExactly, 1).isEmpty()) << listed;
    ClickButton(dialog, "Save as PDF...");
    static_cast<QDialog&>(dialog).reject();
  });
  Do(ECommand::kHelpKeyboard);
  const std::string pdf = ReadTestFile(path);
  EXPECT_TRUE(pdf.starts_with("%PDF"));
  EXPECT_NE(pdf.find("/Count 1\n"), std::string::npos) << "one page";
}

TEST_F(Keyboard, AKeyThatIsChangedWorksAtOnceIsShownAndComesBack) {
  Open();
  QTest::keyClick(view, Qt::Key_Z, Qt::ControlModifier);
  EXPECT_TRUE(frame->statusBar()->currentMessage().startsWith("Edit > Step Back")) << "what else the key may do";
  Do(ECommand::kToolsTruckEditor);
  struct SChange {
    const char* group;
    const char* name;
    Qt::Key key;
    const char* says;    ///< begins what is wrong with it
    const char* button;  ///< "" where it cannot be had
  };
  const SChange changes[] = {{"View", "Play", Qt::Key_F7, "", "useKey"},
                             {"View", "Zoom In", Qt::Key_V, "V is the key of \"Select Current\" (Vertex)", "useKey"},
                             {"View", "Zoom In", Qt::Key_Tab, "Tab is the key of \"Current Vertex > Next\"", "addKey"},
                             {"View", "Zoom Out", Qt::Key_F10, "F10 leads", ""},
                             {"Truck Editor", "Save", Qt::Key_F7, "", "useKey"},
                             {"File", "Reload", Qt::Key_unknown, "", "clearKeys"}};
  const auto change = [&changes](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "keyList");
    auto* field = Child<CKeyField>(dialog, "newKey");
    for (const SChange& each : changes) {
      for (QTreeWidgetItem* item : list->findItems(each.name, Qt::MatchExactly | Qt::MatchRecursive))
        if (item->parent() != nullptr && item->parent()->text(0) == each.group) list->setCurrentItem(item);
      QTest::keyClick(field, Qt::Key_Space);
      if (each.key != Qt::Key_unknown) QTest::keyClick(field, each.key);
      const QString said = Child<QLabel>(dialog, "keyFault")->text();
      EXPECT_TRUE(*each.says != '\0' ? said.startsWith(each.says) : said.isEmpty()) << said.toStdString();
      for (const char* button : {"useKey", "addKey"})
        EXPECT_TRUE(*each.button != '\0' || !Child<QPushButton>(dialog, button)->isEnabled());
      if (*each.button != '\0') Child<QPushButton>(dialog, each.button)->click();
    }
  };
  driver.On("preferences", [&](QWidget& dialog) { change(dialog), ClickButton(dialog, "Cancel"); });
  Do(ECommand::kFilePreferences);
  EXPECT_EQ(app->Settings().keys, "");
  driver.On("preferences", [&](QWidget& dialog) { change(dialog), ClickButton(dialog, "OK"); });
  Do(ECommand::kFilePreferences);
  QString save_truck;
  for (const QWidget* window : QApplication::topLevelWidgets())
    if (const auto* save = window->findChild<QAction*>("saveTruck")) save_truck = save->shortcut().toString();
  EXPECT_EQ(save_truck, "F7");
  EXPECT_TRUE(frame->Action(ECommand::kFileReload)->shortcut().isEmpty());

  settings.keys = app->Settings().keys;
  EXPECT_EQ(settings.keys, "reload= play=F7 zoomIn=V zoomIn=Tab selectVertex= cycleVertices= truckEditor.save=F7");
  for (const bool is_restarted : {false, true}) {
    if (is_restarted) Open();
    Prepare();
    frame->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(frame.get()));
    const double before = view->State().zoom;
    for (const char* key : {"V", "Tab", "+", "P"})
      Press(key);
    EXPECT_EQ(qRound((view->State().zoom - before) / view->State().zoom_step), 2);
    EXPECT_FALSE(view->IsPlaying());
    QTest::keyClick(view, Qt::Key_F7);
    EXPECT_TRUE(view->IsPlaying());
  }
  driver.On("keyboard", [](QWidget& dialog) {
    const auto* list = Child<QTreeWidget>(dialog, "commands");
    EXPECT_EQ(list->topLevelItem(15)->text(2) + list->topLevelItem(38)->text(2), "F7");
    EXPECT_EQ(list->topLevelItem(43)->text(2), "V, Tab");
    EXPECT_TRUE(Child<QTextBrowser>(dialog, "sheet")->toPlainText().contains("V, Tab"));
    static_cast<QDialog&>(dialog).reject();
  });
  Do(ECommand::kHelpKeyboard);
}

}  // namespace veldra::testing
