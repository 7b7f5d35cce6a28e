#pragma once

#include "Contact_Rows_Page.h"
#include "Journal.h"

namespace Plexidex {

/// The journal of a contact, newest first. What the user entered can be changed and removed.
class TJournal_Page : public TContact_Rows_Page {
  Q_OBJECT

 public:
  TJournal_Page();

 protected:
  std::vector<TRow> Read_Rows() override;
  bool Add_Row() override;
  bool Edit_Row(std::size_t row) override;
  bool Remove_Row(std::size_t row) override;

 private:
  std::vector<Kt_data_01::TJournal_Entry> entries;
};

/// Lets the user enter a new journal entry of a contact. True when it was saved.
bool Enter_Journal_Entry(QWidget* window, const std::string& contact);

}  // namespace Plexidex
