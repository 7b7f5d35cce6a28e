#include "Main_Window.h"

#include <filesystem>
#include <fstream>

#include "Backup.h"
#include "Backup_Dialogs.h"
#include "Current_Search.h"
#include "Editor_Fixture.h"
#include "Entry_List.h"
#include "Filter_Store.h"
#include "Marking.h"
#include "Navigation_Tree.h"
#include "Users.h"

using Plexidex::TNode_Kind;

namespace {

struct Main_Window : TEditor_Fixture {
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
  static void Press_Cancel(QWidget* dialog) {
    dialog->findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Cancel)->click();
  }
  // The entries of the coming weeks, each with its time.
  std::string Shown() {
    QStringList shown;
    for (QTreeWidgetItemIterator i(Control<QTreeWidget>(&*window, "Entries")); *i; ++i)
      if ((*i)->parent())
        shown << QStringList{(*i)->text(0), (*i)->text(1), (*i)->text(2)}.join(QLatin1Char(' '));
    return shown.join(QLatin1Char('|')).toStdString();
  }
  /// The page that is shown, and the menus.
  std::string Page() const {
    std::string menus;
    for (const QAction* action : window->menuBar()->actions()) menus += ' ' + action->text().toStdString();
    return window->Page_Name() + menus;
  }
  /// The book that is selected, the window's title and the page.
  std::string State() {
    return window->Tree().Current().Book_Name + "/" + window->windowTitle().toStdString() + "/" +
           window->Page_Name();
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
}

TEST_F(Main_Window, Shows_The_Page_Of_The_Selected_Node_And_Its_Menu_Once) {
  In_Update([] { Create_Book("Second"); });
  auto& tree = Open();
  const std::string calendar = "Contacts_Page3b_Frm0 &File &Book &View &Search &Tools &Help";
  EXPECT_EQ(Page(), calendar) << "it begins with the first book's calendar";
  EXPECT_EQ(Below(tree.topLevelItem(1)), "Calendar|Tasks|Contacts");
  const int top = tree.mapTo(&*window, QPoint()).y();
  EXPECT_TRUE(window->screen()->availableGeometry().size().boundedTo(window->frameSize()) ==
              window->frameSize())
      << "fits the screen";
  const std::string second = List_Books().at(1).Key, without = "0 &File &Book &View &Search &Help";
  for (const auto& [kind, page] :
       {std::pair(TNode_Kind::Book, "Upcoming_Page" + without),
        {TNode_Kind::Contacts, "Contacts_Page" + without},
        {TNode_Kind::Tasks, "Task_HomePage_Frm0 &File &Book &View &Search &Tools &Help"},
        {TNode_Kind::Calendar, calendar}}) {
    ASSERT_TRUE(tree.Select(kind, second));
    Settle();
    EXPECT_EQ(Page() + " " + std::to_string(tree.mapTo(&*window, QPoint()).y()),
              page + " " + std::to_string(top));
  }
  window->Refresh();
  EXPECT_EQ(Page(), calendar);
  Show(*window);
  EXPECT_EQ(Control<QWidget>(&*window, "Tool_Area")->layout()->itemAt(0)->widget(),
            Control<QToolBar>(&*window, "ToolBar1"));
  for (const char* command : {"", "ToolButton5", "SearchCalendar"}) {
    *command ? Act(&*window, command) : QTest::keyClick(&*window, Qt::Key_F3);
    EXPECT_EQ(Page(), calendar) << "posted, not sent";
    Settle();
    EXPECT_EQ(window->Page_Name(), "Simple_Calendar_Search_Frm0");
    Act(&*window, "Close");
    Settle();
  }
  for (const char* command : {"DatabseSecurity1", "UserManager1"}) {
    Act(&*window, command);
    With_Dialog(
        [&](QWidget* dialog) {
          EXPECT_EQ(dialog->windowTitle(), *command == 'D' ? "Database Security" : "Users");
          Cancel(dialog);
        },
        Settle);
  }
}

TEST_F(Main_Window, Contacts_Are_Added_Edited_Deleted_Restored_And_Opened) {
  Write(New_Event("Of the book", Monday + 0.25));
  auto& tree = Open();
  for (const char* name : {"Zoe & Co", "anna"}) {
    Choose("New &Contact...", [&](QWidget* form) {
      seams.Prompts.Expect_Error("Contact", "A contact needs a name.");
      Confirm(form);
      Confirm_With(std::string("Other1=0160 <b>1</b>|Name=") + name)(form);
    });
    EXPECT_EQ(Seen(&*window, "Contact_Name"), name);
  }
  EXPECT_EQ(Below(tree.currentItem()->parent()), "anna|Zoe & Co");
  Choose("&Edit Contact...", [](QWidget* form) {
    EXPECT_EQ(Seen(form, "Other1"), "0160 <b>1</b>");
    Confirm_With("Name=Berta")(form);
  });
  EXPECT_EQ(Below(tree.currentItem()->parent()) + "/" + Seen(&*window, "Contact_Name"),
            "Berta|Zoe & Co/Berta");
  tree.setCurrentItem(tree.currentItem()->parent()->child(1));
  seams.Prompts.Expect_Question("Delete Contact",
                                "Delete the contact \"Zoe & Co\"? It is kept with its entries among the "
                                "deleted contacts and can be restored.",
                                Answer_Yes);
  Choose("Delete &Contact...");
  EXPECT_EQ(Below(tree.currentItem()), "Berta");
  Act(&*window, "Show_Deleted");
  EXPECT_FALSE(Control<QPushButton>(&*window, "Open_Contact")->isEnabled());
  Act(&*window, "Delete_Or_Restore");
  EXPECT_EQ(Control<QTableView>(&*window, "Contacts")->model()->rowCount(), 0);
  EXPECT_EQ(Below(tree.currentItem()), "Berta|Zoe & Co");
  Act(&*window, "Show_Deleted");
  Confirm(Control<QTableView>(&*window, "Contacts"));
  Settle();
  EXPECT_EQ(tree.Current().Contact, Query_Text("SELECT Key FROM KT_Contacts WHERE DisplayName = 'Berta'"));
  auto& entries = Control<TEntry_List>(&*window, "ListView1")->Items();
  EXPECT_EQ(entries.Count(), 0u) << "its own only";
  Choose("New &Event...", Confirm_With("Edit1=Lunch"));
  EXPECT_EQ(entries.Count(), 1u);
  EXPECT_EQ(Query_Text("SELECT Contact FROM KT_Events_Data ORDER BY row_id DESC"), tree.Current().Contact);
}

TEST_F(Main_Window, Folders_Are_Made_Renamed_Filled_And_Removed) {
  std::string zoe, other;
  In_Update([&] {
    zoe = Create_Contact(book, "Zoe");
    Create_Contact(book, "Anna");
    other = Create_Book("Other").Key;
  });
  auto& tree = Open();
  Show(*window);
  // The folders and contacts of the book, deeper ones behind a dot.
  const auto below = [&] {
    std::string texts;
    tree.Select(TNode_Kind::Contacts, book);
    const QTreeWidgetItem* contacts = tree.currentItem();
    tree.expandAll();
    for (QTreeWidgetItemIterator i(tree.currentItem()); *i && *i != tree.topLevelItem(1); ++i) {
      if (*i == contacts) continue;
      texts += ((*i)->parent() == contacts             ? ""
                : (*i)->parent()->parent() == contacts ? "."
                                                       : "..") +
               (*i)->text(0).toStdString() + " ";
    }
    return texts;
  };
  ASSERT_TRUE(tree.Select(TNode_Kind::Contacts, book));
  Choose("New &Folder...", Confirm_With("Name=Friends"));
  EXPECT_EQ(tree.Current().Kind, TNode_Kind::Folder);
  Choose("New &Folder...", Confirm_With("Name=Club"));
  const std::string club = tree.Current().Folder;
  Choose("New &Contact...", Confirm_With("Name=Bert"));
  Choose("New &Folder...", [&](QWidget* form) {
    seams.Prompts.Expect_Error("New Folder", "A folder needs a name.");
    Confirm(form);
    Confirm_With("Name=Choir")(form);
  });
  const std::string choir = tree.Current().Folder;
  EXPECT_EQ(below(), "Friends .Club ..Choir ..Bert Anna Zoe ");
  const auto drop = [&](const QAbstractItemView* from, const QModelIndexList& what, const std::string& on) {
    const std::unique_ptr<QMimeData> dragged(from->model()->mimeData(what));
    ASSERT_TRUE(dragged);
    tree.Select(on.empty() ? TNode_Kind::Contacts : TNode_Kind::Folder, book, on);
    tree.expandAll();
    const QPoint at = tree.visualItemRect(tree.currentItem()).center();
    // The one that takes the drag is sent what follows.
    QDragEnterEvent enter(at, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &enter);
    QDragMoveEvent move(at, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &move);
    EXPECT_TRUE(move.isAccepted());
    QDropEvent event(at, Qt::CopyAction, dragged.get(), Qt::LeftButton, {});
    QApplication::sendEvent(tree.viewport(), &event);
    Settle();
  };
  ASSERT_TRUE(tree.Select(TNode_Kind::Contacts, book));
  Settle();
  auto* list = Control<QTableView>(&*window, "Contacts");
  list->selectAll();
  drop(list, list->selectionModel()->selectedIndexes(), choir);
  EXPECT_EQ(below(), "Friends .Club ..Choir ..Anna ..Bert ..Zoe ");
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Contacts WHERE Parent = '" + choir + "'"), 3);
  const auto node = [&](const std::string& key) {
    tree.Select(TNode_Kind::Folder, book, key);
    return QModelIndexList{tree.currentIndex()};
  };
  seams.Prompts.Expect_Error("Move to Folder",
                             "The folder \"Club\" cannot be moved into itself or into a folder below it; "
                             "nothing was moved.");
  drop(&tree, node(club), choir);
  drop(&tree, node(club), {});
  EXPECT_EQ(below(), "Club .Choir ..Anna ..Bert ..Zoe Friends ");
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, book, zoe));
  Choose("&Move to Folder...", [](QWidget* form) {
    EXPECT_EQ(Control<QLabel>(form, "What")->text(), "&Move \"Zoe\" to:");
    auto* folders = Control<QTreeWidget>(form, "Folders");
    folders->setCurrentItem(folders->topLevelItem(0)->child(1));
    Confirm(form);
  });
  EXPECT_EQ(From_Qt(tree.currentItem()->parent()->text(0)), "Friends");
  node(choir);
  EXPECT_EQ(Control<QTableView>(&*window, "Contacts")->model()->rowCount(), 2);
  window->activateWindow();
  tree.setFocus();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
  With_Dialog(Confirm_With("Name=Singers"), [&] { QTest::keyClick(&tree, Qt::Key_F2); });
  seams.Prompts.Expect_Question(
      "Remove Folder",
      "Remove the folder \"Singers\"? Its contacts and folders are kept and move to "
      "the folder \"Club\".",
      Answer_Yes);
  window->activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
  QTest::keyClick(&tree, Qt::Key_Delete);
  EXPECT_EQ(below(), "Club .Anna .Bert Friends .Zoe ");
}

