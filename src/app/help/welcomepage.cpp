#include "app/help/welcomepage.h"

#include <QApplication>
#include <QCommandLinkButton>
#include <QGridLayout>
#include <QVBoxLayout>

#include "platform/files.h"
#include "platform/paths.h"
#include "ui/commandicons.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr QSize kPictureSize(160, 120);
constexpr int kWidest = 760;

struct SBeginning {
  const char* command;
  const char* text;
  const char* description;
  const char* icon;
};

constexpr SBeginning kBeginnings[] = {
    {"open", QT_TRANSLATE_NOOP("Welcome", "Open a Model"), QT_TRANSLATE_NOOP("Welcome", "Or drop BIN files here"),
     "open"},
    {"new", QT_TRANSLATE_NOOP("Welcome", "New Model"), QT_TRANSLATE_NOOP("Welcome", "To fill with shapes and meshes"),
     "new"},
    {"sampleTruck", QT_TRANSLATE_NOOP("Welcome", "Sample Truck"),
     QT_TRANSLATE_NOOP("Welcome", "To play with; the game is not needed"), "textured"},
    {"guide", QT_TRANSLATE_NOOP("Welcome", "Guide"),
     QT_TRANSLATE_NOOP("Welcome", "How things are done; F1 in any window"), "only3D"},
};

/// A picture's place where there is none.
QPixmap NoPicture(const QWidget& widget) {
  const double ratio = widget.devicePixelRatioF();
  QPixmap empty(kPictureSize * ratio);
  empty.setDevicePixelRatio(ratio);
  empty.fill(widget.palette().color(QPalette::AlternateBase));
  return empty;
}

}  // namespace

CWelcomePage::CWelcomePage(QWidget* parent)
    : QWidget(parent), recent_label_(new QLabel(tr("<h3>Recent files</h3>"))), recent_(new QListWidget) {
  setObjectName("welcome");
  setAutoFillBackground(true);
  auto* grid = new QGridLayout;
  int place = 0;
  for (const SBeginning& beginning : kBeginnings) {
    auto* button = new QCommandLinkButton(tr(beginning.text), tr(beginning.description));
    button->setObjectName(beginning.command);
    button->setIcon(CommandIcon(beginning.icon));
    connect(button, &QCommandLinkButton::clicked, this, [this, &beginning] { emit CommandWanted(beginning.command); });
    grid->addWidget(button, place / 2, place % 2);
    ++place;
  }
  recent_->setObjectName("recent");
  recent_->setViewMode(QListView::IconMode);
  recent_->setIconSize(kPictureSize);
  recent_->setGridSize(kPictureSize + QSize(20, 2 * fontMetrics().height() + 12));
  recent_->setResizeMode(QListView::Adjust);
  recent_->setMovement(QListView::Static);
  recent_->setWordWrap(true);
  recent_->setFrameShape(QFrame::NoFrame);
  connect(recent_, &QListWidget::itemActivated, this,
          [this](const QListWidgetItem* item) { emit FileWanted(item->data(Qt::UserRole).toString().toStdString()); });
  connect(recent_, &QListWidget::itemClicked, recent_, &QListWidget::itemActivated);
  auto* content = new QWidget;
  content->setMaximumWidth(kWidest);
  auto* column = new QVBoxLayout(content);
  column->addWidget(new QLabel(tr("<h1>Veldra</h1>")));
  column->addLayout(grid);
  column->addSpacing(12);
  column->addWidget(recent_label_);
  column->addWidget(recent_, 1);
  column->addStretch();
  auto* layout = new QHBoxLayout(this);
  layout->addStretch(1);
  layout->addWidget(content, 100);
  layout->addStretch(1);
}

void CWelcomePage::SetRecent(const std::vector<std::pair<std::string, std::string>>& files) {
  recent_->clear();
  for (const auto& [path, picture] : files) {
    QPixmap pixmap(ToQString(picture));
    auto* item = new QListWidgetItem(
        pixmap.isNull() ? NoPicture(*this) : pixmap,
        NameToQString(FileNamePart(path)) + "\n" + NameToQString(FileNamePart(DirectoryPart(path))));
    item->setData(Qt::UserRole, ToQString(path));
    item->setToolTip(ToolTipText(NameToQString(path)));
    recent_->addItem(item);
  }
  recent_label_->setVisible(!files.empty());
  recent_->setVisible(!files.empty());
}

void CWelcomePage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Of the system's colours, also after these have changed.
  setBackgroundRole(QPalette::Base);
}

}  // namespace veldra
