#include "Main_Window.h"

#include <gtest/gtest.h>

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <filesystem>
#include <fstream>

#include "Contacts.h"
#include "Entry_List.h"
#include "Form_Driver.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Navigation_Tree.h"
#include "Temporary_Database.h"
#include "Test_Events.h"
#include "Test_Seams.h"

using namespace Kt_data_01;
using Plexidex::TNode_Kind;

namespace {

class Main_Window : public testing::Test {
 protected:
  Main_Window() { Kt_util_01::CurrentDate = Kt_util_01::Today(); }

  std::string Make(double date, const std::string& title, const std::string& user) {
    KTReminds::TNew_Event event = New_Event(title, date);
    event.Record.User = user;
    event.Record.Private = user != Kt_util_01::User_Key();
    return Write(event);
  }
  // The entries that are shown, each with its time.
  static QString Shown(Plexidex::TMain_Window& window) {
    QStringList shown;
    const auto* list = Control<QTreeWidget>(&window, "Entries");
    for (int day = 0; day < list->topLevelItemCount(); ++day) {
      for (int i = 0; i < list->topLevelItem(day)->childCount(); ++i) {
        const QTreeWidgetItem* item = list->topLevelItem(day)->child(i);
        shown << item->text(0) + QLatin1Char(' ') + item->text(1) + QLatin1Char(' ') + item->text(2);
      }
    }
    return shown.join(QLatin1Char('|'));
  }
  static void Choose(Plexidex::TMain_Window& window, const char* menu, const char* text) {
    for (QAction* action : Control<QMenu>(window.menuBar(), menu)->actions()) {
      if (action->text() == QLatin1String(text)) return action->trigger();
    }
    ADD_FAILURE() << "there is no item " << text;
  }
  void Show_Book(Plexidex::TMain_Window& window) const {
    window.show();
    EXPECT_TRUE(window.Tree().Select(TNode_Kind::Book, database.Book().Key));
  }
  static std::string Menus(const Plexidex::TMain_Window& window) {
    std::string titles;
    for (const QAction* action : window.menuBar()->actions()) titles += action->text().toStdString() + ' ';
    return titles;
  }
  // The tree's texts below a node, in its order, as far as they have been read.
  static QString Below(const QTreeWidgetItem* node) {
    QStringList texts;
    for (int i = 0; i < node->childCount(); ++i) texts << node->child(i)->text(0);
    return texts.join(QLatin1Char('|'));
  }
  // Runs a call and acts on the dialog it opens.
  static void With_Dialog(const std::function<void(QWidget*)>& act, const std::function<void()>& call) {
    TModal_Driver driver(act);
    call();
    Settle();
  }
  static void Fill(QWidget* form, const char* control, const char* text) {
    Control<QLineEdit>(form, control)->setText(QString::fromUtf8(text));
  }
  static void Press_Enter(QWidget* form) { QTest::keyClick(form, Qt::Key_Return); }

  static void Select_First(Plexidex::TMain_Window& window) {
    auto* list = Control<QTreeWidget>(&window, "Entries");
    list->setCurrentItem(list->topLevelItem(0)->child(0));
  }

