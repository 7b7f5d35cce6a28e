// Who uses the database, and the command about its users.

#include <algorithm>
#include <thread>

#include "Commands_Run.h"
#include "Console_Text.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Login.h"
#include "Password_Input.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

TAccount Known_User(const std::string& name) {
  TAccount account = Find_Account(name);
  if (!account.Key.empty()) return account;
  std::string known;
  for (const TAccount& one : List_Accounts()) known += (known.empty() ? "" : ", ") + ('"' + one.Name + '"');
  throw ECommand_Error("There is no user \"" + name + "\"; " +
                       (known.empty() ? "the database has no users." : "the users are " + known + "."));
}

template <class TChange>
bool Change_Users(TChange change) {
  std::string fault;
  const auto changed =
      Update("Commands:Change_Users [KT_Users/KT_Rights/KT_Settings]", [&] { fault = change(); });
  if (!fault.empty()) throw ECommand_Error(fault);
  return static_cast<bool>(changed);
}

bool Change(const TUsers_Command& command, const TPassword_Input& passwords) {
  if (!command.Add.empty()) {
    std::string key;
    return Change_Users([&] { return Add_User(command.Add, command.Administrator, key); });
  }
  if (!command.Remove.empty()) {
    const TAccount user = Known_User(command.Remove), heir = Known_User(command.Heir);
    return Change_Users([&] { return Remove_User(user.Key, heir.Key); });
  }
  if (!command.Rename.empty()) {
    const TAccount user = Known_User(command.Rename);
    return Change_Users([&] { return Rename_User(user.Key, command.To); });
  }
  if (!command.Password.empty()) {
    const TAccount user = Known_User(command.Password);
    const std::string hash = Hash_Password(passwords.Read_New(user.Name));
    return Change_Users([&] { return Set_Password(user.Key, hash); });
  }
  return true;
}

}  // namespace

void Enter_Database(const std::string& name, const TPassword_Input& passwords,
                    std::chrono::seconds patience) {
  if (!DB_Permissions && name.empty()) return;
  if (!DB_Secure) {
    if (!Enter_As(name.empty() ? Database_Owner() : Known_User(name).Key))
      throw ECommand_Error("Name the user you are with --user NAME.");
    return;
  }
  if (name.empty()) {
    throw ECommand_Error(
        "The database asks for a name and a password: name yourself with --user NAME; the password is asked "
        "for "
        "on the terminal, or read from --password-fd N.");
  }
  const TSecret password = passwords.Read("Password of " + Printable(name) + ": ");
  TLogin login = Log_In(name, password);
  while (login.End == TLogin::TEnd::Too_Early && login.Seconds <= patience.count()) {
    const std::chrono::seconds wait(login.Seconds);
    std::this_thread::sleep_for(wait);
    patience -= wait;
    login = Log_In(name, password);
  }
  if (!login) throw ECommand_Error(Login_Fault(login, "The name or the password is wrong."));
}

int Run_Users(const TConsole& console, const TUsers_Command& command, const TPassword_Input& passwords) {
  if (!Change(command, passwords)) return 1;
  const auto accounts = List_Accounts();
  if (accounts.empty()) console.Out << "There are no users: whoever opens the database may do everything.\n";
  int width = 0;
  for (const TAccount& one : accounts)
    width = std::max(width, Kt_util_01::Display_Width(Printable(one.Name)));
  for (const TAccount& one : accounts) {
    console.Out << Padded(Printable(one.Name), width) << "  "
                << (one.Administrator ? "administrator" : "user")
                << (one.Has_Password ? "" : ", without a password") << '\n';
  }
  return 0;
}

}  // namespace Plexidex
