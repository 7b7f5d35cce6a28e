#pragma once

namespace KTReminds {

/// Numbers of the pages: stored in the settings, and carried by umDisplayForm. Never renumber.
inline constexpr int Page_Day = 2;
inline constexpr int Page_Tasks = 3;
inline constexpr int Page_Week = 11;
inline constexpr int Page_Month = 12;
inline constexpr int Page_All = 13;
inline constexpr int Page_Calendar_Search = 51;
inline constexpr int Page_Calendar_Results = 52;
inline constexpr int Page_Contact_Search = 53;
inline constexpr int Page_Task_Search = 54;
inline constexpr int Page_Contact_Results = 55;
inline constexpr int Page_Task_Results = 56;
inline constexpr int Page_Notes_Search = 57;
inline constexpr int Page_Advanced_Search = 58;
inline constexpr int Page_Permissions = 99;
/// No page's: what is shown in a home page's panel is closed.
inline constexpr int Page_None = 100;

}  // namespace KTReminds
