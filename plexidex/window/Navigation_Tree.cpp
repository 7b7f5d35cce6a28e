#include "Navigation_Tree.h"

#include <QDropEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>
#include <map>

#include "Books.h"
#include "Contact_Drag.h"
#include "Contacts.h"
#include "Filter_Store.h"
#include "Folders.h"
#include "Image_List.h"
#include "Kt_forms.h"
#include "Kt_update.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

constexpr int Kind_Role = Qt::UserRole;
constexpr int Book_Role = Qt::UserRole + 1;
constexpr int Calendar_Role = Qt::UserRole + 2;
constexpr int Key_Role = Qt::UserRole + 3;   // of a contact or folder
constexpr int Read_Role = Qt::UserRole + 4;  // the contacts below have been read
constexpr int Shared_Role = Qt::UserRole + 5;

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
  setDragDropMode(DragDrop);
  constexpr int unfold_msecs = 700;
  setAutoExpandDelay(unfold_msecs);
  // However narrow the window is, these can be read.
  constexpr int depth = 3, step = 14, margins = 10;
  setIndentation(step);
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
  const TNode_Kind kind = Kind_Of(item);
  const std::string key = From_Qt(item->data(0, Key_Role).toString());
  const bool contact = kind == TNode_Kind::Contact,
             found = contact && Kind_Of(item->parent()) == TNode_Kind::Results;
  return {kind,
          From_Qt(book->data(0, Book_Role).toString()),
          From_Qt(book->text(0)),
          From_Qt(book->data(0, Calendar_Role).toString()),
          contact ? key : std::string(),
          contact                      ? From_Qt(item->parent()->data(0, Key_Role).toString())
          : kind == TNode_Kind::Filter ? std::string()
                                       : key,
          found,
          kind == TNode_Kind::Filter ? From_Qt(item->data(0, Key_Role).toString()) : std::string(),
          item->data(0, Shared_Role).toBool()};
}

TNode TNavigation_Tree::Current() const {
  return Node_Of(currentItem());
}

// Contacts are read when somebody looks: a book may have thousands.
void TNavigation_Tree::Add_Contacts(QTreeWidgetItem* contacts_node) {
  if (Kind_Of(contacts_node) != TNode_Kind::Contacts || contacts_node->data(0, Read_Role).toBool()) return;
  contacts_node->setData(0, Read_Role, true);
  Kt_data_01::Read("Navigation_Tree:Add_Contacts [KT_Contacts]", [&] {
    const std::string book = Node_Of(contacts_node).Book;
    std::map<std::string, QTreeWidgetItem*> folders;
    std::map<QTreeWidgetItem*, QList<QTreeWidgetItem*>> below;
    const QIcon icon = KTReminds::TImage_List("Contacts").Icon(0);
    for (const Kt_data_01::TFolder& folder : Kt_data_01::List_Folders(book)) {
      const auto parent = folders.find(folder.Parent);
      auto* item = Add_Node(parent == folders.end() ? contacts_node : parent->second, To_Qt(folder.Name),
                            TNode_Kind::Folder);
      item->setData(0, Key_Role, To_Qt(folder.Key));
      item->setIcon(0, icon);
      folders[folder.Key] = item;
    }
    for (const Kt_data_01::TContact& contact : Kt_data_01::List_Contacts(book, false)) {
      auto* item = new QTreeWidgetItem({To_Qt(contact.Name)});
      item->setData(0, Kind_Role, static_cast<int>(TNode_Kind::Contact));
      item->setData(0, Key_Role, To_Qt(contact.Key));
      const auto folder = folders.find(contact.Folder);
      below[folder == folders.end() ? contacts_node : folder->second].append(item);
    }
    for (const auto& [parent, items] : below) parent->addChildren(items);
    if (contacts_node->childCount() == 0)
      contacts_node->setChildIndicatorPolicy(QTreeWidgetItem::DontShowIndicator);
  });
}

// Directly below its contacts. No more than can be looked through; the page lists all.
void TNavigation_Tree::Add_Results(QTreeWidgetItem* book_node) {
  constexpr std::size_t most = 300;
  QTreeWidgetItem* node = Item_Of(TNode_Kind::Results, results_book);
  if (!node) {
    node = new QTreeWidgetItem({tr("Search Results")});
    node->setData(0, Kind_Role, static_cast<int>(TNode_Kind::Results));
    book_node->insertChild(Nodes_Of_A_Book().size(), node);
    node->setExpanded(true);
  }
  qDeleteAll(node->takeChildren());
  Kt_data_01::Read("Navigation_Tree:Add_Results [KT_Contacts]", [&] {
    const std::size_t shown = std::min(results.size(), most);
    for (std::size_t i = 0; i < shown; ++i) {
      const auto contact = Kt_data_01::Find_Contact(results[i]);
      if (contact && !contact->Deleted && Kt_data_01::Access_Allowed(results[i], Kt_data_01::Access_See))
        Add_Node(node, To_Qt(contact->Name), TNode_Kind::Contact)->setData(0, Key_Role, To_Qt(results[i]));
    }
    // Leads to the page too.
    if (results.size() > shown)
      Add_Node(node, tr("%1 more...").arg(QLocale().toString(qulonglong(results.size() - shown))),
               TNode_Kind::Results);
  });
}

