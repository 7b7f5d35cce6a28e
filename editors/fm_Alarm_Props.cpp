#include "fm_Alarm_Props.h"

#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMouseEvent>
#include <QStyle>

#include "Alarm_Texts.h"
#include "Form_Controls.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "ui_fm_Alarm_Props.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::Raise_Error;
using Kt_util_01::Raise_Info;

TAlarm_Props_Frm::TAlarm_Props_Frm(TDateTime date, const TAlarm& given, bool for_task, bool only_to_read,
                                   QWidget* parent)
    : TDialog_Form(parent),
      Choose_File([](QWidget* over, const QString& title, const QString& folder, const QString& filter) {
        return QFileDialog::getOpenFileName(over, title, folder, filter);
      }),
      ui(std::make_unique<Ui::Alarm_Props_Frm>()),
      event_date(date),
      alarm(given),
      task_mode(for_task),
      read_only(only_to_read) {
  ui->setupUi(this);
  const int icon = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
  ui->Image1->setPixmap(style()->standardIcon(QStyle::SP_MediaVolume, nullptr, this).pixmap(icon));
  for (const std::string& item : Alarm_Offset_Items()) ui->Alarmbox->addItem(To_Qt(item));
  ui->Alarmbox->setCompleter(nullptr);
  ui->Alarmbox->installEventFilter(this);
  ui->Label6->installEventFilter(this);
  ui->Image1->installEventFilter(this);
  Initialise_Form(this);

  connect(ui->AlarmCheck, &QCheckBox::clicked, this, &TAlarm_Props_Frm::AlarmCheckClick);
  connect(ui->AlarmCheck2, &QCheckBox::clicked, this, &TAlarm_Props_Frm::AlarmCheckClick);
  connect(ui->Alarmbox, &QComboBox::currentTextChanged, this, &TAlarm_Props_Frm::Set_Time_Label);
  connect(ui->WAVBox, &QComboBox::currentIndexChanged, this, &TAlarm_Props_Frm::WAVBoxChange);
  connect(ui->Button3, &QPushButton::clicked, this, &TAlarm_Props_Frm::BrowseClick);
  connect(ui->Button4, &QPushButton::clicked, this, &TAlarm_Props_Frm::MakeDefaultClick);
  connect(ui->SpeedButton2, &QToolButton::clicked, this, &TAlarm_Props_Frm::Preview);
  connect(ui->OKBtn, &QPushButton::clicked, this, &TAlarm_Props_Frm::OKBtnClick);
  connect(ui->Cancelbtn, &QPushButton::clicked, this, &TAlarm_Props_Frm::Cancel_Form);
  Load();
}

TAlarm_Props_Frm::~TAlarm_Props_Frm() = default;

void TAlarm_Props_Frm::Load() {
  ui->When1->setVisible(!task_mode);
  ui->When2->setVisible(task_mode);
  ui->AlarmCheck->setChecked(alarm.On);
  ui->AlarmCheck2->setChecked(alarm.On);
  if (task_mode) {
    TDateTime day = 0;
    std::string time;
    Show_Alarm_Moment(event_date, alarm, day, time);
    ui->AlarmDate->Set_Day(day);
    ui->AlarmTime->setText(To_Qt(time));
  } else {
    ui->Alarmbox->setCurrentText(
        To_Qt(Convert_Offset_to_ItemText(alarm.On ? alarm.Offset : TAlarm().Offset)));
    Set_Time_Label();
  }
  Show_Dependents();
  Show_Sounds(alarm.WAVFile);
  ui->DefaultSound->Set_File(To_Qt(Read_Default_Sound()));
  if (read_only) Make_Read_Only(this, {ui->Cancelbtn});
}

void TAlarm_Props_Frm::FormShow() {
  Kt_util_01::Sound(2);
  (read_only   ? static_cast<QWidget*>(ui->Cancelbtn)
   : task_mode ? ui->AlarmCheck2
               : ui->AlarmCheck)
      ->setFocus();
  Guard_Inputs();
}

bool TAlarm_Props_Frm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui->Alarmbox) {
    if (event->type() == QEvent::FocusOut) AlarmboxExit();
  } else if (event->type() == QEvent::MouseButtonRelease && !read_only &&
             static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
    Preview();
  }
  return TDialog_Form::eventFilter(watched, event);
}

bool TAlarm_Props_Frm::Is_On() const {
  return (task_mode ? ui->AlarmCheck2 : ui->AlarmCheck)->isChecked();
}

void TAlarm_Props_Frm::AlarmCheckClick(bool checked) {
  if (Was_Shown()) Sound_Click(checked);
  Show_Dependents();
}

void TAlarm_Props_Frm::Show_Dependents() {
  const bool on = Is_On();
  Show_In_Place(ui->AlarmGroupBox, on);
  Show_In_Place(ui->Alarmbox, on);
  Show_In_Place(ui->TimeLabel, on);
  ui->DelayLabel->setVisible(on && alarm.NextTime != 0);
  Show_In_Place(ui->AlarmDate, on);
  Show_In_Place(ui->AlarmAt, on);
  Show_In_Place(ui->AlarmTime, on);
}

