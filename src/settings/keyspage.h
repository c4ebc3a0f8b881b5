#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeWidget>
#include <optional>
#include <string>
#include <vector>

#include "settings/keyfield.h"
#include "settings/userkeys.h"
#include "ui/faultlabel.h"

namespace veldra {

/// All commands with their keys, which can be changed here. What another command of the same window has is taken from
/// it only when the user says so.
class CKeysPage : public QWidget {
  Q_OBJECT

 public:
  explicit CKeysPage(std::vector<SKeyCommand> commands, QWidget* parent = nullptr);
  /// As CSettings::keys.
  std::string Text() const { return keys_.Text(); }
  void SetText(const std::string& text);
  /// Whether a command's name, menu or key has TEXT.
  bool Mentions(const QString& text) const;
  void Search(const QString& text);

 signals:
  void Changed();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QLayout* MakeHead();
  void MakeList();
  QLayout* MakeChange();
  QPushButton* MakeButton(const QString& text, const char* name, void (CKeysPage::*action)());
  bool IsFound(size_t command) const;
  void Filter();
  void ShowKeys();
  void Begin();
  void ShowState();
  void ShowPending(size_t command);
  void ShowOwn(size_t command);
  void Tell(const QString& text);
  void Warn(const QString& text);

  std::optional<size_t> Current() const;
  void Give(std::vector<std::string> keys);
  void Use();
  void Add();
  void Clear();
  void Reset();

  CUserKeys keys_;
  QLineEdit* search_;
  CKeyField* find_;
  QTreeWidget* list_;
  CKeyField* new_;
  QPushButton* use_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* clear_ = nullptr;
  QPushButton* reset_ = nullptr;
  CFaultLabel* fault_;
  QLabel* note_;
};

}  // namespace veldra
