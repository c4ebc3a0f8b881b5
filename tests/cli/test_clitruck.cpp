#include "archive/poddocument.h"
#include "cli/clifixture.h"
#include "platform/files.h"
#include "truck/truck.h"

namespace veldra::testing {
namespace {

class CCliTruckTest : public CCliTest {
 protected:
  CCliTruckTest() {
    truck.name = "Mud \"King\"";
    truck.model_base_name = "BODY.BIN";
    truck.axle_model_name = "axle.bin";
    truck.tire_base_name = "TIRE.BIN";
    truck.bar_texture = "bar.raw";
    truck.wave_files[0] = "IDLE.WAV";
    truck.tires[kFrontLeftTire] = {-1.5, 0.25, 3};
    truck.lights[static_cast<size_t>(truck.AddLight())].type = 3;
    EXPECT_TRUE(truck.Save(folder.File("t.trk")));
  }

  CTruck truck;
};

TEST_F(CCliTruckTest, ShowRewriteAndDeps) {
  EXPECT_NE(Run("truck show $/t.trk").out.find("truck: Mud \"King\"\nbody model: BODY.BIN\n"), std::string::npos);
  const auto shown = nlohmann::json::parse(Run("truck show $/t.trk --json").out, nullptr, false);
  EXPECT_EQ(shown["name"], "Mud \"King\"");
  EXPECT_EQ(shown["tires"]["frontLeft"], (nlohmann::json{-1.5, 0.25, 3.0}));
  EXPECT_EQ(shown["scrapePoints"].size(), 12u);
  EXPECT_EQ(shown["lights"][0]["typeName"], "Special Light");

  folder.Write("loose.trk", "TRUCKNAME\n  Mud \"King\"\nno key\nlight 0 type\n3\nnumber of lights\n1");
  EXPECT_EQ(Run("truck rewrite $/loose.trk $/out.trk").status, 0);
  CTruck plain;
  plain.name = truck.name;
  plain.lights[static_cast<size_t>(plain.AddLight())].type = 3;
  EXPECT_EQ(ReadTestFile(folder.File("out.trk")), plain.FileText());

  EXPECT_EQ(Run("truck deps $/t.trk").out,
            "model AXLE.BIN\nmodel BODY.BIN\nmodel TIRE.BIN\ntexture BAR.RAW\npalette BAR.ACT\nsound IDLE.WAV\n");
}

TEST_F(CCliTruckTest, FromJsonIsTheWayBack) {
  folder.Write("t.json", Run("truck show $/t.trk --json").out);
  Expect({{"truck from-json $/t.json $/back.trk"}});
  EXPECT_EQ(ReadTestFile(folder.File("back.trk")), ReadTestFile(folder.File("t.trk")));
  EXPECT_EQ(Run("truck from-json $/t.json -").out, truck.FileText());
  const std::pair<const char*, const char*> cases[] = {
      {R"({"nmae": "x"})", "nmae is not known, did you mean \"name\"?"},
      {R"({"lights": [{"type": 1}, {"kind": 2}]})", "lights[1].kind is not known"},
      {R"({"lights": [{"type": 1.5}]})", "lights[0].type is not a whole number"},
      {R"({"tires": {"frontLeft": [1, 2, "3"]}})", "tires.frontLeft[2] is not a number"},
      {R"({"name": 3})", "name is not a text"},
      {R"({"name": "a\nb"})", "name has a control character"},
      {R"({"scrapePoints": []})", "scrapePoints is not a list of 12"},
      {R"({"lightCount": 1, "lights": [{}, {}]})", "lightCount is 1, and there are 2 lights"},
      {"[]", "The truck is not an object"},
      {"{", "is not JSON"}};
  for (const auto& [bad, text] : cases) {
    folder.Write("bad.json", bad);
    Expect({{"truck from-json $/bad.json $/bad.trk", 1, "", text}});
  }
  EXPECT_FALSE(FileExists(folder.File("bad.trk")));
}

TEST_F(CCliTruckTest, CheckLooksAtTheModelsToo) {
  WriteModel("BODY.BIN", {.points = {{0, 0, 0}, {1, 0, 0}, {2, 0, 0}}});
  const auto findings = nlohmann::json::parse(Run("truck check $/t.trk --json").out);
  std::string text;
  for (const auto& row : findings)
    text += row["kind"].get<std::string>() + ": " + row["text"].get<std::string>() + "\n";
  EXPECT_EQ(
      text,
      "missing-file: AXLE.BIN is not found\nno-area: face 0 has no area\nmissing-file: TIRE.BIN is not found\n"
      "missing-file: BAR.RAW is not found\nmissing-file: BAR.ACT is not found\nmissing-file: IDLE.WAV is not found\n");
  EXPECT_EQ(Run("truck check $/t.trk").status, 1);
}

TEST_F(CCliTruckTest, WhatFailsSaysSo) {
  for (const char* line : {"truck show $/none.trk", "truck show $/Veldra.cfg", "truck deps $/none.trk"})
    Expect({{line, 1, "", "Veldra - Error: Failed to load truck"}});
  Expect({{"truck rewrite $/t.trk $/none/t.trk", 1, "", "Veldra - Error: Failed to open destination file"}});
}

TEST_F(CCliTruckTest, PackAsksAboutWhatIsNotThere) {
  WriteModel("BODY.BIN", {});
  WriteModel("axle.bin", {});
  folder.Write("Bar.raw", std::string(64 * 64, 'x'));
  folder.Write("SOUND/idle.wav", "RIFF");
  SResult result = Run("truck pack $/t.trk $/t.pod");
  EXPECT_EQ(result.status, 1) << "nobody said yes";
  for (const char* name : {"TIRE.BIN, needed by T.TRK", "BAR.ACT, needed by", "ROAD.ACT, needed by ROAD.RAW"})
    EXPECT_NE(result.err.find(name), std::string::npos) << name << " in\n" << result.err;
  EXPECT_FALSE(FileExists(folder.File("t.pod")));

  result = Run("--yes truck pack $/t.trk $/t.pod");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.out, "Packed 6 files\n");
  CPodDocument archive;
  ASSERT_TRUE(archive.Load(folder.File("t.pod")));
  for (const char* name :
       {"TRUCK\\T.TRK", "MODELS\\BODY.BIN", "MODELS\\AXLE.BIN", "ART\\BAR.RAW", "ART\\ROAD.RAW", "SOUND\\IDLE.WAV"})
    EXPECT_EQ(archive.FindAll(name).size(), 1u) << name;
  const auto bytes = archive.ReadEntry(archive.FindAll("TRUCK\\T.TRK")[0]);
  ASSERT_TRUE(bytes);
  EXPECT_EQ(bytes->Text(), truck.FileText());
}

TEST_F(CCliTruckTest, AFileInWhichNothingIsKnownIsWrittenOnRequestOnly) {
  folder.Write("letter.trk", "Dear driver,\r\nmy truck is red.\r\n");
  const std::string said = "does not look like a truck file.";
  Expect({{"truck show $/letter.trk", 0, "truck", said},
          {"truck rewrite $/letter.trk $/letter.trk", 1, "", said + "\nGo on all the same?"},
          {"truck pack $/letter.trk $/t.pod", 1, "", said + "\nGo on all the same?"}});
  EXPECT_EQ(ReadTestFile(folder.File("letter.trk")).substr(0, 4), "Dear");
  Expect({{"--yes truck rewrite $/letter.trk $/o.trk", 0, "", said}});
  EXPECT_EQ(Run("truck show $/o.trk").err, "");
}

}  // namespace
}  // namespace veldra::testing
