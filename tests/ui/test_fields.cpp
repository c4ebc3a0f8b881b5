#include <gtest/gtest.h>

#include <QApplication>
#include <QClipboard>
#include <QPushButton>
#include <QtTest>

#include "support/dialogdriver.h"
#include "ui/fielddialog.h"
#include "ui/screenplace.h"

namespace veldra::testing {

namespace {

/// Two numbers; the first must not be larger than the second.
class CRangeDialog : public CFieldDialog {
 public:
  CRangeDialog() : CFieldDialog("range", "Range", nullptr) {
    auto* form = new QFormLayout;
    first = AddNumber(form, "&First:", "first", SNumberRule::Integer(0, 99), 1);
    second = AddNumber(form, "&Second:", "second", {}, 2.5);
    Content()->addLayout(form);
    StartWith(first);
    Refresh();
    show();
    activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(this));
  }
  QString DialogFault() { return Child<QLabel>(*this, "dialogFault")->text(); }

  CNumberField* first;
  CNumberField* second;

 private:
  QString Fault() override { return *first->Value() > *second->Value() ? "Too large." : ""; }
  QString FieldFault() override { return "Look above."; }
};

}  // namespace

TEST(FieldDialog, OkWaitsForEveryFieldAndForTheWhole) {
  CRangeDialog dialog;
  EXPECT_TRUE(dialog.IsValid());
  const struct {
    const char* first;
    const char* second;
    const char* first_fault;
    const char* second_fault;
    const char* dialog_fault;
  } rows[] = {
      {"", "3", "Enter a number.", "", "Look above."},
      {"1.5", "3", "Not a whole number.", "", "Look above."},
      {"100", "0.5.", "Must be between 0 and 99.", "Not a number.", "Look above."},
      {"4", "3", "", "", "Too large."},
      {"3", "3", "", "", ""},
  };
  for (const auto& row : rows) {
    TypeInto(dialog, "first", row.first);
    TypeInto(dialog, "second", row.second);
    EXPECT_EQ(dialog.first->Fault(), row.first_fault);
    EXPECT_EQ(dialog.second->Fault(), row.second_fault);
    EXPECT_EQ(dialog.DialogFault(), row.dialog_fault);
    EXPECT_EQ(dialog.IsValid(), *row.dialog_fault == '\0');
    QTest::keyClick(&dialog, Qt::Key_Return);
    EXPECT_EQ(dialog.isVisible(), !dialog.IsValid()) << row.first;
  }
  EXPECT_EQ(dialog.result(), QDialog::Accepted);
}

TEST(NumberField, TrimsWhatIsPastedAndReadsWhatTheLocaleWrites) {
  const QLocale before;
  QLocale::setDefault(QLocale(QLocale::German));
  CRangeDialog dialog;
  EXPECT_EQ(dialog.second->Edit()->text(), "2.5");
  QApplication::clipboard()->setText(QString(QChar(0xA0)) + " 1234.25\n");
  QTest::keyClick(&dialog, Qt::Key_Tab);
  QTest::keyClick(dialog.second->Edit(), Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(dialog.second->Value(), 1234.25);
  QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(dialog.second->Edit()->text(), "1234.25");
  for (const auto& [typed, value] : {std::pair{"-0,25", -0.25}, {"3.75", 3.75}, {"1.234,5", 1234.5}}) {
    TypeInto(dialog, "second", typed);
    EXPECT_EQ(dialog.second->Value(), value) << typed;
  }
  // Thousands as the counts beside the fields are written.
  dialog.first->SetRule(SNumberRule::Integer(0, 99999));
  TypeInto(dialog, "first", "1.000");
  EXPECT_EQ(dialog.first->Value(), 1000);
  QLocale::setDefault(before);
}

TEST(NumberField, KeysAndWheelStepTheNumberWithinItsRange) {
  CRangeDialog dialog;
  const struct {
    const char* field;
    const char* typed;
    std::vector<Qt::Key> keys;
    const char* after;
  } rows[] = {{"first", "7", {Qt::Key_Up, Qt::Key_PageUp}, "18"},
              {"first", "5", {Qt::Key_PageDown}, "0"},
              {"first", "98", {Qt::Key_Up, Qt::Key_Up}, "99"},
              {"first", "x", {Qt::Key_Up}, "x"},
              {"second", "2.5", {Qt::Key_Up}, "2.6"},
              {"second", "-0.01", {Qt::Key_Up, Qt::Key_Up}, "1"}};
  for (const auto& row : rows) {
    TypeInto(dialog, row.field, row.typed);
    auto* edit = Child<QLineEdit>(dialog, row.field);
    for (const Qt::Key key : row.keys)
      QTest::keyClick(edit, key);
    EXPECT_EQ(edit->text().toStdString(), row.after) << row.typed;
  }
  TypeInto(dialog, "first", "7");
  dialog.first->Edit()->setFocus();
  EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.first->Edit()->hasFocus(); }));
  for (QLineEdit* edit : {dialog.first->Edit(), dialog.second->Edit()}) {
    QWheelEvent turn({5, 5}, edit->mapToGlobal(QPointF(5, 5)), {}, {0, -240}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(edit, &turn);
  }
  EXPECT_EQ(dialog.first->Value(), 5);
  EXPECT_EQ(dialog.second->Edit()->text(), "1");
}

TEST(ScreenFit, DialogsLargerThanTheScreenScroll) {
  const CScreenFit fit(*qApp);
  CRangeDialog dialog;
  const int usual = dialog.minimumSizeHint().height();
  dialog.hide();
  dialog.first->setMinimumHeight(3000);
  dialog.resize(500, 4000);
  dialog.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  EXPECT_TRUE(QTest::qWaitFor([&] { return dialog.minimumSizeHint().height() > usual; })) << "as the screen lets it";
  EXPECT_LE(dialog.height(), dialog.screen()->availableSize().height());
  EXPECT_TRUE(dialog.rect().contains(dialog.findChild<QDialogButtonBox*>()->geometry()));
}

}  // namespace veldra::testing
