#include "interchange/modelreport.h"

#include <bit>

#include "interchange/textbuilder.h"
#include "model/normals.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kDumpVertexSize = 32;
constexpr size_t kDumpFaceSize = 320;

/// Reports hold names as the model does, unless one would break its line or do worse on a screen.
std::string NameOf(const CBinTexture& texture) {
  return HasHiddenCharacters(texture.Name()) ? DisplayName(texture.Name()) : texture.Name();
}

CTextBuilder& operator<<(CTextBuilder& out, const SPoint& point) {
  return out << point.x << ',' << point.y << ',' << point.z;
}

void DescribeFace(CTextBuilder& out, const CBinFace& face) {
  const SPoint normal = CalcFaceNormal(face);
  const CBinTexture* texture = face.Texture();
  out << "\nINFORMATION FOR FACE# " << face.Index() << "\n  Vertices: (";
  for (int k = 0; k < face.CornerCount(); ++k)
    out << (k > 0 ? "," : "") << face.Corner(k)->Index();
  out << ")\n  Normal vector (calculated by Veldra): (" << normal << ")\n  Normal vector (as loaded): ("
      << face.StoredNormal() << ")\n  Magic value (calculated by Veldra): " << CalcMagic(face, normal)
      << "\n  Magic value (as loaded): " << face.StoredMagic() << "\n  Texture: " << (texture ? NameOf(*texture) : "")
      << "\tSize: " << (texture ? texture->Width() : 0) << '\n';
}

/// The two words of U in the order in which they lie in memory on the game's machines, as the signed numbers that
/// readers of these dumps expect. V is not part of the dump.
void DumpCorner(CTextBuilder& out, const CBinFace& face, int k) {
  const auto bits = std::bit_cast<uint64_t>(face.TexCoord(k).u);
  out << 'V' << k << ": " << face.Corner(k)->Index() << '(' << static_cast<int32_t>(static_cast<uint32_t>(bits)) << ','
      << static_cast<int32_t>(static_cast<uint32_t>(bits >> 32)) << ")\n";
}

void DumpFace(CTextBuilder& out, const CBinFace& face) {
  const CBinTexture* texture = face.Texture();
  out << "Texture Name - " << (texture && texture->Kind() == ETextureKind::kAnimated ? "ANIM:" : "")
      << (texture ? NameOf(*texture) : "") << "\nFace Type - 0x";
  out.Hexadecimal(face.Type()) << "\nNormal Vector - " << face.StoredNormal() << "\nCalculated Normal Vector - "
                               << CalcFaceNormal(face) << "\nMagic Number - " << face.StoredMagic() << ",0x";
  out.Hexadecimal(static_cast<uint32_t>(face.StoredMagic())) << "\nNumber of Vertices - " << face.CornerCount() << '\n';
  for (int k = 0; k < face.CornerCount(); ++k)
    DumpCorner(out, face, k);
}

/// Can exceed 32 bits.
int64_t Size(const CBinModel& model, int axis) {
  return int64_t{model.Bound(axis + 3)} - model.Bound(axis);
}

}  // namespace

std::string ModelInformation(const CBinModel& model, const CBinFace* face, const CBinVertex* vertex) {
  CTextBuilder out(600);
  out << "MODEL INFORMATION:\n  Number of Vertices:\t" << model.VertexCount() << "\n  Number of Faces:\t\t"
      << model.FaceCount() << "\n  Number of Textures:\t" << model.TextureCount() << '\n';
  for (int axis = 0; axis < 3; ++axis)
    out << "  Size "
        << "XYZ"[axis] << ": " << Size(model, axis) << " units\n";
  if (face) DescribeFace(out, *face);
  if (vertex) {
    out << "\nINFORMATION FOR VERTEX# " << vertex->Index() << "\n   Position: " << vertex->Position() << '\n';
  }
  return out.Take();
}

std::string ModelDump(const CBinModel& model, std::string_view name) {
  CTextBuilder out(static_cast<size_t>(model.VertexCount()) * kDumpVertexSize +
                   static_cast<size_t>(model.FaceCount()) * kDumpFaceSize);
  out << "Model Name - " << name << "\nNumber of Vertices - " << model.VertexCount() << '\n';
  for (int32_t i = 0; i < model.VertexCount(); ++i)
    out << model.Vertex(i).Position() << '\n';
  out << "\nNumber of Faces - " << model.FaceCount() << '\n';
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    DumpFace(out, model.Face(i));
  return out.Take();
}

std::string TextureList(const CBinModel& model) {
  CTextBuilder out(0);
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    out << NameOf(model.Texture(i)) << '\n';
  return out.Take();
}

}  // namespace veldra
