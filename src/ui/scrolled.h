#pragma once

#include <QScrollArea>
#include <optional>

namespace veldra {

/// What is about the content of a window that has a line of buttons below it.
inline constexpr QSize kAroundButtons(24, 64);

/// A frameless area that scrolls where the window is too small for what is in it.
class CScrolled : public QScrollArea {
  Q_OBJECT

 public:
  /// With AROUND, the size of what else is in the window, the window is never too small for CONTENT, unless the screen
  /// is.
  explicit CScrolled(QWidget* content, std::optional<QSize> around = {});
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  std::optional<QSize> around_;
};

}  // namespace veldra
