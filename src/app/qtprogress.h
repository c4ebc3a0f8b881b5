#pragma once

#include <QElapsedTimer>
#include <QProgressDialog>
#include <QWidget>
#include <memory>

#include "platform/questions.h"

namespace veldra {

/// While it lives, a wait cursor gives way to the normal one: for dialogs in the middle of an operation.
class CNormalCursor {
 public:
  CNormalCursor();
  ~CNormalCursor();
  CNormalCursor(const CNormalCursor&) = delete;
  CNormalCursor& operator=(const CNormalCursor&) = delete;

 private:
  bool was_waiting_;
};

/// A long operation as the user sees it: a wait cursor, and after half a second a dialog with how far it is.
class CQtProgress : public CProgress {
 public:
  static constexpr int kShowAfterMs = 500;

  CQtProgress(const QString& title, bool cancellable, QWidget* parent);
  ~CQtProgress() override;
  bool Step(uint64_t done, uint64_t total) override;

 private:
  void Show();

  QString title_;
  bool cancellable_;
  QWidget* parent_;
  QElapsedTimer since_start_;
  QElapsedTimer since_update_;
  std::unique_ptr<QProgressDialog> dialog_;
};

}  // namespace veldra
