#pragma once

#include <chrono>
#include <iosfwd>
#include <memory>
#include <string>

#include "platform/questions.h"

namespace veldra {

/// The last line of a terminal, for what changes there while work is under way.
class CTerminalLine {
 public:
  explicit CTerminalLine(std::ostream& terminal) : terminal_(terminal) {}
  ~CTerminalLine() { Clear(); }
  CTerminalLine(const CTerminalLine&) = delete;
  CTerminalLine& operator=(const CTerminalLine&) = delete;

  void Show(const std::string& text);
  /// Whoever prints otherwise clears first.
  void Clear();

 private:
  std::ostream& terminal_;
  size_t length_ = 0;
};

/// Work of more than half a second shows how far it is: "Checking models: 40 %". Nobody stops it but a signal.
class CTerminalProgress : public CProgress {
 public:
  CTerminalProgress(CTerminalLine& line, std::string title) : line_(line), title_(std::move(title)) {}
  ~CTerminalProgress() override { line_.Clear(); }
  bool Step(uint64_t done, uint64_t total) override;

 private:
  using Clock = std::chrono::steady_clock;
  CTerminalLine& line_;
  std::string title_;
  Clock::time_point next_ = Clock::now() + std::chrono::milliseconds(500);
};

}  // namespace veldra
