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
  /// The document's title, with the window's number where it has one.
  QString Name() const;
  /// 0: the document's only window.
  void SetViewNumber(int number);

 signals:
  /// The document's content or state changed.
  void DocumentChanged();
  /// The document has another path.
  void DocumentMoved();

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
  int number_ = 0;
  std::string path_;  ///< the document's, as it was last
};

}  // namespace veldra
