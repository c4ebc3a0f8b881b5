#pragma once

#include <QList>
#include <QMenu>
#include <QObject>
#include <memory>
#include <string>

#include "app/childfrm.h"
#include "app/documentarea.h"
#include "app/tarn2.h"

namespace veldra {

/// The windows of the documents in the main frame's area: made, listed, arranged.
class CDocumentWindows : public QObject {
  Q_OBJECT

 public:
  /// AREA outlives it. VIEW_FILTER (may be null) is installed on each view as an event filter.
  CDocumentWindows(CTarn2App& app, CDocumentArea& area, QObject* view_filter);
  ~CDocumentWindows() override;

  /// Another view of DOCUMENT, maximised as the active one is, or, when it is the first, as the settings say. Where the
  /// settings want documents opened without activating them, IN_BACKGROUND leaves the active window what it is.
  CChildFrame& AddView(const std::shared_ptr<CTarnDoc>& document, bool in_background);
  QList<CChildFrame*> Children() const;
  CChildFrame* Active() const;
  CTarnView* ActiveView() const;
  CTarnDoc* ActiveDocument() const;
  /// A window of DOCUMENT comes to the front.
  void Activate(const CFileDocument& document);
  /// Each document once, in the order of the windows.
  QList<CTarnDoc*> Documents() const;

  /// What a view shows of DOCUMENT, small; without pixels where none shows anything yet.
  SImage Picture(const CTarnDoc& document) const;

  /// Where the gizmos of all views stand, those that are still to come included.
  void SetGizmoPivot(const SPivotInput& pivot);
  const SPivotInput& GizmoPivot() const { return gizmo_pivot_; }

  // Commands of the Window menu.
  void NewWindow();
  /// The active document from above, in front, from the right, and as it was, in windows side by side.
  void FourViews();
  void Cascade() { area_.cascadeSubWindows(); }
  void Tile() { area_.tileSubWindows(); }
  void Next() { area_.activateNextSubWindow(); }
  void Previous() { area_.activatePreviousSubWindow(); }
  void CloseActive();
  /// The windows as the last items of MENU.
  void ListIn(QMenu& menu);
  void RememberState();

 signals:
  /// Which window is active, or what one shows.
  void Changed();
  /// CTarnView::MenuWanted of a view.
  void MenuWanted(EGroupKind kind, const QPoint& at);
  /// A document has got a window, or a path.
  void DocumentsChanged();

 private:
  void Connect(CChildFrame& child);
  void NumberViews();

  CTarn2App& app_;
  CDocumentArea& area_;
  QObject* view_filter_;
  SPivotInput gizmo_pivot_ = {.kind = SPivotInput::EKind::kMiddle};
  QList<QAction*> listed_;
};

}  // namespace veldra
