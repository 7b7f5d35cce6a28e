#include <gtest/gtest.h>
#ifdef __SANITIZE_ADDRESS__
// Part of the sanitizer's interface, for which GCC installs no header.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*)(const volatile void*, std::size_t),
                                                         void (*)(const volatile void*));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void*);
#else
#include <sys/resource.h>
#endif

#include "Test_Events.h"

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

struct Creation : TDatabase_Test {
  static TNew_Event Daily(TDateTime first, TDateTime last) {
    TNew_Event event = New_Event("Title", first);
    event.Record.Pattern.Freq = TFrequency::Daily;
    event.Record.Pattern.LastDate = last;
    return event;
  }

  std::string key;
};

TEST_F(Creation, Every_Argument_Reaches_Its_Column) {
  TMemory_Stream notes("Notes\0with zero");
  notes.Position = 3;
  const std::string first =
      Create_Event("contact", database.Book().Key, "Title", "Location", "sound.wav", "user", key, &notes,
                   true, true, true, false, Monday + 0.375, Monday + 20, 4, 7, 3, 45, true, false, true,
                   false, true, false, true, false, true, true, 2, 11, 6, false);
  EXPECT_EQ(Query_Rows("Key, Title, Location, FirstDate - 45306, LastDate - 45306, Freq, Period, Priority, "
                       "PeriodDefault, User, AllDay, Private, P1 || P2 || P3 || P4 || P5, P6 || P7 || P8 || "
                       "P9 || P10, Month, Instance, EventType, Started || Completed || Percentage || Status "
                       "|| Budget || Worked, Type, CAST(Notes AS TEXT)",
                       "KT_Events"),
            key + "|Title|Location|0.375|20.0|4|7|3|0|user|1|0|10101|01011|11|2|6|000000|-1|Notes");
  EXPECT_EQ(Query_Rows("Key, Contact, Book, Event, Actioned, EventDate - 45306", "KT_Events_Data"),
            first + "|contact|" + database.Book().Key + "|" + key + "|0|0.375")
      << "Actioned is ignored without MarkPastActioned";
  EXPECT_EQ(Query_Rows("Key, User, Offset, WAVFile, NextTime, Actioned", "KT_Alarms"),
            first + "|user|45|sound.wav|0.0|0");
}

TEST_F(Creation, Sets_Go_To_Their_Last_Day_Whatever_The_Time_Or_Have_One_Occurrence) {
  TNew_Event event = Daily(Monday + 0.375, Monday + 4);
  const std::string first = Write(event);
  EXPECT_EQ(Dates(), "0.375 1.375 2.375 3.375 4.375");
  EXPECT_EQ(Query_Text("SELECT Key FROM KT_Events_Data ORDER BY EventDate"), first);
  event.Record.Pattern.Freq = TFrequency::None;
  event.Alarm.On = true;
  Write(event);
  EXPECT_EQ(Counts(), "2 6 1");
  Write(Daily(Monday, Monday - 1));
  for (const int period : {0, -1}) {
    TNew_Event standing = Daily(Monday, Monday + 100);
    standing.Record.Pattern.Period = period;
    Write(standing);
  }
  EXPECT_EQ(Counts(), "5 9 1") << "an interval that does not move forward ends the set";
  TNew_Event for_ever = Daily(Monday, Encode_Date(9999, 12, 31));
  for_ever.Record.Pattern.PeriodDefault = false;
  Write(for_ever);
  EXPECT_EQ(Counts(), "6 10 1") << "no day is chosen";
  for_ever.Record.Pattern.Freq = TFrequency::Yearly;
  for_ever.Record.Pattern.PeriodDefault = true;
  Write(for_ever);
  EXPECT_EQ(Counts(), "7 " + std::to_string(10 + 9999 - 2024 + 1) + " 1");
}

