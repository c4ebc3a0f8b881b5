#include "tools/modeltreemodel.h"

#include <QFont>
#include <algorithm>

#include "model/texturepicture.h"
#include "platform/text.h"
#include "tools/toolwidget.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

// An index says in its id whose child it is: 0 for a section, else the section's number and 1.
constexpr quintptr kTopLevel = 0;

}  // namespace

CModelTreeModel::CModelTreeModel(const CToolWidget& owner) : owner_(owner) {}

const CBinModel* CModelTreeModel::Model() const {
  const CEditCursor* cursor = owner_.Cursor();
  return cursor == nullptr || cursor->Model().IsBusy() ? nullptr : &cursor->Model();
}

std::optional<EGroupKind> CModelTreeModel::KindOf(ESection section) {
  if (section == kFaces) return EGroupKind::kFaces;
  if (section == kVertices) return EGroupKind::kVertices;
  return std::nullopt;
}

// --- Rows ----------------------------------------------------------------------------------------------------------

int32_t CModelTreeModel::CountOf(ESection section) const {
  const CBinModel* model = Model();
  if (model == nullptr) return 0;
  switch (section) {
    case kFaces:
      return model->FaceCount();
    case kVertices:
      return model->VertexCount();
    case kTextures:
      return model->TextureCount();
    case kFaceGroups:
      return static_cast<int32_t>(model->FaceGroups().size());
    case kVertexGroups:
      break;
  }
  return static_cast<int32_t>(model->VertexGroups().size());
}

CModelTreeModel::Found CModelTreeModel::Search(const CModelSearch& search, ESection section) const {
  const CBinModel* model = Model();
  if (model == nullptr || search.IsEmpty()) return std::nullopt;
  switch (section) {
    case kFaces:
      return search.Faces(*model);
    case kVertices:
      return search.Vertices(*model);
    case kTextures:
      return search.Textures(*model);
    case kFaceGroups:
      return search.Groups(*model, EGroupKind::kFaces);
    case kVertexGroups:
      break;
  }
  return search.Groups(*model, EGroupKind::kVertices);
}

void CModelTreeModel::Sync(const CModelSearch* search) {
  for (int i = 0; i < kSectionCount; ++i) {
    const auto section = static_cast<ESection>(i);
    TakeRows(section, search == nullptr ? std::nullopt : Search(*search, section));
  }
  emit dataChanged(index(0, 0, {}), index(kSectionCount - 1, 0, {}));
}

/// Rows come and go at the end of a section, wherever something happened in the model: they have nothing of their own
/// that would have to move, and what is open in the view stays so.
void CModelTreeModel::TakeRows(ESection section, Found found) {
  const auto i = static_cast<size_t>(section);
  const int32_t now = found ? static_cast<int32_t>(found->size()) : CountOf(section);
  const int32_t before = row_counts_[i];
  const QModelIndex parent = index(section, 0, {});
  if (now < before) beginRemoveRows(parent, now, before - 1);
  if (now > before) beginInsertRows(parent, before, now - 1);
  row_counts_[i] = now;
  found_[i] = std::move(found);
  if (now < before) endRemoveRows();
  if (now > before) endInsertRows();
}

QModelIndex CModelTreeModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0 || row >= rowCount(parent)) return {};
  return createIndex(row, column, parent.isValid() ? static_cast<quintptr>(parent.row()) + 1 : kTopLevel);
}

QModelIndex CModelTreeModel::parent(const QModelIndex& child) const {
  if (!child.isValid() || child.internalId() == kTopLevel) return {};
  return createIndex(static_cast<int>(child.internalId()) - 1, 0, kTopLevel);
}

int CModelTreeModel::rowCount(const QModelIndex& parent) const {
  if (!parent.isValid()) return kSectionCount;
  return parent.internalId() == kTopLevel ? row_counts_[static_cast<size_t>(parent.row())] : 0;
}

