#include <algorithm>
#include <nlohmann/json.hpp>

#include "Commands_Run.h"
#include "Console_Text.h"
#include "Holidays.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

struct TListed_Holiday {
  THoliday Holiday;
  const TCountry* Country;
};

std::vector<const TCountry*> Countries_Of(const std::vector<std::string>& typed) {
  const bool by_choice = typed.empty();
  std::vector<const TCountry*> countries;
  for (const std::string& each : by_choice ? Chosen_Countries() : typed) {
    const TCountry* country = Find_Country(each);
    if (country && std::find(countries.begin(), countries.end(), country) == countries.end())
      countries.push_back(country);
    if (country) continue;
    std::string known;
    for (const TCountry& other : Holiday_Countries())
      known += (known.empty() ? "" : ", ") + std::string(other.Code);
    throw ECommand_Error("--country: the holidays of \"" + each + "\" are not known; known are those of " +
                         known + ".");
  }
  if (countries.empty())
    throw ECommand_Error("No country is chosen in the preferences; --country names one.");
  return countries;
}

int Year_From_Text(const std::string& text) {
  std::int64_t year = Decode_Date(Today()).Year;
  if (text.empty() || (Str2Int(text, year) && year >= First_Holiday_Year && year <= Last_Holiday_Year))
    return static_cast<int>(year);
  throw ECommand_Error("--year: \"" + text + "\" is not a year from " + std::to_string(First_Holiday_Year) +
                       " to " + std::to_string(Last_Holiday_Year) + ".");
}

void Write_Text(std::ostream& out, const std::vector<TListed_Holiday>& listed) {
  int date_width = 0, name_width = 0;
  const auto date_text = [](const TListed_Holiday& each) {
    return FormatDateTime("ddd ddddd", static_cast<TDateTime>(each.Holiday.Day));
  };
  for (const TListed_Holiday& each : listed) {
    date_width = std::max(date_width, Display_Width(date_text(each)));
    name_width = std::max(name_width, Display_Width(each.Holiday.Name));
  }
  for (const TListed_Holiday& each : listed) {
    out << Padded(date_text(each), date_width) << "  " << Padded(each.Holiday.Name, name_width) << "  "
        << each.Country->Name << '\n';
  }
}

void Write_Json(std::ostream& out, const std::vector<TListed_Holiday>& listed) {
  out << '[';
  for (const TListed_Holiday& each : listed) {
    const nlohmann::ordered_json object = {
        {"date", FormatDateTime("yyyy-mm-dd", static_cast<TDateTime>(each.Holiday.Day))},
        {"name", each.Holiday.Name},
        {"country", each.Country->Name},
        {"code", each.Country->Code}};
    out << (&each == &listed.front() ? "\n" : ",\n") << object.dump();
  }
  out << (listed.empty() ? "]\n" : "\n]\n");
}

}  // namespace

int Run_Holidays(const TConsole& console, const THolidays_Command& command) {
  const bool as_json = Is_Json(command.Format);
  const int year = Year_From_Text(command.Year);
  std::vector<TListed_Holiday> listed;
  for (const TCountry* country : Countries_Of(command.Countries)) {
    for (THoliday& holiday :
         Holidays_Between(country->Code, Day_From_Date(year, 1, 1), Day_From_Date(year, 12, 31)))
      listed.push_back({std::move(holiday), country});
  }
  std::stable_sort(listed.begin(), listed.end(), [](const TListed_Holiday& a, const TListed_Holiday& b) {
    return a.Holiday.Day < b.Holiday.Day;
  });
  if (listed.empty() && !as_json) console.Out << "No holidays are known for " << year << ".\n";
  (as_json ? Write_Json : Write_Text)(console.Out, listed);
  return 0;
}

}  // namespace Plexidex
