#pragma once

namespace veldra {

class CMainFrame;

/// Offers what programs that died have left unsaved, if anything, and opens or deletes what the user wants. False when
/// there was nothing.
bool OfferLeftovers(CMainFrame& frame);

}  // namespace veldra
