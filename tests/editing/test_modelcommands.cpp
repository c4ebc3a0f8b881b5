#include <cstdlib>
#include <functional>

#include "document/documentfixture.h"
#include "document/exports.h"
#include "editing/modelcommands.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

using EKind = SScope::EKind;
using EPivot = SPivotInput::EKind;

class CModelCommandsTest : public CDocumentTest {
 protected:
  /// A triangle at (0, -10, 0), (10, -10, 0), (10, 10, 0) with GOOD.RAW, and vertex 3 that no face uses.
  void Fill(CTarnDoc& document) {
    FillGood(document.Model());
    document.Model().AddVertex({4, 0, 8});
    document.SetModified(false);
  }
  std::string WriteTexture(const std::string& name) { return folder.Write(name, std::string(64 * 64, '\1')); }
};

TEST_F(CModelCommandsTest, CommandsMoveWhatTheirScopeSaysAndNothingWhenReadOnly) {
  const std::vector<SPoint> all = {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}, {4, 0, 8}};
  const struct {
    const char* name;
    std::function<bool(CTarnDoc&)> run;
    std::vector<SPoint> expected;
  } cases[] = {
      {"resize",
       [](CTarnDoc& d) { return Resize(d, {.x = 0.5, .y = 2.0}); },
       {{0, -20, 0}, {5, -20, 0}, {5, 20, 0}, {2, 0, 8}}},
      {"translate selected vertices",
       [](CTarnDoc& d) { return Translate(d, {.x = 1, .z = -2, .scope = EKind::kSelectedVertices}); },
       {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}, {5, 0, 6}}},
      {"rotate selected faces",
       [](CTarnDoc& d) { return Rotate(d, {.angle = 90, .axis = EAxis::kZ, .scope = ScopeOfRotateTarget(2)}); },
       {{10, 0, 0}, {10, 10, 0}, {-10, 10, 0}, {4, 0, 8}}},
      {"rotate selected vertices by radians",
       [](CTarnDoc& d) {
         return Rotate(d, {.angle = 3.14159265358979, .radians = true, .scope = ScopeOfRotateTarget(1)});
       },
       {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}, {-4, 0, -8}}},
      {"rotate about the middle of the selection",
       [](CTarnDoc& d) {
         return Rotate(d,
                       {.angle = 180, .axis = EAxis::kY, .scope = EKind::kSelectedFaces, .pivot = {EPivot::kMiddle}});
       },
       {{10, -10, 0}, {0, -10, 0}, {0, 10, 0}, {4, 0, 8}}},
      {"resize about a vertex",
       [](CTarnDoc& d) {
         return Resize(d, {.x = 2, .y = 0.5, .pivot = {EPivot::kVertex, 1}});
       },
       {{-10, -10, 0}, {10, -10, 0}, {10, 0, 0}, {-2, -5, 8}}},
      {"mirror about a point between two units",
       [](CTarnDoc& d) {
         return Mirror(d, {.x = true, .pivot = {EPivot::kPoint, -1, {2.5, 7, 7}}});
       },
       {{5, -10, 0}, {-5, -10, 0}, {-5, 10, 0}, {1, 0, 8}}},
      {"mirror two axes",
       [](CTarnDoc& d) { return Mirror(d, {.x = true, .z = true}); },
       {{0, -10, 0}, {-10, -10, 0}, {-10, 10, 0}, {-4, 0, -8}}},
      {"center",
       [](CTarnDoc& d) { return d.CenterAll(), true; },
       {{-5, -10, -4}, {5, -10, -4}, {5, 10, -4}, {-1, 0, 4}}},
      {"merge", [](CTarnDoc& d) { return MergeCloseVertices(d, {10}) == 1; }, {{0, -10, 0}, {10, 10, 0}, {4, 0, 8}}},
      {"delete unused", [](CTarnDoc& d) { return d.DeleteAllUnused() == 1; }, {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}}},
      {"add vertex",
       [](CTarnDoc& d) {
         return AddVertex(d, {{7, 8, 9}});
       },
       {{0, -10, 0}, {10, -10, 0}, {10, 10, 0}, {4, 0, 8}, {7, 8, 9}}},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.name);
    CTarnDoc document(Services());
    Fill(document);
    const int32_t face[] = {0};
    const int32_t vertex[] = {3};
    document.Model().Select(EGroupKind::kFaces, face, true);
    document.Model().Select(EGroupKind::kVertices, vertex, true);
    document.SetReadOnly(true);
    c.run(document);
    EXPECT_EQ(PositionsOf(document.Model()), all);
    EXPECT_FALSE(document.IsModified());
    document.SetReadOnly(false);
    EXPECT_TRUE(c.run(document));
    EXPECT_EQ(PositionsOf(document.Model()), c.expected);
    EXPECT_TRUE(document.IsModified());
    EXPECT_EQ(document.Model().CheckInvariants(), "");
  }
  ExpectNoMessages();
}

