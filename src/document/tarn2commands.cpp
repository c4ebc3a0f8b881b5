#include "document/modelcopy.h"
#include "document/statebefore.h"
#include "document/tarn2doc.h"
#include "packing/modeltextures.h"
#include "platform/paths.h"
#include "platform/text.h"

// What saving may have to do first, the history's commands, and going back.

namespace veldra {

void CTarnDoc::CenterAxes(std::initializer_list<EAxis> axes, const char* command) {
  const CStateBefore before(*this, command);
  for (const EAxis axis : axes)
    Center(model_, axis);
  Say(std::string("Done: ") + command);
}

void CTarnDoc::CenterX() {
  if (CanCenter()) CenterAxes({EAxis::kX}, "Center X");
}

void CTarnDoc::CenterY() {
  if (CanCenter()) CenterAxes({EAxis::kY}, "Center Y");
}

void CTarnDoc::CenterZ() {
  if (CanCenter()) CenterAxes({EAxis::kZ}, "Center Z");
}

void CTarnDoc::CenterAll() {
  if (CanCenter()) CenterAxes({EAxis::kX, EAxis::kY, EAxis::kZ}, "Center All");
}

int32_t CTarnDoc::DeleteAllUnused() {
  if (!CanCenter()) return 0;
  const int32_t deleted = DeleteUnused();
  Say(deleted == 0 ? "No unused vertices" : "Deleted " + Counted(deleted, "vertex", "vertices"));
  return deleted;
}

int32_t CTarnDoc::DeleteUnused() {
  const std::vector<int32_t> unused = model_.UnusedVertices();
  if (unused.empty()) return 0;
  const CStateBefore before(*this, "Delete All Unused");
  model_.DeleteVertices(unused, services_.questions);
  return static_cast<int32_t>(unused.size());
}

std::string CTarnDoc::ModelDirectory() const {
  return Path().empty() ? services_.settings.bin_dir : DirectoryPart(Path());
}

void CTarnDoc::Say(const std::string& text) const {
  if (services_.say) services_.say(text);
}

void CTarnDoc::Undo() {
  if (history_.CanUndo()) history_.Undo();
}

void CTarnDoc::Redo() {
  if (history_.CanRedo()) history_.Redo();
}

void CTarnDoc::StepBack() {
  if (!CanStepBack()) return;
  Say("Stepped back over: " + steps_->BackName());
  steps_->Back();
}

void CTarnDoc::StepForward() {
  if (!CanStepForward()) return;
  Say("Stepped forward over: " + steps_->ForwardName());
  steps_->Forward();
}

void CTarnDoc::OnFileGone() {
  steps_->ForgetSaved();
  CFileDocument::OnFileGone();
}

bool CTarnDoc::GoBackTo(const SCopyFile& file) {
  SDiagnosis diagnosis = {0, file.fault};
  CModelTextureFinder finder(services_.textures, services_.questions, services_.settings, Path());
  CBinModel earlier;
  if (!file.fault.empty() || !ReadModelCopy(file.bytes.View(), earlier, finder, &diagnosis))
    return ShowError(Format("The earlier state of \"%s\" could not be opened.", Title().c_str()), diagnosis.Text());
  const CStep step(*this, "Earlier State");
  const CStateBefore before(*this, "Earlier State");
  model_.TakeContents(earlier);
  Say("Went back to an earlier state");
  return true;
}

}  // namespace veldra
