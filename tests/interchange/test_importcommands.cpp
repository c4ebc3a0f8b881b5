#include "interchange/importcommands.h"

#include "interchange/importfixture.h"

namespace veldra::testing {
namespace {

/// The documents that commands open.
class ImportCommands : public CImportTest {
 protected:
  ImportCommands() {
    services.fill_new_document = [this](const std::string& title, const std::function<bool(CBinModel&)>& fill) {
      titles.push_back(title);
      auto made = std::make_unique<CBinModel>();
      if (fill(*made)) documents.push_back(std::move(made));
    };
    services.ask_wave_options = [this](const SWaveMesh&, const std::string&) { return options; };
  }

  SImportServices services{context, "models", {}};
  std::optional<SWaveOptions> options = SWaveOptions{};
  std::vector<std::string> titles;
  std::vector<std::unique_ptr<CBinModel>> documents;
};

TEST_F(ImportCommands, EachStudioFileIsImportedIntoItsOwnDocument) {
  const Bytes one = StudioFile({Mesh({VertexList({0, 0, 0, 1, 0, 0, 0, 1, 0}), FaceList({0, 1, 2, 0})})});
  const Bytes two = StudioFile({Mesh({VertexList({0, 0, 0})})});
  const std::vector<std::string> paths = {folder.Write("1.3ds", one), folder.Write("2.3ds", two),
                                          folder.Write("3.3ds", "damaged"), folder.Write("4.3ds", two)};
  const char* const title = "Please select a default texture for the 3ds model";
  questions.OnOpenFiles("Import 3ds File", SOpenFiles{paths})
      .OnOpenFile(title, Road())
      .OnOpenFile(title, std::nullopt)
      .OnOpenFile(title, Road());
  RunImport3ds(services);
  ASSERT_EQ(documents.size(), 2U);
  EXPECT_EQ(documents[0]->FaceCount(), 1);
  EXPECT_EQ(documents[1]->VertexCount(), 1);
  EXPECT_EQ(titles, (std::vector<std::string>{"1.3ds", "4.3ds"}));
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_EQ(questions.Messages()[0].text, "\"" + paths[2] + "\" could not be imported.");
  EXPECT_EQ(questions.Messages()[0].details, "it begins with 0x6164, a 3ds file with 0x4D4D");
}

TEST_F(ImportCommands, WavefrontFilesAreAskedForTheirOptions) {
  const std::vector<std::string> paths = {folder.Write("1.obj", "v 1 2 3"), folder.Write("2.obj", "v"),
                                          folder.Write("3.obj", "v 1 2 3")};
  const char* const title = "Please select a texture for Wavefront model";
  questions.OnOpenFiles("Import WaveFront Model", SOpenFiles{paths})
      .OnOpenFile(title, Road())
      .OnOpenFile(title, Road());
  int asked = 0;
  services.ask_wave_options = [&](const SWaveMesh& mesh, const std::string& path) -> std::optional<SWaveOptions> {
    EXPECT_EQ(mesh.vertices.size(), 1U);
    EXPECT_EQ(path, paths[asked == 0 ? 0 : 2]);
    if (asked++ == 0) return std::nullopt;
    return SWaveOptions{.scale = 2};
  };
  RunImportWavefront(services);
  ASSERT_EQ(documents.size(), 1U);
  EXPECT_EQ(documents[0]->Vertex(0).Position(), (SPoint{2, 4, 6}));
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_EQ(questions.Messages()[0].details, "line 1: a vertex needs three coordinates");
}

}  // namespace
}  // namespace veldra::testing
