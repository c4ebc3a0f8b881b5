#pragma once

#include <memory>
#include <string>
#include <vector>

#include "app/recentfiles.h"
#include "app/startup.h"
#include "document/tarn2doc.h"

namespace veldra {

/// The application: its settings, the one texture store and the list of open documents. Knows no windows; a document
/// belongs to the views that show it and is gone with the last of them.
class CTarn2App {
 public:
  CTarn2App(SStartup startup, CQuestions& questions);
  CTarn2App(const CTarn2App&) = delete;
  CTarn2App& operator=(const CTarn2App&) = delete;

  CSettings& Settings() { return startup_.settings; }
  CQuestions& Questions() { return questions_; }
  CTextureStore& Textures() { return textures_; }
  CRecentFiles& RecentFiles() { return recent_files_; }
  const std::string& InstallationDirectory() const { return startup_.installation_directory; }

  /// The open document of PATH, or null.
  std::shared_ptr<CTarnDoc> FindDocument(const std::string& path);
  /// Loads PATH into a new document. Null when that fails; the user has been told then.
  std::shared_ptr<CTarnDoc> OpenDocument(const std::string& path);
  /// Asks what to do with unsaved changes, and does it. False: the document stays open.
  bool MayClose(CTarnDoc& document);
  /// Where a dialog for model files opens.
  std::string ModelDirectory() const;

  /// Writes every setting back to the file it came from. The user is told when that fails.
  bool SaveSettings();

 private:
  SDocumentServices Services();
  bool IsOpenReadOnlyElsewhere(const CTarnDoc& asking, const std::string& path);
  std::vector<std::shared_ptr<CTarnDoc>> OpenDocuments();

  SStartup startup_;
  CQuestions& questions_;
  CTextureStore textures_;
  CRecentFiles recent_files_;
  std::vector<std::weak_ptr<CTarnDoc>> documents_;
};

}  // namespace veldra
