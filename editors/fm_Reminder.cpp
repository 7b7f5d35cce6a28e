#include "fm_Reminder.h"

#include <QEvent>
#include <limits>

#include "Alarm_Texts.h"
#include "Form_Controls.h"
#include "Kt_util_01.h"
#include "fm_Alarm_Props.h"
#include "fm_Delete_Reminder.h"
#include "ui_fm_Reminder.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::Answer_Yes;
using Kt_util_01::Raise_Question;

namespace {

constexpr std::int64_t Many_Occurrences = 10'000;

template <class TButtons>
void Check_Days(const TButtons& buttons, const std::array<bool, 7>& days) {
  for (std::size_t i = 0; i < days.size(); ++i) buttons[i]->setChecked(days[i]);
}

template <class TButtons>
std::array<bool, 7> Checked_Days(const TButtons& buttons) {
  std::array<bool, 7> days{};
  for (std::size_t i = 0; i < days.size(); ++i) days[i] = buttons[i]->isChecked();
  return days;
}

void Fill_Kinds(QComboBox* instance, QComboBox* pattern) {
  for (const char* item : {QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "first"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "second"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "third"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "fourth"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "last")})
    instance->addItem(TReminder_Frm::tr(item));
  for (const char* item : {QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "day"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "weekday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "weekend day"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Sunday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Monday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Tuesday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Wednesday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Thursday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Friday"),
                           QT_TRANSLATE_NOOP("KTReminds::TReminder_Frm", "Saturday")})
    pattern->addItem(TReminder_Frm::tr(item));
}

}  // namespace

TReminder_Frm::TReminder_Frm(TReminder_Rules& rules, QWidget* parent)
    : TEditor_Form(rules, parent), rules(rules), ui(std::make_unique<Ui::Reminder_Frm>()) {
  ui->setupUi(this);
  for (const std::string& item : Alarm_Offset_Items()) ui->AlarmBox->addItem(To_Qt(item));
  ui->AlarmBox->setCompleter(nullptr);
  ui->AlarmBox->installEventFilter(this);
  Set_Up_Pages();
  Set_Up_Editor({ui->Edit1, ui->Edit2, ui->PriorityBox, ui->ContactPanel, ui->ContactBtn, ui->AlarmCheck,
                 ui->ConfigureBtn, ui->PrivateBox, ui->PageControl1, ui->OKBtn, ui->CancelBtn},
                {tr("&Restrict viewing of Event Details to the Owner"),
                 tr("&Allow any User with Read Access to view Event Details"),
                 tr("When Completed record Event in Contact's Journal")});
  Load();
  Connect();
  Finish_Editor();
}

TReminder_Frm::~TReminder_Frm() = default;

void TReminder_Frm::Set_Up_Pages() {
  freq_buttons = {ui->DailyBtn, ui->WeeklyBtn, ui->MonthlyBtn, ui->YearlyBtn};
  daily_days = {ui->DailyMonday, ui->DailyTuesday,  ui->DailyWednesday, ui->DailyThursday,
                ui->DailyFriday, ui->DailySaturday, ui->DailySunday};
  weekly_days = {ui->WeeklyMonday, ui->WeeklyTuesday,  ui->WeeklyWednesday, ui->WeeklyThursday,
                 ui->WeeklyFriday, ui->WeeklySaturday, ui->WeeklySunday};
  for (QLineEdit* number : {ui->DailyNumber, ui->WeeklyNumber, ui->MonthlyNumber, ui->MonthlyKindNumber,
                            ui->YearlyNumber, ui->YearlyKindNumber})
    Narrow(number);
  Fill_Kinds(ui->MonthlyInstance, ui->MonthlyPattern);
  Fill_Kinds(ui->YearlyInstance, ui->YearlyPattern);
  for (const char* month :
       {QT_TR_NOOP("January"), QT_TR_NOOP("February"), QT_TR_NOOP("March"), QT_TR_NOOP("April"),
        QT_TR_NOOP("May"), QT_TR_NOOP("June"), QT_TR_NOOP("July"), QT_TR_NOOP("August"),
        QT_TR_NOOP("September"), QT_TR_NOOP("October"), QT_TR_NOOP("November"), QT_TR_NOOP("December")})
    ui->YearlyMonth->addItem(tr(month));
}

void TReminder_Frm::Load() {
  switch (rules.Mode()) {
    case TEditor_Mode::New:
      setWindowTitle(tr("Create New Event"));
      break;
    case TEditor_Mode::Plain:
      setWindowTitle(tr("Edit Event"));
      break;
    case TEditor_Mode::Whole_Set:
      setWindowTitle(tr("Edit Recurring Event Set"));
      break;
    case TEditor_Mode::Single_Occurrence:
      setWindowTitle(tr("Edit Single Event from Recurring Set"));
      break;
  }
  ui->RecurBtn->setVisible(rules.Is_New());
  ui->EventDate->Set_Day(rules.Day);
  ui->SetTimeBox->setText(To_Qt(rules.Time_Text));
  ui->TimeBox->setChecked(rules.No_Time);
  Show_In_Place(ui->TimePanel, !rules.No_Time);
  TReminder_Frm::Show_Alarm();
  Set_Freqs();
  Show_Recurrence();
}

