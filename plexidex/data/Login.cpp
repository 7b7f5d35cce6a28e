#include "Login.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "Kt_update.h"
#include "UTC_Clock.h"
#include "Users.h"

namespace Kt_data_01 {

namespace {

constexpr const char* Unknown_Names = "Wrong Names";
constexpr std::int64_t Seconds_Of_A_Day = 86'400, Forgotten_After = Seconds_Of_A_Day;

// Independent of time zones and of the change of clocks.
std::int64_t Seconds_Now() {
  constexpr std::int64_t of_a_second = 1000;
  return Kt_util_01::To_Msecs(Kt_util_01::UTC_Now()) / of_a_second;
}

std::int64_t Wait_After(std::int64_t failures) {
  constexpr std::int64_t longest = 15LL * 60, most_doublings = 10;
  return failures < 1 ? 0 : std::min(longest, std::int64_t{1} << std::min(failures - 1, most_doublings));
}

// The wrong tries of a user, or, so that a name that nobody has is as slow as another, of all such names.
struct TTries {
  std::int64_t Failures = 0, At = 0;

  std::int64_t Seconds_Left() const {
    return std::max<std::int64_t>(0, At + Wait_After(Failures) - Seconds_Now());
  }
};

TTries Read_Tries(std::string_view user) {
  TTries tries;
  if (user.empty()) {
    const std::string stored = Stored_Setting(Unknown_Names);
    const char* const end = stored.data() + stored.size();
    const auto failures = std::from_chars(stored.data(), end, tries.Failures);
    if (failures.ptr != end) std::from_chars(failures.ptr + 1, end, tries.At);
    return tries;
  }
  TTable users("KT_Users", "Key");
  if (!users.FindKey({user})) return tries;
  return {users.Integer(users.Field("Failures")),
          std::llround(users.DateTime(users.Field("FailedAt")) * static_cast<double>(Seconds_Of_A_Day))};
}

void Write_Tries(std::string_view user, const TTries& tries) {
  if (user.empty())
    return Store_Setting(Unknown_Names, std::to_string(tries.Failures) + " " + std::to_string(tries.At));
  TTable users("KT_Users", "Key");
  if (!users.FindKey({user})) return;
  users.Edit();
  users.Set(users.Field("Failures"), tries.Failures);
  users.Set(users.Field("FailedAt"), static_cast<double>(tries.At) / static_cast<double>(Seconds_Of_A_Day));
  PostUpdate(users);
}

std::string Stored_Hash(std::string_view user) {
  TTable users("KT_Users", "Key");
  return users.FindKey({user}) ? std::string(users.Text(users.Field("Password"))) : std::string();
}

// A try is counted before the password is looked at, so that many at once gain nothing.
TLogin Count_Try(std::string_view user) {
  TLogin login;
  const auto counted = Update("Login:Count_Try [KT_Users/KT_Settings]", [&] {
    TTries tries = Read_Tries(user);
    // The clock has been set back: the waiting begins anew, and does not last until that time comes again.
    tries.At = std::min(tries.At, Seconds_Now());
    if (tries.At + Forgotten_After < Seconds_Now()) tries = {};
    login.Seconds = tries.Seconds_Left();
    if (login.Seconds == 0) tries = {tries.Failures + 1, Seconds_Now()};
    Write_Tries(user, tries);
    login.End = login.Seconds > 0 ? TLogin::TEnd::Too_Early : TLogin::TEnd::Wrong;
    if (login.Seconds == 0) login.Seconds = Wait_After(tries.Failures);
  });
  return counted ? login : TLogin{};
}

TLogin Try(const std::string& user, const TSecret& password) {
  const std::string hash = Stored_Hash(user);
  TLogin login = Count_Try(user);
  if (login.End != TLogin::TEnd::Wrong || !Is_Password(hash, password)) return login;
  const std::string better = Is_Outdated(hash) ? Hash_Password(password) : hash;
  bool still = false;
  const auto noted = Update("Login:Try [KT_Users]", [&] {
    still = Stored_Hash(user) == hash;
    if (still) Store_Password(user, better);
  });
  if (!noted) return {};
  return still ? TLogin{TLogin::TEnd::Done, 0} : login;
}

}  // namespace

TLogin Log_In(std::string_view name, const TSecret& password) {
  const std::string user = Find_Account(name).Key;
  const TLogin login = Try(user, password);
  if (login) Kt_util_01::Set_User_Key(user);
  return login;
}

TLogin Check_Password(const TSecret& password) {
  return Try(Kt_util_01::User_Key(), password);
}

std::string Login_Fault(const TLogin& login, const std::string& wrong) {
  constexpr std::int64_t of_a_minute = 60, told_in_seconds = 120;
  if (login) return {};
  if (login.End == TLogin::TEnd::Not_Counted)
    return "No password can be checked now, because the database cannot be changed: it counts wrong ones.";
  const bool in_seconds = login.Seconds < told_in_seconds;
  const std::int64_t count = in_seconds ? login.Seconds : (login.Seconds + of_a_minute - 1) / of_a_minute;
  const std::string wait =
      std::to_string(count) + (in_seconds ? " second" : " minute") + (count == 1 ? "" : "s");
  return (login.End == TLogin::TEnd::Wrong ? wrong + " Try again in "
                                           : "After wrong passwords, try again in ") +
         wait + ".";
}

bool Enter_As(std::string_view user) {
  Follow_Users();
  if (DB_Secure || Account_Of(user).Key.empty()) return false;
  Kt_util_01::Set_User_Key(std::string(user));
  return true;
}

bool Is_Known_User() {
  Follow_Users();
  return !DB_Permissions || !Account_Of(Kt_util_01::User_Key()).Key.empty();
}

}  // namespace Kt_data_01
