#include "archive/extractplan.h"

#include <utility>

#include "archive/podnames.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

CExtractPlan::CExtractPlan(const CPodDocument& archive, const SExtractRequest& request)
    : archive_(archive), request_(request) {}

void CExtractPlan::Add(size_t entry) {
  std::string reason = Place(entry);
  if (!reason.empty()) refused_.push_back({entry, std::move(reason)});
}

std::string CExtractPlan::Place(size_t entry) {
  const SPodEntry& wanted = archive_.Entries()[entry];
  if (wanted.fault != EPodFault::kNone) return PodFaultText(wanted.fault);
  const SNameResult relative = SafeRelativePath(wanted.Name(), request_.folders);
  if (!relative.Ok()) return relative.refusal;
  SExtractStep step{.entry = entry,
                    .folder = DirectoryPart(relative.name),
                    .name = FileNamePart(relative.name),
                    .path = JoinPath(request_.destination, relative.name)};
  std::string reason = CheckFolder(step.folder);
  if (!reason.empty()) return reason;
  step.exists = FileExists(step.path) || IsLink(step.path);
  if (step.exists && IsDirectory(step.path)) return "there is a folder of this name";
  if (step.exists && !IsFile(step.path) && !IsLink(step.path)) return "there is something of this name that is no file";
  reason = Claim(relative.name, entry);
  if (reason.empty()) steps_.push_back(std::move(step));
  return reason;
}

std::string CExtractPlan::Claim(const std::string& relative_path, size_t entry) {
  std::string key = NameKey(relative_path);
  const auto other = files_.find(key);
  if (other != files_.end()) {
    return "\"" + DisplayName(archive_.Entries()[other->second].Name()) + "\" goes to the same file";
  }
  if (folders_.contains(key)) return "another entry needs a folder of this name";
  std::vector<std::string> above;
  for (std::string folder = DirectoryPart(key); !folder.empty(); folder = DirectoryPart(folder)) {
    if (files_.contains(folder)) return "another entry is a file where this one needs a folder";
    above.push_back(folder);
  }
  folders_.insert(above.begin(), above.end());
  files_.emplace(std::move(key), entry);
  return {};
}

std::string CExtractPlan::CheckFolder(const std::string& folder) {
  const auto [row, is_new] = looked_at_.try_emplace(folder);
  if (is_new) row->second = LookAtFolder(folder);
  return row->second;
}

std::string CExtractPlan::LookAtFolder(const std::string& folder) const {
  std::string path = request_.destination;
  for (const std::string_view part : PathParts(folder)) {
    path = JoinPath(path, part);
    if (IsLink(path)) return "a link stands where it needs a folder";
    if (!FileExists(path)) return {};
    if (!IsDirectory(path)) return "there is a file where it needs a folder";
  }
  return {};
}

}  // namespace veldra
