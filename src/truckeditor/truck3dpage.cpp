#include "truckeditor/truck3dpage.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

CTruck3dPage::CTruck3dPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent),
      context_(context),
      view_(new CTruckView(context)),
      points_(new QComboBox),
      place_(new CNumbersField(context.document, "selectedPoint")),
      units_(new CNumberField({.smallest = 0.01, .largest = 65536}, CNumberField::EFaultPlace::kBelow)) {
  auto* layout = new QHBoxLayout(this);
  layout->addWidget(view_, 1);
  layout->addWidget(MakeSide());
  connect(view_, &CTruckView::SelectedChanged, this, &CTruck3dPage::ShowSelected);
  connect(view_, &CTruckView::UnitsPerFootChanged, this, [this] { units_->SetValue(view_->UnitsPerFoot()); });
  connect(&context.document, &CTruckDocument::Changed, this, &CTruck3dPage::ListPoints);
  connect(points_, &QComboBox::activated, this, [this] { view_->Select(PointInList()); });
  connect(units_, &CNumberField::TextChanged, this, [this] {
    if (const auto units = units_->Value()) view_->SetUnitsPerFoot(*units);
  });
  ListPoints();
}

QWidget* CTruck3dPage::MakeSide() {
  auto* side = new QWidget;
  auto* layout = new QVBoxLayout(side);
  layout->setContentsMargins(0, 0, 0, 0);
  auto* hint =
      new QLabel(tr("Click a point to select it and drag it in the plane of the screen. Drag a light with Shift to aim "
                    "it. Elsewhere the mouse turns and "
                    "moves the truck as in the editor's 3D view; the wheel zooms."));
  hint->setWordWrap(true);
  layout->addWidget(hint);
  points_->setObjectName("points");
  layout->addWidget(points_);
  layout->addWidget(place_);
  auto* fault = new CFaultLabel;
  layout->addWidget(fault);
  AddPlaceNumbers(fault);
  auto* mirrored =
      AddOption(tr("&Mirror left and right"), "mirrored", false, [this](bool on) { view_->SetMirrored(on); });
  mirrored->setToolTip(tr("What is dragged takes its counterpart on the other side along."));
  layout->addWidget(mirrored);
  layout->addWidget(MakeOptions());
  units_->setObjectName("unitsPerFoot");
  units_->SetValue(view_->UnitsPerFoot());
  auto* units_label = new QLabel(tr("&Model units in a foot:"));
  units_label->setBuddy(units_);
  units_->setToolTip(
      tr("How large the models are shown; the truck file does not say. Guessed when a truck is opened."));
  layout->addWidget(units_label);
  layout->addWidget(units_);
  auto* fit = new QPushButton(tr("&Zoom to fit"));
  fit->setObjectName("zoomToFit");
  connect(fit, &QPushButton::clicked, view_, &CTruckView::ZoomToFit);
  layout->addWidget(fit);
  layout->addStretch();
  constexpr int kLargestWidth = 345;
  auto* area = new CScrolled(side);
  area->setMaximumWidth(kLargestWidth);
  area->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Preferred);
  return area;
}

void CTruck3dPage::AddPlaceNumbers(CFaultLabel* fault) {
  place_->ShowFaultsBy([fault](const QString& text) { fault->setText(text); });
  for (size_t axis = 0; axis < 3; ++axis) {
    place_->Add(QString("xyz").mid(static_cast<int>(axis), 1), [this, axis](CTruck& truck) -> double* {
      const auto id = view_->Selected();
      TruckPoint* const point = id ? FindTruckPoint(truck, *id) : nullptr;
      return point != nullptr ? &(*point)[axis] : nullptr;
    });
  }
}

QWidget* CTruck3dPage::MakeOptions() {
  auto* box = new QGroupBox(tr("Show"));
  auto* options = new QVBoxLayout(box);
  const auto add = [&](const QString& text, const char* name, bool on, std::function<void(bool)> set) {
    options->addWidget(AddOption(text, name, on, std::move(set)));
  };
  add(tr("&Positions"), "showPositions", true, [this](bool on) { view_->Overlay().positions = on; });
  add(tr("S&crape points"), "showScrapePoints", true, [this](bool on) { view_->Overlay().scrape_points = on; });
  add(tr("Li&ghts"), "showLights", true, [this](bool on) { view_->Overlay().lights = on; });
  add(tr("Light c&ones"), "showCones", true, [this](bool on) { view_->Overlay().cones = on; });
  add(tr("Lights turn and &blink"), "animate", false, [this](bool on) { view_->SetAnimated(on); });
  add(tr("&Wireframe"), "wireframe", false,
      [this](bool on) { view_->SetMode(on ? ERenderMode::kWireframe : ERenderMode::kTextured); });
  add(tr("G&rid"), "grid", view_->State().grid, [this](bool on) {
    if (on != view_->State().grid) view_->ToggleGrid();
  });
  return box;
}

QCheckBox* CTruck3dPage::AddOption(const QString& text, const char* name, bool on, std::function<void(bool)> set) {
  auto* box = new QCheckBox(text);
  box->setObjectName(name);
  box->setChecked(on);
  connect(box, &QCheckBox::toggled, this, [this, set = std::move(set)](bool checked) {
    set(checked);
    view_->Redraw();
  });
  return box;
}

std::optional<STruckPointId> CTruck3dPage::PointInList() const {
  const int row = points_->currentIndex() - 1;
  const std::vector<STruckPointId> points = TruckPoints(context_.document.Truck());
  if (row < 0 || row >= static_cast<int>(points.size())) return std::nullopt;
  return points[static_cast<size_t>(row)];
}

void CTruck3dPage::ListPoints() {
  const std::vector<STruckPointId> points = TruckPoints(context_.document.Truck());
  if (points_->count() != static_cast<int>(points.size()) + 1) {
    const QSignalBlocker blocker(points_);
    points_->clear();
    points_->addItem(tr("No point selected"));
    for (const STruckPointId& id : points)
      points_->addItem(ToQString(TruckPointName(id)));
  }
  ShowSelected();
}

void CTruck3dPage::ShowSelected() {
  const std::vector<STruckPointId> points = TruckPoints(context_.document.Truck());
  const auto& selected = view_->Selected();
  const auto place = selected ? std::find(points.begin(), points.end(), *selected) : points.end();
  points_->setCurrentIndex(place == points.end() ? 0 : static_cast<int>(place - points.begin()) + 1);
  place_->Refresh();
}

}  // namespace veldra
