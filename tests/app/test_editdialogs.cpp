#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QtTest>

#include "app/editorfixture.h"
#include "editing/texturemapwidget.h"
#include "support/dialogdriver.h"
#include "support/modelparts.h"

namespace veldra::testing {

using ::testing::ElementsAre;

namespace {

void Check(QWidget& dialog, const char* button) {
  Child<QAbstractButton>(dialog, button)->setChecked(true);
}

bool CanAccept(QWidget& dialog) {
  for (QAbstractButton* button : dialog.findChildren<QAbstractButton*>())
    if (button->text().remove('&') == "OK") return button->isEnabled();
  return false;
}

}  // namespace

/// The editing commands through their menu actions and dialogs, on a box of 8 vertices and 6 quads.
class EditDialogs : public CEditorTest {
 protected:
  void Open() {
    view = &StartWith(WriteModel("box.bin"));
    model = &view->Document().Model();
  }
  CEditCursor& Cursor() { return view->Cursor(); }
  void Select(EGroupKind kind, const std::vector<int32_t>& items) { model->Select(kind, items, true); }
  std::vector<int32_t> Corners(int32_t face) const { return CornersOf(model->Face(face)); }
  /// Runs COMMAND, lets ACTION act on its dialog, and accepts it.
  void Fill(ECommand command, const char* dialog, const std::function<void(QWidget&)>& action) {
    driver.On(dialog, [&](QWidget& window) {
      action(window);
      ClickButton(window, "OK");
    });
    Do(command);
  }

