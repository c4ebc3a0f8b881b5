#pragma once

#include <QTemporaryDir>
#include <QWizard>
#include <memory>
#include <optional>
#include <string>

#include "packing/toolservices.h"
#include "truckeditor/gamenamefield.h"
#include "truckeditor/truckview.h"
#include "truckscene/trucktemplates.h"

namespace veldra {

/// A new truck in steps: which one it begins as, its name, body, wheels and lights, and where it is kept; beside each
/// step stands the truck as it is by then.
class CNewTruckWizard : public QWizard {
  Q_OBJECT

 public:
  explicit CNewTruckWizard(const SToolServices& services, QWidget* parent = nullptr);
  ~CNewTruckWizard() override;

  // What came of it, once it is accepted.
  const CTruck& Truck() const { return draft_.Truck(); }
  /// Where it is to be saved; "" for nowhere yet.
  std::string Path() const;
  /// The files that it needs are to be copied to it.
  bool CopiesFiles() const;
  /// Where those are looked for when the truck lies at PATH.
  SSearchPlaces PlacesFor(const std::string& path) const;

  // For its pages.
  const STruckPageContext& Context() const { return context_; }
  const SToolServices& Services() const { return services_; }
  CTruckView& View() const { return *view_; }
  /// Begins as the truck of ORIGIN; nothing: as a plain one. False when it cannot be read.
  bool BeginAs(const std::optional<STruckTemplate>& origin);
  /// The truck of the sample project, which is written for it; nothing when that has failed and the user has been told.
  std::optional<STruckTemplate> Sample();

 private:
  void ShowStep();

  SToolServices services_;
  CTruckDocument draft_;
  std::unique_ptr<CTruckFiles> files_;
  std::unique_ptr<CTruckTextures> textures_;
  STruckPageContext context_;
  std::optional<STruckTemplate> origin_;
  std::unique_ptr<QTemporaryDir> sample_;
  CTruckView* view_;
};

}  // namespace veldra
