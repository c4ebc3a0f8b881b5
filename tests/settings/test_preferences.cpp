#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QtTest>

#include "settings/preferencesdlg.h"
#include "support/dialogdriver.h"
#include "ui/colorwell.h"

namespace veldra::testing {

namespace {

class Preferences : public ::testing::Test {
 protected:
  void Open() {
    dialog_ = std::make_unique<CPreferencesDialog>(settings_, std::vector<SKeyCommand>(), nullptr);
    QObject::connect(dialog_.get(), &CPreferencesDialog::SettingsChanged, [this](const std::vector<std::string>& keys) {
      changed_.insert(changed_.end(), keys.begin(), keys.end());
    });
    dialog_->show();
    dialog_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }
  template <typename T>
  T& Control(const std::string& key) {
    return *Child<T>(*dialog_, key.c_str());
  }
  /// Gives the control of ROW another value as a user would; returns it as text.
  std::string Change(const SSettingRow& row) {
    if (row.is_switch) {
      auto& box = Control<QCheckBox>(row.key);
      QTest::keyClick(&box, Qt::Key_Space);
      return box.isChecked() ? "1" : "0";
    }
    if (!row.choices.empty()) {
      auto& box = Control<QComboBox>(row.key);
      QTest::keyClick(&box, box.currentIndex() == 0 ? Qt::Key_End : Qt::Key_Home);
      return box.currentText().toStdString() == row.choices.front().label ? std::to_string(row.choices.front().value)
                                                                          : std::to_string(row.choices.back().value);
    }
    if (auto* well = dialog_->findChild<CColorWell*>(QString::fromStdString(row.key))) {
      well->SetColor(QColor(1, 2, 3));
      return "#010203";
    }
    const bool is_text = std::holds_alternative<std::string& (*)(CSettings&)>(row.member);
    const std::string value = is_text ? "/some where/x" : std::to_string(static_cast<int>(row.largest));
    TypeInto(*dialog_, row.key.c_str(), QString::fromStdString(value));
    return value;
  }
  QPushButton* Button(const QString& text) {
    for (QPushButton* button : dialog_->findChildren<QPushButton*>())
      if (button->text().remove('&') == text) return button;
    ADD_FAILURE() << text.toStdString();
    return nullptr;
  }

  CSettings settings_;
  std::unique_ptr<CPreferencesDialog> dialog_;
  std::vector<std::string> changed_;
};

}  // namespace

TEST_F(Preferences, EveryRowOfAPageIsShownChangedAndReadBack) {
  Open();
  std::vector<std::string> keys;
  CSettings wanted;
  for (const SSettingRow& row : SettingRows()) {
    if (row.page == ESettingPage::kNone) {
      EXPECT_EQ(dialog_->findChild<QWidget*>(QString::fromStdString(row.key)), nullptr) << row.key;
      continue;
    }
    dialog_->ShowPage(row.page);
    EXPECT_TRUE(Control<QWidget>(row.key).isVisible()) << row.key;
    EXPECT_TRUE(SetFromText(row, Change(row), wanted)) << row.key;
    keys.push_back(row.key);
  }
  EXPECT_EQ(settings_.Texts(), CSettings().Texts());
  ClickButton(*dialog_, "OK");
  EXPECT_EQ(settings_.Texts(), wanted.Texts());
  std::sort(keys.begin(), keys.end());
  std::sort(changed_.begin(), changed_.end());
  EXPECT_EQ(changed_, keys);

  changed_.clear();
  Open();
  ClickButton(*dialog_, "OK");
  EXPECT_EQ(settings_.Texts(), wanted.Texts());
  EXPECT_EQ(changed_, std::vector<std::string>());
}

TEST_F(Preferences, CancelChangesNothingAndApplyAtOnce) {
  settings_.axes_3d = 5;  // on, as an older program wrote it
  Open();
  EXPECT_FALSE(Button("Apply")->isEnabled());
  dialog_->ShowPage(ESettingPage::kView);
  TypeInto(*dialog_, "ROTATESTEP", "12.5");
  ClickButton(*dialog_, "Apply");
  EXPECT_EQ(settings_.rotate_step, 12.5);
  EXPECT_EQ(changed_, std::vector<std::string>{"ROTATESTEP"});
  EXPECT_FALSE(Button("Apply")->isEnabled());
  TypeInto(*dialog_, "ROTATESTEP", "20");
  QTest::keyClick(&Control<QCheckBox>("3DAXES"), Qt::Key_Space);
  QTest::keyClick(dialog_.get(), Qt::Key_Escape);
  EXPECT_FALSE(dialog_->isVisible());
  EXPECT_EQ(settings_.rotate_step, 12.5);
  EXPECT_EQ(settings_.axes_3d, 5);
}

TEST_F(Preferences, AFaultOnAnotherPageIsNamedAndGoesWithThatPagesDefaults) {
  settings_.show_grid = 1;
  settings_.bin_dir = "elsewhere";
  Open();
  dialog_->ShowPage(ESettingPage::kView);
  TypeInto(*dialog_, "OFFSETSTEP", "513");
  dialog_->ShowPage(ESettingPage::kFolders);
  EXPECT_FALSE(Button("OK")->isEnabled());
  EXPECT_FALSE(Button("Apply")->isEnabled());
  EXPECT_TRUE(Child<QLabel>(*dialog_, "dialogFault")->text().startsWith("3D View: How far"));
  dialog_->ShowPage(ESettingPage::kView);
  ClickButton(*dialog_, "Restore Defaults");
  EXPECT_EQ(settings_.show_grid, 1);
  ClickButton(*dialog_, "OK");
  EXPECT_EQ(settings_.offset_step, CSettings().offset_step);
  EXPECT_EQ(settings_.show_grid, 0);
  EXPECT_EQ(settings_.bin_dir, "elsewhere");
}

}  // namespace veldra::testing
