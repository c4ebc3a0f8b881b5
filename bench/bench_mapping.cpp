#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "comparison.h"
#include "mapping/mappingsession.h"
#include "platform/glcontext.h"
#include "platform/unattendedquestions.h"
#include "render/modelrenderer.h"
#include "wavymodel.h"

namespace veldra::bench {

namespace {

constexpr int kSide = 142;  ///< 20,164 faces
constexpr int kWindow = 256;

/// All faces of a model on one texture, taken hold of in the mapping editor.
struct SMappedCloth {
  SMappedCloth() : wavy(kSide, 10, false) {
    CBinModel& model = document.Model();
    model.TakeContents(wavy.model);
    std::vector<int32_t> all;
    for (int32_t i = 0; i < model.FaceCount(); ++i) {
      all.push_back(i);
      model.SetFaceTexture(i, &model.Texture(0));
      model.Face(i).SetType(kFaceTextured);
      for (int k = 0; k < model.Face(i).CornerCount(); ++k)
        model.Face(i).SetTexCoord(k, {(i % kSide + (k == 1 || k == 2)) / 200.0, (i / kSide + (k > 1)) / 200.0});
    }
    model.Select(EGroupKind::kFaces, all, true);
    settings.preview = 1;
    session.Follow(true);
    if (!session.Begin("Move Mapping")) std::abort();
    SError error;
    static const auto context = CMemoryGlContext::Create(kWindow, kWindow, &error);
    if (context == nullptr) std::exit(1);
    state.extent = kSide * 10;
  }
  void Move() { session.Try(Moved(session.Start(), {double(++moves % 8), 0})); }
  void Draw() {
    renderer.Draw(document.Model(), state, kWindow, kWindow);
    glFinish();
  }

  CWavyModel wavy;
  CUnattendedQuestions questions;
  CSettings settings;
  CTextureStore textures{questions, GreyRamp()};
  CTarnDoc document{{questions, textures, settings}};
  CEditCursor cursor{document};
  CMappingSession session{settings, [this] { return &cursor; }};
  CModelRenderer renderer;
  SViewState state;
  int moves = 0;
};

SMappedCloth& Cloth() {
  static auto* const cloth = new SMappedCloth;
  return *cloth;
}

}  // namespace

void AddMappingComparisons() {
  Compare("drag 20k mapped faces", [] { return Seconds([] { Cloth().Move(); }); },
          {{"the redraw after it",
            [] {
              Cloth().Move();
              return Seconds([] { Cloth().Draw(); });
            },
            1}});
}

}  // namespace veldra::bench