// Those of the user, and then everybody's, each by name.
void TNavigation_Tree::Add_Filters(QTreeWidgetItem* book_node, const std::string& book) {
  QTreeWidgetItem* searches = nullptr;
  for (const bool shared : {false, true}) {
    for (const std::string& each : KTReminds::Filter_Names(book, shared)) {
      const QString name = To_Qt(each);
      if (!searches) searches = Add_Node(book_node, tr("Searches"), TNode_Kind::Searches);
      auto* item = Add_Node(searches, shared ? tr("%1 (shared)").arg(name) : name, TNode_Kind::Filter);
      item->setData(0, Key_Role, name);
      item->setData(0, Shared_Role, shared);
    }
  }
}

void TNavigation_Tree::Show_Results(const std::string& book, std::vector<std::string> contacts) {
  const QScopedValueRollback quiet(silent, true);
  if (book != results_book) Hide_Results();
  results_book = book;
  results = std::move(contacts);
  const TNode selected = Current();
  if (QTreeWidgetItem* book_node = Item_Of(TNode_Kind::Book, book)) Add_Results(book_node);
  if (QTreeWidgetItem* again = Find(selected)) setCurrentItem(again);
}

void TNavigation_Tree::Hide_Results() {
  const QScopedValueRollback quiet(silent, true);
  const QTreeWidgetItem* node = Item_Of(TNode_Kind::Results, results_book);
  const TNode selected = Current();
  if (selected.Kind == TNode_Kind::Results || selected.Found)
    setCurrentItem(Item_Of(TNode_Kind::Contacts, results_book));
  delete node;
  results_book.clear();
  results.clear();
}

QTreeWidgetItem* TNavigation_Tree::Find_Below(QTreeWidgetItem* item, TNode_Kind kind,
                                              const QString& key) const {
  for (int i = 0; i < item->childCount(); ++i) {
    QTreeWidgetItem* child = item->child(i);
    if (Kind_Of(child) == kind && child->data(0, Key_Role).toString() == key) return child;
    if (Kind_Of(child) != TNode_Kind::Folder) continue;
    if (QTreeWidgetItem* found = Find_Below(child, kind, key)) return found;
  }
  return nullptr;
}

QTreeWidgetItem* TNavigation_Tree::Item_Of(TNode_Kind kind, const std::string& book) const {
  return Find({kind, book, {}, {}, {}, {}});
}

QTreeWidgetItem* TNavigation_Tree::Find(const TNode& node) const {
  if (QTreeWidgetItem* found = node.Found ? Item_Of(TNode_Kind::Results, node.Book) : nullptr) {
    if (QTreeWidgetItem* contact = Find_Below(found, TNode_Kind::Contact, To_Qt(node.Contact)))
      return contact;
  }
  for (int b = 0; b < topLevelItemCount(); ++b) {
    QTreeWidgetItem* book = topLevelItem(b);
    if (From_Qt(book->data(0, Book_Role).toString()) != node.Book) continue;
    if (node.Kind == TNode_Kind::Book) return book;
    for (int i = 0; i < book->childCount(); ++i) {
      QTreeWidgetItem* child = book->child(i);
      if (Kind_Of(child) == node.Kind) return child;
      if (Kind_Of(child) == TNode_Kind::Searches && node.Kind == TNode_Kind::Filter) {
        for (int f = 0; f < child->childCount(); ++f) {
          if (Node_Of(child->child(f)).Filter == node.Filter &&
              Node_Of(child->child(f)).Shared == node.Shared)
            return child->child(f);
        }
      }
      if (Kind_Of(child) != TNode_Kind::Contacts) continue;
      if (node.Kind != TNode_Kind::Contact && node.Kind != TNode_Kind::Folder) continue;
      const_cast<TNavigation_Tree*>(this)->Add_Contacts(child);
      return Find_Below(child, node.Kind,
                        To_Qt(node.Kind == TNode_Kind::Contact ? node.Contact : node.Folder));
    }
  }
  return nullptr;
}

