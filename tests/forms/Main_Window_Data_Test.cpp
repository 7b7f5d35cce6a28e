#include <filesystem>
#include <fstream>

#include "Backup.h"
#include "Backup_Dialogs.h"
#include "Entry_List.h"
#include "Main_Window_Fixture.h"
#include "Users.h"

namespace {

TEST_F(Main_Window, Preferences_Are_Kept_And_A_Bad_Database_Changes_Nothing) {
  Open();
  const std::string path = database.Path(), bad = path + ".txt", other = path + ".other";
  std::ofstream(bad) << std::string(4000, 'x');
  Choose("&User Preferences", [&](QWidget* form) {
    Act(form, "Groups=3");
    std::filesystem::rename(path, path + ".moved");  // could not be opened again
    seams.Prompts.Expect_Error("User Preferences",
                               "\"" + bad + "\" cannot be opened as a database: it is not a database.");
    Confirm_With("Navigation_Bars|Completed_Style|Groups=4|Database=" + bad)(form);
    EXPECT_EQ(Where(form), "Data/Database") << "still open";
    Confirm_With("Database=" + path)(form);
  });
  std::filesystem::rename(path + ".moved", path);
  const auto seen = [this] {
    return Shared_Database().Path() + " " + Read_String("General", "Database", "none") + State();
  };
  EXPECT_EQ(seen(), path + " noneHome/Home - Plexidex/Contacts_Page3b_Frm0");
  EXPECT_FALSE(UseCompleteStyle());
  EXPECT_FALSE(Control<QWidget>(&*window, "Panel3")->isVisible()) << "the page is made anew";
  const std::string relative = QDir().relativeFilePath(QString::fromStdString(other)).toStdString();
  Choose("&Preferences...", [&](QWidget* form) {
    for (const int answer : {Answer_No, Answer_Yes}) {
      seams.Prompts.Expect_Question("User Preferences",
                                    "There is no database \"" + other + "\". Make a new one?", answer);
      Confirm_With("Groups=4|Database=" + relative)(form);
    }
  });
  EXPECT_EQ(seen(), other + " " + other + "/Plexidex/") << "found from any folder";
}

TEST_F(Main_Window, Begins_Where_It_Was_Left_Or_Where_The_User_Wants) {
  TBook club;
  In_Update([&] { club = Create_Book("Club"); });
  ASSERT_TRUE(Open().Select(TNode_Kind::Tasks, club.Key));
  const auto reopened = [this] {
    window->close();
    window.reset();
    const Plexidex::TNode node = Open().Current();
    return node.Book_Name + " " + std::to_string(static_cast<int>(node.Kind));
  };
  const auto at = [](const char* name, TNode_Kind kind) {
    return std::string(name) + " " + std::to_string(static_cast<int>(kind));
  };
  EXPECT_EQ(reopened(), at("Club", TNode_Kind::Tasks));
  Write_String("General", "Start Page", "book");
  EXPECT_EQ(reopened(), at("Club", TNode_Kind::Book));
  window->close();
  Write_String("General", "Start Page", "last");
  In_Update([&] { Delete_Book(club.Key); });
  window.reset();
  EXPECT_EQ(Open().Current().Book_Name, "Home");
}

TEST_F(Main_Window, A_Daily_Backup_That_Fails_Is_Told_Once_And_Shown_Until_One_Is_Made) {
  Open();
  const TTemporary_Folder folder;
  std::ofstream(folder.File("file")) << "x";
  auto* backups = window->findChild<Plexidex::TDaily_Backups*>();
  const auto look = [&](const std::string& place) {
    Choose_Backups(true, place, 7);
    backups->Look();
    seams.Clock.Value += 1.0 / 24;
    return std::to_string(seams.Prompts.Notices.size()) + Seen(&*window, "Backup_Failed");
  };
  for (const auto& [place, times] : {std::pair(folder.File("file"), 1), {"/proc/self", 2}})
    for (const bool again : {false, true})
      EXPECT_EQ(look(place), std::to_string(times) + "The daily backup failed") << place << again;
  EXPECT_EQ(look(folder.File("backups")), "2hidden");
  EXPECT_TRUE(window->statusBar()->currentMessage().startsWith(QStringLiteral("Backup made: ")));
  EXPECT_EQ(look(folder.File("backups")), "2hidden");
}

TEST_F(Main_Window, A_Backup_Is_Made_And_Restored) {
  Open();
  const TTemporary_Folder folder;
  const std::string file = folder.File("mine.db"), bad = folder.File("bad.db");
  const auto choose = [&](const std::string& name) {
    return [name](QWidget* dialog) {
      Control<QLineEdit>(dialog, "fileNameEdit")->setText(QString::fromStdString(name));
      Confirm(dialog);
    };
  };
  Choose("&Back Up...", choose(file));
  In_Update([&] { Create_Book("Later"); });
  std::ofstream(bad) << "bad";
  const auto question = [&](const std::string& name, int answer) {
    seams.Prompts.Expect_Question("Restore Backup",
                                  "Put \"" + name + "\" in place of the database \"" + database.Path() +
                                      "\"? What is there now is kept beside it.",
                                  answer);
  };
  question(file, Answer_No);
  Choose("&Restore Backup...", choose(file));
  question(bad, Answer_Yes);
  seams.Prompts.Expect_Error("Restore Backup", "\"" + bad + "\" cannot be restored: it is not a database.");
  Choose("&Restore Backup...", choose(bad));
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Books"), "2");
  const std::string kept =
      std::filesystem::path(database.Path()).replace_filename("test-replaced-2024-01-15-1200.db").string();
  question(file, Answer_Yes);
  seams.Prompts.Expect_Info(
      "Restore Backup", "The backup has been restored. What was there before is kept in \"" + kept + "\".");
  Choose("&Restore Backup...", choose(file));
  EXPECT_EQ(Query_Text("SELECT count(*) FROM KT_Books"), "1");
  EXPECT_EQ(State(), "Home/Home - Plexidex/Contacts_Page3b_Frm0");
  // One that asks for a password which nobody gives.
  const std::string secure = folder.File("secure.db");
  In_Update([] {
    std::string ann;
    EXPECT_EQ(Add_User("Ann", true, ann), "");
    Store_Setting("Secure", "1");
  });
  Choose("&Back Up...", choose(secure));
  Sign_In({});
  seams.Prompts.Expect_Error("Restore Backup", "Only an administrator may restore a backup.");
  Choose("&Restore Backup...");
  Set_User_Key(Database_Owner());
  question(secure, Answer_Yes);
  seams.Prompts.Expect_Info("Restore Backup",
                            "The backup has been restored. What was there before is kept in \"" +
                                kept.substr(0, kept.size() - 3) + "-2.db\".");
  const QSignalSpy closed(&*window, &Plexidex::TMain_Window::Closed);
  std::optional<TModal_Driver> login;
  Choose("&Restore Backup...", [&](QWidget* dialog) {
    choose(secure)(dialog);
    login.emplace([&](QWidget* form) {
      EXPECT_EQ(form->objectName(), QStringLiteral("Login_Dialog"));
      seams.Prompts.Verify();  // what is kept has been said
      Cancel(form);
    });
  });
  EXPECT_EQ(closed.count(), 1);
}

TEST_F(Main_Window, What_Another_Program_Has_Removed_Is_Neither_Shown_Nor_Written) {
  auto& tree = Open();
  const char* const contact = "The contact has been removed and was not saved.";
  for (const auto& [kind, item, caption, text] :
       {std::tuple(TNode_Kind::Contact, "&Edit Contact...", "Contact", contact),
        {TNode_Kind::Calendar, "New &Contact...", "Contact",
         "The book has been removed; the contact was not saved."},
        {TNode_Kind::Calendar, "Book &Set-up...", "Book Set-up", "The book has been removed."},
        {TNode_Kind::Tasks, "&Refresh", "", ""}}) {
    TBook club;
    std::string anna;
    In_Update([&] {
      club = Create_Book("Club");
      anna = Create_Contact(club.Key, "Anna");
    });
    window->Refresh();
    ASSERT_TRUE(tree.Select(kind, club.Key, kind == TNode_Kind::Contact ? anna : ""));
    const auto remove = [&] { In_Update([&] { Delete_Book(club.Key); }); };
    const auto try_to_save = [&, caption = caption, text = text](QWidget* form) {
      remove();
      seams.Prompts.Expect_Error(caption, text);
      Confirm_With("Name=Choir")(form);
      Press_Cancel(form);
    };
    if (kind == TNode_Kind::Tasks) remove();
    kind == TNode_Kind::Tasks ? Choose(item) : Choose(item, try_to_save);
    EXPECT_EQ(State(), "Home/Home - Plexidex/Contacts_Page3b_Frm0") << item << " of the book that is left";
    EXPECT_EQ(Query_Text("SELECT (SELECT count(*) FROM KT_Contacts) || ' ' || (SELECT count(*) FROM "
                         "KT_Contacts_Data) || ' ' || (SELECT count(*) FROM KT_Fields)"),
              "1 0 0")
        << item;
  }
}

TEST_F(Main_Window, Names_Follow_What_Another_Program_Writes) {
  std::string anna;
  In_Update([&] { anna = Create_Contact(book, "Anna"); });
  auto& tree = Open();
  Show(*window);
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, book, anna));
  const auto after = [&](const std::function<void()>& written) {
    In_Update(written);
    QEvent back(QEvent::WindowActivate);
    QApplication::sendEvent(&*window, &back);
    Settle();
    const auto* name = window->findChild<QLabel*>(QStringLiteral("Contact_Name"));
    return Below(tree.currentItem()->parent()) + "/" + (name ? From_Qt(name->text()) : "") + "/" + State();
  };
  const std::string calendar = "/Contacts_Page3b_Frm0";
  EXPECT_EQ(after([&] { Write_Contact(anna, "Berta", {}); }), "Berta/Berta/Home/Home - Plexidex" + calendar);
  EXPECT_EQ(after([&] { Rename_Book(book, "Choir"); }), "Berta/Berta/Choir/Choir - Plexidex" + calendar);
  EXPECT_EQ(after([&] { Set_Contact_Deleted(anna, true); }),
            "Calendar|Tasks|Contacts//Choir/Choir - Plexidex" + calendar);
}

