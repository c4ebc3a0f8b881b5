#include "view/keyboardpage.h"

#include <QAbstractTextDocumentLayout>
#include <QBuffer>
#include <QHBoxLayout>
#include <QPageLayout>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTextDocument>
#include <QVBoxLayout>
#include <utility>

#include "platform/files.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr double kMarginMillimetres = 15.0;
// The sheet is one page: how large its letters are depends on how wide those of the system are.
constexpr int kMostPoints = 9;
constexpr int kLeastPoints = 6;

QString Row(int row, const SKeyTexts& keys) {
  const auto at = static_cast<size_t>(row);
  return QString("<tr><td width=\"42%\"><b>%1</b></td><td width=\"58%\">%2</td></tr>")
      .arg(ToQString(keys.listed[at]).toHtmlEscaped(), QString(kKeyboardCommands[at]).toHtmlEscaped());
}

/// Three columns, about equally long, which fill a page in landscape.
QString SheetHtml(const SKeyTexts& keys) {
  constexpr int kSecondColumn = 15;
  constexpr int kThirdColumn = 32;
  QString columns;
  for (int row = 0; row < kKeyboardRows; ++row) {
    if (const char* const category = CategoryFrom(row)) {
      if (row > 0) columns += "</table>";
      if (row == kSecondColumn || row == kThirdColumn) columns += "</td><td width=\"33%\">";
      columns += QString("<h3>%1</h3><table width=\"100%\" cellpadding=\"2\">").arg(category);
    }
    columns += Row(row, keys);
  }
  return QString(
             "<h2>%1 - Keyboard</h2><table width=\"100%\" cellspacing=\"8\"><tr><td width=\"34%\">%2</table></td>"
             "</tr></table>")
      .arg(kCaption, columns);
}

void PrintSheet(QPagedPaintDevice& device, const SKeyTexts& keys) {
  device.setPageOrientation(QPageLayout::Landscape);
  device.setPageMargins({kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres},
                        QPageLayout::Millimeter);
  QTextDocument document;
  document.setDocumentMargin(0);
  document.documentLayout()->setPaintDevice(&device);
  document.setHtml(SheetHtml(keys));
  document.setPageSize(QSizeF(device.width(), device.height()));
  for (int points = kMostPoints; points >= kLeastPoints; --points) {
    QFont font = document.defaultFont();
    font.setPointSize(points);
    document.setDefaultFont(font);
    if (document.pageCount() == 1) break;
  }
  document.print(&device);
}

}  // namespace

CKeyboardPage::CKeyboardPage(CQuestions& questions, SKeyTexts keys, QWidget* parent)
    : QWidget(parent), questions_(questions), keys_(std::move(keys)), sheet_(new QTextBrowser) {
  sheet_->setObjectName("sheet");
  sheet_->setHtml(SheetHtml(keys_));
  auto* print = new QPushButton(tr("&Print..."));
  auto* save = new QPushButton(tr("Save as PD&F..."));
  print->setObjectName("print");
  save->setObjectName("savePdf");
  for (QPushButton* button : {print, save})
    button->setAutoDefault(false);
  connect(print, &QPushButton::clicked, this, &CKeyboardPage::Print);
  connect(save, &QPushButton::clicked, this, &CKeyboardPage::SavePdf);
  auto* buttons = new QHBoxLayout;
  buttons->addStretch();
  buttons->addWidget(print);
  buttons->addWidget(save);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(sheet_, 1);
  layout->addLayout(buttons);
}

void CKeyboardPage::Print() {
  QPrinter printer(QPrinter::HighResolution);
  QPrintDialog dialog(&printer, this);
  dialog.setObjectName("printKeyboard");
  if (dialog.exec() == QDialog::Accepted) PrintSheet(printer, keys_);
}

void CKeyboardPage::SavePdf() {
  SFilePrompt prompt;
  prompt.title = "Save Keyboard Sheet";
  prompt.filters = {{"PDF files *.pdf", "*.pdf"}};
  prompt.name = "Keyboard.pdf";
  prompt.default_extension = "pdf";
  const std::optional<SSavePath> answer = questions_.AskSaveFile(prompt);
  if (!answer) return;
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&pdf);  // its end completes the file
    writer.setTitle(windowTitle());
    PrintSheet(writer, keys_);
  }
  SError error;
  const QByteArray& bytes = pdf.data();
  if (!ReplaceFile(answer->path, std::string_view(bytes.constData(), static_cast<size_t>(bytes.size())), &error))
    questions_.Message({"The sheet could not be saved.", kErrorCaption, EIcon::kError, error.what});
}

}  // namespace veldra
