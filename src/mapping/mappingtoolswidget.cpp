#include "mapping/mappingtoolswidget.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QVBoxLayout>
#include <algorithm>

#include "mapping/mappingkeys.h"
#include "mapping/mappingwidget.h"
#include "model/texturepicture.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr int kUprightRole = Qt::UserRole;
constexpr int kPlaceRole = Qt::UserRole + 1;
constexpr double kLargestTexel = 511;
constexpr int kPreviewSide = 192;

/// Numbers without the zeros behind the point that say nothing.
class CTexelField : public QDoubleSpinBox {
 public:
  QString textFromValue(double value) const override { return QString::number(value, 'g', 7); }
};

QGroupBox* Box(const QString& title, QLayout* content) {
  auto* box = new QGroupBox(title);
  content->setContentsMargins(6, 4, 6, 4);
  box->setLayout(content);
  return box;
}

QHBoxLayout* Line(std::initializer_list<QWidget*> widgets) {
  auto* line = new QHBoxLayout;
  for (QWidget* widget : widgets)
    line->addWidget(widget);
  return line;
}

}  // namespace

CMappingToolsWidget::CMappingToolsWidget(CMappingWidget& editor)
    : CToolWidget("mappingToolsTool"), editor_(editor), session_(editor.Session()), pages_(new QTabWidget) {
  pages_->setObjectName("mappingPages");
  AddPage(tr("Transform"), MakeTransformPage());
  AddPage(tr("Mapping"), MakeGeometryPage());
  AddPage(tr("Numbers"), MakeNumbersPage());
  AddPage(tr("Guides"), MakeGuidesPage());
  AddPage(tr("Texture"), MakeTexturePage());
  pages_->setCurrentIndex(std::clamp(session_.Settings().tt_page, 0, pages_->count() - 1));
  connect(pages_, &QTabWidget::currentChanged, this, [this](int page) { session_.Settings().tt_page = page; });
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(2, 2, 2, 2);
  layout->addWidget(pages_);
  connect(&editor_, &CMappingWidget::Changed, this, &CMappingToolsWidget::RefreshSoon);
  Refresh({});
}

void CMappingToolsWidget::AddPage(const QString& title, QWidget* page) {
  pages_->addTab(new CScrolled(page), title);
}

QPushButton* CMappingToolsWidget::MakeButton(const QString& text, const char* name, const QString& tip,
                                             const Tool& tool) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  button->setToolTip(tip);
  button->setAutoDefault(false);
  button->setMinimumWidth(20);
  connect(button, &QPushButton::clicked, this, [this, tool] { tool(session_); });
  wants_selection_.append(button);
  return button;
}

QDoubleSpinBox* CMappingToolsWidget::MakeField(const char* name, double low, double high, double value,
                                               const QString& suffix) {
  auto* field = new CTexelField;
  field->setObjectName(name);
  field->setRange(low, high);
  field->setDecimals(3);
  field->setLocale(QLocale::c());
  field->setKeyboardTracking(false);
  field->setSuffix(suffix);
  field->setValue(value);
  field->setMinimumWidth(64);
  return field;
}

// --- Transform -------------------------------------------------------------------------------------------------------

QWidget* CMappingToolsWidget::MakeTransformPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(MakeMoveBox());
  column->addWidget(MakeTurnBox());
  column->addWidget(MakeScaleBox());
  column->addWidget(MakePlaceBox());
  column->addStretch();
  return page;
}

QWidget* CMappingToolsWidget::MakeMoveBox() {
  auto* across = MakeField("moveAcross", -kLargestTexel, kLargestTexel, 0, {});
  auto* down = MakeField("moveDown", -kLargestTexel, kLargestTexel, 0, {});
  auto* move = MakeButton(tr("Move"), "moveMapping", tr("By so many texels to the right and down"),
                          [across, down](CMappingSession& s) {
                            s.Move({across->value(), down->value()});
                          });
  return Box(tr("Move, in texels"), Line({across, down, move}));
}

