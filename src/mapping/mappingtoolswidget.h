#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTabWidget>

#include "mapping/mappingsession.h"
#include "model/texturepreviewwidget.h"
#include "tools/toolwidget.h"

namespace veldra {

class CMappingWidget;

/// The tools of the mapping editor, in pages.
class CMappingToolsWidget : public CToolWidget {
  Q_OBJECT

 public:
  explicit CMappingToolsWidget(CMappingWidget& editor);

  QSize sizeHint() const override { return {425, 410}; }

 private:
  using Tool = std::function<void(CMappingSession&)>;
  void AddPage(const QString& title, QWidget* page);
  QPushButton* MakeButton(const QString& text, const char* name, const QString& tip, const Tool& tool);
  QDoubleSpinBox* MakeField(const char* name, double low, double high, double value, const QString& suffix);
  QWidget* MakeTransformPage();
  QWidget* MakeMoveBox();
  QWidget* MakeTurnBox();
  QWidget* MakeScaleBox();
  QWidget* MakePlaceBox();
  QWidget* MakeGeometryPage();
  QWidget* MakeGeometryBox();
  QWidget* MakeIslandsBox();
  STexelRect ChosenArea() const;
  void MapByGeometry();
  QWidget* MakeNumbersPage();
  QWidget* MakeGuidesPage();
  QWidget* MakeTexturePage();
  void ShowTexture();
  void AddGuide(bool is_upright);
  void RemoveGuides();
  void TakeBounds();
  void TakePivot();
  void Refresh(const SNews& news) override;
  void ShowNumbers();
  void ShowGuides();

  CMappingWidget& editor_;
  CMappingSession& session_;
  QTabWidget* pages_;
  QList<QWidget*> wants_selection_;
  QDoubleSpinBox* left_ = nullptr;
  QDoubleSpinBox* top_ = nullptr;
  QDoubleSpinBox* width_ = nullptr;
  QDoubleSpinBox* height_ = nullptr;
  QDoubleSpinBox* pivot_x_ = nullptr;
  QDoubleSpinBox* pivot_y_ = nullptr;
  QComboBox* kind_ = nullptr;
  QComboBox* axis_ = nullptr;
  QComboBox* area_ = nullptr;
  QCheckBox* keeps_proportions_ = nullptr;
  QListWidget* guides_ = nullptr;
  QDoubleSpinBox* guide_ = nullptr;
  QDoubleSpinBox* within_ = nullptr;
  CTexturePreview* preview_ = nullptr;
  QLabel* texture_text_ = nullptr;
  STextureGuides shown_guides_;
  bool is_showing_ = false;
};

}  // namespace veldra
