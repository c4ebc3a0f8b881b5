#include <gtest/gtest.h>

#include <cerrno>
#include <cmath>
#include <limits>

#include "platform/text.h"
#include "support/testfiles.h"
#include "truck/richtruck.h"

namespace veldra::testing {
namespace {

std::string Replaced(std::string text, const std::string& what, const std::string& by) {
  for (size_t at = text.find(what); at != std::string::npos; at = text.find(what, at + by.size()))
    text.replace(at, what.size(), by);
  return text;
}

TEST(TruckWriting, EveryLineInItsOrderAndSpelling) {
  CTruck truck;
  truck.name = "Big Foot";
  truck.wave_files[0] = "a.wav";
  truck.tires[kFrontLeftTire] = {-1, 0.5, 1e-7};
  truck.scrape_points[11] = {1, 2, 3};
  ASSERT_EQ(truck.AddLight(), 0);
  ASSERT_EQ(truck.AddLight(), 1);
  truck.lights[1].type = 2;
  truck.lights[1].cone_texture = "C.RAW";
  truck.lights[1].ms_off = -5;
  const std::string z3 = "0.000000,0.000000,0.000000";
  std::string expected =
      "MTM2 truckName\nBig Foot\ntruckModelBaseName\n\ntireModelBaseName\n\naxleModelName\n\nshockTextureName\n\n"
      "barTextureName\n\naxlebarOffset\n#\ndriveshaftPos\n#\n"
      "faxle.rtire.static_bpos.x\n0.000000\nfaxle.ltire.static_bpos.x\n-1.000000\n"
      "raxle.rtire.static_bpos.x\n0.000000\nraxle.ltire.static_bpos.x\n0.000000\n"
      "faxle.rtire.static_bpos.y\n0.000000\nfaxle.ltire.static_bpos.y\n0.500000\n"
      "raxle.rtire.static_bpos.y\n0.000000\nraxle.ltire.static_bpos.y\n0.000000\n"
      "faxle.rtire.static_bpos.z\n0.000000\nfaxle.ltire.static_bpos.z\n0.000000\n"
      "raxle.rtire.static_bpos.z\n0.000000\nraxle.ltire.static_bpos.z\n0.000000\n";
  for (int i = 1; i <= 11; ++i)
    expected += Format("Scrape point %d body axis x,y,z\n#\n", i);
  expected +=
      "Scrape point 12 body axis x,y,z\n1.000000,2.000000,3.000000\nInstrument Cluster\npowerbig\n"
      "Wave File\na.wav\n\n\nNumber of Lights\n2\n";
  for (int i = 0; i < 2; ++i)
    expected += Format(
        "Light %d type\n%d\nLight %d body axis pos x,y,z (ft), bitmap radius (ft)\n#,0.000000\n"
        "Light %d heading (rad), pitch (rad), heading spin speed (rad/sec)\n#\n"
        "Light %d cone: length (ft), base radius (ft), rim radius (ft), texture name\n#,%s\n"
        "Light %d source: bitmap name\n\nLight %d ms on, ms off (0 if light doesn't blink)\n0,%d\n",
        i, i * 2, i, i, i, i == 1 ? "C.RAW" : "", i, i, i * -5);
  EXPECT_EQ(truck.FileText(), Replaced(Replaced(expected, "#", z3), "\n", "\r\n"));
}

TEST(TruckWriting, ASavedTruckReadsBack) {
  for (unsigned seed = 0; seed < 50; ++seed) {
    const CTruck truck = RichTruck(seed);
    CTruck again;
    again.Parse(truck.FileText());
    EXPECT_EQ(again, truck) << "seed " << seed;
  }
  CTruck odd;
  odd.AddLight();
  odd.lights[0].type = 2;
  odd.Parse(odd.FileText());
  EXPECT_EQ(odd.lights[0].type, 0) << "a roof light comes back as a headlight";
  odd.light_count = 20;
  odd.Parse(odd.FileText());
  EXPECT_EQ(odd.light_count, 20);
}

TEST(TruckWriting, SavingIsWholeOrNothing) {
  const CTempFolder folder;
  const std::string path = folder.Write("t.trk", "old");
  const CTruck truck = RichTruck(1);
  for (const char* broken : {"open", "write", "sync", "rename"}) {
    SetFileFault([&](std::string_view operation, std::string_view) { return operation == broken ? EIO : 0; });
    SError error;
    EXPECT_FALSE(truck.Save(path, &error)) << broken;
    SetFileFault(nullptr);
    EXPECT_FALSE(error.what.empty()) << broken;
    EXPECT_EQ(ReadTestFile(path), "old") << broken;
  }
  EXPECT_TRUE(truck.Save(path));
  EXPECT_EQ(ReadTestFile(path), truck.FileText());
  EXPECT_FALSE(truck.Save(folder.File("none/t.trk")));
}

}  // namespace
}  // namespace veldra::testing
