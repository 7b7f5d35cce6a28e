#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Event_Record.h"
#include "Kt_lists.h"

namespace KTReminds {

/// The status in words; "Unknown" for another number.
std::string_view Task_Status_Name(TTask_Status status);
/// The same, where the status leaves it open with the percentage.
std::string Task_Status_Text(TTask_Status status, int percentage);

/// The nearest day strictly after, or with Backward strictly before, the day of Date on which the user may
/// see an entry of the contact, or with ByBook of the book. Holidays do not count, nor do entries of deleted
/// contacts. Found receives the day, 0 without one; the result says whether there is one.
bool Locate_Event(const std::string& Contact, const std::string& Book, TDateTime Date, TDateTime& Found,
                  bool Backward, bool ByBook);

/// The day that Locate_Event finds, 0 without one; nothing after a failed read, which is reported.
std::optional<TDateTime> Nearest_Entry_Day(const TOwner& of_owner, bool by_book, TDateTime from,
                                           bool backward);

/// Clears the list and fills it with the entries from the day of FromDate to the end of the day of ToDate, in
/// order of time. The alarm flag comes from an alarm under the key of the set, not of the occurrence. After a
/// failed read, which is reported, the list is empty; so with those below.
void Build_Events_Data(const std::string& Contact, const std::string& Book, Kt_data_01::TEventKey_List& List,
                       TDateTime FromDate, TDateTime ToDate, bool ByBook);

/// Fills a list with the entries and holidays of one day, sorted by SortKey. These lists ignore a call while
/// they are being built.
void Build_Reminder_DayView(const std::string& Contact, const std::string& Book, Kt_data_01::TItem_List& List,
                            TDateTime Date, bool IncludeCompleted, bool ByBook);

/// Fills several lists, the first one with the day of `first_day` and the others with the days after it, from
/// one state of the database. When one cannot be read, all are empty, and that is reported once.
void Build_Day_Lists(const TOwner& owner, bool by_book, TDateTime first_day,
                     const std::vector<Kt_data_01::TItem_List*>& lists);

/// Fills a list with all entries of the contact or book, sorted by SortKey; no holidays. Progress may be
/// null; what it throws ends the build as a failed read does, but for EAlready_Reported without a report.
void Build_Reminder_AllView(const std::string& Contact, const std::string& Book, Kt_data_01::TItem_List& List,
                            bool IncludeCompleted, bool ByBook, Kt_data_01::TProgress_Bar* Progress);

}  // namespace KTReminds
