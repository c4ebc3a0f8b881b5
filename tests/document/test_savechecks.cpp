#include <limits>

#include "document/documentfixture.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

constexpr const char* kNotCentered =
    "Model is not centered along the vertical axis.\nThis will cause the model to float or sink into the "
    "ground.\n\nCenter model vertically before saving?";
constexpr const char* kTextureSize = "Model uses a texture size not supported by MTM2.\nWould you like to save anyway?";

using EUnused = SUnusedVerticesAnswer::EChoice;

class CSaveChecksTest : public CDocumentTest {};

TEST_F(CSaveChecksTest, CenteredCheckAllowsASumOfOne) {
  constexpr int32_t kLargest = std::numeric_limits<int32_t>::max();
  constexpr int32_t kSmallest = std::numeric_limits<int32_t>::min();
  const struct {
    int32_t low, high;
    bool asked;
  } cases[] = {{-10, 12, true},           {-10, 11, false}, {-12, 10, true},
               {-11, 10, false},          {5, 5, true},     {kSmallest, kLargest, false},
               {kLargest, kLargest, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.low << " to " << c.high);
    CTarnDoc document(Services());
    AddTriangle(document.Model(), c.low, c.high, &AddTexture(document.Model(), "GOOD.RAW", 64));
    if (c.asked) questions.OnYesNoCancel(kNotCentered, EAnswer::kCancel);
    EXPECT_EQ(document.CheckCentered(), !c.asked);
    settings.not_centered_msg = 0;
    EXPECT_TRUE(document.CheckCentered());
    settings.not_centered_msg = 1;
  }
}

TEST_F(CSaveChecksTest, TextureSizeCheckLooksAtUsedTexturesAndEveryFrame) {
  const struct {
    int first_width, second_width;  // a second width makes it an animation
    bool used, asked;
  } cases[] = {{64, 0, true, false},   {128, 0, true, true},   {256, 0, true, false}, {512, 0, true, true},
               {128, 0, false, false}, {64, 256, true, false}, {64, 128, true, true}, {512, 64, true, true}};
  for (const auto& c : cases) {
    SCOPED_TRACE(::testing::Message() << c.first_width << ' ' << c.second_width << ' ' << c.used);
    CTarnDoc document(Services());
    CBinModel& model = document.Model();
    const auto image = [&](int width) { return textures.GetBlankTexture(folder.File(std::to_string(width)), width); };
    auto entry = c.second_width == 0
                     ? std::make_unique<CBinTexture>(model, "A.RAW", image(c.first_width))
                     : std::make_unique<CBinTexture>(model, "ANIM",
                                                     std::vector<CBinTexture::SFrame>{{"A.RAW", image(c.first_width)},
                                                                                      {"B.RAW", image(c.second_width)}},
                                                     8.0);
    CBinTexture& texture = model.AddTexture(std::move(entry));
    AddTriangle(model, -10, 10, c.used ? &texture : nullptr, c.used ? kFaceTextured : kFaceUntextured);
    if (c.asked) questions.OnYesNo(kTextureSize, EAnswer::kNo).OnYesNo(kTextureSize, EAnswer::kYes);
    EXPECT_EQ(document.CheckTextureSizes(), !c.asked);
    EXPECT_TRUE(document.CheckTextureSizes());
    settings.texture_size_msg = 0;
    EXPECT_TRUE(document.CheckTextureSizes());
    settings.texture_size_msg = 1;
  }
}

