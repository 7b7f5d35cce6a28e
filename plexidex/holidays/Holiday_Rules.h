#pragma once

// The language in which the tables of holidays are written.

#include <span>
#include <string_view>

namespace Plexidex {

enum class TWeekday { Sunday = 1, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday };

enum class TDay_Kind {
  Fixed,        // Month, Day
  Nth,          // the Day-th Weekday of Month, from the end when negative
  On_Or_After,  // the first Weekday from Month, Day on
  Easter,
  Orthodox_Easter,
  Solar_Term,  // in 1980 the sun is there on Day / 10,000 of Month, with the fraction of the day
  Islamic,     // Month and Day of that calendar
  Hebrew,
  Chinese,
  Korean,
};

/// A day of each year, or in calendars with shorter years perhaps two.
struct TDay_Rule {
  TDay_Kind Kind = TDay_Kind::Fixed;
  int Month = 0, Day = 0;
  TWeekday Weekday = TWeekday::Sunday;
  int Offset = 0;  // days after it
  int Length = 1;  // days in a row
  int Every = 1;   // only in years that this divides

  constexpr TDay_Rule Plus(int days) const {
    TDay_Rule rule = *this;
    rule.Offset += days;
    return rule;
  }
  constexpr TDay_Rule Lasting(int days) const {
    TDay_Rule rule = *this;
    rule.Length = days;
    return rule;
  }
  constexpr TDay_Rule Each(int years) const {
    TDay_Rule rule = *this;
    rule.Every = years;
    return rule;
  }
};

constexpr TDay_Rule On(int month, int day) {
  return {.Kind = TDay_Kind::Fixed, .Month = month, .Day = day};
}
constexpr TDay_Rule Nth(int nth, TWeekday weekday, int month) {
  return {.Kind = TDay_Kind::Nth, .Month = month, .Day = nth, .Weekday = weekday};
}
constexpr TDay_Rule Last(TWeekday weekday, int month) {
  return Nth(-1, weekday, month);
}
constexpr TDay_Rule On_Or_After(TWeekday weekday, int month, int day) {
  return {.Kind = TDay_Kind::On_Or_After, .Month = month, .Day = day, .Weekday = weekday};
}
constexpr TDay_Rule Easter(int offset) {
  return {.Kind = TDay_Kind::Easter, .Offset = offset};
}
constexpr TDay_Rule Orthodox_Easter(int offset) {
  return {.Kind = TDay_Kind::Orthodox_Easter, .Offset = offset};
}
constexpr TDay_Rule Solar_Term(int month, int position) {
  return {.Kind = TDay_Kind::Solar_Term, .Month = month, .Day = position};
}
/// A day of another calendar, with months from 1; those of the Hebrew one from Tishri, Adar being the 7th.
constexpr TDay_Rule In_Calendar(TDay_Kind kind, int month, int day) {
  return {.Kind = kind, .Month = month, .Day = day};
}

struct TYears {
  int First = 0, Last = 9999;
};
constexpr TYears Since(int year) {
  return {year, 9999};
}
constexpr TYears Until(int year) {
  return {0, year};
}
constexpr TYears In(int year) {
  return {year, year};
}

/// What becomes of a day that falls on a week-end.
enum class TWeekend {
  As_Usual,  // as in most cases in the country
  Stays,
  Apart,  // stays, and is no holiday to those that look for a free day
  // A further day:
  Nearest_Too,      // Friday for Saturday, Monday for Sunday
  Monday_Too,       // also where that is a holiday already
  Sunday_Next_Too,  // of a Sunday alone, the day after it
  Sunday_Free_Too,  // of a Sunday alone, the next day that is no holiday
  Free_Too,         // the next day that is neither a holiday nor at a week-end
  // The day moves:
  Sunday_To_Saturday,
  Sunday_To_Monday,
  Away_From_Sabbath,             // from Friday and Saturday to Thursday
  Away_From_Sabbath_And_Its_Eve  // and from Monday to Tuesday, so that its eve is no Sabbath
};

struct THoliday_Rule {
  std::string_view Name;
  TDay_Rule Day;
  TYears Years{};
  TWeekend Weekend = TWeekend::As_Usual;
};

struct TWeekend_Rule {
  TYears Years;
  TWeekend Weekend;
};

struct TCountry_Rules {
  std::string_view Code, Name;
  std::span<const THoliday_Rule> Rules;
  int First_Year = 1950;                      // for which the rules hold
  std::span<const TWeekend_Rule> Weekends{};  // what is usual; in other years days stay
  std::string_view Substitute{};       // name of a further day; when empty that of the holiday, "(observed)"
  int Between_Two_Holidays_Since = 0;  // a day between two holidays is one too from this year on; 0: never
};

/// By continent; of no order that a user should see.
std::span<const TCountry_Rules> Countries_Of_Europe();
std::span<const TCountry_Rules> Countries_Overseas();

}  // namespace Plexidex
