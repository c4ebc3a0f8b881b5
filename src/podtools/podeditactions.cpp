#include "podtools/podeditactions.h"

#include <QEvent>
#include <QHeaderView>

#include "archive/filetypes.h"
#include "document/filenews.h"
#include "packing/podbuild.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "podtools/podprompt.h"
#include "textures/picturetexture.h"
#include "textures/texturefiles.h"
#include "ui/commandicons.h"
#include "ui/qstrings.h"

namespace veldra {

CPodEditActions::CPodEditActions(CArchiveDocument& document, const SToolServices& services, CPodListView& list,
                                 CWindowKeys& keys, QWidget& window)
    : QObject(&window), document_(document), services_(services), list_(list), keys_(keys), window_(window) {
  MakeFileActions();
  MakeEntryActions();
  MakeOrderActions();
  window.installEventFilter(this);
  // The list's editor is still open when it says so.
  connect(&list_.Entries(), &CPodListModel::RenameWanted, this, &CPodEditActions::Rename, Qt::QueuedConnection);
  connect(list_.header(), &QHeaderView::sortIndicatorChanged, this, &CPodEditActions::Refresh);
}

QAction* CPodEditActions::Make(const char* name, std::function<void()> action) {
  auto* const made = new QAction(CommandIcon(name), {}, &window_);
  made->setObjectName(QString(name) + "Entry");
  keys_.Bind(*made, name);
  connect(made, &QAction::triggered, this, [action = std::move(action)] { action(); });
  window_.addAction(made);
  return made;
}

void CPodEditActions::MakeFileActions() {
  save_ = Make("save", [this] { Save(); });
  save_as_ = Make("saveAs", [this] { SaveAs(); });
  reload_ = Make("refresh", [this] { Reload(); });
  save_and_start_ = Make("saveAndStart", [this] { SaveAndStart(); });
  back_ = Make("undo", [this] { document_.StepBack(); });
  forward_ = Make("redo", [this] { document_.StepForward(); });
}

void CPodEditActions::MakeEntryActions() {
  adding_ = {Make("add", [this] { AskAndAdd(); }), Make("addFolder", [this] { AskAndAddFolder(); })};
  replace_ = Make("replace", [this] { AskAndReplace(); });
  rename_ = Make("rename", [this] { list_.EditName(); });
  remove_ = Make("remove", [this] { Remove(); });
}

void CPodEditActions::MakeOrderActions() {
  moving_ = {Make("up", [this] { MoveBy(-1); }), Make("down", [this] { MoveBy(1); }),
             Make("first", [this] { MoveTo(0); }), Make("last", [this] { MoveTo(SIZE_MAX); })};
  arrange_ = Make("arrange", [this] {
    const auto order = list_.Filter().Order();
    if (document_.Change([&](CPodChanges& changes) { return changes.Arrange(order); })) list_.ShowOwnOrder();
  });
  own_order_ = Make("ownOrder", [this] { list_.ShowOwnOrder(); });
}

void CPodEditActions::FillArchiveMenu(QMenu& menu) const {
  menu.addActions({save_, save_as_, reload_, save_and_start_});
}

void CPodEditActions::FillEditMenu(QMenu& menu) const {
  menu.addActions({back_, forward_});
  menu.addSeparator();
  menu.addActions(adding_);
  menu.addActions({replace_, rename_, remove_});
  menu.addSeparator();
  menu.addActions(moving_);
  menu.addActions({arrange_, own_order_});
}

void CPodEditActions::FillToolBar(QToolBar& bar) const {
  bar.addAction(save_);
  bar.addActions({back_, forward_});
  bar.addSeparator();
  bar.addActions({adding_.first(), replace_, rename_, remove_});
}

void CPodEditActions::FillContextMenu(QMenu& menu) const {
  menu.addActions({replace_, rename_, remove_});
  menu.addSeparator();
  menu.addActions(moving_);
  menu.addSeparator();
  menu.addActions(adding_);
}

void CPodEditActions::Refresh() {
  const bool has_archive = !document_.Path().empty();
  const size_t selected = list_.Selected().size();
  const CPodChanges& changes = document_.Changes();
  save_->setEnabled(document_.IsModified());
  for (QAction* action : {save_as_, reload_})
    action->setEnabled(has_archive);
  for (QAction* action : adding_)
    action->setEnabled(has_archive);
  const bool has_command = services_.CanStartGame();
  save_and_start_->setEnabled(has_archive && has_command);
  save_and_start_->setText(has_command
                               ? tr("Save and Start &Game")
                               : tr("Save and Start &Game (its command is set in File > Preferences, Archives)"));
  back_->setEnabled(changes.CanStepBack());
  forward_->setEnabled(changes.CanStepForward());
  back_->setText(tr("Step &Back: %1").arg(NameToQString(changes.BackName()).replace('&', "&&")));
  forward_->setText(tr("Step &Forward: %1").arg(NameToQString(changes.ForwardName()).replace('&', "&&")));
  if (!changes.CanStepBack()) back_->setText(tr("Step &Back"));
  if (!changes.CanStepForward()) forward_->setText(tr("Step &Forward"));
  for (QAction* action : {replace_, rename_})
    action->setEnabled(selected == 1);
  remove_->setEnabled(selected > 0);
  for (QAction* action : moving_)
    action->setEnabled(selected > 0);
  const bool shows_all = list_.Filter().rowCount() == list_.Entries().rowCount();
  arrange_->setEnabled(has_archive && !list_.HasOwnOrder() && shows_all);
  own_order_->setEnabled(!list_.HasOwnOrder());
}

// --- Entries ---------------------------------------------------------------------------------------------------------

/// What is refused is told by who collects the files.
void CPodEditActions::Add(const std::vector<std::string>& paths) {
  if (document_.Path().empty()) return;
  CPodBuild files(services_.questions, services_.stock);
  if (files.AddAny(paths, false) == 0) return;
  document_.Change([&](CPodChanges& changes) { return changes.Add(services_.questions, files.Sources(false)); });
}

/// The texture and its colour table are made beside PICTURE, where they stay: the archive takes them when it is saved.
void CPodEditActions::ReplaceByPicture(size_t entry, const std::string& picture) {
  const SPodEntry& old = document_.Archive().Entries()[entry];
  SError error;
  const auto texture = TextureOfPicture(picture, {.size = TextureSizeOfLength(old.length)}, &error);
  if (!texture) {
    services_.questions.Fail(Format("\"%s\" could not be opened.", picture.c_str()), error.what);
    return;
  }
  const std::string raw = JoinPath(DirectoryPart(picture), std::string(old.FileName()));
  const std::string act = ChangeExtension(raw, "ACT");
  const SMessage question = {.text = Format("%s or its colour table is beside the picture already.\nWrite over it?",
                                            DisplayName(FileNamePart(raw)).c_str()),
                             .icon = EIcon::kQuestion};
  const bool is_there = FileExists(FindAnyCase(raw)) || FileExists(FindAnyCase(act));
  if (is_there && services_.questions.AskYesNo(question) != EAnswer::kYes) return;
  if (!WriteTextureFiles(raw, texture->indices, texture->colors, &error)) {
    services_.questions.Fail(Format("\"%s\" could not be written.", raw.c_str()), error.what);
    return;
  }
  const std::string name(old.Name());
  const std::vector<SPodSource> sources = {{name, {raw}}, {ChangeExtension(name, "ACT"), {act}}};
  document_.Change([&](CPodChanges& changes) { return changes.Add(services_.questions, sources, false); });
}

void CPodEditActions::AskAndAdd() {
  const auto files = services_.questions.AskOpenFiles({.title = "Add Files",
                                                       .filters = {{"All Files *.*", "*.*"}},
                                                       .directory = DirectoryPart(document_.Path()),
                                                       .name = {},
                                                       .default_extension = {}});
  if (files) Add(files->paths);
}

void CPodEditActions::AskAndAddFolder() {
  const auto folder = services_.questions.AskFolder("Add Folder", DirectoryPart(document_.Path()));
  if (folder) Add({*folder});
}

void CPodEditActions::AskAndReplace() {
  const auto selected = list_.Selected();
  if (selected.size() != 1) return;
  const std::string name(document_.Archive().Entries()[selected.front()].FileName());
  const bool is_texture = TypeOfFile(name) == kTypeRaw;
  const std::string pattern =
      is_texture ? std::string("*.raw ") + kPicturePatterns : "*." + LowerCase(ExtensionPart(name));
  const std::string label = is_texture ? "Textures and pictures" : pattern;
  const auto path = services_.questions.AskOpenFile({.title = "Replace " + DisplayName(name),
                                                     .filters = {{label, pattern}, {"All Files *.*", "*.*"}},
                                                     .directory = services_.settings.art_dir,
                                                     .name = {},
                                                     .default_extension = {}});
  if (!path) return;
  if (is_texture && IsPictureName(*path)) return ReplaceByPicture(selected.front(), *path);
  document_.Change([&](CPodChanges& changes) { return changes.Replace(services_.questions, selected.front(), *path); });
}

void CPodEditActions::Rename(size_t entry, const QString& name) {
  if (entry >= document_.Archive().Entries().size()) return;
  document_.Change(
      [&](CPodChanges& changes) { return changes.Rename(services_.questions, entry, name.trimmed().toStdString()); });
}

void CPodEditActions::Remove() {
  const auto selected = list_.Selected();
  if (!document_.Change([&](CPodChanges& changes) { return changes.Remove(selected); })) return;
  // Where they were, so that the next one can go by the same key.
  const size_t left = document_.Archive().Entries().size();
  if (left > 0) list_.Select({std::min(selected.front(), left - 1)});
}

void CPodEditActions::MoveTo(size_t to) {
  const auto selected = list_.Selected();
  const size_t most = document_.Archive().Entries().size() - selected.size();
  if (selected.empty()) return;
  list_.ShowOwnOrder();
  document_.Change([&](CPodChanges& changes) { return changes.Move(selected, std::min(to, most)); });
}

void CPodEditActions::MoveBy(int by) {
  const auto selected = list_.Selected();
  if (selected.empty()) return;
  const size_t first = selected.front();
  MoveTo(by > 0 ? first + 1 : first - std::min<size_t>(first, 1));
}

// --- The archive's file ----------------------------------------------------------------------------------------------

bool CPodEditActions::Save() {
  if (!document_.Save(document_.Path())) return false;
  emit Done(tr("Saved %1").arg(NameToQString(document_.Path())));
  return true;
}

void CPodEditActions::SaveAndStart() {
  if (document_.IsModified() && !Save()) return;
  if (services_.start_game(document_.Path(), ""))
    emit Done(tr("Started the game with %1").arg(NameToQString(document_.Path())));
}

/// The command that starts the game may have been set in another window.
bool CPodEditActions::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::WindowActivate) Refresh();
  return QObject::eventFilter(watched, event);
}

bool CPodEditActions::SaveAs() {
  SFilePrompt prompt = PodFilePrompt("Save POD File As", services_.settings);
  prompt.directory = DirectoryPart(document_.Path());
  prompt.name = document_.Title();
  const auto chosen = services_.questions.AskSaveFile(prompt);
  if (!chosen || !document_.Save(chosen->path)) return false;
  emit Done(tr("Saved %1").arg(NameToQString(document_.Path())));
  return true;
}

void CPodEditActions::Reload() {
  if (AskAndReload(document_)) emit Done(tr("Reloaded %1").arg(NameToQString(document_.Path())));
}

bool CPodEditActions::MayLeave() {
  return document_.MayLeave([this] { return Save(); });
}

}  // namespace veldra
