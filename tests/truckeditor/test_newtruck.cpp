#include <QCheckBox>
#include <QListWidget>
#include <QTreeWidget>

#include "packing/packtruck.h"
#include "platform/files.h"
#include "truckeditor/truckeditorfixture.h"

namespace veldra::testing {
namespace {

/// What is wrong with a truck, and how a new one comes to be.
class CNewTruckTest : public CTruckEditorTest {};

TEST_F(CNewTruckTest, ChecksAreLiveAndLeadToTheField) {
  ASSERT_TRUE(editor->OpenFile(TruckPath()));
  Show(6);
  auto* const found = Child<QTreeWidget>(*editor, "truckFindings");
  const auto missing = [&] { return found->findItems("Missing file", Qt::MatchExactly); };
  EXPECT_EQ(missing().size(), 0);
  auto* const pages = Child<QTabWidget>(*editor, "pages");
  const auto use = [](std::string CTruck::*name) { return [name](CTruck& truck) { truck.*name = "NOWHERE.RAW"; }; };
  const struct {
    std::function<void(CTruck&)> spoil;
    const char* named;
    int page;
    const char* field;
  } kCases[] = {{[](CTruck& truck) { truck.tire_base_name = "NOKING"; }, "NOKING08L.BIN", 0, "tireModels"},
                {use(&CTruck::shock_texture), "NOWHERE.RAW", 0, "shockTexture"},
                {[](CTruck& truck) { truck.lights[1].cone_texture = "NOWHERE.RAW"; }, "NOWHERE.ACT", 3, "coneTexture"},
                {[](CTruck& truck) { truck.wave_files[2] = "NONE.WAV"; }, "NONE.WAV", 4, "waveFile3"}};
  for (const auto& each : kCases) {
    editor->Document().Change("", each.spoil);
    ASSERT_TRUE(QTest::qWaitFor([&] { return !missing().isEmpty(); })) << each.named;
    const auto rows = found->findItems(each.named, Qt::MatchExactly, 1);
    ASSERT_FALSE(rows.isEmpty()) << each.named;
    emit found->itemActivated(rows.first(), 0);
    EXPECT_EQ(pages->currentIndex(), each.page);
    EXPECT_TRUE(Child<QLineEdit>(*editor, each.field)->hasFocus());
    editor->Document().Undo();
    pages->setCurrentIndex(6);
    ASSERT_TRUE(QTest::qWaitFor([&] { return missing().isEmpty(); }));
  }
  EXPECT_EQ(Child<QListWidget>(*editor, "lights")->currentRow(), 1);
}

TEST_F(CNewTruckTest, ANewTruckIsMadeStepByStepAndHasItsFiles) {
  const CTempFolder target;
  CTruckEditorDlg other(SToolServices{.questions = questions,
                                      .settings = settings,
                                      .stock = stock,
                                      .default_colors = colors,
                                      .game_folder = "",
                                      .write_sample = [&](const std::string&) { return TruckPath(); }});
  settings.pod_dir = settings.bin_dir = settings.art_dir = "";  // nothing is found but from the template
  CDialogDriver dialogs;
  const auto choose = [](QWidget& dialog, const char* start) {
    auto* const list = Child<QListWidget>(dialog, "templates");
    list->setCurrentItem(list->findItems(start, Qt::MatchExactly).value(0));
    ClickButton(dialog, "Next >");
  };
  dialogs.On("newTruck", [&](QWidget& dialog) {
    choose(dialog, "The sample truck");
    auto* const file = Child<QLineEdit>(dialog, "newTruckFile");
    TypeInto(dialog, "newTruckName", "Big-Foot 4x4");
    EXPECT_EQ(file->text(), "BIGFOOT4");
    TypeInto(dialog, "newTruckFolder", QString::fromStdString(target.File("none")));
    EXPECT_EQ(Child<QLabel>(dialog, "newTruckFault")->text(), "There is no such folder.");
    TypeInto(dialog, "newTruckFolder", QString::fromStdString(target.Path()));
    TypeInto(dialog, "newTruckFile", "BIG");
    EXPECT_EQ(Child<QLabel>(dialog, "newTruckFault")->text(), "");
    for (int i = 0; i < 2; ++i)
      ClickButton(dialog, "Next >");
    TypeInto(dialog, "frontrighttire0", "4.5");
    ClickButton(dialog, "Next >");
    Child<QCheckBox>(dialog, "newHeadlights")->click();
    Child<QCheckBox>(dialog, "newBrakelights")->click();
    Child<QCheckBox>(dialog, "newBrakelights")->click();
    ClickButton(dialog, "Next >");
    EXPECT_EQ(Child<QLabel>(dialog, "newTruckMissing")->text(), "");
    ClickButton(dialog, "Finish");
  });
  other.NewByWizard();
  CTruck saved;
  ASSERT_TRUE(saved.Load(target.File("BIG.TRK")));
  EXPECT_EQ(saved.name, "Big-Foot 4x4");
  EXPECT_EQ(saved.tires[kFrontLeftTire][0], -4.5);
  EXPECT_EQ(saved.light_count, 5) << "headlights are gone, brake lights back";
  EXPECT_FALSE(other.Document().IsModified());
  EXPECT_TRUE(IsSameFile(other.Document().Path(), target.File("BIG.TRK")));
  const STruckPackPlan plan =
      PlanTruckPack(target.File("BIG.TRK"), PlacesForTruck(target.File("BIG.TRK"), settings, ""), stock);
  EXPECT_TRUE(plan.Lacking(false).empty()) << "all that it needs lies beside it";

  dialogs.On("newTruck", [&](QWidget& dialog) {
    choose(dialog, "A plain truck without models");
    TypeInto(dialog, "newTruckFile", "BIG");
    TypeInto(dialog, "newTruckFolder", QString::fromStdString(target.Path()));
    EXPECT_EQ(Child<QLabel>(dialog, "newTruckFault")->text(), "There is a truck of this name already.");
    TypeInto(dialog, "newTruckFile", "PLAIN");
    for (int i = 0; i < 4; ++i)
      ClickButton(dialog, "Next >");
    Child<QCheckBox>(dialog, "newTruckSave")->setChecked(false);
    ClickButton(dialog, "Finish");
  });
  other.NewByWizard();
  EXPECT_TRUE(other.Document().IsModified());
  EXPECT_EQ(other.Document().Path(), "");
  EXPECT_EQ(other.Document().Truck().light_count, 6);
}

}  // namespace
}  // namespace veldra::testing
