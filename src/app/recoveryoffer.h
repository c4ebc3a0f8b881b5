#pragma once

#include <QWidget>

namespace veldra {

class CDocumentWindows;
class CTarn2App;
class CToolCommands;

/// Offers what programs that died have left unsaved, if anything, and opens or deletes what the user wants. False when
/// there was nothing.
bool OfferLeftovers(CTarn2App& app, CDocumentWindows& windows, CToolCommands& tools, QWidget* parent);

}  // namespace veldra
