#include "fm_Calendar_HomePage.h"

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "KTAccess.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"
#include "fm_Contacts_Page3b.h"
#include "fm_Reminder.h"
#include "fm_Task.h"
#include "ui_fm_Calendar_HomePage.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

using TDisplay_View = bool (*)(QWidget*, TForm_Reference&, const std::string&, const std::string&, bool);

// The views there are; a view that is to come has none yet.
struct TView_Entry {
  int Index;
  TDisplay_View Display;
};
constexpr TView_Entry Views[] = {
    {Page_Day, &Display_Calendar_Dayview},
    {Page_Week, nullptr},
    {Page_Month, nullptr},
    {Page_All, nullptr},
};

const TView_Entry* View_Of(int index) {
  for (const TView_Entry& view : Views) {
    if (view.Index == index) return &view;
  }
  return nullptr;
}

// The host's tool area. Set before a page is made, since making it puts the tool bar there.
QPointer<QWidget>& Tool_Panel() {
  static QPointer<QWidget> panel;
  return panel;
}

}  // namespace

TCalendar_HomePage_Frm::TCalendar_HomePage_Frm()
    : ui(std::make_unique<Ui::Calendar_HomePage_Frm>()), EnabledIcons("CalHome_Enabled") {
  ui->setupUi(this);
  ToolBar1 = new QToolBar(this);
  ToolBar1->setObjectName(QStringLiteral("ToolBar1"));
  ToolBar1->setIconSize({TImage_List::Size, TImage_List::Size});
  auto* search = new QToolButton(ToolBar1);
  search->setObjectName(QStringLiteral("ToolButton5"));
  search->setToolTip(tr("Search Calendar|Search the Address Book's Calendar"));
  search->setIcon(EnabledIcons.Icon(0));
  search->setAutoRaise(true);
  search->setFocusPolicy(Qt::TabFocus);
  ToolBar1->addWidget(search);
  connect(search, &QToolButton::clicked, this, &TCalendar_HomePage_Frm::Search_Calendar);
  Initialise_Form(this);
  if (QWidget* panel = Tool_Panel()) {
    ToolBar1->setParent(panel);
    if (auto* layout = qobject_cast<QBoxLayout*>(panel->layout())) layout->insertWidget(0, ToolBar1);
    ToolBar1->show();
  }
  Make_Menu();
  Merge_Menu(this, {Tools1});
  Connect_Labels();
  ui->Panel3->setVisible(Kt_util_01::Read_Bool("General", "Navigation Bars", true));
  for (QWidget* control : {static_cast<QWidget*>(ui->SetCaption), static_cast<QWidget*>(ui->Permissions)})
    control->setVisible(Kt_data_01::DB_Permissions);
}

TCalendar_HomePage_Frm::~TCalendar_HomePage_Frm() {
  delete ToolBar1;
}

