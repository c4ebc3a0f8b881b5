#pragma once

#include <string_view>

namespace veldra {

/// The shipped list as it is written down: for each type that has names, its extension and the names with blanks
/// between them. It is not the whole list of the game (kExpectedStockCounts), whose owner can make that from the
/// installed archives.
struct SShippedNames {
  std::string_view extension;
  std::string_view names;
};

inline constexpr std::string_view kTrackNames = "ALASKA AUSSIE AZTEC BAJA CRAZY98";

inline constexpr SShippedNames kShippedNames[] = {
    {"TRK", "BEARFOOT BIGFOOT BOOGEY BULLDZR CRUSHER"},
    {"BIN", "02ALOE 02CACTUS 5GAS03"},
    {"RAW", "02CACTUS 10GREL1"},
    {"ACT", "02CACTUS 10GREL1"},
    {"WAV", "2NDGEAR 3RDGEAR ACCEL3B"},
    {"BMP", "2XSDIALG ABOUT"},
    {"TXT", kTrackNames},
    {"LOC", "MTM2-FUN MTM2-PIG"},
    {"RGN", "RADIODLG"},
    {"DLL", "TRIGLIDE"},
    {"ANI", kTrackNames},
    {"CL0", kTrackNames},
    {"CL1", kTrackNames},
    {"CL2", kTrackNames},
    {"CLR", kTrackNames},
    {"LTE", kTrackNames},
    {"RA0", kTrackNames},
    {"RA1", kTrackNames},
    {"RA2", kTrackNames},
    {"RA3", kTrackNames},
    {"RA4", kTrackNames},
    {"RA5", kTrackNames},
    {"TEX", kTrackNames},
    {"TTY", kTrackNames},
    {"MAP", kTrackNames},
    {"LVL", kTrackNames},
    {"SIT", kTrackNames},
    {"MOD", "SEX"},
    {"DMO", "DEMO1"},
    {"NDX", "FONT"},
    {"TRN", "DOUG TRI WHIRL"},
    {"AAI", "FI200 FI400 FI480"},
    {"200", "POWERBIG"},
    {"400", "POWERBIG"},
    {"480", "POWERBIG"},
};

}  // namespace veldra
