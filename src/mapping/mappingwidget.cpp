#include "mapping/mappingwidget.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QStyle>
#include <QVBoxLayout>
#include <cmath>

#include "model/texturepicture.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

QString TexelText(double value) {
  return QString::number(std::round(value * 1000) / 1000 + 0.0, 'g', 6);
}

}  // namespace

CMappingWidget::CMappingWidget(CSettings& settings)
    : CToolWidget("mappingTool"),
      session_(settings, [this] { return Cursor(); }),
      map_(new CMappingView(session_)),
      upper_(new CGuideRuler(Qt::Horizontal)),
      left_(new CGuideRuler(Qt::Vertical)),
      modes_(new QActionGroup(this)),
      textures_(new QComboBox),
      counts_(new QLabel),
      pointer_(new QLabel) {
  auto* status = new QHBoxLayout;
  counts_->setObjectName("mappingCounts");
  counts_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  counts_->setWordWrap(true);
  pointer_->setObjectName("mappingPointer");
  status->addWidget(counts_, 1);
  status->addWidget(pointer_, 0, Qt::AlignTop);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(MakeBar());
  layout->addWidget(MakeMap(), 1);
  layout->addLayout(status);
  session_.SetOnChanged([this] { ShowSession(); });
  ShowSession();
}

QWidget* CMappingWidget::MakeBar() {
  auto* bar = new QWidget;
  auto* line = new QHBoxLayout(bar);
  line->setContentsMargins(0, 0, 0, 0);
  const struct {
    const char* name;
    QString text;
    QString tip;
  } modes[] = {{"corners", tr("&Corners"), tr("Select and move corners")},
               {"faces", tr("&Faces"), tr("Select and move faces")},
               {"islands", tr("&Islands"), tr("Select and move faces with all that hang together with them")}};
  for (int mode = 0; mode < 3; ++mode) {
    QAction* action = modes_->addAction(modes[mode].text);
    action->setObjectName(modes[mode].name);
    action->setCheckable(true);
    action->setToolTip(modes[mode].tip);
    connect(action, &QAction::triggered, this, [this, mode] { session_.SetMode(static_cast<EMappingMode>(mode)); });
    auto* button = new QToolButton;
    button->setDefaultAction(action);
    ShowMappingKeyInTip(*button, static_cast<EMappingKey>(mode), session_.Settings());
    line->addWidget(button);
  }
  textures_->setObjectName("mappingTexture");
  textures_->setToolTip(tr("The texture that is shown, where the selected faces have several"));
  textures_->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
  connect(textures_, &QComboBox::activated, this, [this](int row) {
    const auto textures = session_.Textures();
    if (row < static_cast<int>(textures.size())) session_.ShowTexture(*textures[static_cast<size_t>(row)]);
  });
  line->addWidget(textures_, 1);
  const auto add_button = [&](const QString& text, const char* name, const QString& tip) {
    auto* button = new QToolButton;
    button->setText(text);
    button->setObjectName(name);
    button->setToolTip(tip);
    line->addWidget(button);
    return button;
  };
  QToolButton* fit = add_button(tr("Fi&t"), "mappingFit", tr("Show the whole texture"));
  connect(fit, &QToolButton::clicked, map_, &CMappingView::Fit);
  ShowMappingKeyInTip(*fit, EMappingKey::kFit, session_.Settings());
  QToolButton* options = add_button(tr("&Options"), "mappingOptions", tr("What is shown and what dragging snaps to"));
  options->setPopupMode(QToolButton::InstantPopup);
  options->setMenu(MakeOptions());
  connect(add_button(tr("T&ools"), "mappingTools", tr("Numbers, turning, scaling, guides")), &QToolButton::clicked,
          this, &CMappingWidget::ToolsWanted);
  return bar;
}

