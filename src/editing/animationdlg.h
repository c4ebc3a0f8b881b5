#pragma once

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTimer>
#include <vector>

#include "editing/texturecommands.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Defines an animation, new or there already: its name, its frames and their rate, with a preview that runs. Deleting
/// one is done at once.
class CAnimationDialog : public CFieldDialog {
  Q_OBJECT

 public:
  /// Starts with CURRENT, or with a new one where it is null or no animation.
  CAnimationDialog(CTarnDoc& document, const CBinTexture* current, QWidget* parent);
  // Once accepted.
  SAnimationInput Input() const;
  /// The animation that the input replaces; null for a new one.
  CBinTexture* Edited() const;

 private:
  QLayout* MakeChoice();
  QWidget* MakeFrames();
  QLayout* MakePreview();
  QPushButton* MakeButton(const char* name, const QString& text, void (CAnimationDialog::*action)());
  void FillTextures();
  void FillChoice(const CBinTexture* current);
  void ShowChosen();
  void FillFrames(int current);
  void DeleteChosen();
  void AddTexture();
  void AddFiles();
  void Insert(CBinTexture::SFrame frame);
  void Remove();
  void MoveUp() { Move(-1); }
  void MoveDown() { Move(1); }
  void Move(int by);
  void ShowNextFrame();
  void Restart();
  QString Fault() override;

  CTarnDoc& document_;
  std::vector<CBinTexture::SFrame> frames_;
  std::string old_name_;  ///< as the model has it, which may not be what the field can show
  QComboBox* animations_;
  QPushButton* delete_;
  QPushButton* add_ = nullptr;
  QLineEdit* name_;
  CNumberField* rate_ = nullptr;
  QListWidget* list_;
  QComboBox* textures_;
  std::vector<QPushButton*> frame_buttons_;  ///< remove, up, down
  QLabel* preview_;
  QTimer timer_;
  size_t shown_ = 0;
};

}  // namespace veldra
