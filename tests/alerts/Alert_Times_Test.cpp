#include <cstdlib>

#include "Alert_Fixture.h"
#include "UTC_Clock.h"

namespace {

struct TTest_Clock : TUTC_Clock {
  TDateTime UTC() override { return Value; }
  TDateTime Value = 0;
};

// A program in a place with daylight saving, by a clock that counts in UTC.
struct Alert_Times : TAlert_Test {
  Alert_Times() {
    setenv("TZ", "Europe/Vienna", 1);
    Install_Time_Zone("");
    Install_Clock(&clock);
  }
  ~Alert_Times() override {
    Install_Clock(&seams.Clock);
    unsetenv("TZ");
  }
  void Set_UTC(const std::string& iso) { EXPECT_TRUE(Str2DateTime(iso, clock.Value)) << iso; }
  void Pass(int minutes) { clock.Value = SubtractMins(clock.Value, -minutes); }
  /// Looks every minute for so long; in how many something goes off, or -1. The program may be a new one each
  /// time.
  int Minutes_Until_News(int at_most, bool anew) {
    for (int minutes = 1; minutes <= at_most; ++minutes) {
      Pass(1);
      if (anew) watch = std::make_unique<TAlert_Watch>();
      if (watch->Look() && !watch->News().empty()) return minutes;
    }
    return -1;
  }

  TTest_Clock clock;
};

TEST_F(Alert_Times, What_Is_Put_Off_Comes_After_That_Time_Though_The_Clocks_Change) {
  struct {
    const char* UTC;
    int Delay, Comes_After;
  } const tests[] = {
      {"2024-03-31T00:50:00", 15, 15},    // 1:50 to 3:05
      {"2024-10-26T22:30:00", 240, 240},  // 0:30 to 3:30
      {"2024-10-26T23:50:00", 15, 15},    // 1:50 to 2:05
      {"2024-10-27T01:40:00", 30, 30},    // 2:40, for the second time, to 3:10
      {"2024-10-27T01:10:00", 5, 5},      // the second time all along
      {"2024-10-27T01:10:00", 240, 240},
      // A time that the clock shows for the second time would come at once or too early: after that hour.
      {"2024-10-27T00:40:00", 30, 90},
      {"2024-10-27T00:10:00", 65, 125},
  };
  for (const auto& test : tests) {
    for (const bool anew : {false, true}) {
      Set_UTC(test.UTC);
      const TDateTime due = Now();
      Pass(-180);
      Add_At("Tea", due);
      Set_UTC(test.UTC);
      Look_After_Restart();
      ASSERT_EQ(Shown().size(), 1u) << test.UTC;
      EXPECT_TRUE(TAlert_Watch::Put_Off(Shown(), test.Delay));
      EXPECT_EQ(Minutes_Until_News(300, anew), test.Comes_After) << test.UTC << " " << test.Delay << anew;
      EXPECT_TRUE(TAlert_Watch::Dismiss(Shown()));
    }
  }
}

TEST_F(Alert_Times, An_Alarm_Of_An_Hour_That_Is_Skipped_Or_Comes_Twice_Goes_Off_Once) {
  for (const auto& [utc, due, first] : {std::tuple("2024-03-30T23:30:00", 45382 + 2.5 / 24, 90),
                                        {"2024-10-26T22:30:00", 45592 + 2.5 / 24, 120}}) {
    for (const bool answered : {true, false}) {
      Set_UTC(utc);
      Add_At("Tea", due);
      Look_After_Restart();
      EXPECT_EQ(Minutes_Until_News(300, false), first) << utc;
      EXPECT_EQ(Shown().size(), 1u);
      if (answered) TAlert_Watch::Dismiss(Shown());
      EXPECT_EQ(Minutes_Until_News(300, false), -1) << utc << answered;
      EXPECT_EQ(Shown().size(), answered ? 0u : 1u) << utc;
      TAlert_Watch::Dismiss(Shown());
    }
  }
}

TEST_F(Alert_Times, A_Journey_Neither_Loses_Nor_Repeats) {
  // What is to come is due by the clock of the place, and what was shown stays.
  struct {
    const char *Zone, *Local, *Sees;
  } const stops[] = {{"Pacific/Kiritimati", "2024-01-15T22:01:00", "Answered, Open | Answered, Open"},
                     {"Etc/GMT+12", "2024-01-14T20:02:00", "Open | "},
                     {"America/New_York", "2024-01-15T03:03:00", "-"},
                     {"Asia/Tokyo", "2024-01-15T17:04:00", "-"}};
  Set_UTC("2024-01-14T12:00:00");
  Add_At("Answered", Monday + 20.0 / 24);
  Add_At("Open", Monday + 21.0 / 24);
  Add_At("Evening", Monday + 23.0 / 24);
  Look();
  Set_UTC("2024-01-15T08:00:00");
  for (const auto& stop : stops) {
    setenv("TZ", stop.Zone, 1);
    Pass(1);
    EXPECT_EQ(Look(), stop.Sees) << stop.Zone;
    EXPECT_EQ(ISO_DateTime(Now()), stop.Local);
    if (Shown().size() == 2) TAlert_Watch::Dismiss({Shown()[0]});
    ASSERT_FALSE(Shown().empty());
    EXPECT_EQ(Shown().back().Title, "Open");
  }
  EXPECT_EQ(Minutes_Until_News(600, false), 356);
  EXPECT_EQ(Look_After_Restart(), "Open, Evening | Open, Evening");
}

}  // namespace
