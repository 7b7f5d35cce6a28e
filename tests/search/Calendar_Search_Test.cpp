#include "Calendar_Search.h"

#include <gmock/gmock.h>

#include "Current_Search.h"
#include "Result_Order.h"
#include "Test_Events.h"

namespace {

struct TCriterion {
  int Field, Action;
  std::string Value = {};
};

struct Calendar_Search : TDatabase_Test {
  Calendar_Search() {
    ResultsSortKey = 2;
    ResultsSortAscending = true;
    Add("Dentist", Monday + 0.4, {.Location = "Old town", .Priority = 1});
    Add("Review", Monday + 1.5, {.Days = 3});
    Add("Report", Monday + 2, {.Status = TTask_Status::Pending, .Start = Monday - 3, .Budget = 1250});
    Add("Old report", Monday - 800, {.Status = TTask_Status::Completed, .Start = Monday - 900});
    Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE EventDate IN (45308.5, 44506)");
    Run_Sql(
        "INSERT INTO KT_Alarms (Key, User, Offset) SELECT d.Key, User, 15 FROM KT_Events_Data d JOIN "
        "KT_Events e ON e.Key = Event WHERE Title = 'Dentist'");
    Run_Sql(
        "INSERT INTO KT_Holidays (HolidayDate, Name, Country) VALUES (45308, 'Review (local)', 'UK (NI)'), "
        "(44926, 'Too early', 'UK'), (44927, 'First (1)', ''), (46387, 'Last', 'UK'), (46388, 'Too late', "
        "'UK')");
  }
  ~Calendar_Search() override { CurrentSearch.reset(); }

  struct TAdded {
    std::string Location = {};
    int Priority = 5, Days = 1;
    std::optional<TTask_Status> Status = {};
    double Start = 0;
    int Budget = 0;
  };
  void Add(const std::string& title, double date, const TAdded& added) const {
    TNew_Event event = New_Event(title, date, added.Days);
    event.Record.Location = added.Location;
    event.Record.Priority = added.Priority;
    if (added.Status) {
      event.Record.EventType = TEntry_Type::Task;
      event.Record.AllDay = true;
      event.Record.Progress = {*added.Status, 40, 45300, 0, added.Budget, 250};
    }
    Write(event);
    if (added.Start > 0)
      Run_Sql("UPDATE KT_Events SET FirstDate = " + std::to_string(added.Start) + " WHERE Title = '" + title +
              "'");
  }
  /// Titles in order, with the day from Monday.
  std::string Found(const std::vector<TCriterion>& criteria, TProgress_Bar* progress = nullptr) {
    Clear_Search();
    for (const TCriterion& each : criteria)
      CurrentSearch->Add_Field(0, each.Field, each.Action, each.Value, "", false, false);
    std::int64_t elapsed = -1;
    done = SearchCalendar(database.Book().Key, list, elapsed, progress);
    EXPECT_GE(elapsed, 0);
    std::string found;
    for (std::size_t i = 0; i < list.Count(); ++i)
      found += (i ? ", " : "") + list[i].Caption.Str() + " " +
               std::to_string(static_cast<int>(list[i].Data->EventDate - Monday));
    return found;
  }

