#pragma once

#include "Criteria_Page.h"

namespace KTReminds {

/// The simple calendar search page.
class TSimple_Calendar_Search_Frm : public TCriteria_Page {
  Q_OBJECT

 public:
  TSimple_Calendar_Search_Frm();

 protected:
  TSearch_Choices Groups() const override;
};

/// Shows the page on which a search of the book's calendar is put together; with `Clear` it begins with an
/// empty one. It asks the form around it for Page_Calendar_Results, and when it is closed for the day view.
/// False, with nothing changed, when the page in the reference refuses to close.
bool Display_Simple_Calendar_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                                    bool Clear);

}  // namespace KTReminds
