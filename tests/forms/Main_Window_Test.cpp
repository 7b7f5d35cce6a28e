#include <filesystem>

#include "Entry_List.h"
#include "Main_Window_Fixture.h"

namespace {

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

}  // namespace
