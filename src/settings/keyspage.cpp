#include "settings/keyspage.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <utility>

#include "ui/qstrings.h"

namespace veldra {

namespace {

constexpr int kCommandRole = Qt::UserRole;
constexpr int kNameColumn = 0;
constexpr int kKeysColumn = 1;
constexpr int kLeastListHeight = 120;
constexpr int kTextLines = 3;

QString Shown(const std::vector<std::string>& keys) {
  return ToQString(ShownKeys(keys));
}

QString Quoted(const SKeyCommand& command) {
  return QStringLiteral("\"%1\" (%2)").arg(ToQString(command.name), ToQString(command.group));
}

}  // namespace

CKeysPage::CKeysPage(std::vector<SKeyCommand> commands, QWidget* parent)
    : QWidget(parent),
      keys_(std::move(commands)),
      search_(new QLineEdit),
      find_(new CKeyField),
      list_(new QTreeWidget),
      new_(new CKeyField),
      fault_(new CFaultLabel),
      note_(new QLabel) {
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins({});
  layout->addLayout(MakeHead());
  MakeList();
  layout->addWidget(list_, 1);
  layout->addLayout(MakeChange());
  // Room for the longest of them from the start: a list that moves under the pointer would be clicked wrongly.
  auto* texts = new QWidget;
  auto* lines = new QVBoxLayout(texts);
  lines->setContentsMargins({});
  texts->setMinimumHeight(kTextLines * fontMetrics().lineSpacing());
  for (QLabel* label : {static_cast<QLabel*>(fault_), note_}) {
    label->setTextFormat(Qt::PlainText);
    label->setWordWrap(true);
    lines->addWidget(label);
  }
  fault_->setObjectName("keyFault");
  note_->setObjectName("keyNote");
  lines->addStretch();
  layout->addWidget(texts);
  ShowKeys();
  Filter();
}

QLayout* CKeysPage::MakeHead() {
  search_->setObjectName("keySearch");
  search_->setPlaceholderText(tr("Search commands"));
  search_->setClearButtonEnabled(true);
  search_->installEventFilter(this);
  connect(search_, &QLineEdit::textChanged, this, &CKeysPage::Filter);
  find_->setObjectName("findKey");
  find_->setToolTip(tr("Shows the commands that have a key. Backspace shows all again."));
  connect(find_, &CKeyField::KeyChanged, this, &CKeysPage::Filter);
  auto* by_key = new QLabel(tr("F&ind by key:"));
  by_key->setBuddy(find_);
  auto* line = new QHBoxLayout;
  line->addWidget(search_, 1);
  line->addWidget(by_key);
  line->addWidget(find_, 1);
  return line;
}

void CKeysPage::MakeList() {
  list_->setObjectName("keyList");
  list_->setHeaderLabels({tr("Command"), tr("Keys")});
  list_->setUniformRowHeights(true);
  list_->setMinimumHeight(kLeastListHeight);
  list_->setAllColumnsShowFocus(true);
  list_->installEventFilter(this);
  std::map<std::string, QTreeWidgetItem*> groups;
  for (size_t i = 0; i < keys_.Commands().size(); ++i) {
    const SKeyCommand& command = keys_.Commands()[i];
    if (command.id.empty()) continue;
    QTreeWidgetItem*& group = groups[command.group];
    if (group == nullptr) group = new QTreeWidgetItem(list_, {ToQString(command.group)});
    auto* item = new QTreeWidgetItem(group, {ToQString(command.name)});
    item->setData(kNameColumn, kCommandRole, static_cast<int>(i));
  }
  list_->expandAll();
  list_->header()->setStretchLastSection(true);
  list_->resizeColumnToContents(kNameColumn);
  list_->collapseAll();
  connect(list_, &QTreeWidget::currentItemChanged, this, [this] { new_->SetKey(""); });
  connect(list_, &QTreeWidget::itemDoubleClicked, this, &CKeysPage::Begin);
}

QLayout* CKeysPage::MakeChange() {
  new_->setObjectName("newKey");
  connect(new_, &CKeyField::KeyChanged, this, &CKeysPage::ShowState);
  // On to what is done with it, unless nothing can be.
  connect(new_, &CKeyField::Pressed, this, [this] {
    if (use_->isEnabled()) use_->setFocus();
  });
  auto* label = new QLabel(tr("New &key:"));
  label->setBuddy(new_);
  use_ = MakeButton(tr("&Use"), "useKey", &CKeysPage::Use);
  add_ = MakeButton(tr("Use &Both"), "addKey", &CKeysPage::Add);
  clear_ = MakeButton(tr("&No Key"), "clearKeys", &CKeysPage::Clear);
  reset_ = MakeButton(tr("Us&ual"), "resetKeys", &CKeysPage::Reset);
  use_->setToolTip(tr("The new key takes the place of the command's keys."));
  add_->setToolTip(tr("The new key and those that the command has."));
  clear_->setToolTip(tr("Takes the command's keys away."));
  reset_->setToolTip(tr("Gives the command the keys back that it has at first."));
  auto* line = new QHBoxLayout;
  line->addWidget(label);
  line->addWidget(new_, 1);
  for (QPushButton* button : {use_, add_, clear_, reset_})
    line->addWidget(button);
  return line;
}

QPushButton* CKeysPage::MakeButton(const QString& text, const char* name, void (CKeysPage::*action)()) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, action);
  return button;
}

