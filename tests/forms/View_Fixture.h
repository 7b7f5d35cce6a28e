#pragma once

#include "Editor_Fixture.h"
#include "Entry_List.h"
#include "Reminder_Utils.h"

/// A page of entries inside the page around it, on a database with a contact.
struct TView_Fixture : TEditor_Fixture {
  using TDisplay = bool (*)(QWidget*, TForm_Reference&, const std::string&, const std::string&, bool);
  /// Columns of another user's private event.
  static constexpr auto Hidden = "Private = 1, User = 'somebody'";
  struct THome : TForm {
    QList<qintptr> Asked;
    void Handle_Message(const TMessage& message) override {
      if (message.Number() == umDisplayForm) Asked.append(message.WParam);
    }
  };

  explicit TView_Fixture(TDisplay entry_point) : display(entry_point) {
    SortKey = 2;
    SortAscending = true;
    home.resize(640, 400);
    In_Update([this] { contact = Create_Contact(database.Book().Key, "Contact"); });
  }
  /// Adds an event of Monday, or what its columns say otherwise.
  void Add(const std::string& title, double time, const std::string& master = {},
           const std::string& occurrence = {}) const {
    const std::string where = " WHERE Key = '" + Write(New_Event(title, Monday + time)) + "'";
    if (!occurrence.empty()) Run_Sql("UPDATE KT_Events_Data SET " + occurrence + where);
    if (!master.empty()) Run_Sql("UPDATE KT_Events SET " + master + " WHERE Title = '" + title + "'");
  }
  /// Shows the page, or refreshes it, with a row selected.
  void Display(bool whole_calendar = true, int row = -1) {
    ASSERT_TRUE(display(&home, form, database.Book().Key, database.Book().Calendar, whole_calendar));
    view = form.Get();
    list = view->findChild<TEntry_List*>(QStringLiteral("ListView1"));
    if (!home.isVisible()) Show(home);
    if (row >= 0) list->Select_Row(row);
  }
  QAction* Action(const char* name) { return Control<QAction>(view, name); }
  /// Gives a command, or presses a key in the list, and acts on the dialog that it opens.
  void Answer(const std::function<void(QWidget*)>& act, const char* command) {
    With_Dialog(act, [&] { Act(view, command); });
  }
  void Answer(const std::function<void(QWidget*)>& act, Qt::Key key) {
    With_Dialog(act, [&] { QTest::keyClick(list, key); });
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
  TForm_Reference form;
  THome home;
  TForm* view = nullptr;
  TEntry_List* list = nullptr;  // null for a page without one
};
