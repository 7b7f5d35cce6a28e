#include "Main_Window.h"

#include <filesystem>
#include <fstream>

#include "Editor_Fixture.h"
#include "Entry_List.h"
#include "Navigation_Tree.h"

using namespace Kt_data_01;
using Plexidex::TNode_Kind;

namespace {

class Main_Window : public TEditor_Fixture {
 protected:
  Plexidex::TNavigation_Tree& Open() {
    window.emplace().show();
    return window->Tree();
  }
  // Chooses an item of the menu bar and acts on the dialog that it opens, if any.
  void Choose(const char* item, const std::function<void(QWidget*)>& act = {}) {
    const auto choose = [&] {
      for (QAction* action : window->findChildren<QAction*>())
        if (action->text() == QLatin1String(item)) action->trigger();
      // A page hands some commands on to the host.
      Settle();
    };
    act ? With_Dialog(act, choose) : choose();
  }
  // As a page asks for a dialog of the program.
  void Command(int number, const std::function<void(QWidget*)>& act) {
    With_Dialog(act, [&] {
      Kt_forms::Post_Message(&*window, Kt_forms::umSettingsCommand, 0, number);
      Settle();
    });
  }
  // The entries of the coming weeks, each with its time.
  std::string Shown() {
    QStringList shown;
    for (QTreeWidgetItemIterator i(Control<QTreeWidget>(&*window, "Entries")); *i; ++i)
      if ((*i)->parent())
        shown << (*i)->text(0) + QLatin1Char(' ') + (*i)->text(1) + QLatin1Char(' ') + (*i)->text(2);
    return shown.join(QLatin1Char('|')).toStdString();
  }
  /// The page that is shown, and the menus.
  std::string Page() const {
    std::string menus;
    for (const QAction* action : window->menuBar()->actions()) menus += ' ' + action->text().toStdString();
    return window->Page_Name() + menus;
  }
  /// The tree's texts below a node, in its order, as far as they have been read.
  static std::string Below(const QTreeWidgetItem* node) {
    QStringList texts;
    for (int i = 0; i < node->childCount(); ++i) texts << node->child(i)->text(0);
    return texts.join(QLatin1Char('|')).toStdString();
  }

  const std::string book = database.Book().Key;
  std::optional<Plexidex::TMain_Window> window;
};

TEST_F(Main_Window, Shows_The_Coming_Weeks_And_Again_When_Its_Node_Is_Clicked) {
  for (const auto& [date, title] : {std::pair(Monday - 0.75, "Yesterday"),
                                    {Monday + 27.5, "In four weeks"},
                                    {Monday + 28.5, "Later"},
                                    {Monday + 4.5, "Secret"}})
    Write(New_Event(title, date));
  Run_Sql("UPDATE KT_Events SET Private = 1, User = 'somebody' WHERE Title = 'Secret'");
  auto& tree = Open();
  ASSERT_TRUE(tree.Select(TNode_Kind::Book, book));
  EXPECT_EQ(Shown(), "12:00 PM Private |12:00 PM In four weeks ");
  Write(New_Event("Breakfast", Monday + 0.25));
  QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualItemRect(tree.currentItem()).center());
  EXPECT_EQ(Shown(), "6:00 AM Breakfast |12:00 PM Private |12:00 PM In four weeks ");
  ASSERT_TRUE(tree.Select(TNode_Kind::Tasks, book));
  EXPECT_EQ(Shown(), "");
}

