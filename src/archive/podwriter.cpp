#include "archive/podwriter.h"

#include <algorithm>
#include <map>
#include <utility>

#include "archive/poddocument.h"
#include "archive/podnames.h"
#include "platform/bytes.h"
#include "platform/files.h"
#include "platform/inputfile.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/userfolders.h"

namespace veldra {

namespace {

constexpr const char* kCommentText = "Compiled by Veldra Version %d.%d.%d }";
constexpr const char* kTooLongText = "The archive would be longer than 4 GB, which its offsets cannot tell.";
constexpr const char* kChangedText = "its length changed while it was read";

std::string LoadErrorText(const SPodSource& source) {
  return Format(kLoadErrorText, DisplayFileName(source.name).c_str());
}

void Refuse(SPodPlan::SEntry& entry, std::string text, std::string details) {
  entry.refusal = std::move(text);
  entry.details = std::move(details);
}

/// Where the bytes lie, and how many there are.
void Measure(const SPodSource& source, SPodPlan::SEntry& entry) {
  if (source.bytes.length) {
    entry.length = *source.bytes.length;
  } else if (const auto length = FileLength(source.bytes.path)) {
    entry.length = *length;
  } else {
    const char* const reason = IsDirectory(source.bytes.path) ? "is a folder" : "there is no such file";
    Refuse(entry, LoadErrorText(source), source.bytes.path + ": " + reason);
  }
}

/// Writes one archive.
class CPodWriter {
 public:
  CPodWriter(CQuestions& questions, const std::string& path, const std::vector<SPodSource>& sources, SPodPlan plan)
      : questions_(questions), path_(path), sources_(sources), plan_(std::move(plan)), file_(path) {}

  bool Write();

 private:
  std::vector<uint8_t> Directory() const;
  bool AppendAll();
  bool Append(size_t index);
  /// Opens what source INDEX lies in, unless it is the file that is open already: the entries of one archive follow one
  /// another.
  bool Open(size_t index);
  bool IsItself(const SPodSource& source) const;
  bool FailToWrite() { return questions_.Fail(Format("\"%s\" could not be written.", path_.c_str()), error_.what); }
  bool FailToLoad(size_t index) {
    const SPodSource& source = sources_[index];
    return questions_.Fail(LoadErrorText(source), source.bytes.path + ": " + error_.what);
  }

  CQuestions& questions_;
  const std::string& path_;
  const std::vector<SPodSource>& sources_;
  SPodPlan plan_;
  CReplacement file_;
  CInputFile input_;
  std::string input_path_;
  std::unique_ptr<CProgress> progress_;
  uint64_t done_ = 0;
  SError error_;
};

std::vector<uint8_t> CPodWriter::Directory() const {
  CByteWriter writer;
  uint64_t offset = kPodHeaderSize + kPodRecordSize * plan_.entries.size();
  writer.WriteU32(static_cast<uint32_t>(plan_.entries.size()));
  writer.WriteFixedText(PodComment(), kPodCommentSize);
  for (const SPodPlan::SEntry& entry : plan_.entries) {
    writer.WriteFixedText(entry.name, kPodNameSize);
    writer.WriteU32(static_cast<uint32_t>(entry.length));
    writer.WriteU32(static_cast<uint32_t>(offset));
    offset += entry.length;
  }
  return {writer.Bytes().begin(), writer.Bytes().end()};
}

bool CPodWriter::Write() {
  progress_ = questions_.BeginWork("Writing the archive", true);
  if (!file_.Open(&error_) || !file_.Write(Directory(), &error_)) return FailToWrite();
  if (!AppendAll()) return false;
  // The archive may be one of its own sources, and some systems replace no file that is open.
  input_.Close();
  return (file_.Finish(&error_) && file_.Commit(&error_)) || FailToWrite();
}

bool CPodWriter::AppendAll() {
  for (size_t i = 0; i < sources_.size(); ++i) {
    if (!Append(i)) return false;
    if (!progress_->Step(done_, plan_.total)) return false;
  }
  return true;
}

bool CPodWriter::Append(size_t index) {
  if (!Open(index)) return FailToLoad(index);
  const SFilePart& part = sources_[index].bytes;
  const uint64_t length = plan_.entries[index].length;
  bool stopped = false;
  const auto step = [&](uint64_t count) {
    done_ += count;
    stopped = !progress_->Step(done_, plan_.total);
    return !stopped;
  };
  if (!file_.CopyFrom(input_, part.offset, length, step, &error_)) {
    error_.what = part.path + ": " + error_.what;
    return stopped ? false : FailToWrite();
  }
  // A file that grew or shrank since its length was written down is not the file that it was.
  if (input_.LengthNow() == input_.Length()) return true;
  error_.what = kChangedText;
  return FailToLoad(index);
}

bool CPodWriter::Open(size_t index) {
  const SPodSource& source = sources_[index];
  const SFilePart& part = source.bytes;
  const bool is_open = input_.IsOpen() && part.length && input_path_ == part.path;
  if (!is_open && !OpenPart(part, input_, &error_)) return false;
  input_path_ = part.path;
  const uint64_t length = plan_.entries[index].length;
  if (!part.length && IsItself(source)) {
    error_.what = "is the archive that is to be written";
    return false;
  }
  error_.what = kChangedText;
  return part.offset <= input_.Length() && length <= input_.Length() - part.offset &&
         (part.length || length == input_.Length());
}

bool CPodWriter::IsItself(const SPodSource& source) const {
  return EqualNoCase(FileNamePart(source.bytes.path), FileNamePart(path_)) &&
         ComparablePath(source.bytes.path) == ComparablePath(path_);
}

}  // namespace

std::string PodComment() {
  return Format(kCommentText, VELDRA_VERSION_MAJOR, VELDRA_VERSION_MINOR, VELDRA_VERSION_PATCH);
}

bool SPodPlan::AllGood() const {
  return std::all_of(entries.begin(), entries.end(), [](const SEntry& entry) { return entry.refusal.empty(); });
}

SPodPlan CheckPodSources(const std::vector<SPodSource>& sources) {
  SPodPlan plan;
  plan.total = kPodHeaderSize + kPodRecordSize * sources.size();
  std::map<std::string, size_t> taken;
  for (const SPodSource& source : sources) {
    SPodPlan::SEntry& entry = plan.entries.emplace_back();
    SNameResult name = PodEntryName(source.name);
    if (!name.Ok()) {
      Refuse(entry, std::move(name.refusal), std::move(name.details));
      continue;
    }
    entry.name = std::move(name.name);
    const auto [row, is_new] = taken.emplace(NameKey(entry.name), plan.entries.size() - 1);
    if (is_new) {
      Measure(source, entry);
    } else {
      Refuse(entry, LoadErrorText(source), source.bytes.path + ": the archive has another \"" + entry.name + "\"");
    }
    if (!entry.refusal.empty()) continue;
    // Lengths near the largest number would wrap.
    if (entry.length > kLongestArchive || plan.total + entry.length > kLongestArchive) {
      Refuse(entry, kTooLongText, source.bytes.path);
    } else {
      plan.total += entry.length;
    }
  }
  return plan;
}

bool CreatePod(CQuestions& questions, const std::string& path, const std::vector<SPodSource>& sources) {
  SPodPlan plan = CheckPodSources(sources);
  for (const SPodPlan::SEntry& entry : plan.entries)
    if (!entry.refusal.empty()) questions.Fail(entry.refusal, entry.details);
  if (!plan.AllGood()) return false;
  return CPodWriter(questions, path, sources, std::move(plan)).Write();
}

}  // namespace veldra
