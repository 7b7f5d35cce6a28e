#include "Main_Window.h"

#include <gtest/gtest.h>

#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QTest>
#include <QTreeWidget>

#include "Event_Creation.h"
#include "Form_Driver.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

using namespace Kt_data_01;

namespace {

class Main_Window : public testing::Test {
 protected:
  Main_Window() { Kt_util_01::CurrentDate = Kt_util_01::Today(); }

  std::string Make(double date, const std::string& title, const std::string& user) {
    KTReminds::TNew_Event event;
    event.Contact = database.Book().Calendar;
    event.Book = database.Book().Key;
    event.Title = title;
    event.User = user;
    event.Private = user != Kt_util_01::User_Key();
    event.FirstDate = date;
    event.Pattern.LastDate = date;
    std::string key;
    return KTReminds::Create_Event(event, key);
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
  static void Choose(Plexidex::TMain_Window& window, const char* text) {
    for (QAction* action : Control<QMenu>(window.menuBar(), "File")->actions()) {
      if (action->text() == QLatin1String(text)) return action->trigger();
    }
    ADD_FAILURE() << "there is no item " << text;
  }
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
  window.show();
  EXPECT_EQ(Shown(window), QStringLiteral("6:00 AM Breakfast |12:00 PM Private |12:00 PM In four weeks "));
  auto* books = Control<QTreeWidget>(&window, "Books");
  ASSERT_EQ(books->topLevelItemCount(), 2);
  Picture(&window, QStringLiteral("main_window"));
  books->setCurrentItem(books->topLevelItem(1));
  EXPECT_EQ(Shown(window), QString());
}

TEST_F(Main_Window, A_New_Event_Goes_Through_The_Editor_Into_The_List) {
  Plexidex::TMain_Window window;
  window.show();
  {
    TModal_Driver driver([](QWidget* form) {
      Control<QLineEdit>(form, "Edit1")->setText(QStringLiteral("Lunch"));
      QTest::mouseClick(Control<QPushButton>(form, "OKBtn"), Qt::LeftButton);
    });
    Choose(window, "New &Event...");
  }
  EXPECT_EQ(Shown(window), QStringLiteral("1:00 PM Lunch "));
  {
    TModal_Driver driver([](QWidget* form) { QTest::keyClick(form, Qt::Key_Escape); });
    Choose(window, "New &Task...");
  }
  EXPECT_EQ(Shown(window), QStringLiteral("1:00 PM Lunch "));
  EXPECT_EQ(Query_Number("SELECT count(*) FROM KT_Events"), 1) << "what was cancelled leaves nothing";
}

TEST_F(Main_Window, Entries_Are_Marked_And_Deleted_From_The_List_But_Not_Those_Of_Others) {
  Make(45306.75, "Dinner", Kt_util_01::User_Key());
  Plexidex::TMain_Window window;
  window.show();
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
