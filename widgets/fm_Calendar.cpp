#include "fm_Calendar.h"

#include <QAbstractItemView>
#include <QCalendarWidget>
#include <QEvent>
#include <QSignalBlocker>
#include <QTextCharFormat>
#include <QVBoxLayout>

#include "Colours.h"
#include "Date_Edit.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_forms;

TCalendarFrm::TCalendarFrm(QWidget* told, QWidget* parent) : TForm(parent), notify(told) {
  setObjectName(QStringLiteral("CalendarFrm"));
}

void TCalendarFrm::FormActivate() {
  if (!cal) Make_Calendar();
}

void TCalendarFrm::Make_Calendar() {
  cal = new QCalendarWidget(this);
  cal->setObjectName(QStringLiteral("Cal"));
  cal->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
  cal->setFirstDayOfWeek(First_Day_Of_Week());
  cal->setDateEditEnabled(false);
  cal->setAccessibleName(tr("Calendar"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(cal, 0, Qt::AlignTop);
  layout->addStretch();
  Set_Colours();
  Show_Current_Date();
  Initialise_Form(this);
  connect(cal, &QCalendarWidget::clicked, this, &TCalendarFrm::Date_Picked);
  connect(cal, &QCalendarWidget::selectionChanged, this, [this] {
    // A click that selects another day is told as a click.
    if (key_pressed) Date_Picked(cal->selectedDate());
  });
  connect(cal, &QCalendarWidget::activated, this, [this](const QDate& date) {
    // A double click has been told by its first click; Enter on a day that is not the current one has not.
    if (date != To_QDate(Kt_util_01::CurrentDate)) Date_Picked(date);
  });
  for (QAbstractItemView* days : cal->findChildren<QAbstractItemView*>()) {
    days->installEventFilter(this);
    days->viewport()->installEventFilter(this);
  }
  cal->show();
}

bool TCalendarFrm::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      key_pressed = true;
      break;
    case QEvent::KeyRelease:
    case QEvent::FocusOut:
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
      key_pressed = false;
      break;
    default:
      break;
  }
  return TForm::eventFilter(watched, event);
}

void TCalendarFrm::Set_Colours() {
  QTextCharFormat weekdays;
  weekdays.setForeground(palette().windowText());
  for (int day = 1; day <= 7; ++day) cal->setWeekdayTextFormat(static_cast<Qt::DayOfWeek>(day), weekdays);
  if (auto* bar = cal->findChild<QWidget*>(QStringLiteral("qt_calendar_navigationbar"))) {
    const bool on_dark = Is_Dark(palette().color(QPalette::Window));
    QPalette title = palette();
    title.setColor(QPalette::Highlight, on_dark ? palette().color(QPalette::Button) : QColor(Silver));
    title.setColor(QPalette::HighlightedText,
                   on_dark ? palette().color(QPalette::ButtonText) : QColor(Qt::black));
    for (QWidget* part : bar->findChildren<QWidget*>()) part->setPalette(title);
    bar->setPalette(title);
  }
}

void TCalendarFrm::changeEvent(QEvent* event) {
  TForm::changeEvent(event);
  if (cal && event->type() == QEvent::PaletteChange) Set_Colours();
}

void TCalendarFrm::Show_Current_Date() {
  const QSignalBlocker silent(cal);
  cal->setSelectedDate(To_QDate(Kt_util_01::CurrentDate));
}

void TCalendarFrm::Date_Picked(const QDate& date) {
  Kt_util_01::CurrentDate = From_QDate(date);
  Send_Message(notify, umDateChanged, 0, 0);
}

void TCalendarFrm::Handle_Message(const TMessage& message) {
  if (cal && message.Number() == umDateChanged) Show_Current_Date();
}

TCalendarFrm* Show_Calendar(QWidget* Parent, QWidget* Notify) {
  Kt_util_01::Sound(2);
  auto* form = new TCalendarFrm(Notify, Parent);
  if (Parent->layout()) {
    Parent->layout()->addWidget(form);
  } else {
    auto* layout = new QVBoxLayout(Parent);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(form);
  }
  form->show();
  return form;
}

}  // namespace KTReminds
