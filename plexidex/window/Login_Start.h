#pragma once

namespace Plexidex {

/// Whether this program starts in the notification area when the user logs in.
bool Starts_At_Login();
/// Throws std::runtime_error with a sentence for the user.
void Set_Start_At_Login(bool start);

}  // namespace Plexidex
