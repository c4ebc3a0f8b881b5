#pragma once

#include <QDialog>
#include <QHeaderView>
#include <QPointer>
#include <cstdint>
#include <vector>

namespace veldra {

/// Lets a window stand where it stood last time; a member of the window. The window takes the remembered place when it
/// is shown first, on the screen as PutAt has it, and its place is remembered whenever it is hidden. What remembers
/// must outlive the window.
class CDialogPlace : public QObject {
  Q_OBJECT

 public:
  /// The four numbers are the edges of the window's inside in pixels, right and bottom the first ones outside; all zero
  /// for never placed: the window then keeps its size, as far as the screen has room for it.
  CDialogPlace(QWidget& window, int32_t& left, int32_t& top, int32_t& right, int32_t& bottom);
  /// RECT has these four as members: a rectangle of the settings.
  template <typename Rect>
  CDialogPlace(QWidget& window, Rect& rect) : CDialogPlace(window, rect.left, rect.top, rect.right, rect.bottom) {}

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Restore();
  void Remember();

  QWidget& window_;
  int32_t& left_;
  int32_t& top_;
  int32_t& right_;
  int32_t& bottom_;
  bool is_restored_ = false;
};

/// For a window of its own that stays in front of the one that it belongs to, and can be as large as the screen.
inline constexpr Qt::WindowFlags kToolWindow = Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                               Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint;

/// Gives the columns of HEADER, from the first on, their remembered widths (0: the column keeps its own) and remembers
/// what the user makes of them. To call once the columns are there. Lives as long as the header; WIDTHS must outlive
/// it.
void KeepColumnWidths(QHeaderView& header, const std::vector<int32_t*>& widths);

}  // namespace veldra