TEST_F(CSaveChecksTest, AnswersDecideWhatIsSaved) {
  const struct {
    EAnswer centered;
    SUnusedVerticesAnswer unused;
    bool saved;
    int32_t first_y, vertices;
  } cases[] = {{EAnswer::kCancel, {}, false, -10, 4},
               {EAnswer::kYes, {EUnused::kDelete, false}, true, -11, 3},
               {EAnswer::kNo, {EUnused::kSaveAnyway, false}, true, -10, 4},
               {EAnswer::kNo, {EUnused::kSaveAnyway, true}, true, -10, 4},
               {EAnswer::kNo, {EUnused::kCancel, false}, false, -10, 4}};
  for (const auto& c : cases) {
    settings.unused_verts_msg = 1;
    const std::string path = folder.File("answers.bin");
    RemoveFile(path);
    CTarnDoc document(Services());
    AddTriangle(document.Model(), -10, 12, &AddTexture(document.Model(), "GOOD.RAW", 64));
    document.Model().AddVertex({1, 2, 3});
    questions.OnYesNoCancel(kNotCentered, c.centered);
    if (c.centered != EAnswer::kCancel) questions.OnUnusedVertices(c.unused);
    EXPECT_EQ(document.Saver().SaveAsVariant(path, EModelVariant::kMtm), c.saved);
    EXPECT_EQ(FileExists(path), c.saved);
    if (c.saved) {
      EXPECT_EQ(FirstYAt(path), c.first_y);
      EXPECT_EQ(VertexCountAt(path), c.vertices);
    }
    EXPECT_EQ(document.Model().Vertex(0).Position().y, c.first_y);
    EXPECT_EQ(document.Model().VertexCount(), c.vertices);
    EXPECT_EQ(document.IsModified(), !c.saved);
    EXPECT_EQ(settings.unused_verts_msg, c.unused.dont_show_again ? 0 : 1);
  }
}

class CCheckOrderTest : public CDocumentTest {
 protected:
  /// Every check has something to say about it.
  void FillBad(CBinModel& model) {
    AddTriangle(model, 5, 25, &AddTexture(model, "BAD.RAW", 128));
    model.AddVertex({0, 7, 0});
  }
  /// The script of the first COUNT checks, of which the last stops the save when STOPS.
  void ExpectChecks(int count, bool stops) {
    const auto last = [&](int k) { return stops && k == count; };
    if (count >= 1) questions.OnYesNoCancel(kNotCentered, last(1) ? EAnswer::kCancel : EAnswer::kNo);
    if (count >= 2) questions.OnYesNo(kTextureSize, last(2) ? EAnswer::kNo : EAnswer::kYes);
    if (count >= 3) questions.OnUnusedVertices({last(3) ? EUnused::kCancel : EUnused::kSaveAnyway, false});
  }
};

TEST_F(CCheckOrderTest, TheFirstCheckThatSaysSoStopsTheSave) {
  const std::string path = folder.File("order.bin");
  for (const bool save_as : {false, true}) {
    for (int stop = 1; stop <= 4; ++stop) {
      SCOPED_TRACE(::testing::Message() << (save_as ? "Save as" : "Save") << ", stopped at " << stop);
      CTarnDoc document(Services());
      FillGood(document.Model());
      ASSERT_TRUE(document.SaveMTM(path));
      const std::string before = ReadTestFile(path);
      document.Model().Clear();
      FillBad(document.Model());
      ExpectChecks(std::min(stop, 3), stop <= 3);
      // Save as asks for the name behind the checks.
      if (save_as && stop == 4) questions.OnSaveFile("Save Document As", std::nullopt);
      const bool saved = !save_as && stop == 4;
      EXPECT_EQ(save_as ? document.Saver().SaveAs() : document.Saver().Save(), saved);
      EXPECT_EQ(ReadTestFile(path) == before, !saved);
      EXPECT_EQ(document.IsModified(), !saved);
    }
  }
}

TEST_F(CCheckOrderTest, WritableComesFirstInSaveAndLastInSaveAs) {
  CTarnDoc document(Services());
  FillGood(document.Model());
  const std::string path = folder.File("order.bin");
  ASSERT_TRUE(document.SaveMTM(path));
  document.Model().Clear();
  FillBad(document.Model());
  // A folder of that name cannot be written to, whoever runs the test.
  ASSERT_TRUE(RemoveFile(path) && MakeDirectories(path));
  EXPECT_FALSE(document.Saver().Save());
  ExpectOnlyMessage("Model could not be saved.");
  ExpectChecks(3, false);
  EXPECT_FALSE(document.Saver().SaveAsVariant(path, EModelVariant::kMtm));
  ExpectOnlyMessage("Model could not be saved.");
  EXPECT_TRUE(IsDirectory(path));
}

}  // namespace
}  // namespace veldra::testing