TEST_F(Creation, Occurrences_Before_Day_0_Are_Left_Out_But_The_First) {
  Write(Daily(-1, 1));
  EXPECT_EQ(Query_Rows("EventDate", "KT_Events_Data"), "-1.0")
      << "the step onto day 0 gives 0, which means that there is none";
  Write(Daily(-2.5, 1));
  EXPECT_EQ(Query_Rows("EventDate", "KT_Events_Data ORDER BY EventDate"), "-2.5, -1.0, 0.5, 1.5");
}

TEST_F(Creation, Past_Occurrences_Are_Marked_When_Asked) {
  seams.Clock.Value = Monday + 2.5;
  TNew_Event event = Daily(Monday + 0.9, Monday + 4);
  event.Alarm.On = true;
  const auto marks = [&](bool actioned, bool past) {
    event.Actioned = actioned;
    event.MarkPastActioned = past;
    Run_Sql("DELETE FROM KT_Alarms; DELETE FROM KT_Events_Data");
    database.Reopen();
    Write(event);
    return Query_Rows("d.Actioned || a.Actioned",
                      "KT_Events_Data d JOIN KT_Alarms a USING (Key) ORDER BY EventDate");
  };
  EXPECT_EQ(marks(true, false), "00, 00, 00, 00, 00");
  EXPECT_EQ(marks(true, true), "11, 11, 11, 11, 11");
  EXPECT_EQ(marks(false, true), "11, 11, 00, 00, 00") << "today's is not past";
}

TEST_F(Creation, A_Failure_Or_Refusal_Undoes_All_And_A_Failure_Keeps_The_Key) {
  TNew_Event event = Daily(Monday + 16, Monday + 2000);  // 31 January
  event.Alarm.On = true;
  Plant("INSERT ON KT_Alarms WHEN (SELECT count(*) FROM KT_Alarms) = 3");
  seams.Prompts.Expect_Undone("planted fault", Tag);
  EXPECT_EQ(Create_Event(event, key), "");
  EXPECT_EQ(key.size(), 36u);
  event.Record.Pattern.Freq = TFrequency::Yearly;
  event.Record.Pattern.PeriodDefault = false;
  event.Record.Pattern.Month = 1;
  event.Record.Pattern.Set_Flag(4);
  seams.Prompts.Expect_Undone("The month of the pattern has no such day", Tag);
  EXPECT_EQ(Write(event), "");
  database.Reopen_Read_Only();
  key.clear();
  EXPECT_EQ(Create_Event(Daily(Monday, Monday), key) + key, "");
  EXPECT_EQ(Counts(), "0 0 0");
}

TEST_F(Creation, Entries_Join_The_Bracket_Of_Their_Caller) {
  Create_Event(Daily(Monday, Monday), key);
  const auto add = [](const std::string& master) {
    Create_Event_Entry(master, "c", "b", "u", "w", true, true, Monday + 1, 5);
  };
  EXPECT_THROW(add(key), EData_Error);
  ASSERT_TRUE(Start_Update());
  add(key);
  EXPECT_THROW(add("no such event"), EData_Error);
  EXPECT_THROW(EndUpdate(), EData_Error);
  EXPECT_EQ(Counts(), "1 1 0");
  In_Update([&] { add(key); });
  EXPECT_EQ(Query_Rows("User, Offset, WAVFile, NextTime, Actioned", "KT_Alarms"), "u|5|w|0.0|1");
}

TEST_F(Creation, Memory_Does_Not_Grow_With_The_Number_Of_Occurrences) {
  // The first set fills the page cache, which has a bound of its own.
  EXPECT_NE(Write(Daily(1, 200'000)), "");
  const std::int64_t before = Peak_Memory();
  EXPECT_NE(Write(Daily(1, 200'000)), "");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data"), 400'000);
  EXPECT_LT(Peak_Memory() - before, 12'000'000) << "200,000 rows of some 150 bytes would be 30,000,000";
}

}  // namespace
