#pragma once

// What the commands do once the command line is read and the database is open. Each returns the exit status.
// What the user got wrong is thrown as ECommand_Error before anything is changed.

#include <chrono>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "Books.h"
#include "Console_Prompts.h"
#include "Kt_lists.h"
#include "Paper.h"
#include "Sqlite_Engine.h"

namespace Plexidex {

/// One sentence for the user.
class ECommand_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

struct TConsole {
  std::ostream& Out;
  std::ostream& Err;
  const TConsole_Prompts& Prompts;
  Kt_data_01::TProgress_Bar* Progress;
};

/// Options as they were typed; empty ones were not given.
struct TImport_Command {
  std::vector<std::string> Files;
  std::string Book, Until, Limit, Country;
  bool Holidays = false, Verbose = false;
};
struct TAgenda_Command {
  std::string From, To, Days, Book, Format;
  bool Keys = false;
};
struct THolidays_Command {
  std::vector<std::string> Countries;
  std::string Year, Format;
};
struct TExport_Command {
  std::string File, Book, Vcard;
};
struct TContacts_Command {
  std::string Book, Format;
  std::vector<std::string> Words;
};
struct TSearch_Command {
  std::vector<std::string> Criteria;
  std::string Filter, Delete, Book, Format, Find, Folder;
  std::optional<std::string> Save;
  bool List = false, Shared = false, No_Subfolders = false, Keys = false;
};
struct TPrint_Command {
  std::string View, Date, From, To, Book, Contact, Pdf, Paper;
  bool Landscape = false, Portrait = false;
};

struct TUsers_Command {
  std::string Add, Remove, Heir, Rename, To, Password;
  bool Administrator = false;
};

class TPassword_Input;
/// Makes the user of this name the current one, or where none is named the owner of the database, unless it
/// asks for passwords. Waits no longer than `patience` when it is too early for another try, as while another
/// command of this user logs in. Throws ECommand_Error.
void Enter_Database(const std::string& name, const TPassword_Input& passwords, std::chrono::seconds patience);

int Run_Import(const TConsole& console, const TImport_Command& command);
int Run_Export(const TConsole& console, const TExport_Command& command);
int Run_Print(const TConsole& console, const TPrint_Command& command, const TPdf_Writer& write_pdf);
int Run_Agenda(const TConsole& console, const TAgenda_Command& command);
/// Those that the rules give; needs no database.
int Run_Holidays(const TConsole& console, const THolidays_Command& command);
/// `key` may also be the ending of exactly one occurrence's key.
int Run_Mark(const TConsole& console, const std::string& key, bool done);
/// Throws ECommand_Error when there is one of this name already; says nothing when the update is refused.
void Add_Book(const std::string& name);
/// Fills the first book, or writes to the file if one is named.
int Run_Sample(const TConsole& console, const std::string& file);
int Run_Books(const TConsole& console, bool with_keys);
int Run_Contacts(const TConsole& console, const TContacts_Command& command);
/// Searches, or saves, lists or deletes filters.
int Run_Search(const TConsole& console, const TSearch_Command& command);
/// Lists the users, after changing them.
int Run_Users(const TConsole& console, const TUsers_Command& command, const TPassword_Input& passwords);
int Run_Check(const TConsole& console);
/// Writes each reminder that is due, a line for each, and dismisses it; goes on until the program is ended,
/// or with `once` writes what is due now. 1 when the output could not be written, or nothing kept.
int Run_Remind(const TConsole& console, bool once);
/// Into a file or folder, by default the folder that was chosen for backups.
int Run_Backup(const TConsole& console, const std::string& place);
/// In place of a database that is open, or cannot be opened.
int Run_Restore(const TConsole& console, const std::string& file, const std::string& database,
                const Kt_data_01::TSqlite_Options& options);

/// The book of this name; throws ECommand_Error, naming the books that there are.
Kt_data_01::TBook Known_Book(const std::string& name);
/// Whether a --format is json; throws ECommand_Error for one that is neither text nor json.
bool Is_Json(const std::string& format);
/// A date as the user writes it, in ISO form, or "today", "tomorrow" or "yesterday". Throws ECommand_Error.
Kt_util_01::TDateTime Day_From_Text(const std::string& option, const std::string& text);

}  // namespace Plexidex
