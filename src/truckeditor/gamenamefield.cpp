#include "truckeditor/gamenamefield.h"

#include <QEvent>
#include <QVBoxLayout>

#include "archive/filetypes.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "ui/faultlabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// The game's files have a byte a letter.
std::string ToGameText(const QString& text) {
  return ToCodePage(text.toStdString()).value_or("");
}

bool IsGameText(const QString& text) {
  return ToCodePage(text.toStdString()).has_value();
}

std::string FolderOf(const CSettings& settings, int type) {
  if (type == kTypeBin) return settings.bin_dir;
  if (type == kTypeRaw) return settings.art_dir;
  return JoinPath(settings.pod_dir, FolderOfType(type));
}

}  // namespace

CGameNameField::CGameNameField(const STruckPageContext& context, const QString& name, int type, TextPlace place,
                               QWidget* parent)
    : QWidget(parent),
      context_(context),
      type_(type),
      place_(std::move(place)),
      edit_(new QLineEdit),
      note_(new QLabel) {
  setObjectName(name + "Field");
  edit_->setObjectName(name);
  note_->setObjectName(name + "Note");
  note_->setMinimumHeight(note_->fontMetrics().height());
  setFocusProxy(edit_);
  setFocusPolicy(edit_->focusPolicy());  // else a label's "&" would not lead to it
  auto* line = new QHBoxLayout;
  line->addWidget(edit_, 1);
  if (type != kTypeOther) {
    browse_ = new QPushButton(tr("Browse..."));
    browse_->setObjectName(name + "Browse");
    browse_->setAutoDefault(false);
    line->addWidget(browse_);
    connect(browse_, &QPushButton::clicked, this, &CGameNameField::Browse);
  }
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  layout->addLayout(line);
  layout->addWidget(note_);
  connect(edit_, &QLineEdit::textEdited, this, &CGameNameField::Take);
  connect(edit_, &QLineEdit::editingFinished, &context.document, &CTruckDocument::EndStep);
  connect(&context.document, &CTruckDocument::Changed, this, &CGameNameField::Refresh);
  Refresh();
}

void CGameNameField::SetProbes(std::function<std::vector<std::string>(const std::string& name)> probes) {
  probes_ = std::move(probes);
  ShowNote();
}

void CGameNameField::SetNameOfFile(std::function<std::string(const std::string& file_name)> name_of_file) {
  name_of_file_ = std::move(name_of_file);
}

void CGameNameField::SetFurtherRule(std::function<QString(const std::string& name)> fault) {
  further_fault_ = std::move(fault);
  ShowNote();
}

void CGameNameField::Refresh() {
  const std::string* const text = context_.document.Look(place_);
  const bool is_there = text != nullptr;
  if (is_there && (!is_there_ || shown_ != *text)) edit_->setText(GameToField(*text));
  if (!is_there) edit_->clear();
  is_there_ = is_there;
  shown_ = is_there ? *text : "";
  edit_->setEnabled(is_there);
  if (browse_ != nullptr) browse_->setEnabled(is_there);
  ShowNote();
}

void CGameNameField::Take() {
  const QString text = edit_->text();
  if (IsGameText(text)) {
    // Blanks around it would not survive a reading; the line itself keeps them while one types.
    shown_ = std::string(Trim(ToGameText(text)));
    context_.document.Change(edit_->objectName(), [&](CTruck& truck) {
      if (std::string* const at = place_(truck)) *at = shown_;
    });
  }
  ShowNote();
}

void CGameNameField::Browse() {
  const std::string extension = ExtensionOfType(type_);
  const std::string folder = FindAnyCase(FolderOf(context_.settings, type_));
  const std::string pattern = "*." + LowerCase(extension);
  const auto path = context_.questions.AskOpenFile({.title = tr("Select a file").toStdString(),
                                                    .filters = {{extension + " files " + pattern, pattern}},
                                                    .directory = folder,
                                                    .name = {},
                                                    .default_extension = {}});
  if (!path) return;
  const std::string file_name = UpperCase(FileNamePart(*path));
  edit_->setText(ToQString(name_of_file_ ? name_of_file_(file_name) : file_name));
  context_.document.EndStep();
  Take();
  context_.document.EndStep();
}

void CGameNameField::ShowNote() {
  if (!is_there_) return Say("", false);
  if (!IsGameText(edit_->text())) return Say(tr("The game has no letters like these."), true);
  const QString fault = further_fault_ ? further_fault_(shown_) : QString();
  if (!fault.isEmpty()) return Say(fault, true);
  if (type_ == kTypeOther || shown_.empty() || context_.files == nullptr) return Say("", false);
  SayWhere(shown_);
}

void CGameNameField::SayWhere(const std::string& name) {
  const std::vector<std::string> wanted = probes_ ? probes_(name) : std::vector<std::string>{name};
  QStringList missing;
  std::string where;
  bool all_stock = true;
  for (const std::string& each : wanted) {
    const STruckFile& file = context_.files->Find(each, type_);
    if (file.place != SDependency::EPlace::kMissing) where = file.source.bytes.path;
    if (file.place != SDependency::EPlace::kMissing || file.is_stock) continue;
    all_stock = false;
    missing.append(NameToQString(TruckFileName(each, type_)));
  }
  if (!missing.isEmpty()) return Say(tr("Not found: %1").arg(missing.join(", ")), true);
  if (where.empty() && all_stock) return Say(tr("Every installation has it"), false);
  Say(tr("In %1").arg(NameToQString(where)), false);
}

/// The note's colours are made from the window's.
void CGameNameField::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowNote();
}

void CGameNameField::Say(const QString& text, bool is_fault) {
  QPalette palette = this->palette();
  QColor paler = palette.color(QPalette::WindowText);
  constexpr int kPaler = 150;
  paler.setAlpha(kPaler);
  const QColor color = is_fault ? FaultColor(palette) : paler;
  palette.setColor(QPalette::WindowText, color);
  note_->setPalette(palette);
  note_->setText(note_->fontMetrics().elidedText(text, Qt::ElideMiddle, std::max(width(), 300)));
  note_->setToolTip(ToolTipText(text));
}

}  // namespace veldra
