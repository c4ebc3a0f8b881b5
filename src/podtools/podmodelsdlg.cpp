#include "podtools/podmodelsdlg.h"

#include <QDialogButtonBox>
#include <QSplitter>
#include <QVBoxLayout>

#include "platform/paths.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr QSize kUsualModelsSize(760, 460);

}  // namespace

CPodModelsDlg::CPodModelsDlg(const SToolServices& services, QWidget* parent)
    : QDialog(parent),
      services_(services),
      search_(new QLineEdit),
      list_(new CPodListView(services_.settings)),
      preview_(new CPodPreview(services_.settings)) {
  setObjectName("podModels");
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search models"));
  search_->setClearButtonEnabled(true);
  list_->Filter().ShowOnly("BIN");
  auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Cancel);
  open_ = buttons->addButton(tr("&Open"), QDialogButtonBox::AcceptRole);
  open_->setObjectName("openModels");
  auto* const whole = buttons->addButton(tr("&Show the Archive"), QDialogButtonBox::ActionRole);
  whole->setObjectName("showArchive");
  auto* const middle = new QSplitter;
  middle->addWidget(list_);
  middle->addWidget(preview_);
  middle->setChildrenCollapsible(false);
  auto* const layout = new QVBoxLayout(this);
  layout->addWidget(search_);
  layout->addWidget(middle, 1);
  layout->addWidget(buttons);
  connect(search_, &QLineEdit::textChanged, &list_->Filter(), &CPodListFilter::Search);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this, &CPodModelsDlg::ShowCurrent);
  connect(list_, &QTreeView::activated, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  connect(whole, &QPushButton::clicked, this, [this] {
    wants_archive_ = true;
    accept();
  });
  resize(kUsualModelsSize);
}

CPodModelsDlg::~CPodModelsDlg() {
  list_->selectionModel()->disconnect(this);
  list_->Entries().SetArchive(nullptr);
}

bool CPodModelsDlg::LoadArchive(const std::string& path) {
  SError error;
  if (!archive_.Load(AbsolutePath(path), &error)) return services_.questions.Fail(kFailedToLoadPod, error.what);
  setWindowTitle(tr("Models in %1").arg(NameToQString(FileNamePart(path))));
  list_->Show(&archive_);
  list_->setCurrentIndex(list_->Filter().index(0, 0));
  ShowCurrent();
  return true;
}

/// A model is fitted into the preview as large as that is when it is shown.
void CPodModelsDlg::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  QMetaObject::invokeMethod(this, &CPodModelsDlg::ShowCurrent, Qt::QueuedConnection);
}

void CPodModelsDlg::ShowCurrent() {
  const auto chosen = list_->Selected();
  open_->setEnabled(!chosen.empty());
  if (!chosen.empty()) return preview_->ShowEntry(archive_, chosen.front());
  preview_->ShowNothing(list_->Filter().rowCount() == 0 ? tr("There is no such model in the archive.")
                                                        : tr("Select a model to see it."));
}

}  // namespace veldra
