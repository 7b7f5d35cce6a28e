#include "Password_Dialogs.h"

#include <QGuiApplication>

#include "KTAccess.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Login.h"
#include "Users.h"

namespace Plexidex {

using namespace Kt_forms;
using Kt_data_01::TSecret;

namespace {

class TChange_Password : public THost_Dialog {
 public:
  explicit TChange_Password(QWidget* parent)
      : THost_Dialog(tr("Change Password"), parent),
        old(New_Password_Input("Old_Password")),
        password(With(old)) {
    setObjectName(QStringLiteral("Change_Password"));
    setMinimumWidth(fontMetrics().averageCharWidth() * 55);
    Finish();
  }

 protected:
  bool Save() override {
    std::string hash, fault = password.Take(hash);
    if (!fault.empty()) return Refuse(password.Input(), fault);
    const TSecret typed = Take_Secret(old);
    if (!Run_With_Hourglass("Password_Dialogs:Check [KT_Users]", [&] {
          fault = Login_Fault(Kt_data_01::Check_Password(typed), "The old password is wrong.");
        }))
      return false;
    if (!fault.empty()) return Refuse(old, fault);
    const bool saved = Update_Host("Password_Dialogs:Save [KT_Users]",
                                   [&] { fault = Kt_data_01::Set_Password(Kt_util_01::User_Key(), hash); });
    return saved && (fault.empty() || Refuse(old, fault));
  }

 private:
  // The old one stands above the new ones.
  QFormLayout* With(QLineEdit* input) {
    Form()->addRow(tr("&Old password:"), input);
    return Form();
  }

  QLineEdit* old;
  TNew_Password password;
};

}  // namespace

QLineEdit* New_Password_Input(const char* name) {
  auto* input = new QLineEdit;
  input->setObjectName(QString::fromLatin1(name));
  input->setEchoMode(QLineEdit::Password);
  input->setMaxLength(static_cast<int>(TSecret::Most_Bytes));
  return input;
}

TSecret Take_Secret(QLineEdit* input) {
  QString text = input->text();
  input->setText({});  // which forgets, unlike clear(), what could be undone
  QByteArray bytes = text.toUtf8();
  TSecret secret(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  Kt_data_01::Wipe(bytes.data(), static_cast<std::size_t>(bytes.size()));
  Kt_data_01::Wipe(text.data(), static_cast<std::size_t>(text.size()) * sizeof(QChar));
  return secret;
}

bool Run_With_Hourglass(const char* tag, const std::function<void()>& body) {
  QGuiApplication::setOverrideCursor(Qt::WaitCursor);
  // Nothing is reported below the hourglass.
  std::exception_ptr failed;
  try {
    body();
  } catch (...) {
    failed = std::current_exception();
  }
  QGuiApplication::restoreOverrideCursor();
  return Kt_data_01::Read(tag, [&] {
    if (failed) std::rethrow_exception(failed);
  });
}

TNew_Password::TNew_Password(QFormLayout* form)
    : password(New_Password_Input("New_Password")), again(New_Password_Input("Again")) {
  form->addRow(QObject::tr("New &password:"), password);
  form->addRow(QObject::tr("The same a&gain:"), again);
}

std::string TNew_Password::Take(std::string& hash) {
  const TSecret typed = Take_Secret(password);
  if (!(Take_Secret(again) == typed)) return "The two passwords differ; type the new one twice.";
  if (std::string fault = Kt_data_01::Password_Fault(typed); !fault.empty()) return fault;
  if (!Run_With_Hourglass("Password_Dialogs:Take", [&] { hash = Kt_data_01::Hash_Password(typed); }))
    return "The password was not changed.";
  return {};
}

}  // namespace Plexidex

namespace KTAccess {

void Change_Password() {
  Kt_data_01::Follow_Users();
  if (!Kt_data_01::DB_Secure) {
    return Kt_util_01::Raise_Info("Change Password",
                                  "This database asks for no passwords: whoever has its file may open it.");
  }
  Plexidex::TChange_Password(Kt_forms::Active_Window()).exec();
}

}  // namespace KTAccess
