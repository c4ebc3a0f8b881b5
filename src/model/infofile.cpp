#include "model/infofile.h"

#include <algorithm>

#include "platform/text.h"

namespace veldra {

namespace {

/// A name or a word of the file for a complaint: in quotation marks and not endless.
std::string Quoted(std::string_view text) {
  constexpr size_t kMost = 40;
  const std::string shown = text.size() > kMost ? std::string(text.substr(0, kMost)) + "..." : std::string(text);
  return '"' + DisplayName(shown) + '"';
}

/// Hands out the lines of a text one by one, whatever ends them.
class CLines {
 public:
  explicit CLines(std::string_view text) : rest_(text) {}

  bool AtEnd() const { return rest_.empty(); }
  int Number() const { return number_; }  ///< of the line that Next gave last, from 1
  size_t Left() const { return rest_.size(); }

  std::string_view Next() {
    ++number_;
    const size_t end = std::min(rest_.find_first_of("\r\n"), rest_.size());
    const std::string_view line = rest_.substr(0, end);
    const bool is_pair = rest_.substr(end, 2) == "\r\n";
    rest_.remove_prefix(std::min(rest_.size(), end + (is_pair ? 2 : 1)));
    return line;
  }

 private:
  std::string_view rest_;
  int number_ = 0;
};

class CInfoReader {
 public:
  explicit CInfoReader(std::string_view text) : lines_(text) {}

  SModelInfo Read() {
    // A section whose length is in doubt leaves open where the next one begins: nothing after it is taken.
    if (ReadGroups("face groups", info_.face_groups) && ReadGroups("vertex groups", info_.vertex_groups)) {
      ReadAnimations();
    }
    return std::move(info_);
  }

 private:
  void Complain(const std::string& what) {
    info_.complaints.push_back(Format("line %d: %s", lines_.Number(), what.c_str()));
  }

  /// The number of entries of a section, each of LINES lines; nothing when it cannot be.
  std::optional<int32_t> ReadCount(const char* section, size_t lines) {
    if (lines_.AtEnd()) {
      Complain(Format("the file ends before the number of %s", section));
      return std::nullopt;
    }
    const std::string_view line = lines_.Next();
    const auto count = ParseInteger(Trim(line));
    if (!count || *count < 0) {
      Complain(Quoted(line) + " is no number of " + section);
      return std::nullopt;
    }
    // Even an empty line takes a byte, but for the last one of a file without a final line end.
    if (static_cast<size_t>(*count) > (lines_.Left() + 1) / lines) {
      Complain(Format("%d %s are more than the file has room for", *count, section));
      return std::nullopt;
    }
    return count;
  }

  bool ReadGroups(const char* section, std::vector<SModelInfo::SGroup>& groups) {
    const auto count = ReadCount(section, 2);
    if (!count) return false;
    for (int32_t i = 0; i < *count; ++i) {
      if (lines_.AtEnd()) {
        Complain(Format("the file ends after %d of %d %s", i, *count, section));
        return false;
      }
      SModelInfo::SGroup& group = groups.emplace_back();
      group.name = lines_.Next();
      if (!lines_.AtEnd()) ReadMembers(lines_.Next(), group);
    }
    return true;
  }

  void ReadMembers(std::string_view line, SModelInfo::SGroup& group) {
    constexpr std::string_view kBlanks = " \t\v\f";
    std::string_view fault;
    for (size_t begin = line.find_first_not_of(kBlanks); begin != std::string_view::npos;) {
      const size_t end = std::min(line.find_first_of(kBlanks, begin), line.size());
      const std::string_view word = line.substr(begin, end - begin);
      const auto member = ParseInteger(word);
      if (member) group.members.push_back(*member);
      if (!member && fault.empty()) fault = word;
      begin = line.find_first_not_of(kBlanks, end);
    }
    if (!fault.empty()) Complain(Quoted(fault) + " is no member of a group");
  }

  void ReadAnimations() {
    const auto count = ReadCount("animation names", 1);
    if (!count) return;
    for (int32_t i = 0; i < *count; ++i) {
      if (lines_.AtEnd()) {
        Complain(Format("the file ends after %d of %d animation names", i, *count));
        return;
      }
      info_.animations.emplace_back(lines_.Next());
    }
  }

  CLines lines_;
  SModelInfo info_;
};

CBinModel::Groups GroupsWithin(int32_t count, EGroupKind kind, std::vector<SModelInfo::SGroup> groups,
                               std::vector<std::string>& complaints) {
  CBinModel::Groups result;
  for (SModelInfo::SGroup& group : groups) {
    const size_t left_out = std::erase_if(group.members, [count](int32_t m) { return m < 0 || m >= count; });
    if (left_out > 0) {
      complaints.push_back(Format("group %s: %zu members lie outside the model's %d %s", Quoted(group.name).c_str(),
                                  left_out, count, kind == EGroupKind::kFaces ? "faces" : "vertices"));
    }
    result.emplace_back(std::move(group.name), kind, std::move(group.members));
  }
  return result;
}

void AddGroupsOfKind(CBinModel& model, EGroupKind kind, const std::vector<SModelInfo::SGroup>& groups,
                     std::vector<std::string>& complaints) {
  const int32_t count = kind == EGroupKind::kFaces ? model.FaceCount() : model.VertexCount();
  const auto names = model.AddGroups(kind, GroupsWithin(count, kind, groups, complaints));
  for (size_t i = 0; i < names.size(); ++i) {
    if (names[i] == groups[i].name) continue;
    complaints.push_back("group " + Quoted(groups[i].name) + " is now " + Quoted(names[i]));
  }
}

/// A name is a line: what would end it early becomes a blank.
void WriteName(std::string name, std::string& text) {
  std::replace_if(
      name.begin(), name.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
  text += name;
  text += '\n';
}

void WriteGroups(const CBinModel::Groups& groups, std::string& text) {
  text += Format("%zu\n", groups.size());
  for (const CBinGroup& group : groups) {
    WriteName(group.Name(), text);
    const char* separator = "";
    for (const int32_t member : group.Members()) {
      text += separator;
      text += std::to_string(member);
      separator = " ";
    }
    text += '\n';
  }
}

}  // namespace

SModelInfo ParseInfo(std::string_view text) {
  if (text.empty()) return {};
  return CInfoReader(text).Read();
}

void AddInfoGroups(CBinModel& model, SModelInfo& info) {
  AddGroupsOfKind(model, EGroupKind::kFaces, info.face_groups, info.complaints);
  AddGroupsOfKind(model, EGroupKind::kVertices, info.vertex_groups, info.complaints);
}

std::string WriteInfo(const CBinModel& model, std::span<const std::string> animations) {
  std::string text;
  WriteGroups(model.FaceGroups(), text);
  WriteGroups(model.VertexGroups(), text);
  text += Format("%zu\n", animations.size());
  for (const std::string& name : animations)
    WriteName(name, text);
  return text;
}

}  // namespace veldra
