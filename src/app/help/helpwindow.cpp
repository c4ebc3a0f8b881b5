#include "app/help/helpwindow.h"

#include <QAbstractTextDocumentLayout>
#include <QAction>
#include <QApplication>
#include <QDesktopServices>
#include <QKeyEvent>
#include <QScrollBar>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QToolBar>
#include <QVBoxLayout>

namespace veldra {

namespace {

constexpr int kUrlRole = Qt::UserRole;
constexpr int kWidestPicture = 560;

/// Catches F1 before the window that has the focus gets it.
class CHelpKey : public QObject {
 public:
  explicit CHelpKey(QWidget& owner) : QObject(&owner), owner_(owner) {}

  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    auto* widget = qobject_cast<QWidget*>(watched);
    if (widget == nullptr || key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
    if (event->type() == QEvent::KeyPress) CHelpWindow::Open(PageOf(*widget), owner_);
    event->accept();
    return true;
  }

 private:
  static QUrl PageOf(const QWidget& focus) {
    const QStringList known = WindowsWithHelp();
    for (const QWidget* widget = &focus; widget != nullptr; widget = widget->parentWidget())
      if (known.contains(widget->objectName())) return HelpFor(widget->objectName());
    return HelpFor({});
  }

  QWidget& owner_;
};

/// WITH_PAGE: the title alone would not tell where it stands.
QTreeWidgetItem* ItemFor(const SHelpSection& section, bool with_page) {
  QString text = section.title;
  for (const SHelpPage& page : HelpPages())
    if (with_page && section.level > 1 && section.file == page.file) text += QStringLiteral(" - ") + page.title;
  auto* item = new QTreeWidgetItem({text});
  item->setData(0, kUrlRole, HelpUrl(section.file, section.anchor));
  return item;
}

}  // namespace

// --- The page ------------------------------------------------------------------------------------------------------

CHelpBrowser::CHelpBrowser(QWidget* parent) : QTextBrowser(parent) {
  setObjectName("helpPage");
  setOpenLinks(false);
  document()->setDocumentMargin(12);
  connect(this, &QTextBrowser::anchorClicked, this, &CHelpBrowser::Follow);
}

void CHelpBrowser::Show(const QUrl& url) {
  setSource(url.adjusted(QUrl::RemoveFragment), QTextDocument::MarkdownResource);
  ScrollTo(url.fragment());
}

void CHelpBrowser::Follow(const QUrl& link) {
  const QUrl url = source().resolved(link);
  if (url.scheme() == "qrc") return Show(url);
  QDesktopServices::openUrl(url);
}

void CHelpBrowser::ScrollTo(const QString& anchor) {
  QTextBlock found = document()->begin();
  for (QTextBlock block = found; block.isValid() && !anchor.isEmpty(); block = block.next()) {
    if (block.blockFormat().headingLevel() == 0 || HelpAnchor(block.text()) != anchor) continue;
    found = block;
    break;
  }
  setTextCursor(QTextCursor(found));
  const double top = document()->documentLayout()->blockBoundingRect(found).top();
  verticalScrollBar()->setValue(found == document()->begin() ? 0 : static_cast<int>(top));
}

QVariant CHelpBrowser::loadResource(int type, const QUrl& name) {
  QVariant loaded = QTextBrowser::loadResource(type, name);
  if (type != QTextDocument::ImageResource) return loaded;
  QImage image = loaded.canConvert<QImage>() && !loaded.value<QImage>().isNull()
                     ? loaded.value<QImage>()
                     : QImage::fromData(loaded.toByteArray());
  const double ratio = devicePixelRatioF();
  const int widest = static_cast<int>(kWidestPicture * ratio);
  if (image.width() > widest) image = image.scaledToWidth(widest, Qt::SmoothTransformation);
  image.setDevicePixelRatio(ratio);
  return image;
}

// --- The window ----------------------------------------------------------------------------------------------------

CHelpWindow::CHelpWindow(QWidget* parent)
    : QWidget(parent, Qt::Window),
      sections_(HelpSections()),
      search_(new QLineEdit),
      list_(new QTreeWidget),
      page_(new CHelpBrowser) {
  setObjectName("help");
  setWindowTitle(tr("Veldra Guide"));
  setAttribute(Qt::WA_DeleteOnClose);
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search"));
  search_->setClearButtonEnabled(true);
  list_->setObjectName("contents");
  list_->setHeaderHidden(true);
  auto* bar = new QToolBar;
  QAction* back = bar->addAction(tr("Back"), page_, &QTextBrowser::backward);
  QAction* forward = bar->addAction(tr("Forward"), page_, &QTextBrowser::forward);
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(page_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(page_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  auto* side = new QWidget;
  auto* side_layout = new QVBoxLayout(side);
  side_layout->setContentsMargins(0, 0, 0, 0);
  side_layout->addWidget(search_);
  side_layout->addWidget(list_, 1);
  auto* both = new QSplitter;
  both->addWidget(side);
  both->addWidget(page_);
  both->setStretchFactor(1, 1);
  both->setSizes({220, 680});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(bar);
  layout->addWidget(both, 1);
  resize(940, 680);
  ListContents();
  connect(list_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
    if (item != nullptr) page_->Show(item->data(0, kUrlRole).toUrl());
  });
  connect(search_, &QLineEdit::textChanged, this, [this](const QString& text) {
    text.trimmed().isEmpty() ? ListContents() : List(FindInHelp(sections_, text), false);
  });
  new QShortcut(QKeySequence::Find, search_, [this] { search_->setFocus(); });
  new QShortcut(Qt::Key_Escape, this, [this] { close(); });
}

void CHelpWindow::ListContents() {
  constexpr int kDeepest = 2;
  QList<SHelpSection> listed;
  for (const SHelpSection& section : sections_)
    if (section.level <= kDeepest) listed.append(section);
  List(listed, true);
}

void CHelpWindow::List(const QList<SHelpSection>& sections, bool as_tree) {
  const QSignalBlocker silent(list_);
  list_->clear();
  list_->setRootIsDecorated(as_tree);
  QTreeWidgetItem* page = nullptr;
  for (const SHelpSection& section : sections) {
    QTreeWidgetItem* item = ItemFor(section, !as_tree);
    if (as_tree && section.level > 1 && page != nullptr)
      page->addChild(item);
    else
      list_->addTopLevelItem(page = item);
  }
  list_->setCurrentItem(nullptr);
  if (as_tree && list_->topLevelItemCount() > 0) list_->topLevelItem(0)->setExpanded(true);
}

void CHelpWindow::Show(const QUrl& url) {
  page_->Show(url);
}

void CHelpWindow::InstallKey(QWidget& owner) {
  qApp->installEventFilter(new CHelpKey(owner));
}

void CHelpWindow::Open(const QUrl& url, QWidget& owner) {
  QWidget* modal = QApplication::activeModalWidget();
  QWidget* parent = modal != nullptr ? modal : &owner;
  auto* window = parent->findChild<CHelpWindow*>(QString(), Qt::FindDirectChildrenOnly);
  if (window == nullptr) window = new CHelpWindow(parent);
  window->Show(url);
  window->show();
  window->raise();
  window->activateWindow();
}

CLinkLabel* MakeHelpLink(const char* name, const QString& text, const QUrl& url) {
  auto* link = new CLinkLabel(name, text);
  QObject::connect(link, &CLinkLabel::Followed, link, [link, url] { CHelpWindow::Open(url, *link->window()); });
  return link;
}

}  // namespace veldra
