#include "Views.h"

#include <algorithm>

#include "Page_Numbers.h"
#include "fm_Contacts_Page3a.h"
#include "fm_Contacts_Page3b.h"
#include "fm_Contacts_Page3c.h"
#include "fm_Contacts_Page3d.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

struct TView {
  int Page;
  decltype(&Display_Calendar_Dayview) Display;
};
constexpr TView Views[] = {
    {Page_Day, &Display_Calendar_Dayview},
    {Page_Week, &Display_Calendar_Weekview},
    {Page_Month, &Display_Calendar_MonthView},
    {Page_All, &Display_Calendar_Allview},
};

}  // namespace

bool Is_Calendar_View(int page) {
  return std::any_of(std::begin(Views), std::end(Views), [page](auto& view) { return view.Page == page; });
}

bool Display_Calendar_View(int page, QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                           const std::string& OwnerKey, bool WholeCalendar) {
  const auto* before = Form.As<TCalendar_View>();
  const std::string selected = before ? before->Selected_Key() : std::string();
  const bool takes_keyboard =
      before && before->Shown().Page != page && before->isAncestorOf(before->window()->focusWidget());
  for (const TView& view : Views) {
    if (view.Page != page) continue;
    if (!view.Display(Parent, Form, NodeKey, OwnerKey, WholeCalendar)) return false;
    // A long build can be overtaken by another page.
    auto* shown = Form.As<TCalendar_View>();
    if (!shown || shown->Shown().Page != page) return false;
    if (takes_keyboard) shown->setFocus(Qt::OtherFocusReason);
    shown->Select_Entry(selected);
    return true;
  }
  return false;
}

}  // namespace KTReminds
