#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;

namespace {

constexpr TDateTime Day = 45306;  // 15 January 2024

class Lists : public testing::Test {
 protected:
  Lists() {
    SortKey = 2;
    SortAscending = true;
  }
  struct TAdded {
    TDateTime Date;
    std::string Title;
    int EventType = 0;
    int Priority = 5;
    bool Alarm = false;
    std::string Contact = {};
    std::string User = Kt_util_01::User_Key();
    bool Private = false;
  };
  std::string Add(const TAdded& added) {
    TNew_Event event = New_Event(added.Title, added.Date);
    if (!added.Contact.empty()) event.Owner.Contact = added.Contact;
    event.Alarm.On = added.Alarm;
    event.Record.Location = "in " + added.Title;
    event.Record.User = added.User;
    event.Record.Private = added.Private;
    event.Record.Priority = added.Priority;
    event.Record.EventType = static_cast<TEntry_Type>(added.EventType);
    return Write(event);
  }
  static std::string Shown(const TItem_List& list) {
    std::string shown;
    for (std::size_t i = 0; i < list.Count(); ++i) {
      shown += (i ? " " : "") + list[i].Data->Description.Str() + std::to_string(list[i].Image);
    }
    return shown;
  }
  static std::string Shown(const TEventKey_List& list) {
    std::string shown;
    for (const auto& entry : list) shown += (shown.empty() ? "" : " ") + entry->Description.Str();
    return shown;
  }
  std::string Window(TDateTime from, TDateTime to) {
    TEventKey_List list;
    Build_Events_Data("", database.Book().Key, list, from, to, true);
    return Shown(list);
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
  TItem_List list;
};

TEST_F(Lists, A_Window_Holds_Whole_Days) {
  Add({Day - 1.0 / 86400, "before"});
  Add({Day, "midnight"});
  Add({Day + 86399.0 / 86400, "last second"});
  Add({Day + 1, "after"});
  EXPECT_EQ(Window(Day + 0.7, Day + 0.2), "midnight last second");
  EXPECT_EQ(Window(Day - 1, Day + 1), "before midnight last second after");
  EXPECT_EQ(Window(Day + 5, Day + 9), "");
}

TEST_F(Lists, The_Last_Second_Of_A_Day_Counts_However_Long_Ago_The_Set_Began) {
  const TDateTime first = Kt_util_01::From_Msecs(20000 * Kt_util_01::Msecs_Per_Day + 86'399'000);
  const TRecurrence_Pattern daily{TFrequency::Daily, 1, true, 0, 0, 0, Day};
  TDateTime date = first;
  while (Next_Occurrence(daily, date) != 0) date = Next_Occurrence(daily, date);
  Add({date, "last second"});
  EXPECT_EQ(Window(Day, Day), "last second");
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(list.Count(), 1u);
}

TEST_F(Lists, An_Entry_Carries_Its_Occurrence_Its_Set_And_Its_Contact) {
  std::string contact;
  In_Update([&] { contact = Create_Contact(database.Book().Key, "Carol"); });
  const std::string event = Add({Day + 0.5, "Lunch", 0, 7, true, contact, "somebody", true});
  const std::string task = Add({Day + 1, "Report", 3});
  Run_Sql("UPDATE KT_Events SET Status = 1, Percentage = 40, AllDay = 1 WHERE Title = 'Report'");
  TEventKey_List entries;
  Build_Events_Data("", database.Book().Key, entries, Day, Day + 1, true);
  ASSERT_EQ(entries.size(), 2u);
  const TEventKey& a = *entries[0];
  EXPECT_TRUE(a.Key == event && a.FirstText == "Lunch" && a.SecondText == "in Lunch" &&
              a.Description == "Lunch");
  EXPECT_TRUE(a.Contact == contact && a.ContactName == "Carol" && a.User == "somebody");
  EXPECT_TRUE(a.Private && !a.Timeless && !a.Alarm && !a.Done);
  EXPECT_EQ(a.Priority, 7);
  EXPECT_EQ(a.EventDate, Day + 0.5);
  EXPECT_EQ(a.Get_Tip(false), "Private");
  const TEventKey& b = *entries[1];
  EXPECT_TRUE(b.Key == task && b.FirstText == "In Progress 40% Complete" && b.SecondText == "Report");
  EXPECT_TRUE(b.Description == "Report" && b.Timeless && !b.Private && b.Is_Task() && b.Percentage == 40);
  EXPECT_EQ(b.Get_Tip(true), "Report, In Progress 40% Complete, Tuesday, January 16, 2024, Home");
}

TEST_F(Lists, The_Month_Looks_For_Alarms_Under_The_Key_Of_The_Set_The_Others_Under_The_Occurrence) {
  const std::string key = Add({Day, "alarmed", 0, 5, true});
  Add({Day, "silent"});
  Add({Day, "not mine", 0, 5, true, {}, "somebody"});
  const auto alarms = [](const auto& entries, auto entry_of) {
    std::string found;
    for (const auto& one : entries) {
      if (entry_of(one).Alarm) found += entry_of(one).Description.Str();
    }
    return found;
  };
  const auto window_alarms = [&] {
    TEventKey_List entries;
    Build_Events_Data("", database.Book().Key, entries, Day, Day, true);
    return alarms(entries, [](const auto& entry) -> const TEventKey& { return *entry; });
  };
  EXPECT_EQ(window_alarms(), "");
  const auto list_alarms = [&] {
    std::string found;
    for (std::size_t i = 0; i < list.Count(); ++i)
      found += list[i].Data->Alarm ? list[i].Data->Description.Str() : "";
    return found;
  };
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(list_alarms(), "alarmed");
  Build_Reminder_AllView("", database.Book().Key, list, true, true, nullptr);
  EXPECT_EQ(list_alarms(), "alarmed");
  Run_Sql(
      "PRAGMA foreign_keys = OFF; UPDATE KT_Alarms SET Key = (SELECT Event FROM KT_Events_Data WHERE Key = "
      "'" +
      key + "') WHERE Key = '" + key + "'");
  EXPECT_EQ(window_alarms(), "alarmed");
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(list_alarms(), "");
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1");
  EXPECT_EQ(window_alarms(), "") << "what is done has no alarm";
}

TEST_F(Lists, Show_Only_What_The_User_May_See_Of_Contacts_That_Are_There) {
  std::string gone, hidden, anna;
  In_Update([&] {
    gone = Create_Contact(database.Book().Key, "Gone");
    hidden = Create_Contact(database.Book().Key, "Hidden");
  });
  Add({Day, "kept"});
  Add({Day, "gone", 0, 5, false, gone});
  Add({Day, "hidden", 0, 5, false, hidden});
  Add({Day, "lost", 0, 5, false, "no such contact"});
  In_Update([&] {
    Set_Contact_Deleted(gone, true);
    anna = Create_User("Anna", false);
    Set_Rights(database.Book().Key, Global_User, {.See = true});
    Set_Rights(hidden, anna, {.Update = true});
  });
  Kt_util_01::Set_User_Key(anna);
  EXPECT_EQ(Window(Day, Day), "kept");
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(Shown(list), "kept10");
  Build_Reminder_DayView(gone, database.Book().Key, list, Day, true, false);
  EXPECT_EQ(Shown(list), "");
  TDateTime found = 1;
  EXPECT_FALSE(Locate_Event(hidden, "", Day - 1, found, false, false));
  EXPECT_EQ(found, 0);
}

TEST_F(Lists, A_Day_Has_Images_By_Kind_And_State_And_Its_Holidays) {
  Add({Day + 0.1, "a", 0});
  Add({Day + 0.2, "b", 3});
  Add({Day + 0.3, "c", 1});
  Add({Day + 0.4, "d", 0});
  Add({Day + 0.5, "e", 3});
  Add({Day + 1.0, "tomorrow", 0});
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate > 45306.35 AND EventDate < 45307");
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name) VALUES (45306, 'King'), (45307, 'Queen')");
  Build_Reminder_DayView("", database.Book().Key, list, Day + 0.9, true, true);
  EXPECT_EQ(Shown(list), "King15 a10 b16 c-1 d18 e17");
  Build_Reminder_DayView("", database.Book().Key, list, Day, false, true);
  EXPECT_EQ(Shown(list), "King15 a10 b16 c-1");
  struct TBar : TProgress_Bar {
    std::int64_t Max = 0, Position = 0;
    std::function<void()> Meanwhile;
    void Set_Max(std::int64_t steps) override { Max = steps; }
    void Set_Position(std::int64_t steps) override {
      Position = steps;
      Meanwhile();
    }
  } bar;
  bar.Meanwhile = [&] { Build_Reminder_DayView("", database.Book().Key, list, Day + 1, true, true); };
  Build_Reminder_AllView("", database.Book().Key, list, true, true, &bar);
  EXPECT_EQ(Shown(list), "a10 b16 c-1 d18 e17 tomorrow10")
      << "no holidays here; the list is not built from inside its own building";
  EXPECT_EQ(bar.Max, 6);
  EXPECT_EQ(bar.Position, 6);
}

TEST_F(Lists, Locate_The_Nearest_Day_Before_And_After_But_Not_The_Day_Itself) {
  for (const TDateTime at : {1.5, Day - 3, Day - 0.1, Day + 0.2, Day + 0.8, Day + 1.0, Day + 7})
    Add({at, "x"});
  Add({-5, "before the beginning"});
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name) VALUES (45306.0 - 1, 'H')");
  const auto locate = [&](TDateTime from, bool backward) {
    TDateTime found = -1;
    const bool any = Locate_Event("", database.Book().Key, from, found, backward, true);
    EXPECT_EQ(any, found > 0);
    return found;
  };
  EXPECT_EQ(locate(Day + 0.5, false), Day + 1);
  EXPECT_EQ(locate(Day + 0.5, true), Day - 1);
  EXPECT_EQ(locate(Day - 1, true), Day - 3);
  EXPECT_EQ(locate(Day + 1.2, false), Day + 7);
  EXPECT_EQ(locate(Day + 7, false), 0);
  EXPECT_EQ(locate(Day - 3, true), 1);
  EXPECT_EQ(locate(1, true), 0) << "nothing is looked for before day 0";
}