TEST_F(Main_Window, Found_Contacts_Have_A_Node_Until_Their_Search_Is_Cleared_Or_Closed) {
  const auto add = [this](const char* name) { In_Update([&] { Create_Contact(book, name); }); };
  for (const char* name : {"Anna", "Berta", "Bert"}) add(name);
  auto& tree = Open();
  Show(*window);
  const auto search = [&] {
    Choose("C&ontacts...");
    KTReminds::CurrentSearch->Add_Field(KTReminds::Group_Contact, KTReminds::Search_Contact_Name,
                                        KTReminds::Action_Contains, "bert", "", false, false);
    Act(&*window, "SearchNow");
    Settle();
    return Below(tree.topLevelItem(0));
  };
  const std::string nodes = "Calendar|Tasks|Contacts", results = nodes + "|Search Results";
  EXPECT_EQ(search(), results);
  const auto found = [&] {
    return Below(tree.currentItem()) + "/" + Seen(&*window, "Shown_Count Search_Caption").substr(0, 44);
  };
  EXPECT_EQ(found(), "Bert|Berta/2 contacts|Search Results [2 Contacts found ");
  add("Bertram");
  Look_At_Rows(&*window);
  EXPECT_EQ(found(), "Bert|Berta|Bertram/3 contacts|Search Results [3 Contacts found ");
  Confirm(Control<QTableView>(&*window, "Contacts"));
  Settle();
  EXPECT_EQ(tree.currentItem()->parent()->text(0) +
                From_Qt(Control<QLabel>(&*window, "Contact_Name")->text()).c_str(),
            "Search ResultsBert");
  ASSERT_TRUE(tree.Select(TNode_Kind::Results, book));
  Act(&*window, "SearchSettings");
  Settle();
  EXPECT_EQ(Control<QListWidget>(&*window, "ListBox1")->count(), 2) << "the search as it was";
  Act(&*window, "ClearSearch");
  EXPECT_EQ(Below(tree.topLevelItem(0)) + "/" + window->Page_Name(), nodes + "/Simple_Search_Frm0");
  EXPECT_EQ(search(), results);
  Act(&*window, "Close");
  Settle();
  EXPECT_EQ(Below(tree.topLevelItem(0)) + "/" + window->Page_Name(), nodes + "/Contacts_Page0");
}

