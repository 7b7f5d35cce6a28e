#include "Rule_Dates.h"

#include <random>

#include "Import_Fixture.h"

namespace {

using namespace Kt_util_01;

class Rule_Translation : public Kt_test::Import_Fixture {
 protected:
  struct TCase {
    const char* Start;
    const char* Rule;
    int Freq;  // of the set; 0 for single events
    std::size_t Count;
    std::vector<const char*> First;  // dates
    const char* Last;
  };

  void Check(const TCase& test) {
    const std::string rule = std::string("RRULE:") + test.Rule;
    SCOPED_TRACE(rule);
    Import(Event({"UID:rule", "SUMMARY:Rule", test.Start, rule.c_str()}));
    const std::vector<std::string> dates = Dates("Rule");
    ASSERT_EQ(dates.size(), test.Count);
    for (std::size_t i = 0; i < test.First.size(); ++i) EXPECT_EQ(dates[i].substr(0, 10), test.First[i]) << i;
    EXPECT_EQ(dates.back().substr(0, 10), test.Last);
    EXPECT_EQ(Of("Rule", "max(Freq)"), std::to_string(test.Freq));
    EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"),
              test.Freq > 0 ? 1 : static_cast<int>(test.Count));
  }
};

TEST_F(Rule_Translation, What_The_Engine_Can_Say_Becomes_A_Set) {
  const TCase cases[] = {
      {"DTSTART:20240101T090000",
       "FREQ=DAILY;INTERVAL=3;COUNT=4",
       1,
       4,
       {"2024-01-01", "2024-01-04"},
       "2024-01-10"},
      {"DTSTART:20240103T090000",
       "FREQ=DAILY;BYDAY=MO,WE;COUNT=5",
       1,
       5,
       {"2024-01-03", "2024-01-08"},
       "2024-01-17"},
      {"DTSTART:20240101T090000", "FREQ=WEEKLY;COUNT=3", 2, 3, {"2024-01-01", "2024-01-08"}, "2024-01-15"},
      {"DTSTART:20240103T090000",
       "FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,WE;COUNT=4",
       2,
       4,
       {"2024-01-03", "2024-01-15", "2024-01-17"},
       "2024-01-29"},
      {"DTSTART:20240115T090000",
       "FREQ=MONTHLY;INTERVAL=2;COUNT=3",
       3,
       3,
       {"2024-01-15", "2024-03-15"},
       "2024-05-15"},
      {"DTSTART:20240109T090000",
       "FREQ=MONTHLY;BYDAY=2TU;COUNT=3",
       3,
       3,
       {"2024-01-09", "2024-02-13"},
       "2024-03-12"},
      {"DTSTART:20240109T090000",
       "FREQ=MONTHLY;BYDAY=TU;BYSETPOS=2;COUNT=3",
       3,
       3,
       {"2024-01-09", "2024-02-13"},
       "2024-03-12"},
      {"DTSTART:20240126T090000",
       "FREQ=MONTHLY;BYDAY=-1FR;COUNT=3",
       3,
       3,
       {"2024-01-26", "2024-02-23"},
       "2024-03-29"},
      {"DTSTART:20240131T090000",
       "FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1;COUNT=3",
       3,
       3,
       {"2024-01-31", "2024-02-29"},
       "2024-03-29"},
      {"DTSTART:20240106T090000",
       "FREQ=MONTHLY;BYDAY=SA,SU;BYSETPOS=1;COUNT=3",
       3,
       3,
       {"2024-01-06", "2024-02-03"},
       "2024-03-02"},
      {"DTSTART:20240131T090000",
       "FREQ=MONTHLY;BYMONTHDAY=-1;COUNT=4",
       3,
       4,
       {"2024-01-31", "2024-02-29", "2024-03-31"},
       "2024-04-30"},
      {"DTSTART:20240102T090000",
       "FREQ=MONTHLY;BYDAY=SU,MO,TU,WE,TH,FR,SA;BYSETPOS=2;COUNT=3",
       3,
       3,
       {"2024-01-02"},
       "2024-03-02"},
      {"DTSTART;VALUE=DATE:20240315",
       "FREQ=YEARLY;INTERVAL=2;COUNT=3",
       4,
       3,
       {"2024-03-15", "2026-03-15"},
       "2028-03-15"},
      {"DTSTART:20240512T090000",
       "FREQ=YEARLY;BYMONTH=5;BYDAY=2SU;COUNT=3",
       4,
       3,
       {"2024-05-12", "2025-05-11"},
       "2026-05-10"},
      {"DTSTART:20240101T090000",
       "FREQ=YEARLY;BYMONTH=1,7;COUNT=4",
       3,
       4,
       {"2024-01-01", "2024-07-01"},
       "2025-07-01"},
      {"DTSTART:20240101T090000", "FREQ=DAILY;UNTIL=20240104T085959", 1, 3, {"2024-01-01"}, "2024-01-03"},
      {"DTSTART:20240101T090000", "FREQ=DAILY;UNTIL=20240104", 1, 4, {"2024-01-01"}, "2024-01-04"},
      // 8 o'clock UTC is the 9 o'clock of the last date.
      {"DTSTART:20240101T090000", "FREQ=DAILY;UNTIL=20240104T080000Z", 1, 4, {"2024-01-01"}, "2024-01-04"},
      // A start that does not meet the rule is no date of it.
      {"DTSTART:20240102T090000", "FREQ=WEEKLY;BYDAY=MO;COUNT=2", 2, 2, {"2024-01-08"}, "2024-01-15"},
  };
  for (const TCase& test : cases) Check(test);
}

