#pragma once

// Bringing a file of cards into a book of the shared database.

#include <cstdint>
#include <string>
#include <vector>

#include "Import_Update.h"

namespace Plexidex {

/// Each card of a file is added, updates its contact, is unchanged, or stands among the unused.
struct TVcard_Report {
  std::int64_t Read = 0;
  std::int64_t Added = 0;
  std::int64_t Updated = 0;
  std::int64_t Unchanged = 0;  // as an earlier import has brought them, also those deleted here since
  std::int64_t Birthdays = 0;  // yearly events written
  std::vector<TImport_Remark> Unused;
  std::vector<TImport_Remark> Notes;  // what the user should know of others
};

/// Reads and writes the cards one after the other, in one update. Throws EImport_Error, with nothing written,
/// for a file that holds no cards, for a book that does not exist, and when the database takes no update or
/// the update fails. What the progress throws ends the import the same way.
TVcard_Report Import_Vcards(const std::string& file, const TImport_Options& options);

}  // namespace Plexidex