TEST_F(Main_Window, A_Contacts_Calendar_Has_All_Views_And_Follows_Other_Programs) {
  std::string anna;
  In_Update([&] { anna = Create_Contact(book, "Anna"); });
  auto& tree = Open();
  Show(*window);
  const auto add = [&](const char* title) {
    TNew_Event event = New_Event(title, Monday);
    event.Owner.Contact = anna;
    Write(event);
  };
  add("hers");
  Write(New_Event("others", Monday));
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, book, anna));
  for (const char* view : {"ToolButton9", "ToolButton11"}) {
    Act(&*window, view);
    Settle();
    EXPECT_EQ(Control<KTReminds::TEntry_List>(&*window, "ListView1")->Items().Count(), 1U) << view;
  }
  EXPECT_EQ(window->Page_Name(), "Contacts_Page3d_Frm0");
  add("more");
  const auto rows = [this] {
    return Control<KTReminds::TEntry_List>(&*window, "ListView1")->Items().Count();
  };
  QMenu menu;
  menu.popup({});
  Look_At_Rows(&*window);
  EXPECT_EQ(rows(), 1U) << "not under an open menu";
  menu.close();
  EXPECT_TRUE(QTest::qWaitFor([&] { return rows() == 2; })) << "looks by itself while it is active";
}

