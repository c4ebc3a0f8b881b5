#include "tools/texturebrowserwidget.h"

#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QMenu>
#include <QScreen>
#include <QSplitter>
#include <QToolButton>
#include <QVBoxLayout>
#include <algorithm>
#include <map>
#include <set>

#include "editing/facecommands.h"
#include "editing/modelcommands.h"
#include "editing/texturecommands.h"
#include "editing/texturetransfer.h"
#include "model/texturepicture.h"
#include "packing/modeltextures.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "textures/rawtexture.h"
#include "tools/itemmenus.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr int kLookMs = 15;
constexpr int kListAgainMs = 400;

}  // namespace

CTextureBrowserWidget::CTextureBrowserWidget()
    : CToolWidget("textureBrowserTool"),
      rows_(*this,
            [this] { return View() == nullptr ? GreyRamp() : View()->Document().Services().textures.DefaultColors(); }),
      search_(new QLineEdit),
      shown_(new QComboBox),
      list_(new QListView),
      counts_(new QLabel),
      preview_(new CTexturePreview),
      details_(new QLabel),
      assign_(new QPushButton(tr("&Assign to Selected Faces"))),
      map_(new QPushButton(tr("&Map"))) {
  auto* split = new QSplitter;
  split->setObjectName("browserSplitter");
  split->addWidget(MakeList());
  split->addWidget(new CScrolled(MakePreview()));
  split->setStretchFactor(0, 1);
  split->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(4, 4, 4, 4);
  layout->addWidget(split);
  looking_.setSingleShot(true);
  connect(&looking_, &QTimer::timeout, this, &CTextureBrowserWidget::Look);
  ShowChosen();
}

QSize CTextureBrowserWidget::sizeHint() const {
  constexpr QSize kWanted(790, 480);
  const QSize room = screen()->availableSize();
  return kWanted.boundedTo({room.width() * 3 / 5, room.height() / 2});
}

QWidget* CTextureBrowserWidget::MakeList() {
  search_->setObjectName("textureSearch");
  search_->setPlaceholderText(tr("Search for a name"));
  search_->setClearButtonEnabled(true);
  shown_->setObjectName("texturesShown");
  shown_->addItems(
      {tr("All textures"), tr("Of the model"), tr("In folders"), tr("In archives"), tr("Not for the game")});
  list_->setObjectName("browserTextures");
  list_->setModel(&rows_);
  list_->setViewMode(QListView::IconMode);
  list_->setResizeMode(QListView::Adjust);
  list_->setMovement(QListView::Static);
  list_->setDragDropMode(QAbstractItemView::DragOnly);
  list_->setUniformItemSizes(true);
  list_->setLayoutMode(QListView::Batched);
  list_->setIconSize({CTextureBrowserRows::kPictureSide, CTextureBrowserRows::kPictureSide});
  list_->setGridSize(rows_.CellSize());
  list_->setMinimumHeight(40);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  drop_ = new CTextureDrop(*list_, [this] { return Entry(); });
  auto* again = new QToolButton;
  again->setObjectName("lookAgain");
  again->setText(tr("&Look Again"));
  again->setToolTip(tr("Looks through the folders and archives anew"));
  auto* line = new QHBoxLayout;
  line->addWidget(search_, 1);
  line->addWidget(shown_);
  line->addWidget(again);
  counts_->setObjectName("browserCounts");
  counts_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 0);
  column->addLayout(line);
  column->addWidget(list_, 1);
  column->addWidget(counts_);
  connect(search_, &QLineEdit::returnPressed, this, [this] {
    if (Chosen() == nullptr) list_->setCurrentIndex(rows_.index(0));
    list_->setFocus();
  });
  connect(search_, &QLineEdit::textChanged, this, &CTextureBrowserWidget::List);
  connect(shown_, &QComboBox::currentIndexChanged, this, &CTextureBrowserWidget::List);
  connect(again, &QToolButton::clicked, this, &CTextureBrowserWidget::LookAgain);
  connect(list_->selectionModel(), &QItemSelectionModel::currentChanged, this, &CTextureBrowserWidget::ShowChosen);
  connect(list_, &QAbstractItemView::activated, this, &CTextureBrowserWidget::Assign);
  connect(list_, &QWidget::customContextMenuRequested, this, &CTextureBrowserWidget::ShowMenu);
  return widget;
}

