#include "Date_Edit.h"

#include <QCalendarWidget>
#include <QKeyEvent>
#include <QLineEdit>

#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::TDateTime;

QDate To_QDate(TDateTime value) {
  const Kt_util_01::TDate_Parts parts = Kt_util_01::Decode_Date(value);
  return {parts.Year, parts.Month, parts.Day};
}

TDateTime From_QDate(const QDate& date) {
  return Kt_util_01::Encode_Date(date.year(), date.month(), date.day());
}

Qt::DayOfWeek First_Day_Of_Week() {
  return static_cast<Qt::DayOfWeek>((Kt_util_01::Format_Settings().FirstDayOfWeek + 5) % 7 + 1);
}

// Qt's own field is edited section by section and moves on by itself, so that what is typed in full goes
// astray: of it remain the value, the looks and the calendar.
TDate_Edit::TDate_Edit(QWidget* parent) : QDateEdit(parent) {
  setCalendarPopup(true);
  setKeyboardTracking(false);
  setDateRange(QDate(100, 1, 1), QDate(Kt_util_01::Max_Year, 12, 31));
  setDisplayFormat(To_Qt(Kt_util_01::Shown_Format(Kt_util_01::Format_Settings().ShortDateFormat)));
  disconnect(lineEdit(), &QLineEdit::cursorPositionChanged, this, nullptr);
  lineEdit()->installEventFilter(this);
}

void TDate_Edit::Set_Day(TDateTime day) {
  setDate(To_QDate(day));
  if (!first_set.isValid()) first_set = date();
}

TDateTime TDate_Edit::Day() const {
  const QDate typed = Typed();
  return From_QDate(typed.isValid() ? typed : date());
}

// Invalid when the text is none that can be set.
QDate TDate_Edit::Date_Of(const QString& text) const {
  if (text == textFromDateTime(dateTime())) return date();
  TDateTime day = 0;
  if (!Kt_util_01::Str2Date(From_Qt(text), day)) return {};
  const QDate typed = To_QDate(day);
  return typed >= minimumDate() && typed <= maximumDate() ? typed : QDate();
}

void TDate_Edit::Take_Typed() {
  if (const QDate typed = Typed(); typed.isValid()) setDate(typed);
}

QValidator::State TDate_Edit::validate(QString& input, int& /*pos*/) const {
  return Date_Of(input).isValid() ? QValidator::Acceptable : QValidator::Intermediate;
}

// As all other dates are written; Qt's own texts may have other digits, which nobody could edit in part.
QString TDate_Edit::textFromDateTime(const QDateTime& value) const {
  return To_Qt(Kt_util_01::FormatDateTime("ddddd", From_QDate(value.date())));
}

QDateTime TDate_Edit::dateTimeFromText(const QString& text) const {
  const QDate typed = Date_Of(text);
  return typed.isValid() ? typed.startOfDay() : dateTime();
}

QList<TDate_Edit::TPart> TDate_Edit::Parts() const {
  QList<TPart> parts;
  qsizetype at = 0;
  for (int i = 0; i < sectionCount(); ++i) {
    const QString text = sectionText(sectionAt(i));
    at = qMax(at, lineEdit()->text().indexOf(text, at));
    parts.append({sectionAt(i), static_cast<int>(at), static_cast<int>(text.size())});
    at += text.size();
  }
  return parts;
}

void TDate_Edit::stepBy(int steps) {
  if (!Is_Valid()) return;
  Take_Typed();
  const bool whole = lineEdit()->selectedText() == lineEdit()->text();
  const int cursor =
      lineEdit()->hasSelectedText() ? lineEdit()->selectionEnd() : lineEdit()->cursorPosition();
  const QList<TPart> parts = Parts();
  qsizetype under = 0;
  while (under + 1 < parts.size() && cursor > parts[under].Start + parts[under].Length) ++under;
  const Section kind = whole || parts.isEmpty() ? DaySection : parts[under].Kind;
  setDate(kind == YearSection    ? date().addYears(steps)
          : kind == MonthSection ? date().addMonths(steps)
                                 : date().addDays(steps));
  if (whole || parts.isEmpty()) return selectAll();
  const TPart part = Parts()[under];
  lineEdit()->setSelection(part.Start, part.Length);
}

QAbstractSpinBox::StepEnabled TDate_Edit::stepEnabled() const {
  return isReadOnly() ? StepNone : StepUpEnabled | StepDownEnabled;
}

bool TDate_Edit::focusNextPrevChild(bool next) {
  return QWidget::focusNextPrevChild(next);
}

void TDate_Edit::focusInEvent(QFocusEvent* event) {
  QAbstractSpinBox::focusInEvent(event);
  clicked_into = event->reason() == Qt::MouseFocusReason;
  // A window or menu that closes brings the keyboard back to where it was.
  if (!clicked_into && event->reason() != Qt::PopupFocusReason &&
      event->reason() != Qt::ActiveWindowFocusReason)
    selectAll();
}

void TDate_Edit::focusOutEvent(QFocusEvent* event) {
  if (Is_Valid()) return QDateEdit::focusOutEvent(event);
  // It would put the last date back.
  lineEdit()->event(event);
  QWidget::focusOutEvent(event);
}

void TDate_Edit::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
      QAbstractSpinBox::keyPressEvent(event);
      break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      Take_Typed();
      event->ignore();  // for the form's default button
      break;
    default:
      lineEdit()->event(event);
  }
}

void TDate_Edit::mousePressEvent(QMouseEvent* event) {
  Take_Typed();
  // Making its calendar takes a field longer than all the rest of it, and few are opened.
  if (!calendar_prepared) {
    calendarWidget()->setFirstDayOfWeek(First_Day_Of_Week());
    calendarWidget()->setDateEditEnabled(false);
    calendar_prepared = true;
  }
  QDateEdit::mousePressEvent(event);
}

bool TDate_Edit::eventFilter(QObject* watched, QEvent* event) {
  if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && clicked_into) {
    clicked_into = false;
    if (!lineEdit()->hasSelectedText()) selectAll();
  }
  return QDateEdit::eventFilter(watched, event);
}

}  // namespace KTReminds
