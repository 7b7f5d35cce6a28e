// What the main window has to do with users: who is logged in, and the commands about it.

#include <QApplication>
#include <QMenu>

#include "Current_Search.h"
#include "Database.h"
#include "KTAccess.h"
#include "KTReminds.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Login.h"
#include "Login_Dialog.h"
#include "Main_Window.h"
#include "Navigation_Tree.h"
#include "Permissions_Dialog.h"
#include "User_Dialogs.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

void TMain_Window::Add_User_Commands(QMenu* file) {
  const auto add = [this](QMenu* menu, const QString& text, const QString& hint, auto run) {
    QAction* action = menu->addAction(text);
    action->setStatusTip(hint);
    connect(action, &QAction::triggered, this, run);
    return action;
  };
  QAction* log_in = add(file, tr("&Log In as Another User..."), tr("Lets somebody else use the database"),
                        [this] { Log_In_As_Another(); });
  QMenu* users = file->addMenu(tr("&Users and Security"));
  QAction* password = add(users, tr("&Change Password..."),
                          tr("Allows you to change your password to access this Plexidex Database"),
                          KTAccess::Change_Password);
  users->addSeparator();
  add(users, tr("&Users..."), tr("Allows the Database User Accounts to be managed"),
      [this] { Manage_Users(); });
  add(users, tr("Database &Security..."), tr("Allows the Database Security scheme to be configured"),
      [this] { Set_Up_Security(); });
  const auto show = [log_in, password] {
    log_in->setVisible(DB_Permissions);
    password->setVisible(DB_Secure);
  };
  show();
  connect(file, &QMenu::aboutToShow, this, show);
}

QString TMain_Window::Title_Of(const std::string& book) const {
  QString title = QStringLiteral("Plexidex");
  if (!book.empty()) title.prepend(To_Qt(book) + QStringLiteral(" - "));
  if (DB_Permissions && Has_User())
    title += QStringLiteral(" - ") + To_Qt(Get_UserName(Kt_util_01::User_Key()));
  return title;
}

TMain_Window::TSession TMain_Window::Session() {
  return {DB_Permissions, DB_Secure, Kt_util_01::User_Key()};
}

bool TMain_Window::Close_Page() {
  TForm* shown = page.Get();
  return !shown || shown->Close_Form();
}

void TMain_Window::Start_Session() {
  Forget_Found();
  KTReminds::Clear_Search();
  KTReminds::Remove_Abandoned_Events();
  session = Session();
  Refresh();
  emit User_Changed();
}

// What the user was shown goes with the user.
void TMain_Window::End_Session() {
  if (!Has_User() && session == Session()) return;
  if (!Close_Page()) return;
  Kt_util_01::Set_User_Key({});
  session = Session();
  Forget_Found();
  Refresh();
  emit User_Changed();
}

bool TMain_Window::Has_User() {
  return !DB_Permissions || !Kt_util_01::User_Key().empty();
}

bool TMain_Window::Is_Free() {
  QWidget* open = QApplication::activeModalWidget();
  if (!open) return true;
  Kt_util_01::Raise_Info("Plexidex", "Close \"" + From_Qt(open->windowTitle()) + "\" first.");
  return false;
}

void TMain_Window::Log_In_As_Another() {
  if (!Is_Free()) return;
  if (!Close_Page()) return;
  Log_In_Again(this) ? Start_Session() : Refresh();
}

void TMain_Window::Manage_Users() {
  Edit_Users(this);
  Look_At_Session(true, true);
}

void TMain_Window::Set_Up_Security() {
  Edit_Security(this);
  Look_At_Session(true, true);
}

void TMain_Window::Edit_Selected_Permissions() {
  const TNode node = tree->Current();
  switch (node.Kind) {
    case TNode_Kind::Calendar:
    case TNode_Kind::Tasks:
      Edit_Permissions(this, node.Book, node.Calendar, KTAccess::Kind_Calendar);
      break;
    case TNode_Kind::Contact:
      Edit_Permissions(this, node.Book, node.Contact, KTAccess::Kind_Contact);
      break;
    case TNode_Kind::Folder:
      Edit_Permissions(this, node.Book, node.Folder, KTAccess::Kind_Folder);
      break;
    default:
      Edit_Permissions(this, node.Book, node.Book, KTAccess::Kind_Book);
  }
  Reload_Tree();
}

bool TMain_Window::Look_At_Session(bool in_front, bool own_change) {
  if (!Rows_May_Change()) return Has_User();
  const auto look = [] {
    // Another program may have restored a backup of somebody else's.
    if (!DB_Permissions && Kt_util_01::User_Key() != Database_Owner())
      Kt_util_01::Set_User_Key(Database_Owner());
    return Is_Known_User();
  };
  std::optional<bool> known;
  if (in_front) {
    known = Read("Main_Users:Look_At_Session [KT_Users/KT_Settings]", look);
  } else {
    try {
      known = look();
    } catch (const std::exception&) {
      // Nobody looks, and a dialog would take the keyboard. That reminders cannot be read is said besides.
    }
  }
  if (!known) return Has_User();
  // Whoever was here before somebody else asked for passwords has given none.
  const bool is_new_to_it = !own_change && DB_Secure && !session.Secure;
  if (*known && !is_new_to_it) {
    // A page looks at what users may do when it is made.
    if (!in_front || session == Session() || !Close_Page()) return true;
    if (DB_Permissions && !session.Permissions)
      Read("Main_Users:Look_At_Session [KT_Settings]", Remember_User);
    session = Session();
    Refresh();
    return true;
  }
  const bool was_somebody = Has_User();
  End_Session();
  if (!in_front) {
    if (was_somebody && !Has_User())
      Kt_util_01::Raise_Notice(
          "The users of this database have changed: no reminder goes off until you say who you are.");
    return false;
  }
  Kt_util_01::Raise_Info(
      "Users", DB_Secure ? "The users of this database, or its passwords, have changed; log in to go on."
                         : "The users of this database have changed; say who you are.");
  const bool entered = Log_In_Again(this);
  entered ? Start_Session() : Quit();
  return entered;
}

}  // namespace Plexidex
