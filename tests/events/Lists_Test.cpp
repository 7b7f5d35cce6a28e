#include "Entry_Rows.h"
#include "Reminder_Utils.h"
#include "Test_Events.h"

namespace {

struct Lists : TDatabase_Test {
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
    std::string User = User_Key();
    bool Private = false;
  };
  static std::string Add(const TAdded& added) {
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
  /// Titles, with a mark for an alarm, and images.
  std::string Shown() const {
    std::string shown;
    for (std::size_t i = 0; i < list.Count(); ++i) {
      shown += (i ? " " : "") + list[i].Data->Description.Str() + (list[i].Data->Alarm ? "*" : "") +
               std::to_string(list[i].Image);
    }
    return shown;
  }
  std::string Day_View(TDateTime day = Monday, bool done = true) {
    Build_Reminder_DayView("", database.Book().Key, list, day, done, true);
    return Shown();
  }
  std::string Window(TDateTime from = Monday, TDateTime to = Monday) const {
    TEventKey_List entries;
    Build_Events_Data("", database.Book().Key, entries, from, to, true);
    std::string shown;
    for (const auto& entry : entries)
      shown += (shown.empty() ? "" : " ") + entry->Description.Str() + (entry->Alarm ? "*" : "");
    return shown;
  }

  TItem_List list;
};

TEST_F(Lists, A_Window_Holds_Whole_Days) {
  Add({Monday - 1.0 / 86400, "before"});
  Add({Monday, "midnight"});
  Add({Monday + 86399.0 / 86400, "last"});
  Add({Monday + 1, "after"});
  EXPECT_EQ(Window(Monday + 0.7, Monday + 0.2), "midnight last");
  EXPECT_EQ(Window(Monday - 1, Monday + 1), "before midnight last after");
  EXPECT_EQ(Window(Monday + 5, Monday + 9), "");
}

TEST_F(Lists, The_Last_Second_Of_A_Day_Counts_However_Long_Ago_The_Set_Began) {
  const TRecurrence_Pattern daily{TFrequency::Daily, 1, true, 0, 0, 0, Monday};
  TDateTime date = From_Msecs(20000 * Msecs_Per_Day + 86'399'000);
  while (Next_Occurrence(daily, date) != 0) date = Next_Occurrence(daily, date);
  Add({date, "last second"});
  EXPECT_EQ(Window(), "last second");
  EXPECT_EQ(Day_View(), "last second10");
}

TEST_F(Lists, An_Entry_Carries_Its_Occurrence_Its_Set_And_Its_Contact) {
  std::string contact;
  In_Update([&] { contact = Create_Contact(database.Book().Key, "Carol"); });
  const std::string event = Add({Monday + 0.5, "Lunch", 0, 7, true, contact, "somebody", true});
  const std::string task = Add({Monday + 1, "Report", 3});
  Run_Sql("UPDATE KT_Events SET Status = 1, Percentage = 40, AllDay = 1 WHERE Title = 'Report'");
  TEventKey_List entries;
  Build_Events_Data("", database.Book().Key, entries, Monday, Monday + 1, true);
  ASSERT_EQ(entries.size(), 2u);
  const auto told = [](const TEventKey& entry) {
    std::string text;
    for (const TText& part : {entry.Key, entry.FirstText, entry.SecondText, entry.Description, entry.Contact,
                              entry.ContactName, entry.User})
      text += part.Str() + "|";
    return text + std::to_string(entry.Priority) + (entry.Private ? "p" : "") + (entry.Timeless ? "t" : "") +
           (entry.Is_Task() ? "k" : "") + std::to_string(entry.Percentage) + "|" +
           std::to_string(entry.EventDate - Monday);
  };
  EXPECT_EQ(told(*entries[0]), event + "|Lunch|in Lunch|Lunch|" + contact + "|Carol|somebody|7p0|0.500000");
  EXPECT_EQ(told(*entries[1]), task + "|In Progress 40% Complete|Report|Report|" + database.Book().Calendar +
                                   "|Home|" + User_Key() + "|5tk40|1.000000");
  EXPECT_EQ(entries[0]->Get_Tip(false), "Private");
  EXPECT_EQ(entries[1]->Get_Tip(true), "Report, In Progress 40% Complete, Tuesday, January 16, 2024, Home");
}

TEST_F(Lists, The_Month_Looks_For_Alarms_Under_The_Key_Of_The_Set_The_Others_Under_The_Occurrence) {
  Add({Monday, "a", 0, 5, true});
  Add({Monday + 0.1, "silent"});
  Add({Monday + 0.2, "another's", 0, 5, true, {}, "somebody"});
  EXPECT_EQ(Window(), "a silent another's");
  EXPECT_EQ(Day_View(), "a*10 silent10 another's10");
  Build_Reminder_AllView("", database.Book().Key, list, true, true, nullptr);
  EXPECT_EQ(Shown(), "a*10 silent10 another's10");
  Run_Sql(
      "PRAGMA foreign_keys = OFF; UPDATE KT_Alarms SET Key = (SELECT Event FROM KT_Events_Data d WHERE d.Key "
      "= KT_Alarms.Key)");
  EXPECT_EQ(Window(), "a* silent another's");
  EXPECT_EQ(Day_View(), "a10 silent10 another's10");
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1");
  EXPECT_EQ(Window(), "a silent another's") << "what is done has no alarm";
}

TEST_F(Lists, Show_Only_What_The_User_May_See_Of_Contacts_That_Are_There) {
  std::string gone, hidden, anna;
  In_Update([&] {
    gone = Create_Contact(database.Book().Key, "Gone");
    hidden = Create_Contact(database.Book().Key, "Hidden");
  });
  Add({Monday, "kept"});
  for (const std::string& contact : {gone, hidden, std::string("no such contact")})
    Add({Monday, "kept from her", 0, 5, false, contact});
  In_Update([&] {
    Set_Contact_Deleted(gone, true);
    anna = Create_User("Anna", false);
    Set_Rights(database.Book().Key, Global_User, {.See = true});
    Set_Rights(hidden, anna, {.Update = true});
  });
  Set_User_Key(anna);
  EXPECT_EQ(Window(), "kept");
  EXPECT_EQ(Day_View(), "kept10");
  Build_Reminder_DayView(gone, database.Book().Key, list, Monday, true, false);
  EXPECT_EQ(Shown(), "");
  TDateTime found = 1;
  EXPECT_FALSE(Locate_Event(hidden, "", Monday - 1, found, false, false));
  EXPECT_EQ(found, 0);
}

TEST_F(Lists, A_Day_Has_Images_By_Kind_And_State_And_Its_Holidays) {
  const std::pair<const char*, int> kinds[] = {{"a", 0}, {"b", 3}, {"c", 1}, {"d", 0}, {"e", 3}};
  for (double time = 0.1; const auto& [title, kind] : kinds) Add({Monday + (time += 0.1), title, kind});
  Add({Monday + 1, "tomorrow"});
  Add({Monday - 0.001 / 86400, "last"});
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate > 45306.45 AND EventDate < 45307");
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name) VALUES (45306, 'King'), (45307, 'Queen')");
  EXPECT_EQ(Day_View(Monday + 0.9), "King15 a10 b16 c-1 d18 e17");
  EXPECT_EQ(Day_View(Monday - 1), "last10") << "to its last millisecond";
  EXPECT_EQ(Day_View(Monday, false), "King15 a10 b16 c-1");
  struct TBar : TProgress_Bar {
    std::int64_t Max = 0, Position = 0;
    std::function<void()> Meanwhile;
    void Set_Max(std::int64_t steps) override { Max = steps; }
    void Set_Position(std::int64_t steps) override {
      Position = steps;
      Meanwhile();
    }
  } bar;
  bar.Meanwhile = [&] { Day_View(Monday + 1); };
  Build_Reminder_AllView("", database.Book().Key, list, true, true, &bar);
  EXPECT_EQ(Shown(), "last10 a10 b16 c-1 d18 e17 tomorrow10")
      << "no holidays here; the list is not built from inside its own building";
  EXPECT_EQ(bar.Max, 7);
  EXPECT_EQ(bar.Position, 7);
}

