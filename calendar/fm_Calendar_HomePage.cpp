#include "fm_Calendar_HomePage.h"

#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Page_Tools.h"
#include "Views.h"
#include "fm_Reminder.h"
#include "fm_Task.h"
#include "ui_fm_Calendar_HomePage.h"

namespace KTReminds {

using namespace Kt_forms;

TCalendar_HomePage_Frm::TCalendar_HomePage_Frm()
    : THome_Page({.Images = "CalHome_Enabled",
                  .Tool_Bar = "ToolBar1",
                  .Search_Hint = tr("Search Calendar|Search the Address Book's Calendar"),
                  .Search_Page = Page_Calendar_Search,
                  .Permissions = tr("Calendar &Permissions..."),
                  .Permissions_Hint = tr("Defines the access permissions for the Calendar"),
                  .Permissions_Title = " Access Permissions for Calendar",
                  .Empty_Name = "Error"}),
      ui(std::make_unique<Ui::Calendar_HomePage_Frm>()) {
  ui->setupUi(this);
  Set_Up({ui->Panel3, ui->SetupPanel, {ui->SetCaption, ui->Permissions}});
  connect(ui->CalendarEvent, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::New_Event);
  connect(ui->Task, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::New_Task);
  connect(ui->SearchCalendar, &TWebLabel::Clicked, this, &TCalendar_HomePage_Frm::Search);
  for (TWebLabel* label : {ui->Daily, ui->Weekly, ui->Monthly, ui->AllEvents, ui->Permissions}) {
    const int index = Tag(label);
    connect(label, &TWebLabel::Clicked, this, [this, index] { Show_Page(index); });
  }
}

TCalendar_HomePage_Frm::~TCalendar_HomePage_Frm() = default;

void TCalendar_HomePage_Frm::DoRefresh() {
  Show_Page(static_cast<int>(Kt_util_01::Read_Integer("General", "Calendar View", Page_Day)));
  read_only = Is_Read_Only();
}

void TCalendar_HomePage_Frm::Show_Page(int Index) {
  if (!Is_Calendar_View(Index)) return THome_Page::Show_Page(Index);
  if (Display_Calendar_View(Index, controls.Setup_Panel, current, NodeKey, OwnerKey, true))
    Kt_util_01::Write_Integer("General", "Calendar View", Index);
}

// The keys are copied: the page may be shown for another book while the editor is open.

void TCalendar_HomePage_Frm::New_Event() {
  if (read_only) return Kt_util_01::Sound(5);
  if (Outlives(this, [node = NodeKey, owner = OwnerKey] { Reminder_Properties({}, owner, node, {}, false); }))
    DoRefresh();
}

void TCalendar_HomePage_Frm::New_Task() {
  bool added = false;
  if (Outlives(this, [&added, node = NodeKey] { added = Task_Properties({}, {}, node, {}, false); }) && added)
    Send_Message(Current(), umDateChanged, 0, 0);
}

void TCalendar_HomePage_Frm::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umRefreshDisplay:
      if (Outlives(this, [this] { DoRefresh(); })) show();
      break;
    case umSelectNode:
      DoRefresh();
      break;
    case umAddContactEvent:
      if (message.LParam == 1) {
        New_Task();
      } else {
        New_Event();
      }
      break;
    default:
      THome_Page::Handle_Message(message);
  }
}

bool Display_Calendar_Home_Page(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, QWidget* ToolPanel) {
  auto* page = Embed_Home_Page<TCalendar_HomePage_Frm>(Parent, Form, NodeKey, OwnerKey, ToolPanel);
  if (!page) return false;
  page->show();
  page->DoRefresh();
  return true;
}

}  // namespace KTReminds
