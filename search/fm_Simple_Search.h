#pragma once

#include "Criteria_Page.h"
#include "Folder_Choice.h"

namespace KTReminds {

/// The simple contact search page.
class TSimple_Search_Frm : public TCriteria_Page {
  Q_OBJECT

 public:
  TSimple_Search_Frm();
  void DoRefresh() override;

 protected:
  TSearch_Choices Groups() const override;

 private:
  TFolder_Choice* folder;
};

/// Shows the page on which a search of the book's contacts is put together; with `Clear` it begins with an
/// empty one. It asks the form around it for Page_Contact_Results, and when it is closed for Page_None.
/// False, with nothing changed, when the page in the reference refuses to close.
bool Display_Simple_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                           bool Clear);

}  // namespace KTReminds
