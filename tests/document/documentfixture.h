#pragma once

#include <gtest/gtest.h>

#include <string>

#include "document/tarn2doc.h"
#include "settings/settings.h"
#include "support/modelparts.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "textures/texturestore.h"

namespace veldra::testing {

/// A document's surroundings: all save checks on, textures and models in a folder of the test.
class CDocumentTest : public ::testing::Test {
 protected:
  CDocumentTest() {
    settings.not_centered_msg = settings.texture_size_msg = settings.unused_verts_msg = 1;
    settings.save_to_def_dir = 0;
    settings.scale_factor = 0.0;
    settings.art_dir = folder.Path();
    settings.bin_dir = folder.File("no-such-folder");
  }

  SDocumentServices Services() { return {questions, textures, settings}; }

  CBinTexture& AddTexture(CBinModel& model, const std::string& name, int width) {
    const STextureImage* const image = textures.GetBlankTexture(folder.File(name), width);
    return model.AddTexture(std::make_unique<CBinTexture>(model, name, image));
  }

  /// A triangle whose Y runs from LOW to HIGH.
  static CBinFace& AddTriangle(CBinModel& model, int32_t low, int32_t high, CBinTexture* texture,
                               uint32_t type = kFaceTextured) {
    const int32_t first = model.VertexCount();
    for (const SPoint& corner : {SPoint{0, low, 0}, SPoint{10, low, 0}, SPoint{10, high, 0}})
      model.AddVertex(corner);
    return MakeFace(model, {first, first + 1, first + 2}, texture, type);
  }

  /// What no check complains about: one centred triangle with a texture of 64 texels.
  void FillGood(CBinModel& model) { AddTriangle(model, -10, 10, &AddTexture(model, "GOOD.RAW", 64)); }

  static uint32_t WordAt(const std::string& path, size_t offset) {
    const std::string bytes = ReadTestFile(path);
    if (offset + 4 > bytes.size()) return 0xDEADBEEF;
    uint32_t word = 0;
    for (size_t i = 0; i < 4; ++i)
      word |= static_cast<uint32_t>(static_cast<uint8_t>(bytes[offset + i])) << (8 * i);
    return word;
  }
  static uint32_t ScaleWordAt(const std::string& path) { return WordAt(path, 4); }
  static int32_t VertexCountAt(const std::string& path) { return static_cast<int32_t>(WordAt(path, 16)); }
  /// The Y of vertex 0.
  static int32_t FirstYAt(const std::string& path) { return static_cast<int32_t>(WordAt(path, 24)); }
  /// The type of the only face in a file of three vertices and one plain texture selection.
  static uint32_t FaceTypeAt(const std::string& path) { return WordAt(path, 20 + 3 * 12 + 24); }

  void ExpectOnlyMessage(const std::string& text) { EXPECT_EQ(questions.TakeMessageTexts(), std::vector{text}); }
  void ExpectNoMessages() { EXPECT_EQ(questions.TakeMessageTexts(), std::vector<std::string>{}); }

  CTempFolder folder;
  CScriptedQuestions questions;
  CTextureStore textures{questions, GreyRamp()};
  CSettings settings;
};

}  // namespace veldra::testing
