#include "Alert_Window.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <algorithm>

#include "Alarm_Sounds.h"
#include "KTReminds.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Plain_Tip.h"

namespace Plexidex {

using namespace Kt_forms;
using namespace KTReminds;

namespace {

enum TColumn { What_Column, When_Column, Where_Column, Whose_Column, Late_Column, Columns };

}  // namespace

void Play_Alert_Sound(const std::string& sound) {
  const std::string wanted = sound.empty() || sound == Default_Sound_Text ? Read_Default_Sound() : sound;
  if (wanted == Standard_Beep_Text || !Play_Sound_File(wanted)) Message_Beep();
}

TAlert_Window::TAlert_Window()
    : heading(new QLabel),
      failure(new QLabel(tr("The answer could not be saved; please try again."))),
      list(new QTreeWidget),
      delay(new QComboBox),
      open(new QPushButton(tr("&Open"))),
      done(new QPushButton(tr("&Mark Done"))),
      dismiss(new QPushButton(tr("&Dismiss"))),
      dismiss_all(new QPushButton(tr("Dismiss &All"))),
      snooze(new QPushButton(tr("&Snooze"))) {
  setObjectName(QStringLiteral("Alert_Window"));
  setWindowTitle(tr("Reminders"));
  setWindowFlags(Qt::Window | Qt::WindowStaysOnTopHint | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                 Qt::WindowCloseButtonHint);
  setAttribute(Qt::WA_ShowWithoutActivating);
  setAttribute(Qt::WA_QuitOnClose, false);
  heading->setObjectName(QStringLiteral("Heading"));
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  list->setObjectName(QStringLiteral("Alerts"));
  list->setAccessibleName(tr("Reminders"));
  list->setColumnCount(Columns);
  list->setHeaderLabels({tr("What"), tr("When"), tr("Where"), tr("Whose"), tr("Due")});
  list->setRootIsDecorated(false);
  list->setUniformRowHeights(true);
  list->setAllColumnsShowFocus(true);
  list->setSelectionMode(QAbstractItemView::ExtendedSelection);
  const int character = fontMetrics().averageCharWidth();
  QHeaderView* header = list->header();
  header->setStretchLastSection(false);
  header->setSectionResizeMode(What_Column, QHeaderView::Stretch);
  constexpr int rows_looked_at = 50, narrow = 16;
  header->setResizeContentsPrecision(rows_looked_at);
  for (const int column : {When_Column, Late_Column})
    header->setSectionResizeMode(column, QHeaderView::ResizeToContents);
  for (const int column : {Where_Column, Whose_Column}) list->setColumnWidth(column, narrow * character);
  delay->setObjectName(QStringLiteral("Delay"));
  delay->setEditable(true);
  delay->setInsertPolicy(QComboBox::NoInsert);
  delay->setAccessibleName(tr("Snooze for"));
  for (const int minutes : Usual_Delays()) delay->addItem(To_Qt(Delay_Text(minutes)));
  auto* label = new QLabel(tr("S&nooze for:"));
  label->setBuddy(delay);
  open->setObjectName(QStringLiteral("Open"));
  done->setObjectName(QStringLiteral("Mark_Done"));
  dismiss->setObjectName(QStringLiteral("Dismiss"));
  dismiss_all->setObjectName(QStringLiteral("Dismiss_All"));
  snooze->setObjectName(QStringLiteral("Snooze"));
  auto* answers = new QHBoxLayout;
  for (QWidget* each :
       {static_cast<QWidget*>(label), static_cast<QWidget*>(delay), static_cast<QWidget*>(snooze)})
    answers->addWidget(each);
  answers->addStretch();
  for (QPushButton* each : {open, done, dismiss, dismiss_all}) answers->addWidget(each);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(heading);
  layout->addWidget(list, 1);
  failure->setObjectName(QStringLiteral("Failure"));
  failure->hide();
  layout->addWidget(failure);
  layout->addLayout(answers);
  constexpr int lines = 12;
  resize(sizeHint().expandedTo({character * 100, fontMetrics().lineSpacing() * lines + 60}));
  Initialise_Form(this);
  connect(delay->lineEdit(), &QLineEdit::returnPressed, this, &TAlert_Window::Snooze);
  connect(list, &QTreeWidget::itemSelectionChanged, this, &TAlert_Window::Set_Buttons);
  connect(list, &QTreeWidget::itemDoubleClicked, this, &TAlert_Window::Open);
  connect(open, &QPushButton::clicked, this, &TAlert_Window::Open);
  connect(done, &QPushButton::clicked, this, &TAlert_Window::Mark_Done);
  connect(dismiss, &QPushButton::clicked, this, [this] { Dismiss(Selected()); });
  connect(dismiss_all, &QPushButton::clicked, this, [this] { Dismiss(entries); });
  connect(snooze, &QPushButton::clicked, this, &TAlert_Window::Snooze);
}

void TAlert_Window::Set_Entries(const std::vector<TAlert_Entry>& shown) {
  QSet<QString> selected;
  for (const TAlert_Entry& entry : Selected()) selected.insert(To_Qt(entry.Key()));
  const int row = list->indexOfTopLevelItem(list->currentItem());
  const QString current = row >= 0 ? To_Qt(entries[static_cast<std::size_t>(row)].Key()) : QString();
  entries = shown;
  const QSignalBlocker quiet(list);
  list->clear();
  QList<QTreeWidgetItem*> items;
  for (const TAlert_Entry& entry : entries) {
    auto* item = new QTreeWidgetItem(
        {To_Qt(entry.Title), To_Qt(When_Text(entry)), To_Qt(entry.Location), To_Qt(entry.Owner_Name)});
    for (int column = 0; column < Late_Column; ++column)
      item->setToolTip(column, As_Plain_Tip(item->text(column)));
    items.append(item);
  }
  list->addTopLevelItems(items);
  // What stood below comes up under the hand that answers one after the other.
  QTreeWidgetItem* at = list->topLevelItem(qMax(0, qMin(row, list->topLevelItemCount() - 1)));
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (To_Qt(entries[i].Key()) == current) at = items[static_cast<qsizetype>(i)];
  }
  if (at) list->setCurrentItem(at, 0, QItemSelectionModel::NoUpdate);
  bool any = false;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (!selected.contains(To_Qt(entries[i].Key()))) continue;
    items[static_cast<qsizetype>(i)]->setSelected(true);
    any = true;
  }
  if (!any && at) at->setSelected(true);
  heading->setText(To_Qt(Count_Text(static_cast<int>(entries.size()))));
  Update_Lateness();
  Set_Buttons();
  if (entries.empty()) hide();
}