TEST_F(Main_Window, Shows_The_Page_Of_The_Selected_Node_And_Its_Menu_Once) {
  In_Update([] { Create_Book("Second"); });
  auto& tree = Open();
  const std::string calendar = "Contacts_Page3b_Frm0 &File &Book &View &Tools &Help";
  EXPECT_EQ(Page(), calendar) << "it begins with the first book's calendar";
  ASSERT_EQ(tree.topLevelItemCount(), 2);
  EXPECT_EQ(Below(tree.topLevelItem(1)), "Calendar|Tasks|Contacts");
  const std::string second = List_Books().at(1).Key, without = "0 &File &Book &View &Help";
  for (const auto& [kind, page] : {std::pair(TNode_Kind::Book, "Upcoming_Page" + without),
                                   {TNode_Kind::Contacts, "Contacts_Page" + without},
                                   {TNode_Kind::Calendar, calendar}}) {
    ASSERT_TRUE(tree.Select(kind, second));
    EXPECT_EQ(Page(), page);
  }
  window->Refresh();
  EXPECT_EQ(Page(), calendar);
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&*window));
  QTest::keyClick(&*window, Qt::Key_F3);
  Settle();
  EXPECT_NE(window->statusBar()->currentMessage(), QString()) << "a page that is not there is said to be so";
}

TEST_F(Main_Window, Contacts_Are_Added_Edited_Deleted_And_Restored) {
  auto& tree = Open();
  for (const char* name : {"Zoe & Co", "anna"}) {
    Choose("New &Contact...", [&](QWidget* form) {
      seams.Prompts.Expect_Error("Contact", "A contact needs a name.");
      Confirm(form);
      Confirm_With(std::string("Other1=0160 <b>1</b>|Name=") + name)(form);
    });
    EXPECT_EQ(tree.Current().Kind, TNode_Kind::Contact);
    EXPECT_EQ(Seen(&*window, "Contact_Name"), name);
  }
  EXPECT_EQ(Below(tree.currentItem()->parent()), "anna|Zoe & Co");
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen(form, "Other1"), "0160 <b>1</b>");
        Confirm_With("Name=Berta")(form);
      },
      [&] { Act(&*window, "Edit_Contact"); });
  Settle();
  EXPECT_EQ(Below(tree.currentItem()->parent()), "Berta|Zoe & Co");
  EXPECT_EQ(Seen(&*window, "Contact_Name"), "Berta");
  tree.setCurrentItem(tree.currentItem()->parent()->child(1));
  seams.Prompts.Expect_Question("Delete Contact",
                                "Delete the contact \"Zoe & Co\"? It is kept with its entries among the "
                                "deleted contacts and can be restored.",
                                Kt_util_01::Answer_Yes);
  Choose("Delete &Contact...");
  EXPECT_EQ(tree.Current().Kind, TNode_Kind::Contacts);
  EXPECT_EQ(Below(tree.currentItem()), "Berta");
  Act(&*window, "Show_Deleted");
  auto* list = Control<QListWidget>(&*window, "Contacts");
  ASSERT_EQ(list->count(), 1);
  EXPECT_FALSE(Control<QPushButton>(&*window, "Open_Contact")->isEnabled());
  Act(&*window, "Delete_Or_Restore");
  EXPECT_EQ(list->count(), 0);
  EXPECT_EQ(Below(tree.currentItem()), "Berta|Zoe & Co");
}

TEST_F(Main_Window, Opening_A_Contact_In_The_List_Shows_Its_Own_Entries_Only) {
  Write(New_Event("Of the book", Monday + 0.25));
  std::string contact;
  In_Update([&] { contact = Create_Contact(book, "Anna"); });
  auto& tree = Open();
  ASSERT_TRUE(tree.Select(TNode_Kind::Contacts, book));
  Confirm(Control<QListWidget>(&*window, "Contacts"));
  Settle();
  EXPECT_EQ(tree.Current().Contact, contact);
  const auto entries = [&] {
    return Control<KTReminds::TEntry_List>(&*window, "ListView1")->Items().Count();
  };
  EXPECT_EQ(entries(), 0u);
  Choose("New &Event...", Confirm_With("Edit1=Lunch"));
  EXPECT_EQ(Query_Text("SELECT Contact FROM KT_Events_Data ORDER BY row_id DESC"), contact);
  EXPECT_EQ(entries(), 1u);
}

