#pragma once

#include <QWidget>

#include "textures/colortableedit.h"

namespace veldra {

/// The 256 colours of a table as a square of cells. A drag onto another cell, or an arrow key with Ctrl, exchanges two.
class CColorTableField : public QWidget {
  Q_OBJECT

 public:
  /// TABLE outlives it; update() shows its changes.
  explicit CColorTableField(const CColorTableEdit& table, QWidget* parent = nullptr);
  int Entry() const { return entry_; }
  void SetEntry(int entry);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  void EntryChanged(int entry);
  void ExchangeWanted(int a, int b);
  /// A double click or Enter.
  void ColorWanted(int entry);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  bool event(QEvent* event) override;

 private:
  double CellSide() const;
  QRect CellOf(int entry) const;
  /// -1 beside all.
  int EntryAt(const QPointF& at) const;
  void PaintCell(QPainter& painter, int entry) const;

  const CColorTableEdit& table_;
  int entry_ = 0;
  int target_ = -1;  ///< of the drag that is under way
};

}  // namespace veldra
