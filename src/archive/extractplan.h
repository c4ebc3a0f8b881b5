#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "archive/podextract.h"

/// Inside ExtractPod: where each entry goes, and which go nowhere.
namespace veldra {

struct SExtractStep {
  size_t entry = 0;
  std::string folder;  ///< that the file lies in, relative to the destination
  std::string name;    ///< of the file there
  std::string path;    ///< of the file, whole
  bool exists = false;
};

struct SRefusedEntry {
  size_t entry = 0;
  std::string reason;
};

/// Looks at the disk and changes nothing on it.
class CExtractPlan {
 public:
  CExtractPlan(const CPodDocument& archive, const SExtractRequest& request);

  void Add(size_t entry);

  const std::vector<SExtractStep>& Steps() const { return steps_; }
  const std::vector<SRefusedEntry>& Refused() const { return refused_; }

 private:
  /// "" when the entry has been given a step.
  std::string Place(size_t entry);
  /// "" when no other entry of the list goes where RELATIVE_PATH leads, or needs a folder there, or a file where this
  /// one needs a folder. All systems' file names are compared, so that the files can be taken to any of them.
  std::string Claim(const std::string& relative_path, size_t entry);
  /// "" when FOLDER, relative to the destination, is there or can be made. A link on the way leads out of the
  /// destination, or could be made to.
  std::string CheckFolder(const std::string& folder);
  std::string LookAtFolder(const std::string& folder) const;

  const CPodDocument& archive_;
  const SExtractRequest& request_;
  std::map<std::string, size_t> files_;  ///< entries by the key of their path
  std::set<std::string> folders_;        ///< keys of the folders that they need
  std::map<std::string, std::string> looked_at_;
  std::vector<SExtractStep> steps_;
  std::vector<SRefusedEntry> refused_;
};

}  // namespace veldra
