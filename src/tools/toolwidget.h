#pragma once

#include <QLabel>
#include <QVariant>
#include <QWidget>

#include "document/tarn2doc.h"
#include "view/tarn2view.h"

namespace veldra {

/// What stands in a tool window: it shows something of one view, in the main window that of the active document. It
/// hears of changes from the view and its document, and brings itself up to date at most once a turn of the event loop;
/// while it cannot be seen it only notes what it has missed.
class CToolWidget : public QWidget, private CDocumentObserver {
  Q_OBJECT

 public:
  /// NAME is its object name.
  explicit CToolWidget(const char* name);
  ~CToolWidget() override;

  /// Null when nothing is open. The view may go at any time.
  void SetView(CTarnView* view);
  CTarnView* View() const { return view_; }
  /// Of the view; null without one.
  CEditCursor* Cursor() const { return view_ == nullptr ? nullptr : &view_->Cursor(); }
  /// False while it is covered by another one of the same place, which Qt does not count as being hidden.
  void SetInFront(bool in_front);
  /// The pictures of the textures have become others.
  void ForgetPictures();
  /// What it keeps from run to run.
  virtual QVariant KeepState() const { return {}; }
  virtual void RestoreState(const QVariant& /*state*/) {}
  /// How often it brought itself up to date.
  int RefreshCount() const { return refresh_count_; }

  QSize sizeHint() const override;

 signals:
  /// The main window's command of that name ("editFace") is to run on what is current now.
  void CommandWanted(const char* name);
  /// What can be done with the current face or vertex is to be offered at AT on the screen.
  void MenuWanted(EGroupKind kind, const QPoint& at);

 protected:
  /// What has happened since it last looked.
  struct SNews {
    bool Any() const { return view || state || cursor || model.Any() || model.selection; }
    bool view = false;    ///< another one; all else may be different then
    bool state = false;   ///< of the document: read-only
    bool cursor = false;  ///< current face, current vertex or tags
    SModelChange model;
  };
  /// Only while it can be seen. View() may be null.
  virtual void Refresh(const SNews& news) = 0;
  /// Also while another one covers it: its tab says something.
  virtual bool RefreshesCovered() const { return false; }
  /// Lets Refresh come, with nothing but what else has happened by then.
  void RefreshSoon();

  /// Fills the window, which scrolls where it is too small, with a line of text, which is returned, and CONTENT below
  /// it, whose share of what room is left is STRETCH.
  QLabel* LayOut(QWidget* content, int stretch = 0);

  /// To be said where nothing is shown: OTHERWISE, unless there is no model, or nothing in it yet.
  QString WhyNothing(const QString& otherwise) const;

  void showEvent(QShowEvent* event) override;

 private:
  void OnDocumentChanged(const CTarnDoc& document, const SModelChange& change) override;
  void OnDocumentStateChanged(const CTarnDoc& document) override;
  void OnDocumentGone(const CTarnDoc& document) override;
  void Follow(CTarnView* view);
  bool CanBeSeen() const { return (is_in_front_ || RefreshesCovered()) && isVisible(); }
  void Post();
  void RefreshNow();

  CTarnView* view_ = nullptr;
  CTarnDoc* document_ = nullptr;  ///< observed; goes before the view or after it
  SNews news_;
  bool is_wanted_ = false;
  bool is_posted_ = false;
  bool is_in_front_ = true;
  int refresh_count_ = 0;
};

}  // namespace veldra
