#pragma once

#include <QString>

#include "app/tarn2.h"
#include "editing/modeldialogs.h"

namespace veldra {

class CMainFrame;

/// The commands of the Model menu that open a dialog or have something to say afterwards.
class CModelCommands {
 public:
  explicit CModelCommands(CMainFrame& frame);

  void Resize();
  void Translate();
  void Rotate();
  void Mirror();
  void AddFace();
  void AddVertex();
  void DeleteUnused();
  void MergeClose();
  void ReplaceTexture();

 private:
  CTarnDoc& Active() const;

  CMainFrame& frame_;
  CModelDialogs dialogs_;
};

/// "1 vertex", "1,200 vertices".
QString Counted(int32_t count, const char* one, const char* many);

}  // namespace veldra
