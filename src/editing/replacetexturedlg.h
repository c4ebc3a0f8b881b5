#pragma once

#include <QListWidget>

#include "editing/commandinputs.h"
#include "settings/settings.h"
#include "ui/fielddialog.h"
#include "ui/pathfield.h"

namespace veldra {

/// Asks which of a model's textures gives way to which file.
class CReplaceTextureDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// MODEL has a texture at least. SETTINGS say where textures lie and which colours one without a table has.
  CReplaceTextureDialog(const CBinModel& model, const CSettings& settings, const SReplaceTextureInput& last,
                        QWidget* parent);
  /// Once accepted.
  SReplaceTextureInput Input() const;

 private:
  QWidget* MakeList(int32_t last);
  QWidget* MakeNewTexture(const std::string& last_path);
  void ShowNewTexture();
  QString Fault() override;

  const CBinModel& model_;
  const CSettings& settings_;
  QListWidget* list_;
  CPathField* path_;
  QLabel* picture_;
  QLabel* description_;
  QString file_fault_;  ///< of the new texture's file
};

}  // namespace veldra