  Kt_test::TTest_Seams seams;  // now is noon of 15 January 2024
  TTemporary_Database database;
};

TEST_F(Main_Window, Shows_The_Coming_Weeks_Of_The_Selected_Book) {
  Make(45306.25, "Breakfast", Kt_util_01::User_Key());
  Make(45305.25, "Yesterday", Kt_util_01::User_Key());
  Make(45333.5, "In four weeks", Kt_util_01::User_Key());
  Make(45334.5, "Later", Kt_util_01::User_Key());
  Make(45310.5, "Secret", "somebody");
  In_Update([] { Create_Book("Second"); });
  Plexidex::TMain_Window window;
  Show_Book(window);
  EXPECT_EQ(Shown(window), QStringLiteral("6:00 AM Breakfast |12:00 PM Private |12:00 PM In four weeks "));
  ASSERT_TRUE(window.Tree().Select(TNode_Kind::Tasks, database.Book().Key));
  EXPECT_EQ(Shown(window), QString());
}

TEST_F(Main_Window, Shows_The_Page_Of_The_Selected_Node_And_Its_Menu_Once) {
  In_Update([] { Create_Book("Second"); });
  Plexidex::TMain_Window window;
  window.show();
  EXPECT_EQ(window.Page_Name(), "Contacts_Page3b_Frm0") << "it begins with the first book's calendar";
  const std::string with_page = "&File &Book &View &Tools &Help ", without = "&File &Book &View &Help ";
  EXPECT_EQ(Menus(window), with_page);
  auto& tree = window.Tree();
  ASSERT_EQ(tree.topLevelItemCount(), 2);
  EXPECT_EQ(Below(tree.topLevelItem(1)), QStringLiteral("Calendar|Tasks|Contacts"));
  const std::string second = List_Books().at(1).Key;
  const struct {
    TNode_Kind Kind;
    const char* Page;
  } pages[] = {{TNode_Kind::Book, "Upcoming_Page0"},
               {TNode_Kind::Contacts, "Contacts_Page0"},
               {TNode_Kind::Calendar, "Contacts_Page3b_Frm0"}};
  for (const auto& page : pages) {
    ASSERT_TRUE(tree.Select(page.Kind, second));
    EXPECT_EQ(window.Page_Name(), page.Page);
    EXPECT_EQ(Menus(window), page.Kind == TNode_Kind::Calendar ? with_page : without) << page.Page;
  }
  window.Refresh();
  EXPECT_EQ(Menus(window), with_page);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::keyClick(&window, Qt::Key_F3);
  Settle();
  EXPECT_NE(window.statusBar()->currentMessage(), QString()) << "a page that is not there is said to be so";
}

TEST_F(Main_Window, A_Click_On_The_Selected_Node_Reads_Its_Page_Again) {
  Plexidex::TMain_Window window;
  Show_Book(window);
  EXPECT_EQ(Shown(window), QString());
  Make(45306.25, "Breakfast", Kt_util_01::User_Key());
  QTest::mouseClick(window.Tree().viewport(), Qt::LeftButton, {},
                    window.Tree().visualItemRect(window.Tree().currentItem()).center());
  EXPECT_EQ(Shown(window), QStringLiteral("6:00 AM Breakfast "));
}

TEST_F(Main_Window, Contacts_Are_Added_Edited_Deleted_And_Restored) {
  Plexidex::TMain_Window window;
  window.show();
  auto& tree = window.Tree();
  const std::string book = database.Book().Key;
  const auto add = [&](const char* name) {
    With_Dialog(
        [&](QWidget* form) {
          seams.Prompts.Expect_Error("Contact", "A contact needs a name.");
          Press_Enter(form);
          Fill(form, "Name", name);
          Fill(form, "Other1", "0160 <b>1</b>");
          Press_Enter(form);
        },
        // The calendar's home page hands the message on to the host.
        [&] {
          Choose(window, "File", "New &Contact...");
          Settle();
        });
  };
  ASSERT_TRUE(tree.Select(TNode_Kind::Calendar, book));
  add("Zoe & Co");
  const std::string zoe = tree.Current().Contact;
  EXPECT_EQ(tree.Current().Kind, TNode_Kind::Contact);
  EXPECT_EQ(Control<QLabel>(&window, "Contact_Name")->text(), QStringLiteral("Zoe & Co"));
  add("anna");
  EXPECT_EQ(Below(tree.currentItem()->parent()), QStringLiteral("anna|Zoe & Co"));
  With_Dialog(
      [](QWidget* form) {
        EXPECT_EQ(Control<QLineEdit>(form, "Other1")->text(), QStringLiteral("0160 <b>1</b>"));
        Fill(form, "Name", "Berta");
        Press_Enter(form);
      },
      [&] { QTest::mouseClick(Control<QPushButton>(&window, "Edit_Contact"), Qt::LeftButton); });
  EXPECT_EQ(Below(tree.currentItem()->parent()), QStringLiteral("Berta|Zoe & Co"));
  EXPECT_EQ(Control<QLabel>(&window, "Contact_Name")->text(), QStringLiteral("Berta"));

  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, book, zoe));
  seams.Prompts.Expect_Question("Delete Contact",
                                "Delete the contact \"Zoe & Co\"? It is kept with its entries among the "
                                "deleted contacts and can be restored.",
                                Kt_util_01::Answer_Yes);
  Choose(window, "Book", "Delete &Contact...");
  EXPECT_EQ(tree.Current().Kind, TNode_Kind::Contacts);
  EXPECT_EQ(Below(tree.currentItem()), QStringLiteral("Berta"));
  QTest::mouseClick(Control<QCheckBox>(&window, "Show_Deleted"), Qt::LeftButton, {}, QPoint(8, 8));
  auto* list = Control<QListWidget>(&window, "Contacts");
  ASSERT_EQ(list->count(), 1);
  EXPECT_FALSE(Control<QPushButton>(&window, "Open_Contact")->isEnabled());
  QTest::mouseClick(Control<QPushButton>(&window, "Delete_Or_Restore"), Qt::LeftButton);
  EXPECT_EQ(list->count(), 0);
  EXPECT_EQ(Below(tree.currentItem()), QStringLiteral("Berta|Zoe & Co"));
}

