#pragma once

#include "document/tarn2doc.h"

namespace veldra {

/// What has become of DOCUMENT's file, each piece of news once. A document whose file is gone is modified from then on.
EFileNews TakeFileNews(CTarnDoc& document);

/// NEWS needs no word to the user: the file is read anew where the settings want that and nothing is lost.
bool IsSettledQuietly(const CTarnDoc& document, EFileNews news);

/// Tells the user NEWS, with one question where there is something to decide, and does what follows.
void SettleFileNews(CTarnDoc& document, EFileNews news);

/// The Reload command: asks whether unsaved changes may go, then reads the file anew. False when it was not.
bool AskAndReload(CTarnDoc& document);

}  // namespace veldra
