#pragma once

#include <QPushButton>
#include <QTemporaryDir>
#include <QWidget>
#include <array>

#include "platform/sound.h"
#include "truckeditor/gamenamefield.h"

namespace veldra {

/// The three wave files, each with a button that plays it.
class CTruckSoundsPage : public QWidget {
  Q_OBJECT

 public:
  explicit CTruckSoundsPage(const STruckPageContext& context, QWidget* parent = nullptr);

 private:
  QString Fault(size_t slot, const std::string& name) const;
  void Refresh();
  void Play(size_t slot);
  /// A file with the sound's bytes: itself, or a copy of the entry of an archive. "" when it cannot be made.
  std::string PlayableFile(const STruckFile& file, SError* error);

  const STruckPageContext& context_;
  CSoundPlayer player_;
  QTemporaryDir copies_;
  std::string why_not_;
  std::array<QPushButton*, kTruckWaves> play_{};
};

}  // namespace veldra
