#pragma once

#include <QAction>
#include <algorithm>

#include "Editor_Fixture.h"
#include "Entry_List.h"
#include "Kt_forms.h"
#include "Reminder_Utils.h"

/// A page of entries inside the page around it, on a database with a contact.
class TView_Fixture : public TEditor_Fixture {
 protected:
  using TDisplay = bool (*)(QWidget*, Kt_forms::TForm_Reference&, const std::string&, const std::string&,
                            bool);
  struct TAdded {
    double Time = 0.5;  // of the day; none when negative
    const char* Title = "Event";
    int Type = 0, Priority = 5;
    bool Alarm = false, Done = false, Private = false;
    std::string Contact = {};
    double Day = Monday;
  };
  struct THome : Kt_forms::TForm {
    QList<qintptr> Asked;
    void Handle_Message(const Kt_forms::TMessage& message) override {
      if (message.Number() == Kt_forms::umDisplayForm) Asked.append(message.WParam);
    }
  };

  explicit TView_Fixture(TDisplay entry_point) : display(entry_point) {
    KTReminds::SortKey = 2;
    KTReminds::SortAscending = true;
    home.resize(640, 400);
    In_Update([this] { contact = Kt_data_01::Create_Contact(database.Book().Key, "Contact"); });
  }
  void Add(const TAdded& added) const {
    KTReminds::TNew_Event event = New_Event(added.Title, added.Day + std::max(added.Time, 0.0));
    if (!added.Contact.empty()) event.Owner.Contact = added.Contact;
    if (added.Private) event.Record.User = "somebody";
    event.Record.AllDay = added.Time < 0;
    event.Record.EventType = static_cast<Kt_data_01::TEntry_Type>(added.Type);
    event.Record.Priority = added.Priority;
    event.Record.Private = added.Private;
    event.Alarm.On = added.Alarm;
    const std::string key = Write(event);
    if (added.Done) Run_Sql("UPDATE KT_Events_Data SET Actioned = 1 WHERE Key = '" + key + "'");
  }
  /// Shows the page, or refreshes it.
  void Display(bool whole_calendar = true) {
    ASSERT_TRUE(display(&home, form, database.Book().Key, database.Book().Calendar, whole_calendar));
    view = form.Get();
    list = Control<KTReminds::TEntry_List>(view, "ListView1");
    if (!home.isVisible()) Show(home);
  }
  QAction* Action(const char* name) { return Control<QAction>(view, name); }
  /// Gives a command, or presses a key in the list, and acts on the dialog that it opens.
  void Answer(const std::function<void(QWidget*)>& act, const char* command) {
    TModal_Driver driver(act);
    Action(command)->trigger();
  }
  void Answer(const std::function<void(QWidget*)>& act, Qt::Key key) {
    TModal_Driver driver(act);
    QTest::keyClick(list, key);
  }
  static void Confirm(QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Return); }
  static void Cancel(QWidget* dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }
  static std::function<void(QWidget*)> Enter_Subject(const char* subject) {
    return [subject](QWidget* editor) {
      Control<QLineEdit>(editor, "Edit1")->setText(QLatin1String(subject));
      Confirm(editor);
    };
  }
  std::string Texts(const char* name) {
    return (Action(name)->text() + QLatin1Char('/') + Action(name)->statusTip()).toStdString();
  }
  std::string Shown() const {
    std::string shown;
    for (std::size_t i = 0; i < list->Items().Count(); ++i)
      shown += (i ? " " : "") + list->Items()[i].Data->Description.Str();
    return shown;
  }

  const TDisplay display;
  std::string contact;
  Kt_forms::TForm_Reference form;
  THome home;
  Kt_forms::TForm* view = nullptr;
  KTReminds::TEntry_List* list = nullptr;
};