void TReminder_Frm::Connect() {
  connect(ui->EventDate, &QDateEdit::dateChanged, this, &TReminder_Frm::EventDateChange);
  connect(ui->TimeBox, &QCheckBox::clicked, this, &TReminder_Frm::TimeBoxClick);
  connect(ui->RecurBtn, &QPushButton::clicked, this, &TReminder_Frm::RecurBtnClick);
  for (QAbstractButton* button : freq_buttons)
    connect(button, &QAbstractButton::toggled, this, &TReminder_Frm::Follow_Choices);
  for (QRadioButton* button : {ui->DailyOn, ui->MonthlyOn, ui->YearlyOn})
    connect(button, &QRadioButton::toggled, this, &TReminder_Frm::Follow_Choices);
}

bool TReminder_Frm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui->AlarmBox && event->type() == QEvent::FocusOut)
    ui->AlarmBox->setCurrentText(To_Qt(Canonical_Offset(From_Qt(ui->AlarmBox->currentText()))));
  return TEditor_Form::eventFilter(watched, event);
}

void TReminder_Frm::Set_Freqs() {
  const TRecurrence_Pages& pages = rules.Pages;
  freq_buttons[static_cast<std::size_t>(pages.Freq) - 1]->setChecked(true);
  ui->EndDate->Set_Day(pages.Until);
  (pages.Daily_Every ? ui->DailyEvery : ui->DailyOn)->setChecked(true);
  ui->DailyNumber->setText(To_Qt(pages.Daily_Number));
  Check_Days(daily_days, pages.Daily_Days);
  ui->WeeklyNumber->setText(To_Qt(pages.Weekly_Number));
  Check_Days(weekly_days, pages.Weekly_Days);
  (pages.Monthly_Every ? ui->MonthlyEvery : ui->MonthlyOn)->setChecked(true);
  ui->MonthlyNumber->setText(To_Qt(pages.Monthly_Number));
  ui->MonthlyKindNumber->setText(To_Qt(pages.Monthly_Kind_Number));
  (pages.Yearly_Every ? ui->YearlyEvery : ui->YearlyOn)->setChecked(true);
  ui->YearlyNumber->setText(To_Qt(pages.Yearly_Number));
  ui->YearlyKindNumber->setText(To_Qt(pages.Yearly_Kind_Number));
  ui->YearlyMonth->setCurrentIndex(pages.Yearly_Month);
  Show_Kinds();
  Follow_Choices();
}

void TReminder_Frm::Show_Kinds() {
  ui->MonthlyInstance->setCurrentIndex(rules.Pages.Monthly_Kind.Instance);
  ui->MonthlyPattern->setCurrentIndex(rules.Pages.Monthly_Kind.Pattern);
  ui->YearlyInstance->setCurrentIndex(rules.Pages.Yearly_Kind.Instance);
  ui->YearlyPattern->setCurrentIndex(rules.Pages.Yearly_Kind.Pattern);
}

int TReminder_Frm::Chosen_Freq() const {
  for (const QAbstractButton* button : freq_buttons) {
    if (button->isChecked()) return button->property("Tag").toInt();
  }
  return 0;
}

void TReminder_Frm::Store_Pages() {
  TRecurrence_Pages& pages = rules.Pages;
  pages.Freq = static_cast<TFrequency>(Chosen_Freq());
  pages.Until = ui->EndDate->Day();
  pages.Daily_Every = ui->DailyEvery->isChecked();
  pages.Daily_Number = From_Qt(ui->DailyNumber->text());
  pages.Daily_Days = Checked_Days(daily_days);
  pages.Weekly_Number = From_Qt(ui->WeeklyNumber->text());
  pages.Weekly_Days = Checked_Days(weekly_days);
  pages.Monthly_Every = ui->MonthlyEvery->isChecked();
  pages.Monthly_Number = From_Qt(ui->MonthlyNumber->text());
  pages.Monthly_Kind_Number = From_Qt(ui->MonthlyKindNumber->text());
  pages.Monthly_Kind = {ui->MonthlyInstance->currentIndex(), ui->MonthlyPattern->currentIndex()};
  pages.Yearly_Every = ui->YearlyEvery->isChecked();
  pages.Yearly_Number = From_Qt(ui->YearlyNumber->text());
  pages.Yearly_Kind_Number = From_Qt(ui->YearlyKindNumber->text());
  pages.Yearly_Kind = {ui->YearlyInstance->currentIndex(), ui->YearlyPattern->currentIndex()};
  pages.Yearly_Month = ui->YearlyMonth->currentIndex();
}

