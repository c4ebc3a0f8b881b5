#include "app/unusedverticesdlg.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include "document/modelsaver.h"

namespace veldra {

namespace {

constexpr int kTextWidth = 380;

}  // namespace

CUnusedVerticesDialog::CUnusedVerticesDialog(QWidget* parent)
    : QDialog(parent), dont_show_again_(new QCheckBox(kDontShowAgainText)) {
  using EChoice = SUnusedVerticesAnswer::EChoice;
  setObjectName("unusedVertices");
  setWindowTitle("Veldra");
  auto* text = new QLabel(kUnusedVerticesText);
  text->setWordWrap(true);
  text->setMinimumWidth(kTextWidth);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addSpacing(8);
  AddChoice("deleteUnused", kDeleteUnusedChoice, EChoice::kDelete);
  AddChoice("saveAnyway", kSaveAnywayChoice, EChoice::kSaveAnyway);
  AddChoice("cancelSave", kCancelSaveChoice, EChoice::kCancel);
  // The Enter key deletes nothing.
  findChild<QPushButton*>("saveAnyway")->setDefault(true);
  layout->addSpacing(8);
  dont_show_again_->setObjectName("dontShowAgain");
  layout->addWidget(dont_show_again_);
}

void CUnusedVerticesDialog::AddChoice(const char* name, const QString& text, SUnusedVerticesAnswer::EChoice choice) {
  auto* button = new QPushButton(text);
  button->setObjectName(name);
  connect(button, &QPushButton::clicked, this, [this, choice] {
    choice_ = choice;
    done(choice == SUnusedVerticesAnswer::EChoice::kCancel ? Rejected : Accepted);
  });
  layout()->addWidget(button);
}

SUnusedVerticesAnswer CUnusedVerticesDialog::Answer() const {
  return {.choice = choice_, .dont_show_again = dont_show_again_->isChecked()};
}

}  // namespace veldra
