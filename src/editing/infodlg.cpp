#include "editing/infodlg.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPushButton>
#include <QVBoxLayout>

#include "interchange/modelreport.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr QSize kFirstSize(560, 480);

}  // namespace

CInfoDialog::CInfoDialog(const CEditCursor& cursor, QWidget* parent) : QDialog(parent) {
  setObjectName("modelInformation");
  setWindowTitle(tr("Model Information"));
  const std::string report = ModelInformation(cursor.Model(), cursor.FaceObject(), cursor.VertexObject());
  const QString shown = ToQString(DisplayText(report));
  QPlainTextEdit* text = MakeInfoText();
  text->setPlainText(shown);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  connect(copy, &QPushButton::clicked, this, [shown] { QGuiApplication::clipboard()->setText(shown); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text, 1);
  layout->addWidget(buttons);
  resize(kFirstSize);
}

QPlainTextEdit* MakeInfoText() {
  // One more or one less would send some of the counts to another stop.
  constexpr int kTabCharacters = 4;
  auto* text = new QPlainTextEdit;
  text->setObjectName("text");
  text->setReadOnly(true);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text->setTabStopDistance(kTabCharacters * QFontMetricsF(text->font()).horizontalAdvance(' '));
  return text;
}

}  // namespace veldra
