#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archive/podwriter.h"
#include "archive/stockfiles.h"
#include "packing/dependencies.h"
#include "platform/questions.h"

namespace veldra {

/// An archive under construction: what will go into it, in order. What may not go in is told as it is added.
class CPodBuild {
 public:
  struct SItem {
    SPodSource source;
    std::string name;  ///< in the archive: "ART\SKY.RAW"
    uint64_t length = 0;
    bool is_stock = false;  ///< every installation has a file of this name
  };

  CPodBuild(CQuestions& questions, const CStockFiles& stock) : questions_(questions), stock_(stock) {}

  const std::vector<SItem>& Items() const { return items_; }
  bool IsEmpty() const { return items_.empty(); }

  // Each returns how many were added, at the end. What is refused (its name, a name that is there already, a file that
  // cannot be read) is told in one message: the first refusal as its text, the others as its details.
  size_t AddFiles(std::span<const std::string> paths);
  /// The entries of another archive. None, after "Failed to load POD file", when it cannot be loaded.
  size_t AddArchive(const std::string& path);
  /// Files, folders and, with INSERT_ARCHIVES, archives as their entries. Of a folder all files below it; those of no
  /// known type keep their place below it as part of their names.
  size_t AddAny(std::span<const std::string> paths, bool insert_archives);
  size_t AddSources(const std::vector<SPodSource>& sources);

  /// POSITIONS ascend, each once.
  void Remove(std::span<const size_t> positions);
  /// By one place up (-1) or down (1), all together; false when one of them stands at that end.
  bool Move(std::span<const size_t> positions, int by);
  void Clear() { items_.clear(); }

  /// What goes into the file; LEAVE_OUT_STOCK: without the files that every installation has.
  std::vector<SPodSource> Sources(bool leave_out_stock) const;
  /// The length that the archive will have, in bytes.
  uint64_t TotalLength(bool leave_out_stock) const;

  /// What the files need that is not among them.
  std::vector<SDependency> Missing(const SSearchPlaces& places, std::vector<std::string>* complaints = nullptr) const;

 private:
  CQuestions& questions_;
  const CStockFiles& stock_;
  std::vector<SItem> items_;
};

}  // namespace veldra
