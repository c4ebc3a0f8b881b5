#include "document/filenews.h"

#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kChangedText = "\"%s\" has been changed on the disk.\nLoad it again?";
constexpr const char* kChangedModifiedText =
    "\"%s\" has been changed on the disk.\nLoad it again and lose the changes since it was last saved?";
constexpr const char* kReloadText = "Load \"%s\" again and lose the changes since it was last saved?";
constexpr const char* kGoneText =
    "\"%s\" is no longer on the disk.\nThe document stays open and counts as modified: saving it writes the file anew.";

bool IsLoadingWanted(const CTarnDoc& document, const char* text) {
  const SMessage question = {
      .text = Format(text, document.Path().c_str()), .icon = EIcon::kQuestion, .usual = EAnswer::kNo};
  return document.Services().questions.AskYesNo(question) == EAnswer::kYes;
}

}  // namespace

EFileNews TakeFileNews(CTarnDoc& document) {
  const EFileNews news = document.FileStamp().TakeNews();
  if (news == EFileNews::kGone) document.SetModified(true);
  return news;
}

bool IsSettledQuietly(const CTarnDoc& document, EFileNews news) {
  return news == EFileNews::kChanged && !document.IsModified() && document.Settings().reload_unmodified != 0;
}

void SettleFileNews(CTarnDoc& document, EFileNews news) {
  if (news == EFileNews::kGone) {
    const std::string text = Format(kGoneText, document.FileStamp().Gone().c_str());
    document.Services().questions.Message({.text = text, .icon = EIcon::kWarning});
  } else if (news == EFileNews::kChanged) {
    const char* text = document.IsModified() ? kChangedModifiedText : kChangedText;
    if (IsSettledQuietly(document, news) || IsLoadingWanted(document, text)) document.Reload();
  }
}

bool AskAndReload(CTarnDoc& document) {
  return (!document.IsModified() || IsLoadingWanted(document, kReloadText)) && document.Reload();
}

}  // namespace veldra
