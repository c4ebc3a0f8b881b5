#include <algorithm>
#include <numeric>

#include "cli/editstep.h"
#include "cli/modeltexture.h"
#include "cli/suggest.h"
#include "cli/values.h"
#include "editing/modelcommands.h"
#include "model/modeltools.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// What stands before the last comma of TEXT and what behind it: a group's name may hold commas.
std::optional<std::pair<std::string, std::string>> AtLastComma(const std::string& text) {
  const size_t comma = text.rfind(',');
  if (comma == std::string::npos || comma == 0 || comma + 1 == text.size()) return std::nullopt;
  return std::pair(text.substr(0, comma), text.substr(comma + 1));
}

/// The faces of the group NAME, ascending; nothing when there is none, which the user has been told.
std::optional<std::vector<int32_t>> FacesOf(CSession& session, const CBinModel& model, const std::string& name) {
  const CBinGroup* const group = model.FindGroup(EGroupKind::kFaces, name);
  if (group != nullptr) {
    std::vector<int32_t> faces = group->Members();
    std::ranges::sort(faces);
    return faces;
  }
  std::vector<std::string> names;
  for (const CBinGroup& known : model.FaceGroups())
    names.push_back(known.Name());
  session.Fail("The model has no face group \"" + name + "\"" + DidYouMean(name, names));
  return std::nullopt;
}

std::vector<int32_t> AllFaces(const CBinModel& model) {
  std::vector<int32_t> faces(static_cast<size_t>(model.FaceCount()));
  std::iota(faces.begin(), faces.end(), 0);
  return faces;
}

/// The position of the texture NAME, with or without its extension; -1 after a message.
int32_t TexturePosition(CSession& session, const CBinModel& model, const std::string& name) {
  const bool has_extension = !ExtensionPart(name).empty();
  std::vector<std::string> names;
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const std::string& full = model.Texture(i).Name();
    names.push_back(has_extension ? full : full.substr(0, full.rfind('.')));
    if (EqualNoCase(names.back(), name)) return i;
  }
  session.Fail("The model has no texture \"" + name + "\"" + DidYouMean(name, names));
  return -1;
}

int ReplaceOne(CSession& session, CTarnDoc& document, const std::string& old_name, const std::string& raw) {
  const int32_t old = TexturePosition(session, document.Model(), old_name);
  if (old < 0) return kFailed;
  const std::string path = TextureFile(session, raw);
  return ReplaceTexture(document, {old, path.empty() ? raw : path}) ? kDone : kFailed;
}

int Assign(CSession& session, CBinModel& model, const std::string& group, const std::string& raw) {
  const auto faces = FacesOf(session, model, group);
  if (!faces) return kFailed;
  CBinTexture* const texture = ModelTexture(session, model, raw);
  if (texture == nullptr) return kFailed;
  for (const int32_t face : *faces)
    model.SetFaceTexture(face, texture);
  return kDone;
}

int ChangeGroupType(CSession& session, CBinModel& model, const std::string& group, uint32_t type) {
  const auto faces = FacesOf(session, model, group);
  if (!faces) return kFailed;
  for (const int32_t face : *faces)
    if (type != kFaceUntextured && model.Face(face).Texture() == nullptr)
      return session.Fail(Format("Face %d has no texture and cannot become type 0x%02X.", face, type));
  for (const int32_t face : *faces)
    model.Face(face).SetType(type);
  model.ReportFacesChanged();
  return kDone;
}

}  // namespace

EditStep Fitting(const std::string& value) {
  const auto size = ParseNumbers(value, 1);
  if (!size || size->front() <= 0) return {};
  return [largest = size->front()](CSession& session, CTarnDoc& document) {
    const GeometryFault fault = FitModel(document.Model(), largest);
    return fault.empty() ? kDone : session.Fail(fault);
  };
}

EditStep ReplacingTexture(const std::string& value) {
  const auto names = AtLastComma(value);
  if (!names) return {};
  return [names = *names](CSession& session, CTarnDoc& document) {
    return ReplaceOne(session, document, names.first, names.second);
  };
}

EditStep Assigning(const std::string& value) {
  const auto names = AtLastComma(value);
  if (!names) return {};
  return [names = *names](CSession& session, CTarnDoc& document) {
    return Assign(session, document.Model(), names.first, names.second);
  };
}

EditStep ChangingGroupType(const std::string& value) {
  const auto parts = AtLastComma(value);
  const auto type = parts ? ParseFaceType(parts->second, true) : std::nullopt;
  if (!type) return {};
  return [group = parts->first, type = *type](CSession& session, CTarnDoc& document) {
    return ChangeGroupType(session, document.Model(), group, type);
  };
}

EditStep DeletingFaces(const std::string& value) {
  if (value.empty()) return {};
  return [value](CSession& session, CTarnDoc& document) -> int {
    const auto faces = FacesOf(session, document.Model(), value);
    if (!faces) return kFailed;
    DeleteFacesWithVertices(document.Model(), *faces);
    return kDone;
  };
}

EditStep Mapping(const std::string& value) {
  const std::vector<std::string> parts = SplitText(value, ',');
  const bool is_box = EqualNoCase(parts[0], "box");
  const auto axis = parts.size() > 1 ? ParseAxis(parts[1]) : std::nullopt;
  if (!is_box && (!EqualNoCase(parts[0], "planar") || !axis)) return {};
  // All that is left is the group's name, commas and all.
  const size_t before = parts[0].size() + (is_box ? 0 : 1 + parts[1].size());
  const std::string group = before < value.size() ? value.substr(before + 1) : "";
  if (group.empty() && before < value.size()) return {};
  return [is_box, axis, group](CSession& session, CTarnDoc& document) -> int {
    CBinModel& model = document.Model();
    const auto faces = group.empty() ? std::optional(AllFaces(model)) : FacesOf(session, model, group);
    if (!faces) return kFailed;
    if (is_box)
      MapBox(model, *faces);
    else
      MapPlanar(model, *faces, *axis);
    return kDone;
  };
}

}  // namespace veldra
