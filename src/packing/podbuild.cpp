#include "packing/podbuild.h"

#include <algorithm>
#include <set>
#include <utility>

#include "archive/poddocument.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Deeper than anyone nests folders; a circle of links ends here.
constexpr int kDeepestFolder = 32;

void CollectFiles(const std::string& folder, const std::string& below, int depth, std::vector<SPodSource>& sources) {
  for (const std::string& name : ListDirectory(folder)) {
    const std::string path = JoinPath(folder, name);
    std::string place = below;
    if (!below.empty()) place += '\\';
    place += name;
    if (!IsDirectory(path)) {
      sources.push_back({.name = place, .bytes = {.path = path}});
    } else if (depth < kDeepestFolder) {
      CollectFiles(path, place, depth + 1, sources);
    }
  }
}

SPodSource FileSource(const std::string& path) {
  return {.name = FileNamePart(path), .bytes = {.path = path}};
}

}  // namespace

size_t CPodBuild::AddSources(const std::vector<SPodSource>& sources) {
  std::vector<SPodSource> all;
  all.reserve(items_.size() + sources.size());
  for (const SItem& item : items_)
    all.push_back(item.source);
  all.insert(all.end(), sources.begin(), sources.end());
  const SPodPlan plan = CheckPodSources(all);

  SMessage refused{.text = {}, .caption = kErrorCaption, .icon = EIcon::kError, .details = {}};
  const auto refuse = [&](const std::string& line) {
    if (!line.empty()) refused.details += (refused.details.empty() ? "" : "\n") + line;
  };
  const size_t before = items_.size();
  for (size_t i = before; i < all.size(); ++i) {
    const SPodPlan::SEntry& entry = plan.entries[i];
    if (entry.refusal.empty()) {
      items_.push_back({.source = all[i],
                        .name = entry.name,
                        .length = entry.length,
                        .is_stock = stock_.IsStockFile(FileNamePart(entry.name))});
    } else if (refused.text.empty()) {
      refused.text = entry.refusal;
      refuse(entry.details);
    } else {
      refuse(entry.refusal);
    }
  }
  if (!refused.text.empty()) questions_.Message(refused);
  return items_.size() - before;
}

size_t CPodBuild::AddFiles(std::span<const std::string> paths) {
  return AddAny(paths, false);
}

size_t CPodBuild::AddArchive(const std::string& path) {
  CPodDocument archive;
  SError error;
  if (!archive.Load(path, &error)) {
    questions_.Message(
        {.text = kFailedToLoadPod, .caption = kErrorCaption, .icon = EIcon::kError, .details = error.what});
    return 0;
  }
  return AddSources(SourcesOf(archive));
}

size_t CPodBuild::AddAny(std::span<const std::string> paths, bool insert_archives) {
  std::vector<SPodSource> sources;
  size_t added = 0;
  for (const std::string& path : paths) {
    if (IsDirectory(path)) {
      CollectFiles(path, {}, 0, sources);
    } else if (insert_archives && EqualNoCase(ExtensionPart(path), "pod")) {
      added += AddSources(std::exchange(sources, {}));
      added += AddArchive(path);
    } else {
      sources.push_back(FileSource(path));
    }
  }
  return added + AddSources(sources);
}

void CPodBuild::Remove(std::span<const size_t> positions) {
  std::vector<SItem> kept;
  for (size_t i = 0; i < items_.size(); ++i)
    if (!std::binary_search(positions.begin(), positions.end(), i)) kept.push_back(std::move(items_[i]));
  items_ = std::move(kept);
}

bool CPodBuild::Move(std::span<const size_t> positions, int by) {
  if (positions.empty() || (by < 0 ? positions.front() == 0 : positions.back() + 1 >= items_.size())) return false;
  if (by < 0) {
    for (const size_t position : positions)
      std::swap(items_[position], items_[position - 1]);
  } else {
    std::for_each(positions.rbegin(), positions.rend(),
                  [this](size_t position) { std::swap(items_[position], items_[position + 1]); });
  }
  return true;
}

std::vector<SPodSource> CPodBuild::Sources(bool leave_out_stock) const {
  std::vector<SPodSource> sources;
  for (const SItem& item : items_)
    if (!leave_out_stock || !item.is_stock) sources.push_back(item.source);
  return sources;
}

uint64_t CPodBuild::TotalLength(bool leave_out_stock) const {
  uint64_t total = kPodHeaderSize;
  for (const SItem& item : items_)
    if (!leave_out_stock || !item.is_stock) total += kPodRecordSize + item.length;
  return total;
}

std::vector<SDependency> CPodBuild::Missing(const SSearchPlaces& places, std::vector<std::string>* complaints) const {
  std::vector<SPodSource> own;
  std::vector<size_t> all;
  for (const SItem& item : items_) {
    // The name in the archive, by which the game looks for it.
    own.push_back({.name = item.name, .bytes = item.source.bytes});
    all.push_back(all.size());
  }
  std::vector<SDependency> needed = FindDependencies(own, all, places, stock_, complaints);
  std::erase_if(needed, [](const SDependency& each) { return each.place == SDependency::EPlace::kOwn; });
  return needed;
}

}  // namespace veldra
