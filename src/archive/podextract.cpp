#include "archive/podextract.h"

#include <algorithm>
#include <numeric>
#include <utility>

#include "archive/extractplan.h"
#include "archive/podedit.h"
#include "platform/files.h"
#include "platform/inputfile.h"
#include "platform/outputfolder.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kNoDestinationText = "Please enter a valid destination directory.";
constexpr const char* kReplaceText = "\"%s\" already exists.\nReplace existing file?";
constexpr const char* kDestinationErrorText = "Failed to open destination file";
constexpr const char* kWriteErrorText = "\"%s\" could not be extracted.";
constexpr const char* kResultText = "Extracted %d of %d files";
constexpr const char* kManyBytesText =
    "The files hold %s, %llu times as much as their archive.\nExtract them all the same?";
/// Entries may share bytes of the archive; those of the game's archives never do, and this is room enough for others.
constexpr uint64_t kUsualGrowth = 10;
/// A message shows so many refused entries; its details have the rest.
constexpr size_t kShownAtOnce = 10;

std::string BytesText(uint64_t count) {
  return Counted(static_cast<int64_t>(count), "byte", "bytes");
}

enum class EWritten { kYes, kNo, kStop };

class CExtraction {
 public:
  CExtraction(CQuestions& questions, CPodDocument& archive, const SExtractRequest& request)
      : questions_(questions), archive_(archive), request_(request) {}

  SExtractResult Run();

 private:
  bool OpenArchive();
  std::vector<size_t> WorkList() const;
  void ShowRefused(const std::vector<SRefusedEntry>& refused);
  void ShowShared(const std::vector<SExtractStep>& steps);
  /// The steps to be taken, or nothing when Cancel was answered.
  std::optional<std::vector<SExtractStep>> Confirm(const std::vector<SExtractStep>& steps);
  /// What all of them will hold, in bytes.
  uint64_t Sum(const std::vector<SExtractStep>& steps) const;
  /// Asks about more than an archive of this length should hold, and says when the disk has no room for it.
  bool CheckSum(const std::vector<SExtractStep>& steps);
  bool CheckSpace(const std::vector<SExtractStep>& steps);
  bool WriteAll(const std::vector<SExtractStep>& steps);
  EWritten Write(const SExtractStep& step, CProgress& progress);
  EWritten Copy(COutputFile& file, const SExtractStep& step, CProgress& progress);
  EWritten Skip(const SExtractStep& step, const std::string& reason);
  void ShowSkipped();
  void Warn(std::string text, std::string details = {}) {
    questions_.Message(
        {.text = std::move(text), .caption = kErrorCaption, .icon = EIcon::kWarning, .details = std::move(details)});
  }

  CQuestions& questions_;
  CPodDocument& archive_;
  const SExtractRequest& request_;
  CInputFile input_;
  SExtractResult result_;
  COutputFolder output_;
  std::string skipped_;  ///< a line for each destination that could not be opened
  uint64_t done_ = 0;    ///< progress, in bytes and files
  uint64_t all_ = 0;
};

SExtractResult CExtraction::Run() {
  if (!OpenArchive()) return result_;
  SError error;
  if (!IsDirectory(request_.destination) || !output_.Open(request_.destination, &error)) {
    Warn(kNoDestinationText, error.what);
    return result_;
  }
  result_.started = true;
  CExtractPlan plan(archive_, request_);
  for (const size_t entry : WorkList()) {
    ++result_.total;
    plan.Add(entry);
  }
  result_.refused = plan.Refused().size();
  if (!plan.Refused().empty()) ShowRefused(plan.Refused());
  ShowShared(plan.Steps());
  const auto steps = Confirm(plan.Steps());
  result_.done = steps && CheckSum(*steps) && CheckSpace(*steps) && WriteAll(*steps);
  return result_;
}

bool CExtraction::OpenArchive() {
  SError error;
  if (archive_.Open(input_, &error)) return true;
  Warn(kFailedToOpenPod, error.what);
  return false;
}

std::vector<size_t> CExtraction::WorkList() const {
  std::vector<size_t> wanted = request_.entries;
  if (request_.add_dependencies) request_.add_dependencies(wanted);
  std::vector<size_t> list;
  std::vector<bool> is_listed(archive_.Entries().size());
  for (const size_t entry : wanted) {
    if (entry >= is_listed.size() || is_listed[entry]) continue;
    is_listed[entry] = true;
    list.push_back(entry);
  }
  return list;
}

void CExtraction::ShowRefused(const std::vector<SRefusedEntry>& refused) {
  std::string text =
      refused.size() == 1 ? "One file cannot be extracted:" : Format("%zu files cannot be extracted:", refused.size());
  std::string details;
  for (size_t i = 0; i < refused.size(); ++i) {
    const std::string name = DisplayName(archive_.Entries()[refused[i].entry].Name());
    const std::string line = Format("\"%s\": %s", name.c_str(), refused[i].reason.c_str());
    if (i < kShownAtOnce) {
      text += '\n' + line;
    } else {
      details += (details.empty() ? "" : "\n") + line;
    }
  }
  if (!details.empty()) text += "\n...";
  Warn(std::move(text), std::move(details));
}

