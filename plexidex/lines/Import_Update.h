#pragma once

// What all imports share.

#include <functional>
#include <string>

#include "Import_Budget.h"
#include "Import_Report.h"
#include "Kt_data_01.h"
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

/// Runs an import: outside a bracket where nothing would change, since a database that takes no updates need
/// not be asked for one, and otherwise by Write_Import, once the book has been chosen anew: another program
/// may have made the first one meanwhile, and filled it.
void Run_Import(const std::string& file, bool is_unchanged, const std::function<void()>& choose_book,
                const std::function<void()>& run);

/// What `import` gives. Throws EImport_Error where it fails to read the database.
template <class TImport>
auto Reading_Data(const std::string& file, TImport import) {
  try {
    return import();
  } catch (const Kt_data_01::EData_Error& e) {
    throw EImport_Error("Nothing was imported from \"" + file + "\": the data could not be read (" +
                        e.Reason + ").");
  }
}

}  // namespace Plexidex
