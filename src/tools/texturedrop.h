#pragma once

#include <QAbstractItemView>
#include <QPointer>
#include <functional>

#include "tools/toolwidget.h"

namespace veldra {

/// Lets a texture be dragged out of a list onto a face of a view: a selected face gets it with all that are selected.
class CTextureDrop : public QObject {
  Q_OBJECT

 public:
  /// TEXTURE gives the dragged one, an entry of the view's model; null for none.
  CTextureDrop(QAbstractItemView& list, std::function<CBinTexture*()> texture)
      : QObject(&list), list_(list), texture_(std::move(texture)) {}
  /// Null for none.
  void Follow(CTarnView* view);

 private:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void Drop(const QPointF& at);

  QAbstractItemView& list_;
  std::function<CBinTexture*()> texture_;
  CTarnView* view_ = nullptr;  ///< while watched_ is there
  QPointer<QObject> watched_;  ///< the same; one that is being destroyed still has events and is no CTarnView any more
};

}  // namespace veldra
