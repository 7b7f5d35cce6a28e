#include "Editor_Form.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <algorithm>

#include "Form_Controls.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "ui_Editor_Pages.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

constexpr int Priorities = 9;

// Selects the item that carries a value; none when there is no such item.
void Select_Value(QComboBox* box, const QVariant& value) {
  box->setCurrentIndex(box->findData(value));
}

}  // namespace

TEditor_Form::TEditor_Form(TEditor_Rules& rules, QWidget* parent)
    : TDialog_Form(parent), rules(rules), pages(std::make_unique<Ui::Editor_Pages>()) {}

TEditor_Form::~TEditor_Form() = default;

void TEditor_Form::Set_Up_Editor(const TControls& shared, const TCaptions& captions) {
  controls = shared;
  pages->setupUi(controls.Pages);
  pages->RestrictBtn->setText(captions.Restrict);
  pages->AllowBtn->setText(captions.Allow);
  pages->JournalBox->setText(captions.Journal);
  setTabOrder(pages->ActivityBox, controls.OK);
  setTabOrder(controls.OK, controls.Cancel);
  Fill_Lists();
  Load_Editor();
  Connect_Editor();
}

void TEditor_Form::Fill_Lists() {
  for (int priority = 1; priority <= Priorities; ++priority)
    controls.Priority->addItem(tr("Priority %1").arg(priority));
  for (const Kt_data_01::TUser& user : rules.Users())
    pages->UserBox->addItem(To_Qt(user.Name), To_Qt(user.Key));
  for (const Kt_util_01::TActivity& activity : Kt_util_01::Populate_Activities())
    pages->ActivityBox->addItem(To_Qt(activity.Name), activity.Code);
  // An activity that was recorded elsewhere is kept.
  if (pages->ActivityBox->findData(rules.Activity) < 0)
    pages->ActivityBox->addItem(tr("Activity %1").arg(rules.Activity), rules.Activity);
}

void TEditor_Form::Load_Editor() {
  const QString subject = To_Qt(rules.Subject);
  // What is stored already is not cut off.
  controls.Subject->setMaxLength(std::max(controls.Subject->maxLength(), static_cast<int>(subject.size())));
  controls.Subject->setText(subject);
  controls.Location->setText(To_Qt(rules.Location));
  controls.Priority->setCurrentIndex(rules.Priority - 1);
  controls.Contact->setText(To_Qt(rules.Contact_Name()));
  controls.Open_Contact->setVisible(!rules.No_Contact() && Can_Open_Contact(rules.Host_Key()));
  controls.Alarm->setChecked(rules.Alarm.On);
  Show_Private(rules.Private);
  for (QWidget* control : {static_cast<QWidget*>(controls.Private), static_cast<QWidget*>(pages->RestrictBtn),
                           static_cast<QWidget*>(pages->AllowBtn)}) {
    control->setEnabled(rules.May_Change_Privacy());
  }
  stored_notes = rules.Notes;
  pages->Memo1->setPlainText(To_Qt(rules.Notes));
  shown_notes = pages->Memo1->toPlainText();
  Select_Value(pages->UserBox, To_Qt(rules.Owner));
  pages->JournalBox->setChecked(rules.Journal);
  Select_Value(pages->ActivityBox, rules.Activity);
}

void TEditor_Form::Connect_Editor() {
  connect(controls.Private, &QCheckBox::clicked, this, &TEditor_Form::Show_Private);
  connect(pages->RestrictBtn, &QRadioButton::clicked, this, [this] { Show_Private(true); });
  connect(pages->AllowBtn, &QRadioButton::clicked, this, [this] { Show_Private(false); });
  connect(controls.Alarm, &QCheckBox::clicked, this, &TEditor_Form::AlarmCheckClick);
  connect(controls.Configure, &QPushButton::clicked, this, &TEditor_Form::ConfigureClick);
  connect(controls.Open_Contact, &QPushButton::clicked, this, [this] { Open_Contact(rules.Host_Key()); });
  connect(controls.OK, &QPushButton::clicked, this, &TEditor_Form::OKBtnClick);
  connect(controls.Cancel, &QPushButton::clicked, this, &TEditor_Form::Cancel_Form);
}

void TEditor_Form::Finish_Editor() {
  Initialise_Form(this);
  Tab_To_Chosen(this);
  Show_Alarm_Dependents(rules.Alarm.On);
  if (rules.Read_Only()) Make_Read_Only(this, {controls.OK, controls.Cancel, controls.Open_Contact});
}

void TEditor_Form::FormShow() {
  Kt_util_01::Sound(2);
  controls.Subject->setFocus();
  Guard_Inputs();
}

void TEditor_Form::Show_Private(bool restricted) {
  controls.Private->setChecked(restricted);
  (restricted ? pages->RestrictBtn : pages->AllowBtn)->setChecked(true);
}

void TEditor_Form::AlarmCheckClick(bool checked) {
  if (Was_Shown()) Sound_Click(checked);
  Show_Alarm_Dependents(checked);
}

void TEditor_Form::ConfigureClick() {
  Store();
  TAlarm alarm = Shown_Alarm();
  bool changed = false;
  if (!Outlives(
          this,
          [&] { Kt_data_01::Read(Unit() + ":ConfigureClick", [&] { changed = Configure_Alarm(alarm); }); }) ||
      !changed)
    return;
  rules.Alarm = alarm;
  Note_Change();
  controls.Alarm->setChecked(alarm.On);
  Show_Alarm_Dependents(alarm.On);
  Show_Alarm();
}

void TEditor_Form::Store() {
  rules.Subject = From_Qt(controls.Subject->text());
  rules.Location = From_Qt(controls.Location->text());
  rules.Priority = controls.Priority->currentIndex() + 1;
  rules.Alarm.On = controls.Alarm->isChecked();
  rules.Private = controls.Private->isChecked();
  const QString notes = pages->Memo1->toPlainText();
  rules.Notes = notes == shown_notes ? stored_notes : From_Qt(notes);
  rules.Owner = From_Qt(pages->UserBox->currentData().toString());
  rules.Journal = pages->JournalBox->isChecked();
  rules.Activity = pages->ActivityBox->currentData().toInt();
}

void TEditor_Form::OKBtnClick() {
  if (rules.Read_Only()) return accept();
  Kt_data_01::Read(Unit() + ":OKBtnClick [KT_Events/KT_Events_Data/KT_Alarms]", [this] { Save(); });
}

void TEditor_Form::Save() {
  Store();
  if (Show_Refusal(this, rules.Check_Right()) || Show_Refusal(this, rules.Validate_Subject()) ||
      Refuse_Dates(this))
    return;
  const TRefusal refusal = rules.Validate();
  Show_Validated();
  if (Show_Refusal(this, refusal)) return;
  bool keep_open = false, confirmed = false, written = false;
  if (!Outlives(this,
                [&] { confirmed = Confirm_Dates(this, rules.Is_New()) && Confirm_Update(keep_open); }) ||
      !confirmed)
    return;
  if (!Outlives(this, [&] { written = rules.Process_Update(); }) || !written) return;
  if (!keep_open) return accept();
  Guard_Inputs();
}

}  // namespace KTReminds
