#include "editing/groupcommands.h"

namespace veldra {

std::string CreateGroup(CTarnDoc& document, EGroupKind kind, const std::string& name) {
  CBinModel& model = document.Model();
  if (document.IsReadOnly()) return "";
  const std::vector<int32_t> selected = model.Selected(kind);
  if (selected.empty())
    return kind == EGroupKind::kFaces ? "Please select the faces of the group first."
                                      : "Please select the vertices of the group first.";
  std::string fault = model.GroupNameFault(kind, name);
  const CStep step(document, "Create Group");
  if (fault.empty()) model.AddGroup(kind, name, selected);
  return fault;
}

std::string RenameGroup(CTarnDoc& document, EGroupKind kind, const std::string& name, const std::string& new_name) {
  if (document.IsReadOnly() || name == new_name) return "";
  std::string fault = document.Model().GroupNameFault(kind, new_name);
  const CStep step(document, "Rename Group");
  if (fault.empty()) document.Model().RenameGroup(kind, name, new_name);
  return fault;
}

void DeleteGroup(CTarnDoc& document, EGroupKind kind, const std::string& name) {
  const CStep step(document, "Delete Group");
  if (!document.IsReadOnly()) document.Model().DeleteGroup(kind, name);
}

void SelectGroup(CTarnDoc& document, EGroupKind kind, const std::string& name, bool add) {
  CBinModel& model = document.Model();
  const CBinGroup* const group = model.FindGroup(kind, name);
  if (group == nullptr) return;
  const std::vector<int32_t> members = group->Members();
  if (!add) model.SelectAll(kind, false);
  model.Select(kind, members, true);
}

}  // namespace veldra