TEST_F(CModelCommandsTest, NothingIsRecordedToBeUndone) {
  CTarnDoc document(Services());
  Fill(document);
  ASSERT_TRUE(AddVertex(document, {{7, 8, 9}}));
  document.Undo();
  EXPECT_EQ(document.Model().VertexCount(), 5);
  document.Redo();
}

TEST_F(CModelCommandsTest, RefusalsAreToldAndChangeNothing) {
  const struct {
    std::function<bool(CTarnDoc&)> run;
    const char* text;
  } cases[] = {
      {[](CTarnDoc& d) { return Resize(d, {.x = 1e9}); }, "Vertex 1 would get x = 1e+10"},
      {[](CTarnDoc& d) { return Mirror(d, {.x = true, .scope = EKind::kSelectedFaces}); }, "No face is selected."},
      {[](CTarnDoc& d) { return MergeCloseVertices(d, {-1}) >= 0; }, "must not be negative"},
      {[](CTarnDoc& d) {
         return AddFace(d, {.corners = {0, 1, 4, -1}});
       },
       "no vertex 4: the model has 4"},
      {[](CTarnDoc& d) {
         return AddFace(d, {.corners = {0, 1, 2, 1}});
       },
       "Vertex 1 is named twice"},
      {[](CTarnDoc& d) { return AddFace(d, {.type = 0x12}); }, "0x12 is no face type"},
      {[](CTarnDoc& d) { return AddFace(d, {.texture = -1}); }, "type 0x18 needs a texture"},
      {[](CTarnDoc& d) { return AddFace(d, {.texture = 1}); }, "no texture 1: the model has 1"},
      {[](CTarnDoc& d) { return ReplaceTexture(d, {.path = "/no/such.raw"}); }, "no file \"/no/such.raw\""},
      {[](CTarnDoc& d) { return ReplaceTexture(d, {.path = "/no/abcdefghi.raw"}); }, "too long for a model file"},
      {[](CTarnDoc& d) { return LoadTexture(d, "MUCHTOOLONG.RAW") != nullptr; }, "12 characters fit"},
      {[](CTarnDoc& d) { return InsertBinFile(d, "/no/such.bin"); }, "\"/no/such.bin\" could not be opened"},
  };
  for (const auto& c : cases) {
    SCOPED_TRACE(c.text);
    CTarnDoc document(Services());
    Fill(document);
    EXPECT_FALSE(c.run(document));
    const auto texts = questions.TakeMessageTexts();
    ASSERT_EQ(texts.size(), 1U);
    EXPECT_NE(texts[0].find(c.text), std::string::npos) << texts[0];
    EXPECT_FALSE(document.IsModified());
  }
  CTarnDoc bare(Services());
  EXPECT_FALSE(AddFace(bare, {}));
  ExpectOnlyMessage("No texture loaded!\nLoad texture first!");
  AddTexture(bare.Model(), "A.RAW", 64);
  bare.Model().AddVertex({0, 0, 0});
  bare.Model().AddVertex({1, 0, 0});
  EXPECT_FALSE(CanAddFace(bare)) << "two vertices make no face";
}

TEST_F(CModelCommandsTest, AddedFaceShowsTheWholeTextureAndHasItsNormal) {
  CTarnDoc document(Services());
  Fill(document);
  ASSERT_TRUE(AddFace(document, {.corners = {2, 1, 0, -1}, .type = kFaceShiny}));
  const CBinFace& face = document.Model().Face(1);
  EXPECT_EQ(face.TexCoord(2), (STexCoord{1.0, 1.0}));
  EXPECT_EQ(std::abs(face.StoredNormal().z), 65535);
  EXPECT_TRUE(AddFace(document, {.type = kFaceUntextured, .texture = -1}));
  EXPECT_EQ(document.Model().CheckInvariants(), "");
}

TEST_F(CModelCommandsTest, MergeStoppedByTheUserLeavesTheModel) {
  CTarnDoc document(Services());
  Fill(document);
  questions.CancelWorkAfter(0);
  EXPECT_EQ(MergeCloseVertices(document, {1000}), -1);
  EXPECT_EQ(document.Model().VertexCount(), 4);
  EXPECT_FALSE(document.IsModified());
}

TEST_F(CModelCommandsTest, InsertedModelComesBehindTheOwn) {
  const std::string path = folder.File("other.bin");
  WriteTexture("GOOD.RAW");
  CTarnDoc document(Services());
  Fill(document);
  ASSERT_TRUE(document.SaveMTM(path));
  questions.OnOpenFile("Insert BIN File", std::nullopt).OnOpenFile("Insert BIN File", path);
  InsertBin(document);
  EXPECT_FALSE(document.IsModified());
  InsertBin(document);
  EXPECT_EQ(document.Model().VertexCount(), 8);
  EXPECT_EQ(document.Model().Face(1).Corner(0)->Index(), 4);
  EXPECT_TRUE(document.IsModified());
  questions.CancelWorkAfter(0);
  EXPECT_FALSE(InsertBinFile(document, path)) << "stopped";
  EXPECT_EQ(document.Model().VertexCount(), 8);
  ExpectNoMessages();
}