TEST_F(Main_Window, Stored_Searches_Are_Run_Edited_And_Deleted_In_The_Tree) {
  using namespace KTReminds;
  In_Update([&] { Create_Contact(book, "Bert"); });
  Write(New_Event("Breakfast", Monday));
  auto& tree = Open();
  Show(*window);
  const auto save = [&](const char* name, bool shared, int group, int field, const char* text) {
    Clear_Search();
    CurrentSearch->Add_Field(group, field, Action_Contains, text, "", false, false);
    EXPECT_TRUE(CurrentSearch->SavetoTable(book, name, shared));
  };
  const auto nodes = [&] {
    Look_At_Rows(&*window);
    return Below(tree.topLevelItem(0));
  };
  save("People", false, Group_Contact, Search_Contact_Name, "bert");
  save("Meals", true, Group_Calendar_Types, Search_Any_Description, "break");
  save("Jobs", true, Group_Tasks, Search_Task_Description, "x");
  Clear_Search();
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Searches");
  auto* searches = tree.topLevelItem(0)->child(3);
  EXPECT_EQ(Below(searches), "People|Jobs (shared)|Meals (shared)");
  std::string pages;
  for (const int row : {2, 1, 0}) {
    tree.setCurrentItem(tree.topLevelItem(0)->child(tree.topLevelItem(0)->childCount() - 1)->child(row));
    pages += window->Page_Name() + " ";
  }
  EXPECT_EQ(pages, "Calendar_Search_Results_Frm0 Task_HomePage_Frm0 Found_Contacts_Page0 ");
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Search Results|Searches");
  EXPECT_EQ(Below(tree.topLevelItem(0)->child(3)) + tree.Current().Filter, "BertPeople");
  Choose("&Edit Search...");
  EXPECT_EQ(window->Page_Name() + std::to_string(Control<QListWidget>(&*window, "ListBox1")->count()),
            "Advanced_Search_Frm02");
  seams.Prompts.Expect_Question("Delete Search Filter",
                                "Are you sure you wish to delete the Search Filter \"People\"?", Answer_Yes);
  Choose("&Delete Search...");
  EXPECT_EQ(Below(tree.currentItem()), "Jobs (shared)|Meals (shared)");
  EXPECT_TRUE(Delete_Filter(book, "Jobs", true) && Delete_Filter(book, "Meals", true));
  EXPECT_EQ(nodes(), "Calendar|Tasks|Contacts|Search Results") << "follows what is done elsewhere";
}

