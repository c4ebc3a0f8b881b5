#pragma once

#include <span>
#include <string>
#include <vector>

#include "editing/editcursor.h"
#include "model/modelcheck.h"

/// What a check has found in the model that is open, shown and mended.
namespace veldra {

/// What is said about a kind of problem, and what can be done.
struct SProblemKind {
  const char* title;   ///< "Bent quad"
  const char* advice;  ///< a sentence or two: what it means, what mending does or what else helps
  /// What mending one does, and many: buttons and the step's name. For a kind without a mend the first is the text of a
  /// button that runs `command`.
  const char* mend = "";
  const char* mend_all = "";
  const char* command = "";  ///< the name of a command that helps, where nothing can be mended
};
const SProblemKind& KindOfProblem(EFinding kind);

/// "Faces 3, 7, 8 and 12 more"; "" for what is about the whole model.
std::string PlaceText(const SFinding& finding);

/// Selects what FINDING is about, and nothing else, and makes the first of it current. False, with a word why, when all
/// of it is hidden, or the model, which may be another one by now, does not have it.
bool SelectProblem(CEditCursor& cursor, const SFinding& finding);

/// Mends FINDINGS, which are of the model as it is, as one step. Returns how many could be mended; 0 where the document
/// cannot be changed.
size_t MendProblems(CTarnDoc& document, std::span<const SFinding> findings);
/// All of KIND that there are now.
size_t MendAllProblems(CTarnDoc& document, EFinding kind);

}  // namespace veldra
