#include <algorithm>
#include <memory>

#include "archive/poddocument.h"
#include "cli/command.h"
#include "cli/pictureoptions.h"
#include "cli/session.h"
#include "cli/trucktools.h"
#include "cli/values.h"
#include "model/binfile.h"
#include "packing/modeltextures.h"
#include "platform/paths.h"
#include "platform/process.h"
#include "platform/text.h"
#include "textures/scalepicture.h"
#include "truckscene/trucktextures.h"

namespace veldra {

namespace {

// A file manager asks for pictures of whatever lies about.
constexpr int kMostSeconds = 20;
constexpr int kMostSide = 1024;
constexpr uint64_t kMostBytes = uint64_t{64} << 20;

struct SThumbnailOptions {
  std::string file;
  std::string out;
  int side = 256;
};

/// What is missing is left blank, and nothing said: a picture of most is better than none.
class CThumbnailQuestions : public CQuietQuestions {
 public:
  STextureAnswer AskTexture(const SMessage&, const SFilePrompt&) override {
    return {.choice = STextureAnswer::EChoice::kBlankForAll, .width = 256};
  }
};

class CThumbnail {
 public:
  CThumbnail(CSession& session, const SThumbnailOptions& options)
      : session_(session),
        options_(options),
        textures_(questions_, session.DefaultColors()),
        finder_(textures_, questions_, session.Settings(), options.file) {
    picture_.size = {options.side, options.side};
    picture_.transparency = true;
  }

  int Make() {
    const std::string type = UpperCase(ExtensionPart(options_.file));
    if (type == "RAW") return Texture(textures_.Picture(options_.file));
    if (type == "POD") return Archive();
    if (type == "TRK") return DrawTruck(session_, options_.file, picture_, options_.out);
    const auto length = FileLength(options_.file);
    if (!length || *length > kMostBytes) return Refuse("The file is too large, or not there.");
    return LoadBinFile(model_, options_.file, Context()) ? Model() : Refuse("It is not a model.");
  }

 private:
  SLoadContext Context() { return {finder_, questions_, false, nullptr}; }
  int Refuse(const char* reason) { return session_.Fail("There is no picture of this file.", reason); }
  int Model() { return DrawPicture(session_, model_, model_.Bounds(), picture_, options_.out); }

  int Texture(const SImage& image) {
    if (image.width == 0) return Refuse("It is not a texture.");
    SError error;
    const int side = std::min(image.width, options_.side);
    return WritePng(options_.out, ScalePicture(image, side, side, EScaling::kSmooth), &error)
               ? kDone
               : session_.FailToWrite(options_.out, error.what);
  }

  /// Of its largest model; of its first texture where there is none.
  int Archive() {
    CPodDocument archive;
    if (!archive.Load(options_.file)) return Refuse(kFailedToLoadPod);
    std::vector<size_t> models = EntriesOf(archive, kTypeBin);
    std::ranges::sort(models, std::greater(), [&](size_t i) { return archive.Entries()[i].length; });
    for (const size_t entry : models) {
      const auto bytes = archive.ReadEntry(entry);
      model_.Clear();
      if (bytes && LoadBin(model_, bytes->View(), {}, Context())) return Model();
    }
    for (const size_t entry : EntriesOf(archive, kTypeRaw)) {
      const STextureImage* image = finder_.Find(std::string(archive.Entries()[entry].FileName()));
      if (image != nullptr && !image->is_stand_in) return Texture({image->size, image->size, image->rgba});
    }
    return Refuse("There is neither a model nor a texture in it.");
  }

  static std::vector<size_t> EntriesOf(const CPodDocument& archive, int type) {
    std::vector<size_t> entries;
    for (size_t i = 0; i < archive.Entries().size(); ++i) {
      const SPodEntry& entry = archive.Entries()[i];
      if (TypeOfFile(entry.FileName()) == type && entry.fault == EPodFault::kNone) entries.push_back(i);
    }
    return entries;
  }

  CSession& session_;
  const SThumbnailOptions& options_;
  CThumbnailQuestions questions_;
  CTextureStore textures_;
  CModelTextureFinder finder_;
  SPictureOptions picture_;
  CBinModel model_;
};

int MakeThumbnail(CSession& session, const SThumbnailOptions& options) {
  LimitProcessTime(kMostSeconds);
  session.TakeEditorSettings();
  return CThumbnail(session, options).Make();
}

}  // namespace

SCommandRow ThumbnailCommand() {
  const auto options = std::make_shared<SThumbnailOptions>();
  const auto parse_side = [](const std::string& text) -> std::optional<int> {
    const auto side = ParseIntegers(text, 1);
    return side && side->front() >= 16 && side->front() <= kMostSide ? std::optional<int>(side->front()) : std::nullopt;
  };
  return {.name = "thumbnail",
          .help = "Draw a small picture of a model, truck, archive or texture, as file managers want them",
          .options = {Argument("FILE", "BIN, TRK, POD or RAW file", options->file),
                      Output("OUT", "PNG file to write", options->out),
                      Option("--size", "N", "Largest side in pixels (default: 256)",
                             Parsed(options->side, parse_side, "is no number from 16 to 1024"))},
          .run = [options](CSession& session) { return MakeThumbnail(session, *options); }};
}

}  // namespace veldra
