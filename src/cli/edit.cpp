#include <memory>

#include "cli/command.h"
#include "cli/editstep.h"
#include "cli/session.h"
#include "cli/values.h"
#include "editing/modelcommands.h"
#include "platform/text.h"

namespace veldra {

namespace {

/// The document has said why when a command was refused.
int StatusOf(bool done) {
  return done ? kDone : kFailed;
}

template <void (CTarnDoc::*CenterModel)()>
EditStep Centering(const std::string&) {
  return [](CSession&, CTarnDoc& document) {
    (document.*CenterModel)();
    return kDone;
  };
}

EditStep Scaling(const std::string& value) {
  const auto factors = ParseNumbers(value, 3);
  if (!factors) return {};
  return [f = *factors](CSession&, CTarnDoc& document) {
    return StatusOf(!document.CanCenter() || Resize(document, {.x = f[0], .y = f[1], .z = f[2]}));
  };
}

EditStep Translation(const std::string& value) {
  const auto offsets = ParseIntegers(value, 3);
  if (!offsets) return {};
  return [o = *offsets](CSession&, CTarnDoc& document) {
    return StatusOf(!document.CanCenter() || Translate(document, {.x = o[0], .y = o[1], .z = o[2]}));
  };
}

EditStep Rotation(const std::string& value) {
  const size_t comma = value.find(',');
  if (comma == std::string::npos) return {};
  const auto axis = ParseAxis(value.substr(0, comma));
  const auto angle = ParseNumbers(value.substr(comma + 1), 1);
  if (!axis || !angle) return {};
  return [axis = *axis, degrees = angle->front()](CSession&, CTarnDoc& document) {
    return StatusOf(!document.CanCenter() || Rotate(document, {.angle = degrees, .axis = axis}));
  };
}

EditStep Mirroring(const std::string& value) {
  const auto axis = ParseAxis(value);
  if (!axis) return {};
  return [axis = *axis](CSession&, CTarnDoc& document) {
    const SMirrorInput input = {.x = axis == EAxis::kX, .y = axis == EAxis::kY, .z = axis == EAxis::kZ};
    return StatusOf(!document.CanCenter() || Mirror(document, input));
  };
}

EditStep Merging(const std::string& value) {
  const auto units = ParseInteger(value);
  if (!units || *units < 0) return {};
  return [units = *units](CSession& session, CTarnDoc& document) {
    const CBinModel& model = document.Model();
    if (MergeDistancesWrap(model.Bounds())) session.Questions().Message({.text = kMergeDistancesWrapText});
    const int32_t merged = document.CanCenter() ? MergeCloseVertices(document, {units}) : 0;
    return merged < 0 ? kFailed : session.Print(Format("Merged %d vertices\n", merged));
  };
}

EditStep DeletingUnused(const std::string&) {
  return [](CSession& session, CTarnDoc& document) {
    return session.Print(Format("Deleted %d vertices\n", document.DeleteAllUnused()));
  };
}

const CBinFace* FindUntexturedFace(const CBinModel& model, uint32_t type) {
  for (int32_t i = 0; i < model.FaceCount(); ++i) {
    const CBinFace& face = model.Face(i);
    if (face.Type() == type && face.Texture() == nullptr) return &face;
  }
  return nullptr;
}

int ReplaceType(CSession& session, CBinModel& model, uint32_t from, uint32_t to) {
  const CBinFace* const bare = to == kFaceUntextured ? nullptr : FindUntexturedFace(model, from);
  if (bare != nullptr) {
    return session.Fail(Format("Face %d has no texture and cannot become type 0x%02X.", bare->Index(), to));
  }
  model.ReplaceFaceType(from, to);
  return kDone;
}

EditStep ChangingType(const std::string& value) {
  const std::vector<std::string> parts = SplitText(value, ',');
  if (parts.size() != 2) return {};
  const auto from = ParseInteger(parts[0]);
  const auto to = ParseFaceType(parts[1], true);
  if (!from || *from < 0 || !to) return {};
  return [from = static_cast<uint32_t>(*from), to = *to](CSession& session, CTarnDoc& document) {
    return ReplaceType(session, document.Model(), from, to);
  };
}

EditStep Appending(const std::string& value) {
  return [path = value](CSession& session, CTarnDoc& document) -> int {
    const auto other = session.Open(path);
    return StatusOf(other && InsertModel(document, other->Model(), path));
  };
}

struct SOperationRow {
  const char* name;
  const char* form;  ///< what the value looks like; "" for an operation without one
  const char* help;
  EditStep (*step)(const std::string& value);  ///< gives an empty step when the value is malformed
};

constexpr SOperationRow kOperations[] = {
    {"--center", "", "Center on all axes", Centering<&CTarnDoc::CenterAll>},
    {"--center-x", "", "Center on the x axis", Centering<&CTarnDoc::CenterX>},
    {"--center-y", "", "Center on the y axis", Centering<&CTarnDoc::CenterY>},
    {"--center-z", "", "Center on the z axis", Centering<&CTarnDoc::CenterZ>},
    {"--scale", "SX,SY,SZ", "Multiply the coordinates", Scaling},
    {"--translate", "DX,DY,DZ", "Move by whole units", Translation},
    {"--rotate", "x|y|z,DEGREES", "Turn about an axis", Rotation},
    {"--mirror", "x|y|z", "Negate a coordinate; faces still face outwards", Mirroring},
    {"--merge", "UNITS", "Merge vertices that lie within UNITS of each other", Merging},
    {"--delete-unused", "", "Delete the vertices that no face uses", DeletingUnused},
    {"--face-type", "FROM,TO", "Give all faces of type FROM the type TO", ChangingType},
    {"--append", "OTHER", "Add the vertices, faces and groups of another model", Appending},
    {"--fit", "N", "Scale evenly so that the largest dimension becomes N", Fitting},
    {"--replace-texture", "OLD,RAW", "Give the faces of a texture another one", ReplacingTexture},
    {"--assign", "GROUP,RAW", "Give the faces of a group that texture; u and v stay", Assigning},
    {"--group-type", "GROUP,TYPE", "Give the faces of a group that type", ChangingGroupType},
    {"--delete-faces", "GROUP", "Delete the faces of a group and the vertices that only they used", DeletingFaces},
    {"--map", "planar,x|y|z[,GROUP]|box[,GROUP]",
     "Lay the textures over the faces, along an axis or along that which each faces", Mapping},
};

struct SEditOptions {
  std::string model;
  std::string out;
  std::vector<EditStep> steps;
};

int Edit(CSession& session, const SEditOptions& options) {
  const auto document = session.Open(options.model);
  if (!document) return kFailed;
  document->SetReadOnly(false);  // OUT is what is written
  for (const EditStep& step : options.steps) {
    if (const int status = step(session, *document); status != kDone) return status;
  }
  return document->CheckWritable(options.out) && document->SaveMTM(options.out) ? kDone : kFailed;
}

SOptionRow OperationOption(const SOperationRow& row, std::vector<EditStep>& steps) {
  const auto add_step = [&row, &steps](const std::string& text) -> std::string {
    steps.push_back(row.step(text));
    return steps.back() ? "" : std::string("does not have the form ") + row.form;
  };
  SOptionRow option = Option(row.name, row.form, row.help, add_step);
  option.repeated = true;
  return InGroup("Operations", option);
}

}  // namespace

SCommandRow EditCommand() {
  const auto options = std::make_shared<SEditOptions>();
  SCommandRow command = {
      .name = "edit",
      .help = "Do operations in the order given, then save as MTM model without the save checks",
      .options = {Argument("MODEL", "Model file", options->model), Output("OUT", "File to write", options->out)},
      .run = [options](CSession& session) { return Edit(session, *options); },
      .check = [options] { return std::string(options->steps.empty() ? "An operation is required" : ""); }};
  for (const SOperationRow& row : kOperations)
    command.options.push_back(OperationOption(row, options->steps));
  return command;
}

}  // namespace veldra
