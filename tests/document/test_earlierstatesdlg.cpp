#include <gtest/gtest.h>

#include <QtTest>

#include "document/earlierstatesdlg.h"
#include "support/dialogdriver.h"

namespace veldra::testing {

namespace {

constexpr int kCommandColumn = 1;

std::optional<uint64_t> Answer(const std::vector<SEarlierState>& states, const std::function<void(QWidget&)>& action) {
  CEarlierStatesDialog dialog("TRUCK.BIN", states, ECopyKind::kModel, nullptr);
  CDialogDriver driver;
  driver.On("earlierStates", action);
  dialog.exec();
  return dialog.Chosen();
}

}  // namespace

TEST(EarlierStatesDialog, OpensASoundStateOnly) {
  const std::vector<SEarlierState> states = {{.id = 9, .command = "Resize", .time = 1700000000, .vertices = 12},
                                             {.id = uint64_t{1} << 40, .command = "Save"},
                                             {.id = 2, .fault = "cut short"}};
  EXPECT_EQ(Answer(states,
                   [](QWidget& dialog) {
                     auto* list = Child<QTreeWidget>(dialog, "states");
                     EXPECT_EQ(list->topLevelItem(2)->text(kCommandColumn), "Damaged: cut short");
                     QTest::keyClick(list, Qt::Key_End);
                     QTest::keyClick(list, Qt::Key_Return);
                   }),
            uint64_t{1} << 40);
  const std::vector<SEarlierState> damaged = {states[2]};
  EXPECT_EQ(Answer(damaged,
                   [](QWidget& dialog) {
                     for (const auto* button : dialog.findChildren<QPushButton*>())
                       EXPECT_EQ(button->isEnabled(), button->text().remove('&') == "Cancel");
                     dialog.close();
                   }),
            std::nullopt);
}

}  // namespace veldra::testing
