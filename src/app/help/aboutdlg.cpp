#include "app/help/aboutdlg.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTabWidget>
#include <QVBoxLayout>

#include "app/help/helpwindow.h"

namespace veldra {

namespace {

QWidget* TextPage(const char* name, const QString& file) {
  auto* page = new QPlainTextEdit;
  page->setObjectName(name);
  page->setReadOnly(true);
  page->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  QFile text(":/help/" + file);
  if (text.open(QIODevice::ReadOnly)) page->setPlainText(QString::fromUtf8(text.readAll()));
  return page;
}

QWidget* ProgramPage() {
  auto* page = new QWidget;
  auto* layout = new QHBoxLayout(page);
  auto* icon = new QLabel;
  icon->setPixmap(QApplication::windowIcon().pixmap(64, 64));
  auto* text = new QLabel(QObject::tr("<h3>Veldra %1</h3>"
                                      "<p>An editor for the 3D models of Monster Truck Madness 2.</p>"
                                      "<p>Copyright (c) the Veldra authors.<br>Free software under the MIT licence.</p>"
                                      "<p>Runs on Qt %2.</p>")
                              .arg(VELDRA_VERSION, QString::fromUtf8(qVersion())));
  text->setObjectName("program");
  text->setWordWrap(true);
  layout->addWidget(icon, 0, Qt::AlignTop);
  layout->addSpacing(12);
  auto* column = new QVBoxLayout;
  column->addWidget(text);
  column->addWidget(MakeHelpLink("guideLink", QObject::tr("User's guide"), HelpUrl(kGuidePage, {})), 0, Qt::AlignLeft);
  column->addWidget(MakeHelpLink("newsLink", QObject::tr("What is new"), HelpUrl(kNewsPage, {})), 0, Qt::AlignLeft);
  column->addStretch();
  layout->addLayout(column, 1);
  return page;
}

}  // namespace

CAboutDialog::CAboutDialog(QWidget* parent) : QDialog(parent) {
  setObjectName("about");
  setWindowTitle(tr("About Veldra"));
  auto* pages = new QTabWidget;
  pages->addTab(ProgramPage(), tr("&Program"));
  pages->addTab(TextPage("licence", "LICENSE"), tr("&Licence"));
  pages->addTab(TextPage("thirdParties", "third-parties.txt"), tr("&Third Parties"));
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(pages, 1);
  layout->addWidget(buttons);
  resize(660, 420);
}

}  // namespace veldra