void CKeysPage::SetText(const std::string& text) {
  if (text == keys_.Text()) return;
  keys_.Read(text);
  ShowKeys();
  new_->SetKey("");
  emit Changed();
}

// --- The list --------------------------------------------------------------------------------------------------------

bool CKeysPage::IsFound(size_t command) const {
  const SKeyCommand& row = keys_.Commands()[command];
  const QString text = search_->text().trimmed();
  const auto has_key = [&](const std::string& key) { return ArePressedAlike(key, find_->Key()); };
  const QString names = ToQString(row.group + '\n' + row.name) + '\n' + Shown(keys_.Keys(command));
  return names.contains(text, Qt::CaseInsensitive) &&
         (find_->Key().empty() || std::ranges::any_of(keys_.Keys(command), has_key));
}

bool CKeysPage::Mentions(const QString& text) const {
  return std::ranges::any_of(keys_.Commands(), [&](const SKeyCommand& row) {
    return !row.id.empty() && ToQString(row.group + '\n' + row.name).contains(text, Qt::CaseInsensitive);
  });
}

void CKeysPage::Search(const QString& text) {
  search_->setText(text);
}

void CKeysPage::Filter() {
  const bool is_filtered = !search_->text().trimmed().isEmpty() || !find_->Key().empty();
  QTreeWidgetItem* first = nullptr;
  for (int i = 0; i < list_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const group = list_->topLevelItem(i);
    bool has_found = false;
    for (int j = 0; j < group->childCount(); ++j) {
      QTreeWidgetItem* const item = group->child(j);
      const bool is_found = IsFound(static_cast<size_t>(item->data(kNameColumn, kCommandRole).toInt()));
      item->setHidden(!is_found);
      has_found = has_found || is_found;
      if (is_found && first == nullptr) first = item;
    }
    group->setHidden(!has_found);
    group->setExpanded(is_filtered);
  }
  if (is_filtered) list_->setCurrentItem(first);
  if (QTreeWidgetItem* const current = list_->currentItem()) list_->scrollToItem(current);
  ShowState();
}

/// What is not as it is at first stands out.
void CKeysPage::ShowKeys() {
  for (QTreeWidgetItemIterator item(list_, QTreeWidgetItemIterator::NoChildren); *item != nullptr; ++item) {
    const auto command = static_cast<size_t>((*item)->data(kNameColumn, kCommandRole).toInt());
    QFont font = list_->font();
    font.setBold(keys_.IsChanged(command));
    (*item)->setText(kKeysColumn, Shown(keys_.Keys(command)));
    for (const int column : {kNameColumn, kKeysColumn})
      (*item)->setFont(column, font);
  }
}

/// Enter means the command there, and not the dialog's OK.
bool CKeysPage::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return QWidget::eventFilter(watched, event);
  const int key = static_cast<QKeyEvent*>(event)->key();
  const bool is_enter = key == Qt::Key_Return || key == Qt::Key_Enter;
  if (watched == search_ && (is_enter || key == Qt::Key_Down)) {
    list_->setFocus();
    return true;
  }
  if (watched != list_ || !is_enter) return QWidget::eventFilter(watched, event);
  Begin();
  return true;
}

void CKeysPage::Begin() {
  QTreeWidgetItem* const item = list_->currentItem();
  if (!Current()) {
    if (item != nullptr) item->setExpanded(!item->isExpanded());
    return;
  }
  if (!new_->isEnabled()) return;
  new_->setFocus();
  new_->Wait();
}

// --- The chosen command ----------------------------------------------------------------------------------------------

std::optional<size_t> CKeysPage::Current() const {
  const QTreeWidgetItem* const item = list_->currentItem();
  if (item == nullptr || item->parent() == nullptr) return std::nullopt;
  return static_cast<size_t>(item->data(kNameColumn, kCommandRole).toInt());
}

void CKeysPage::Tell(const QString& text) {
  note_->setText(text);
  note_->setVisible(!text.isEmpty());
}

