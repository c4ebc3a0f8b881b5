#pragma once

#include <QCheckBox>
#include <QLabel>
#include <array>
#include <optional>

#include "interchange/waveimport.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks what becomes of the coordinates of a Wavefront file, with the size that the model will have.
class CImportOptionsDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// MESH was read from PATH; LAST is what the fields hold at first.
  CImportOptionsDialog(const SWaveMesh& mesh, const std::string& path, const SWaveOptions& last, QWidget* parent);
  /// Once accepted.
  SWaveOptions Options() const;

 private:
  struct SRow {
    QLabel* size;
    QLabel* place;
  };
  QWidget* MakeOptions(const SWaveOptions& last);
  QWidget* MakePreview();
  void ShowBounds(const std::optional<SBounds>& bounds);
  QString Fault() override;
  QString FieldFault() override;

  const SWaveMesh& mesh_;
  CNumberField* scale_ = nullptr;
  QCheckBox* swap_yz_ = nullptr;
  QCheckBox* center_ = nullptr;
  std::array<SRow, 3> rows_ = {};
};

/// Shows the dialog over PARENT. Nothing when cancelled; else OPTIONS, the last ones so far, become those chosen.
std::optional<SWaveOptions> AskImportOptions(const SWaveMesh& mesh, const std::string& path, SWaveOptions& options,
                                             QWidget* parent);

}  // namespace veldra
