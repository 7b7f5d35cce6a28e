#include "Entry_Commands.h"

#include "View_Fixture.h"
#include "fm_Contacts_Page3b.h"

using namespace KTReminds;
using namespace Kt_data_01;
using namespace Kt_forms;

namespace {

/// A page whose first list shows the entries of Monday.
struct TServed {
  const char* Name;
  bool (*Display)(QWidget*, TForm_Reference&, const std::string&, const std::string&, bool);
};

void PrintTo(const TServed& page, std::ostream* stream) {
  *stream << page.Name;
}

/// What every page with a list of entries does for them.
class Entry_Commands_Of : public TView_Fixture, public testing::WithParamInterface<TServed> {
 protected:
  Entry_Commands_Of() : TView_Fixture(GetParam().Display) {}

  /// The tools that are enabled, with their menu items, of those that depend on the selection.
  std::string Enabled() {
    std::string enabled;
    for (const auto& [tool, item] : {std::pair("AckBtn", "Ackmenu"), std::pair("PropsBtn", "PropsMenu"),
                                     std::pair("Delbtn", "DelMenu")}) {
      const bool on = Control<QToolButton>(view, tool)->isEnabled();
      EXPECT_EQ(Action(item)->isEnabled(), on) << item;
      if (on) enabled += std::string(tool) + " ";
    }
    return enabled;
  }
};

INSTANTIATE_TEST_SUITE_P(Pages, Entry_Commands_Of,
                         testing::Values(TServed{"Day_View", &Display_Calendar_Dayview}),
                         [](const auto& info) { return info.param.Name; });

TEST_P(Entry_Commands_Of, Follow_The_Selection) {
  Add("a", 0.1);
  Add("b", 0.2, "EventType = 3", "Actioned = 1");
  Add("c", 0.3, Hidden);
  Display();
  EXPECT_EQ(Enabled(), "");
  list->Select_Row(0);
  EXPECT_EQ(Texts("AckBtn"), "Mark Complete/Mark Complete");
  list->Select_Row(1);
  EXPECT_EQ(Enabled() + Texts("AckBtn"), "AckBtn PropsBtn Delbtn Mark Outstanding/Mark Outstanding");
  list->Select_Row(2);
  EXPECT_EQ(Enabled() + Texts("AckBtn"), "PropsBtn Mark Outstanding/Mark Outstanding")
      << "left as it was for the private one";
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(list, &asked);
  auto* popup = Control<QMenu>(view, "PopupMenu1");
  EXPECT_TRUE(popup->isVisible());
  EXPECT_EQ(popup->defaultAction(), Action("PropsMenu"));
  popup->close();
}

TEST_P(Entry_Commands_Of, Mark_In_Place_By_Tool_And_By_A_Click_On_The_Image) {
  Add("a", 0.1);
  Add("b", 0.2, Hidden);
  Display();
  const auto click = [this](int row, int x) {
    const int y = list->visualRect(list->model()->index(row, 0)).center().y();
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, QPoint(x, y));
    return Query_Number("SELECT sum(Actioned) FROM KT_Events_Data");
  };
  const auto* item = &list->Items()[0];
  EXPECT_EQ(click(0, 60), 0) << "beside the image";
  EXPECT_EQ(click(0, 10), 1);
  EXPECT_EQ(item->Image, Image_Done_Event);
  EXPECT_EQ(list->Selected(), item) << "not built again";
  Act(view, "Ackmenu");
  EXPECT_EQ(click(1, 10), 0) << "private";
  Sign_In({.Delete = true, .See = true});
  EXPECT_EQ(click(0, 10), 0) << "not allowed";
  EXPECT_EQ(Enabled(), "PropsBtn Delbtn ");
}

TEST_P(Entry_Commands_Of, Sort_And_Keep_The_Selection) {
  Add("b", 0.1, "Priority = 1");
  Add("a", 0.2, "Priority = 9");
  Display(true, 0);
  const auto click = [this](const char* label) {
    Act(view, label);
    return Shown() + (list->Selected_Row() == 0 ? "1" : "2");
  };
  EXPECT_EQ(click("SortDescLabel"), "a b2");
  EXPECT_EQ(click("SortPrtyLabel"), "b a1");
  EXPECT_EQ(click("SortPrtyLabel"), "a b2");
  form.Get()->Close_Form();
  Display();
  EXPECT_EQ(Shown(), "a b") << "the order outlives the page";
  const auto checked = [this] {
    emit Control<QMenu>(view, "SortBy1")->aboutToShow();
    std::string texts;
    for (const QAction* action : Control<QMenu>(view, "SortBy1")->actions())
      if (action->isChecked()) texts += action->text().toStdString() + " ";
    return texts;
  };
  EXPECT_EQ(checked(), "&Priority D&escending ");
  Act(view, "Ascending1");
  EXPECT_EQ(Shown(), "b a");
  Act(view, "Sort3");
  EXPECT_EQ(Shown(), "a b");
  EXPECT_EQ(checked(), "&Description A&scending ");
}

