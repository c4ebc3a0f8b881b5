#include <gtest/gtest.h>

#include <QColorDialog>
#include <QComboBox>
#include <QLineEdit>
#include <QToolBar>
#include <QtTest>

#include "app/editorfixture.h"
#include "app/qtquestions.h"
#include "app/windowplace.h"
#include "support/dialogdriver.h"
#include "ui/commandicons.h"

namespace veldra::testing {

TEST_F(CEditorTest, WindowPlaceIsRemembered) {
  Start();
  EXPECT_EQ(frame->size(), QSize(1200, 800));
  frame->setGeometry(60, 50, 900, 640);
  Settle();
  EXPECT_TRUE(frame->close());
  settings = app->Settings();
  Start();
  EXPECT_EQ(frame->geometry(), QRect(60, 50, 900, 640));
  // A maximized window with the docks of a larger one, from another screen.
  frame->resize(1600, 1400);
  Settle();
  frame->WriteWindowState();
  settings.main_window_max = 1;
  Start();
  EXPECT_TRUE(frame->isMaximized());
  frame->showNormal();
  Settle();
  EXPECT_TRUE(frame->close());

  // A place that no screen shows, or only half of it.
  for (const QRect& place : {QRect(20000, 300, 900, 640), QRect(-30, -20, 900, 640), QRect(700, 600, 900, 640)}) {
    QMainWindow window;
    window.setGeometry(place);
    CSettings kept = settings;
    RememberWindowPlace(window, kept);
    RestoreWindowPlace(window, kept);
    EXPECT_EQ(window.size(), place.size());
    EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
  }

  QMainWindow window;
  CSettings unwanted = settings;
  unwanted.save_main_state = 0;
  RememberWindowPlace(window, unwanted);
  EXPECT_EQ(unwanted.main_window_tl, settings.main_window_tl);
}

TEST_F(CEditorTest, ChildWindowsOpenAsTheLastOneClosed) {
  Start();
  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin")));
  EXPECT_TRUE(frame->ActiveChild()->isMaximized());
  frame->ActiveChild()->showNormal();
  Do(ECommand::kFileClose);
  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin")));
  EXPECT_FALSE(frame->ActiveChild()->isMaximized());
}

TEST_F(CEditorTest, ToolBarButtonsHaveIconsAndDoTheCommand) {
  CTarnView& view = StartWith(WriteModel("a.bin"));
  auto* bar = frame->findChild<QToolBar*>("toolBar");
  for (const ECommand id : ToolBarCommands()) {
    if (id == ECommand::kNone) continue;
    EXPECT_FALSE(frame->Action(id)->icon().isNull()) << CommandRow(id).name;
  }
  QTest::mouseClick(bar->widgetForAction(frame->Action(ECommand::kViewWireframe)), Qt::LeftButton);
  EXPECT_EQ(view.State().mode, ERenderMode::kWireframe);
}

/// Has no memory for anything that takes a while.
class CPoorQuestions : public CScriptedQuestions {
 public:
  std::unique_ptr<CProgress> BeginWork(const std::string& title, bool cancellable) override {
    if (is_poor) throw std::bad_alloc();
    return CScriptedQuestions::BeginWork(title, cancellable);
  }
  bool is_poor = false;
};

TEST_F(CEditorTest, ACommandWithoutMemoryIsSaidAndTheProgramGoesOn) {
  CPoorQuestions poor;
  Start(&poor);
  ASSERT_TRUE(frame->OpenFile(WriteModel("a.bin", {.shift_x = 5})));
  poor.is_poor = true;
  Do(ECommand::kModelCenterX);
  EXPECT_EQ(poor.TakeMessageTexts(), std::vector<std::string>{"There is not enough memory for this."});
  poor.is_poor = false;
  const CBinModel& model = frame->ActiveView()->Document().Model();
  EXPECT_EQ(model.Bounds().min.x + model.Bounds().max.x, 10);
  Do(ECommand::kModelCenterX);
  EXPECT_EQ(model.Bounds().min.x + model.Bounds().max.x, 0);
}

TEST_F(CEditorTest, IconsFollowThePalette) {
  const QPalette before = QApplication::palette();
  for (const QColor& text : {QColor(Qt::black), QColor(Qt::white)}) {
    QPalette palette;
    palette.setColor(QPalette::ButtonText, text);
    QApplication::setPalette(palette);
    const QImage icon = CommandIcon("wireframe").pixmap(24, 24).toImage();
    for (int y = 0; y < icon.height(); ++y)
      for (int x = 0; x < icon.width(); ++x)
        EXPECT_TRUE(icon.pixelColor(x, y).alpha() < 200 ||
                    std::abs(icon.pixelColor(x, y).lightness() - text.lightness()) < 40);
  }
  QApplication::setPalette(before);
}

TEST_F(CEditorTest, BackgroundColorIsOfTheActiveViewAlone) {
  CTarnView& first = StartWith(WriteModel("a.bin"));
  ASSERT_TRUE(frame->OpenFile(WriteModel("b.bin")));
  CTarnView& second = *frame->ActiveView();
  WaitUntilDrawn(second);
  const SColor before = first.State().background;
  CDialogDriver driver;
  driver.On("backgroundColor", [](QWidget& dialog) {
    auto& colors = dynamic_cast<QColorDialog&>(dialog);
    QColorDialog::setCustomColor(3, QColor(1, 2, 3));
    colors.setCurrentColor(QColor(200, 100, 50));
    ClickButton(dialog, "OK");
  });
  Do(ECommand::kViewBackground);
  EXPECT_EQ(Picture(second).pixelColor(2, 2), QColor(200, 100, 50));
  EXPECT_EQ(first.State().background, before);
  EXPECT_EQ(app->Settings().custom_colors[3], (SColor{1, 2, 3}));
}

TEST_F(CEditorTest, SaveAsThroughTheFileDialogTakesTheVariantFromItsFilter) {
  CQtQuestions dialogs;
  Start(&dialogs);
  dialogs.SetParent(frame.get());
  ASSERT_TRUE(frame->OpenFile(WriteModel("m.bin")));
  CDialogDriver driver;
  driver.On("saveFile", [](QWidget& dialog) {
    auto* types = Child<QComboBox>(dialog, "fileTypeCombo");
    ASSERT_EQ(types->count(), 3);
    EXPECT_EQ(types->itemText(2), "Hellbender Bin *.bin");
    types->setCurrentIndex(2);
    emit types->textActivated(types->currentText());
    auto* name = Child<QLineEdit>(dialog, "fileNameEdit");
    EXPECT_EQ(name->text(), "m.bin");
    QTest::mouseDClick(name, Qt::LeftButton);
    name->selectAll();
    QTest::keyClicks(name, "hell");
    QTest::keyClick(name, Qt::Key_Return);
  });
  driver.On("scaleFactor", [](QWidget& dialog) {
    TypeInto(dialog, "factor", "2");
    QTest::keyClick(Child<QLineEdit>(dialog, "factor"), Qt::Key_Return);
  });
  Do(ECommand::kFileSaveAs);
  const std::string saved = ReadTestFile(folder.File("hell.bin"));
  ASSERT_GT(saved.size(), 8u);
  EXPECT_EQ(saved.substr(4, 4), std::string("\0\0\2\0", 4));
}

}  // namespace veldra::testing
