#pragma once

#include <QObject>
#include <QWidget>
#include <deque>
#include <functional>
#include <string>

namespace veldra::testing {

/// Acts on modal dialogs as they open, in the order in which they are expected. Fails the test when one comes that is
/// not expected (and closes it, so that the test goes on) and when an expected one never came.
class CDialogDriver {
 public:
  CDialogDriver();
  ~CDialogDriver();

  /// When the dialog of object name NAME has opened, ACTION is called with it.
  CDialogDriver& On(std::string name, std::function<void(QWidget&)> action);
  /// Clicks its button of that text (without "&").
  CDialogDriver& Click(std::string name, const QString& button);

 private:
  struct SStep {
    std::string name;
    std::function<void(QWidget&)> action;
  };
  void LookLater();
  void Look();

  std::deque<SStep> steps_;
  QObject alive_;  ///< ends the looking
};

/// The child of PARENT of that object name; a missing one fails the test.
template <typename T>
T* Child(QWidget& parent, const char* name);

/// DIALOG takes what was entered.
bool IsOkEnabled(QWidget& dialog);

/// Clicks the button of that text with the mouse.
void ClickButton(QWidget& parent, const QString& text);

/// Types TEXT over what stands in the line of that object name.
void TypeInto(QWidget& parent, const char* name, const QString& text);

}  // namespace veldra::testing

#include <gtest/gtest.h>

template <typename T>
T* veldra::testing::Child(QWidget& parent, const char* name) {
  T* child = parent.findChild<T*>(name);
  EXPECT_NE(child, nullptr) << name;
  return child;
}