TEST_F(Main_Window, Opening_A_Contact_In_The_List_Shows_Its_Own_Entries_Only) {
  Make(45306.25, "Of the book", Kt_util_01::User_Key());
  std::string contact;
  In_Update([&] { contact = Create_Contact(database.Book().Key, "Anna"); });
  Plexidex::TMain_Window window;
  window.show();
  ASSERT_TRUE(window.Tree().Select(TNode_Kind::Contacts, database.Book().Key));
  QTest::keyClick(Control<QListWidget>(&window, "Contacts"), Qt::Key_Return);
  Settle();
  EXPECT_EQ(window.Tree().Current().Contact, contact);
  auto* entries = Control<KTReminds::TEntry_List>(&window, "ListView1");
  EXPECT_EQ(entries->Items().Count(), 0u);
  With_Dialog(
      [](QWidget* form) {
        Fill(form, "Edit1", "Lunch");
        QTest::mouseClick(Control<QPushButton>(form, "OKBtn"), Qt::LeftButton);
      },
      [&] { Choose(window, "File", "New &Event..."); });
  EXPECT_EQ(Query_Text("SELECT Contact FROM KT_Events_Data ORDER BY row_id DESC"), contact);
  EXPECT_EQ(Control<KTReminds::TEntry_List>(&window, "ListView1")->Items().Count(), 1u);
}

TEST_F(Main_Window, Books_Are_Made_Renamed_And_Removed) {
  Plexidex::TMain_Window window;
  window.show();
  auto& tree = window.Tree();
  const std::string first = database.Book().Name;
  With_Dialog(
      [&](QWidget* form) {
        Fill(form, "Name", first.c_str());
        seams.Prompts.Expect_Error("New Book",
                                   "There is a book \"" + first + "\" already; choose another name.");
        Press_Enter(form);
        Fill(form, "Name", "Club");
        Press_Enter(form);
      },
      [&] { Choose(window, "Book", "&New Book..."); });
  EXPECT_EQ(tree.Current().Book_Name, "Club");
  With_Dialog(
      [](QWidget* form) {
        Fill(form, "Name", "Choir");
        Fill(form, "Label2", "Voice");
        Press_Enter(form);
      },
      [&] {
        Kt_forms::Post_Message(&window, Kt_forms::umSettingsCommand, 0, 7);
        Settle();
      });
  EXPECT_EQ(tree.Current().Book_Name, "Choir");
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Choir - Plexidex"));
  EXPECT_EQ(Query_Text("SELECT Other_2 FROM KT_Fields"), "Voice");
  for (const std::string& name : {std::string("Choir"), first}) {
    seams.Prompts.Expect_Question("Delete Book",
                                  "Delete the book \"" + name +
                                      "\" with its calendar, its tasks and all its contacts? They cannot be "
                                      "restored.",
                                  Kt_util_01::Answer_Yes);
    Choose(window, "Book", "&Delete Book...");
  }
  EXPECT_EQ(tree.topLevelItemCount(), 0);
  EXPECT_EQ(window.Page_Name(), "");
  EXPECT_EQ(Menus(window), "&File &Book &View &Help ");
}

