#pragma once

#include <string>

#include "interchange/3dschunks.h"
#include "interchange/3dstudiofile.h"
#include "platform/bytes.h"

/// Inside C3DStudioFile: the walk over the chunks. It is as deep as there are kinds of places, since each place knows
/// only chunks of others, so nested chunks cannot exhaust the stack.
namespace veldra {

/// Positions are bytes from the start of the file.
struct SStudioChunk {
  uint16_t id = 0;
  size_t start = 0;
  size_t data = 0;  ///< behind the header
  size_t end = 0;   ///< never behind the parent's end

  size_t DataSize() const { return end - data; }
};

class CStudioReader {
 public:
  CStudioReader(C3DStudioFile& file, std::span<const uint8_t> bytes, CQuestions& questions)
      : file_(file), reader_(bytes), questions_(questions) {}

  bool Read();
  const SImportFault& Fault() const { return fault_; }

 private:
  /// Of one triangle mesh.
  struct SMesh {
    bool has_vertices = false;
    size_t first_vertex = 0;
    size_t vertex_count = 0;
    size_t first_face = 0;
    size_t face_count = 0;
  };

  bool ReadMain(size_t end);
  bool ReadHeader(size_t parent_end, SStudioChunk& chunk);
  bool ReadChildren(EStudioPlace place, size_t end);
  bool ReadKnown(const SStudioChunkRow& row, const SStudioChunk& chunk);
  bool ReadVersion(const SStudioChunk& chunk);
  bool ReadObject(const SStudioChunk& chunk);
  bool ReadMesh(const SStudioChunk& chunk);
  bool ReadVertices(const SStudioChunk& chunk);
  bool ReadFaces(const SStudioChunk& chunk);
  bool ReadExtra(const SStudioChunkRow& row, const SStudioChunk& chunk);
  void ReadFaceMaterials(const SStudioChunk& chunk);
  void ReadMapCoordinates(const SStudioChunk& chunk);
  std::string ReadName(const SStudioChunk& chunk);
  bool ReadCount(const SStudioChunk& chunk, const char* things, size_t width, size_t& count);
  void TraceChildren(EStudioPlace place, const SStudioChunk& chunk, size_t fields);
  void Widen(std::span<const StudioVertex> vertices);

  bool Fail(std::string what);
  bool FailIn(const SStudioChunk& chunk, const std::string& what);

  C3DStudioFile& file_;
  CByteReader reader_;
  CQuestions& questions_;
  SMesh mesh_;                   ///< the one that is being read
  std::string object_;           ///< the name of its object
  bool is_texture_map_ = false;  ///< the map that is being read is a material's first texture map
  SImportFault fault_;
};

}  // namespace veldra
