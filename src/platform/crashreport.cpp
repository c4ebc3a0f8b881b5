#include "platform/crashreport.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>

#include "platform/crashreport_system.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr std::string_view kPrefix = "crash-";
constexpr std::string_view kNewSuffix = ".new";
constexpr std::string_view kSuffix = ".txt";
constexpr size_t kMostKept = 10;
constexpr size_t kCommands = 20;

/// Zero-terminated at every moment.
template <size_t Size>
class CNote {
 public:
  void Set(std::string_view text) {
    const size_t count = std::min(text.size(), Size - 1);
    text.copy(text_.data(), count);
    text_[count] = 0;
  }
  const char* Text() const { return text_.data(); }

 private:
  std::array<char, Size> text_ = {};
};

CNote<4096> g_path;
CNote<4096> g_folder;
CNote<256> g_head;
CNote<16384> g_open;
CNote<1024> g_reason;
std::array<CNote<64>, kCommands> g_commands;
std::atomic<size_t> g_command_count = 0;

}  // namespace

const char* crash::ReportPath() {
  return g_path.Text();
}

const char* crash::ReportFolder() {
  return g_folder.Text();
}

void crash::WriteReport(void (*write)(std::string_view text), std::string_view reason) {
  for (const std::string_view text :
       {std::string_view(g_head.Text()), std::string_view("\n\nReason: "), reason, std::string_view("\n"),
        std::string_view(g_reason.Text()), std::string_view("\nOpen:\n"), std::string_view(g_open.Text()),
        std::string_view("\nLast commands:\n")})
    write(text);
  const size_t count = g_command_count;
  for (size_t i = count > kCommands ? count - kCommands : 0; i < count; ++i) {
    write(g_commands[i % kCommands].Text());
    write("\n");
  }
  write("\nStack:\n");
}

void ReportCrashes(const std::string& folder, const std::string& head) {
  g_folder.Set(folder);
  g_head.Set(head);
  const auto time = static_cast<unsigned long long>(std::chrono::system_clock::now().time_since_epoch().count());
  g_path.Set(JoinPath(folder, Format("crash-%016llx%s", time, std::string(kNewSuffix).c_str())));
  crash::Watch();
}

void NoteForCrash(std::string_view command) {
  const size_t count = g_command_count;
  g_commands[count % kCommands].Set(command);
  g_command_count = count + 1;
}

void NoteOpenForCrash(const std::vector<std::string>& files) {
  std::string text;
  for (const std::string& file : files)
    text += file + "\n";
  g_open.Set(text);
}

void NoteReasonForCrash(std::string_view reason) {
  g_reason.Set(reason);
}

std::vector<std::string> TakeNewCrashReports(const std::string& folder) {
  std::vector<std::string> kept;
  std::vector<std::string> fresh;
  for (const std::string& name : ListDirectory(folder)) {
    if (!name.starts_with(kPrefix)) continue;
    std::string path = JoinPath(folder, name);
    if (name.ends_with(kNewSuffix)) {
      std::string old = path.substr(0, path.size() - kNewSuffix.size()) + std::string(kSuffix);
      if (!RenameFile(path, old)) continue;
      fresh.push_back(old);
      path = std::move(old);
    }
    if (path.ends_with(kSuffix)) kept.push_back(std::move(path));
  }
  for (size_t i = 0; i + kMostKept < kept.size(); ++i)
    RemoveFile(kept[i]);
  return fresh;
}

}  // namespace veldra
