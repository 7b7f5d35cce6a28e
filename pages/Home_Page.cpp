#include "Home_Page.h"

#include <QAction>
#include <QBoxLayout>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "KTAccess.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

QPointer<QWidget>& Tool_Panel() {
  static QPointer<QWidget> panel;
  return panel;
}

void Place_First(QToolBar* bar, QWidget* panel) {
  bar->setParent(panel);
  QLayout* layout = panel->layout();
  if (!layout) {
    layout = new QHBoxLayout(panel);
    layout->setContentsMargins(0, 0, 0, 0);
  }
  if (auto* box = qobject_cast<QBoxLayout*>(layout)) {
    box->insertWidget(0, bar);
  } else {
    layout->addWidget(bar);
  }
}

}  // namespace

THome_Page::THome_Page(const THome_Texts& texts) : texts(texts), EnabledIcons(texts.Images) {}

THome_Page::~THome_Page() {
  delete tool_bar;
}

void THome_Page::Set_Tool_Panel(QWidget* panel) {
  Tool_Panel() = panel;
}

void THome_Page::Set_Up(const TControls& own_controls) {
  controls = own_controls;
  Make_Tool_Bar();
  Initialise_Form(this);
  if (QWidget* panel = Tool_Panel()) {
    Place_First(tool_bar, panel);
    tool_bar->show();
  } else {
    delete tool_bar;
  }
  Make_Menu();
  Merge_Menu(this, {Tools1});
  controls.Navigation_Bar->setVisible(tool_bar && Kt_util_01::Read_Bool("General", "Navigation Bars", true));
  for (QWidget* control : controls.Permissions) control->setVisible(Kt_data_01::DB_Permissions);
}

void THome_Page::Make_Tool_Bar() {
  tool_bar = new QToolBar(this);
  tool_bar->setObjectName(QString::fromLatin1(texts.Tool_Bar));
  tool_bar->setIconSize({TImage_List::Size, TImage_List::Size});
  auto* search = new QToolButton(tool_bar);
  search->setObjectName(QStringLiteral("ToolButton5"));
  search->setToolTip(texts.Search_Hint);
  search->setIcon(EnabledIcons.Icon(0));
  search->setAutoRaise(true);
  search->setFocusPolicy(Qt::TabFocus);
  tool_bar->addWidget(search);
  connect(search, &QToolButton::clicked, this, &THome_Page::Search);
}

void THome_Page::Make_Menu() {
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
  connect(Tools1, &QMenu::aboutToShow, this, &THome_Page::Tools1Click);

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
  add(administration, "DatabseSecurity1", tr("&Database Security"),
      tr("Allows the Database Security scheme to be configured"), host_command(Settings_Security));
  add(administration, "UserManager1", tr("&User Manager"),
      tr("Allows the Database User Accounts to be managed"), host_command(Settings_Users));
  separator(Tools1, "N1");
  QAction* permissions = add(Tools1, "CalendarPermissions1", texts.Permissions, texts.Permissions_Hint,
                             [this] { Show_Page(Page_Permissions); });
  permissions->setProperty("Tag", Page_Permissions);
  permissions->setVisible(Kt_data_01::DB_Permissions);
  separator(Tools1, "N3");
  ChangePassword1 = add(Tools1, "ChangePassword1", tr("Change Password..."),
                        tr("Allows you to change your password to access this Plexidex Database"),
                        KTAccess::Change_Password);
  ChangePassword1->setVisible(false);
  separator(Tools1, "N4");
  QAction* search = add(Tools1, "Search1", tr("&Search..."), tr("Allows the Address Book to be Searched"),
                        [this] { Search(); });
  search->setIcon(EnabledIcons.Icon(0));
  search->setShortcut(Qt::Key_F3);
}

void THome_Page::Set_Keys(const std::string& node_key, const std::string& owner_key) {
  NodeKey = node_key;
  OwnerKey = owner_key;
}

void THome_Page::Show_Page(int Index) {
  if (Index == Page_Permissions) {
    Show_Permissions_Page();
  } else {
    Close_Current();
  }
}

void THome_Page::Show_Permissions_Page() {
  if (!KTAccess::Display_Permissions_Page(controls.Setup_Panel, current, false, NodeKey, OwnerKey, 0, false))
    return;
  auto* page = current.As<KTAccess::TPermissions_Page>();
  page->Set_Title(texts.Permissions_Title);
  page->Show_Explanation();
}

void THome_Page::Close_Current() {
  if (TForm* shown = Current()) shown->Close_Form();
}

bool THome_Page::Save_Data() {
  TForm* shown = Current();
  return !shown || shown->Ask_Close();
}

void THome_Page::Search() {
  Post_Message(Get_ParentForm(this), umDisplayForm, texts.Search_Page, 0);
}

bool THome_Page::Is_Read_Only() const {
  return !Kt_data_01::Read("Home_Page:Is_Read_Only [KT_Rights/KT_Users]", [this] {
            return Kt_data_01::Access_Allowed(OwnerKey, Kt_data_01::Access_Update);
          }).value_or(false);
}

void THome_Page::Tools1Click() {
  Administration1->setVisible(true);
  ChangePassword1->setVisible(!NodeKey.empty() && Kt_data_01::DB_Secure);
}

void THome_Page::Handle_Message(const TMessage& message) {
  if (message.Number() == umDisplayForm) Show_Page(static_cast<int>(message.WParam));
  if (message.Number() == umSetActiveControl && Current())
    Send_Message(Current(), umSetActiveControl, 0, message.LParam);
  if (message.Number() == umAddContact) Post_Message(Get_ParentForm(this), umAddContact, 0, message.LParam);
  if (message.Number() != umGetFormName) return;
  if (TForm* shown = Current()) {
    Send_Message(shown, umGetFormName, 0, message.LParam);
  } else if (texts.Empty_Name) {
    Answer_Form_Name(texts.Empty_Name, message);
  } else {
    Copy_Form_Name(*this, message);
  }
}

void THome_Page::FormActivate() {
  Merge_Menu(this, {Tools1});
  if (tool_bar) tool_bar->show();
}

void THome_Page::FormDeactivate() {
  Unmerge_Menu(this);
  if (tool_bar) tool_bar->hide();
}

bool THome_Page::FormCloseQuery() {
  Save_Data();
  return true;
}

void THome_Page::FormClose() {
  Save_Data();
  Close_Current();
  if (tool_bar) tool_bar->hide();
}

}  // namespace KTReminds
