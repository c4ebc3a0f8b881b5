#include "samples/workspace.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
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

/// Positive when the faces look away from MIDDLE, on the whole.
double VolumeAbout(const SPoint& middle, const CBinModel& model, const CBinGroup& group) {
  const auto from_middle = [&middle](const CBinVertex* vertex) {
    const SPoint& at = vertex->Position();
    return std::array<double, 3>{double(at.x) - middle.x, double(at.y) - middle.y, double(at.z) - middle.z};
  };
  double volume = 0.0;
  for (const int32_t index : group.Members()) {
    const CBinFace& face = model.Face(index);
    for (int k = 1; k + 1 < face.CornerCount(); ++k) {
      const auto a = from_middle(face.Corner(0));
      const auto b = from_middle(face.Corner(k));
      const auto c = from_middle(face.Corner(k + 1));
      volume +=
          a[0] * (b[1] * c[2] - b[2] * c[1]) + a[1] * (b[2] * c[0] - b[0] * c[2]) + a[2] * (b[0] * c[1] - b[1] * c[0]);
    }
  }
  return volume / 6.0;
}

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
  for (const char* group : {"body", "hood", "cab", "bed", "windows", "chassis", "front left wheel", "beacon"}) {
    EXPECT_NE(truck.FindGroup(EGroupKind::kFaces, group), nullptr) << group;
    EXPECT_NE(truck.FindGroup(EGroupKind::kVertices, group), nullptr) << group;
  }
}

TEST_F(SampleWorkspace, NothingIsInsideOut) {
  CBinModel truck;
  ASSERT_TRUE(Load(truck, "TRUCK.BIN"));
  for (const CBinGroup& group : truck.FaceGroups()) {
    if (group.Name() == "bed") continue;  // seen from its inside
    const SBounds bounds = *truck.BoundsOfFaces(group.Members());
    const SPoint middle = {(bounds.min.x + bounds.max.x) / 2, (bounds.min.y + bounds.max.y) / 2,
                           (bounds.min.z + bounds.max.z) / 2};
    EXPECT_GT(VolumeAbout(middle, truck, group), 0.0) << group.Name();
  }
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

/// The parts lie where the whole truck model has them: the wheels touch the ground together, and the body's underside
/// is above their middle.
TEST_F(SampleWorkspace, TheTrucksPartsFitTogether) {
  CTruck truck;
  ASSERT_TRUE(truck.Load(folder_->File("TRUCK/MUDKING.TRK")));
  CBinModel body;
  CBinModel whole;
  ASSERT_TRUE(Load(body, "MKBODY.BIN"));
  ASSERT_TRUE(Load(whole, "TRUCK.BIN"));
  constexpr double kUnitsPerFoot = 32;
  const TruckPoint& tire = truck.tires[kFrontRightTire];
  CBinModel wheel;
  ASSERT_TRUE(Load(wheel, "MKING16R.BIN"));
  const double lowest = tire[1] * kUnitsPerFoot + wheel.Bound(1);
  EXPECT_NEAR(body.Bound(4) - lowest, whole.Bound(4) - whole.Bound(1), 2) << "as high as the whole";
  for (const TruckPoint& point : truck.scrape_points)
    for (size_t axis = 0; axis < 3; ++axis) {
      EXPECT_LE(point[axis] * kUnitsPerFoot, body.Bound(static_cast<int>(axis) + 3));
      EXPECT_GE(point[axis] * kUnitsPerFoot, body.Bound(static_cast<int>(axis)));
    }
}

TEST_F(SampleWorkspace, NoLetteringIsMirrored) {
  CBinModel truck;
  ASSERT_TRUE(Load(truck, "TRUCK.BIN"));
  int lettered = 0;
  for (int32_t i = 0; i < truck.FaceCount(); ++i) {
    const CBinFace& face = truck.Face(i);
    const std::string name = face.Texture() == nullptr ? "" : face.Texture()->Name();
    if (name != "SIDES.RAW" && name != "ENDS.RAW" && name != "WHEEL.RAW") continue;
    ++lettered;
    // Counter-clockwise corners stay so in the texture, whose v grows downwards.
    const STexCoord a = face.TexCoord(0), b = face.TexCoord(1), c = face.TexCoord(2);
    EXPECT_LE((b.u - a.u) * (c.v - a.v) - (b.v - a.v) * (c.u - a.u), 1e-3) << "face " << i;
  }
  EXPECT_GT(lettered, 100);
}

TEST(SampleWorkspaceFailure, SaysWhatCannotBeWritten) {
  const testing::CTempFolder folder;
  const std::string in_the_way = folder.Write("ART", "a file where a folder should be");
  CScriptedQuestions questions;
  SError error;
  EXPECT_FALSE(samples::WriteWorkspace(folder.Path(), questions, &error));
  EXPECT_THAT(error.what, HasSubstr("ART"));
}

}  // namespace
}  // namespace veldra
