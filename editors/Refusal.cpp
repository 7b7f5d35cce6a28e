#include "Refusal.h"

#include "Kt_util_01.h"

namespace KTReminds {

using Kt_util_01::Format_Settings;

TRefusal Refuse_Time(const std::string& caption, const std::string& control) {
  std::string format;
  char quote = '\0';
  for (const char letter : Format_Settings().ShortTimeFormat) {
    if (letter == quote) {
      quote = '\0';
    } else if (quote == '\0' && (letter == '"' || letter == '\'')) {
      quote = letter;
    } else if (quote == '\0' && letter == ':') {
      format += Format_Settings().TimeSeparator;
    } else {
      format += quote == '\0' && letter == 'n' ? 'm' : letter;
    }
  }
  return {caption, "The Time entered is invalid. Please specify a valid time in the format " + format,
          control};
}

}  // namespace KTReminds
