#include "fm_Contacts_Page3d.h"

#include "Build_Progress.h"
#include "Page_Numbers.h"
#include "Reminder_Utils.h"
#include "View_Tools.h"
#include "ui_fm_Contacts_Page3d.h"

namespace KTReminds {

using namespace Kt_forms;

TContacts_Page3d_Frm::TContacts_Page3d_Frm()
    : TCalendar_View(Page_All),
      ui(std::make_unique<Ui::Contacts_Page3d_Frm>()),
      tools(std::make_unique<Ui::View_Tools>()) {
  ui->setupUi(this);
  tools->setupUi(ui->Panel7);
  Set_Up_Commands();
  ui->ListView1->Set_Columns(All_Columns());
  commands->Add_List(ui->ListView1);
  commands->Add_Header(ui->EventTitlePanel, ui->ListView1);
  setFocusProxy(ui->ListView1);
}

TContacts_Page3d_Frm::~TContacts_Page3d_Frm() = default;

void TContacts_Page3d_Frm::Set_Up_Commands() {
  auto* daily = new QAction(tr("Daily &View"), this);
  daily->setObjectName(QStringLiteral("DailyView2"));
  daily->setStatusTip(tr("Changes the Calendar view to a single day view"));
  daily->setProperty("Tag", Page_Day);
  daily->setProperty("Image", tools->ToolButton10->property("Image"));
  tools->View1->insertAction(tools->DailyView1, daily);
  Set_Up(ui->Panel7, tools->ToolBar1, Entry_Controls_Of(*tools),
         {.Title = ui->Label1, .Views = View_Actions_Of(*tools) << daily});
  const std::pair<QAction*, QString> dead[] = {
      {tools->PrevBtn, tr("Not Available|Locates the first Calendar Event or Task prior to the selected date "
                          " (Not Available in this view)")},
      {tools->Nextbtn, tr("Not Available|Locates the first Calendar Event or Task after the selected date  "
                          "(Not Available in this view)")},
      {tools->ToolButton7,
       tr("Not Available|Selects and Displays today's date (Not Available in this view)")},
      {tools->ToolButton4, tr("Not Available|Allows a different date to be selected and viewed  (Not "
                              "Available in this view)")}};
  for (const auto& [tool, hint] : dead) {
    Set_Hint(tool, hint);
    tool->setEnabled(false);
  }
  for (QAction* item : {tools->PrevMenu, tools->NextMenu, tools->Today1, tools->GotoDate1})
    item->setEnabled(false);
}

void TContacts_Page3d_Frm::DoRefresh() {
  if (building) return;
  building = true;
  const auto shown_for = [this] { return std::tuple(NodeKey, OwnerKey, WholeCalendar); };
  std::optional<decltype(shown_for())> filled_for;
  while (filled_for != shown_for()) {
    filled_for = shown_for();
    if (!Outlives(this, [this] { Fill_List(); })) return;
  }
  building = false;
  commands->Set_Btns();
}

void TContacts_Page3d_Frm::Fill_List() {
  Rows_Are_Shown();
  // While nothing is known yet, it does not say that there is nothing.
  const QString none = ui->NoEventsPanel->text();
  ui->NoEventsPanel->clear();
  ui->PB1->reset();
  ui->PBPanel->show();
  {
    auto& items = ui->ListView1->Items();
    TBuild_Progress progress(*this, *ui->PB1, items);
    ui->Label2->repaint();
    ui->ListView1->repaint();
    Build_Reminder_AllView(OwnerKey, NodeKey, items, true, WholeCalendar, &progress);
  }
  ui->NoEventsPanel->setText(none);
  ui->PBPanel->hide();
}

void TContacts_Page3d_Frm::Handle_Message(const TMessage& message) {
  if (message.Number() != umDateChanged) TCalendar_View::Handle_Message(message);
}

bool Display_Calendar_Allview(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                              const std::string& OwnerKey, bool WholeCalendar) {
  return Display_View<TContacts_Page3d_Frm>(Parent, Form, NodeKey, OwnerKey, WholeCalendar);
}

}  // namespace KTReminds
