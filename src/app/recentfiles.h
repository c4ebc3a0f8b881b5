#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace veldra {

/// The files that were open last, the latest first.
class CRecentFiles {
 public:
  static constexpr size_t kMost = 8;

  const std::vector<std::string>& Paths() const { return paths_; }
  void Set(std::vector<std::string> paths);
  /// To the front; one that is there already moves.
  void Add(const std::string& path);
  void Remove(const std::string& path);
  void Clear() { paths_.clear(); }

 private:
  std::vector<std::string> paths_;
};

}  // namespace veldra
