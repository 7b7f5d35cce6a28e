#include "Commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <chrono>
#include <functional>

#include "Commands_Run.h"
#include "Console_Text.h"
#include "Data_Folder.h"
#include "Database.h"
#include "Import_Budget.h"
#include "Kt_util_01.h"
#include "Password_Input.h"
#include "Sample_Calendar.h"
#include "Version.h"

namespace Plexidex {

namespace {

using Kt_data_01::TDatabase;

// Ends a message like a sentence.
std::string Sentence(std::string text) {
  text = Printable(text);
  if (!text.empty() && text.back() != '.' && text.back() != '?' && text.back() != '!') text += '.';
  return text;
}

// The command line: which commands there are, and what was typed.
class TCommand_Line {
 public:
  explicit TCommand_Line(const TPdf_Writer& write_pdf) : write_pdf(write_pdf) {
    app.require_subcommand(1);
    app.fallthrough();
    app.set_version_flag("--version", std::string("plexidex ") + Version(), "Says which version this is");
    app.add_option("--database", database, "The database file, by default one in your data folder")
        ->type_name("FILE");
    app.add_option("--wait", wait,
                   "How long to wait while another program is writing, by default 5, to bring files in 60")
        ->type_name("SECONDS");
    app.add_option("--user", user, "Who you are, in a database with users")->type_name("NAME");
    app.add_option("--password-fd", password_fd,
                   "The file descriptor to read passwords from, one a line, instead of the terminal")
        ->type_name("N");
    Add_Import();
    Add_Agenda();
    Add_Holidays();
    Add_Mark("done", true, "Marks an entry as done");
    Add_Mark("undone", false, "Marks an entry as not done");
    Add_Export();
    Add_Print();
    Add_Contacts();
    Add_Search();
    Add_Books();
    Add_Users();
    Add_Remind();
    Add("check", "Checks that the database is sound", Run_Check, TDatabase::TMode::Must_Exist);
    Add_Backup();
    Add_Sample();
  }

  /// False when there is nothing to run: help or the version was asked for, which goes to `out`. Throws
  /// ECommand_Error.
  bool Parse(std::vector<std::string> args, std::ostream& out) {
    std::reverse(args.begin(), args.end());
    try {
      app.parse(args);
      return true;
    } catch (const CLI::CallForHelp&) {
      out << app.help();
      return false;
    } catch (const CLI::CallForVersion& version) {
      out << version.what() << '\n';
      return false;
    } catch (const CLI::ParseError& error) {
      throw ECommand_Error(Describe(error));
    }
  }

  int Run(const TConsole& console) {
    const bool named = app.count("--database") > 0;
    if (named && database.empty()) throw ECommand_Error("--database names no file.");
    if (!new_book.empty()) mode = TDatabase::TMode::Create_If_Missing;
    if (!sample.empty() || app.got_subcommand("holidays")) return run(console);
    if (!named) database = Kt_data_01::Default_Database();
    const bool restores = app.got_subcommand("restore");
    try {
      Kt_data_01::Open_Database(database, named || restores ? mode : TDatabase::TMode::Create_If_Missing,
                                {.Busy_Time = Waiting_Time()});
    } catch (const Kt_data_01::EOpen_Error&) {
      // A backup may take the place of what cannot be opened.
      if (!restores) throw;
      return run(console);
    }
    Enter_Database(user, TPassword_Input(password_fd), Waiting_Time());
    return run(console);
  }

 private:
  using TRun = std::function<int(const TConsole&)>;

  CLI::App* Add(const std::string& name, const std::string& description, TRun action,
                TDatabase::TMode database_mode = TDatabase::TMode::Must_Exist) {
    CLI::App* command = app.add_subcommand(name, description);
    command->callback([this, action = std::move(action), database_mode] {
      run = action;
      mode = database_mode;
    });
    return command;
  }

  std::chrono::seconds Waiting_Time() const {
    constexpr std::int64_t usual = 5, of_import = 60, longest = 24LL * 60 * 60;
    std::int64_t seconds = mode == TDatabase::TMode::Create_If_Missing ? of_import : usual;
    if (app.count("--wait") > 0 &&
        (!Kt_util_01::Str2Int(wait, seconds) || seconds < 0 || seconds > longest)) {
      throw ECommand_Error("--wait: \"" + wait + "\" is not a number of seconds from 0 to " +
                           std::to_string(longest) + ".");
    }
    return std::chrono::seconds(seconds);
  }

