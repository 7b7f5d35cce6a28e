#include <gtest/gtest.h>
#ifdef __SANITIZE_ADDRESS__
// Part of the sanitizer's interface, for which GCC installs no header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*, std::size_t),
                                                         void (*)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void*);
#else
#include <sys/resource.h>
#endif

#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace KTReminds;
using namespace Kt_data_01;
using Kt_util_01::Day_From_Date;

namespace {

// The most bytes that were in use at one time. The address sanitizer keeps freed memory for a while, so that
// beside it the allocations themselves are counted, from the first call on.
#ifdef __SANITIZE_ADDRESS__
std::int64_t In_Use = 0, Most_In_Use = 0;

std::int64_t Peak_Memory() {
  static const int installed = __sanitizer_install_malloc_and_free_hooks(
      [](const volatile void*, std::size_t size) {
        In_Use += static_cast<std::int64_t>(size);
        Most_In_Use = std::max(Most_In_Use, In_Use);
      },
      [](const volatile void* block) {
        if (block) In_Use -= static_cast<std::int64_t>(__sanitizer_get_allocated_size(block));
      });
  EXPECT_GT(installed, 0);
  return Most_In_Use;
}
#else
std::int64_t Peak_Memory() {
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss * std::int64_t{1024};
}
#endif

constexpr auto Tag = "fm_Reminder:Create_Event [KT_Events,KT_Events_Data,KT_Alarms]";

class Creation : public testing::Test {
 protected:
  TNew_Event Daily(TDateTime first, TDateTime last) {
    TNew_Event event = New_Event("Title", first);
    event.Record.User = "user";
    event.Record.Pattern.Freq = TFrequency::Daily;
    event.Record.Pattern.LastDate = last;
    return event;
  }
  static std::string Counts() {
    return Query_Text(
        "SELECT (SELECT count(*) FROM KT_Events) || ' ' || (SELECT count(*) FROM KT_Events_Data) || ' ' || "
        "(SELECT count(*) FROM KT_Alarms)");
  }
  static std::string Dates() {
    return Query_Text(
        "SELECT group_concat(EventDate - 45292, ' ') FROM (SELECT EventDate FROM KT_Events_Data ORDER BY 1)");
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
  std::string key;
};

const TDateTime New_Year = static_cast<TDateTime>(Day_From_Date(2024, 1, 1));

TEST_F(Creation, Every_Argument_Reaches_Its_Column) {
  TMemory_Stream notes("Notes\0with zero");
  notes.Position = 3;
  const std::string first =
      Create_Event("contact", database.Book().Key, "Title", "Location", "sound.wav", "user", key, &notes,
                   true, true, true, false, New_Year + 0.375, New_Year + 20, 4, 7, 3, 45, true, false, true,
                   false, true, false, true, false, true, true, 2, 11, 6, false);
  EXPECT_EQ(Query_Text("SELECT Key || '|' || Title || '|' || Location || '|' || (FirstDate - 45292) || '|' "
                       "|| (LastDate - 45292) "
                       "|| '|' || Freq || Period || Priority || PeriodDefault || '|' || User || '|' || "
                       "AllDay || Private || '|' "
                       "|| P1 || P2 || P3 || P4 || P5 || P6 || P7 || P8 || P9 || P10 || '|' || Month || '|' "
                       "|| Instance || "
                       "EventType || '|' || Started || Completed || Percentage || Status || Budget || Worked "
                       "|| '|' || Type "
                       "|| '|' || CAST(Notes AS TEXT) FROM KT_Events"),
            key + "|Title|Location|0.375|20.0|4730|user|10|1010101011|11|26|000000|-1|Notes");
  EXPECT_EQ(Query_Text("SELECT Key || '|' || Contact || '|' || Book || '|' || Event || '|' || Actioned || "
                       "'|' || (EventDate - "
                       "45292) FROM KT_Events_Data"),
            first + "|contact|" + database.Book().Key + "|" + key + "|0|0.375")
      << "Actioned is ignored without MarkPastActioned";
  EXPECT_EQ(Query_Text("SELECT Key || '|' || User || '|' || Offset || '|' || WAVFile || '|' || NextTime || "
                       "'|' || Actioned FROM "
                       "KT_Alarms"),
            first + "|user|45|sound.wav|0.0|0");
}

TEST_F(Creation, Writes_An_Occurrence_A_Day_Up_To_The_Last_Day_Whatever_The_Time) {
  EXPECT_NE(Create_Event(Daily(New_Year + 0.375, New_Year + 4), key), "");
  EXPECT_EQ(Counts(), "1 5 0");
  EXPECT_EQ(Dates(), "0.375 1.375 2.375 3.375 4.375");
}

TEST_F(Creation, One_Off_Events_And_Sets_That_Cannot_Go_On_Have_One_Occurrence) {
  TNew_Event one_off = Daily(New_Year, New_Year + 100);
  one_off.Record.Pattern.Freq = TFrequency::None;
  one_off.Alarm.On = true;
  Create_Event(one_off, key);
  EXPECT_EQ(Counts(), "1 1 1");
  Create_Event(Daily(New_Year, New_Year - 1), key);
  EXPECT_EQ(Counts(), "2 2 1");
  for (const int period : {0, -1}) {
    TNew_Event standing = Daily(New_Year, New_Year + 100);
    standing.Record.Pattern.Period = period;
    Create_Event(standing, key);
  }
  EXPECT_EQ(Counts(), "4 4 1") << "an interval that does not move forward ends the set";
  TNew_Event no_day = Daily(New_Year, static_cast<TDateTime>(Day_From_Date(9999, 12, 31)));
  no_day.Record.Pattern.PeriodDefault = false;
  Create_Event(no_day, key);
  TNew_Event for_ever = no_day;
  for_ever.Record.Pattern.Freq = TFrequency::Yearly;
  for_ever.Record.Pattern.PeriodDefault = true;
  EXPECT_NE(Create_Event(for_ever, key), "");
  EXPECT_EQ(Counts(), "6 " + std::to_string(5 + 9999 - 2024 + 1) + " 1");
}

TEST_F(Creation, Occurrences_Before_Day_0_Are_Left_Out_But_The_First) {
  TNew_Event old = Daily(-1, 1);
  Create_Event(old, key);
  EXPECT_EQ(Query_Text("SELECT group_concat(EventDate) FROM KT_Events_Data"), "-1.0")
      << "the step onto day 0 gives 0, which means that there is none";
  old.Record.FirstDate = -2.5;
  Create_Event(old, key);
  EXPECT_EQ(
      Query_Text("SELECT group_concat(EventDate) FROM (SELECT EventDate FROM KT_Events_Data ORDER BY 1)"),
      "-2.5,-1.0,0.5,1.5");
}

TEST_F(Creation, Past_Occurrences_Are_Marked_When_Asked) {
  seams.Clock.Value = New_Year + 2.5;
  TNew_Event event = Daily(New_Year + 0.9, New_Year + 4);
  event.Alarm.On = true;
  const auto marks = [] {
    return Query_Text(
        "SELECT group_concat(d.Actioned || a.Actioned, ' ') FROM (SELECT * FROM KT_Events_Data ORDER BY "
        "EventDate) "
        "d JOIN KT_Alarms a ON a.Key = d.Key WHERE d.Event = (SELECT Key FROM KT_Events ORDER BY row_id "
        "DESC)");
  };
  event.Actioned = true;
  Create_Event(event, key);
  EXPECT_EQ(marks(), "00 00 00 00 00");
  event.MarkPastActioned = true;
  Create_Event(event, key);
  EXPECT_EQ(marks(), "11 11 11 11 11");
  event.Actioned = false;
  Create_Event(event, key);
  EXPECT_EQ(marks(), "11 11 00 00 00") << "today's is not past";
}

TEST_F(Creation, A_Failure_Undoes_All_Keeps_The_Key_And_Reports_Once) {
  Run_Sql(
      "CREATE TRIGGER planted BEFORE INSERT ON KT_Alarms WHEN (SELECT count(*) FROM KT_Alarms) = 3 BEGIN "
      "SELECT RAISE(ABORT, 'planted fault'); END");
  TNew_Event event = Daily(New_Year, New_Year + 9);
  event.Alarm.On = true;
  seams.Prompts.Expect_Error(
      "Update Failed",
      std::string("The change could not be saved and has been undone: write KT_Alarms: planted fault\n\n") +
          Tag);
  EXPECT_EQ(Create_Event(event, key), "");
  EXPECT_EQ(key.size(), 36u);
  EXPECT_EQ(Counts(), "0 0 0");

  TNew_Event no_such_day = Daily(static_cast<TDateTime>(Day_From_Date(2024, 1, 31)), New_Year + 2000);
  no_such_day.Record.Pattern.Freq = TFrequency::Yearly;
  no_such_day.Record.Pattern.PeriodDefault = false;
  no_such_day.Record.Pattern.Month = 1;
  no_such_day.Record.Pattern.Set_Flag(4);
  seams.Prompts.Expect_Error(
      "Update Failed", std::string("The change could not be saved and has been undone: The month of the "
                                   "pattern has no such day\n\n") +
                           Tag);
  EXPECT_EQ(Create_Event(no_such_day, key), "");
  EXPECT_EQ(Counts(), "0 0 0");
}

TEST_F(Creation, A_Refused_Update_Writes_Nothing) {
  TSqlite_Options read_only;
  read_only.Read_Only = true;
  database.Reopen(read_only);
  EXPECT_EQ(Create_Event(Daily(New_Year, New_Year + 9), key), "");
  EXPECT_EQ(key, "");
  EXPECT_EQ(Counts(), "0 0 0");
}

TEST_F(Creation, Entries_Join_The_Bracket_Of_Their_Caller) {
  Create_Event(Daily(New_Year, New_Year), key);
  EXPECT_THROW(Create_Event_Entry(key, "c", "b", "u", "w", true, true, New_Year + 1, 5), EData_Error);
  ASSERT_TRUE(Start_Update());
  const std::string entry = Create_Event_Entry(key, "c", "b", "u", "w", true, true, New_Year + 1, 5);
  EXPECT_THROW(Create_Event_Entry("no such event", "c", "b", "u", "w", true, true, New_Year + 1, 5),
               EData_Error);
  EXPECT_THROW(EndUpdate(), EData_Error);
  EXPECT_EQ(Counts(), "1 1 0");
  In_Update([&] { Create_Event_Entry(key, "c", "b", "u", "w", true, true, New_Year + 1, 5); });
  EXPECT_EQ(Query_Text("SELECT User || Offset || WAVFile || NextTime || Actioned FROM KT_Alarms"), "u5w0.01");
}

TEST_F(Creation, Memory_Does_Not_Grow_With_The_Number_Of_Occurrences) {
  // The first set fills the page cache, which has a bound of its own.
  EXPECT_NE(Create_Event(Daily(1, 200'000), key), "");
  const std::int64_t before = Peak_Memory();
  EXPECT_NE(Create_Event(Daily(1, 200'000), key), "");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data"), 400'000);
  EXPECT_LT(Peak_Memory() - before, 12'000'000) << "200,000 rows of some 150 bytes would be 30,000,000";
}

}  // namespace
