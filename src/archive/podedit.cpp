#include "archive/podedit.h"

#include <algorithm>
#include <array>
#include <set>
#include <utility>

#include "archive/podnames.h"
#include "platform/bytes.h"
#include "platform/inputfile.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// An entry of the archive to be.
struct SPart {
  std::array<char, kPodNameSize> name_field = {};
  SFilePart bytes;
  uint64_t length = 0;
};

void SetName(SPart& part, const std::string& name) {
  part.name_field = {};
  std::copy_n(name.begin(), std::min(name.size(), kPodNameSize - 1), part.name_field.begin());
}

SPart PartOf(const CPodDocument& archive, const SPodEntry& entry) {
  SPart part{.bytes = {archive.Path(), entry.offset, entry.length}, .length = entry.length};
  std::copy_n(entry.name_field, kPodNameSize, part.name_field.begin());
  return part;
}

std::vector<SPart> PartsOf(const CPodDocument& archive) {
  std::vector<SPart> parts;
  for (const SPodEntry& entry : archive.Entries())
    parts.push_back(PartOf(archive, entry));
  return parts;
}

/// Writes PARTS in place of ARCHIVE.
class CPodRewriter {
 public:
  CPodRewriter(CQuestions& questions, const CPodDocument& archive, const std::vector<SPart>& parts)
      : questions_(questions), archive_(archive), parts_(parts), file_(archive.Path()) {}

  bool Write() {
    uint64_t total = kPodHeaderSize + kPodRecordSize * parts_.size();
    for (const SPart& part : parts_)
      total += part.length;
    if (total > kLongestArchive)
      return questions_.Fail("The archive would be longer than 4 GB, which its offsets cannot tell.");
    const auto progress = questions_.BeginWork("Writing the archive", true);
    if (!WriteHead()) return false;
    uint64_t done = 0;
    for (const SPart& part : parts_) {
      done += part.length;
      if (!Copy(part) || !progress->Step(done, total)) return false;
    }
    // Some systems replace no file that is open.
    input_.Close();
    return (file_.Finish(&error_) && file_.Commit(&error_)) || FailToWrite();
  }

 private:
  bool FailToWrite() {
    return questions_.Fail(Format("\"%s\" could not be written.", archive_.Path().c_str()), error_.what);
  }

  bool WriteHead() {
    std::array<uint8_t, kPodCommentSize> comment = {};
    if (!input_.Open(archive_.Path(), &error_) || !input_.ReadAt(kPodHeaderSize - kPodCommentSize, comment, &error_))
      return FailToWrite();
    input_path_ = archive_.Path();
    CByteWriter writer;
    writer.WriteU32(static_cast<uint32_t>(parts_.size()));
    writer.WriteBytes(comment);
    uint64_t offset = kPodHeaderSize + kPodRecordSize * parts_.size();
    for (const SPart& part : parts_) {
      writer.WriteBytes({reinterpret_cast<const uint8_t*>(part.name_field.data()), part.name_field.size()});
      writer.WriteU32(static_cast<uint32_t>(part.length));
      writer.WriteU32(static_cast<uint32_t>(offset));
      offset += part.length;
    }
    return (file_.Open(&error_) && file_.Write(writer.Bytes(), &error_)) || FailToWrite();
  }

  bool Copy(const SPart& part) {
    if (input_path_ != part.bytes.path && !input_.Open(part.bytes.path, &error_)) return FailToWrite();
    input_path_ = part.bytes.path;
    return file_.CopyFrom(input_, part.bytes.offset, part.length, {}, &error_) || FailToWrite();
  }

  CQuestions& questions_;
  const CPodDocument& archive_;
  const std::vector<SPart>& parts_;
  CReplacement file_;
  CInputFile input_;
  std::string input_path_;
  SError error_;
};

/// KEPT: the entries among PARTS that a change is not about.
bool Rewrite(CQuestions& questions, const CPodDocument& archive, const std::vector<SPart>& parts,
             const std::vector<size_t>& kept) {
  for (const size_t i : kept) {
    const SPodEntry& entry = archive.Entries()[i];
    if (entry.fault != EPodFault::kNone)
      return questions.Fail(
          Format("\"%s\" is damaged: %s.", DisplayName(entry.Name()).c_str(), PodFaultText(entry.fault).c_str()),
          "The archive cannot be written anew while it is in it.");
  }
  return CPodRewriter(questions, archive, parts).Write();
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

}  // namespace veldra
