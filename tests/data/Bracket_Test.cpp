#include <filesystem>

#include "Database_Test.h"
#include "Kt_update.h"

namespace {

struct Bracket : TDatabase_Test {
  static void Add(const std::string& name) {
    TTable log(Log_Table);
    log.Insert();
    log.Set(log.Field("Title"), name);
    PostUpdate(log);
  }
  static std::string Titles() { return Query_Rows("Title", "KT_Log ORDER BY row_id"); }
};

TEST_F(Bracket, An_Inner_One_Is_Undone_By_Itself_And_Reports_When_All_Are_Closed) {
  seams.Prompts.Expect_Undone("inner trouble", "inner:tag");
  EXPECT_TRUE(Update("outer:tag", [] {
    Add("kept");
    EXPECT_FALSE(Update("inner:tag", [] {
      Add("undone");
      throw std::runtime_error("inner trouble");
    }));
    Add("later");
    EXPECT_TRUE(Update_Is_Open());
  }));
  EXPECT_EQ(Titles(), "kept, later");
  EXPECT_FALSE(Update_Is_Open());
}

TEST_F(Bracket, A_Part_That_Failed_Makes_The_Whole_Fail_With_One_Report) {
  seams.Prompts.Expect_Undone("trouble", "part:tag");
  EXPECT_FALSE(Update("whole:tag", [] {
    Add("a");
    if (!Update("part:tag", [] { throw std::runtime_error("trouble"); })) throw EAlready_Reported();
  }));
  EXPECT_EQ(Titles(), "");
}

TEST_F(Bracket, A_Failed_Operation_Fails_The_Bracket_Even_If_Its_Exception_Is_Swallowed) {
  Plant("INSERT ON KT_Log WHEN new.Title = 'bad'");
  seams.Prompts.Expect_Undone("planted fault", "swallowed:tag");
  EXPECT_FALSE(Update("swallowed:tag", [] {
    Add("good");
    EXPECT_THROW(Add("bad"), EData_Error);
    Add("also good");
  }));
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("next", [] { Add("usable again"); }));
  EXPECT_EQ(Titles(), "usable again");
}

TEST_F(Bracket, Ending_It_While_An_Exception_Passes_Undoes_It_And_The_Report_Follows_Once) {
  struct TFinally {
    ~TFinally() { EndUpdate(); }
  };
  seams.Prompts.Expect_Undone("no such day", "finally:tag");
  Log_Table.Set_Index("Contact");
  Log_Table.SetRange({"x"}, {"x"});
  try {
    ASSERT_TRUE(Start_Update());
    TFinally finally;
    Add("undone");
    throw EConvert_Error("no such day");
  } catch (...) {
    EXPECT_FALSE(Update_Is_Open());
    FailUpdate("finally:tag");
  }
  EXPECT_EQ(Titles(), "");
  In_Update([] { Add("one"); });
  Log_Table.First();
  EXPECT_FALSE(Log_Table.Eof()) << "ranges are cancelled";
}

TEST_F(Bracket, A_Commit_That_Fails_Throws_And_Leaves_Nothing) {
  seams.Prompts.Expect_Undone("FOREIGN KEY constraint failed", "commit:tag");
  EXPECT_FALSE(Update("commit:tag", [] {
    Add("lost");
    Run_Sql("PRAGMA defer_foreign_keys = ON; INSERT INTO KT_Alarms (Key) VALUES ('of nothing')");
  }));
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("commit:tag", [] { Add("next"); }));
  EXPECT_EQ(Titles(), "next");
}

TEST_F(Bracket, A_Full_Disk_Undoes_All_Of_It) {
  database.Reopen({.Max_Pages = Query_Number("PRAGMA page_count") + 3});
  seams.Prompts.Expect_Undone("the disk is full", "full:tag");
  EXPECT_FALSE(Update("full:tag", [] {
    for (int i = 0; i < 1000; ++i) Add(std::string(1000, 'x'));
  }));
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("full:tag", [] { Add("small"); })) << "the database stays usable";
}

TEST_F(Bracket, A_Refusal_Says_Why_Each_Time_And_Writes_Nothing) {
  const auto add = [] { return static_cast<bool>(Update("tag", [] { Add("x"); })); };
  database.Reopen_Read_Only();
  EXPECT_FALSE(add() || add());
  database.Reopen({.Busy_Time = std::chrono::milliseconds(20)});
  TDatabase writer;
  writer.Open(database.Path(), TDatabase::TMode::Must_Exist);
  ASSERT_TRUE(writer.Start_Update());
  EXPECT_FALSE(add());
  EXPECT_EQ(Titles(), "") << "reading goes on";
  writer.EndUpdate();
  EXPECT_TRUE(add());
  Close_Database();
  EXPECT_FALSE(Start_Update());
  const std::string start = "The database cannot be changed now: ";
  EXPECT_EQ(seams.Prompts.Notices,
            (std::vector<std::string>{start + "it is read-only.", start + "it is read-only.",
                                      start + "another program is writing to it; try again in a moment.",
                                      start + "none is open."}));
}

TEST_F(Bracket, What_Would_Be_Lost_Because_The_File_Is_Another_Now_Is_Refused) {
  namespace fs = std::filesystem;
  const std::string path = database.Path(), kept = path + ".kept";
  In_Update([] { Add("before"); });
  Run_Sql("VACUUM INTO '" + path + ".copy'");
  const auto add = [] { return static_cast<bool>(Update("tag", [] { Add("x"); })); };
  for (const auto& replace :
       {+[](const std::string& name) { fs::rename(name + ".copy", name); }, +[](const std::string&) {}}) {
    fs::rename(path, kept);
    replace(path);
    const std::string found = File_Content(path), left = File_Content(kept);
    EXPECT_FALSE(add() || add());
    EXPECT_EQ(Titles(), "before") << "reading goes on";
    EXPECT_TRUE(File_Content(path) == found && File_Content(kept) == left);
    fs::rename(kept, path);
  }
  EXPECT_TRUE(add()) << "where it belongs again";
  EXPECT_EQ(seams.Prompts.Notices,
            std::vector<std::string>(4, "The database cannot be changed now: the file \"" + path +
                                            "\" has been replaced or removed by another program and must be "
                                            "opened again."));
}

TEST_F(Bracket, Starting_One_Ends_A_Snapshot_And_Sees_What_Others_Wrote) {
  TSnapshot snapshot;
  EXPECT_EQ(Titles(), "");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("INSERT INTO KT_Log (Title) VALUES ('elsewhere')");
  EXPECT_EQ(Titles(), "");
  In_Update([] { Add("here"); });
  EXPECT_EQ(Titles(), "elsewhere, here");
}

}  // namespace
