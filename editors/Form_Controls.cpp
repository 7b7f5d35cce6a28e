#include "Form_Controls.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTabBar>
#include <algorithm>

#include "Date_Edit.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {
constexpr int Most_Percent = 100;
const auto Widest_Number = QStringLiteral("0000000");

// Not one that is hidden, or whose page is.
bool Is_Asked_For(const TDate_Edit& field) {
  return !field.isHidden() && field.isEnabled();
}

}  // namespace

bool Show_Refusal(QWidget* form, const TRefusal& refusal) {
  if (refusal.Empty()) return false;
  if (!refusal.Control.empty()) Focus_Control(form, refusal.Control);
  if (refusal.Beep) {
    Message_Beep();
  } else {
    Kt_util_01::Raise_Error(refusal.Caption, refusal.Text);
  }
  return true;
}

bool Refuse_Dates(QWidget* form) {
  for (const TDate_Edit* field : form->findChildren<TDate_Edit*>()) {
    if (Is_Asked_For(*field) && !field->Is_Valid())
      return Show_Refusal(form, Refuse_Date(From_Qt(field->objectName())));
  }
  return false;
}

bool Confirm_Dates(QWidget* form, bool is_new) {
  constexpr int far_years = 100;
  const QDate today = To_QDate(Kt_util_01::Today());
  const QPointer<QWidget> alive = form;
  QList<QDate> confirmed;
  for (const TDate_Edit* field : form->findChildren<TDate_Edit*>()) {
    const QDate day = To_QDate(field->Day());
    if (!Is_Asked_For(*field) || !(is_new || field->Was_Moved()) || confirmed.contains(day) ||
        (day >= today.addYears(-far_years) && day <= today.addYears(far_years)))
      continue;
    const std::string name = From_Qt(field->objectName());
    const int answer = Kt_util_01::Raise_Question(
        "Distant Date",
        "The date " + Kt_util_01::FormatDateTime("ddddd", field->Day()) +
            " is more than a hundred years from today.\r\n\r\nPlease confirm that it is right");
    if (!alive) return false;
    if (answer != Kt_util_01::Answer_Yes) {
      Focus_Control(form, name);
      return false;
    }
    confirmed << day;
  }
  return true;
}

void Sound_Click(bool checked) {
  Kt_util_01::Sound(checked ? 3 : 1);
}

void Make_Read_Only(QWidget* form, std::initializer_list<QWidget*> but) {
  for (QWidget* control : form->findChildren<QWidget*>()) {
    // The arrows of a tab bar that is too narrow stay usable.
    if (std::find(but.begin(), but.end(), control) != but.end() || qobject_cast<QTabBar*>(control->parent()))
      continue;
    if (auto* line = qobject_cast<QLineEdit*>(control)) line->setReadOnly(true);
    if (auto* memo = qobject_cast<QPlainTextEdit*>(control)) memo->setReadOnly(true);
    if (auto* spin = qobject_cast<QAbstractSpinBox*>(control)) spin->setReadOnly(true);
    if (qobject_cast<QComboBox*>(control) || qobject_cast<QAbstractButton*>(control))
      control->setEnabled(false);
  }
}

void Show_In_Place(QWidget* control, bool visible) {
  QSizePolicy policy = control->sizePolicy();
  policy.setRetainSizeWhenHidden(true);
  control->setSizePolicy(policy);
  control->setVisible(visible);
}

void Tab_To_Chosen(QWidget* form) {
  for (QRadioButton* button : form->findChildren<QRadioButton*>()) {
    const auto follow = [button](bool chosen) {
      button->setFocusPolicy(chosen ? Qt::StrongFocus : Qt::ClickFocus);
    };
    QObject::connect(button, &QRadioButton::toggled, button, follow);
    follow(button->isChecked());
  }
}

void Narrow(QLineEdit* number) {
  constexpr int frame = 16;
  number->setFixedWidth(number->fontMetrics().horizontalAdvance(Widest_Number) + frame);
}

TUpDown_Edit::TUpDown_Edit(QWidget* parent) : QAbstractSpinBox(parent) {
  connect(lineEdit(), &QLineEdit::textEdited, this, &TUpDown_Edit::Text_Edited);
}

void TUpDown_Edit::Set_Text(const QString& text) {
  if (lineEdit()->text() != text) lineEdit()->setText(text);
}

void TUpDown_Edit::stepBy(int steps) {
  std::int64_t number = 0;
  if (!Kt_util_01::Str2Int(From_Qt(lineEdit()->text()), number)) return;
  number = std::clamp<std::int64_t>(number, 0, Most_Percent) + steps;
  lineEdit()->setText(QString::number(std::clamp<std::int64_t>(number, 0, Most_Percent)));
  emit Text_Edited(lineEdit()->text());
}

QAbstractSpinBox::StepEnabled TUpDown_Edit::stepEnabled() const {
  std::int64_t number = 0;
  if (isReadOnly() || !Kt_util_01::Str2Int(From_Qt(lineEdit()->text()), number)) return StepNone;
  return (number > 0 ? StepDownEnabled : StepNone) | (number < Most_Percent ? StepUpEnabled : StepNone);
}

QSize TUpDown_Edit::sizeHint() const {
  QStyleOptionSpinBox option;
  initStyleOption(&option);
  const QSize text(fontMetrics().horizontalAdvance(Widest_Number), lineEdit()->sizeHint().height());
  return style()->sizeFromContents(QStyle::CT_SpinBox, &option, text, this);
}

}  // namespace KTReminds
