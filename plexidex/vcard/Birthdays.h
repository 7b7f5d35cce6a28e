#pragma once

// The birthdays of contacts as yearly events.

#include <string>

#include "Event_Record.h"

namespace Plexidex {

/// Writes a yearly all-day event of a contact, from this year on to a last day, which is a user's, and
/// returns its key. `birthday` is as in a contact's texts. To be called inside an update bracket; throws
/// EAlready_Reported when it fails.
std::string Create_Birthday(const KTReminds::TOwner& owner, const std::string& name,
                            const std::string& birthday, Kt_util_01::TDateTime until, const std::string& user,
                            bool is_private);

/// The birthday as its event has it now; the same where that is not there, hidden, or on the same day.
std::string Current_Birthday(const std::string& event, const std::string& birthday);

}  // namespace Plexidex
