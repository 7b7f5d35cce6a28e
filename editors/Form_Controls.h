#pragma once

// What the editors' windows do to their controls alike.

#include <QAbstractSpinBox>
#include <QLineEdit>
#include <initializer_list>

#include "Refusal.h"

namespace KTReminds {

/// Focuses the control that a refusal names and shows its message. False when there is none to show.
bool Show_Refusal(QWidget* form, const TRefusal& refusal);

/// Refuses the first date field that is shown and holds no date. False when there is none.
bool Refuse_Dates(QWidget* form);
/// Asks about each date more than a century from today that the user has moved, or that is new as the whole
/// entry is. False, with its field focused, when one is not meant, and when the form did not outlive the
/// question.
bool Confirm_Dates(QWidget* form, bool is_new = false);

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
