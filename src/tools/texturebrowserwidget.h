#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>

#include "model/texturepreviewwidget.h"
#include "tools/texturebrowsermodel.h"
#include "tools/texturedrop.h"
#include "tools/toolwidget.h"

namespace veldra {

/// The textures that the model has, and those that it could have, as pictures, with the chosen one in large. A double
/// click gives it to the selected faces.
class CTextureBrowserWidget : public CToolWidget {
  Q_OBJECT

 public:
  CTextureBrowserWidget();
  /// Leaves something of the model to be seen.
  QSize sizeHint() const override;
  /// Null when none is chosen.
  const SBrowserTexture* Chosen() const;
  void Choose(const std::string& name);
  /// The keys go to the search.
  void TakeFocus() { search_->setFocus(); }
  /// Looks through folders and archives anew.
  void LookAgain();
  /// They have all been looked through.
  bool IsComplete() const { return !looking_.isActive(); }

 signals:
  /// Another one, or none.
  void ChosenChanged();
  /// Selected faces use TEXTURE, and are to be mapped.
  void MappingWanted(const CBinTexture* texture);

 private:
  enum EShown { kAll, kOfModel, kOfFolders, kOfArchives, kFaulty };

  QWidget* MakeList();
  QWidget* MakePreview();
  void Refresh(const SNews& news) override;
  void Look();
  void List();
  bool IsShown(const SBrowserTexture& texture) const;
  /// Of the model's textures, in its order.
  std::vector<int32_t> UseCounts() const;
  void AddModelTextures(std::vector<SBrowserTexture>& textures) const;
  void AddOthers(std::vector<SBrowserTexture>& textures) const;
  void EnableButtons();
  void ShowChosen();
  void ShowMenu(const QPoint& at);
  void Assign();
  void Map();
  CBinTexture* Entry() const;

  CTextureBrowserRows rows_;
  CTextureCatalog catalog_;
  CTextureCatalog coming_;  ///< while it is being looked
  QElapsedTimer since_listed_;
  std::vector<std::string> places_;  ///< that it looks through
  std::vector<int32_t> use_counts_;  ///< as listed
  QTimer looking_;
  QLineEdit* search_;
  QComboBox* shown_;
  QListView* list_;
  QLabel* counts_;
  CTexturePreview* preview_;
  QLabel* details_;
  QPushButton* assign_;
  QPushButton* map_;
  CTextureDrop* drop_;
};

}  // namespace veldra
