#pragma once

// What a host may call of the calendar module. Everything runs on the thread of the user interface; keys are
// those of the shared database, which the host has opened before.

// Start and end: Load_Package, Unload_Package.
#include "Package.h"
// Creating events, dates of recurring sets: Create_Event, Create_Event_Entry, AdvanceEventDate,
// Get_Pattern_From_Date, Get_Instance_from_Date, MaskPosition.
#include "Event_Creation.h"
#include "Recurrence.h"
// Lists of events for views, and marking their entries: Build_Events_Data, Build_Reminder_DayView,
// Build_Reminder_AllView, Locate_Event, CustomSortProc, Set_Event_as_Actioned.
#include "Reminder_Utils.h"
// Deleting, and choosing what to open: Delete_Reminder, Update_Recurring, Locate_Event_Data.
#include "Event_Deletion.h"
#include "fm_Delete_Reminder.h"
// Alarms: Alarm_Properties, Set_Alarm_Properties, Convert_Offset_to_ItemText, Convert_Alarm_ItemText,
// Get_Alarm_TimeStr.
#include "Alarm_Texts.h"
#include "fm_Alarm_Props.h"
// Editors and the date picker: Reminder_Properties, Task_Properties, Show_Calendar; what a program that died
// has left of them: Remove_Abandoned_Events.
#include "Editor_Rules.h"
#include "fm_Calendar.h"
#include "fm_Reminder.h"
#include "fm_Task.h"
// The calendar's home page and its views, as pages: Display_Calendar_Home_Page, Display_Calendar_Dayview,
// Display_Calendar_Weekview, Display_Calendar_MonthView, Display_Calendar_Allview, or any of them by its
// number, Display_Calendar_View; the numbers of the pages.
#include "Page_Numbers.h"
#include "Views.h"
#include "fm_Calendar_HomePage.h"
#include "fm_Contacts_Page3a.h"
#include "fm_Contacts_Page3b.h"
#include "fm_Contacts_Page3c.h"
#include "fm_Contacts_Page3d.h"
// The tasks' home page, of a book or a contact: Display_Task_Home_Page.
#include "fm_Task_HomePage.h"
// The search: Clear_Search, Load_Filter_Settings, and the record CurrentSearch that both work on.
#include "Current_Search.h"
// ... over events, tasks and holidays, and over contacts: SearchCalendar, SearchContacts.
#include "Calendar_Search.h"
#include "Contact_Search.h"
// ... its pages, by the numbers of the pages: Display_Simple_Calendar_Search,
// Display_Calendar_Search_Results, Display_Simple_Search of contacts, Display_Simple_Task_Search,
// Display_Simple_Notes_Search, Display_Advanced_Search; and the filters: Save_Filter, Load_Filter.
#include "fm_Advanced_Search.h"
#include "fm_Calendar_Search_Results.h"
#include "fm_Filters.h"
#include "fm_Simple_Calendar_Search.h"
#include "fm_Simple_Notes_Search.h"
#include "fm_Simple_Search.h"
#include "fm_Simple_Task_Search.h"
