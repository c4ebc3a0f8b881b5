#include "document/statebefore.h"

#include "document/tarn2doc.h"

namespace veldra {

CStateBefore::CStateBefore(CTarnDoc& document, const char* command, bool cancellable)
    : document_(document),
      work_(document.services_.questions.BeginWork(command, cancellable)),
      key_(document.StatesKey()),
      packed_(document.PackState(command)),
      is_file_(!document.modified_),
      revision_(document.model_.Revision()) {}

CStateBefore::~CStateBefore() {
  if (document_.model_.Revision() != revision_) document_.KeepPacked(key_, packed_, is_file_);
}

}  // namespace veldra
