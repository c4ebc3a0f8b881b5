#include "settings/preferencesdlg.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollArea>
#include <QScrollBar>
#include <QShortcut>
#include <algorithm>
#include <array>

#include "ui/colorwell.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr QSize kUsualSize(760, 560);
constexpr int kListWidth = 150;
constexpr int kListSpacing = 2;
constexpr int kRowSpacing = 10;
constexpr int kPageRole = Qt::UserRole;

struct SPageTitle {
  ESettingPage page;
  const char* title;
};
constexpr SPageTitle kPageTitles[] = {
    {ESettingPage::kFolders, "Folders"},   {ESettingPage::kSaving, "Saving"},   {ESettingPage::kView, "3D View"},
    {ESettingPage::kArchives, "Archives"}, {ESettingPage::kWindows, "Windows"},
};

bool Mentions(const SSettingRow& row, const QString& text) {
  bool is_there = ToQString(row.meaning + '\n' + row.key).contains(text, Qt::CaseInsensitive);
  for (const SSettingChoice& choice : row.choices)
    is_there = is_there || ToQString(choice.label).contains(text, Qt::CaseInsensitive);
  return is_there;
}

}  // namespace

CPreferencesDialog::CPreferencesDialog(CSettings& settings, std::vector<SKeyCommand> commands, QWidget* parent)
    : CFieldDialog("preferences", tr("Preferences"), parent),
      settings_(settings),
      search_(new QLineEdit),
      list_(new QListWidget),
      pages_(new QStackedWidget),
      no_match_(new QLabel) {
  MakeHead();
  MakePages();
  AddKeysPage(std::move(commands));
  MakeButtons();
  TakeSettings();
  KeepCustomColors();
  resize(kUsualSize);
  list_->setCurrentRow(0);
  StartWith(list_);
  Refresh();
}

void CPreferencesDialog::MakeHead() {
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search all settings"));
  search_->setClearButtonEnabled(true);
  connect(search_, &QLineEdit::textChanged, this, &CPreferencesDialog::Search);
  auto* find = new QShortcut(QKeySequence::Find, this);
  connect(find, &QShortcut::activated, search_, [this] { search_->setFocus(); });
  Content()->addWidget(search_);
}

void CPreferencesDialog::MakePages() {
  list_->setObjectName("pages");
  list_->setFixedWidth(kListWidth);
  list_->setSpacing(kListSpacing);
  connect(list_, &QListWidget::currentRowChanged, pages_, &QStackedWidget::setCurrentIndex);
  auto* line = new QHBoxLayout;
  line->addWidget(list_);
  line->addWidget(pages_, 1);
  Content()->addLayout(line, 1);
  for (const auto& [page, title] : kPageTitles)
    AddPage(page, tr(title));
  no_match_->setObjectName("noMatch");
  no_match_->setTextFormat(Qt::PlainText);
  no_match_->setAlignment(Qt::AlignCenter);
  no_match_->setWordWrap(true);
  pages_->addWidget(no_match_);
}

void CPreferencesDialog::AddListItem(ESettingPage page, const QString& title) {
  auto* item = new QListWidgetItem(title, list_);
  item->setData(kPageRole, static_cast<int>(page));
}

void CPreferencesDialog::AddPage(ESettingPage page, const QString& title) {
  const int index = list_->count();
  AddListItem(page, title);
  auto* content = new QWidget;
  auto* layout = new QVBoxLayout(content);
  layout->setSpacing(kRowSpacing);
  for (const SSettingRow& row : SettingRows()) {
    if (row.page != page) continue;
    const SSettingControl control = MakeSettingControl(row, [this] { Refresh(); });
    if (control.number != nullptr) Watch(control.number);
    layout->addWidget(control.box);
    controls_.push_back({control, index, {}});
  }
  layout->addStretch();
  auto* scroll = new QScrollArea;
  scroll->setWidgetResizable(true);
  scroll->setWidget(content);
  // Wide enough for the longest text, at any size of the letters: there is nothing to be read by scrolling sideways.
  scroll->setMinimumWidth(content->sizeHint().width() + scroll->verticalScrollBar()->sizeHint().width() +
                          2 * scroll->frameWidth());
  pages_->addWidget(scroll);
}

/// One setting, whose control is the whole page.
void CPreferencesDialog::AddKeysPage(std::vector<SKeyCommand> commands) {
  keys_ = new CKeysPage(std::move(commands));
  connect(keys_, &CKeysPage::Changed, this, [this] { Refresh(); });
  SSettingControl control{.row = FindSettingRow("KEYS"), .box = keys_};
  control.text = [this] { return keys_->Text(); };
  control.set_text = [this](const std::string& text) { keys_->SetText(text); };
  controls_.push_back({control, list_->count(), {}});
  AddListItem(ESettingPage::kKeys, tr("Keys"));
  pages_->insertWidget(list_->count() - 1, keys_);
}

