#include "interchange/modelreport.h"

#include <gtest/gtest.h>

#include <limits>

#include "interchange/samplemodel.h"

namespace veldra {
namespace {

using testing::CModelBuilder;

constexpr const char* kSampleInformation =
    "MODEL INFORMATION:\n  Number of Vertices:\t5\n  Number of Faces:\t\t3\n  Number of Textures:\t2\n"
    "  Size X: 17 units\n  Size Y: 10 units\n  Size Z: 2000000000 units\n";

TEST(ModelReport, InformationOfModelFaceAndVertex) {
  CModelBuilder b;
  FillSample(b);
  const std::string model = kSampleInformation;
  const std::string quad =
      "\nINFORMATION FOR FACE# 1\n  Vertices: (0,1,2,3)\n  Normal vector (calculated by Veldra): (0,0,65535)\n"
      "  Normal vector (as loaded): (0,0,65535)\n  Magic value (calculated by Veldra): 0\n"
      "  Magic value (as loaded): 4779\n  Texture: FLAG\tSize: 256\n";
  const std::string vertex = "\nINFORMATION FOR VERTEX# 4\n   Position: -7,3,2000000000\n";
  EXPECT_EQ(ModelInformation(b.model, nullptr, nullptr), model);
  EXPECT_EQ(ModelInformation(b.model, &b.model.Face(1), nullptr), model + quad);
  EXPECT_EQ(ModelInformation(b.model, nullptr, &b.model.Vertex(4)), model + vertex);
  EXPECT_EQ(ModelInformation(b.model, &b.model.Face(1), &b.model.Vertex(4)), model + quad + vertex);
  const std::string untextured = ModelInformation(b.model, &b.model.Face(2), nullptr);
  EXPECT_NE(untextured.find("Vertices: (0,3,4)\n"), std::string::npos);
  EXPECT_NE(untextured.find("  Texture: \tSize: 0\n"), std::string::npos);
}

TEST(ModelReport, SizesBeyond31Bits) {
  CModelBuilder b;
  b.Vertices({{std::numeric_limits<int32_t>::min(), 0, 0}, {std::numeric_limits<int32_t>::max(), 0, -5}});
  const std::string text = ModelInformation(b.model, nullptr, nullptr);
  EXPECT_NE(text.find("  Size X: 4294967295 units\n  Size Y: 0 units\n  Size Z: 5 units\n"), std::string::npos) << text;
}

TEST(ModelReport, DumpShowsTheHalvesOfU) {
  CModelBuilder b;
  FillSample(b);
  // 1.0 is 3FF00000 00000000, 0.1 is 3FB99999 9999999A. The last face's normal is (20000000000, 0, 70) scaled.
  EXPECT_EQ(ModelDump(b.model, "truck.bin"),
            "Model Name - truck.bin\nNumber of Vertices - 5\n0,0,0\n10,0,0\n10,10,0\n0,10,0\n-7,3,2000000000\n"
            "\nNumber of Faces - 3\n"
            "Texture Name - ROAD.RAW\nFace Type - 0x29\nNormal Vector - 1,-2,3\nCalculated Normal Vector - 0,0,65535\n"
            "Magic Number - -1,0xFFFFFFFF\nNumber of Vertices - 3\n"
            "V0: 2(0,1072693248)\nV1: 0(-1717986918,1069128089)\nV2: 1(0,0)\n"
            "Texture Name - ANIM:FLAG\nFace Type - 0x18\nNormal Vector - 0,0,65535\n"
            "Calculated Normal Vector - 0,0,65535\nMagic Number - 4779,0x12AB\nNumber of Vertices - 4\n"
            "V0: 0(0,0)\nV1: 1(0,0)\nV2: 2(0,0)\nV3: 3(0,0)\n"
            "Texture Name - \nFace Type - 0x19\nNormal Vector - 0,0,0\nCalculated Normal Vector - 65535,0,0\n"
            "Magic Number - 0,0x0\nNumber of Vertices - 3\nV0: 0(0,0)\nV1: 3(0,0)\nV2: 4(0,0)\n");
}

}  // namespace
}  // namespace veldra
