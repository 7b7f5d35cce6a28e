#include <algorithm>

#include "Date_Patterns.h"
#include "Kt_util_01.h"

namespace Kt_util_01 {

namespace {

/// The formats of the settings are used within a pattern; one that names a format in turn would never end.
constexpr int Max_Depth = 1;

struct TMoment {
  TDate_Parts Date;
  TTime_Parts Time;
  int Weekday;  // 1 Sunday .. 7 Saturday
};

void Append_Number(std::string& out, int number, int digits) {
  char buffer[12];
  char* const end = buffer + sizeof buffer;
  char* first = end;
  for (; number > 0 || end - first < digits; number /= 10) *--first = static_cast<char>('0' + number % 10);
  out.append(first, end);
}

std::string With_Letters_Quoted(std::string_view literal) {
  const auto is_letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  std::string quoted(literal);
  const auto first = std::find_if(quoted.begin(), quoted.end(), is_letter);
  if (first == quoted.end()) return quoted;
  const auto last = std::find_if(quoted.rbegin(), quoted.rend(), is_letter).base();
  return std::string(quoted.begin(), first) + "'" + std::string(first, last) + "'" +
         std::string(last, quoted.end());
}

class TRenderer {
 public:
  TRenderer(std::string& out, const TMoment& moment, const TFormat_Settings& settings)
      : out(out), moment(moment), settings(settings) {}

  void Render(std::string_view pattern, int depth) {
    if (depth > Max_Depth) return;
    TPattern_Scanner scanner(pattern);
    for (TPattern_Token token{}; scanner.Next(token);) Render_Token(token, pattern, depth);
  }

 private:
  void Render_Token(const TPattern_Token& token, std::string_view pattern, int depth) {
    const int two_digits = token.Count > 1 ? 2 : 1;
    const bool afternoon = moment.Time.Hour >= 12;
    switch (token.Field) {
      case TField::Literal:
        out += token.Text;
        break;
      case TField::Date_Separator:
        out += settings.DateSeparator;
        break;
      case TField::Time_Separator:
        out += settings.TimeSeparator;
        break;
      case TField::Day:
        Render_Day(token.Count, depth);
        break;
      case TField::Month:
        Render_Month(token.Count);
        break;
      case TField::Year:
        if (token.Count > 2)
          Append_Number(out, moment.Date.Year, 4);
        else
          Append_Number(out, moment.Date.Year % 100, 2);
        break;
      case TField::Hour:
        Append_Number(out, Has_AmPm(pattern) ? (moment.Time.Hour + 11) % 12 + 1 : moment.Time.Hour,
                      two_digits);
        break;
      case TField::Minute:
        Append_Number(out, moment.Time.Minute, two_digits);
        break;
      case TField::Second:
        Append_Number(out, moment.Time.Second, two_digits);
        break;
      case TField::Msec:
        Append_Number(out, moment.Time.Msec, token.Count < 3 ? token.Count : 3);
        break;
      case TField::Time:
        Render(token.Count == 1 ? settings.ShortTimeFormat : settings.LongTimeFormat, depth + 1);
        break;
      case TField::Date_And_Time:
        Render_Date_And_Time(depth);
        break;
      case TField::AmPm_Letters:
        out += token.Text.substr(afternoon ? 3 : 0, 2);
        break;
      case TField::A_P_Letters:
        out += token.Text[afternoon ? 2 : 0];
        break;
      case TField::AmPm_Names:
        out += afternoon ? settings.TimePMString : settings.TimeAMString;
        break;
    }
  }

  void Render_Day(int count, int depth) {
    const auto name = static_cast<std::size_t>(moment.Weekday - 1);
    switch (count) {
      case 1:
      case 2:
        Append_Number(out, moment.Date.Day, count);
        break;
      case 3:
        out += settings.ShortDayNames[name];
        break;
      case 4:
        out += settings.LongDayNames[name];
        break;
      case 5:
        Render(settings.ShortDateFormat, depth + 1);
        break;
      default:
        Render(settings.LongDateFormat, depth + 1);
        break;
    }
  }

  void Render_Month(int count) {
    const auto name = static_cast<std::size_t>(moment.Date.Month - 1);
    switch (count) {
      case 1:
      case 2:
        Append_Number(out, moment.Date.Month, count);
        break;
      case 3:
        out += settings.ShortMonthNames[name];
        break;
      default:
        out += settings.LongMonthNames[name];
        break;
    }
  }

  void Render_Date_And_Time(int depth) {
    const TTime_Parts& time = moment.Time;
    Render(settings.ShortDateFormat, depth + 1);
    if (time.Hour == 0 && time.Minute == 0 && time.Second == 0 && time.Msec == 0) return;
    out += ' ';
    Render(settings.LongTimeFormat, depth + 1);
  }

  std::string& out;
  const TMoment& moment;
  const TFormat_Settings& settings;
};

}  // namespace

std::string FormatDateTime(std::string_view format, TDateTime value, const TFormat_Settings& settings) {
  constexpr std::int64_t first_day = Day_From_Date(Min_Year, 1, 1);
  constexpr std::int64_t last_day = Day_From_Date(Max_Year, 12, 31);
  std::string out;
  const std::int64_t day = Whole_Day(value);
  if (value != value || day < first_day || day > last_day) return out;
  const TMoment moment{Date_From_Day(day), Decode_Time(value), Day_Of_Week(day)};
  TRenderer(out, moment, settings).Render(format, 0);
  return out;
}

std::string Shown_Format(std::string_view pattern, const TFormat_Settings& settings) {
  const bool half_days = Has_AmPm(pattern);
  std::string shown;
  TPattern_Scanner scanner(pattern);
  for (TPattern_Token token{}; scanner.Next(token);) {
    const auto letters = [&token](char letter) {
      return std::string(static_cast<std::size_t>(token.Count), letter);
    };
    switch (token.Field) {
      case TField::Literal:
        shown += With_Letters_Quoted(token.Text);
        break;
      case TField::Date_Separator:
        shown += With_Letters_Quoted(settings.DateSeparator);
        break;
      case TField::Time_Separator:
        shown += With_Letters_Quoted(settings.TimeSeparator);
        break;
      case TField::Day:
        shown += letters('d');
        break;
      case TField::Month:
        shown += letters('M');
        break;
      case TField::Year:
        shown += "yyyy";
        break;
      case TField::Hour:
        shown += letters(half_days ? 'h' : 'H');
        break;
      case TField::Minute:
        shown += letters('m');
        break;
      case TField::Second:
        shown += letters('s');
        break;
      case TField::AmPm_Letters:
      case TField::A_P_Letters:
      case TField::AmPm_Names:
        shown += "AP";
        break;
      case TField::Msec:
      case TField::Time:
      case TField::Date_And_Time:
        shown += token.Text;
        break;
    }
  }
  return shown;
}

std::string ISO_DateTime(TDateTime value) {
  return FormatDateTime("yyyy-mm-dd\"T\"hh\":\"nn\":\"ss", value);
}

}  // namespace Kt_util_01
