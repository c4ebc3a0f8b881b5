#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "packing/dependencies.h"
#include "platform/questions.h"

/// Making an archive of a truck and all that it needs.
namespace veldra {

/// One of the files, the truck itself the first.
struct STruckPackRow {
  std::string name;       ///< bare file name
  std::string needed_by;  ///< "" for the truck
  std::string where;      ///< the folder or the archive that it is in; "" when it is missing
  std::optional<uint64_t> length;
  bool is_missing = false;
  bool is_stock = false;      ///< every installation has it
  bool is_for_stock = false;  ///< only stock files need it
  bool is_extra = false;      ///< nothing needs it, and the user wants it in the archive
  SPodSource source;          ///< unless it is missing
};

struct STruckPackPlan {
  std::vector<STruckPackRow> rows;
  std::vector<std::string> complaints;  ///< files that could not be looked into
  std::string stock_note;               ///< CStockFiles::Note of the list that told which are stock files

  /// Adds files that nothing needs; one that is there already is not added again.
  void AddFiles(const std::vector<std::string>& paths);
  /// Those that were added.
  std::vector<std::string> AddedFiles() const;
  /// The one rule on what stays out, be it found or not: what every installation has, and what only that needs.
  static bool IsLeftOut(const STruckPackRow& row, bool leave_out_stock) {
    return leave_out_stock && (row.is_stock || row.is_for_stock);
  }
  /// What goes into the archive.
  std::vector<SPodSource> Sources(bool leave_out_stock) const;
  /// What the archive would lack: files that were not found, without those that are left out.
  std::vector<const STruckPackRow*> Lacking(bool leave_out_stock) const;
};

/// Archives and folders in which a truck's files are looked for: those beside it, those that SETTINGS name, the game's.
SSearchPlaces PlacesForTruck(const std::string& truck_path, const CSettings& settings, const std::string& game_folder);

/// What the truck file TRUCK_PATH needs and where that is. Nothing is written and nobody asked.
STruckPackPlan PlanTruckPack(const std::string& truck_path, const SSearchPlaces& places, const CStockFiles& stock);

/// Copies what PLAN has found elsewhere to where it is found first: beside the truck file TRUCK_PATH or, where that
/// lies in a folder like the game's for trucks, into the folders beside it. What is there stays, and so does what every
/// installation has. COPIED gets the number of files. False when one could not be copied, which the user has been told.
bool CopyNeededFiles(CQuestions& questions, const STruckPackPlan& plan, const std::string& truck_path, size_t& copied);

/// "TITAN.BIN, needed by TITAN.TRK"
std::string LackingText(const STruckPackRow& row);

}  // namespace veldra
