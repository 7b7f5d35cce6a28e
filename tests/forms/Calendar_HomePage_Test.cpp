#include <QGridLayout>
#include <QHBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QToolBar>
#include <QToolButton>
#include <sstream>

#include "Editor_Fixture.h"
#include "KTAccess.h"
#include "Kt_labels.h"
#include "Page_Numbers.h"
#include "fm_Calendar_HomePage.h"

using namespace Kt_data_01;
using namespace Kt_forms;
using namespace KTReminds;

namespace {

// Where a page is embedded, and what it says to the form around it.
class THost : public TForm {
 public:
  THost() : Bar(this), Tools(new QWidget(this)), Place(new QWidget(this)) {
    auto* tools = new QHBoxLayout(Tools);
    tools->setContentsMargins(0, 0, 0, 0);
    auto* layout = new QVBoxLayout(this);
    for (QWidget* part : {static_cast<QWidget*>(&Bar), Tools, Place}) layout->addWidget(part);
    Install_Menu_Bar(&Bar, Bar.addMenu(QStringLiteral("Help"))->menuAction());
    Install_Main_Form(this);
    resize(760, 500);
  }
  ~THost() override {
    if (TForm* page = Page.Get()) page->Close_Form();
    Install_Menu_Bar(nullptr, nullptr);
  }
  std::string Menus() const {
    std::string titles;
    for (const QAction* action : Bar.actions()) titles += action->text().toStdString() + ' ';
    return titles;
  }

  QMenuBar Bar;
  QWidget *Tools, *Place;
  TForm_Reference Page;
  std::string Received;  // number, WParam and LParam of each message

 protected:
  void Handle_Message(const TMessage& message) override {
    std::ostringstream text;
    text << std::hex << message.Number() << std::dec << ' ' << message.WParam << ' ' << message.LParam << ';';
    Received += text.str();
  }
};

class Calendar_HomePage : public TEditor_Fixture {
 protected:
  Calendar_HomePage() { host.show(); }

  TCalendar_HomePage_Frm* Display() {
    EXPECT_TRUE(Display_Calendar_Home_Page(host.Place, host.Page, database.Book().Key,
                                           database.Book().Calendar, host.Tools));
    return host.Page.As<TCalendar_HomePage_Frm>();
  }
  static std::int64_t Remembered() { return Kt_util_01::Read_Integer("General", "Calendar View", -1); }
  static std::string Name(QWidget* page) {
    char name[100] = "";
    Send_Message(page, umGetFormName, 0, reinterpret_cast<qintptr>(name));
    return name;
  }
  QAction* Item(const char* name) {
    auto* page = host.Page.As<TCalendar_HomePage_Frm>();
    if (QAction* found = page->findChild<QAction*>(QString::fromLatin1(name))) return found;
    return Control<QMenu>(page, name)->menuAction();
  }

