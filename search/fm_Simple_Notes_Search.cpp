#include "fm_Simple_Notes_Search.h"

#include "Page_Numbers.h"

namespace KTReminds {

TSimple_Notes_Search_Frm::TSimple_Notes_Search_Frm()
    : TCriteria_Page({.Title = tr("Search the Notes"),
                      .List_Title = tr("Find Contacts whose Notes match these criteria:"),
                      .Search_Hint = tr("Click here to search the Notes of the Contacts for the criteria "
                                        "listed (or press the Enter key)"),
                      .Results = Page_Contact_Results,
                      .Closed = Page_None}) {
  setObjectName(QStringLiteral("Simple_Notes_Search_Frm"));
}

TSearch_Choices TSimple_Notes_Search_Frm::Groups() const {
  return {{Group_Contact, Get_Group_Name(Group_Contact, {})}};
}

TSearch_Choices TSimple_Notes_Search_Frm::Fields(int /*group*/, const std::string& /*group_name*/) const {
  return {{Search_Notes, Get_Field_Name(Search_Notes, Book)}};
}

bool Display_Simple_Notes_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                                 bool Clear) {
  return Display_Criteria_Page<TSimple_Notes_Search_Frm>(Parent, Form, Book, Clear);
}

}  // namespace KTReminds
