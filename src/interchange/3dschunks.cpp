#include "interchange/3dschunks.h"

#include <algorithm>
#include <iterator>

namespace veldra {

namespace {

using Place = EStudioPlace;
using Action = EStudioAction;

constexpr SStudioChunkRow kRows[] = {
    {Place::kMain, 0x0002, Action::kVersion, "Version chunk found."},
    {Place::kMain, 0x3D3D, Action::kEditor, "Editor chunk found\n"},
    {Place::kMain, 0xB000, Action::kKeyframer, "Keyframer chunk found. Skipping %lu bytes\n"},

    {Place::kEditor, 0x0100, Action::kSkip, "editor one unit"},
    {Place::kEditor, 0x1100, Action::kSkip, "editor background bitmap"},
    {Place::kEditor, 0x1101, Action::kSkip, "editor use bitmap indicator"},
    {Place::kEditor, 0x1200, Action::kSkip, "editor background color"},
    {Place::kEditor, 0x1201, Action::kSkip, "editor use background color indicator"},
    {Place::kEditor, 0x1300, Action::kSkip, "editor gradient colors"},
    {Place::kEditor, 0x1301, Action::kSkip, "editor use gradient colors indicator"},
    {Place::kEditor, 0x1400, Action::kSkip, "editor shadow map bias"},
    {Place::kEditor, 0x1420, Action::kSkip, "editor shadow map size"},
    {Place::kEditor, 0x1450, Action::kSkip, "editor shadow map range"},
    {Place::kEditor, 0x1460, Action::kSkip, "editor ray trace bias"},
    {Place::kEditor, 0x1470, Action::kSkip, "editor ray trace on"},
    {Place::kEditor, 0x2100, Action::kSkip, "editor ambient color"},
    {Place::kEditor, 0x2200, Action::kSkip, "editor editor fog"},
    {Place::kEditor, 0x2201, Action::kSkip, "editor use fog indicator"},
    {Place::kEditor, 0x2210, Action::kSkip, "editor editor fog background"},
    {Place::kEditor, 0x2300, Action::kSkip, "editor distance queue"},
    {Place::kEditor, 0x2301, Action::kSkip, "editor use distance queue indicator"},
    {Place::kEditor, 0x2302, Action::kSkip, "editor layered fog"},
    {Place::kEditor, 0x2303, Action::kSkip, "editor use layered fog indicator"},
    {Place::kEditor, 0x2310, Action::kSkip, "editor dim background indicator"},
    {Place::kEditor, 0x3D3E, Action::kSkip, "editor mesh version"},
    {Place::kEditor, 0x4000, Action::kObject, "editor object"},
    {Place::kEditor, 0xAFFF, Action::kTraceMaterial, "editor material"},

    {Place::kObject, 0x4010, Action::kSkip, "object hidden indicator"},
    {Place::kObject, 0x4012, Action::kSkip, "object no cast shaodws indicator"},
    {Place::kObject, 0x4013, Action::kSkip, "object matte"},
    {Place::kObject, 0x4015, Action::kSkip, "object eternal proc"},
    {Place::kObject, 0x4100, Action::kMesh, "object trimesh"},
    {Place::kObject, 0x4600, Action::kTraceLight, "object light"},
    {Place::kObject, 0x4700, Action::kTraceCamera, "object camera"},

    {Place::kMesh, 0x4110, Action::kVertices, "trimesh vertlist"},
    {Place::kMesh, 0x4120, Action::kFaces, "trimesh face description"},
    {Place::kMesh, 0x4130, Action::kSkip, "trimesh face materials"},
    {Place::kMesh, 0x4140, Action::kMapCoordinates, "trimesh map coordinates"},
    {Place::kMesh, 0x4150, Action::kSkip, "trimesh smooth groups"},
    {Place::kMesh, 0x4160, Action::kSkip, "trimesh local coordinates"},
    {Place::kMesh, 0x4165, Action::kSkip, "trimesh object coordinates"},
    {Place::kMesh, 0x4181, Action::kSkip, "trimesh eternal procedure name"},
    {Place::kMesh, 0x4182, Action::kSkip, "trimesh eternal procedure parameters"},

    // Within the faces, where they are looked at only when materials are wanted.
    {Place::kFaceList, 0x4130, Action::kFaceMaterials, "trimesh face materials"},
    {Place::kFaceList, 0x4150, Action::kSkip, "trimesh smooth groups"},

    {Place::kMaterial, 0xA000, Action::kMaterialName, "material name"},
    {Place::kMaterial, 0xA010, Action::kSkip, "material ambient color"},
    {Place::kMaterial, 0xA020, Action::kSkip, "material diffuse color"},
    {Place::kMaterial, 0xA030, Action::kSkip, "material specular color"},
    {Place::kMaterial, 0xA040, Action::kSkip, "material shininess"},
    {Place::kMaterial, 0xA041, Action::kSkip, "material shininess strength"},
    {Place::kMaterial, 0xA050, Action::kSkip, "material transparency"},
    {Place::kMaterial, 0xA052, Action::kSkip, "material transparency falloff"},
    {Place::kMaterial, 0xA053, Action::kSkip, "material reflection blur"},
    {Place::kMaterial, 0xA080, Action::kSkip, "material self illumination"},
    {Place::kMaterial, 0xA081, Action::kSkip, "material two sided indicator"},
    {Place::kMaterial, 0xA082, Action::kSkip, "material decal indicator"},
    {Place::kMaterial, 0xA083, Action::kSkip, "material additive indicator"},
    {Place::kMaterial, 0xA084, Action::kSkip, "material self illumination strength"},
    {Place::kMaterial, 0xA085, Action::kSkip, "material wireframe indicator"},
    {Place::kMaterial, 0xA087, Action::kSkip, "material wireframe size"},
    {Place::kMaterial, 0xA088, Action::kSkip, "material face map indicator"},
    {Place::kMaterial, 0xA08A, Action::kSkip, "material transparency falloff in indicator"},
    {Place::kMaterial, 0xA08C, Action::kSkip, "material soften indicator"},
    {Place::kMaterial, 0xA08E, Action::kSkip, "material wireframe in units indicator"},
    {Place::kMaterial, 0xA100, Action::kSkip, "material render type"},
    {Place::kMaterial, 0xA200, Action::kTextureMap, "material texture map 1"},
    {Place::kMaterial, 0xA204, Action::kTraceSubMaterial, "material specular map"},
    {Place::kMaterial, 0xA210, Action::kTraceSubMaterial, "material opacity map"},
    {Place::kMaterial, 0xA220, Action::kTraceSubMaterial, "material reflection map"},
    {Place::kMaterial, 0xA230, Action::kTraceSubMaterial, "material bump map"},
    {Place::kMaterial, 0xA33A, Action::kTraceSubMaterial, "material texture map 2"},
    {Place::kMaterial, 0xA33C, Action::kTraceSubMaterial, "material shininess map"},
    {Place::kMaterial, 0xA33D, Action::kTraceSubMaterial, "material self illumination map"},
    {Place::kMaterial, 0xA33E, Action::kTraceSubMaterial, "material texture map 1 mask"},
    {Place::kMaterial, 0xA340, Action::kTraceSubMaterial, "material texture map 2 mask"},
    {Place::kMaterial, 0xA342, Action::kTraceSubMaterial, "material opacity mask"},
    {Place::kMaterial, 0xA344, Action::kTraceSubMaterial, "material bump mask"},
    {Place::kMaterial, 0xA346, Action::kTraceSubMaterial, "material shininess mask"},
    {Place::kMaterial, 0xA348, Action::kTraceSubMaterial, "material specular mask"},
    {Place::kMaterial, 0xA34A, Action::kTraceSubMaterial, "material self illumination mask"},
    {Place::kMaterial, 0xA34C, Action::kTraceSubMaterial, "material reflection mask"},

    {Place::kSubMaterial, 0xA300, Action::kMapFile, "sub-material file name"},
    {Place::kSubMaterial, 0xA351, Action::kSkip, "sub-material parameters"},
    {Place::kSubMaterial, 0xA353, Action::kSkip, "sub-material blur"},
    {Place::kSubMaterial, 0xA354, Action::kSkip, "sub-material V scale"},
    {Place::kSubMaterial, 0xA356, Action::kSkip, "sub-material U scale"},
    {Place::kSubMaterial, 0xA358, Action::kSkip, "sub-material U offset"},
    {Place::kSubMaterial, 0xA35A, Action::kSkip, "sub-material V offset"},
    {Place::kSubMaterial, 0xA35C, Action::kSkip, "sub-material rotation"},
    {Place::kSubMaterial, 0xA360, Action::kSkip, "sub-material tint 1"},
    {Place::kSubMaterial, 0xA362, Action::kSkip, "sub-material tint 2"},
    {Place::kSubMaterial, 0xA364, Action::kSkip, "sub-material red tint"},
    {Place::kSubMaterial, 0xA366, Action::kSkip, "sub-material green tint"},
    {Place::kSubMaterial, 0xA368, Action::kSkip, "sub-material blue tint"},

    {Place::kLight, 0x4610, Action::kTraceSpotlight, "light spotlight"},
    {Place::kLight, 0x4620, Action::kSkip, "light off indicator"},
    {Place::kLight, 0x4625, Action::kSkip, "light attenuation indicator"},
    {Place::kLight, 0x4654, Action::kSkip, "light excluded object"},
    {Place::kLight, 0x4659, Action::kSkip, "light inner range"},
    {Place::kLight, 0x465A, Action::kSkip, "light outer range"},
    {Place::kLight, 0x465B, Action::kSkip, "light multiplier"},

    {Place::kSpotlight, 0x4627, Action::kSkip, "spotlight ray traced shadows indicator"},
    {Place::kSpotlight, 0x4630, Action::kSkip, "spotlight shadowed indicator"},
    {Place::kSpotlight, 0x4641, Action::kSkip, "spotlight shadow map parameters"},
    {Place::kSpotlight, 0x4650, Action::kSkip, "spotlight show cone indicator"},
    {Place::kSpotlight, 0x4651, Action::kSkip, "spotlight rectangular indicator"},
    {Place::kSpotlight, 0x4652, Action::kSkip, "spotlight overshoot indicator"},
    {Place::kSpotlight, 0x4653, Action::kSkip, "spotlight projector map"},
    {Place::kSpotlight, 0x4656, Action::kSkip, "spotlight roll"},
    {Place::kSpotlight, 0x4657, Action::kSkip, "spotlight aspect ratio"},
    {Place::kSpotlight, 0x4658, Action::kSkip, "spotlight ray trace bias"},

    {Place::kCamera, 0x4710, Action::kSkip, "camera show cone indicator"},
    {Place::kCamera, 0x4720, Action::kSkip, "camera ranges"},
    {Place::kCamera, 0x7001, Action::kSkip, "camera window settings"},
};

}  // namespace

const SStudioChunkRow* FindStudioChunk(EStudioPlace place, uint16_t id) {
  const auto row = std::find_if(std::begin(kRows), std::end(kRows),
                                [=](const SStudioChunkRow& r) { return r.place == place && r.id == id; });
  return row == std::end(kRows) ? nullptr : row;
}

}  // namespace veldra
