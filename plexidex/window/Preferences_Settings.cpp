// The pages of the preferences but that of the data.

#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <algorithm>

#include "Alarm_Sounds.h"
#include "Alarm_Texts.h"
#include "Holidays.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Login_Start.h"
#include "Preference_Groups.h"
#include "Reminder_Rules.h"
#include "Start_Page.h"
#include "User_Formats.h"

namespace Plexidex {

using namespace Kt_forms;
using namespace Kt_util_01;

namespace {

template <class TControl>
TControl* Named(TControl* control, const char* name) {
  control->setObjectName(QString::fromLatin1(name));
  return control;
}

QCheckBox* Check_Box(const QString& text, const char* name, bool checked) {
  auto* box = Named(new QCheckBox(text), name);
  box->setChecked(checked);
  return box;
}

class TGeneral_Group : public TPreference_Group {
 public:
  TGeneral_Group() {
    for (const auto& [name, text] : Start_Pages()) start->addItem(text, To_Qt(name));
    start->setCurrentIndex(qMax(0, start->findData(To_Qt(Chosen_Start_Page()))));
    Form()->addRow(tr("&Start with:"), start);
    for (QCheckBox* box : {tray, login, sounds}) Form()->addRow(box);
    // It starts in the notification area alone.
    login->setEnabled(tray->isChecked());
    login->setChecked(tray->isChecked() && Starts_At_Login());
    connect(tray, &QCheckBox::toggled, this, [this](bool on) {
      login->setEnabled(on);
      if (!on) login->setChecked(false);
    });
  }
  std::optional<TWrong> Check() override {
    const std::string fault = Login_Start_Fault(login->isChecked());
    return fault.empty() ? std::nullopt : std::optional<TWrong>({login->isEnabled() ? login : tray, fault});
  }
  void Save() override {
    // First what can fail.
    Set_Start_At_Login(login->isChecked());
    Choose_Start_Page(From_Qt(start->currentData().toString()));
    Write_Bool("General", "Tray", tray->isChecked());
    Write_Bool("Sounds", "Interface", sounds->isChecked());
  }

 private:
  QComboBox* start = Named(new QComboBox, "Start_Page");
  QCheckBox* tray = Check_Box(tr("&Keep running in the notification area when the window is closed"), "Tray",
                              Read_Bool("General", "Tray", false));
  QCheckBox* login = Check_Box(tr("Start there when I &log in"), "Login_Start", false);
  QCheckBox* sounds =
      Check_Box(tr("&Interface sounds"), "Interface_Sounds", Read_Bool("Sounds", "Interface", true));
};

class TCalendar_Group : public TPreference_Group {
 public:
  TCalendar_Group() {
    const auto& names = Format_Settings().LongDayNames;
    const auto day_name = [&](int day) { return To_Qt(names[static_cast<std::size_t>(day - 1)]); };
    first_day->addItem(tr("As usual in the country (%1)").arg(day_name(Locale_Formats().FirstDayOfWeek)));
    for (const int day : {2, 3, 4, 5, 6, 7, 1}) first_day->addItem(day_name(day), day);
    const int chosen = Read_User_Formats().First_Day;
    first_day->setCurrentIndex(chosen > 0 ? first_day->findData(chosen) : 0);
    Form()->addRow(tr("&First day of the week:"), first_day);
    const std::vector<std::string> shown = Chosen_Countries();
    countries->setSpacing(1);
    // As behind other check boxes, which cannot be seen on the ground of a dark list.
    countries->viewport()->setAutoFillBackground(false);
    for (const TCountry& country : Holiday_Countries()) {
      const bool is_shown = std::find(shown.begin(), shown.end(), country.Code) != shown.end();
      auto* item = new QListWidgetItem(To_Qt(std::string(country.Name)), countries);
      item->setData(Qt::UserRole, To_Qt(std::string(country.Code)));
      item->setCheckState(is_shown ? Qt::Checked : Qt::Unchecked);
      if (is_shown && !countries->currentItem()) countries->setCurrentItem(item);
    }
    if (!countries->currentItem()) countries->setCurrentRow(0);
    Form()->addRow(tr("&Holidays of:"), countries);
  }
  void Save() override {
    TUser_Formats formats = Read_User_Formats();
    formats.First_Day = first_day->currentData().toInt();
    Write_User_Formats(formats);
    std::vector<std::string> chosen;
    for (int row = 0; row < countries->count(); ++row) {
      const QListWidgetItem* item = countries->item(row);
      if (item->checkState() == Qt::Checked) chosen.push_back(From_Qt(item->data(Qt::UserRole).toString()));
    }
    // Until it is changed the choice goes with the locale.
    if (chosen != Chosen_Countries()) Choose_Countries(chosen);
  }

