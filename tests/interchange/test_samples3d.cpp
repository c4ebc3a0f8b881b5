#include <sstream>

#include "interchange/import3ds.h"
#include "interchange/importfixture.h"
#include "interchange/waveimport.h"
#include "interchange/waveparser.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {
namespace {

/// Meshes that other programs wrote, in a folder that the build may name: "counts.tsv" has for each its vertices and
/// its faces as written, or "-" where it is to be refused.
class Samples3d : public testing::CImportTest {
 protected:
  void SetUp() override {
    if (*VELDRA_MESH_SAMPLES == '\0') GTEST_SKIP() << "no folder is named in VELDRA_MESH_SAMPLES";
  }

  void Check(const std::string& name, const std::string& vertices, const std::string& faces) {
    SCOPED_TRACE(name);
    const std::string path = JoinPath(VELDRA_MESH_SAMPLES, name);
    const bool is_3ds = EqualNoCase(ExtensionPart(path), "3ds");
    const bool is_read = is_3ds ? ImportFrom3ds(model, path, Road(), context, &fault)
                                : ImportWavefront(model, {path, Road()}, {.scale = 0.01}, context, fault);
    ASSERT_EQ(is_read, vertices != "-") << fault.what;
    if (!is_read) {
      EXPECT_NE(fault.what, "");
      return;
    }
    EXPECT_EQ(Format("%d", model.VertexCount()), vertices);
    EXPECT_EQ(Format("%zu", is_3ds ? static_cast<size_t>(model.FaceCount()) : PolygonsOf(path)), faces);
    EXPECT_EQ(model.FaceCount() == 0, faces == "0");
    EXPECT_EQ(model.CheckInvariants(), "");
  }

  size_t PolygonsOf(const std::string& path) {
    const auto mesh = ReadWavefront(path, questions, fault);
    return mesh ? mesh->FaceCount() : 0;
  }
};

TEST_F(Samples3d, ImportWithTheirCounts) {
  const auto counts = ReadWholeFile(JoinPath(VELDRA_MESH_SAMPLES, "counts.tsv"));
  ASSERT_TRUE(counts);
  std::istringstream lines{std::string(counts->Text())};
  size_t checked = 0;
  for (std::string line; std::getline(lines, line);) {
    std::istringstream fields(line);
    std::string name;
    std::string vertices;
    std::string faces;
    if (line.starts_with('#') || !(fields >> name >> vertices >> faces)) continue;
    model.Clear();
    Check(name, vertices, faces);
    ++checked;
  }
  EXPECT_GT(checked, 0U);
}

}  // namespace
}  // namespace veldra
