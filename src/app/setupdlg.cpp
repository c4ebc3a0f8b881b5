#include "app/setupdlg.h"

#include <QApplication>
#include <QPushButton>
#include <QStyle>

#include "app/help/helpwindow.h"
#include "platform/text.h"
#include "ui/notelabel.h"
#include "ui/qstrings.h"

namespace veldra {

namespace {

/// WIDGET under the text of a radio button, not under its mark.
void AddIndented(QVBoxLayout& layout, QWidget* widget) {
  auto* row = new QHBoxLayout;
  const QStyle* style = QApplication::style();
  row->addSpacing(style->pixelMetric(QStyle::PM_ExclusiveIndicatorWidth) +
                  style->pixelMetric(QStyle::PM_RadioButtonLabelSpacing));
  row->addWidget(widget, 1);
  layout.addLayout(row);
}

QLabel* WrappedLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

}  // namespace

CSetUpDialog::CSetUpDialog(EOccasion occasion, const SSetUp& offer, QWidget* parent)
    : CFieldDialog("setUp", tr("Set Up Veldra"), parent),
      with_game_(new QRadioButton(tr("With the &game, or a folder of its files:"))),
      folder_(new CPathField(CPathField::EKind::kFolder)),
      found_(WrappedLabel({})),
      stock_(new QCheckBox(tr("Make a &list of the game's own files"))),
      without_game_(new QRadioButton(tr("&Without the game"))),
      sample_(new QCheckBox(tr("Put a &sample project here, and open its truck:"))),
      sample_folder_(new CPathField(CPathField::EKind::kFolder)) {
  const bool is_first = occasion == EOccasion::kFirstStart;
  const QString question = tr("Where is Monster Truck Madness 2? Models take their textures from it.");
  Content()->addWidget(WrappedLabel(is_first ? tr("Welcome to Veldra.") + " " + question : question));
  Content()->addSpacing(8);
  AddGame(offer);
  Content()->addSpacing(8);
  AddSample(offer);
  Content()->addStretch();
  if (is_first) {
    Content()->addSpacing(8);
    Content()->addWidget(
        WrappedLabel(tr("All of this can be changed later: Tools > Set Up Again, File > Preferences.")));
  }
  Content()->addWidget(MakeHelpLink("whereLink", tr("What the game's files are needed for"), HelpFor("setUp")), 0,
                       Qt::AlignLeft);
  Buttons()->button(QDialogButtonBox::Ok)->setText(is_first ? tr("Start") : tr("Set Up"));
  if (is_first) Buttons()->button(QDialogButtonBox::Cancel)->setText(tr("Later"));
  (offer.has_game ? with_game_ : without_game_)->setChecked(true);
  setMinimumWidth(fontMetrics().averageCharWidth() * 80);
  LookIntoFolder();
}

void CSetUpDialog::AddGame(const SSetUp& offer) {
  with_game_->setObjectName("withGame");
  folder_->setObjectName("gameFolder");
  folder_->SetPrompt(tr("Folder of the Game"));
  folder_->SetPath(offer.game.path);
  folder_->RemoveNote();
  found_->setObjectName("found");
  stock_->setObjectName("stockList");
  Content()->addWidget(with_game_);
  AddIndented(*Content(), folder_);
  AddIndented(*Content(), found_);
  AddIndented(*Content(), stock_);
  AddIndented(*Content(),
              new CNoteLabel(tr("New archives can then do without the files that everybody has."), *stock_));
  connect(folder_, &CPathField::PathChanged, this, [this] {
    with_game_->setChecked(true);
    LookIntoFolder();
  });
  connect(with_game_, &QRadioButton::toggled, this, [this] { Refresh(); });
}

void CSetUpDialog::AddSample(const SSetUp& offer) {
  without_game_->setObjectName("withoutGame");
  sample_->setObjectName("sample");
  sample_->setChecked(offer.wants_sample);
  sample_folder_->setObjectName("sampleFolder");
  sample_folder_->SetPrompt(tr("Folder for the Sample Project"));
  sample_folder_->SetPath(offer.sample_folder);
  sample_folder_->RemoveNote();
  Content()->addWidget(without_game_);
  AddIndented(*Content(), WrappedLabel(tr("Textures that have no colour table of their own are shown in grey.")));
  Content()->addSpacing(8);
  Content()->addWidget(sample_);
  AddIndented(*Content(), sample_folder_);
  connect(sample_folder_, &CPathField::PathChanged, this, [this] { Refresh(); });
  connect(sample_, &QCheckBox::toggled, this, [this] { Refresh(); });
}

void CSetUpDialog::LookIntoFolder() {
  game_ = LookIntoGameFolder(folder_->Path());
  stock_->setChecked(game_.IsWhole());
  found_->setText(game_.HasAny() ? ToQString(DisplayText(game_.Text())) : QString());
  found_->setVisible(game_.HasAny());
  Refresh();
}

QString CSetUpDialog::Fault() {
  const bool with_game = with_game_->isChecked();
  stock_->setEnabled(with_game && game_.archives > 0);
  sample_folder_->setEnabled(sample_->isChecked());
  if (sample_->isChecked() && sample_folder_->Path().empty()) return tr("Choose a folder for the sample project.");
  if (!with_game || game_.HasAny()) return {};
  if (folder_->Path().empty()) return tr("Choose the folder of the game.");
  return game_.path.empty() ? tr("There is no such folder.")
                            : tr("There are no archives, textures, models or trucks in this folder.");
}

SSetUp CSetUpDialog::Choice() const {
  SSetUp choice;
  choice.has_game = with_game_->isChecked();
  if (choice.has_game) choice.game = game_;
  choice.builds_stock_list = stock_->isEnabled() && stock_->isChecked();
  choice.wants_sample = sample_->isChecked();
  choice.sample_folder = sample_folder_->Path();
  return choice;
}

}  // namespace veldra
