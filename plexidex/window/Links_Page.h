#pragma once

#include "Contact_Rows_Page.h"
#include "Links.h"

namespace Plexidex {

/// The document links of a contact: files and web addresses, which the desktop opens.
class TLinks_Page : public TContact_Rows_Page {
  Q_OBJECT

 public:
  TLinks_Page();

 protected:
  std::vector<TRow> Read_Rows() override;
  bool Add_Row() override;
  bool Edit_Row(std::size_t row) override;
  bool Remove_Row(std::size_t row) override;
  void Open_Row(std::size_t row) override;

 private:
  std::vector<Kt_data_01::TLink> links;
};

/// Lets the user enter a new link of a contact. True when it was saved.
bool Enter_Link(QWidget* window, const std::string& contact);

}  // namespace Plexidex
