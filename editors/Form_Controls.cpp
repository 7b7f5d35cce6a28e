#include "Form_Controls.h"

#include <QAbstractButton>
#include <QCalendarWidget>
#include <QComboBox>
#include <QEvent>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QStyle>
#include <QStyleOptionSpinBox>
#include <QTabBar>
#include <algorithm>

#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {
constexpr int Most_Percent = 100;
const auto Widest_Number = QStringLiteral("0000000");

// Making its calendar takes a picker longer than all the rest of it, and few are opened: so it gets its first
// day of the week when the user comes to the picker.
class TFirst_Day : public QObject {
 public:
  TFirst_Day(QDateEdit* for_picker, Qt::DayOfWeek first)
      : QObject(for_picker), picker(for_picker), day(first) {
    picker->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    const QEvent::Type type = event->type();
    if (watched == picker &&
        (type == QEvent::MouseButtonPress || type == QEvent::KeyPress || type == QEvent::FocusIn)) {
      picker->removeEventFilter(this);
      picker->calendarWidget()->setFirstDayOfWeek(day);
    }
    return false;
  }

 private:
  QDateEdit* const picker;
  const Qt::DayOfWeek day;
};

}  // namespace

QDate To_QDate(TDateTime value) {
  const Kt_util_01::TDate_Parts parts = Kt_util_01::Decode_Date(value);
  return {parts.Year, parts.Month, parts.Day};
}

TDateTime From_QDate(const QDate& date) {
  return Kt_util_01::Encode_Date(date.year(), date.month(), date.day());
}

QString Qt_Date_Format(const std::string& short_date_format, const std::string& separator) {
  const QString pattern = To_Qt(short_date_format);
  QString format, literal;
  const auto flush = [&format, &literal] {
    if (literal.isEmpty()) return;
    format += QLatin1Char('\'') + literal.replace(QLatin1Char('\''), QLatin1String("''")) + QLatin1Char('\'');
    literal.clear();
  };
  for (qsizetype at = 0; at < pattern.size();) {
    const QChar letter = pattern[at];
    if (letter == QLatin1Char('\'') || letter == QLatin1Char('"')) {
      const qsizetype end = std::max(pattern.indexOf(letter, at + 1), at + 1);
      literal += pattern.mid(at + 1, end - at - 1);
      at = end + 1;
      continue;
    }
    qsizetype end = at;
    while (end < pattern.size() && pattern[end].toLower() == letter.toLower()) ++end;
    const auto count = static_cast<int>(end - at);
    const char16_t kind = letter.toLower().unicode();
    if (kind == 'd' || kind == 'm' || kind == 'y') {
      flush();
      format += kind == 'y' ? QStringLiteral("yyyy") : QString(count, QLatin1Char(kind == 'd' ? 'd' : 'M'));
    } else {
      literal += kind == '/' ? To_Qt(separator).repeated(count) : pattern.mid(at, count);
    }
    at = end;
  }
  flush();
  return format;
}

void Set_Up_Date(QDateEdit* picker) {
  const Kt_util_01::TFormat_Settings& settings = Kt_util_01::Format_Settings();
  picker->setCalendarPopup(true);
  picker->setDateRange(QDate(100, 1, 1), QDate(Kt_util_01::Max_Year, 12, 31));
  picker->setDisplayFormat(Qt_Date_Format(settings.ShortDateFormat, settings.DateSeparator));
  new TFirst_Day(picker, static_cast<Qt::DayOfWeek>((settings.FirstDayOfWeek + 5) % 7 + 1));
}

bool Show_Refusal(QWidget* form, const TRefusal& refusal) {
  if (refusal.Empty()) return false;
  if (!refusal.Control.empty()) Focus_Control(form, refusal.Control);
  Kt_util_01::Raise_Error(refusal.Caption, refusal.Text);
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
