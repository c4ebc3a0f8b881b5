#pragma once

#include <cstdint>

namespace veldra {

/// Whose sub-chunk a chunk is: ids mean different things in different places.
enum class EStudioPlace {
  kMain,
  kEditor,
  kObject,
  kMesh,
  kFaceList,
  kMaterial,
  kSubMaterial,
  kLight,
  kSpotlight,
  kCamera,
};

/// What the reader does with a chunk beyond tracing it. Whatever it is, reading goes on at the chunk's end.
enum class EStudioAction {
  kSkip,
  kVersion,
  kEditor,
  kKeyframer,
  kObject,
  kMesh,
  kVertices,
  kFaces,
  kFaceMaterials,
  kMapCoordinates,
  kMaterialName,
  kTextureMap,
  kMapFile,
  kTraceMaterial,
  kTraceSubMaterial,
  kTraceLight,
  kTraceSpotlight,
  kTraceCamera,
};

struct SStudioChunkRow {
  EStudioPlace place;
  uint16_t id;
  EStudioAction action;
  const char* text;  ///< the trace; what is skipped reads "Found TEXT(LENGTH bytes)"
};

/// Null for a chunk that is not known in PLACE.
const SStudioChunkRow* FindStudioChunk(EStudioPlace place, uint16_t id);

}  // namespace veldra
