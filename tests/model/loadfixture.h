#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <memory>
#include <string>
#include <vector>

#include "model/binbytes.h"
#include "model/binfile.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"

namespace veldra::testing {

inline constexpr uint32_t kOne = 0xFFFFFF;  ///< u or v of 1 in a file of this kind

/// Loads models beside a texture directory with ROAD, W128, W256 and W512.RAW (64, 128, 256 and 512 wide).
class CLoadTest : public ::testing::Test {
 protected:
  CLoadTest() {
    art.Write("ROAD.RAW", std::string(64 * 64, '\1'));
    art.Write("W128.RAW", std::string(128 * 128, '\1'));
    art.Write("W256.RAW", std::string(256 * 256, '\1'));
    art.Write("W512.RAW", std::string(512 * 512, '\1'));
  }

  /// From a block of exactly the file's size, so that the sanitizer sees one byte too far.
  bool Load(const std::vector<uint8_t>& bytes, std::string_view info = "") {
    const auto block = std::make_unique<uint8_t[]>(bytes.size());
    std::copy(bytes.begin(), bytes.end(), block.get());
    diagnosis = {};
    const bool loaded = LoadBin(model, {block.get(), bytes.size()}, info, Context(), &diagnosis);
    EXPECT_EQ(model.CheckInvariants(), "");
    EXPECT_FALSE(model.IsBusy());
    if (!loaded) {
      EXPECT_TRUE(model.VertexCount() == 0 && model.FaceCount() == 0 && model.TextureCount() == 0 &&
                  model.FaceGroups().empty() && model.Bounds() == SBounds{});
      EXPECT_FALSE(diagnosis.Empty());
    }
    return loaded;
  }

  SLoadContext Context() { return {finder, questions, ask_texture_size}; }

  std::vector<uint8_t> Save(const SSaveOptions& options = {}) const {
    CByteWriter out;
    SaveBin(model, options, out);
    return {out.Bytes().begin(), out.Bytes().end()};
  }

  std::vector<int32_t> Corners(int32_t face) const { return CornersOf(model.Face(face)); }

  CTempFolder art;
  CScriptedQuestions questions;
  CTextureStore store{questions, GreyRamp()};
  CTextureFinder finder{store, questions, art.Path()};
  bool ask_texture_size = true;
  CBinModel model;
  SDiagnosis diagnosis;
};

}  // namespace veldra::testing
