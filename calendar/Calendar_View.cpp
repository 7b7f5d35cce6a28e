#include "Calendar_View.h"

#include <QAction>

#include "Kt_labels.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "View_Rules.h"
#include "fm_Calendar.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::CurrentDate;

TCalendar_View::TCalendar_View(int page) : page(page) {}

TCalendar_View::~TCalendar_View() = default;

void TCalendar_View::Set_Keys(const std::string& node_key, const std::string& owner_key,
                              bool whole_calendar) {
  NodeKey = node_key;
  OwnerKey = owner_key;
  WholeCalendar = whole_calendar;
}

void TCalendar_View::Set_Up(QWidget* tool_panel, QToolBar* tool_bar, const TEntry_Controls& entries,
                            const TDate_Controls& dates) {
  controls = dates;
  Set_Up_Tools(tool_panel, tool_bar);
  // The tool of the view that is shown stays down.
  for (QAction* tool : controls.Views) {
    if (Tag(tool) != page) continue;
    tool->setCheckable(true);
    tool->setChecked(true);
  }
  Initialise_Form(this);
  const TEntry_Order order = {SortKey, SortAscending, [](auto& list) { Sort_Items(list, SortKey); }};
  TEntry_Page& as_page = *this;
  commands = std::make_unique<TEntry_Commands>(*this, as_page, entries, order, "item");
  const auto on = [this](const QList<QAction*>& actions, auto run) {
    for (QAction* action : actions)
      connect(action, &QAction::triggered, this, [this, action, run] { run(*this, action); });
  };
  on(controls.Previous.Actions(), [](auto& view, QAction*) { view.Go_To_Entry(true); });
  on(controls.Next.Actions(), [](auto& view, QAction*) { view.Go_To_Entry(false); });
  on(controls.Today.Actions(), [](auto& view, QAction*) { view.Go_To_Today(); });
  on(controls.Calendar.Actions(), [](auto& view, QAction*) { view.Show_Or_Hide_Calendar(); });
  on(controls.Views, [](auto& view, QAction* action) {
    if (action->isCheckable()) action->setChecked(true);
    view.Show_View(Tag(action));
  });
  if (!controls.Calendar_Panel) return;
  picker = Show_Calendar(controls.Calendar_Panel, this);
  Show_Calendar_State();
  if (Kt_util_01::Read_Bool("General", "Show Calendar", false)) Show_Or_Hide_Calendar();
}

std::string TCalendar_View::Selected_Key() const {
  return commands->Selected_Key();
}

void TCalendar_View::Select_Entry(const std::string& key) {
  commands->Select_Key(key);
}

TOwner TCalendar_View::Owner_Of_New(TEntry_Type type) const {
  return {NodeKey, type == TEntry_Type::Task && WholeCalendar ? std::string() : OwnerKey};
}

void TCalendar_View::Refresh_After(const TEntry_Change& change) {
  if (change.Kind == TEntry_Change::TKind::Event_Added) Tell_Picker();
  DoRefresh();
}

void TCalendar_View::Handle_Message(const TMessage& message) {
  if (message.Number() == umDateChanged) DoRefresh();
  if (message.Number() == umGetFormName) Copy_Form_Name(*this, message);
}

void TCalendar_View::Rows_Changed() {
  commands->Keep_Selection([this] { DoRefresh(); });
}

void TCalendar_View::Tell_Picker() {
  Send_Message(picker, umDateChanged, 0, 0);
}

void TCalendar_View::Go_To_Entry(bool backwards) {
  std::optional<Kt_util_01::TDateTime> found;
  // The keys are copied: when the look fails, the view may be gone before that is reported.
  if (!Outlives(this,
                [&, owner = TOwner{NodeKey, OwnerKey}, whole = WholeCalendar] {
                  found = Nearest_Entry_Day(owner, whole, CurrentDate, backwards);
                }) ||
      !found)
    return;
  if (*found == 0) {
    const TNotice notice = No_Entry_Notice(backwards, From_Qt(controls.Title->Whole()));
    return Kt_util_01::Raise_Info(notice.Caption, notice.Text);
  }
  CurrentDate = *found;
  Tell_Picker();
  DoRefresh();
}

void TCalendar_View::Go_To_Today() {
  CurrentDate = Kt_util_01::Now();
  Tell_Picker();
  DoRefresh();
}

void TCalendar_View::Show_Or_Hide_Calendar() {
  const bool show = controls.Calendar_Panel->isHidden();
  controls.Calendar_Panel->setVisible(show);
  Kt_util_01::Write_Bool("General", "Show Calendar", show);
  Show_Calendar_State();
}

void TCalendar_View::Show_Calendar_State() {
  const bool shown = !controls.Calendar_Panel->isHidden();
  const QString caption = shown ? tr("Hide Calendar") : tr("Show Calendar");
  const QString hint = shown ? tr("Hides the Calendar display")
                             : tr("Displays a Calendar view allowing different dates to be selected");
  for (QAction* action : controls.Calendar.Actions()) action->setChecked(shown);
  if (QAction* item = controls.Calendar.Item) {
    item->setText(caption);
    item->setStatusTip(hint);
  }
  if (QAction* tool = controls.Calendar.Tool) Set_Hint(tool, caption + QLatin1Char('|') + hint);
}

void TCalendar_View::Show_View(int page_index) {
  if (page_index != page) Post_Message(Get_ParentForm(this), umDisplayForm, page_index, 0);
}

}  // namespace KTReminds
