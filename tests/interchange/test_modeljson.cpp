#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <nlohmann/json.hpp>

#include "interchange/modelreport.h"
#include "interchange/samplemodel.h"

namespace veldra {
namespace {

using nlohmann::json;
using testing::CModelBuilder;

TEST(ModelJson, HoldsTheWholeModel) {
  CModelBuilder b;
  FillSample(b);
  b.model.SetScaleWord(98304);
  b.model.AddGroup(EGroupKind::kFaces, "hood", std::vector<int32_t>{2, 0});
  const json expected = json::parse(R"({"scale": 98304, "bounds": [-7, 0, 0, 10, 10, 2000000000],
    "vertices": [[0, 0, 0], [10, 0, 0], [10, 10, 0], [0, 10, 0], [-7, 3, 2000000000]],
    "faces": [
      {"type": 41, "texture": 0, "corners": [2, 0, 1], "u": [1.0, 0.1, 0.0], "v": [0.25, 0.3333333333333333, 0.0],
       "storedNormal": [1, -2, 3], "storedMagic": -1, "normal": [0, 0, 65535], "magic": 0},
      {"type": 24, "texture": 1, "corners": [0, 1, 2, 3], "u": [0.0, 0.0, 0.0, 0.0], "v": [0.0, 0.0, 0.0, 0.0],
       "storedNormal": [0, 0, 65535], "storedMagic": 4779, "normal": [0, 0, 65535], "magic": 0},
      {"type": 25, "texture": null, "corners": [0, 3, 4], "u": [0.0, 0.0, 0.0], "v": [0.0, 0.0, 0.0],
       "storedNormal": [0, 0, 0], "storedMagic": 0, "normal": [65535, 0, 0], "magic": 0}],
    "textures": [{"name": "ROAD.RAW", "kind": "plain", "width": 64, "uses": 1},
      {"name": "FLAG", "kind": "animated", "width": 256, "uses": 1, "frames": ["F1.RAW", "F2.RAW"], "rate": 8.0}],
    "faceGroups": [{"name": "hood", "members": [2, 0]}], "vertexGroups": []})");
  const std::string text = ModelJson(b.model);
  EXPECT_EQ(json::parse(text), expected);
  EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 5 + 3 + 2 + 1 + 10);
  EXPECT_NE(text.find("\"u\":[1.0,0.1,0.0]"), std::string::npos) << text;
}

TEST(ModelJson, WhatJsonCannotExpress) {
  CModelBuilder b;
  b.Animated("FAHNE \xE4\xF6", {"A\"\\\x01.RAW"}, std::numeric_limits<double>::infinity());
  const json parsed = json::parse(ModelJson(b.model));
  EXPECT_EQ(parsed["faces"], json::array());
  EXPECT_EQ(parsed["textures"][0]["name"], "FAHNE \xC3\xA4\xC3\xB6");
  EXPECT_EQ(parsed["textures"][0]["frames"][0], "A\"\\\x01.RAW");
  EXPECT_EQ(parsed["textures"][0]["rate"], nullptr);
  EXPECT_EQ(parsed["bounds"], json::array({0, 0, 0, 0, 0, 0}));
}

}  // namespace
}  // namespace veldra