QWidget* CTextureBrowserWidget::MakePreview() {
  preview_->setObjectName("browserPreview");
  details_->setObjectName("browserDetails");
  details_->setWordWrap(true);
  details_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* transparent = new QCheckBox(tr("Show &transparent texels as such"));
  transparent->setObjectName("showTransparent");
  transparent->setChecked(true);
  connect(transparent, &QCheckBox::toggled, preview_, &CTexturePreview::ShowTransparent);
  assign_->setObjectName("browserAssign");
  assign_->setToolTip(tr("Gives it to the selected faces, or to the current one (double click, Enter)"));
  connect(assign_, &QPushButton::clicked, this, &CTextureBrowserWidget::Assign);
  map_->setObjectName("browserMap");
  map_->setToolTip(tr("Opens the mapping editor with the selected faces that use it, or with all that do"));
  connect(map_, &QPushButton::clicked, this, &CTextureBrowserWidget::Map);
  auto* widget = new QWidget;
  auto* column = new QVBoxLayout(widget);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(preview_, 1);
  column->addWidget(transparent);
  column->addWidget(details_);
  for (QPushButton* button : {assign_, map_}) {
    button->setAutoDefault(false);
    column->addWidget(button);
  }
  return widget;
}

// --- What there is ---------------------------------------------------------------------------------------------------

void CTextureBrowserWidget::Refresh(const SNews& news) {
  if (news.view) {
    drop_->Follow(View());
    rows_.ForgetPictures();
    std::vector<std::string> places;
    if (View() != nullptr) {
      const CTarnDoc& document = View()->Document();
      const SArchivePlace* const archive = document.ArchivePlace();
      places = PlacesOfTextures(document.Settings(), document.Path(), archive == nullptr ? "" : archive->archive);
    }
    if (places != places_) catalog_ = {};
    places_ = std::move(places);
    LookAgain();
  }
  // Faces change with every movement of a drag, who uses which texture seldom.
  if (news.view || news.model.textures || UseCounts() != use_counts_)
    List();
  else
    EnableButtons();
}

std::vector<int32_t> CTextureBrowserWidget::UseCounts() const {
  std::vector<int32_t> counts;
  for (int32_t i = 0; Cursor() != nullptr && i < Cursor()->Model().TextureCount(); ++i)
    counts.push_back(Cursor()->Model().Texture(i).UseCount());
  return counts;
}

void CTextureBrowserWidget::LookAgain() {
  coming_ = CTextureCatalog(places_);
  rows_.ForgetPictures();
  looking_.start(0);
}

/// The first list comes at once with what is found first; a later one takes the place of that before when it is whole.
void CTextureBrowserWidget::Look() {
  QElapsedTimer time;
  time.start();
  bool is_more = true;
  while (is_more && time.elapsed() < kLookMs)
    is_more = coming_.Step();
  if (is_more)
    looking_.start(0);
  else
    catalog_ = std::exchange(coming_, {});
  if (is_more && !catalog_.Textures().empty()) return;
  if (is_more && since_listed_.isValid() && since_listed_.elapsed() < kListAgainMs) return;
  since_listed_.start();
  List();
}

void CTextureBrowserWidget::AddModelTextures(std::vector<SBrowserTexture>& textures) const {
  if (Cursor() == nullptr) return;
  const CBinModel& model = Cursor()->Model();
  for (int32_t i = 0; i < model.TextureCount(); ++i) {
    const CBinTexture& entry = model.Texture(i);
    const STextureImage& image = *entry.Image();
    const bool is_missing = image.is_stand_in;
    textures.push_back({.name = entry.Name(),
                        .place = DirectoryPart(image.path),
                        .size = image.size,
                        .faces = entry.UseCount(),
                        .is_animation = entry.Kind() == ETextureKind::kAnimated,
                        .has_own_colors = image.has_own_colors,
                        .is_in_archive = image.read != nullptr,
                        .fault = is_missing ? "It has not been found." : GameFault(image.name, image.size),
                        .image = &image,
                        .source = {}});
  }
}

void CTextureBrowserWidget::AddOthers(std::vector<SBrowserTexture>& textures) const {
  std::set<std::string> own;
  for (const SBrowserTexture& texture : textures)
    if (!texture.is_animation) own.insert(texture.name);
  const CTextureCatalog& known = catalog_.Textures().empty() ? coming_ : catalog_;
  for (const SCatalogTexture& found : known.Textures()) {
    std::string name = UpperCase(found.raw.name);
    if (own.contains(name)) continue;
    textures.push_back({.name = std::move(name),
                        .place = found.place,
                        .size = found.size,
                        .has_own_colors = found.colors.has_value(),
                        .is_in_archive = found.raw.bytes.length.has_value(),
                        .fault = GameFault(found.raw.name, found.size),
                        .source = found});
  }
}

bool CTextureBrowserWidget::IsShown(const SBrowserTexture& texture) const {
  const std::string wanted = UpperCase(search_->text().trimmed().toStdString());
  if (texture.name.find(wanted) == std::string::npos) return false;
  switch (shown_->currentIndex()) {
    case kOfModel:
      return texture.IsOfModel();
    case kOfFolders:
      return !texture.is_in_archive;
    case kOfArchives:
      return texture.is_in_archive;
    case kFaulty:
      return !texture.fault.empty();
    default:
      return true;
  }
}

