#pragma once

#include "Criteria_Page.h"

namespace KTReminds {

/// The page for searching the notes of contacts.
class TSimple_Notes_Search_Frm : public TCriteria_Page {
  Q_OBJECT

 public:
  TSimple_Notes_Search_Frm();

 protected:
  TSearch_Choices Groups() const override;
  TSearch_Choices Fields(int group, const std::string& group_name) const override;
};

/// As Display_Simple_Search, for the notes alone.
bool Display_Simple_Notes_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                                 bool Clear);

}  // namespace KTReminds
