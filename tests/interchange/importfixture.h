#pragma once

#include <gtest/gtest.h>

#include <bit>
#include <string>
#include <vector>

#include "interchange/importmodel.h"
#include "platform/bytes.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra::testing {

/// A folder with two textures in art/, a model to import into, and the way to the user.
class CImportTest : public ::testing::Test {
 protected:
  CImportTest() {
    folder.Write("art/Road.raw", std::string(4096, 'x'));
    folder.Write("art/GRASS.RAW", std::string(16384, 'x'));
  }
  std::string Road() const { return folder.File("art/Road.raw"); }
  std::vector<std::vector<int32_t>> Polygons() const { return PolygonsOf(model); }
  std::vector<SPoint> Positions() const { return PositionsOf(model); }

  CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore textures{questions, GreyRamp()};
  SImportContext context{textures, questions, folder.File("art"), kFaceShiny};
  CBinModel model;
  SImportFault fault;
};

using Bytes = std::vector<uint8_t>;

inline Bytes Join(const std::vector<Bytes>& parts) {
  Bytes joined;
  for (const Bytes& part : parts)
    joined.insert(joined.end(), part.begin(), part.end());
  return joined;
}

/// A 3ds chunk; its length is MORE than it should be.
inline Bytes Chunk(uint16_t id, const Bytes& data, int more = 0) {
  CByteWriter out;
  out.WriteU16(id);
  out.WriteU32(static_cast<uint32_t>(6 + static_cast<int>(data.size()) + more));
  out.WriteBytes(data);
  return {out.Bytes().begin(), out.Bytes().end()};
}

inline Bytes VertexList(const std::vector<float>& coordinates) {
  CByteWriter out;
  out.WriteU16(static_cast<uint16_t>(coordinates.size() / 3));
  for (const float c : coordinates)
    out.WriteU32(std::bit_cast<uint32_t>(c));
  return Chunk(0x4110, {out.Bytes().begin(), out.Bytes().end()});
}

/// CORNERS: a, b, c, flags of each face. BEHIND: its sub-chunks.
inline Bytes FaceList(const std::vector<uint16_t>& corners, const Bytes& behind = {}) {
  CByteWriter out;
  out.WriteU16(static_cast<uint16_t>(corners.size() / 4));
  for (const uint16_t c : corners)
    out.WriteU16(c);
  out.WriteBytes(behind);
  return Chunk(0x4120, {out.Bytes().begin(), out.Bytes().end()});
}

inline Bytes Object(const std::string& name, const std::vector<Bytes>& children) {
  Bytes data(name.begin(), name.end());
  data.push_back(0);
  return Chunk(0x4000, Join({data, Join(children)}));
}

inline Bytes Mesh(const std::vector<Bytes>& children) {
  return Object("Box", {Chunk(0x4100, Join(children))});
}

inline Bytes StudioFile(const std::vector<Bytes>& editor, const std::vector<Bytes>& before = {}) {
  return Chunk(0x4D4D, Join({Join(before), Chunk(0x3D3D, Join(editor))}));
}

inline std::string TextOf(const Bytes& bytes) {
  return {bytes.begin(), bytes.end()};
}

}  // namespace veldra::testing
