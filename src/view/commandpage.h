#pragma once

#include <QWidget>

#include "settings/settings.h"
#include "view/keyboardtable.h"

namespace veldra {

/// The list of all keyboard commands. Choosing a row does nothing.
class CCommandPage : public QWidget {
  Q_OBJECT

 public:
  /// The columns' widths are kept in SETTINGS, which must outlive the page.
  CCommandPage(CSettings& settings, const SKeyTexts& keys, QWidget* parent = nullptr);
};

}  // namespace veldra
