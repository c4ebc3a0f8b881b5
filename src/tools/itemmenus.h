#pragma once

#include <QMenu>
#include <string>

#include "editing/editcursor.h"

/// What can be done with one thing in a model, for the context menus of the tool windows. Commands that go by the
/// current face or vertex expect that it is the one.
namespace veldra {

class CTarnView;

void AddFaceItems(QMenu& menu, CTarnView& view);
void AddVertexItems(QMenu& menu, CTarnView& view);
/// TEXTURE: position among the model's entries, or -1 for what needs none.
void AddTextureItems(QMenu& menu, CTarnView& view, int32_t texture);
/// NAME may be empty: what needs no group.
void AddGroupItems(QMenu& menu, CTarnView& view, EGroupKind kind, const std::string& name);

/// The faces that use a texture entry become the selection.
void SelectFacesOfTexture(CTarnView& view, int32_t texture);

}  // namespace veldra
