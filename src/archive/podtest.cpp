#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

#include "archive/podedit.h"
#include "archive/podnames.h"
#include "platform/text.h"

namespace veldra {

namespace {

class CPodTest {
 public:
  explicit CPodTest(const CPodDocument& archive) : archive_(archive) {}

  std::vector<SPodFinding> Run() {
    for (size_t i = 0; i < archive_.Entries().size(); ++i) {
      TestPlace(i);
      TestName(i);
    }
    TestOverlaps();
    std::ranges::stable_sort(findings_, {}, [](const SPodFinding& finding) { return finding.entries.back(); });
    return std::move(findings_);
  }

 private:
  const SPodEntry& Entry(size_t i) const { return archive_.Entries()[i]; }
  std::string Name(size_t i) const { return DisplayName(Entry(i).Name()); }

  void Add(const char* kind, std::string text, std::vector<size_t> entries) {
    std::ranges::replace(text, '\n', ' ');
    findings_.push_back({kind, std::move(text), std::move(entries)});
  }

  void TestPlace(size_t i) {
    const EPodFault fault = Entry(i).fault;
    if (fault == EPodFault::kNone) return;
    Add(fault == EPodFault::kDirectory ? "overlap" : "beyond-end", Name(i) + ": " + PodFaultText(fault), {i});
  }

  void TestName(size_t i) {
    const std::string name(Entry(i).Name());
    const auto [first, is_new] = by_name_.try_emplace(NameKey(name), i);
    if (!is_new)
      Add("twice", Format("%s stands at %zu and at %zu", Name(i).c_str(), first->second, i), {first->second, i});
    const SNameResult path = SafeRelativePath(name, true);
    if (!path.Ok()) return Add("unsafe-name", Name(i) + ": " + path.refusal, {i});
    const SNameResult usable = PodEntryName(name);
    if (!usable.Ok())
      Add("unusable-name", usable.details.empty() ? usable.refusal : usable.refusal + ": " + usable.details, {i});
  }

  void TestOverlaps() {
    std::vector<size_t> all(archive_.Entries().size());
    std::iota(all.begin(), all.end(), size_t{0});
    for (const auto& [holder, i] : FindSharedBytes(archive_, std::move(all)))
      Add("overlap", Format("%s and %s have bytes in common", Name(holder).c_str(), Name(i).c_str()),
          {std::min(holder, i), std::max(holder, i)});
  }

  const CPodDocument& archive_;
  std::map<std::string, size_t> by_name_;
  std::vector<SPodFinding> findings_;
};

}  // namespace

std::vector<std::pair<size_t, size_t>> FindSharedBytes(const CPodDocument& archive, std::vector<size_t> entries) {
  const auto at = [&](size_t i) -> const SPodEntry& { return archive.Entries()[i]; };
  std::erase_if(entries,
                [&](size_t i) { return at(i).length == 0 || at(i).file > 0 || at(i).fault == EPodFault::kOutside; });
  std::ranges::stable_sort(entries, {}, [&](size_t i) { return at(i).offset; });
  std::vector<std::pair<size_t, size_t>> pairs;
  uint64_t end = 0;
  size_t holder = 0;
  for (const size_t i : entries) {
    if (at(i).offset < end) pairs.emplace_back(holder, i);
    const uint64_t own_end = uint64_t{at(i).offset} + at(i).length;
    if (own_end <= end) continue;
    end = own_end;
    holder = i;
  }
  return pairs;
}

std::vector<SPodFinding> TestPod(const CPodDocument& archive) {
  return CPodTest(archive).Run();
}

}  // namespace veldra
