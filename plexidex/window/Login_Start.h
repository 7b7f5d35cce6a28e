#pragma once

#include <string>

namespace Plexidex {

/// Whether this program starts in the notification area when the user logs in.
bool Starts_At_Login();
/// Why that cannot be changed: a sentence for the user, or "" when it can or is so already.
std::string Login_Start_Fault(bool start);
/// Throws std::runtime_error with a sentence for the user.
void Set_Start_At_Login(bool start);

}  // namespace Plexidex
