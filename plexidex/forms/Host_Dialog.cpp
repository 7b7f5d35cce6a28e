#include "Host_Dialog.h"

#include <QLabel>
#include <QVBoxLayout>

#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_forms;

THost_Dialog::THost_Dialog(const QString& title, QWidget* parent)
    : TDialog_Form(parent),
      form(new QFormLayout),
      buttons(new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel)) {
  setWindowTitle(title);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(form);
  layout->addStretch();
  form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  connect(buttons, &QDialogButtonBox::accepted, this, &THost_Dialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &THost_Dialog::Cancel_Form);
}

void THost_Dialog::Finish() {
  // Last, so that Tab comes to them behind the fields.
  layout()->addWidget(buttons);
  Initialise_Form(this);
  CentreForm(this);
}

void THost_Dialog::accept() {
  if (Save()) QDialog::accept();
}

bool THost_Dialog::Refuse(QLineEdit* input, const std::string& why) {
  Kt_util_01::Raise_Error(From_Qt(windowTitle()), why);
  input->setFocus();
  input->selectAll();
  return false;
}

QLabel* Plain_Label(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  label->setWordWrap(true);
  return label;
}

bool May(const std::string& owner, int level) {
  bool allowed = false;
  Kt_data_01::Read("Host_Dialog:May [KT_Contacts/KT_Rights]",
                   [&] { allowed = Kt_data_01::Access_Allowed(owner, level); });
  if (!allowed) Kt_util_01::Sound(5);
  return allowed;
}

bool Update_Host(const char* tag, const std::function<void()>& body) {
  const Kt_data_01::TUpdate_Result result = Kt_data_01::Update(tag, body);
  // The reason is told once, and not while no window is there to show it.
  if (result.End == Kt_data_01::TUpdate_Result::TEnd::Refused)
    Kt_util_01::Raise_Error("Update Failed", "Nothing was saved: the database cannot be changed now.");
  return static_cast<bool>(result);
}

}  // namespace Plexidex
