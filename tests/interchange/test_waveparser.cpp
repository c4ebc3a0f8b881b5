#include "interchange/waveparser.h"

#include <gtest/gtest.h>

#include <bit>

#include "interchange/wavescanner.h"
#include "platform/text.h"

namespace veldra {
namespace {

std::optional<SWaveMesh> Parse(std::string_view text, SImportFault* fault = nullptr) {
  SImportFault ignored;
  // In a block of just its size, for the sanitizer.
  const std::vector<char> exact(text.begin(), text.end());
  return ParseWavefront({exact.data(), exact.size()}, nullptr, fault == nullptr ? ignored : *fault);
}

constexpr const char* kFour = "v 0 0 0\nv 9 0 0\nv 9 9 0\nv 0 9 0\n";

/// The mesh's faces as "0 1 2/0 1 2 3".
std::string FacesOf(const SWaveMesh& mesh) {
  std::string faces;
  for (size_t i = 0; i < mesh.FaceCount(); ++i) {
    faces += i == 0 ? "" : "/";
    for (const int32_t corner : mesh.Corners(i))
      faces += Format(" %d", corner);
  }
  return faces;
}

TEST(WaveParser, Faces) {
  const struct {
    std::string lines;
    const char* faces;
  } rows[] = {{"f 1 2 3", " 0 1 2"},
              {"f 1/1 2/2 3/3\nf 1//1 2//1 3//1\nf 1/1/1 2/2/1 3/3/1 4/3/1\n", " 0 1 2/ 0 1 2/ 0 1 2 3"},
              {"f -4 -3 -1", " 0 1 3"},
              {"l 1\nf 1 2 3\np 1 2\ns 1\n", " 0 1 2"},
              {"f\v1\v2\f3\r\n", " 0 1 2"},
              {"f 1 2 \\\n 3\\\r\n 4\nf 2 3 4", " 0 1 2 3/ 1 2 3"},
              {"# a folder\\\nf 1 2 3 # f 1 2 4 \\\nf 2 3 4 #", " 0 1 2/ 1 2 3"},
              {"l 1 2 \\\nf 1 2 3\nf 1 2 4", " 0 1 3"},
              {"  \tf 1 2 3\nfoo 1\nF 1 2 3\nfo 1 2 3\n\\\nf 1 2 4", " 0 1 2/ 0 1 3"},
              {"f 1 2 5\nv 1 1 1", " 0 1 4"},
              {"f 1 2 2 3\nf 1 1 2\nf 1 2\nf 1 2 3 1", " 0 1 2/ 0 1 2"},
              {"f 1 2 3 4 1 2 3 4 1 2 3 4", " 0 1 2 3"},
              {"f 1 2 1 3", " 0 1 2"},
              {"f", ""},
              {"f 1 2 3\ng", " 0 1 2"}};
  for (const auto& row : rows) {
    SImportFault fault;
    const auto mesh = Parse(kFour + row.lines, &fault);
    ASSERT_TRUE(mesh) << row.lines << fault.what;
    EXPECT_EQ(FacesOf(*mesh), row.faces) << row.lines;
  }
}

TEST(WaveParser, NumbersAreExact) {
  const std::string zeros(400, '0');
  const struct {
    std::string text;
    double value;
  } rows[] = {{"+1.", 1},
              {"-.5", -0.5},
              {"1e2", 100},
              {"3.1+e2", 310},
              {"123456789012345678901234567890", 123456789012345678901234567890.0},
              {"9007199254740993", 9007199254740992.0},
              {"1.7976931348623157e308", 1.7976931348623157e308},
              {"4.9e-324", 4.9e-324},
              {"1e-400", 0},
              {"0." + zeros + "5", 0},
              {"1" + zeros + "e-400", 1},
              {"0." + zeros + "25e401", 2.5},
              {"2.2250738585072011e-308", 2.2250738585072011e-308},
              {"3.1-E1", 0.31}};
  for (const auto& row : rows) {
    const auto mesh = Parse("v 7 " + row.text + " 0");
    ASSERT_TRUE(mesh) << row.text;
    EXPECT_EQ(std::bit_cast<uint64_t>(mesh->vertices[0][1]), std::bit_cast<uint64_t>(row.value)) << row.text;
  }
}

TEST(WaveParser, RefusesWithTheLine) {
  const std::string four = kFour;
  const struct {
    std::string text;
    const char* what;
  } rows[] = {{"", "it has no vertices"},
              {"\n\nv 1 2", "line 3: a vertex needs three coordinates"},
              {"\r\rv 1 2\r", "line 3: a vertex needs three coordinates"},
              {"v 1 2 \\\n\\\n x", "line 3: \"x\" is not a number"},
              {"v 0 -inf 0", "line 1: \"-inf\" is not a number"},
              {"v 0 0 1e400", "line 1: 1e400 is too large"},
              {"v 0 0 1,5", "line 1: \"1,5\" is not a number"},
              {"v 0 0 1e", "line 1: \"1e\" is not a number"},
              {"v 0 0 " + std::string(1000000, '9'), "line 1: 9999999999999999999999999999999999999999 is too large"},
              {four + "f 0 1 2", "line 5: a corner names vertex 0, there are 4 so far"},
              {four + "f 1 2 -5", "line 5: a corner names vertex -5, there are 4 so far"},
              {four + "\nf 1 2 5\nf 1 2 9\n#", "line 7: a corner names vertex 9, there are 4"},
              {four + "f 1 2 99999999999999999999", "line 5: a corner names vertex 1099511627776, there are 4 so far"},
              {four + "f 1 2 x", "line 5: \"x\" is not a corner of a face"},
              {four + "f 1 2 3/1/1/1", "line 5: \"/1\" is not part of a corner"},
              {four + std::string("f 1 2 3\0", 8), "line 5: \""}};
  for (const auto& row : rows) {
    SImportFault fault;
    EXPECT_FALSE(Parse(row.text, &fault)) << row.text.substr(0, 100);
    EXPECT_EQ(fault.what.rfind(row.what, 0), 0U) << fault.what;
  }
}

TEST(WaveParser, EndlessLinesEnd) {
  std::string continued = "v 1 2 3";
  std::string corners = std::string(kFour) + "f 1 2 3";
  for (int i = 0; i < 300000; ++i) {
    continued += "\\\n";
    corners += " 4 1 2 3";
  }
  const auto point = Parse(continued);
  ASSERT_TRUE(point);
  EXPECT_EQ(point->vertices.size(), 1U);
  const auto face = Parse(corners);
  ASSERT_TRUE(face);
  EXPECT_EQ(FacesOf(*face), " 0 1 2 3");
}

TEST(WaveParser, TextureCoordinatesThatAreMissingSpoilNothing) {
  const auto mesh =
      Parse(std::string(kFour) + "f 1 2 3\nvt 0.25 0.5\nvt nan 1\nf 1/1 2/-1 3\nf 1/9 2/0 3/1\nf 4/1 2/1 3/1\n");
  ASSERT_TRUE(mesh);
  EXPECT_EQ(mesh->corner_coords, (std::vector<int32_t>{-1, -1, -1, 0, 1, -1, -1, -1, 0, 0, 0, 0}));
  EXPECT_EQ(mesh->coords[0], (STexCoord{0.25, 0.5}));
  EXPECT_EQ(mesh->remarks.Text(),
            "line 7: a texture coordinate that is not a number\n"
            "line 9: a corner names texture coordinate 9, there are 2\n");
  EXPECT_FALSE(Parse(std::string(kFour) + "f 1/-1 2 3")) << "back beyond the first";
}

}  // namespace
}  // namespace veldra
