#include <array>

#include "Date_Patterns.h"
#include "Text_Reader.h"

namespace Kt_util_01 {

namespace {

/// No date is longer; what is would only cost time.
constexpr std::size_t Max_Input = 200;

struct TNumber {
  int Value = 0;
  int Digits = 0;  // 0: not given
};

struct TDate_Input {
  TNumber Year, Month, Day;
};

enum class THalf { None, Morning, Afternoon };

struct TTime_Input {
  TNumber Hour, Minute, Second;
  THalf Half = THalf::None;
};

bool Complete_Year(const TNumber& given, int& year) {
  if (given.Digits == 4) {
    year = given.Value;
    return true;
  }
  const int current = Decode_Date(Today()).Year;
  if (given.Digits == 0) {
    year = current;
    return true;
  }
  if (given.Digits > 2) return false;
  const int earliest = current - 50;
  year = earliest + ((given.Value - earliest) % 100 + 100) % 100;
  return true;
}

bool Complete_Date(const TDate_Input& input, TDateTime& value) {
  int year = 0;
  if (input.Day.Digits == 0 || input.Month.Digits == 0 || input.Day.Digits > 2 || input.Month.Digits > 2 ||
      !Complete_Year(input.Year, year))
    return false;
  if (year < Min_Year || year > Max_Year || input.Month.Value < 1 || input.Month.Value > 12 ||
      input.Day.Value < 1 || input.Day.Value > Days_In_Month(year, input.Month.Value))
    return false;
  value = Encode_Date(year, input.Month.Value, input.Day.Value);
  return true;
}

bool Complete_Time(const TTime_Input& input, TDateTime& value) {
  int hour = input.Hour.Value;
  if (input.Half != THalf::None) {
    if (hour < 1 || hour > 12) return false;
    hour = hour % 12 + (input.Half == THalf::Afternoon ? 12 : 0);
  }
  if (input.Hour.Digits == 0 || hour > 23 || input.Minute.Value > 59 || input.Second.Value > 59) return false;
  value = Encode_Time(hour, input.Minute.Value, input.Second.Value, 0);
  return true;
}

bool Take_Separator(TReader& reader, std::string_view folded_separator, std::string_view others) {
  reader.Skip_Blanks();
  const bool taken = reader.Take(folded_separator) || reader.Take_One_Of(others) || folded_separator.empty();
  reader.Skip_Blanks();
  return taken;
}

/// Takes the longest of the user's and the English words for the halves of the day.
THalf Take_Half(TReader& reader, const TFormat_Settings& settings) {
  const std::array<std::string, 4> morning = {Fold(settings.TimeAMString), "A.M.", "AM", "A"};
  const std::array<std::string, 4> afternoon = {Fold(settings.TimePMString), "P.M.", "PM", "P"};
  std::string_view longest;
  THalf half = THalf::None;
  for (std::size_t i = 0; i < morning.size(); ++i) {
    if (morning[i].size() > longest.size() && reader.Rest().starts_with(morning[i])) {
      longest = morning[i];
      half = THalf::Morning;
    }
    if (afternoon[i].size() > longest.size() && reader.Rest().starts_with(afternoon[i])) {
      longest = afternoon[i];
      half = THalf::Afternoon;
    }
  }
  reader.Take(longest);
  return half;
}

/// Reads a text that looks as the pattern writes it; blanks may be more or fewer, numbers without leading
/// zeros.
bool Read_By_Pattern(TReader reader, std::string_view pattern, const TFormat_Settings& settings,
                     TDate_Input& date, TTime_Input& time) {
  const auto take = [&reader](TNumber& number, int most) {
    return reader.Take_Number(most, number.Value, number.Digits);
  };
  TPattern_Scanner scanner(pattern);
  for (TPattern_Token token{}; scanner.Next(token);) {
    reader.Skip_Blanks();
    bool taken = false;
    switch (token.Field) {
      case TField::Literal: {
        const std::string folded = Fold(token.Text);
        taken = folded.empty() || reader.Take(folded);
        break;
      }
      case TField::Date_Separator:
        taken = Take_Separator(reader, Fold(settings.DateSeparator), "");
        break;
      case TField::Time_Separator:
        taken = Take_Separator(reader, Fold(settings.TimeSeparator), ":.");
        break;
      case TField::Day:
        // The name of the day says nothing new, and may be missing.
        if (token.Count > 2) reader.Take_Name(settings.LongDayNames, settings.ShortDayNames);
        taken = token.Count <= 2 ? take(date.Day, 2) : token.Count <= 4;
        break;
      case TField::Month:
        if (token.Count <= 2) {
          taken = take(date.Month, 2);
        } else {
          date.Month = {reader.Take_Name(settings.LongMonthNames, settings.ShortMonthNames), 2};
          taken = date.Month.Value > 0;
        }
        break;
      case TField::Year:
        taken = take(date.Year, 4);
        break;
      case TField::Hour:
        taken = take(time.Hour, 2);
        break;
      case TField::Minute:
        taken = take(time.Minute, 2);
        break;
      case TField::Second:
        taken = take(time.Second, 2);
        break;
      case TField::AmPm_Letters:
      case TField::A_P_Letters:
      case TField::AmPm_Names:
        time.Half = Take_Half(reader, settings);
        taken = time.Half != THalf::None;
        break;
      case TField::Msec:
      case TField::Time:
      case TField::Date_And_Time:
        break;
    }
    if (!taken) return false;
  }
  reader.Skip_Blanks();
  return reader.At_End();
}

bool Read_Date_By_Pattern(std::string_view folded, std::string_view pattern, const TFormat_Settings& settings,
                          TDateTime& value) {
  TDate_Input date;
  TTime_Input time;
  return Read_By_Pattern(TReader(folded), pattern, settings, date, time) && time.Hour.Digits == 0 &&
         Complete_Date(date, value);
}

bool Read_Time_By_Pattern(std::string_view folded, std::string_view pattern, const TFormat_Settings& settings,
                          TDateTime& value) {
  TDate_Input date;
  TTime_Input time;
  return Read_By_Pattern(TReader(folded), pattern, settings, date, time) && date.Day.Digits == 0 &&
         Complete_Time(time, value);
}

/// The order of 'y', 'm' and 'd' in the user's short date.
std::string Date_Order(const TFormat_Settings& settings) {
  std::string order;
  const auto add = [&order](char letter) {
    if (order.find(letter) == std::string::npos) order += letter;
  };
  TPattern_Scanner scanner(settings.ShortDateFormat);
  for (TPattern_Token token{}; scanner.Next(token);) {
    if (token.Field == TField::Year) add('y');
    if (token.Field == TField::Month) add('m');
    if (token.Field == TField::Day && token.Count <= 2) add('d');
  }
  for (const char letter : {'y', 'm', 'd'}) add(letter);
  return order;
}

struct TDate_Pieces {
  std::array<TNumber, 3> Numbers;
  std::size_t Count = 0;
  int Named_Month = 0;
  bool Hyphens_Only = true;
};

/// Takes a date apart into numbers and at most one name of a month, with blanks and one sign between them.
bool Take_Apart(TReader reader, const TFormat_Settings& settings, TDate_Pieces& pieces) {
  const std::string user_separator = Fold(settings.DateSeparator);
  bool separated = true;
  while (!reader.At_End()) {
    if (reader.At_Digit()) {
      if (!separated || pieces.Count == pieces.Numbers.size()) return false;
      TNumber& number = pieces.Numbers[pieces.Count++];
      if (!reader.Take_Number(4, number.Value, number.Digits)) return false;
    } else {
      if (pieces.Named_Month != 0) return false;
      pieces.Named_Month = reader.Take_Name(settings.LongMonthNames, settings.ShortMonthNames);
      if (pieces.Named_Month == 0) return false;
    }
    if (reader.At_End()) return true;

    separated = reader.Skip_Blanks();
    if (separated) pieces.Hyphens_Only = false;
    if (reader.Take("-")) {
      separated = true;
    } else {
      pieces.Hyphens_Only = false;
      const bool dot = reader.Take(".");
      separated = dot || reader.Take_One_Of("/,;_\\") || reader.Take(user_separator) || separated;
      if (dot && reader.At_End()) return user_separator.starts_with('.');
    }
    reader.Skip_Blanks();
    // "5Mar24" needs no separator around the name.
    separated = separated || !reader.At_Digit() || pieces.Named_Month != 0;
    if (reader.At_End()) return false;
  }
  return false;
}

/// "24112026" or "241126", in the user's order.
bool Read_Run_Of_Digits(std::string_view folded, const TFormat_Settings& settings, TDateTime& value) {
  if (folded.size() != 6 && folded.size() != 8) return false;
  const std::size_t year_digits = folded.size() - 4;
  TDate_Input date;
  for (const char field : Date_Order(settings)) {
    TNumber& number = field == 'y' ? date.Year : field == 'm' ? date.Month : date.Day;
    const std::size_t digits = field == 'y' ? year_digits : 2;
    if (!TReader(folded.substr(0, digits)).Take_Number(4, number.Value, number.Digits)) return false;
    if (static_cast<std::size_t>(number.Digits) != digits) return false;
    folded.remove_prefix(digits);
  }
  return Complete_Date(date, value);
}

bool Read_Loose_Date(std::string_view folded, const TFormat_Settings& settings, TDateTime& value) {
  TDate_Pieces pieces;
  if (!Take_Apart(TReader(folded), settings, pieces)) return false;
  std::string order = Date_Order(settings);
  TDate_Input date;
  if (pieces.Named_Month != 0) {
    date.Month = {pieces.Named_Month, 2};
    std::erase(order, 'm');
    if (pieces.Count == 2 && pieces.Numbers[0].Digits > 2) order = std::string("yd");
    if (pieces.Count == 2 && pieces.Numbers[1].Digits > 2) order = std::string("dy");
    if (pieces.Count == 1) order = std::string("d");
  } else if (pieces.Count == 3) {
    if (pieces.Numbers[0].Digits == 4 && (pieces.Hyphens_Only || order[0] != 'y')) order = std::string("ymd");
  } else {
    std::erase(order, 'y');
  }
  if (pieces.Count != order.size()) return false;
  for (std::size_t i = 0; i < pieces.Count; ++i) {
    TNumber& number = order[i] == 'y' ? date.Year : (order[i] == 'm' ? date.Month : date.Day);
    number = pieces.Numbers[i];
  }
  return Complete_Date(date, value);
}

/// h, h:mm or h:mm:ss, with AM or PM before or after it.
bool Read_Loose_Time(std::string_view folded, const TFormat_Settings& settings, TDateTime& value) {
  const std::string separator = Fold(settings.TimeSeparator);
  TReader reader(folded);
  TTime_Input time;
  time.Half = Take_Half(reader, settings);
  reader.Skip_Blanks();
  for (TNumber* number : {&time.Hour, &time.Minute, &time.Second}) {
    if (number != &time.Hour && !reader.Take(separator) && !reader.Take_One_Of(":.")) break;
    if (!reader.Take_Number(2, number->Value, number->Digits)) return false;
  }
  reader.Skip_Blanks();
  if (time.Half == THalf::None) time.Half = Take_Half(reader, settings);
  return reader.At_End() && Complete_Time(time, value);
}

/// "930" or "0930", with AM or PM behind it.
bool Read_Time_Without_Separator(std::string_view folded, const TFormat_Settings& settings,
                                 TDateTime& value) {
  TReader reader(folded);
  TNumber both;
  if (!reader.Take_Number(4, both.Value, both.Digits) || both.Digits < 3) return false;
  reader.Skip_Blanks();
  const TTime_Input time = {
      {both.Value / 100, both.Digits - 2}, {both.Value % 100, 2}, {}, Take_Half(reader, settings)};
  return reader.At_End() && Complete_Time(time, value);
}

bool Read_Date(std::string_view folded, const TFormat_Settings& settings, TDateTime& value) {
  return Read_Loose_Date(folded, settings, value) ||
         Read_Date_By_Pattern(folded, settings.ShortDateFormat, settings, value) ||
         Read_Date_By_Pattern(folded, settings.LongDateFormat, settings, value);
}

bool Read_Time(std::string_view folded, const TFormat_Settings& settings, TDateTime& value) {
  return Read_Loose_Time(folded, settings, value) ||
         Read_Time_By_Pattern(folded, settings.ShortTimeFormat, settings, value) ||
         Read_Time_By_Pattern(folded, settings.LongTimeFormat, settings, value);
}

}  // namespace

bool Str2Date(std::string_view text, TDateTime& value, const TFormat_Settings& settings) {
  if (text.size() > Max_Input) return false;
  const std::string folded = Fold(text);
  return Read_Date(folded, settings, value) || Read_Run_Of_Digits(folded, settings, value);
}

bool Str2Time(std::string_view text, TDateTime& value, const TFormat_Settings& settings) {
  if (text.size() > Max_Input) return false;
  const std::string folded = Fold(text);
  return Read_Time(folded, settings, value) || Read_Time_Without_Separator(folded, settings, value);
}

bool Str2DateTime(std::string_view text, TDateTime& value, const TFormat_Settings& settings) {
  if (text.size() > Max_Input) return false;
  const std::string folded = Fold(text);
  if (Read_Date(folded, settings, value)) return true;
  // From the right: a date may hold blanks, and takes as much as makes sense.
  for (std::size_t at = folded.find_last_of(" T"); at != std::string::npos && at > 0;
       at = folded.find_last_of(" T", at - 1)) {
    const std::string_view whole = folded;
    TDateTime date = 0;
    TDateTime time = 0;
    if (Read_Time(Trimmed(whole.substr(at + 1)), settings, time) &&
        Read_Date(Trimmed(whole.substr(0, at)), settings, date)) {
      value = date + time;
      return true;
    }
  }
  return false;
}

}  // namespace Kt_util_01
