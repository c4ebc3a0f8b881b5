#include "view/commandpage.h"

#include <QHeaderView>
#include <QVBoxLayout>

#include "ui/dialogplace.h"
#include "view/keyboardtable.h"

namespace veldra {

CCommandPage::CCommandPage(CSettings& settings, QWidget* parent) : QWidget(parent), list_(new QTreeWidget) {
  list_->setObjectName("commands");
  list_->setHeaderLabels({"Category", "Command", "Keys", "Description"});
  list_->setRootIsDecorated(false);
  list_->setUniformRowHeights(true);
  list_->setAlternatingRowColors(true);
  list_->setSelectionMode(QAbstractItemView::NoSelection);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  Fill();
  KeepColumnWidths(*list_->header(), {&settings.keyboard_category_width, &settings.keyboard_command_width,
                                      &settings.keyboard_key_width, &settings.keyboard_description_width});
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
}

void CCommandPage::Fill() {
  const char* category = "";
  for (int row = 0; row < kKeyboardRows; ++row) {
    if (const char* const begun = CategoryFrom(row)) category = begun;
    const auto at = static_cast<size_t>(row);
    new QTreeWidgetItem(list_, {category, kKeyboardCommands[at], kKeyboardKeys[at], kKeyboardDescriptions[at]});
  }
}

}  // namespace veldra
