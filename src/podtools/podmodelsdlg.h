#pragma once

#include <QDialog>
#include <QLineEdit>
#include <QPushButton>
#include <vector>

#include "packing/toolservices.h"
#include "podtools/podlistview.h"
#include "podtools/podpreview.h"

namespace veldra {

/// The models of an archive, of which some are to be opened.
class CPodModelsDlg : public QDialog {
  Q_OBJECT

 public:
  CPodModelsDlg(const SToolServices& services, QWidget* parent);
  ~CPodModelsDlg() override;

  /// False after "Failed to load POD file".
  bool LoadArchive(const std::string& path);
  const CPodDocument& Archive() const { return archive_; }
  /// Positions in the archive.
  std::vector<size_t> Chosen() const { return list_->Selected(); }
  /// The user wants to see the whole archive instead.
  bool WantsArchive() const { return wants_archive_; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void ShowCurrent();

  SToolServices services_;
  CPodDocument archive_;
  QLineEdit* search_;
  CPodListView* list_;
  CPodPreview* preview_;
  QPushButton* open_;
  bool wants_archive_ = false;
};

}  // namespace veldra
