#include "tools/itemmenus.h"

#include <QCoreApplication>
#include <span>

#include "editing/groupcommands.h"
#include "editing/replacetexturedlg.h"
#include "editing/texturecommands.h"
#include "view/editcommands.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

struct SItem {
  const char* text;  ///< null for a line between items
  void (CEditCommands::*run)() = nullptr;
  bool (*when)(const CEditCursor&) = nullptr;
};

constexpr SItem kLine = {nullptr};

constexpr SItem kFaceItems[] = {
    {QT_TRANSLATE_NOOP("menu", "&Edit Face..."), &CEditCommands::EditFace, CanEditFace},
    {QT_TRANSLATE_NOOP("menu", "Te&xture Mapping..."), &CEditCommands::OpenBinMapper, CanMapTexture},
    {QT_TRANSLATE_NOOP("menu", "&Group Type and Magic Number..."), &CEditCommands::GroupFaceType, CanGroupFaces},
    {QT_TRANSLATE_NOOP("menu", "&Flip"), &CEditCommands::FlipFaces, CanEditFaces},
    kLine,
    {QT_TRANSLATE_NOOP("menu", "&Select"), &CEditCommands::SelectFace, HasCurrentFace},
    {QT_TRANSLATE_NOOP("menu", "Select &All Faces"), &CEditCommands::SelectAllFaces, HasFaces},
    {QT_TRANSLATE_NOOP("menu", "Select &No Faces"), &CEditCommands::DeselectAllFaces, HasSelectedFaces},
    kLine,
    {QT_TRANSLATE_NOOP("menu", "&Delete Current Face"), &CEditCommands::DeleteFace, CanEditFace},
    {QT_TRANSLATE_NOOP("menu", "Delete Selected F&aces"), &CEditCommands::DeleteSelectedFaces, CanDeleteSelectedFaces}};

constexpr SItem kVertexItems[] = {
    {QT_TRANSLATE_NOOP("menu", "&Set Coordinates..."), &CEditCommands::SetVertexCoordinates, CanEditVertex},
    {QT_TRANSLATE_NOOP("menu", "Set to &Plane..."), &CEditCommands::SetToPlane, CanEditSelectedVertices},
    {QT_TRANSLATE_NOOP("menu", "&Tag"), &CEditCommands::TagVertex, CanEditVertex},
    kLine,
    {QT_TRANSLATE_NOOP("menu", "S&elect"), &CEditCommands::SelectVertex, HasCurrentVertex},
    {QT_TRANSLATE_NOOP("menu", "Select &All Vertices"), &CEditCommands::SelectAllVertices, HasVertices},
    {QT_TRANSLATE_NOOP("menu", "Select &No Vertices"), &CEditCommands::DeselectAllVertices, HasSelectedVertices},
    kLine,
    {QT_TRANSLATE_NOOP("menu", "&Delete Current Vertex"), &CEditCommands::DeleteVertex, CanEditVertex},
    {QT_TRANSLATE_NOOP("menu", "Delete Selected &Vertices"), &CEditCommands::DeleteSelectedVertices,
     CanEditSelectedVertices}};

void AddItems(QMenu& menu, CTarnView& view, std::span<const SItem> items) {
  for (const SItem& item : items) {
    if (item.text == nullptr) {
      menu.addSeparator();
      continue;
    }
    QAction* action = menu.addAction(QCoreApplication::translate("menu", item.text), &view,
                                     [&view, run = item.run] { (view.EditCommands().*run)(); });
    action->setEnabled(item.when(view.Cursor()));
  }
}

void ReplaceTexture(CTarnView& view, int32_t texture) {
  CTarnDoc& document = view.Document();
  CReplaceTextureDialog dialog(document.Model(), document.Settings(), {.texture = texture, .path = {}}, &view);
  if (dialog.exec() == QDialog::Accepted) document.ReplaceTexture(dialog.Input());
}

}  // namespace

void AddFaceItems(QMenu& menu, CTarnView& view) {
  AddItems(menu, view, kFaceItems);
}

void AddVertexItems(QMenu& menu, CTarnView& view) {
  AddItems(menu, view, kVertexItems);
}

void SelectFacesOfTexture(CTarnView& view, int32_t texture) {
  CBinModel& model = view.Document().Model();
  const std::vector<int32_t> faces = FacesOfTexture(model, model.Texture(texture));
  model.SelectAll(EGroupKind::kFaces, false);
  model.Select(EGroupKind::kFaces, faces, true);
}

void AddTextureItems(QMenu& menu, CTarnView& view, int32_t texture) {
  const CTarnDoc& document = view.Document();
  const auto add = [&](const QString& text, bool is_enabled, auto&& run) {
    menu.addAction(text, &view, run)->setEnabled(is_enabled);
  };
  if (texture >= 0) {
    const CBinTexture& entry = document.Model().Texture(texture);
    add(QObject::tr("&Select Faces That Use It"), entry.UseCount() > 0,
        [&view, texture] { SelectFacesOfTexture(view, texture); });
    add(QObject::tr("&Replace..."), document.CanReplaceTexture(), [&view, texture] { ReplaceTexture(view, texture); });
    menu.addSeparator();
  }
  add(QObject::tr("&Load Texture..."), document.CanLoadTexture(), [&view] { view.EditCommands().LoadTexture(); });
  add(QObject::tr("Define &Animation..."), CanDefineAnimation(view.Cursor()),
      [&view] { view.EditCommands().DefineAnimation(); });
}

void AddGroupItems(QMenu& menu, CTarnView& view, EGroupKind kind, const std::string& name) {
  CTarnDoc& document = view.Document();
  const auto add = [&](const QString& text, auto&& run) { return menu.addAction(text, &view, run); };
  if (!name.empty()) {
    add(QObject::tr("&Select"), [&document, kind, name] { SelectGroup(document, kind, name, false); });
    add(QObject::tr("&Add to Selection"), [&document, kind, name] { SelectGroup(document, kind, name, true); });
    menu.addSeparator();
    add(QObject::tr("&Delete"), [&document, kind, name] {
      DeleteGroup(document, kind, name);
    })->setEnabled(!document.IsReadOnly());
  }
  add(QObject::tr("&Groups..."), [&view, kind] {
    kind == EGroupKind::kFaces ? view.EditCommands().FaceGroups() : view.EditCommands().VertexGroups();
  });
}

}  // namespace veldra
