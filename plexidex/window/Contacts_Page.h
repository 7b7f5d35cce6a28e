#pragma once

#include "Contact_List.h"
#include "Page_Place.h"

class QAction;
class QCheckBox;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QTableView;

namespace Plexidex {

class TContact_Model;

/// Contacts of a book, sorted by a column and narrowed to what is typed. They are dragged from here to a
/// folder.
class TContact_List_Page : public TBook_Page {
  Q_OBJECT

 public:
  void Reload() override;
  /// Lets the user choose the folder for the selected contacts.
  void Move();

 signals:
  void Open_Contact(const QString& key);
  /// Contacts were deleted, restored or moved here.
  void Contacts_Changed();

 protected:
  TContact_List_Page();

  /// What is listed. May throw EData_Error.
  virtual std::vector<Kt_data_01::TContact_Row> Read_Rows() = 0;
  /// Reads the rows and keeps what is selected.
  void Show_Rows();
  void Add_Above(QLayout* added);
  void resizeEvent(QResizeEvent* event) override;

  QCheckBox* deleted;  // whether those listed are

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
  QPushButton *add, *open, *remove;
  QAction* tag = nullptr;
};

/// The contacts of a book or of one of its folders, those that are kept or those that were deleted.
class TContacts_Page : public TContact_List_Page {
  Q_OBJECT

 public:
  TContacts_Page();
  /// To be called before the page is read; "" shows the whole book.
  void Set_Folder(const std::string& key) { folder = key; }

 protected:
  std::vector<Kt_data_01::TContact_Row> Read_Rows() override;

 private:
  std::string folder;
};

/// Asks, and deletes contacts, which can be restored. True when it is done; a user without the right hears
/// the warning sound.
bool Delete_Contacts(const std::vector<std::string>& contacts);

}  // namespace Plexidex
