#include "archive/podchanges.h"

#include <algorithm>

#include "archive/filetypes.h"
#include "archive/podnames.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kReplaceEntryText = "\"%s\" is in the archive already.\nReplace it?";

std::string StepName(const char* verb, size_t count, const std::string& only) {
  const std::string what = count == 1 ? DisplayName(only) : Counted(static_cast<int64_t>(count), "file", "files");
  return std::string(verb) + " " + what;
}

/// What CheckPodSources has against SOURCES, in one message.
bool AreGood(CQuestions& questions, const SPodPlan& plan) {
  std::string text;
  std::string details;
  for (const SPodPlan::SEntry& entry : plan.entries) {
    if (entry.refusal.empty()) continue;
    std::string& line = text.empty() ? text : details;
    line += (line.empty() ? "" : "\n") + entry.refusal;
    if (!entry.details.empty()) details += (details.empty() ? "" : "\n") + entry.details;
  }
  return text.empty() || questions.Fail(text, details);
}

bool FailTakenName(CQuestions& questions, const std::string& name) {
  return questions.Fail(Format("The archive has a \"%s\" already.", DisplayName(name).c_str()));
}

}  // namespace

void CPodChanges::Apply(const Places& taken, const Places& put) {
  const auto old = archive_.Entries();
  std::vector<SPodEntry> now;
  now.reserve(old.size() + put.size());
  touched_.clear();
  auto next_taken = taken.begin();
  auto next_put = put.begin();
  for (size_t i = 0; i < old.size() || next_put != put.end();) {
    if (next_put != put.end() && next_put->first == now.size()) {
      touched_.push_back(now.size());
      now.push_back(next_put++->second);
    } else if (next_taken != taken.end() && next_taken->first == i) {
      ++next_taken;
      ++i;
    } else {
      now.push_back(old[i++]);
    }
  }
  archive_.SetEntries(std::move(now));
}

bool CPodChanges::Do(SStep step) {
  if (step.taken.empty() && step.put.empty()) return false;
  Apply(step.taken, step.put);
  steps_.resize(done_);
  steps_.push_back(std::move(step));
  ++done_;
  return true;
}

void CPodChanges::StepBack() {
  if (!CanStepBack()) return;
  --done_;
  Apply(steps_[done_].put, steps_[done_].taken);
}

void CPodChanges::StepForward() {
  if (!CanStepForward()) return;
  Apply(steps_[done_].taken, steps_[done_].put);
  ++done_;
}

void CPodChanges::Clear() {
  steps_.clear();
  touched_.clear();
  done_ = 0;
}

bool CPodChanges::Add(CQuestions& questions, const std::vector<SPodSource>& sources, bool asks) {
  const SPodPlan plan = CheckPodSources(sources);
  if (!AreGood(questions, plan)) return false;
  SStep step;
  std::vector<SPodEntry> last;
  for (size_t i = 0; i < sources.size(); ++i) {
    const SPodPlan::SEntry& entry = plan.entries[i];
    const std::vector<size_t> holders = archive_.FindAll(entry.name);
    EReplaceAnswer answer = EReplaceAnswer::kYes;
    if (!holders.empty() && asks)
      answer = questions.AskReplace({.text = Format(kReplaceEntryText, entry.name.c_str()), .icon = EIcon::kQuestion});
    if (answer == EReplaceAnswer::kCancel) return false;
    if (answer == EReplaceAnswer::kNo) continue;
    if (answer == EReplaceAnswer::kYesToAll) asks = false;
    const SPodEntry made = archive_.NewEntry(entry.name, sources[i].bytes, static_cast<uint32_t>(entry.length));
    if (holders.empty()) {
      last.push_back(made);
      continue;
    }
    // The last one of a name is the one that the game finds.
    const SPodEntry& old = archive_.Entries()[holders.back()];
    step.taken.emplace_back(holders.back(), old);
    step.put.emplace_back(holders.back(), archive_.Renamed(made, old.Name()));
  }
  const auto by_place = [](const auto& a, const auto& b) { return a.first < b.first; };
  std::ranges::sort(step.taken, by_place);
  std::ranges::sort(step.put, by_place);
  for (const SPodEntry& made : last)
    step.put.emplace_back(archive_.Entries().size() - step.taken.size() + step.put.size(), made);
  step.name = step.put.empty()
                  ? ""
                  : StepName(last.empty() ? "Replace" : "Add", step.put.size(), FileNamePart(plan.entries[0].name));
  return Do(std::move(step));
}

