#include "fm_Simple_Search.h"

#include <QVBoxLayout>

#include "Page_Numbers.h"

namespace KTReminds {

TSimple_Search_Frm::TSimple_Search_Frm()
    : TCriteria_Page(
          {.Title = tr("Search the Contacts"),
           .List_Title = tr("Find Contacts matching these criteria:"),
           .Search_Hint =
               tr("Click here to search the Contacts for the criteria listed (or press the Enter key)"),
           .Results = Page_Contact_Results,
           .Closed = Page_None}),
      folder(new TFolder_Choice) {
  setObjectName(QStringLiteral("Simple_Search_Frm"));
  Add_Extras(folder);
}

void TSimple_Search_Frm::DoRefresh() {
  TCriteria_Page::DoRefresh();
  folder->Show_Folders(Book);
}

TSearch_Choices TSimple_Search_Frm::Groups() const {
  TSearch_Choices groups;
  Populate_Search_Fields(Book, groups);
  return groups;
}

bool Display_Simple_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                           bool Clear) {
  return Display_Criteria_Page<TSimple_Search_Frm>(Parent, Form, Book, Clear);
}

}  // namespace KTReminds
