#include "fm_Simple_Calendar_Search.h"

#include "Page_Numbers.h"

namespace KTReminds {

TSimple_Calendar_Search_Frm::TSimple_Calendar_Search_Frm()
    : TCriteria_Page(
          {.Title = tr("Search the Calendar"),
           .List_Title = tr("Find Calendar Items matching these crtieria:"),
           .Search_Hint = tr("Click here to search the Calendar Events for the criteria listed (or "
                             "press the Enter key)"),
           .Results = Page_Calendar_Results,
           .Closed = Page_Day}) {
  setObjectName(QStringLiteral("Simple_Calendar_Search_Frm"));
}

TSearch_Choices TSimple_Calendar_Search_Frm::Groups() const {
  return Calendar_Groups();
}

bool Display_Simple_Calendar_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                                    bool Clear) {
  return Display_Criteria_Page<TSimple_Calendar_Search_Frm>(Parent, Form, Book, Clear);
}

}  // namespace KTReminds
