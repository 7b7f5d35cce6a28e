#pragma once

#include <stdexcept>
#include <string>

#include "Sqlite_Engine.h"

namespace Kt_data_01 {

/// A backup that cannot be made or restored: one sentence for the user.
class EBackup_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The folder "backups" beside a database.
std::string Backup_Folder_Of(const std::string& database);

/// The name of a database with a word and the present date and time behind it, without an ending.
std::string Dated_Name(const std::string& database, const std::string& infix = {});

/// Copies a database, as of one moment, while any program may write to it; the copy is checked before it gets
/// its name. `place` is the file to make, which must not be there yet, or a folder: then the name is that of
/// the database with date and time, as in plexidex-2026-11-22-0915.db. A folder that is there counts as one,
/// and a name that ends in a separator, which is made. Returns the file. Throws EBackup_Error.
std::string Back_Up(const std::string& database, const std::string& place);

/// Why the current user may not restore a backup in place of the shared database, or "": where there are
/// users, only administrators may. Throws EData_Error.
std::string Restore_Fault();

/// Puts a backup in place of a database, which may be open elsewhere but not as the shared one; or makes it.
/// What there was is kept beside it: the file, as plexidex-replaced-2026-11-22-0915.db, a log whose database
/// was gone, or "" when there was none. Refuses, and changes nothing, when the file is no sound database of
/// this program or of a newer version, or when what it would replace is another program's or a newer one's.
/// Throws EBackup_Error.
std::string Restore(const std::string& file, const std::string& database,
                    const TSqlite_Options& options = {});

/// What the user wants of backups: one each day that the program runs, in which folder ("" beside the
/// database), and how many.
bool Daily_Backup();
std::string Chosen_Backup_Folder(const std::string& database);
std::size_t Backups_Kept();
inline constexpr std::int64_t Most_Backups_Kept = 1000;
void Choose_Backups(bool daily, const std::string& folder, std::size_t kept);

/// Makes today's backup, if it is wanted and not there, and removes old dated ones of this database in its
/// folder, first those of a day that has a later one, and no other file: a database is known by its identity.
/// The file that was made, or "". Throws EBackup_Error.
std::string Back_Up_Daily(const std::string& database);

}  // namespace Kt_data_01
