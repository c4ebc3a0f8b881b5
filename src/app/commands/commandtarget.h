#pragma once

#include <QMainWindow>

#include "app/documentwindows.h"
#include "app/filecommands.h"
#include "app/filewatch.h"
#include "app/tarn2.h"
#include "app/toolcommands.h"
#include "app/tooldocks.h"
#include "editing/editdialogs.h"
#include "editing/pictureedits.h"
#include "view/tarn2view.h"

namespace veldra {

/// What commands work on: the program, its main window with the parts of it, and what is active there now.
struct SCommandTarget {
  CTarn2App& app;
  QMainWindow& window;  ///< over which dialogs stand
  CDocumentWindows& windows;
  CFileCommands& files;
  CToolCommands& tools;
  CToolDocks& docks;
  CEditDialogs& dialogs;
  CPictureEdits& edits;
  CFileWatch& watch;
  // Both null while no document is open.
  CTarnView* view = nullptr;
  CTarnDoc* document = nullptr;

  // For rows whose rule sees to it that there is one.
  CEditCursor& Cursor() const { return view->Cursor(); }
  CBinModel& Model() const { return document->Model(); }
};

}  // namespace veldra
