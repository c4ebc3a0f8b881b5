#include "shapes/shape.h"

#include <memory>
#include <optional>

#include "cli/command.h"
#include "cli/modeltexture.h"
#include "cli/session.h"
#include "cli/values.h"
#include "platform/text.h"

namespace veldra {

namespace {

struct SShapeOptions {
  SShape shape;
  std::string out;
  std::string texture;  ///< "" for none
  std::optional<uint32_t> face_type;
  std::string into;  ///< "" for a model of its own
};

Words<EShape> ShapeWords() {
  Words<EShape> words;
  for (const SShapeKind& kind : ShapeKinds())
    words.emplace_back(kind.name, kind.shape);
  return words;
}

Words<int> SolidWords() {
  Words<int> words;
  for (const int sides : kPolyhedronSides)
    words.emplace_back(std::to_string(sides), sides);
  return words;
}

int MakeShapeModel(CSession& session, const SShapeOptions& options) {
  SShapeMesh mesh;
  const std::string fault = MakeShape(options.shape, mesh);
  if (!fault.empty()) return session.Fail(fault);
  const auto document = options.into.empty() ? session.NewDocument() : session.Open(options.into);
  if (!document) return kFailed;
  CBinTexture* texture = nullptr;
  uint32_t type = kFaceUntextured;
  if (!options.texture.empty()) {
    texture = ModelTexture(session, document->Model(), options.texture);
    if (texture == nullptr) return kFailed;
    type = options.face_type.value_or(static_cast<uint32_t>(session.Settings().def_face_type));
  }
  document->SetReadOnly(false);  // OUT is what is written
  AddShape(document->Model(), mesh, type, texture, KindOf(options.shape.kind).name);
  return document->CheckWritable(options.out) && document->SaveMTM(options.out) ? kDone : kFailed;
}

std::string CheckFaceType(const SShapeOptions& options) {
  const bool needs_texture = options.face_type.value_or(kFaceUntextured) != kFaceUntextured;
  if (!needs_texture || !options.texture.empty()) return "";
  return "--face-type: without --texture a face can only be of type 0x19";
}

/// A number of FEWEST to MOST.
TakeValue Counting(std::optional<int>& target, int fewest, int most) {
  const auto parse = [=](const std::string& text) -> std::optional<int> {
    auto number = ParseInteger(text);
    if (number && (*number < fewest || *number > most)) number.reset();
    return number;
  };
  return Parsed(target, parse, Format("is not a number from %d to %d", fewest, most));
}

std::optional<SPoint> ParsePoint(const std::string& text) {
  const auto numbers = ParseIntegers(text, 3);
  if (!numbers) return std::nullopt;
  return SPoint{(*numbers)[0], (*numbers)[1], (*numbers)[2]};
}

std::optional<SPoint> ParseSize(const std::string& text) {
  const auto size = ParsePoint(text);
  return size && size->x >= 0 && size->y >= 0 && size->z >= 0 ? size : std::nullopt;
}

std::optional<double> ParseHole(const std::string& text) {
  const auto hole = ParseNumber(text);
  return hole && *hole >= kSmallestHole && *hole <= kLargestHole ? hole : std::nullopt;
}

}  // namespace

SCommandRow ShapeCommand() {
  const auto options = std::make_shared<SShapeOptions>();
  SShape& shape = options->shape;
  const auto parse_type = [](const std::string& text) { return ParseFaceType(text, false); };
  return {
      .name = "shape",
      .help = "Make a model of a generated shape",
      .options =
          {Required(Choice("KIND", ShapeWords(), "Kind of shape", shape.kind)),
           Output("OUT", "Model file to write", options->out),
           Option("--texture", "RAW", "Texture of the faces (default: none)", options->texture),
           Option("--face-type", "TYPE", "Type of the faces (default: with a texture that of the settings)",
                  Parsed(options->face_type, parse_type, "is not a face type")),
           Option("--size", "X,Y,Z", "Size of the bounding box (default: 100,100,100)",
                  Parsed(shape.size, ParseSize, "is not three whole numbers, none below 0")),
           Option("--at", "X,Y,Z", "Middle of the bounding box (default: 0,0,0)",
                  Parsed(shape.middle, ParsePoint, "is not three whole numbers")),
           Option("--sides", "N", "Corners of a polygon or a pyramid's base, sides around what is round",
                  Counting(shape.sides, kFewestSides, kMostSides)),
           Option("--rings", "N", "Bands of a sphere from pole to pole, sides around a torus's tube (default: 8)",
                  Counting(shape.rings, kFewestRings, kMostRings)),
           Choice("--solid", SolidWords(), "Flat sides of a polyhedron (default: 20)", shape.solid),
           Option("--hole", "F", "Width of the hole of a tube, an arch or a torus (default: 0.5)",
                  Parsed(shape.hole, ParseHole, Format("is not a number from %g to %g", kSmallestHole, kLargestHole))),
           Flag("--two-sided", "A flat shape can be seen from below too", shape.two_sided),
           Option("--into", "MODEL", "Add it to this model, which stays as it is (default: a new one)", options->into)},
      .run = [options](CSession& session) { return MakeShapeModel(session, *options); },
      .check = [options] { return CheckFaceType(*options); }};
}

}  // namespace veldra
