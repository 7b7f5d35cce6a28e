#pragma once

#include "Page_Place.h"

class QAction;
class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace Plexidex {

class TContact_Model;

/// The contacts of a book or of one of its folders, those that are kept or those that were deleted, sorted by
/// a column and narrowed to what is typed. They are dragged from here to a folder.
class TContacts_Page : public TBook_Page {
  Q_OBJECT

 public:
  TContacts_Page();
  /// To be called before the page is read; "" shows the whole book.
  void Set_Folder(const std::string& key) { folder = key; }
  void Reload() override;
  /// Lets the user choose the folder for the selected contacts.
  void Move();

 signals:
  void Open_Contact(const QString& key);
  /// Contacts were deleted, restored or moved here.
  void Contacts_Changed();

 protected:
  void resizeEvent(QResizeEvent* event) override;

 private:
  void Set_Up_List();
  void Add_Commands();
  /// The current one.
  QString Selected() const;
  /// All that are selected, in the order shown.
  std::vector<std::string> All_Selected() const;
  /// Selects the contact, or the row when it is not there.
  void Select(const QString& key, int row);
  /// Changes the rows and keeps what is selected.
  void Keep_Selected(const std::function<void()>& change);
  void Say_Count();
  void Set_Buttons();
  void Open();
  void Tag();
  void Delete_Or_Restore();

  TContact_Model* model;
  QTableView* list;
  QLineEdit* filter;
  QLabel* count;
  QCheckBox* deleted;
  QPushButton *add, *open, *remove;
  QAction* tag = nullptr;
  std::string folder;
};

/// Asks, and deletes contacts, which can be restored. True when it is done; a user without the right hears
/// the warning sound.
bool Delete_Contacts(const std::vector<std::string>& contacts);

}  // namespace Plexidex
