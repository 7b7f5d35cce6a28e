#include "fm_Contacts_Page3b.h"

#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Reminder_Utils.h"
#include "View_Rules.h"
#include "View_Tools.h"
#include "ui_fm_Contacts_Page3b.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::CurrentDate;

TContacts_Page3b_Frm::TContacts_Page3b_Frm()
    : TCalendar_View(Page_Day),
      ui(std::make_unique<Ui::Contacts_Page3b_Frm>()),
      tools(std::make_unique<Ui::View_Tools>()) {
  ui->setupUi(this);
  tools->setupUi(ui->Panel7);
  Set_Up(ui->Panel7, tools->ToolBar1, Entry_Controls_Of(*tools),
         Date_Controls_Of(*tools, ui->Label1, ui->CalPanel));
  commands->Add_List(ui->ListView1);
  commands->Add_Header(ui->EventTitlePanel, ui->ListView1);
  setFocusProxy(ui->ListView1);
  connect(ui->SpeedButton1, &QToolButton::clicked, this, [this] { Step_Day(-1); });
  connect(ui->SpeedButton2, &QToolButton::clicked, this, [this] { Step_Day(+1); });
}

TContacts_Page3b_Frm::~TContacts_Page3b_Frm() = default;

void TContacts_Page3b_Frm::DoRefresh() {
  Rows_Are_Shown();
  QStringList titles;
  for (const std::string& title : Day_Titles(CurrentDate)) titles << To_Qt(title);
  ui->Label1->Set_Texts(titles);
  if (Outlives(this, [this] {
        Build_Reminder_DayView(OwnerKey, NodeKey, ui->ListView1->Items(), CurrentDate, true, WholeCalendar);
      }))
    commands->Set_Btns();
}

void TContacts_Page3b_Frm::Step_Day(int days) {
  CurrentDate += days;
  DoRefresh();
}

bool Display_Calendar_Dayview(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                              const std::string& OwnerKey, bool WholeCalendar) {
  return Display_View<TContacts_Page3b_Frm>(Parent, Form, NodeKey, OwnerKey, WholeCalendar);
}

}  // namespace KTReminds
