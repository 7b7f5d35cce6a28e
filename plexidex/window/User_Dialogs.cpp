#include "User_Dialogs.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPushButton>
#include <algorithm>

#include "Kt_update.h"
#include "Kt_util_01.h"
#include "List_Dialog.h"
#include "Password_Dialogs.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

// Runs changes of users until one of them says why it cannot be; then none of them is kept. False when
// nothing was changed; `fault` is "" when the user has been told why.
bool Change_Users(std::string& fault, const std::function<std::string()>& change) {
  fault.clear();
  const bool done = Update_Host("User_Dialogs:Change_Users [KT_Users/KT_Rights/KT_Settings]", [&] {
    fault = change();
    if (!fault.empty()) throw EAlready_Reported();
  });
  if (done) Read("User_Dialogs:Change_Users", Follow_Users);
  return done;
}

class TUser_Dialog : public THost_Dialog {
 public:
  TUser_Dialog(const TAccount& account, bool first, QWidget* parent)
      : THost_Dialog(account.Key.empty() ? tr("New User") : tr("User"), parent),
        account(account),
        name(new QLineEdit(To_Qt(account.Name))),
        administrator(new QCheckBox(tr("Is an &administrator, who sets up users and security"))),
        password(With_Name()) {
    setObjectName(QStringLiteral("User_Dialog"));
    name->setObjectName(QStringLiteral("Name"));
    administrator->setObjectName(QStringLiteral("Administrator"));
    administrator->setChecked(account.Administrator || first);
    administrator->setEnabled(!first);
    Form()->addRow(administrator);
    Form()->addRow(Plain_Label(
        first ? tr("The first user is an administrator and owns all that has been written so far.")
        : account.Has_Password
            ? tr("Without a new password the present one stays.")
            : tr("Without a password this user cannot log in where the database asks for one.")));
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    Finish();
    name->setFocus();
  }

  const std::string& Key() const { return account.Key; }

 protected:
  bool Save() override {
    const std::string text = From_Qt(name->text().simplified());
    if (text.empty()) return Refuse(name, "A user needs a name.");
    std::string fault;
    // What was typed is gone from its fields when only the name is refused.
    if (!password.Is_Empty()) fault = password.Take(hash);
    if (!fault.empty()) return Refuse(password.Input(), fault);
    const bool may_do_all = administrator->isChecked();
    std::string key = account.Key;
    if (!Change_Users(fault, [&] {
          std::string why = key.empty() ? Add_User(text, may_do_all, key) : Rename_User(key, text);
          if (why.empty()) why = Set_Administrator(key, may_do_all);
          if (why.empty() && !hash.empty()) why = Set_Password(key, hash);
          return why;
        }))
      return !fault.empty() && Refuse(name, fault);
    account.Key = key;
    return true;
  }

 private:
  // The name stands above the passwords.
  QFormLayout* With_Name() {
    Form()->addRow(tr("&Name:"), name);
    return Form();
  }

  TAccount account;
  QLineEdit* name;
  QCheckBox* administrator;
  TNew_Password password;
  std::string hash;  // of the password that was typed last
};

class TRemove_User : public THost_Dialog {
 public:
  TRemove_User(const TAccount& removed, const std::vector<TAccount>& accounts, QWidget* parent)
      : THost_Dialog(tr("Remove User"), parent), removed(removed), heirs(new QComboBox) {
    setObjectName(QStringLiteral("Remove_User_Dialog"));
    heirs->setObjectName(QStringLiteral("Heir"));
    for (const TAccount& one : accounts) {
      if (one.Key != removed.Key) heirs->addItem(To_Qt(one.Name), To_Qt(one.Key));
    }
    heirs->setCurrentIndex(std::max(0, heirs->findData(To_Qt(Kt_util_01::User_Key()))));
    Form()->addRow(Plain_Label(tr("The contacts, events, tasks, reminders and searches of \"%1\" stay, and "
                                  "belong to somebody else from "
                                  "now on, private ones too.")
                                   .arg(To_Qt(removed.Name))));
    Form()->addRow(tr("&They go to:"), heirs);
    Buttons()->button(QDialogButtonBox::Ok)->setText(tr("&Remove"));
    setMinimumWidth(fontMetrics().averageCharWidth() * 60);
    Finish();
  }

 protected:
  bool Save() override {
    const std::string heir = From_Qt(heirs->currentData().toString());
    std::string fault;
    if (Change_Users(fault, [&] { return Remove_User(removed.Key, heir); })) return true;
    if (!fault.empty()) Kt_util_01::Raise_Error("Remove User", fault);
    return false;
  }

 private:
  const TAccount removed;
  QComboBox* heirs;
};

class TUsers_Dialog : public TList_Dialog {
 public:
  explicit TUsers_Dialog(QWidget* parent)
      : TList_Dialog(tr("Users"), tr("&Users of this database:"), QStringLiteral("User"), tr("&Edit..."),
                     parent) {
    Form()->addRow(Plain_Label(
        tr("Without users whoever opens the database may do everything in it. What users may do is set "
           "in \"Database Security\", and for single books, folders and contacts on their pages of "
           "permissions.")));
    setMinimumWidth(fontMetrics().averageCharWidth() * 65);
    TUsers_Dialog::Show_Names({});
    Finish();
  }

 protected:
  QStringList Read_Names() override {
    accounts = List_Accounts();
    QStringList names;
    for (const TAccount& one : accounts)
      names << To_Qt(one.Name) + (one.Administrator ? tr(", administrator") : QString()) +
                   (one.Has_Password ? QString() : tr(", without a password"));
    return names;
  }
  int Position_Of(const std::string& key) const override {
    const auto found =
        std::find_if(accounts.begin(), accounts.end(), [&](const TAccount& one) { return one.Key == key; });
    return found == accounts.end() ? -1 : static_cast<int>(found - accounts.begin());
  }
  std::string Add() override { return Enter({}); }
  std::string Edit(std::size_t position) override { return Enter(accounts[position]); }
  void Remove(std::size_t position) override {
    if (accounts.size() > 1) {
      TRemove_User(accounts[position], accounts, this).exec();
    } else {
      Kt_util_01::Raise_Error("Users",
                              "The last user cannot be removed: nobody is there to get what is left.");
    }
  }

 private:
  std::string Enter(const TAccount& account) {
    TUser_Dialog dialog(account, accounts.empty(), this);
    dialog.exec();
    return dialog.Key();
  }

  std::vector<TAccount> accounts;
};

}  // namespace

bool May_Administer(const std::string& caption) {
  std::string fault;
  if (!Read("User_Dialogs:May_Administer [KT_Users]", [&] { fault = Administrator_Fault(); })) return false;
  if (!fault.empty()) Kt_util_01::Raise_Error(caption, fault);
  return fault.empty();
}

void Edit_Users(QWidget* window) {
  if (!May_Administer("Users")) return;
  Read("User_Dialogs:Edit_Users [KT_Users]", [&] { TUsers_Dialog(window).exec(); });
}

}  // namespace Plexidex
