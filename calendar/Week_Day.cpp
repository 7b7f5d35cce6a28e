#include "Week_Day.h"

#include <QDrag>
#include <QDragEnterEvent>
#include <QMimeData>
#include <QPainter>

#include "Kt_forms.h"

namespace KTReminds {

namespace {

const auto Entry_Format = QStringLiteral("application/x-plexidex-entry");

std::string Dragged_Key(const QMimeData& data) {
  return data.data(Entry_Format).toStdString();
}

}  // namespace

TWeek_Header::TWeek_Header(QWidget* parent) : TTitle_Label(parent) {
  setAutoFillBackground(true);
  setBackgroundRole(QPalette::Button);
  setForegroundRole(QPalette::ButtonText);
  setContentsMargins(2, 2, 2, 3);
  setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void TWeek_Header::Show_Day(const QStringList& titles, bool today) {
  is_today = today;
  Set_Texts(titles);
  update();
}

void TWeek_Header::Set_Bold(bool bold) {
  QFont marked = font();
  marked.setBold(bold);
  setFont(marked);
}

void TWeek_Header::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit Clicked();
}

void TWeek_Header::mouseDoubleClickEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton) emit Double_Clicked();
}

void TWeek_Header::paintEvent(QPaintEvent* event) {
  TTitle_Label::paintEvent(event);
  constexpr int line = 2;
  if (is_today) QPainter(this).fillRect(0, height() - line, width(), line, palette().highlight());
}

TWeek_List::TWeek_List(QWidget* parent) : TEntry_List(parent) {
  setFrameShape(QFrame::NoFrame);
  setDragEnabled(true);
  setAcceptDrops(true);
}

void TWeek_List::startDrag(Qt::DropActions /*actions*/) {
  if (!May_Drag()) return;
  auto* data = new QMimeData;
  data->setData(Entry_Format, QByteArray::fromStdString(Selected()->Data->Key.Str()));
  auto* drag = new QDrag(this);
  drag->setMimeData(data);
  drag->setPixmap(viewport()->grab(visualRect(currentIndex())));
  // While it lasts, no page builds its rows anew.
  const Kt_forms::TModal_Scope scope;
  drag->exec(Qt::MoveAction);
}

void TWeek_List::dragEnterEvent(QDragEnterEvent* event) {
  const std::string key = Dragged_Key(*event->mimeData());
  Mark_As_Target(!key.empty() && May_Drop(key));
  event->setAccepted(is_target);
}

void TWeek_List::dragMoveEvent(QDragMoveEvent* event) {
  event->setDropAction(Qt::MoveAction);
  event->setAccepted(is_target);
}

void TWeek_List::dragLeaveEvent(QDragLeaveEvent* /*event*/) {
  Mark_As_Target(false);
}

void TWeek_List::dropEvent(QDropEvent* event) {
  const bool taken = is_target;
  Mark_As_Target(false);
  event->setDropAction(Qt::MoveAction);
  event->setAccepted(taken);
  if (taken) emit Dropped(Kt_forms::To_Qt(Dragged_Key(*event->mimeData())));
}

void TWeek_List::keyPressEvent(QKeyEvent* event) {
  if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Left) {
    emit Step_Asked(-1);
  } else if (event->modifiers() == Qt::NoModifier && event->key() == Qt::Key_Right) {
    emit Step_Asked(1);
  } else {
    TEntry_List::keyPressEvent(event);
  }
}

void TWeek_List::paintEvent(QPaintEvent* event) {
  TEntry_List::paintEvent(event);
  if (!is_target) return;
  constexpr int frame = 2;
  QPainter painter(viewport());
  painter.setPen(QPen(palette().highlight(), frame));
  painter.drawRect(viewport()->rect().adjusted(frame / 2, frame / 2, -frame / 2, -frame / 2));
}

void TWeek_List::Mark_As_Target(bool target) {
  is_target = target;
  viewport()->update();
}

}  // namespace KTReminds