TEST_F(Rule_Translation, What_It_Cannot_Say_Becomes_Single_Events) {
  const TCase cases[] = {
      // We would clamp to the ends of short months and stay there; the rule skips them.
      {"DTSTART:20240131T090000", "FREQ=MONTHLY;COUNT=3", 0, 3, {"2024-01-31", "2024-03-31"}, "2024-05-31"},
      {"DTSTART;VALUE=DATE:20240229",
       "FREQ=YEARLY;COUNT=3",
       0,
       3,
       {"2024-02-29", "2028-02-29"},
       "2032-02-29"},
      {"DTSTART:20240130T090000", "FREQ=MONTHLY;BYDAY=5TU;COUNT=2", 0, 2, {"2024-01-30"}, "2024-04-30"},
      // Its weeks begin on Sunday, ours on Monday.
      {"DTSTART:20240107T090000",
       "FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=SU,MO;COUNT=4",
       0,
       4,
       {"2024-01-07", "2024-01-08", "2024-01-21"},
       "2024-01-22"},
      {"DTSTART:20240101T090000",
       "FREQ=DAILY;BYHOUR=9,17;COUNT=4",
       0,
       4,
       {"2024-01-01", "2024-01-01", "2024-01-02"},
       "2024-01-02"},
      {"DTSTART:20240101T090000",
       "FREQ=HOURLY;INTERVAL=12;COUNT=3",
       0,
       3,
       {"2024-01-01", "2024-01-01"},
       "2024-01-02"},
      {"DTSTART:20240101T090000",
       "FREQ=HOURLY;BYHOUR=9;BYDAY=MO;COUNT=2",
       0,
       2,
       {"2024-01-01"},
       "2024-01-08"},
      {"DTSTART:20240101T090000",
       "FREQ=YEARLY;BYYEARDAY=1,100;COUNT=3",
       0,
       3,
       {"2024-01-01", "2024-04-09"},
       "2025-01-01"},
      {"DTSTART:20240101T090000", "FREQ=DAILY;COUNT=1", 0, 1, {"2024-01-01"}, "2024-01-01"},
      // Creation leaves out the dates before 1900 that follow the first.
      {"DTSTART;VALUE=DATE:18980501",
       "FREQ=YEARLY;COUNT=4",
       0,
       4,
       {"1898-05-01", "1899-05-01"},
       "1901-05-01"},
  };
  for (const TCase& test : cases) Check(test);
}

TEST_F(Rule_Translation, Endless_Rules_End_At_The_Given_Day_And_Others_Do_Not) {
  Check({"DTSTART:20240101T090000", "FREQ=YEARLY", 4, 11, {"2024-01-01"}, "2034-01-01"});
  m_Options.Has_Until = true;
  m_Options.Until = Encode_Date(2024, 1, 5);
  Check({"DTSTART:20240101T090000", "FREQ=DAILY", 1, 5, {"2024-01-01"}, "2024-01-05"});
  Check({"DTSTART:20240101T090000", "FREQ=DAILY;COUNT=9", 1, 9, {"2024-01-01"}, "2024-01-09"});
  Check({"DTSTART:20240201T090000", "FREQ=DAILY", 0, 1, {"2024-02-01"}, "2024-02-01"});
}