TEST_F(Main_Window, What_Is_Typed_Into_The_Search_Field_Is_Found_And_Opened) {
  In_Update([&] { Create_Contact(book, "Bert Teal"); });
  Write(New_Event("Tea", Monday + 1.5));
  for (int i = 0; i < 21; ++i) {
    TNew_Event task = New_Event("Buy tea", Monday + i);
    task.Record.EventType = TEntry_Type::Task;
    Write(task);
  }
  auto& tree = Open();
  Show(*window);
  tree.setFocus();
  auto* field = Control<QLineEdit>(&*window, "Quick_Search");
  const auto type = [&](const char* text, const char* shown) {
    window->activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&*window));
    QTest::keyClick(&*window, Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(field, text);
    auto* list = Control<QTreeWidget>(&*window, "Quick_Results");
    const auto lines = [list] {
      QStringList texts;
      for (int i = 0; i < list->topLevelItemCount(); ++i) texts << list->topLevelItem(i)->text(0);
      texts.removeDuplicates();
      return texts.join(QLatin1Char('|')).toStdString();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return lines() == shown; })) << lines();
    EXPECT_TRUE(list->isVisible());
    return list;
  };
  const char* const all = "Events|Tea|Tasks|Buy tea|1 more...|Contacts|Bert Teal";
  auto* list = type("tea", all);
  QTest::keyClick(field, Qt::Key_Escape);
  EXPECT_TRUE(list->isHidden() && tree.hasFocus() && field->text().isEmpty());
  type("tea", all);
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Seen(form, "Edit1"), "Tea");
        Cancel(form);
      },
      [&] { QTest::keyClick(field, Qt::Key_Return); });
  type("tea", all);
  for (int i = 0; i < 22; ++i) QTest::keyClick(field, Qt::Key_Down);
  QTest::keyClick(field, Qt::Key_Return);
  Settle();
  EXPECT_EQ(Control<TEntry_List>(&*window, "ListView1")->Items().Count(), 21U) << "all of them on their page";
  type("bert", "Contacts|Bert Teal");
  QTest::keyClick(field, Qt::Key_Return);
  EXPECT_EQ(Seen(&*window, "Contact_Name"), "Bert Teal");
  EXPECT_TRUE(list->isHidden());
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
  Choose("&Book Set-up", Confirm_With("Name=Choir|Label2=Voice"));
  EXPECT_EQ(State(), "Choir/Choir - Plexidex/Contacts_Page3b_Frm0");
  EXPECT_EQ(Query_Text("SELECT Other_2 FROM KT_Fields ORDER BY row_id DESC"), "Voice");
  for (const std::string& name : {std::string("Choir"), first}) {
    const std::string what = "\" with its calendar, its tasks and all its contacts? They cannot be restored.";
    seams.Prompts.Expect_Question("Delete Book", "Delete the book \"" + name + what, Answer_Yes);
    Choose("&Delete Book...");
  }
  EXPECT_EQ(Page(), " &File &Book &View &Search &Help");
}

