#include "truckeditor/truckdocument.h"

#include <utility>

namespace veldra {

namespace {

constexpr size_t kMostSteps = 500;

}  // namespace

void CTruckDocument::Begin(const CTruck& truck, const std::string& path, bool is_of_unknown_file) {
  truck_ = truck;
  saved_ = truck;
  path_ = path;
  is_of_unknown_file_ = is_of_unknown_file;
  undo_.clear();
  redo_.clear();
  last_key_.clear();
  emit FileChanged();
  emit Changed();
}

void CTruckDocument::New() {
  Begin(CTruck(), "");
}

bool CTruckDocument::Load(const std::string& path, SError* error) {
  if (FileLength(path).value_or(0) > kLargestFile) {
    if (error != nullptr) error->what = "It is longer than a truck file can be.";
    return false;
  }
  CTruck truck;
  int known = 0;
  if (!truck.Load(path, error, &known)) return false;
  Begin(truck, path, known == 0);
  return true;
}

bool CTruckDocument::Save(const std::string& path, SError* error) {
  if (!truck_.Save(path, error)) return false;
  saved_ = truck_;
  const bool is_other = path != path_;
  path_ = path;
  is_of_unknown_file_ = false;
  last_key_.clear();
  if (is_other) emit FileChanged();
  emit Changed();
  return true;
}

void CTruckDocument::Change(const QString& key, const std::function<void(CTruck&)>& change) {
  CTruck changed = truck_;
  change(changed);
  if (changed == truck_) return;
  if (key.isEmpty() || key != last_key_) {
    if (undo_.size() == kMostSteps) undo_.erase(undo_.begin());
    undo_.push_back(std::move(truck_));
  }
  last_key_ = key;
  redo_.clear();
  truck_ = std::move(changed);
  emit Changed();
}

void CTruckDocument::Swap(std::vector<CTruck>& from, std::vector<CTruck>& to) {
  if (from.empty()) return;
  to.push_back(std::move(truck_));
  truck_ = std::move(from.back());
  from.pop_back();
  last_key_.clear();
  emit Changed();
}

void CTruckDocument::Undo() {
  Swap(undo_, redo_);
}

void CTruckDocument::Redo() {
  Swap(redo_, undo_);
}

}  // namespace veldra