void TAlert_Window::Update_Lateness() {
  const Kt_util_01::TDateTime now = Kt_util_01::Now();
  for (std::size_t i = 0; i < entries.size(); ++i)
    list->topLevelItem(static_cast<int>(i))->setText(Late_Column, To_Qt(Lateness_Text(entries[i], now)));
}

void TAlert_Window::Appear() {
  if (isMinimized()) setWindowState(windowState() & ~Qt::WindowMinimized);
  show();
  raise();
}

void TAlert_Window::Come_Forward() {
  Appear();
  activateWindow();
  list->setFocus();
}

std::vector<TAlert_Entry> TAlert_Window::Selected() const {
  std::vector<TAlert_Entry> chosen;
  for (std::size_t i = 0; i < entries.size(); ++i) {
    if (list->topLevelItem(static_cast<int>(i))->isSelected()) chosen.push_back(entries[i]);
  }
  return chosen;
}

void TAlert_Window::Set_Buttons() {
  const auto chosen = Selected();
  for (QPushButton* button : {dismiss, snooze}) button->setEnabled(!chosen.empty());
  open->setEnabled(chosen.size() == 1);
  done->setEnabled(
      !chosen.empty() &&
      std::all_of(chosen.begin(), chosen.end(), [](const TAlert_Entry& entry) { return entry.May_Change; }));
  dismiss_all->setEnabled(!entries.empty());
}

void TAlert_Window::Open() {
  const auto chosen = Selected();
  if (chosen.size() != 1) return;
  const TAlert_Entry entry = chosen.front();
  const auto edit = entry.Task ? Task_Properties : Reminder_Properties;
  if (Outlives(this, [&] { edit(entry.Key(), entry.Owner.Contact, entry.Owner.Book, {}, entry.Private); }))
    emit Answered();
}

void TAlert_Window::Snooze() {
  const std::string text = From_Qt(delay->currentText());
  const auto minutes = Delay_From_Text(text);
  if (!minutes) {
    Kt_util_01::Raise_Error("Reminders", "\"" + text +
                                             "\" is no time to snooze for. Type minutes, or for example \"20 "
                                             "minutes\", \"2 hours\" or \"3 days\".");
    delay->setFocus();
    delay->lineEdit()->selectAll();
    return;
  }
  Show_Failure(TAlert_Watch::Put_Off(Selected(), *minutes));
  emit Answered();
}

void TAlert_Window::Mark_Done() {
  const auto chosen = Selected();
  Show_Failure(std::count_if(chosen.begin(), chosen.end(), TAlert_Watch::Mark_Done) ==
               static_cast<std::ptrdiff_t>(chosen.size()));
  emit Answered();
}

void TAlert_Window::Dismiss(const std::vector<TAlert_Entry>& which) {
  Show_Failure(TAlert_Watch::Dismiss(which));
  emit Answered();
}

void TAlert_Window::Show_Failure(bool answered) {
  failure->setVisible(!answered);
}

void TAlert_Window::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return list->hasFocus() ? Open() : QWidget::keyPressEvent(event);
    case Qt::Key_Delete:
      return Dismiss(Selected());
    case Qt::Key_Escape:
      close();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

}  // namespace Plexidex
