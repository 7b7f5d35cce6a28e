#pragma once

#include "Criteria_Page.h"
#include "Folder_Choice.h"

class QComboBox;

namespace KTReminds {

/// The page for searches of any kind, which can be stored as filters and loaded again.
class TAdvanced_Search_Frm : public TCriteria_Page {
  Q_OBJECT

 public:
  TAdvanced_Search_Frm();
  void DoRefresh() override;
  /// Looks for what the current search asks for.
  void Show_Search();

 protected:
  TSearch_Choices Groups() const override;
  int Results() const override;

 private:
  void Load();
  /// Of the pages of results, that of what is looked for.
  int Target() const;

  QComboBox* target;
  TFolder_Choice* folder;
};

/// As Display_Simple_Search; it asks for the page of results of what is looked for: contacts, items of the
/// calendar or tasks.
bool Display_Advanced_Search(QWidget* Parent, Kt_forms::TForm_Reference& Form, const std::string& Book,
                             bool Clear);

}  // namespace KTReminds
