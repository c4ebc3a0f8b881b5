#include <cstdio>

#include "fuzzquestions.h"
#include "model/infofile.h"
#include "platform/paths.h"

/// Writes the seeds of the fuzz targets below a folder: make_fuzz_corpus FOLDER.

namespace {

using namespace veldra;

/// Every kind of record, with all six face types.
void Fill(CBinModel& model, CTextureFinder& finder) {
  for (const SPoint& position : {SPoint{0, 0, 0}, SPoint{64, 0, 0}, SPoint{64, 64, 0}, SPoint{0, 64, 9}})
    model.AddVertex(position);
  CBinTexture& plain = model.AddTexture(std::make_unique<CBinTexture>(model, "ROAD.RAW", finder.Find("ROAD.RAW")));
  std::vector<CBinTexture::SFrame> frames = {{"F1.RAW", finder.Find("F1.RAW")}, {"F2.RAW", finder.Find("F2.RAW")}};
  CBinTexture& animated = model.AddTexture(std::make_unique<CBinTexture>(model, "FLAG", std::move(frames), 8.0));
  for (const uint32_t type : kFaceTypes) {
    auto face = std::make_unique<CBinFace>(model);
    CBinVertex* const corners[] = {&model.Vertex(0), &model.Vertex(1), &model.Vertex(2), &model.Vertex(3)};
    face->SetCorners({corners, type % 2 == 0 ? size_t{3} : size_t{4}});
    face->SetTexture(type < 0x19 ? &plain : &animated);
    face->SetType(type);
    if (type != kFaceUntextured) face->SetTexCoord(1, {1.0, 0.5});
    model.AddFace(std::move(face));
  }
  model.AddGroup(EGroupKind::kFaces, "hood", std::vector<int32_t>{0, 2});
  model.AddGroup(EGroupKind::kVertices, "rim", {});
}

bool Write(const std::string& folder, const char* name, std::span<const uint8_t> bytes) {
  SError error;
  if (MakeDirectories(folder) && ReplaceFile(JoinPath(folder, name), bytes, &error)) return true;
  std::fprintf(stderr, "%s: %s\n", JoinPath(folder, name).c_str(), error.what.c_str());
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) {
    std::fprintf(stderr, "usage: make_fuzz_corpus FOLDER\n");
    return 2;
  }
  fuzz::SFuzzLoad load;
  CBinModel model;
  Fill(model, load.finder);
  CByteWriter full;
  SaveBin(model, {.vertex_normals = true}, full);
  CByteWriter backdrop;
  SaveBin(model, {.backdrop = true}, backdrop);
  CByteWriter empty;
  SaveBin(CBinModel(), {}, empty);
  CByteWriter info;
  info.WriteText(WriteInfo(model, AnimationNamesInFileOrder(model)));

  const std::string models = JoinPath(argv[1], "binfile");
  const bool is_written = Write(models, "full", full.Bytes()) && Write(models, "backdrop", backdrop.Bytes()) &&
                          Write(models, "empty", empty.Bytes()) &&
                          Write(JoinPath(argv[1], "info"), "full", info.Bytes());
  return is_written ? 0 : 1;
}
