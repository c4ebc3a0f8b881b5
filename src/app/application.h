#pragma once

#include <QApplication>
#include <functional>

namespace veldra {

/// The application object. What runs out of memory, whatever it is, ends there and then, and the program goes on.
class CApplication : public QApplication {
 public:
  using QApplication::QApplication;

  /// Who tells the user. May be empty: nobody is told.
  void SetOutOfMemory(std::function<void()> tell) { tell_ = std::move(tell); }

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  std::function<void()> tell_;
};

}  // namespace veldra
