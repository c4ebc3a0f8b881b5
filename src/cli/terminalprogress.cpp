#include "cli/terminalprogress.h"

#include <ostream>

#include "platform/text.h"

namespace veldra {

namespace {

constexpr std::chrono::milliseconds kBetweenUpdates{100};

}  // namespace

void CTerminalLine::Show(const std::string& text) {
  Clear();
  terminal_ << text << std::flush;
  length_ = text.size();
}

void CTerminalLine::Clear() {
  if (length_ == 0) return;
  terminal_ << '\r' << std::string(length_, ' ') << '\r' << std::flush;
  length_ = 0;
}

bool CTerminalProgress::Step(uint64_t done, uint64_t total) {
  const Clock::time_point now = Clock::now();
  if (now < next_) return true;
  next_ = now + kBetweenUpdates;
  const double part = total == 0 ? 0.0 : static_cast<double>(done) / static_cast<double>(total);
  line_.Show(Format("%s: %d %%", title_.c_str(), static_cast<int>(100 * part)));
  return true;
}

}  // namespace veldra
