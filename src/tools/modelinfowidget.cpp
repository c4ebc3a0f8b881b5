#include "tools/modelinfowidget.h"

#include <QFontDatabase>
#include <QScrollBar>
#include <QVBoxLayout>

#include "interchange/modelreport.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr int kTabCharacters = 4;

}  // namespace

CModelInfoWidget::CModelInfoWidget() : CToolWidget("modelInfoTool"), text_(new QPlainTextEdit) {
  text_->setObjectName("text");
  text_->setReadOnly(true);
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  // The numbers of the first lines stand below one another at this distance.
  text_->setTabStopDistance(kTabCharacters * text_->fontMetrics().horizontalAdvance(' '));
  text_->setPlaceholderText(tr("No model is open."));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(text_);
}

void CModelInfoWidget::Refresh(const SNews&) {
  const CEditCursor* cursor = Cursor();
  const std::string report =
      cursor == nullptr ? "" : ModelInformation(cursor->Model(), cursor->FaceObject(), cursor->VertexObject());
  const QString text = QString::fromStdString(ToUtf8(report));
  if (text == text_->toPlainText()) return;
  const int line = text_->verticalScrollBar()->value();
  text_->setPlainText(text);
  text_->verticalScrollBar()->setValue(line);
}

}  // namespace veldra