TEST_F(Main_Window, Preferences_Are_Kept_And_A_Bad_Database_Changes_Nothing) {
  Plexidex::TMain_Window window;
  window.show();
  const std::string path = Shared_Database().Path(), bad = path + ".txt";
  std::ofstream(bad) << std::string(4000, 'x');
  seams.Prompts.Expect_Error("User Preferences",
                             "\"" + bad + "\" cannot be opened as a database: file is not a database.");
  With_Dialog(
      [&](QWidget* form) {
        Control<QCheckBox>(form, "Navigation_Bars")->setChecked(false);
        Control<QCheckBox>(form, "Completed_Style")->setChecked(false);
        Fill(form, "Database", bad.c_str());
        std::filesystem::rename(path, path + ".moved");  // could not be opened again
        Press_Enter(form);
      },
      [&] {
        Kt_forms::Post_Message(&window, Kt_forms::umSettingsCommand, 0, 6);
        Settle();
      });
  EXPECT_EQ(Shared_Database().Path(), path);
  EXPECT_EQ(List_Books().size(), 1u);
  std::filesystem::rename(path + ".moved", path);
  EXPECT_EQ(Kt_util_01::Read_String("General", "Database", "none"), "none");
  EXPECT_FALSE(Kt_util_01::UseCompleteStyle());
  EXPECT_FALSE(Control<QWidget>(&window, "Panel3")->isVisible()) << "the page is made anew";
  EXPECT_EQ(window.Page_Name(), "Contacts_Page3b_Frm0");
  const std::string other = path + ".other";
  With_Dialog(
      [&](QWidget* form) {
        Control<QLineEdit>(form, "Database")->setText(QDir().relativeFilePath(QString::fromStdString(other)));
        Press_Enter(form);
      },
      [&] { Choose(window, "View", "&Preferences..."); });
  EXPECT_EQ(Shared_Database().Path(), other);
  EXPECT_EQ(Kt_util_01::Read_String("General", "Database", ""), other) << "found from any folder";
  EXPECT_EQ(window.Page_Name(), "");
}

TEST_F(Main_Window, What_Another_Program_Has_Removed_Is_Neither_Shown_Nor_Written) {
  TBook club;
  std::string anna;
  Plexidex::TMain_Window window;
  window.show();
  auto& tree = window.Tree();
  const auto make = [&] {
    In_Update([&] {
      club = Create_Book("Club");
      anna = Create_Contact(club.Key, "Anna");
    });
    window.Refresh();
  };
  const auto remove = [&] { In_Update([&] { Delete_Book(club.Key); }); };
  const auto removed_meanwhile = [&](const char* item, const char* caption, const char* text) {
    With_Dialog(
        [&](QWidget* form) {
          remove();
          Fill(form, "Name", "Choir");
          seams.Prompts.Expect_Error(caption, text);
          Press_Enter(form);
          QTest::keyClick(form, Qt::Key_Escape);
        },
        [&] {
          Choose(window, QLatin1String(item).startsWith(QLatin1String("New")) ? "File" : "Book", item);
          Settle();
        });
    EXPECT_EQ(tree.Current().Book, database.Book().Key) << item;
    EXPECT_NE(window.windowTitle(), QStringLiteral("Club - Plexidex")) << item;
    EXPECT_EQ(Query_Text("SELECT (SELECT count(*) FROM KT_Contacts) || ' ' || (SELECT count(*) FROM "
                         "KT_Contacts_Data) || ' ' || (SELECT count(*) FROM KT_Fields)"),
              "1 0 0")
        << item;
  };
  make();
  ASSERT_TRUE(tree.Select(TNode_Kind::Contact, club.Key, anna));
  removed_meanwhile("&Edit Contact...", "Contact", "The contact has been removed and was not saved.");
  make();
  ASSERT_TRUE(tree.Select(TNode_Kind::Calendar, club.Key));
  removed_meanwhile("New &Contact...", "Contact", "The book has been removed; the contact was not saved.");
  make();
  ASSERT_TRUE(tree.Select(TNode_Kind::Calendar, club.Key));
  removed_meanwhile("Book &Set-up...", "Book Set-up", "The book has been removed.");
  make();
  ASSERT_TRUE(tree.Select(TNode_Kind::Tasks, club.Key));
  remove();
  Choose(window, "View", "&Refresh");
  EXPECT_EQ(window.Page_Name(), "Contacts_Page3b_Frm0") << "of the book that is left";
}

