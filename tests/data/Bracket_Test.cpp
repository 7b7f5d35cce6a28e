#include <gtest/gtest.h>

#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

namespace {

constexpr auto Report = "The change could not be saved and has been undone: ";

// Passes everything on, and fails at commit when told to.
class TFailing_Engine final : public TEngine {
 public:
  explicit TFailing_Engine(std::unique_ptr<TEngine> real_engine) : real(std::move(real_engine)) {}
  static inline bool Fail_Commit = false;

  TIdentity Identify() override { return real->Identify(); }
  void Stamp(std::int64_t program, std::int64_t version) override { real->Stamp(program, version); }
  std::string Column_Declaration(TColumn_Type type, std::int64_t number) override {
    return real->Column_Declaration(type, number);
  }
  std::string Row_Id_Declaration() override { return real->Row_Id_Declaration(); }
  void Prepare_Storage() override { real->Prepare_Storage(); }
  std::unique_ptr<TStatement> Prepare(std::string_view sql) override { return real->Prepare(sql); }
  void Execute(const std::string& sql) override { real->Execute(sql); }
  std::optional<std::string> Begin_Write() override { return real->Begin_Write(); }
  void Begin_Read() override { real->Begin_Read(); }
  void Commit() override {
    if (Fail_Commit) throw EEngine_Error("disk I/O error");
    real->Commit();
  }
  void Rollback() noexcept override { real->Rollback(); }
  void Begin_Part(int level) override { real->Begin_Part(level); }
  void Keep_Part(int level) override { real->Keep_Part(level); }
  void Undo_Part(int level) override { real->Undo_Part(level); }
  bool In_Transaction() override { return real->In_Transaction(); }
  std::int64_t Last_Row_Id() override { return real->Last_Row_Id(); }
  std::int64_t Rows_Changed() override { return real->Rows_Changed(); }
  std::int64_t External_Changes() override { return real->External_Changes(); }
  std::vector<std::string> Check_Storage() override { return real->Check_Storage(); }

 private:
  std::unique_ptr<TEngine> real;
};

class Bracket : public testing::Test {
 protected:
  void Add(const std::string& name) {
    TTable log(Log_Table);
    log.Insert();
    log.Set(log.Field("Title"), name);
    PostUpdate(log);
  }
  static std::string Titles() {
    return Query_Text(
        "SELECT coalesce(group_concat(Title, ' '), '') FROM (SELECT Title FROM KT_Log ORDER BY row_id)");
  }
  // The shape in which every part of the program writes.
  template <class TBody>
  bool Update(const char* tag, TBody body) {
    if (!Start_Update()) return false;
    try {
      body();
      EndUpdate();
      return true;
    } catch (...) {
      FailUpdate(tag);
      return false;
    }
  }

  Kt_test::TTest_Seams seams;
  TTemporary_Database database;
};

TEST_F(Bracket, An_Inner_One_Is_Undone_By_Itself_And_Reports_When_All_Are_Closed) {
  seams.Prompts.Expect_Error("Update Failed", std::string(Report) + "inner trouble\n\ninner:tag");
  EXPECT_TRUE(Update("outer:tag", [&] {
    Add("kept");
    EXPECT_FALSE(Update("inner:tag", [&] {
      Add("undone");
      throw std::runtime_error("inner trouble");
    }));
    Add("later");
    EXPECT_TRUE(Update_Is_Open());
  }));
  EXPECT_EQ(Titles(), "kept later");
  EXPECT_FALSE(Update_Is_Open());
}

TEST_F(Bracket, A_Part_That_Failed_Makes_The_Whole_Fail_With_One_Report) {
  seams.Prompts.Expect_Error("Update Failed", std::string(Report) + "trouble\n\npart:tag");
  EXPECT_FALSE(Update("whole:tag", [&] {
    Add("a");
    if (!Update("part:tag", [&] { throw std::runtime_error("trouble"); })) throw EAlready_Reported();
  }));
  EXPECT_EQ(Titles(), "");
}

TEST_F(Bracket, A_Failed_Operation_Fails_The_Bracket_Even_If_Its_Exception_Is_Swallowed) {
  Run_Sql(
      "CREATE TRIGGER planted BEFORE INSERT ON KT_Log WHEN new.Title = 'bad' BEGIN SELECT RAISE(ABORT, "
      "'planted fault'); END");
  seams.Prompts.Expect_Error("Update Failed",
                             std::string(Report) + "EndUpdate: write KT_Log: planted fault\n\nswallowed:tag");
  EXPECT_FALSE(Update("swallowed:tag", [&] {
    Add("good");
    try {
      Add("bad");
    } catch (const EData_Error&) {
    }
    Add("also good");
  }));
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("next", [&] { Add("usable again"); }));
  EXPECT_EQ(Titles(), "usable again");
}

