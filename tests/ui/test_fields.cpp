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

TEST(FieldDialog, KeysLeadThroughTheFieldsToTheButtons) {
  CRangeDialog dialog;
  EXPECT_EQ(dialog.focusWidget(), dialog.first->Edit());
  EXPECT_EQ(dialog.first->Edit()->selectedText(), "1");
  QTest::keyClick(&dialog, Qt::Key_Tab);
  EXPECT_EQ(dialog.focusWidget(), dialog.second->Edit());
  QTest::keyClick(&dialog, Qt::Key_Tab);
  EXPECT_NE(qobject_cast<QPushButton*>(dialog.focusWidget()), nullptr);
  QTest::keyClick(&dialog, Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(dialog.focusWidget(), dialog.first->Edit());
  QTest::keyClick(&dialog, Qt::Key_Escape);
  EXPECT_FALSE(dialog.isVisible());
  EXPECT_EQ(dialog.result(), QDialog::Rejected);
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
  const struct {
    const char* typed;
    CNumberField* field;
    double value;
  } rows[] = {{"2,5", dialog.second, 2.5},        {"-0,25", dialog.second, -0.25}, {"3.75", dialog.second, 3.75},
              {"1.234,5", dialog.second, 1234.5}, {"12", dialog.first, 12},        {"9,0", dialog.first, 9}};
  for (const auto& row : rows) {
    TypeInto(dialog, row.field->objectName().toUtf8(), row.typed);
    EXPECT_EQ(row.field->Value(), row.value) << row.typed;
  }
  // Thousands as the counts beside the fields are written.
  dialog.first->SetRule(SNumberRule::Integer(0, 99999));
  TypeInto(dialog, "first", "1.000");
  EXPECT_EQ(dialog.first->Value(), 1000);
  dialog.second->SetValue(-0.0);
  EXPECT_EQ(dialog.second->Edit()->text(), "0");
  QLocale::setDefault(before);
}

TEST(NumberField, ADisabledOneIsNeverWrong) {
  CRangeDialog dialog;
  QSignalSpy changes(dialog.first, &CNumberField::ValidityChanged);
  TypeInto(dialog, "first", "x");
  ASSERT_EQ(changes.size(), 1);
  EXPECT_FALSE(changes[0][0].toBool());
  dialog.first->setEnabled(false);
  EXPECT_TRUE(dialog.first->IsValid());
  EXPECT_EQ(dialog.first->Value(), std::nullopt);
  dialog.first->setEnabled(true);
  EXPECT_EQ(dialog.first->Fault(), "Not a number.");
  EXPECT_EQ(changes.size(), 3);
}

TEST(FaultLabel, CanBeReadOnDarkAndOnLightWindows) {
  CRangeDialog dialog;
  auto* fault = Child<QLabel>(dialog, "dialogFault");
  for (const QColor& window : {QColor(30, 30, 30), QColor(240, 240, 240)}) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    dialog.setPalette(palette);
    const QColor text = fault->palette().color(QPalette::WindowText);
    EXPECT_GT(std::abs(text.lightness() - window.lightness()), 90) << window.name().toStdString();
    EXPECT_GT(text.red(), text.green());
  }
}

TEST(ScreenFit, DialogsLargerThanTheScreenScroll) {
  const CScreenFit fit(*qApp);
  CRangeDialog dialog;
  const int usual = dialog.minimumSizeHint().height();
  dialog.hide();
  dialog.first->setMinimumHeight(3000);
  QCoreApplication::processEvents();
  EXPECT_GT(dialog.minimumSizeHint().height(), usual) << "as large as the screen lets it";
  dialog.resize(500, 4000);
  dialog.show();
  EXPECT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  EXPECT_LE(dialog.height(), dialog.screen()->availableSize().height());
  EXPECT_TRUE(dialog.rect().contains(dialog.findChild<QDialogButtonBox*>()->geometry()));
}

}  // namespace veldra::testing
