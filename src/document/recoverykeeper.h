#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "document/filedocument.h"
#include "document/recovery.h"

namespace veldra {

/// Keeps copies of the open documents with unsaved changes in a CRecoveryFolder, each by its own schedule, and brings
/// back what earlier programs left there.
///
/// A document's copy goes when the document is saved, or closed with the user's consent (Closed). One that merely
/// disappears leaves an up-to-date copy behind: the program is then on its way out without having asked.
class CRecoveryKeeper : private CFileDocumentObserver {
 public:
  using Time = CRecoverySchedule::Time;
  using ClockReader = std::function<Time()>;

  /// FOLDER outlives the keeper. CLOCK says when a change happens.
  explicit CRecoveryKeeper(CRecoveryFolder& folder, ClockReader clock = CRecoverySchedule::Clock::now);
  ~CRecoveryKeeper() override;
  CRecoveryKeeper(const CRecoveryKeeper&) = delete;
  CRecoveryKeeper& operator=(const CRecoveryKeeper&) = delete;

  /// From here on DOCUMENT, just opened or made, is kept. It may go before the keeper.
  void Watch(CFileDocument& document);
  /// The user has let go of DOCUMENT and of its unsaved changes.
  void Closed(const CFileDocument& document);
  /// Writes the copies that are due; to be called every second or so. A document that is being worked on waits.
  void Tick(Time now);
  void Tick() { Tick(clock_()); }
  /// Writes every copy that is missing, due or not: the program may be ended at any moment from here on.
  void SaveAll();
  /// Why the last copy could not be written, or "": the user's work is not safe then.
  const std::string& Fault() const { return fault_; }

  /// What programs that died have left: sound ones first, the newest first; damaged ones (SLeftover::fault) last.
  std::vector<SLeftover> Leftovers() { return folder_.Leftovers(); }
  /// Fills the new DOCUMENT from LEFTOVER and watches it: with its path, title and earlier states, modified. False when
  /// that fails, which the user has been told; the leftover then stays.
  bool TakeOver(const SLeftover& leftover, CFileDocument& document);
  /// Deletes it for good.
  bool Discard(const SLeftover& leftover) { return folder_.Discard(leftover); }

 private:
  struct SKept {
    CFileDocument* document = nullptr;
    uint32_t id = 0;  ///< of its copy
    CRecoverySchedule schedule;
  };
  void OnContentChanged(const CFileDocument& document) override;
  void OnStateChanged(const CFileDocument& document) override;
  void OnGone(const CFileDocument& document) override;
  bool SaveCopy(SKept& kept, Time now);
  void Forget(SKept& kept);

  CRecoveryFolder& folder_;
  ClockReader clock_;
  std::map<const CFileDocument*, SKept> kept_;
  uint32_t last_id_ = 0;
  std::string fault_;
};

}  // namespace veldra
