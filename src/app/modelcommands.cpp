#include "app/modelcommands.h"

#include "app/mainfrm.h"
#include "platform/assert.h"

namespace veldra {

QString Counted(int32_t count, const char* one, const char* many) {
  return QStringLiteral("%L1 %2").arg(count).arg(count == 1 ? one : many);
}

CModelCommands::CModelCommands(CMainFrame& frame) : frame_(frame), dialogs_(frame.App().Settings()) {}

/// The enabling rules see to it that there is one.
CTarnDoc& CModelCommands::Active() const {
  CTarnDoc* document = frame_.ActiveDocument();
  VELDRA_ASSERT(document != nullptr);
  return *document;
}

void CModelCommands::Resize() {
  if (const auto input = dialogs_.AskResize(Active().Model(), &frame_)) Active().Resize(*input);
}

void CModelCommands::Translate() {
  if (const auto input = dialogs_.AskTranslate(Active().Model(), &frame_)) Active().Translate(*input);
}

void CModelCommands::Rotate() {
  if (const auto input = dialogs_.AskRotate(Active().Model(), &frame_)) Active().Rotate(*input);
}

void CModelCommands::Mirror() {
  if (const auto input = dialogs_.AskMirror(Active().Model(), &frame_)) Active().Mirror(*input);
}

void CModelCommands::AddFace() {
  if (!Active().CheckTextureLoaded()) return;
  if (const auto input = dialogs_.AskAddFace(Active().Model(), &frame_)) Active().AddFace(*input);
}

void CModelCommands::AddVertex() {
  if (const auto input = dialogs_.AskAddVertex(&frame_)) Active().AddVertex(*input);
}

void CModelCommands::ReplaceTexture() {
  if (const auto input = dialogs_.AskReplaceTexture(Active().Model(), &frame_)) Active().ReplaceTexture(*input);
}

void CModelCommands::MergeClose() {
  const auto input = dialogs_.AskMerge(Active().Model(), &frame_);
  if (!input) return;
  const int32_t merged = Active().MergeCloseVertices(*input);
  if (merged >= 0) frame_.Say(QObject::tr("Merged %1").arg(Counted(merged, "vertex", "vertices")));
}

void CModelCommands::DeleteUnused() {
  const int32_t deleted = Active().DeleteAllUnused();
  frame_.Say(deleted == 0 ? QObject::tr("No unused vertices")
                          : QObject::tr("Deleted %1").arg(Counted(deleted, "vertex", "vertices")));
}

}  // namespace veldra
