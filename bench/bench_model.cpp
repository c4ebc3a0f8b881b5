#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <map>
#include <random>

#include "comparison.h"
#include "interchange/wavefront.h"
#include "model/binfile.h"
#include "model/geometry.h"
#include "model/modelstep.h"
#include "model/seeds.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/unattendedquestions.h"
#include "wavymodel.h"

namespace veldra::bench {

namespace {

constexpr int kSpacing = 20;

/// A folder that is gone when the program ends.
class CFolder {
 public:
  CFolder() : path_(JoinPath(std::filesystem::temp_directory_path().string(), "veldra-bench")) {
    Require(MakeDirectories(path_), "making a folder");
    const std::vector<uint8_t> texels(64 * 64, 1);
    for (int i = 0; i < 8; ++i)
      Require(ReplaceFile(File(Format("WAVE%d.RAW", i)), texels), "writing a texture");
  }
  ~CFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
  }
  std::string File(const std::string& name) const { return JoinPath(path_, name); }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

const CFolder& Folder() {
  static const CFolder folder;
  return folder;
}

/// The shared model of that many quads a side, made when it is first asked for.
const CBinModel& ModelOf(int side) {
  static std::map<int, std::unique_ptr<CWavyModel>> models;
  auto& made = models[side];
  if (!made) made = std::make_unique<CWavyModel>(side, kSpacing, false);
  return made->model;
}

/// Its file, likewise.
const std::string& FileOf(int side) {
  static std::map<int, std::string> files;
  std::string& path = files[side];
  if (path.empty()) {
    path = Folder().File(Format("wavy%d.bin", side));
    SError error;
    Require(SaveBinFile(ModelOf(side), {}, path, &error), "saving");
  }
  return path;
}

double Load(int side) {
  const std::string& path = FileOf(side);
  static CUnattendedQuestions questions;
  static CTextureStore store(questions, GreyRamp());
  CTextureFinder finder(store, questions, Folder().Path());
  CBinModel model;
  const SLoadContext context{finder, questions};
  return Seconds([&] { Require(LoadBinFile(model, path, context), "loading"); });
}

/// Reading is not less than having seen each word.
double ReadWords(const std::string& path) {
  return Seconds([&] {
    const auto bytes = ReadWholeFile(path);
    Require(bytes.has_value(), "reading");
    uint32_t sum = 0;
    for (size_t at = 0; at + 4 <= bytes->View().size(); at += 4) {
      uint32_t word;
      std::memcpy(&word, bytes->View().data() + at, 4);
      sum += word;
    }
    asm volatile("" : : "r"(sum));
  });
}

/// What writing BYTES costs without asking for them to be on the disk.
double WritePlainly(std::string_view bytes) {
  const std::string path = Folder().File("plain");
  return Seconds([&] {
    std::FILE* const file = std::fopen(path.c_str(), "wb");
    Require(file != nullptr, "opening");
    Require(std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size(), "writing");
    Require(std::fclose(file) == 0, "closing");
  });
}

std::string ContentOf(const std::string& path) {
  const auto bytes = ReadWholeFile(path);
  Require(bytes.has_value(), "reading");
  return std::string(bytes->Text());
}

double Save(int side) {
  const CBinModel& model = ModelOf(side);
  const std::string path = Folder().File("saved.bin");
  SError error;
  return Seconds([&] { Require(SaveBinFile(model, {}, path, &error), "saving"); });
}

/// The model file and its sidecar, as they are.
double ReplaceBoth(int side) {
  const std::string model = ContentOf(FileOf(side));
  const std::string info = ContentOf(InfoPath(FileOf(side)));
  const std::string path = Folder().File("replaced.bin");
  return Seconds([&] {
    Require(ReplaceFile(path, model), "replacing");
    Require(ReplaceFile(InfoPath(path), info), "replacing");
  });
}

double Export(int side) {
  const CBinModel& model = ModelOf(side);
  const std::string path = Folder().File("exported.obj");
  SError error;
  return Seconds([&] { Require(ExportWavefront(model, path, &error), "exporting"); });
}

const std::string& TextOf(int side) {
  static std::map<int, std::string> texts;
  std::string& text = texts[side];
  if (text.empty()) text = WavefrontText(ModelOf(side));
  return text;
}

double ReplaceText(int side) {
  const std::string& text = TextOf(side);
  const std::string path = Folder().File("replaced.obj");
  return Seconds([&] { Require(ReplaceFile(path, text), "replacing"); });
}

/// Of quads that each have their own vertices; about VERTICES of them, of which a quarter stays.
double Merge(int vertices, int spacing) {
  const int side = static_cast<int>(std::lround(std::sqrt(vertices / 4.0)));
  CWavyModel wavy(side, spacing, true);
  int32_t merged = 0;
  const double seconds = Seconds([&] { merged = MergeVertices(wavy.model, 2); });
  Require(merged > 2 * side * side && wavy.model.FaceCount() == side * side, "merging");
  return seconds;
}

/// Positions all over the range of 32 bits, where sums of squares wrap a million times over.
std::vector<WrappedPoint> WildCloud(size_t count) {
  std::mt19937 random(3);
  std::vector<WrappedPoint> points(count);
  for (WrappedPoint& p : points)
    p = {static_cast<uint32_t>(random()), static_cast<uint32_t>(random()), static_cast<uint32_t>(random())};
  return points;
}

double AssignWild(size_t count) {
  std::vector<WrappedPoint> points = WildCloud(count);
  return Seconds([&] { Require(AssignSeeds(std::move(points), 5).size() == count, "merging"); });
}

/// The same by comparing all pairs.
double AssignByAllPairs(size_t count) {
  const std::vector<WrappedPoint> points = WildCloud(count);
  std::vector<size_t> seeds;
  const auto is_near = [&](size_t i, size_t seed) {
    uint32_t sum = 0;
    for (size_t axis = 0; axis < 3; ++axis)
      sum += (points[i][axis] - points[seed][axis]) * (points[i][axis] - points[seed][axis]);
    return sum < 36;
  };
  return Seconds([&] {
    for (size_t i = 0; i < count; ++i)
      if (std::none_of(seeds.begin(), seeds.end(), [&](size_t seed) { return is_near(i, seed); })) seeds.push_back(i);
    asm volatile("" : : "r"(seeds.data()) : "memory");
  });
}

/// A change of the model of SIDE quads a side, with what it takes to go back over it later where one RECORDS that.
template <typename Change>
double ChangeModel(int side, bool records, const Change& change) {
  CWavyModel wavy(side, kSpacing, false);
  std::unique_ptr<CStepRecorder> recorder;
  if (records) recorder = std::make_unique<CStepRecorder>(wavy.model);
  return Seconds([&] {
    change(wavy.model);
    if (records) Require(recorder->Take() != nullptr, "recording");
  });
}

template <typename Change>
double GoBack(int side, const Change& change) {
  CWavyModel wavy(side, kSpacing, false);
  CStepRecorder recorder(wavy.model);
  change(wavy.model);
  const std::unique_ptr<CModelStep> step = recorder.Take();
  return Seconds([&] { step->Swap(wavy.model); });
}

/// Recording a change, and going back over it, beside the change itself.
template <typename Change>
void AddStepComparisons(const char* label, int side, const Change& change) {
  const auto plainly = [=] { return ChangeModel(side, false, change); };
  Compare(Format("step: %s", label), [=] { return ChangeModel(side, true, change); }, {{"the change", plainly}});
  Compare(Format("step back: %s", label), [=] { return GoBack(side, change); }, {{"the change", plainly}});
}

struct SSize {
  const char* label;
  int side;
};

void AddFileComparisons(const SSize& size) {
  const int side = size.side;
  Compare(Format("load %s", size.label), [=] { return Load(side); },
          {{"read the words", [=] { return ReadWords(FileOf(side)); }, 12}});
  Compare(Format("save %s", size.label), [=] { return Save(side); },
          {{"replace the files", [=] { return ReplaceBoth(side); }, 6},
           {"write without flushing", [=] { return WritePlainly(ContentOf(FileOf(side))); }}});
  Compare(Format("export %s", size.label), [=] { return Export(side); },
          {{"replace the file", [=] { return ReplaceText(side); }, 6},
           {"write without flushing", [=] { return WritePlainly(TextOf(side)); }}});
}

}  // namespace

void AddModelComparisons() {
  // About 1,000, 30,000 and 1,000,000 faces.
  for (const SSize& size : {SSize{"1k", 32}, SSize{"30k", 173}, SSize{"1M", 1000}})
    AddFileComparisons(size);
  const auto merge = [](int vertices, int spacing) { return [=] { return Merge(vertices, spacing); }; };
  Compare("merge 100k", merge(100000, kSpacing), {});
  CompareWith("merge 1k", merge(1000, kSpacing), "merge 100k", 0);
  CompareWith("merge 30k", merge(30000, kSpacing), "merge 100k", 0);
  CompareWith("merge 1M", merge(1000000, kSpacing), "merge 100k", 15);
  // So far apart that sums of squares wrap.
  CompareWith("merge 100k wide", merge(100000, 700), "merge 100k", 0);
  const auto wild = [](size_t count) { return [=] { return AssignWild(count); }; };
  Compare("seeds 50k wild", wild(50000), {{"all pairs", [] { return AssignByAllPairs(50000); }}});
  CompareWith("seeds 200k wild", wild(200000), "seeds 50k wild", 0);
  const auto move_one = [](CBinModel& model) { model.SetVertexPosition(7, {1, 2, 3}); };
  const auto move_all = [](CBinModel& model) { Translate(model, {}, 1, 2, 3); };
  const auto remove_one = [](CBinModel& model) { model.RemoveFaces(7, 1); };
  const auto merge_some = [](CBinModel& model) {
    model.SetVertexPosition(7, model.Vertex(8).Position());
    MergeVertices(model, 0);
  };
  AddStepComparisons("move one of 1M", 1000, move_one);
  AddStepComparisons("move all of 1M", 1000, move_all);
  AddStepComparisons("delete one face of 1M", 1000, remove_one);
  AddStepComparisons("merge two of 1M", 1000, merge_some);
  AddStepComparisons("move all of 1k", 32, move_all);
}

}  // namespace veldra::bench
