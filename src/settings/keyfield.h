#pragma once

#include <QLineEdit>
#include <string>

namespace veldra {

/// A field for a key: a click, Space or Enter, and it waits for one. What is pressed then, Tab too, is its key; Esc
/// gives up. Otherwise Tab and all else lead on as from other fields, and Backspace and Del empty it.
class CKeyField : public QLineEdit {
  Q_OBJECT

 public:
  explicit CKeyField(QWidget* parent = nullptr);
  /// In the spelling of keytext.h; "" for none.
  const std::string& Key() const { return key_; }
  void SetKey(const std::string& key);
  void Wait(bool waits = true);

 signals:
  /// Whatever it comes from.
  void KeyChanged();
  /// The user has pressed one. Before this KeyChanged has come, even for the same key.
  void Pressed();

 protected:
  bool event(QEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  void TakePress(const QKeyEvent& event);
  bool TakeOtherPress(const QKeyEvent& event);

  std::string key_;
  bool waits_ = false;
};

}  // namespace veldra
