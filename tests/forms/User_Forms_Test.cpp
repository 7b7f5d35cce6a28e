#include "Editor_Fixture.h"
#include "KTAccess.h"
#include "Login.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Permissions_Dialog.h"
#include "Presence.h"
#include "User_Dialogs.h"

using namespace Plexidex;

namespace {

constexpr const char* Right = "correct horse";

struct User_Forms : TEditor_Fixture {
  static std::string Names(QWidget* dialog) {
    QStringList shown;
    const auto* list = Control<QListWidget>(dialog, "User_List");
    for (int i = 0; i < list->count(); ++i) shown << list->item(i)->text();
    return shown.join(QLatin1Char('|')).toStdString();
  }
  /// Ann, who is the owner, with a password, and Bert without one.
  std::string Add_Users(const std::string& secure = {}) const {
    std::string ann, bert;
    In_Update([&] {
      EXPECT_EQ(Add_User("Ann", true, ann), "");
      EXPECT_EQ(Add_User("Bert", false, bert), "");
      EXPECT_EQ(Set_Password(ann, Hash_Password(TSecret(Right))), "");
      Store_Setting("Secure", secure);
    });
    Follow_Users();
    return bert;
  }
  static std::string Current() { return Account_Of(User_Key()).Name; }
};

TEST_F(User_Forms, Users_Are_Added_Changed_And_Removed) {
  const auto edit = [&](QWidget* form) {
    const auto enter = [&](const char* button, const std::string& inputs, const std::string& fault = {},
                           const std::string& then = {}) {
      With_Dialog(
          [&](QWidget* dialog) {
            if (!fault.empty()) seams.Prompts.Expect_Error(dialog->windowTitle().toStdString(), fault);
            Confirm_With(inputs)(dialog);
            seams.Prompts.Verify();
            if (!then.empty()) return Confirm_With(then)(dialog);
            if (!fault.empty()) Cancel(dialog);
          },
          [&] { Act(form, button); });
    };
    enter("New_User", "Name= ", "A user needs a name.");
    enter("New_User", "Name=Ann");
    EXPECT_EQ(Names(form), "Ann, administrator, without a password");
    enter("Edit_User", "Administrator",
          "\"Ann\" is the last administrator; make somebody else an administrator first.");
    enter("New_User", "Name=Bert|New_Password=12345678|Again=1234567",
          "The two passwords differ; type the new one twice.");
    enter("New_User", "Name=Bert|New_Password=1234567|Again=1234567",
          "A password needs at least 8 characters.");
    enter("New_User", "Name=ann|New_Password=12345678|Again=12345678",
          "There is a user \"Ann\" already; choose another name.", "Name=Bert");
    enter("Edit_User", "Name=Bob|Administrator");
    EXPECT_EQ(Names(form), "Ann, administrator, without a password|Bob, administrator");
    enter("New_User", "Name=Carl");
    enter("Remove_User", "Heir=Bob");
    EXPECT_EQ(Names(form), "Ann, administrator, without a password|Bob, administrator");
    enter("Remove_User", "Heir=Ann");
    seams.Prompts.Expect_Error("Users",
                               "The last user cannot be removed: nobody is there to get what is left.");
    Act(form, "Remove_User");
    Confirm(form);
  };
  With_Dialog(edit, [] { Edit_Users(nullptr); });
  EXPECT_EQ(Current(), "Ann");
}

TEST_F(User_Forms, Security_Is_For_Administrators_And_Asks_For_A_Password_First) {
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen_After("Secure", form, "Secure See"), "(-)|(+)");
        Confirm(form);
      },
      [] { Edit_Security(nullptr); });
  const std::string bert = Add_Users();
  const std::string owner = User_Key();
  seams.Prompts.Expect_Info("Database Security",
                            "Until they are given a password in \"Users\", these cannot log in: \"Bert\".");
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen(form, "Secure See Create Update Delete"), "-|+|+|+|+");
        Confirm_With("Secure|Delete|Update")(form);
      },
      [] { Edit_Security(nullptr); });
  EXPECT_TRUE(DB_Secure);
  const std::string book = database.Book().Key;
  EXPECT_TRUE(Access_Allowed(book, Access_Create, bert) && !Access_Allowed(book, Access_Delete, bert));
  Set_User_Key(bert);
  for (const auto& [caption, edit] :
       {std::pair("Users", &Edit_Users), {"Database Security", &Edit_Security}}) {
    seams.Prompts.Expect_Error(caption,
                               "Only an administrator may set up users and the security of the database.");
    edit(nullptr);
  }
}

