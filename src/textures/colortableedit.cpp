#include "textures/colortableedit.h"

#include <algorithm>
#include <utility>

#include "textures/nearblack.h"

namespace veldra {

namespace {

constexpr CColorTableEdit::Color kBlack = {0, 0, 0};
constexpr CColorTableEdit::Color kDarkestDrawn = {9, 9, 9};

auto EntryAt(auto& colors, int entry) {
  return colors.begin() + ptrdiff_t{3} * entry;
}

}  // namespace

CColorTableEdit::CColorTableEdit(SIndexedTexture texture) : texture_(std::move(texture)) {
  Count();
}

void CColorTableEdit::Count() {
  uses_ = {};
  for (const uint8_t index : texture_.indices)
    ++uses_[index];
}

CColorTableEdit::Color CColorTableEdit::ColorOf(int entry) const {
  Color color;
  std::copy_n(EntryAt(texture_.colors, entry), color.size(), color.begin());
  return color;
}

bool CColorTableEdit::IsTransparent(int entry) const {
  const Color color = ColorOf(entry);
  return IsNearBlack(color[0], color[1], color[2]);
}

void CColorTableEdit::Begin() {
  if (back_.size() == kMostSteps) back_.erase(back_.begin());
  back_.push_back(texture_);
  forward_.clear();
}

void CColorTableEdit::Step(States& from, States& to) {
  if (from.empty()) return;
  to.push_back(std::exchange(texture_, std::move(from.back())));
  from.pop_back();
  Count();
}

void CColorTableEdit::SetColor(int entry, const Color& color) {
  if (ColorOf(entry) == color) return;
  Begin();
  std::ranges::copy(color, EntryAt(texture_.colors, entry));
}

void CColorTableEdit::SetTransparent(int entry, bool is_transparent) {
  if (IsTransparent(entry) != is_transparent) SetColor(entry, is_transparent ? kBlack : kDarkestDrawn);
}

void CColorTableEdit::Exchange(int a, int b, bool keeps_picture) {
  if (a == b) return;
  Begin();
  std::swap_ranges(EntryAt(texture_.colors, a), EntryAt(texture_.colors, a + 1), EntryAt(texture_.colors, b));
  const auto first = static_cast<uint8_t>(a);
  const auto second = static_cast<uint8_t>(b);
  for (uint8_t& index : texture_.indices) {
    if (!keeps_picture) break;
    if (index == first)
      index = second;
    else if (index == second)
      index = first;
  }
  Count();
}

void CColorTableEdit::SetTable(const ColorTable& colors) {
  if (colors == texture_.colors) return;
  Begin();
  texture_.colors = colors;
}

}  // namespace veldra
