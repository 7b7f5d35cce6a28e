#pragma once

#include <QtTest>
#include <QtWidgets>

#include "Form_Checks.h"
#include "Form_Driver.h"
#include "Kt_forms.h"
#include "Test_Events.h"

using namespace Kt_forms;

/// Forms on a database of their own. Now is noon of Monday, 15 January 2024, which is also the date shown.
struct TEditor_Fixture : TDatabase_Test {
  static constexpr auto Offset_Refused =
      "The offset for the Reminder is invalid.\r\n\r\nPlease specify an offset in one of the following "
      "formats: - \r\n\r\n     ? minutes ( or ? )\r     ? hours ( or ? h)\r     ? days ( or ? d )";

  TEditor_Fixture() { CurrentDate = Monday; }

  /// An event at noon, or another entry without a time, on each of so many days; the key of the middle one.
  std::string Make(int days, int event_type = 0) const {
    TNew_Event event = New_Event("Old", event_type == 0 ? Monday + 0.5 : Monday, days);
    event.Record.EventType = static_cast<TEntry_Type>(event_type);
    event.Record.AllDay = event_type != 0;
    return Query_Text(
        "SELECT Key FROM KT_Events_Data WHERE Event = (SELECT Event FROM KT_Events_Data WHERE Key = '" +
        Write(event) + "') ORDER BY EventDate LIMIT 1 OFFSET " + std::to_string(days / 2));
  }
  static void Show(QWidget& form) {
    form.show();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&form));
  }
  /// The tab that is shown, if the form has any, and the control that has the keyboard.
  static std::string Where(const QWidget* form) {
    const auto* tabs = form->findChild<QTabWidget*>();
    const QString page = tabs ? tabs->tabText(tabs->currentIndex()) + QLatin1Char('/') : QString();
    return (page + (form->focusWidget() ? form->focusWidget()->objectName() : QString())).toStdString();
  }
  /// What writes so fails from now on; the tag of the report.
  void Plant(const std::string& when, const std::string& tag) {
    ::Plant(when);
    seams.Prompts.Expect_Undone("planted fault", tag);
  }
  /// The user may do in the book what these rights say, and no more.
  void Sign_In(const TRights& rights) const {
    In_Update([&] {
      const std::string user = Create_User("Bert", false);
      Set_Rights(database.Book().Key, user, rights);
      Set_User_Key(user);
    });
  }
};

/// One of the editors.
template <class TRules, class TEditor>
struct TOf_An_Editor : TEditor_Fixture {
  /// Opens an entry, or a new one, whose record may be changed before it is shown. Lives until the next.
  TEditor* Edit(const std::string& key, const std::string& subject = {}, bool no_contact = false,
                const std::function<void(TRules&)>& change = {}) {
    form.reset();
    rules = std::make_unique<TRules>();
    EXPECT_TRUE(rules->Open(key, {database.Book().Key, {}}, subject, no_contact));
    if (change) change(*rules);
    form = std::make_unique<TEditor>(*rules);
    Show(*form);
    return form.get();
  }

  std::unique_ptr<TRules> rules;
  std::unique_ptr<TEditor> form;
};
