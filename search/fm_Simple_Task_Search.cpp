#include "fm_Simple_Task_Search.h"

#include <algorithm>

#include "Page_Numbers.h"

namespace KTReminds {

TSimple_Task_Search_Frm::TSimple_Task_Search_Frm()
    : TCriteria_Page({.Title = tr("Search the Tasks"),
                      .List_Title = tr("Find Tasks matching these criteria:"),
                      .Search_Hint = tr(
                          "Click here to search the Tasks for the criteria listed (or press the Enter key)"),
                      .Results = Page_Task_Results,
                      .Closed = Page_Tasks}) {
  setObjectName(QStringLiteral("Simple_Task_Search_Frm"));
}

TSearch_Choices TSimple_Task_Search_Frm::Groups() const {
  return {{Group_Tasks, Get_Group_Name(Group_Tasks, {})}};
}

bool Display_Simple_Task_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book) {
  // What was asked of others finds no task.
  const bool of_others =
      CurrentSearch && std::any_of(CurrentSearch->Items.begin(), CurrentSearch->Items.end(),
                                   [](auto& item) { return item.Field != Group_Tasks; });
  return Display_Criteria_Page<TSimple_Task_Search_Frm>(Parent, Form, Book, of_others);
}

}  // namespace KTReminds
