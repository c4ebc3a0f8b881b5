#pragma once

#include <QWidget>

namespace veldra {

class CDocumentWindows;
class CTarn2App;

/// Offers what programs that died have left unsaved, if anything, and opens or deletes what the user wants. False when
/// there was nothing.
bool OfferLeftovers(CTarn2App& app, CDocumentWindows& windows, QWidget* parent);

}  // namespace veldra