QWidget* CMappingToolsWidget::MakeTurnBox() {
  auto* degrees = MakeField("turnDegrees", -360, 360, 90, QStringLiteral("°"));
  auto* column = new QVBoxLayout;
  column->addLayout(
      Line({degrees,
            MakeButton(tr("↻"), "turnClockwise", tr("Clockwise about the pivot"),
                       [degrees](CMappingSession& s) { s.Turn(degrees->value()); }),
            MakeButton(tr("↺"), "turnBack", tr("Counterclockwise about the pivot"),
                       [degrees](CMappingSession& s) { s.Turn(-degrees->value()); }),
            MakeButton(tr("To Edge"), "alignToEdge",
                       tr("Turn so that an edge of the first selected face is level; again for its next edge"),
                       [](CMappingSession& s) { s.AlignToEdge(); })}));
  auto* only = new QCheckBox(tr("Selected corners only"));
  only->setObjectName("turnSelectedOnly");
  only->setToolTip(tr("Otherwise the faces that they belong to turn as a whole"));
  only->setChecked(session_.Settings().tex_rot_sel_verts_only != 0);
  connect(only, &QCheckBox::toggled, this,
          [this](bool on) { session_.Settings().tex_rot_sel_verts_only = on ? 1 : 0; });
  column->addWidget(only);
  return Box(tr("Rotate"), column);
}

QWidget* CMappingToolsWidget::MakeScaleBox() {
  auto* across = MakeField("scaleAcross", -1000, 1000, 100, QStringLiteral("%"));
  auto* down = MakeField("scaleDown", -1000, 1000, 100, QStringLiteral("%"));
  auto* column = new QVBoxLayout;
  column->addLayout(
      Line({across, down,
            MakeButton(tr("Scale"), "scaleMapping", tr("Across and down about the pivot"),
                       [across, down](CMappingSession& s) { s.Scale(across->value() / 100, down->value() / 100); })}));
  QPushButton* flip_across = MakeButton(tr("Flip Across"), "flipAcross", tr("Left becomes right"),
                                        [](CMappingSession& s) { s.Flip(ETexelAxis::kAcross); });
  QPushButton* flip_down = MakeButton(tr("Flip Down"), "flipDown", tr("Top becomes bottom"),
                                      [](CMappingSession& s) { s.Flip(ETexelAxis::kDown); });
  ShowMappingKeyInTip(*flip_across, EMappingKey::kFlipAcross, session_.Settings());
  ShowMappingKeyInTip(*flip_down, EMappingKey::kFlipDown, session_.Settings());
  column->addLayout(Line({flip_across, flip_down}));
  return Box(tr("Scale and flip"), column);
}

QWidget* CMappingToolsWidget::MakePlaceBox() {
  auto* grid = new QGridLayout;
  const struct {
    const char* name;
    QString text;
    EJustify side;
    int row;
    int column;
  } sides[] = {{"justifyLeft", tr("Left"), EJustify::kLeft, 0, 0},
               {"justifyCenter", tr("Center"), EJustify::kCenter, 0, 1},
               {"justifyRight", tr("Right"), EJustify::kRight, 0, 2},
               {"justifyTop", tr("Top"), EJustify::kTop, 1, 0},
               {"justifyMiddle", tr("Middle"), EJustify::kMiddle, 1, 1},
               {"justifyBottom", tr("Bottom"), EJustify::kBottom, 1, 2}};
  for (const auto& side : sides)
    grid->addWidget(MakeButton(side.text, side.name,
                               tr("Against this side of the texture; again for its halves, thirds and quarters"),
                               [at = side.side](CMappingSession& s) { s.Justify(at); }),
                    side.row, side.column);
  grid->addWidget(MakeButton(tr("Fit"), "fitMapping", tr("Fill the texture; again for its quarters and ninths"),
                             [](CMappingSession& s) { s.FitNext(); }),
                  2, 0);
  grid->addWidget(MakeButton(tr("Straighten"), "straighten", tr("Selected corners into one line, level or upright"),
                             [](CMappingSession& s) { s.Straighten(); }),
                  2, 1);
  grid->addWidget(MakeButton(tr("To Texels"), "snapToTexels", tr("Each corner onto the nearest whole texel"),
                             [](CMappingSession& s) { s.SnapToTexels(); }),
                  2, 2);
  return Box(tr("Place"), grid);
}

