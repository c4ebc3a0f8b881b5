#include "interchange/stlreader.h"

#include <cmath>
#include <new>

#include "interchange/meshsteps.h"
#include "interchange/vertexwelder.h"
#include "interchange/wavescanner.h"
#include "platform/bytes.h"
#include "platform/text.h"

namespace veldra {

namespace {

constexpr size_t kTitleLength = 80;
constexpr size_t kTriangleLength = 50;
constexpr size_t kBinaryStart = kTitleLength + 4;

size_t TrianglesOf(std::span<const uint8_t> bytes) {
  CByteReader in(bytes);
  in.Skip(kTitleLength);
  return in.ReadU32();
}

/// A binary file's title may begin with "solid" too, so its length counts first.
bool IsText(std::span<const uint8_t> bytes) {
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const size_t start = text.find_first_not_of(" \t\r\n");
  if (start == std::string_view::npos || !EqualNoCase(text.substr(start, 5), "solid")) return false;
  if (text.substr(0, kBinaryStart).find('\0') != std::string_view::npos) return false;
  return bytes.size() < kBinaryStart || bytes.size() != kBinaryStart + kTriangleLength * TrianglesOf(bytes);
}

class CStlReader {
 public:
  explicit CStlReader(SImportFault& fault) : fault_(fault) {}

  bool ReadBinary(std::span<const uint8_t> bytes, CMeshSteps steps);
  bool ReadText(std::string_view text, CMeshSteps steps);
  SWaveMesh Take() { return std::move(mesh_); }

 private:
  bool ReadLine(CWaveScanner& scanner);
  bool ReadPoint(CWaveScanner& scanner);
  void BeginSolid();
  void AddFace(std::span<const SWavePoint> points);
  bool Fail(std::string what) {
    fault_ = {std::move(what), false};
    return false;
  }
  bool Stop() {
    fault_ = {"", true};
    return false;
  }

  SImportFault& fault_;
  SWaveMesh mesh_;
  CVertexWelder welder_{mesh_};
  std::vector<SWavePoint> loop_;
  std::string_view solid_;  ///< the name of the present one
  bool is_new_solid_ = false;
};

void CStlReader::AddFace(std::span<const SWavePoint> points) {
  if (is_new_solid_) BeginSolid();
  const size_t first = mesh_.corners.size();
  for (const SWavePoint& point : points)
    mesh_.corners.push_back(welder_.Add(point));
  mesh_.FinishFace(first);
}

bool CStlReader::ReadBinary(std::span<const uint8_t> bytes, CMeshSteps steps) {
  CByteReader in(bytes);
  in.Skip(kTitleLength);
  const size_t count = in.ReadU32();
  if (in.Failed()) return Fail(Format("the file of %zu bytes is too short", bytes.size()));
  if (!in.Holds(count, kTriangleLength))
    return Fail(Format("it should hold %zu triangles, %zu are there", count, in.Remaining() / kTriangleLength));
  mesh_.corners.reserve(3 * count);
  mesh_.face_ends.reserve(count);
  constexpr size_t kNormalLength = 12;
  for (size_t i = 0; i < count; ++i) {
    if (!steps.Step(i, count)) return Stop();
    in.Skip(kNormalLength);
    std::array<SWavePoint, 3> points;
    for (SWavePoint& point : points)
      for (double& part : point)
        if (part = in.ReadF32(); !std::isfinite(part)) return Fail(Format("triangle %zu has no place", i + 1));
    in.Skip(2);
    AddFace(points);
  }
  return true;
}

bool CStlReader::ReadText(std::string_view text, CMeshSteps steps) {
  CWaveScanner scanner(text);
  for (size_t line = 0; !scanner.AtEnd(); ++line) {
    if (!steps.Step(line, scanner.Position(), text.size())) return Stop();
    if (!ReadLine(scanner)) return false;
    scanner.ToNextLine();
  }
  return loop_.empty() || Fail("its last loop has no end");
}

bool CStlReader::ReadLine(CWaveScanner& scanner) {
  if (!scanner.ToWord()) return true;
  const std::string_view word = scanner.ReadWord();
  if (EqualNoCase(word, "vertex")) return ReadPoint(scanner);
  if (EqualNoCase(word, "solid")) {
    solid_ = scanner.ToWord() ? scanner.ReadRest() : "";
    is_new_solid_ = true;
  } else if (EqualNoCase(word, "endloop")) {
    AddFace(loop_);
    loop_.clear();
  }
  return true;
}

bool CStlReader::ReadPoint(CWaveScanner& scanner) {
  SWavePoint point;
  for (double& part : point)
    if (!scanner.ToWord() || scanner.ReadNumber(part) != ENumber::kGood)
      return Fail(Format("line %u: a vertex needs three coordinates", scanner.Line()));
  loop_.push_back(point);
  return true;
}

void CStlReader::BeginSolid() {
  is_new_solid_ = false;
  welder_.Forget();
  if (solid_.empty()) return mesh_.BeginSection({}, -1);
  mesh_.group_names.emplace_back(solid_);
  mesh_.BeginSection({static_cast<int32_t>(mesh_.group_names.size() - 1)}, -1);
}

}  // namespace

std::optional<SWaveMesh> ParseStl(std::span<const uint8_t> bytes, CProgress* progress, SImportFault& fault) try {
  CStlReader reader(fault);
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const CMeshSteps steps(progress);
  if (!(IsText(bytes) ? reader.ReadText(text, steps) : reader.ReadBinary(bytes, steps))) return std::nullopt;
  SWaveMesh mesh = reader.Take();
  mesh.file_size = bytes.size();
  if (mesh.FaceCount() > 0) return mesh;
  fault = {"it has no triangles", false};
  return std::nullopt;
} catch (const std::bad_alloc&) {
  fault = kNoMemory;
  return std::nullopt;
}

}  // namespace veldra
