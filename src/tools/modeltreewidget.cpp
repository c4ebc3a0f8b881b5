#include "tools/modeltreewidget.h"

#include <QMenu>
#include <QVBoxLayout>

#include "editing/groupcommands.h"
#include "tools/itemmenus.h"

namespace veldra {

namespace {

using Tree = CModelTreeModel;

EGroupKind GroupKindOf(Tree::ESection section) {
  return section == Tree::kFaceGroups ? EGroupKind::kFaces : EGroupKind::kVertices;
}

std::string GroupName(const CBinModel& model, const Tree::SPlace& place) {
  if (!place.IsItem()) return "";
  return model.GroupsOf(GroupKindOf(place.section))[static_cast<size_t>(place.number)].Name();
}

}  // namespace

CModelTreeWidget::CModelTreeWidget()
    : CToolWidget("modelTreeTool"), search_(new QLineEdit), rows_(*this), tree_(new CModelTreeView(rows_)) {
  search_->setObjectName("search");
  search_->setPlaceholderText(tr("Search: number, type, texture, group"));
  search_->setToolTip(
      tr("A number finds the face and the vertex of that number; other words find faces by their type "
         "and texture, textures and groups by their names."));
  search_->setClearButtonEnabled(true);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(search_);
  layout->addWidget(tree_);
  connect(search_, &QLineEdit::textChanged, this, [this] {
    is_search_new_ = true;
    RefreshSoon();
  });
  connect(tree_, &CModelTreeView::CurrentWanted, this, &CModelTreeWidget::MakeCurrent);
  connect(tree_, &CModelTreeView::SelectionWanted, this, &CModelTreeWidget::SelectInModel);
  connect(tree_, &CModelTreeView::SearchWanted, this, [this](const QString& text) {
    search_->setFocus();
    search_->setText(text);
  });
  connect(tree_, &QAbstractItemView::doubleClicked, this, &CModelTreeWidget::Activate);
  connect(tree_, &QWidget::customContextMenuRequested, this, &CModelTreeWidget::ShowMenu);
}

void CModelTreeWidget::Refresh(const SNews& news) {
  const SModelChange& change = news.model;
  const bool can_rows_differ =
      news.view || is_search_new_ || change.topology || change.faces || change.textures || change.groups;
  if (can_rows_differ) tree_->ChangeRows([this] { SyncRows(); });
  FollowCursor();
  tree_->viewport()->update();
}

void CModelTreeWidget::SyncRows() {
  const CModelSearch search(search_->text().toStdString());
  const auto place = rows_.PlaceOf(tree_->currentIndex());
  rows_.Sync(search.IsEmpty() ? nullptr : &search);
  if (place && rows_.PlaceOf(tree_->currentIndex()) != place) tree_->setCurrentIndex(rows_.IndexOf(*place));
  // What was searched for is to be seen, unless it is a large part of the model.
  constexpr int kMostShown = 1000;
  if (is_search_new_ && !search.IsEmpty()) {
    for (int i = 0; i < Tree::kSectionCount; ++i) {
      const QModelIndex section = rows_.index(i, 0, {});
      const int count = rows_.rowCount(section);
      if (count > 0 && count <= kMostShown) tree_->expand(section);
    }
  }
  is_search_new_ = false;
}

void CModelTreeWidget::FollowCursor() {
  const CEditCursor* cursor = Cursor();
  const int32_t face = cursor == nullptr ? -1 : cursor->Face();
  const int32_t vertex = cursor == nullptr ? -1 : cursor->Vertex();
  if (vertex != shown_vertex_ && vertex >= 0) tree_->GoTo(rows_.IndexOf({Tree::kVertices, vertex}));
  if (face != shown_face_ && face >= 0) tree_->GoTo(rows_.IndexOf({Tree::kFaces, face}));
  shown_face_ = face;
  shown_vertex_ = vertex;
}

void CModelTreeWidget::MakeCurrent(const QModelIndex& index) {
  const auto place = rows_.PlaceOf(index);
  if (!place || !place->IsItem()) return;
  if (place->section == Tree::kFaces) {
    Cursor()->SetFace(place->number);
    shown_face_ = place->number;
  } else if (place->section == Tree::kVertices) {
    Cursor()->SetVertex(place->number);
    shown_vertex_ = place->number;
  }
}

void CModelTreeWidget::SelectInModel(const QItemSelection& rows, QItemSelectionModel::SelectionFlags how) {
  if (Cursor() == nullptr) return;
  std::array<std::vector<int32_t>, 2> numbers;
  for (const QItemSelectionRange& range : rows) {
    for (int row = range.top(); row <= range.bottom(); ++row) {
      const auto place = rows_.PlaceOf(rows_.index(row, 0, range.parent()));
      if (place && place->IsItem() && Tree::KindOf(place->section))
        numbers[static_cast<size_t>(place->section)].push_back(place->number);
    }
  }
  CBinModel& model = View()->Document().Model();
  for (const auto section : {Tree::kFaces, Tree::kVertices}) {
    const std::vector<int32_t>& wanted = numbers[static_cast<size_t>(section)];
    if (wanted.empty()) continue;
    if (how.testFlag(QItemSelectionModel::Clear)) model.SelectAll(*Tree::KindOf(section), false);
    model.Select(*Tree::KindOf(section), wanted, !how.testFlag(QItemSelectionModel::Deselect));
  }
}

void CModelTreeWidget::Activate(const QModelIndex& index) {
  const auto place = rows_.PlaceOf(index);
  if (!place || !place->IsItem()) return;
  switch (place->section) {
    case Tree::kFaces:
      return CommandWanted("editFace");
    case Tree::kVertices:
      return CommandWanted("vertexCoordinates");
    case Tree::kTextures:
      return SelectFacesOfTexture(*View(), place->number);
    case Tree::kFaceGroups:
    case Tree::kVertexGroups:
      break;
  }
  CTarnDoc& document = View()->Document();
  SelectGroup(document, GroupKindOf(place->section), GroupName(document.Model(), *place), false);
}

void CModelTreeWidget::ShowMenu(const QPoint& at) {
  const auto place = rows_.PlaceOf(tree_->indexAt(at));
  if (!place || View() == nullptr) return;
  const QPoint on_screen = tree_->viewport()->mapToGlobal(at);
  QMenu menu;
  menu.setObjectName("modelTreeMenu");
  switch (place->section) {
    case Tree::kFaces:
      return MenuWanted(EGroupKind::kFaces, on_screen);
    case Tree::kVertices:
      return MenuWanted(EGroupKind::kVertices, on_screen);
    case Tree::kTextures:
      AddTextureItems(menu, *this, place->number);
      break;
    case Tree::kFaceGroups:
    case Tree::kVertexGroups:
      AddGroupItems(menu, *this, GroupKindOf(place->section), GroupName(View()->Document().Model(), *place));
  }
  menu.exec(on_screen);
}

}  // namespace veldra