// --- Mapping ---------------------------------------------------------------------------------------------------------

QWidget* CMappingToolsWidget::MakeGeometryPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->setContentsMargins(4, 4, 4, 4);
  column->addWidget(MakeGeometryBox());
  column->addWidget(MakeIslandsBox());
  column->addStretch();
  return page;
}

QWidget* CMappingToolsWidget::MakeGeometryBox() {
  const auto combo = [](const char* name, const QStringList& texts) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->addItems(texts);
    return box;
  };
  kind_ = combo("projection", {tr("Flat, along an axis"), tr("Flat, as seen in the view"), tr("Box"), tr("Cylinder"),
                               tr("Sphere"), tr("Unfolded")});
  axis_ = combo("projectionAxis", {tr("X"), tr("Y"), tr("Z")});
  axis_->setCurrentIndex(1);
  area_ = combo("projectionArea", {tr("Where they are now")});
  for (const STexturePart& part : TextureParts(64))
    area_->addItem(ToQString(part.name));
  area_->setCurrentIndex(1);
  connect(kind_, &QComboBox::currentIndexChanged, this, [this](int kind) {
    using E = SProjection::EKind;
    const auto chosen = static_cast<E>(kind);
    axis_->setEnabled(chosen == E::kPlane || chosen == E::kCylinder || chosen == E::kSphere);
    keeps_proportions_->setEnabled(chosen != E::kUnfold);
  });
  keeps_proportions_ = new QCheckBox(tr("&Keep proportions"));
  keeps_proportions_->setObjectName("keepProportions");
  auto* form = new QFormLayout;
  form->addRow(tr("&How:"), kind_);
  form->addRow(tr("A&xis:"), axis_);
  form->addRow(tr("&Into:"), area_);
  form->addRow(keeps_proportions_);
  form->addRow(MakeButton(tr("Map Selected Faces"), "mapByGeometry", tr("From where their corners are in the model"),
                          [this](CMappingSession&) { MapByGeometry(); }));
  return Box(tr("From the model's shape"), form);
}

QWidget* CMappingToolsWidget::MakeIslandsBox() {
  auto* gap = MakeField("packGap", 0, 32, 1, {});
  gap->setToolTip(tr("Texels between two islands"));
  auto* grid = new QGridLayout;
  grid->addWidget(
      MakeButton(tr("Weld"), "weld", tr("Selected corners of one vertex come to one place and hang together"),
                 [](CMappingSession& s) { s.Weld(); }),
      0, 0);
  grid->addWidget(MakeButton(tr("Sew"), "sew",
                             tr("Selected islands are put to the first one by the edges that they have in common"),
                             [](CMappingSession& s) { s.Sew(); }),
                  0, 1);
  grid->addWidget(MakeButton(tr("Take Apart"), "takeApart", tr("What is selected no longer hangs on the rest"),
                             [](CMappingSession& s) { s.TakeApart(); }),
                  0, 2);
  grid->addWidget(MakeButton(tr("Pack"), "pack", tr("Selected islands side by side into the part of the texture above"),
                             [this, gap](CMappingSession& s) { s.Pack(ChosenArea(), gap->value()); }),
                  1, 0);
  grid->addWidget(new QLabel(tr("Gap:")), 1, 1, Qt::AlignRight);
  grid->addWidget(gap, 1, 2);
  return Box(tr("Islands"), grid);
}

STexelRect CMappingToolsWidget::ChosenArea() const {
  const int width = session_.Faces().Width();
  if (area_->currentIndex() > 0) return TextureParts(width)[static_cast<size_t>(area_->currentIndex()) - 1].area;
  return session_.SelectedBounds().value_or(WholeTexture(width));
}

