#pragma once

#include <array>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

/// Inside the glTF reader: JSON that anybody may have written. Whatever is missing or of another kind is as if it were
/// not there.
namespace veldra::gltf {

using Json = nlohmann::json;

/// Parses TEXT, which is refused before memory is taken where its tree would be far larger than the text or deeper than
/// any file's. Nothing with FAULT filled.
std::optional<Json> ParseJson(std::string_view text, std::string& fault);

/// The member KEY of OBJECT; null where it has none, or is none.
const Json* Member(const Json* object, const char* key);
/// Element INDEX of the array that is OBJECT's member KEY.
const Json* Element(const Json* object, const char* key, std::optional<size_t> index);
size_t CountOf(const Json* object, const char* key);  ///< of that array
/// A whole number from 0 on.
std::optional<size_t> WholeNumber(const Json* object, const char* key);
double NumberOr(const Json* object, const char* key, double fallback);
std::string TextOr(const Json* object, const char* key, std::string fallback);

/// The member KEY where it is an array of that many finite numbers.
template <size_t Count>
std::optional<std::array<double, Count>> Numbers(const Json* object, const char* key) {
  const Json* const array = Member(object, key);
  if (array == nullptr || !array->is_array() || array->size() != Count) return std::nullopt;
  std::array<double, Count> numbers;
  for (size_t i = 0; i < Count; ++i) {
    if (!(*array)[i].is_number()) return std::nullopt;
    numbers[i] = (*array)[i].get<double>();
  }
  return numbers;
}

}  // namespace veldra::gltf
