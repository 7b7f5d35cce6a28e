#pragma once

// What the editors' windows do to their controls alike.

#include <QAbstractSpinBox>
#include <QDateEdit>
#include <QLineEdit>
#include <initializer_list>

#include "Kt_dates.h"
#include "Refusal.h"

namespace KTReminds {

using Kt_util_01::TDateTime;

/// The day of a date; and back, midnight.
QDate To_QDate(TDateTime value);
TDateTime From_QDate(const QDate& date);

/// A Qt format for the short dates of the user's, always with four digits for the year.
QString Qt_Date_Format(const std::string& short_date_format, const std::string& separator);
/// Gives a date picker the user's format and first day of the week, and all dates there are.
void Set_Up_Date(QDateEdit* picker);

/// Focuses the control that a refusal names and shows its message. False when there is none to show.
bool Show_Refusal(QWidget* form, const TRefusal& refusal);

/// The sound of a check box that the user clicks.
void Sound_Click(bool checked);

/// Lets texts be read and selected, but nothing be changed; disables buttons, too, but for those given.
void Make_Read_Only(QWidget* form, std::initializer_list<QWidget*> but);

/// Hides or shows a control whose room is kept, so that nothing around it moves.
void Show_In_Place(QWidget* control, bool visible);

/// Has Tab come to the button that is chosen, in each group of radio buttons.
void Tab_To_Chosen(QWidget* form);

/// Makes an input as wide as a number needs.
void Narrow(QLineEdit* number);

/// A number with arrows beside it. Any text can be typed; the arrows step one that is a number from 0 to 100.
class TUpDown_Edit : public QAbstractSpinBox {
  Q_OBJECT

 public:
  explicit TUpDown_Edit(QWidget* parent = nullptr);
  /// Does not signal.
  void Set_Text(const QString& text);
  void stepBy(int steps) override;
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 signals:
  void Text_Edited(const QString& text);

 protected:
  StepEnabled stepEnabled() const override;
};

}  // namespace KTReminds
