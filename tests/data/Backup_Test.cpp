#include "Backup.h"

#include <atomic>
#include <filesystem>
#include <fstream>
#include <thread>

#include "Database_Test.h"
#include "Store_Check.h"

namespace {

namespace fs = std::filesystem;

struct Backup : TDatabase_Test {
  std::string Files(const std::string& place) const {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(place)) names.insert(entry.path().filename().string());
    std::string text;
    for (const std::string& name : names) text += (text.empty() ? "" : " ") + name;
    return text;
  }
  static std::string Books() { return Query_Rows("BookName", "KT_Books ORDER BY BookName"); }
  static void Add_Book(const char* name) {
    In_Update([&] { Create_Book(name); });
  }
  std::string Refusal(const std::string& file, const std::string& over) {
    const std::string before = File_Content(over);
    std::string why = "restored";
    try {
      Restore(file, over);
    } catch (const EBackup_Error& e) {
      why = e.what();
    }
    EXPECT_EQ(File_Content(over), before);
    return why;
  }

  TTemporary_Folder folder;
  const std::string place = folder.File("backups/");
};

TEST_F(Backup, Made_While_Another_Connection_Writes_Is_Sound) {
  std::atomic<bool> stop = false;
  std::atomic<int> written = 0;
  std::thread writer([&] {
    const auto engine = Open_Sqlite(database.Path(), {});
    for (; !stop; ++written) {
      EXPECT_FALSE(engine->Begin_Write());
      for (int i = 0; i < 2; ++i)
        engine->Execute("INSERT INTO KT_Settings (Name, Value) VALUES (hex(randomblob(8)), 'pair')");
      engine->Commit();
    }
  });
  std::vector<std::string> made;
  for (int i = 0; i < 5; ++i) {
    for (const int before = written; written < before + 20;) std::this_thread::yield();
    made.push_back(Back_Up(database.Path(), place));
  }
  Close_Database();
  const std::string kept = Restore(made.front(), database.Path());
  stop = true;
  writer.join();
  EXPECT_EQ(Files(place),
            "test-2024-01-15-1200-2.db test-2024-01-15-1200-3.db test-2024-01-15-1200-4.db "
            "test-2024-01-15-1200-5.db test-2024-01-15-1200.db");
  const auto pairs = [](const std::string& file) {
    Open_Database(file, TDatabase::TMode::Must_Exist);
    EXPECT_EQ(Check_Store(), std::vector<std::string>{});
    return Query_Number("SELECT count(*) FROM KT_Settings WHERE Value = 'pair'");
  };
  EXPECT_EQ(pairs(kept) + pairs(database.Path()) - pairs(made.front()), 2 * written) << "none is lost";
  std::int64_t rows = 0;
  for (const std::string& file : made) {
    const std::int64_t found = pairs(file);
    EXPECT_GT(found, rows);
    EXPECT_EQ(found % 2, 0);
    rows = found;
  }
}

TEST_F(Backup, Restored_Takes_The_Place_And_What_Was_There_Is_Kept) {
  const std::string file = Back_Up(database.Path(), folder.File("mine.db"));
  EXPECT_THROW(Back_Up(database.Path(), file), EBackup_Error);
  Add_Book("Later");
  Close_Database();
  // Somebody else has it open, and sees what was restored.
  const auto other = Open_Sqlite(database.Path(), {});
  const auto count = other->Prepare("SELECT count(*) FROM KT_Books");
  // The log of a database that is gone counts for no other.
  const std::string gone = folder.File("gone.db");
  other->Execute("UPDATE KT_Books SET BookName = BookName");
  fs::copy_file(database.Path() + "-wal", gone + "-wal");
  const std::string log = File_Content(gone + "-wal"), kept_log = Restore(file, gone);
  EXPECT_EQ(fs::path(kept_log).filename(), "gone-replaced-2024-01-15-1200.db-wal");
  EXPECT_EQ(File_Content(kept_log), log);
  const std::string kept = Restore(file, database.Path());
  ASSERT_TRUE(count->Step());
  EXPECT_EQ(count->Integer(0), 1);
  count->Reset();
  EXPECT_EQ(fs::path(kept).filename(), "test-replaced-2024-01-15-1200.db");
  Open_Database(kept, TDatabase::TMode::Must_Exist);
  EXPECT_EQ(Books(), database.Book().Name + ", Later");
  Open_Database(database.Path(), TDatabase::TMode::Must_Exist);
  EXPECT_EQ(Books(), database.Book().Name);
  Close_Database();
  // In place of what is damaged, and where nothing is.
  const std::string damaged = folder.File("damaged.db"), none = folder.File("none.db");
  std::ofstream(damaged) << "damage";
  EXPECT_EQ(File_Content(Restore(file, damaged)), "damage");
  EXPECT_EQ(Restore(file, none), "");
  for (const std::string& each : {damaged, none, gone}) {
    Open_Database(each, TDatabase::TMode::Must_Exist);
    EXPECT_EQ(Check_Store(), std::vector<std::string>{});
  }
}

