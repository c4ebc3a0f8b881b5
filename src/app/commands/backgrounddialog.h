#pragma once

#include <QWidget>

#include "settings/settings.h"
#include "view/tarn2view.h"

namespace veldra {

/// Asks for the background colour of VIEW. The colours of the user's own that the dialog offers are in the settings.
void AskBackground(CTarnView& view, CSettings& settings, QWidget* parent);

}  // namespace veldra
