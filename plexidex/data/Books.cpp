#include "Books.h"

#include <algorithm>

#include "Contacts.h"
#include "Kt_util_01.h"
#include "Rights.h"
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

namespace {

std::optional<TBook> Named(std::string_view name, std::vector<TBook> books) {
  for (TBook& book : books) {
    if (book.Name == name) return std::move(book);
  }
  return {};
}

// Also of one contact alone: only the book leads to it.
bool May_See_Any_Of(const TBook& book) {
  if (Access_Allowed(book.Key, Access_See) || Access_Allowed(book.Calendar, Access_See)) return true;
  const auto owners = Owners_With_Rights(book.Key);
  return std::any_of(owners.begin(), owners.end(),
                     [](const std::string& one) { return Access_Allowed(one, Access_See); });
}

}  // namespace

std::vector<TBook> Visible_Books() {
  const TSnapshot snapshot;
  std::vector<TBook> books = List_Books();
  std::erase_if(books, [](const TBook& book) { return !May_See_Any_Of(book); });
  return books;
}

std::optional<TBook> Find_Book(std::string_view name) {
  return Named(name, List_Books());
}

std::optional<TBook> Find_Visible_Book(std::string_view name) {
  return Named(name, Visible_Books());
}

bool May_Delete_Book(const TBook& book) {
  const auto owners = Owners_With_Rights(book.Key);
  return Access_Allowed(book.Key, Access_Delete) && Access_Allowed(book.Calendar, Access_Delete) &&
         std::all_of(owners.begin(), owners.end(),
                     [](const std::string& one) { return Access_Allowed(one, Access_Delete); });
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
