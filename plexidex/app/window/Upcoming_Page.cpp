#include "Upcoming_Page.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "Host_Dialog.h"
#include "KTReminds.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;
using namespace Kt_util_01;

namespace {

constexpr int Days_Shown = 28;

enum TColumn { Time_Column, Text_Column, State_Column };
constexpr int Key_Role = Qt::UserRole;
constexpr int Type_Role = Qt::UserRole + 1;
constexpr int Private_Role = Qt::UserRole + 2;
constexpr int Done_Role = Qt::UserRole + 3;
constexpr int Contact_Role = Qt::UserRole + 4;

QString State_Of(const TEventKey& entry) {
  if (entry.EventType == TEventKey::Type_Holiday) return QObject::tr("holiday");
  if (entry.EventType == TEventKey::Type_Task) return To_Qt(entry.FirstText);
  return entry.Done ? QObject::tr("done") : QString();
}

// Whether the entry may be changed or deleted; false when that could not be found out, which has been told.
bool May_Act(const QTreeWidgetItem* item, int level, bool& may) {
  if (!item || item->data(Time_Column, Key_Role).toString().isEmpty() ||
      item->data(Time_Column, Private_Role).toBool())
    return true;
  const std::string contact = From_Qt(item->data(Time_Column, Contact_Role).toString());
  return Read_Host("Upcoming_Page:May_Act [KT_Rights/KT_Users]",
                   [&] { may = Access_Allowed(contact, level); });
}

}  // namespace

TUpcoming_Page::TUpcoming_Page() : heading(new QLabel), list(new QTreeWidget) {
  setObjectName(QStringLiteral("Upcoming_Page"));
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  list->setObjectName(QStringLiteral("Entries"));
  list->setAccessibleName(tr("Entries of the coming weeks"));
  list->setHeaderLabels({tr("Time"), tr("Entry"), tr("State")});
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  list->header()->setSectionResizeMode(Text_Column, QHeaderView::Stretch);
  list->header()->setSectionResizeMode(Time_Column, QHeaderView::ResizeToContents);
  list->header()->setSectionResizeMode(State_Column, QHeaderView::ResizeToContents);
  list->header()->setStretchLastSection(false);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading);
  layout->addWidget(list);
  Initialise_Form(this);

  const auto add_action = [this](const QString& text, const QKeySequence& keys, auto run) {
    auto* action = new QAction(text, list);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, run);
    list->addAction(action);
  };
  list->setContextMenuPolicy(Qt::ActionsContextMenu);
  add_action(tr("&Open..."), Qt::Key_Return, [this] { Open(list->currentItem()); });
  add_action(tr("&Mark Complete or Outstanding"), Qt::CTRL | Qt::Key_D, [this] { Toggle_Done(); });
  add_action(tr("&Delete Item..."), Qt::Key_Delete, [this] { Delete(); });
  connect(list, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) { Open(item); });
}

void TUpcoming_Page::Reload() {
  list->clear();
  const TDateTime first = Today(), last = first + Days_Shown - 1;
  heading->setText((tasks_only ? tr("Tasks due from %1 to %2") : tr("From %1 to %2"))
                       .arg(To_Qt(FormatDateTime("ddddd", first)), To_Qt(FormatDateTime("ddddd", last))));
  TEventKey_List entries;
  KTReminds::Build_Events_Data(Owner(), Book(), entries, first, last, true);
  if (tasks_only) {
    std::erase_if(entries, [](const auto& entry) { return entry->EventType != TEventKey::Type_Task; });
  } else {
    try {
      TEventKey_List holidays;
      Build_Holidays_Data(holidays, first, last);
      for (auto& holiday : holidays) entries.push_back(std::move(holiday));
    } catch (...) {
      FailRead("Upcoming_Page:Reload [KT_Holidays]");
    }
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const auto& a, const auto& b) { return CompareDates(a->EventDate, b->EventDate) < 0; });

  QTreeWidgetItem* day = nullptr;
  std::int64_t shown_day = -1;
  for (const auto& entry : entries) {
    if (Whole_Day(entry->EventDate) != shown_day) {
      shown_day = Whole_Day(entry->EventDate);
      day = new QTreeWidgetItem(list, {To_Qt(FormatDateTime("dddddd", entry->EventDate))});
      day->setFirstColumnSpanned(true);
      day->setFlags(Qt::ItemIsEnabled);
      QFont bold = list->font();
      bold.setBold(true);
      day->setFont(Time_Column, bold);
    }
    auto* item = new QTreeWidgetItem(day);
    item->setText(Time_Column, entry->Timeless ? QString() : To_Qt(FormatDateTime("t", entry->EventDate)));
    item->setText(Text_Column, entry->Private ? tr("Private") : To_Qt(entry->Description));
    item->setText(State_Column, State_Of(*entry));
    item->setToolTip(Text_Column, QString(To_Qt(entry->Get_Tip(false)))
                                      .toHtmlEscaped()
                                      .replace(QLatin1Char('\n'), QLatin1String("<br>")));
    item->setData(Time_Column, Key_Role, To_Qt(entry->Key));
    item->setData(Time_Column, Type_Role, entry->EventType);
    item->setData(Time_Column, Private_Role, entry->Private);
    item->setData(Time_Column, Done_Role, entry->Done);
    item->setData(Time_Column, Contact_Role, To_Qt(entry->Contact));
  }
  list->expandAll();
  for (int i = 0; i < list->topLevelItemCount(); ++i) list->topLevelItem(i)->setFirstColumnSpanned(true);
}

void TUpcoming_Page::Open(QTreeWidgetItem* item) {
  if (!item) return;
  const std::string key = From_Qt(item->data(Time_Column, Key_Role).toString());
  if (key.empty()) return;
  const std::string contact = From_Qt(item->data(Time_Column, Contact_Role).toString());
  const bool is_private = item->data(Time_Column, Private_Role).toBool();
  const bool is_task = item->data(Time_Column, Type_Role).toInt() == TEventKey::Type_Task;
  const std::string book = Book();
  const QPointer<TUpcoming_Page> alive = this;
  const bool changed = is_task ? KTReminds::Task_Properties(key, contact, book, {}, is_private)
                               : KTReminds::Reminder_Properties(key, contact, book, {}, is_private);
  if (changed && alive && !Is_Closed()) Reload();
}

void TUpcoming_Page::Delete() {
  const QTreeWidgetItem* item = list->currentItem();
  const std::string key = item ? From_Qt(item->data(Time_Column, Key_Role).toString()) : std::string();
  bool may = false;
  if (!May_Act(item, Access_Delete, may)) return;
  if (!may) return Sound(5);
  const QPointer<TUpcoming_Page> alive = this;
  if (KTReminds::Delete_Reminder(key) && alive && !Is_Closed()) Reload();
}

void TUpcoming_Page::Toggle_Done() {
  const QTreeWidgetItem* item = list->currentItem();
  const std::string key = item ? From_Qt(item->data(Time_Column, Key_Role).toString()) : std::string();
  bool may = false;
  if (!May_Act(item, Access_Update, may)) return;
  if (!may) return Sound(5);
  TList_Item marked;
  marked.Data = std::make_unique<TEventKey>();
  marked.Data->Key = TText(key);
  marked.Data->EventType = item->data(Time_Column, Type_Role).toInt();
  KTReminds::Set_Event_as_Actioned(marked, !item->data(Time_Column, Done_Role).toBool(), true,
                                   KTReminds::Image_Done_Event, KTReminds::Image_Open_Event,
                                   KTReminds::Image_Done_Task, KTReminds::Image_Open_Task);
  Reload();
}

}  // namespace Plexidex
