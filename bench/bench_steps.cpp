#include <filesystem>
#include <functional>
#include <numeric>

#include "comparison.h"
#include "document/steps.h"
#include "document/tarn2doc.h"
#include "editing/editcursor.h"
#include "model/binfile.h"
#include "model/geometry.h"
#include "model/meshedit.h"
#include "platform/paths.h"
#include "platform/unattendedquestions.h"
#include "samples/workspace.h"
#include "wavymodel.h"

namespace veldra::bench {

namespace {

/// A document as the editor has it open, with a view's cursor on it.
class COpenModel {
 public:
  using Fill = std::function<void(CBinModel&, CTextureStore&, CQuestions&)>;
  explicit COpenModel(const Fill& fill) {
    fill(document_.Model(), textures_, questions_);
    document_.Steps().Clear();
    cursor_.SetFace(document_.Model().FaceCount() - 1);
  }
  CTarnDoc& Document() { return document_; }

 private:
  CUnattendedQuestions questions_;
  CTextureStore textures_{questions_, GreyRamp()};
  CSettings settings_;
  CTarnDoc document_{SDocumentServices{questions_, textures_, settings_}};
  CEditCursor cursor_{document_};
};

COpenModel& Truck() {
  static COpenModel truck([](CBinModel& model, CTextureStore& textures, CQuestions& questions) {
    const std::filesystem::path folder = std::filesystem::temp_directory_path() / "veldra-bench-steps";
    const std::string path = folder.string();
    SError error;
    Require(samples::WriteWorkspace(path, questions, &error), "writing the samples");
    CTextureFinder finder(textures, questions, JoinPath(path, "ART"));
    const SLoadContext context{finder, questions};
    Require(LoadBinFile(model, JoinPath(path, "MODELS/TRUCK.BIN"), context), "loading");
    std::error_code ignored;
    std::filesystem::remove_all(folder, ignored);
  });
  return truck;
}

/// A million vertices and 500,000 triangles, each pair with corners of its own.
COpenModel& Million() {
  constexpr int kSide = 500;
  static CWavyModel wavy(kSide, 20, true);
  static COpenModel million([](CBinModel& model, CTextureStore&, CQuestions&) {
    std::vector<int32_t> quads(static_cast<size_t>(wavy.model.FaceCount()));
    std::iota(quads.begin(), quads.end(), 0);
    SplitQuads(wavy.model, quads);
    model.TakeContents(wavy.model);
  });
  return million;
}

using Change = std::function<void(CBinModel&)>;

double Do(CTarnDoc& document, const Change& change) {
  return Seconds([&] {
    const CStep step(document, "Change");
    change(document.Model());
  });
}

/// Each leaves the document as it was.
void AddRows(const std::string& name, COpenModel& (*open)(), const Change& change) {
  const auto plainly = [=] {
    const double seconds = Do(open().Document(), change);
    open().Document().StepBack();
    return seconds;
  };
  const auto back = [=] {
    Do(open().Document(), change);
    return Seconds([&] { open().Document().StepBack(); });
  };
  const auto forward = [=] {
    Do(open().Document(), change);
    open().Document().StepBack();
    const double seconds = Seconds([&] { open().Document().StepForward(); });
    open().Document().StepBack();
    return seconds;
  };
  Compare("Step Back " + name, back, {{"the command", plainly}});
  Compare("Step Forward " + name, forward, {{"the command", plainly}});
}

}  // namespace

void AddStepComparisons() {
  const std::pair<const char*, Change> changes[] = {
      {"move all", [](CBinModel& model) { Translate(model, {}, 1, 2, 3); }},
      {"delete a face", [](CBinModel& model) { model.RemoveFaces(7, 1); }},
  };
  const std::pair<const char*, COpenModel& (*)()> models[] = {{"truck", Truck}, {"1M/500k", Million}};
  for (const auto& [model, open] : models)
    for (const auto& [change, run] : changes)
      AddRows(std::string(model) + ": " + change, open, run);
}

}  // namespace veldra::bench
