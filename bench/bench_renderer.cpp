#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>

#include "comparison.h"
#include "platform/glcontext.h"
#include "platform/text.h"
#include "render/displaylist.h"
#include "render/modelgeometry.h"
#include "render/modelpicker.h"
#include "render/modelrenderer.h"
#include "wavymodel.h"

namespace veldra::bench {

namespace {

constexpr int kSpacing = 10;
/// So small that filling pixels costs nothing beside the vertices.
constexpr int kPictureSide = 16;
/// What picking looks at; still small enough that clearing it costs nothing beside the vertices.
constexpr int kWindowSide = 256;
/// Vertices at a time, as the renderer hands them over.
constexpr size_t kPortion = 16384;

/// A model with the context that draws it and its vertex arrays in memory.
struct SDrawing {
  explicit SDrawing(int side) : wavy(side, kSpacing, false) {
    for (auto& batch : BatchFaces(wavy.model).batches) {
      for (const int32_t face : batch.faces)
        AppendFace(wavy.model.Face(face), CModelSpace(wavy.model.Bounds()), arrays);
    }
    copy = arrays;
    state.extent = side * kSpacing;
    state.mode = ERenderMode::kSolid;
  }
  CWavyModel wavy;
  std::vector<SFaceVertex> arrays;
  std::vector<SFaceVertex> copy;
  SViewState state;
};

/// One context for all: made current once, never gone before the program ends.
void NeedContext() {
  SError error;
  static const auto context = CMemoryGlContext::Create(kWindowSide, kWindowSide, &error);
  if (context != nullptr) return;
  std::fprintf(stderr, "no drawing: %s\n", error.what.c_str());
  std::exit(1);
}

void Draw(CModelRenderer& renderer, const SDrawing& d) {
  renderer.Draw(d.wavy.model, d.state, kPictureSide, kPictureSide);
  glFinish();
}

/// What the driver takes for the same vertices when they lie ready in one array.
void Record(CDisplayList& list, const SDrawing& d) {
  glInterleavedArrays(GL_T2F_N3F_V3F, 0, d.arrays.data());
  list.Record([&] { glDrawArrays(GL_TRIANGLES, 0, static_cast<GLsizei>(d.arrays.size())); });
}

double MakeArrays(const SDrawing& d) {
  return Seconds([&] {
    const CModelSpace space(d.wavy.model.Bounds());
    const SFaceBatches batches = BatchFaces(d.wavy.model);
    std::vector<SFaceVertex> out;
    out.reserve(kPortion + 8);
    for (const int32_t face : batches.order) {
      AppendFace(d.wavy.model.Face(face), space, out);
      if (out.size() >= kPortion) out.clear();
    }
  });
}

double CopyArrays(SDrawing& d) {
  return Seconds([&] {
    std::memcpy(static_cast<void*>(d.copy.data()), d.arrays.data(), d.arrays.size() * sizeof(SFaceVertex));
    asm volatile("" : : "r"(d.copy.data()) : "memory");
  });
}

double FirstFrame(const SDrawing& d) {
  NeedContext();
  CModelRenderer renderer;
  return Seconds([&] { Draw(renderer, d); });
}

double DriversFirstFrame(const SDrawing& d) {
  NeedContext();
  CDisplayList list;
  return Seconds([&] {
    Record(list, d);
    list.Call();
    glFinish();
  });
}

/// Half a million faces that fill a window.
struct SWindow {
  static constexpr int kTiles = 707;

  SWindow() : drawing(kTiles) {
    NeedContext();
    drawing.state.rotation = {60, 20, 0};
    drawing.state.vertices = true;
    Draw();
  }
  void Draw() {
    renderer.Draw(drawing.wavy.model, drawing.state, kWindowSide, kWindowSide);
    glFinish();
  }
  void Pick() {
    const CViewCamera camera(drawing.state, drawing.wavy.model.Bounds(), kWindowSide, kWindowSide);
    if (!picker.Pick(drawing.wavy.model, drawing.state, camera, 1.0, kWindowSide / 2, kWindowSide / 2)) std::abort();
  }
  void Turn() { drawing.state.rotation.y += 0.01; }

  SDrawing drawing;
  CModelRenderer renderer;
  CModelPicker picker;
};

SWindow& Window() {
  static SWindow window;
  return window;
}

void AddPickingComparisons() {
  const auto frame = [] {
    Window().Turn();
    return Seconds([] { Window().Draw(); });
  };
  Compare("pick 500k, view just turned",
          [] {
            Window().Turn();
            return Seconds([] { Window().Pick(); });
          },
          {{"one drawn frame", frame, 0.4}});
  Compare("pick 500k again", [] { return Seconds([] { Window().Pick(); }); }, {{"one drawn frame", frame, 0.1}});
}

}  // namespace

void AddRendererComparisons() {
  // The vertices of the smallest model stay in the cache, where copying them takes no time to compare with.
  for (const auto& [label, side] : {std::pair{"1k", 32}, {"30k", 173}, {"1M", 1000}}) {
    // Made when first measured: a filtered run needs only its own.
    const auto made = std::make_shared<std::unique_ptr<SDrawing>>();
    const auto get = [made, side = side]() -> SDrawing& {
      if (!*made) *made = std::make_unique<SDrawing>(side);
      return **made;
    };
    Compare(Format("vertex arrays %s", label), [get] { return MakeArrays(get()); },
            {{"copy the same bytes", [get, side = side] { return CopyArrays(get()); }, side > 100 ? 6.0 : 0.0}});
    Compare(Format("first frame %s", label), [get] { return FirstFrame(get()); },
            {{"the driver's share", [get] { return DriversFirstFrame(get()); }, 2}});
  }
  AddPickingComparisons();
}

}  // namespace veldra::bench
