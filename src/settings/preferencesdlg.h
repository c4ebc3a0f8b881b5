#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStackedWidget>
#include <string>
#include <vector>

#include "settings/keyspage.h"
#include "settings/settingcontrol.h"
#include "ui/fielddialog.h"

namespace veldra {

/// The settings that stand on a page of the settings table, to look at and to change. SETTINGS change with OK and Apply
/// only.
class CPreferencesDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// SETTINGS must outlive it. COMMANDS are those whose keys can be changed, on a page of their own.
  CPreferencesDialog(CSettings& settings, std::vector<SKeyCommand> commands, QWidget* parent);
  void ShowPage(ESettingPage page);

 signals:
  /// SETTINGS hold new values for KEYS (never empty).
  void SettingsChanged(const std::vector<std::string>& keys);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  struct SControl : SSettingControl {
    int page;           ///< place in the list of pages
    std::string taken;  ///< its text as the settings have it
  };
  void MakeHead();
  void MakePages();
  void AddPage(ESettingPage page, const QString& title);
  void AddListItem(ESettingPage page, const QString& title);
  void AddKeysPage(std::vector<SKeyCommand> commands);
  void MakeButtons();
  void TakeSettings();
  void KeepCustomColors();
  void Search(const QString& text);
  void RestoreDefaults();
  void Apply();
  QString Fault() override;
  QString FieldFault() override;

  CSettings& settings_;
  QLineEdit* search_;
  QListWidget* list_;
  QStackedWidget* pages_;
  QLabel* no_match_;
  QPushButton* apply_ = nullptr;
  CKeysPage* keys_ = nullptr;
  std::vector<SControl> controls_;
};

}  // namespace veldra
