#pragma once

// Planning a whole calendar file.

#include <functional>
#include <string>
#include <vector>

#include "Calendar_File.h"
#include "Import_Budget.h"
#include "Kt_lists.h"
#include "Planned.h"
#include "Report.h"

namespace Plexidex {

struct TPlan_Options {
  TDateTime Until = 0;
  bool Until_Was_Given = false;
  Kt_data_01::TProgress_Bar* Progress = nullptr;
  /// Whether an earlier import has brought this very content; null for never.
  std::function<bool(const std::string& uid, const std::string& digest)> Is_Unchanged;
};

/// The budget's pulse moves the progress on. Leaves out what is unchanged and what cannot be used; the report
/// says so, and its counts of what was read and is unchanged are filled in.
std::vector<TPlanned_Object> Plan_File(const TCalendar_File& file, const TPlan_Options& options,
                                       TImport_Budget& budget, TImport_Report& report);

}  // namespace Plexidex
