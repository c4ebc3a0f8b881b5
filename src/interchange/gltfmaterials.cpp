#include "interchange/gltfmaterials.h"

#include <algorithm>
#include <cmath>

#include "platform/paths.h"
#include "platform/text.h"

namespace veldra::gltf {

namespace {

const Json* TextureInfo(const Json* material) {
  return Member(Member(material, "pbrMetallicRoughness"), "baseColorTexture");
}

/// What an eye sees of a share of light, as pictures have it.
uint8_t PictureByte(double linear) {
  const double share = std::clamp(linear, 0.0, 1.0);
  const double seen = share <= 0.0031308 ? 12.92 * share : 1.055 * std::pow(share, 1 / 2.4) - 0.055;
  return static_cast<uint8_t>(std::lround(255 * seen));
}

/// A TGA picture of one pixel.
std::vector<uint8_t> PixelOf(const std::array<double, 4>& color) {
  constexpr uint8_t kTrueColor = 2;
  constexpr uint8_t kBits = 24;
  std::vector<uint8_t> bytes(18);
  bytes[2] = kTrueColor;
  bytes[12] = bytes[14] = 1;
  bytes[16] = kBits;
  bytes.insert(bytes.end(), {PictureByte(color[2]), PictureByte(color[1]), PictureByte(color[0])});
  return bytes;
}

class CMaterialTaker {
 public:
  CMaterialTaker(const Json& root, const CBuffers& buffers, SWaveMesh& mesh)
      : root_(root), buffers_(buffers), mesh_(mesh), pictures_(CountOf(&root, "images")) {}

  void TakeAll() {
    for (size_t i = 0; i < CountOf(&root_, "materials"); ++i) {
      const Json* const material = Element(&root_, "materials", i);
      const std::string name = NameOf(material, "Material", i);
      mesh_.material_names.push_back(name);
      mesh_.material_pictures.push_back(PictureOf(*material, name));
    }
  }

 private:
  std::string PictureOf(const Json& material, const std::string& name);
  std::string TakeImage(size_t index);
  std::string Hold(const std::string& name, const char* extension, std::vector<uint8_t> bytes);

  const Json& root_;
  const CBuffers& buffers_;
  SWaveMesh& mesh_;
  std::vector<std::string> pictures_;  ///< of each image, once it is taken
  uint64_t held_ = 0;                  ///< in bytes
};

std::string CMaterialTaker::PictureOf(const Json& material, const std::string& name) {
  const Json* const info = TextureInfo(&material);
  if (info != nullptr) {
    const Json* const texture = Element(&root_, "textures", WholeNumber(info, "index"));
    const auto image = WholeNumber(texture, "source");
    return image && *image < pictures_.size() ? TakeImage(*image) : "";
  }
  const Json* const surface = Member(&material, "pbrMetallicRoughness");
  const auto color = Numbers<4>(surface, "baseColorFactor");
  return color ? Hold(name, "tga", PixelOf(*color)) : "";
}

/// Its name: where it is a file of its own, as the file has it, but for what leads out of the folder.
std::string CMaterialTaker::TakeImage(size_t index) {
  std::string& picture = pictures_[index];
  if (!picture.empty()) return picture;
  const Json* const image = Element(&root_, "images", index);
  const std::string uri = TextOr(image, "uri", "");
  auto decoded = DecodeDataUri(uri);
  if (!uri.empty() && !decoded) {
    picture = DecodeUri(uri);
    if (!StaysBelow(picture)) picture = FileNamePart(picture);
    return picture;
  }
  std::string fault;
  const auto view = uri.empty() ? buffers_.View(WholeNumber(image, "bufferView"), fault) : std::nullopt;
  // Views can overlap, and a file would hold more than it has bytes.
  if (view && held_ + view->size() <= buffers_.Size()) {
    decoded.emplace(view->begin(), view->end());
    held_ += view->size();
  }
  const std::string name = NameOf(image, "Image", index);
  if (!decoded) {
    mesh_.remarks.Add("picture " + DisplayName(name) + ": " + (fault.empty() ? "it overlaps others" : fault));
    return "";
  }
  const bool is_jpeg = decoded->size() > 1 && (*decoded)[0] == 0xFF && (*decoded)[1] == 0xD8;
  picture = Hold(name, is_jpeg ? "jpg" : "png", std::move(*decoded));
  return picture;
}

std::string CMaterialTaker::Hold(const std::string& name, const char* extension, std::vector<uint8_t> bytes) {
  const std::string own = EqualNoCase(ExtensionPart(name), extension) ? name.substr(0, name.rfind('.')) : name;
  std::string free = own + "." + extension;
  for (size_t number = mesh_.held_pictures.size(); mesh_.held_pictures.contains(free); ++number)
    free = own + Format(" %zu.", number) + extension;
  mesh_.held_pictures.emplace(free, std::move(bytes));
  return free;
}

}  // namespace

std::string NameOf(const Json* object, const char* kind, size_t index) {
  std::string name = TextOr(object, "name", "");
  std::ranges::replace_if(
      name, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return Trim(name).empty() ? Format("%s %zu", kind, index + 1) : name;
}

void AddMaterials(const Json& root, const CBuffers& buffers, SWaveMesh& mesh) {
  CMaterialTaker(root, buffers, mesh).TakeAll();
}

SPictureCoords CoordsOf(const Json& root, std::optional<size_t> material) {
  const Json* const info = TextureInfo(Element(&root, "materials", material));
  const Json* const transform = Member(Member(info, "extensions"), "KHR_texture_transform");
  SPictureCoords coords;
  coords.set = WholeNumber(transform, "texCoord").value_or(WholeNumber(info, "texCoord").value_or(0));
  const auto offset = Numbers<2>(transform, "offset").value_or(std::array{0.0, 0.0});
  const auto scale = Numbers<2>(transform, "scale").value_or(std::array{1.0, 1.0});
  const double angle = NumberOr(transform, "rotation", 0);
  coords.u = {scale[0] * std::cos(angle), scale[1] * std::sin(angle), offset[0]};
  coords.v = {-scale[0] * std::sin(angle), scale[1] * std::cos(angle), offset[1]};
  return coords;
}

}  // namespace veldra::gltf
