#include "fm_Contacts_Page3b.h"

#include "Image_List.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"
#include "View_Rules.h"
#include "ui_fm_Contacts_Page3b.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::CurrentDate;

namespace {

int Text_Width(const QLabel* label) {
  return label->fontMetrics().horizontalAdvance(label->text());
}

}  // namespace

TContacts_Page3b_Frm::TContacts_Page3b_Frm()
    : TCalendar_View(Page_Index), ui(std::make_unique<Ui::Contacts_Page3b_Frm>()) {
  ui->setupUi(this);
  constexpr int least_height = 21, room = 4;
  ui->NoEventsPanel->setFixedHeight(qMax(least_height, ui->NoEventsPanel->fontMetrics().height() + room));
  Set_Up({ui->Panel7, ui->Label1, {ui->ListView1}, ui->CalPanel});
  connect(ui->SpeedButton1, &QToolButton::clicked, this, [this] { Step_Day(-1); });
  connect(ui->SpeedButton2, &QToolButton::clicked, this, [this] { Step_Day(+1); });
  connect(ui->ListView1, &TEntry_List::Resized, this, &TContacts_Page3b_Frm::ListView1Resize);
  Set_Up_Sort_Label(ui->SortDescLabel);
  Set_Up_Sort_Label(ui->SortPrtyLabel);
}

TContacts_Page3b_Frm::~TContacts_Page3b_Frm() = default;

void TContacts_Page3b_Frm::DoRefresh() {
  ui->Label1->setText(To_Qt(Day_Title(CurrentDate)));
  if (!Outlives([this] {
        Build_Reminder_DayView(OwnerKey, NodeKey, ui->ListView1->Items(), CurrentDate, true, WholeCalendar);
      }))
    return;
  ui->EventTitlePanel->setVisible(ui->ListView1->Items().Count() > 0);
  Set_Btns();
}

void TContacts_Page3b_Frm::Step_Day(int days) {
  CurrentDate += days;
  DoRefresh();
}

void TContacts_Page3b_Frm::ListView1Resize() {
  constexpr int left_margin = 8, right_margin = 10;
  const auto place = [this](QLabel* label, int left) {
    constexpr int focus_frame = 4;
    label->setGeometry(left, 0, Text_Width(label) + focus_frame, ui->NoEventsPanel->height());
  };
  place(ui->SortDescLabel, 2 * TImage_List::Size + left_margin);
  place(ui->SortPrtyLabel,
        ui->ListView1->viewport()->width() - (Text_Width(ui->SortPrtyLabel) + right_margin));
}

bool Display_Calendar_Dayview(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                              const std::string& OwnerKey, bool WholeCalendar) {
  Kt_util_01::Sound(2);
  auto* view = Form.Reuse_Or_Replace<TContacts_Page3b_Frm>();
  if (!view) return false;
  Embed_Page(view, Parent);
  view->Set_Keys(NodeKey, OwnerKey, WholeCalendar);
  view->show();
  view->DoRefresh();
  return true;
}

}  // namespace KTReminds