 private:
  QComboBox* first_day = Named(new QComboBox, "First_Day");
  QListWidget* countries = Named(new QListWidget, "Countries");
};

class TReminders_Group : public TPreference_Group {
 public:
  TReminders_Group() {
    reminder->addItem(tr("No reminder"), -1);
    for (std::string text : KTReminds::Alarm_Offset_Items())
      reminder->addItem(To_Qt(text), KTReminds::Convert_Alarm_ItemText(text));
    const int minutes = KTReminds::Read_New_Reminder();
    if (reminder->findData(minutes) < 0)
      reminder->addItem(To_Qt(KTReminds::Convert_Offset_to_ItemText(minutes)), minutes);
    reminder->setCurrentIndex(reminder->findData(minutes));
    // The list's first text stands for the user's default, which this is.
    sounds = KTReminds::Build_WAV_List(KTReminds::Read_Default_Sound());
    for (std::size_t i = 1; i < sounds.Items.size(); ++i)
      default_sound->addItem(To_Qt(sounds.Items[i]), static_cast<int>(i));
    // It may only be away for the moment, as on a disk that is not there.
    const std::string stored = KTReminds::Read_Default_Sound();
    if (sounds.Selected < 1 && !stored.empty() && stored != KTReminds::Default_Sound_Text)
      default_sound->addItem(tr("%1 (not found)").arg(To_Qt(stored)), 0);
    default_sound->setCurrentIndex(qMax(0, default_sound->findData(sounds.Selected)));
    Form()->addRow(tr("&New events have:"), reminder);
    Form()->addRow(tr("&Default alarm sound:"), default_sound);
  }
  void Save() override {
    KTReminds::Write_New_Reminder(reminder->currentData().toInt());
    sounds.Selected = default_sound->currentData().toInt();
    if (sounds.Selected > 0) KTReminds::Write_Default_Sound(sounds.Default_Value());
  }

 private:
  QComboBox* reminder = Named(new QComboBox, "New_Reminder");
  QComboBox* default_sound = Named(new QComboBox, "Default_Sound");
  KTReminds::TSound_List sounds;
};

class TLook_Group : public TPreference_Group {
 public:
  TLook_Group() {
    const TFormat_Settings& usual = Locale_Formats();
    const TUser_Formats formats = Read_User_Formats();
    Fill(dates, Shown_Format(usual.ShortDateFormat, usual), formats.Date,
         {"yyyy-MM-dd", "dd/MM/yyyy", "MM/dd/yyyy", "dd.MM.yyyy", "d MMM yyyy"});
    Fill(times, Shown_Format(usual.ShortTimeFormat, usual), formats.Time, {"HH:mm", "h:mm AP", "H.mm"});
    example->setTextFormat(Qt::PlainText);
    for (QCheckBox* box : {bars, completed}) Form()->addRow(box);
    Form()->addRow(tr("&Dates:"), dates);
    Form()->addRow(tr("&Times:"), times);
    Form()->addRow(tr("Example:"), example);
    Show_Example();
    for (QComboBox* box : {dates, times})
      connect(box, &QComboBox::editTextChanged, this, &TLook_Group::Show_Example);
  }
  std::optional<TWrong> Check() override {
    if (!With_Date(Locale_Formats()))
      return TWrong{dates, "\"" + From_Qt(dates->currentText()) +
                               "\" does not say how a date is written; dd/MM/yyyy or d MMM yyyy would."};
    if (!With_Time(Locale_Formats()))
      return TWrong{times, "\"" + From_Qt(times->currentText()) +
                               "\" does not say how a time is written; HH:mm or h:mm AP would."};
    return {};
  }
  void Save() override {
    Write_Bool("General", "Navigation Bars", bars->isChecked());
    Write_Bool("General", "Completed Style", completed->isChecked());
    TUser_Formats formats = Read_User_Formats();
    formats.Date = Typed(dates);
    formats.Time = Typed(times);
    Write_User_Formats(formats);
  }

 private:
  static void Fill(QComboBox* box, const std::string& usual, const std::string& chosen,
                   std::initializer_list<const char*> patterns) {
    box->setEditable(true);
    box->setCompleter(nullptr);
    box->addItem(tr("As usual in the country (%1)").arg(To_Qt(usual)));
    for (const char* pattern : patterns) box->addItem(QString::fromLatin1(pattern));
    box->setCurrentIndex(0);
    if (!chosen.empty()) box->setEditText(To_Qt(chosen));
    box->lineEdit()->setCursorPosition(0);
  }
  // "" for the country's.
  static std::string Typed(const QComboBox* box) {
    const QString text = box->currentText().trimmed();
    return text == box->itemText(0) ? std::string() : From_Qt(text);
  }
  std::optional<TFormat_Settings> With_Date(const TFormat_Settings& settings) const {
    return Typed(dates).empty() && !dates->currentText().trimmed().isEmpty()
               ? settings
               : With_Date_Pattern(settings, Typed(dates));
  }
  std::optional<TFormat_Settings> With_Time(const TFormat_Settings& settings) const {
    return Typed(times).empty() && !times->currentText().trimmed().isEmpty()
               ? settings
               : With_Time_Pattern(settings, Typed(times));
  }
  void Show_Example() {
    const auto with_date = With_Date(Locale_Formats());
    const auto with_both = with_date ? With_Time(*with_date) : std::nullopt;
    example->setText(with_both ? To_Qt(FormatDateTime("ddddd  t", Now(), *with_both)) : tr("cannot be read"));
  }

  QCheckBox* bars = Check_Box(tr("Show &navigation bars"), "Navigation_Bars",
                              Read_Bool("General", "Navigation Bars", true));
  QCheckBox* completed =
      Check_Box(tr("&Strike through what is completed"), "Completed_Style", UseCompleteStyle());
  QComboBox* dates = Named(new QComboBox, "Date_Format");
  QComboBox* times = Named(new QComboBox, "Time_Format");
  QLabel* example = Named(new QLabel, "Example");
};

}  // namespace

TPreference_Group* Make_General_Group() {
  return new TGeneral_Group;
}
TPreference_Group* Make_Calendar_Group() {
  return new TCalendar_Group;
}
TPreference_Group* Make_Reminders_Group() {
  return new TReminders_Group;
}
TPreference_Group* Make_Look_Group() {
  return new TLook_Group;
}

}  // namespace Plexidex
