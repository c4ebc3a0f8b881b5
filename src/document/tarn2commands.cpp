#include "document/statebefore.h"
#include "document/tarn2doc.h"
#include "platform/paths.h"
#include "platform/text.h"

// What saving may have to do first, and the history's commands.

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

}  // namespace veldra