TEST_F(Main_Window, A_View_Of_The_Calendar_Is_Printed_Wherever_It_Is_Shown) {
  std::string anna;
  In_Update([&] { anna = Create_Contact(book, "Anna"); });
  auto& tree = Open();
  const QAction* print = nullptr;
  for (const QAction* action : window->findChildren<QAction*>())
    if (action->text() == QLatin1String("&Print...")) print = action;
  ASSERT_TRUE(print);
  const auto printable = [&](const char* label) {
    Act(&*window, label);
    Settle();
    return print->isEnabled();
  };
  EXPECT_EQ(std::pair(printable("Permissions"), printable("Daily")), std::pair(false, true));
  ASSERT_TRUE(tree.Select(TNode_Kind::Tasks, book));
  EXPECT_FALSE(print->isEnabled());
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, book, anna));
  EXPECT_TRUE(print->isEnabled());
  const TTemporary_Folder folder;
  // Types the name of the file in a dialog.
  const auto to = [&](const char* field, const char* file) {
    return [=, path = folder.File(file)](QWidget* dialog) {
      dialog->findChild<QLineEdit*>(QLatin1String(field))->setText(To_Qt(path));
      Confirm(dialog);
    };
  };
  Choose("Save as P&DF...", to("fileNameEdit", "saved"));
  EXPECT_EQ(seams.Prompts.Notices, std::vector<std::string>{"Pages written: 1"});
  // Where there is no printer its dialogs print to a file.
  Choose("&Print...", to("filename", "printed.pdf"));
  Choose("Print Pre&view...", [&](QWidget* preview) {
    EXPECT_EQ(preview->findChild<QLabel*>()->text().toStdString(), "/ 1");
    for (auto* action : preview->findChildren<QAction*>()) {
      if (action->text() == QLatin1String("Print"))
        With_Dialog(to("filename", "seen.pdf"), [=] { action->trigger(); });
    }
  });
  for (const char* file : {"saved.pdf", "printed.pdf", "seen.pdf"}) {
    EXPECT_EQ(File_Content(folder.File(file)).substr(0, 5), "%PDF-") << file;
    EXPECT_EQ(std::filesystem::status(folder.File(file)).permissions(), std::filesystem::perms(0600))
        << file << " is written as all files are, by whichever way";
  }
  const std::string bad = folder.File("saved.pdf/a.pdf");
  seams.Prompts.Expect_Error("Print", "\"" + bad + "\" cannot be written: Not a directory.");
  Choose("Save as P&DF...", to("fileNameEdit", "saved.pdf/a.pdf"));
}

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
