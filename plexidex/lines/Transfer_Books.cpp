#include "Transfer_Books.h"

#include "Import_Report.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

constexpr auto Default_Book = "My Calendar";

}  // namespace

TBook Import_Book(const std::string& name, TImported what) {
  TBook book{{}, Default_Book, {}};
  if (!name.empty()) {
    auto found = Find_Visible_Book(name);
    if (!found) throw EImport_Error("There is no book \"" + name + "\"; nothing was imported.");
    book = *std::move(found);
  } else if (auto books = Visible_Books(); !books.empty()) {
    book = std::move(books.front());
  }
  const bool contacts = what == TImported::Contacts;
  // Where it is to be made, that is what must be allowed.
  if (!Access_Allowed(contacts ? book.Key : book.Calendar, Access_Create)) {
    throw EImport_Error("You may not make " +
                        (book.Key.empty() ? std::string("a book")
                                          : std::string(contacts ? "contacts" : "entries") +
                                                " in the book \"" + book.Name + '"') +
                        "; nothing was imported.");
  }
  return book;
}

TBook Export_Book(const std::string& name) {
  if (!name.empty()) {
    if (auto book = Find_Visible_Book(name)) return *std::move(book);
    throw EExport_Error("There is no book \"" + name + "\" to export.");
  }
  const auto books = Visible_Books();
  if (books.empty()) throw EExport_Error("There is no book to export.");
  return books.front();
}

}  // namespace Plexidex
