#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

/// The kinds of file that the game knows, and the folder in which it looks for each.
namespace veldra {

/// Types are numbered 0 to 35; 36 stands for every other extension.
inline constexpr int kFileTypeCount = 36;
inline constexpr int kTypeOther = 36;

/// One row of the table.
struct SFileType {
  std::string_view extension;
  std::string_view folder;
};

inline constexpr std::array<SFileType, kFileTypeCount> kFileTypes = {{
    {"TRK", "TRUCK"},   {"BIN", "MODELS"},  {"RAW", "ART"},   {"ACT", "ART"},   {"WAV", "SOUND"}, {"BMP", "UI"},
    {"TXT", "DATA"},    {"LOC", "UI"},      {"RGN", "UI"},    {"DLL", "UI"},    {"ANI", "DATA"},  {"CL0", "DATA"},
    {"CL1", "DATA"},    {"CL2", "DATA"},    {"CLR", "DATA"},  {"LTE", "DATA"},  {"RA0", "DATA"},  {"RA1", "DATA"},
    {"RA2", "DATA"},    {"RA3", "DATA"},    {"RA4", "DATA"},  {"RA5", "DATA"},  {"TEX", "DATA"},  {"TTY", "DATA"},
    {"MAP", "FOG"},     {"LVL", "LEVELS"},  {"SIT", "WORLD"}, {"MOD", "MUSIC"}, {"KLP", "SOUND"}, {"DMO", "DEMO"},
    {"NDX", "STARTUP"}, {"TRN", "TOURNEY"}, {"AAI", "ART"},   {"200", "DATA"},  {"400", "DATA"},  {"480", "DATA"},
}};

inline constexpr size_t kExtensionSize = 4;  ///< with its "."

enum EFileType : int { kTypeTrk = 0, kTypeBin = 1, kTypeRaw = 2, kTypeAct = 3, kTypeWav = 4 };

/// The folder of TYPE, 0 to 36: "TRUCK", "MODELS", ..., "OTHER".
std::string FolderOfType(int type);
/// "TRK", "BIN", ...; TYPE 0 to 35.
std::string ExtensionOfType(int type);
/// The type of files with EXTENSION (no ".", any letter case); nothing when the table has none.
std::optional<int> TypeOfExtension(std::string_view extension);
/// The type of a file NAME by its last three letters behind a ".": 0 to 36.
int TypeOfFile(std::string_view name);

}  // namespace veldra
