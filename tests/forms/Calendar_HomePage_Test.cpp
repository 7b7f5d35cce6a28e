#include "Editor_Fixture.h"
#include "KTAccess.h"
#include "Kt_labels.h"
#include "Message_Prompts.h"
#include "Page_Numbers.h"
#include "fm_Calendar_HomePage.h"

namespace {

// Where a page is embedded, and what it says to the form around it.
struct THost : TForm {
  THost() {
    new QHBoxLayout(Tools);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(&Bar), Tools, Place}) layout->addWidget(part);
    Install_Menu_Bar(&Bar, Bar.addMenu(QStringLiteral("Help"))->menuAction());
    Install_Main_Form(this);
  }
  ~THost() override {
    if (TForm* page = Page.Get()) page->Close_Form();
    Install_Menu_Bar(nullptr, nullptr);
  }
  /// The menus, and whether a page's tools are there.
  std::string Menus() const {
    std::string titles;
    for (const QAction* action : Bar.actions()) titles += action->text().toStdString() + ' ';
    const auto* tools = Tools->findChild<QToolBar*>(QStringLiteral("ToolBar1"));
    return titles + (tools && tools->isVisible() ? "+" : "");
  }
  void Handle_Message(const TMessage& message) override {
    Received += std::to_string(message.Number() - First_Message) + "/" + std::to_string(message.WParam) +
                "/" + std::to_string(message.LParam) + " ";
  }

  QMenuBar Bar{this};
  QWidget *Tools = new QWidget(this), *Place = new QWidget(this);
  TForm_Reference Page;
  std::string Received;
};

struct Calendar_HomePage : TEditor_Fixture {
  Calendar_HomePage() { host.show(); }

  TCalendar_HomePage_Frm* Display() {
    EXPECT_TRUE(Display_Calendar_Home_Page(host.Place, host.Page, database.Book().Key,
                                           database.Book().Calendar, host.Tools));
    return host.Page.As<TCalendar_HomePage_Frm>();
  }
  /// The form that is shown, and the view that is remembered.
  static std::string Shown(QWidget* page) {
    char name[100] = "";
    Send_Message(page, umGetFormName, 0, reinterpret_cast<qintptr>(name));
    return name + (" " + std::to_string(Read_Integer("General", "Calendar View", -1)));
  }
  bool Offers(const char* item) {
    emit Control<QMenu>(host.Page.Get(), "Tools1")->aboutToShow();
    const auto* menu = host.Page.Get()->findChild<QMenu*>(QLatin1String(item));
    return (menu ? menu->menuAction() : Control<QAction>(host.Page.Get(), item))->isVisible();
  }

  THost host;
};

TEST_F(Calendar_HomePage, Remembers_Views_Only_And_Opens_The_Day_Where_A_View_Is_Still_To_Come) {
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
  EXPECT_EQ(remembering(Page_Month), "Contacts_Page3b_Frm0 12") << "kept for the time when there is one";
  EXPECT_EQ(remembering(7), "Error 7");
  EXPECT_FALSE(Control<TWebLabel>(page, "Weekly")->isEnabled());
  Act(page, "Daily");
  EXPECT_EQ(Shown(page), day);
}

TEST_F(Calendar_HomePage, Its_Menu_And_Tools_Are_The_Hosts_While_It_Is_Shown) {
  auto* page = Display();
  EXPECT_EQ(Display(), page) << "used again";
  std::string menus = host.Menus();
  for (const bool shown : {false, true}) {
    page->setVisible(shown);
    page->DoRefresh();
    menus += "|" + host.Menus();
  }
  EXPECT_TRUE(page->Close_Form());
  EXPECT_EQ(menus + "|" + host.Menus(), "&Tools Help +|Help |&Tools Help +|Help ");
  Settle();
  EXPECT_EQ(host.Tools->findChild<QToolBar*>(), nullptr) << "the tools leave with the page";
  Write_Bool("General", "Navigation Bars", false);
  for (const bool grid : {true, false}) {
    delete host.Tools->layout();
    if (grid) new QGridLayout(host.Tools);
    page = Display();
    EXPECT_EQ(host.Tools->layout()->itemAt(0)->widget(), Control<QToolBar>(host.Tools, "ToolBar1"));
    EXPECT_FALSE(Control<QWidget>(page, "Panel3")->isVisible());
    page->Close_Form();
    Settle();
  }
}

TEST_F(Calendar_HomePage, The_Menu_Offers_What_The_Host_Has) {
  auto* page = Display();
  EXPECT_FALSE(Offers("ChangePassword1") || Offers("CalendarPermissions1"));
  Act(page, "UserPreferences1|BookSetup1|DatabseSecurity1|UserManager1|Search1");
  EXPECT_EQ(host.Received, "") << "posted, not sent";
  Act(host.Tools, "ToolButton5");
  Act(page, "SearchCalendar");
  Send_Message(page, umAddContact, 3, 4);
  Settle();
  EXPECT_EQ(host.Received, "6/0/6 6/0/7 6/0/8 6/0/9 10/51/0 10/51/0 10/51/0 0/0/4 ");
  page->Close_Form();
  DB_Permissions = DB_Secure = true;
  page = Display();
  EXPECT_TRUE(Offers("ChangePassword1") && Offers("CalendarPermissions1") &&
              Control<TWebLabel>(page, "Permissions")->isVisible());
  DB_Permissions = DB_Secure = false;
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
        EXPECT_EQ(host.Page.Get(), nullptr);
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
