#include <gtest/gtest.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

namespace {

std::string Content(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

class Open : public testing::Test {
 protected:
  std::string Refusal(TDatabase::TMode mode = TDatabase::TMode::Create_If_Missing) {
    TDatabase database;
    try {
      database.Open(file, mode);
    } catch (const EOpen_Error& e) {
      EXPECT_FALSE(database.Is_Open());
      return e.what();
    }
    return "opened";
  }
  void Make(const std::string& sql) {
    const auto engine = Open_Sqlite(file, {});
    engine->Execute(sql);
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Folder folder;
  const std::string file = folder.File("x.db");
};

TEST_F(Open, What_Is_Not_Ours_Is_Refused_And_Left_As_It_Is) {
  EXPECT_EQ(Refusal(TDatabase::TMode::Must_Exist), "There is no database \"" + file + "\".");
  EXPECT_FALSE(std::filesystem::exists(file));

  std::ofstream(file) << std::string(5000, 'x');
  const std::string text = Content(file);
  EXPECT_EQ(Refusal(), "\"" + file + "\" cannot be opened as a database: file is not a database.");
  EXPECT_EQ(Content(file), text);

  std::filesystem::remove(file);
  Make("CREATE TABLE theirs (a)");
  const std::string theirs = Content(file);
  EXPECT_EQ(Refusal(), "\"" + file + "\" is a database of another program.");
  EXPECT_EQ(Content(file), theirs);

  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  EXPECT_EQ(Refusal(), "\"" + file + "\" cannot be opened as a database: unable to open database file.");
}

TEST_F(Open, A_Newer_Schema_Is_Refused_And_Left_As_It_Is) {
  EXPECT_EQ(Refusal(), "opened");
  Make("PRAGMA user_version = 99");
  const std::string before = Content(file);
  EXPECT_EQ(
      Refusal(),
      "\"" + file +
          "\" was written by a newer version of this program (its schema is 99, this program knows 1).");
  EXPECT_EQ(Content(file), before);
}

TEST_F(Open, A_Folder_That_Cannot_Be_Written_Is_Named_As_The_Reason) {
  namespace fs = std::filesystem;
  EXPECT_EQ(Refusal(), "opened");
  // No right is denied to root.
  const auto user = geteuid();
  const auto as = [&](uid_t other) { return user != 0 || seteuid(other) == 0; };
  for (const fs::perms of_file : {fs::perms(0444), fs::perms(0666)}) {
    fs::permissions(file, of_file);
    fs::permissions(folder.File("."), fs::perms(0555));
    ASSERT_TRUE(as(65534));
    EXPECT_EQ(
        Refusal(TDatabase::TMode::Must_Exist),
        "\"" + file + "\" cannot be opened as a database: its folder must be writable, even for reading.");
    ASSERT_TRUE(as(0));
    fs::permissions(folder.File("."), fs::perms(0755));
  }
  EXPECT_EQ(Refusal(TDatabase::TMode::Must_Exist), "opened");
}

TEST_F(Open, Makes_Missing_Folders_And_Keeps_The_Owner) {
  const std::string deep = folder.File("a/b/c.db");
  Open_Database(deep, TDatabase::TMode::Create_If_Missing);
  const std::string owner = Kt_util_01::User_Key();
  EXPECT_EQ(owner.size(), 36u);
  Open_Database(deep, TDatabase::TMode::Must_Exist);
  EXPECT_EQ(Kt_util_01::User_Key(), owner);
  Close_Database();
}

TEST_F(Open, Every_Table_And_Index_Of_The_Schema_Is_There) {
  Open_Database(file, TDatabase::TMode::Create_If_Missing);
  for (const TTable_Def& def : Schema()) {
    TTable table(def.Name);
    table.First();
    EXPECT_TRUE(def.Name == "KT_Settings" || table.Eof()) << def.Name;
    for (const TIndex_Def& index : def.Indexes) {
      table.Set_Index(index.Name);
      EXPECT_NO_THROW(table.First()) << def.Name << " " << index.Name;
    }
  }
  // Positions that saved searches rely on, counted from 1.
  const TTable_Def& events = Table_Def("KT_Events");
  EXPECT_EQ(events.Column("FirstDate"), 2 - 1);
  EXPECT_EQ(events.Column("Started"), 26 - 1);
  EXPECT_EQ(events.Column("Worked"), 31 - 1);
  EXPECT_EQ(Table_Def("KT_Templates").Column("AddressStyle"), 25 - 1);
  Close_Database();
}

TEST_F(Open, Migrations_Run_In_Order_From_Where_The_Database_Stands) {
  Make("CREATE TABLE t (a); PRAGMA user_version = 1");
  const std::vector<TMigration> steps = {{1, "INSERT INTO t VALUES ('one')"},
                                         {2, "INSERT INTO t VALUES ('two')"},
                                         {3, "UPDATE t SET a = a || '-three'"}};
  const auto engine = Open_Sqlite(file, {});
  Migrate(*engine, 1, steps);
  const auto found =
      engine->Prepare("SELECT group_concat(a), (SELECT user_version FROM pragma_user_version) FROM t");
  ASSERT_TRUE(found->Step());
  EXPECT_EQ(found->Text(0), "two-three");
  EXPECT_EQ(found->Integer(1), 3);
  const std::vector<TMigration> broken = {{4, "INSERT INTO t VALUES ('four')"}, {5, "NONSENSE"}};
  engine->Execute("BEGIN");
  EXPECT_THROW(Migrate(*engine, 3, broken), EEngine_Error);
  engine->Rollback();
  EXPECT_EQ(Migrations().empty() ? 1 : Migrations().back().Version, Schema_Version);
}

}  // namespace