TEST_F(Lists, Locate_The_Nearest_Day_Before_And_After_But_Not_The_Day_Itself) {
  for (const TDateTime at :
       {1.5, Monday - 3, Monday - 0.1, Monday + 0.2, Monday + 0.8, Monday + 1.0, Monday + 7, -5.0})
    Add({at, "x"});
  Run_Sql("INSERT INTO KT_Holidays (HolidayDate, Name) VALUES (45306.0 - 1, 'H')");
  const auto locate = [&](TDateTime from, bool backward) {
    TDateTime found = -1;
    const bool any = Locate_Event("", database.Book().Key, from, found, backward, true);
    EXPECT_EQ(any, found > 0);
    return found;
  };
  EXPECT_EQ(locate(Monday + 0.5, false), Monday + 1);
  EXPECT_EQ(locate(Monday + 0.5, true), Monday - 1);
  EXPECT_EQ(locate(Monday - 1, true), Monday - 3);
  EXPECT_EQ(locate(Monday + 1.2, false), Monday + 7);
  EXPECT_EQ(locate(Monday + 7, false), 0);
  EXPECT_EQ(locate(Monday - 3, true), 1);
  EXPECT_EQ(locate(1, true), 0) << "nothing is looked for before day 0";
}

TEST_F(Lists, Sort_By_Every_Column_Both_Ways) {
  // A type 1, like a holiday's, counts as priority 10.
  Add({Monday + 0.1, "beta", 0, 9, true});
  Add({Monday + 0.2, "Alpha", 1, 1});
  Add({Monday + 0.3, "ärger", 0, 5, true});
  Add({Monday + 0.4, "alpha", 3, 5});
  Add({Monday + 0.4, "Zeta", 0, 2});
  Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate < 45306.15");
  const auto sorted = [&](int column, bool ascending) {
    SortKey = column;
    SortAscending = ascending;
    Day_View();
    std::string order;
    for (std::size_t i = 0; i < list.Count(); ++i) {
      order += (i ? " " : "") + list[i].Data->Description.Str();
      for (std::size_t j = i + 1; j < list.Count(); ++j)
        EXPECT_LE(CustomSortProc(list[i], list[j], column), 0);
    }
    return order;
  };
  EXPECT_EQ(sorted(0, true), "Alpha ärger Zeta alpha beta");
  EXPECT_EQ(sorted(1, false), "ärger Zeta alpha Alpha beta") << "descending by alarm, then by date";
  EXPECT_EQ(sorted(2, true), "beta Alpha ärger Zeta alpha") << "equal dates go by priority";
  EXPECT_EQ(sorted(2, false), "alpha Zeta ärger Alpha beta");
  EXPECT_EQ(sorted(3, true), "Alpha ärger beta alpha Zeta") << "a task sorts by its status, Not Started";
  EXPECT_EQ(sorted(4, true), "Zeta ärger alpha beta Alpha");
  EXPECT_EQ(sorted(7, true), sorted(7, false)) << "any other code leaves the order alone";
}

