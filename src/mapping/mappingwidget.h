#pragma once

#include <QActionGroup>
#include <QComboBox>
#include <QMenu>
#include <QToolButton>

#include "mapping/mappingview.h"
#include "tools/toolwidget.h"
#include "ui/guideruler.h"

namespace veldra {

/// The mapping editor: a texture with the selected faces of the active view on it, between rulers.
class CMappingWidget : public CToolWidget {
  Q_OBJECT

 public:
  explicit CMappingWidget(CSettings& settings);
  CMappingSession& Session() { return session_; }
  CMappingView& Map() { return *map_; }
  /// Of those of the selected faces.
  void ShowTexture(const CBinTexture& texture);
  /// The keys go to the texture.
  void TakeFocus();

  QSize sizeHint() const override { return {500, 450}; }
  /// The guides of all textures.
  QVariant KeepState() const override { return QString::fromStdString(session_.AllGuides()); }
  void RestoreState(const QVariant& state) override { session_.SetAllGuides(state.toString().toStdString()); }

 signals:
  /// What is shown or selected, or a setting of the editor.
  void Changed();
  void ToolsWanted();

 private:
  QWidget* MakeBar();
  QWidget* MakeMap();
  QMenu* MakeOptions();
  void AddSwitch(QMenu& menu, const QString& text, const char* name, int32_t& setting);
  void AddSwitch(QMenu& menu, const QString& text, const char* name, bool is_on, std::function<void(bool)> set);
  void MakePull(CGuideRuler& ruler, bool is_upright);
  void Refresh(const SNews& news) override;
  void ShowSession();
  void ListTextures();
  void ShowCounts();
  void ShowScale();
  void ShowMenu(const QPoint& at);

  CMappingSession session_;
  CMappingView* map_;
  CGuideRuler* upper_;
  CGuideRuler* left_;
  QActionGroup* modes_;
  QComboBox* textures_;
  QLabel* counts_;
  QLabel* pointer_;
  QList<std::function<void()>> switches_;  ///< bring the menu of options up to date
  bool is_listing_ = false;
};

/// What can be done with what is selected, for a menu.
void AddMappingItems(QMenu& menu, CMappingSession& session);

}  // namespace veldra
