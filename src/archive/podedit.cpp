#include "archive/podedit.h"

#include <algorithm>
#include <array>
#include <memory>
#include <set>
#include <utility>

#include "archive/podnames.h"
#include "platform/bytes.h"
#include "platform/inputfile.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kChangedSourceText = "It has changed while the archive was written.";

/// An entry of the archive to be.
struct SPart {
  std::array<char, kPodNameSize> name_field = {};
  SFilePart bytes;
  uint64_t length = 0;
  const uint8_t* memory = nullptr;  ///< the bytes themselves, in place of where they are
};

void SetName(SPart& part, const std::string& name) {
  part.name_field = {};
  std::copy_n(name.begin(), std::min(name.size(), kPodNameSize - 1), part.name_field.begin());
}

SPart PartOf(const CPodDocument& archive, const SPodEntry& entry) {
  SPart part{.bytes = archive.PartOf(entry), .length = entry.length};
  std::copy_n(entry.name_field, kPodNameSize, part.name_field.begin());
  return part;
}

std::vector<SPart> PartsOf(const CPodDocument& archive) {
  std::vector<SPart> parts;
  parts.reserve(archive.Entries().size() + 1);
  for (const SPodEntry& entry : archive.Entries())
    parts.push_back(PartOf(archive, entry));
  return parts;
}

/// Writes PARTS, with the comment of ARCHIVE, to PATH.
class CPodRewriter {
 public:
  CPodRewriter(CQuestions& questions, const CPodDocument& archive, const std::vector<SPart>& parts,
               const std::string& path)
      : questions_(questions), archive_(archive), parts_(parts), path_(path), file_(path) {
    total_ = kPodHeaderSize + kPodRecordSize * parts_.size();
    for (const SPart& part : parts_)
      total_ += part.length;
  }

  bool Write() {
    if (total_ > kLongestArchive)
      return questions_.Fail("The archive would be longer than 4 GB, which its offsets cannot tell.");
    progress_ = questions_.BeginWork("Writing the archive", true);
    if (!(file_.Open(&error_) && file_.Write(Directory(), &error_))) return FailToWrite();
    for (size_t i = 0, end = 0; i < parts_.size(); i = end) {
      end = EndOfRun(i);
      if (!Copy(i, end)) return false;
    }
    // Some systems replace no file that is open.
    input_.Close();
    return (file_.Finish(&error_) && file_.Commit(&error_)) || FailToWrite();
  }

 private:
  bool FailToWrite() { return questions_.Fail(Format("\"%s\" could not be written.", path_.c_str()), error_.what); }

  bool FailToRead(const std::string& path) {
    return questions_.Fail(Format("\"%s\" could not be read.", path.c_str()), error_.what);
  }

  std::vector<uint8_t> Directory() const {
    CByteWriter writer;
    writer.WriteU32(static_cast<uint32_t>(parts_.size()));
    writer.WriteBytes(archive_.Head().subspan(kPodHeaderSize - kPodCommentSize, kPodCommentSize));
    uint64_t offset = kPodHeaderSize + kPodRecordSize * parts_.size();
    for (const SPart& part : parts_) {
      writer.WriteBytes({reinterpret_cast<const uint8_t*>(part.name_field.data()), part.name_field.size()});
      writer.WriteU32(static_cast<uint32_t>(part.length));
      writer.WriteU32(static_cast<uint32_t>(offset));
      offset += part.length;
    }
    return {writer.Bytes().begin(), writer.Bytes().end()};
  }

  /// Of the parts from BEGIN on those that lie one behind the other in one file are copied as one.
  size_t EndOfRun(size_t begin) const {
    const SFilePart& first = parts_[begin].bytes;
    uint64_t offset = first.offset + parts_[begin].length;
    size_t end = begin + 1;
    if (!first.length || parts_[begin].memory != nullptr) return end;
    for (; end < parts_.size(); ++end) {
      const SFilePart& next = parts_[end].bytes;
      if (!next.length || parts_[end].memory != nullptr || next.offset != offset || next.path != first.path) break;
      offset += parts_[end].length;
    }
    return end;
  }

  bool Copy(size_t begin, size_t end) {
    const SFilePart& part = parts_[begin].bytes;
    uint64_t length = 0;
    for (size_t i = begin; i < end; ++i)
      length += parts_[i].length;
    if (parts_[begin].memory != nullptr)
      return file_.Write({parts_[begin].memory, static_cast<size_t>(length)}, &error_) || FailToWrite();
    if (input_path_ != part.path && !OpenPart(part, input_, &error_)) return FailToRead(part.path);
    input_path_ = part.path;
    bool stopped = false;
    const auto step = [&](uint64_t count) {
      done_ += count;
      stopped = !progress_->Step(done_, total_);
      return !stopped;
    };
    if (!file_.CopyFrom(input_, part.offset, length, step, &error_)) return stopped ? false : FailToWrite();
    if (part.length || input_.LengthNow() == length) return true;
    error_.what = kChangedSourceText;
    return FailToRead(part.path);
  }

  CQuestions& questions_;
  const CPodDocument& archive_;
  const std::vector<SPart>& parts_;
  const std::string& path_;
  CReplacement file_;
  std::unique_ptr<CProgress> progress_;
  CInputFile input_;
  std::string input_path_;
  uint64_t total_ = 0;
  uint64_t done_ = 0;
  SError error_;
};

bool CheckKept(CQuestions& questions, const SPodEntry& entry) {
  if (entry.fault == EPodFault::kNone) return true;
  return questions.Fail(
      Format("\"%s\" is damaged: %s.", DisplayName(entry.Name()).c_str(), PodFaultText(entry.fault).c_str()),
      "The archive cannot be written anew while it is in it.");
}

