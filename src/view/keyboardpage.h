#pragma once

#include <QTextBrowser>
#include <QWidget>

#include "platform/questions.h"
#include "view/keyboardtable.h"

namespace veldra {

/// The keys by category as a sheet to lay beside the keyboard: shown, printed, or saved as PDF.
class CKeyboardPage : public QWidget {
  Q_OBJECT

 public:
  /// QUESTIONS asks where the PDF goes, and must outlive the page.
  CKeyboardPage(CQuestions& questions, SKeyTexts keys, QWidget* parent = nullptr);

 private:
  void Print();
  void SavePdf();

  CQuestions& questions_;
  SKeyTexts keys_;
  QTextBrowser* sheet_;
};

}  // namespace veldra
