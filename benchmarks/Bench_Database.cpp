#include "Bench_Database.h"

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <random>
#include <tuple>
#include <vector>

#include "Database.h"
#include "Kt_util_01.h"

namespace Bench {

namespace {

const std::filesystem::path& Folder() {
  struct TFolder {
    std::filesystem::path Path =
        std::filesystem::temp_directory_path() / ("kt_bench_" + Kt_util_01::Get_GUID());
    TFolder() { std::filesystem::create_directories(Path); }
    ~TFolder() { std::filesystem::remove_all(Path); }
  };
  static const TFolder folder;
  return folder.Path;
}

void Bind(sqlite3_stmt* statement, int parameter, const std::string& text) {
  sqlite3_bind_text(statement, parameter, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

void Step(sqlite3_stmt* statement) {
  if (sqlite3_step(statement) != SQLITE_DONE) {
    std::fprintf(stderr, "benchmark data: %s\n", sqlite3_errmsg(sqlite3_db_handle(statement)));
    std::exit(1);
  }
  sqlite3_reset(statement);
}

void Fill(sqlite3* connection, const TSize& size, const std::string& user) {
  std::mt19937 random(20240101);
  Execute(connection, "BEGIN IMMEDIATE");
  Execute(connection, "INSERT INTO KT_Books VALUES ('book', 'Bench', NULL)");
  Execute(connection,
          "INSERT INTO KT_Contacts (Key, DisplayName, Type, Book) VALUES ('calendar', 'Bench', 2, 'book')");
  std::vector<std::string> contacts;
  sqlite3_stmt* contact =
      Prepare(connection, "INSERT INTO KT_Contacts (Key, DisplayName, Book) VALUES (?, ?, 'book')");
  for (int i = 0; i < size.Contacts; ++i) {
    contacts.push_back(Kt_util_01::Get_GUID());
    Bind(contact, 1, contacts.back());
    Bind(contact, 2, "Contact Number " + std::to_string(i));
    Step(contact);
  }
  sqlite3_stmt* event = Prepare(
      connection,
      "INSERT INTO KT_Events (Key, FirstDate, Title, Location, LastDate, Freq, Period, Priority, User, "
      "EventType) VALUES (?, ?, ?, ?, 0, 1, 1, 5, ?, ?)");
  sqlite3_stmt* occurrence =
      Prepare(connection,
              "INSERT INTO KT_Events_Data (Key, Contact, Book, Event, Actioned, EventDate) "
              "VALUES (?, ?, 'book', ?, ?, ?)");
  sqlite3_stmt* alarm = Prepare(connection, "INSERT INTO KT_Alarms (Key, User, Offset) VALUES (?, ?, 15)");
  for (int i = 0; i < size.Sets; ++i) {
    const std::string key = Kt_util_01::Get_GUID();
    Bind(event, 1, key);
    sqlite3_bind_double(event, 2, First_Day);
    Bind(event, 3, "Meeting about subject number " + std::to_string(i));
    Bind(event, 4, i % 3 == 0 ? "Conference room " + std::to_string(i % 40) : "");
    Bind(event, 5, user);
    sqlite3_bind_int(event, 6, i % 10 == 0 ? 3 : 0);
    Step(event);
    const std::string& owner = contacts[random() % contacts.size()];
    const int begin = static_cast<int>(static_cast<std::int64_t>(size.Occurrences) * i / size.Sets);
    const int end = static_cast<int>(static_cast<std::int64_t>(size.Occurrences) * (i + 1) / size.Sets);
    for (int j = begin; j < end; ++j) {
      const std::string own_key = Kt_util_01::Get_GUID();
      Bind(occurrence, 1, own_key);
      Bind(occurrence, 2, owner);
      Bind(occurrence, 3, key);
      sqlite3_bind_int(occurrence, 4, random() % 4 == 0 ? 1 : 0);
      sqlite3_bind_double(
          occurrence, 5,
          First_Day + static_cast<double>(random() % (static_cast<unsigned>(size.Days) * 96U)) / 96);
      Step(occurrence);
      if (static_cast<int>(random() % 100) < size.Alarm_Percent) {
        Bind(alarm, 1, own_key);
        Bind(alarm, 2, user);
        Step(alarm);
      }
    }
  }
  for (sqlite3_stmt* statement : {contact, event, occurrence, alarm}) sqlite3_finalize(statement);
  Execute(connection, "COMMIT");
  Execute(connection, "PRAGMA wal_checkpoint(TRUNCATE)");
}

}  // namespace

TSize Size_Of(int occurrences) {
  return {occurrences, occurrences / 5, 2000,
          static_cast<int>(static_cast<std::int64_t>(occurrences) * 42 / 2000), 30};
}

const std::string& Database_File(const TSize& size, int copy) {
  static std::map<std::tuple<int, int, int, int>, std::string> files;
  std::string& path = files[{size.Occurrences, size.Sets, size.Days, copy}];
  if (!path.empty()) return path;
  path = (Folder() / (std::to_string(files.size()) + ".db")).string();
  Use_Database(path);
  const std::string user = Kt_util_01::User_Key();
  Kt_data_01::Close_Database();
  sqlite3* connection = nullptr;
  sqlite3_open(path.c_str(), &connection);
  Fill(connection, size, user);
  sqlite3_close(connection);
  return path;
}

void Use_Database(const std::string& path) {
  using Kt_data_01::TDatabase;
  if (Kt_data_01::Shared_Database().Path() == path) return;
  Kt_data_01::Open_Database(path, TDatabase::TMode::Create_If_Missing);
}

sqlite3* Bare_Connection(const std::string& path) {
  static std::map<std::string, sqlite3*> connections;
  sqlite3*& connection = connections[path];
  if (!connection) {
    sqlite3_open(path.c_str(), &connection);
    Execute(connection, "PRAGMA foreign_keys = ON");
    Execute(connection, "PRAGMA synchronous = FULL");
    Execute(connection, "PRAGMA cache_size = -65536");
  }
  return connection;
}

sqlite3_stmt* Prepare(sqlite3* connection, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v3(connection, sql.data(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                         &statement, nullptr) != SQLITE_OK) {
    std::fprintf(stderr, "benchmark statement: %s\n", sqlite3_errmsg(connection));
    std::exit(1);
  }
  return statement;
}

void Execute(sqlite3* connection, const char* sql) {
  if (sqlite3_exec(connection, sql, nullptr, nullptr, nullptr) == SQLITE_OK) return;
  std::fprintf(stderr, "benchmark statement: %s\n", sqlite3_errmsg(connection));
  std::exit(1);
}

std::size_t Heap_In_Use() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

}  // namespace Bench
