#pragma once

#include <QMdiSubWindow>
#include <memory>

#include "app/tarn2.h"
#include "view/tarn2view.h"

namespace veldra {

/// A document's window in the main frame. Asks about unsaved changes before the last one of its document closes.
class CChildFrame : public QMdiSubWindow, private CDocumentObserver {
  Q_OBJECT

 public:
  CChildFrame(CTarn2App& app, const std::shared_ptr<CTarnDoc>& document);
  ~CChildFrame() override;

  CTarnView& View() const { return *view_; }
  CTarnDoc& Document() const { return *document_; }

 signals:
  /// The document's content or state changed.
  void DocumentChanged();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc& document) override;
  void UpdateTitle();
  bool IsOnlyViewOfDocument() const;

  CTarn2App& app_;
  std::shared_ptr<CTarnDoc> document_;
  CTarnView* view_;  ///< the window's widget
};

}  // namespace veldra