  THost host;
};

TEST_F(Calendar_HomePage, Remembers_Views_Only_And_Opens_The_Day_Where_A_View_Is_Still_To_Come) {
  auto* page = Display();
  EXPECT_EQ(Name(page), "Contacts_Page3b_Frm0");
  Send_Message(page, umDisplayForm, Page_Permissions, 0);
  EXPECT_EQ(Remembered(), Page_Day);
  EXPECT_TRUE(Control<QLabel>(page, "Explanation")->isVisible());
  EXPECT_EQ(Name(page), "Permissions_Frm0");
  Send_Message(page, umSelectNode, 0, 0);
  EXPECT_EQ(Name(page), "Contacts_Page3b_Frm0") << "a refresh returns to the remembered view";

  Kt_util_01::Write_Integer("General", "Calendar View", Page_Month);
  page->DoRefresh();
  EXPECT_EQ(Name(page), "Contacts_Page3b_Frm0");
  EXPECT_EQ(Remembered(), Page_Month) << "kept for the time when there is one";

  Kt_util_01::Write_Integer("General", "Calendar View", 7);
  page->DoRefresh();
  Settle();
  EXPECT_EQ(Name(page), "Error");
  EXPECT_FALSE(Control<TWebLabel>(page, "Weekly")->isEnabled());
  QTest::mouseClick(Control<TWebLabel>(page, "Daily"), Qt::LeftButton);
  EXPECT_EQ(Name(page), "Contacts_Page3b_Frm0");
}

TEST_F(Calendar_HomePage, Its_Menu_And_Tools_Are_The_Hosts_While_It_Is_Shown) {
  auto* page = Display();
  EXPECT_EQ(Display(), page) << "used again";
  EXPECT_EQ(host.Menus(), "&Tools Help ");
  EXPECT_TRUE(Control<QToolBar>(host.Tools, "ToolBar1")->isVisible());
  page->hide();
  EXPECT_EQ(host.Menus(), "Help ");
  EXPECT_FALSE(Control<QToolBar>(host.Tools, "ToolBar1")->isVisible());
  page->show();
  page->DoRefresh();
  EXPECT_EQ(host.Menus(), "&Tools Help ");
  EXPECT_TRUE(page->Close_Form());
  EXPECT_EQ(host.Menus(), "Help ");
  Settle();
  EXPECT_EQ(host.Tools->findChild<QToolBar*>(), nullptr) << "the tools leave with the page";

  Kt_util_01::Write_Bool("General", "Navigation Bars", false);
  for (QLayout* layout : {static_cast<QLayout*>(new QGridLayout), static_cast<QLayout*>(nullptr)}) {
    delete host.Tools->layout();
    if (layout) host.Tools->setLayout(layout);
    page = Display();
    EXPECT_EQ(host.Tools->layout()->itemAt(0)->widget(), Control<QToolBar>(host.Tools, "ToolBar1"));
    EXPECT_FALSE(Control<QWidget>(page, "Panel3")->isVisible());
    page->Close_Form();
    Settle();
  }
}

TEST_F(Calendar_HomePage, The_Menu_Offers_What_The_Host_Has) {
  Display();
  emit Control<QMenu>(host.Page.Get(), "Tools1")->aboutToShow();
  EXPECT_FALSE(Item("ChangePassword1")->isVisible());
  EXPECT_FALSE(Item("CalendarPermissions1")->isVisible());
  EXPECT_FALSE(Item("DatabseSecurity1")->isEnabled());
  Item("UserPreferences1")->trigger();
  Item("BookSetup1")->trigger();
  Item("Search1")->trigger();
  EXPECT_EQ(host.Received, "") << "posted, not sent";
  Settle();
  EXPECT_EQ(host.Received, "407 0 6;407 0 7;40b 51 0;");
  host.Received.clear();
  QTest::mouseClick(Control<QToolButton>(host.Tools, "ToolButton5"), Qt::LeftButton);
  QTest::mouseClick(Control<TWebLabel>(host.Page.Get(), "SearchCalendar"), Qt::LeftButton);
  Send_Message(host.Page.Get(), umAddContact, 3, 4);
  Settle();
  EXPECT_EQ(host.Received, "40b 51 0;40b 51 0;401 0 4;");

  host.Page.Get()->Close_Form();
  DB_Permissions = DB_Secure = true;
  auto* page = Display();
  emit Control<QMenu>(page, "Tools1")->aboutToShow();
  EXPECT_TRUE(Item("ChangePassword1")->isVisible());
  EXPECT_TRUE(Item("CalendarPermissions1")->isVisible());
  EXPECT_TRUE(Control<TWebLabel>(page, "Permissions")->isVisible());
  DB_Permissions = DB_Secure = false;
}

TEST_F(Calendar_HomePage, A_Reader_May_Make_Tasks_But_No_Events) {
  In_Update([&] {
    const std::string reader = Create_User("Reader", false);
    Set_Rights(database.Book().Key, reader, {.Create = true, .Update = false, .Delete = false, .See = true});
    Kt_util_01::Set_User_Key(reader);
  });
  auto* page = Display();
  seams.Sounds.Played.clear();
  Send_Message(page, umAddContactEvent, 0, 0);
  QTest::mouseClick(Control<TWebLabel>(page, "CalendarEvent"), Qt::LeftButton);
  EXPECT_EQ(seams.Sounds.Played, (std::vector<int>{5, 5}));
  TModal_Driver driver([](QWidget* form) {
    EXPECT_EQ(form->objectName(), QStringLiteral("Task_Frm"));
    QTest::keyClick(form, Qt::Key_Escape);
  });
  Send_Message(page, umAddContactEvent, 0, 1);
}

TEST_F(Calendar_HomePage, Closed_While_Its_Editor_Is_Open_It_Is_Freed_Afterwards) {
  const QPointer<TCalendar_HomePage_Frm> page = Display();
  {
    TModal_Driver driver([&](QWidget* form) {
      page->Set_Keys("another book", "another owner");
      EXPECT_TRUE(page->Close_Form());
      EXPECT_EQ(host.Page.Get(), nullptr);
      Control<QLineEdit>(form, "Edit1")->setText(QStringLiteral("Lunch"));
      QTest::keyClick(form, Qt::Key_Return);
    });
    QTest::mouseClick(Control<TWebLabel>(page, "CalendarEvent"), Qt::LeftButton);
  }
  EXPECT_EQ(Query_Text("SELECT Book || Contact FROM KT_Events_Data"),
            database.Book().Key + database.Book().Calendar);
  EXPECT_FALSE(page.isNull()) << "its handler has only just returned";
  Settle();
  EXPECT_TRUE(page.isNull());
}

}  // namespace
