#include "Backup.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <map>
#include <regex>
#include <vector>

#include "Database.h"
#include "Database_Files.h"
#include "Kt_util_01.h"
#include "Output_File.h"
#include "Users.h"

namespace Kt_data_01 {

namespace {

namespace fs = std::filesystem;

constexpr auto Section = "Backup";

// A file that is gone at the end of the scope unless it got another name.
class TTemporary_Copy {
 public:
  explicit TTemporary_Copy(const std::string& target) : Path(target + ".new-" + Kt_util_01::Get_GUID()) {}
  ~TTemporary_Copy() {
    std::error_code ignored;
    for (const char* end : {"", "-wal", "-shm", "-journal"}) fs::remove(Path + end, ignored);
  }
  TTemporary_Copy(const TTemporary_Copy&) = delete;
  TTemporary_Copy& operator=(const TTemporary_Copy&) = delete;

  const std::string Path;
};

// A name with date and time that is free.
std::string Free_Name(const fs::path& folder, const std::string& name) {
  fs::path path = folder / (name + ".db");
  const auto is_used = [&path] {
    return fs::exists(path) || fs::exists(path.string() + "-wal") || fs::exists(path.string() + "-journal");
  };
  for (int again = 2; is_used(); ++again) path = folder / (name + "-" + std::to_string(again) + ".db");
  return path.string();
}

std::string File_To_Make(const std::string& database, const std::string& place) {
  const fs::path path(place);
  if (!path.has_filename()) fs::create_directories(path);
  if (fs::is_directory(path)) return Free_Name(path, Dated_Name(database));
  if (fs::exists(path)) throw EBackup_Error("\"" + place + "\" is there already; a backup replaces no file.");
  return place;
}

// By what a database is known from others of its name; "" when it cannot be read.
std::string Identity_In(const std::string& path) {
  try {
    const auto engine = Open_Sqlite(path, {.Read_Only = true});
    const auto identity =
        engine->Prepare("SELECT Value FROM KT_Settings WHERE Name IN ('Identity', 'Owner') ORDER BY Name");
    return identity->Step() ? std::string(identity->Text(0)) : "";
  } catch (const EEngine_Error&) {
    return "";
  }
}

// The backups of a database in a folder that bear a date, which begins with `day`, the oldest first; those of
// one minute by their number.
std::vector<fs::path> Dated_Backups(const std::string& database, const std::string& folder,
                                    const std::string& day = "") {
  const std::string stem = fs::path(database).stem().string() + "-", identity = Identity_In(database);
  const std::regex pattern("(\\d{4}-\\d{2}-\\d{2}-\\d{4})(?:-(\\d{1,6}))?\\.db");
  std::map<std::pair<std::string, int>, fs::path> backups;
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    std::smatch date;
    if (!name.starts_with(stem) || fs::symlink_status(entry.path(), ignored).type() != fs::file_type::regular)
      continue;
    const std::string rest = name.substr(stem.size());
    if (std::regex_match(rest, date, pattern) && rest.starts_with(day) && !identity.empty() &&
        Identity_In(entry.path().string()) == identity)
      backups[{date[1], date[2].length() > 0 ? std::stoi(date[2]) : 1}] = entry.path();
  }
  std::vector<fs::path> in_order;
  for (const auto& [key, path] : backups) in_order.push_back(path);
  return in_order;
}

bool Has_Backup_Of_Today(const std::string& database, const std::string& folder) {
  const std::string today = Kt_util_01::FormatDateTime("yyyy-mm-dd-", Kt_util_01::Now());
  return !Dated_Backups(database, folder, today).empty();
}

// Keeps so many with the one just made, of whatever date the others are, and rather the last of each day than
// several of one.
void Remove_Old_Backups(const std::string& database, const std::string& folder, const std::string& made,
                        std::size_t kept) {
  const std::vector<fs::path> backups = Dated_Backups(database, folder);
  const auto day = [&](const fs::path& each) {
    return each.filename().string().substr(fs::path(database).stem().string().size(), sizeof "-yyyy-mm-dd");
  };
  std::vector<fs::path> others, last_of_days;
  for (std::size_t i = 0; i < backups.size(); ++i) {
    if (backups[i].filename() == fs::path(made).filename()) continue;
    const bool is_last = i + 1 == backups.size() || day(backups[i + 1]) != day(backups[i]);
    (is_last ? last_of_days : others).push_back(backups[i]);
  }
  others.insert(others.end(), last_of_days.begin(), last_of_days.end());
  std::error_code ignored;
  for (std::size_t i = 0; i + kept <= others.size(); ++i) fs::remove(others[i], ignored);
  // And what programs that were killed have left half done.
  const std::regex half_done("\\d{4}-\\d{2}-\\d{2}-\\d{4}.*\\.db\\.new-[0-9a-f-]{36}(-wal|-shm|-journal)?");
  const std::string stem = fs::path(database).stem().string() + "-";
  const auto yesterday = fs::file_time_type::clock::now() - std::chrono::hours(24);
  for (const auto& entry : fs::directory_iterator(folder, ignored)) {
    const std::string name = entry.path().filename().string();
    if (name.starts_with(stem) && std::regex_match(name.substr(stem.size()), half_done) &&
        entry.last_write_time(ignored) < yesterday)
      fs::remove(entry.path(), ignored);
  }
}

// Why a copy or a file to restore is none that can be used; it is not changed.
void Check(TEngine& engine, const std::string& path) {
  const TIdentity found = engine.Identify();
  Refuse_Foreign(found, path);
  if (found.Empty) throw EBackup_Error("\"" + path + "\" is an empty database.");
  const std::vector<std::string> findings = engine.Check_Storage();
  if (!findings.empty()) throw EBackup_Error("\"" + path + "\" is damaged: " + findings.front() + ".");
}

// Copies what is open to a new file, and looks whether it can be used; `path` is what a fault is told of.
void Copy_Checked(TEngine& from, const std::string& path, const std::string& to) {
  from.Copy_To(to);
  Check(*Open_Sqlite(to, {.Read_Only = true}), path);
}

std::unique_ptr<TEngine> Open_Checked(const std::string& path, const TSqlite_Options& options) {
  auto engine = Open_Sqlite(path, options);
  Check(*engine, path);
  return engine;
}

void Copy_Whole(TEngine& from, const std::string& path, const std::string& to) {
  const TTemporary_Copy copy(to);
  Copy_Checked(from, path, copy.Path);
  Put_In_Place(copy.Path, to);
}

// Null for what is damaged or empty. What somebody can work with, another program or a newer version, is no
// database to be replaced: throws.
std::unique_ptr<TEngine> Open_If_Sound(const std::string& database, const TSqlite_Options& options) {
  try {
    auto engine = Open_Sqlite(database, options);
    const TIdentity found = engine->Identify();
    Refuse_Foreign(found, database);
    return found.Empty || !engine->Check_Storage().empty() ? nullptr : std::move(engine);
  } catch (const EDamage_Error&) {
    return nullptr;
  }
}

template <class TBody>
auto Explained(const std::string& what, TBody body) {
  try {
    return body();
  } catch (const EBackup_Error&) {
    throw;
  } catch (const EOpen_Error& e) {
    throw EBackup_Error(e.what());
  } catch (const EOutput_Error& e) {
    throw EBackup_Error(e.what());
  } catch (const fs::filesystem_error& e) {
    throw EBackup_Error(what + ": " + e.code().message() + ".");
  } catch (const std::exception& e) {
    throw EBackup_Error(what + ": " + e.what() + ".");
  }
}

// Keeps what is in the place of a database under another name, also the logs of one that is gone, which would
// be taken for those of the next one. Returns the first file that is kept, or "". What was committed may be
// in a log alone, which counts only beside its own database: so logs are copied first, and removed only after
// the database has moved. Whenever that is cut short, one of the two names has both.
std::string Move_Aside(const std::string& database, const std::string& kept) {
  std::string first;
  for (const char* end : {"-wal", "-journal"}) {
    if (!fs::exists(database + end)) continue;
    const TTemporary_Copy log(kept + end);
    fs::copy_file(database + end, log.Path);
    Put_In_Place(log.Path, kept + end);
    if (first.empty()) first = kept + end;
  }
  if (fs::exists(database)) {
    Put_In_Place(database, kept);
    first = kept;
  }
  for (const char* end : {"-wal", "-journal", "-shm"}) fs::remove(database + end);
  return first;
}

}  // namespace