void CPreferencesDialog::MakeButtons() {
  apply_ = Buttons()->addButton(QDialogButtonBox::Apply);
  QPushButton* defaults = Buttons()->addButton(tr("Restore &Defaults"), QDialogButtonBox::ResetRole);
  defaults->setToolTip(tr("Gives every setting of this page its first value."));
  connect(apply_, &QPushButton::clicked, this, &CPreferencesDialog::Apply);
  connect(defaults, &QPushButton::clicked, this, &CPreferencesDialog::RestoreDefaults);
  connect(this, &QDialog::accepted, this, &CPreferencesDialog::Apply);
}

void CPreferencesDialog::TakeSettings() {
  for (SControl& control : controls_) {
    control.set_text(ToSettingText(*control.row, settings_));
    control.taken = control.text();
  }
}

/// The colour dialog's own colours are no choice of this dialog: they are kept whatever becomes of it.
void CPreferencesDialog::KeepCustomColors() {
  std::vector<QColor> colors;
  colors.reserve(settings_.custom_colors.size());
  for (const SColor& color : settings_.custom_colors)
    colors.emplace_back(color.red, color.green, color.blue);
  const auto take = [this](const std::vector<QColor>& chosen) {
    const auto part = [](int value) { return static_cast<uint8_t>(value); };
    std::transform(chosen.begin(), chosen.end(), settings_.custom_colors.begin(), [&](const QColor& color) {
      return SColor{part(color.red()), part(color.green()), part(color.blue())};
    });
  };
  for (CColorWell* well : findChildren<CColorWell*>())
    well->SetCustomColors(colors, take);
}

void CPreferencesDialog::ShowPage(ESettingPage page) {
  for (int i = 0; i < list_->count(); ++i)
    if (list_->item(i)->data(kPageRole).toInt() == static_cast<int>(page)) list_->setCurrentRow(i);
}

void CPreferencesDialog::Search(const QString& text) {
  std::vector<bool> has_match(static_cast<size_t>(list_->count()));
  for (const SControl& control : controls_) {
    const bool is_mentioned = Mentions(*control.row, text.trimmed());
    const bool is_match = is_mentioned || (control.box == keys_ && keys_->Mentions(text.trimmed()));
    if (control.box == keys_) {
      keys_->Search(is_mentioned ? QString() : text.trimmed());
    } else {
      control.box->setVisible(is_match);
    }
    if (is_match) has_match[static_cast<size_t>(control.page)] = true;
  }
  for (int i = 0; i < list_->count(); ++i)
    list_->item(i)->setHidden(!has_match[static_cast<size_t>(i)]);
  const auto current = static_cast<size_t>(list_->currentRow());
  const auto first = std::find(has_match.begin(), has_match.end(), true);
  if (first == has_match.end()) {
    no_match_->setText(tr("No setting mentions \"%1\".").arg(text.trimmed()));
    pages_->setCurrentWidget(no_match_);
    return;
  }
  if (!has_match[current]) list_->setCurrentRow(static_cast<int>(first - has_match.begin()));
  pages_->setCurrentIndex(list_->currentRow());
}

/// Enter after a search is not meant for OK.
void CPreferencesDialog::keyPressEvent(QKeyEvent* event) {
  const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  if (is_enter && search_->hasFocus()) {
    list_->setFocus();
    return;
  }
  CFieldDialog::keyPressEvent(event);
}

void CPreferencesDialog::RestoreDefaults() {
  for (const SControl& control : controls_)
    if (control.page == list_->currentRow()) control.set_text(control.row->default_text);
}

void CPreferencesDialog::Apply() {
  std::vector<std::string> keys;
  for (SControl& control : controls_) {
    if (control.text() == control.taken || !SetFromText(*control.row, control.text(), settings_)) continue;
    control.taken = control.text();
    keys.push_back(control.row->key);
  }
  Refresh();
  if (!keys.empty()) emit SettingsChanged(keys);
}

QString CPreferencesDialog::Fault() {
  const bool is_changed = std::any_of(controls_.begin(), controls_.end(),
                                      [](const SControl& control) { return control.text() != control.taken; });
  if (apply_ != nullptr) apply_->setEnabled(is_changed);
  return {};
}

/// The field may be on another page than the one shown.
QString CPreferencesDialog::FieldFault() {
  if (apply_ != nullptr) apply_->setEnabled(false);
  for (const SControl& control : controls_) {
    if (control.number == nullptr || control.number->IsValid()) continue;
    return tr("%1: %2 %3")
        .arg(list_->item(control.page)->text(), ToQString(control.row->meaning), control.number->Fault());
  }
  return {};
}

}  // namespace veldra
