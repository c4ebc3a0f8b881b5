#include "editing/mergedlg.h"

#include <new>

#include "model/geometry.h"
#include "platform/trace.h"

namespace veldra {

namespace {

constexpr int kPauseMs = 200;

class CStop : public CProgress {
 public:
  explicit CStop(const std::atomic<bool>& is_stopped) : is_stopped_(is_stopped) {}
  bool Step(uint64_t, uint64_t) override { return !is_stopped_; }

 private:
  const std::atomic<bool>& is_stopped_;
};

QLabel* MakeNote(const char* name) {
  auto* note = new QLabel;
  note->setObjectName(name);
  note->setTextFormat(Qt::PlainText);
  note->setWordWrap(true);
  return note;
}

}  // namespace

CMergeDialog::CMergeDialog(const CBinModel& model, const SMergeInput& last, QWidget* parent)
    : CFieldDialog("mergeCloseVertices", "Merge close Vertices", parent), counter_(model) {
  auto* form = new QFormLayout;
  threshold_ = AddNumber(form, "Merge Vertices up to", "threshold", SNumberRule::Integer(0), last.threshold,
                         CNumberField::EFaultPlace::kBelow);
  threshold_->SetSuffix("units apart.");
  StartWith(threshold_);
  Content()->addLayout(form);
  count_ = MakeNote("mergeCount");
  Content()->addWidget(count_);
  if (MergeDistancesWrap(model.Bounds())) {
    QLabel* note = MakeNote("distancesWrap");
    note->setText(QString::fromUtf8(kMergeDistancesWrapText));
    Content()->addWidget(note);
  }
  pause_.setSingleShot(true);
  pause_.setInterval(kPauseMs);
  connect(&pause_, &QTimer::timeout, this, &CMergeDialog::StartCounting);
  Refresh();
}

CMergeDialog::~CMergeDialog() {
  StopCounting();
}

SMergeInput CMergeDialog::Input() const {
  return {.threshold = static_cast<int32_t>(threshold_->Value().value_or(0.0))};
}

// --- Counting ------------------------------------------------------------------------------------------------------

QString CMergeDialog::Fault() {
  Expect(tr("Counting..."));
  pause_.start();
  return {};
}

QString CMergeDialog::FieldFault() {
  Expect({});
  return {};
}

/// No count that is under way is of what stands in the field now.
void CMergeDialog::Expect(const QString& text) {
  if (count_ == nullptr) return;
  is_stopped_ = true;
  ++number_;
  pause_.stop();
  count_->setText(text);
}

/// A large model takes seconds, in which the user goes on typing: the counting has a thread and a copy of the geometry.
void CMergeDialog::StartCounting() {
  StopCounting();
  is_stopped_ = false;
  thread_ = std::thread([this, threshold = Input().threshold, number = number_] {
    CStop stop(is_stopped_);
    try {
      const std::optional<SMergeCount> count = counter_.Count(threshold, &stop);
      if (count) QMetaObject::invokeMethod(this, [this, number, count] { ShowCount(number, *count); });
    } catch (const std::bad_alloc&) {
      Trace(">> CMergeDialog: not enough memory for counting\n");
    }
  });
}

void CMergeDialog::StopCounting() {
  is_stopped_ = true;
  if (thread_.joinable()) thread_.join();
}

void CMergeDialog::ShowCount(int number, const SMergeCount& count) {
  if (number != number_) return;
  const QString vertices =
      count.vertices == 1 ? tr("%L1 vertex goes").arg(1) : tr("%L1 vertices go").arg(count.vertices);
  const QString faces = count.faces == 1 ? tr("%L1 face vanishes").arg(1) : tr("%L1 faces vanish").arg(count.faces);
  count_->setText(tr("%1, %2.").arg(vertices, faces));
}

}  // namespace veldra