  void Add_Import() {
    auto* command = Add(
        "import", "Imports iCalendar and vCard files, or holidays from the former",
        [this](const TConsole& c) { return Run_Import(c, import); }, TDatabase::TMode::Create_If_Missing);
    command->add_option("files", import.Files, "The files, one after the other")
        ->type_name("FILE.ics or FILE.vcf")
        ->required();
    auto* book = command->add_option("--book", import.Book,
                                     "The book that receives what is in them, by default the first");
    book->type_name("NAME");
    auto* until =
        command->add_option("--until", import.Until, "Where endless rules end, by default in ten years");
    until->type_name("DATE");
    command
        ->add_option(
            "--limit", import.Limit,
            "How many entries or contacts a file may bring, by default " + std::to_string(Default_Entries))
        ->type_name("N");
    auto* holidays =
        command->add_flag("--holidays", import.Holidays, "Takes the entries as holidays of a country");
    holidays->excludes(book);
    auto* country = command->add_option("--country", import.Country, "The country of the holidays");
    country->type_name("NAME")->needs(holidays);
    holidays->needs(country);
    command->add_flag("--verbose", import.Verbose, "Reports every remark, not only the first ones of a file");
  }

  void Add_Agenda() {
    auto* command = Add("agenda", "Shows the entries of a range of days",
                        [this](const TConsole& c) { return Run_Agenda(c, agenda); });
    command->add_option("--from", agenda.From, "The first day, by default today")->type_name("DATE");
    auto* to = command->add_option("--to", agenda.To, "The last day")->type_name("DATE");
    command->add_option("--days", agenda.Days, "How many days, by default 14")->type_name("N")->excludes(to);
    command->add_option("--book", agenda.Book, "Only the entries of this book")->type_name("NAME");
    command->add_option("--format", agenda.Format, "text or json, by default text")->type_name("FORMAT");
    command->add_flag("--keys", agenda.Keys, "Shows by which key ending an entry can be marked done");
  }

  void Add_Holidays() {
    auto* command = Add("holidays", "Lists the national holidays of a year",
                        [this](const TConsole& c) { return Run_Holidays(c, holidays); });
    command
        ->add_option("--country", holidays.Countries,
                     "A country by its code or English name, several if given again; by default those that "
                     "were chosen, or yours")
        ->type_name("CODE|NAME")
        ->allow_extra_args(false);
    command->add_option("--year", holidays.Year, "The year, by default this one")->type_name("YEAR");
    command->add_option("--format", holidays.Format, "text or json, by default text")->type_name("FORMAT");
  }

  void Add_Mark(const std::string& name, bool done, const std::string& description) {
    auto* command =
        Add(name, description, [this, done](const TConsole& c) { return Run_Mark(c, key, done); });
    command->add_option("key", key, "The key of the entry, or its ending")->type_name("KEY")->required();
  }

  void Add_Export() {
    auto* command = Add("export", "Writes a book as an iCalendar file, or its contacts as a vCard file",
                        [this](const TConsole& c) { return Run_Export(c, exported); });
    command->add_option("file", exported.File, "The file to write")
        ->type_name("FILE.ics or FILE.vcf")
        ->required();
    command
        ->add_option("--vcard", exported.Vcard,
                     "3 or 4, the version of all contacts; by default what was imported stays as it came")
        ->type_name("VERSION");
    command->add_option("--book", exported.Book, "The book to write, by default the first")
        ->type_name("NAME");
  }

  void Add_Print() {
    auto* command = Add("print", "Prints a day, week, month or list as a PDF file",
                        [this](const TConsole& c) { return Run_Print(c, print, write_pdf); });
    command->add_option("--view", print.View, "day, week, month or list")->type_name("VIEW")->required();
    command->add_option("--pdf", print.Pdf, "The file to write")->type_name("FILE.pdf")->required();
    command->add_option("--date", print.Date, "A day of what is printed, by default today")
        ->type_name("DATE");
    command->add_option("--from", print.From, "The first day of a list, by default its first entry")
        ->type_name("DATE");
    command->add_option("--to", print.To, "The last day of a list, by default its last entry")
        ->type_name("DATE");
    command->add_option("--book", print.Book, "The book to print, by default the first")->type_name("NAME");
    command->add_option("--contact", print.Contact, "Only the entries of this contact")->type_name("NAME");
    command->add_option("--paper", print.Paper, "A4 or Letter, by default as usual in your country")
        ->type_name("PAPER");
    auto* landscape = command->add_flag("--landscape", print.Landscape, "On its side, as a month by default");
    command->add_flag("--portrait", print.Portrait, "Upright, as all else by default")->excludes(landscape);
  }

