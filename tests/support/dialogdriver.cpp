#include "support/dialogdriver.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace veldra::testing {

namespace {

constexpr int kLookEveryMs = 15;

}  // namespace

CDialogDriver::CDialogDriver() {
  LookLater();
}

CDialogDriver::~CDialogDriver() {
  for (const SStep& step : steps_)
    ADD_FAILURE() << "never opened: " << step.name;
}

CDialogDriver& CDialogDriver::On(std::string name, std::function<void(QWidget&)> action) {
  steps_.push_back({std::move(name), std::move(action)});
  return *this;
}

CDialogDriver& CDialogDriver::Click(std::string name, const QString& button) {
  return On(std::move(name), [button](QWidget& dialog) { ClickButton(dialog, button); });
}

/// A timer of its own each time: an action may open the next dialog before it returns.
void CDialogDriver::LookLater() {
  QTimer::singleShot(kLookEveryMs, &alive_, [this] { Look(); });
}

void CDialogDriver::Look() {
  LookLater();
  QWidget* dialog = QApplication::activeModalWidget();
  if (dialog == nullptr || !dialog->isVisible()) return;
  // Without a window manager nobody else hands it the keyboard.
  if (!dialog->isActiveWindow()) {
    dialog->activateWindow();
    return;
  }
  const std::string name = dialog->objectName().toStdString();
  if (steps_.empty() || steps_.front().name != name) {
    const auto* box = qobject_cast<QMessageBox*>(dialog);
    ADD_FAILURE() << "unexpected dialog: " << name << " \"" << dialog->windowTitle().toStdString() << "\" "
                  << (box != nullptr ? box->text().toStdString() : "");
    dialog->close();
    return;
  }
  const SStep step = std::move(steps_.front());
  steps_.pop_front();
  step.action(*dialog);
}

bool IsOkEnabled(QWidget& dialog) {
  return dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok)->isEnabled();
}

void ClickButton(QWidget& parent, const QString& text) {
  for (QAbstractButton* button : parent.findChildren<QAbstractButton*>()) {
    if (button->text().remove('&') != text || !button->isVisible()) continue;
    QTest::mouseClick(button, Qt::LeftButton);
    return;
  }
  ADD_FAILURE() << "no button \"" << text.toStdString() << '"';
  parent.close();
}

void TypeInto(QWidget& parent, const char* name, const QString& text) {
  auto* edit = Child<QLineEdit>(parent, name);
  if (edit == nullptr) return;
  edit->selectAll();
  QTest::keyClick(edit, Qt::Key_Delete);
  QTest::keyClicks(edit, text);
}

}  // namespace veldra::testing
