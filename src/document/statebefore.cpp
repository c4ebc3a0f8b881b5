#include "document/statebefore.h"

#include <exception>
#include <new>

#include "document/modelcopy.h"
#include "document/tarn2doc.h"
#include "platform/trace.h"

namespace veldra {

namespace {

using Images = std::map<std::string, const STextureImage*>;

/// The images that MODEL's textures have, whichever files they came from.
Images ImagesOf(const CBinModel& model) {
  Images images;
  for (int32_t i = 0; i < model.TextureCount(); ++i)
    for (const CBinTexture::SFrame& frame : model.Texture(i).Frames())
      images.emplace(frame.name, frame.image);
  return images;
}

/// Finds those, and nothing else: this is no time for questions.
class CKnownImages : public CTextureFinder {
 public:
  CKnownImages(const SDocumentServices& services, const Images& images)
      : CTextureFinder(services.textures, services.questions, ""), images_(images) {}

  const STextureImage* Find(const std::string& name) override {
    const auto image = images_.find(name);
    return image != images_.end() ? image->second : nullptr;
  }

 private:
  const Images& images_;
};

}  // namespace

CStateBefore::CStateBefore(CTarnDoc& document, const char* command, bool cancellable)
    : document_(document),
      work_(document.services_.questions.BeginWork(command, cancellable)),
      key_(document.StatesKey()),
      packed_(document.PackState(command)),
      is_file_(!document.IsModified()),
      revision_(document.model_.Revision()),
      exceptions_(std::uncaught_exceptions()),
      images_(ImagesOf(document.model_)) {
  if (packed_.empty() && document.services_.earlier_states != nullptr) throw std::bad_alloc();
}

CStateBefore::~CStateBefore() {
  if (document_.model_.Revision() == revision_) return;
  if (std::uncaught_exceptions() > exceptions_) TakeBack();
  document_.KeepPacked(key_, packed_, is_file_);
}

/// What the failed command took is free by now. If that does not do, the model that it left has to make room.
void CStateBefore::TakeBack() {
  if (!packed_.empty() && !Restore(false) && !Restore(true)) Trace(">> CStateBefore: the model is lost\n");
}

bool CStateBefore::Restore(bool in_place) try {
  CKnownImages images(document_.services_, images_);
  CBinModel before;
  document_.history_.Clear();  // its actions hold vertices that go
  if (in_place) document_.TakeModel(before);
  if (!ReadModelCopy(packed_, before, images, nullptr)) return false;
  document_.TakeModel(before);
  document_.SetModified(!is_file_);
  return true;
} catch (const std::bad_alloc&) {
  return false;
}

}  // namespace veldra
