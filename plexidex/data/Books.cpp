#include "Books.h"

#include "Contacts.h"
#include "Kt_util_01.h"
#include "Templates.h"

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

namespace {

// Inside a bracket nobody else can make another book meanwhile.
void Check_Name(std::string_view name, std::string_view own) {
  const auto same = Find_Book(name);
  if (same && same->Key != own)
    throw EData_Error("name", "KT_Books", "there is a book \"" + std::string(name) + "\" already");
}

}  // namespace

TBook Create_Book(std::string_view name) {
  Check_Name(name, {});
  TBook book{Kt_util_01::Get_GUID(), std::string(name), {}};
  TTable cursor(Books_Table);
  cursor.Insert();
  cursor.SetFields({book.Key, book.Name});
  PostUpdate(cursor);
  book.Calendar = Create_Contact(book.Key, name, {}, Contact_Type_Calendar);
  Add_First_Templates(book.Key);
  return book;
}

bool Rename_Book(std::string_view book, std::string_view name) {
  TTable books(Books_Table, "Key");
  if (!books.FindKey({book})) return false;
  Check_Name(name, book);
  books.Edit();
  books.Set(books.Field("BookName"), name);
  PostUpdate(books);
  Rename_Contact(Calendar_Of_Book(book), name);
  return true;
}

std::string Calendar_Of_Book(std::string_view book) {
  TTable cursor(Contacts_Table, "TypeBookandParent", {"Key"});
  if (!cursor.FindKey({Contact_Type_Calendar, book, ""})) return {};
  return std::string(cursor.Text(cursor.Field("Key")));
}

}  // namespace Kt_data_01
