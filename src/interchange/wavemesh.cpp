#include "interchange/wavemesh.h"

#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kRemarksKept = 20;

}  // namespace

void CRemarks::Add(std::string text) {
  if (first_.size() < kRemarksKept) first_.push_back(std::move(text));
  ++count_;
}

std::string CRemarks::Text() const {
  std::string text;
  for (const std::string& remark : first_)
    text += remark + '\n';
  if (count_ > first_.size()) text += Format("and %zu more\n", count_ - first_.size());
  return text;
}

uint32_t SWaveMesh::LineOfVertex(size_t vertex) const {
  const auto behind = std::upper_bound(vertex_lines.begin(), vertex_lines.end(), vertex,
                                       [](size_t number, const SLineRun& run) { return number < run.first; });
  if (behind == vertex_lines.begin()) return 0;
  const SLineRun& run = *(behind - 1);
  return run.line + static_cast<uint32_t>(vertex - run.first);
}

}  // namespace veldra