void CMappingToolsWidget::MapByGeometry() {
  SProjection projection = {.kind = static_cast<SProjection::EKind>(kind_->currentIndex()),
                            .axis = static_cast<EAxis>(axis_->currentIndex()),
                            .keeps_proportions = keeps_proportions_->isChecked()};
  if (View() != nullptr) projection.to_viewer = View()->ToViewer();
  session_.MapByGeometry(projection, ChosenArea());
}

// --- Numbers ---------------------------------------------------------------------------------------------------------

QWidget* CMappingToolsWidget::MakeNumbersPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  auto* bounds = new QFormLayout;
  const auto add = [&](QFormLayout& form, const QString& label, const char* name, void (CMappingToolsWidget::*take)()) {
    auto* field = MakeField(name, 0, kLargestTexel, 0, {});
    form.addRow(label, field);
    connect(field, &QDoubleSpinBox::valueChanged, this, take);
    wants_selection_.append(field);
    return field;
  };
  left_ = add(*bounds, tr("&Left:"), "boundsLeft", &CMappingToolsWidget::TakeBounds);
  top_ = add(*bounds, tr("&Top:"), "boundsTop", &CMappingToolsWidget::TakeBounds);
  width_ = add(*bounds, tr("&Width:"), "boundsWidth", &CMappingToolsWidget::TakeBounds);
  height_ = add(*bounds, tr("&Height:"), "boundsHeight", &CMappingToolsWidget::TakeBounds);
  column->addWidget(Box(tr("What is selected, in texels"), bounds));
  auto* pivot = new QFormLayout;
  pivot_x_ = add(*pivot, tr("&Across:"), "pivotAcross", &CMappingToolsWidget::TakePivot);
  pivot_y_ = add(*pivot, tr("&Down:"), "pivotDown", &CMappingToolsWidget::TakePivot);
  pivot->addRow(MakeButton(tr("In the Middle"), "pivotMiddle", tr("Of what is selected, wherever that goes"),
                           [](CMappingSession& s) { s.SetPivot(std::nullopt); }));
  column->addWidget(Box(tr("Pivot of turning and scaling"), pivot));
  column->addStretch();
  return page;
}

void CMappingToolsWidget::TakeBounds() {
  if (is_showing_) return;
  const STexel from = {left_->value(), top_->value()};
  session_.Fit({from, from + STexel{width_->value(), height_->value()}});
}

void CMappingToolsWidget::TakePivot() {
  if (!is_showing_) session_.SetPivot(STexel{pivot_x_->value(), pivot_y_->value()});
}

void CMappingToolsWidget::ShowNumbers() {
  const auto bounds = session_.SelectedBounds();
  is_showing_ = true;
  const STexelRect shown = bounds.value_or(STexelRect{});
  const double last = session_.Faces().Width() - 1;
  for (QDoubleSpinBox* field : {left_, top_, width_, height_, pivot_x_, pivot_y_})
    field->setMaximum(last);
  left_->setValue(shown.min.x);
  top_->setValue(shown.min.y);
  width_->setValue(shown.Width());
  height_->setValue(shown.Height());
  pivot_x_->setValue(session_.Pivot().x);
  pivot_y_->setValue(session_.Pivot().y);
  is_showing_ = false;
}

// --- Guides ----------------------------------------------------------------------------------------------------------

QWidget* CMappingToolsWidget::MakeGuidesPage() {
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  guides_ = new QListWidget;
  guides_->setObjectName("guides");
  guides_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  guides_->setToolTip(tr("Guides can also be pulled from the rulers, and moved with the mouse"));
  column->addWidget(guides_, 1);
  const auto button = [this](const QString& text, const char* name, auto&& run) {
    auto* made = new QPushButton(text);
    made->setObjectName(name);
    made->setAutoDefault(false);
    connect(made, &QPushButton::clicked, this, run);
    return made;
  };
  guide_ = MakeField("guidePlace", 0, kLargestTexel, 0, {});
  guide_->setDecimals(0);
  column->addLayout(Line({guide_, button(tr("Add &Upright"), "addUpright", [this] { AddGuide(true); }),
                          button(tr("Add &Level"), "addLevel", [this] { AddGuide(false); })}));
  column->addWidget(button(tr("&Remove Selected"), "removeGuides", [this] { RemoveGuides(); }));
  within_ = MakeField("snapWithin", 0, 512, session_.Settings().snap_within, tr(" pixels"));
  within_->setDecimals(0);
  connect(within_, &QDoubleSpinBox::valueChanged, this,
          [this](double value) { session_.Settings().snap_within = static_cast<int32_t>(value); });
  auto* form = new QFormLayout;
  form->addRow(tr("&Snap within:"), within_);
  column->addLayout(form);
  return page;
}