TEST_F(CModelCommandsTest, ReplacedTextureHandsItsFacesOn) {
  CTarnDoc document(Services());
  Fill(document);
  CBinModel& model = document.Model();
  CBinTexture* const loaded = LoadTexture(document, WriteTexture("other.raw"));
  ASSERT_NE(loaded, nullptr);
  EXPECT_EQ(loaded->Name(), "OTHER.RAW");
  EXPECT_EQ(LoadTexture(document, folder.File("other.raw")), loaded) << "once a name";
  ASSERT_TRUE(ReplaceTexture(document, {0, folder.File("other.raw")}));
  EXPECT_EQ(model.TextureCount(), 1);
  EXPECT_EQ(model.Face(0).Texture(), loaded);

  const std::string same_name = WriteTexture("elsewhere/OTHER.RAW");
  EXPECT_EQ(LoadTexture(document, same_name), nullptr);
  EXPECT_EQ(questions.TakeMessageTexts().size(), 1U);
  ASSERT_TRUE(ReplaceTexture(document, {0, same_name}));
  EXPECT_EQ(model.TextureCount(), 1);
  EXPECT_EQ(model.Face(0).Texture()->Image()->path, same_name);
  document.SetModified(false);
  EXPECT_TRUE(ReplaceTexture(document, {0, same_name}));
  EXPECT_FALSE(document.IsModified()) << "it is that one already";
  EXPECT_EQ(model.CheckInvariants(), "");
}

TEST_F(CModelCommandsTest, ExportsAskWhereToAndReportFailure) {
  CTarnDoc document(Services());
  Fill(document);
  questions.OnSaveFile("Save Texture File", SSavePath{folder.File("m.lst"), 0});
  SaveTextureList(document);
  EXPECT_EQ(ReadTestFile(folder.File("m.lst")), "GOOD.RAW\n");
  questions.OnSaveFile("Export Wavefront File", std::nullopt)
      .OnSaveFile("Export Wavefront File", SSavePath{folder.File("m.obj"), 0});
  ExportWavefront(document);
  ExportWavefront(document);
  EXPECT_NE(ReadTestFile(folder.File("m.obj")).find("f 1 2 3\n"), std::string::npos);
  folder.Write("m.mtl", "somebody's");
  for (const EAnswer answer : {EAnswer::kNo, EAnswer::kYes}) {
    questions.OnSaveFile("Export Wavefront File", SSavePath{folder.File("m.obj"), 2})
        .OnYesNo("Would you like to replace them?", answer);
    ExportWavefront(document);
    EXPECT_EQ(ReadTestFile(folder.File("m.mtl")) == "somebody's", answer == EAnswer::kNo);
  }
  EXPECT_NE(ReadTestFile(folder.File("m.obj")).find("# Scale "), std::string::npos);
  const std::string nowhere = folder.File("no-such-folder/m.obj");
  questions.OnSaveFile("Export Wavefront File", SSavePath{nowhere, 0});
  ExportWavefront(document);
  ExpectOnlyMessage("\"" + nowhere + "\" could not be written.");
  EXPECT_FALSE(document.IsModified());
}

TEST_F(CModelCommandsTest, PreviewIsWhatTheCommandDoes) {
  const auto check = [&](const auto& input, const auto& run) {
    CTarnDoc document(Services());
    Fill(document);
    const int32_t vertex[] = {1, 3};
    document.Model().Select(EGroupKind::kVertices, vertex, true);
    const auto preview = ResultingBounds(document.Model(), SelectionOf(document.Model(), input.scope), input);
    const bool done = run(document, input);
    EXPECT_EQ(preview.has_value(), done);
    if (done) {
      EXPECT_EQ(*preview, document.Model().Bounds());
    }
  };
  for (const EKind scope : {EKind::kAll, EKind::kSelectedVertices}) {
    for (const double factor : {0.37, -3.0, 1e10})
      check(SResizeInput{factor, 1, 2, scope}, [](CTarnDoc& d, const auto& input) { return Resize(d, input); });
    check(STranslateInput{5, -6, 2147483647, scope}, [](CTarnDoc& d, const auto& i) { return Translate(d, i); });
    check(SRotateInput{33, false, EAxis::kX, scope, {EPivot::kMiddle}},
          [](CTarnDoc& d, const auto& i) { return Rotate(d, i); });
  }
  EXPECT_EQ(questions.TakeMessageTexts().size(), 2U) << "the factor that leads out of the range";
}

}  // namespace
}  // namespace veldra::testing
