#pragma once

#include <QTreeWidget>
#include <string>
#include <vector>

namespace Plexidex {

enum class TNode_Kind { None, Book, Calendar, Tasks, Contacts, Folder, Contact, Results, Searches, Filter };

/// What a node stands for, by keys.
struct TNode {
  TNode_Kind Kind = TNode_Kind::None;
  std::string Book, Book_Name;
  std::string Calendar;  // the book's calendar record
  std::string Contact;
  std::string Folder;    // itself, or in which the contact lies; "" at the top
  bool Found = false;    // the contact is one of the results of a search
  std::string Filter{};  // a stored search
  bool Shared = false;   // it is everybody's

  bool operator==(const TNode&) const = default;
};

/// The books, each with its calendar, its tasks, its contacts in their folders, and its stored searches if it
/// has any. Contacts and folders can be dragged to another folder.
class TNavigation_Tree : public QTreeWidget {
  Q_OBJECT

 public:
  explicit TNavigation_Tree(QWidget* parent = nullptr);

  /// Reads books and contacts again and keeps what is selected and unfolded; without a selection the first
  /// book's calendar is selected. Tells of no change. After a failed read, which is reported, it is empty.
  void Reload();
  /// Whether the last Reload could read the books.
  bool Was_Read() const { return was_read; }
  TNode Current() const;
  /// Selects the node of this kind of a book, of this contact or folder if it is one, and tells so once, also
  /// when it was selected already; false when there is none.
  bool Select(TNode_Kind kind, const std::string& book, const std::string& contact_or_folder = {});
  /// Selects a contact among the results of the search, or else where it lies.
  bool Select_Found(const std::string& book, const std::string& contact);
  /// Shows what a search has found among the contacts of a book, by name, in place of another search: a node
  /// with the first hundreds of them. Tells of no change.
  void Show_Results(const std::string& book, std::vector<std::string> contacts);
  /// Takes the node away; when it, or one below it, was the current one, the book's contacts are. Tells of no
  /// change.
  void Hide_Results();

 signals:
  /// The user has chosen another node, or Select this one.
  void Node_Selected();
  /// The user has clicked on the node that was the current one already.
  void Node_Clicked_Again();
  /// By a click or Enter: what was selected is what the user wants to work with.
  void Node_Entered();
  /// Contacts and folders of a book were dropped on one of its folders, or on its contacts: "".
  void Dropped(const QString& book, const QStringList& keys, const QString& folder);

 protected:
  void mousePressEvent(QMouseEvent* event) override;
  QMimeData* mimeData(const QList<QTreeWidgetItem*>& items) const override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dropEvent(QDropEvent* event) override;

 private:
  static TNode Node_Of(const QTreeWidgetItem* item);
  QTreeWidgetItem* Find(const TNode& node) const;
  QTreeWidgetItem* Find_Below(QTreeWidgetItem* item, TNode_Kind kind, const QString& key) const;
  QTreeWidgetItem* Item_Of(TNode_Kind kind, const std::string& book) const;
  bool Select_Item(QTreeWidgetItem* item);
  void Add_Contacts(QTreeWidgetItem* contacts_node);
  void Add_Results(QTreeWidgetItem* book_node);
  void Add_Filters(QTreeWidgetItem* book_node, const std::string& book);
  /// The contacts or folder that a drop there would go to; null when it takes nothing.
  const QTreeWidgetItem* Target(const QDropEvent& event) const;

  bool silent = false, was_read = true;
  std::string results_book;  // "" without results
  std::vector<std::string> results;
};

}  // namespace Plexidex
