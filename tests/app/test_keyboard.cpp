#include <gmock/gmock.h>

#include <QDialog>
#include <QHeaderView>
#include <QTabWidget>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QtTest>
#include <map>

#include "app/commands/viewkeys.h"
#include "app/editorfixture.h"
#include "support/dialogdriver.h"
#include "view/keyboardtable.h"

namespace veldra::testing {

using ::testing::ElementsAre;
using ::testing::StartsWith;

namespace {

constexpr EGroupKind kFaces = EGroupKind::kFaces;
constexpr EGroupKind kVertices = EGroupKind::kVertices;

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

std::vector<const SCommandRow*> RowsOfKey(const QString& text) {
  const SKey key = ParseKey(text);
  const QKeyEvent event(QEvent::KeyPress, key.key, key.modifiers);
  std::vector<const SCommandRow*> rows;
  for (const SCommandRow& row : CommandRows()) {
    const bool is_shortcut = *row.key != '\0' && QKeySequence(row.key) == QKeySequence(text);
    if (is_shortcut || (*row.view_key != '\0' && CViewKey(row.view_key).Matches(event))) rows.push_back(&row);
  }
  return rows;
}

}  // namespace

TEST(KeyboardTable, EveryKeyOfTheListIsThatOfOneCommandThatDoesIt) {
  // Where the menus' status text is not the list's description.
  const std::map<int, std::string> named = {{0, "new"},   {1, "open"},    {2, "save"},
                                            {38, "play"}, {43, "zoomIn"}, {44, "zoomOut"}};
  for (int row = 0; row < kKeyboardRows; ++row) {
    for (const QString& key : KeysOf(row)) {
      const auto commands = RowsOfKey(key);
      ASSERT_EQ(commands.size(), 1u) << row << ' ' << key.toStdString();
      if (named.contains(row)) {
        EXPECT_EQ(commands[0]->name, named.at(row));
      } else {
        EXPECT_EQ(StatusText(*commands[0]), kKeyboardDescriptions[static_cast<size_t>(row)]);
      }
    }
  }
}

class Keyboard : public CEditorTest {
 protected:
  struct SCase {
    int row;
    std::function<void()> prepare;
    std::function<bool()> is_done;
  };

  /// A box of 8 vertices and 6 quads, nothing selected, nothing current.
  void Open() {
    view = &StartWith(WriteModel("box.bin"));
    document = &view->Document();
    model = &document->Model();
  }
  void Reset() {
    document->SetModified(false);
    ASSERT_TRUE(document->Reload());
    view->Cursor().SetFace(-1);
    view->Cursor().SetVertex(-1);
    if (view->IsPlaying()) view->TogglePlay();
    view->RestoreRotation();
    Settle();
  }
  void Press(const QString& text) {
    const SKey key = ParseKey(text);
    view->setFocus();
    QTest::keyClick(view, key.key, key.modifiers);
    Settle();
  }
  void Select(EGroupKind kind, const std::vector<int32_t>& items) { model->Select(kind, items, true); }
  bool Selected(EGroupKind kind, const std::vector<int32_t>& items) const { return model->Selected(kind) == items; }
  /// Opens the dialog of that name and cancels it.
  void Expect(const char* dialog) {
    driver.On(dialog, [this](QWidget& window) {
      ++opened;
      static_cast<QDialog&>(window).reject();
    });
  }
  SPoint At(int32_t vertex) const { return model->Vertex(vertex).Position(); }
  bool Moved(int32_t vertex, int32_t by) const {
    const SPoint from = original[static_cast<size_t>(vertex)];
    return At(vertex) == SPoint{from.x + by, from.y + by, from.z + by};
  }
  bool TexelsOfCorner(double u, double v) const {
    const STexCoord& coord = model->Face(0).TexCoord(1);
    return std::abs(coord.u * 63 - u) < 1e-9 && std::abs(coord.v * 63 - v) < 1e-9;
  }
  std::vector<SCase> FileAndFaceCases();
  std::vector<SCase> VertexCases();
  std::vector<SCase> TextureAndViewCases();

