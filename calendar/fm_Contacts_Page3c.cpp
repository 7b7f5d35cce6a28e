#include "fm_Contacts_Page3c.h"

#include <QPainter>

#include "Colours.h"
#include "Entry_Rows.h"
#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Reminder_Utils.h"
#include "ui_fm_Contacts_Page3c.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_util_01::CurrentDate;
using Kt_util_01::TDateTime;

namespace {

constexpr int Text_Margin = 3;
constexpr QRgb Cream = qRgb(0xFF, 0xFF, 0xEE), Cream_On_Dark = qRgb(0x3C, 0x3B, 0x30);
constexpr QSize Overflow_Size(13, 9);
constexpr int Overflow_Margin = 2;

// The lines of a day that can be read, and the sign that there are more.
struct TDay_Layout {
  std::vector<QRect> Lines;
  QRect Overflow;  // empty when all are shown

  TDay_Layout(const TEPCalendar::TDay& day, const QFontMetrics& metrics, std::size_t count) {
    const int height = metrics.height(), least_width = metrics.horizontalAdvance(QStringLiteral("00:00"));
    QRect room(day.Place.left() + Text_Margin, day.Band.bottom() + 1, day.Place.width() - 2 * Text_Margin,
               height);
    for (; Lines.size() < count && room.width() >= least_width && room.bottom() <= day.Place.bottom();
         room.translate(0, height))
      Lines.push_back(room);
    if (Lines.size() == count) return;
    Overflow = QRect({}, Overflow_Size);
    Overflow.moveBottomRight(day.Place.bottomRight() - QPoint(Overflow_Margin, Overflow_Margin));
    if (Lines.empty() || !Lines.back().intersects(Overflow)) return;
    Lines.back().setRight(Overflow.left() - Overflow_Margin);
    if (Lines.back().width() < least_width) Lines.pop_back();
  }
};

// Of whole rectangles: its colours must not be mixed with others, at whatever scale.
void Draw_Overflow(QPainter& painter, const QRect& place) {
  painter.fillRect(place, QColor(Overflow_Ink));
  painter.fillRect(place.adjusted(1, 1, -1, -1), QColor(Overflow_Ground));
  for (int row = 0; row < 4; ++row) {
    const int half = 3 - row;
    painter.fillRect(QRect(place.center().x() - half, place.center().y() - 1 + row, 2 * half + 1, 1),
                     QColor(Overflow_Ink));
  }
}

}  // namespace

TContacts_Page3c_Frm::TContacts_Page3c_Frm()
    : TCalendar_View(Page_Month), ui(std::make_unique<Ui::Contacts_Page3c_Frm>()) {
  ui->setupUi(this);
  Set_Up(this, ui->ToolBar1,
         {.Add_Event = {ui->Addbtn, ui->AddMenu},
          .Add_Task = {ui->AddTaskBtn, ui->AddTask1},
          .Popup = ui->PopupMenu1},
         {.Title = ui->Label1,
          .Calendar_Panel = ui->CalPanel,
          .Calendar = {ui->ToolButton4},
          .Previous = {ui->PrevBtn, ui->PrevMenu},
          .Next = {ui->Nextbtn, ui->NextMenu},
          .Today = {ui->ToolButton7, ui->Today1},
          .Views = {ui->ToolButton10, ui->ToolButton9, ui->ToolButton8, ui->ToolButton11}});
  TEPCalendar* grid = ui->MonthCal;
  setFocusProxy(grid);
  grid->Set_Events({.Choose_Colours = [this](TDateTime date) { return Colours_Of(date); },
                    .Draw_Date = [this](QPainter& painter, const auto& day) { Draw_Day(painter, day); },
                    .Get_Tip = [this](TDateTime date) { return To_Qt(Day_Tip(Lines_Of(date))); }});
  connect(grid, &TEPCalendar::Changed, this, &TContacts_Page3c_Frm::Date_Changed);
  connect(grid, &TEPCalendar::Clicked, this, [this](TDateTime date, const QColor& colour) {
    if (Is_Overflow(colour)) Goto_Day(date);
  });
  connect(grid, &TEPCalendar::Opened, this, &TContacts_Page3c_Frm::Goto_Day);
  connect(grid, &TEPCalendar::Insert_Pressed, this, [this] { commands->Add(TEntry_Type::Event); });
  connect(grid, &TEPCalendar::Menu_Asked, this, [this](const QPoint& place) { commands->Show_Popup(place); });
  // The menu was opened at the day that is selected.
  connect(ui->SelectedDay1, &QAction::triggered, this, [this] { Goto_Day(ui->MonthCal->Date()); });
  connect(ui->SpeedButton1, &QToolButton::clicked, grid, [grid] { grid->Step_Months(-1); });
  connect(ui->SpeedButton2, &QToolButton::clicked, grid, [grid] { grid->Step_Months(+1); });
}

