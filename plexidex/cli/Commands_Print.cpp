// The command that prints.

#include <utility>

#include "Commands_Run.h"
#include "Console_Text.h"
#include "Contacts.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

bool Is_Word(const std::string& typed, std::string_view word) {
  return Kt_util_01::CompareText(typed, word) == 0;
}

TSheet_Kind Kind_Of(const std::string& view) {
  static constexpr std::pair<const char*, TSheet_Kind> kinds[] = {{"day", TSheet_Kind::Day},
                                                                  {"week", TSheet_Kind::Week},
                                                                  {"month", TSheet_Kind::Month},
                                                                  {"list", TSheet_Kind::List}};
  for (const auto& [name, kind] : kinds) {
    if (view == name) return kind;
  }
  throw ECommand_Error("--view: \"" + view + "\" is none of day, week, month and list.");
}

TPaper Paper_Of(const TPrint_Command& command) {
  TPaper paper;
  if (Is_Word(command.Paper, "A4")) {
    paper.Size = TPaper::TSize::A4;
  } else if (Is_Word(command.Paper, "Letter")) {
    paper.Size = TPaper::TSize::Letter;
  } else if (!command.Paper.empty()) {
    throw ECommand_Error("--paper: \"" + command.Paper + "\" is neither A4 nor Letter.");
  }
  if (command.Landscape) paper.Turn = TPaper::TTurn::Landscape;
  if (command.Portrait) paper.Turn = TPaper::TTurn::Portrait;
  return paper;
}

// The one contact of this name, in a book or in any.
TContact Known_Contact(const std::string& name, const std::vector<TBook>& books) {
  std::vector<TContact> found;
  for (const TBook& book : books) {
    for (TContact& contact : List_Contacts(book.Key, false)) {
      if (contact.Name == name) found.push_back(std::move(contact));
    }
  }
  if (found.empty()) throw ECommand_Error("There is no contact \"" + name + "\".");
  if (found.size() > 1) throw ECommand_Error("Several contacts are called \"" + name + "\".");
  return found.front();
}

void Set_Days(TSheet_Request& request, const TPrint_Command& command) {
  const auto day = [](const std::string& option, const std::string& typed) {
    return typed.empty() ? std::nullopt : std::optional(Day_From_Text(option, typed));
  };
  request.Date = day("--date", command.Date).value_or(Kt_util_01::Today());
  request.From = day("--from", command.From);
  request.To = day("--to", command.To);
  const bool list = request.Kind == TSheet_Kind::List;
  if (list && !command.Date.empty()) throw ECommand_Error("A list takes --from and --to instead of --date.");
  if (!list && (request.From || request.To))
    throw ECommand_Error("--from and --to belong to --view list; a " + command.View + " takes --date.");
  if (request.From && request.To && *request.To < *request.From) {
    throw ECommand_Error("The list would end on " + Kt_util_01::FormatDateTime("ddddd", *request.To) +
                         ", before it begins on " + Kt_util_01::FormatDateTime("ddddd", *request.From) + ".");
  }
}

void Set_Owner(TSheet_Request& request, const TPrint_Command& command) {
  std::vector<TBook> books = Visible_Books();
  if (!command.Book.empty()) books = {Known_Book(command.Book)};
  if (books.empty()) throw ECommand_Error("There are no books yet.");
  request.By_Book = command.Contact.empty();
  if (request.By_Book) {
    request.Owner = {books.front().Key, books.front().Calendar};
  } else {
    const TContact contact = Known_Contact(command.Contact, books);
    request.Owner = {contact.Book, contact.Key};
  }
}

}  // namespace

int Run_Print(const TConsole& console, const TPrint_Command& command, const TPdf_Writer& write_pdf) {
  TSheet_Request request;
  request.Kind = Kind_Of(command.View);
  const TPaper paper = Paper_Of(command);
  Set_Days(request, command);
  Set_Owner(request, command);
  if (!write_pdf) throw ECommand_Error("This program cannot print.");
  const TSheet sheet = Build_Sheet(request, console.Progress);
  const int pages = write_pdf(sheet, paper, command.Pdf, console.Progress);
  console.Out << Printable(command.Pdf) << ": " << Counted(pages, "page", "pages") << " written\n";
  return 0;
}

}  // namespace Plexidex