std::string Dated_Name(const std::string& database, const std::string& infix) {
  return fs::path(database).stem().string() + infix +
         Kt_util_01::FormatDateTime("-yyyy-mm-dd-hhnn", Kt_util_01::Now());
}

std::string Backup_Folder_Of(const std::string& database) {
  return (fs::absolute(database).parent_path() / "backups").string();
}

std::string Back_Up(const std::string& database, const std::string& place) {
  return Explained("The backup \"" + place + "\" cannot be made", [&] {
    if (!Is_Database_Path(database)) throw EBackup_Error("There is no database \"" + database + "\".");
    const std::string file = File_To_Make(database, place);
    Copy_Whole(*Open_Sqlite(database, {.Read_Only = true}), database, file);
    return file;
  });
}

std::string Restore_Fault() {
  return Administrator_Fault().empty() ? "" : "Only an administrator may restore a backup.";
}

std::string Restore(const std::string& file, const std::string& database, const TSqlite_Options& options) {
  return Explained("\"" + file + "\" cannot be restored", [&]() -> std::string {
    if (!Is_Database_Path(file)) throw EBackup_Error("There is no file \"" + file + "\".");
    const bool replaces = Is_Database_Path(database);
    if (replaces && fs::equivalent(file, database))
      throw EBackup_Error("\"" + file + "\" is the database itself, not a backup of it.");
    const fs::path folder = fs::absolute(database).parent_path();
    fs::create_directories(folder);
    const TTemporary_Copy copy(database);
    Copy_Checked(*Open_Checked(file, {.Read_Only = true}), file, copy.Path);
    // An older one is migrated before it takes the place.
    TDatabase().Open(copy.Path, TDatabase::TMode::Must_Exist);
    std::string kept = Free_Name(folder, Dated_Name(database, "-replaced"));
    if (auto present = replaces ? Open_If_Sound(database, options) : nullptr) {
      // With a log, another connection can read while this one alone can write.
      present->Prepare_Storage();
      const auto reader = Open_Sqlite(database, {.Read_Only = true});
      present->Replace_By(copy.Path, [&] { Copy_Whole(*reader, database, kept); });
    } else {
      kept = Move_Aside(database, kept);
      Put_In_Place(copy.Path, database);
    }
    Open_Checked(database, {.Read_Only = true});
    return kept;
  });
}

bool Daily_Backup() {
  return Kt_util_01::Read_Bool(Section, "Daily", true);
}

std::string Chosen_Backup_Folder(const std::string& database) {
  const std::string chosen = Kt_util_01::Read_String(Section, "Folder", "");
  return chosen.empty() ? Backup_Folder_Of(database) : chosen;
}

std::size_t Backups_Kept() {
  return static_cast<std::size_t>(
      std::clamp<std::int64_t>(Kt_util_01::Read_Integer(Section, "Kept", 7), 1, Most_Backups_Kept));
}

void Choose_Backups(bool daily, const std::string& folder, std::size_t kept) {
  Kt_util_01::Write_Bool(Section, "Daily", daily);
  Kt_util_01::Write_String(Section, "Folder", folder);
  Kt_util_01::Write_Integer(Section, "Kept", static_cast<std::int64_t>(kept));
}

std::string Back_Up_Daily(const std::string& database) {
  const std::string folder = Chosen_Backup_Folder(database);
  if (!Daily_Backup() || Has_Backup_Of_Today(database, folder)) return "";
  const std::string file = Back_Up(database, folder + "/");
  Remove_Old_Backups(database, folder, file, Backups_Kept());
  return file;
}

}  // namespace Kt_data_01
