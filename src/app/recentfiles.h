#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace veldra {

/// The files that were open last, the latest first.
class CRecentFiles {
 public:
  static constexpr size_t kMost = 8;

  const std::vector<std::string>& Paths() const { return paths_; }
  /// What an earlier program has kept.
  void Set(std::vector<std::string> paths);
  /// To the front; one that is there already, by whatever path, moves.
  void Add(const std::string& path);
  void Remove(const std::string& path);
  /// Called after each change, so that the list outlives a crash.
  void SetOnChange(std::function<void()> on_change) { on_change_ = std::move(on_change); }

 private:
  void Change(std::vector<std::string> paths);

  std::vector<std::string> paths_;
  std::function<void()> on_change_;
};

}  // namespace veldra
