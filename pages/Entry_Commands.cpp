#include "Entry_Commands.h"

#include <QAction>
#include <QMenu>
#include <algorithm>

#include "Entry_List.h"
#include "Reminder_Utils.h"
#include "Sort_Header.h"
#include "fm_Delete_Reminder.h"
#include "fm_Reminder.h"
#include "fm_Task.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_data_01::TList_Item;

TEntry_Commands::TEntry_Commands(TForm& form, TEntry_Page& page, const TEntry_Controls& controls,
                                 TEntry_Order order, std::string noun)
    : form(form), page(page), controls(controls), order(std::move(order)), noun(std::move(noun)) {
  const auto on = [this](const QList<QAction*>& actions, auto run) {
    for (QAction* action : actions)
      connect(action, &QAction::triggered, this, [this, action, run] { run(*this, Tag(action)); });
  };
  on(controls.Toggle.Actions(), [](auto& commands, int) { commands.Toggle_State(); });
  on(controls.Add_Event.Actions(), [](auto& commands, int) { commands.Add(TEntry_Type::Event); });
  on(controls.Add_Task.Actions(), [](auto& commands, int) { commands.Add(TEntry_Type::Task); });
  on(controls.Delete.Actions(), [](auto& commands, int) { commands.Delete(); });
  on(controls.Open.Actions(), [](auto& commands, int) { commands.Open(); });
  on(controls.Columns, [](auto& commands, int column) {
    commands.order.Column = column;
    commands.Sort();
  });
  on(controls.Directions, [](auto& commands, int direction) {
    commands.order.Ascending = direction == 0;
    commands.Sort();
  });
  for (QAction* column : controls.Columns) columns.addAction(column);
  for (QAction* direction : controls.Directions) directions.addAction(direction);
  if (controls.Popup && controls.Open.Item) controls.Popup->setDefaultAction(controls.Open.Item);
  if (controls.Popup) connect(controls.Popup, &QMenu::aboutToShow, this, &TEntry_Commands::Set_Btns);
  if (controls.Sort_By) connect(controls.Sort_By, &QMenu::aboutToShow, this, &TEntry_Commands::Check_Order);
}

void TEntry_Commands::Add_List(TEntry_List* list) {
  lists.append(list);
  connect(list, &TEntry_List::Entered, this, [this, list] { Clear_Others(list); });
  connect(list, &TEntry_List::Selection_Changed, this, [this, list] {
    if (list->Selected_Row() >= 0) Clear_Others(list);
    Set_Btns();
  });
  connect(list, &TEntry_List::State_Clicked, this,
          [this, list](int row) { Toggle(&list->Items()[static_cast<std::size_t>(row)]); });
  connect(list, &TEntry_List::Opened, this, &TEntry_Commands::Open);
  connect(list, &TEntry_List::Insert_Pressed, this, &TEntry_Commands::Add_Usual);
  connect(list, &TEntry_List::Delete_Pressed, this, &TEntry_Commands::Delete);
  connect(list, &TEntry_List::Menu_Asked, this, &TEntry_Commands::Show_Popup);
}

void TEntry_Commands::Add_Header(TSort_Header* header, TEntry_List* list) {
  header->Stand_Over(list);
  connect(header, &TSort_Header::Sort_Asked, this, [this](int column) {
    Click_Sort_Label(column, order.Column, order.Ascending);
    Sort();
  });
}

TList_Item* TEntry_Commands::Selected() const {
  for (TEntry_List* list : lists) {
    if (TList_Item* item = list->Selected()) return item;
  }
  return nullptr;
}

int TEntry_Commands::Selected_Row() const {
  for (const TEntry_List* list : lists) {
    if (const int row = list->Selected_Row(); row >= 0) return row;
  }
  return -1;
}

void TEntry_Commands::Clear_Others(const TEntry_List* list) {
  for (TEntry_List* other : lists) {
    if (other != list) other->clearSelection();
  }
}

bool TEntry_Commands::Set_Btns() {
  // A failed look at the rights is reported, during which the page may be closed and its lists may change.
  TToggle toggle = TToggle::None;
  bool may_delete = false;
  if (!Outlives(&form, [&] { toggle = Toggle_For(Selected()); }) ||
      !Outlives(&form, [&] { may_delete = May_Delete(Selected()); }))
    return false;
  controls.Toggle.Set_Enabled(toggle != TToggle::None);
  controls.Open.Set_Enabled(May_Open(Selected()));
  controls.Add_Event.Set_Enabled(true);
  controls.Delete.Set_Enabled(may_delete);
  if (toggle == TToggle::None) return true;
  const TToggle_Texts texts = Toggle_Texts(toggle, noun);
  if (controls.Toggle.Tool) Set_Hint(controls.Toggle.Tool, To_Qt(texts.Hint));
  if (controls.Toggle.Item) {
    controls.Toggle.Item->setText(To_Qt(texts.Caption));
    controls.Toggle.Item->setStatusTip(To_Qt(texts.Long_Hint));
  }
  return true;
}