/// KEPT: the entries among PARTS that a change is not about.
bool Rewrite(CQuestions& questions, const CPodDocument& archive, const std::vector<SPart>& parts,
             const std::vector<size_t>& kept) {
  const bool are_good = std::ranges::all_of(kept, [&](size_t i) { return CheckKept(questions, archive.Entries()[i]); });
  return are_good && CPodRewriter(questions, archive, parts, archive.Path()).Write();
}

std::vector<size_t> AllBut(const CPodDocument& archive, const std::set<size_t>& without) {
  std::vector<size_t> all;
  for (size_t i = 0; i < archive.Entries().size(); ++i)
    if (!without.contains(i)) all.push_back(i);
  return all;
}

/// The entry of that name, any case; nothing when it is free.
std::optional<size_t> Holder(const CPodDocument& archive, const std::string& name) {
  for (size_t i = 0; i < archive.Entries().size(); ++i)
    if (NameKey(archive.Entries()[i].Name()) == NameKey(name)) return i;
  return std::nullopt;
}

bool FailNotThere(CQuestions& questions, const std::string& name) {
  return questions.Fail(Format("\"%s\" is not in the archive.", name.c_str()));
}

bool FailTaken(CQuestions& questions, const std::string& name) {
  return questions.Fail(Format("The archive has a \"%s\" already.", name.c_str()));
}

}  // namespace

std::optional<size_t> FindOneEntry(CQuestions& questions, const CPodDocument& archive, const std::string& name) {
  const std::vector<size_t> found = archive.FindMatching(name);
  if (found.empty()) {
    FailNotThere(questions, name);
    return std::nullopt;
  }
  const auto key = [&](size_t entry) { return NameKey(archive.Entries()[entry].Name()); };
  const bool are_one = std::ranges::all_of(found, [&](size_t entry) { return key(entry) == key(found.front()); });
  if (are_one) return found.back();
  std::string list;
  for (const size_t entry : found)
    list += DisplayName(archive.Entries()[entry].Name()) + "\n";
  questions.Fail(Format("\"%s\" means %zu entries of the archive.", name.c_str(), found.size()), list);
  return std::nullopt;
}

bool SavePod(CQuestions& questions, const CPodDocument& archive, const std::string& path) {
  const auto is_good = [&](const SPodEntry& entry) { return CheckKept(questions, entry); };
  const std::vector<SPart> parts = PartsOf(archive);
  return std::ranges::all_of(archive.Entries(), is_good) && CPodRewriter(questions, archive, parts, path).Write();
}

bool AddToPod(CQuestions& questions, const CPodDocument& archive, const std::vector<SPodSource>& sources) {
  const SPodPlan plan = CheckPodSources(sources);
  std::vector<SPart> parts = PartsOf(archive);
  bool all_good = true;
  for (size_t i = 0; i < sources.size(); ++i) {
    const SPodPlan::SEntry& entry = plan.entries[i];
    if (!entry.refusal.empty())
      all_good = questions.Fail(entry.refusal, entry.details);
    else if (Holder(archive, entry.name))
      all_good = FailTaken(questions, entry.name);
    SPart& part = parts.emplace_back(SPart{.bytes = sources[i].bytes, .length = entry.length});
    SetName(part, entry.name);
  }
  return all_good && Rewrite(questions, archive, parts, AllBut(archive, {}));
}

bool RemoveFromPod(CQuestions& questions, const CPodDocument& archive, const std::vector<std::string>& names) {
  std::set<size_t> removed;
  for (const std::string& name : names) {
    const std::vector<size_t> found = archive.FindMatching(name);
    if (found.empty()) return FailNotThere(questions, name);
    removed.insert(found.begin(), found.end());
  }
  const std::vector<size_t> kept = AllBut(archive, removed);
  std::vector<SPart> parts;
  parts.reserve(kept.size());
  for (const size_t i : kept)
    parts.push_back(PartOf(archive, archive.Entries()[i]));
  return Rewrite(questions, archive, parts, kept);
}

bool RenameInPod(CQuestions& questions, const CPodDocument& archive, const std::string& old_name,
                 const std::string& new_name) {
  const auto entry = FindOneEntry(questions, archive, old_name);
  if (!entry) return false;
  const SNameResult name = PodEntryName(new_name);
  if (!name.Ok()) return questions.Fail(name.refusal, name.details);
  const auto holder = Holder(archive, name.name);
  if (holder && *holder != *entry) return FailTaken(questions, name.name);
  std::vector<SPart> parts = PartsOf(archive);
  SetName(parts[*entry], name.name);
  return Rewrite(questions, archive, parts, AllBut(archive, {}));
}

bool ReplaceInPod(CQuestions& questions, const CPodDocument& archive, const std::string& name,
                  const std::string& path) {
  const auto entry = FindOneEntry(questions, archive, name);
  if (!entry) return false;
  const auto length = IsFile(path) ? FileLength(path) : std::nullopt;
  if (!length) return questions.Fail(Format("\"%s\" could not be opened.", path.c_str()), "There is no such file.");
  std::vector<SPart> parts = PartsOf(archive);
  parts[*entry].bytes = {path};
  parts[*entry].length = *length;
  return Rewrite(questions, archive, parts, AllBut(archive, {*entry}));
}

bool ReplaceInPod(CQuestions& questions, const CPodDocument& archive, size_t entry, std::span<const uint8_t> bytes) {
  std::vector<SPart> parts = PartsOf(archive);
  static constexpr uint8_t kNothing = 0;
  parts[entry].memory = bytes.empty() ? &kNothing : bytes.data();
  parts[entry].length = bytes.size();
  return Rewrite(questions, archive, parts, AllBut(archive, {entry}));
}

}  // namespace veldra
