#include "fm_Task_HomePage.h"

#include <QMenu>
#include <QToolBar>
#include <QToolButton>
#include <algorithm>

#include "Calendar_Search.h"
#include "Current_Search.h"
#include "Entry_List.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Sort_Header.h"
#include "Task_Order.h"
#include "fm_Simple_Task_Search.h"
#include "ui_fm_Task_HomePage.h"

namespace KTReminds {

using namespace Kt_forms;

namespace {

const TEntry_Columns& Task_Columns() {
  // The headings are bold.
  const auto heading = [](const char* text) { return From_Qt(TTask_HomePage_Frm::tr(text)) + "   "; };
  static const TEntry_Columns columns = {{{TCell::State_Image},
                                          {TCell::Start_Date, 0, TSide::Left, heading("Start Date")},
                                          {TCell::Due_Date, 1, TSide::Left, heading("Date Due")},
                                          {TCell::Text, 2},
                                          {TCell::Status, 3, TSide::Left, heading("Not Started")},
                                          {TCell::Percent, 4, TSide::Under_Middle, heading("Percent")},
                                          {TCell::Priority, 5, TSide::Under_Middle, heading("Priority")}},
                                         false};
  return columns;
}

}  // namespace

TTask_HomePage_Frm::TTask_HomePage_Frm()
    : THome_Page({.Images = "TaskHome_Enabled",
                  .Tool_Bar = "ToolBar3",
                  .Search_Hint = tr("Search Tasks|Search the Address Book's Tasks"),
                  .Search_Page = Page_Task_Search,
                  .Permissions = tr("Task &Permissions..."),
                  .Permissions_Hint = tr("Defines the access permissions for the Task Manager"),
                  .Permissions_Title = " Access Permissions for Tasks",
                  .Empty_Name = nullptr}),
      filter(Task_Filter_Of(Kt_util_01::Read_Integer("General", "Task View", 1))),
      ui(std::make_unique<Ui::Task_HomePage_Frm>()) {
  ui->setupUi(this);
  Set_Up_Menus();
  Set_Up_Tools(this, ui->ToolBar1);
  Set_Up({ui->Panel3, ui->SetupPanel, {ui->SetCaption, ui->Permissions}});
  setFocusProxy(ui->ListView1);
  ui->ListView1->Set_Columns(Task_Columns());
  const TEntry_Controls controls = {
      .Toggle = {ui->AckBtn, ui->Ackmenu},
      .Add_Task = {ui->AddTaskBtn, ui->AddTask1},
      .Delete = {ui->Delbtn, ui->DelMenu},
      .Open = {ui->PropsBtn, ui->PropsMenu},
      .Popup = ui->PopupMenu1,
      .Sort_By = ui->SortBy1,
      .Columns = {ui->Sort0, ui->Sort1, ui->Sort2, ui->Sort3, ui->Sort4, ui->Sort5},
      .Directions = {ui->Ascending1, ui->Descending1}};
  TEntry_Page& as_page = *this;
  commands = std::make_unique<TEntry_Commands>(
      *this, as_page, controls, TEntry_Order{TaskSortKey, TaskSortAscending, Sort_Tasks}, "Task");
  commands->Add_List(ui->ListView1);
  commands->Add_Header(ui->EventTitlePanel, ui->ListView1);
  connect(ui->Task, &TWebLabel::Clicked, this, [this] { commands->Add(TEntry_Type::Task); });
  for (TWebLabel* label : {ui->SearchTasks, ui->SearchSettings})
    connect(label, &TWebLabel::Clicked, this, &TTask_HomePage_Frm::Search);
  connect(ui->ClearSearch, &TWebLabel::Clicked, this, [this] {
    Set_Mode(Page_Tasks);
    DoRefresh();
  });
  connect(ui->Permissions, &TWebLabel::Clicked, this, [this] { Show_Page(Page_Permissions); });
}

TTask_HomePage_Frm::~TTask_HomePage_Frm() = default;

void TTask_HomePage_Frm::Set_Up_Menus() {
  auto* view = new QToolButton(ui->ToolBar2);
  view->setObjectName(QStringLiteral("ViewBtn"));
  view->setText(tr("View"));
  view->setToolTip(tr("View|Change which Tasks are displayed"));
  view->setMenu(ui->PopupMenu2);
  view->setPopupMode(QToolButton::InstantPopup);
  view->setFocusPolicy(Qt::TabFocus);
  ui->ToolBar2->addWidget(view);
  auto* filters = new QActionGroup(this);
  for (QAction* show :
       {ui->ShowAll1, ui->ShowOverdue1, ui->ShowInProgress1, ui->ShowCompleted1, ui->ShowOutstanding1}) {
    filters->addAction(show);
    show->setChecked(Task_Filter_Of(Tag(show)) == filter);
    connect(show, &QAction::triggered, this, [this, show] { Set_Filter(Task_Filter_Of(Tag(show))); });
  }
  connect(ui->SearchTasks1, &QAction::triggered, this, &TTask_HomePage_Frm::Search);
}

void TTask_HomePage_Frm::Set_Mode(int mode) {
  search_results = mode == Page_Task_Results;
  if (mode == Page_Tasks) Clear_Search();
}

void TTask_HomePage_Frm::Set_Filter(TTask_Filter new_filter) {
  filter = new_filter;
  Kt_util_01::Write_Integer("General", "Task View", static_cast<int>(filter));
  DoRefresh();
}

void TTask_HomePage_Frm::DoRefresh(int SelectIndex) {
  Rows_Are_Shown();
  for (QWidget* label : {ui->SearchSettings, ui->ClearSearch}) label->setVisible(search_results);
  if (!Outlives(this, [this] { Fill_List(); })) return;
  const auto& items = ui->ListView1->Items();
  ui->Label3->setText(To_Qt(search_results ? Task_Results_Caption(items.Count()) : Task_Caption(filter)));
  ui->ListView1->Select_Row(std::min(SelectIndex, static_cast<int>(items.Count()) - 1));
  commands->Set_Btns();
}

void TTask_HomePage_Frm::Fill_List() {
  const TBusy_Scope hourglass;
  auto& items = ui->ListView1->Items();
  if (!search_results) return Build_Task_List({NodeKey, OwnerKey}, filter, items);
  std::int64_t elapsed = 0;
  SearchCalendar(NodeKey, items, elapsed);
  Sort_Tasks(items);
}

void TTask_HomePage_Frm::Show_Page(int Index) {
  if (Index == Page_Task_Search) {
    Display_Simple_Task_Search(ui->SetupPanel, current, NodeKey);
  } else {
    THome_Page::Show_Page(Index);
  }
  ui->SetupPanel->setVisible(Current());
  ui->TaskPanel->setVisible(Index != Page_Permissions || !Current());
}

void TTask_HomePage_Frm::Handle_Message(const TMessage& message) {
  switch (message.Number()) {
    case umRefreshDisplay:
      show();
      DoRefresh();
      break;
    case umSelectNode:
      Show_Page(Page_None);
      break;
    case umAddTask:
      commands->Add(TEntry_Type::Task);
      break;
    case umDisplayForm:
      THome_Page::Handle_Message(message);
      // The host shows this page again, with what the search finds.
      if (message.WParam == Page_Task_Results)
        Post_Message(Get_ParentForm(this), umDisplayForm, Page_Task_Results, 0);
      break;
    default:
      THome_Page::Handle_Message(message);
  }
}

TOwner TTask_HomePage_Frm::Owner_Of_New(TEntry_Type /*type*/) const {
  return {NodeKey, OwnerKey};
}

void TTask_HomePage_Frm::Refresh_After(const TEntry_Change& change) {
  DoRefresh(std::max(change.Row, 0));
}

// What is gone is followed by what stands in its place.
void TTask_HomePage_Frm::Rows_Changed() {
  commands->Keep_Selection([this] { DoRefresh(ui->ListView1->Selected_Row()); });
}

bool Display_Task_Home_Page(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                            const std::string& OwnerKey, int Mode, QWidget* ToolPanel) {
  Kt_util_01::Sound(2);
  auto* page = Embed_Home_Page<TTask_HomePage_Frm>(Parent, Form, NodeKey, OwnerKey, ToolPanel);
  if (!page) return false;
  page->Set_Mode(Mode);
  // What is shown beside the tasks may be another book's.
  page->Show_Page(Page_None);
  page->show();
  page->DoRefresh(0);
  return true;
}

}  // namespace KTReminds