void TEntry_Commands::Show_Popup(const QPoint& place) {
  if (controls.Popup) controls.Popup->popup(place);
}

void TEntry_Commands::Run(const std::function<bool()>& dialog, const TEntry_Change& change) {
  using TKind = TEntry_Change::TKind;
  const auto selected =
      std::find_if(lists.begin(), lists.end(), [](auto* list) { return list->Selected_Row() >= 0; });
  TEntry_List* list = selected == lists.end() ? nullptr : *selected;
  bool confirmed = false;
  if (!Outlives(&form, [&] { confirmed = dialog(); })) return;
  // Also an editor that was cancelled may have written.
  if (!confirmed) return form.Look_At_Rows();
  if (!Keep_Place([&] { page.Refresh_After(change); })) return;
  if (change.Kind == TKind::Opened) Select_Key(change.Key);
  if (change.Kind == TKind::Deleted)
    list->Select_Row(std::min(change.Row, static_cast<int>(list->Items().Count()) - 1));
}

std::string TEntry_Commands::Selected_Key() const {
  const TList_Item* item = Selected();
  return item && item->Data ? item->Data->Key.Str() : std::string();
}

void TEntry_Commands::Keep_Selection(const std::function<void()>& build) {
  const std::string key = Selected_Key();
  // Also a selected entry that is out of sight stays there.
  Keep_Place([&] {
    if (Outlives(&form, build)) Select_Key(key);
  });
}

bool TEntry_Commands::Keep_Place(const std::function<void()>& build) {
  std::vector<int> top_rows;
  for (const TEntry_List* list : lists) top_rows.push_back(list->Top_Row());
  if (!Outlives(&form, build)) return false;
  for (qsizetype i = 0; i < lists.size(); ++i) lists[i]->Scroll_To_Top(top_rows[static_cast<std::size_t>(i)]);
  return true;
}

void TEntry_Commands::Select_Key(const std::string& key) {
  if (key.empty()) return;
  for (TEntry_List* list : lists) {
    if (const int row = list->Row_Of(key); row >= 0) return list->Select_Row(row);
  }
}

// The keys are copied: the page that holds them may be gone before the editor is.

void TEntry_Commands::Add(TEntry_Type type) {
  const bool task = type == TEntry_Type::Task;
  const QList<QAction*> given_by = (task ? controls.Add_Task : controls.Add_Event).Actions();
  if (given_by.isEmpty() || !given_by.front()->isEnabled()) return;
  page.Before_Adding();
  Run(
      [task, owner = page.Owner_Of_New(type)] {
        return (task ? Task_Properties : Reminder_Properties)({}, owner.Contact, owner.Book, {}, false);
      },
      {task ? TEntry_Change::TKind::Task_Added : TEntry_Change::TKind::Event_Added, {}, Selected_Row()});
}

void TEntry_Commands::Add_Usual() {
  Add(controls.Add_Event.Actions().isEmpty() ? TEntry_Type::Task : TEntry_Type::Event);
}

void TEntry_Commands::Open() {
  const TList_Item* item = Selected();
  if (!item) return Add_Usual();
  if (!May_Open(item)) return;
  const Kt_data_01::TEventKey& entry = *item->Data;
  const auto edit = entry.Is_Task() ? Task_Properties : Reminder_Properties;
  Run([edit, key = entry.Key.Str(), contact = entry.Contact.Str(), hidden = entry.Private,
       book = page.Owner_Of_New(entry.EventType).Book] { return edit(key, contact, book, {}, hidden); },
      {TEntry_Change::TKind::Opened, entry.Key.Str(), Selected_Row()});
}

void TEntry_Commands::Delete() {
  const TList_Item* item = Selected();
  if (!item) return;
  const TEntry_Change change = {TEntry_Change::TKind::Deleted, item->Data->Key.Str(), Selected_Row()};
  if (May_Delete(item)) Run([&change] { return Delete_Reminder(change.Key); }, change);
}

void TEntry_Commands::Toggle_State() {
  Toggle(Selected());
}

void TEntry_Commands::Toggle(TList_Item* item) {
  const TToggle toggle = Toggle_For(item);
  if (toggle == TToggle::None) return;
  const bool done = toggle == TToggle::Mark_Done;
  const auto mark = [item, done] {
    Set_Event_as_Actioned(*item, done, true, Image_Done_Event, Image_Open_Event, Image_Done_Task,
                          Image_Open_Task);
  };
  if (Outlives(&form, [&] { form.Change_In_Place(mark); })) Set_Btns();
}

void TEntry_Commands::Sort() {
  for (TEntry_List* list : lists) order.Sort(list->Items());
}

void TEntry_Commands::Check_Order() {
  for (QAction* column : controls.Columns) column->setChecked(Tag(column) == order.Column);
  for (QAction* direction : controls.Directions)
    direction->setChecked((Tag(direction) == 0) == order.Ascending);
}

}  // namespace KTReminds
