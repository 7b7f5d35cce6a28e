#include "Quick_Field.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLocale>
#include <QTimer>
#include <QTreeWidget>
#include <algorithm>

#include "Books.h"
#include "Kt_forms.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Plain_Tip.h"

namespace Plexidex {

using namespace Kt_forms;
using KTReminds::TQuick_Search;

namespace {

enum TColumn { Title_Column, Date_Column, Book_Column, Columns };
enum TRole { Group_Role = Qt::UserRole, Key_Role, Owner_Role, Book_Role };  // no key: shows all

QString Name_Of(TQuick_Search::TGroup group) {
  switch (group) {
    case TQuick_Search::Events:
      return TQuick_Field::tr("Events");
    case TQuick_Search::Tasks:
      return TQuick_Field::tr("Tasks");
    default:
      return TQuick_Field::tr("Contacts");
  }
}

}  // namespace

TQuick_Field::TQuick_Field() : slices(new QTimer(this)) {
  setObjectName(QStringLiteral("Quick_Search"));
  setPlaceholderText(tr("Search"));
  setAccessibleName(tr("Search"));
  setClearButtonEnabled(true);
  setStatusTip(tr("Finds titles of events and tasks, and names and notes of contacts, as you type"));
  // By Ctrl+F and a click: no page gives it the keyboard by closing.
  setFocusPolicy(Qt::ClickFocus);
  constexpr int wide = 30;
  setFixedWidth(fontMetrics().averageCharWidth() * wide);
  connect(slices, &QTimer::timeout, this, &TQuick_Field::Go_On);
  connect(this, &QLineEdit::textChanged, this, &TQuick_Field::Look);
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget* old, const QWidget* now) {
    if (now == this && old && old != this && old->window() == window()) before = old;
  });
}

void TQuick_Field::Make_List() {
  if (list) return;
  list = new QTreeWidget(window());
  list->hide();
  list->setObjectName(QStringLiteral("Quick_Results"));
  list->setAccessibleName(tr("Search results"));
  list->setFocusPolicy(Qt::NoFocus);
  list->setColumnCount(Columns);
  list->setHeaderHidden(true);
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list->header()->setStretchLastSection(false);
  list->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(Title_Column, QHeaderView::Stretch);
  connect(list, &QTreeWidget::itemClicked, this, &TQuick_Field::Choose);
  window()->installEventFilter(this);
}

void TQuick_Field::Look() {
  if (!hasFocus()) return Close_List();
  search.Look_For(From_Qt(text()));
  slices->start(0);
  // So that what was found before is not shown for a moment, nor nothing.
  if (list) list->clear();
  Go_On();
}

void TQuick_Field::Go_On() {
  const auto step = [this] {
    if (books.empty()) {
      for (const Kt_data_01::TBook& book : Kt_data_01::List_Books()) books[book.Key] = To_Qt(book.Name);
    }
    return search.Step();
  };
  goes_on = Kt_data_01::Read("Quick_Field:Go_On [KT_Events/KT_Events_Data/KT_Contacts/KT_Books]", step)
                .value_or(false);
  if (!goes_on) slices->stop();
  if (hasFocus()) Show_Found();
}

void TQuick_Field::Show_Found() {
  if (text().trimmed().isEmpty()) {
    if (list) list->hide();
    return;
  }
  Make_List();
  const QString current = list->currentItem() ? list->currentItem()->data(0, Key_Role).toString() : QString();
  list->clear();
  for (const auto group : {TQuick_Search::Events, TQuick_Search::Tasks, TQuick_Search::Contacts})
    Add_Group(group);
  if (list->topLevelItemCount() == 0) Add_Line(goes_on ? tr("Searching...") : tr("Nothing found"), false);
  for (int i = 0; !current.isEmpty() && i < list->topLevelItemCount(); ++i) {
    if (list->topLevelItem(i)->data(0, Key_Role).toString() == current)
      list->setCurrentItem(list->topLevelItem(i));
  }
  Place_List();
  list->show();
  list->raise();
}

QTreeWidgetItem* TQuick_Field::Add_Line(const QString& text, bool choosable) {
  auto* item = new QTreeWidgetItem(list, {text});
  item->setFlags(choosable ? Qt::ItemIsEnabled | Qt::ItemIsSelectable : Qt::ItemIsEnabled);
  item->setFirstColumnSpanned(!choosable);
  return item;
}

