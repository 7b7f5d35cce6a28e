#pragma once

#include "Contacts_Page.h"
#include "Kt_tree.h"

class QProgressBar;

namespace Kt_forms {
class TWebLabel;
}

namespace Plexidex {

/// The contacts of a book that the current search finds.
class TFound_Contacts_Page : public TContact_List_Page {
  Q_OBJECT

 public:
  TFound_Contacts_Page();
  /// Searches anew. The page may be closed meanwhile, which ends the search, as Escape does. Refused from
  /// inside itself.
  void Reload() override;
  /// Their keys, by name.
  const std::vector<std::string>& Found() const { return keys; }

 signals:
  /// A search has ended.
  void Searched();
  void Settings_Wanted();
  void Close_Wanted();

 protected:
  std::vector<Kt_data_01::TContact_Row> Read_Rows() override;

 private:
  void Search();

  QLabel* caption;
  QProgressBar* bar;
  Kt_data_01::TTree tree;
  std::vector<std::string> keys;
  bool searching = false;
};

}  // namespace Plexidex
