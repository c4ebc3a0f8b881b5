#include "truckeditor/newtruckpages.h"

#include <QPushButton>
#include <QVBoxLayout>
#include <algorithm>

#include "archive/filetypes.h"
#include "archive/podnames.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "platform/userfolders.h"
#include "truck/newtruck.h"
#include "truckeditor/trucknamespage.h"
#include "truckeditor/truckpositionspage.h"
#include "truckeditor/truckprompt.h"
#include "truckscene/truckcheck.h"
#include "ui/qstrings.h"
#include "ui/scrolled.h"

namespace veldra {

namespace {

constexpr int kTemplateRole = Qt::UserRole;
constexpr int kPlainRow = -1;
constexpr int kSampleRow = -2;

/// A folder that the user may write to, whatever the settings say.
std::string FolderForTrucks(const CSettings& settings) {
  std::string trucks = FindAnyCase(settings.trk_dir);
  if (!settings.trk_dir.empty() && IsDirectory(trucks)) return trucks;
  const std::string documents = JoinPath(HomeDirectory(), "Documents");
  return IsDirectory(documents) ? documents : HomeDirectory();
}

QString TemplateText(const STruckTemplate& truck) {
  const QString name = NameToQString(truck.file_name);
  const std::string where = FileNamePart(truck.is_in_archive ? truck.file.path : DirectoryPart(truck.file.path));
  return QObject::tr("%1 in %2").arg(name, NameToQString(where));
}

}  // namespace

CNewTruckPage::CNewTruckPage(CNewTruckWizard& wizard, const QString& title, const QString& hint) : wizard_(wizard) {
  setTitle(title);
  auto* inside = new QWidget;
  content_ = new QVBoxLayout(inside);
  content_->setContentsMargins(0, 0, 0, 0);
  auto* label = new QLabel(hint);
  label->setWordWrap(true);
  content_->addWidget(label);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(new CScrolled(inside));
}

void CNewTruckPage::Show(CTruckView& view) const {
  view.Overlay().positions = view.Overlay().scrape_points = view.Overlay().lights = view.Overlay().cones = false;
  view.RestoreRotation();
  view.ZoomToFit();
}

CGameNameField* CNewTruckPage::AddName(QFormLayout& form, const QString& label, const char* name, int type,
                                       std::string CTruck::*field) {
  auto* line = new CGameNameField(wizard_.Context(), name, type, [field](CTruck& truck) { return &(truck.*field); });
  form.addRow(label, line);
  return line;
}

// --- Which truck it begins as ----------------------------------------------------------------------------------------

CTruckStartPage::CTruckStartPage(CNewTruckWizard& wizard, std::vector<STruckTemplate> trucks, bool has_sample)
    : CNewTruckPage(
          wizard, tr("Begin as"),
          tr("A truck like the one you want: its places, lights and names are taken over, and its files can be "
             "copied to change them.")),
      trucks_(std::move(trucks)),
      list_(new QListWidget),
      fault_(new CFaultLabel) {
  list_->setObjectName("templates");
  const auto add = [this](const QString& text, int value) {
    auto* item = new QListWidgetItem(text, list_);
    item->setData(kTemplateRole, value);
  };
  for (size_t i = 0; i < trucks_.size(); ++i)
    add(TemplateText(trucks_[i]), static_cast<int>(i));
  if (has_sample) add(tr("The sample truck"), kSampleRow);
  add(tr("A plain truck without models"), kPlainRow);
  fault_->setWordWrap(true);
  auto* browse = new QPushButton(tr("&Another Truck..."));
  browse->setObjectName("browseTemplate");
  browse->setAutoDefault(false);
  connect(browse, &QPushButton::clicked, this, &CTruckStartPage::Browse);
  Content()->addWidget(list_, 1);
  Content()->addWidget(fault_);
  Content()->addWidget(browse, 0, Qt::AlignLeft);
  connect(list_, &QListWidget::currentItemChanged, this, &CTruckStartPage::Choose);
  list_->setCurrentRow(list_->count() - 1);
  if (!trucks_.empty()) list_->setCurrentRow(0);
}

void CTruckStartPage::Browse() {
  const auto path =
      Wizard().Context().questions.AskOpenFile(TruckPrompt(tr("Begin as"), Wizard().Services(), "", true));
  if (!path) return;
  trucks_.push_back(TemplateAt(*path));
  auto* item = new QListWidgetItem(TemplateText(trucks_.back()));
  item->setData(kTemplateRole, static_cast<int>(trucks_.size()) - 1);
  list_->insertItem(0, item);
  list_->setCurrentItem(item);
}

void CTruckStartPage::Choose() {
  const QListWidgetItem* const item = list_->currentItem();
  const int value = item != nullptr ? item->data(kTemplateRole).toInt() : kPlainRow;
  std::optional<STruckTemplate> origin;
  if (value == kSampleRow) origin = Wizard().Sample();
  if (value >= 0) origin = trucks_[static_cast<size_t>(value)];
  is_chosen_ = (value != kSampleRow || origin) && Wizard().BeginAs(origin);
  fault_->setText(is_chosen_ ? "" : tr("This is not a truck that can be read."));
  emit completeChanged();
}

// --- Its name --------------------------------------------------------------------------------------------------------

CTruckNamePage::CTruckNamePage(CNewTruckWizard& wizard)
    : CNewTruckPage(wizard, tr("Name"), tr("The name that players see, and the file of the truck.")),
      file_(new QLineEdit),
      folder_(new CPathField(CPathField::EKind::kFolder)),
      fault_(new CFaultLabel) {
  auto* form = new QFormLayout;
  AddName(*form, tr("Na&me of the truck:"), "newTruckName", kTypeOther, &CTruck::name);
  file_->setObjectName("newTruckFile");
  file_->setToolTip(tr("At most eight letters; \".TRK\" is added."));
  form->addRow(tr("&File name:"), file_);
  folder_->setObjectName("newTruckFolder");
  folder_->SetPrompt(tr("Folder for the truck"));
  folder_->RemoveNote();
  folder_->Edit()->setMinimumWidth(0);
  folder_->SetPath(FolderForTrucks(wizard.Context().settings));
  form->addRow(tr("F&older:"), folder_);
  fault_->setObjectName("newTruckFault");
  fault_->setWordWrap(true);
  Content()->addLayout(form);
  Content()->addWidget(fault_);
  Content()->addStretch();
  registerField("truckFile", file_);
  registerField("truckFolder", folder_->Edit());
  // The file is called like the truck until the user gives it another name.
  connect(&Draft(), &CTruckDocument::Changed, this, [this] {
    if (!file_->isModified()) file_->setText(ToQString(TruckFileBase(Draft().Truck().name)));
  });
  const auto check = [this] {
    fault_->setText(Fault());
    emit completeChanged();
  };
  connect(file_, &QLineEdit::textChanged, this, check);
  connect(folder_, &CPathField::PathChanged, this, check);
}

void CTruckNamePage::initializePage() {
  auto* const name = findChild<QLineEdit*>("newTruckName");
  name->setFocus();
  name->selectAll();
  if (!file_->isModified()) file_->setText(ToQString(TruckFileBase(Draft().Truck().name)));
  fault_->setText(Fault());
}

QString CTruckNamePage::Fault() const {
  if (file_->text().isEmpty()) return tr("The file needs a name.");
  const std::string name = file_->text().toStdString() + ".TRK";
  const SNameResult usable = PodEntryName(name);
  if (!usable.Ok() || name.find_first_of("/\\:") != std::string::npos)
    return tr("The game takes names of at most eight letters, digits and the like.");
  if (!folder_->IsThere()) return tr("There is no such folder.");
  const std::string path = JoinPath(folder_->Path(), name);
  if (FileExists(FindAnyCase(path))) return tr("There is a truck of this name already.");
  return {};
}

bool CTruckNamePage::isComplete() const {
  return Fault().isEmpty();
}

// --- Its body and wheels ---------------------------------------------------------------------------------------------

CTruckBodyPage::CTruckBodyPage(CNewTruckWizard& wizard)
    : CNewTruckPage(wizard, tr("Body"),
                    tr("The models that the truck is made of, and the textures of its parts. Below each "
                       "name stands where its file is.")) {
  auto* form = new QFormLayout;
  AddName(*form, tr("Bo&dy model:"), "newBody", kTypeBin, &CTruck::model_base_name);
  AddName(*form, tr("&Axle model:"), "newAxle", kTypeBin, &CTruck::axle_model_name);
  AddName(*form, tr("&Shock texture:"), "newShock", kTypeRaw, &CTruck::shock_texture);
  AddName(*form, tr("Ba&r texture:"), "newBar", kTypeRaw, &CTruck::bar_texture);
  Content()->addLayout(form);
  Content()->addStretch();
}

CTruckWheelsPage::CTruckWheelsPage(CNewTruckWizard& wizard)
    : CNewTruckPage(
          wizard, tr("Wheels"),
          tr("The tires, and where the right ones are: feet to the right, up and to the front from the middle "
             "of the body. The left ones follow.")) {
  auto* form = new QFormLayout;
  CGameNameField* const tires = AddName(*form, tr("&Tire models:"), "newTires", kTypeBin, &CTruck::tire_base_name);
  tires->SetProbes(TireModels);
  tires->SetNameOfFile(TireBaseOfFile);
  const auto add = [&](const QString& label, ETire tire) {
    CNumbersField* const field = MakePointField(Draft(), {ETruckPoint::kTire, tire});
    form->addRow(label, field);
  };
  add(tr("Front:"), kFrontRightTire);
  add(tr("Rear:"), kRearRightTire);
  Content()->addLayout(form);
  Content()->addStretch();
  connect(&Draft(), &CTruckDocument::Changed, this, &CTruckWheelsPage::Mirror);
}

/// Not before the user has come here: a template's tires may stand otherwise.
void CTruckWheelsPage::Mirror() {
  if (!isVisible()) return;
  Draft().Change("mirror", [](CTruck& truck) {
    for (const auto& [left, right] :
         {std::pair(kFrontLeftTire, kFrontRightTire), std::pair(kRearLeftTire, kRearRightTire)}) {
      const TruckPoint& from = truck.tires[right];
      truck.tires[left] = {0.0 - from[0], from[1], from[2]};
    }
  });
}

void CTruckWheelsPage::Show(CTruckView& view) const {
  CNewTruckPage::Show(view);
  view.Overlay().positions = true;
  view.ViewRight();
  view.ZoomToFit();
}

// --- Its lights ------------------------------------------------------------------------------------------------------

CTruckLampsPage::CTruckLampsPage(CNewTruckWizard& wizard)
    : CNewTruckPage(wizard, tr("Lights"),
                    tr("What the truck has at its front and rear. Where each light is and where it looks is changed in "
                       "the truck editor, by dragging it in the picture.")),
      count_(new QLabel) {
  const auto add = [this](const QString& text, const char* name, int32_t type) {
    auto* box = new QCheckBox(text);
    box->setObjectName(name);
    connect(box, &QCheckBox::clicked, this, [this, type](bool on) { Switch(type, on); });
    Content()->addWidget(box);
    boxes_[type] = box;
  };
  add(tr("&Headlights"), "newHeadlights", 0);
  add(tr("Brake &lights"), "newBrakelights", 1);
  add(tr("Back&up lights"), "newBackupLights", 4);
  add(tr("&Special lights"), "newSpecialLights", 3);
  count_->setObjectName("newLightCount");
  count_->setWordWrap(true);
  Content()->addWidget(count_);
  Content()->addStretch();
  connect(&Draft(), &CTruckDocument::Changed, this, &CTruckLampsPage::Refresh);
}

void CTruckLampsPage::initializePage() {
  taken_out_.clear();
  Refresh();
}

void CTruckLampsPage::Show(CTruckView& view) const {
  CNewTruckPage::Show(view);
  view.Overlay().lights = view.Overlay().cones = true;
}

void CTruckLampsPage::Switch(int32_t type, bool on) {
  Draft().Change("", [&](CTruck& truck) {
    if (!on) {
      taken_out_[type] = TakeLights(truck, type);
    } else if (taken_out_[type].empty()) {
      AddLightPair(truck, type);
    } else {
      AddLights(truck, taken_out_[type]);
    }
  });
  Refresh();
}

void CTruckLampsPage::Refresh() {
  const CTruck& truck = Draft().Truck();
  for (const auto& [type, box] : boxes_)
    box->setChecked(CountLights(truck, type) > 0);
  count_->setText(tr("%1 of at most %2 lights.").arg(truck.UsedLights()).arg(kTruckLights));
}

// --- The end ---------------------------------------------------------------------------------------------------------

CTruckEndPage::CTruckEndPage(CNewTruckWizard& wizard)
    : CNewTruckPage(wizard, tr("Finish"), tr("The truck opens in the truck editor, where all of it can be changed.")),
      where_(new QLabel),
      missing_(new CFaultLabel),
      save_(new QCheckBox(tr("Sa&ve it now"))),
      copy_(new QCheckBox(tr("&Copy its models, textures and sounds to it"))) {
  where_->setObjectName("newTruckPath");
  where_->setWordWrap(true);
  missing_->setObjectName("newTruckMissing");
  missing_->setWordWrap(true);
  save_->setObjectName("newTruckSave");
  copy_->setObjectName("newTruckCopy");
  save_->setChecked(true);
  copy_->setChecked(true);
  copy_->setToolTip(tr("What every installation of the game has is left where it is, and no file is written over."));
  for (QWidget* widget : std::initializer_list<QWidget*>{save_, where_, copy_, missing_})
    Content()->addWidget(widget);
  Content()->addStretch();
  connect(save_, &QCheckBox::toggled, copy_, &QWidget::setEnabled);
  registerField("savesTruck", save_);
  registerField("copiesFiles", copy_);
}

void CTruckEndPage::initializePage() {
  const std::string path =
      JoinPath(field("truckFolder").toString().toStdString(), field("truckFile").toString().toStdString() + ".TRK");
  where_->setText(NameToQString(path));
  const STruckPageContext& context = Wizard().Context();
  QStringList missing;
  for (const STruckFinding& found : CTruckCheck(*context.files).Run(context.document.Truck(), "").findings)
    if (found.kind == "missing-file") missing.append(NameToQString(found.named));
  constexpr qsizetype kMostNamed = 8;
  const qsizetype more = missing.size() - kMostNamed;
  QString names = missing.mid(0, kMostNamed).join(", ");
  if (more > 0) names += tr(" and %1 more").arg(more);
  missing_->setText(missing.isEmpty() ? "" : tr("Not found yet: %1").arg(names));
}

}  // namespace veldra
