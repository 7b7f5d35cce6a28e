#include "Tray.h"

#include <QGuiApplication>
#include <algorithm>
#include <vector>

#include "Alert_Watch.h"
#include "Books.h"
#include "Entry_Lists.h"
#include "Entry_Rows.h"
#include "Kt_forms.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Login.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

struct TToday {
  std::unique_ptr<TEventKey> Entry;
  std::string Book;
};

std::vector<TToday> Entries_Of_Today() {
  std::vector<TToday> entries;
  // Who was logged in may have been removed while nobody looked.
  if (!Is_Known_User()) return entries;
  const Kt_util_01::TDateTime today = Kt_util_01::Today();
  for (const TBook& book : List_Books()) {
    TEventKey_List list;
    KTReminds::Build_Events_Data({}, book.Key, list, today, today, true);
    for (auto& entry : list) entries.push_back({std::move(entry), book.Key});
  }
  std::stable_sort(entries.begin(), entries.end(),
                   [](const TToday& a, const TToday& b) { return a.Entry->EventDate < b.Entry->EventDate; });
  return entries;
}

}  // namespace

TTray::TTray() {
  icon.setIcon(QGuiApplication::windowIcon());
  icon.setContextMenu(&menu);
  menu.setObjectName(QStringLiteral("Tray_Menu"));
  Set_Count(0);
  connect(&menu, &QMenu::aboutToShow, this, &TTray::Fill_Menu);
  connect(&icon, &QSystemTrayIcon::activated, this, [this](QSystemTrayIcon::ActivationReason reason) {
    if (reason == QSystemTrayIcon::Trigger || reason == QSystemTrayIcon::DoubleClick) emit Open_Wanted();
  });
}

bool TTray::Follow_Preferences() {
  const bool show =
      Kt_util_01::Read_Bool("General", "Tray", false) && QSystemTrayIcon::isSystemTrayAvailable();
  // Some desktops show the menu without saying so.
  if (show && !icon.isVisible()) Fill_Menu();
  icon.setVisible(show);
  return icon.isVisible();
}

void TTray::Set_Count(int waiting) {
  count = waiting;
  icon.setToolTip(count == 0 ? QStringLiteral("Plexidex")
                             : QStringLiteral("Plexidex: ") + To_Qt(Count_Text(count)));
  Refresh();
}

void TTray::Refresh() {
  if (icon.isVisible() && !menu.isVisible()) Fill_Menu();
}

void TTray::Fill_Menu() {
  menu.clear();
  Add_Today();
  menu.addSeparator();
  QAction* reminders = menu.addAction(tr("&Reminders (%1)...").arg(count), this, &TTray::Reminders_Wanted);
  reminders->setEnabled(count > 0);
  menu.addAction(tr("&New Event..."), this, &TTray::New_Event_Wanted);
  QAction* open = menu.addAction(tr("&Open Plexidex"), this, &TTray::Open_Wanted);
  menu.setDefaultAction(open);
  menu.addSeparator();
  menu.addAction(tr("&Quit"), this, &TTray::Quit_Wanted);
}

void TTray::Add_Today() {
  constexpr std::size_t most = 10;
  menu.addSection(tr("Today"));
  const auto read = Read("Tray:Add_Today [KT_Events_Data/KT_Events]", Entries_Of_Today);
  if (!read || read->empty()) {
    menu.addAction(tr("Nothing today"))->setEnabled(false);
    return;
  }
  const int wide = menu.fontMetrics().averageCharWidth() * 50;
  for (std::size_t i = 0; i < std::min(most, read->size()); ++i) {
    const TEventKey& entry = *(*read)[i].Entry;
    QString text = To_Qt(entry.Private ? std::string(KTReminds::Hidden_Text) : entry.Description.Str());
    if (!entry.Timeless)
      text.prepend(To_Qt(Kt_util_01::FormatDateTime("t", entry.EventDate)) + QLatin1Char(' '));
    text = menu.fontMetrics()
               .elidedText(text, Qt::ElideRight, wide)
               .replace(QLatin1Char('&'), QLatin1String("&&"));
    QAction* action = menu.addAction(text);
    QFont font = action->font();
    font.setStrikeOut(entry.Done && Kt_util_01::UseCompleteStyle());
    action->setFont(font);
    connect(action, &QAction::triggered, this,
            [this, task = entry.Is_Task(), key = To_Qt(entry.Key), owner = To_Qt(entry.Contact),
             book = To_Qt((*read)[i].Book),
             hidden = entry.Private] { emit Entry_Wanted(task, key, owner, book, hidden); });
  }
  if (read->size() > most)
    menu.addAction(tr("%1 more...").arg(read->size() - most), this, &TTray::Open_Wanted);
}

}  // namespace Plexidex
