#include "mapping/guidelist.h"

#include <algorithm>
#include <optional>
#include <sstream>

#include "platform/numberrule.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr double kLastTexel = 511;

std::string PlacesText(const std::vector<double>& places) {
  std::string text;
  for (const double place : places)
    text += " " + NumberText(place);
  return text;
}

/// Nothing for what is no list of places on a texture.
std::optional<std::vector<double>> PlacesOf(const std::string& text) {
  std::vector<double> places;
  std::istringstream words(text);
  for (std::string word; words >> word;) {
    const auto place = ParseNumber(word);
    const bool is_place = place && *place >= 0 && *place <= kLastTexel && places.size() < kMostGuides;
    if (!is_place) return std::nullopt;
    places.push_back(*place);
  }
  return places;
}

}  // namespace

void KeepGuides(NamedGuides& all, const std::string& name, STextureGuides guides) {
  std::erase_if(all, [&](const auto& known) { return known.first == name; });
  for (std::vector<double>* lines : {&guides.across, &guides.down})
    lines->resize(std::min(lines->size(), kMostGuides));
  if (guides == STextureGuides{}) return;
  all.emplace_back(name, std::move(guides));
  if (all.size() > kMostGuidedTextures) all.erase(all.begin());
}

std::string GuidesText(const NamedGuides& all) {
  std::string text;
  for (const auto& [name, guides] : all)
    text += name + "|" + PlacesText(guides.across) + "|" + PlacesText(guides.down) + "\n";
  return text;
}

NamedGuides GuidesOf(std::string_view text) {
  NamedGuides all;
  std::istringstream lines{std::string(text)};
  for (std::string line; std::getline(lines, line);) {
    const size_t second = line.rfind('|');
    const size_t first = second == std::string::npos || second == 0 ? std::string::npos : line.rfind('|', second - 1);
    if (first == std::string::npos || first == 0) continue;
    const auto across = PlacesOf(line.substr(first + 1, second - first - 1));
    const auto down = PlacesOf(line.substr(second + 1));
    if (across && down) KeepGuides(all, line.substr(0, first), {*across, *down});
  }
  return all;
}

}  // namespace veldra
