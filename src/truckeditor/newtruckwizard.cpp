#include "truckeditor/newtruckwizard.h"

#include "packing/packtruck.h"
#include "platform/paths.h"
#include "truck/newtruck.h"
#include "truckeditor/newtruckpages.h"
#include "ui/qstrings.h"
#include "ui/screenplace.h"

namespace veldra {

CNewTruckWizard::CNewTruckWizard(const SToolServices& services, QWidget* parent)
    : QWizard(parent),
      services_(services),
      draft_(services.questions, services.settings, nullptr),
      context_{draft_, services.questions, services.settings},
      view_(new CTruckView(context_)) {
  setObjectName("newTruck");
  setWindowTitle(tr("New Truck"));
  // The other styles bring a light header along, on dark windows too.
  setWizardStyle(QWizard::ClassicStyle);
  setOption(QWizard::NoBackButtonOnStartPage);
  setSideWidget(view_);
  // On a small screen the steps need the room.
  constexpr QSize kSmallestView(200, 200);
  view_->setMinimumSize(kSmallestView);
  constexpr QSize kUsualWizard(900, 520);
  ResizeToFit(*this, kUsualWizard);
  BeginAs({});
  const bool has_sample = services.write_sample != nullptr;
  const std::string folder = services.settings.trk_dir;
  addPage(new CTruckStartPage(*this, FindTruckTemplates(folder, PlacesFor("")), has_sample));
  addPage(new CTruckNamePage(*this));
  addPage(new CTruckBodyPage(*this));
  addPage(new CTruckWheelsPage(*this));
  addPage(new CTruckLampsPage(*this));
  addPage(new CTruckEndPage(*this));
  connect(this, &QWizard::currentIdChanged, this, &CNewTruckWizard::ShowStep);
}

/// The view looks at what would go before it.
CNewTruckWizard::~CNewTruckWizard() {
  delete view_;
}

SSearchPlaces CNewTruckWizard::PlacesFor(const std::string& path) const {
  const std::string beside = !path.empty() ? path : origin_ ? origin_->file.path : "";
  SSearchPlaces places = PlacesForTruck(beside, services_.settings, services_.game_folder);
  return origin_ ? WithPlacesOf(*origin_, std::move(places)) : places;
}

bool CNewTruckWizard::BeginAs(const std::optional<STruckTemplate>& origin) {
  const std::optional<CTruck> truck = origin ? origin->Read() : PlainTruck();
  if (!truck) return false;
  origin_ = origin;
  const std::string path = origin && !origin->is_in_archive ? origin->file.path : "";
  auto files = std::make_unique<CTruckFiles>(path, PlacesFor(""), services_.stock);
  auto textures = std::make_unique<CTruckTextures>(*files, services_.default_colors);
  context_.files = files.get();
  context_.textures = textures.get();
  draft_.New(*truck);
  view_->Reload();
  textures_ = std::move(textures);
  files_ = std::move(files);
  return true;
}

std::optional<STruckTemplate> CNewTruckWizard::Sample() {
  if (sample_ == nullptr) sample_ = std::make_unique<QTemporaryDir>();
  const std::string path = sample_->isValid() ? services_.write_sample(ToNativePath(sample_->path())) : "";
  return path.empty() ? std::nullopt : std::optional(TemplateAt(path));
}

std::string CNewTruckWizard::Path() const {
  if (!field("savesTruck").toBool()) return "";
  return JoinPath(field("truckFolder").toString().toStdString(), field("truckFile").toString().toStdString() + ".TRK");
}

bool CNewTruckWizard::CopiesFiles() const {
  return !Path().empty() && field("copiesFiles").toBool();
}

/// The picture shows what the step is about.
void CNewTruckWizard::ShowStep() {
  const auto* const page = dynamic_cast<const CNewTruckPage*>(currentPage());
  if (page != nullptr) page->Show(*view_);
}

}  // namespace veldra
