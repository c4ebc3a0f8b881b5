#include "samples/workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>
#include <set>

#include "archive/poddocument.h"
#include "model/binfile.h"
#include "platform/paths.h"
#include "settings/coptools.h"
#include "support/scriptedquestions.h"
#include "support/testfiles.h"
#include "truck/truck.h"

namespace veldra {
namespace {

using testing::CScriptedQuestions;
using ::testing::HasSubstr;
using ::testing::UnorderedElementsAre;

/// Made once for all tests; the models are read through the settings that the workspace brings along.
class SampleWorkspace : public ::testing::Test {
 protected:
  static void SetUpTestSuite() {
    folder_ = std::make_unique<testing::CTempFolder>();
    CScriptedQuestions questions;
    SError error;
    ASSERT_TRUE(samples::WriteWorkspace(folder_->Path(), questions, &error)) << error.what;
    ASSERT_TRUE(questions.Messages().empty());
  }
  static void TearDownTestSuite() { folder_.reset(); }

  SampleWorkspace() {
    SettingsMap map;
    CopTools::ReadCfgFile(folder_->File(kSettingsFileName), map);
    settings_.Take(map);
  }

  bool Load(CBinModel& model, const char* name) {
    CTextureFinder finder(store_, questions_, settings_.art_dir);
    const SLoadContext context = {finder, questions_, settings_.texture_size_msg != 0};
    return LoadBinFile(model, JoinPath(settings_.bin_dir, name), context);
  }

  static inline std::unique_ptr<testing::CTempFolder> folder_;
  CSettings settings_;
  CScriptedQuestions questions_;
  CTextureStore store_{questions_, ReadColorTable(settings_.defpal).value_or(ColorTable{})};
};

TEST_F(SampleWorkspace, HoldsItsFoldersAndTexturesThatTheGameTakes) {
  EXPECT_THAT(ListDirectory(folder_->Path()),
              UnorderedElementsAre("ART", "MODELS", "MUDKING.POD", "SOUND", "TRUCK", "Veldra.cfg", "barn.obj"));
  std::set<int> sizes;
  for (const std::string& name : ListDirectory(settings_.art_dir)) {
    EXPECT_LE(name.size(), 12u) << name;
    const std::string path = JoinPath(settings_.art_dir, name);
    if (ExtensionPart(name) != "RAW") continue;
    sizes.insert(TextureSizeOfLength(FileLength(path).value_or(0)));
    EXPECT_EQ(FileLength(ChangeExtension(path, "ACT")), 768u) << name;
  }
  EXPECT_THAT(sizes, UnorderedElementsAre(64, 256));
  EXPECT_EQ(FileLength(settings_.defpal), 768u);
}

TEST_F(SampleWorkspace, TheModelsLoadWithoutAnyQuestion) {
  CBinModel ramp;
  ASSERT_TRUE(Load(ramp, "RAMP.BIN"));
  EXPECT_EQ(ramp.CheckInvariants(), "");
  CBinModel truck;
  ASSERT_TRUE(Load(truck, "TRUCK.BIN"));
  EXPECT_TRUE(questions_.Messages().empty());
  EXPECT_EQ(truck.CheckInvariants(), "");
  EXPECT_GT(truck.FaceCount(), 500);
  for (const uint32_t type : {0x11u, 0x18u, 0x19u, 0x29u, 0x33u})
    EXPECT_TRUE(truck.HasFaceType(type)) << type;
  const CBinTexture* beacon = truck.FindTexture("BEACON", ETextureKind::kAnimated);
  ASSERT_NE(beacon, nullptr);
  EXPECT_EQ(beacon->Frames().size(), 4u);
  EXPECT_GT(beacon->UseCount(), 0);
  for (int axis = 0; axis < 3; ++axis)
    EXPECT_LE(std::abs(truck.Bound(axis) + truck.Bound(axis + 3)), 1) << axis;
  EXPECT_TRUE(truck.UnusedVertices().empty());
  EXPECT_NE(truck.FindGroup(EGroupKind::kFaces, "front left wheel"), nullptr);
}

/// Each file of the archive is one of the workspace; every file that the truck needs is there.
TEST_F(SampleWorkspace, TheTrucksArchiveGivesEveryFileBack) {
  CPodDocument archive;
  ASSERT_TRUE(archive.Load(folder_->File("MUDKING.POD")));
  std::set<std::string> packed;
  for (size_t i = 0; i < archive.Entries().size(); ++i) {
    std::string name(archive.Entries()[i].Name());
    packed.insert(FileNamePart(name));
    const auto bytes = archive.ReadEntry(i);
    ASSERT_TRUE(bytes) << name;
    EXPECT_EQ(bytes->Text(), testing::ReadTestFile(folder_->File(NativePath(name)))) << name;
  }
  CTruck truck;
  ASSERT_TRUE(truck.Load(folder_->File("TRUCK/MUDKING.TRK")));
  const STruckDependencies needed = truck.GetDependencies();
  for (const auto* names : {&needed.models, &needed.textures, &needed.palettes, &needed.sounds})
    for (const std::string& name : *names)
      EXPECT_TRUE(packed.contains(name)) << name;
}

TEST(SampleWorkspaceFailure, SaysWhatCannotBeWritten) {
  const testing::CTempFolder folder;
  folder.Write("ART", "a file where a folder should be");
  CScriptedQuestions questions;
  SError error;
  EXPECT_FALSE(samples::WriteWorkspace(folder.Path(), questions, &error));
  EXPECT_THAT(error.what, HasSubstr("ART"));
}

}  // namespace
}  // namespace veldra
