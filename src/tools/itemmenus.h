#pragma once

#include <QMenu>
#include <string>

#include "tools/toolwidget.h"

/// What can be done with a texture or a group, for the context menus of the tool windows, which show a view.
namespace veldra {

/// TEXTURE: position among the model's entries, or -1 for what needs none.
void AddTextureItems(QMenu& menu, CToolWidget& tool, int32_t texture);
/// NAME may be empty: what needs no group.
void AddGroupItems(QMenu& menu, CToolWidget& tool, EGroupKind kind, const std::string& name);

/// The faces that use a texture entry become the selection.
void SelectFacesOfTexture(CTarnView& view, int32_t texture);

}  // namespace veldra
