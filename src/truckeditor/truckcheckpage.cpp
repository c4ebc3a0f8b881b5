#include "truckeditor/truckcheckpage.h"

#include <QTimerEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "archive/filetypes.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

enum ECheckColumn { kWhat, kAbout, kSaid };
constexpr int kCheckDelayMs = 250;
constexpr int kNamedRole = Qt::UserRole;
constexpr int kPlaceRole = Qt::UserRole + 1;  ///< its position among those in models
/// More nobody reads, and a broken model can have thousands.
constexpr ptrdiff_t kMostOfAKind = 200;

QString CheckedKindText(const std::string& kind) {
  if (kind == "missing-file") return QObject::tr("Missing file");
  if (kind == "unusable-name") return QObject::tr("Name not for the game");
  QString text = ToQString(kind).replace('-', ' ');
  if (!text.isEmpty()) text[0] = text[0].toUpper();
  return text;
}

/// Whether VALUE, a name in a truck, stands for the file NAMED.
bool StandsFor(const std::string& value, int type, const std::string& named) {
  if (value.empty()) return false;
  const std::string file = TruckFileName(value, type);
  const bool is_color_table = type == kTypeRaw && FoldName(ChangeExtension(file, "ACT")) == FoldName(named);
  return FoldName(file) == FoldName(named) || FoldName(value) == FoldName(named) || is_color_table;
}

}  // namespace

std::optional<STruckNameField> FieldOfFile(const CTruck& truck, const std::string& named) {
  const auto tires = TireModels(truck.tire_base_name);
  const auto is_named = [&](const std::string& model) { return FoldName(model) == FoldName(named); };
  if (!truck.tire_base_name.empty() && std::ranges::any_of(tires, is_named)) return STruckNameField{"tireModels"};
  const std::tuple<const std::string&, int, const char*> fields[] = {
      {truck.model_base_name, kTypeBin, "bodyModel"},  {truck.axle_model_name, kTypeBin, "axleModel"},
      {truck.shock_texture, kTypeRaw, "shockTexture"}, {truck.bar_texture, kTypeRaw, "barTexture"},
      {truck.wave_files[0], kTypeWav, "waveFile1"},    {truck.wave_files[1], kTypeWav, "waveFile2"},
      {truck.wave_files[2], kTypeWav, "waveFile3"}};
  for (const auto& [value, type, name] : fields)
    if (StandsFor(value, type, named)) return STruckNameField{name};
  for (int i = 0; i < truck.UsedLights(); ++i) {
    const TruckLight& light = truck.lights[static_cast<size_t>(i)];
    if (StandsFor(light.cone_texture, kTypeRaw, named)) return STruckNameField{"coneTexture", i};
    if (StandsFor(light.source_bitmap, kTypeRaw, named)) return STruckNameField{"sourceBitmap", i};
  }
  return std::nullopt;
}

CTruckCheckPage::CTruckCheckPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), context_(context), summary_(new QLabel), list_(new QTreeWidget) {
  summary_->setObjectName("checkSummary");
  summary_->setWordWrap(true);
  list_->setObjectName("truckFindings");
  list_->setHeaderLabels({tr("What"), tr("About"), tr("In words")});
  list_->setUniformRowHeights(true);
  list_->setAllColumnsShowFocus(true);
  list_->setExpandsOnDoubleClick(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(summary_);
  layout->addWidget(list_, 1);
  connect(list_, &QTreeWidget::itemActivated, this, &CTruckCheckPage::Jump);
  connect(&context.document, &CTruckDocument::Changed, this, &CTruckCheckPage::CheckSoon);
}

void CTruckCheckPage::Forget() {
  check_.reset();
  CheckSoon();
}

void CTruckCheckPage::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  if (is_due_) Check();
}

void CTruckCheckPage::CheckSoon() {
  is_due_ = true;
  if (isVisible()) timer_.start(kCheckDelayMs, this);
}

void CTruckCheckPage::timerEvent(QTimerEvent* event) {
  if (event->timerId() != timer_.timerId()) return QWidget::timerEvent(event);
  Check();
}

void CTruckCheckPage::Check() {
  timer_.stop();
  is_due_ = false;
  list_->clear();
  in_models_.clear();
  if (context_.files == nullptr) return;
  if (!check_) check_.emplace(*context_.files);
  const STruckReport report = check_->Run(context_.document.Truck(), FileNamePart(context_.document.Path()));
  for (const STruckReport::SUnread& unread : report.unread)
    AddRow(nullptr, tr("Unreadable model"), unread.model, unread.text + " " + unread.details, unread.model);
  for (const STruckFinding& found : report.findings)
    if (found.model.empty()) AddRow(nullptr, CheckedKindText(found.kind), found.named, found.finding.text, found.named);
  AddFindingsOnModels(report.findings);
  constexpr int kAir = 14;
  for (int column = 0; column < kSaid; ++column) {
    list_->resizeColumnToContents(column);
    list_->setColumnWidth(column, list_->columnWidth(column) + kAir);
  }
  const size_t count = report.findings.size() + report.unread.size();
  if (count == 0) return summary_->setText(tr("Nothing is wrong with the truck, its models and what they need."));
  summary_->setText(
      tr("%1. Double-click one, or press Enter, to go to the name that it is about, or to its place in the "
         "model.")
          .arg(ToQString(Counted(static_cast<int64_t>(count), "finding", "findings"))));
}

/// Those of one kind in one model are a row to be opened: a model has hundreds of bent quads and one missing texture.
void CTruckCheckPage::AddFindingsOnModels(const std::vector<STruckFinding>& findings) {
  const auto is_other = [](const STruckFinding& a, const STruckFinding& b) {
    return a.model != b.model || a.kind != b.kind;
  };
  for (auto first = findings.begin(); first != findings.end();) {
    const auto last = std::find_if(first, findings.end(), [&](const auto& other) { return is_other(*first, other); });
    const auto count = last - first;
    const QString kind = CheckedKindText(first->kind);
    QTreeWidgetItem* group = nullptr;
    if (!first->model.empty() && count > 1)
      group = AddRow(nullptr, kind, first->model, tr("%1 of them").arg(count).toStdString(), first->named);
    for (auto found = first; !first->model.empty() && found != first + std::min(count, kMostOfAKind); ++found) {
      AddRow(group, kind, found->model, found->finding.text, found->named)
          ->setData(kWhat, kPlaceRole, static_cast<int>(in_models_.size()));
      in_models_.push_back(*found);
    }
    first = last;
  }
}

QTreeWidgetItem* CTruckCheckPage::AddRow(QTreeWidgetItem* group, const QString& kind, const std::string& about,
                                         const std::string& text, const std::string& named) {
  const QStringList texts = {kind, NameToQString(about), ToQString(text)};
  auto* item = group != nullptr ? new QTreeWidgetItem(group, texts) : new QTreeWidgetItem(list_, texts);
  item->setToolTip(kSaid, ToolTipText(ToQString(text)));
  item->setData(kWhat, kNamedRole, QByteArray::fromStdString(named));
  return item;
}

void CTruckCheckPage::Jump(const QTreeWidgetItem* item) {
  const QVariant place = item->data(kWhat, kPlaceRole);
  if (place.isValid() && context_.files != nullptr) {
    const STruckFinding& found = in_models_[static_cast<size_t>(place.toInt())];
    return FindingWanted(context_.files->Find(found.model, kTypeBin).source, found.finding);
  }
  const std::string named = item->data(kWhat, kNamedRole).toByteArray().toStdString();
  if (const auto field = FieldOfFile(context_.document.Truck(), named)) emit FieldWanted(*field);
}

}  // namespace veldra
