#include "Navigation_Tree.h"

#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>

#include "Books.h"
#include "Contacts.h"
#include "Kt_forms.h"
#include "Kt_update.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

constexpr int Kind_Role = Qt::UserRole;
constexpr int Book_Role = Qt::UserRole + 1;
constexpr int Calendar_Role = Qt::UserRole + 2;
constexpr int Contact_Role = Qt::UserRole + 3;
constexpr int Read_Role = Qt::UserRole + 4;  // the contacts below have been read

// The contacts last.
QList<std::pair<TNode_Kind, QString>> Nodes_Of_A_Book() {
  return {{TNode_Kind::Calendar, TNavigation_Tree::tr("Calendar")},
          {TNode_Kind::Tasks, TNavigation_Tree::tr("Tasks")},
          {TNode_Kind::Contacts, TNavigation_Tree::tr("Contacts")}};
}

QTreeWidgetItem* Add_Node(QTreeWidgetItem* parent, const QString& text, TNode_Kind kind) {
  auto* item = new QTreeWidgetItem(parent, {text});
  item->setData(0, Kind_Role, static_cast<int>(kind));
  return item;
}

TNode_Kind Kind_Of(const QTreeWidgetItem* item) {
  return static_cast<TNode_Kind>(item->data(0, Kind_Role).toInt());
}

}  // namespace

TNavigation_Tree::TNavigation_Tree(QWidget* parent) : QTreeWidget(parent) {
  setObjectName(QStringLiteral("Books"));
  setHeaderHidden(true);
  setUniformRowHeights(true);
  setAccessibleName(tr("Books"));
  // However narrow the window is, these can be read.
  constexpr int depth = 2, margins = 10;
  int widest = 0;
  for (const auto& [kind, text] : Nodes_Of_A_Book())
    widest = qMax(widest, fontMetrics().horizontalAdvance(text));
  setMinimumWidth(depth * indentation() + widest + margins +
                  style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, this));
  connect(this, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* current) {
    if (!silent && current) emit Node_Selected();
  });
  connect(this, &QTreeWidget::itemClicked, this, &TNavigation_Tree::Node_Entered);
  connect(this, &QTreeWidget::itemActivated, this, &TNavigation_Tree::Node_Entered);
  connect(this, &QTreeWidget::itemExpanded, this, &TNavigation_Tree::Add_Contacts);
}

TNode TNavigation_Tree::Node_Of(const QTreeWidgetItem* item) {
  if (!item) return {};
  const QTreeWidgetItem* book = item;
  while (book->parent()) book = book->parent();
  return {Kind_Of(item), From_Qt(book->data(0, Book_Role).toString()), From_Qt(book->text(0)),
          From_Qt(book->data(0, Calendar_Role).toString()), From_Qt(item->data(0, Contact_Role).toString())};
}

TNode TNavigation_Tree::Current() const {
  return Node_Of(currentItem());
}

// Contacts are read when somebody looks: a book may have thousands.
void TNavigation_Tree::Add_Contacts(QTreeWidgetItem* contacts_node) {
  if (Kind_Of(contacts_node) != TNode_Kind::Contacts || contacts_node->data(0, Read_Role).toBool()) return;
  contacts_node->setData(0, Read_Role, true);
  Kt_data_01::Read("Navigation_Tree:Add_Contacts [KT_Contacts]", [&] {
    QList<QTreeWidgetItem*> items;
    for (const Kt_data_01::TContact& contact :
         Kt_data_01::List_Contacts(Node_Of(contacts_node).Book, false)) {
      auto* item = new QTreeWidgetItem({To_Qt(contact.Name)});
      item->setData(0, Kind_Role, static_cast<int>(TNode_Kind::Contact));
      item->setData(0, Contact_Role, To_Qt(contact.Key));
      items.append(item);
    }
    contacts_node->addChildren(items);
    if (items.isEmpty()) contacts_node->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
  });
}

QTreeWidgetItem* TNavigation_Tree::Find(const TNode& node) const {
  for (int b = 0; b < topLevelItemCount(); ++b) {
    QTreeWidgetItem* book = topLevelItem(b);
    if (From_Qt(book->data(0, Book_Role).toString()) != node.Book) continue;
    if (node.Kind == TNode_Kind::Book) return book;
    for (int i = 0; i < book->childCount(); ++i) {
      QTreeWidgetItem* child = book->child(i);
      if (Kind_Of(child) == node.Kind) return child;
      if (node.Kind != TNode_Kind::Contact || Kind_Of(child) != TNode_Kind::Contacts) continue;
      const_cast<TNavigation_Tree*>(this)->Add_Contacts(child);
      for (int c = 0; c < child->childCount(); ++c) {
        if (From_Qt(child->child(c)->data(0, Contact_Role).toString()) == node.Contact)
          return child->child(c);
      }
    }
  }
  return nullptr;
}

void TNavigation_Tree::Reload() {
  const QScopedValueRollback quiet(silent, true);
  const TNode selected = Current();
  QStringList folded, unfolded_contacts;
  for (int b = 0; b < topLevelItemCount(); ++b) {
    const QTreeWidgetItem* book = topLevelItem(b);
    if (!book->isExpanded()) folded << book->data(0, Book_Role).toString();
    for (int i = 0; i < book->childCount(); ++i) {
      if (Kind_Of(book->child(i)) == TNode_Kind::Contacts && book->child(i)->isExpanded())
        unfolded_contacts << book->data(0, Book_Role).toString();
    }
  }
  const int scrolled = verticalScrollBar()->value();
  clear();
  was_read = Kt_data_01::Read("Navigation_Tree:Reload [KT_Books/KT_Contacts]", [&] {
    for (const Kt_data_01::TBook& book : Kt_data_01::List_Books()) {
      auto* item = new QTreeWidgetItem(this, {To_Qt(book.Name)});
      item->setData(0, Kind_Role, static_cast<int>(TNode_Kind::Book));
      item->setData(0, Book_Role, To_Qt(book.Key));
      item->setData(0, Calendar_Role, To_Qt(book.Calendar));
      QTreeWidgetItem* contacts = nullptr;
      for (const auto& [kind, text] : Nodes_Of_A_Book()) contacts = Add_Node(item, text, kind);
      contacts->setChildIndicatorPolicy(QTreeWidgetItem::ShowIndicator);
      const QString key = To_Qt(book.Key);
      item->setExpanded(!folded.contains(key));
      contacts->setExpanded(unfolded_contacts.contains(key));
    }
  });
  if (QTreeWidgetItem* again = Find(selected)) {
    setCurrentItem(again);
    // It need not have been in sight.
    executeDelayedItemsLayout();
    verticalScrollBar()->setValue(scrolled);
  } else if (topLevelItemCount() > 0) {
    setCurrentItem(topLevelItem(0)->child(0));
  }
}

bool TNavigation_Tree::Select(TNode_Kind kind, const std::string& book, const std::string& contact) {
  QTreeWidgetItem* item = Find({kind, book, {}, {}, contact});
  if (item && item == currentItem()) {
    emit Node_Selected();
  } else if (item) {
    setCurrentItem(item);
  }
  return item != nullptr;
}

void TNavigation_Tree::mousePressEvent(QMouseEvent* event) {
  const QTreeWidgetItem* before = currentItem();
  const bool again =
      event->button() == Qt::LeftButton && before && itemAt(event->position().toPoint()) == before;
  QTreeWidget::mousePressEvent(event);
  if (again && currentItem() == before) emit Node_Clicked_Again();
}

}  // namespace Plexidex