TEST_F(User_Forms, Logging_In_Tells_How_Long_To_Wait_And_Remembers_The_Name) {
  Add_Users("1");
  database.Reopen();
  EXPECT_FALSE(With_Dialog(Cancel, [] { return Begin_Session(nullptr); }));
  EXPECT_EQ(Current(), "");
  const auto log_in = [&](QWidget* form) {
    const auto after = [&](const std::string& inputs) {
      Act(form, inputs);
      Confirm(form);
      return Seen(form, "Password Message");
    };
    EXPECT_EQ(after("Name=ann|Password=x"), "|The name or the password is wrong. Try again in 1 second.");
    EXPECT_EQ(after(std::string("Password=") + Right),
              std::string(Right) + "|The name or the password is wrong. Try again in 1 second.");
    EXPECT_TRUE(
        QTest::qWaitFor([&] { return Seen(form, "Message") == "The name or the password is wrong."; }));
    EXPECT_EQ(after(""), "|After wrong passwords, try again in 1 second.");
    EXPECT_EQ(Seen_After("Name=Bert", form, "Message"), "") << "another name need not wait";
    seams.Clock.Value += 1;
    Confirm_With(std::string("Name=ann|Password=") + Right)(form);
  };
  EXPECT_TRUE(With_Dialog(log_in, [] { return Begin_Session(nullptr); }));
  EXPECT_EQ(Current(), "Ann");
  database.Reopen();
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen(form, "Name") + "/" + Where(form), "Ann/Password");
        Cancel(form);
      },
      [] { Begin_Session(nullptr); });
}

TEST_F(User_Forms, Without_Passwords_One_Chooses_Once_Who_One_Is) {
  Add_Users();
  database.Reopen();
  EXPECT_TRUE(With_Dialog(Confirm_With("Users=Bert"), [] { return Begin_Session(nullptr); }));
  database.Reopen();
  EXPECT_TRUE(Begin_Session(nullptr));
  EXPECT_EQ(Current(), "Bert");
  EXPECT_TRUE(Begin_Session(nullptr, "ann"));
  EXPECT_EQ(Current(), "Ann");
}

TEST_F(User_Forms, A_Password_Is_Changed_By_Who_Knows_The_Old_One) {
  seams.Prompts.Expect_Info("Change Password",
                            "This database asks for no passwords: whoever has its file may open it.");
  KTAccess::Change_Password();
  Add_Users("1");
  const auto change = [&](QWidget* form) {
    for (const auto& [old, password, again, fault] :
         {std::array{"x", "new password", "new", "The two passwords differ; type the new one twice."},
          {"x", "new password", "new password", "The old password is wrong. Try again in 1 second."}}) {
      seams.Prompts.Expect_Error("Change Password", fault);
      Act(form, std::string("Old_Password=") + old + "|New_Password=" + password + "|Again=" + again);
      Confirm(form);
      seams.Prompts.Verify();
      EXPECT_EQ(Seen(form, "New_Password Again"), "|");
      Control<QLineEdit>(form, "New_Password")->setEchoMode(QLineEdit::Normal);
      EXPECT_FALSE(Control<QLineEdit>(form, "New_Password")->isUndoAvailable()) << "nothing is remembered";
    }
    seams.Clock.Value += 1;
    Confirm_With(std::string("Old_Password=") + Right +
                 "|New_Password=new password|Again=new password")(form);
  };
  With_Dialog(change, KTAccess::Change_Password);
  EXPECT_TRUE(Check_Password(TSecret("new password")));
}

