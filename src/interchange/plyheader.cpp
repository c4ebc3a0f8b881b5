#include "interchange/plyheader.h"

#include <algorithm>
#include <charconv>

#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kMostElements = 64;
constexpr size_t kMostProperties = 256;
constexpr size_t kMostPictures = 64;

struct STypeName {
  std::string_view name;
  EPlyType type;
};

constexpr STypeName kTypeNames[] = {
    {"char", EPlyType::kInt8},     {"int8", EPlyType::kInt8},     {"uchar", EPlyType::kUint8},
    {"uint8", EPlyType::kUint8},   {"short", EPlyType::kInt16},   {"int16", EPlyType::kInt16},
    {"ushort", EPlyType::kUint16}, {"uint16", EPlyType::kUint16}, {"int", EPlyType::kInt32},
    {"int32", EPlyType::kInt32},   {"uint", EPlyType::kUint32},   {"uint32", EPlyType::kUint32},
    {"float", EPlyType::kFloat},   {"float32", EPlyType::kFloat}, {"double", EPlyType::kDouble},
    {"float64", EPlyType::kDouble}};

std::optional<EPlyType> TypeOf(std::string_view name) {
  const auto* const row = std::ranges::find(kTypeNames, name, &STypeName::name);
  return row == std::end(kTypeNames) ? std::nullopt : std::optional(row->type);
}

class CHeaderParser {
 public:
  CHeaderParser(std::string_view bytes, std::string& fault) : bytes_(bytes), fault_(fault) {}

  std::optional<SPlyHeader> Parse() {
    std::string_view line;
    if (!TakeLine(line) || line != "ply") return Refuse("it does not begin with \"ply\"");
    while (TakeLine(line)) {
      if (line == "end_header") return has_form_ ? Done() : Refuse("its header says no format");
      if (!ParseLine(line))
        return Refuse(
            Format("line %u: \"%s\" is not understood", header_.lines, DisplayName(line.substr(0, kShown)).c_str()));
    }
    return Refuse("its header has no end");
  }

 private:
  static constexpr size_t kShown = 80;

  std::optional<SPlyHeader> Done() {
    header_.length = at_;
    return std::move(header_);
  }
  std::optional<SPlyHeader> Refuse(std::string what) {
    fault_ = std::move(what);
    return std::nullopt;
  }
  /// Data may follow the last line at once, so only what belongs to its end is taken.
  bool TakeLine(std::string_view& line) {
    const size_t end = bytes_.find_first_of("\r\n", at_);
    if (end == std::string_view::npos) return false;
    line = Trim(bytes_.substr(at_, end - at_));
    at_ = end + (bytes_.substr(end).starts_with("\r\n") ? 2 : 1);
    ++header_.lines;
    return true;
  }
  static std::string_view TakeWord(std::string_view& rest) {
    const size_t end = std::min(rest.find_first_of(" \t"), rest.size());
    const std::string_view word = rest.substr(0, end);
    rest = Trim(rest.substr(end));
    return word;
  }

  bool ParseLine(std::string_view line) {
    const std::string_view word = TakeWord(line);
    if (word == "format") return ParseForm(TakeWord(line));
    if (word == "element") return ParseElement(line);
    if (word == "property") return ParseProperty(line);
    if (word == "comment" && TakeWord(line) == "TextureFile" && header_.pictures.size() < kMostPictures)
      header_.pictures.emplace_back(line);
    return word.empty() || word == "comment" || word == "obj_info";
  }
  bool ParseForm(std::string_view name) {
    using enum SPlyHeader::EForm;
    if (name == "ascii") header_.form = kText;
    if (name == "binary_little_endian") header_.form = kLittleEndian;
    if (name == "binary_big_endian") header_.form = kBigEndian;
    has_form_ = name == "ascii" || name == "binary_little_endian" || name == "binary_big_endian";
    return has_form_;
  }
  bool ParseElement(std::string_view rest) {
    SPlyElement element;
    element.name = TakeWord(rest);
    const auto [end, error] = std::from_chars(rest.data(), rest.data() + rest.size(), element.count);
    const bool is_number = error == std::errc() && end == rest.data() + rest.size();
    if (!is_number || header_.elements.size() == kMostElements) return false;
    header_.elements.push_back(std::move(element));
    return true;
  }
  bool ParseProperty(std::string_view rest) {
    if (header_.elements.empty() || header_.elements.back().properties.size() == kMostProperties) return false;
    std::string_view word = TakeWord(rest);
    SPlyProperty property;
    if (word == "list") {
      property.list_type = TypeOf(TakeWord(rest));
      if (!property.list_type) return false;
      word = TakeWord(rest);
    }
    const auto type = TypeOf(word);
    if (!type) return false;
    property.type = *type;
    property.name = rest;
    header_.elements.back().properties.push_back(std::move(property));
    return true;
  }

  std::string_view bytes_;
  std::string& fault_;
  size_t at_ = 0;
  bool has_form_ = false;
  SPlyHeader header_;
};

}  // namespace

std::optional<SPlyHeader> ParsePlyHeader(std::string_view bytes, std::string& fault) {
  return CHeaderParser(bytes, fault).Parse();
}

}  // namespace veldra
