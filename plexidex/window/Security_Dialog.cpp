#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QVBoxLayout>

#include "Host_Dialog.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Rights.h"
#include "User_Dialogs.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

class TSecurity_Dialog : public THost_Dialog {
 public:
  explicit TSecurity_Dialog(QWidget* parent)
      : THost_Dialog(tr("Database Security"), parent),
        secure(new QCheckBox(tr("&Ask for passwords when the database is opened"))) {
    setObjectName(QStringLiteral("Security_Dialog"));
    secure->setObjectName(QStringLiteral("Secure"));
    secure->setChecked(DB_Secure);
    Form()->addRow(secure);
    auto* group = new QGroupBox(tr("Where no other permissions are set, every user may"));
    auto* boxes = new QVBoxLayout(group);
    const TRights rights = Find_Rights(Whole_Database, Global_User).value_or(TRights{});
    for (auto& [box, level, name, caption] : levels) {
      box = new QCheckBox(caption);
      box->setObjectName(QString::fromLatin1(name));
      box->setChecked(rights.*level || !DB_Permissions);
      boxes->addWidget(box);
    }
    Form()->addRow(group);
    for (QWidget* control : {static_cast<QWidget*>(secure), static_cast<QWidget*>(group)})
      control->setEnabled(DB_Permissions);
    if (!DB_Permissions)
      Form()->addRow(Plain_Label(tr("There are no users yet. Add them first, in \"Users\".")));
    Form()->addRow(Plain_Label(
        tr("This keeps the users of this program apart, from what is private and from what others may not "
           "see or "
           "change. It protects from nobody who can read the database's file itself: that file is not "
           "encrypted. "
           "Who must not read it needs to be kept out by the computer's own accounts.")));
    setMinimumWidth(fontMetrics().averageCharWidth() * 65);
    Finish();
  }

 protected:
  bool Save() override {
    if (!DB_Permissions) return true;
    TRights rights;
    for (const auto& [box, level, name, caption] : levels) rights.*level = box->isChecked();
    std::string fault;
    const bool saved = Update_Host("Security_Dialog:Save [KT_Settings/KT_Rights]", [&] {
      fault = Set_Secure(secure->isChecked());
      if (!fault.empty()) throw EAlready_Reported();
      Set_Rights(Whole_Database, Global_User, rights);
    });
    if (!fault.empty()) Kt_util_01::Raise_Error("Database Security", fault);
    if (!saved) return false;
    Read("Security_Dialog:Save [KT_Users]", [&] { Tell_Who_Cannot_Log_In(); });
    return true;
  }

 private:
  struct TLevel {
    QCheckBox* Box;
    bool TRights::*Level;
    const char* Name;
    QString Caption;
  };

  void Tell_Who_Cannot_Log_In() const {
    const bool before = DB_Secure;
    Follow_Users();
    if (before || !DB_Secure) return;
    std::string names;
    for (const TAccount& one : List_Accounts()) {
      if (!one.Has_Password) names += (names.empty() ? "\"" : ", \"") + one.Name + '"';
    }
    if (!names.empty())
      Kt_util_01::Raise_Info(
          "Database Security",
          "Until they are given a password in \"Users\", these cannot log in: " + names + ".");
  }

  QCheckBox* secure;
  TLevel levels[4] = {{nullptr, &TRights::See, "See", tr("&see contacts, events and tasks")},
                      {nullptr, &TRights::Create, "Create", tr("&create entries, contacts and folders")},
                      {nullptr, &TRights::Update, "Update", tr("c&hange what is there")},
                      {nullptr, &TRights::Delete, "Delete", tr("&delete")}};
};

}  // namespace

void Edit_Security(QWidget* window) {
  if (!May_Administer("Database Security")) return;
  Read("Security_Dialog:Edit_Security [KT_Rights]", [&] { TSecurity_Dialog(window).exec(); });
}

}  // namespace Plexidex