TEST_F(Rule_Translation, Rules_That_Cannot_Be_Followed_Are_Reported) {
  m_Options.Has_Until = true;
  m_Options.Until = Encode_Date(9999, 12, 31);
  const struct {
    const char *Start, *Rule, *Why;
  } cases[] = {
      {"DTSTART:20240101T090000", "RRULE:FREQ=SECONDLY", "more than 100000 dates"},
      {"DTSTART:20240101T090000", "RRULE:FREQ=DAILY", "more than 100000 dates"},
      {"DTSTART:20240101T090000", "RRULE:FREQ=SECONDLY;INTERVAL=2;BYSECOND=1", "cannot be followed"},
      {"DTSTART;VALUE=DATE:20240101", "RRULE:FREQ=HOURLY;COUNT=3", "no time of day"},
  };
  for (const auto& test : cases) {
    const auto report = Import(Event({"UID:x", "SUMMARY:X", test.Start, test.Rule}));
    ASSERT_EQ(report.Unused.size(), 1u) << test.Rule;
    EXPECT_EQ(report.Unused[0].What, "x");
    EXPECT_NE(report.Unused[0].Why.find(test.Why), std::string::npos) << report.Unused[0].Why;
  }
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 0);

  const auto report = Import(Event({"UID:never", "SUMMARY:Never", "DTSTART:20240101T090000",
                                    "RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30"}));
  EXPECT_EQ(Remarks(report.Left_Out), "never: its rule gives no date; only its start was written\n");
  EXPECT_EQ(Dates("Never"), std::vector<std::string>{"2024-01-01T09:00:00"});
}

// Whatever becomes of a rule, the stored dates are its dates.
TEST_F(Rule_Translation, Stored_Dates_Are_The_Rules_Dates) {
  std::mt19937 random(20240115);
  const auto one_of = [&](std::initializer_list<const char*> texts) {
    return *(texts.begin() + random() % texts.size());
  };
  int sets = 0;
  for (int i = 0; i < 150; ++i) {
    const std::string day = std::to_string(10 + random() % 22),
                      month = one_of({"01", "02", "03", "10", "12"});
    const std::string start = "2024" + month + (month == "02" && day > "29" ? "29" : day) + "T" +
                              one_of({"003000", "090000", "233000"});
    const std::string zone = one_of({"Europe/Berlin", "America/New_York", "Asia/Tokyo"});
    std::string rule =
        std::string("FREQ=") + one_of({"DAILY", "WEEKLY", "MONTHLY", "YEARLY"}) +
        one_of({"", ";INTERVAL=2", ";INTERVAL=3"}) +
        one_of({"", "", ";BYDAY=MO", ";BYDAY=TU,TH", ";BYDAY=MO,TU,WE,TH,FR", ";BYDAY=SA,SU"}) +
        one_of({"", "", ";BYMONTH=3", ";WKST=SU"});
    if (rule.find("BYDAY") != std::string::npos && (rule[5] == 'M' || rule[5] == 'Y'))
      rule += one_of({"", ";BYSETPOS=1", ";BYSETPOS=-1"});
    rule += one_of({";COUNT=2", ";COUNT=7", ";COUNT=40"});
    SCOPED_TRACE(zone + " " + start + " " + rule);

    const auto report =
        Import(Event({"UID:random", "SUMMARY:Random", ("DTSTART;TZID=" + zone + ":" + start).c_str(),
                      ("RRULE:" + rule).c_str()}));
    sets += static_cast<int>(report.Sets);
    Plexidex::TFile_Time from;
    from.Wall = Plexidex::Read_Wall_Time(icaltime_from_string(start.c_str())).value();
    from.Zone = Plexidex::TZone::Named(zone);
    std::vector<std::string> expected;
    Plexidex::TRule_Dates dates(rule, from, 0);
    while (const auto date = dates.Next()) expected.push_back(ISO_DateTime(*date));
    if (expected.empty()) expected.push_back(ISO_DateTime(from.Local()));
    ASSERT_EQ(Dates("Random"), expected);
    ASSERT_EQ(Unsound_Rows(), 0);
  }
  EXPECT_GT(sets, 30);
  EXPECT_LT(sets, 120);
}

}  // namespace