void TAlarm_Props_Frm::Set_Time_Label() {
  std::string text = From_Qt(ui->Alarmbox->currentText());
  const int minutes = Convert_Alarm_ItemText(text);
  ui->TimeLabel->setText(To_Qt(Get_Alarm_TimeStr(event_date, alarm.NextTime, minutes < 0 ? 0 : minutes)));
}

void TAlarm_Props_Frm::AlarmboxExit() {
  const QString canonical = To_Qt(Canonical_Offset(From_Qt(ui->Alarmbox->currentText())));
  if (ui->Alarmbox->currentText() != canonical) ui->Alarmbox->setCurrentText(canonical);
}

void TAlarm_Props_Frm::Show_Sounds(const std::string& current) {
  sounds = Build_WAV_List(current);
  const int selected = sounds.Selected;
  ui->WAVBox->clear();
  for (const std::string& item : sounds.Items) ui->WAVBox->addItem(To_Qt(item));
  ui->WAVBox->setCurrentIndex(selected);
  WAVBoxChange(selected);
}

void TAlarm_Props_Frm::WAVBoxChange(int selected) {
  if (selected < 0) return;
  sounds.Selected = selected;
  ui->Button4->setEnabled(selected != 0 && !read_only);
}

void TAlarm_Props_Frm::BrowseClick() {
  QString file;
  if (Outlives(this,
               [&] {
                 file = Choose_File(this, tr("Browse for Reminder Sound File"), To_Qt(sounds.Folder),
                                    QStringLiteral("Sounds (*.WAV *.wav)"));
               }) &&
      !file.isEmpty())
    Show_Sounds(From_Qt(file));
}

void TAlarm_Props_Frm::MakeDefaultClick() {
  Write_Default_Sound(sounds.Default_Value());
  ui->DefaultSound->Set_File(To_Qt(Read_Default_Sound()));
}

void TAlarm_Props_Frm::Preview() {
  const std::string sound = sounds.Preview_Value();
  const bool beep = sound == Standard_Beep_Text;
  if (!beep && !QFileInfo(To_Qt(sound)).isFile()) {
    Raise_Error("Unable to Locate File", "Unable to locate the selected Sound File. Please respecify.");
  } else if (!(beep ? Beep() : Play_File(sound))) {
    Raise_Info("Reminder Sound", "The sound cannot be played on this computer.");
  }
}

void TAlarm_Props_Frm::OKBtnClick() {
  if (Refuse_Dates(this)) return;
  TAlarm_Input input;
  input.Task_Mode = task_mode;
  input.EventDate = event_date;
  input.On = Is_On();
  input.Offset_Text = From_Qt(ui->Alarmbox->currentText());
  input.Day = ui->AlarmDate->Day();
  input.Time_Text = From_Qt(ui->AlarmTime->text());
  input.Sounds = sounds;
  TAlarm validated = alarm;
  const TRefusal refusal = Validate_Alarm(input, validated);
  if (!task_mode) ui->Alarmbox->setCurrentText(To_Qt(input.Offset_Text));
  if (Show_Refusal(this, refusal) || !Confirm_Dates(this)) return;
  alarm = validated;
  accept();
}

bool Alarm_Properties(const std::string& Owner, TDateTime EventDate, TDateTime& NextTime, bool& AlarmOn,
                      int& Offset, std::string& WAVFile, bool TaskMode) {
  const TAlarm given{AlarmOn, Offset, WAVFile, NextTime};
  const bool read_only = !Kt_data_01::Access_Allowed(Owner, Kt_data_01::Access_Update);
  TAlarm_Props_Frm form(EventDate, given, TaskMode, read_only, Active_Window());
  CentreForm(&form);
  if (form.exec() != QDialog::Accepted) return false;
  const TAlarm& alarm = form.Alarm();
  AlarmOn = alarm.On;
  Offset = alarm.Offset;
  WAVFile = alarm.WAVFile;
  NextTime = alarm.NextTime;
  return true;
}

bool Set_Alarm_Properties(const std::string& EventKey, const std::string& Owner, bool TaskMode) {
  std::optional<TStored_Alarm> stored;
  bool changed = false;
  Kt_data_01::Read("fm_Alarm_Props:Set_Alarm_Properties [KT_Events_Data/KT_Alarms]", [&] {
    stored = Read_Stored_Alarm(EventKey);
    if (!stored) return;
    TAlarm& alarm = stored->Alarm;
    const TDateTime before = alarm.NextTime;
    changed = Alarm_Properties(Owner, stored->EventDate, alarm.NextTime, alarm.On, alarm.Offset,
                               alarm.WAVFile, TaskMode);
    // It may have been put off while the dialog was open.
    if (const auto now = Read_Stored_Alarm(EventKey); changed && now && alarm.NextTime == before)
      alarm.NextTime = now->Alarm.NextTime;
  });
  return changed && Write_Stored_Alarm(EventKey, stored->Alarm);
}

}  // namespace KTReminds
