#include "Upcoming_Page.h"

#include <QAction>
#include <QHeaderView>
#include <QLabel>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "Entry_Rows.h"
#include "KTReminds.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Plain_Tip.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;
using namespace Kt_util_01;

namespace {

constexpr int Days_Shown = 28;

enum TColumn { Time_Column, Text_Column, State_Column };
constexpr int Entry_Role = Qt::UserRole;  // position among the entries

bool Is_Overdue(const TEventKey& entry) {
  return KTReminds::State_Of(entry, Now()) == KTReminds::TEntry_State::Overdue;
}

QString State_Of(const TEventKey& entry) {
  if (entry.Is_Holiday()) return QObject::tr("holiday");
  if (entry.Is_Task() && Is_Overdue(entry)) return QObject::tr("%1, overdue").arg(To_Qt(entry.FirstText));
  if (entry.Is_Task()) return To_Qt(entry.FirstText);
  return entry.Done ? QObject::tr("done") : QString();
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
    return action;
  };
  list->setContextMenuPolicy(Qt::ActionsContextMenu);
  add_action(tr("&Open..."), Qt::Key_Return, [this] {
    Open(list->currentItem());
  })->setShortcuts({Qt::Key_Return, Qt::Key_Enter});
  add_action(tr("&Mark Complete or Outstanding"), Qt::CTRL | Qt::Key_D, [this] {
    Toggle_Done();
  })->setShortcuts({Qt::CTRL | Qt::Key_D, Qt::Key_Space});
  add_action(tr("&Delete Item..."), Qt::Key_Delete, [this] { Delete(); });
  connect(list, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem* item) { Open(item); });
}

void TUpcoming_Page::Reload() {
  Rows_Are_Shown();
  const TEventKey* selected = Entry_Of(list->currentItem());
  const std::string key = selected ? selected->Key.Str() : std::string();
  const int position = selected ? list->currentItem()->data(Time_Column, Entry_Role).toInt() : 0;
  list->clear();
  const TDateTime first = Today(), last = first + Days_Shown - 1;
  heading->setText(
      tr("From %1 to %2").arg(To_Qt(FormatDateTime("ddddd", first)), To_Qt(FormatDateTime("ddddd", last))));
  KTReminds::Build_Events_Data(Owner(), Book(), entries, first, last, true);
  Read("Upcoming_Page:Reload [KT_Holidays]", [&] {
    TEventKey_List holidays;
    Build_Holidays_Data(holidays, first, last);
    for (auto& holiday : holidays) entries.push_back(std::move(holiday));
  });
  std::stable_sort(entries.begin(), entries.end(),
                   [](const auto& a, const auto& b) { return CompareDates(a->EventDate, b->EventDate) < 0; });

  QTreeWidgetItem *day = nullptr, *same = nullptr, *in_its_place = nullptr;
  std::int64_t shown_day = -1;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    const auto& entry = entries[i];
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
    item->setToolTip(Text_Column, KTReminds::As_Plain_Tip(To_Qt(entry->Get_Tip(false))));
    item->setData(Time_Column, Entry_Role, static_cast<int>(i));
    // The same as before, or what stands in its place now.
    if (!key.empty() && entry->Key == key) same = item;
    if (static_cast<int>(i) <= position) in_its_place = item;
  }
  list->expandAll();
  for (int i = 0; i < list->topLevelItemCount(); ++i) list->topLevelItem(i)->setFirstColumnSpanned(true);
  list->setCurrentItem(same ? same : in_its_place);
}

const TEventKey* TUpcoming_Page::Entry_Of(const QTreeWidgetItem* item) const {
  const QVariant position = item ? item->data(Time_Column, Entry_Role) : QVariant();
  const TEventKey* entry = position.isValid() ? entries[position.toUInt()].get() : nullptr;
  return entry && !entry->Is_Holiday() ? entry : nullptr;
}

// The selected entry, when the user may do this with it; a refusal is heard.
const TEventKey* TUpcoming_Page::Selected_For(int level) const {
  const TEventKey* entry = Entry_Of(list->currentItem());
  bool may = false;
  if (entry && !entry->Private && !Read("Upcoming_Page:Selected_For [KT_Rights/KT_Users]", [&] {
        may = Access_Allowed(entry->Contact, level);
      }))
    return nullptr;
  if (!may) Sound(5);
  return may ? entry : nullptr;
}

void TUpcoming_Page::Open(const QTreeWidgetItem* item) {
  const TEventKey* entry = Entry_Of(item);
  if (!entry) return;
  const auto edit = entry->Is_Task() ? KTReminds::Task_Properties : KTReminds::Reminder_Properties;
  bool changed = false;
  if (Outlives(this, [&, key = entry->Key.Str(), contact = entry->Contact.Str(), book = Book(),
                      hidden = entry->Private] { changed = edit(key, contact, book, {}, hidden); }) &&
      changed)
    return Reload();
  Look_At_Rows();
}

void TUpcoming_Page::Delete() {
  const TEventKey* entry = Selected_For(Access_Delete);
  bool deleted = false;
  if (entry && Outlives(this, [&, key = entry->Key.Str()] { deleted = KTReminds::Delete_Reminder(key); }) &&
      deleted)
    Reload();
}

void TUpcoming_Page::Toggle_Done() {
  const TEventKey* entry = Selected_For(Access_Update);
  if (!entry) return;
  const bool done = !entry->Done;
  if (KTReminds::Mark_Occurrence(entry->Key.Str(), done).End == KTReminds::TMarking::TEnd::Marked)
    Sound(done ? 3 : 1);
  Reload();
}

}  // namespace Plexidex