QWidget* CMappingWidget::MakeMap() {
  auto* map = new QWidget;
  auto* grid = new QGridLayout(map);
  grid->setContentsMargins(0, 0, 0, 0);
  grid->setSpacing(0);
  upper_->setObjectName("upperRuler");
  left_->setObjectName("leftRuler");
  grid->addWidget(upper_, 0, 1);
  grid->addWidget(left_, 1, 0);
  grid->addWidget(map_, 1, 1);
  MakePull(*upper_, false);
  MakePull(*left_, true);
  connect(map_, &CMappingView::ScaleChanged, this, &CMappingWidget::ShowScale);
  connect(map_, &CMappingView::MenuWanted, this, &CMappingWidget::ShowMenu);
  connect(map_, &CMappingView::PointedAt, this, [this](const STexel& at) {
    const STexel texel = Rounded(at);
    upper_->SetPointer(texel.x);
    left_->SetPointer(texel.y);
    pointer_->setText(tr("Texel %1, %2").arg(texel.x).arg(texel.y));
  });
  return map;
}

void CMappingWidget::MakePull(CGuideRuler& ruler, bool is_upright) {
  connect(&ruler, &CGuideRuler::Pulled, map_,
          [this, is_upright](const QPoint& at) { map_->HoldGuide(is_upright, map_->mapFromGlobal(at)); });
  connect(&ruler, &CGuideRuler::Dropped, map_, &CMappingView::DropGuide);
  connect(&ruler, &CGuideRuler::GivenUp, map_, &CMappingView::GiveUpGuide);
}

// --- Options ---------------------------------------------------------------------------------------------------------

void CMappingWidget::AddSwitch(QMenu& menu, const QString& text, const char* name, int32_t& setting) {
  QAction* action = menu.addAction(text);
  action->setObjectName(name);
  action->setCheckable(true);
  switches_.append([action, &setting] { action->setChecked(setting != 0); });
  connect(action, &QAction::triggered, this, [this, &setting](bool is_on) {
    setting = is_on ? 1 : 0;
    ShowSession();
  });
}

void CMappingWidget::AddSwitch(QMenu& menu, const QString& text, const char* name, bool is_on,
                               std::function<void(bool)> set) {
  QAction* action = menu.addAction(text);
  action->setObjectName(name);
  action->setCheckable(true);
  action->setChecked(is_on);
  connect(action, &QAction::triggered, this, [this, set = std::move(set)](bool on) {
    set(on);
    ShowSession();
  });
}

QMenu* CMappingWidget::MakeOptions() {
  auto* menu = new QMenu(this);
  CSettings& settings = session_.Settings();
  AddSwitch(*menu, tr("Show &Other Faces of the Texture"), "showOthers", true,
            [this](bool on) { map_->ShowOthers(on); });
  AddSwitch(*menu, tr("Show Each Move in the &3D View"), "preview", settings.preview);
  menu->addSeparator();
  AddSwitch(*menu, tr("Put Corners on Whole &Texels"), "onTexels", true, [this](bool on) { session_.SetOnTexels(on); });
  AddSwitch(*menu, tr("Snap to &Corners"), "snapToCorners", false, [this](bool on) { map_->SetSnapToCorners(on); });
  AddSwitch(*menu, tr("Show &Guides"), "showGuides", settings.show_guides);
  AddSwitch(*menu, tr("&Snap to Guides"), "snapToGuides", settings.snap_to_guides);
  menu->addSeparator();
  AddSwitch(*menu, tr("&Rotate Selected Corners Only"), "rotateSelectedOnly", settings.tex_rot_sel_verts_only);
  return menu;
}

void AddMappingItems(QMenu& menu, CMappingSession& session) {
  const auto add = [&session](QMenu& in, const QString& text, auto&& run) {
    in.addAction(text, [&session, run] { run(session); });
  };
  const auto add_key = [&](EMappingKey command, const QString& text, auto&& run) {
    add(menu, WithMappingKey(text, command, session.Settings()), run);
  };
  using S = CMappingSession;
  using Key = EMappingKey;
  add_key(Key::kSelectAll, QObject::tr("Select &All"), [](S& s) { s.SelectAll(true); });
  add_key(Key::kDeselectAll, QObject::tr("&Deselect All"), [](S& s) { s.SelectAll(false); });
  add_key(Key::kInvert, QObject::tr("&Invert Selection"), [](S& s) { s.InvertSelection(); });
  menu.addSeparator();
  add_key(Key::kTurn, QObject::tr("&Rotate Clockwise"), [](S& s) { s.Turn(90); });
  add_key(Key::kTurnBack, QObject::tr("Rotate &Counterclockwise"), [](S& s) { s.Turn(-90); });
  add_key(Key::kFlipAcross, QObject::tr("Flip &Horizontally"), [](S& s) { s.Flip(ETexelAxis::kAcross); });
  add_key(Key::kFlipDown, QObject::tr("Flip &Vertically"), [](S& s) { s.Flip(ETexelAxis::kDown); });
  QMenu* fit = menu.addMenu(QObject::tr("&Fit To"));
  for (const STexturePart& part : TextureParts(session.Faces().Width()))
    add(*fit, ToQString(part.name), [area = part.area](S& s) { s.Fit(area); });
  menu.addSeparator();
  add(menu, QObject::tr("&Take Apart"), [](S& s) { s.TakeApart(); });
}

