#include "packing/texturecatalog.h"

#include <gtest/gtest.h>

#include "archive/testpod.h"
#include "packing/modeltextures.h"
#include "support/testfiles.h"
#include "textures/rawtexture.h"

namespace veldra::testing {

TEST(TextureCatalog, ListsEachNameWhereAModelWouldFindIt) {
  const CTempFolder folder;
  const std::string texels(4096, '\1');
  const std::string table(768, '\x50');
  for (const char* name : {"art/A.RAW", "art/a.act", "art/LONGERNAME.RAW", "art/note.txt", "project/A.RAW"})
    folder.Write(name, std::string(name).ends_with("act") ? table : texels);
  folder.Write("art/ODD.RAW", "12345");
  folder.Write("project/near.pod", MakePod({{"ART\\B.RAW", texels},
                                            {"ART\\B.ACT", table},
                                            {"ART\\odd.raw", texels},
                                            {"ART\\C.RAW", std::string(16384, '\2')},
                                            {"DATA\\HEIGHTS.RAW", std::string(65536, '\3')}}));
  CSettings settings;
  settings.art_dir = folder.File("art");
  settings.pod_dir = folder.File("nowhere");
  CTextureCatalog catalog(PlacesOfTextures(settings, folder.File("project/m.bin"), ""));
  while (catalog.Step()) {
  }
  const struct {
    const char* name;
    const char* place;
    int size;
    bool has_colors;
    bool is_faulty;
  } rows[] = {{"A.RAW", "art", 64, true, false},
              {"LONGERNAME.RAW", "art", 64, false, true},
              {"ODD.RAW", "art", 0, false, true},
              {"B.RAW", "project/near.pod", 64, true, false},
              {"C.RAW", "project/near.pod", 128, false, true}};
  ASSERT_EQ(catalog.Textures().size(), std::size(rows));
  for (size_t i = 0; i < std::size(rows); ++i) {
    const SCatalogTexture& found = catalog.Textures()[i];
    SCOPED_TRACE(rows[i].name);
    EXPECT_EQ(found.raw.name, rows[i].name);
    EXPECT_TRUE(IsSameFile(found.place, folder.File(rows[i].place))) << found.place;
    EXPECT_EQ(found.size, rows[i].size);
    EXPECT_EQ(found.colors.has_value(), rows[i].has_colors);
    EXPECT_EQ(!GameFault(found.raw.name, found.size).empty(), rows[i].is_faulty);
    const auto raw = RawTextureOf(ReadTextureSource(found.raw, found.colors), GreyRamp(), nullptr);
    EXPECT_EQ(raw.has_value(), found.size != 0);
    EXPECT_EQ(raw && raw->has_own_colors, found.colors.has_value());
  }
}

}  // namespace veldra::testing