TContacts_Page3c_Frm::~TContacts_Page3c_Frm() = default;

void TContacts_Page3c_Frm::DoRefresh() {
  Rows_Are_Shown();
  ready = false;
  lines.clear();
  entries.clear();
  ui->MonthCal->Set_Date(CurrentDate);
  if (!Outlives(this, [this] {
        const TMonth_Grid& shown = ui->MonthCal->Grid();
        Build_Events_Data(OwnerKey, NodeKey, entries, shown.First_Day(), shown.Last_Day(), WholeCalendar);
      }))
    return;
  const TMonth_Grid& grid = ui->MonthCal->Grid();
  lines = Lines_Of_Days(entries, grid.First_Day(), TMonth_Grid::Days);
  QStringList titles;
  for (const std::string& title : Month_Titles(grid.Date())) titles << To_Qt(title);
  ui->Label1->Set_Texts(titles);
  ready = true;
  ui->MonthCal->update();
  Describe_Day();
  commands->Set_Btns();
}

void TContacts_Page3c_Frm::Date_Changed() {
  if (!ready) return;
  const TDateTime before = CurrentDate;
  CurrentDate = ui->MonthCal->Date();
  Tell_Picker();
  if (Is_Same_Month(before, CurrentDate)) {
    Describe_Day();
  } else {
    DoRefresh();
  }
}

void TContacts_Page3c_Frm::Goto_Day(TDateTime date) {
  CurrentDate = date;
  Tell_Picker();
  Show_View(Page_Day);
}

TOwner TContacts_Page3c_Frm::Owner_Of_New(TEntry_Type /*type*/) const {
  return {NodeKey, OwnerKey};
}

void TContacts_Page3c_Frm::Before_Adding() {
  CurrentDate = ui->MonthCal->Date();
}

void TContacts_Page3c_Frm::Refresh_After(const TEntry_Change& /*change*/) {
  Tell_Picker();
  DoRefresh();
}

const TDay_Lines& TContacts_Page3c_Frm::Lines_Of(TDateTime date) const {
  static const TDay_Lines none;
  const auto day = static_cast<std::size_t>(date - ui->MonthCal->Grid().First_Day());
  return day < lines.size() ? lines[day] : none;
}

TEPCalendar::TColours TContacts_Page3c_Frm::Colours_Of(TDateTime date) const {
  const QColor ground = palette().color(QPalette::Base);
  if (!ready || Is_Same_Month(date, ui->MonthCal->Date())) return {palette().color(QPalette::Text), ground};
  return {QColor(Silver), QColor(Is_Dark(ground) ? Cream_On_Dark : Cream)};
}

void TContacts_Page3c_Frm::Draw_Day(QPainter& painter, const TEPCalendar::TDay& day) const {
  if (!ready) return;
  const TDay_Lines& all = Lines_Of(day.Date);
  const TDay_Layout layout(day, painter.fontMetrics(), all.size());
  const QFont plain = painter.font();
  QFont struck = plain;
  struck.setStrikeOut(Kt_util_01::UseCompleteStyle());
  for (std::size_t i = 0; i < layout.Lines.size(); ++i) {
    painter.setFont(Has_State(*all[i].Entry) && all[i].Entry->Done ? struck : plain);
    painter.drawText(layout.Lines[i], Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     To_Qt(Shown_Part(all[i].Text)));
  }
  painter.setFont(plain);
  if (!layout.Overflow.isNull()) Draw_Overflow(painter, layout.Overflow);
}

void TContacts_Page3c_Frm::Describe_Day() {
  const TDateTime date = ui->MonthCal->Date();
  ui->MonthCal->setAccessibleDescription(To_Qt(Spoken_Day(date, Lines_Of(date), Kt_util_01::Now())));
}

bool Display_Calendar_MonthView(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                                const std::string& OwnerKey, bool WholeCalendar) {
  return Display_View<TContacts_Page3c_Frm>(Parent, Form, NodeKey, OwnerKey, WholeCalendar);
}

}  // namespace KTReminds
