#include "app/unusedverticesdlg.h"

#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace veldra {

namespace {

constexpr int kTextWidth = 380;

}  // namespace

CUnusedVerticesDialog::CUnusedVerticesDialog(QWidget* parent)
    : QDialog(parent), dont_show_again_(new QCheckBox("Don't show this again")) {
  using EChoice = SUnusedVerticesAnswer::EChoice;
  setObjectName("unusedVertices");
  setWindowTitle("Veldra");
  auto* text = new QLabel(
      "This model contains unused vertices which may cause undesired results in the game. What would you like to do?");
  text->setWordWrap(true);
  text->setMinimumWidth(kTextWidth);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(text);
  layout->addSpacing(8);
  AddChoice("deleteUnused", "Delete unused vertices and save", EChoice::kDelete);
  AddChoice("saveAnyway", "Save Anyway", EChoice::kSaveAnyway);
  AddChoice("cancelSave", "Cancel save", EChoice::kCancel);
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
