#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <regex>

#include "Database_Test.h"
#include "Store_Check.h"
#include "Templates.h"

namespace {

struct Open : TSeams_Test {
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
  void Expect_Refused(const std::string& why) {
    const std::string before = File_Content(file);
    EXPECT_EQ(Refusal(), "\"" + file + "\" " + why + ".");
    EXPECT_EQ(File_Content(file), before);
  }

  TTemporary_Folder folder;
  const std::string file = folder.File("x.db");
};

TEST_F(Open, What_Is_Not_Ours_Is_Refused_And_Left_As_It_Is) {
  EXPECT_EQ(Refusal(TDatabase::TMode::Must_Exist), "There is no database \"" + file + "\".");
  EXPECT_FALSE(std::filesystem::exists(file));
  std::ofstream(file) << std::string(5000, 'x');
  Expect_Refused("cannot be opened as a database: it is not a database");
  std::filesystem::remove(file);
  Open_Sqlite(file, {})->Execute("CREATE TABLE theirs (a)");
  Expect_Refused("is a database of another program");
  std::filesystem::remove(file);
  std::filesystem::create_directory(file);
  Expect_Refused("cannot be opened as a database: it is a folder");
  std::filesystem::remove(file);
  ASSERT_EQ(mkfifo(file.c_str(), 0600), 0);
  EXPECT_EQ(Refusal(), "\"" + file + "\" cannot be opened as a database: it is not a regular file.");
  std::filesystem::remove(file);
  for (const auto& [path, why] : {std::pair(std::string(":memory:"), "a database must be a file"),
                                  {folder.File(std::string(300, 'x')), "File name too long"}}) {
    TDatabase database;
    EXPECT_THROW(database.Open(path, TDatabase::TMode::Create_If_Missing), EOpen_Error) << why;
    EXPECT_FALSE(std::filesystem::exists(":memory:"));
  }
  EXPECT_EQ(Refusal(), "opened");
  Open_Sqlite(file, {})->Execute("PRAGMA user_version = 99");
  Expect_Refused("was written by a newer version of this program (its schema is 99, this program knows " +
                 std::to_string(Schema_Version) + ")");
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
  const std::string owner = User_Key();
  EXPECT_EQ(owner.size(), 36u);
  Open_Database(deep, TDatabase::TMode::Must_Exist);
  EXPECT_EQ(User_Key(), owner);
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
  EXPECT_EQ(std::make_tuple(events.Column("FirstDate"), events.Column("Started"), events.Column("Worked"),
                            Table_Def("KT_Templates").Column("AddressStyle")),
            std::make_tuple(2 - 1, 26 - 1, 31 - 1, 25 - 1));
  Close_Database();
}

TEST_F(Open, Migrations_Run_In_Order_From_Where_The_Database_Stands) {
  const auto engine = Open_Sqlite(file, {});
  engine->Execute("CREATE TABLE t (a)");
  Migrate(*engine, 1,
          {{1, "INSERT INTO t VALUES ('one')"},
           {2, "INSERT INTO t VALUES ('two')"},
           {3, "UPDATE t SET a = a || '-three'"}});
  const auto found = engine->Prepare("SELECT group_concat(a) || user_version FROM t, pragma_user_version");
  ASSERT_TRUE(found->Step());
  EXPECT_EQ(found->Text(0), "two-three3");
  EXPECT_EQ(Migrations().back().Version, Schema_Version);
}

// data/ holds a database of each earlier version as the program wrote it: a book with an event, a contact
// with details and a deleted one without.
TEST_F(Open, A_Database_Of_Every_Version_Becomes_Like_A_New_One_And_Keeps_What_It_Holds) {
  const auto layout = [this] {
    EXPECT_EQ(Refusal(), "opened");
    const auto engine = Open_Sqlite(file, {});
    const auto columns = engine->Prepare(
        "SELECT group_concat(c) FROM (SELECT m.name || i.name || i.type || i.\"notnull\" || "
        "ifnull(i.dflt_value, '') c "
        "FROM sqlite_schema m, pragma_table_info(m.name) i ORDER BY 1)");
    EXPECT_TRUE(columns->Step());
    return std::string(columns->Text(0));
  };
  const std::string made = layout();
  constexpr int last_whole = 4;  // each later one says what it has otherwise than the one before
  const auto text_of = [](int version) {
    return File_Content(KT_DATA_TEST_DATA "/schema_" + std::to_string(version) + ".sql");
  };
  for (int version = 1; version < Schema_Version; ++version) {
    std::string schema = text_of(std::min(version, last_whole));
    for (int later = last_whole + 1; later <= version; ++later) schema += text_of(later);
    std::filesystem::remove(file);
    Open_Sqlite(file, {})->Execute(
        "PRAGMA foreign_keys = OFF;" + schema +
        ";UPDATE KT_Events SET Type = 3;"
        "INSERT INTO KT_Alarms (Key, User, Offset, NextTime, Actioned) SELECT Key, 'zoe', 60, 99999, 1 FROM "
        "KT_Events_Data;"
        "UPDATE KT_Events SET Private = 1, User = 'zoe';"
        "INSERT INTO KT_Log (Contact, Occurrence) SELECT 'anna', Key FROM KT_Events_Data" +
        (version < 5 ? ""
                     : ";INSERT INTO KT_Alerts SELECT Key, 'anna', EventDate, 1, EventDate, 1, 1 FROM "
                       "KT_Events_Data; INSERT INTO KT_Alerts (Occurrence) VALUES ('gone')"));
    EXPECT_EQ(layout(), made) << version;
    Open_Database(file, TDatabase::TMode::Must_Exist);
    EXPECT_EQ(Check_Store(), std::vector<std::string>()) << version;
    TTable events(Events_Table);
    events.First();
    EXPECT_EQ(events.Integer(events.Field("Type")), version < 4 ? 1 : 3)
        << "an e-mail, as the journal counts";
    EXPECT_EQ(Query_Rows("a.User, a.Due < o.EventDate, a.Dismissed",
                         "KT_Alerts a JOIN KT_Events_Data o ON o.Key = a.Occurrence"),
              "zoe|1|1")
        << "long past when the alarm was found";
    EXPECT_EQ(Query_Text("SELECT PrivateTo FROM KT_Log"), "zoe") << "also when the entry is gone";
    const TBook book = List_Books().at(0);
    const auto templates = List_Templates(book.Key);
    for (const char* contact : {"anna", "zoe"})
      EXPECT_EQ(Find_Template(Read_Contact_Details(contact).Template).value().Name, "Person") << contact;
    const TContact_Details anna = Read_Contact_Details("anna");
    EXPECT_EQ(anna.Other[0] + anna.Other[7] + anna.Notes + Other_Labels(book.Key)[0],
              "0160 1Lasttwo\nlinesPhone");
    EXPECT_EQ(Find_Contact("anna")->Name + List_Contacts(book.Key, true).at(0).Name, "Anna BergZoe");
    EXPECT_EQ(Counts(), "1 1 1");
    // What a new book gets now, with keys of the usual form.
    TBook another;
    In_Update([&] { another = Create_Book("Another"); });
    const auto usual = List_Templates(another.Key);
    ASSERT_EQ(templates.size(), usual.size());
    for (std::size_t i = 0; i < usual.size(); ++i) {
      EXPECT_EQ(std::tie(templates[i].Name, templates[i].Labels, templates[i].Address_Style),
                std::tie(usual[i].Name, usual[i].Labels, usual[i].Address_Style));
      EXPECT_TRUE(
          std::regex_match(templates[i].Key, std::regex("[0-9a-f]{8}(-[0-9a-f]{4}){3}-[0-9a-f]{12}")));
    }
    EXPECT_LT(templates[0].Key, templates[1].Key);
    Close_Database();
  }
}

}  // namespace
