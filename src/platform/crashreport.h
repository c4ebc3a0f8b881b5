#pragma once

#include <string>
#include <string_view>
#include <vector>

/// What is left of a program that crashes: a text file with what was open, the last commands and where it was. Nothing
/// is sent anywhere.
namespace veldra {

/// From here on a crash writes a report into FOLDER, which is made when it is not there, and ends the program as it
/// would have without one. HEAD stands on top: program and version. Where sanitizers watch, they report instead.
void ReportCrashes(const std::string& folder, const std::string& head);

// What a later report tells. Kept in memory that is there at any time, so what is too long is cut off.
void NoteForCrash(std::string_view command);                   ///< the latest ones are kept
void NoteOpenForCrash(const std::vector<std::string>& files);  ///< instead of those before
void NoteReasonForCrash(std::string_view reason);              ///< the program is about to end

/// The reports in FOLDER that nobody has been told of, the latest last; from now on they are old ones. Only the newest
/// few of all are kept.
std::vector<std::string> TakeNewCrashReports(const std::string& folder);

}  // namespace veldra
