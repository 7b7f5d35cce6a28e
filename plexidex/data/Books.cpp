#include "Books.h"

#include "Database.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

std::vector<TBook> List_Books() {
  std::vector<TBook> books;
  TSnapshot snapshot;
  TTable cursor(Books_Table);
  const TField key = cursor.Field("Key"), name = cursor.Field("BookName");
  for (cursor.First(); !cursor.Eof(); cursor.Next()) {
    books.push_back({std::string(cursor.Text(key)), std::string(cursor.Text(name)), {}});
  }
  for (TBook& book : books) book.Calendar = Calendar_Of_Book(book.Key);
  return books;
}

std::optional<TBook> Find_Book(std::string_view name) {
  for (TBook& book : List_Books()) {
    if (book.Name == name) return std::move(book);
  }
  return {};
}

TBook Create_Book(std::string_view name) {
  TBook book{Kt_util_01::Get_GUID(), std::string(name), {}};
  TTable cursor(Books_Table);
  cursor.Insert();
  cursor.SetFields({book.Key, book.Name});
  PostUpdate(cursor);
  book.Calendar = Create_Contact(book.Key, name, {}, Contact_Type_Calendar);
  return book;
}

std::string Calendar_Of_Book(std::string_view book) {
  TTable cursor(Contacts_Table, "TypeBookandParent", {"Key"});
  if (!cursor.FindKey({Contact_Type_Calendar, book, ""})) return {};
  return std::string(cursor.Text(cursor.Field("Key")));
}

std::string Create_Contact(std::string_view book, std::string_view display_name, std::string_view parent,
                           int type) {
  const std::string key = Kt_util_01::Get_GUID();
  TTable cursor(Contacts_Table);
  cursor.Insert();
  cursor.SetFields({key, display_name, type, book, parent, "", Kt_util_01::User_Key(), false,
                    Kt_util_01::User_Key(), Kt_util_01::Now()});
  PostUpdate(cursor);
  return key;
}

bool Set_Contact_Deleted(std::string_view contact, bool deleted) {
  TTable cursor(Contacts_Table, "Key");
  if (!cursor.FindKey({contact})) return false;
  cursor.Edit();
  cursor.Set(cursor.Field("Deleted"), deleted);
  cursor.Set(cursor.Field("ModifiedBy"), Kt_util_01::User_Key());
  cursor.Set(cursor.Field("ModifiedAt"), Kt_util_01::Now());
  PostUpdate(cursor);
  return true;
}

std::string Create_User(std::string_view name, bool administrator) {
  const std::string key = Kt_util_01::Get_GUID();
  TTable cursor("KT_Users");
  cursor.Insert();
  cursor.SetFields({key, name, administrator});
  PostUpdate(cursor);
  return key;
}

void Set_Rights(std::string_view owner, std::string_view user, const TRights& rights) {
  TTable cursor("KT_Rights", "OwnerandUser");
  if (cursor.FindKey({owner, user})) {
    cursor.Edit();
  } else {
    cursor.Insert();
  }
  cursor.SetFields({owner, user, rights.Create, rights.Update, rights.Delete, rights.See});
  PostUpdate(cursor);
}

}  // namespace Kt_data_01
