#pragma once

// What all imports share.

#include <functional>
#include <string>

#include "Import_Budget.h"
#include "Import_Report.h"
#include "Kt_dates.h"
#include "Kt_lists.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

struct TImport_Options {
  std::string Book;  // name; "" is the first book, made as "My Calendar" when there is none
  bool Has_Until = false;
  TDateTime Until = 0;  // last day of endless rules, itself included; without Has_Until ten years from today
  std::int64_t Most_Entries = Default_Entries;  // that one file may bring
  std::string How_To_Raise;                     // what the user does to raise that; "" says it generally
  /// Not owned. Stepped also while the update is open, so that it must neither read nor write data; whatever
  /// it throws undoes the import and reaches the caller.
  Kt_data_01::TProgress_Bar* Progress = nullptr;
};

TImport_Budget Import_Budget(const TImport_Options& options);

/// The last day of endless rules.
TDateTime Import_Until(const TImport_Options& options);

/// Runs `write` in one update bracket. Throws EImport_Error, with nothing written, when the bracket cannot be
/// opened or fails. What else `write` throws than failures of the database undoes all and is thrown on.
void Write_Import(const std::string& file, const std::function<void()>& write);

}  // namespace Plexidex