void TReminder_Frm::Follow_Choices() {
  if (const int freq = Chosen_Freq()) ui->Notebook1->setCurrentIndex(freq - 1);
  if (rules.Read_Only()) return;
  for (QAbstractButton* day : daily_days) day->setEnabled(ui->DailyOn->isChecked());
  const bool monthly_kind = ui->MonthlyOn->isChecked(), yearly_kind = ui->YearlyOn->isChecked();
  ui->MonthlyNumber->setEnabled(!monthly_kind);
  for (QWidget* control :
       {static_cast<QWidget*>(ui->MonthlyInstance), static_cast<QWidget*>(ui->MonthlyPattern),
        static_cast<QWidget*>(ui->MonthlyKindNumber)})
    control->setEnabled(monthly_kind);
  ui->YearlyNumber->setEnabled(!yearly_kind);
  for (QWidget* control :
       {static_cast<QWidget*>(ui->YearlyKindNumber), static_cast<QWidget*>(ui->YearlyInstance),
        static_cast<QWidget*>(ui->YearlyPattern), static_cast<QWidget*>(ui->YearlyMonth)})
    control->setEnabled(yearly_kind);
}

void TReminder_Frm::Show_Recurrence() {
  const bool recurring = rules.Is_Recurring();
  ui->RecurBtn->setText(recurring ? tr("Remove Recurrence") : tr("Make Recurring"));
  ui->RecurBtn->setAccessibleName(ui->RecurBtn->text());
  const int page = ui->PageControl1->indexOf(ui->RecurrencePage);
  ui->PageControl1->setTabVisible(page, recurring);
  ui->RecurrencePage->setEnabled(recurring);
  ui->PageControl1->setCurrentIndex(recurring ? page : page + 1);
}

void TReminder_Frm::EventDateChange() {
  Store();
  rules.Day_Changed();
  Show_Kinds();
}

void TReminder_Frm::TimeBoxClick(bool checked) {
  if (Was_Shown()) Sound_Click(checked);
  Show_In_Place(ui->TimePanel, !checked);
}

void TReminder_Frm::RecurBtnClick() {
  Store();
  rules.Set_Recurring(!rules.Is_Recurring());
  Note_Change();
  Set_Freqs();
  Show_Recurrence();
}

void TReminder_Frm::Store() {
  TEditor_Form::Store();
  rules.Day = ui->EventDate->Day();
  rules.Time_Text = From_Qt(ui->SetTimeBox->text());
  rules.No_Time = ui->TimeBox->isChecked();
  rules.Alarm_Text = From_Qt(ui->AlarmBox->currentText());
  Store_Pages();
}

void TReminder_Frm::Show_Validated() {
  ui->AlarmBox->setCurrentText(To_Qt(rules.Alarm_Text));
}

bool TReminder_Frm::Confirm_Update(bool& keep_open) {
  if (rules.Check_If_Recurrence_Changed()) {
    keep_open =
        Raise_Question("Recurring Event Changed",
                       "Warning: Changing the properties of this Event Set will reset all events within the "
                       "Set. \r\n\r\nThis means that any changes made, by individually editing an event, "
                       "will be lost and any events marked complete will be reinstated\r\n\r\nPlease confirm "
                       "you wish to do this") != Answer_Yes;
  }
  if (rules.Occurrences_To_Write(Many_Occurrences) <= Many_Occurrences) return true;
  const std::int64_t count = rules.Occurrences_To_Write(std::numeric_limits<std::int64_t>::max() - 1);
  return Raise_Question("Many Events", "This Event Set consists of " + std::to_string(count) +
                                           " events, and saving it will take a while.\r\n\r\nPlease confirm "
                                           "you wish to do this") == Answer_Yes;
}

void TReminder_Frm::Show_Alarm_Dependents(bool on) {
  Show_In_Place(ui->AlarmBox, on);
  Show_In_Place(ui->ConfigureBtn, on);
}

bool TReminder_Frm::Configure_Alarm(TAlarm& alarm) {
  return Alarm_Properties(rules.Host_Key(), rules.Shown_Moment(), alarm.NextTime, alarm.On, alarm.Offset,
                          alarm.WAVFile, false);
}

void TReminder_Frm::Show_Alarm() {
  rules.Show_Alarm();
  ui->AlarmBox->setCurrentText(To_Qt(rules.Alarm_Text));
}

bool Reminder_Properties(const std::string& EventKey, const std::string& HostKey, const std::string& BookKey,
                         const std::string& Subject, bool NoContact) {
  TReminder_Rules rules;
  const TDiscard_At_End discard(rules);
  if (!rules.Open(EventKey, {BookKey, HostKey}, Subject, NoContact)) return false;
  if (rules.Belongs_To_Set()) {
    bool whole_set = false;
    if (!Update_Recurring(whole_set)) return false;
    if (whole_set) rules.Open_Whole_Set();
  }
  TReminder_Frm form(rules, Active_Window());
  CentreForm(&form);
  return form.exec() == QDialog::Accepted;
}

}  // namespace KTReminds