void CMappingWidget::ShowMenu(const QPoint& at) {
  if (session_.Faces().Empty()) return;
  QMenu menu;
  menu.setObjectName("mappingMenu");
  AddMappingItems(menu, session_);
  const STexel here = Rounded(map_->TexelAt(map_->mapFromGlobal(at)));
  menu.addAction(tr("&Pivot Here"), [this, here] { session_.SetPivot(here); });
  if (session_.OwnPivot()) menu.addAction(tr("Pivot in the &Middle"), [this] { session_.SetPivot(std::nullopt); });
  menu.exec(at);
}

// --- Following -------------------------------------------------------------------------------------------------------

void CMappingWidget::TakeFocus() {
  map_->setFocus();
}

void CMappingWidget::ShowTexture(const CBinTexture& texture) {
  session_.Follow(true);
  session_.ShowTexture(texture);
}

void CMappingWidget::Refresh(const SNews& news) {
  session_.Follow(news.view || news.model.topology || news.model.textures);
}

void CMappingWidget::ShowSession() {
  map_->Refresh();
  for (const auto& refresh : switches_)
    refresh();
  modes_->actions()[static_cast<int>(session_.Mode())]->setChecked(true);
  if (!session_.IsUnderWay()) ListTextures();
  ShowCounts();
  emit Changed();
}

void CMappingWidget::ListTextures() {
  const auto textures = session_.Textures();
  textures_->clear();
  for (const CBinTexture* texture : textures)
    textures_->addItem(tr("%1 (%2 x %2)").arg(NameToQString(texture->Name())).arg(texture->Width()));
  for (size_t i = 0; i < textures.size(); ++i)
    if (textures[i] == session_.Texture()) textures_->setCurrentIndex(static_cast<int>(i));
  textures_->setEnabled(textures.size() > 1);
}

void CMappingWidget::ShowCounts() {
  const CMappedFaces& faces = session_.Faces();
  if (faces.Empty()) {
    counts_->setText(WhyNothing(tr("Select faces with a texture in the 3D view to map them here.")));
    return;
  }
  QString text = tr("%L1 of %2, ")
                     .arg(faces.SelectedFaces().size())
                     .arg(ToQString(Counted(static_cast<int64_t>(faces.Faces().size()), "face", "faces")));
  text += tr("%L1 of %2 selected")
              .arg(faces.SelectedPoints().size())
              .arg(ToQString(Counted(static_cast<int64_t>(faces.Points().size()), "corner", "corners")));
  if (const auto bounds = session_.SelectedBounds())
    text += tr(" from %1, %2 to %3, %4")
                .arg(TexelText(bounds->min.x), TexelText(bounds->min.y), TexelText(bounds->max.x),
                     TexelText(bounds->max.y));
  if (session_.UnmappedCount() > 0) text += tr("; %L1 without texture").arg(session_.UnmappedCount());
  if (session_.IsReadOnly()) text += tr("; the model is read-only");
  counts_->setText(text);
  counts_->setToolTip(text);
}

void CMappingWidget::ShowScale() {
  const int width = session_.Faces().Empty() ? 0 : session_.Faces().Width();
  const bool shows_guides = session_.Settings().show_guides != 0;
  upper_->SetScale(map_->Origin().x(), map_->Zoom(), width);
  left_->SetScale(map_->Origin().y(), map_->Zoom(), width);
  upper_->SetGuides(shows_guides ? session_.Guides().across : std::vector<double>());
  left_->SetGuides(shows_guides ? session_.Guides().down : std::vector<double>());
}

}  // namespace veldra
