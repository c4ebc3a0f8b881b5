#include "document/filenews.h"

#include "platform/text.h"

namespace veldra {

namespace {

constexpr const char* kChangedText = "\"%s\" has been changed on the disk.\nLoad it again?";
constexpr const char* kChangedModifiedText =
    "\"%s\" has been changed on the disk.\nLoad it again and lose the changes since it was last saved?";
constexpr const char* kChangedOnDiskText =
    "\"%s\" has been changed on the disk since it was opened.\nSave anyway and lose those changes?";
constexpr const char* kReloadText = "Load \"%s\" again and lose the changes since it was last saved?";
constexpr const char* kGoneText =
    "\"%s\" is no longer on the disk.\nThe document stays open and counts as modified: saving it writes the file anew.";

constexpr const char* kGoneForGoodText =
    "\"%s\" is no longer on the disk.\nNothing of it can be shown or saved until it is there again.";

bool IsLoadingWanted(const CFileDocument& document, const char* text) {
  const SMessage question = {
      .text = Format(text, document.Path().c_str()), .icon = EIcon::kQuestion, .usual = EAnswer::kNo};
  return document.Questions().AskYesNo(question) == EAnswer::kYes;
}

}  // namespace

EFileNews TakeFileNews(CFileDocument& document) {
  const EFileNews news = document.FileStamp().TakeNews();
  if (news == EFileNews::kGone) document.OnFileGone();
  return news;
}

bool IsSettledQuietly(const CFileDocument& document, EFileNews news) {
  return news == EFileNews::kChanged && !document.IsModified() && document.Settings().reload_unmodified != 0;
}

void SettleFileNews(CFileDocument& document, EFileNews news) {
  if (news == EFileNews::kGone) {
    const std::string text =
        Format(document.IsWhole() ? kGoneText : kGoneForGoodText, document.FileStamp().Gone().c_str());
    document.Questions().Message({.text = text, .icon = EIcon::kWarning});
  } else if (news == EFileNews::kChanged) {
    const char* text = document.IsModified() ? kChangedModifiedText : kChangedText;
    if (IsSettledQuietly(document, news) || IsLoadingWanted(document, text)) document.Reload();
  }
}

bool MayOverwrite(const CFileDocument& document) {
  if (!document.FileStamp().IsChanged()) return true;
  const SMessage question = {
      .text = Format(kChangedOnDiskText, document.Path().c_str()), .icon = EIcon::kWarning, .usual = EAnswer::kNo};
  return document.Questions().AskYesNo(question) == EAnswer::kYes;
}

bool AskAndReload(CFileDocument& document) {
  return (!document.IsModified() || IsLoadingWanted(document, kReloadText)) && document.Reload();
}

}  // namespace veldra