void CKeysPage::Warn(const QString& text) {
  fault_->setText(text);
  fault_->setVisible(!text.isEmpty());
}

void CKeysPage::ShowState() {
  Warn({});
  Tell({});
  use_->setText(tr("&Use"));
  const auto command = Current();
  const bool can_change = command && !keys_.Commands()[*command].is_fixed;
  new_->setEnabled(can_change);
  use_->setEnabled(false);
  add_->setEnabled(false);
  clear_->setEnabled(can_change && !keys_.Keys(*command).empty());
  reset_->setEnabled(can_change && keys_.IsChanged(*command));
  if (!command) {
    Tell(tr("Choose a command to give it another key."));
    if (!keys_.Faults().empty()) Warn(tr("KEYS in the settings file: %1.").arg(ToQString(keys_.Faults().front())));
  } else if (new_->Key().empty()) {
    ShowOwn(*command);
  } else {
    ShowPending(*command);
  }
}

void CKeysPage::ShowOwn(size_t command) {
  const SKeyCommand& row = keys_.Commands()[command];
  if (row.is_fixed) return Tell(ToQString(KeyFault(row.defaults.front())) + ' ' + tr("It cannot be changed."));
  if (!keys_.IsChanged(command)) return Tell(tr("Press Enter, then the new key."));
  Tell(row.defaults.empty() ? tr("At first this command has no key.")
                            : tr("At first this command has %1.").arg(Shown(row.defaults)));
}

void CKeysPage::ShowPending(size_t command) {
  const std::string& key = new_->Key();
  const auto& own = keys_.Keys(command);
  const QString shown = ToQString(ShownKey(key));
  const auto other = keys_.OtherWith(command, key);
  if (const std::string why = KeyFault(key); !why.empty()) return Warn(ToQString(why));
  if (std::ranges::find(own, key) != own.end()) {
    Tell(tr("The command has %1 already.").arg(shown));
    use_->setEnabled(own.size() > 1);
    return;
  }
  if (other && keys_.Commands()[*other].is_fixed)
    return Warn(tr("%1 is the key of %2 and stays so.").arg(shown, ToQString(keys_.Commands()[*other].name)));
  use_->setEnabled(true);
  add_->setEnabled(!own.empty() && own.size() < kMostKeys);
  if (other) {
    Warn(tr("%1 is the key of %2, which would lose it.").arg(shown, Quoted(keys_.Commands()[*other])));
    use_->setText(tr("&Take Over"));
  }
  const QString free = other ? QString() : tr("%1 is free. ").arg(shown);
  Tell(free + ToQString(KeyNote(key)));
}

/// Tells also who has lost one.
void CKeysPage::Give(std::vector<std::string> keys) {
  const auto command = Current();
  if (!command) return;
  QStringList losers;
  for (const std::string& key : keys)
    if (const auto other = keys_.OtherWith(*command, key)) losers.append(Quoted(keys_.Commands()[*other]));
  losers.removeDuplicates();
  keys_.Give(*command, std::move(keys));
  ShowKeys();
  new_->SetKey("");
  const QString now = Shown(keys_.Keys(*command));
  const QString name = ToQString(keys_.Commands()[*command].name);
  QString text = now.isEmpty() ? tr("\"%1\" has no key now.").arg(name) : tr("\"%1\" has %2 now.").arg(name, now);
  if (!losers.isEmpty()) text += ' ' + tr("It was taken from %1.").arg(losers.join(", "));
  Tell(text);
  list_->setFocus();
  emit Changed();
}

void CKeysPage::Use() {
  Give({new_->Key()});
}

void CKeysPage::Add() {
  const auto command = Current();
  if (!command) return;
  std::vector<std::string> keys = keys_.Keys(*command);
  std::erase_if(keys, [this](const std::string& key) { return ArePressedAlike(key, new_->Key()); });
  keys.push_back(new_->Key());
  Give(std::move(keys));
}

void CKeysPage::Clear() {
  Give({});
}

/// What another command has got meanwhile is left to it, until the user takes it over.
void CKeysPage::Reset() {
  const auto command = Current();
  if (!command) return;
  std::vector<std::string> keys = keys_.Commands()[*command].defaults;
  const auto taken =
      std::ranges::find_if(keys, [&](const std::string& key) { return keys_.OtherWith(*command, key).has_value(); });
  const std::string wanted = taken != keys.end() ? *taken : "";
  std::erase_if(keys, [&](const std::string& key) { return keys_.OtherWith(*command, key).has_value(); });
  if (wanted.empty() || !keys.empty()) Give(std::move(keys));
  if (wanted.empty()) return;
  new_->SetKey(wanted);
  use_->setFocus();
}

}  // namespace veldra
