#pragma once

#include <functional>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "app/recentfiles.h"
#include "app/recentpictures.h"
#include "app/startup.h"
#include "document/earlierstates.h"
#include "document/recoverykeeper.h"
#include "document/tarn2doc.h"

namespace veldra {

/// The application: its settings, the one texture store and the list of open documents. Knows no windows; a document
/// belongs to the views that show it and is gone with the last of them.
class CTarn2App {
 public:
  using PictureMaker = std::function<SImage(const CTarnDoc& document)>;

  /// CLOCK is that of the recovery copies.
  CTarn2App(SStartup startup, CQuestions& questions,
            CRecoveryKeeper::ClockReader clock = CRecoverySchedule::Clock::now);
  CTarn2App(const CTarn2App&) = delete;
  CTarn2App& operator=(const CTarn2App&) = delete;

  CSettings& Settings() { return startup_.settings; }
  CQuestions& Questions() { return questions_; }
  CTextureStore& Textures() { return textures_; }
  CRecentFiles& RecentFiles() { return recent_files_; }
  const CRecentPictures& RecentPictures() const { return recent_pictures_; }
  CEarlierStates& EarlierStates() { return earlier_states_; }
  CRecoveryKeeper& Recovery() { return recovery_; }
  const std::string& InstallationDirectory() const { return startup_.installation_directory; }
  const std::string& SettingsPath() const { return startup_.settings_path; }
  /// What a first start offers to begin with; "" for nothing.
  const std::string& FirstFile() const { return startup_.first_file; }
  /// Of textures without a colour table of their own.
  const ColorTable& DefaultColors() const { return startup_.default_colors; }

  /// Who shows what has been done, where one can look without being stopped.
  void SetSay(std::function<void(const std::string& text)> say) { say_ = std::move(say); }
  void Say(const std::string& text) const {
    if (say_) say_(text);
  }

  /// Who makes the small pictures of the earlier states.
  void SetPictureMaker(PictureMaker make_picture) { make_picture_ = std::move(make_picture); }

  /// Who saves into archives, which may be open in a window.
  void SetArchiveSaver(std::function<bool(const SArchivePlace& place, std::span<const uint8_t> bytes)> save) {
    save_into_archive_ = std::move(save);
  }

  /// The open document of PATH, or null.
  std::shared_ptr<CTarnDoc> FindDocument(const std::string& path);
  /// An empty one without a path.
  std::shared_ptr<CTarnDoc> NewDocument();
  /// Loads PATH into a new document. Null when that fails; the user has been told then.
  std::shared_ptr<CTarnDoc> OpenDocument(const std::string& path, bool read_only = false);
  /// The model of PLACE. Null when it cannot be opened; the user has been told then.
  std::shared_ptr<CTarnDoc> OpenFromArchive(const SArchivePlace& place);
  /// The open document of PLACE, or null.
  std::shared_ptr<CTarnDoc> FindDocument(const SArchivePlace& place);
  /// The earlier state ID of DOCUMENT as a document without a path. Null when that fails; the user has been told then.
  std::shared_ptr<CTarnDoc> OpenEarlierState(const CTarnDoc& document, uint64_t id);
  /// What an earlier program left unsaved as a document. Null when that fails; the user has been told then.
  std::shared_ptr<CTarnDoc> OpenLeftover(const SLeftover& leftover);
  /// Asks what to do with unsaved changes, and does it. False: the document stays open.
  bool MayClose(CTarnDoc& document);
  /// The user has consented to losing what is unsaved in DOCUMENT. With STAYS_OPEN it may still be worked on.
  void LetGo(CFileDocument& document, bool stays_open = false);
  /// Preferences were changed under these keys. A default palette that cannot be loaded is said, and the old one stays.
  void SettingsChanged(const std::vector<std::string>& keys);
  /// Where a dialog for model files opens.
  std::string ModelDirectory() const;

  /// Whether the program that COMMAND, a setting, names may be started. Settings that lie in the current folder may
  /// have come with somebody's files: then the user is asked, once, unless the command is one that he has just entered.
  bool MayStart(std::string CSettings::*command);
  /// Writes every setting back to the file it came from. The user is told when that fails.
  bool SaveSettings();

 private:
  SDocumentServices Services();
  std::shared_ptr<CTarnDoc> MakeDocument();
  /// Keeps DOCUMENT, which was filled, among the open ones.
  std::shared_ptr<CTarnDoc> Take(std::shared_ptr<CTarnDoc> document);
  bool IsOpenReadOnlyElsewhere(const CTarnDoc& asking, const std::string& path);
  std::vector<std::shared_ptr<CTarnDoc>> OpenDocuments();

  SStartup startup_;
  std::string palette_;  ///< where the default colours came from
  CQuestions& questions_;
  CTextureStore textures_;
  CRecentFiles recent_files_;
  CRecentPictures recent_pictures_;
  CEarlierStates earlier_states_;
  CRecoveryFolder recovery_folder_;
  CRecoveryKeeper recovery_;
  PictureMaker make_picture_;
  std::function<void(const std::string& text)> say_;
  std::function<bool(const SArchivePlace& place, std::span<const uint8_t> bytes)> save_into_archive_;
  std::vector<std::weak_ptr<CTarnDoc>> documents_;
  std::set<std::string> granted_commands_;
};

}  // namespace veldra
