#include "editing/vertexcoordinatesdlg.h"

#include <QGroupBox>

namespace veldra {

CVertexCoordinatesDialog::CVertexCoordinatesDialog(const CBinVertex& vertex, QWidget* parent)
    : CFieldDialog("vertexCoordinates", tr("Set Vertex Coordinates"), parent) {
  auto* box = new QGroupBox(tr("Vertex %1, in model units").arg(vertex.Index()));
  auto* form = new QFormLayout(box);
  const SNumberRule rule = SNumberRule::Integer();
  const SPoint& position = vertex.Position();
  fields_ = {AddNumber(form, "&X:", "x", rule, position.x), AddNumber(form, "&Y:", "y", rule, position.y),
             AddNumber(form, "&Z:", "z", rule, position.z)};
  Content()->addWidget(box);
  StartWith(fields_[0]);
  Refresh();
}

SPoint CVertexCoordinatesDialog::Position() const {
  const auto value = [this](size_t axis) { return static_cast<int32_t>(fields_[axis]->Value().value_or(0.0)); };
  return {value(0), value(1), value(2)};
}

}  // namespace veldra
