#pragma once

#include <string>
#include <vector>

#include "cli/session.h"
#include "model/modelcheck.h"

namespace veldra {

/// What a check has found, of one file or more, as it is printed.
class CFindings {
 public:
  /// Of the file FILE, as the user named it.
  void Add(const std::string& file, const std::vector<SFinding>& findings);
  void Add(const std::string& file, const std::string& kind, const SFinding& finding);
  /// Prints all of them, a line each or, with JSON, as a list. Returns the exit status: kFailed when there is any.
  int Print(CSession& session, bool json) const;

 private:
  struct SRow {
    std::string file;
    std::string kind;
    SFinding finding;
  };
  std::string Text() const;
  std::string Json() const;

  std::vector<SRow> rows_;
};

/// Reads the model in FILE and adds what is to be said of it. False when it is damaged; the user, to whom it is NAME,
/// has been told.
bool CheckModelBytes(CSession& session, const std::string& name, std::span<const uint8_t> file,
                     const FindTextureWidth& texture_width, CFindings& findings);

}  // namespace veldra