std::optional<CModelTreeModel::SPlace> CModelTreeModel::PlaceOf(const QModelIndex& index) const {
  if (!index.isValid()) return std::nullopt;
  if (index.internalId() == kTopLevel) return SPlace{static_cast<ESection>(index.row()), -1};
  const auto section = static_cast<ESection>(index.internalId() - 1);
  const Found& found = found_[static_cast<size_t>(section)];
  const auto row = static_cast<size_t>(index.row());
  if (found && row >= found->size()) return std::nullopt;
  const int32_t number = found ? (*found)[row] : index.row();
  // The model can be ahead of the rows.
  if (number >= CountOf(section)) return std::nullopt;
  return SPlace{section, number};
}

QModelIndex CModelTreeModel::IndexOf(const SPlace& place) const {
  const QModelIndex parent = index(place.section, 0, {});
  if (!place.IsItem()) return parent;
  const Found& found = found_[static_cast<size_t>(place.section)];
  if (!found) return index(place.number, 0, parent);
  const auto at = std::lower_bound(found->begin(), found->end(), place.number);
  if (at == found->end() || *at != place.number) return {};
  return index(static_cast<int>(at - found->begin()), 0, parent);
}

// --- What stands in them -------------------------------------------------------------------------------------------

bool CModelTreeModel::IsSelected(const QModelIndex& index) const {
  const auto place = PlaceOf(index);
  if (!place || !place->IsItem()) return false;
  if (place->section == kFaces) return Model()->Face(place->number).IsSelected();
  return place->section == kVertices && Model()->Vertex(place->number).IsSelected();
}

bool CModelTreeModel::IsCurrent(const SPlace& place) const {
  const CEditCursor* cursor = owner_.Cursor();
  if (cursor == nullptr || !place.IsItem()) return false;
  return (place.section == kFaces && place.number == cursor->Face()) ||
         (place.section == kVertices && place.number == cursor->Vertex());
}

QVariant CModelTreeModel::data(const QModelIndex& index, int role) const {
  const auto place = PlaceOf(index);
  if (!place) return {};
  if (role == Qt::DisplayRole) return TextOf(*place);
  if (role == Qt::ToolTipRole && place->IsItem()) return ToolTipText(TextOf(*place));
  if (role == Qt::FontRole && IsCurrent(*place)) {
    QFont font = owner_.font();
    font.setBold(true);
    return font;
  }
  return {};
}

QString CModelTreeModel::TextOf(const SPlace& place) const {
  if (!place.IsItem()) return SectionText(place.section);
  const CBinModel& model = *Model();
  switch (place.section) {
    case kFaces:
      return FaceText(model.Face(place.number));
    case kVertices: {
      const SPoint& at = model.Vertex(place.number).Position();
      return QStringLiteral("%1: %2, %3, %4").arg(place.number).arg(at.x).arg(at.y).arg(at.z);
    }
    case kTextures:
      return TextureText(model.Texture(place.number));
    case kFaceGroups:
    case kVertexGroups:
      break;
  }
  const auto kind = place.section == kFaceGroups ? EGroupKind::kFaces : EGroupKind::kVertices;
  const CBinGroup& group = model.GroupsOf(kind)[static_cast<size_t>(place.number)];
  return QStringLiteral("%1 (%L2)").arg(NameToQString(group.Name())).arg(group.Members().size());
}

QString CModelTreeModel::SectionText(ESection section) const {
  const QString names[] = {tr("Faces"), tr("Vertices"), tr("Textures"), tr("Face groups"), tr("Vertex groups")};
  const auto i = static_cast<size_t>(section);
  if (!found_[i]) return QStringLiteral("%1 (%L2)").arg(names[i]).arg(CountOf(section));
  return tr("%1 (%L2 of %L3)").arg(names[i]).arg(row_counts_[i]).arg(CountOf(section));
}

QString CModelTreeModel::FaceText(const CBinFace& face) const {
  const QString type = QString::fromUtf8(FaceTypeLabel(face.Type()));
  if (face.Texture() == nullptr) return QStringLiteral("%1: %2").arg(face.Index()).arg(type);
  return QStringLiteral("%1: %2, %3").arg(face.Index()).arg(NameToQString(face.Texture()->Name()), type);
}

}  // namespace veldra
