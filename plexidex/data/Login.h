#pragma once

// How a user of a database with users becomes the current one. All of it throws EData_Error.

#include <cstdint>
#include <string>
#include <string_view>

#include "Passwords.h"

namespace Kt_data_01 {

/// How a try to log in ended. Wrong: the name or the password, which of them is not told. Too_Early: an
/// earlier try was wrong, and this one was not looked at. Not_Counted: the database could not be changed, so
/// that no try is possible; the host has said why.
struct TLogin {
  enum class TEnd { Done, Wrong, Too_Early, Not_Counted };
  TEnd End = TEnd::Not_Counted;
  std::int64_t Seconds = 0;  // until the next try

  explicit operator bool() const { return End == TEnd::Done; }
};

/// Makes a user with the right password the current one. Each wrong password doubles the time until the next
/// try, up to a quarter of an hour, for all programs; after a day they are forgotten. Takes most of a second,
/// whatever is wrong.
TLogin Log_In(std::string_view name, const TSecret& password);
/// The same for the password of the current user, who stays it.
TLogin Check_Password(const TSecret& password);
/// Why it was not done, as a sentence for the user: `wrong` and for how long to wait; "" when it was.
std::string Login_Fault(const TLogin& login, const std::string& wrong);

/// Makes a user the current one without a password; false where passwords are asked for, and for an unknown
/// key.
bool Enter_As(std::string_view user);
/// Whether the current user is one of the database, or it has none.
bool Is_Known_User();

}  // namespace Kt_data_01
