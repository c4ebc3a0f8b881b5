#pragma once

#include <QLabel>

namespace veldra {

/// Words that lead somewhere: clicked, or reached with Tab and followed with Enter. In a blue that can be read on light
/// and on dark windows, which not every desktop gives.
class CLinkLabel : public QLabel {
  Q_OBJECT

 public:
  CLinkLabel(const char* name, const QString& text, QWidget* parent = nullptr);

 signals:
  void Followed();

 protected:
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void ShowText();

  QString words_;
};

}  // namespace veldra
