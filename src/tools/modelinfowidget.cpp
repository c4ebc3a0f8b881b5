#include "tools/modelinfowidget.h"

#include <QScrollBar>
#include <QVBoxLayout>

#include "editing/infodlg.h"
#include "interchange/modelreport.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CModelInfoWidget::CModelInfoWidget() : CToolWidget("modelInfoTool"), text_(MakeInfoText()) {
  text_->setPlaceholderText(tr("No model is open."));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(text_);
}

void CModelInfoWidget::Refresh(const SNews&) {
  const CEditCursor* cursor = Cursor();
  const std::string report =
      cursor == nullptr ? "" : ModelInformation(cursor->Model(), cursor->FaceObject(), cursor->VertexObject());
  const QString text = ToQString(DisplayText(report));
  if (text == text_->toPlainText()) return;
  const int line = text_->verticalScrollBar()->value();
  text_->setPlainText(text);
  text_->verticalScrollBar()->setValue(line);
}

}  // namespace veldra
