#include "editing/infodlg.h"

#include <QClipboard>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "interchange/modelreport.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr QSize kFirstSize(560, 480);

}  // namespace

CInfoDialog::CInfoDialog(const CEditCursor& cursor, QWidget* parent) : QDialog(parent) {
  setObjectName("modelInformation");
  setWindowTitle(tr("Model Information"));
  const std::string report = ModelInformation(cursor.Model(), cursor.FaceObject(), cursor.VertexObject());
  const QString shown = QString::fromStdString(ToUtf8(report));
  auto* text = new QPlainTextEdit(shown);
  text->setObjectName("text");
  text->setReadOnly(true);
  text->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  auto* copy = buttons->addButton(tr("&Copy"), QDialogButtonBox::ActionRole);
  connect(copy, &QPushButton::clicked, this, [shown] { QGuiApplication::clipboard()->setText(shown); });
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text, 1);
  layout->addWidget(buttons);
  resize(kFirstSize);
}

}  // namespace veldra
