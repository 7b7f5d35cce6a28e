#include "Calendar_View.h"

#include <QLabel>
#include <QMenu>
#include <QToolBar>
#include <QToolButton>

#include "Entry_List.h"
#include "Image_List.h"
#include "Kt_data_01.h"
#include "Kt_labels.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "View_Rules.h"
#include "fm_Calendar.h"
#include "fm_Delete_Reminder.h"
#include "fm_Reminder.h"
#include "fm_Task.h"
#include "ui_View_Tools.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_data_01::TEntry_Type;
using Kt_data_01::TList_Item;
using Kt_util_01::CurrentDate;

namespace {

int Tag(const QObject* object) {
  return object->property("Tag").toInt();
}

// "short|long": the short half names the tool and is its tip, the long one, or the whole, goes to the status
// bar.
void Set_Hint(QAction* tool, const QString& hint) {
  const QString short_half = hint.section(QLatin1Char('|'), 0, 0);
  tool->setText(short_half);
  tool->setToolTip(short_half);
  tool->setStatusTip(hint.section(QLatin1Char('|'), -1));
  for (QObject* shown : tool->associatedObjects()) {
    if (auto* button = qobject_cast<QToolButton*>(shown)) button->setAccessibleName(short_half);
  }
}

}  // namespace

TCalendar_View::TCalendar_View(int page_index) : page(page_index) {}

TCalendar_View::~TCalendar_View() = default;

void TCalendar_View::Set_Keys(const std::string& node_key, const std::string& owner_key,
                              bool whole_calendar) {
  NodeKey = node_key;
  OwnerKey = owner_key;
  WholeCalendar = whole_calendar;
}

void TCalendar_View::Set_Up(const TControls& new_controls) {
  controls = new_controls;
  tools = std::make_unique<Ui::View_Tools>();
  tools->setupUi(controls.Tool_Panel);
  Set_Up_Actions();
  Initialise_Form(this);
  Connect_Commands();
  for (TEntry_List* list : controls.Lists) Connect_List(list);
  picker = Show_Calendar(controls.Calendar_Panel, this);
  if (Kt_util_01::Read_Bool("General", "Show Calendar", false)) Show_Or_Hide_Calendar();
}

void TCalendar_View::Set_Up_Actions() {
  const TImage_List images("P3_Enabled");
  for (QAction* action : controls.Tool_Panel->findChildren<QAction*>()) {
    if (const QVariant image = action->property("Image"); image.isValid())
      action->setIcon(images.Icon(image.toInt()));
  }
  for (QMenu* menu : controls.Tool_Panel->findChildren<QMenu*>()) {
    if (const QVariant image = menu->property("Image"); image.isValid())
      menu->setIcon(images.Icon(image.toInt()));
    menu->menuAction()->setStatusTip(menu->statusTip());
  }
  for (QAction* tool : tools->ToolBar1->actions()) {
    if (tool->isSeparator()) continue;
    tools->ToolBar1->widgetForAction(tool)->setObjectName(tool->objectName());
    Set_Hint(tool, tool->toolTip());
    // The tool of the view that is shown stays down.
    if (Tag(tool) == page) {
      tool->setCheckable(true);
      tool->setChecked(true);
    }
  }
  // The style's own image for what does not fit in is black on every palette.
  if (auto* more = tools->ToolBar1->findChild<QToolButton*>(QStringLiteral("qt_toolbar_ext_button"))) {
    more->setIcon({});
    more->setArrowType(Qt::DownArrow);
  }
  tools->PopupMenu1->setDefaultAction(tools->PropsMenu);
  for (QAction* column : {tools->Sort0, tools->Sort1, tools->Sort2, tools->Sort3, tools->Sort4})
    columns.addAction(column);
  for (QAction* direction : {tools->Ascending1, tools->Descending1}) directions.addAction(direction);
}

