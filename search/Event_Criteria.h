#pragma once

// What criteria ask of events and tasks, of the calendar or of a contact.

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "Event_Record.h"
#include "Matchers.h"

namespace KTReminds {

/// The names of users, each looked up once.
class TUser_Names {
 public:
  const std::string& Of(std::string_view user);

 private:
  std::map<std::string, std::string, std::less<>> names;
};

/// A cursor with the columns that criteria ask for, and those of an entry.
TTable Searched_Events(std::string_view index);

/// Whether a field is one of the master's; otherwise it is one of the occurrence's, or of something else.
bool Is_Of_Master(int field);
/// The master at which the cursor stands, by what its row shows the user; false for a field that is not the
/// master's. Throws EData_Error.
bool Meets_Master(const TMatcher& matcher, const TTable& events, TUser_Names& names);

}  // namespace KTReminds
