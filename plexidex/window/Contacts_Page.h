#pragma once

#include "Page_Place.h"

class QCheckBox;
class QListWidget;
class QPushButton;

namespace Plexidex {

/// The contacts of a book, those that are kept or those that were deleted.
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
  void Set_Buttons();
  void Open();
  void Delete_Or_Restore();

  QListWidget* list;
  QCheckBox* deleted;
  QPushButton *add, *open, *remove;
};

/// Asks, and deletes a contact, which can be restored. True when it is done; a user without the right hears
/// the warning sound.
bool Delete_Contact(const std::string& contact);

}  // namespace Plexidex
