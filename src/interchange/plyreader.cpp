#include "interchange/plyreader.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <new>
#include <utility>

#include "interchange/meshsteps.h"
#include "interchange/plyheader.h"
#include "interchange/wavescanner.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// No polygon has more, and a short file could not promise any number of them.
constexpr double kMostCorners = 100'000;

/// The numbers behind the header, one by one. A read that fails gives 0, and so does every one behind it.
class CPlyValues {
 public:
  CPlyValues(const SPlyHeader& header, std::span<const uint8_t> bytes)
      : form_(header.form), bytes_(bytes), scanner_({reinterpret_cast<const char*>(bytes.data()), bytes.size()}) {}

  double Next(EPlyType type) { return form_ == SPlyHeader::EForm::kText ? NextWord() : NextBytes(type); }
  bool Failed() const { return failed_; }
  size_t Position() const { return form_ == SPlyHeader::EForm::kText ? scanner_.Position() : at_; }
  /// False where COUNT records that have at least what PROPERTIES say cannot be there.
  bool Holds(uint64_t count, const std::vector<SPlyProperty>& properties) const {
    size_t least = 0;
    for (const SPlyProperty& property : properties)
      least += LeastOf(property.list_type.value_or(property.type));
    return least == 0 || count <= (bytes_.size() - Position() + 1) / least;
  }
  /// The same of COUNT values of TYPE.
  bool Holds(double count, EPlyType type) const {
    const size_t most = (bytes_.size() - Position() + 1) / LeastOf(type);
    return count >= 0 && count <= static_cast<double>(most);
  }

 private:
  /// In text a digit and a blank.
  size_t LeastOf(EPlyType type) const { return form_ == SPlyHeader::EForm::kText ? 2 : PlyTypeWidth(type); }
  double NextWord();
  double NextBytes(EPlyType type);
  double Fail() {
    failed_ = true;
    return 0;
  }

  SPlyHeader::EForm form_;
  std::span<const uint8_t> bytes_;
  CWaveScanner scanner_;
  size_t at_ = 0;
  bool failed_ = false;
};

double CPlyValues::NextWord() {
  while (!failed_ && !scanner_.ToWord()) {
    if (scanner_.AtEnd()) return Fail();
    scanner_.ToNextLine();
  }
  double value = 0;
  if (failed_ || scanner_.ReadNumber(value) == ENumber::kGood) return value;
  // A scanner's normals: no place of a vertex, which is found out where it is one.
  const std::string word = LowerCase(scanner_.ReadWord());
  if (word != "nan" && word != "-nan" && word != "inf" && word != "-inf") return Fail();
  return std::nan("");
}

double CPlyValues::NextBytes(EPlyType type) {
  const size_t width = PlyTypeWidth(type);
  if (failed_ || bytes_.size() - at_ < width) return Fail();
  uint64_t bits = 0;
  for (size_t i = 0; i < width; ++i) {
    const size_t from = form_ == SPlyHeader::EForm::kLittleEndian ? width - 1 - i : i;
    bits = bits << 8U | bytes_[at_ + from];
  }
  at_ += width;
  switch (type) {
    case EPlyType::kInt8:
      return static_cast<int8_t>(bits);
    case EPlyType::kInt16:
      return static_cast<int16_t>(bits);
    case EPlyType::kInt32:
      return static_cast<int32_t>(bits);
    case EPlyType::kFloat:
      return std::bit_cast<float>(static_cast<uint32_t>(bits));
    case EPlyType::kDouble:
      return std::bit_cast<double>(bits);
    default:
      return static_cast<double>(bits);
  }
}

/// What a property is to a mesh.
enum class EPart { kNothing, kX, kY, kZ, kU, kV, kCorners, kCoords, kPicture };

struct SPartName {
  std::string_view name;
  EPart part;
};

constexpr SPartName kVertexParts[] = {{"x", EPart::kX},         {"y", EPart::kY},         {"z", EPart::kZ},
                                      {"s", EPart::kU},         {"t", EPart::kV},         {"u", EPart::kU},
                                      {"v", EPart::kV},         {"texture_u", EPart::kU}, {"texture_v", EPart::kV},
                                      {"texture_s", EPart::kU}, {"texture_t", EPart::kV}};
