#pragma once

namespace veldra::disk {

/// A CEndHold exists. Safe in a signal handler.
bool IsEndHeld();
/// Ends the process when a signal came to do so while IsEndHeld was true.
void EndIfAsked();

}  // namespace veldra::disk