void TNavigation_Tree::Reload() {
  const QScopedValueRollback quiet(silent, true);
  const TNode selected = Current();
  QStringList folded, unfolded_contacts, unfolded_searches, unfolded_folders;
  for (int b = 0; b < topLevelItemCount(); ++b) {
    const QTreeWidgetItem* book = topLevelItem(b);
    if (!book->isExpanded()) folded << book->data(0, Book_Role).toString();
    for (int i = 0; i < book->childCount(); ++i) {
      if (!book->child(i)->isExpanded()) continue;
      if (Kind_Of(book->child(i)) == TNode_Kind::Contacts)
        unfolded_contacts << book->data(0, Book_Role).toString();
      if (Kind_Of(book->child(i)) == TNode_Kind::Searches)
        unfolded_searches << book->data(0, Book_Role).toString();
    }
  }
  for (QTreeWidgetItemIterator i(this, QTreeWidgetItemIterator::HasChildren); *i; ++i) {
    if (Kind_Of(*i) == TNode_Kind::Folder && (*i)->isExpanded())
      unfolded_folders << (*i)->data(0, Key_Role).toString();
  }
  const QTreeWidgetItem* results_node = Item_Of(TNode_Kind::Results, results_book);
  const bool results_folded = results_node && !results_node->isExpanded();
  const int scrolled = verticalScrollBar()->value();
  clear();
  was_read = Kt_data_01::Read("Navigation_Tree:Reload [KT_Books/KT_Contacts]", [&] {
    for (const Kt_data_01::TBook& book : Kt_data_01::Visible_Books()) {
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
      if (book.Key == results_book) {
        Add_Results(item);
        Item_Of(TNode_Kind::Results, results_book)->setExpanded(!results_folded);
      }
      Add_Filters(item, book.Key);
      if (QTreeWidgetItem* searches = Item_Of(TNode_Kind::Searches, book.Key))
        searches->setExpanded(unfolded_searches.contains(key));
      for (const QString& folder : unfolded_contacts.contains(key) ? unfolded_folders : QStringList()) {
        if (QTreeWidgetItem* found = Find_Below(contacts, TNode_Kind::Folder, folder))
          found->setExpanded(true);
      }
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

bool TNavigation_Tree::Select(TNode_Kind kind, const std::string& book, const std::string& key) {
  return Select_Item(Find({kind, book, {}, {}, key, key}));
}

bool TNavigation_Tree::Select_Found(const std::string& book, const std::string& contact) {
  return Select_Item(Find({TNode_Kind::Contact, book, {}, {}, contact, {}, true}));
}

bool TNavigation_Tree::Select_Item(QTreeWidgetItem* item) {
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

QMimeData* TNavigation_Tree::mimeData(const QList<QTreeWidgetItem*>& items) const {
  TDragged_Contacts dragged;
  for (const QTreeWidgetItem* item : items) {
    const TNode node = Node_Of(item);
    dragged.Book = node.Book;
    if (node.Kind == TNode_Kind::Contact || node.Kind == TNode_Kind::Folder)
      dragged.Keys.push_back(node.Kind == TNode_Kind::Contact ? node.Contact : node.Folder);
  }
  return To_Mime(dragged);
}

const QTreeWidgetItem* TNavigation_Tree::Target(const QDropEvent& event) const {
  const auto dragged = From_Mime(event.mimeData());
  const QTreeWidgetItem* item = itemAt(event.position().toPoint());
  if (item && Kind_Of(item) == TNode_Kind::Contact) item = item->parent();
  if (!dragged || !item || dragged->Book != Node_Of(item).Book) return nullptr;
  return Kind_Of(item) == TNode_Kind::Folder || Kind_Of(item) == TNode_Kind::Contacts ? item : nullptr;
}

void TNavigation_Tree::dragEnterEvent(QDragEnterEvent* event) {
  if (From_Mime(event->mimeData())) event->acceptProposedAction();
}

void TNavigation_Tree::dragMoveEvent(QDragMoveEvent* event) {
  // Scrolls, and unfolds what one stays over.
  QTreeWidget::dragMoveEvent(event);
  Target(*event) ? event->acceptProposedAction() : event->ignore();
}

void TNavigation_Tree::dropEvent(QDropEvent* event) {
  const QTreeWidgetItem* target = Target(*event);
  if (!target) return event->ignore();
  event->acceptProposedAction();
  stopAutoScroll();
  setState(NoState);
  const auto dragged = From_Mime(event->mimeData());
  QStringList keys;
  for (const std::string& key : dragged->Keys) keys << To_Qt(key);
  emit Dropped(To_Qt(dragged->Book), keys, target->data(0, Key_Role).toString());
}

}  // namespace Plexidex
