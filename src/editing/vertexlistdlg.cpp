#include "editing/vertexlistdlg.h"

#include "editing/makecommands.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CVertexListDialog::CVertexListDialog(QWidget* parent)
    : CFieldDialog("vertexList", tr("Add Vertices"), parent), text_(new QPlainTextEdit), count_(new QLabel) {
  auto* label = new QLabel(tr("&Vertices, one a line: x y z"));
  label->setBuddy(text_);
  text_->setObjectName("vertices");
  text_->setPlaceholderText("0 0 0\n100 0 0\n100 50 0");
  text_->setTabChangesFocus(true);
  count_->setObjectName("count");
  Content()->addWidget(label);
  Content()->addWidget(text_, 1);
  Content()->addWidget(count_);
  connect(text_, &QPlainTextEdit::textChanged, this, &CFieldDialog::Refresh);
  StartWith(text_);
  Refresh();
}

QString CVertexListDialog::Fault() {
  const std::string fault = ParseVertices(text_->toPlainText().toStdString(), points_);
  count_->setText(fault.empty() ? ToQString(Counted(static_cast<int64_t>(points_.size()), "vertex", "vertices"))
                                : QString());
  return ToQString(fault);
}

}  // namespace veldra
