#include "podtools/podviewerdlg.h"

#include <QVBoxLayout>

#include "ui/dialogplace.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr QSize kUsualViewerSize(560, 480);

}  // namespace

CPodViewerDlg::CPodViewerDlg(CSettings& settings, QWidget* parent)
    : QDialog(parent, kToolWindow), preview_(new CPodPreview(settings)) {
  setObjectName("podViewer");
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(preview_);
  resize(kUsualViewerSize);
}

void CPodViewerDlg::ShowEntry(const CPodDocument& archive, size_t entry) {
  setWindowTitle(NameToQString(archive.Entries()[entry].Name()));
  show();
  preview_->ShowEntry(archive, entry);
}

}  // namespace veldra
