#pragma once

#include <QKeyEvent>
#include <QObject>
#include <functional>

#include "app/commands/commandkeys.h"

namespace veldra {

/// The keys of the 3D views. Watches the widgets that it is installed on as an event filter; so a key reaches a command
/// before Qt takes it for itself (Tab, the menus' Alt keys). In other widgets than views the keys that mean something
/// there are theirs: all of them in text fields, else those that move about, press, select or copy.
class CViewKeys : public QObject {
  Q_OBJECT

 public:
  using Runner = std::function<void(const SCommandRow&)>;

  /// KEYS say which ones; RUN carries a command out where its rule allows it. KEYS outlive it.
  CViewKeys(const CCommandKeys& keys, Runner run, QObject* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  const CCommandKeys& keys_;
  Runner run_;
};

}  // namespace veldra
