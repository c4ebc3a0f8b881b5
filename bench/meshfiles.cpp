#include "meshfiles.h"

#include <bit>
#include <cmath>

#include "platform/bytes.h"
#include "platform/text.h"

namespace veldra::bench {

namespace {

constexpr int kColumns = 255;  // 255 x 257 vertices are 65,535
constexpr uint32_t kHeader = 6;
constexpr uint32_t kVertexChunk = kHeader + 2 + 12 * kStudioMeshSize;
constexpr uint32_t kFaceChunk = kHeader + 2 + 8 * kStudioMeshSize;
constexpr uint32_t kMeshChunk = kHeader + kVertexChunk + kFaceChunk;
constexpr uint32_t kObjectChunk = kHeader + 2 + kMeshChunk;

void Open(CByteWriter& out, uint16_t id, uint32_t length) {
  out.WriteU16(id);
  out.WriteU32(length);
}

void WriteObject(CByteWriter& out, int number) {
  Open(out, 0x4000, kObjectChunk);
  out.WriteU8(static_cast<uint8_t>('A' + number));
  out.WriteU8(0);
  Open(out, 0x4100, kMeshChunk);
  Open(out, 0x4110, kVertexChunk);
  out.WriteU16(kStudioMeshSize);
  for (int i = 0; i < kStudioMeshSize; ++i) {
    const auto x = static_cast<float>(i % kColumns);
    const auto y = static_cast<float>(i / kColumns);
    for (const float c : {x, y, std::sin(x / 9) * std::cos(y / 7) + static_cast<float>(number)})
      out.WriteU32(std::bit_cast<uint32_t>(c));
  }
  Open(out, 0x4120, kFaceChunk);
  out.WriteU16(kStudioMeshSize);
  for (int i = 0; i < kStudioMeshSize; ++i) {
    const int corner = i % (kStudioMeshSize - kColumns - 1);
    for (const int index : {corner, corner + 1, corner + kColumns, 7})
      out.WriteU16(static_cast<uint16_t>(index));
  }
}

}  // namespace

std::string StudioMeshes() {
  CByteWriter out;
  Open(out, 0x4D4D, 2 * kHeader + kStudioMeshes * kObjectChunk);
  Open(out, 0x3D3D, kHeader + kStudioMeshes * kObjectChunk);
  for (int i = 0; i < kStudioMeshes; ++i)
    WriteObject(out, i);
  return {out.Bytes().begin(), out.Bytes().end()};
}

std::string WaveMesh() {
  std::string text = "# A wavy cloth\no Cloth\n";
  for (int row = 0; row < kWaveSide; ++row) {
    for (int column = 0; column < kWaveSide; ++column) {
      text += Format("v %.6f %.6f %.6f\n", row / 10.0, column / 10.0, std::sin(row / 9.0) * std::cos(column / 7.0));
    }
  }
  for (int row = 0; row + 1 < kWaveSide; ++row) {
    for (int column = 0; column + 1 < kWaveSide; ++column) {
      const int corner = row * kWaveSide + column + 1;
      text += Format("f %d %d %d\nf %d %d %d\n", corner, corner + 1, corner + kWaveSide, corner + 1,
                     corner + kWaveSide + 1, corner + kWaveSide);
    }
  }
  return text;
}

std::string WaveMeshWithMaterials() {
  constexpr int kRowsOfMaterial = 20;
  std::string text = "mtllib cloth.mtl\n";
  for (int row = 0; row < kWaveSide; ++row) {
    for (int column = 0; column < kWaveSide; ++column) {
      text += Format("v %.6f %.6f %.6f\nvt %.6f %.6f\n", row / 10.0, column / 10.0,
                     std::sin(row / 9.0) * std::cos(column / 7.0), row / 1000.0, column / 1000.0);
    }
  }
  for (int row = 0; row + 1 < kWaveSide; ++row) {
    if (row % kRowsOfMaterial == 0) text += Format("g strip%d\nusemtl T_0x%s\n", row, row % 40 == 0 ? "18" : "29");
    for (int column = 0; column + 1 < kWaveSide; ++column) {
      const int a = row * kWaveSide + column + 1;
      const int b = a + kWaveSide;
      text += Format("f %d/%d %d/%d %d/%d\nf %d/%d %d/%d %d/%d\n", a, a, a + 1, a + 1, b, b, a + 1, a + 1, b + 1, b + 1,
                     b, b);
    }
  }
  return text;
}

}  // namespace veldra::bench
