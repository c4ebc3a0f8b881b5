#include <gtest/gtest.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>

#include "app/editorfixture.h"
#include "archive/testpod.h"
#include "document/steps.h"
#include "editing/colortablefield.h"
#include "mapping/mappingwidget.h"
#include "support/dialogdriver.h"
#include "tools/texturebrowserwidget.h"

namespace veldra::testing {

namespace {

/// A folder with textures that the model has, could have, and could not have.
class CTextureWindowsTest : public CEditorTest {
 protected:
  CTarnView& Open() {
    folder.Write("ODD.RAW", "12345");
    CTarnView& view = StartWith(WriteModel("a.bin"));
    QTest::keyClick(&view, Qt::Key_B, Qt::ControlModifier);
    LookThrough();
    return view;
  }
  void LookThrough() {
    EXPECT_TRUE(QTest::qWaitFor([this] { return Browser().IsComplete(); }));
    Settle();
  }
  CTextureBrowserWidget& Browser() { return frame->Docks().Browser(); }
  QStringList Listed() {
    const QAbstractItemModel& rows = *Child<QListView>(Browser(), "browserTextures")->model();
    QStringList listed;
    for (int row = 0; row < rows.rowCount(); ++row)
      listed += rows.index(row, 0).data().toString().replace('\n', ' ');
    return listed;
  }
};

}  // namespace

TEST_F(CTextureWindowsTest, BrowserListsAssignsAndMaps) {
  CTarnView& view = Open();
  CBinModel& model = view.Document().Model();
  EXPECT_EQ(Listed(), QStringList({"BIG.RAW 128 x 128", "GRID.RAW 6 faces", "ODD.RAW 0 x 0"}));
  QComboBox& shown = *Child<QComboBox>(Browser(), "texturesShown");
  const QStringList by_kind[] = {Listed(), {"GRID.RAW 6 faces"}, Listed(), {}, {"BIG.RAW 128 x 128", "ODD.RAW 0 x 0"}};
  for (int kind = 0; kind < shown.count(); ++kind) {
    shown.setCurrentIndex(kind);
    EXPECT_EQ(Listed(), by_kind[kind]) << kind;
  }
  shown.setCurrentIndex(0);
  QTest::keyClicks(Child<QLineEdit>(Browser(), "textureSearch"), "ig");
  EXPECT_EQ(Listed(), QStringList({"BIG.RAW 128 x 128"}));

  Browser().Choose("BIG.RAW");
  const QString details = Child<QLabel>(Browser(), "browserDetails")->text();
  for (const char* part : {"128 x 128 texels", "Default colour table", "the game takes 64 and 256", "1 colours"})
    EXPECT_TRUE(details.contains(part)) << details.toStdString();
  EXPECT_FALSE(Child<QPushButton>(Browser(), "browserMap")->isEnabled());
  model.Select(kFaces, std::vector<int32_t>{1, 2}, true);
  Settle();
  ClickButton(Browser(), "Assign to Selected Faces");
  Settle();
  EXPECT_EQ(Listed(), QStringList({"BIG.RAW 2 faces"}));
  EXPECT_EQ(view.Document().Steps().BackName(), "Assign Texture");

  ClickButton(Browser(), "Map");
  Settle();
  const CBinTexture* const mapped = frame->Docks().Mapping().Session().Texture();
  ASSERT_NE(mapped, nullptr);
  EXPECT_EQ(mapped->Name(), "BIG.RAW");
  view.Document().StepBack();
  Settle();
  EXPECT_EQ(model.TextureCount(), 1);
  EXPECT_EQ(Listed(), QStringList({"BIG.RAW 128 x 128"}));
}

TEST_F(CTextureWindowsTest, BrowserMakesOnlyPicturesThatAreSeen) {
  std::vector<STestEntry> entries;
  for (int i = 0; i < 3000; ++i)
    entries.push_back({"ART\\T" + std::to_string(i) + ".RAW", std::string(4096, static_cast<char>(i))});
  folder.Write("many.pod", MakePod(entries));
  Open();
  EXPECT_EQ(Listed().size(), 3003);
  const auto& rows = *static_cast<CTextureBrowserRows*>(Child<QListView>(Browser(), "browserTextures")->model());
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows.MadeCount() > 3 && !rows.IsMaking(); }));
  EXPECT_LT(rows.MadeCount(), 400);
}

TEST_F(CTextureWindowsTest, ColoursAreExchangedAndSaved) {
  CTarnView& view = Open();
  Browser().Choose("GRID.RAW");
  Settle();
  EXPECT_TRUE(frame->Action(ECommand::kTextureColors)->text().endsWith(": GRID.RAW..."));
  const std::vector<uint8_t> before = view.Document().Model().Texture(0).Image()->rgba;
  const std::string raw = folder.File("GRID.RAW");
  CDialogDriver driver;
  driver.On("colorTableDialog", [](QWidget& dialog) {
    EXPECT_FALSE(IsOkEnabled(dialog));
    auto& table = *Child<CColorTableField>(dialog, "colorTable");
    table.SetEntry(220);  // of the light squares
    QTest::keyClick(&table, Qt::Key_Right, Qt::ControlModifier);
    QTest::keyClick(&table, Qt::Key_Down);
    EXPECT_EQ(table.Entry(), 237);
    Child<QCheckBox>(dialog, "entryTransparent")->click();
    ClickButton(dialog, "Undo");
    ClickButton(dialog, "OK");
  });
  questions.OnSaveFile("Save Texture", SSavePath{raw});
  Do(ECommand::kTextureColors);
  Settle();
  EXPECT_EQ(ReadTestFile(raw)[0], '\xDD') << "221";
  const std::string table = ReadTestFile(folder.File("GRID.ACT"));
  EXPECT_EQ(table.substr(size_t{3} * 221, 3), "\xDC\x28\x23") << "what was entry 220";
  EXPECT_EQ(view.Document().Model().Texture(0).Image()->rgba, before);
}

TEST_F(CTextureWindowsTest, PicturesAreDroppedAndPasted) {
  CTarnView& view = Open();
  QImage picture(64, 64, QImage::Format_RGB32);
  picture.fill(QColor(200, 100, 50));
  const std::string file = folder.File("dropped.png");
  ASSERT_TRUE(picture.save(QString::fromStdString(file)));
  CDialogDriver driver;
  for (const bool is_pasted : {false, true}) {
    driver.Click("importPicture", "OK");
    const std::string name = is_pasted ? "PASTED.RAW" : "DROPPED.RAW";
    questions.OnSaveFile("Save Texture", SSavePath{folder.File(name)});
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(QString::fromStdString(file))});
    if (is_pasted) {
      QApplication::clipboard()->setImage(picture);
      Do(ECommand::kTexturePaste);
    } else {
      QDragEnterEvent enter(QPoint(20, 20), Qt::CopyAction, &data, Qt::LeftButton, {});
      QCoreApplication::sendEvent(frame.get(), &enter);
      EXPECT_TRUE(enter.isAccepted());
      QDropEvent drop(QPointF(20, 20), Qt::CopyAction, &data, Qt::LeftButton, {});
      QCoreApplication::sendEvent(frame.get(), &drop);
    }
    EXPECT_TRUE(QTest::qWaitFor([&] {
      return view.Document().Model().FindTexture(name, ETextureKind::kPlain) != nullptr;
    })) << name;
    Settle();
  }
}

}  // namespace veldra::testing
