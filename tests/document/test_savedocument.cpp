#include <cerrno>
#include <cmath>

#include "document/documentfixture.h"
#include "document/earlierstates.h"
#include "document/statebefore.h"
#include "interchange/modelreport.h"
#include "platform/files.h"

namespace veldra::testing {
namespace {

constexpr const char* kHellbenderFaces =
    "This BIN model uses a face type\nthat is not recognized by Hellbender.\nConvert BIN to Hellbender face types?";

class CSaveDocumentTest : public CDocumentTest {
 protected:
  ~CSaveDocumentTest() override { SetFileFault({}); }
};

TEST_F(CSaveDocumentTest, SaveAsWritesTheVariantOfTheChosenFilter) {
  const struct {
    size_t filter;
    uint32_t type;
    uint32_t scale;
  } cases[] = {
      {0, kFaceTransparentMtm2, 0x10000}, {1, kFaceTransparentMtm, 0x10000}, {2, kFaceTransparentMtm2, 0x8000}};
  for (const auto& c : cases) {
    const std::string path = folder.File("variant" + std::to_string(c.filter) + ".bin");
    CTarnDoc document(Services());
    document.Model().SetScaleWord(0x4000);
    AddTriangle(document.Model(), -10, 10, &AddTexture(document.Model(), "GOOD.RAW", 64), kFaceTransparentMtm2);
    questions.OnSaveFile("Save Document As", SSavePath{path, c.filter});
    if (c.filter == 2) questions.OnScaleFactor(0.25, 0.5).OnYesNoCancel(kHellbenderFaces, EAnswer::kNo);
    ASSERT_TRUE(document.Saver().Save()) << "without a path it is Save as";
    EXPECT_EQ(FaceTypeAt(path), c.type);
    EXPECT_EQ(ScaleWordAt(path), c.scale);
    EXPECT_TRUE(IsFile(path + ".info"));
    EXPECT_EQ(document.Path(), path);
    EXPECT_FALSE(document.IsModified());
    EXPECT_EQ(document.Model().Face(0).Type(), kFaceTransparentMtm2) << "saving changes no model";
  }
  EXPECT_EQ(settings.scale_factor, 0.5);
}

/// Two folders, and the wish that all models go to one of them.
class CDefaultDirectoryTest : public CSaveDocumentTest {
 protected:
  CDefaultDirectoryTest() {
    EXPECT_TRUE(MakeDirectories(folder.File("models")) && MakeDirectories(folder.File("elsewhere")));
    settings.save_to_def_dir = 1;
    settings.bin_dir = folder.File("MODELS/");  // in the game's letter case
    FillGood(document.Model());
  }

