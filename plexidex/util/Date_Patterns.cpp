#include "Date_Patterns.h"

#include <algorithm>
#include <array>

namespace Kt_util_01 {

namespace {

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool Starts_With(std::string_view text, std::string_view lower_case) {
  return text.size() >= lower_case.size() && std::equal(lower_case.begin(), lower_case.end(), text.begin(),
                                                        [](char a, char b) { return a == Lower(b); });
}

bool Is_Special(char c) {
  return std::string_view("acdhmnstyz/:\"'").find(Lower(c)) != std::string_view::npos;
}

}  // namespace

TPattern_Token TPattern_Scanner::Take(TField field, std::size_t length) {
  const TPattern_Token token{field, static_cast<int>(length), rest.substr(0, length)};
  rest.remove_prefix(length);
  return token;
}

bool TPattern_Scanner::Next(TPattern_Token& token) {
  if (rest.empty()) return false;
  const char letter = Lower(rest[0]);

  if (letter == '"' || letter == '\'') {
    const std::size_t end = std::min(rest.find(letter, 1), rest.size());
    token = {TField::Literal, 1, rest.substr(1, end - 1)};
    rest.remove_prefix(std::min(end + 1, rest.size()));
    return true;
  }
  if (letter == '/' || letter == ':') {
    token = Take(letter == '/' ? TField::Date_Separator : TField::Time_Separator, 1);
    return true;
  }
  if (!Is_Special(letter)) {
    const auto end = std::find_if(rest.begin(), rest.end(), Is_Special);
    token = Take(TField::Literal, static_cast<std::size_t>(end - rest.begin()));
    return true;
  }

  if (letter == 'a') {
    if (Starts_With(rest, "am/pm")) {
      token = Take(TField::AmPm_Letters, 5);
    } else if (Starts_With(rest, "ampm")) {
      token = Take(TField::AmPm_Names, 4);
    } else if (Starts_With(rest, "a/p")) {
      token = Take(TField::A_P_Letters, 3);
    } else {
      token = Take(TField::Literal, 1);
      return true;
    }
    after_hour = false;
    return true;
  }

  const auto run_end =
      std::find_if(rest.begin(), rest.end(), [letter](char c) { return Lower(c) != letter; });
  const auto length = letter == 'c' ? std::size_t{1} : static_cast<std::size_t>(run_end - rest.begin());
  TField field = TField::Literal;
  switch (letter) {
    case 'c':
      field = TField::Date_And_Time;
      break;
    case 'd':
      field = TField::Day;
      break;
    case 'm':
      field = after_hour && length <= 2 ? TField::Minute : TField::Month;
      break;
    case 'y':
      field = TField::Year;
      break;
    case 'h':
      field = TField::Hour;
      break;
    case 'n':
      field = TField::Minute;
      break;
    case 's':
      field = TField::Second;
      break;
    case 'z':
      field = TField::Msec;
      break;
    default:
      field = TField::Time;
      break;
  }
  after_hour = field == TField::Hour;
  token = Take(field, length);
  return true;
}

bool Has_AmPm(std::string_view pattern) {
  TPattern_Scanner scanner(pattern);
  for (TPattern_Token token{}; scanner.Next(token);) {
    if (token.Field == TField::AmPm_Letters || token.Field == TField::A_P_Letters ||
        token.Field == TField::AmPm_Names)
      return true;
  }
  return false;
}

}  // namespace Kt_util_01
