#include "Build_Progress.h"

#include <QProgressBar>
#include <algorithm>

namespace KTReminds {

TBuild_Progress::TBuild_Progress(const Kt_forms::TForm& page, QProgressBar& bar, bool stops_on_escape)
    : page(page), bar(bar), is_seen(page.window()->isVisible()), stops_on_escape(stops_on_escape) {}

TBuild_Progress::TBuild_Progress(const Kt_forms::TForm& page, QProgressBar& bar, Kt_data_01::TItem_List& list,
                                 bool stops_on_escape)
    : TBuild_Progress(page, bar, stops_on_escape) {
  list.Begin_Update();
  old_items = list.Take_Out();
  list.End_Update();
}

void TBuild_Progress::Set_Max(std::int64_t steps) {
  bar.setMaximum(static_cast<int>(steps));
}

void TBuild_Progress::Set_Position(std::int64_t steps) {
  constexpr int often_msecs = 20;
  constexpr std::size_t few_items = 200;
  if (since.isValid()) old_items.resize(old_items.size() - std::min(old_items.size(), few_items));
  if (steps == bar.maximum() || (since.isValid() && since.elapsed() < often_msecs)) return;
  bar.setValue(static_cast<int>(steps));
  busy.Service();
  const bool is_gone = page.Is_Closed() || (is_seen && !page.window()->isVisible());
  if (is_gone || (stops_on_escape && busy.Was_Escaped())) throw Kt_data_01::EAlready_Reported();
  since.start();
}

}  // namespace KTReminds
