#include "fm_Task.h"

#include <QSignalBlocker>

#include "Form_Controls.h"
#include "fm_Alarm_Props.h"
#include "ui_fm_Task.h"

namespace KTReminds {

using namespace Kt_forms;

TTask_Frm::TTask_Frm(TTask_Rules& rules, QWidget* parent)
    : TEditor_Form(rules, parent), rules(rules), ui(std::make_unique<Ui::Task_Frm>()) {
  ui->setupUi(this);
  for (QLineEdit* amount : {ui->BudgetBox, ui->WorkedBox}) Narrow(amount);
  // What stands in a picker's place is as high, so that nothing moves.
  for (QLabel* instead : {ui->NotStarted, ui->NotCompleted})
    instead->setMinimumHeight(ui->DateStarted->sizeHint().height());
  // In the order of the stored numbers.
  for (const char* status : {QT_TR_NOOP("Not Started"), QT_TR_NOOP("In Progress"), QT_TR_NOOP("Completed"),
                             QT_TR_NOOP("Pending"), QT_TR_NOOP("Postponed"), QT_TR_NOOP("Cancelled")})
    ui->StatusBox->addItem(tr(status));
  Set_Up_Editor({ui->Edit1, ui->Edit2, ui->PriorityBox, ui->ContactPanel, ui->ContactBtn, ui->AlarmCheck,
                 ui->ConfigureBtn, ui->PrivateBox, ui->PageControl1, ui->OKBtn, ui->CancelBtn},
                {tr("&Restrict viewing of Task Details to the Owner"),
                 tr("&Allow any User with Read Access to view Task Details"),
                 tr("When Completed record Task in Contact's Journal")});
  Load();
  Connect();
  Finish_Editor();
}

TTask_Frm::~TTask_Frm() = default;

void TTask_Frm::Load() {
  setWindowTitle(rules.Is_New() ? tr("Create New Task") : tr("Edit Task"));
  ui->EventDate->Set_Day(rules.Day);
  ui->StartDate->Set_Day(rules.Start_Day);
  ui->BudgetBox->setText(To_Qt(rules.Budget_Text));
  ui->WorkedBox->setText(To_Qt(rules.Worked_Text));
  ui->AlarmDate->Set_Day(rules.Alarm_Day);
  ui->AlarmTime->setText(To_Qt(rules.Alarm_Time_Text));
  Show_State();
}

void TTask_Frm::Connect() {
  connect(ui->EventDate, &QDateEdit::dateChanged, this, &TTask_Frm::EventDateChange);
  connect(ui->StatusBox, &QComboBox::currentIndexChanged, this, &TTask_Frm::StatusChange);
  connect(ui->PercentBox, &TUpDown_Edit::Text_Edited, this, &TTask_Frm::PercentageChange);
  for (QLineEdit* amount : {ui->BudgetBox, ui->WorkedBox})
    connect(amount, &QLineEdit::textEdited, this, &TTask_Frm::BudgetChange);
}

// Shows the controls that depend on each other; this is not a change by the user.
void TTask_Frm::Show_State() {
  const QSignalBlocker silent(ui->StatusBox);
  ui->StatusBox->setCurrentIndex(static_cast<int>(rules.Status));
  ui->PercentBox->Set_Text(To_Qt(rules.Percentage_Text));
  ui->PercentBox->setEnabled(rules.Percentage_Enabled());
  ui->RemainingBox->setText(To_Qt(rules.Remaining_Text()));
  if (rules.Started > 0) ui->DateStarted->Set_Day(rules.Started);
  if (rules.Completed > 0) ui->DateCompleted->Set_Day(rules.Completed);
  ui->DateStarted->setVisible(rules.Started_Visible());
  ui->NotStarted->setVisible(!rules.Started_Visible());
  ui->DateCompleted->setVisible(rules.Completed_Visible());
  ui->NotCompleted->setVisible(!rules.Completed_Visible());
}

// The proposal for an alarm that is off follows the due day; one that is set stays where the user put it.
void TTask_Frm::EventDateChange() {
  Store();
  if (!rules.Alarm.On) Show_Alarm();
}

void TTask_Frm::StatusChange() {
  Store();
  rules.Set_Status();
  Show_State();
}

void TTask_Frm::PercentageChange() {
  Store();
  rules.Percentage_Changed();
  Show_State();
}

void TTask_Frm::BudgetChange() {
  Store();
  rules.Set_Status();
  Show_State();
}

void TTask_Frm::Store() {
  TEditor_Form::Store();
  rules.Day = ui->EventDate->Day();
  rules.Start_Day = ui->StartDate->Day();
  rules.Status = static_cast<TTask_Status>(ui->StatusBox->currentIndex());
  rules.Percentage_Text = From_Qt(ui->PercentBox->text());
  rules.Budget_Text = From_Qt(ui->BudgetBox->text());
  rules.Worked_Text = From_Qt(ui->WorkedBox->text());
  // A picker that is hidden stands for no date.
  if (rules.Started_Visible()) rules.Started = ui->DateStarted->Day();
  if (rules.Completed_Visible()) rules.Completed = ui->DateCompleted->Day();
  rules.Alarm_Day = ui->AlarmDate->Day();
  rules.Alarm_Time_Text = From_Qt(ui->AlarmTime->text());
}

void TTask_Frm::Show_Alarm_Dependents(bool on) {
  Show_In_Place(ui->AlarmDate, on);
  Show_In_Place(ui->AlarmTime, on);
  Show_In_Place(ui->ConfigureBtn, on);
}

bool TTask_Frm::Configure_Alarm(TAlarm& alarm) {
  return Alarm_Properties(rules.Host_Key(), rules.Day, alarm.NextTime, alarm.On, alarm.Offset, alarm.WAVFile,
                          true);
}

void TTask_Frm::Show_Alarm() {
  rules.Show_Alarm();
  ui->AlarmDate->Set_Day(rules.Alarm_Day);
  ui->AlarmTime->setText(To_Qt(rules.Alarm_Time_Text));
}

bool Task_Properties(const std::string& EventKey, const std::string& HostKey, const std::string& BookKey,
                     const std::string& Subject, bool NoContact) {
  TTask_Rules rules;
  const TDiscard_At_End discard(rules);
  if (!rules.Open(EventKey, {BookKey, HostKey}, Subject, NoContact)) return false;
  TTask_Frm form(rules, Active_Window());
  CentreForm(&form);
  return form.exec() == QDialog::Accepted;
}

}  // namespace KTReminds