bool CPodChanges::Replace(CQuestions& questions, size_t entry, const std::string& path) {
  const auto length = IsFile(path) ? FileLength(path) : std::nullopt;
  if (!length) return questions.Fail(Format("\"%s\" could not be opened.", path.c_str()), "There is no such file.");
  if (*length > kLongestArchive) return questions.Fail(Format("\"%s\" is too long for an archive.", path.c_str()));
  const SPodEntry& old = archive_.Entries()[entry];
  SStep step{.name = StepName("Replace", 1, std::string(old.FileName())), .taken = {{entry, old}}, .put = {}};
  SPodEntry made = archive_.NewEntry("", {path}, static_cast<uint32_t>(*length));
  made.name_field = old.name_field;  // what stands behind the name's zero stays
  step.put.emplace_back(entry, made);
  return Do(std::move(step));
}

bool CPodChanges::Rename(CQuestions& questions, size_t entry, const std::string& new_name) {
  const SPodEntry& old = archive_.Entries()[entry];
  const bool has_folder = new_name.find_first_of("\\/") != std::string::npos;
  const std::string folder(old.Folder());
  const bool keeps_folder = !has_folder && TypeOfFile(new_name) == kTypeOther && !folder.empty();
  const SNameResult name = PodEntryName(keeps_folder ? folder + '\\' + new_name : new_name);
  if (!name.Ok()) return questions.Fail(name.refusal, name.details);
  if (name.name == old.Name()) return false;
  const std::vector<size_t> holders = archive_.FindAll(name.name);
  if (std::ranges::any_of(holders, [&](size_t holder) { return holder != entry; }))
    return FailTakenName(questions, name.name);
  SStep step{.name = StepName("Rename", 1, std::string(old.FileName())), .taken = {{entry, old}}, .put = {}};
  step.put.emplace_back(entry, archive_.Renamed(old, name.name));
  return Do(std::move(step));
}

bool CPodChanges::Remove(const std::vector<size_t>& entries) {
  SStep step;
  for (const size_t i : entries)
    step.taken.emplace_back(i, archive_.Entries()[i]);
  if (!entries.empty())
    step.name = StepName("Remove", entries.size(), std::string(archive_.Entries()[entries.front()].FileName()));
  return Do(std::move(step));
}

bool CPodChanges::Move(const std::vector<size_t>& entries, size_t to) {
  SStep step;
  bool is_there = true;
  for (const size_t i : entries) {
    is_there = is_there && i == to + step.put.size();
    step.taken.emplace_back(i, archive_.Entries()[i]);
    step.put.emplace_back(to + step.put.size(), archive_.Entries()[i]);
  }
  if (is_there) return false;
  step.name = StepName("Move", entries.size(), std::string(archive_.Entries()[entries.front()].FileName()));
  return Do(std::move(step));
}

bool CPodChanges::Arrange(const std::vector<size_t>& order) {
  SStep step{.name = "Put in order", .taken = {}, .put = {}};
  for (size_t i = 0; i < order.size(); ++i) {
    if (order[i] == i) continue;
    step.taken.emplace_back(i, archive_.Entries()[i]);
    step.put.emplace_back(i, archive_.Entries()[order[i]]);
  }
  return Do(std::move(step));
}

}  // namespace veldra