  TItem_List list;
  bool done = false;
};

TEST_F(Calendar_Search, Fields_And_Kinds) {
  const std::string reviews = "Review 1, Review 2, Review 3";
  const std::pair<TCriterion, std::string> cases[] = {
      {{80, Action_Today}, "Dentist 0"},
      {{80, Action_Between, "1/16/2024 and 1/17/2024"}, "Review 1, Review 2"},
      {{80, Action_Not_In_Next, "1"}, "Review 2, Review 3"},
      {{81, Action_Starts_With, "re"}, reviews},
      {{82, Action_Contains, "TOWN"}, "Dentist 0"},
      {{83, Action_Equals, "owner"}, "Dentist 0, " + reviews},
      {{84, Action_Calendar_Alarm}, "Dentist 0"},
      {{84, Action_Calendar_No_Alarm}, reviews},
      {{84, Action_Calendar_Outstanding}, "Dentist 0, Review 1, Review 3"},
      {{84, Action_Calendar_Complete}, "Review 2"},
      {{85, Action_Less, "5"}, "Dentist 0"},
      {{90, Action_Contains, "report"}, "Old report -800, Report 2"},
      {{91, Action_In_Last, "3"}, "Report 2"},
      {{92, Action_On_Or_Before, "1/1/2024"}, "Old report -800"},
      {{93, Action_On, "1/9/2024"}, "Old report -800, Report 2"},
      {{94, Action_Never}, "Old report -800, Report 2"},
      {{95, 92}, "Old report -800"},
      {{96, Action_Number_Equals, "40"}, "Old report -800, Report 2"},
      {{97, Action_Number_Equals, "1250"}, "Report 2"},
      {{98, Action_Greater, "249"}, "Old report -800, Report 2"},
      {{99, Action_Number_Equals, "10"}, "Report 2"},
      {{101, Action_Greater, "5"}, ""},
      {{110, Action_On_Or_Before, "1/2/2023"}, "First (1) -379"},
      {{110, Action_Not_In_Next, "400"}, "First (1) -379, Last (UK) 1081"},
      {{111, Action_Equals, "review (local)"}, "Review (local) (UK (NI)) 2"},
      {{112, Action_Equals, "uk (ni)"}, "Review (local) (UK (NI)) 2"},
      {{112, Action_Blank}, "First (1) -379"},
      {{120, Action_On, "1/17/2024"}, "Review (local) (UK (NI)) 2, Report 2, Review 2"},
      {{121, Action_Contains, "view"}, "Review 1, Review (local) (UK (NI)) 2, Review 2, Review 3"},
      {{1, Action_Contains, "Dentist"}, ""},
  };
  for (const auto& [criterion, expected] : cases)
    EXPECT_EQ(Found({criterion}), expected) << criterion.Field << " " << criterion.Action;
  EXPECT_EQ(Found({}), "");
  EXPECT_TRUE(done);
}

TEST_F(Calendar_Search, Events_Meet_All_Criteria_And_Holidays_Any) {
  const TCriterion view{121, Action_Contains, "view"}, seventeenth{120, Action_On, "1/17/2024"},
      foreign{1, Action_Blank}, location{82, Action_Blank};
  EXPECT_EQ(Found({view, seventeenth}), "Review (local) (UK (NI)) 2, Review 2");
  EXPECT_EQ(Found({view, {120, Action_On, "1/1/2023"}}), "First (1) -379, Review (local) (UK (NI)) 2");
  EXPECT_EQ(Found({seventeenth, foreign}), "Review (local) (UK (NI)) 2, Report 2, Review 2")
      << "what is about something else keeps the result";
  EXPECT_EQ(Found({foreign, seventeenth}), "Review (local) (UK (NI)) 2") << "but none is kept at first";
  EXPECT_EQ(Found({seventeenth, location}), "Review (local) (UK (NI)) 2, Report 2, Review 2")
      << "a task is not asked for its place";
  EXPECT_EQ(Found({location, seventeenth}), "Review (local) (UK (NI)) 2, Review 2");
  EXPECT_EQ(Found({{92, Action_Anytime}, {90, Action_Starts_With, "r"}}), "Report 2");
}

TEST_F(Calendar_Search, Items_Say_What_They_Stand_For) {
  ASSERT_EQ(Found({{120, Action_On, "1/17/2024"}}), "Review (local) (UK (NI)) 2, Report 2, Review 2");
  std::string items;
  for (std::size_t i = 0; i < list.Count(); ++i) {
    items += std::to_string(list[i].Image);
    for (const TText& text : list[i].SubItems) items += "|" + text.Str();
    items += "\n";
  }
  EXPECT_EQ(items,
            "15|1/17/2024|Review (local) (UK (NI))|Holiday|\n16|1/17/2024|Report|Task|Owner\n"
            "18|1/17/2024 12:00 PM|Review|Event|Owner\n");
  EXPECT_EQ(list[1].Data->FirstText, "Pending") << "without its percentage";
  ASSERT_EQ(Found({{82, Action_Not_Blank}}), "Dentist 0");
  EXPECT_TRUE(list[0].Data->Alarm);
}

TEST_F(Calendar_Search, Only_The_Books_And_What_May_Be_Seen) {
  std::string contact;
  In_Update([&] { contact = Create_Contact(database.Book().Key, "Contact"); });
  Run_Sql("UPDATE KT_Events_Data SET Contact = '" + contact + "' WHERE EventDate = 45307.5");
  Run_Sql("UPDATE KT_Events_Data SET Book = 'other' WHERE EventDate = 45309.5");
  Run_Sql("UPDATE KT_Events SET Private = 1, User = 'other' WHERE Title = 'Report'");
  database.Reopen();
  const TCriterion by_master{121, Action_Starts_With, "re"}, by_day{120, Action_In_Next, "30"};
  for (const TCriterion& each : {by_master, by_day}) {
    const std::string hidden = each.Field == by_day.Field ? "Private 2, " : "";
    EXPECT_THAT(Found({each}),
                testing::HasSubstr("Review 1, Review (local) (UK (NI)) 2, " + hidden + "Review 2"))
        << "a title that is not shown is not searched";
    EXPECT_THAT(Found({each}), testing::Not(testing::HasSubstr("Review 3")));
  }
  In_Update([&] { Set_Contact_Deleted(contact, true); });
  EXPECT_EQ(Found({{81, Action_Starts_With, "re"}}), "Review 2");
  In_Update([&] {
    Set_Contact_Deleted(contact, false);
    const std::string user = Create_User("Bert", false);
    Set_Rights(contact, user, {.See = true});
    Set_User_Key(user);
  });
  EXPECT_EQ(Found({by_master, by_day}), "Review 1, Review (local) (UK (NI)) 2");
  Run_Sql("ALTER TABLE KT_Events RENAME TO Elsewhere");
  seams.Prompts.Expect_Unread("no such table: KT_Events",
                              "Search_Engine:SearchCalendar [KT_Events/KT_Events_Data/KT_Contacts]");
  EXPECT_EQ(Found({by_day}), "");
  EXPECT_FALSE(done);
}

TEST_F(Calendar_Search, A_Stopped_Search_Leaves_What_It_Has_Found) {
  struct TStop : TProgress_Bar {
    void Set_Max(std::int64_t steps) override { Max = steps; }
    void Set_Position(std::int64_t) override {
      Clear_Search();  // what a page may do while messages are serviced
      throw EAlready_Reported();
    }
    std::int64_t Max = 0;
  } stop;
  Write(New_Event("Every day", Monday, 60'000));
  const std::string found = Found({{120, Action_On_Or_After, "1/15/2024"}}, &stop);
  EXPECT_FALSE(done);
  EXPECT_GT(stop.Max, 60'000);
  EXPECT_TRUE(found.starts_with("Every day 0, Dentist 0") && list.Count() < 60'000);
  EXPECT_FALSE(list.Is_Updating());
}

}  // namespace
