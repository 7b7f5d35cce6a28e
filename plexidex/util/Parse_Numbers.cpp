#include <charconv>

#include "Text_Reader.h"

namespace Kt_util_01 {

bool Str2Int(std::string_view text, std::int64_t& value) {
  std::string_view digits = Trimmed(text);
  if (digits.starts_with('+')) {
    digits.remove_prefix(1);
    if (digits.starts_with('-')) return false;
  }
  std::int64_t number = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
  if (error != std::errc{} || end != digits.data() + digits.size()) return false;
  value = number;
  return true;
}

bool Str2Float(std::string_view text, double& value, const TFormat_Settings& settings) {
  std::string_view rest = Trimmed(text);
  std::string number;
  if (rest.starts_with('-')) number = "-";
  if (rest.starts_with('-') || rest.starts_with('+')) rest.remove_prefix(1);
  bool has_separator = false;
  while (!rest.empty()) {
    if (Is_Digit(rest[0])) {
      number += rest[0];
      rest.remove_prefix(1);
    } else if (!has_separator && !settings.DecimalSeparator.empty() &&
               rest.starts_with(settings.DecimalSeparator)) {
      number += '.';
      rest.remove_prefix(settings.DecimalSeparator.size());
      has_separator = true;
    } else {
      return false;
    }
  }
  double result = 0;
  const auto [end, error] =
      std::from_chars(number.data(), number.data() + number.size(), result, std::chars_format::fixed);
  if (error != std::errc{} || end != number.data() + number.size()) return false;
  value = result;
  return true;
}

}  // namespace Kt_util_01