TEST_F(Bracket, Ending_It_While_An_Exception_Passes_Undoes_It_And_The_Report_Follows_Once) {
  struct TFinally {
    ~TFinally() { EndUpdate(); }
  };
  seams.Prompts.Expect_Error("Update Failed", std::string(Report) + "no such day\n\nfinally:tag");
  Log_Table.Set_Index("Contact");
  Log_Table.SetRange({"x"}, {"x"});
  try {
    ASSERT_TRUE(Start_Update());
    TFinally finally;
    Add("undone");
    throw Kt_util_01::EConvert_Error("no such day");
  } catch (...) {
    EXPECT_FALSE(Update_Is_Open());
    FailUpdate("finally:tag");
  }
  EXPECT_EQ(Titles(), "");
  In_Update([&] { Add("one"); });
  Log_Table.First();
  EXPECT_FALSE(Log_Table.Eof()) << "ranges are cancelled";
}

TEST_F(Bracket, A_Commit_That_Fails_Throws_And_Leaves_Nothing) {
  Shared_Database().Adopt(std::make_unique<TFailing_Engine>(Open_Sqlite(database.Path(), {})));
  TFailing_Engine::Fail_Commit = true;
  seams.Prompts.Expect_Error("Update Failed",
                             std::string(Report) + "EndUpdate: disk I/O error\n\ncommit:tag");
  EXPECT_FALSE(Update("commit:tag", [&] { Add("lost"); }));
  TFailing_Engine::Fail_Commit = false;
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("commit:tag", [&] { Add("next"); }));
  EXPECT_EQ(Titles(), "next");
}

TEST_F(Bracket, A_Full_Disk_Undoes_All_Of_It) {
  TSqlite_Options options;
  options.Max_Pages = Query_Number("PRAGMA page_count") + 3;
  database.Reopen(options);
  seams.Prompts.Expect_Error("Update Failed",
                             std::string(Report) + "write KT_Log: database or disk is full\n\nfull:tag");
  EXPECT_FALSE(Update("full:tag", [&] {
    for (int i = 0; i < 1000; ++i) Add(std::string(1000, 'x'));
  }));
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("full:tag", [&] { Add("small"); })) << "the database stays usable";
}

TEST_F(Bracket, A_Refusal_Says_Why_Once_And_Writes_Nothing) {
  EXPECT_EQ(Titles(), "");
  {
    TSqlite_Options read_only;
    read_only.Read_Only = true;
    database.Reopen(read_only);
    EXPECT_FALSE(Update("read-only", [&] { Add("x"); }));
    EXPECT_FALSE(Update("read-only", [&] { Add("x"); }));
    ASSERT_EQ(seams.Prompts.Notices.size(), 1u);
    EXPECT_EQ(seams.Prompts.Notices[0], "The database cannot be changed now: it is read-only.");
  }
  TSqlite_Options impatient;
  impatient.Busy_Msecs = 20;
  database.Reopen(impatient);
  TDatabase writer;
  writer.Open(database.Path(), TDatabase::TMode::Must_Exist);
  ASSERT_TRUE(writer.Start_Update());
  EXPECT_FALSE(Update("locked", [&] { Add("x"); }));
  ASSERT_EQ(seams.Prompts.Notices.size(), 2u);
  EXPECT_EQ(seams.Prompts.Notices[1],
            "The database cannot be changed now: another program is writing to it.");
  EXPECT_EQ(Titles(), "") << "reading goes on";
  writer.EndUpdate();
  EXPECT_TRUE(Update("free", [&] { Add("at last"); }));
  Close_Database();
  EXPECT_FALSE(Start_Update());
  EXPECT_EQ(seams.Prompts.Notices.back(), "The database cannot be changed now: none is open.");
}

TEST_F(Bracket, Starting_One_Ends_A_Snapshot_And_Sees_What_Others_Wrote) {
  TSnapshot snapshot;
  EXPECT_EQ(Titles(), "");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("INSERT INTO KT_Log (Title) VALUES ('elsewhere')");
  EXPECT_EQ(Titles(), "");
  EXPECT_TRUE(Update("tag", [&] { Add("here"); }));
  EXPECT_EQ(Titles(), "elsewhere here");
}

}  // namespace