TEST_F(Lists, Sort_By_Every_Column_Both_Ways) {
  // done, alarm, date, text, priority (a holiday-like type 1 counts as 10)
  Add({Day + 0.1, "beta", 0, 9, true});
  Add({Day + 0.2, "Alpha", 1, 1});
  Add({Day + 0.3, "\xC3\xA4rger", 0, 5, true});
  Add({Day + 0.4, "alpha", 3, 5});
  Add({Day + 0.4, "Zeta", 0, 2});
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate < 45306.15");
  const auto sorted = [&](int column, bool ascending) {
    SortKey = column;
    SortAscending = ascending;
    Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
    std::string order;
    for (std::size_t i = 0; i < list.Count(); ++i) {
      order += list[i].Data->Description.View().substr(0, 2);
      for (std::size_t j = i + 1; j < list.Count(); ++j)
        EXPECT_LE(CustomSortProc(list[i], list[j], column), 0);
    }
    return order;
  };
  EXPECT_EQ(sorted(0, true).substr(0, 2), "Al");
  EXPECT_EQ(sorted(0, true).substr(sorted(0, true).size() - 2), "be");
  EXPECT_EQ(sorted(1, false).substr(0, 3),
            "\xC3\xA4"
            "Z")
      << "descending by alarm, then by date";
  EXPECT_EQ(sorted(2, true), "beAl\xC3\xA4Zeal") << "equal dates go by priority";
  EXPECT_EQ(sorted(2, false),
            "alZe\xC3\xA4"
            "Albe");
  EXPECT_EQ(sorted(3, true),
            "Al\xC3\xA4"
            "beal"
            "Ze")
      << "a task sorts by its status, Not Started";
  EXPECT_EQ(sorted(4, true),
            "Ze\xC3\xA4"
            "albeAl");
  EXPECT_EQ(sorted(7, true), sorted(7, false)) << "any other code leaves the order alone";
}