  void Add_Contacts() {
    auto* command =
        Add("contacts", "Lists contacts", [this](const TConsole& c) { return Run_Contacts(c, contacts); });
    command
        ->add_option("words", contacts.Words, "Only those in whose name, number or e-mail all of these occur")
        ->type_name("WORD");
    command->add_option("--book", contacts.Book, "Only those of this book")->type_name("NAME");
    command->add_option("--format", contacts.Format, "text or json, by default text")->type_name("FORMAT");
  }

  void Add_Search() {
    auto* command = Add("search", "Finds contacts, entries or tasks by criteria or a saved filter",
                        [this](const TConsole& c) { return Run_Search(c, search); });
    auto* criteria = command->add_option(
        "criteria", search.Criteria,
        "Each in quotes, such as \"Contact Name -- Contains: Jonas\"; all must be met, after -- also those "
        "that begin with a hyphen");
    criteria->type_name("CRITERION");
    auto* filter = command->add_option("--filter", search.Filter,
                                       "Searches by a saved filter: your own, or a shared one");
    filter->type_name("NAME");
    auto* save = command->add_option("--save", search.Save, "Saves the search as a filter instead");
    auto* list = command->add_flag("--list", search.List, "Lists the filters with their criteria");
    auto* removed = command->add_option("--delete", search.Delete, "Deletes a filter");
    save->type_name("NAME");
    removed->type_name("NAME");
    command->add_flag("--shared", search.Shared, "Means the filters of all users alone, not your own");
    command->add_option("--book", search.Book, "Only this book, by default all; to save, the first")
        ->type_name("NAME");
    auto* find = command->add_option("--find", search.Find,
                                     "contacts, calendar or tasks, by default what is asked about");
    find->type_name("WHAT");
    auto* folder = command->add_option("--folder", search.Folder,
                                       "Only contacts of this folder, such as Family or Family/Cousins");
    folder->type_name("NAME");
    command->add_flag("--no-subfolders", search.No_Subfolders, "Without the folders in it")->needs(folder);
    command->add_option("--format", search.Format, "text or json, by default text")->type_name("FORMAT");
    auto* keys =
        command->add_flag("--keys", search.Keys, "Shows by which key ending an entry can be marked done");
    for (auto* other : {filter, folder, find, keys, save}) {
      list->excludes(other);
      removed->excludes(other);
    }
    removed->excludes(list);
    save->excludes(find)->excludes(keys);
  }

  void Add_Books() {
    auto* command = Add("books", "Lists the books", [this](const TConsole& c) {
      if (!new_book.empty()) Add_Book(new_book);
      if (c.Prompts.Failed()) return 1;
      return Run_Books(c, book_keys);
    });
    command->add_option("--add", new_book, "Makes a new book first")->type_name("NAME");
    command->add_flag("--verbose", book_keys, "Shows the keys of the books too");
  }

  void Add_Users() {
    auto* command =
        Add("users", "Lists the users of the database, after changing them",
            [this](const TConsole& c) { return Run_Users(c, users, TPassword_Input(password_fd)); });
    const auto option = [&](const char* name, std::string& value, const char* description) {
      return command->add_option(name, value, description)->type_name("NAME");
    };
    auto* add = option("--add", users.Add, "Adds a user; the first one owns what is there");
    command->add_flag("--administrator", users.Administrator, "Lets the new user set up users and security")
        ->needs(add);
    auto* remove = option("--remove", users.Remove, "Removes a user");
    auto* heir = option("--heir", users.Heir, "Who gets the entries and contacts of the removed user");
    auto* rename = option("--rename", users.Rename, "Gives a user another name");
    auto* to = option("--to", users.To, "The other name");
    auto* password = option("--password", users.Password, "Sets a user's password, which is asked for");
    remove->needs(heir);
    heir->needs(remove);
    rename->needs(to);
    to->needs(rename);
    for (auto* other : {remove, rename, password}) add->excludes(other);
    for (auto* other : {rename, password}) remove->excludes(other);
    rename->excludes(password);
  }