constexpr SPartName kFaceParts[] = {{"vertex_indices", EPart::kCorners},
                                    {"vertex_index", EPart::kCorners},
                                    {"texcoord", EPart::kCoords},
                                    {"texnumber", EPart::kPicture}};

EPart PartOf(std::span<const SPartName> names, const SPlyProperty& property, bool is_list) {
  const auto row = std::ranges::find(names, property.name, &SPartName::name);
  return row == names.end() || property.list_type.has_value() != is_list ? EPart::kNothing : row->part;
}

/// A mesh is worth having without a texture coordinate.
double FiniteOrZero(double value) {
  return std::isfinite(value) ? value : 0;
}

class CPlyReader {
 public:
  CPlyReader(const SPlyHeader& header, std::span<const uint8_t> data, CMeshSteps steps, SImportFault& fault)
      : header_(header), values_(header, data), size_(data.size()), steps_(steps), fault_(fault) {}

  bool Read();
  SWaveMesh Take() { return std::move(mesh_); }

 private:
  bool ReadElement(const SPlyElement& element);
  bool ReadVertex(const SPlyElement& element, const std::vector<EPart>& parts);
  bool ReadFace(const SPlyElement& element, const std::vector<EPart>& parts);
  bool ReadList(const SPlyProperty& property, EPart part, double& value);
  void FinishFace(double picture);
  bool Fail(std::string what) {
    fault_ = {std::move(what), false};
    return false;
  }

  const SPlyHeader& header_;
  CPlyValues values_;
  size_t size_;
  CMeshSteps steps_;
  SImportFault& fault_;
  SWaveMesh mesh_;
  bool has_vertex_coords_ = false;
  size_t first_coord_ = 0;       ///< where those begin
  std::vector<double> list_;     ///< the last list
  std::vector<double> corners_;  ///< of the present face
  std::vector<double> coords_;
  uint64_t vertex_count_ = 0;  ///< that the header promises
  size_t left_out_ = 0;
};

bool CPlyReader::Read() {
  for (const std::string& picture : header_.pictures) {
    mesh_.material_names.push_back(FileNamePart(picture));
    mesh_.material_pictures.push_back(picture);
  }
  for (const SPlyElement& element : header_.elements)
    if (element.name == "vertex" && std::exchange(vertex_count_, element.count) != 0)
      return Fail("it has two lists of vertices");
  for (const SPlyElement& element : header_.elements)
    if (!ReadElement(element)) return false;
  if (left_out_ > 0) mesh_.remarks.Add(Counted(static_cast<int64_t>(left_out_), "face", "faces") + " left out");
  if (mesh_.vertices.empty() || mesh_.vertices.size() < vertex_count_) return Fail("it has no vertices");
  return mesh_.FaceCount() > 0 || Fail("it has no faces");
}

bool CPlyReader::ReadElement(const SPlyElement& element) {
  if (!values_.Holds(element.count, element.properties))
    return Fail(Format("it ends before its %llu of \"%s\"", static_cast<unsigned long long>(element.count),
                       DisplayName(element.name).c_str()));
  const bool is_vertex = element.name == "vertex";
  const bool is_face = element.name == "face";
  std::vector<EPart> parts;
  parts.reserve(element.properties.size());
  for (const SPlyProperty& property : element.properties)
    parts.push_back(is_vertex ? PartOf(kVertexParts, property, false)
                    : is_face ? PartOf(kFaceParts, property, property.name != "texnumber")
                              : EPart::kNothing);
  if (is_vertex) {
    has_vertex_coords_ =
        std::ranges::find(parts, EPart::kU) != parts.end() && std::ranges::find(parts, EPart::kV) != parts.end();
    first_coord_ = mesh_.coords.size();
    if (!parts.empty()) mesh_.vertices.reserve(element.count);
  }
  const uint64_t count = element.properties.empty() ? 0 : element.count;
  for (uint64_t i = 0; i < count; ++i) {
    if (!steps_.Step(i, values_.Position(), size_)) {
      fault_ = {"", true};
      return false;
    }
    if (is_vertex ? ReadVertex(element, parts) : ReadFace(element, parts)) continue;
    return fault_.what.empty() ? Fail(Format("%s %llu is not whole", DisplayName(element.name).c_str(),
                                             static_cast<unsigned long long>(i)))
                               : false;
  }
  return true;
}