void TCalendar_View::Connect_Commands() {
  const auto on = [this](std::initializer_list<QAction*> actions, auto handler) {
    for (QAction* action : actions)
      connect(action, &QAction::triggered, this, [this, action, handler] { handler(*this, action); });
  };
  on({tools->AckBtn, tools->Ackmenu}, [](auto& view, QAction*) { view.Toggle_State(); });
  on({tools->Addbtn, tools->AddMenu}, [](auto& view, QAction*) { view.Add_Event(); });
  on({tools->AddTaskBtn, tools->AddTask1}, [](auto& view, QAction*) { view.Add_Task(); });
  on({tools->Delbtn, tools->DelMenu}, [](auto& view, QAction*) { view.Delete(); });
  on({tools->PropsBtn, tools->PropsMenu}, [](auto& view, QAction*) { view.Open(); });
  on({tools->PrevBtn, tools->Nextbtn, tools->PrevMenu, tools->NextMenu},
     [](auto& view, QAction* action) { view.Go_To_Entry(Tag(action) == 0); });
  on({tools->ToolButton7, tools->Today1}, [](auto& view, QAction*) { view.Go_To_Today(); });
  on({tools->ToolButton4, tools->GotoDate1}, [](auto& view, QAction*) { view.Show_Or_Hide_Calendar(); });
  on({tools->ToolButton10, tools->ToolButton9, tools->ToolButton8, tools->ToolButton11, tools->DailyView1,
      tools->MonthlyView1, tools->AllView1},
     [](auto& view, QAction* action) {
       if (action->isCheckable()) action->setChecked(true);
       view.Show_View(Tag(action));
     });
  on({tools->Sort0, tools->Sort1, tools->Sort2, tools->Sort3, tools->Sort4}, [](auto& view, QAction* action) {
    SortKey = Tag(action);
    view.Sort();
  });
  on({tools->Ascending1, tools->Descending1}, [](auto& view, QAction* action) {
    SortAscending = Tag(action) == 0;
    view.Sort();
  });
  connect(tools->PopupMenu1, &QMenu::aboutToShow, this, &TCalendar_View::Set_Btns);
  connect(tools->SortBy1, &QMenu::aboutToShow, this, &TCalendar_View::Check_Order);
}

void TCalendar_View::Connect_List(TEntry_List* list) {
  connect(list, &TEntry_List::Selection_Changed, this, [this, list] {
    if (list->Selected_Row() >= 0) {
      for (TEntry_List* other : controls.Lists) {
        if (other != list) other->clearSelection();
      }
    }
    Set_Btns();
  });
  connect(list, &TEntry_List::State_Clicked, this, &TCalendar_View::Toggle_State);
  connect(list, &TEntry_List::Opened, this, &TCalendar_View::Open);
  connect(list, &TEntry_List::Insert_Pressed, this, &TCalendar_View::Add_Event);
  connect(list, &TEntry_List::Delete_Pressed, this, &TCalendar_View::Delete);
  connect(list, &TEntry_List::Menu_Asked, tools->PopupMenu1,
          [this](const QPoint& place) { tools->PopupMenu1->popup(place); });
}

void TCalendar_View::Set_Up_Sort_Label(TWebLabel* label) {
  connect(label, &TWebLabel::Clicked, this, [this, label] {
    Click_Sort_Label(Tag(label), SortKey, SortAscending);
    Sort();
  });
}

void TCalendar_View::Set_View_Available(int page_index, bool available) {
  for (QAction* action : {tools->ToolButton10, tools->ToolButton9, tools->ToolButton8, tools->ToolButton11,
                          tools->DailyView1, tools->MonthlyView1, tools->AllView1}) {
    if (Tag(action) == page_index) action->setEnabled(available);
  }
}

bool TCalendar_View::Outlives(const std::function<void()>& call) {
  const QPointer<TCalendar_View> self(this);
  call();
  return self && !self->Is_Closed();
}

TList_Item* TCalendar_View::Selected() const {
  for (TEntry_List* list : controls.Lists) {
    if (TList_Item* item = list->Selected()) return item;
  }
  return nullptr;
}

void TCalendar_View::Set_Btns() {
  TView_Buttons buttons;
  if (!Outlives([&] { buttons = Buttons_For(Selected()); })) return;
  const auto enable = [](bool enabled, QAction* tool, QAction* item) {
    tool->setEnabled(enabled);
    item->setEnabled(enabled);
  };
  enable(buttons.Toggle, tools->AckBtn, tools->Ackmenu);
  enable(buttons.Open, tools->PropsBtn, tools->PropsMenu);
  enable(buttons.Add, tools->Addbtn, tools->AddMenu);
  enable(buttons.Delete, tools->Delbtn, tools->DelMenu);
  if (buttons.Toggle_To != TToggle::None) {
    const TToggle_Texts texts = Toggle_Texts(buttons.Toggle_To);
    Set_Hint(tools->AckBtn, To_Qt(texts.Hint));
    tools->Ackmenu->setText(To_Qt(texts.Caption));
    tools->Ackmenu->setStatusTip(To_Qt(texts.Long_Hint));
  }
  const bool shown = !controls.Calendar_Panel->isHidden();
  for (QAction* action : {tools->ToolButton4, tools->GotoDate1}) action->setChecked(shown);
  const QString caption = shown ? tr("Hide Calendar") : tr("Show Calendar");
  const QString hint = shown ? tr("Hides the Calendar display")
                             : tr("Displays a Calendar view allowing different dates to be selected");
  tools->GotoDate1->setText(caption);
  tools->GotoDate1->setStatusTip(hint);
  Set_Hint(tools->ToolButton4, caption + QLatin1Char('|') + hint);
}

