#include "fm_Contacts_Page3a.h"

#include <QStatusTipEvent>

#include "Kt_util_01.h"
#include "Page_Numbers.h"
#include "Reminder_Utils.h"
#include "View_Rules.h"
#include "View_Tools.h"
#include "Week_Day.h"
#include "ui_fm_Contacts_Page3a.h"

namespace KTReminds {

using namespace Kt_forms;
using Kt_data_01::TEventKey;
using Kt_util_01::CurrentDate;
using Kt_util_01::Whole_Day;

namespace {

QStringList To_Qt_List(const std::vector<std::string>& texts) {
  QStringList list;
  for (const std::string& text : texts) list << To_Qt(text);
  return list;
}

std::int64_t Day_Of(const TWeek_List* list) {
  return list->property("Tag").toLongLong();
}

}  // namespace

TContacts_Page3a_Frm::TContacts_Page3a_Frm()
    : TCalendar_View(Page_Week),
      ui(std::make_unique<Ui::Contacts_Page3a_Frm>()),
      tools(std::make_unique<Ui::View_Tools>()) {
  ui->setupUi(this);
  tools->setupUi(ui->Panel7);
  QWidget* const rows[Days] = {ui->GridR1, ui->GridR1, ui->GridR2, ui->GridR2,
                               ui->GridR3, ui->GridR3, ui->GridR3};
  for (int i = 0; i < Days; ++i) Make_Day(i, rows[i]);
  ui->Panel12->installEventFilter(this);
  Make_Move_Commands();
  Set_Up(ui->Panel7, tools->ToolBar1, Entry_Controls_Of(*tools),
         Date_Controls_Of(*tools, ui->Label1, ui->CalPanel));
  for (const TDay& day : days) commands->Add_List(day.List);
  connect(ui->SpeedButton1, &QToolButton::clicked, this, [this] { Step_Week(-1); });
  connect(ui->SpeedButton2, &QToolButton::clicked, this, [this] { Step_Week(+1); });
}

TContacts_Page3a_Frm::~TContacts_Page3a_Frm() = default;

void TContacts_Page3a_Frm::Make_Day(int index, QWidget* row) {
  auto* panel = new QFrame(row);
  panel->setFrameShape(QFrame::StyledPanel);
  auto* layout = new QVBoxLayout(panel);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSpacing(0);
  auto* header = new TWeek_Header(panel);
  auto* list = new TWeek_List(panel);
  layout->addWidget(header);
  layout->addWidget(list, 1);
  header->setObjectName(QStringLiteral("WeekHeader%1").arg(index + 1));
  list->setObjectName(QStringLiteral("ListView%1").arg(index + 1));
  days[static_cast<std::size_t>(index)] = {panel, header, list};
  connect(header, &TWeek_Header::Clicked, this, [this, list] { Select_Day(list); });
  connect(header, &TWeek_Header::Double_Clicked, this, [this] { Show_View(Page_Day); });
  connect(list, &TEntry_List::Entered, this, [this, list] { Enter_Day(list); });
  connect(list, &TWeek_List::Step_Asked, this, [this, index](int step) { Step_To_List(index + step); });
  list->May_Drag = [list] {
    const bool may = May_Move(list->Selected());
    if (!may) Kt_util_01::Sound(5);
    return may;
  };
  list->May_Drop = [this, list](const std::string& key) {
    return !list->Selected() && commands->Selected_Key() == key && May_Move(commands->Selected());
  };
  // Once the drag is over, since the move may have something to say.
  connect(
      list, &TWeek_List::Dropped, this,
      [this, list](const QString& key) {
        if (commands->Selected_Key() == From_Qt(key)) Move_Entry(*commands->Selected()->Data, list);
      },
      Qt::QueuedConnection);
}

void TContacts_Page3a_Frm::Make_Move_Commands() {
  const auto add = [this](const char* name, const QString& caption, QKeySequence::StandardKey key,
                          const QString& hint, auto run) {
    auto* action = new QAction(caption, this);
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    action->setStatusTip(hint);
    connect(action, &QAction::triggered, this, run);
    addAction(action);
    tools->PopupMenu1->insertAction(tools->N3, action);
    return action;
  };
  tools->PopupMenu1->insertSeparator(tools->N3);
  QAction* cut = add("CutMenu", tr("C&ut"), QKeySequence::Cut,
                     tr("Takes the selected Item to be pasted into another day"), [this] { Cut(); });
  paste = add("PasteMenu", tr("&Paste"), QKeySequence::Paste,
              tr("Moves the Item that was cut to the selected day"), [this] { Paste(); });
  paste->setEnabled(false);
  connect(tools->PopupMenu1, &QMenu::aboutToShow, cut,
          [this, cut] { cut->setEnabled(May_Move(commands->Selected())); });
  // Its key says by itself that there is nothing to cut.
  connect(tools->PopupMenu1, &QMenu::aboutToHide, cut, [cut] { cut->setEnabled(true); });
}

void TContacts_Page3a_Frm::DoRefresh() {
  Rows_Are_Shown();
  const TDateTime monday = Week_Start(CurrentDate);
  std::vector<Kt_data_01::TItem_List*> lists;
  for (const TDay& day : days) lists.push_back(&day.List->Items());
  Show_Dates(monday);
  Set_Weekheaders();
  if (Outlives(this, [&] { Build_Day_Lists({NodeKey, OwnerKey}, WholeCalendar, monday, lists); }))
    commands->Set_Btns();
}

void TContacts_Page3a_Frm::Show_Dates(TDateTime monday) {
  const std::pair<TDateTime, TDateTime> dates(monday, Kt_util_01::Today());
  if (dates == shown_dates) return;
  shown_dates = dates;
  TDateTime date = monday;
  for (const TDay& day : days) {
    const QStringList titles = To_Qt_List(Week_Day_Titles(date));
    day.Header->Show_Day(titles, date == dates.second);
    day.List->setAccessibleName(titles.front().trimmed());
    for (QWidget* tagged : std::initializer_list<QWidget*>{day.Header, day.List})
      tagged->setProperty("Tag", static_cast<qlonglong>(date));
    ++date;
  }
  ui->Label1->Set_Texts(To_Qt_List(Week_Titles(monday)));
}

void TContacts_Page3a_Frm::Set_Weekheaders() {
  for (const TDay& day : days) day.Header->Set_Bold(Day_Of(day.List) == Whole_Day(CurrentDate));
  setFocusProxy(List_Of_Date());
}

bool TContacts_Page3a_Frm::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui->Panel12 && event->type() == QEvent::Resize) Divide_Panel();
  return TCalendar_View::eventFilter(watched, event);
}

