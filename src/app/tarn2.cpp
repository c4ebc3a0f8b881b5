#include "app/tarn2.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "settings/coptools.h"

namespace veldra {

CTarn2App::CTarn2App(SStartup startup, CQuestions& questions)
    : startup_(std::move(startup)), questions_(questions), textures_(questions, startup_.default_colors) {}

std::vector<std::shared_ptr<CTarnDoc>> CTarn2App::OpenDocuments() {
  std::erase_if(documents_, [](const std::weak_ptr<CTarnDoc>& document) { return document.expired(); });
  std::vector<std::shared_ptr<CTarnDoc>> open;
  for (const auto& document : documents_)
    open.push_back(document.lock());
  return open;
}

std::shared_ptr<CTarnDoc> CTarn2App::FindDocument(const std::string& path) {
  const std::string wanted = AbsolutePath(path);
  for (const auto& document : OpenDocuments())
    if (!document->Path().empty() && AbsolutePath(document->Path()) == wanted) return document;
  return nullptr;
}

std::shared_ptr<CTarnDoc> CTarn2App::OpenDocument(const std::string& path) {
  auto document = std::make_shared<CTarnDoc>(Services());
  if (!document->OnOpenDocument(AbsolutePath(path))) return nullptr;
  documents_.push_back(document);
  recent_files_.Add(document->Path());
  return document;
}

bool CTarn2App::MayClose(CTarnDoc& document) {
  if (!document.IsModified()) return true;
  const SMessage question{.text = Format("Save changes to %s?", document.Title().c_str()), .icon = EIcon::kQuestion};
  switch (questions_.AskYesNoCancel(question)) {
    case EAnswer::kYes:
      return document.Save();
    case EAnswer::kNo:
      return true;
    case EAnswer::kCancel:
      break;
  }
  return false;
}

std::string CTarn2App::ModelDirectory() const {
  if (!recent_files_.Paths().empty()) {
    std::string last = DirectoryPart(recent_files_.Paths().front());
    if (IsDirectory(last)) return last;
  }
  const std::string installed = JoinPath(startup_.installation_directory, "MODELS");
  for (const std::string& candidate : {FindAnyCase(startup_.settings.bin_dir), FindAnyCase(installed)})
    if (IsDirectory(candidate)) return candidate;
  return CurrentDirectory();
}

bool CTarn2App::SaveSettings() {
  if (CopTools::WriteCfgFile(startup_.settings_path, startup_.settings, startup_.settings_as_read)) return true;
  questions_.Message({.text = "Settings could not be saved.",
                      .caption = kErrorCaption,
                      .icon = EIcon::kError,
                      .details = startup_.settings_path});
  return false;
}

SDocumentServices CTarn2App::Services() {
  return {.questions = questions_,
          .textures = textures_,
          .settings = startup_.settings,
          .is_open_read_only_elsewhere = [this](const CTarnDoc& asking, const std::string& path) {
            return IsOpenReadOnlyElsewhere(asking, path);
          }};
}

bool CTarn2App::IsOpenReadOnlyElsewhere(const CTarnDoc& asking, const std::string& path) {
  const auto open = OpenDocuments();
  return std::any_of(open.begin(), open.end(), [&](const std::shared_ptr<CTarnDoc>& document) {
    return document.get() != &asking && document->IsReadOnly() && AbsolutePath(document->Path()) == AbsolutePath(path);
  });
}

}  // namespace veldra
