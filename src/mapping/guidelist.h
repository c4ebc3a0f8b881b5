#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "mapping/texelsnap.h"

/// The guides of many textures, and what is kept of them from one session to the next.
namespace veldra {

/// By the texture's name, those that were changed last behind.
using NamedGuides = std::vector<std::pair<std::string, STextureGuides>>;

/// So many textures' guides are kept, and of each so many lines either way.
inline constexpr size_t kMostGuidedTextures = 200;
inline constexpr size_t kMostGuides = 64;

/// GUIDES become those of the texture NAME; without lines it is forgotten.
void KeepGuides(NamedGuides& all, const std::string& name, STextureGuides guides);

/// A line a texture: its name, "|", places across, "|", places down.
std::string GuidesText(const NamedGuides& all);
/// Lines that make no sense are left out.
NamedGuides GuidesOf(std::string_view text);

}  // namespace veldra