TEST_F(User_Forms, Permissions_Are_Inherited_Until_They_Are_Set_And_Given_Back_By_Keys) {
  const std::string bert = Add_Users(), ann = User_Key(), book = database.Book().Key;
  std::string folder, contact;
  In_Update([&] {
    Set_Rights(book, bert, {.See = true});
    folder = Create_Contact(book, "Friends", {}, Contact_Type_Folder);
    Set_User_Key(bert);
    contact = Create_Contact(book, "Carla", folder);
    Set_User_Key(ann);
  });
  QTableWidget* table = nullptr;
  const auto row = [&](int at) {
    std::string shown = table->item(at, 0)->text().toStdString() + " ";
    for (int level = 1; level <= 4; ++level)
      shown += table->item(at, level)->checkState() == Qt::Checked ? '+' : '-';
    return shown + " " + table->item(at, 5)->text().toStdString();
  };
  const auto press = [&](const QList<Qt::Key>& keys) {
    for (const Qt::Key key : keys) QTest::keyClick(table, key);
  };
  const auto on = [&](const std::string& owner, const std::function<void(QWidget*)>& act) {
    With_Dialog(
        [&](QWidget* form) {
          table = Control<QTableWidget>(form, "Permissions_Table");
          EXPECT_EQ(Where(form), "Permissions_Table");
          EXPECT_EQ(Make_Checks(form), "");
          act(form);
          Cancel(form);
        },
        [&] {
          Edit_Permissions(nullptr, book, owner,
                           owner == folder ? KTAccess::Kind_Folder : KTAccess::Kind_Contact);
        });
  };
  on(folder, [&](QWidget* form) {
    EXPECT_EQ(Seen(form, "Title State"), " Access Permissions for the folder \"Friends\"|hidden");
    EXPECT_EQ(row(0) + "|" + row(1) + "|" + row(2),
              "Everybody ++++ from the whole database|Ann ++++ administrator: may do everything|"
              "Bert +--- from the book \"Home\"");
    press({Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(Seen(form, "Inherit_Button"), "(Back to &Inherited)") << "nothing is taken from administrators";
    press({Qt::Key_Down, Qt::Key_Right, Qt::Key_Right, Qt::Key_Space});
    EXPECT_EQ(row(2) + Seen(form, "Inherit_Button"), "Bert +-+- set hereBack to &Inherited");
  });
  EXPECT_TRUE(Access_Allowed(contact, Access_Update, bert));
  Set_User_Key(bert);
  on(folder, [&](QWidget* form) {
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(row(2) + "/" + Seen(form, "State Inherit_Button"),
              "Bert +-+- set here/Only administrators, and the owner \"Ann\", may change these "
              "permissions.|(Back to &Inherited)");
  });
  on(contact, [&](QWidget* form) {
    seams.Prompts.Expect_Error("Permissions",
                               "You could no longer see the contact \"Carla\" then; give yourself that "
                               "permission first.");
    press({Qt::Key_Down, Qt::Key_Down, Qt::Key_Space});
    EXPECT_EQ(row(2), "Bert +-+- from the folder \"Friends\"");
    press({Qt::Key_Right, Qt::Key_Space});
    EXPECT_EQ(row(2) + Seen(form, "State"), "Bert +--- set herehidden") << "nothing is created in a contact";
    press({Qt::Key_Delete});
    EXPECT_EQ(row(2), "Bert +-+- from the folder \"Friends\"");
  });
  EXPECT_TRUE(Access_Allowed(contact, Access_Update));
}

TEST_F(User_Forms, The_Window_Follows_Who_Is_Logged_In_And_What_Others_Do_About_Users) {
  TMain_Window window;
  Show(window);
  const auto title = [&] {
    return window.windowTitle().toStdString() + "/" +
           (window.findChild<QAction*>("CalendarPermissions1")->isVisible() ? "+" : "-");
  };
  EXPECT_EQ(title(), "Home - Plexidex/-");
  const std::string bert = Add_Users();
  const auto choose = [&](const char* item) {
    for (QAction* action : window.findChildren<QAction*>())
      if (action->text() == QLatin1String(item)) return action->trigger();
  };
  With_Dialog(Confirm, [&] { choose("&Users..."); });
  EXPECT_EQ(title(), "Home - Plexidex - Ann/+");
  EXPECT_TRUE(Begin_Session(nullptr)) << "who has become the first user is not asked";
  window.findChild<QAction*>("CalendarPermissions1")->trigger();
  EXPECT_EQ(Seen(Control<QWidget>(&window, "Permissions_Frm"), "Title State"),
            " Access Permissions for Calendar|hidden");
  With_Dialog(Confirm_With("Users=Bert"), [&] { choose("&Log In as Another User..."); });
  EXPECT_EQ(title() + Current(), "Home - Plexidex - Bert/+Bert");
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("DELETE FROM KT_Users WHERE Name = 'Bert'");
  seams.Prompts.Expect_Error("Users",
                             "Only an administrator may set up users and the security of the database.");
  seams.Prompts.Expect_Info("Users", "The users of this database have changed; say who you are.");
  With_Dialog(Confirm, [&] { choose("&Users..."); });
  EXPECT_EQ(title() + Current(), "Home - Plexidex - Ann/+Ann") << "the only one that is left";
  other.Engine().Execute("INSERT OR REPLACE INTO KT_Settings (Name, Value) VALUES ('Secure', '1')");
  EXPECT_FALSE(window.Look_At_Session(false)) << "without a password";
  EXPECT_EQ(window.windowTitle().toStdString() + Current(), "Plexidex");
  seams.Prompts.Expect_Info("Users",
                            "The users of this database, or its passwords, have changed; log in to go on.");
  EXPECT_TRUE(With_Dialog(Confirm_With(std::string("Name=Ann|Password=") + Right),
                          [&] { return window.Look_At_Session(true); }));
  EXPECT_EQ(title() + Current(), "Home - Plexidex - Ann/+Ann");
}

TEST_F(User_Forms, Without_A_Window_Nothing_Is_Shown_Of_A_User_Who_Is_Gone) {
  Enter_As(Add_Users());
  TNew_Event event = New_Event("Tea", Monday + 0.75);
  event.Alarm.On = true;
  event.Alarm.Offset = 0;
  Write(event);
  TMain_Window window;
  TSingle_Instance instance;
  TNotifications notifications(QStringLiteral("none"));
  TPresence presence(window, instance, notifications);
  const auto seen = [&] {
    presence.Alerts().Look();
    emit presence.Tray().Menu().aboutToShow();
    return std::to_string(presence.Alerts().Count()) + Seen(&window, "Waiting_Reminders") + "|" +
           presence.Tray().Menu().actions().at(1)->text().toStdString() + "|" +
           std::to_string(window.Tree().topLevelItemCount()) + window.windowTitle().toStdString();
  };
  EXPECT_EQ(seen(), "0hidden|6:00 PM Tea|1Home - Plexidex - Bert");
  seams.Clock.Value = Monday + 0.75;
  Show(window);
  EXPECT_EQ(seen(), "11 reminder|6:00 PM Tea|1Home - Plexidex - Bert");
  window.hide();
  TDatabase other;
  other.Open(database.Path(), TDatabase::TMode::Must_Exist);
  other.Engine().Execute("DELETE FROM KT_Users WHERE Name = 'Bert'");
  other.Engine().Execute("ALTER TABLE KT_Users RENAME TO Elsewhere");
  EXPECT_TRUE(window.Look_At_Session(false)) << "and no dialog says that it cannot be read";
  other.Engine().Execute("ALTER TABLE Elsewhere RENAME TO KT_Users");
  EXPECT_FALSE(window.Look_At_Session(false));
  EXPECT_EQ(seen() + Current(), "0hidden|Nothing today|0Plexidex");
  seams.Prompts.Expect_Info("Users", "The users of this database have changed; say who you are.");
  EXPECT_EQ(seams.Prompts.Notices.size(), 1U) << "that no reminder goes off until then";
  With_Dialog(Confirm, [&] { EXPECT_TRUE(window.Come_Forward()); });
  EXPECT_EQ(Current(), "Ann") << "the only one that is left";
  With_Dialog(Cancel, [&] { emit presence.Tray().New_Event_Wanted(); });
}

}  // namespace
