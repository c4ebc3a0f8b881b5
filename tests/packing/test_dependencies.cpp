#include <gtest/gtest.h>

#include "archive/testpod.h"
#include "model/binfile.h"
#include "model/texturenames.h"
#include "packing/dependencies.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "support/richmodel.h"
#include "truck/truck.h"

namespace veldra::testing {
namespace {

/// A model file that names TEXTURES, the last two as an animation's frames when ANIMATED.
std::string ModelFile(const std::vector<std::string>& textures, bool animated = false) {
  CTextureSet set;
  CBinModel model;
  for (int i = 0; i < 4; ++i)
    model.AddVertex({i, i * i, 0});
  const size_t plain = textures.size() - (animated ? 2 : 0);
  std::vector<CBinTexture*> entries;
  for (size_t i = 0; i < plain; ++i)
    entries.push_back(&model.AddTexture(std::make_unique<CBinTexture>(model, textures[i], set.Image(0))));
  if (animated) {
    std::vector<CBinTexture::SFrame> frames = {{textures[plain], set.Image(0)}, {textures[plain + 1], set.Image(0)}};
    entries.push_back(&model.AddTexture(std::make_unique<CBinTexture>(model, "FLAG", std::move(frames), 8.0)));
  }
  for (size_t i = 0; i < entries.size(); ++i) {
    const std::vector<int32_t> corners[] = {{0, 1, 2}, {0, 1, 2, 3}};
    MakeFace(model, corners[i % 2], entries[i], i % 3 == 1 ? kFaceUntextured : kFaceTextured);
  }
  CByteWriter writer;
  SaveBin(model, {.vertex_normals = true}, writer);
  return {reinterpret_cast<const char*>(writer.Bytes().data()), writer.Size()};
}

std::span<const uint8_t> BytesOf(const std::string& text) {
  return {reinterpret_cast<const uint8_t*>(text.data()), text.size()};
}

std::string TruckFile() {
  CTruck truck;
  truck.model_base_name = "Body.bin";
  truck.axle_model_name = "AXLE";
  truck.tire_base_name = "Tire.bin";
  truck.shock_texture = "shock.raw";
  truck.bar_texture = "BAR.RAW";
  truck.wave_files = {"horn.wav", "", "HORN.WAV"};
  return truck.FileText();
}

std::vector<std::string> Described(const std::vector<SDependency>& found) {
  std::vector<std::string> lines;
  const char* const places[] = {"own", "archive", "folder", "missing"};
  for (const SDependency& each : found) {
    lines.push_back(each.name + " < " + each.needed_by + " " + places[static_cast<int>(each.place)] +
                    (each.is_stock ? " stock" : ""));
  }
  return lines;
}

TEST(TextureNames, OfPlainAndAnimatedTexturesAreReadWithoutTheTextures) {
  const std::string file = ModelFile({"road.raw", "SKY.RAW", "road.raw", "F1.RAW", "f2.raw"}, true);
  std::vector<std::string> names;
  EXPECT_TRUE(ReadTextureNames(BytesOf(file), names).Empty());
  std::set<std::string> unique(names.begin(), names.end());
  EXPECT_EQ(unique, (std::set<std::string>{"ROAD.RAW", "SKY.RAW", "F1.RAW", "F2.RAW"}));
  // Every cut of the file ends without reading beyond it; what stands before the cut is found.
  for (size_t length = 0; length < file.size(); ++length) {
    const std::vector<uint8_t> cut(file.begin(), file.begin() + static_cast<std::ptrdiff_t>(length));
    names.clear();
    ReadTextureNames(cut, names);
    EXPECT_LE(names.size(), 6u);
  }
  EXPECT_FALSE(ReadTextureNames(BytesOf(file.substr(0, 90)), names).Empty());
}

TEST(Dependencies, OfATruckAreFoundInTheArchiveThenBesideItThenInFolders) {
  const CTempFolder folder;
  const std::string path = folder.Write("mod.pod", MakePod({{"TRUCK\\MINE.TRK", TruckFile()},
                                                            {"MODELS\\BODY.BIN", ModelFile({"PAINT.RAW", "SHOCK.RAW"})},
                                                            {"OLD\\SHOCK.RAW", "wrong folder"},
                                                            {"ART\\SHOCK.RAW", "shock"},
                                                            {"ART\\PAINT.ACT", "faulty", 5000},
                                                            {"SOUND\\HORN.WAV", "horn"}}));
  folder.Write("other.POD",
               MakePod({{"MODELS\\AXLE.BIN", ModelFile({"RUST.RAW", "02CACTUS.RAW", "A.RAW", "A.RAW"}, true)},
                        {"ART\\BAR.RAW", "bar"}}));
  folder.Write("game/ART/rust.Raw", "rust");
  folder.Write("game/paint.raw", "paint");
  folder.Write("broken.pod", "no archive");
  CPodDocument pod;
  ASSERT_TRUE(pod.Load(path));
  const SSearchPlaces places = PlacesBeside(path, CSettings(), folder.File("game"));
  EXPECT_EQ(places.archives.size(), 2u);
  std::vector<std::string> complaints;
  const auto found = FindDependencies(SourcesOf(pod), {0}, places, CStockFiles(), &complaints);
  EXPECT_EQ(Described(found),
            (std::vector<std::string>{
                "AXLE.BIN < MINE.TRK archive", "BODY.BIN < MINE.TRK own", "TIRE.BIN < MINE.TRK missing",
                "BAR.RAW < MINE.TRK archive", "SHOCK.RAW < MINE.TRK own", "BAR.ACT < MINE.TRK missing",
                "SHOCK.ACT < MINE.TRK missing", "HORN.WAV < MINE.TRK own", "RUST.RAW < AXLE.BIN folder",
                "02CACTUS.RAW < AXLE.BIN missing stock", "A.RAW < AXLE.BIN missing", "PAINT.RAW < BODY.BIN folder",
                "RUST.ACT < RUST.RAW missing", "PAINT.ACT < PAINT.RAW missing"}));
  EXPECT_EQ(found[4].own, 3u) << "the one in the folder of its type";
  EXPECT_TRUE(complaints.empty());
  EXPECT_EQ(ReadFilePart(found[3].source.bytes)->Text(), "bar");
  EXPECT_EQ(ReadFilePart(found[8].source.bytes)->Text(), "rust");

  std::vector<size_t> entries = {0};
  const std::vector<std::string> notes = AddOwnDependencies(pod, places, CStockFiles(), entries);
  EXPECT_EQ(entries, (std::vector<size_t>{0, 1, 3, 5}));
  ASSERT_EQ(notes.size(), 10u);
  EXPECT_EQ(notes[0], "AXLE.BIN, needed by MINE.TRK: in " + folder.File("other.POD"));
  EXPECT_EQ(notes[1], "TIRE.BIN, needed by MINE.TRK: not found");
}

TEST(Dependencies, OfLooseFilesAreLookedForBesideThem) {
  const CTempFolder folder;
  const std::string truck = folder.Write("truck/mine.trk", TruckFile());
  folder.Write("truck/horn.WAV", "horn");
  folder.Write("Models/Body.Bin", ModelFile({"PAINT.RAW"}));
  folder.Write("art/Paint.raw", "paint");
  const std::vector<SPodSource> own = {{"mine.trk", {truck}}};
  std::vector<std::string> places;
  for (const SDependency& each : FindDependencies(own, {0}, {}, CStockFiles()))
    if (each.place == SDependency::EPlace::kFolder) places.push_back(each.source.bytes.path);
  EXPECT_EQ(places, (std::vector<std::string>{JoinPath(folder.File("Models"), "Body.Bin"),
                                              JoinPath(folder.File("truck"), "horn.WAV"),
                                              JoinPath(folder.File("art"), "Paint.raw")}));
}

TEST(Dependencies, DamagedFilesNeedWhatCanBeReadAndAreComplainedAbout) {
  const CTempFolder folder;
  const std::string model = ModelFile({"A.RAW", "B.RAW"});
  const std::vector<SPodSource> own = {{"CUT.BIN", {folder.Write("cut", model.substr(0, model.size() - 46))}},
                                       {"GONE.BIN", {folder.File("gone")}},
                                       {"HORN.WAV", {folder.Write("horn", "x")}},
                                       {"EMPTY.TRK", {folder.Write("empty", "")}}};
  std::vector<std::string> complaints;
  const auto found = FindDependencies(own, {0, 1, 2, 3}, {}, CStockFiles(), &complaints);
  EXPECT_FALSE(found.empty());
  EXPECT_EQ(found[0].name, "A.RAW");
  ASSERT_EQ(complaints.size(), 2u);
  EXPECT_EQ(complaints[0].substr(0, 8), "CUT.BIN:");
  EXPECT_EQ(complaints[1].substr(0, 9), "GONE.BIN:");
}

}  // namespace
}  // namespace veldra::testing
