#include <gtest/gtest.h>

#include "truck/newtruck.h"
#include "truck/richtruck.h"

namespace veldra::testing {
namespace {

std::string Types(const CTruck& truck) {
  std::string types;
  for (int i = 0; i < truck.UsedLights(); ++i)
    types += static_cast<char>('0' + truck.lights[static_cast<size_t>(i)].type);
  return types;
}

CTruck WithLights(int count) {
  CTruck truck;
  for (int i = 0; i < count; ++i)
    truck.lights[static_cast<size_t>(truck.AddLight())].type = i % 10;
  return truck;
}

TEST(Truck, LightsAreAddedUpToFourteen) {
  CTruck truck = WithLights(14);
  EXPECT_EQ(truck.AddLight(), -1);
  EXPECT_EQ(truck.light_count, 14);
  truck = WithLights(3);
  truck.lights[3].type = 5;
  EXPECT_EQ(truck.AddLight(), 3);
  EXPECT_EQ(truck.lights[3], TruckLight()) << "a light left over in the free place is reset";
  for (const int count : {-1, 20}) {
    truck.light_count = count;
    EXPECT_EQ(truck.AddLight(), count < 0 ? 0 : -1);
  }
}

TEST(Truck, LightsAreDeletedAndMoved) {
  using Operation = bool (CTruck::*)(int);
  const struct {
    Operation operation;
    int light;
    bool works;
    const char* types;
  } cases[] = {{&CTruck::DeleteLight, 0, true, "123"},      {&CTruck::DeleteLight, 2, true, "013"},
               {&CTruck::DeleteLight, 3, true, "012"},      {&CTruck::DeleteLight, 4, false, "0123"},
               {&CTruck::DeleteLight, -1, false, "0123"},   {&CTruck::MoveLightUp, 0, false, "0123"},
               {&CTruck::MoveLightUp, 3, true, "0132"},     {&CTruck::MoveLightUp, 4, false, "0123"},
               {&CTruck::MoveLightDown, 0, true, "1023"},   {&CTruck::MoveLightDown, 3, false, "0123"},
               {&CTruck::MoveLightDown, -1, false, "0123"}, {&CTruck::MoveLightDown, 2147483647, false, "0123"}};
  for (const auto& row : cases) {
    CTruck truck = WithLights(4);
    EXPECT_EQ((truck.*row.operation)(row.light), row.works) << row.light;
    EXPECT_EQ(Types(truck), row.types) << row.light;
    EXPECT_EQ(truck.lights[static_cast<size_t>(truck.light_count)], TruckLight());
  }
}

TEST(Truck, NewOnesHaveFileNamesAndPairsOfLights) {
  for (const auto& [name, base] :
       {std::pair("Big-Foot 4x4", "BIGFOOT4"), std::pair("\xE9 !", ""), std::pair("A1", "A1")})
    EXPECT_EQ(TruckFileBase(name), base);
  CTruck truck = PlainTruck();
  EXPECT_EQ(CountLights(truck, 1), 2);
  const auto taken = TakeLights(truck, 1);
  ASSERT_EQ(taken.size(), 2u);
  EXPECT_EQ(taken[0].position[0], -taken[1].position[0]);
  AddLights(truck, taken);
  while (AddLightPair(truck, 0)) {
  }
  EXPECT_EQ(truck.light_count, kTruckLights);
}

TEST(Truck, Dependencies) {
  CTruck truck;
  truck.axle_model_name = "axle.bin";
  truck.model_base_name = "body.Bin";
  truck.tire_base_name = "tire";
  truck.bar_texture = "bar.raw";
  truck.wave_files = {"b.wav", "", "A.WAV"};
  ASSERT_EQ(truck.AddLight(), 0);
  ASSERT_EQ(truck.AddLight(), 1);
  truck.lights[0].cone_texture = "CONE.RAW";
  truck.lights[1].cone_texture = "cone.raw";
  truck.lights[1].source_bitmap = "noext";
  truck.lights[2].source_bitmap = "unused.raw";
  using Names = std::vector<std::string>;
  STruckDependencies needed = truck.GetDependencies();
  EXPECT_EQ(needed.models, (Names{"AXLE.BIN", "BODY.BIN", "TIRE08L.BIN", "TIRE08R.BIN", "TIRE10L.BIN", "TIRE10R.BIN",
                                  "TIRE16L.BIN", "TIRE16R.BIN"}));
  EXPECT_EQ(needed.textures, (Names{"BAR.RAW", "CONE.RAW", "NOEXT"}));
  EXPECT_EQ(needed.palettes, (Names{"BAR.ACT", "CONE.ACT", "NOEXT.ACT"}));
  EXPECT_EQ(needed.sounds, (Names{"B.WAV", "A.WAV"}));

  truck.tire_base_name = "wheel.bin";
  truck.axle_model_name = "";
  truck.light_count = 1000;
  needed = truck.GetDependencies();
  EXPECT_EQ(needed.models, (Names{"BODY.BIN", "WHEEL.BIN"}));
  EXPECT_EQ(needed.textures.back(), "UNUSED.RAW");
  truck.tire_base_name = ".bin";
  EXPECT_EQ(truck.GetDependencies().models[1], ".BIN08L.BIN") << "four characters are no file name";
}

}  // namespace
}  // namespace veldra::testing