  void Add_Sample() {
    auto* command = Add(
        "sample", "Fills the first book with entries and contacts to try things out on",
        [this](const TConsole& console) { return Run_Sample(console, sample); },
        TDatabase::TMode::Create_If_Missing);
    command->add_option("--file", sample, "Writes the entries to a calendar file instead")
        ->type_name("FILE.ics");
  }

  void Add_Remind() {
    Add("remind", "Writes the reminders when they are due", [this](const TConsole& c) {
      return Run_Remind(c, remind_once);
    })->add_flag("--once", remind_once, "Writes those that are due now, and ends");
  }

  void Add_Backup() {
    auto* backup =
        Add("backup", "Copies the database into a dated file, also while other programs write to it",
            [this](const TConsole& c) { return Run_Backup(c, backup_file); });
    backup->add_option("place", backup_file, "A new file or a folder, by default the folder for backups")
        ->type_name("FILE|FOLDER");
    auto* restore = Add("restore", "Puts a backup in place of the database, and keeps what was there",
                        [this](const TConsole& c) {
                          return Run_Restore(c, backup_file, database, {.Busy_Time = Waiting_Time()});
                        });
    restore->add_option("file", backup_file, "The backup")->type_name("FILE")->required();
  }

  std::string Describe(const CLI::ParseError& error) const {
    const std::vector<std::string> unknown = app.remaining(true);
    if (!unknown.empty()) {
      const bool is_option = unknown.front().substr(0, 1) == "-";
      if (is_option || app.get_subcommands().empty()) {
        return std::string("There is no ") + (is_option ? "option" : "command") + " \"" + unknown.front() +
               "\"; --help names them all.";
      }
      const std::string name = app.get_subcommands().front()->get_name();
      return "The command " + name + " has no use for \"" + unknown.front() +
             (name == "search" ? "\"; each criterion stands in quotes." : "\".");
    }
    if (app.get_subcommands().empty()) return "No command was given; --help names them all.";
    const CLI::App* command = app.get_subcommands().front();
    for (const CLI::Option* option : command->get_options()) {
      if (!option->get_required() || option->count() > 0) continue;
      return "The command " + command->get_name() + " needs a " + option->get_type_name() + ".";
    }
    std::string message = error.what();
    if (error.get_name() != "ArgumentMismatch") return message;
    const std::string option = message.substr(0, message.find(':'));
    const CLI::Option* given = command->get_option_no_throw(option);
    if (!given) given = app.get_option_no_throw(option);
    return option + (given && given->count() > 1 ? " was given more than once." : " needs a value.");
  }

  CLI::App app{"Calendar, reminders and tasks", "plexidex"};
  std::string database, wait, user, password_fd, key, new_book, sample, backup_file;
  bool remind_once = false;
  TImport_Command import;
  TAgenda_Command agenda;
  THolidays_Command holidays;
  TExport_Command exported;
  TContacts_Command contacts;
  TSearch_Command search;
  TPrint_Command print;
  TUsers_Command users;
  const TPdf_Writer& write_pdf;
  bool book_keys = false;
  TDatabase::TMode mode = TDatabase::TMode::Must_Exist;
  TRun run;
};

struct TClose_At_End {
  ~TClose_At_End() { Kt_data_01::Close_Database(); }
};

}  // namespace

int Run_Program(const std::vector<std::string>& args, std::ostream& out, std::ostream& err,
                Kt_data_01::TProgress_Bar* progress, const TPdf_Writer& write_pdf) {
  TConsole_Prompts prompts(err);
  const TClose_At_End closing;
  try {
    Kt_util_01::CurrentDate = Kt_util_01::Today();
    TCommand_Line line(write_pdf);
    if (!line.Parse(args, out)) return 0;
    const int status = line.Run({out, err, prompts, progress});
    return prompts.Failed() ? 1 : status;
  } catch (const Kt_data_01::EData_Error& e) {
    err << Sentence("The data could not be read: " + e.Reason) << '\n';
    return 1;
  } catch (const std::exception& e) {
    err << Sentence(e.what()) << '\n';
    return 1;
  }
}

}  // namespace Plexidex