bool CPlyReader::ReadVertex(const SPlyElement& element, const std::vector<EPart>& parts) {
  SWavePoint point = {};
  STexCoord coord = {};
  for (size_t i = 0; i < parts.size(); ++i) {
    double value = 0;
    if (!ReadList(element.properties[i], EPart::kNothing, value)) return false;
    if (parts[i] >= EPart::kX && parts[i] <= EPart::kZ)
      point[static_cast<size_t>(parts[i]) - static_cast<size_t>(EPart::kX)] = value;
    if (parts[i] == EPart::kU) coord.u = FiniteOrZero(value);
    if (parts[i] == EPart::kV) coord.v = FiniteOrZero(value);
  }
  if (!std::ranges::all_of(point, [](double part) { return std::isfinite(part); })) return false;
  mesh_.AddVertex(point);
  if (has_vertex_coords_) mesh_.coords.push_back(coord);
  return true;
}

/// Any element but vertices; where it is no face its parts are nothing.
bool CPlyReader::ReadFace(const SPlyElement& element, const std::vector<EPart>& parts) {
  corners_.clear();
  coords_.clear();
  double picture = 0;
  for (size_t i = 0; i < parts.size(); ++i) {
    double value = 0;
    if (!ReadList(element.properties[i], parts[i], value)) return false;
    if (parts[i] == EPart::kPicture) picture = value;
    if (parts[i] == EPart::kCorners) corners_.swap(list_);
    if (parts[i] == EPart::kCoords) coords_.swap(list_);
  }
  if (element.name != "face") return true;
  for (const double corner : corners_)
    if (!(corner >= 0 && corner < static_cast<double>(vertex_count_)))
      return Fail(
          Format("a face names vertex %.0f, there are %llu", corner, static_cast<unsigned long long>(vertex_count_)));
  FinishFace(picture);
  return true;
}

/// A value, or a list, which is kept where it is a PART of the mesh.
bool CPlyReader::ReadList(const SPlyProperty& property, EPart part, double& value) {
  if (!property.list_type) {
    value = values_.Next(property.type);
    return !values_.Failed();
  }
  const double count = values_.Next(*property.list_type);
  if (values_.Failed() || !values_.Holds(count, property.type)) return false;
  if (count > kMostCorners) return Fail(Format("a list of %.0f values is too long", count));
  list_.clear();
  for (double i = 0; i < count; ++i)
    if (const double item = values_.Next(property.type); part != EPart::kNothing) list_.push_back(item);
  return !values_.Failed();
}

void CPlyReader::FinishFace(double picture) {
  const size_t first = mesh_.corners.size();
  const bool has_own = coords_.size() == 2 * corners_.size() && !corners_.empty();
  const bool has_coords = has_own || has_vertex_coords_ || !mesh_.corner_coords.empty();
  if (has_coords && mesh_.corner_coords.empty()) mesh_.corner_coords.resize(first, -1);
  for (size_t k = 0; k < corners_.size(); ++k) {
    const auto vertex = static_cast<int32_t>(corners_[k]);
    mesh_.corners.push_back(vertex);
    if (!has_coords) continue;
    if (has_own) mesh_.coords.push_back({FiniteOrZero(coords_[2 * k]), FiniteOrZero(coords_[2 * k + 1])});
    mesh_.corner_coords.push_back(has_own              ? static_cast<int32_t>(mesh_.coords.size() - 1)
                                  : has_vertex_coords_ ? static_cast<int32_t>(first_coord_) + vertex
                                                       : -1);
  }
  const bool is_known = picture >= 0 && picture < static_cast<double>(header_.pictures.size());
  mesh_.BeginSection({}, is_known ? static_cast<int32_t>(picture) : -1);
  if (mesh_.FinishFace(first) < 3) ++left_out_;
}

}  // namespace

std::optional<SWaveMesh> ParsePly(std::span<const uint8_t> bytes, CProgress* progress, SImportFault& fault) try {
  const auto header = ParsePlyHeader({reinterpret_cast<const char*>(bytes.data()), bytes.size()}, fault.what);
  if (!header) return std::nullopt;
  CPlyReader reader(*header, bytes.subspan(header->length), CMeshSteps(progress), fault);
  if (!reader.Read()) return std::nullopt;
  SWaveMesh mesh = reader.Take();
  mesh.file_size = bytes.size();
  return mesh;
} catch (const std::bad_alloc&) {
  fault = kNoMemory;
  return std::nullopt;
}

}  // namespace veldra
