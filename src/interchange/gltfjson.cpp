#include "interchange/gltfjson.h"

#include <cmath>

#include "platform/text.h"

namespace veldra::gltf {

namespace {

/// Adds up what a tree would take.
class CTreeMeasure : public nlohmann::json_sax<Json> {
 public:
  explicit CTreeMeasure(size_t length) : left_(kFree + kOfEachByte * length) {}
  const std::string& Fault() const { return fault_; }

  bool null() override { return Take(kValue); }
  bool boolean(bool) override { return Take(kValue); }
  bool number_integer(number_integer_t) override { return Take(kValue); }
  bool number_unsigned(number_unsigned_t) override { return Take(kValue); }
  bool number_float(number_float_t, const string_t&) override { return Take(kValue); }
  bool string(string_t& text) override { return Take(kText + text.size()); }
  bool binary(binary_t&) override { return false; }
  bool start_object(size_t) override { return Enter(); }
  bool key(string_t& text) override { return Take(kMember + text.size()); }
  bool end_object() override { return Leave(); }
  bool start_array(size_t) override { return Enter(); }
  bool end_array() override { return Leave(); }
  bool parse_error(size_t position, const std::string&, const Json::exception&) override {
    return Refuse(Format("byte %zu of its JSON is not understood", position));
  }

 private:
  static constexpr size_t kFree = size_t{24} << 20;
  static constexpr size_t kOfEachByte = 12;
  static constexpr size_t kValue = 32;  ///< twice its size, as arrays grow
  static constexpr size_t kText = 80;
  static constexpr size_t kMember = 96;
  static constexpr size_t kContainer = 96;
  static constexpr int kDeepest = 128;

  bool Take(size_t bytes) {
    if (bytes > left_) return Refuse("its JSON has too many parts for its length");
    left_ -= bytes;
    return true;
  }
  bool Enter() { return ++depth_ > kDeepest ? Refuse("its JSON is nested too deeply") : Take(kContainer); }
  bool Leave() {
    --depth_;
    return true;
  }
  bool Refuse(std::string what) {
    fault_ = std::move(what);
    return false;
  }

  size_t left_;
  int depth_ = 0;
  std::string fault_;
};

}  // namespace

std::optional<Json> ParseJson(std::string_view text, std::string& fault) {
  CTreeMeasure measure(text.size());
  if (!Json::sax_parse(text, &measure)) {
    fault = measure.Fault();
    return std::nullopt;
  }
  Json root = Json::parse(text, nullptr, false);
  if (root.is_object()) return root;
  fault = "its JSON is no object";
  return std::nullopt;
}

const Json* Member(const Json* object, const char* key) {
  if (object == nullptr || !object->is_object()) return nullptr;
  const auto found = object->find(key);
  return found == object->end() ? nullptr : &*found;
}

const Json* Element(const Json* object, const char* key, std::optional<size_t> index) {
  const Json* const array = Member(object, key);
  const bool is_there = array != nullptr && array->is_array() && index && *index < array->size();
  return is_there ? &(*array)[*index] : nullptr;
}

size_t CountOf(const Json* object, const char* key) {
  const Json* const array = Member(object, key);
  return array != nullptr && array->is_array() ? array->size() : 0;
}

std::optional<size_t> WholeNumber(const Json* object, const char* key) {
  const Json* const number = Member(object, key);
  constexpr double kLargest = 1e15;
  if (number == nullptr || !number->is_number()) return std::nullopt;
  // Some exporters write whole numbers as "1.0".
  const auto value = number->get<double>();
  if (!(value >= 0 && value <= kLargest) || value != std::floor(value)) return std::nullopt;
  return static_cast<size_t>(value);
}

double NumberOr(const Json* object, const char* key, double fallback) {
  const Json* const number = Member(object, key);
  return number != nullptr && number->is_number() ? number->get<double>() : fallback;
}

std::string TextOr(const Json* object, const char* key, std::string fallback) {
  const Json* const text = Member(object, key);
  return text != nullptr && text->is_string() ? text->get<std::string>() : std::move(fallback);
}

}  // namespace veldra::gltf
