#include <gtest/gtest.h>

#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QRadioButton>
#include <QtTest>

#include "editing/editdialogs.h"
#include "support/dialogdriver.h"
#include "support/richmodel.h"
#include "ui/fielddialog.h"

namespace veldra::testing {

namespace {

QString Fault(QWidget& dialog) {
  return Child<QLabel>(dialog, "dialogFault")->text();
}

class FaceTextureDialogs : public ::testing::Test {
 protected:
  FaceTextureDialogs() {
    for (int32_t i = 0; i < 6; ++i)
      model_.AddVertex({i, i * i, 0});
    for (size_t i = 0; i < 2; ++i)
      model_.AddTexture(std::make_unique<CBinTexture>(model_, CTextureSet::Name(i), textures_.Image(i)));
  }
  CTextureSet textures_;
  CSettings settings_;
  CEditDialogs dialogs_{settings_};
  CBinModel model_;
  CDialogDriver driver_;
};

}  // namespace

TEST_F(FaceTextureDialogs, AddFaceChecksItsCornersAndItsTexture) {
  settings_.def_face_type = 0x29;
  driver_.On("addFace", [](QWidget& dialog) {
    EXPECT_EQ(Child<QComboBox>(dialog, "types")->currentText(), "0x29 Shiny Texture (MTM2)");
    EXPECT_FALSE(Child<QLineEdit>(dialog, "corner4")->isEnabled());
    TypeInto(dialog, "corner2", "2");
    EXPECT_NE(Fault(dialog), "") << "named twice";
    TypeInto(dialog, "corner2", "5");
    EXPECT_TRUE(IsOkEnabled(dialog));
    QTest::keyClick(Child<QRadioButton>(dialog, "quad"), Qt::Key_Space);
    TypeInto(dialog, "corner4", "4");
    QTest::keyClick(Child<QComboBox>(dialog, "textures"), Qt::Key_End);
    EXPECT_FALSE(IsOkEnabled(dialog)) << "needs a texture";
    QTest::keyClick(Child<QComboBox>(dialog, "textures"), Qt::Key_Up);
    ClickButton(dialog, "OK");
  });
  driver_.On("addFace", [](QWidget& dialog) {
    EXPECT_TRUE(Child<QRadioButton>(dialog, "quad")->isChecked());
    QTest::keyClick(Child<QRadioButton>(dialog, "triangle"), Qt::Key_Space);
    ClickButton(dialog, "OK");
  });
  auto input = dialogs_.AskAddFace(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->corners, (std::array<int32_t, 4>{0, 5, 2, 4}));
  EXPECT_EQ(input->type, 0x29u);
  EXPECT_EQ(input->texture, 1);
  input = dialogs_.AskAddFace(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->corners, (std::array<int32_t, 4>{0, 5, 2, -1}));
}

TEST_F(FaceTextureDialogs, AddFaceOffersTheSelectedVerticesAndNoneThatAreGone) {
  const int32_t selected[] = {1, 3, 4, 5};
  model_.Select(EGroupKind::kVertices, selected, true);
  driver_.Click("addFace", "OK").Click("addFace", "OK");
  EXPECT_EQ(dialogs_.AskAddFace(model_, nullptr)->corners, (std::array<int32_t, 4>{1, 3, 4, 5}));
  CBinModel small;
  for (int32_t i = 0; i < 3; ++i)
    small.AddVertex({i, 0, 0});
  small.AddTexture(std::make_unique<CBinTexture>(small, CTextureSet::Name(0), textures_.Image(0)));
  EXPECT_EQ(dialogs_.AskAddFace(small, nullptr)->corners, (std::array<int32_t, 4>{0, 1, 2, -1}));
}

TEST_F(FaceTextureDialogs, ReplaceTextureTakesATextureFileOnly) {
  const CTempFolder folder;
  const std::string good = folder.Write("NEW.RAW", std::string(128 * 128, 'a'));
  const std::string bad = folder.Write("BAD.RAW", std::string(100, 'a'));
  settings_.art_dir = folder.Path();
  driver_.On("replaceTexture", [&](QWidget& dialog) {
    auto* list = Child<QListWidget>(dialog, "textures");
    EXPECT_EQ(list->item(1)->text(), "T1.RAW, 128 x 128, not used");
    EXPECT_EQ(Fault(dialog), "Choose the file of the new texture.");
    const std::pair<std::string, const char*> rows[] = {
        {bad, "Not a texture: 100 bytes, not 64, 128, 256 or 512 squared."}, {folder.File("new.raw"), ""}};
    for (const auto& [path, fault] : rows) {
      TypeInto(dialog, "path", QString::fromStdString(path));
      EXPECT_EQ(Fault(dialog), fault);
      EXPECT_EQ(IsOkEnabled(dialog), *fault == '\0');
      EXPECT_EQ(Child<QLabel>(dialog, "picture")->pixmap().isNull(), *fault != '\0');
    }
    EXPECT_EQ(Child<QLabel>(dialog, "description")->text(), "128 x 128 texels");
    QTest::keyClick(list, Qt::Key_Down);
    ClickButton(dialog, "OK");
  });
  const auto input = dialogs_.AskReplaceTexture(model_, nullptr);
  ASSERT_TRUE(input);
  EXPECT_EQ(input->texture, 1);
  EXPECT_EQ(input->path, good);
}

}  // namespace veldra::testing
