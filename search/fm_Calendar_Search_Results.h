#pragma once

#include <memory>
#include <string>

#include "Entry_Commands.h"
#include "Kt_forms.h"

namespace Ui {
class Calendar_Search_Results_Frm;
}

namespace KTReminds {

/// The calendar search results: the events, tasks and holidays that the current search finds in a book.
class TCalendar_Search_Results_Frm : public Kt_forms::TForm, private TEntry_Page {
  Q_OBJECT

 public:
  TCalendar_Search_Results_Frm();
  ~TCalendar_Search_Results_Frm() override;

  /// The calendar record `owner` gets new entries.
  void Set_Keys(const std::string& book, const std::string& owner);
  /// Searches anew. The page may be closed meanwhile, which ends the search, as Escape does. Refused from
  /// inside itself.
  void DoRefresh();

 protected:
  void Handle_Message(const Kt_forms::TMessage& message) override;
  void Rows_Changed() override;

 private:
  TOwner Owner_Of_New(TEntry_Type type) const override;
  void Refresh_After(const TEntry_Change& change) override;
  void Set_Up_Commands();
  void Fill_List();
  void Ask_For(int page);

  std::unique_ptr<Ui::Calendar_Search_Results_Frm> ui;
  std::unique_ptr<TEntry_Commands> commands;
  std::string NodeKey, OwnerKey;
  bool searching = false;
};

/// Shows what the current search finds in the calendar of a book. The page asks the form around it for
/// Page_Calendar_Search to change the search, and when it is closed for the day view. False, with nothing
/// changed, when the page in the reference refuses to close.
bool Display_Calendar_Search_Results(QWidget* Parent, Kt_forms::TForm_Reference& Form,
                                     const std::string& Book, const std::string& Owner);

}  // namespace KTReminds