TEST_P(Entry_Commands_Of, Add_Open_And_Delete_By_Keys_And_Tools) {
  Display();
  Answer(Confirm_With("Edit1=added"), Qt::Key_Insert);
  EXPECT_EQ(Shown(), "added");
  QTest::keyClick(list, Qt::Key_Delete);  // nothing is selected
  list->Select_Row(0);
  Answer(Confirm_With("Edit1=edited"), Qt::Key_Return);
  EXPECT_EQ(Shown(), "edited");
  list->Select_Row(0);
  Answer(Cancel, Qt::Key_Delete);
  EXPECT_EQ(list->Selected_Row(), 0) << "nothing was refreshed";
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(Shown(), "");
  Answer(Confirm_With("Edit1=without a selection"), Qt::Key_Return);
  Add("task", 0.1, "EventType = 3");
  Add("private", 0.9, Hidden);
  Display(true, 0);
  EXPECT_EQ(Shown(), "task without a selection private");
  const auto look = [](const char* form_name, bool read_only) {
    return [=](QWidget* editor) {
      EXPECT_EQ(editor->objectName(), QLatin1String(form_name));
      EXPECT_EQ(Control<QLineEdit>(editor, "Edit1")->isReadOnly(), read_only);
      Cancel(editor);
    };
  };
  Answer(look("Task_Frm", false), "PropsMenu");
  list->Select_Row(2);
  QTest::keyClick(list, Qt::Key_Delete);  // not allowed
  Answer(look("Reminder_Frm", true), "PropsBtn");
}

TEST_P(Entry_Commands_Of, Let_The_Page_Be_Closed_Or_Freed_While_Their_Dialogs_Are_Open) {
  Add("a", 0.5);
  for (const char* command : {"Addbtn", "AddTaskBtn", "PropsBtn", "Delbtn"}) {
    Display(true, 0);
    const QPointer<TForm> alive = view;
    const std::size_t shown = list->Items().Count();
    Answer(
        [&](QWidget* dialog) {
          EXPECT_TRUE(form.Get()->Close_Form());
          Settle();
          EXPECT_TRUE(alive) << "its handler is still at work";
          if (dialog->objectName() != QStringLiteral("Delete_Reminder_Frm")) Act(dialog, "Edit1=x");
          Confirm(dialog);
        },
        command);
    EXPECT_TRUE(alive && list->Items().Count() == shown) << "is not refreshed any more";
    Settle();
    EXPECT_FALSE(alive) << command;
  }
  EXPECT_EQ(Counts(), "2 2 0 0") << "two added, one deleted";
  Display(true, 0);
  Answer(
      [&](QWidget* dialog) {
        delete view;  // as its parent does
        Confirm(dialog);
      },
      Qt::Key_Delete);
  EXPECT_EQ(Counts(), "1 1 0 0");
}

/// Two days side by side, and nothing but tasks to add.
struct TTwo_Days : TForm, TEntry_Page {
  TEntry_List* Lists[2] = {new TEntry_List(this), new TEntry_List(this)};
  QAction Mark, Add_Task;
  TEntry_Commands Commands{*this,
                           *this,
                           {.Toggle = {&Mark}, .Add_Task = {&Add_Task}},
                           {SortKey, SortAscending, [](auto& list) { Sort_Items(list, SortKey); }},
                           "Task"};
  const std::string Book;
  std::string Told;

  explicit TTwo_Days(const TBook& book) : Book(book.Key) {
    auto* layout = new QHBoxLayout(this);
    for (TEntry_List* list : Lists) {
      layout->addWidget(list);
      Commands.Add_List(list);
    }
    Build_Day_Lists({Book, {}}, true, 45306, {&Lists[0]->Items(), &Lists[1]->Items()});
  }
  TOwner Owner_Of_New(TEntry_Type) const override { return {Book, {}}; }
  void Before_Adding() override { Told += "before "; }
  void Refresh_After(const TEntry_Change& change) override {
    const bool known = !change.Key.empty() && Commands.Selected()->Data->Key == change.Key;
    Told += std::to_string(static_cast<int>(change.Kind)) + (known ? "k" : "") + std::to_string(change.Row);
  }
};

using Entry_Commands = TEditor_Fixture;

TEST_F(Entry_Commands, Of_Several_Lists_Have_One_Selection_And_Say_What_They_Did) {
  for (const double time : {0.1, 0.2}) Write(New_Event("tomorrow", Monday + 1 + time));
  TTwo_Days page(database.Book());
  Show(page);
  page.Lists[1]->setFocus(Qt::TabFocusReason);
  page.Lists[1]->Select_Row(1);
  page.Mark.trigger();
  EXPECT_EQ(page.Mark.text(), QStringLiteral("Mark Outstanding"));
  EXPECT_EQ(Query_Text("SELECT round(EventDate - 45307, 1) FROM KT_Events_Data WHERE Actioned = 1"), "0.2");
  const auto told = [&page](const auto& act, const std::function<void()>& give) {
    page.Told.clear();
    With_Dialog(act, give);
    return page.Told;
  };
  EXPECT_EQ(told(Confirm_With("Edit1=x"), [&] { page.Add_Task.trigger(); }), "before 11");
  EXPECT_EQ(told(Confirm, [&] { QTest::keyClick(page.Lists[1], Qt::Key_Return); }), "2k1");
  EXPECT_EQ(told(Confirm, [&] { QTest::keyClick(page.Lists[1], Qt::Key_Delete); }), "3k1");

  page.activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&page));
  QTest::keyClick(page.Lists[1], Qt::Key_Backtab);
  EXPECT_TRUE(page.Lists[0]->hasFocus());
  EXPECT_EQ(page.Lists[1]->Selected_Row(), -1)
      << "Delete in an empty list must not reach another one's entry";
  EXPECT_FALSE(page.Mark.isEnabled());
  page.Lists[1]->Select_Row(0);
  QTest::mouseClick(page.Lists[0]->viewport(), Qt::LeftButton);
  EXPECT_EQ(page.Commands.Selected(), nullptr);
  EXPECT_EQ(told(Confirm_With("Edit1=x"), [&] { QTest::keyClick(page.Lists[0], Qt::Key_Insert); }),
            "before 1-1")
      << "adds no events";
}

}  // namespace