  const std::string chosen = folder.File("elsewhere/truck.bin");
  const std::string redirected = folder.File("models/truck.bin");
  CTarnDoc document{Services()};
};

TEST_F(CDefaultDirectoryTest, TakesAllSavesButThoseToAGivenPath) {
  ASSERT_TRUE(document.SaveMTM(chosen));
  ASSERT_TRUE(document.Saver().Save());
  EXPECT_TRUE(IsSameFile(document.Path(), redirected));
  ASSERT_TRUE(document.Saver().Save()) << "its own file: no question";
  ASSERT_TRUE(RemoveFile(redirected));
  questions.OnSaveFile("", SSavePath{chosen, 0});
  ASSERT_TRUE(document.Saver().SaveAs());
  EXPECT_TRUE(IsSameFile(document.Path(), redirected));
  ASSERT_TRUE(document.Saver().SaveAsVariant(chosen, EModelVariant::kMtm));
  EXPECT_EQ(document.Path(), chosen);
}

TEST_F(CDefaultDirectoryTest, AnotherModelThereIsReplacedOnYesOnly) {
  ASSERT_TRUE(document.SaveMTM(chosen));
  folder.Write("models/truck.bin", "another");
  for (const bool save_as : {false, true}) {
    if (save_as) questions.OnSaveFile("", SSavePath{chosen, 0});
    questions.OnYesNo("truck.bin\" is there already.\nReplace it?", EAnswer::kNo);
    EXPECT_FALSE(save_as ? document.Saver().SaveAs() : document.Saver().Save());
    EXPECT_EQ(ReadTestFile(redirected), "another");
    EXPECT_EQ(document.Path(), chosen);
  }
  questions.OnYesNo("Replace it?", EAnswer::kYes);
  EXPECT_TRUE(document.Saver().Save());
  EXPECT_NE(ReadTestFile(redirected), "another");

  SDocumentServices services = Services();
  services.is_open_read_only_elsewhere = [&](const CTarnDoc&, const std::string& path) {
    return IsSameFile(path, redirected);
  };
  CTarnDoc other(services);
  FillGood(other.Model());
  ASSERT_TRUE(other.SaveMTM(chosen));
  EXPECT_FALSE(other.Saver().Save());
  ExpectOnlyMessage("Cannot save as that name.The file has been opened as read-only");
}

TEST_F(CDefaultDirectoryTest, FolderThatIsNotThereIsSaidOnce) {
  settings.bin_dir = folder.File("no-such-folder");
  ASSERT_TRUE(document.SaveMTM(chosen));
  questions.OnYesNo("no-such-folder", EAnswer::kNo).OnYesNo(chosen + "\" instead?", EAnswer::kYes);
  EXPECT_FALSE(document.Saver().Save());
  EXPECT_TRUE(document.Saver().Save());
  EXPECT_TRUE(document.Saver().Save());
  EXPECT_EQ(document.Path(), chosen);
}

TEST_F(CSaveDocumentTest, SaveAsksOnceBeforeItMakesAnMtmModelOfAnotherKind) {
  const std::string path = folder.File("kind.bin");
  CTarnDoc document(Services());
  FillGood(document.Model());
  for (const EModelVariant variant : {EModelVariant::kBackdrop, EModelVariant::kHellbender}) {
    if (variant == EModelVariant::kHellbender) questions.OnScaleFactor(1.0, 1.0);
    ASSERT_TRUE(document.Saver().SaveAsVariant(path, variant));
    const std::string before = ReadTestFile(path);
    const char* const kind = variant == EModelVariant::kBackdrop ? "an MTM backdrop" : "a Hellbender model";
    questions.OnYesNo(kind, EAnswer::kNo).OnYesNo(kind, EAnswer::kYes);
    EXPECT_FALSE(document.Saver().Save());
    EXPECT_EQ(ReadTestFile(path), before);
    EXPECT_TRUE(document.Saver().Save());
    EXPECT_TRUE(document.Saver().Save());
  }
  // A backdrop that was opened can be told by its faces.
  folder.Write("GOOD.RAW", std::string(64 * 64, '\0'));
  ASSERT_TRUE(document.Saver().SaveAsVariant(path, EModelVariant::kBackdrop));
  CTarnDoc opened(Services());
  ASSERT_TRUE(opened.OnOpenDocument(path));
  questions.OnYesNo("an MTM backdrop", EAnswer::kYes);
  EXPECT_TRUE(opened.Saver().Save());
  EXPECT_TRUE(opened.Reload() && opened.Saver().Save()) << "it is a model now";
}

TEST_F(CSaveDocumentTest, FailedWriteKeepsFileAndState) {
  const std::string path = folder.File("truck.bin");
  for (const char* operation : {"open", "write", "sync", "rename"}) {
    SCOPED_TRACE(operation);
    CTarnDoc document(Services());
    FillGood(document.Model());
    ASSERT_TRUE(document.SaveMTM(path));
    const std::string before = ReadTestFile(path);
    document.CenterX();
    document.SetReadOnly(true);
    SetFileFault([&](std::string_view called, std::string_view) { return called == operation ? ENOSPC : 0; });
    EXPECT_FALSE(document.Saver().SaveAsVariant(path, EModelVariant::kMtm));
    SetFileFault({});
    EXPECT_FALSE(questions.Messages().at(0).details.empty());
    ExpectOnlyMessage("Model could not be saved.");
    EXPECT_EQ(ReadTestFile(path), before);
    EXPECT_TRUE(document.IsModified());
    EXPECT_TRUE(document.IsReadOnly()) << "nothing was written under a new name";
    EXPECT_EQ(ListDirectory(folder.Path()), (std::vector<std::string>{"truck.bin", "truck.bin.info"}));
  }
}

TEST_F(CSaveDocumentTest, ACommandWithoutMemoryLeavesTheDocumentAsItWas) {
  CEarlierStates states(folder.File("earlier"));
  SDocumentServices services = Services();
  services.earlier_states = &states;
  CTarnDoc document(services);
  FillGood(document.Model());
  document.SetModified(false);
  const std::string before = TextureList(document.Model()) + ModelDump(document.Model(), "");
  const auto fail_half_way = [&] {
    const CStateBefore state(document, "Half");
    document.Model().Clear();
    FillGood(document.Model());
    document.Model().AddVertex({7, 7, 7});
    throw std::bad_alloc();
  };
  EXPECT_THROW(fail_half_way(), std::bad_alloc);
  EXPECT_EQ(TextureList(document.Model()) + ModelDump(document.Model(), ""), before);
  EXPECT_EQ(document.Model().Face(0).Texture()->Image(), textures.GetTexture(folder.File("GOOD.RAW")));
  EXPECT_FALSE(document.IsModified());
  EXPECT_EQ(document.Model().CheckInvariants(), "");
  ExpectNoMessages();
}

TEST_F(CSaveDocumentTest, HellbenderOffersTheLastFactorAndTakesWhatTheFileHolds) {
  const std::string path = folder.File("hell.bin");
  CTarnDoc document(Services());
  FillGood(document.Model());
  document.Model().SetScaleWord(0x18000);
  questions.OnScaleFactor(1.5, std::nullopt);
  EXPECT_FALSE(document.SaveHellbender(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_EQ(settings.scale_factor, 0.0) << "cancelled";

  settings.scale_factor = 3.0;
  questions.OnScaleFactor(3.0, 0.1);
  EXPECT_TRUE(document.SaveHellbender(path));
  EXPECT_EQ(ScaleWordAt(path), 6553U) << "0.1 x 65536 = 6553.6, truncated";
  EXPECT_EQ(settings.scale_factor, 0.1);
  EXPECT_EQ(document.Model().ScaleWord(), 0x18000);

  const std::string before = ReadTestFile(path);
  for (const double too_large : {32768.0, -40000.0, std::nan(""), HUGE_VAL}) {
    questions.OnScaleFactor(0.1, too_large);
    EXPECT_FALSE(document.SaveHellbender(path));
    EXPECT_EQ(questions.TakeMessageTexts().size(), 1U);
    EXPECT_EQ(settings.scale_factor, 0.1);
  }
  EXPECT_EQ(ReadTestFile(path), before);
}

TEST_F(CSaveDocumentTest, HellbenderFaceTypesAreConvertedOnYesOnly) {
  const struct {
    uint32_t type;
    bool asked;
    EAnswer answer;
    bool saved;
    uint32_t type_after;
  } cases[] = {{kFaceTransparentMtm2, true, EAnswer::kYes, true, kFaceTextured},
               {kFaceTransparentMtm2, true, EAnswer::kCancel, false, kFaceTransparentMtm2},
               {kFaceTransparentMtm, false, EAnswer::kNo, true, kFaceTransparentMtm}};
  for (const auto& c : cases) {
    const std::string path = folder.File("hell.bin");
    RemoveFile(path);
    settings.scale_factor = 0.0;
    CTarnDoc document(Services());
    AddTriangle(document.Model(), -10, 10, &AddTexture(document.Model(), "GOOD.RAW", 64), c.type);
    questions.OnScaleFactor(1.0, 1.0);
    if (c.asked) questions.OnYesNoCancel(kHellbenderFaces, c.answer);
    EXPECT_EQ(document.SaveHellbender(path), c.saved);
    EXPECT_EQ(FileExists(path), c.saved);
    if (c.saved) {
      EXPECT_EQ(FaceTypeAt(path), c.type_after);
    }
    EXPECT_EQ(document.Model().Face(0).Type(), c.type_after);
  }
}

TEST_F(CSaveDocumentTest, BackdropThatCouldNotBeReadBackIsAskedFor) {
  const std::string path = folder.File("backdrop.bin");
  CTarnDoc document(Services());
  AddTriangle(document.Model(), -10, 10, nullptr, kFaceUntextured);
  const char* const question =
      "Face 0 has no texture, so the backdrop cannot be opened again.\nWould you like to save anyway?";
  questions.OnYesNo(question, EAnswer::kNo).OnYesNo(question, EAnswer::kYes);
  EXPECT_FALSE(document.SaveBackdrop(path));
  EXPECT_FALSE(FileExists(path));
  EXPECT_TRUE(document.SaveBackdrop(path));
  EXPECT_TRUE(FileExists(path));

  CTarnDoc textured_first(Services());
  FillGood(textured_first.Model());
  AddTriangle(textured_first.Model(), -10, 10, nullptr, kFaceUntextured);
  folder.Write("GOOD.RAW", std::string(64 * 64, '\0'));
  ASSERT_TRUE(textured_first.SaveBackdrop(path)) << "not asked: the second face takes the first one's texture";
  EXPECT_TRUE(document.OnOpenDocument(path));
  EXPECT_EQ(document.Model().FaceCount(), 2);
  ExpectNoMessages();
}

TEST_F(CSaveDocumentTest, ShinyFacesBringVertexNormalsToAllButBackdrops) {
  const std::string path = folder.File("shiny.bin");
  const size_t first_tag = 20 + 3 * 12;
  for (const uint32_t type : {kFaceShiny, kFaceTextured}) {
    CTarnDoc document(Services());
    AddTriangle(document.Model(), -10, 10, &AddTexture(document.Model(), "GOOD.RAW", 64), type);
    questions.OnScaleFactor(1.0, 1.0);
    settings.scale_factor = 0.0;
    EXPECT_TRUE(document.SaveMTM(path));
    EXPECT_EQ(WordAt(path, first_tag) == 0x03, type == kFaceShiny);
    EXPECT_TRUE(document.SaveHellbender(path));
    EXPECT_EQ(WordAt(path, first_tag) == 0x03, type == kFaceShiny);
    EXPECT_TRUE(document.SaveBackdrop(path));
    EXPECT_EQ(WordAt(path, first_tag), 0x0DU);
  }
}

}  // namespace
}  // namespace veldra::testing
