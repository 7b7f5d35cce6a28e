#include "Journal_Page.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>

#include "Contacts.h"
#include "Date_Edit.h"
#include "Host_Dialog.h"
#include "Kt_labels.h"
#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_forms;
using namespace Kt_util_01;

namespace {

constexpr auto Last_Kind = "Journal Kind";

std::string Time_Text(TDateTime date) {
  return FormatDateTime("t", date);
}

// Title and text, whichever there is.
QString Said(const TJournal_Entry& entry) {
  QStringList said{To_Qt(entry.Title), To_Qt(entry.Text).simplified()};
  said.removeAll(QString());
  return said.join(QStringLiteral(": "));
}

class TJournal_Dialog : public THost_Dialog {
 public:
  // A new entry has no date yet.
  TJournal_Dialog(const std::string& contact, const TJournal_Entry& edited, QWidget* parent)
      : THost_Dialog(edited.Date == 0 ? tr("New Journal Entry") : tr("Journal Entry"), parent),
        contact(contact),
        edited(edited),
        kind(new QComboBox),
        date(new KTReminds::TDate_Edit),
        time(new TTimeEdit),
        text(new QPlainTextEdit(To_Qt(edited.Text))) {
    setObjectName(QStringLiteral("Journal_Dialog"));
    kind->setObjectName(QStringLiteral("Kind"));
    date->setObjectName(QStringLiteral("Date"));
    time->setObjectName(QStringLiteral("Time"));
    text->setObjectName(QStringLiteral("Text"));
    for (const TActivity& activity : Populate_Activities())
      kind->addItem(To_Qt(activity.Name), activity.Code);
    const bool is_new = edited.Date == 0;
    const auto type = is_new ? static_cast<int>(Read_Integer("General", Last_Kind, 0)) : edited.Type;
    kind->setCurrentIndex(qMax(0, kind->findData(type)));
    const TDateTime at = is_new ? Now() : edited.Date;
    date->Set_Day(static_cast<double>(Whole_Day(at)));
    time->setText(To_Qt(Time_Text(at)));
    text->setTabChangesFocus(true);
    Form()->addRow(tr("&Kind:"), kind);
    auto* moment = new QHBoxLayout;
    auto* caption = new QLabel(tr("Ti&me:"));
    caption->setBuddy(time);
    moment->addWidget(date, 1);
    moment->addWidget(caption);
    moment->addWidget(time, 1);
    auto* day = new QLabel(tr("&Date:"));
    day->setBuddy(date);
    Form()->addRow(day, moment);
    Form()->addRow(tr("Te&xt:"), text);
    setMinimumWidth(fontMetrics().averageCharWidth() * 65);
    Finish();
    Guard_Inputs();
  }

 protected:
  bool Save() override {
    TJournal_Entry written = edited;
    TDateTime of_day = 0;
    if (!date->Is_Valid()) {
      Raise_Error(From_Qt(windowTitle()), "\"" + From_Qt(date->text()) + "\" is no date; write it as " +
                                              Shown_Format(Format_Settings().ShortDateFormat) + ".");
      date->setFocus();
      return false;
    }
    if (!Str2Time(From_Qt(time->text()), of_day))
      return Refuse(time, "\"" + From_Qt(time->text()) + "\" is no time of day; write it as " +
                              Shown_Format(Format_Settings().ShortTimeFormat) + ".");
    written.Type = kind->currentData().toInt();
    // The seconds stay where nothing was changed.
    if (date->Was_Moved() || edited.Date == 0 || From_Qt(time->text()) != Time_Text(edited.Date))
      written.Date = written.Second_Date = date->Day() + of_day;
    written.Text = From_Qt(text->toPlainText().trimmed());
    bool is_there = false;
    const bool saved = Update_Host("Journal_Page:Save [KT_Log]", [&] {
      is_there = Find_Contact(contact).has_value();
      if (!is_there) return;
      if (edited.Date == 0) {
        Add_Journal_Entry(contact, written);
      } else {
        is_there = Change_Journal_Entry(contact, edited, written);
      }
    });
    if (saved && !is_there)
      Raise_Error(From_Qt(windowTitle()), "The journal entry has been changed or removed meanwhile.");
    if (saved && is_there && edited.Date == 0) Write_Integer("General", Last_Kind, written.Type);
    return saved && is_there;
  }

 private:
  const std::string contact;
  const TJournal_Entry edited;
  QComboBox* kind;
  KTReminds::TDate_Edit* date;
  TTimeEdit* time;
  QPlainTextEdit* text;
};

bool Edit(QWidget* window, const std::string& contact, const TJournal_Entry& entry) {
  TJournal_Dialog dialog(contact, entry, window);
  return dialog.exec() == QDialog::Accepted;
}

}  // namespace

bool Enter_Journal_Entry(QWidget* window, const std::string& contact) {
  return Edit(window, contact, {});
}

TJournal_Page::TJournal_Page()
    : TContact_Rows_Page("Journal", {tr("Date"), tr("Kind"), tr("Text")}, tr("Entry")) {
  setObjectName(QStringLiteral("Journal_Page"));
}

std::vector<TContact_Rows_Page::TRow> TJournal_Page::Read_Rows() {
  entries = List_Journal(Owner());
  std::vector<TRow> rows;
  for (const TJournal_Entry& entry : entries) {
    rows.push_back(
        {{To_Qt(FormatDateTime("ddddd t", entry.Date)), To_Qt(Journal_Type_Name(entry.Type)), Said(entry)},
         Is_By_Hand(entry)});
  }
  return rows;
}

bool TJournal_Page::Add_Row() {
  return Enter_Journal_Entry(window(), Owner());
}

bool TJournal_Page::Edit_Row(std::size_t row) {
  return Edit(window(), Owner(), entries[row]);
}

bool TJournal_Page::Remove_Row(std::size_t row) {
  const TJournal_Entry entry = entries[row];
  if (Raise_Question("Journal", "Remove the journal entry \"" + Journal_Type_Name(entry.Type) + "\" of " +
                                    FormatDateTime("ddddd t", entry.Date) + "?") != Answer_Yes)
    return false;
  return Update_Host("Journal_Page:Remove [KT_Log]", [&] { Remove_Journal_Entry(Owner(), entry); });
}

}  // namespace Plexidex
