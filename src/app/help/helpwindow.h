#pragma once

#include <QLineEdit>
#include <QTextBrowser>
#include <QTreeWidget>
#include <QWidget>

#include "app/help/helppages.h"
#include "ui/linklabel.h"

namespace veldra {

/// A page, its pictures no wider than the window.
class CHelpBrowser : public QTextBrowser {
  Q_OBJECT

 public:
  explicit CHelpBrowser(QWidget* parent = nullptr);
  /// The page, and on it the headline, of URL.
  void Show(const QUrl& url);

 protected:
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  void Follow(const QUrl& link);
  void ScrollTo(const QString& anchor);
};

/// The pages of the help, with their contents and a search over all of them.
class CHelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit CHelpWindow(QWidget* parent);
  void Show(const QUrl& url);

  /// F1 in any window leads to its page from now on. OWNER is the main window.
  static void InstallKey(QWidget& owner);
  /// Shows URL in the one help window there is; over a dialog that blocks the others, in one that belongs to that.
  static void Open(const QUrl& url, QWidget& owner);

 private:
  void ListContents();
  void List(const QList<SHelpSection>& sections, bool as_tree);

  QList<SHelpSection> sections_;
  QLineEdit* search_;
  QTreeWidget* list_;
  CHelpBrowser* page_;
};

/// Words that open URL, of HelpUrl or HelpFor.
CLinkLabel* MakeHelpLink(const char* name, const QString& text, const QUrl& url);

}  // namespace veldra
