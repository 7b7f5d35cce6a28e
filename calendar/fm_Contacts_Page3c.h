#pragma once

#include "Calendar_View.h"
#include "EP_Calendar.h"
#include "Month_Rules.h"

namespace Ui {
class Contacts_Page3c_Frm;
}

namespace KTReminds {

/// The month view: the entries of the month of CurrentDate, and of the days around it that fill the grid.
class TContacts_Page3c_Frm : public TCalendar_View {
  Q_OBJECT

 public:
  TContacts_Page3c_Frm();
  ~TContacts_Page3c_Frm() override;

  void DoRefresh() override;

 protected:
  TOwner Owner_Of_New(TEntry_Type type) const override;
  void Before_Adding() override;
  void Refresh_After(const TEntry_Change& change) override;

 private:
  void Date_Changed();
  /// Has the page around the view show a day.
  void Goto_Day(Kt_util_01::TDateTime date);
  TEPCalendar::TColours Colours_Of(Kt_util_01::TDateTime date) const;
  void Draw_Day(QPainter& painter, const TEPCalendar::TDay& day) const;
  const TDay_Lines& Lines_Of(Kt_util_01::TDateTime date) const;
  void Describe_Day();

  std::unique_ptr<Ui::Contacts_Page3c_Frm> ui;
  Kt_data_01::TEventKey_List entries;
  std::vector<TDay_Lines> lines;  // of each day that the grid shows
  bool ready = false;             // not while the two are built anew
};

/// Shows the month view in a parent, as Display_Calendar_Dayview does the day view.
bool Display_Calendar_MonthView(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, bool WholeCalendar);

}  // namespace KTReminds