void TQuick_Field::Add_Group(TQuick_Search::TGroup group) {
  const auto& found = search.Found(group);
  if (found.Rows.empty()) return;
  QTreeWidgetItem* heading = Add_Line(Name_Of(group), false);
  QFont bold = list->font();
  bold.setBold(true);
  heading->setFont(0, bold);
  const auto add = [&](const QString& text, const TQuick_Search::TRow& row) {
    QTreeWidgetItem* item = Add_Line(text, true);
    item->setToolTip(0, KTReminds::As_Plain_Tip(text));
    item->setText(Book_Column, books[row.Book]);
    item->setData(0, Group_Role, group);
    item->setData(0, Book_Role, To_Qt(row.Book));
    return item;
  };
  for (const TQuick_Search::TRow& row : found.Rows) {
    QTreeWidgetItem* item = add(To_Qt(row.Title), row);
    if (group != TQuick_Search::Contacts)
      item->setText(Date_Column,
                    To_Qt(Kt_util_01::FormatDateTime(row.Timeless ? "ddddd" : "ddddd t", row.Date)));
    item->setData(0, Key_Role, To_Qt(row.Key));
    item->setData(0, Owner_Role, To_Qt(row.Owner));
  }
  if (const std::size_t more = found.Count - std::min(found.Count, found.Rows.size()); more > 0)
    add((found.Is_Least ? tr("At least %1 more...") : tr("%1 more..."))
            .arg(QLocale().toString(qulonglong(more))),
        found.Rows.front());
}

// Below the field, as high as its lines, and inside the window.
void TQuick_Field::Place_List() {
  constexpr int wide = 75, margin = 4;
  const QWidget* around = window();
  const QPoint below = mapTo(around, QPoint(width(), height()));
  const int lines = list->topLevelItemCount() * list->sizeHintForRow(0) + 2 * list->frameWidth();
  const int left = std::max(margin, below.x() - list->fontMetrics().averageCharWidth() * wide);
  list->setGeometry(left, below.y(), below.x() - left,
                    std::min(lines, around->height() - below.y() - margin));
}

void TQuick_Field::Close_List() {
  slices->stop();
  if (list) list->hide();
}

void TQuick_Field::Move(int by) {
  if (!list || !list->isVisible()) return Look();
  const int count = list->topLevelItemCount();
  for (int row = list->indexOfTopLevelItem(list->currentItem()) + by; row >= 0 && row < count; row += by) {
    if (!(list->topLevelItem(row)->flags() & Qt::ItemIsSelectable)) continue;
    return list->setCurrentItem(list->topLevelItem(row));
  }
}

void TQuick_Field::Choose(const QTreeWidgetItem* item) {
  if (!item || !(item->flags() & Qt::ItemIsSelectable)) return;
  const int group = item->data(0, Group_Role).toInt();
  const QString key = item->data(0, Key_Role).toString(), owner = item->data(0, Owner_Role).toString(),
                book = item->data(0, Book_Role).toString();
  Close_List();
  if (key.isEmpty()) {
    emit Show_All(group, text().trimmed(), book);
  } else if (group == TQuick_Search::Contacts) {
    emit Open_Contact(key, book);
  } else {
    emit Open_Entry(group == TQuick_Search::Tasks, key, owner, book);
  }
}

void TQuick_Field::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Down:
      return Move(1);
    case Qt::Key_Up:
      return Move(-1);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      // What can be chosen without looking is what stands first.
      if (list && list->isVisible() && !list->currentItem()) Move(1);
      if (list && list->isVisible()) Choose(list->currentItem());
      return;
    case Qt::Key_Escape:
      clear();
      Close_List();
      if (before) before->setFocus(Qt::ShortcutFocusReason);
      return;
    default:
      QLineEdit::keyPressEvent(event);
  }
}

void TQuick_Field::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  books.clear();
  // Also without a text: all is read that will be searched.
  Look();
}

void TQuick_Field::focusOutEvent(QFocusEvent* event) {
  QLineEdit::focusOutEvent(event);
  Close_List();
}

void TQuick_Field::hideEvent(QHideEvent* event) {
  QLineEdit::hideEvent(event);
  Close_List();
}

bool TQuick_Field::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize && list && list->isVisible()) Place_List();
  return QLineEdit::eventFilter(watched, event);
}

}  // namespace Plexidex
