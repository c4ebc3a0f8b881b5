#pragma once

#include <QDialog>

#include "podtools/podpreview.h"

namespace veldra {

/// What one entry of an archive holds, in a window of its own: as large as the user likes it, beside others.
class CPodViewerDlg : public QDialog {
  Q_OBJECT

 public:
  explicit CPodViewerDlg(CSettings& settings, QWidget* parent);

  /// Shows it, and the window.
  void ShowEntry(const CPodDocument& archive, size_t entry);
  const CPodPreview& Preview() const { return *preview_; }

 private:
  CPodPreview* preview_;
};

}  // namespace veldra
