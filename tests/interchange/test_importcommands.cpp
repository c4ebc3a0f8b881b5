#include "interchange/importcommands.h"

#include "interchange/importfixture.h"
#include "platform/png.h"

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
    services.ask_jobs = [](std::vector<SMeshJob>&) { return true; };
  }

  SImportServices services{context, "models", {}};
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

TEST_F(ImportCommands, WavefrontFilesAreAskedForTogether) {
  const std::vector<std::string> paths = {folder.Write("1.obj", "v 1 2 3"), folder.Write("2.obj", "v"),
                                          folder.Write("3.obj", "v 1 2 3"), folder.Write("4.obj", "v 1 2 3")};
  const char* const title = "Please select a texture for Wavefront model";
  questions.OnOpenFiles("Import WaveFront Model", SOpenFiles{paths})
      .OnOpenFile(title, Road())
      .OnOpenFile(title, std::nullopt)
      .OnOpenFile(title, Road());
  services.ask_jobs = [&](std::vector<SMeshJob>& jobs) {
    EXPECT_EQ(jobs.size(), 2U);
    EXPECT_EQ(jobs[0].path, paths[0]);
    jobs[0].is_wanted = false;
    jobs[1].options.scale = 2;
    return true;
  };
  RunImportWavefront(services);
  ASSERT_EQ(documents.size(), 1U);
  EXPECT_EQ(documents[0]->Vertex(0).Position(), (SPoint{2, 4, 6}));
  ASSERT_EQ(questions.Messages().size(), 1U);
  EXPECT_EQ(questions.Messages()[0].details, "line 1: a vertex needs three coordinates");
}

TEST_F(ImportCommands, PicturesOfSeveralFilesBecomeDifferentTextures) {
  std::vector<std::string> paths;
  for (const std::string name : {"a", "b", "c"}) {
    const uint8_t value = name == "b" ? 201 : 200;
    folder.Write(name + "/m.mtl", "newmtl m\nmap_Kd dirt.png\nnewmtl n\nmap_Kd dirt.png\n");
    paths.push_back(folder.Write(name + "/x.obj", "mtllib m.mtl\nv 0 0 0\nv 9 0 0\nv 9 9 0\nusemtl m\nf 1 2 3\n"));
    ASSERT_TRUE(WritePng(folder.File(name + "/dirt.png"), {64, 64, std::vector<uint8_t>(64 * 64 * 4, value)}));
  }
  questions.OnOpenFiles("Import Meshes with Materials", SOpenFiles{paths});
  RunImportMeshes(services);
  ASSERT_EQ(documents.size(), 3U);
  std::string names;
  for (const auto& document : documents)
    names += document->Face(0).Texture()->Name() + " ";
  EXPECT_EQ(names, "DIRT.RAW DIRT1.RAW DIRT.RAW ") << "the same picture is the same texture";
  EXPECT_EQ(ReadTestFile(folder.File("art/DIRT.RAW")).size(), 4096U);
  EXPECT_EQ(ReadTestFile(folder.File("art/DIRT1.ACT")).substr(0, 3), "\xC9\xC9\xC9");
  EXPECT_TRUE(questions.Messages().empty());
}

}  // namespace
}  // namespace veldra::testing
