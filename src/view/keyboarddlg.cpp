#include "view/keyboarddlg.h"

#include <QDialogButtonBox>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include "ui/dialogplace.h"
#include "ui/qstrings.h"
#include "view/commandpage.h"
#include "view/keyboardpage.h"
#include "view/mousegestures.h"
#include "view/rowlist.h"

namespace veldra {

namespace {

constexpr QSize kFirstSize(980, 680);

QTreeWidget* MakeOtherKeys(const std::vector<SKeyRow>& keys) {
  QList<QStringList> rows;
  for (const SKeyRow& row : keys)
    rows.append({ToQString(row.command), ToQString(row.key), ToQString(row.description)});
  QTreeWidget* const list = MakeRowList({"Command", "Keys", "Description"}, rows);
  list->setObjectName("otherKeys");
  return list;
}

QTreeWidget* MakeGestures(const CSettings& settings) {
  QList<QStringList> rows;
  for (const SGestureText& row : GestureTexts(MouseScheme(settings.mouse_scheme)))
    rows.append({ToQString(row.gesture), ToQString(row.effect)});
  QTreeWidget* const list = MakeRowList({"Gesture", "What it does in a 3D view"}, rows);
  list->setObjectName("gestures");
  return list;
}

}  // namespace

CKeyboardDialog::CKeyboardDialog(CSettings& settings, CQuestions& questions, const SKeyTexts& keys, QWidget* parent)
    : QDialog(parent) {
  setObjectName("keyboard");
  setWindowTitle(tr("Keyboard"));
  auto* pages = new QTabWidget;
  pages->setObjectName("pages");
  pages->addTab(new CCommandPage(settings, keys), tr("&Commands"));
  pages->addTab(new CKeyboardPage(questions, keys), tr("&Sheet"));
  pages->addTab(MakeOtherKeys(keys.others), tr("&Other Keys"));
  pages->addTab(MakeGestures(settings), tr("&Mouse"));
  auto* close = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(close, &QDialogButtonBox::rejected, this, &QDialog::reject);
  QPushButton* const change = close->addButton(tr("Change &Keys..."), QDialogButtonBox::ActionRole);
  change->setObjectName("changeKeys");
  change->setAutoDefault(false);
  connect(change, &QPushButton::clicked, this, [this] { done(kChangeKeys); });
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages, 1);
  layout->addWidget(close);
  resize(kFirstSize);
  new CDialogPlace(*this, settings.keyboard_dialog);
}

}  // namespace veldra
