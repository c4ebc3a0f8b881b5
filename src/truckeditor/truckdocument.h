#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "platform/files.h"
#include "truck/truck.h"

namespace veldra {

/// The truck that is being edited, with its file and its earlier states. The pages change it through Change and show it
/// again when it says Changed.
class CTruckDocument : public QObject {
  Q_OBJECT

 public:
  const CTruck& Truck() const { return truck_; }
  /// What PLACE, a function that finds a part of a truck to change it, finds in this one, for looking at it only.
  template <typename Place>
  const auto* Look(const Place& place) {
    return place(truck_);
  }
  /// "" for one that has never been saved.
  const std::string& Path() const { return path_; }
  bool IsModified() const { return !(truck_ == saved_); }
  /// The file has no line that is a truck's: what is in it is none, as far as one can see.
  bool IsOfUnknownFile() const { return is_of_unknown_file_; }

  void New();
  /// Longer files are no trucks: every step of the editor would carry their texts along.
  static constexpr uint64_t kLargestFile = uint64_t{16} << 20;
  /// False when it cannot be read: the present truck stays.
  bool Load(const std::string& path, SError* error);
  bool Save(const std::string& path, SError* error);

  /// CHANGE is one step back, together with those before it of the same KEY (unless it is empty).
  void Change(const QString& key, const std::function<void(CTruck&)>& change);
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
  void Begin(const CTruck& truck, const std::string& path, bool is_of_unknown_file = false);
  void Swap(std::vector<CTruck>& from, std::vector<CTruck>& to);

  CTruck truck_;
  CTruck saved_;
  std::string path_;
  bool is_of_unknown_file_ = false;
  std::vector<CTruck> undo_;
  std::vector<CTruck> redo_;
  QString last_key_;
};

}  // namespace veldra