TEST_F(Main_Window, What_A_Database_Refuses_Or_Does_Not_Give_Is_Said) {
  Open();
  Run_Sql("ALTER TABLE KT_Books RENAME TO Elsewhere");
  seams.Prompts.Expect_Error("Read Failed",
                             "The data could not be read: no such table: KT_Books\n\n"
                             "Navigation_Tree:Reload [KT_Books/KT_Contacts]");
  Choose("&Refresh");
  EXPECT_EQ(window->Page_Name() + Seen(&*window, "No_Page").substr(0, 16), "The books cannot");
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Books");
  Choose("&Refresh");
  EXPECT_EQ(window->Page_Name(), "Contacts_Page3b_Frm0");
  database.Reopen_Read_Only();
  seams.Prompts.Expect_Error("Update Failed", "Nothing was saved: the database cannot be changed now.");
  Choose("Book &Set-up...", [](QWidget* form) {
    EXPECT_EQ((Confirm_With("Name=Club")(form), Seen(form, "Name")), "Club") << "stays typed";
    Press_Cancel(form);
  });
}

TEST_F(Main_Window, Entries_Are_Added_Marked_And_Deleted_In_The_List_But_Not_Those_Of_Others) {
  ASSERT_TRUE(Open().Select(TNode_Kind::Book, book));
  Choose("New &Event...", Confirm_With("Edit1=Lunch"));
  Choose("New &Task...", Cancel);
  EXPECT_EQ(Shown(), "1:00 PM Lunch ");
  EXPECT_EQ(Counts(), "1 1 0") << "what was cancelled leaves nothing";
  auto* list = Control<QTreeWidget>(&*window, "Entries");
  const auto run = [&](bool hidden, int command) {
    Run_Sql("UPDATE KT_Events SET User = 'somebody', Private = " + std::to_string(hidden));
    window->Refresh();
    list->setCurrentItem(list->topLevelItem(0)->child(0));
    list->actions().at(command)->trigger();
    return Shown();
  };
  seams.Sounds.Played.clear();
  EXPECT_EQ(run(false, 1), "1:00 PM Lunch done");
  EXPECT_EQ(run(false, 1), "1:00 PM Lunch ");
  EXPECT_EQ(run(true, 1), "1:00 PM Private ");
  EXPECT_EQ(run(true, 2), "1:00 PM Private ");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{3, 1, 5, 5}));
  EXPECT_EQ(With_Dialog(Confirm, [&] { return run(false, 2); }), "");
}

}  // namespace
