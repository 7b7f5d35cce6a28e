#include "Database.h"

#include <algorithm>
#include <exception>
#include <filesystem>
#include <numeric>

#include "Database_Files.h"
#include "Kt_util_01.h"
#include "Users.h"

namespace Kt_data_01 {

namespace {

std::string Describe_Current_Exception() {
  try {
    throw;
  } catch (const EData_Error& e) {
    return e.Reason;  // the tag names the tables
  } catch (const std::exception& e) {
    return e.what();
  } catch (...) {
    return "an unknown error";
  }
}

bool Current_Exception_Was_Reported() {
  try {
    throw;
  } catch (const EAlready_Reported&) {
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace

EData_Error::EData_Error(std::string operation, std::string table, std::string reason)
    : std::runtime_error(operation + (table.empty() ? "" : " " + table) + ": " + reason),
      Operation(std::move(operation)),
      Table(std::move(table)),
      Reason(std::move(reason)) {}

void TDatabase::Open(const std::string& file, TMode mode, const TSqlite_Options& options) {
  Close();
  try {
    const bool exists = Is_Database_Path(file);
    if (!exists && (mode == TMode::Must_Exist || options.Read_Only))
      throw EOpen_Error("There is no database \"" + file + "\".");
    if (!exists) {
      const auto folder = std::filesystem::path(file).parent_path();
      if (!folder.empty()) std::filesystem::create_directories(folder);
    }
    auto opened = Open_Sqlite(file, options);
    Bring_Up_To_Date(*opened, file, options.Read_Only);
    Adopt(std::move(opened));
    path = file;
  } catch (const EOpen_Error&) {
    throw;
  } catch (const std::filesystem::filesystem_error& e) {
    throw EOpen_Error("\"" + file + "\" cannot be opened as a database: " + e.code().message() + ".");
  } catch (const std::exception& e) {
    throw EOpen_Error("\"" + file + "\" cannot be opened as a database: " + e.what() + ".");
  }
}

void TDatabase::Adopt(std::unique_ptr<TEngine> adopted) {
  Close();
  engine = std::move(adopted);
  ++opening;
  All_Changed();
}

void TDatabase::Close() noexcept {
  if (!engine) return;
  engine->Rollback();
  brackets.clear();
  closed_as_failed = false;
  reading = false;
  statements.clear();
  engine.reset();
  path.clear();
  ++opening;
  for (TTable_Link* link : links) link->After_Failure();
}

TEngine& TDatabase::Engine() {
  if (!engine) throw EData_Error("open", "", "no database is open");
  return *engine;
}

TStatement& TDatabase::Statement(const std::string& sql) {
  auto& slot = statements[sql];
  if (!slot) slot = Engine().Prepare(sql);
  return *slot;
}

void TDatabase::Refuse(const std::string& reason) {
  Kt_util_01::Raise_Notice("The database cannot be changed now: " + reason + ".");
}

bool TDatabase::Start_Update() {
  closed_as_failed = false;
  if (!engine) {
    Refuse("none is open");
    return false;
  }
  if (beginning) return false;
  try {
    if (brackets.empty()) {
      if (reading) {
        reading = false;
        engine->Commit();
      }
      beginning = true;
      const auto refusal = engine->Begin_Write();
      beginning = false;
      if (refusal) {
        Refuse(*refusal);
        return false;
      }
      try {
        Notice_External_Changes();
      } catch (...) {
        engine->Rollback();
        throw;
      }
    } else {
      if (!engine->In_Transaction()) return false;
      engine->Begin_Part(Bracket_Depth());
    }
  } catch (const std::exception& e) {
    if (brackets.empty()) {
      Refuse(e.what());
    } else {
      Operation_Failed(e.what());
    }
    return false;
  }
  brackets.push_back({std::uncaught_exceptions(), false, {}});
  return true;
}

void TDatabase::EndUpdate() {
  if (brackets.empty()) return;
  TBracket& bracket = brackets.back();
  const bool unwinding = std::uncaught_exceptions() > bracket.Exceptions;
  if (!bracket.Failed && !unwinding) {
    try {
      if (brackets.size() == 1) {
        engine->Commit();
      } else {
        engine->Keep_Part(Bracket_Depth() - 1);
      }
      brackets.pop_back();
      Show_Reports();
      return;
    } catch (const EUncertain_Error& e) {
      uncertain = true;
      Operation_Failed(e.what());
    } catch (const std::exception& e) {
      Operation_Failed(e.what());
    }
  }
  const std::string reason = bracket.Reason;
  Undo_Bracket();
  closed_as_failed = true;
  if (!unwinding) throw EData_Error("EndUpdate", "", reason.empty() ? "the update has failed" : reason);
}

void TDatabase::FailUpdate(std::string_view tag) noexcept {
  try {
    const bool reported = std::current_exception() && Current_Exception_Was_Reported();
    const std::string reason =
        std::current_exception() ? Describe_Current_Exception() : "no reason was given";
    if (!closed_as_failed && !brackets.empty()) Undo_Bracket();
    closed_as_failed = false;
    if (!reported) {
      const char* const outcome =
          uncertain
              ? "The change does not seem to be saved, but may be there when the database is opened anew: "
              : "The change could not be saved and has been undone: ";
      reports.emplace_back("Update Failed", outcome + reason + "\n\n" + std::string(tag));
    }
    uncertain = false;
  } catch (...) {
    // Out of memory while composing the report: the update is undone all the same.
  }
  Show_Reports();
}

void TDatabase::FailRead(std::string_view tag) noexcept {
  if (std::current_exception() && Current_Exception_Was_Reported()) return;
  try {
    const std::string reason =
        std::current_exception() ? Describe_Current_Exception() : "no reason was given";
    reports.emplace_back("Read Failed", "The data could not be read: " + reason + "\n\n" + std::string(tag));
  } catch (...) {
  }
  Show_Reports();
}

void TDatabase::Operation_Failed(const std::string& reason) noexcept {
  if (brackets.empty()) return;
  const bool lost = !engine->In_Transaction();
  for (auto bracket = brackets.rbegin(); bracket != brackets.rend(); ++bracket) {
    if (!bracket->Failed) bracket->Reason = reason;
    bracket->Failed = true;
    if (!lost) break;
  }
}

void TDatabase::Undo_Bracket() noexcept {
  const int part = Bracket_Depth() - 1;
  const std::string reason = brackets.back().Reason;
  brackets.pop_back();
  if (part == 0) {
    engine->Rollback();
  } else if (engine->In_Transaction()) {
    try {
      engine->Undo_Part(part);
    } catch (const std::exception& e) {
      Operation_Failed(e.what());
    }
  } else {
    Operation_Failed(reason);
  }
  All_Changed();
  for (TTable_Link* link : links) link->After_Failure();
}

void TDatabase::All_Changed() noexcept {
  for (auto& serial : serials) ++serial;
}

TChange_Numbers TDatabase::Change_Numbers() const {
  return {std::accumulate(serials.begin(), serials.end(), opening), opening + times_changed_by_others};
}

void TDatabase::Notice_External_Changes() {
  const std::int64_t now = engine->External_Changes();
  if (now == external_changes) return;
  external_changes = now;
  ++times_changed_by_others;
  All_Changed();
}

void TDatabase::Show_Reports() noexcept {
  while (brackets.empty() && !reports.empty()) {
    const auto [caption, text] = std::move(reports.front());
    reports.erase(reports.begin());
    try {
      Kt_util_01::Raise_Error(caption, text);
    } catch (...) {
    }
  }
}

void TDatabase::Enter_Snapshot() {
  if (snapshots == 0 && brackets.empty() && engine) {
    engine->Begin_Read();
    reading = true;
    Notice_External_Changes();
  }
  ++snapshots;
}

void TDatabase::Leave_Snapshot() noexcept {
  if (--snapshots > 0 || !reading) return;
  reading = false;
  engine->Rollback();  // nothing was written
}

void TDatabase::Detach(TTable_Link* link) noexcept {
  links.erase(std::remove(links.begin(), links.end(), link), links.end());
}

TDatabase& Shared_Database() {
  static TDatabase database;
  return database;
}

void Open_Database(const std::string& path, TDatabase::TMode mode, const TSqlite_Options& options) {
  Shared_Database().Open(path, mode, options);
  Follow_Users();
  Kt_util_01::Set_User_Key(DB_Permissions ? std::string() : Database_Owner());
  Kt_util_01::Install_Bracket_Check(&Update_Is_Open);
}

void Close_Database() noexcept {
  Shared_Database().Close();
  Follow_Users();
}

bool Start_Update() {
  return Shared_Database().Start_Update();
}
void EndUpdate() {
  Shared_Database().EndUpdate();
}
void FailUpdate(std::string_view tag) {
  Shared_Database().FailUpdate(tag);
}
void FailRead(std::string_view tag) {
  Shared_Database().FailRead(tag);
}
bool Update_Is_Open() {
  return Shared_Database().Bracket_Depth() > 0;
}

TChange_Numbers Change_Numbers() {
  const TSnapshot newest;
  return Shared_Database().Change_Numbers();
}

TSnapshot::TSnapshot() {
  Shared_Database().Enter_Snapshot();
}
TSnapshot::~TSnapshot() {
  Shared_Database().Leave_Snapshot();
}

}  // namespace Kt_data_01
