#include "Report.h"

namespace Plexidex {

std::string Ends_Remark(const TImport_Report& report) {
  if (report.Ends == 0) return {};
  return "end times are not kept: " +
         (report.Ends == 1 ? std::string("1 event has one")
                           : std::to_string(report.Ends) + " events have one") +
         ", which only an export gives back";
}

}  // namespace Plexidex
