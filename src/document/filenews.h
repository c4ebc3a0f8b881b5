#pragma once

#include "document/filedocument.h"

namespace veldra {

/// What has become of DOCUMENT's file, each piece of news once. A document whose file is gone is modified from then on.
EFileNews TakeFileNews(CFileDocument& document);

/// NEWS needs no word to the user: the file is read anew where the settings want that and nothing is lost.
bool IsSettledQuietly(const CFileDocument& document, EFileNews news);

/// Tells the user NEWS, with one question where there is something to decide, and does what follows.
void SettleFileNews(CFileDocument& document, EFileNews news);

/// Before DOCUMENT's own file is written: false when what another program has made of it is not to be lost.
bool MayOverwrite(const CFileDocument& document);

/// The Reload command: asks whether unsaved changes may go, then reads the file anew. False when it was not.
bool AskAndReload(CFileDocument& document);

}  // namespace veldra
