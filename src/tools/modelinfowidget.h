#pragma once

#include <QPlainTextEdit>

#include "tools/toolwidget.h"

namespace veldra {

/// The model information text, with the current face and vertex.
class CModelInfoWidget : public CToolWidget {
  Q_OBJECT

 public:
  CModelInfoWidget();

 private:
  void Refresh(const SNews& news) override;

  QPlainTextEdit* text_;
};

}  // namespace veldra
