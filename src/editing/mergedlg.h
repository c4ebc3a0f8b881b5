#pragma once

#include <QLabel>
#include <QTimer>
#include <atomic>
#include <thread>

#include "editing/commandinputs.h"
#include "model/mergecount.h"
#include "ui/fielddialog.h"

namespace veldra {

/// Asks within which distance vertices are merged, and counts meanwhile what that would take away.
class CMergeDialog : public CFieldDialog {
  Q_OBJECT

 public:
  CMergeDialog(const CBinModel& model, const SMergeInput& last, QWidget* parent);
  ~CMergeDialog() override;
  /// Once accepted.
  SMergeInput Input() const;

 private:
  QString Fault() override;
  QString FieldFault() override;
  void Expect(const QString& text);
  void StartCounting();
  void StopCounting();
  void ShowCount(int number, const SMergeCount& count);

  const CMergeCounter counter_;
  CNumberField* threshold_ = nullptr;
  QLabel* count_ = nullptr;
  QTimer pause_;  ///< after the last key
  std::thread thread_;
  std::atomic<bool> is_stopped_ = false;
  int number_ = 0;  ///< of the counting whose result is wanted
};

}  // namespace veldra
