#include <gtest/gtest.h>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/registry.h"
#include "support/testfiles.h"

namespace veldra {
namespace {

#ifdef _WIN32

TEST(Registry, ReadsTextsOfTheMachine) {
  const std::string key = "SOFTWARE\\Microsoft\\Windows NT\\CurrentVersion";
  EXPECT_NE(ReadMachineRegistry(key, "CurrentVersion").value_or(""), "");
  EXPECT_FALSE(ReadMachineRegistry(key, "InstallDate")) << "a number";
  EXPECT_FALSE(ReadMachineRegistry(key, "No such value"));
  EXPECT_FALSE(ReadMachineRegistry(key + "\\No such key", "CurrentVersion"));
}

#else

using testing::CTempFolder;
using testing::CVariable;

constexpr const char* kRegistry = R"(WINE REGISTRY Version 2
;; All keys relative to \\Machine

[Software\\Other] 1
"InstalledTo"="wrong key"

[Software\\Microsoft\\Monster Truck Madness\\1.0\\Sub] 2
"InstalledTo"="wrong key too"

[Software\\Microsoft\\Monster Truck Madness\\1.0] 1700000000
#time=1da
@="default"
"A\"quoted\"name"="tab\tnewline\nslash\\octal\101"
"Cut"="no end
"Number"=dword:00000001
"Foreign"="C:\\M\xfcller\\\x6a21\xd83d\xde9a0\\\xd83dx"
"installedto"="C:\\Games\\MTM2"

[Software\\Wow6432Node\\Game] 3
"Path"="D:\\"
)";

TEST(Registry, ReadsTheFileOfTheWinePrefix) {
  const CTempFolder folder;
  const CVariable prefix("WINEPREFIX", folder.Path());
  folder.Write("system.reg", kRegistry);
  const std::string key = "SOFTWARE\\Microsoft\\Monster Truck Madness\\1.0";
  const struct {
    std::string key;
    const char* name;
    std::optional<std::string> value;
  } kCases[] = {{key, "InstalledTo", "C:\\Games\\MTM2"},
                {key, "A\"quoted\"name", "tab\tnewline\nslash\\octalA"},
                {key, "Foreign",
                 "C:\\M\xC3\xBCller\\\xE6\xA8\xA1\xF0\x9F\x9A\x9A"
                 "0\\\xEF\xBF\xBDx"},
                {key, "Cut", {}},
                {key, "Number", {}},
                {key, "Path", {}},
                {"SOFTWARE\\GAME", "PATH", "D:\\"},
                {"Software\\None", "InstalledTo", {}}};
  for (const auto& each : kCases)
    EXPECT_EQ(ReadMachineRegistry(each.key, each.name), each.value) << each.name;
  EXPECT_TRUE(RemoveFile(folder.File("system.reg")));
  EXPECT_FALSE(ReadMachineRegistry(key, "InstalledTo"));
}

TEST(Registry, LeadsToTheDrivesOfTheWinePrefix) {
  const CTempFolder folder;
  const CVariable prefix("WINEPREFIX", folder.Path());
  folder.Write("drive_c/Program Files/Game/ART/x.act", "");
  ASSERT_TRUE(MakeDirectories(folder.File("dosdevices")));
  std::string drive = folder.File("dosdevices/c:");
  ASSERT_EQ(symlink("../drive_c", drive.c_str()), 0);
  EXPECT_EQ(RegistryPathToNative("C:\\PROGRAM FILES\\game\\Art"), drive + "/Program Files/Game/ART");
  EXPECT_EQ(RegistryPathToNative("c:\\Missing\\Game"), drive + "/Missing/Game");
  EXPECT_EQ(RegistryPathToNative("C:\\"), drive + "/");
  for (const char* path : {"D:\\Game", "Game", "\\Game", "C:", ""})
    EXPECT_FALSE(RegistryPathToNative(path)) << path;
}

#endif

}  // namespace
}  // namespace veldra
