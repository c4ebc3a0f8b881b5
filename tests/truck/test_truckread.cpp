#include <gtest/gtest.h>

#include <functional>

#include "platform/text.h"
#include "support/testfiles.h"
#include "truck/truck.h"

namespace veldra::testing {
namespace {

CTruck Parsed(std::string_view text) {
  CTruck truck;
  truck.name = "before";
  truck.Parse(text);
  return truck;
}

TEST(TruckReading, LinesEndInAllTheWaysAndAreTrimmed) {
  for (const std::string_view end : {"\r\n", "\n", "\r"}) {
    const std::string line_end(end);
    const CTruck truck =
        Parsed(" \tTRUCKNAME " + line_end + "  Big Foot\t" + line_end + line_end + "truckModelName" + line_end +
               "BIG.BIN" + line_end + "bartexturename" + line_end + line_end + "axlemodelname" + line_end + "A.BIN");
    EXPECT_EQ(truck.name, "Big Foot");
    EXPECT_EQ(truck.model_base_name, "BIG.BIN");
    EXPECT_EQ(truck.bar_texture, "") << "an empty value is a value";
    EXPECT_EQ(truck.axle_model_name, "A.BIN") << "the last line needs no end";
  }
  using namespace std::string_view_literals;
  EXPECT_EQ(Parsed("truckname\0\r\nA\0axlemodelname\0B\0\0"sv).axle_model_name, "B");
}

/// One key and what its field becomes.
TEST(TruckReading, ValuesByKind) {
  const auto point = [](const TruckPoint& p) { return Format("%g %g %g", p[0], p[1], p[2]); };
  const auto axle = [&](const CTruck& t) { return point(t.axle_bar_offset); };
  const auto tire = [](const CTruck& t) { return Format("%g", t.tires[kRearLeftTire][1]); };
  const auto count = [](const CTruck& t) { return Format("%d", t.light_count); };
  const struct {
    const char* key;
    const char* value;
    std::function<std::string(const CTruck&)> field;
    const char* expected;
  } cases[] = {{"mtm2 truckname", "a", [](const CTruck& t) { return t.name; }, "a"},
               {"TireModelName", "Tire", [](const CTruck& t) { return t.tire_base_name; }, "Tire"},
               {"tiremodelbasename", "Tire", [](const CTruck& t) { return t.tire_base_name; }, "Tire"},
               {"AXLEBAROFFSET", "1,-2.5,+3e1", axle, "1 -2.5 30"},
               {"axlebaroffset", "  1 ,\t.5 , 5. rest", axle, "1 0.5 5"},
               {"axlebaroffset", "1,2,", axle, "7 7 7"},
               {"axlebaroffset", "1,x,3", axle, "7 7 7"},
               {"axlebaroffset", "0x1,2,3", axle, "7 7 7"},
               {"axlebaroffset", "1,1e999,3", axle, "7 7 7"},
               {"axlebaroffset", "1,1e-999,-0.0001e-999999999999999999999", axle, "1 0 -0"},
               {"axlebaroffset", "nan,inf,3", axle, "7 7 7"},
               {"raxle.ltire.static_bpos.Y", "-2.25ft", tire, "-2.25"},
               {"raxle.ltire.static_bpos.y", "ft", tire, "7"},
               {"number of lights", "99", count, "99"},
               {"number of lights", "-3", count, "-3"},
               {"number of lights", "4294967296", count, "7"},
               {"number of lights", "+-4", count, "7"}};
  for (const auto& row : cases) {
    const std::string sevens =
        "axlebaroffset\n7,7,7\nraxle.ltire.static_bpos.y\n7\nnumber of lights\n7\n" + Format("%s\n", row.key);
    EXPECT_EQ(row.field(Parsed(sevens + row.value)), row.expected) << row.key << " / " << row.value;
  }
}

TEST(TruckReading, ScrapePointsCountFromOneAndLightsFromZero) {
  const CTruck truck = Parsed(
      "Scrape point 0 body axis x,y,z\n1,1,1\nscrape point 13 body axis x,y,z\ntruckname\nnot skipped\n"
      "SCRAPE POINT 1  Body Axis X,Y,Z\n2,3,4\nscrape point 012 body axis x,y,z\n5,6,7\n"
      "scrape point 2body axis x,y,z\n1,1,1\nscrape point -3 body axis x,y,z\n1,1,1\n"
      "light 14 type\n1\nlight 13 type\n5\nlight 0 TYPE\n3\nlight 99999999999 type\n1\nlight -1 type\n1\n");
  EXPECT_EQ(truck.name, "not skipped") << "the line behind a key that is none is a key again";
  CTruck expected;
  expected.name = truck.name;
  expected.scrape_points[0] = {2, 3, 4};
  expected.scrape_points[11] = {5, 6, 7};
  expected.lights[13].type = 5;
  expected.lights[0].type = 3;
  EXPECT_EQ(truck, expected);
  for (const int type : {-1, 0, 1, 2, 3, 4, 5, 6})
    EXPECT_EQ(Parsed(Format("light 2 type\n%d\n", type)).lights[2].type, type < 0 || type == 2 || type == 6 ? 0 : type);
}

TEST(TruckReading, LightNumbersAndNames) {
  const std::string before =
      "light 1 body axis pos x,y,z (ft), bitmap radius (ft)\n1,2,3,4\n"
      "light 1 heading (rad), pitch (rad), heading spin speed (rad/sec)\n5,6,7\n"
      "light 1 cone: length (ft), base radius (ft), rim radius (ft), texture name\n8,9,10, Cone.RAW\n"
      "light 1 source: bitmap name\nGlow.RAW\nlight 1 ms on, ms off (0 if light doesn't blink)\n250 , 750\n";
  const TruckLight light = Parsed(before).lights[1];
  EXPECT_EQ(light.position, (TruckPoint{1, 2, 3}));
  EXPECT_EQ(light.cone_rim_radius, 10);
  EXPECT_EQ(light.cone_texture, "Cone.RAW");
  EXPECT_EQ(light.ms_off, 750);
  const struct {
    const char* line;
    std::function<void(TruckLight&)> change;
  } cases[] = {{"heading (rad), pitch (rad), heading spin speed (rad/sec)\n1,2,x", [](TruckLight&) {}},
               {"ms on, ms off (0 if light doesn't blink)\n1", [](TruckLight&) {}},
               {"ms on, ms off (0 if light doesn't blink)\n1,x", [](TruckLight&) {}},
               {"body axis pos x,y,z (ft), bitmap radius (ft)\na,b,c,40", [](TruckLight& l) { l.bitmap_radius = 40; }},
               {"body axis pos x,y,z (ft), bitmap radius (ft)\n9,9,9,x",
                [](TruckLight& l) {
                  l.position = {9, 9, 9};
                }},
               {"cone: length (ft), base radius (ft), rim radius (ft), texture name\n1,,3,",
                [](TruckLight& l) { l.cone_texture = ""; }},
               {"cone: length (ft), base radius (ft), rim radius (ft), texture name\nnone", [](TruckLight&) {}}};
  for (const auto& row : cases) {
    TruckLight expected = light;
    row.change(expected);
    EXPECT_EQ(Parsed(before + "light 1 " + row.line).lights[1], expected) << row.line;
  }
}

TEST(TruckReading, WaveFilesEndWhereALineIsNone) {
  const struct {
    const char* text;
    std::array<std::string, 3> waves;
    int lights;
  } cases[] = {{"wave file\na.wav\nB.WAV\nnumber of lights\n3\n", {"a.wav", "B.WAV", ""}, 3},
               {"wave file\nnumber of lights\n3\n", {}, 3},
               {"Wave File\na.wav\nb.wav\nc.wav\nd.wav\nnumber of lights\n3\n", {"a.wav", "b.wav", "c.wav"}, 3},
               {"wave file\na.wav\n\nb.wav\nnumber of lights\n3", {"a.wav", "", ""}, 3},
               {"wave file\na.wav\nwave file\nb.wav\n", {"b.wav", "", ""}, 0},
               {"wave file\n.wav", {".wav", "", ""}, 0},
               {"wave file\nwav\n", {}, 0}};
  for (const auto& row : cases) {
    const CTruck truck = Parsed(row.text);
    EXPECT_EQ(truck.wave_files, row.waves) << row.text;
    EXPECT_EQ(truck.light_count, row.lights) << row.text;
  }
}

TEST(TruckReading, WhatIsNoTruckLeavesTheResetTruck) {
  std::string all_bytes;
  for (int i = 0; i < 1 << 16; ++i)
    all_bytes += static_cast<char>(i * 167 ^ i >> 7);
  for (const std::string& text :
       {std::string(), std::string("\n"), std::string("truckname"), std::string("truckname\r\n"),
        std::string("light 3 type"), std::string("scrape point "), std::string("light "), std::string("wave file"),
        all_bytes, std::string(5 << 20, '\0'), std::string(5 << 20, 'x')}) {
    EXPECT_EQ(Parsed(text), CTruck()) << text.substr(0, 20);
  }
  EXPECT_EQ(Parsed("x\ntruckname\nab").name, "ab");
  EXPECT_EQ(Parsed("truckname\nab\nAB").name, "ab") << "two bytes at the end are no key";
}

TEST(TruckReading, LoadChecksThePath) {
  const CTempFolder folder;
  const std::string content = "truckname\nBig\n";
  folder.Write("good.TRK", content);
  folder.Write("other.txt", content);
  folder.Write("folder.trk/inside", content);
  const std::pair<const char*, bool> cases[] = {
      {"good.TRK", true}, {"other.txt", false}, {"none.trk", false}, {"folder.trk", false}, {"trk", false}};
  for (const auto& [name, loads] : cases) {
    CTruck truck;
    truck.light_count = 3;
    SError error;
    EXPECT_EQ(truck.Load(folder.File(name), &error), loads) << name;
    EXPECT_EQ(truck.light_count, 0) << name;
    EXPECT_EQ(error.what.empty(), loads) << name;
  }
}

}  // namespace
}  // namespace veldra::testing
