#include "editing/planedlg.h"

#include <QGroupBox>
#include <QRadioButton>
#include <algorithm>

namespace veldra {

using EPlane = SPlaneInput::EPlane;

namespace {

/// How far the vertex goes that goes farthest.
double FarthestWay(const CEditCursor& cursor, const std::vector<SPoint>& positions) {
  const std::vector<int32_t> vertices = VerticesToFlatten(cursor);
  double farthest = 0.0;
  for (size_t k = 0; k < vertices.size(); ++k)
    farthest =
        std::max(farthest, Length(ToVector(positions[k]) - ToVector(cursor.Model().Vertex(vertices[k]).Position())));
  return farthest;
}

}  // namespace

CPlaneDialog::CPlaneDialog(const CEditCursor& cursor, const char* title, const SPlaneInput& last, QWidget* parent)
    : CFieldDialog("setToPlane", tr(title), parent),
      cursor_(cursor),
      axis_(new CAxisField(tr("Coordinate of the vertices"), last.axis)),
      planes_(new QButtonGroup(this)),
      result_(new QLabel) {
  Content()->addWidget(axis_);
  Content()->addWidget(MakePlanes(last));
  result_->setObjectName("result");
  Content()->addWidget(result_);
  connect(axis_, &CAxisField::Changed, this, &CFieldDialog::Refresh);
  connect(planes_, &QButtonGroup::idToggled, this, [this](int, bool is_on) {
    if (is_on) FollowPlane();
  });
  FollowPlane();
}

void CPlaneDialog::FollowPlane() {
  value_->setEnabled(Input().plane == EPlane::kValue);
  axis_->setEnabled(IsAcrossAxis(Input().plane));
  Refresh();
}

QWidget* CPlaneDialog::MakePlanes(const SPlaneInput& last) {
  auto* box = new QGroupBox(tr("Becomes"));
  auto* form = new QFormLayout(box);
  const auto add = [&](EPlane plane, const char* name, const QString& label) {
    auto* button = new QRadioButton(label);
    button->setObjectName(name);
    planes_->addButton(button, static_cast<int>(plane));
    form->addRow(button);
  };
  add(EPlane::kMean, "mean", tr("Their &mean"));
  add(EPlane::kCurrent, "current", tr("That of the &current vertex"));
  add(EPlane::kValue, "value", tr("&This value, in model units:"));
  value_ = AddNumber(form, QString(), "number", SNumberRule::Integer(), last.value, CNumberField::EFaultPlace::kBelow);
  form->addRow(new QLabel(tr("or they go the shortest way to")));
  add(EPlane::kFitting, "fitting", tr("The plane that &fits them best"));
  add(EPlane::kFace, "face", tr("The plane of the current f&ace"));
  planes_->button(static_cast<int>(EPlane::kCurrent))->setEnabled(HasCurrentVertex(cursor_));
  planes_->button(static_cast<int>(EPlane::kFace))->setEnabled(cursor_.Face() >= 0);
  const QAbstractButton* again = planes_->button(static_cast<int>(last.plane));
  planes_->button(static_cast<int>(again->isEnabled() ? last.plane : EPlane::kMean))->setChecked(true);
  return box;
}

SPlaneInput CPlaneDialog::Input() const {
  return {.axis = axis_->Axis(),
          .plane = static_cast<EPlane>(planes_->checkedId()),
          .value = static_cast<int32_t>(value_->Value().value_or(0.0))};
}

QString CPlaneDialog::Fault() {
  const SPlaneInput input = Input();
  std::vector<SPoint> positions;
  if (const std::string fault = FlatPositions(cursor_, input, positions); !fault.empty()) {
    result_->clear();
    return QString::fromStdString(fault);
  }
  const auto count = static_cast<int>(positions.size());
  const QString vertices = (count == 1 ? tr("%L1 vertex") : tr("%L1 vertices")).arg(count);
  const QString axis = QChar("XYZ"[static_cast<int>(input.axis)]);
  result_->setText(
      IsAcrossAxis(input.plane)
          ? tr("%1: %2 becomes %L3").arg(vertices, axis).arg(PlaneCoordinate(cursor_, input))
          : tr("%1, which move by up to %L2").arg(vertices).arg(FarthestWay(cursor_, positions), 0, 'f', 1));
  return {};
}

}  // namespace veldra
