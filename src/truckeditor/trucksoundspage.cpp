#include "truckeditor/trucksoundspage.h"

#include <QFormLayout>
#include <QVBoxLayout>

#include "archive/filepart.h"
#include "archive/filetypes.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "ui/qstrings.h"

namespace veldra {

CTruckSoundsPage::CTruckSoundsPage(const STruckPageContext& context, QWidget* parent)
    : QWidget(parent), context_(context), why_not_(CSoundPlayer::WhyNot()) {
  auto* form = new QFormLayout;
  for (size_t slot = 0; slot < kTruckWaves; ++slot) {
    const QString number = QString::number(slot + 1);
    auto* name = new CGameNameField(context, "waveFile" + number, kTypeWav,
                                    [slot](CTruck& truck) { return &truck.wave_files[slot]; });
    name->SetFurtherRule([this, slot](const std::string& text) { return Fault(slot, text); });
    play_[slot] = new QPushButton(tr("Play"));
    play_[slot]->setObjectName("play" + number);
    connect(play_[slot], &QPushButton::clicked, this, [this, slot] { Play(slot); });
    auto* row = new QHBoxLayout;
    row->addWidget(name, 1);
    row->addWidget(play_[slot], 0, Qt::AlignTop);
    form->addRow(tr("Wave file &%1:").arg(number), row);
    qobject_cast<QLabel*>(form->labelForField(row))->setBuddy(name);
  }
  auto* stop = new QPushButton(tr("Stop"));
  stop->setObjectName("stopSound");
  stop->setEnabled(why_not_.empty());
  connect(stop, &QPushButton::clicked, this, [this] { player_.Stop(); });
  auto* last = new QHBoxLayout;
  last->addWidget(stop);
  last->addWidget(new QLabel(ToQString(why_not_)), 1);
  form->addRow(QString(), last);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
  connect(&context.document, &CTruckDocument::Changed, this, &CTruckSoundsPage::Refresh);
  Refresh();
}

/// What the reading of a truck file would make of it.
QString CTruckSoundsPage::Fault(size_t slot, const std::string& name) const {
  const auto& waves = context_.document.Truck().wave_files;
  if (name.empty()) return {};
  if (!EqualNoCase(ExtensionPart(name), "WAV")) return tr("The name must end in .WAV, or it is not read again.");
  for (size_t before = 0; before < slot; ++before)
    if (waves[before].empty()) return tr("The line before it is empty, so this one is not read again.");
  return {};
}

void CTruckSoundsPage::Refresh() {
  for (size_t slot = 0; slot < kTruckWaves; ++slot) {
    const std::string& name = context_.document.Truck().wave_files[slot];
    const bool is_there = context_.files != nullptr && !name.empty() &&
                          context_.files->Find(name, kTypeWav).place != SDependency::EPlace::kMissing;
    play_[slot]->setEnabled(is_there && why_not_.empty());
    play_[slot]->setToolTip(ToQString(why_not_));
  }
  for (CGameNameField* field : findChildren<CGameNameField*>())
    field->Refresh();
}

std::string CTruckSoundsPage::PlayableFile(const STruckFile& file, SError* error) {
  if (!file.source.bytes.length) return file.source.bytes.path;
  const auto bytes = ReadFilePart(file.source.bytes, error);
  const std::string copy = copies_.filePath("sound.wav").toStdString();
  return bytes && ReplaceFile(copy, bytes->View(), error) ? copy : "";
}

void CTruckSoundsPage::Play(size_t slot) {
  const STruckFile& file = context_.files->Find(context_.document.Truck().wave_files[slot], kTypeWav);
  SError error;
  const std::string path = PlayableFile(file, &error);
  if (!path.empty() && player_.Play(path, &error)) return;
  context_.questions.Message({.text = tr("The sound cannot be played.").toStdString(),
                              .caption = kErrorCaption,
                              .icon = EIcon::kError,
                              .details = error.what});
}

}  // namespace veldra
