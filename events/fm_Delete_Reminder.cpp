#include "fm_Delete_Reminder.h"

#include <QStyle>

#include "Event_Deletion.h"
#include "Kt_util_01.h"
#include "ui_fm_Delete_Reminder.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::Sound;

TDelete_Reminder_Frm::TDelete_Reminder_Frm(const std::string& key, QWidget* parent)
    : TDialog_Form(parent),
      ui(std::make_unique<Ui::Delete_Reminder_Frm>()),
      occurrence_key(key),
      open_mode(false) {
  ui->setupUi(this);
  Set_Up();
}

TDelete_Reminder_Frm::TDelete_Reminder_Frm(QWidget* parent)
    : TDialog_Form(parent), ui(std::make_unique<Ui::Delete_Reminder_Frm>()), open_mode(true) {
  ui->setupUi(this);
  setWindowTitle(tr("Open Recurring Event"));
  ui->Label2->setText(
      tr("This Event is part of a Recurring Set. Do you wish to open just this event or the whole set?"));
  ui->RadioButton1->setText(tr("Open all Events in the Set"));
  ui->RadioButton2->setText(tr("Open just this Event"));
  ui->Label1->hide();
  Set_Up();
}

TDelete_Reminder_Frm::~TDelete_Reminder_Frm() = default;

void TDelete_Reminder_Frm::Set_Up() {
  constexpr int client_width = 318;
  const int icon = style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, this);
  const QMargins around = ui->Whole->contentsMargins();
  const int text_width = client_width - around.left() - around.right() - icon - ui->Top->spacing();
  for (QLabel* label : {ui->Label1, ui->Label2}) label->setFixedWidth(text_width);
  ui->Image1->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxQuestion, nullptr, this).pixmap(icon));
  ui->Image1->setAccessibleName(tr("Question"));
  Initialise_Form(this);
  Sound(2);
  for (QRadioButton* button : {ui->RadioButton1, ui->RadioButton2}) {
    connect(button, &QRadioButton::clicked, this, [this](bool checked) {
      if (Was_Shown() && checked) Sound(3);
    });
  }
  connect(ui->Button1, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui->Button2, &QPushButton::clicked, this, &TDelete_Reminder_Frm::Button2Click);
}

bool TDelete_Reminder_Frm::Whole_Set() const {
  return ui->RadioButton1->isChecked();
}

void TDelete_Reminder_Frm::FormShow() {
  if (open_mode) {
    ui->RadioButton2->setFocus();
    return;
  }
  const TDeletion_Question question = Ask_About_Deletion(occurrence_key).value_or(TDeletion_Question());
  if (question.Is_Task) {
    ui->Label2->setText(tr("Please confirm you wish to delete the selected Task from the address book"));
  }
  for (QWidget* control : {static_cast<QWidget*>(ui->RadioButton1), static_cast<QWidget*>(ui->RadioButton2),
                           static_cast<QWidget*>(ui->Label1)}) {
    control->setVisible(question.Is_Recurring);
  }
  ui->Label2->setVisible(!question.Is_Recurring);
  (question.Is_Recurring ? static_cast<QWidget*>(ui->RadioButton2) : ui->Button2)->setFocus();
  CentreForm(this);
}

void TDelete_Reminder_Frm::Button2Click() {
  // Closes with OK also after a failure, which has been reported.
  if (!open_mode) Delete_Occurrence(occurrence_key, !ui->RadioButton2->isChecked());
  accept();
}

bool Delete_Reminder(const std::string& OccurrenceKey) {
  TDelete_Reminder_Frm form(OccurrenceKey, Active_Window());
  CentreForm(&form);
  return form.exec() == QDialog::Accepted;
}

bool Update_Recurring(bool& OpenWholeSet) {
  TDelete_Reminder_Frm form(Active_Window());
  CentreForm(&form);
  if (form.exec() != QDialog::Accepted) return false;
  OpenWholeSet = form.Whole_Set();
  return true;
}

}  // namespace KTReminds
