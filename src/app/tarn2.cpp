#include "app/tarn2.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/userfolders.h"
#include "settings/coptools.h"

namespace veldra {

CTarn2App::CTarn2App(SStartup startup, CQuestions& questions, CRecoveryKeeper::ClockReader clock)
    : startup_(std::move(startup)),
      palette_(startup_.settings.defpal),
      questions_(questions),
      textures_(questions, startup_.default_colors),
      recovery_(recovery_folder_, std::move(clock)) {}

std::vector<std::shared_ptr<CTarnDoc>> CTarn2App::OpenDocuments() {
  std::erase_if(documents_, [](const std::weak_ptr<CTarnDoc>& document) { return document.expired(); });
  std::vector<std::shared_ptr<CTarnDoc>> open;
  open.reserve(documents_.size());
  for (const auto& document : documents_)
    open.push_back(document.lock());
  return open;
}

std::shared_ptr<CTarnDoc> CTarn2App::FindDocument(const std::string& path) {
  for (const auto& document : OpenDocuments())
    if (IsSameFile(document->Path(), path)) return document;
  return nullptr;
}

std::shared_ptr<CTarnDoc> CTarn2App::FindDocument(const SArchivePlace& place) {
  for (const auto& document : OpenDocuments()) {
    const SArchivePlace* const other = document->ArchivePlace();
    if (other != nullptr && other->IsSame(place)) return document;
  }
  return nullptr;
}

std::shared_ptr<CTarnDoc> CTarn2App::MakeDocument() {
  return std::make_shared<CTarnDoc>(Services());
}

std::shared_ptr<CTarnDoc> CTarn2App::Take(std::shared_ptr<CTarnDoc> document) {
  documents_.push_back(document);
  recovery_.Watch(*document);
  return document;
}

std::shared_ptr<CTarnDoc> CTarn2App::NewDocument() {
  return Take(MakeDocument());
}

std::shared_ptr<CTarnDoc> CTarn2App::OpenDocument(const std::string& path, bool read_only) {
  auto document = MakeDocument();
  if (!document->OnOpenDocument(AbsolutePath(path), read_only)) return nullptr;
  recent_files_.Add(document->Path());
  return Take(std::move(document));
}

std::shared_ptr<CTarnDoc> CTarn2App::OpenFromArchive(const SArchivePlace& place) {
  auto document = MakeDocument();
  return document->OpenFromArchive(place) ? Take(std::move(document)) : nullptr;
}

std::shared_ptr<CTarnDoc> CTarn2App::OpenEarlierState(const CTarnDoc& document, uint64_t id) {
  auto opened = MakeDocument();
  const SDocumentCopy copy = {.title = document.Title() + " (earlier state)", .modified = true};
  if (!opened->OpenCopy(copy, earlier_states_.Read(document.StatesKey(), id))) return nullptr;
  return Take(std::move(opened));
}

std::shared_ptr<CTarnDoc> CTarn2App::OpenLeftover(const SLeftover& leftover) {
  auto document = MakeDocument();
  if (!recovery_.TakeOver(leftover, *document)) return nullptr;
  return Take(std::move(document));
}

bool CTarn2App::MayClose(CTarnDoc& document) {
  return document.MayLeave([&] { return document.Saver().Save(); });
}

void CTarn2App::LetGo(CFileDocument& document, bool stays_open) {
  const auto* model = dynamic_cast<const CTarnDoc*>(&document);
  if (model != nullptr && make_picture_ && !model->Path().empty())
    recent_pictures_.Keep(model->Path(), make_picture_(*model), recent_files_.Paths());
  recovery_.Closed(document);
  if (stays_open) recovery_.Watch(document);
}

void CTarn2App::SettingsChanged(const std::vector<std::string>& keys) {
  if (std::find(keys.begin(), keys.end(), "DEFPAL") == keys.end()) return;
  std::string& path = startup_.settings.defpal;
  if (const auto colors = path.empty() ? GreyRamp() : ReadColorTable(path)) {
    startup_.default_colors = *colors;
    textures_.SetDefaultColors(*colors);
    palette_ = path;
    return;
  }
  questions_.Message({.text = "The default palette could not be loaded. The old one stays.",
                      .caption = kErrorCaption,
                      .icon = EIcon::kError,
                      .details = path + ": it is no file that can be read, or shorter than 768 bytes."});
  path = palette_;
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

bool CTarn2App::MayStart(std::string CSettings::*command) {
  const std::string& text = startup_.settings.*command;
  const std::string& path = startup_.settings_path;
  const bool is_entered = text != startup_.settings_as_read.*command;
  const bool is_here = IsSameFile(path, JoinPath(CurrentDirectory(), kSettingsFileName));
  const bool is_users = IsSameFile(path, JoinPath(UserSettingsDirectory(), kSettingsFileName));
  if (is_entered || !is_here || is_users || granted_commands_.contains(text)) return true;
  const SMessage question = {
      .text = Format("The settings in this folder start a program:\n%s\nStart it?", DisplayName(text).c_str()),
      .icon = EIcon::kQuestion,
      .details = path + " may have come with files from somebody else.",
      .usual = EAnswer::kNo};
  if (questions_.AskYesNo(question) != EAnswer::kYes) return false;
  granted_commands_.insert(text);
  return true;
}

bool CTarn2App::SaveSettings() {
  if (!startup_.keeps_settings) return true;
  if (CopTools::WriteCfgFile(startup_.settings_path, startup_.settings, startup_.settings_as_read)) return true;
  questions_.Message({.text = "Settings could not be saved.",
                      .caption = kErrorCaption,
                      .icon = EIcon::kError,
                      .details = startup_.settings_path});
  return false;
}

SDocumentServices CTarn2App::Services() {
  return {
      .questions = questions_,
      .textures = textures_,
      .settings = startup_.settings,
      .is_open_read_only_elsewhere = [this](const CTarnDoc& asking,
                                            const std::string& path) { return IsOpenReadOnlyElsewhere(asking, path); },
      .earlier_states = &earlier_states_,
      .make_picture = [this](const CTarnDoc& document) { return make_picture_ ? make_picture_(document) : SImage(); },
      .save_into_archive =
          [this](const SArchivePlace& place, std::span<const uint8_t> bytes) {
            return save_into_archive_ && save_into_archive_(place, bytes);
          },
      .say = [this](const std::string& text) { Say(text); }};
}

bool CTarn2App::IsOpenReadOnlyElsewhere(const CTarnDoc& asking, const std::string& path) {
  const auto open = OpenDocuments();
  return std::any_of(open.begin(), open.end(), [&](const std::shared_ptr<CTarnDoc>& document) {
    return document.get() != &asking && document->IsReadOnly() && IsSameFile(document->Path(), path);
  });
}

}  // namespace veldra