/// Nothing is wrong with that, but each of them is not a file of its own in the archive.
void CExtraction::ShowShared(const std::vector<SExtractStep>& steps) {
  std::vector<size_t> entries;
  entries.reserve(steps.size());
  for (const SExtractStep& step : steps)
    entries.push_back(step.entry);
  const auto pairs = FindSharedBytes(archive_, std::move(entries));
  if (pairs.empty()) return;
  std::string details;
  const auto name = [&](size_t entry) { return DisplayName(archive_.Entries()[entry].Name()); };
  for (const auto& [holder, entry] : pairs)
    details += (details.empty() ? "" : "\n") + name(entry) + " with " + name(holder);
  Warn(Counted(static_cast<int64_t>(pairs.size()), "file has", "files have") + " bytes in common with another one.",
       std::move(details));
}

std::optional<std::vector<SExtractStep>> CExtraction::Confirm(const std::vector<SExtractStep>& steps) {
  std::vector<SExtractStep> confirmed;
  bool ask = true;
  for (const SExtractStep& step : steps) {
    EReplaceAnswer answer = EReplaceAnswer::kYes;
    if (step.exists && ask) {
      answer = questions_.AskReplace({.text = Format(kReplaceText, step.path.c_str()), .icon = EIcon::kQuestion});
    }
    if (answer == EReplaceAnswer::kCancel) return std::nullopt;
    if (answer == EReplaceAnswer::kYesToAll) ask = false;
    if (answer != EReplaceAnswer::kNo) confirmed.push_back(step);
  }
  return confirmed;
}

uint64_t CExtraction::Sum(const std::vector<SExtractStep>& steps) const {
  return std::accumulate(steps.begin(), steps.end(), uint64_t{0}, [&](uint64_t sum, const SExtractStep& step) {
    return sum + archive_.Entries()[step.entry].length;
  });
}

bool CExtraction::CheckSum(const std::vector<SExtractStep>& steps) {
  const uint64_t sum = Sum(steps);
  if (sum <= kUsualGrowth * archive_.ArchiveLength()) return true;
  const unsigned long long times = sum / archive_.ArchiveLength();
  const SMessage question{
      .text = Format(kManyBytesText, BytesText(sum).c_str(), times), .icon = EIcon::kWarning, .usual = EAnswer::kNo};
  return questions_.AskYesNo(question) == EAnswer::kYes;
}

bool CExtraction::CheckSpace(const std::vector<SExtractStep>& steps) {
  const auto space = output_.FreeSpace();
  const uint64_t sum = Sum(steps);
  if (!space || sum <= *space) return true;
  // Only now is it worth looking at what the replaced files give back.
  uint64_t replaced = 0;
  for (const SExtractStep& step : steps)
    if (step.exists) replaced += FileLength(step.path).value_or(0);
  if (sum <= *space + replaced) return true;
  Warn("There is not enough space on the disk.",
       Format("The files need %s, and %s are free.", BytesText(sum).c_str(), BytesText(*space).c_str()));
  return false;
}

bool CExtraction::WriteAll(const std::vector<SExtractStep>& steps) {
  all_ = Sum(steps) + steps.size();
  const auto progress = questions_.BeginWork("Extracting files", true);
  bool stopped = false;
  for (size_t i = 0; i < steps.size() && !stopped; ++i) {
    const EWritten written = Write(steps[i], *progress);
    if (written == EWritten::kYes) {
      if (request_.marks) archive_.MarkExtracted(steps[i].entry);
      ++result_.extracted;
    }
    stopped = written == EWritten::kStop || !progress->Step(++done_, all_);
  }
  ShowSkipped();
  return !stopped;
}

EWritten CExtraction::Write(const SExtractStep& step, CProgress& progress) {
  SError error;
  if (!output_.Enter(step.folder, &error)) return Skip(step, error.what);
  COutputFile file(output_, step.name);
  if (!file.Open(&error)) return Skip(step, error.what);
  return Copy(file, step, progress);
}

EWritten CExtraction::Copy(COutputFile& file, const SExtractStep& step, CProgress& progress) {
  const SPodEntry& entry = archive_.Entries()[step.entry];
  SError error;
  bool stopped = false;
  const auto tell = [&](uint64_t count) {
    done_ += count;
    stopped = !progress.Step(done_, all_);
    return !stopped;
  };
  const SFilePart part = archive_.PartOf(entry);
  CInputFile other;
  if (entry.file > 0 && !OpenPart(part, other, &error)) return Skip(step, error.what);
  const CInputFile& input = entry.file > 0 ? other : input_;
  const uint64_t length = part.length.value_or(input.Length());
  if (file.CopyFrom(input, part.offset, length, tell, &error) && file.Commit(&error)) return EWritten::kYes;
  // A full disk or a broken archive will not get better with the next file.
  if (!stopped) {
    ++result_.refused;
    Warn(Format(kWriteErrorText, step.path.c_str()), error.what);
  }
  return EWritten::kStop;
}

EWritten CExtraction::Skip(const SExtractStep& step, const std::string& reason) {
  ++result_.refused;
  skipped_ += (skipped_.empty() ? "" : "\n") + step.path + ": " + reason;
  return EWritten::kNo;
}

void CExtraction::ShowSkipped() {
  if (!skipped_.empty()) Warn(kDestinationErrorText, skipped_);
}

}  // namespace

std::string SExtractResult::Text() const {
  return Format(kResultText, static_cast<int>(extracted), static_cast<int>(total));
}

SExtractResult ExtractPod(CQuestions& questions, CPodDocument& archive, const SExtractRequest& request) {
  return CExtraction(questions, archive, request).Run();
}

}  // namespace veldra
