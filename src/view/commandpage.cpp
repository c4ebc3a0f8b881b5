#include "view/commandpage.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include "ui/dialogplace.h"
#include "ui/qstrings.h"
#include "view/rowlist.h"

namespace veldra {

namespace {

QList<QStringList> Rows(const SKeyTexts& keys) {
  QList<QStringList> rows;
  const char* category = "";
  for (int row = 0; row < kKeyboardRows; ++row) {
    if (const char* const begun = CategoryFrom(row)) category = begun;
    const auto at = static_cast<size_t>(row);
    rows.append({category, kKeyboardCommands[at], ToQString(keys.listed[at]), kKeyboardDescriptions[at]});
  }
  return rows;
}

}  // namespace

CCommandPage::CCommandPage(CSettings& settings, const SKeyTexts& keys, QWidget* parent) : QWidget(parent) {
  QTreeWidget* const list = MakeRowList({"Category", "Command", "Keys", "Description"}, Rows(keys));
  list->setObjectName("commands");
  KeepColumnWidths(*list->header(), {&settings.keyboard_category_width, &settings.keyboard_command_width,
                                     &settings.keyboard_key_width, &settings.keyboard_description_width});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list);
}

}  // namespace veldra
