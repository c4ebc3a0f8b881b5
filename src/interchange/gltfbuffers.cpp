#include "interchange/gltfbuffers.h"

#include <algorithm>
#include <bit>

#include "platform/text.h"

namespace veldra::gltf {

namespace {

int DigitOf(char c) {
  if (c >= 'A' && c <= 'Z') return c - 'A';
  if (c >= 'a' && c <= 'z') return c - 'a' + 26;
  if (c >= '0' && c <= '9') return c - '0' + 52;
  return c == '+' || c == '-' ? 62 : c == '/' || c == '_' ? 63 : -1;
}

int HexDigitOf(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

struct SNumberKind {
  size_t kind;
  size_t width;
  double largest;  ///< what 1 is where it is normalized
};

constexpr SNumberKind kNumberKinds[] = {{5120, 1, 127},   {5121, 1, 255},        {5122, 2, 32767},
                                        {5123, 2, 65535}, {5125, 4, 4294967295}, {5126, 4, 1}};

const SNumberKind* FindKind(size_t kind) {
  const auto* const row = std::ranges::find(kNumberKinds, kind, &SNumberKind::kind);
  return row == std::end(kNumberKinds) ? nullptr : row;
}

size_t PartsOf(const std::string& type) {
  if (type == "SCALAR") return 1;
  const bool is_vector = type.size() == 4 && type.starts_with("VEC") && type[3] >= '2' && type[3] <= '4';
  return is_vector ? static_cast<size_t>(type[3] - '0') : 0;
}

}  // namespace

std::optional<std::vector<uint8_t>> DecodeDataUri(std::string_view text) {
  constexpr std::string_view kMark = ";base64,";
  const size_t mark = text.substr(0, 256).find(kMark);
  if (!text.starts_with("data:") || mark == std::string_view::npos) return std::nullopt;
  text.remove_prefix(mark + kMark.size());
  std::vector<uint8_t> bytes;
  bytes.reserve(text.size() / 4 * 3 + 3);
  uint32_t bits = 0;
  int count = 0;
  for (const char c : text) {
    const int digit = DigitOf(c);
    if (digit < 0) break;
    bits = bits << 6U | static_cast<uint32_t>(digit);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    bytes.push_back(static_cast<uint8_t>(bits >> static_cast<uint32_t>(count)));
  }
  return bytes;
}

std::string DecodeUri(std::string_view uri) {
  std::string text;
  for (size_t i = 0; i < uri.size(); ++i) {
    const int high = uri[i] == '%' && i + 2 < uri.size() ? HexDigitOf(uri[i + 1]) : -1;
    const int low = high >= 0 ? HexDigitOf(uri[i + 2]) : -1;
    text += low >= 0 ? static_cast<char>(16 * high + low) : uri[i];
    if (low >= 0) i += 2;
  }
  return text;
}

// --- Buffers ---------------------------------------------------------------------------------------------------------

bool CBuffers::Load(std::string& fault) {
  const size_t count = CountOf(&root_, "buffers");
  for (size_t i = 0; i < count; ++i) {
    if (!LoadOne(i, fault)) return false;
  }
  return true;
}

bool CBuffers::LoadOne(size_t index, std::string& fault) {
  const Json* const buffer = Element(&root_, "buffers", index);
  const std::string uri = TextOr(buffer, "uri", "");
  SError error;
  if (uri.empty()) {
    buffers_.push_back(index == 0 ? packed_ : std::span<const uint8_t>());
  } else if (const auto known = by_uri_.find(uri); known != by_uri_.end()) {
    buffers_.push_back(known->second);
    return true;
  } else if (auto bytes = DecodeDataUri(uri)) {
    buffers_.push_back(decoded_.emplace_back(std::move(*bytes)));
  } else if (auto file = read_file_(DecodeUri(uri), &error)) {
    buffers_.push_back(files_.emplace_back(std::move(*file)).View());
    by_uri_.emplace(uri, buffers_.back());
  } else {
    fault = Format("its buffer %s: %s", DisplayName(uri).c_str(), error.what.c_str());
    return false;
  }
  size_ += buffers_.back().size();
  return true;
}

std::optional<std::span<const uint8_t>> CBuffers::View(std::optional<size_t> index, std::string& fault) const {
  const Json* const view = Element(&root_, "bufferViews", index);
  const auto buffer = WholeNumber(view, "buffer");
  if (!buffer || *buffer >= buffers_.size()) {
    fault = index ? Format("there is no buffer view %zu", *index) : "it has no buffer view";
    return std::nullopt;
  }
  const size_t offset = WholeNumber(view, "byteOffset").value_or(0);
  const size_t length = WholeNumber(view, "byteLength").value_or(0);
  const std::span<const uint8_t> bytes = buffers_[*buffer];
  if (offset <= bytes.size() && length <= bytes.size() - offset) return bytes.subspan(offset, length);
  fault = Format("buffer view %zu ends beyond its buffer of %zu bytes", *index, bytes.size());
  return std::nullopt;
}

// --- Accessors -------------------------------------------------------------------------------------------------------

bool CAccessor::Open(const Json& root, const CBuffers& buffers, std::optional<size_t> index, std::string& fault) {
  const Json* const accessor = Element(&root, "accessors", index);
  const auto view_index = WholeNumber(accessor, "bufferView");
  const SNumberKind* const kind = FindKind(WholeNumber(accessor, "componentType").value_or(0));
  parts_ = PartsOf(TextOr(accessor, "type", ""));
  if (accessor == nullptr || kind == nullptr || parts_ == 0) {
    fault = index ? Format("accessor %zu is not there, or of no known type", *index) : "it has no accessor";
    return false;
  }
  if (Member(accessor, "sparse") != nullptr || !view_index) {
    fault = Format("accessor %zu is a sparse one, which is not read", *index);
    return false;
  }
  const auto view = buffers.View(view_index, fault);
  if (!view) return false;
  kind_ = kind->kind;
  width_ = kind->width;
  is_normalized_ =
      kind_ != kFloat && Member(accessor, "normalized") != nullptr && *Member(accessor, "normalized") == true;
  count_ = WholeNumber(accessor, "count").value_or(0);
  const size_t item = parts_ * width_;
  const size_t offset = WholeNumber(accessor, "byteOffset").value_or(0);
  stride_ = WholeNumber(Element(&root, "bufferViews", view_index), "byteStride").value_or(0);
  if (stride_ == 0) stride_ = item;
  // Items that overlap could be more than the file has bytes.
  const bool fits =
      stride_ >= item && offset <= view->size() &&
      (count_ == 0 || (view->size() - offset >= item && count_ - 1 <= (view->size() - offset - item) / stride_));
  if (!fits) {
    fault = Format("accessor %zu ends beyond buffer view %zu", *index, *view_index);
    return false;
  }
  bytes_ = view->subspan(offset);
  return true;
}

double CAccessor::RawAt(size_t i, size_t part) const {
  const uint8_t* const at = bytes_.data() + i * stride_ + part * width_;
  uint32_t bits = 0;
  for (size_t k = 0; k < width_; ++k)
    bits |= static_cast<uint32_t>(at[k]) << (8 * k);
  switch (kind_) {
    case 5120:
      return static_cast<int8_t>(bits);
    case 5122:
      return static_cast<int16_t>(bits);
    case kFloat:
      return std::bit_cast<float>(bits);
    default:
      return bits;
  }
}

double CAccessor::At(size_t i, size_t part) const {
  const double value = RawAt(i, part);
  return is_normalized_ ? std::max(value / FindKind(kind_)->largest, -1.0) : value;
}

}  // namespace veldra::gltf
