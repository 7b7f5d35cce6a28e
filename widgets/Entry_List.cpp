#include "Entry_List.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>

#include "Entry_Model.h"
#include "Kt_forms.h"
#include "Kt_update.h"
#include "Plain_Tip.h"

namespace KTReminds {

using Kt_data_01::TList_Item;

TEntry_List::TEntry_List(QWidget* parent)
    : QListView(parent), entries(new TEntry_Model(this)), painter(new TEntry_Painter(*entries, this)) {
  setModel(entries);
  setItemDelegate(painter);
  setUniformItemSizes(true);
  setSelectionMode(SingleSelection);
  setEditTriggers(NoEditTriggers);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
}

void TEntry_List::Set_Columns(const TEntry_Columns& columns) {
  painter->Set_Columns(columns);
  viewport()->update();
}

Kt_data_01::TItem_List& TEntry_List::Items() {
  return entries->Items();
}

TList_Item* TEntry_List::Selected() {
  return entries->Item_Of_Row(Selected_Row());
}

int TEntry_List::Selected_Row() const {
  const QModelIndexList selected = selectionModel()->selectedIndexes();
  // While the list is refilled, the selection still names a row that is gone.
  return !selected.isEmpty() && TEntry_Model::Item(selected.front()) ? selected.front().row() : -1;
}

int TEntry_List::Row_Of(std::string_view key) const {
  const Kt_data_01::TItem_List& items = entries->Items();
  for (std::size_t row = 0; row < items.Count(); ++row) {
    if (items[row].Data && items[row].Data->Key == key) return static_cast<int>(row);
  }
  return -1;
}

void TEntry_List::Select_Row(int row) {
  const QModelIndex index = entries->index(row);
  if (!index.isValid()) return clearSelection();
  setCurrentIndex(index);
  scrollTo(index);
}

int TEntry_List::Top_Row() const {
  return qMax(0, indexAt(QPoint(0, 0)).row());
}

void TEntry_List::Scroll_To_Top(int row) {
  scrollTo(entries->index(row), PositionAtTop);
}

QString TEntry_List::Tip_At(QPoint place) const {
  const TList_Item* item = TEntry_Model::Item(indexAt(place));
  if (!item || !item->Data) return {};
  if (painter->Columns().Tip_On_Text && place.x() >= item->Data->TextRight) return {};
  return Kt_data_01::Read("Entry_List:Tip_At [KT_Users]",
                          [item] { return Kt_forms::To_Qt(item->Data->Get_Tip(false)); })
      .value_or(QString());
}

std::optional<TEntry_Painter::TSpan> TEntry_List::Column_Span(int sort) const {
  return painter->Span_Of(sort, *this, viewport()->width());
}

QModelIndex TEntry_List::State_Image_At(QPoint place) const {
  const QModelIndex row = indexAt(place);
  return row.isValid() && painter->On_State_Image(visualRect(row), place) ? row : QModelIndex();
}

void TEntry_List::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) {
  QListView::selectionChanged(selected, deselected);
  emit Selection_Changed();
}

void TEntry_List::mousePressEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  pressed = event->button() == Qt::LeftButton ? State_Image_At(place) : QModelIndex();
  if (!indexAt(place).isValid()) clearSelection();
  QListView::mousePressEvent(event);
  emit Entered();
}

void TEntry_List::mouseReleaseEvent(QMouseEvent* event) {
  const QModelIndex row =
      event->button() == Qt::LeftButton ? State_Image_At(event->position().toPoint()) : QModelIndex();
  const bool clicked = row.isValid() && row == pressed;
  pressed = QModelIndex();
  QListView::mouseReleaseEvent(event);
  if (clicked) emit State_Clicked(row.row());
}

void TEntry_List::mouseDoubleClickEvent(QMouseEvent* event) {
  QListView::mouseDoubleClickEvent(event);
  pressed = QModelIndex();
  if (event->button() == Qt::LeftButton) emit Opened();
}

void TEntry_List::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit Opened();
      break;
    case Qt::Key_Insert:
      emit Insert_Pressed();
      break;
    case Qt::Key_Delete:
      emit Delete_Pressed();
      break;
    case Qt::Key_Space:
      if (const int row = Selected_Row(); row >= 0) emit State_Clicked(row);
      break;
    default:
      QListView::keyPressEvent(event);
  }
}

void TEntry_List::focusInEvent(QFocusEvent* event) {
  QListView::focusInEvent(event);
  const QPointer<TEntry_List> alive = this;
  const bool tabbed_into = event->reason() == Qt::TabFocusReason || event->reason() == Qt::BacktabFocusReason;
  if (tabbed_into && Selected_Row() < 0) Select_Row(0);
  if (!alive) return;
  // A window or menu that closes brings the keyboard back, not to another list.
  if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
    emit Entered();
}

void TEntry_List::contextMenuEvent(QContextMenuEvent* event) {
  QPoint place = event->pos();
  if (event->reason() == QContextMenuEvent::Keyboard) {
    const int row = Selected_Row();
    place = row < 0 ? viewport()->rect().center() : visualRect(entries->index(row)).center();
  }
  emit Menu_Asked(viewport()->mapToGlobal(place));
}

bool TEntry_List::viewportEvent(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QListView::viewportEvent(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  Show_Plain_Tip(*help, Tip_At(help->pos()), viewport(), visualRect(indexAt(help->pos())));
  return true;
}

void TEntry_List::paintEvent(QPaintEvent* event) {
  painter->Begin_Paint(*this);
  QListView::paintEvent(event);
}

void TEntry_List::resizeEvent(QResizeEvent* event) {
  QListView::resizeEvent(event);
  emit Resized();
}

}  // namespace KTReminds
