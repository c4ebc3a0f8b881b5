#include "tools/modelsearch.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <utility>

#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::string_view kBlanks = " \t\n\v\f\r";

/// Digits alone: "0x18" is the beginning of a label.
std::optional<int32_t> NumberOf(std::string_view word) {
  const bool is_digits = std::all_of(word.begin(), word.end(), [](char c) { return c >= '0' && c <= '9'; });
  return is_digits ? ParseInteger(word) : std::nullopt;
}

bool Contains(std::string_view text, std::string_view part) {
  return text.find(part) != std::string_view::npos;
}

std::vector<int32_t> UpTo(int32_t count) {
  std::vector<int32_t> all(static_cast<size_t>(count));
  std::iota(all.begin(), all.end(), 0);
  return all;
}

}  // namespace

CModelSearch::CModelSearch(std::string_view text) {
  for (size_t at = text.find_first_not_of(kBlanks); at != std::string_view::npos;
       at = text.find_first_not_of(kBlanks, at)) {
    const size_t end = std::min(text.find_first_of(kBlanks, at), text.size());
    const std::string_view word = text.substr(at, end - at);
    words_.push_back({LowerCase(word), NumberOf(word)});
    at = end;
  }
  for (const SWord& word : words_) {
    if (!word.number) continue;
    is_contradiction_ |= number_ && *number_ != *word.number;
    number_ = word.number;
  }
  is_only_number_ =
      !words_.empty() && std::all_of(words_.begin(), words_.end(), [](const SWord& word) { return word.number; });
}

bool CModelSearch::FitsName(std::string_view name) const {
  const std::string lower = LowerCase(ToUtf8(name));
  return std::all_of(words_.begin(), words_.end(), [&](const SWord& word) { return Contains(lower, word.text); });
}

/// Numbers apart.
bool CModelSearch::FitsFace(const std::string& label, const std::string& texture) const {
  return std::all_of(words_.begin(), words_.end(), [&](const SWord& word) {
    return word.number || Contains(label, word.text) || Contains(texture, word.text);
  });
}

std::vector<int32_t> CModelSearch::Faces(const CBinModel& model) const {
  if (IsEmpty()) return UpTo(model.FaceCount());
  std::vector<int32_t> found;
  if (is_contradiction_) return found;
  // Many faces, few kinds of them.
  std::map<std::pair<uint32_t, const CBinTexture*>, bool> known;
  const auto fits = [&](const CBinFace& face) {
    const auto [place, is_new] = known.try_emplace({face.Type(), face.Texture()}, false);
    if (is_new)
      place->second = FitsFace(LowerCase(FaceTypeLabel(face.Type())),
                               face.Texture() == nullptr ? "" : LowerCase(ToUtf8(face.Texture()->Name())));
    return place->second;
  };
  const int32_t first = number_ ? std::min(*number_, model.FaceCount()) : 0;
  const int32_t end = number_ && first < model.FaceCount() ? first + 1 : model.FaceCount();
  for (int32_t i = first; i < end; ++i)
    if (fits(model.Face(i))) found.push_back(i);
  return found;
}

std::vector<int32_t> CModelSearch::Vertices(const CBinModel& model) const {
  if (IsEmpty()) return UpTo(model.VertexCount());
  if (!is_only_number_ || is_contradiction_ || *number_ >= model.VertexCount()) return {};
  return {*number_};
}

std::vector<int32_t> CModelSearch::Textures(const CBinModel& model) const {
  std::vector<int32_t> found;
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    if (FitsName(model.Texture(i).Name())) found.push_back(i);
  return found;
}

std::vector<int32_t> CModelSearch::Groups(const CBinModel& model, EGroupKind kind) const {
  std::vector<int32_t> found;
  const CBinModel::Groups& groups = model.GroupsOf(kind);
  for (size_t i = 0; i < groups.size(); ++i)
    if (FitsName(groups[i].Name())) found.push_back(static_cast<int32_t>(i));
  return found;
}

}  // namespace veldra