TEST_F(Lists, A_Failed_Read_Is_Reported_And_Leaves_The_List_Empty) {
  Add({Monday, "x"});
  EXPECT_EQ(Day_View(), "x10");
  Run_Sql("ALTER TABLE KT_Alarms RENAME TO KT_Elsewhere");
  database.Reopen();
  const std::string why = "no such table: KT_Alarms";
  seams.Prompts.Expect_Unread(why,
                              "Reminder_Utils:Build_Reminder_DayView [KT_Events/KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(Day_View(), "");
  seams.Prompts.Expect_Unread(why, "Reminder_Utils:Build_Events_Data [KT_Events/KT_Events_Data/KT_Alarms]");
  EXPECT_EQ(Window(), "");
}

TEST_F(Lists, Observers_Are_Told_What_Happens) {
  struct TObserver : TItem_Observer {
    std::string Told;
    void Reset_Begins() override { Told += "["; }
    void Reset_Ends() override { Told += "]"; }
    void Items_So_Far() override { Told += "."; }
    void Items_Sorted(const std::vector<std::uint32_t>& old) override {
      Told += "s";
      for (const auto position : old) Told += std::to_string(position);
    }
    void Item_Changed(std::size_t position) override { Told += "c" + std::to_string(position); }
    void Item_Added(std::size_t position) override { Told += "a" + std::to_string(position); }
    void Item_Removed(std::size_t position) override { Told += "r" + std::to_string(position); }
  } observer;
  Add({Monday + 0.1, "b"});
  Add({Monday + 0.2, "a"});
  Add({Monday + 0.3, "c"});
  list.Set_Observer(&observer);
  Day_View();
  Sort_Items(list, 3);
  Set_Event_as_Actioned(list[2], true, false, 18, 10, 17, 16);
  list.Remove(0);
  list.Insert(1, std::make_unique<TList_Item>()).Update();
  EXPECT_EQ(observer.Told, "[]s102c2r0a1c1");
}

TEST_F(Lists, Rows_And_States_In_Words) {
  const TDateTime now = Monday + 0.5;
  TEventKey entry;
  entry.Description = "Dentist";
  entry.EventDate = now;
  EXPECT_EQ(Spoken_Row(entry, now), "Dentist, 12:00 PM, outstanding") << "not overdue at that moment";
  EXPECT_EQ(Spoken_Row(entry, now + 1e-6), "Dentist, 12:00 PM, overdue");
  entry.Private = entry.Timeless = entry.Done = true;
  EXPECT_EQ(Spoken_Row(entry, now + 1), "Private, completed");
  entry.Private = false;
  entry.EventType = TEntry_Type::Other;
  EXPECT_EQ(Spoken_Row(entry, now), "Dentist") << "a holiday";
  std::string texts;
  for (int status = -1; status < 7; ++status)
    texts += Task_Status_Text(static_cast<TTask_Status>(status), 40) + ";";
  EXPECT_EQ(texts,
            "Unknown;Not Started;In Progress 40% Complete;Completed;Pending 40% Complete;Postponed 40% "
            "Complete;Cancelled 40% Complete;Unknown;");
}

}  // namespace
