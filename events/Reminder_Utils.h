#pragma once

// Lists of occurrences for the calendar pages, their order, and marking an entry done.

#include <string>

#include "Kt_data_01.h"

namespace KTReminds {

using Kt_data_01::TDateTime;

/// The column code by which the calendar views sort (see CustomSortProc) and the direction; shared by all of
/// them.
extern int SortKey;
extern bool SortAscending;

/// State images of list items.
inline constexpr int Image_Open_Event = 10;
inline constexpr int Image_Done_Event = 18;
inline constexpr int Image_Open_Task = 16;
inline constexpr int Image_Done_Task = 17;
inline constexpr int Image_Holiday = 15;

/// `EventType` of a task.
inline constexpr int Event_Type_Task = 3;

/// `Status` 0 not started, 1 in progress, 2 completed, 3 pending, 4 postponed, 5 cancelled.
std::string Task_Status_Text(int status, int percentage);

/// The nearest day strictly after, or with Backward strictly before, the day of Date on which the user may
/// see an entry of the contact, or with ByBook of the book. Holidays do not count, nor do entries of deleted
/// contacts. Found receives the day, 0 without one; the result says whether there is one.
bool Locate_Event(const std::string& Contact, const std::string& Book, TDateTime Date, TDateTime& Found,
                  bool Backward, bool ByBook);

/// Clears the list and fills it with the entries from the day of FromDate to the end of the day of ToDate, in
/// order of time. The alarm flag comes from an alarm under the key of the set, not of the occurrence. After a
/// failed read, which is reported, the list is empty; so with the two below.
void Build_Events_Data(const std::string& Contact, const std::string& Book, Kt_data_01::TEventKey_List& List,
                       TDateTime FromDate, TDateTime ToDate, bool ByBook);

/// Fills a list with the entries and holidays of one day, sorted by SortKey.
void Build_Reminder_DayView(const std::string& Contact, const std::string& Book, Kt_data_01::TItem_List& List,
                            TDateTime Date, bool IncludeCompleted, bool ByBook);

/// Fills a list with all entries of the contact or book, sorted by SortKey; no holidays. Progress may be
/// null.
void Build_Reminder_AllView(const std::string& Contact, const std::string& Book, Kt_data_01::TItem_List& List,
                            bool IncludeCompleted, bool ByBook, Kt_data_01::TProgress_Bar* Progress);

/// Negative, 0 or positive, by a column code: 0 done, 1 alarm, 2 date and then priority, 3 first text
/// ignoring case, 4 priority, where an entry of type 1 counts as 10. Ties other than by 2 go by date. Any
/// other code makes all equal. Turned round when SortAscending is false.
int CustomSortProc(const Kt_data_01::TList_Item& Item1, const Kt_data_01::TList_Item& Item2, int Column);

/// Sorts a list whose items all carry data as CustomSortProc orders them; equal items keep their order.
void Sort_Items(Kt_data_01::TItem_List& List, int Column);

/// Marks the item's occurrence, its alarm and, for a task, its status, with a journal entry where the set
/// asks for one, and then the item itself, in place. The item is changed too when the database refuses
/// updates, and is left alone when the occurrence is gone or the update failed, which is reported.
void Set_Event_as_Actioned(Kt_data_01::TList_Item& Item, bool Actioned, bool PlaySound, int DoneEventImage,
                           int OpenEventImage, int DoneTaskImage, int OpenTaskImage);

}  // namespace KTReminds
