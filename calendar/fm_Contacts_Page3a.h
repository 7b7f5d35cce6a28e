#pragma once

#include <array>

#include "Calendar_View.h"
#include "Kt_event_key.h"

namespace Ui {
class Contacts_Page3a_Frm;
class View_Tools;
}  // namespace Ui

namespace KTReminds {

class TWeek_Header;
class TWeek_List;

/// The week view: the seven days of CurrentDate's week as a paper diary lays them out, Monday first. The day
/// whose list is entered becomes CurrentDate. An entry can be moved to another day by dragging it there, and
/// to a day of any week by cutting and pasting it.
class TContacts_Page3a_Frm : public TCalendar_View {
  Q_OBJECT

 public:
  TContacts_Page3a_Frm();
  ~TContacts_Page3a_Frm() override;

  void DoRefresh() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static constexpr int Days = 7;
  struct TDay {
    QWidget* Panel;
    TWeek_Header* Header;
    TWeek_List* List;
  };

  void Make_Day(int index, QWidget* row);
  void Make_Move_Commands();
  void Divide_Panel();
  /// Of a week and of today, in the title and the headers.
  void Show_Dates(Kt_util_01::TDateTime monday);
  void Set_Weekheaders();
  void Step_Week(int weeks);
  /// Makes the day of a list the selected one, and tells the picker.
  void Select_Day(const TWeek_List* list);
  /// The same, unless it is selected already.
  void Enter_Day(const TWeek_List* list);
  void Step_To_List(int index);
  TWeek_List* List_Of_Date() const;
  /// In the host's status bar.
  void Say(const QString& text);
  void Cut();
  void Paste();
  void Move_Entry(const Kt_data_01::TEventKey& entry, TWeek_List* target);

  std::unique_ptr<Ui::Contacts_Page3a_Frm> ui;
  std::unique_ptr<Ui::View_Tools> tools;
  std::array<TDay, Days> days{};
  std::optional<std::pair<Kt_util_01::TDateTime, Kt_util_01::TDateTime>> shown_dates;
  QAction* paste = nullptr;
  std::unique_ptr<Kt_data_01::TEventKey> cut_entry;
};

/// Shows the week view in a parent, in place of the page that the reference holds, if that is another one.
/// With `WholeCalendar` it shows all entries of the book `NodeKey`, otherwise those of the owner. False, with
/// nothing changed, when the other page refuses to close.
bool Display_Calendar_Weekview(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& NodeKey,
                               const std::string& OwnerKey, bool WholeCalendar);

}  // namespace KTReminds
