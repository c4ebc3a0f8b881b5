#include <nlohmann/json.hpp>
#include <unordered_map>

#include "interchange/modelreport.h"
#include "model/normals.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// Keys in the order in which they are set. Numbers that JSON cannot express become null.
using Json = nlohmann::ordered_json;

using TexturePositions = std::unordered_map<const CBinTexture*, int32_t>;

Json ToJson(const SPoint& point) {
  return Json::array({point.x, point.y, point.z});
}

Json ToJson(const SBounds& bounds) {
  return Json::array({bounds.min.x, bounds.min.y, bounds.min.z, bounds.max.x, bounds.max.y, bounds.max.z});
}

Json ToJson(const CBinFace& face, const TexturePositions& positions) {
  Json corners = Json::array();
  Json u = Json::array();
  Json v = Json::array();
  for (int k = 0; k < face.CornerCount(); ++k) {
    corners.push_back(face.Corner(k)->Index());
    u.push_back(face.TexCoord(k).u);
    v.push_back(face.TexCoord(k).v);
  }
  const SPoint normal = CalcFaceNormal(face);
  return {{"type", face.Type()},
          {"texture", face.Texture() ? Json(positions.at(face.Texture())) : Json()},
          {"corners", std::move(corners)},
          {"u", std::move(u)},
          {"v", std::move(v)},
          {"storedNormal", ToJson(face.StoredNormal())},
          {"storedMagic", face.StoredMagic()},
          {"normal", ToJson(normal)},
          {"magic", CalcMagic(face, normal)}};
}

Json ToJson(const CBinTexture& texture) {
  const bool is_animated = texture.Kind() == ETextureKind::kAnimated;
  Json json = {{"name", ToUtf8(texture.Name())},
               {"kind", is_animated ? "animated" : "plain"},
               {"width", texture.Width()},
               {"uses", texture.UseCount()}};
  if (!is_animated) return json;
  Json frames = Json::array();
  for (const CBinTexture::SFrame& frame : texture.Frames())
    frames.push_back(ToUtf8(frame.name));
  json["frames"] = std::move(frames);
  json["rate"] = texture.Rate();
  return json;
}

Json ToJson(const CBinGroup& group) {
  return {{"name", ToUtf8(group.Name())}, {"members", group.Members()}};
}

/// A list of COUNT items, one a line, each made by ITEM and gone again before the next: the tree of a whole model would
/// take many times its size.
template <typename MakeItem>
void AddList(std::string& out, const char* key, int32_t count, const MakeItem& item) {
  out += Format(",\n\"%s\": [", key);
  for (int32_t i = 0; i < count; ++i) {
    out += i > 0 ? ",\n" : "\n";
    out += DisplayJson(item(i).dump());
  }
  out += count > 0 ? "\n]" : "]";
}

void AddGroups(std::string& out, const char* key, const CBinModel::Groups& groups) {
  AddList(out, key, static_cast<int32_t>(groups.size()),
          [&](int32_t i) { return ToJson(groups[static_cast<size_t>(i)]); });
}

}  // namespace

std::string ModelJson(const CBinModel& model) {
  TexturePositions positions;
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    positions[&model.Texture(i)] = i;
  std::string out = "{\"scale\": " + Json(model.ScaleWord()).dump() + ", \"bounds\": " + ToJson(model.Bounds()).dump();
  AddList(out, "vertices", model.VertexCount(), [&](int32_t i) { return ToJson(model.Vertex(i).Position()); });
  AddList(out, "faces", model.FaceCount(), [&](int32_t i) { return ToJson(model.Face(i), positions); });
  AddList(out, "textures", model.TextureCount(), [&](int32_t i) { return ToJson(model.Texture(i)); });
  AddGroups(out, "faceGroups", model.FaceGroups());
  AddGroups(out, "vertexGroups", model.VertexGroups());
  out += "}\n";
  return out;
}

}  // namespace veldra
