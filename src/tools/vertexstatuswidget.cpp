#include "tools/vertexstatuswidget.h"

#include <QFormLayout>
#include <QKeyEvent>
#include <QVBoxLayout>
#include <algorithm>

#include "editing/vertexcommands.h"

namespace veldra {

namespace {

/// One vertex can be a corner of every face: the list is to look at, not to hold a model.
constexpr size_t kMostListed = 200;

/// A tool window is narrower than what can be wrong with a number.
void LetFaultWrap(CNumberField& field) {
  auto* fault = field.findChild<CFaultLabel*>();
  fault->setWordWrap(true);
  fault->setMinimumWidth(0);
}

}  // namespace

CVertexStatusWidget::CVertexStatusWidget()
    : CToolWidget("vertexStatusTool"), content_(MakeContent()), title_(LayOut(content_, 1)) {
  Refresh({});
}

QWidget* CVertexStatusWidget::MakeContent() {
  auto* content = new QWidget;
  auto* form = new QFormLayout;
  const std::array names = {"x", "y", "z"};
  for (size_t i = 0; i < names.size(); ++i) {
    fields_[i] = new CNumberField(SNumberRule::Integer(), CNumberField::EFaultPlace::kBelow);
    fields_[i]->setObjectName(names[i]);
    form->addRow(QStringLiteral("&%1:").arg(QString(names[i]).toUpper()), fields_[i]);
    connect(fields_[i]->Edit(), &QLineEdit::returnPressed, this, &CVertexStatusWidget::Apply);
    fields_[i]->Edit()->installEventFilter(this);
    LetFaultWrap(*fields_[i]);
  }
  users_ = new QLabel;
  users_->setObjectName("users");
  list_ = new QListView;
  list_->setObjectName("faces");
  list_->setModel(&rows_);
  list_->setUniformItemSizes(true);
  list_->setEditTriggers(QAbstractItemView::NoEditTriggers);
  list_->setToolTip(tr("A click makes the face the current one."));
  connect(list_, &QListView::clicked, this, [this](const QModelIndex& index) {
    const int32_t face = faces_[static_cast<size_t>(index.row())];
    if (Cursor() != nullptr && face < Cursor()->Model().FaceCount()) Cursor()->SetFace(face);
  });
  auto* layout = new QVBoxLayout(content);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addLayout(form);
  layout->addWidget(users_);
  layout->addWidget(list_, 1);
  return content;
}

void CVertexStatusWidget::Refresh(const SNews& news) {
  const CBinVertex* vertex = Cursor() == nullptr ? nullptr : Cursor()->VertexObject();
  content_->setVisible(vertex != nullptr);
  if (vertex == nullptr) {
    shown_ = -1;
    title_->setText(WhyNothing(tr("There is no current vertex. A click on one in the 3D view makes it so.")));
    return;
  }
  title_->setText(tr("<b>Vertex %1</b> of %L2").arg(vertex->Index()).arg(vertex->Owner().VertexCount()) +
                  (vertex->IsSelected() ? tr(", selected") : QString()));
  const bool is_other = news.view || vertex->Index() != shown_;
  shown_ = vertex->Index();
  if (is_other) position_.reset();
  // What is being typed stays while the vertex does.
  if (position_ != vertex->Position()) ShowPosition(*vertex);
  if (is_other || news.model.topology) ShowFaces(*vertex);
  for (CNumberField* field : fields_)
    field->Edit()->setReadOnly(!CanEditVertex(*Cursor()));
}

void CVertexStatusWidget::ShowPosition(const CBinVertex& vertex) {
  position_ = vertex.Position();
  ResetFields();
}

void CVertexStatusWidget::ResetFields() {
  if (!position_) return;
  fields_[0]->SetValue(position_->x);
  fields_[1]->SetValue(position_->y);
  fields_[2]->SetValue(position_->z);
}

void CVertexStatusWidget::ShowFaces(const CBinVertex& vertex) {
  const CFaceSet& users = vertex.Faces();
  std::vector<int32_t> faces;
  for (const CBinFace* face : users)
    faces.push_back(face->Index());
  const auto listed = static_cast<std::ptrdiff_t>(std::min(faces.size(), kMostListed));
  std::partial_sort(faces.begin(), faces.begin() + listed, faces.end());
  faces.resize(static_cast<size_t>(listed));
  faces_ = std::move(faces);
  QStringList texts;
  for (const int32_t face : faces_)
    texts.append(tr("Face %1").arg(face));
  rows_.setStringList(texts);
  const int32_t count = users.Size();
  QString text =
      count == 0 ? tr("No face uses it") : tr("Used by %L1 %2:").arg(count).arg(count == 1 ? tr("face") : tr("faces"));
  if (static_cast<size_t>(count) > kMostListed) text += tr(" the first %1").arg(kMostListed);
  users_->setText(text);
  list_->setVisible(count > 0);
}

void CVertexStatusWidget::Apply() {
  if (Cursor() == nullptr || !CanEditVertex(*Cursor()) || Cursor()->Vertex() != shown_) return;
  if (!std::all_of(fields_.begin(), fields_.end(), [](const CNumberField* field) { return field->IsValid(); })) return;
  const auto value = [this](size_t axis) { return static_cast<int32_t>(*fields_[axis]->Value()); };
  const SPoint position = {value(0), value(1), value(2)};
  if (position == Cursor()->VertexObject()->Position()) return;
  position_ = position;
  SetVertexCoordinates(*Cursor(), position);
}

bool CVertexStatusWidget::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
    ResetFields();
    return true;
  }
  return CToolWidget::eventFilter(watched, event);
}

}  // namespace veldra