TEST_F(Main_Window, What_A_Database_Refuses_Is_Said_At_Every_Attempt) {
  database.Reopen({.Read_Only = true});
  Plexidex::TMain_Window window;
  window.show();
  for (const char* item : {"&New Book...", "Book &Set-up..."}) {
    With_Dialog(
        [&](QWidget* form) {
          Fill(form, "Name", "Club");
          seams.Prompts.Expect_Error("Update Failed",
                                     "Nothing was saved: the database cannot be changed now.");
          Press_Enter(form);
          EXPECT_TRUE(form->isVisible()) << item;
          QTest::keyClick(form, Qt::Key_Escape);
        },
        [&] { Choose(window, "Book", item); });
  }
}

TEST_F(Main_Window, Books_That_Cannot_Be_Read_Are_Not_Said_To_Be_Missing) {
  Plexidex::TMain_Window window;
  window.show();
  Run_Sql("ALTER TABLE KT_Books RENAME TO Elsewhere");
  seams.Prompts.Expect_Error("Read Failed",
                             "The data could not be read: read KT_Books: no such table: KT_Books\n\n"
                             "Navigation_Tree:Reload [KT_Books/KT_Contacts]");
  Choose(window, "View", "&Refresh");
  EXPECT_EQ(window.Page_Name(), "");
  EXPECT_TRUE(Control<QLabel>(&window, "No_Page")->text().startsWith(QLatin1String("The books cannot")));
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Books");
  Choose(window, "View", "&Refresh");
  EXPECT_EQ(window.Page_Name(), "Contacts_Page3b_Frm0");
}

TEST_F(Main_Window, A_New_Event_Goes_Through_The_Editor_Into_The_List) {
  Plexidex::TMain_Window window;
  Show_Book(window);
  {
    TModal_Driver driver([](QWidget* form) {
      Control<QLineEdit>(form, "Edit1")->setText(QStringLiteral("Lunch"));
      QTest::mouseClick(Control<QPushButton>(form, "OKBtn"), Qt::LeftButton);
    });
    Choose(window, "File", "New &Event...");
  }
  EXPECT_EQ(Shown(window), QStringLiteral("1:00 PM Lunch "));
  {
    TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); });
    Choose(window, "File", "New &Task...");
  }
  EXPECT_EQ(Shown(window), QStringLiteral("1:00 PM Lunch "));
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 1) << "what was cancelled leaves nothing";
}

TEST_F(Main_Window, Entries_Are_Marked_And_Deleted_From_The_List_But_Not_Those_Of_Others) {
  Make(45306.75, "Dinner", Kt_util_01::User_Key());
  Plexidex::TMain_Window window;
  Show_Book(window);
  auto* list = Control<QTreeWidget>(&window, "Entries");
  const auto run = [&](int number) {
    Select_First(window);
    list->actions().at(number)->trigger();
  };
  run(1);
  EXPECT_EQ(Shown(window), QStringLiteral("6:00 PM Dinner done"));
  run(1);
  EXPECT_EQ(Shown(window), QStringLiteral("6:00 PM Dinner "));
  {
    TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Return); });
    run(2);
  }
  EXPECT_EQ(Shown(window), QString());
  Make(45306.75, "Secret", "somebody");
  window.Refresh();
  seams.Sounds.Played.clear();
  run(1);
  run(2);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{5, 5}));
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events_Data WHERE Actioned = 0"), 1);
}

}  // namespace
