#pragma once

#include <QObject>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "document/archiveplace.h"
#include "document/filedocument.h"
#include "truck/truck.h"

namespace veldra {

/// The truck that is being edited, with its file. The pages change it through Change and show it again when it says
/// Changed.
class CTruckDocument : public QObject, public CFileDocument {
  Q_OBJECT

 public:
  /// STATES (may be null) is where earlier states are kept.
  CTruckDocument(CQuestions& questions, const CSettings& settings, CEarlierStates* states);
  ~CTruckDocument() override;

  const CTruck& Truck() const { return truck_; }
  /// What PLACE, a function that finds a part of a truck to change it, finds in this one, for looking at it only.
  template <typename Place>
  const auto* Look(const Place& place) {
    return place(truck_);
  }
  /// For the list of earlier states. May be empty.
  void SetPictureMaker(std::function<SImage()> make_picture) { make_picture_ = std::move(make_picture); }
  /// Asks before a file in which nothing is known is written over, or packed: false when the user does not want that.
  bool MayUseUnknownFile() const;

  /// TRUCK is of no file yet.
  void New(const CTruck& truck = {});
  /// Longer files are no trucks: every step of the editor would carry their texts along.
  static constexpr uint64_t kLargestFile = uint64_t{16} << 20;
  /// False when it cannot be read, which the user has been told: the present truck stays.
  bool Load(const std::string& path);
  /// The same for an entry of an archive.
  bool LoadFromArchive(const SArchivePlace& place);
  /// Where it was opened from and has not been saved elsewhere since; null for any other truck.
  const SArchivePlace* ArchivePlace() const { return place_.archive.empty() ? nullptr : &place_; }
  /// The entry holds the truck as it is now.
  void TakeSavedEntry();
  /// False when it cannot be written, which the user has been told, or is not to be.
  bool Save(const std::string& path);
  bool Reload() override;
  bool OpenCopy(const SDocumentCopy& copy, const SCopyFile& file) override;
  /// The truck becomes what it was in STATE, in one step. False when the user has been told what is wrong with it.
  bool GoBackTo(const SCopyFile& state);
  void OnFileGone() override;
  /// The user has let go of what is not saved.
  void LetGo();

  /// CHANGE is one step back, together with those before it of the same KEY (unless it is empty).
  void Change(const QString& key, const std::function<void(CTruck&)>& change);
  /// A step of its own, before which the truck is kept among its earlier states.
  void ChangeMuch(const QString& command, const std::function<void(CTruck&)>& change);
  /// The next change is a step of its own.
  void EndStep() { last_key_.clear(); }
  bool CanUndo() const { return !undo_.empty(); }
  bool CanRedo() const { return !redo_.empty(); }
  void Undo();
  void Redo();

 signals:
  /// The truck, or whether it differs from its file.
  void Changed();
  /// It is another file's now: a new one, one opened, or saved under another name.
  void FileChanged();

 private:
  std::vector<uint8_t> WriteCopyFile(const SCopyLabel& label) const override;
  SImage SmallPicture() const override { return make_picture_ ? make_picture_() : SImage(); }
  void OnStateChanged() override;

  void Begin(const CTruck& truck);
  /// KNOWN gets the number of lines that are a truck's.
  bool ReadFile(CTruck& truck, const std::string& path, int& known);
  bool ReadState(CTruck& truck, const SCopyFile& file, const std::string& title);
  void TellTruckChanged();
  void Swap(std::vector<CTruck>& from, std::vector<CTruck>& to);

  CTruck truck_;
  SArchivePlace place_;
  std::optional<CTruck> saved_ = CTruck();  ///< what the file holds; nothing when no file holds the truck
  bool is_of_unknown_file_ = false;         ///< of one without a line that is a truck's
  std::function<SImage()> make_picture_;
  std::vector<CTruck> undo_;
  std::vector<CTruck> redo_;
  QString last_key_;
};

}  // namespace veldra
