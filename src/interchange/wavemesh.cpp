#include "interchange/wavemesh.h"

#include "interchange/polygoncorners.h"
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

int32_t SWaveMesh::AddVertex(const SWavePoint& point) {
  if (vertices.empty()) min = max = point;
  for (size_t axis = 0; axis < point.size(); ++axis) {
    min[axis] = std::min(min[axis], point[axis]);
    max[axis] = std::max(max[axis], point[axis]);
  }
  vertices.push_back(point);
  return static_cast<int32_t>(vertices.size() - 1);
}

size_t SWaveMesh::FinishFace(size_t first) {
  const std::span<const int32_t> written = std::span(corners).subspan(first);
  size_t count = written.size();
  if (!AreDistinct(written)) {
    const std::vector<size_t> kept = CornersToKeep(written);
    for (size_t k = 0; k < kept.size(); ++k) {
      corners[first + k] = corners[first + kept[k]];
      if (!corner_coords.empty()) corner_coords[first + k] = corner_coords[first + kept[k]];
    }
    count = kept.size();
  }
  corners.resize(first + (count >= 3 ? count : 0));
  if (!corner_coords.empty()) corner_coords.resize(corners.size());
  if (count >= 3) face_ends.push_back(static_cast<uint32_t>(corners.size()));
  return count;
}

void SWaveMesh::BeginSection(std::vector<int32_t> section_groups, int32_t material) {
  if (!sections.empty() && sections.back().material == material && sections.back().groups == section_groups) return;
  if (!sections.empty() && sections.back().first_face == FaceCount()) sections.pop_back();
  sections.push_back({FaceCount(), std::move(section_groups), material});
}

}  // namespace veldra