void TCalendar_HomePage_Frm::Make_Menu() {
  const auto named = [](auto* item, const char* name, const QString& hint) {
    item->setObjectName(QString::fromLatin1(name));
    item->setStatusTip(hint);
    return item;
  };
  const auto add = [&](QMenu* menu, const char* name, const QString& caption, const QString& hint, auto run) {
    QAction* action = named(menu->addAction(caption), name, hint);
    connect(action, &QAction::triggered, this, run);
    return action;
  };
  const auto sub_menu = [&](const char* name, const QString& caption, const QString& hint) {
    QMenu* menu = Tools1->addMenu(caption);
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setStatusTip(hint);
    return menu;
  };
  const auto separator = [](QMenu* menu, const char* name) {
    menu->addSeparator()->setObjectName(QString::fromLatin1(name));
  };
  const auto host_command = [](int command) {
    return [command] { Post_Message(Main_Form(), umSettingsCommand, 0, command); };
  };

  Tools1 = new QMenu(tr("&Tools"), this);
  Tools1->setObjectName(QStringLiteral("Tools1"));
  Tools1->menuAction()->setStatusTip(tr("Contains tool commands"));
  connect(Tools1, &QMenu::aboutToShow, this, &TCalendar_HomePage_Frm::Tools1Click);

  QMenu* options =
      sub_menu("Options1", tr("&Options"), tr("Allows various aspects of Plexidex to be Configured"));
  add(options, "UserPreferences1", tr("&User Preferences"),
      tr("Allows Plexidex to be configured to meet a user's preferences"),
      host_command(Settings_Preferences));
  add(options, "BookSetup1", tr("&Book Set-up"),
      tr("Allows configurable aspects of the Address Book to be configured"), host_command(Settings_Book));
  separator(Tools1, "N10");
  QMenu* administration = sub_menu("Administration1", tr("&Administration"),
                                   tr("Provides access to various Database Administration menus"));
  Administration1 = administration->menuAction();
  QAction* security =
      add(administration, "DatabseSecurity1", tr("&Database Security"),
          tr("Allows the Database Security scheme to be configured"), host_command(Settings_Security));
  QAction* users = add(administration, "UserManager1", tr("&User Manager"),
                       tr("Allows the Database User Accounts to be managed"), host_command(Settings_Users));
  for (QAction* action : {security, users})
    action->setEnabled(Kt_data_01::DB_Permissions || Kt_data_01::DB_Secure);
  separator(Tools1, "N1");
  QAction* permissions =
      add(Tools1, "CalendarPermissions1", tr("Calendar &Permissions..."),
          tr("Defines the access permissions for the Calendar"), [this] { Show_Page(Page_Permissions); });
  permissions->setProperty("Tag", Page_Permissions);
  permissions->setVisible(Kt_data_01::DB_Permissions);
  separator(Tools1, "N3");
  ChangePassword1 = add(Tools1, "ChangePassword1", tr("Change Password..."),
                        tr("Allows you to change your password to access this Plexidex Database"),
                        KTAccess::Change_Password);
  ChangePassword1->setVisible(false);
  separator(Tools1, "N4");
  QAction* search = add(Tools1, "Search1", tr("&Search..."), tr("Allows the Address Book to be Searched"),
                        [this] { Search_Calendar(); });
  search->setIcon(EnabledIcons.Icon(0));
  search->setShortcut(Qt::Key_F3);
}

void TCalendar_HomePage_Frm::Connect_Labels() {
  connect(ui->CalendarEvent, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::New_Event);
  connect(ui->Task, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::New_Task);
  connect(ui->SearchCalendar, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::Search_Calendar);
  for (TWebLabel* label : {ui->Daily, ui->Weekly, ui->Monthly, ui->AllEvents, ui->Permissions}) {
    const int index = label->property("Tag").toInt();
    connect(label, &TWebLabel::Clicked, this, [this, index] { Show_Page(index); });
    if (const TView_Entry* view = View_Of(index)) label->setEnabled(view->Display != nullptr);
  }
}

void TCalendar_HomePage_Frm::Set_Keys(const std::string& node_key, const std::string& owner_key) {
  NodeKey = node_key;
  OwnerKey = owner_key;
}

void TCalendar_HomePage_Frm::DoRefresh() {
  Show_Page(static_cast<int>(Kt_util_01::Read_Integer("General", "Calendar View", Page_Day)));
  read_only = true;
  try {
    read_only = !Kt_data_01::Access_Allowed(OwnerKey, Kt_data_01::Access_Update);
  } catch (...) {
    Kt_data_01::FailRead("fm_Calendar_HomePage:DoRefresh [KT_Rights/KT_Users]");
  }
}

void TCalendar_HomePage_Frm::Show_Page(int Index) {
  const TView_Entry* view = View_Of(Index);
  if (view && !view->Display) {
    Show_View(Page_Day);
  } else if (view) {
    if (Show_View(Index)) Kt_util_01::Write_Integer("General", "Calendar View", Index);
  } else if (Index == Page_Permissions) {
    Show_Permissions_Page();
  } else {
    Close_View();
  }
}

