#include "Rule_Dates.h"

#include <iterator>
#include <random>

#include "Import_Fixture.h"

namespace {

struct Rule_Translation : Import_Fixture {
  /// A row has the start, the rule, the frequency that was stored, the numbers of masters and of dates, the
  /// first dates and the last one.
  void Check(const std::string& row) const {
    std::istringstream stream(row);
    const std::vector<std::string> words{std::istream_iterator<std::string>(stream), {}};
    const char* const start = words[0].size() == 8 ? "DTSTART;VALUE=DATE:" : "DTSTART:";
    Import(Event("UID:rule|SUMMARY:Rule|" + (start + words[0]) + "|RRULE:" + words[1]));
    const std::string dates = Replaced(Dates_Of("Rule"), "T......", "");
    const std::string first = dates.substr(0, 9 * (words.size() - 6));
    EXPECT_EQ(words[0] + " " + words[1] + " " + Of("Rule", "max(Freq)") + " " +
                  Query_Text("SELECT count(DISTINCT Event) || ' ' || count(*) FROM KT_Events_Data") + " " +
                  first + dates.substr(dates.size() - 8),
              row);
  }
};

TEST_F(Rule_Translation, What_The_Engine_Can_Say_Becomes_A_Set) {
  for (const char* row : {
           "20240101T090000 FREQ=DAILY;INTERVAL=3;COUNT=4 1 1 4 20240101 20240104 20240110",
           "20240103T090000 FREQ=DAILY;BYDAY=MO,WE;COUNT=5 1 1 5 20240103 20240108 20240117",
           "20240101T090000 FREQ=WEEKLY;COUNT=3 2 1 3 20240101 20240108 20240115",
           "20240103T090000 FREQ=WEEKLY;INTERVAL=2;BYDAY=MO,WE;COUNT=4 2 1 4 20240103 20240115 20240129",
           "20240115T090000 FREQ=MONTHLY;INTERVAL=2;COUNT=3 3 1 3 20240115 20240315 20240515",
           "20240109T090000 FREQ=MONTHLY;BYDAY=2TU;COUNT=3 3 1 3 20240109 20240213 20240312",
           "20240109T090000 FREQ=MONTHLY;BYDAY=TU;BYSETPOS=2;COUNT=3 3 1 3 20240109 20240213 20240312",
           "20240126T090000 FREQ=MONTHLY;BYDAY=-1FR;COUNT=3 3 1 3 20240126 20240223 20240329",
           "20240131T090000 FREQ=MONTHLY;BYDAY=MO,TU,WE,TH,FR;BYSETPOS=-1;COUNT=3 3 1 3 20240131 "
           "20240329",
           "20240106T090000 FREQ=MONTHLY;BYDAY=SA,SU;BYSETPOS=1;COUNT=3 3 1 3 20240106 20240203 20240302",
           "20240131T090000 FREQ=MONTHLY;BYMONTHDAY=-1;COUNT=4 3 1 4 20240131 20240229 20240331 20240430",
           "20240102T090000 FREQ=MONTHLY;BYDAY=SU,MO,TU,WE,TH,FR,SA;BYSETPOS=2;COUNT=3 3 1 3 20240102 "
           "20240302",
           "20240315 FREQ=YEARLY;INTERVAL=2;COUNT=3 4 1 3 20240315 20260315 20280315",
           "20240512T090000 FREQ=YEARLY;BYMONTH=5;BYDAY=2SU;COUNT=3 4 1 3 20240512 20250511 20260510",
           "20240101T090000 FREQ=YEARLY;BYMONTH=1,7;COUNT=4 3 1 4 20240101 20240701 20250701",
           "20240101T090000 FREQ=DAILY;UNTIL=20240104T085959 1 1 3 20240101 20240103",
           "20240101T090000 FREQ=DAILY;UNTIL=20240104 1 1 4 20240101 20240104",
           // 8 o'clock UTC is the 9 o'clock of the last date.
           "20240101T090000 FREQ=DAILY;UNTIL=20240104T080000Z 1 1 4 20240101 20240104",
           // A start that does not meet the rule is no date of it.
           "20240102T090000 FREQ=WEEKLY;BYDAY=MO;COUNT=2 2 1 2 20240108 20240115",
       })
    Check(row);
}

TEST_F(Rule_Translation, What_It_Cannot_Say_Becomes_Single_Events) {
  for (const char* row : {
           // We would clamp to the ends of short months and stay there; the rule skips them.
           "20240131T090000 FREQ=MONTHLY;COUNT=3 0 3 3 20240131 20240331 20240531",
           "20240229 FREQ=YEARLY;COUNT=3 0 3 3 20240229 20280229 20320229",
           "20240130T090000 FREQ=MONTHLY;BYDAY=5TU;COUNT=2 0 2 2 20240130 20240430",
           // Its weeks begin on Sunday, ours on Monday.
           "20240107T090000 FREQ=WEEKLY;INTERVAL=2;WKST=SU;BYDAY=SU,MO;COUNT=4 0 4 4 20240107 20240122",
           "20240101T090000 FREQ=DAILY;BYHOUR=9,17;COUNT=4 0 4 4 20240101 20240101 20240102 20240102",
           "20240101T090000 FREQ=HOURLY;INTERVAL=12;COUNT=3 0 3 3 20240101 20240101 20240102",
           "20240101T090000 FREQ=HOURLY;BYHOUR=9;BYDAY=MO;COUNT=2 0 2 2 20240101 20240108",
           "20240101T090000 FREQ=YEARLY;BYYEARDAY=1,100;COUNT=3 0 3 3 20240101 20240409 20250101",
           "20240101T090000 FREQ=DAILY;COUNT=1 0 1 1 20240101",
           // Creation leaves out the dates before 1900 that follow the first.
           "18980501 FREQ=YEARLY;COUNT=4 0 4 4 18980501 18990501 19010501",
       })
    Check(row);
}

TEST_F(Rule_Translation, Endless_Rules_End_At_The_Given_Day_And_Others_Do_Not) {
  Check("20240101T090000 FREQ=YEARLY 4 1 11 20240101 20340101");
  options.Has_Until = true;
  options.Until = Encode_Date(2024, 1, 5);
  Check("20240101T090000 FREQ=DAILY 1 1 5 20240101 20240105");
  Check("20240101T090000 FREQ=DAILY;COUNT=9 1 1 9 20240101 20240109");
  Check("20240201T090000 FREQ=DAILY 0 1 1 20240201");
}

TEST_F(Rule_Translation, Rules_That_Cannot_Be_Followed_Are_Reported) {
  const auto unused = Import(Event("UID:x|DTSTART;VALUE=DATE:20240101|RRULE:FREQ=HOURLY;COUNT=3")).Unused;
  EXPECT_EQ(Remarks(unused), "x: its rule repeats within the day, but the event has no time of day\n");
  EXPECT_EQ(Counts(), "0 0 0");

  const auto report = Import(
      Event("UID:never|SUMMARY:Never|DTSTART:20240101T090000|RRULE:FREQ=YEARLY;BYMONTH=2;BYMONTHDAY=30"));
  EXPECT_EQ(Remarks(report.Left_Out), "Never (never): its rule gives no date; only its start was written\n");
  EXPECT_EQ(Dates_Of("Never"), "20240101T090000");
}

TEST_F(Rule_Translation, What_Is_Too_Much_Comes_With_Its_First_Date_Until_More_Is_Allowed) {
  options.Most_Entries = 40;
  const std::string long_notes(20 << 10, 'n');
  const std::string text =
      Event("UID:a|SUMMARY:Good|DTSTART:20240101T090000|RRULE:FREQ=DAILY;COUNT=30") +
      Event("UID:b|SUMMARY:Too many|DTSTART:20240102T090000|RRULE:FREQ=WEEKLY;BYDAY=MO") +
      Event("UID:c|SUMMARY:Too long|DTSTART:20240101T090000|RDATE:20240102T090000|DESCRIPTION:" +
            long_notes) +
      Event(
          "UID:d|SUMMARY:Too slow|DTSTART:20240101T090000|RRULE:FREQ=MINUTELY;INTERVAL=7;BYHOUR=2,3;"
          "BYMINUTE=0;BYYEARDAY=366;BYMONTHDAY=1") +
      Event("UID:e|SUMMARY:Many days|DTSTART;VALUE=DATE:20240101|DTEND;VALUE=DATE:20250101");
  const std::string many = " would bring more than the 40 entries that a file may bring",
                    rest = "; only its first date was written; a higher limit of entries allows more\n";
  EXPECT_EQ(Remarks(Import(text).Left_Out), "Too many (b):" + many + rest + "Too long (c):" + many + rest +
                                                "Too slow (d): has a rule that takes too long to follow" +
                                                rest + "Many days (e):" + many + rest);
  EXPECT_EQ(Query_Rows("Title, Freq, count(*)",
                       "KT_Events e JOIN KT_Events_Data d ON d.Event = e.Key GROUP BY e.Key ORDER BY 1"),
            "Good|1|30, Many days|0|1, Too long|0|1, Too many|0|1, Too slow|0|1");
  EXPECT_EQ(Dates_Of("Too many"), "20240108T090000");
  EXPECT_EQ(Told(Import(text)), "read 5, unchanged 5");
  options.Most_Entries = 5000;
  EXPECT_EQ(Told(Import(text)).substr(0, 26), "read 5, sets 2, events 3, ");
  options.Most_Entries = 4;
  EXPECT_THROW(Import(text), EImport_Error);
}

// Whatever becomes of a rule, the stored dates are its dates.
TEST_F(Rule_Translation, Stored_Dates_Are_The_Rules_Dates) {
  std::mt19937 random(20240115);
  const auto one_of = [&](std::initializer_list<const char*> texts) {
    return std::string(*(texts.begin() + random() % texts.size()));
  };
  int sets = 0;
  for (int i = 0; i < 150; ++i) {
    const std::string day = std::to_string(10 + random() % 22),
                      month = one_of({"01", "02", "03", "10", "12"});
    const std::string start = "2024" + month + (month == "02" && day > "29" ? "29" : day) + "T" +
                              one_of({"003000", "090000", "233000"});
    const std::string zone = one_of({"Europe/Berlin", "America/New_York", "Asia/Tokyo"});
    std::string rule =
        "FREQ=" + one_of({"DAILY", "WEEKLY", "MONTHLY", "YEARLY"}) +
        one_of({"", ";INTERVAL=2", ";INTERVAL=3"}) +
        one_of({"", "", ";BYDAY=MO", ";BYDAY=TU,TH", ";BYDAY=MO,TU,WE,TH,FR", ";BYDAY=SA,SU"}) +
        one_of({"", "", ";BYMONTH=3", ";WKST=SU"});
    if (rule.find("BYDAY") != std::string::npos && (rule[5] == 'M' || rule[5] == 'Y'))
      rule += one_of({"", ";BYSETPOS=1", ";BYSETPOS=-1"});
    rule += one_of({";COUNT=2", ";COUNT=7", ";COUNT=40"});
    SCOPED_TRACE(zone + " " + start + " " + rule);

    sets += static_cast<int>(
        Import(Event("UID:random|SUMMARY:Random|DTSTART;TZID=" + zone + ":" + start + "|RRULE:" + rule))
            .Sets);
    TFile_Time from;
    from.Wall = Read_Wall_Time(icaltime_from_string(start.c_str())).value();
    from.Zone = TZone::Named(zone);
    std::string expected;
    TImport_Budget budget;
    TRule_Dates dates(rule, from, 0, budget);
    while (const auto date = dates.Next()) expected += (expected.empty() ? "" : " ") + As_In_File(*date);
    ASSERT_EQ(Dates_Of("Random"), expected.empty() ? As_In_File(from.Local()) : expected);
    ASSERT_TRUE(Is_Sound());
  }
  EXPECT_GT(sets, 30);
  EXPECT_LT(sets, 120);
}

}  // namespace
