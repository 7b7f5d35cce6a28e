#pragma once

#include "Criteria_Page.h"

namespace KTReminds {

/// The simple task search page.
class TSimple_Task_Search_Frm : public TCriteria_Page {
  Q_OBJECT

 public:
  TSimple_Task_Search_Frm();

 protected:
  TSearch_Choices Groups() const override;
};

/// Shows the page on which a search of the book's tasks is put together. It asks the form around it for
/// Page_Task_Results, and when it is closed for Page_Tasks. False, with nothing changed, when the page in the
/// reference refuses to close.
bool Display_Simple_Task_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book);

}  // namespace KTReminds
