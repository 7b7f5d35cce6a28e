#include <functional>

#include "Categories.h"
#include "Database_Test.h"
#include "Login.h"
#include "Tags.h"

namespace {

constexpr const char* Right = "correct horse";

struct Users : TDatabase_Test {
  // The owner, who is the current user, and Bert, who is no administrator; Ann has a password.
  Users() {
    In_Update([&] {
      EXPECT_EQ(Add_User("Ann", false, ann), "");
      EXPECT_EQ(Add_User("Bert", false, bert), "");
      EXPECT_EQ(Set_Password(ann, Hash_Password(TSecret(Right))), "");
    });
  }
  // What a change says.
  static std::string Said(const std::function<std::string()>& change) {
    std::string said;
    In_Update([&] { said = change(); });
    return said;
  }
  /// What a try says; who is the current user then stands behind it.
  std::string Try(const std::string& name, const std::string& password, double later = 0) {
    seams.Clock.Value += later / 86'400;
    const std::string said = Login_Fault(Log_In(name, TSecret(password)), "Wrong.");
    return said + "/" + Account_Of(User_Key()).Name;
  }
  static std::string Flags() { return std::string(DB_Permissions ? "+" : "-") + (DB_Secure ? "+" : "-"); }

  std::string ann, bert;
};

TEST_F(Users, The_First_One_Is_The_Owner_And_The_Flags_Follow_Whoever_Changes_Them) {
  EXPECT_EQ(ann, Database_Owner());
  EXPECT_EQ(ann, User_Key());
  EXPECT_TRUE(Account_Of(ann).Administrator);
  EXPECT_TRUE(Access_Allowed(database.Book().Key, Access_Delete, bert)) << "until rights say otherwise";
  EXPECT_EQ(Flags(), "+-");
  EXPECT_EQ(Said([] { return Set_Secure(true); }), "");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  std::string seen;
  for (const char* change : {"DELETE FROM KT_Settings WHERE Name = 'Secure'", "DELETE FROM KT_Users"}) {
    Follow_Users();
    seen += Flags() + " ";
    other.Engine().Execute(change);
  }
  Access_Allowed(ann, Access_See);
  EXPECT_EQ(seen + Flags(), "++ +- --") << "also seen where rights are asked for";
  database.Reopen();
  EXPECT_EQ(User_Key(), ann);
}

TEST_F(Users, What_Would_Lock_Everybody_Out_Or_Is_Not_For_This_User_Is_Refused) {
  const std::string no_administrator =
      "Only an administrator may set up users and the security of the database.";
  const std::string last = "\"Ann\" is the last administrator; make somebody else an administrator first.";
  const std::string last_secure =
      "\"Ann\" is the last administrator with a password; make somebody else an administrator first.";
  const auto remove_ann = [&] { return Remove_User(ann, bert); };
  std::string key;
  const struct {
    std::function<std::string()> Change;
    std::string Said;
  } steps[] = {
      {[&] { return Add_User("", false, key); }, "A user needs a name."},
      {[&] { return Add_User("ANN", false, key); }, "There is a user \"Ann\" already; choose another name."},
      {[&] { return Rename_User(bert, "ann"); }, "There is a user \"Ann\" already; choose another name."},
      {[&] { return Rename_User(ann, "ANN"); }, ""},
      {[&] { return Rename_User(ann, "Ann"); }, ""},
      {[&] { return Rename_User("x", "X"); }, "The user has been removed meanwhile."},
      {[&] { return Set_Administrator(ann, false); }, last},
      {remove_ann, last},
      {[&] { return Remove_User(bert, bert); }, "Name somebody else who gets what belongs to \"Bert\"."},
      {[&] { return Remove_User(bert, "x"); }, "The user has been removed meanwhile."},
      {[&] { return Set_Administrator(bert, true); }, ""},
      {[] { return Set_Secure(true); }, ""},
      {[&] { return Set_Administrator(ann, false); }, last_secure},
      {remove_ann, last_secure},
      {[&] { return Set_User_Key(bert), Set_Secure(true); },
       "Set a password for yourself first: without one nobody could set up the database any more."},
      {[&] { return Set_Administrator(bert, false); }, ""},
      {[&] { return Add_User("Carl", true, key); }, no_administrator},
      {[&] { return Rename_User(bert, "Bob"); }, no_administrator},
      {[&] { return Set_Administrator(bert, true); }, no_administrator},
      {remove_ann, no_administrator},
      {[&] { return Set_Password(ann, "hash"); }, no_administrator},
      {[] { return Set_Secure(false); }, no_administrator},
      {[&] { return Set_Password(bert, Hash_Password(TSecret(Right))); }, ""},
      {[&] { return Set_User_Key(ann), Set_Administrator(bert, true); }, ""},
      {[&] { return Add_User("Dora", false, key); }, ""},
      {[&] { return Remove_User(ann, key); }, ""},
      {[&] { return Set_User_Key(bert), Remove_User(key, bert); }, ""}};
  for (const auto& step : steps) EXPECT_EQ(Said(step.Change), step.Said);
  EXPECT_EQ(Query_Rows("Name, Administrator", "KT_Users"), "Bert|1");
  EXPECT_EQ(Database_Owner(), bert) << "no heir who is not an administrator";
  EXPECT_EQ(Database_Identity(), ann) << "as in the backups of before";
}

TEST_F(Users, One_Who_Is_Removed_Leaves_All_To_The_Heir) {
  const std::string book = database.Book().Key;
  std::string contact, other;
  In_Update([&] {
    Set_User_Key(bert);
    contact = Create_Contact(book, "Contact");
    other = Create_Contact(book, "Other");
    Set_Rights(contact, bert, {});
    for (const std::string& user : {ann, bert}) {
      Set_User_Key(user);
      Set_Tagged(contact, true);
      Note_Open_Editor("e" + user);
    }
    Set_User_Key(bert);
    Set_Tagged(other, true);
    Run_Sql("INSERT INTO KT_Filters (User, BookKey, Name) VALUES ('" + ann + "', 'b', 'Same'), ('" + bert +
            "', 'b', 'Same'), ('" + bert + "', 'b', 'Own'), ('" + bert + "', 'c', 'Same')");
    Run_Sql("INSERT INTO KT_Events (Key, User) VALUES ('k', '" + bert + "')");
    Run_Sql("INSERT INTO KT_Events_Data (Key, Event) VALUES ('k', 'k')");
    Run_Sql("INSERT INTO KT_Alarms (Key, User) VALUES ('k', '" + bert + "')");
    Run_Sql("INSERT INTO KT_Alerts (Occurrence, User) VALUES ('k', '" + bert + "')");
    Set_User_Key(ann);
  });
  ASSERT_EQ(Said([&] { return Remove_User(bert, ann); }), "");
  std::string left;
  for (const auto& table : {"KT_Contacts", "KT_Events", "KT_Alarms", "KT_Alerts", "KT_Flags", "KT_Filters",
                            "KT_Open_Editors", "KT_Rights"})
    left += std::to_string(
        Query_Number("SELECT count(*) FROM " + std::string(table) + " WHERE User = '" + bert + "'"));
  EXPECT_EQ(left, "00000000");
  EXPECT_EQ(Query_Rows("User = '" + ann + "', ModifiedBy = '" + ann + "'", "KT_Contacts WHERE Type = 0"),
            "1|1, 1|1");
  EXPECT_EQ(Tagged_Contacts().size(), 2u);
  EXPECT_EQ(Noted_Editors().size(), 2u);
  EXPECT_EQ(Query_Rows("BookKey, Name", "KT_Filters ORDER BY BookKey, Name"),
            "b|Own, b|Same, b|Same (Bert), c|Same");
}

TEST_F(Users, A_Wrong_Password_Doubles_The_Wait_For_All_Programs_And_A_Right_One_Ends_It) {
  ASSERT_EQ(Said([] { return Set_Secure(true); }), "");
  database.Reopen();
  EXPECT_EQ(Try("Ann", ""), "Wrong. Try again in 1 second./");
  EXPECT_EQ(Try("Ann", Right), "After wrong passwords, try again in 1 second./");
  EXPECT_EQ(Try("ann", "x", 1), "Wrong. Try again in 2 seconds./");
  database.Reopen();
  EXPECT_EQ(Try("Ann", Right, 1), "After wrong passwords, try again in 1 second./");
  // The clocks go forward and back an hour, which is no waiting; but one that is set back cannot lock.
  seams.Clock.Value -= 1;
  EXPECT_EQ(Try("Ann", Right), "After wrong passwords, try again in 2 seconds./");
  EXPECT_EQ(Try("Ann", Right, 2), "/Ann");
  EXPECT_EQ(Query_Text("SELECT Failures FROM KT_Users WHERE Name = 'Ann'"), "0");
  for (const char* name : {"Nobody", "Bert"}) {
    std::string waits;
    for (double later = 0; waits.size() < 90;) {
      const TLogin login = Log_In(name, TSecret(Right));
      EXPECT_EQ(login.End, TLogin::TEnd::Wrong);
      waits += std::to_string(login.Seconds) + " ";
      later = static_cast<double>(login.Seconds) / 86'400;
      seams.Clock.Value += later;
    }
    EXPECT_EQ(waits.substr(0, 48), "1 2 4 8 16 32 64 128 256 512 900 900 900 900 900") << name;
  }
  EXPECT_EQ(Try("Nobody else", Right), "Wrong. Try again in 15 minutes./Ann");
  EXPECT_EQ(Try("Nobody", Right, 86'401), "Wrong. Try again in 1 second./Ann") << "forgotten after a day";
}

TEST_F(Users, A_Password_Is_Hashed_Anew_When_It_Shall_Cost_More_And_Counted_Or_Not_Tried) {
  EXPECT_EQ(Password_Fault(TSecret("äöüäöüä")), "A password needs at least 8 characters.");
  EXPECT_EQ(Password_Fault(TSecret("äöüäöüäö")) + Password_Fault(TSecret(std::string(1023, 'x'))), "");
  EXPECT_EQ(Password_Fault(TSecret(std::string(1025, 'x'))), "The password is too long.");
  TSecret typed("aö");
  for (const char* left : {"a", "", ""}) {
    typed.Remove_Last();
    EXPECT_EQ(typed.View(), left);
  }
  const auto stored = [] { return Query_Text("SELECT Password FROM KT_Users WHERE Name = 'Ann'"); };
  const std::string cheap = stored();
  EXPECT_TRUE(Check_Password(TSecret(Right)));
  EXPECT_EQ(stored(), cheap);
  Install_Least_Password_Cost(false);
  EXPECT_TRUE(Check_Password(TSecret(Right)));
  EXPECT_NE(stored().find("$argon2id$v=19$m=262144,t=3,p=1$"), std::string::npos) << stored();
  EXPECT_TRUE(Enter_As(bert));
  EXPECT_FALSE(Enter_As("x"));
  EXPECT_EQ(User_Key(), bert);
  TDatabase writer;
  writer.Open(database.Path(), TDatabase::TMode::Must_Exist);
  database.Reopen({.Busy_Time = std::chrono::milliseconds(1)});
  ASSERT_TRUE(writer.Start_Update());
  EXPECT_EQ(Try("Ann", Right),
            "No password can be checked now, because the database cannot be changed: it counts wrong ones./");
  writer.EndUpdate();
  ASSERT_EQ(seams.Prompts.Notices.size(), 1u);
}

}  // namespace