void TContacts_Page3a_Frm::Divide_Panel() {
  const QRect whole = ui->Panel12->contentsRect();
  const TWeek_Division division = Divide_Week(whole.width(), whole.height());
  const int left = division.Left, right = whole.width() - left;
  int top = whole.top();
  for (std::size_t row = 0; row < division.Rows.size(); ++row) {
    const int height = division.Rows[row];
    const bool last = row + 1 == division.Rows.size();
    const int upper = last ? division.Saturday : height;
    days[2 * row].Panel->parentWidget()->setGeometry(whole.left(), top, whole.width(), height);
    days[2 * row].Panel->setGeometry(0, 0, left, height);
    days[2 * row + 1].Panel->setGeometry(left, 0, right, upper);
    if (last) days[2 * row + 2].Panel->setGeometry(left, upper, right, height - upper);
    top += height;
  }
}

void TContacts_Page3a_Frm::Step_Week(int weeks) {
  CurrentDate += weeks * Days;
  DoRefresh();
}

void TContacts_Page3a_Frm::Enter_Day(const TWeek_List* list) {
  if (list != List_Of_Date()) Select_Day(list);
}

void TContacts_Page3a_Frm::Select_Day(const TWeek_List* list) {
  CurrentDate = static_cast<TDateTime>(Day_Of(list));
  Tell_Picker();
  Set_Weekheaders();
}

void TContacts_Page3a_Frm::Step_To_List(int index) {
  const int step = index < 0 ? -1 : index >= Days ? 1 : 0;
  if (step != 0) {
    if (!Outlives(this, [&] { Step_Week(step); })) return;
    index -= step * Days;
  }
  TWeek_List* list = days[static_cast<std::size_t>(index)].List;
  Select_Day(list);
  list->setFocus(Qt::TabFocusReason);
}

TWeek_List* TContacts_Page3a_Frm::List_Of_Date() const {
  for (const TDay& day : days) {
    if (Day_Of(day.List) == Whole_Day(CurrentDate)) return day.List;
  }
  return nullptr;
}

void TContacts_Page3a_Frm::Say(const QString& text) {
  QStatusTipEvent told(text);
  QCoreApplication::sendEvent(this, &told);
}

void TContacts_Page3a_Frm::Cut() {
  const auto* item = commands->Selected();
  if (!May_Move(item)) return Kt_util_01::Sound(5);
  cut_entry = std::make_unique<TEventKey>(*item->Data);
  paste->setEnabled(true);
  Say(tr("Go to another day and choose \"Paste\" to move \"%1\" there.").arg(To_Qt(cut_entry->Description)));
}

void TContacts_Page3a_Frm::Paste() {
  TWeek_List* target = List_Of_Date();
  const std::unique_ptr<TEventKey> entry = std::move(cut_entry);
  paste->setEnabled(false);
  Say({});
  if (!entry || !target) return;
  // It may have been changed since.
  const TEventKey* now = entry.get();
  for (const TDay& day : days) {
    if (const int row = day.List->Row_Of(entry->Key.View()); row >= 0)
      now = day.List->Items()[static_cast<std::size_t>(row)].Data.get();
  }
  Move_Entry(*now, target);
}

void TContacts_Page3a_Frm::Move_Entry(const TEventKey& entry, TWeek_List* target) {
  if (target->Row_Of(entry.Key.View()) >= 0) return;
  auto moved = std::make_unique<Kt_data_01::TList_Item>();
  moved->Data = std::make_unique<TEventKey>(entry);
  moved->Image = State_Image(*moved->Data);
  std::optional<TDateTime> date;
  const auto move = [&] {
    // The rights to what was cut may be others by now.
    if (May_Move(moved.get()))
      date = Move_Occurrence(moved->Data->Key.Str(), static_cast<TDateTime>(Day_Of(target)));
  };
  if (!Outlives(this, [&] { Change_In_Place(move); })) return;
  if (!date) {
    Kt_util_01::Sound(5);
    return Look_At_Rows();
  }
  moved->Data->EventDate = *date;
  for (const TDay& day_shown : days) {
    if (const int row = day_shown.List->Row_Of(moved->Data->Key.View()); row >= 0)
      day_shown.List->Items().Remove(static_cast<std::size_t>(row));
  }
  const std::size_t last = target->Items().Count();
  target->Items().Insert(last, std::move(moved));
  target->setFocus(Qt::OtherFocusReason);
  // A window that is not active does not bring the keyboard there yet.
  Enter_Day(target);
  target->Select_Row(static_cast<int>(last));
}

bool Display_Calendar_Weekview(QWidget* Parent, TForm_Reference& Form, const std::string& NodeKey,
                               const std::string& OwnerKey, bool WholeCalendar) {
  return Display_View<TContacts_Page3a_Frm>(Parent, Form, NodeKey, OwnerKey, WholeCalendar);
}

}  // namespace KTReminds
