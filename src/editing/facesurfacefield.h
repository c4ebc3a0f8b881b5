#pragma once

#include <QComboBox>
#include <QGroupBox>

#include "model/binmodel.h"

namespace veldra {

/// The choice of a face's type and texture, and a picture of it.
class CFaceSurfaceField : public QGroupBox {
  Q_OBJECT

 public:
  /// Offers MODEL's textures, and none. TYPE and TEXTURE (its position, -1 for none) are chosen at first; a type that
  /// nobody knows may stay. PICTURE stands beside the choices.
  CFaceSurfaceField(const CBinModel& model, uint32_t type, int32_t texture, QWidget* picture,
                    QWidget* parent = nullptr);
  uint32_t Type() const { return types_->currentData().toUInt(); }
  /// Offers MODEL's textures anew, of which some have come, and chooses TEXTURE.
  void ShowTextures(const CBinModel& model, int32_t texture);
  int32_t Texture() const { return textures_->currentData().toInt(); }

 signals:
  void Changed();

 private:
  QComboBox* types_;
  QComboBox* textures_;
};

}  // namespace veldra
