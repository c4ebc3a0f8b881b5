#include <algorithm>
#include <unordered_map>
#include <unordered_set>

#include "model/binmodel.h"
#include "model/modelstep.h"
#include "platform/assert.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kNoNameText = "Please enter a name.";
constexpr const char* kNameInUseText = "Specified name is already in use.\nPlease enter a different name.";
constexpr const char* kUnnamed = "group";

std::vector<int32_t> EachOnce(std::span<const int32_t> members, int32_t count) {
  std::vector<int32_t> result;
  std::unordered_set<int32_t> seen;
  for (const int32_t member : members) {
    VELDRA_ASSERT(member >= 0 && member < count);
    if (seen.insert(member).second) result.push_back(member);
  }
  return result;
}

/// Finds free names, remembering how far it counted for each, so that a thousand groups of one name are no slower than
/// a thousand names.
class CNameChooser {
 public:
  explicit CNameChooser(const std::vector<CBinGroup>& groups) {
    for (const CBinGroup& group : groups)
      taken_.insert(group.Name());
  }

  std::string Choose(const std::string& wish) {
    std::string name = wish.empty() ? kUnnamed : wish;
    const std::string stem = name;
    while (!taken_.insert(name).second)
      name = Format("%s %d", stem.c_str(), ++last_number_.try_emplace(stem, 1).first->second);
    return name;
  }

 private:
  std::unordered_set<std::string> taken_;
  std::unordered_map<std::string, int> last_number_;
};

}  // namespace

const CBinGroup* CBinModel::FindGroup(EGroupKind kind, std::string_view name) const {
  for (const CBinGroup& group : GroupsOf(kind)) {
    if (group.Name() == name) return &group;
  }
  return nullptr;
}

CBinGroup& CBinModel::GroupNamed(EGroupKind kind, std::string_view name) {
  Groups& groups = MutableGroups(kind);
  const auto found = std::find_if(groups.begin(), groups.end(), [name](const auto& own) { return own.Name() == name; });
  VELDRA_ASSERT(found != groups.end());
  return *found;
}

std::string CBinModel::GroupNameFault(EGroupKind kind, std::string_view name) const {
  if (name.empty()) return kNoNameText;
  return FindGroup(kind, name) != nullptr ? kNameInUseText : "";
}

void CBinModel::AddGroup(EGroupKind kind, const std::string& name, std::span<const int32_t> members) {
  VELDRA_ASSERT(GroupNameFault(kind, name).empty());
  const int32_t count = kind == EGroupKind::kFaces ? FaceCount() : VertexCount();
  NoteGroups();
  MutableGroups(kind).emplace_back(name, kind, EachOnce(members, count));
  Report({.groups = true});
}

std::vector<std::string> CBinModel::AddGroups(EGroupKind kind, Groups groups) {
  const int32_t count = kind == EGroupKind::kFaces ? FaceCount() : VertexCount();
  CNameChooser chooser(GroupsOf(kind));
  std::vector<std::string> names;
  if (!groups.empty()) NoteGroups();
  for (CBinGroup& group : groups) {
    VELDRA_ASSERT(group.kind_ == kind);
    names.push_back(chooser.Choose(group.name_));
    MutableGroups(kind).emplace_back(names.back(), kind, EachOnce(group.members_, count));
  }
  if (!names.empty()) Report({.groups = true});
  return names;
}

void CBinModel::DeleteGroup(EGroupKind kind, std::string_view name) {
  const CBinGroup& group = GroupNamed(kind, name);
  NoteGroups();
  Groups& groups = MutableGroups(kind);
  groups.erase(groups.begin() + (&group - groups.data()));
  Report({.groups = true});
}

void CBinModel::RenameGroup(EGroupKind kind, std::string_view name, const std::string& new_name) {
  if (name == new_name) return;
  VELDRA_ASSERT(GroupNameFault(kind, new_name).empty());
  NoteGroups();
  GroupNamed(kind, name).name_ = new_name;
  Report({.groups = true});
}

void CBinModel::NoteGroups() {
  if (recorder_ != nullptr) recorder_->BeforeGroups();
}

void CBinModel::ShiftMembers(Groups& groups, int32_t position, int32_t count) {
  for (CBinGroup& group : groups) {
    for (int32_t& member : group.members_) {
      if (member >= position) member += count;
    }
  }
}

void CBinModel::RemapMembers(Groups& groups, std::span<const int32_t> map) {
  for (CBinGroup& group : groups) {
    std::vector<int32_t> members;
    std::unordered_set<int32_t> seen;
    for (const int32_t member : group.members_) {
      VELDRA_ASSERT(static_cast<size_t>(member) < map.size());
      const int32_t mapped = map[static_cast<size_t>(member)];
      if (mapped >= 0 && seen.insert(mapped).second) members.push_back(mapped);
    }
    group.members_ = std::move(members);
  }
}

}  // namespace veldra
