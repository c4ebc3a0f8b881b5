#include "view/keyboarddlg.h"

#include <QDialogButtonBox>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/dialogplace.h"
#include "view/commandpage.h"
#include "view/keyboardpage.h"

namespace veldra {

namespace {

constexpr QSize kFirstSize(980, 680);

}  // namespace

CKeyboardDialog::CKeyboardDialog(CSettings& settings, CQuestions& questions, QWidget* parent) : QDialog(parent) {
  setObjectName("keyboard");
  setWindowTitle(tr("Keyboard"));
  auto* pages = new QTabWidget;
  pages->setObjectName("pages");
  pages->addTab(new CCommandPage(settings), tr("&Commands"));
  pages->addTab(new CKeyboardPage(questions), tr("&Sheet"));
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages, 1);
  layout->addWidget(close);
  resize(kFirstSize);
  new CDialogPlace(*this, settings.keyboard_dialog);
}

}  // namespace veldra
