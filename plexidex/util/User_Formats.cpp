#include "User_Formats.h"

#include <algorithm>
#include <array>
#include <vector>

namespace Kt_util_01 {

namespace {

constexpr auto Section = "Formats";

// A run of one letter, or the text between two such.
struct TRun {
  char Letter;  // 0 for a text
  std::string Text;
};

bool Is_Letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::vector<TRun> Runs_Of(const std::string& pattern) {
  std::vector<TRun> runs;
  for (const char c : pattern) {
    const char letter = Is_Letter(c) ? c : '\0';
    if (runs.empty() || runs.back().Letter != letter) runs.push_back({letter, ""});
    runs.back().Text += c;
  }
  return runs;
}

// A text that stands for itself, other than the separator, which has a mark.
bool Add_Text(std::string& pattern, std::string& separator, char mark, const std::string& text) {
  if (text.find_first_of("\"'") != std::string::npos) return false;
  if (separator.empty()) separator = text;
  pattern += text == separator ? std::string(1, mark) : '"' + text + '"';
  return true;
}

bool Can_Be_Read_Back(const TFormat_Settings& settings, const char* what, auto read) {
  static const std::array moments = {Encode_Date(2003, 2, 1) + 30.0 / 1440, Encode_Date(2026, 11, 22) + 0.5,
                                     Encode_Date(1999, 12, 31) + 1385.0 / 1440};
  return std::all_of(moments.begin(), moments.end(), [&](TDateTime moment) {
    const std::string text = FormatDateTime(what, moment, settings);
    TDateTime value = 0;
    return read(text, value, settings) && FormatDateTime(what, value, settings) == text &&
           (CompareDates(value, static_cast<TDateTime>(Whole_Day(moment))) == 0 ||
            CompareDates(value, From_Msecs(Msec_Of_Day(moment))) == 0);
  });
}

}  // namespace

std::optional<TFormat_Settings> With_Date_Pattern(TFormat_Settings settings, const std::string& pattern) {
  settings.ShortDateFormat.clear();
  settings.DateSeparator.clear();
  std::string fields;
  for (const TRun& run : Runs_Of(pattern)) {
    const char field = run.Letter == 'D'   ? 'd'
                       : run.Letter == 'Y' ? 'y'
                       : run.Letter == 'm' ? 'M'
                                           : run.Letter;
    if (field == '\0') {
      if (!Add_Text(settings.ShortDateFormat, settings.DateSeparator, '/', run.Text)) return {};
      continue;
    }
    const std::size_t longest = field == 'd' ? 2 : 4;
    if (std::string("dMy").find(field) == std::string::npos || run.Text.size() > longest ||
        (field == 'y' && run.Text.size() != longest))
      return {};
    fields += field;
    settings.ShortDateFormat += std::string(run.Text.size(), field == 'M' ? 'm' : field);
  }
  std::sort(fields.begin(), fields.end());
  if (fields != "Mdy" || !Can_Be_Read_Back(settings, "ddddd", Str2Date)) return {};
  return settings;
}

std::optional<TFormat_Settings> With_Time_Pattern(TFormat_Settings settings, const std::string& pattern) {
  settings.ShortTimeFormat.clear();
  settings.TimeSeparator.clear();
  std::string fields;
  const std::vector<TRun> runs = Runs_Of(pattern);
  for (std::size_t i = 0; i < runs.size(); ++i) {
    const std::string& text = runs[i].Text;
    const bool is_hour = text == "h" || text == "hh" || text == "H" || text == "HH";
    if (runs[i].Letter == '\0') {
      // A blank before AM or PM separates no times.
      std::string none = "none";
      const bool blank = text.find_first_not_of(' ') == std::string::npos;
      if (!Add_Text(settings.ShortTimeFormat, blank ? none : settings.TimeSeparator, ':', text)) return {};
    } else if (is_hour || text == "mm") {
      fields += is_hour ? 'h' : 'm';
      settings.ShortTimeFormat += is_hour ? std::string(text.size(), 'h') : "nn";
    } else if ((text == "A" || text == "a") && i + 1 < runs.size() &&
               (runs[i + 1].Text == "P" || runs[i + 1].Text == "p")) {
      settings.ShortTimeFormat += "ampm";
      ++i;
    } else {
      return {};
    }
  }
  if (fields != "hm" || !Can_Be_Read_Back(settings, "t", Str2Time)) return {};
  const std::size_t minutes = settings.ShortTimeFormat.find("nn") + 2;
  settings.LongTimeFormat = settings.ShortTimeFormat;
  settings.LongTimeFormat.insert(minutes, ":ss");
  return settings;
}

TUser_Formats Read_User_Formats() {
  const std::int64_t day = Read_Integer(Section, "First Day", 0);
  return {day >= 1 && day <= 7 ? static_cast<int>(day) : 0, Read_String(Section, "Date", ""),
          Read_String(Section, "Time", "")};
}

void Write_User_Formats(const TUser_Formats& formats) {
  Write_Integer(Section, "First Day", formats.First_Day);
  Write_String(Section, "Date", formats.Date);
  Write_String(Section, "Time", formats.Time);
}

void Apply_User_Formats() {
  const TUser_Formats wanted = Read_User_Formats();
  TFormat_Settings settings = Locale_Formats();
  if (wanted.First_Day > 0) settings.FirstDayOfWeek = wanted.First_Day;
  if (const auto changed = With_Date_Pattern(settings, wanted.Date)) settings = *changed;
  if (const auto changed = With_Time_Pattern(settings, wanted.Time)) settings = *changed;
  Replace_Formats(settings);
}

}  // namespace Kt_util_01