void CMappingToolsWidget::AddGuide(bool is_upright) {
  STextureGuides guides = session_.Guides();
  std::vector<double>& lines = is_upright ? guides.across : guides.down;
  if (std::ranges::find(lines, guide_->value()) == lines.end()) lines.push_back(guide_->value());
  session_.Settings().show_guides = 1;
  session_.SetGuides(guides);
}

void CMappingToolsWidget::RemoveGuides() {
  STextureGuides guides = session_.Guides();
  for (const QListWidgetItem* item : guides_->selectedItems())
    std::erase(item->data(kUprightRole).toBool() ? guides.across : guides.down, item->data(kPlaceRole).toDouble());
  session_.SetGuides(guides);
}

void CMappingToolsWidget::ShowGuides() {
  guide_->setMaximum(session_.Faces().Width() - 1);
  // The list keeps what is selected in it.
  if (shown_guides_ == session_.Guides()) return;
  shown_guides_ = session_.Guides();
  guides_->clear();
  const auto list = [this](std::vector<double> lines, bool is_upright) {
    std::ranges::sort(lines);
    for (const double line : lines) {
      auto* item = new QListWidgetItem((is_upright ? tr("Upright at %1") : tr("Level at %1")).arg(line), guides_);
      item->setData(kUprightRole, is_upright);
      item->setData(kPlaceRole, line);
    }
  };
  list(session_.Guides().across, true);
  list(session_.Guides().down, false);
}

// --- Texture ---------------------------------------------------------------------------------------------------------

QWidget* CMappingToolsWidget::MakeTexturePage() {
  preview_ = new CTexturePreview;
  preview_->setObjectName("toolsPreview");
  preview_->setMaximumHeight(kPreviewSide);
  texture_text_ = new QLabel;
  texture_text_->setObjectName("toolsTexture");
  texture_text_->setWordWrap(true);
  auto* page = new QWidget;
  auto* column = new QVBoxLayout(page);
  column->addWidget(preview_, 1);
  column->addWidget(texture_text_);
  auto* grid = new QGridLayout;
  const std::pair<QString, const char*> commands[] = {{tr("&Browser..."), "textureBrowser"},
                                                      {tr("E&xport..."), "exportPicture"},
                                                      {tr("&Size and Colours..."), "changeTexture"},
                                                      {tr("C&olour Table..."), "colorTable"},
                                                      {tr("&Edit Picture..."), "editPicture"}};
  int place = 0;
  for (const auto& [text, command] : commands) {
    auto* button = new QPushButton(text);
    button->setAutoDefault(false);
    connect(button, &QPushButton::clicked, this, [this, name = command] { emit CommandWanted(name); });
    grid->addWidget(button, place / 2, place % 2);
    ++place;
  }
  column->addLayout(grid);
  return page;
}

void CMappingToolsWidget::ShowTexture() {
  const CBinTexture* const texture = session_.Texture();
  preview_->SetImage(texture == nullptr ? QImage() : ImageOf(*texture->Image()));
  texture_text_->setText(texture == nullptr ? tr("The selected faces have no texture.") : TextureText(*texture));
}

void CMappingToolsWidget::Refresh(const SNews&) {
  const bool can_edit = !session_.IsReadOnly() && session_.HasSelection();
  for (QWidget* widget : wants_selection_)
    widget->setEnabled(can_edit);
  ShowNumbers();
  ShowGuides();
  ShowTexture();
}

}  // namespace veldra
