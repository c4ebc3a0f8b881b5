#pragma once

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>

#include "tools/toolwidget.h"

namespace veldra {

/// The current face: what it is, its texture, its corners, its normal and magic number.
class CCurrentFaceWidget : public CToolWidget {
  Q_OBJECT

 public:
  CCurrentFaceWidget();
  QSize sizeHint() const override;

 private:
  QWidget* MakeContent();
  QLabel* MakeValue(QFormLayout& form, const QString& title, const char* name);
  QTreeWidget* MakeCorners();
  void Refresh(const SNews& news) override;
  void Show(const CBinFace& face);
  void ShowTexture(const CBinTexture* texture);
  void ShowCorners(const CBinFace& face);

  QLabel* type_ = nullptr;
  QLabel* texture_ = nullptr;
  QLabel* picture_ = nullptr;
  QTreeWidget* corners_ = nullptr;
  QLabel* stored_normal_ = nullptr;
  QLabel* normal_ = nullptr;
  QLabel* stored_magic_ = nullptr;
  QLabel* magic_ = nullptr;
  QPushButton* edit_ = nullptr;
  uint64_t shown_image_ = 0;  ///< its number
  QWidget* content_;          ///< after what it fills
  QLabel* title_;
};

}  // namespace veldra