bool TCalendar_HomePage_Frm::Show_View(int Index) {
  if (!View_Of(Index)->Display(ui->SetupPanel, current_view, NodeKey, OwnerKey, true)) return false;
  if (auto* shown_view = current_view.As<TCalendar_View>()) {
    for (const TView_Entry& view : Views) shown_view->Set_View_Available(view.Index, view.Display != nullptr);
  }
  return true;
}

void TCalendar_HomePage_Frm::Show_Permissions_Page() {
  if (!KTAccess::Display_Permissions_Page(ui->SetupPanel, current_view, false, NodeKey, OwnerKey, 0, false))
    return;
  auto* page = current_view.As<KTAccess::TPermissions_Page>();
  page->Set_Title(" Access Permissions for Calendar");
  page->Show_Explanation();
}

void TCalendar_HomePage_Frm::Close_View() {
  if (TForm* view = current_view.Get()) view->Close_Form();
}

bool TCalendar_HomePage_Frm::Save_Data() {
  TForm* view = current_view.Get();
  return !view || view->Ask_Close();
}

void TCalendar_HomePage_Frm::New_Event() {
  if (read_only) return Kt_util_01::Sound(5);
  const QPointer<TCalendar_HomePage_Frm> alive = this;
  // Copied: the page may be shown for another book while the editor is open.
  const std::string node = NodeKey, owner = OwnerKey;
  Reminder_Properties({}, owner, node, {}, false);
  if (alive && !Is_Closed()) DoRefresh();
}

void TCalendar_HomePage_Frm::New_Task() {
  const QPointer<TCalendar_HomePage_Frm> alive = this;
  const std::string node = NodeKey;
  if (Task_Properties({}, {}, node, {}, false) && alive)
    Send_Message(current_view.Get(), umDateChanged, 0, 0);
}

void TCalendar_HomePage_Frm::Search_Calendar() {
  Post_Message(Get_ParentForm(this), umDisplayForm, Host_Page_Calendar_Search, 0);
}

void TCalendar_HomePage_Frm::Tools1Click() {
  Administration1->setVisible(true);
  ChangePassword1->setVisible(!NodeKey.empty() && Kt_data_01::DB_Secure);
}

void TCalendar_HomePage_Frm::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umAddContact:
      Post_Message(Get_ParentForm(this), umAddContact, 0, message.LParam);
      break;
    case umRefreshDisplay:
      DoRefresh();
      show();
      break;
    case umSelectNode:
      DoRefresh();
      break;
    case umDisplayForm:
      Show_Page(static_cast<int>(message.WParam));
      break;
    case umAddContactEvent:
      if (message.LParam == 1) {
        New_Task();
      } else {
        New_Event();
      }
      break;
    case umGetFormName:
      if (TForm* view = current_view.Get()) {
        Send_Message(view, umGetFormName, 0, message.LParam);
      } else {
        qstrcpy(reinterpret_cast<char*>(message.LParam), "Error");
      }
      break;
    default:
      break;
  }
}

void TCalendar_HomePage_Frm::FormActivate() {
  Merge_Menu(this, {Tools1});
  if (ToolBar1) ToolBar1->show();
}

void TCalendar_HomePage_Frm::FormDeactivate() {
  Unmerge_Menu(this);
  if (ToolBar1) ToolBar1->hide();
}

bool TCalendar_HomePage_Frm::FormCloseQuery() {
  Save_Data();
  return true;
}

void TCalendar_HomePage_Frm::FormClose() {
  Save_Data();
  Close_View();
  if (ToolBar1) ToolBar1->hide();
}

bool Display_Calendar_Home_Page(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, QWidget* ToolPanel) {
  Tool_Panel() = ToolPanel;
  auto* page = Form.Reuse_Or_Replace<TCalendar_HomePage_Frm>();
  if (!page) return false;
  Embed_Page(page, Parent);
  page->Set_Keys(NodeKey, OwnerKey);
  page->show();
  page->DoRefresh();
  return true;
}

}  // namespace KTReminds
