#pragma once

#include <string_view>

namespace veldra::crash {

/// For a program that is about to end and can rely on nothing: writes with WRITE what is known. REASON is the system's.
void WriteReport(void (*write)(std::string_view text), std::string_view reason);

/// Where the report goes; its folder.
const char* ReportPath();
const char* ReportFolder();

/// Catches what ends a program that crashes, and writes the report then.
void Watch();

}  // namespace veldra::crash
