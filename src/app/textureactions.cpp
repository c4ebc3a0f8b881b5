#include "app/textureactions.h"

#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QUrl>
#include <algorithm>

#include "app/droppedpictures.h"
#include "app/programstart.h"
#include "editing/changetexturedlg.h"
#include "editing/colortabledlg.h"
#include "editing/editpicturedlg.h"
#include "mapping/mappingwidget.h"
#include "platform/files.h"
#include "platform/text.h"
#include "tools/texturebrowserwidget.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

std::optional<STextureSource> SourceOfEntry(const CBinTexture& entry) {
  return entry.Image()->is_stand_in ? std::nullopt : std::optional(SourceOf(*entry.Image()));
}

std::optional<STextureSource> SourceOfFace(const CBinFace& face) {
  return face.Texture() == nullptr ? std::nullopt : SourceOfEntry(*face.Texture());
}

/// In PROGRAM, as the setting has it, or the system's own. Where PROGRAM does not say where the picture's name goes, it
/// comes last. "" or why that cannot be.
std::string OpenIn(const std::string& program, const std::string& picture) {
  const Filling filling = {"{picture}", picture};
  auto call = ReadProgramCall(program, {&filling, 1});
  if (call) {
    if (std::ranges::find(call->arguments, picture) == call->arguments.end()) call->arguments.push_back(picture);
    return StartProgram(*call);
  }
  return QDesktopServices::openUrl(QUrl::fromLocalFile(ToQString(picture))) ? "" : "The system has none.";
}

}  // namespace

std::optional<STextureSource> ChosenTexture(const SCommandTarget& on) {
  if (on.view == nullptr) return std::nullopt;
  const SBrowserTexture* const chosen =
      on.docks.IsOpen(EToolDock::kTextureBrowser) ? on.docks.Browser().Chosen() : nullptr;
  if (chosen != nullptr && chosen->source) return SourceOf(*chosen->source);
  if (chosen != nullptr && chosen->image != nullptr && !chosen->image->is_stand_in) return SourceOf(*chosen->image);
  const bool is_mapped = on.docks.IsOpen(EToolDock::kMapping) && on.docks.Mapping().Session().Texture() != nullptr;
  if (is_mapped) return SourceOfEntry(*on.docks.Mapping().Session().Texture());
  if (const CBinFace* face = on.Cursor().FaceObject()) return SourceOfFace(*face);
  // The first one alone: menus ask for it often.
  const CBinModel& model = on.Model();
  for (int32_t i = 0; i < model.FaceCount(); ++i)
    if (model.Face(i).IsSelected()) return SourceOfFace(model.Face(i));
  return std::nullopt;
}

void ImportPicture(const SCommandTarget& on) {
  if (const auto picture = AskPicture(*on.document)) AskAndImport(*on.document, *picture, &on.window);
}

void PastePicture(const SCommandTarget& on) {
  const QMimeData* const data = QApplication::clipboard()->mimeData();
  const bool has_picture = data != nullptr && HasPicture(*data);
  if (!has_picture) return on.app.Say("There is no picture on the clipboard");
  for (const SOpenPicture& picture : PicturesIn(*data, *on.document))
    AskAndImport(*on.document, picture, &on.window);
}

void ExportPicture(const SCommandTarget& on) {
  if (const auto source = ChosenTexture(on)) ExportTexture(*on.document, *source);
}

void ChangeTexture(const SCommandTarget& on) {
  const auto source = ChosenTexture(on);
  const auto texture = source ? OpenTexture(*on.document, *source) : std::nullopt;
  if (!texture) return;
  CChangeTextureDialog dialog(NameToQString(source->name), *texture, on.app.Textures().DefaultColors(), &on.window);
  if (dialog.exec() == QDialog::Accepted) SaveTexture(*on.document, *source, dialog.Texture());
}

void EditColorTable(const SCommandTarget& on) {
  const auto source = ChosenTexture(on);
  const auto texture = source ? OpenTexture(*on.document, *source) : std::nullopt;
  if (source && !texture) return;
  const SIndexedTexture table = texture ? texture->texels : SIndexedTexture{{}, on.app.Textures().DefaultColors()};
  const QString name = source ? NameToQString(source->name) : QObject::tr("textures without their own");
  CColorTableDialog dialog(name, table, *on.document, &on.window);
  if (dialog.exec() == QDialog::Accepted && source) SaveTexture(*on.document, *source, dialog.Texture());
}

void EditPicture(const SCommandTarget& on) {
  const auto source = ChosenTexture(on);
  if (!source) return;
  const std::string& program = on.app.Settings().picture_program;
  if (!program.empty() && !on.app.MayStart(&CSettings::picture_program)) return;
  CEditPictureDialog dialog(*source, program, on.edits.LastColors(), &on.window);
  if (dialog.exec() != QDialog::Accepted) return;
  const auto picture = on.edits.Begin(*on.document, *source, dialog.Colors());
  if (!picture) return;
  on.watch.Follow();
  const std::string fault = OpenIn(program, *picture);
  if (fault.empty()) return;
  on.document->ShowError(
      "The program for pictures could not be started.",
      fault + Format("\nFile > Preferences > Folders names it. The picture is\n%s", picture->c_str()));
}

}  // namespace veldra
