#include "Login_Dialog.h"

#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <algorithm>

#include "Database.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Login.h"
#include "Password_Dialogs.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// Who it was last in this database, wherever its file is moved.
std::string Remembered_User() {
  return Kt_util_01::Read_String("Users", Database_Identity(), "");
}

QString Database_Name() {
  return QDir::toNativeSeparators(To_Qt(Shared_Database().Path()));
}

class TLogin_Dialog : public THost_Dialog {
 public:
  TLogin_Dialog(const std::string& user, const QString& leave, QWidget* parent)
      : THost_Dialog(tr("Log In"), parent),
        name(new QLineEdit(To_Qt(user))),
        password(New_Password_Input("Password")),
        message(Plain_Label({})) {
    setObjectName(QStringLiteral("Login_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    message->setObjectName(QStringLiteral("Message"));
    Form()->addRow(
        Plain_Label(tr("Who are you? This database asks for a password:\n%1").arg(Database_Name())));
    Form()->addRow(tr("&Name:"), name);
    Form()->addRow(tr("&Password:"), password);
    Form()->addRow(message);
    constexpr int lines = 2;
    message->setMinimumHeight(fontMetrics().lineSpacing() * lines);
    Buttons()->button(QDialogButtonBox::Ok)->setText(tr("&Log In"));
    Buttons()->button(QDialogButtonBox::Cancel)->setText(leave);
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    constexpr int second = 1000;
    tick.setInterval(second);
    connect(&tick, &QTimer::timeout, this, [this] {
      --refused.Seconds;
      Show_Refusal();
    });
    // The time is that of one name.
    connect(name, &QLineEdit::textEdited, this, [this] {
      refused = {TLogin::TEnd::Too_Early, 0};
      Show_Refusal();
    });
    Finish();
    if (!user.empty()) password->setFocus();
  }

 protected:
  bool Save() override {
    if (tick.isActive()) return false;
    const TSecret typed = Take_Secret(password);
    if (!Run_With_Hourglass("Login_Dialog:Save [KT_Users/KT_Settings]",
                            [&] { refused = Log_In(From_Qt(name->text().simplified()), typed); }))
      return false;
    Show_Refusal();
    password->setFocus();
    return static_cast<bool>(refused);
  }

 private:
  // Says how long to wait, and lets the time pass.
  void Show_Refusal() {
    constexpr const char* wrong = "The name or the password is wrong.";
    const bool waits = refused.Seconds > 0;
    const bool is_wrong = refused.End == TLogin::TEnd::Wrong;
    message->setText(To_Qt(waits || refused.End == TLogin::TEnd::Not_Counted ? Login_Fault(refused, wrong)
                           : is_wrong                                        ? wrong
                                                                             : ""));
    Buttons()->button(QDialogButtonBox::Ok)->setEnabled(!waits);
    waits ? tick.start() : tick.stop();
  }

  QLineEdit *name, *password;
  QLabel* message;
  TLogin refused;
  QTimer tick;
};

class TChoose_User : public THost_Dialog {
 public:
  TChoose_User(const std::vector<TAccount>& accounts, const std::string& user, const QString& leave,
               QWidget* parent)
      : THost_Dialog(tr("Choose User"), parent), users(new QComboBox) {
    setObjectName(QStringLiteral("Choose_User"));
    users->setObjectName(QStringLiteral("Users"));
    for (const TAccount& one : accounts) users->addItem(To_Qt(one.Name), To_Qt(one.Key));
    users->setCurrentIndex(std::max(0, users->findData(To_Qt(user))));
    Form()->addRow(Plain_Label(tr("Who are you? This database has several users:\n%1").arg(Database_Name())));
    Form()->addRow(tr("&User:"), users);
    Buttons()->button(QDialogButtonBox::Cancel)->setText(leave);
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    Finish();
  }

 protected:
  bool Save() override {
    bool entered = false;
    if (!Read("Login_Dialog:Save [KT_Users]",
              [&] { entered = Enter_As(From_Qt(users->currentData().toString())); }))
      return false;
    if (!entered)
      Kt_util_01::Raise_Error("Choose User", "The users have been changed meanwhile; choose again.");
    return entered;
  }

 private:
  QComboBox* users;
};

bool Ask(QWidget* window, const std::string& user, const QString& leave) {
  const auto accounts = List_Accounts();
  const bool entered = DB_Secure
                           ? TLogin_Dialog(Account_Of(user).Name, leave, window).exec() == QDialog::Accepted
                           : TChoose_User(accounts, user, leave, window).exec() == QDialog::Accepted;
  if (entered) Remember_User();
  return entered;
}

}  // namespace

void Remember_User() {
  Kt_util_01::Write_String("Users", Database_Identity(), Kt_util_01::User_Key());
}

bool Begin_Session(QWidget* window, const std::string& name) {
  return Read("Login_Dialog:Begin_Session [KT_Users/KT_Settings]",
              [&] {
                Follow_Users();
                if (!DB_Permissions) {
                  Kt_util_01::Set_User_Key(Database_Owner());
                  return true;
                }
                const auto accounts = List_Accounts();
                std::string user = name.empty() ? Remembered_User() : Find_Account(name).Key;
                if (name.empty() && Account_Of(user).Key.empty() && accounts.size() == 1)
                  user = accounts.front().Key;
                if (Enter_As(user)) {
                  Remember_User();
                  return true;
                }
                return Ask(window, user, window ? QObject::tr("Cancel") : QObject::tr("&Quit"));
              })
      .value_or(false);
}

bool Log_In_Again(QWidget* window) {
  return Read("Login_Dialog:Log_In_Again [KT_Users/KT_Settings]",
              [&] {
                Follow_Users();
                const std::string& user = Kt_util_01::User_Key();
                return Ask(window, user.empty() ? Remembered_User() : user, QObject::tr("Cancel"));
              })
      .value_or(false);
}

}  // namespace Plexidex