TEST_F(Lists, A_Failed_Read_Is_Reported_And_Leaves_The_List_Empty) {
  Add({Day, "x"});
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(list.Count(), 1u);
  Run_Sql("ALTER TABLE KT_Alarms RENAME TO KT_Elsewhere");
  database.Reopen();
  const std::string reason = "The data could not be read: read KT_Events_Data: no such table: KT_Alarms\n\n";
  seams.Prompts.Expect_Error(
      "Read Failed", reason + "Reminder_Utils:Build_Reminder_DayView [KT_Events/KT_Events_Data/KT_Alarms]");
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(list.Count(), 0u);
  seams.Prompts.Expect_Error(
      "Read Failed", reason + "Reminder_Utils:Build_Events_Data [KT_Events/KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(Window(Day, Day), "");
}

TEST_F(Lists, Observers_Are_Told_What_Happens) {
  struct TObserver : TItem_Observer {
    std::string Told;
    void Reset_Begins() override { Told += "["; }
    void Reset_Ends() override { Told += "]"; }
    void Items_Sorted(const std::vector<std::uint32_t>& old) override {
      Told += "s";
      for (const auto position : old) Told += std::to_string(position);
    }
    void Item_Changed(std::size_t position) override { Told += "c" + std::to_string(position); }
    void Item_Added(std::size_t position) override { Told += "a" + std::to_string(position); }
    void Item_Removed(std::size_t position) override { Told += "r" + std::to_string(position); }
  } observer;
  Add({Day + 0.1, "b"});
  Add({Day + 0.2, "a"});
  Add({Day + 0.3, "c"});
  list.Set_Observer(&observer);
  Build_Reminder_DayView("", database.Book().Key, list, Day, true, true);
  EXPECT_EQ(observer.Told, "[]");
  Sort_Items(list, 3);
  Set_Event_as_Actioned(list[2], true, false, 18, 10, 17, 16);
  list.Remove(0);
  list.Insert(1, std::make_unique<TList_Item>()).Update();
  EXPECT_EQ(observer.Told, "[]s102c2r0a1c1");
}

TEST(Task_Status, Texts) {
  const char* expected[] = {"Not Started",
                            "In Progress 40% Complete",
                            "Completed",
                            "Pending 40% Complete",
                            "Postponed 40% Complete",
                            "Cancelled 40% Complete",
                            "Unknown"};
  for (int status = 0; status < 7; ++status)
    EXPECT_EQ(Task_Status_Text(static_cast<TTask_Status>(status), 40), expected[status]);
  EXPECT_EQ(Task_Status_Text(static_cast<TTask_Status>(-1), 0), "Unknown");
}

}  // namespace
