#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace veldra {

/// When the file at PATH was last written, in the finest steps that the system keeps: for comparing one file's times,
/// and nothing else. Links are followed. Nothing when there is no such file.
std::optional<int64_t> FileWriteTime(std::string_view path);

}  // namespace veldra