TEST_F(Main_Window, Books_Are_Made_Renamed_And_Removed) {
  auto& tree = Open();
  const std::string first = database.Book().Name;
  Choose("&New Book...", [&](QWidget* form) {
    seams.Prompts.Expect_Error("New Book", "There is a book \"" + first + "\" already; choose another name.");
    Confirm_With("Name=" + first)(form);
    Confirm_With("Name=Club")(form);
  });
  EXPECT_EQ(tree.Current().Book_Name, "Club");
  Command(7, Confirm_With("Name=Choir|Label2=Voice"));
  EXPECT_EQ(tree.Current().Book_Name, "Choir");
  EXPECT_EQ(window->windowTitle(), QStringLiteral("Choir - Plexidex"));
  EXPECT_EQ(Query_Text("SELECT Other_2 FROM KT_Fields"), "Voice");
  for (const std::string& name : {std::string("Choir"), first}) {
    seams.Prompts.Expect_Question("Delete Book",
                                  "Delete the book \"" + name +
                                      "\" with its calendar, its tasks and all its contacts? They cannot be "
                                      "restored.",
                                  Kt_util_01::Answer_Yes);
    Choose("&Delete Book...");
  }
  EXPECT_EQ(tree.topLevelItemCount(), 0);
  EXPECT_EQ(Page(), " &File &Book &View &Help");
}

TEST_F(Main_Window, Preferences_Are_Kept_And_A_Bad_Database_Changes_Nothing) {
  Open();
  const std::string path = database.Path(), bad = path + ".txt", other = path + ".other";
  std::ofstream(bad) << std::string(4000, 'x');
  seams.Prompts.Expect_Error("User Preferences",
                             "\"" + bad + "\" cannot be opened as a database: file is not a database.");
  Command(6, [&](QWidget* form) {
    std::filesystem::rename(path, path + ".moved");  // could not be opened again
    Confirm_With("Navigation_Bars|Completed_Style|Database=" + bad)(form);
  });
  EXPECT_EQ(Shared_Database().Path(), path);
  EXPECT_EQ(List_Books().size(), 1u);
  std::filesystem::rename(path + ".moved", path);
  EXPECT_EQ(Kt_util_01::Read_String("General", "Database", "none"), "none");
  EXPECT_FALSE(Kt_util_01::UseCompleteStyle());
  EXPECT_FALSE(Control<QWidget>(&*window, "Panel3")->isVisible()) << "the page is made anew";
  EXPECT_EQ(window->Page_Name(), "Contacts_Page3b_Frm0");
  Choose("&Preferences...", [&](QWidget* form) {
    Confirm_With("Database=" + QDir().relativeFilePath(QString::fromStdString(other)).toStdString())(form);
  });
  EXPECT_EQ(Shared_Database().Path(), other);
  EXPECT_EQ(Kt_util_01::Read_String("General", "Database", ""), other) << "found from any folder";
  EXPECT_EQ(window->Page_Name(), "");
}

