#pragma once

#include "Page_Place.h"

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTableView;

namespace Plexidex {

class TContact_Model;

/// The contacts of a book, those that are kept or those that were deleted, sorted by a column and narrowed to
/// what is typed.
class TContacts_Page : public TBook_Page {
  Q_OBJECT

 public:
  TContacts_Page();
  void Reload() override;

 signals:
  void Open_Contact(const QString& key);
  /// Contacts were deleted or restored here.
  void Contacts_Changed();

 private:
  QString Selected() const;
  /// Selects the contact, or the row when it is not there.
  void Select(const QString& key, int row);
  /// Changes the rows and keeps what is selected.
  void Keep_Selected(const std::function<void()>& change);
  void Say_Count();
  void Set_Buttons();
  void Open();
  void Delete_Or_Restore();

  TContact_Model* model;
  QTableView* list;
  QLineEdit* filter;
  QLabel* count;
  QCheckBox* deleted;
  QPushButton *add, *open, *remove;
};

/// Asks, and deletes a contact, which can be restored. True when it is done; a user without the right hears
/// the warning sound.
bool Delete_Contact(const std::string& contact);

}  // namespace Plexidex
