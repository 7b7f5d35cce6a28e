#include "Refusal.h"

#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;

TRefusal Refuse_Time(const std::string& caption, const std::string& control) {
  return {caption,
          "The Time entered is invalid. Please specify a valid time in the format " +
              Shown_Format(Format_Settings().ShortTimeFormat),
          control};
}

TRefusal Refuse_Date(const std::string& control) {
  return {"Invalid Date",
          "The Date entered is invalid. Please specify a valid date in the format " +
              Shown_Format(Format_Settings().ShortDateFormat),
          control};
}

}  // namespace KTReminds