TEST_F(Backup, Only_A_Sound_Database_Of_This_Program_Is_Restored) {
  Close_Database();
  const std::string file = folder.File("x.db"), sound = Back_Up(database.Path(), folder.File("sound.db"));
  const auto expect = [&](const std::string& why, bool also_in_place = false) {
    EXPECT_EQ(Refusal(file, database.Path()), why);
    if (also_in_place) {
      EXPECT_EQ(Refusal(sound, file), why);
    }
    fs::remove(file);
  };
  expect("There is no file \"" + file + "\".");
  std::ofstream(file) << "BEGIN:VCALENDAR";
  expect("\"" + file + "\" cannot be restored: it is not a database.");
  std::ofstream(file) << "";
  expect("\"" + file + "\" is an empty database.");
  Open_Sqlite(file, {})->Execute("CREATE TABLE theirs (a)");
  expect("\"" + file + "\" is a database of another program.", true);
  Back_Up(database.Path(), file);
  Open_Sqlite(file, {})->Execute("PRAGMA user_version = 99");
  expect("\"" + file +
             "\" was written by a newer version of this program (its schema is 99, this program knows " +
             std::to_string(Schema_Version) + ").",
         true);
  Back_Up(database.Path(), file);
  fs::resize_file(file, fs::file_size(file) / 2);
  expect("\"" + file + "\" cannot be restored: the file is damaged.");
  EXPECT_EQ(Refusal(database.Path(), database.Path()),
            "\"" + database.Path() + "\" is the database itself, not a backup of it.");
}

TEST_F(Backup, Daily_Ones_Are_Made_Once_And_The_Oldest_Go) {
  Choose_Backups(true, folder.File("kept"), 3);
  fs::create_directory(folder.File("kept"));
  for (const char* name : {"test-2024-01-10-0900.db", "test-2024-01-10-0900-10.db",
                           "test-2024-01-10-0900-2.db", "test-2031-01-01-0900.db", "test-2031-01-01-0901.db"})
    Back_Up(database.Path(), folder.File("kept/") + name);
  for (const char* name : {"test-notes.db", "other-2023-01-10-0900.db", "test-2023-01-10-0900.txt"})
    std::ofstream(folder.File("kept/") + name) << "x";
  // Of another database with the same name.
  TDatabase().Open(folder.File("other.db"), TDatabase::TMode::Create_If_Missing);
  Back_Up(folder.File("other.db"), folder.File("kept/test-2024-01-15-0800.db"));
  const std::string left = folder.File("kept/test-2024-01-09-0900.db.new-" + Get_GUID());
  std::ofstream(left) << "x";
  fs::last_write_time(left, fs::file_time_type::clock::now() - std::chrono::hours(25));
  EXPECT_EQ(Back_Up_Daily(database.Path()), folder.File("kept/test-2024-01-15-1200.db"));
  EXPECT_EQ(Files(folder.File("kept")),
            "other-2023-01-10-0900.db test-2023-01-10-0900.txt test-2024-01-10-0900-10.db "
            "test-2024-01-15-0800.db test-2024-01-15-1200.db test-2031-01-01-0901.db test-notes.db");
  seams.Clock.Value += 0.4;
  EXPECT_EQ(Back_Up_Daily(database.Path()), "");
  seams.Clock.Value += 0.4;
  Choose_Backups(true, folder.File("kept"), 1);
  EXPECT_EQ(Back_Up_Daily(database.Path()), folder.File("kept/test-2024-01-16-0712.db"));
  EXPECT_TRUE(fs::exists(folder.File("kept/test-2024-01-16-0712.db"))) << "before one of a later date";
  Choose_Backups(false, "", 2);
  seams.Clock.Value += 1;
  EXPECT_EQ(Back_Up_Daily(database.Path()), "");
}

}  // namespace
