#pragma once

#include <gtest/gtest.h>

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "document/earlierstates.h"
#include "platform/paths.h"
#include "samples/truckfile.h"
#include "samples/workspace.h"
#include "settings/coptools.h"
#include "support/dialogdriver.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "truckeditor/truckeditordlg.h"

namespace veldra::testing {

/// The editor on a screen, with the truck of the sample workspace, which is made once.
class CTruckEditorTest : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<CTempFolder>();
    CScriptedQuestions questions;
    SError error;
    ASSERT_TRUE(samples::WriteWorkspace(folder_->Path(), questions, &error)) << error.what;
  }
  static void TearDownTestSuite() { folder_.reset(); }

  CTruckEditorTest() {
    SettingsMap map;
    CopTools::ReadCfgFile(folder_->File(kSettingsFileName), map);
    settings.Take(map);
    editor = std::make_unique<CTruckEditorDlg>(
        SToolServices{.questions = questions,
                      .settings = settings,
                      .stock = stock,
                      .default_colors = colors,
                      .game_folder = "",
                      .show_archive = [this](const std::string& pod) { shown_archive = pod; },
                      .start_game =
                          [this](const std::string& archive, const std::string& truck) {
                            started = {archive, truck};
                            return true;
                          }},
        &states);
  }

  std::string TruckPath() const { return JoinPath(settings.trk_dir, samples::kTruckFileName); }
  const CTruck& Truck() const { return editor->Document().Truck(); }

  void Show(int page) {
    Child<QTabWidget>(*editor, "pages")->setCurrentIndex(page);
    editor->show();
    editor->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(editor.get()));
  }
  /// TEXT in UTF-8, in place of what stands in the line.
  void Type(const char* line, const char* text) {
    auto* const edit = Child<QLineEdit>(*editor, line);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Delete);
    for (const QChar letter : QString::fromUtf8(text))
      QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_unknown, letter, Qt::NoModifier);
  }
  void Click(const char* button) { QTest::mouseClick(Child<QPushButton>(*editor, button), Qt::LeftButton); }
  QString Note(const char* name) { return Child<QLabel>(*editor, name)->toolTip(); }

  static inline std::unique_ptr<CTempFolder> folder_;
  CSettings settings;
  CScriptedQuestions questions;
  CStockFiles stock;
  const ColorTable colors = GreyRamp();
  CTempFolder states_folder;
  CEarlierStates states{states_folder.Path()};
  std::string shown_archive;
  std::pair<std::string, std::string> started;  ///< the game's archive and truck
  std::unique_ptr<CTruckEditorDlg> editor;
};

}  // namespace veldra::testing