void CTextureBrowserWidget::List() {
  if (Cursor() != nullptr && Cursor()->Model().IsBusy()) return;
  use_counts_ = UseCounts();
  const std::string chosen = Chosen() == nullptr ? "" : Chosen()->name;
  std::vector<SBrowserTexture> textures;
  AddModelTextures(textures);
  AddOthers(textures);
  const size_t all = textures.size();
  std::erase_if(textures, [this](const SBrowserTexture& texture) { return !IsShown(texture); });
  std::ranges::stable_sort(textures, {}, &SBrowserTexture::name);
  counts_->setText(
      tr("%L1 of %2").arg(textures.size()).arg(ToQString(Counted(static_cast<int64_t>(all), "texture", "textures"))) +
      (looking_.isActive() ? tr(", looking for more...") : QString()));
  rows_.SetTextures(std::move(textures));
  Choose(chosen);
}

// --- The chosen one --------------------------------------------------------------------------------------------------

const SBrowserTexture* CTextureBrowserWidget::Chosen() const {
  return rows_.Texture(list_->currentIndex().row());
}

void CTextureBrowserWidget::Choose(const std::string& name) {
  const QModelIndex index = rows_.index(rows_.RowOf(name));
  if (index.isValid()) list_->setCurrentIndex(index);
  ShowChosen();
}

void CTextureBrowserWidget::EnableButtons() {
  const SBrowserTexture* const chosen = Chosen();
  const bool is_editable = View() != nullptr && CanEditModel(View()->Document());
  assign_->setEnabled(chosen != nullptr && is_editable && CanEditFaces(*Cursor()));
  map_->setEnabled(chosen != nullptr && chosen->faces > 0);
}

void CTextureBrowserWidget::ShowChosen() {
  const SBrowserTexture* const chosen = Chosen();
  EnableButtons();
  emit ChosenChanged();
  preview_->setEnabled(chosen != nullptr);
  if (chosen == nullptr) {
    preview_->SetImage({});
    details_->setText(View() == nullptr ? tr("No model is open.") : tr("Choose a texture to see it here."));
    return;
  }
  QString text = DetailsOf(*chosen);
  const ColorTable& defaults = View()->Document().Services().textures.DefaultColors();
  if (const auto raw = RawTextureOf(chosen->Read(), defaults, nullptr)) {
    preview_->SetImage(ImageOf(raw->texels));
    text += '\n' + TexelCounts(raw->texels);
  } else {
    preview_->SetImage({});
  }
  details_->setText(text);
}

/// The model's, which gets it now where it had none.
CBinTexture* CTextureBrowserWidget::Entry() const {
  const SBrowserTexture* const chosen = Chosen();
  if (chosen == nullptr || View() == nullptr) return nullptr;
  CTarnDoc& document = View()->Document();
  if (!chosen->IsOfModel()) return LoadTexture(document, *chosen->source);
  const ETextureKind kind = chosen->is_animation ? ETextureKind::kAnimated : ETextureKind::kPlain;
  return document.Model().FindTexture(chosen->name, kind);
}

void CTextureBrowserWidget::Assign() {
  if (View() == nullptr || !CanEditFaces(*Cursor())) return;
  const CStep step(View()->Document(), "Assign Texture");
  if (CBinTexture* entry = Entry()) AssignTexture(*Cursor(), *entry);
}

void CTextureBrowserWidget::Map() {
  CBinTexture* const entry = Chosen() != nullptr && Chosen()->IsOfModel() ? Entry() : nullptr;
  if (entry == nullptr) return;
  const CBinModel& model = View()->Document().Model();
  const std::vector<int32_t> users = FacesOfTexture(model, *entry);
  const bool is_selected = std::ranges::any_of(users, [&](int32_t face) { return model.Face(face).IsSelected(); });
  if (!is_selected) SelectFacesOfTexture(*View(), model.TextureIndex(entry));
  emit MappingWanted(entry);
}

void CTextureBrowserWidget::ShowMenu(const QPoint& at) {
  if (View() == nullptr || !list_->indexAt(at).isValid()) return;
  QMenu menu;
  menu.setObjectName("browserMenu");
  menu.addAction(assign_->text(), this, &CTextureBrowserWidget::Assign)->setEnabled(assign_->isEnabled());
  menu.addAction(map_->text(), this, &CTextureBrowserWidget::Map)->setEnabled(map_->isEnabled());
  QAction* load = menu.addAction(tr("A&dd to the Model"), this, [this] { Entry(); });
  load->setEnabled(!Chosen()->IsOfModel() && CanEditModel(View()->Document()));
  menu.addSeparator();
  const std::pair<QString, const char*> commands[] = {{tr("E&xport Picture..."), "exportPicture"},
                                                      {tr("&Size and Colours..."), "changeTexture"},
                                                      {tr("C&olour Table..."), "colorTable"},
                                                      {tr("Edit in Other &Program..."), "editPicture"}};
  for (const auto& [text, command] : commands)
    menu.addAction(text, this, [this, name = command] { emit CommandWanted(name); });
  menu.exec(list_->viewport()->mapToGlobal(at));
}

}  // namespace veldra
