#include "tools/itemmenus.h"

#include "editing/groupcommands.h"
#include "editing/modelcommands.h"
#include "editing/replacetexturedlg.h"
#include "editing/texturecommands.h"
#include "editing/texturetransfer.h"
#include "view/tarn2view.h"

namespace veldra {

namespace {

void AskAndReplace(CTarnView& view, int32_t texture) {
  CTarnDoc& document = view.Document();
  CReplaceTextureDialog dialog(document.Model(), document.Settings(), {.texture = texture, .path = {}}, &view);
  if (dialog.exec() == QDialog::Accepted) ReplaceTexture(document, dialog.Input());
}

}  // namespace

void SelectFacesOfTexture(CTarnView& view, int32_t texture) {
  CBinModel& model = view.Document().Model();
  const std::vector<int32_t> faces = FacesOfTexture(model, model.Texture(texture));
  model.SelectAll(EGroupKind::kFaces, false);
  model.Select(EGroupKind::kFaces, faces, true);
}

void AddTextureItems(QMenu& menu, CToolWidget& tool, int32_t texture) {
  CTarnView& view = *tool.View();
  const CTarnDoc& document = view.Document();
  const auto add = [&](const QString& text, bool is_enabled, auto&& run) {
    menu.addAction(text, &tool, run)->setEnabled(is_enabled);
  };
  if (texture >= 0) {
    const CBinTexture& entry = document.Model().Texture(texture);
    add(QObject::tr("&Select Faces That Use It"), entry.UseCount() > 0,
        [&view, texture] { SelectFacesOfTexture(view, texture); });
    add(QObject::tr("&Assign to Selected Faces"), CanAssignTexture(view.Cursor()),
        [&view, texture] { AssignTexture(view.Cursor(), view.Document().Model().Texture(texture)); });
    add(QObject::tr("&Replace..."), CanReplaceTexture(document), [&view, texture] { AskAndReplace(view, texture); });
    menu.addSeparator();
  }
  add(QObject::tr("&Load Texture..."), CanEditModel(document), [&tool] { emit tool.CommandWanted("loadTexture"); });
  add(QObject::tr("Define &Animation..."), CanEditModel(document),
      [&tool] { emit tool.CommandWanted("defineAnimation"); });
}

void AddGroupItems(QMenu& menu, CToolWidget& tool, EGroupKind kind, const std::string& name) {
  CTarnDoc& document = tool.View()->Document();
  const auto add = [&](const QString& text, auto&& run) { return menu.addAction(text, &tool, run); };
  if (!name.empty()) {
    add(QObject::tr("&Select"), [&document, kind, name] { SelectGroup(document, kind, name, false); });
    add(QObject::tr("&Add to Selection"), [&document, kind, name] { SelectGroup(document, kind, name, true); });
    menu.addSeparator();
    add(QObject::tr("&Delete"), [&document, kind, name] {
      DeleteGroup(document, kind, name);
    })->setEnabled(CanEditModel(document));
  }
  add(QObject::tr("&Groups..."),
      [&tool, kind] { emit tool.CommandWanted(kind == EGroupKind::kFaces ? "faceGroups" : "vertexGroups"); });
}

}  // namespace veldra
