#pragma once

#include <QElapsedTimer>
#include <memory>
#include <vector>

#include "Kt_data_01.h"
#include "Kt_forms.h"

class QProgressBar;

namespace KTReminds {

/// Fills a list of a page while the window stays alive: moves a bar, shows the first rows early where they
/// are known before the others, and ends the build when the page is closed, or the window with it.
class TBuild_Progress : public Kt_data_01::TProgress_Bar {
 public:
  /// Empties the list, whose items are freed a few at a time. `stops_on_escape`: the user may end it.
  TBuild_Progress(const Kt_forms::TForm& page, QProgressBar& bar, Kt_data_01::TItem_List& list,
                  bool stops_on_escape = false);
  /// Of what is shown as a whole at the end.
  TBuild_Progress(const Kt_forms::TForm& page, QProgressBar& bar, bool stops_on_escape);
  void Set_Max(std::int64_t steps) override;
  void Set_Position(std::int64_t steps) override;

 private:
  const Kt_forms::TForm& page;
  QProgressBar& bar;
  const bool is_seen, stops_on_escape;
  Kt_forms::TBusy_Scope busy;
  std::vector<std::unique_ptr<Kt_data_01::TList_Item>> old_items;
  QElapsedTimer since;  // the last time; the first rows are shown as soon as there are some
};

}  // namespace KTReminds
