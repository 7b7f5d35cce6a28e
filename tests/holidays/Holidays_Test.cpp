#include "Holidays.h"

#include "Test_Seams.h"

namespace {

using namespace Plexidex;

// The holidays from one day to another as "MM-dd Name", separated by commas.
std::string Days(const std::string& code, TDateTime from, TDateTime to) {
  std::string text;
  for (const THoliday& holiday : Holidays_Between(code, Whole_Day(from), Whole_Day(to))) {
    text += (text.empty() ? "" : ", ") + FormatDateTime("mm-dd ", static_cast<TDateTime>(holiday.Day)) +
            holiday.Name;
  }
  return text;
}

TEST(Holidays, Fall_On_The_Days_That_Are_Known) {
  const struct {
    const char* Code;
    int Year, First_Month, Last_Month;
    const char* Days;
  } cases[] = {
      // Easter at its earliest and latest, of the west and of the east.
      {"DE", 2008, 3, 5,
       "03-21 Good Friday, 03-24 Easter Monday, 05-01 Labour Day, 05-01 Ascension Day, 05-12 Whit Monday"},
      {"FR", 2038, 4, 4, "04-26 Easter Monday"},
      {"GR", 2024, 3, 5,
       "03-18 Clean Monday, 03-25 Independence Day, 05-01 Labour Day, 05-03 Good Friday, 05-05 Easter "
       "Sunday, "
       "05-06 Easter Monday"},
      // Substitutes, also in the year before, one after the other, and over days that are taken.
      {"US", 2021, 12, 12,
       "12-24 Christmas Eve, 12-24 Christmas Day (observed), 12-25 Christmas Day, 12-31 New Year's Eve, "
       "12-31 "
       "New Year's Day (observed)"},
      {"GB", 2021, 12, 12,
       "12-25 Christmas Day, 12-26 Boxing Day, 12-27 Christmas Day (observed), 12-28 Boxing Day (observed)"},
      {"GB", 2022, 12, 12, "12-25 Christmas Day, 12-26 Boxing Day, 12-27 Christmas Day (observed)"},
      {"NL", 2014, 4, 4, "04-18 Good Friday, 04-20 Easter Sunday, 04-21 Easter Monday, 04-26 King's Day"},
      {"JP", 2009, 5, 5,
       "05-03 Constitution Day, 05-04 Greenery Day, 05-05 Children's Day, 05-06 Substitute Holiday"},
      {"JP", 2026, 9, 9,
       "09-21 Respect for the Aged Day, 09-22 National Holiday, 09-23 Autumnal Equinox Day"},
      {"JP", 1984, 1, 1,
       "01-01 New Year's Day, 01-02 Bank Holiday, 01-02 Substitute Holiday, 01-03 Bank "
       "Holiday, 01-15 Coming of Age Day, 01-16 Substitute Holiday"},
      // Introduced, moved, abolished, and held once.
      {"IT", 1978, 6, 6, "06-04 Republic Day"},
      {"DE", 1995, 11, 11, ""},
      {"GB", 2022, 6, 9,
       "06-02 Spring Bank Holiday, 06-03 Platinum Jubilee of Queen Elizabeth II, 09-19 State Funeral of "
       "Queen "
       "Elizabeth II"},
      {"GB", 1949, 1, 12, ""},
      {"US", 2028, 11, 11,
       "11-07 Election Day, 11-10 Veterans Day (observed), 11-11 Veterans Day, 11-23 "
       "Thanksgiving"},
      // Other calendars, twice in a year too.
      {"TR", 2024, 4, 4,
       "04-10 Ramadan Feast, 04-11 Ramadan Feast, 04-12 Ramadan Feast, 04-23 National Sovereignty and "
       "Children's Day"},
      {"TR", 2000, 12, 12, "12-27 Ramadan Feast, 12-28 Ramadan Feast, 12-29 Ramadan Feast"},
      {"TR", 2000, 1, 1,
       "01-01 New Year's Day, 01-08 Ramadan Feast, 01-09 Ramadan Feast, 01-10 Ramadan Feast"},
      {"IL", 2024, 4, 5, "04-23 Passover, 04-29 Seventh Day of Passover, 05-14 Independence Day"},
      {"IL", 2025, 5, 5, "05-01 Independence Day"},
      {"KR", 2025, 10, 10,
       "10-03 National Foundation Day, 10-05 Chuseok, 10-06 Chuseok, 10-07 Chuseok, 10-08 Chuseok "
       "(observed), "
       "10-09 Hangul Day"},
      {"CN", 2024, 4, 6, "04-04 Tomb-Sweeping Day, 05-01 Labour Day, 06-10 Dragon Boat Festival"},
      {"XX", 2024, 1, 12, ""},
  };
  for (const auto& each : cases) {
    EXPECT_EQ(Days(each.Code, Encode_Date(each.Year, each.First_Month, 1),
                   Encode_Date(each.Year, each.Last_Month, Days_In_Month(each.Year, each.Last_Month))),
              each.Days)
        << each.Code << ' ' << each.Year;
  }
}

TEST(Holidays, Of_The_Countries_That_Were_Chosen) {
  TTest_Seams seams("de_AT");
  seams.Settings.Values.clear();
  EXPECT_EQ(Chosen_Countries(), std::vector<std::string>{"AT"});
  seams.Settings.Write("Calendar", "Holiday Countries", " fr, Atlantis,Switzerland,,FR");
  EXPECT_EQ(Chosen_Countries(), (std::vector<std::string>{"FR", "CH"}));
  Choose_Countries({});
  EXPECT_EQ(Chosen_Countries(), std::vector<std::string>{});
}

}  // namespace
