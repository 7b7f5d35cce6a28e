#pragma once

#include "Kt_forms.h"

class QCalendarWidget;

namespace KTReminds {

/// A month calendar inside a host page: the user picks the date that all calendar pages show. Told by
/// umDateChanged that another page changed the date, it follows without telling anybody.
class TCalendarFrm : public Kt_forms::TForm {
  Q_OBJECT

 public:
  explicit TCalendarFrm(QWidget* notify, QWidget* parent = nullptr);

 protected:
  void FormActivate() override;
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void changeEvent(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Make_Calendar();
  void Show_Current_Date();
  void Date_Picked(const QDate& date);
  void Set_Colours();

  QPointer<QWidget> notify;
  // Takes a large part of a page's time to be made, and most pages hide it.
  QCalendarWidget* cal = nullptr;
  bool key_pressed = false;
};

/// Embeds a picker in a parent; each date the user picks, also the one already shown, becomes CurrentDate and
/// is told to `Notify` by umDateChanged, at once. The picker belongs to the parent.
TCalendarFrm* Show_Calendar(QWidget* Parent, QWidget* Notify);

}  // namespace KTReminds
