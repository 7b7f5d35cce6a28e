#include "Book_Dialogs.h"
#include "Category_Dialogs.h"
#include "Contact_Dialog.h"
#include "Editor_Fixture.h"
#include "Folder_Dialogs.h"
#include "Journal_Page.h"
#include "KTAccess.h"
#include "KTReminds.h"
#include "Links_Page.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Preferences.h"
#include "Sample_Calendar.h"
#include "Template_Dialogs.h"
#include "User_Dialogs.h"
#include "Welcome.h"

using namespace Plexidex;

namespace {

/// Windows in the locale, dark or light, that the parameter names.
class Looks : public TEditor_Fixture, public testing::WithParamInterface<std::pair<const char*, bool>> {
 protected:
  Looks() : colours(GetParam().second) { Install_Locale(GetParam().first); }

  static void Look(QWidget* window, const QString& name) {
    Settle();
    EXPECT_EQ(Make_Checks(window), "") << name.toStdString();
  }
  static void Look_At_Every_Page(QWidget& form, const QString& name) {
    Show(form);
    Look(&form, name);
    const auto* bar = form.findChild<QTabBar*>();
    for (int page = 0; bar && page < bar->count(); ++page) {
      Act(&form, "PageControl1=" + std::to_string(page));
      Look(&form, name + QString::number(page));
    }
  }
  static void Look_At_Groups(const char* name, const std::function<void()>& call) {
    const auto look = [name](QWidget* form) {
      auto* groups = form->findChild<QTabWidget*>();
      for (int group = 0; group < groups->count(); ++group) {
        groups->setCurrentIndex(group);
        Look(form, QString::fromLatin1(name) + QString::number(group));
      }
      Cancel(form);
    };
    With_Dialog(look, call);
  }
  static void Look_At_Dialog(const char* name, const std::function<void()>& call) {
    const auto look = [name](QWidget* form) {
      Look(form, QString::fromLatin1(name));
      Cancel(form);
    };
    With_Dialog(look, call);
  }

  const TPalette_Scope colours;
};

// Nothing is clipped, unnamed or ambiguous.

TEST_P(Looks, Of_The_Editors) {
  for (const bool task : {false, true}) {
    TAlarm_Props_Frm form(Monday + 1.5, {true, 30, "", task ? 0 : Monday}, task, false);
    Look_At_Every_Page(form, QStringLiteral("alarm_%1").arg(task));
  }
  TReminder_Rules set;
  ASSERT_TRUE(set.Open(Make(5), {database.Book().Key, {}}, {}, false));
  set.Open_Whole_Set();
  set.Pages.Daily_Every = set.Pages.Monthly_Every = set.Pages.Yearly_Every = false;
  set.Alarm.On = true;
  for (const int freq : {1, 2, 3, 4}) {
    set.Pages.Freq = static_cast<TFrequency>(freq);
    TReminder_Frm form(set);
    Look_At_Every_Page(form, QStringLiteral("set_%1_").arg(freq));
  }
  TTask_Rules task;
  ASSERT_TRUE(task.Open(Make(1, 3), {database.Book().Key, {}}, {}, false));
  task.Alarm.On = true;
  task.Status = TTask_Status::Completed;
  task.Set_Status();
  TTask_Frm form(task);
  Look_At_Every_Page(form, QStringLiteral("task_"));
}

TEST_P(Looks, Of_The_Window_On_The_Samples_Data) {
  Fill_With_Sample({}, Today());
  Write_Bool("General", "Show Calendar", true);
  const std::string book = database.Book().Key,
                    contact = Query_Text("SELECT Key FROM KT_Contacts WHERE Type = 0 ORDER BY DisplayName");
  TMain_Window window;
  Show(window);
  for (const auto kind : {TNode_Kind::Book, TNode_Kind::Tasks, TNode_Kind::Contacts, TNode_Kind::Contact,
                          TNode_Kind::Calendar}) {
    ASSERT_TRUE(window.Tree().Select(kind, book, kind == TNode_Kind::Contact ? contact : ""));
    Look(&window, QStringLiteral("window_%1").arg(static_cast<int>(kind)));
  }
  ASSERT_TRUE(window.Tree().Select(TNode_Kind::Contact, book, contact));
  for (const int tab : {2, 3}) {
    Control<QTabBar>(&window, "Tabs")->setCurrentIndex(tab);
    Look(&window, QStringLiteral("contact_tab_%1").arg(tab));
  }
  window.Tree().Select(TNode_Kind::Calendar, book);
  for (const int view : {Page_Day, Page_Month}) {
    window.resize(800, 600);
    Control<TCalendar_HomePage_Frm>(&window, "Calendar_HomePage_Frm")->Show_Page(view);
    Look(&window, QStringLiteral("window_view_%1").arg(view));
    window.resize(560, 420);
    Look(&window, QStringLiteral("window_narrow_%1").arg(view));
  }
  Look_At_Dialog("contact", [&] { Edit_Contact(&window, contact); });
  Look_At_Dialog("templates", [&] { Edit_Templates(&window, book); });
  Look_At_Dialog("template", [&] { Edit_Template(&window, Kt_data_01::List_Templates(book).front()); });
  Look_At_Dialog("categories", [&] { Edit_Categories(&window, book); });
  Look_At_Dialog("folder", [&] { New_Folder(&window, book, {}); });
  Look_At_Dialog("move", [&] { Move_With_Dialog(&window, book, {contact}); });
  Look_At_Dialog("link", [&] { Enter_Link(&window, contact); });
  Look_At_Dialog("journal", [&] { Enter_Journal_Entry(&window, contact); });
  Look_At_Dialog("book", [&] { Set_Up_Book(&window, book); });
  Look_At_Groups("preferences", [&] { Edit_Preferences(&window, database.Path()); });
  Look_At_Dialog("welcome", [&] { EXPECT_FALSE(Welcome(database.Path())); });
  std::string user;
  In_Update([&] { Add_User("Ann", true, user), Add_User("Bert", false, user); });
  Look_At_Dialog("users", [&] { Edit_Users(&window); });
  Look_At_Dialog("security", [&] { Edit_Security(&window); });
  Look_At_Dialog("choose_user", [&] { Log_In_Again(&window); });
  In_Update([&] { Store_Setting("Secure", "1"); });
  Look_At_Dialog("log_in", [&] { Log_In_Again(&window); });
  Look_At_Dialog("change_password", [&] { KTAccess::Change_Password(); });
}

INSTANTIATE_TEST_SUITE_P(Of, Looks,
                         testing::Values(std::pair("en_US", false), std::pair("de_DE", false),
                                         std::pair("en_US", true), std::pair("de_DE", true)));

}  // namespace