void TCalendar_View::Handle_Message(const TMessage& message) {
  if (message.Number() == umDateChanged) DoRefresh();
  if (message.Number() == umGetFormName) Copy_Form_Name(*this, message);
}

void TCalendar_View::Tell_Picker() {
  Send_Message(picker, umDateChanged, 0, 0);
}

// The keys are copied: the view that holds them may be gone before the editor is.

void TCalendar_View::Add_Event() {
  if (!tools->Addbtn->isEnabled()) return;
  bool added = false;
  if (!Outlives(
          [&, node = NodeKey, owner = OwnerKey] { added = Reminder_Properties({}, owner, node, {}, false); }))
    return;
  if (!added) return;
  Tell_Picker();
  Refresh_After({});
}

void TCalendar_View::Add_Task() {
  bool added = false;
  const std::string owner = WholeCalendar ? std::string() : OwnerKey;
  if (Outlives([&, node = NodeKey] { added = Task_Properties({}, owner, node, {}, false); }) && added)
    Refresh_After({});
}

void TCalendar_View::Open() {
  const TList_Item* item = Selected();
  if (!item) return Add_Event();
  const TEntry_Type type = item->Data->EventType;
  if (type != TEntry_Type::Event && type != TEntry_Type::Task) return;
  const auto edit = type == TEntry_Type::Task ? Task_Properties : Reminder_Properties;
  const std::string key = item->Data->Key.Str();
  bool confirmed = false;
  if (Outlives([&, owner = item->Data->Contact.Str(), node = NodeKey, hidden = item->Data->Private] {
        confirmed = edit(key, owner, node, {}, hidden);
      }) &&
      confirmed)
    Refresh_After(key);
}

void TCalendar_View::Delete() {
  const TList_Item* item = Selected();
  if (!item) return;
  const std::string key = item->Data->Key.Str();
  if (!Buttons_For(item).Delete) return;
  bool deleted = false;
  if (Outlives([&] { deleted = Delete_Reminder(key); }) && deleted) Refresh_After({});
}

void TCalendar_View::Toggle_State() {
  TList_Item* item = Selected();
  const TToggle toggle = Buttons_For(item).Toggle_To;
  if (toggle == TToggle::None) return;
  if (Outlives([&] {
        Set_Event_as_Actioned(*item, toggle == TToggle::Mark_Done, true, Image_Done_Event, Image_Open_Event,
                              Image_Done_Task, Image_Open_Task);
      }))
    Set_Btns();
}

void TCalendar_View::Go_To_Entry(bool backwards) {
  Kt_util_01::TDateTime found = 0;
  bool is_there = false;
  if (!Outlives([&, node = NodeKey, owner = OwnerKey, whole = WholeCalendar] {
        is_there = Locate_Event(owner, node, CurrentDate, found, backwards, whole);
      }))
    return;
  if (!is_there) {
    const TNotice notice = No_Entry_Notice(backwards, From_Qt(controls.Title->text()));
    return Kt_util_01::Raise_Info(notice.Caption, notice.Text);
  }
  CurrentDate = found;
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
  Set_Btns();
}

void TCalendar_View::Show_View(int page_index) {
  if (page_index != page) Post_Message(Get_ParentForm(this), umDisplayForm, page_index, 0);
}

void TCalendar_View::Sort() {
  for (TEntry_List* list : controls.Lists) Sort_Items(list->Items(), SortKey);
}

void TCalendar_View::Check_Order() {
  for (QAction* column : columns.actions()) column->setChecked(Tag(column) == SortKey);
  (SortAscending ? tools->Ascending1 : tools->Descending1)->setChecked(true);
}

}  // namespace KTReminds
