#include "archive/podcompare.h"

#include <algorithm>
#include <memory>
#include <unordered_map>

#include "archive/podnames.h"
#include "platform/inputfile.h"

namespace veldra {

namespace {

constexpr size_t kComparedAtOnce = size_t{1} << 20;

using Names = std::unordered_map<std::string, size_t>;

Names NamesOf(const CPodDocument& archive) {
  Names names;
  for (size_t i = 0; i < archive.Entries().size(); ++i)
    names[NameKey(archive.Entries()[i].Name())] = i;
  return names;
}

/// The file that the entries of one side are read from, which is nearly always the archive.
class CSide {
 public:
  explicit CSide(const CPodDocument& archive) : archive_(archive), buffer_(kComparedAtOnce) {}

  bool Enter(size_t entry) {
    part_ = archive_.PartOf(archive_.Entries()[entry]);
    if (part_.path.empty()) return false;
    if (part_.path == open_path_) return true;
    open_path_ = part_.path;
    return OpenPart(part_, file_);
  }
  bool Read(uint64_t at, size_t length) { return file_.ReadAt(part_.offset + at, std::span(buffer_).first(length)); }
  const std::vector<uint8_t>& Buffer() const { return buffer_; }

 private:
  const CPodDocument& archive_;
  CInputFile file_;
  std::string open_path_;
  SFilePart part_;
  std::vector<uint8_t> buffer_;
};

class CComparison {
 public:
  CComparison(CQuestions& questions, const CPodDocument& here, const CPodDocument& there)
      : here_(here), there_(there), progress_(questions.BeginWork("Comparing archives", true)) {}

  std::optional<std::vector<SPodPair>> Run() {
    const Names here = NamesOf(here_);
    const Names there = NamesOf(there_);
    for (size_t i = 0; i < here_.Entries().size(); ++i) {
      const std::string key = NameKey(here_.Entries()[i].Name());
      if (here.at(key) != i) continue;
      const auto other = there.find(key);
      const bool is_there = other != there.end();
      pairs_.push_back({is_there ? Compare(i, other->second) : EPodMatch::kOnlyHere, i,
                        is_there ? std::optional(other->second) : std::nullopt});
      if (!progress_->Step(i, here_.Entries().size())) return std::nullopt;
    }
    for (size_t i = 0; i < there_.Entries().size(); ++i) {
      const std::string key = NameKey(there_.Entries()[i].Name());
      if (there.at(key) == i && !here.contains(key)) pairs_.push_back({EPodMatch::kOnlyThere, std::nullopt, i});
    }
    return std::move(pairs_);
  }

 private:
  EPodMatch Compare(size_t mine, size_t other) {
    const uint32_t length = here_.Entries()[mine].length;
    if (!left_.Enter(mine) || !right_.Enter(other)) return EPodMatch::kUnknown;
    if (there_.Entries()[other].length != length) return EPodMatch::kDiffers;
    for (uint64_t at = 0; at < length; at += kComparedAtOnce) {
      const auto count = static_cast<size_t>(std::min<uint64_t>(kComparedAtOnce, length - at));
      if (!left_.Read(at, count) || !right_.Read(at, count)) return EPodMatch::kUnknown;
      if (!std::equal(left_.Buffer().begin(), left_.Buffer().begin() + static_cast<std::ptrdiff_t>(count),
                      right_.Buffer().begin()))
        return EPodMatch::kDiffers;
    }
    return EPodMatch::kSame;
  }

  const CPodDocument& here_;
  const CPodDocument& there_;
  std::unique_ptr<CProgress> progress_;
  CSide left_{here_};
  CSide right_{there_};
  std::vector<SPodPair> pairs_;
};

}  // namespace

std::optional<std::vector<SPodPair>> ComparePods(CQuestions& questions, const CPodDocument& here,
                                                 const CPodDocument& there) {
  return CComparison(questions, here, there).Run();
}

}  // namespace veldra
