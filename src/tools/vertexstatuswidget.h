#pragma once

#include <QLabel>
#include <QListView>
#include <QStringListModel>
#include <array>
#include <optional>
#include <vector>

#include "tools/toolwidget.h"
#include "ui/numberfield.h"

namespace veldra {

/// The current vertex: its coordinates, which can be typed over (Enter takes them, Escape gives them up), and the faces
/// that use it.
class CVertexStatusWidget : public CToolWidget {
  Q_OBJECT

 public:
  CVertexStatusWidget();

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QWidget* MakeContent();
  void Refresh(const SNews& news) override;
  void ShowPosition(const CBinVertex& vertex);
  void ShowFaces(const CBinVertex& vertex);
  void Apply();
  void ResetFields();

  std::array<CNumberField*, 3> fields_ = {};
  QLabel* users_ = nullptr;
  QListView* list_ = nullptr;
  QStringListModel rows_;
  std::vector<int32_t> faces_;  ///< in the rows
  int32_t shown_ = -1;
  std::optional<SPoint> position_;  ///< in the fields, if nothing has been typed
  QWidget* content_;                ///< after what it fills
  QLabel* title_;
};

}  // namespace veldra
