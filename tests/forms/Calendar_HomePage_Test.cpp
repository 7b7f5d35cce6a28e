#include "Editor_Fixture.h"
#include "KTAccess.h"
#include "Kt_labels.h"
#include "Main_Window.h"
#include "Message_Prompts.h"
#include "Navigation_Tree.h"
#include "Page_Numbers.h"
#include "fm_Calendar_HomePage.h"

namespace {

/// In the main window.
struct Calendar_HomePage : TEditor_Fixture {
  TCalendar_HomePage_Frm* Display() {
    window ? window->Refresh() : window.emplace().show();
    return window->findChild<TCalendar_HomePage_Frm*>();
  }
  /// The form that is shown, and the view that is remembered.
  static std::string Shown(QWidget* page) {
    char name[100] = "";
    Send_Message(page, umGetFormName, 0, reinterpret_cast<qintptr>(name));
    return name + (" " + std::to_string(Read_Integer("General", "Calendar View", -1)));
  }
  bool Offers(const char* item) {
    emit Control<QMenu>(&*window, "Tools1")->aboutToShow();
    return Control<QAction>(&*window, item)->isVisible();
  }

  std::optional<Plexidex::TMain_Window> window;
};

TEST_F(Calendar_HomePage, Remembers_Views_Only) {
  auto* page = Display();
  const std::string day = "Contacts_Page3b_Frm0 2";
  EXPECT_EQ(Shown(page), day);
  Send_Message(page, umDisplayForm, Page_Permissions, 0);
  EXPECT_EQ(Shown(page), "Permissions_Frm0 2");
  EXPECT_TRUE(Control<QLabel>(page, "Explanation")->isVisible());
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(Shown(page), day) << "a refresh returns to the remembered view";
  const auto remembering = [&](int view) {
    Write_Integer("General", "Calendar View", view);
    page->DoRefresh();
    Settle();
    return Shown(page);
  };
  EXPECT_EQ(remembering(7), "Error 7");
  Act(page, "AllEvents");
  EXPECT_EQ(Shown(page), "Contacts_Page3d_Frm0 13");
  Act(page, "Monthly");
  EXPECT_EQ(Shown(page), "Contacts_Page3c_Frm0 12");
  Act(page, "Weekly");
  EXPECT_EQ(Shown(page), "Contacts_Page3a_Frm0 11");
  Act(page, "Daily");
  EXPECT_EQ(Shown(page), day);
}

TEST_F(Calendar_HomePage, A_View_Takes_Over_The_Keyboard_From_The_One_Before_It_Alone) {
  auto* page = Display();
  CurrentDate = Monday + 6;
  page->DoRefresh();
  const auto focus = [this] {
    const QWidget* control = window->focusWidget();
    return control ? control->objectName().toStdString() : "nothing";
  };
  Control<QWidget>(page, "ListView1")->setFocus();
  for (const auto& [view, has_it] : {std::pair(Page_Month, "MonthCal"),
                                     {Page_Week, "ListView7"},
                                     {Page_All, "ListView1"},
                                     {Page_Day, "ListView1"}}) {
    Send_Message(page, umDisplayForm, view, 0);
    EXPECT_EQ(focus(), has_it);
  }
  window->Tree().setFocus();
  const std::string tree = focus();
  Send_Message(page, umDisplayForm, Page_Month, 0);
  EXPECT_EQ(focus(), tree);
}

TEST_F(Calendar_HomePage, Its_Menu_And_Tools_Are_The_Hosts_While_It_Is_Shown) {
  auto* page = Display();
  EXPECT_EQ(Display(), page) << "used again";
  EXPECT_FALSE(Offers("ChangePassword1") || Offers("CalendarPermissions1"));
  const auto are_there = [this] {
    const auto* tools = window->findChild<QToolBar*>(QStringLiteral("ToolBar1"));
    EXPECT_EQ(window->menuBar()->actions().size(), tools && tools->isVisible() ? 6 : 5);
    return tools && tools->isVisible();
  };
  for (const bool shown : {true, false, true}) {
    page->setVisible(shown);
    page->DoRefresh();
    EXPECT_EQ(are_there(), shown);
  }
  EXPECT_TRUE(page->Close_Form());
  EXPECT_FALSE(are_there());
  Settle();
  EXPECT_EQ(window->findChild<QToolBar*>(), nullptr) << "the tools leave with the page";
  In_Update([] {
    std::string user;
    Add_User("Ann", true, user);
    Store_Setting("Secure", "1");
  });
  Follow_Users();
  page = Display();
  EXPECT_TRUE(Offers("ChangePassword1") && Offers("CalendarPermissions1") &&
              Control<TWebLabel>(page, "Permissions")->isVisible());
  QWidget place, tools;
  new QGridLayout(&tools);
  TForm_Reference form;
  EXPECT_TRUE(Display_Calendar_Home_Page(&place, form, database.Book().Key, {}, &tools));
  EXPECT_EQ(tools.layout()->itemAt(0)->widget(), Control<QToolBar>(&tools, "ToolBar1"));
}

TEST_F(Calendar_HomePage, A_Reader_May_Make_Tasks_But_No_Events) {
  Sign_In({.Create = true, .See = true});
  auto* page = Display();
  seams.Sounds.Played.clear();
  Send_Message(page, umAddContactEvent, 0, 0);
  Act(page, "CalendarEvent");
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{5, 5}));
  const auto look = [](QWidget* editor) {
    EXPECT_EQ(editor->objectName(), QStringLiteral("Task_Frm"));
    Cancel(editor);
  };
  With_Dialog(look, [page] { Send_Message(page, umAddContactEvent, 0, 1); });
}

TEST_F(Calendar_HomePage, Closed_While_It_Reads_It_Is_Not_Shown_Again) {
  const QPointer<TCalendar_HomePage_Frm> page = Display();
  Run_Sql("ALTER TABLE KT_Events_Data RENAME TO Elsewhere");
  TMessage_Prompts prompts;
  Install_Prompts(&prompts);
  With_Dialog(
      [&](QWidget* failure) {
        EXPECT_TRUE(page->Close_Form());
        Confirm(failure);
      },
      [&] { Send_Message(page, umRefreshDisplay, 0, 0); });
  EXPECT_FALSE(page && page->isVisible());
  Install_Prompts(&seams.Prompts);
  Run_Sql("ALTER TABLE Elsewhere RENAME TO KT_Events_Data");
}

TEST_F(Calendar_HomePage, Closed_While_Its_Editor_Is_Open_It_Is_Freed_Afterwards) {
  const QPointer<TCalendar_HomePage_Frm> page = Display();
  With_Dialog(
      [&](QWidget* editor) {
        page->Set_Keys("another book", "another owner");
        EXPECT_TRUE(page->Close_Form());
        EXPECT_EQ(window->Page_Name(), "");
        Confirm_With("Edit1=Lunch")(editor);
      },
      [&] { Act(page, "CalendarEvent"); });
  EXPECT_EQ(Query_Text("SELECT Book || Contact FROM KT_Events_Data"),
            database.Book().Key + database.Book().Calendar);
  EXPECT_FALSE(page.isNull()) << "its handler has only just returned";
  Settle();
  EXPECT_TRUE(page.isNull());
}

}  // namespace
