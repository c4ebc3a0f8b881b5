#include "platform/outputfolder.h"

#include <algorithm>
#include <limits>
#include <utility>
#include <vector>

#include "platform/filewriting.h"
#include "platform/folder_system.h"
#include "platform/paths.h"
#include "platform/temporaries.h"

namespace veldra {

struct COutputFolder::SState {
  struct SLevel {
    std::string name;
    disk::SFolder folder;
  };
  std::vector<SLevel> levels;  ///< the folder that was opened, and those on the way to the one that files go into

  ~SState() { CloseBelow(0); }
  void CloseBelow(size_t count) {
    for (; levels.size() > count; levels.pop_back())
      disk::CloseFolder(levels.back().folder);
  }
  bool EnterPart(std::string_view name, SError* error);
};

bool COutputFolder::SState::EnterPart(std::string_view name, SError* error) {
  SLevel level{std::string(name), {}};
  const disk::SFolder& above = levels.back().folder;
  const int number = disk::EnterFolder(above, level.name, level.folder);
  if (number == 0) {
    RemoveAbandonedTemporaries(level.folder.path);
    levels.push_back(std::move(level));
    return true;
  }
  switch (disk::EntryIn(above, level.name)) {
    case disk::EEntry::kLink:
      return Fail(error, "a link stands where it needs a folder");
    case disk::EEntry::kFile:
      return Fail(error, "there is a file where it needs a folder");
    default:
      return Fail(error, "its folder could not be made: " + disk::ErrorText(number));
  }
}

COutputFolder::COutputFolder() : state_(std::make_unique<SState>()) {}
COutputFolder::~COutputFolder() = default;

bool COutputFolder::Open(std::string_view path, SError* error) {
  state_->CloseBelow(0);
  disk::SFolder folder;
  const int number = disk::OpenFolder(disk::SystemPath(path), folder);
  if (number != 0) return disk::FailWith(error, number);
  RemoveAbandonedTemporaries(folder.path);
  state_->levels.push_back({{}, std::move(folder)});
  return true;
}

bool COutputFolder::Enter(std::string_view relative, SError* error) {
  const std::vector<std::string_view> parts = PathParts(relative);
  const std::vector<SState::SLevel>& levels = state_->levels;
  size_t same = 0;
  while (same < parts.size() && same + 1 < levels.size() && levels[same + 1].name == parts[same])
    ++same;
  state_->CloseBelow(same + 1);
  return std::all_of(parts.begin() + static_cast<ptrdiff_t>(same), parts.end(),
                     [&](std::string_view part) { return state_->EnterPart(part, error); });
}

std::optional<uint64_t> COutputFolder::FreeSpace() const {
  const uint64_t space = disk::FreeSpace(state_->levels.front().folder);
  return space == std::numeric_limits<uint64_t>::max() ? std::nullopt : std::optional<uint64_t>(space);
}

struct COutputFile::SState {
  const disk::SFolder& folder;
  std::string name;
  CTemporary temporary = {};
  bool replaces = false;  ///< a file
  disk::COpenFile file = {};

  std::string Temporary() const { return FileNamePart(temporary.Path()); }
  bool LookAtTarget(SError* error);
  bool CreateTemporary(SError* error);
};

bool COutputFile::SState::LookAtTarget(SError* error) {
  const disk::EEntry there = disk::EntryIn(folder, name);
  if (there == disk::EEntry::kOther) return Fail(error, "there is something of this name that is no file");
  replaces = there == disk::EEntry::kFile;
  const int refusal = replaces ? disk::CheckReplaceableIn(folder, name) : 0;
  return refusal == 0 || disk::FailWith(error, refusal);
}

bool COutputFile::SState::CreateTemporary(SError* error) {
  const auto create = [&](const std::string& path, disk::Handle& handle) {
    return disk::CreateNewIn(folder, FileNamePart(path), !replaces, handle);
  };
  const int number = temporary.Create(folder.path, "", create, file.handle);
  return number == 0 || disk::FailWith(error, number);
}

COutputFile::COutputFile(const COutputFolder& folder, std::string name)
    : state_(new SState{folder.state_->levels.back().folder, std::move(name)}) {}

COutputFile::~COutputFile() {
  state_->file.Close();
  // Not by its path, which may lead elsewhere by now.
  if (!state_->temporary.Path().empty()) disk::RemoveIn(state_->folder, state_->Temporary());
  state_->temporary.Forget();
}

bool COutputFile::Open(SError* error) {
  SState& state = *state_;
  if (!state.LookAtTarget(error) || !state.CreateTemporary(error)) return false;
  const int number = state.replaces ? disk::CopyPermissionsIn(state.folder, state.name, state.file.handle) : 0;
  return number == 0 || disk::FailWith(error, number);
}

bool COutputFile::CopyFrom(const CInputFile& from, uint64_t offset, uint64_t length,
                           const std::function<bool(uint64_t)>& step, SError* error) {
  return disk::CopyBytes(from, offset, length, state_->file.handle, state_->temporary.Path(), step, error);
}

bool COutputFile::Commit(SError* error) {
  SState& state = *state_;
  int number = disk::Fault("close", state.temporary.Path());
  if (number == 0) state.temporary.KeepMarked(state.file.handle);
  if (number == 0) number = state.file.Close();
  if (number == 0) number = disk::Fault("rename", JoinPath(state.folder.path, state.name));
  if (number == 0) number = disk::RenameIn(state.folder, state.Temporary(), state.name);
  if (number == 0) state.temporary.Forget();
  return number == 0 || disk::FailWith(error, number);
}

}  // namespace veldra