  CDialogDriver driver;
  CTarnView* view = nullptr;
  CBinModel* model = nullptr;
};

TEST_F(EditDialogs, CommandsWithoutDialogsChangeTheModel) {
  Open();
  Cursor().SetFace(0);
  Do(ECommand::kFaceFlip);
  EXPECT_THAT(Corners(0), ElementsAre(0, 2, 3, 1));
  const std::pair<ECommand, STexCoord> turns[] = {
      {ECommand::kTextureFlipX, {1, 0}}, {ECommand::kTextureFlipY, {1, 1}}, {ECommand::kTextureRotate, {0, 1}}};
  for (const auto& [command, coord] : turns) {
    Do(command);
    EXPECT_EQ(model->Face(0).TexCoord(0), coord);
  }
  Cursor().SetVertex(5);
  for (const ECommand refused : {ECommand::kVertexDelete, ECommand::kVertexDeleteSelected}) {
    Select(kVertices, {0, 5});
    Do(refused);
    EXPECT_EQ(questions.TakeMessageTexts().size(), 1u);
  }
}

TEST_F(EditDialogs, EditsTheCurrentFace) {
  Open();
  Cursor().SetFace(0);
  const STexCoord odd = {1.0 / 3, 2.0 / 7};  // more digits than a field shows
  model->Face(0).SetTexCoord(3, odd);
  driver.Click("editFace", "Cancel");
  Do(ECommand::kFaceEdit);
  driver.Click("binMapper", "OK");
  Do(ECommand::kTextureMapFace);
  EXPECT_FALSE(view->Document().IsModified());
  EXPECT_EQ(model->Face(0).TexCoord(3), odd);
  Fill(ECommand::kFaceEdit, "editFace", [this](QWidget& dialog) {
    EXPECT_EQ(Child<QLabel>(dialog, "storedMagic")->text(), QString::number(model->Face(0).StoredMagic()));
    EXPECT_EQ(Child<QLabel>(dialog, "normal")->text(), Child<QLabel>(dialog, "storedNormal")->text());
    TypeInto(dialog, "vertex2", "0");
    EXPECT_FALSE(CanAccept(dialog)) << "vertex 0 twice";
    TypeInto(dialog, "vertex2", "5");
    EXPECT_NE(Child<QLabel>(dialog, "normal")->text(), Child<QLabel>(dialog, "storedNormal")->text());
    Check(dialog, "triangle");
    TypeInto(dialog, "u1", "0.25");
    auto* types = Child<QComboBox>(dialog, "types");
    types->setCurrentIndex(types->findText("0x29 Shiny Texture (MTM2)"));
  });
  EXPECT_THAT(Corners(0), ElementsAre(0, 5, 3));
  EXPECT_EQ(model->Face(0).Type(), kFaceShiny);
  EXPECT_EQ(model->Face(0).TexCoord(0).u, 0.25);
}

TEST_F(EditDialogs, MapsTheTextureByDraggingAndByNumbers) {
  Open();
  Cursor().SetFace(0);
  const auto coord = [this](int k) { return model->Face(0).TexCoord(k); };
  const STexCoord old = coord(1);
  driver.On("binMapper", [&](QWidget& dialog) {
    auto* map = Child<CTextureMapWidget>(dialog, "map");
    const auto drag = [map](const STexCoord& from, const STexCoord& to) {
      QTest::mousePress(map, Qt::LeftButton, Qt::NoModifier, map->PlaceOf(from).toPoint());
      QMouseEvent move(QEvent::MouseMove, map->PlaceOf(to), map->mapToGlobal(map->PlaceOf(to)), Qt::NoButton,
                       Qt::LeftButton, Qt::NoModifier);
      QApplication::sendEvent(map, &move);
      QTest::mouseRelease(map, Qt::LeftButton, Qt::NoModifier, map->PlaceOf(to).toPoint());
    };
    drag(coord(1), {40.0 / 63, 10.0 / 63});
    EXPECT_NEAR(coord(1).u * 63, 40, 1.01) << "the model has it at once";
    EXPECT_NEAR(coord(1).v * 63, 10, 1.01);
    EXPECT_NEAR(coord(1).u * 63, std::round(coord(1).u * 63), 1e-9) << "on a texel";
    TypeInto(dialog, "u3", "31.5");
    EXPECT_EQ(coord(2).u, 0.5);
    EXPECT_TRUE(view->Document().IsModified());
    ClickButton(dialog, "Cancel");
  });
  Do(ECommand::kTextureMapFace);
  EXPECT_EQ(coord(1), old);
  EXPECT_EQ(coord(2).u, 1.0);
  EXPECT_FALSE(view->Document().IsModified());
  Fill(ECommand::kTextureMapFace, "binMapper", [](QWidget& dialog) {
    TypeInto(dialog, "v3", "64");
    EXPECT_FALSE(CanAccept(dialog));
    TypeInto(dialog, "v3", "15.75");
  });
  EXPECT_EQ(coord(2).v, 0.25);
}

TEST_F(EditDialogs, DefinesAnAnimationThatRunsInThePreview) {
  Open();
  questions.OnOpenFiles("Add Frames", SOpenFiles{{folder.Write("wood.raw", std::string(64 * 64, 'w'))}});
  QImage first;
  int looks = 0;
  const std::function<void(QWidget&)> wait_for_next = [&](QWidget& dialog) {
    constexpr int kMostLooks = 500;
    const bool has_changed = Child<QLabel>(dialog, "preview")->pixmap().toImage() != first;
    if (!has_changed && ++looks < kMostLooks) {
      driver.On("defineAnimation", wait_for_next);
      return;
    }
    EXPECT_TRUE(has_changed);
    ClickButton(dialog, "OK");
  };
  driver.On("defineAnimation", [&](QWidget& dialog) {
    EXPECT_EQ(Child<QLineEdit>(dialog, "name")->text(), "NEWANIM1");
    EXPECT_FALSE(CanAccept(dialog)) << "no frames yet";
    ClickButton(dialog, "Add Texture");
    ClickButton(dialog, "Add Files...");
    ClickButton(dialog, "Up");
    TypeInto(dialog, "rate", "20");
    first = Child<QLabel>(dialog, "preview")->pixmap().toImage();
    driver.On("defineAnimation", wait_for_next);
  });
  Do(ECommand::kTextureAnimation);
  const CBinTexture* const animation = model->FindTexture("NEWANIM1", ETextureKind::kAnimated);
  ASSERT_NE(animation, nullptr);
  EXPECT_EQ(animation->Frames()[0].name, "WOOD.RAW");
  EXPECT_EQ(animation->Rate(), 20);
}

}  // namespace veldra::testing
