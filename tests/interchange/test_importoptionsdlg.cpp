#include "interchange/importoptionsdlg.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QPushButton>
#include <QtTest>

#include "interchange/waveparser.h"
#include "support/dialogdriver.h"

namespace veldra::testing {
namespace {

void Type(QWidget& dialog, const QString& text) {
  auto* const edit = Child<QLineEdit>(dialog, "scale");
  edit->selectAll();
  QTest::keyClick(edit, Qt::Key_Delete);
  QTest::keyClicks(edit, text);
}

std::string Preview(QWidget& dialog) {
  QString text;
  for (const char* label : {"sizeX", "sizeY", "sizeZ", "placeX", "placeY", "placeZ"})
    text += Child<QLabel>(dialog, label)->text() + ";";
  return text.toStdString();
}

SWaveMesh Mesh() {
  SImportFault fault;
  return *ParseWavefront("v -1 0 10\nv 3 0.5 10.25\nv 0 0 2000000000\nf 1 2 3\n", nullptr, fault);
}

TEST(ImportOptionsDialog, ShowsTheResultWhileOneTypes) {
  const SWaveMesh mesh = Mesh();
  SWaveOptions last;
  CDialogDriver driver;
  driver.On("importOptions", [](QWidget& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Import WaveFront Model");
    EXPECT_EQ(Preview(dialog), "4;0;1999999990;-1 to 3;0 to 0;10 to 2000000000;");
    Type(dialog, "2");
    EXPECT_FALSE(IsOkEnabled(dialog)) << "too large";
    Type(dialog, "-2");
    EXPECT_FALSE(IsOkEnabled(dialog));
    EXPECT_EQ(Preview(dialog), "–;–;–;–;–;–;");
    Type(dialog, "0.1");
    EXPECT_TRUE(IsOkEnabled(dialog));
    Child<QCheckBox>(dialog, "swapYz")->click();
    EXPECT_EQ(Preview(dialog), "0;199999999;0;0 to 0;1 to 200000000;0 to 0;");
    Child<QCheckBox>(dialog, "center")->click();
    EXPECT_EQ(Preview(dialog), "0;199999999;0;0 to 0;-99999999 to 100000000;0 to 0;");
    ClickButton(dialog, "OK");
  });
  const auto options = AskImportOptions(mesh, "/folder/wavy cloth.obj", last, nullptr);
  ASSERT_TRUE(options);
  EXPECT_EQ(options->scale, 0.1);
  EXPECT_TRUE(last.swap_yz && last.center);
}

}  // namespace
}  // namespace veldra::testing
