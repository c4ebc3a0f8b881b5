#pragma once

#include <QCheckBox>
#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QTreeWidget>

#include "interchange/importcommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// What becomes of mesh files: which of them come in, their sizes, and for each what its materials become.
class CImportMeshesDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// JOBS, of which there is at least one, are what the dialog shows and changes.
  CImportMeshesDialog(std::vector<SMeshJob>& jobs, CTextureStore& textures, CQuestions& questions, QWidget* parent);

 private:
  SMeshJob& Current() { return jobs_[current_]; }
  void FillFiles();
  QGroupBox* MakeOptions();
  void ShowJob(size_t job);
  void FillMaterials();
  void AddMaterialRow(const QString& name, const QString& type, size_t faces, int32_t material);
  /// MATERIAL is a position in the plan, or -1 for faces without one.
  QComboBox* MakeChoice(int32_t material, const std::string& raw);
  void Choose(QComboBox& choice, QTreeWidgetItem& row, int32_t material);
  bool AskTexture(QComboBox& choice);
  void ShowPicture(QTreeWidgetItem& row, const std::string& raw);
  QString MadeOf(const std::string& raw) const;
  void TakeOptions();
  void ShowSizes();
  QString Fault() override;

  std::vector<SMeshJob>& jobs_;
  CTextureStore& textures_;
  CQuestions& questions_;
  size_t current_ = 0;
  bool is_filling_ = false;  ///< what changes is not the user's doing
  QTreeWidget* files_;
  QTreeWidget* materials_;
  QLabel* note_;
  QCheckBox* fits_ = nullptr;
  CNumberField* fit_ = nullptr;
  CNumberField* scale_ = nullptr;
  QComboBox* up_ = nullptr;
  QCheckBox* center_ = nullptr;
};

/// Shows the dialog over PARENT; false when cancelled. LAST is what the user chose last for coordinates, which is what
/// is offered for files that another program wrote.
bool AskMeshJobs(std::vector<SMeshJob>& jobs, SWaveOptions& last, CTextureStore& textures, CQuestions& questions,
                 QWidget* parent);

}  // namespace veldra