TEST_F(Main_Window, What_Another_Program_Has_Removed_Is_Neither_Shown_Nor_Written) {
  auto& tree = Open();
  const struct {
    TNode_Kind Kind;
    const char *Item, *Caption, *Text;
  } cases[] = {
      {TNode_Kind::Contact, "&Edit Contact...", "Contact", "The contact has been removed and was not saved."},
      {TNode_Kind::Calendar, "New &Contact...", "Contact",
       "The book has been removed; the contact was not saved."},
      {TNode_Kind::Calendar, "Book &Set-up...", "Book Set-up", "The book has been removed."},
      {TNode_Kind::Tasks, "&Refresh", nullptr, nullptr}};
  for (const auto& one : cases) {
    TBook club;
    std::string anna;
    In_Update([&] {
      club = Create_Book("Club");
      anna = Create_Contact(club.Key, "Anna");
    });
    window->Refresh();
    ASSERT_TRUE(tree.Select(one.Kind, club.Key, one.Kind == TNode_Kind::Contact ? anna : ""));
    const auto remove = [&] { In_Update([&] { Delete_Book(club.Key); }); };
    if (!one.Caption) {
      remove();
      Choose(one.Item);
    } else {
      Choose(one.Item, [&](QWidget* form) {
        remove();
        seams.Prompts.Expect_Error(one.Caption, one.Text);
        Confirm_With("Name=Choir")(form);
        Cancel(form);
      });
    }
    EXPECT_EQ(tree.Current().Book, book) << one.Item;
    EXPECT_EQ(window->windowTitle(), QStringLiteral("Home - Plexidex")) << one.Item;
    EXPECT_EQ(window->Page_Name(), "Contacts_Page3b_Frm0") << "of the book that is left";
    EXPECT_EQ(Query_Text("SELECT (SELECT count(*) FROM KT_Contacts) || ' ' || (SELECT count(*) FROM "
                         "KT_Contacts_Data) || ' ' || (SELECT count(*) FROM KT_Fields)"),
              "1 0 0")
        << one.Item;
  }
}

TEST_F(Main_Window, What_A_Database_Refuses_Is_Said_At_Every_Attempt) {
  database.Reopen({.Read_Only = true});
  Open();
  for (const char* item : {"&New Book...", "Book &Set-up..."}) {
    seams.Prompts.Expect_Error("Update Failed", "Nothing was saved: the database cannot be changed now.");
    Choose(item, [&](QWidget* form) {
      Confirm_With("Name=Club")(form);
      EXPECT_TRUE(form->isVisible()) << item;
      Cancel(form);
    });
  }
}

TEST_F(Main_Window, Books_That_Cannot_Be_Read_Are_Not_Said_To_Be_Missing) {
  Open();
  Run_Sql("ALTER TABLE KT_Books RENAME TO Elsewhere");
  seams.Prompts.Expect_Error("Read Failed",
                             "The data could not be read: read KT_Books: no such table: KT_Books\n\n"
                             "Navigation_Tree:Reload [KT_Books/KT_Contacts]");
  Choose("&Refresh");
  EXPECT_EQ(window->Page_Name(), "");
  EXPECT_EQ(Seen(&*window, "No_Page").substr(0, 16), "The books cannot");
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Books");
  Choose("&Refresh");
  EXPECT_EQ(window->Page_Name(), "Contacts_Page3b_Frm0");
}

TEST_F(Main_Window, Entries_Are_Added_Marked_And_Deleted_In_The_List_But_Not_Those_Of_Others) {
  ASSERT_TRUE(Open().Select(TNode_Kind::Book, book));
  Choose("New &Event...", Confirm_With("Edit1=Lunch"));
  Choose("New &Task...", Cancel);
  EXPECT_EQ(Shown(), "1:00 PM Lunch ");
  EXPECT_EQ(Counts(), "1 1 0 0") << "what was cancelled leaves nothing";
  auto* list = Control<QTreeWidget>(&*window, "Entries");
  const auto run = [&](int number) {
    list->setCurrentItem(list->topLevelItem(0)->child(0));
    list->actions().at(number)->trigger();
    return Shown();
  };
  EXPECT_EQ(run(1), "1:00 PM Lunch done");
  EXPECT_EQ(run(1), "1:00 PM Lunch ");
  Run_Sql("UPDATE KT_Events SET Private = 1, User = 'somebody'");
  window->Refresh();
  seams.Sounds.Played.clear();
  EXPECT_EQ(run(1), "1:00 PM Private ");
  EXPECT_EQ(run(2), "1:00 PM Private ");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{5, 5}));
  Run_Sql("UPDATE KT_Events SET Private = 0");
  window->Refresh();
  EXPECT_EQ(With_Dialog(Confirm, [&] { return run(2); }), "");
}

}  // namespace