  CDialogDriver driver;
  int opened = 0;
  CTarnView* view = nullptr;
  CTarnDoc* document = nullptr;
  CBinModel* model = nullptr;
  std::vector<SPoint> original;
};

std::vector<Keyboard::SCase> Keyboard::FileAndFaceCases() {
  CEditCursor& cursor = view->Cursor();
  return {
      {2, [=, this] { document->SetModified(true); }, [=, this] { return !document->IsModified(); }},
      {3, [=, this] { Expect("modelInformation"); }, [=, this] { return opened == 1; }},
      {4, [=, this] { Expect("jumpTo"); }, [=, this] { return opened == 1; }},
      {5, [&] { cursor.SetFace(2); }, [=, this] { return Selected(kFaces, {2}); }},
      {6, [] {}, [=, this] { return model->SelectedCount(kFaces) == 6; }},
      {7,
       [=, this] {
         Select(kFaces, {1, 2});
       },
       [=, this] { return Selected(kFaces, {}); }},
      {8, [&] { cursor.SetFace(5); }, [&] { return cursor.Face() == 0; }},
      {9, [] {}, [&] { return cursor.Face() == 5; }},
      {10,
       [=, this] {
         Select(kFaces, {1, 4});
       },
       [&] { return cursor.Face() == 1; }},
      {11,
       [=, this] {
         Select(kFaces, {1, 4});
       },
       [&] { return cursor.Face() == 4; }},
      {12,
       [=, this] {
         Select(kFaces, {1, 2, 3, 4});
       },
       [=, this] {
         return Selected(kFaces, {0, 5});
       }},
      {13, [&] { cursor.SetFace(3); }, [=, this] { return model->FaceCount() == 5; }},
      {14, [&] { cursor.SetFace(3); }, [&] { return cursor.Face() == -1; }},
  };
}

std::vector<Keyboard::SCase> Keyboard::VertexCases() {
  CEditCursor& cursor = view->Cursor();
  const auto on_face = [&](int32_t vertex) {
    return [&cursor, vertex] {
      cursor.SetFace(0);  // 0 1 3 2
      cursor.SetVertex(vertex);
    };
  };
  return {
      {15, [&] { cursor.SetVertex(6); }, [=, this] { return Selected(kVertices, {6}); }},
      {16, [] {}, [=, this] { return model->SelectedCount(kVertices) == 8; }},
      {17,
       [=, this] {
         Select(kVertices, {1, 2});
       },
       [=, this] { return Selected(kVertices, {}); }},
      {18, [] {}, [&] { return cursor.Vertex() == 0; }},
      {19, [] {}, [&] { return cursor.Vertex() == 7; }},
      {20,
       [=, this] {
         Select(kVertices, {2, 5});
       },
       [&] { return cursor.Vertex() == 2; }},
      {21,
       [=, this] {
         Select(kVertices, {2, 5});
       },
       [&] { return cursor.Vertex() == 5; }},
      {22,
       [=, this] {
         Select(kVertices, {0, 1, 2, 3, 4});
       },
       [=, this] {
         return Selected(kVertices, {5, 6, 7});
       }},
      {23, [&] { cursor.SetVertex(3); }, [=, this] { return Moved(3, 25) && Moved(4, 0); }},
      {24, [&] { cursor.SetVertex(3); }, [=, this] { return Moved(3, -25) && Moved(4, 0); }},
      {25,
       [=, this] {
         Select(kVertices, {4, 5});
       },
       [=, this] { return Moved(4, 25) && Moved(5, 25) && Moved(3, 0); }},
      {26,
       [=, this] {
         Select(kVertices, {4, 5});
       },
       [=, this] { return Moved(4, -25) && Moved(5, -25); }},
      {27, on_face(3), [&] { return cursor.Vertex() == 2; }},
      {28, on_face(3), [&] { return cursor.Vertex() == 1; }},
      {29, on_face(7), [&] { return cursor.Vertex() == 0; }},
      {30, on_face(7), [&] { return cursor.Vertex() == 2; }},
      {31, on_face(7), [&] { return cursor.Vertex() == -1; }},
  };
}

std::vector<Keyboard::SCase> Keyboard::TextureAndViewCases() {
  CEditCursor& cursor = view->Cursor();
  const auto on_corner = [&] {
    cursor.SetFace(0);
    cursor.SetCorner(1);
    model->Face(0).SetTexCoord(1, {10.0 / 63, 20.0 / 63});
  };
  const auto zoom = std::make_shared<double>();
  const auto note_zoom = [=, this] { *zoom = view->State().zoom; };
  return {
      {32,
       [&, this] {
         cursor.SetFace(0);
         Expect("binMapper");
       },
       [=, this] { return opened == 1; }},
      {33, [=, this] { Expect("normalizeTexture"); }, [=, this] { return opened == 1; }},
      {34, on_corner, [=, this] { return TexelsOfCorner(13, 20); }},
      {35, on_corner, [=, this] { return TexelsOfCorner(10, 23); }},
      {36, on_corner, [=, this] { return TexelsOfCorner(7, 20); }},
      {37, on_corner, [=, this] { return TexelsOfCorner(10, 17); }},
      {38, [] {}, [=, this] { return view->IsPlaying(); }},
      {42, [=, this] { view->Turn({.model_y = 33}); },
       [=, this] { return view->State().rotation.y == document->Settings().view_angle_y; }},
      {43, note_zoom, [=, this] { return view->State().zoom == *zoom + view->State().zoom_step; }},
      {44, note_zoom, [=, this] { return view->State().zoom == *zoom - view->State().zoom_step; }},
  };
}

TEST_F(Keyboard, EveryRowHasItsEffectInTheView) {
  settings.move_step = 25;
  settings.offset_step = 3;
  Open();
  for (int32_t i = 0; i < model->VertexCount(); ++i)
    original.push_back(At(i));
  std::vector<SCase> cases = FileAndFaceCases();
  for (const auto& more : {VertexCases(), TextureAndViewCases()})
    cases.insert(cases.end(), more.begin(), more.end());
  ASSERT_EQ(cases.size(), 40u) << "the other five have tests of their own";
  for (const SCase& test : cases) {
    Reset();
    opened = 0;
    test.prepare();
    Settle();
    EXPECT_FALSE(test.is_done()) << test.row;
    for (const QString& key : KeysOf(test.row))
      Press(key);
    EXPECT_TRUE(test.is_done()) << test.row << ' ' << kKeyboardCommands[static_cast<size_t>(test.row)];
  }
}

TEST_F(Keyboard, RotatesBackAndForthByTheStep) {
  settings.rotate_step = 12;
  settings.view_angle_x = settings.view_angle_y = settings.view_angle_z = 0;
  Open();
  const auto angles = [this] {
    const SRotation& r = view->State().rotation;
    return std::vector<int>{qRound(r.x), qRound(r.y), qRound(r.z)};
  };
  const std::pair<int, std::vector<int>> rows[] = {{39, {-12, 0, 0}}, {40, {0, -12, 0}}, {41, {0, 0, 12}}};
  for (const auto& [row, once] : rows) {
    const QStringList keys = KeysOf(row);
    Press(keys[0]);
    EXPECT_EQ(angles(), once) << row;
    Press(keys[1]);
    EXPECT_THAT(angles(), ElementsAre(0, 0, 0)) << row;
  }
}

TEST_F(Keyboard, NewAndOpenMakeWindows) {
  Open();
  questions.OnOpenFiles("Open", SOpenFiles{{WriteModel("other.bin")}});
  Press("Ctrl+O");
  ASSERT_EQ(frame->Children().size(), 2);
  view = frame->ActiveView();
  WaitUntilDrawn(*view);
  Press("Ctrl+N");
  EXPECT_EQ(frame->Children().size(), 3);
}

TEST_F(Keyboard, KeysDoNothingInAReadOnlyDocument) {
  Open();
  view->Cursor().SetFace(1);
  view->Cursor().SetVertex(0);
  Select(kVertices, {1});
  Select(kFaces, {1});
  document->SetReadOnly(true);
  Settle();
  for (const char* key : {"Ctrl+Del", "Del", "Alt+Del", "X", "Alt+Shift+Y", "T", "Ctrl+T", "Ctrl+J", "Ins", "Return"})
    Press(key);
  EXPECT_FALSE(document->IsModified());
  EXPECT_EQ(model->FaceCount(), 6);
}

TEST_F(Keyboard, TheDialogListsAllRowsAndKeepsItsColumnsAndPlace) {
  settings.keyboard_command_width = 171;
  Start();
  driver.On("keyboard", [](QWidget& dialog) {
    auto* list = Child<QTreeWidget>(dialog, "commands");
    ASSERT_EQ(list->topLevelItemCount(), kKeyboardRows);
    EXPECT_EQ(list->headerItem()->text(3), "Description");
    const auto row = [list](int index) {
      QStringList texts;
      for (int column = 0; column < 4; ++column)
        texts.append(list->topLevelItem(index)->text(column));
      return texts.join('|').toStdString();
    };
    EXPECT_EQ(row(0), "File|New Model|Ctrl+N|Creates a new model");
    EXPECT_EQ(row(4), "Model|Jump To|J|Opens the Jump To Face/Vertex dialog");
    EXPECT_EQ(row(13), "Face|Delete current|Ctrl+Del|Deletes the current face");
    EXPECT_THAT(row(5), StartsWith("Face|Select|F|"));
    EXPECT_THAT(row(15), StartsWith("Vertex|Select|V|"));
    EXPECT_EQ(row(37),
              "Texture|Reverse-offset V Coordinate|Ctrl+Shift+K|"
              "Reverse-offsets the vertical texture coordinate of current face vertex");
    EXPECT_EQ(row(44), "View|Zoom Out|-|Decreases the model zoom factor");
    EXPECT_EQ(list->columnWidth(1), 171);
    list->header()->resizeSection(0, 133);
    dialog.setGeometry(40, 50, 700, 500);
    static_cast<QDialog&>(dialog).reject();
  });
  Do(ECommand::kHelpKeyboard);
  const CSettings& kept = app->Settings();
  EXPECT_EQ(kept.keyboard_category_width, 133);
  EXPECT_EQ(kept.keyboard_dialog, (SRect{40, 50, 740, 550}));
}

TEST_F(Keyboard, TheSheetIsPrintedAsPdf) {
  Start();
  const std::string path = folder.File("sheet.pdf");
  questions.OnSaveFile("Keyboard Sheet", SSavePath{path});
  driver.On("keyboard", [](QWidget& dialog) {
    Child<QTabWidget>(dialog, "pages")->setCurrentIndex(1);
    const QString text = Child<QTextBrowser>(dialog, "sheet")->toPlainText();
    for (const char* key : kKeyboardKeys)
      EXPECT_TRUE(text.contains(key)) << key;
    const auto* others = Child<QTreeWidget>(dialog, "otherKeys");
    EXPECT_EQ(others->findItems("Alt+Del", Qt::MatchExactly, 1).size(), 1);
    for (const char* listed : {"Ctrl+Del", "Alt+Shift+X", "PgUp", "Left", "+", "5 (Number Pad)"})
      EXPECT_TRUE(others->findItems(listed, Qt::MatchExactly, 1).isEmpty()) << listed;
    EXPECT_EQ(Child<QTreeWidget>(dialog, "gestures")->findItems("Drag with the left button", Qt::MatchExactly).size(),
              1);
    ClickButton(dialog, "Save as PDF...");
    static_cast<QDialog&>(dialog).reject();
  });
  Do(ECommand::kHelpKeyboard);
  const std::string pdf = ReadTestFile(path);
  EXPECT_THAT(pdf, StartsWith("%PDF"));
  EXPECT_NE(pdf.find("/Count 1\n"), std::string::npos) << "one page";
}

}  // namespace veldra::testing
