#pragma once

#include <QFormLayout>
#include <QWidget>

#include "truckeditor/gamenamefield.h"

namespace veldra {

/// The truck's name, its models and its textures.
class CTruckNamesPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckNamesPage(const STruckPageContext& context, QWidget* parent = nullptr);

 private:
  CGameNameField* Add(QFormLayout& form, const QString& label, const char* name, int type, std::string CTruck::*field);

  const STruckPageContext& context_;
};

/// The tire base name for a picked model: what stands before the size and the side, or the whole file name when it is
/// none of the game's.
std::string TireBaseOfFile(const std::string& file_name);

}  // namespace veldra
