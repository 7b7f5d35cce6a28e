#include "Entry_Commands.h"

#include "View_Fixture.h"
#include "fm_Contacts_Page3a.h"
#include "fm_Contacts_Page3b.h"
#include "fm_Contacts_Page3d.h"

namespace {

struct TPage_Of_Entries {
  const char* Name;
  TView_Fixture::TDisplay Display;
};
const TPage_Of_Entries Pages[] = {{"Day", &Display_Calendar_Dayview},
                                  {"Week", &Display_Calendar_Weekview},
                                  {"All", &Display_Calendar_Allview}};

/// What every page with a list of entries does for them.
struct Entry_Commands_On_A_Page : TView_Fixture, testing::WithParamInterface<TPage_Of_Entries> {
  Entry_Commands_On_A_Page() : TView_Fixture(GetParam().Display) {}

  /// Where a row is, at this distance from the left.
  QPoint At(int row, int x) const { return {x, list->visualRect(list->model()->index(row, 0)).center().y()}; }
};

TEST_P(Entry_Commands_On_A_Page, Follow_The_Selection) {
  Add("a", 0.1);
  Add("b", 0.2, "EventType = 3", "Actioned = 1");
  Add("c", 0.3, Hidden);
  Display();
  const char* const seen[] = {
      "(Toggle Event's State)|(&Mark Complete)|(Open Item)|(&Open...)|(Delete Item)|(&Delete Item...)",
      "Mark Complete|&Mark Complete|Open Item|&Open...|Delete Item|&Delete Item...",
      "Mark Outstanding|&Mark Outstanding|Open Item|&Open...|Delete Item|&Delete Item...",
      "(Mark Outstanding)|(&Mark Outstanding)|Open Item|&Open...|(Delete Item)|(&Delete Item...)"};
  for (const int row : {-1, 0, 1, 2}) {
    list->Select_Row(row);
    EXPECT_EQ(Seen(view, "AckBtn Ackmenu PropsBtn PropsMenu Delbtn DelMenu"), seen[row + 1]);
  }
  QContextMenuEvent asked(QContextMenuEvent::Keyboard, {}, {});
  QApplication::sendEvent(list, &asked);
  auto* popup = Control<QMenu>(view, "PopupMenu1");
  EXPECT_TRUE(popup->isVisible() && popup->defaultAction() == Action("PropsMenu"));
  popup->close();
}

TEST_P(Entry_Commands_On_A_Page, Mark_In_Place_By_Tool_And_By_A_Click_On_The_Image) {
  Add("a", 0.1);
  Add("b", 0.2, Hidden);
  Display();
  const auto click = [this](int row, int x, Qt::MouseButton button = Qt::LeftButton) {
    QTest::mouseClick(list->viewport(), button, {}, At(row, x));
    return Query_Number("SELECT sum(Actioned) FROM KT_Events_Data");
  };
  const auto* item = &list->Items()[0];
  EXPECT_EQ(click(0, 60) + click(0, 10, Qt::RightButton), 0) << "beside the image, or for its menu";
  EXPECT_EQ(click(0, 10), 1);
  EXPECT_TRUE(list->Selected() == item && item->Image == Image_Done_Event) << "not built again";
  QTest::keyClick(list, Qt::Key_Space);
  EXPECT_EQ(click(1, 10), 0) << "private";
  Sign_In({.Delete = true, .See = true});
  EXPECT_EQ(click(0, 10), 0) << "not allowed";
  EXPECT_EQ(Seen(view, "AckBtn Delbtn"), "(Mark Complete)|Delete Item");
}

TEST_P(Entry_Commands_On_A_Page, Sort_And_Keep_The_Selection) {
  Add("b", 0.1, "Priority = 1");
  Add("a", 0.2, "Priority = 9");
  Display(true, 0);
  // The order, the row selected, and what the menu says of the order.
  const auto after = [this](const char* command) {
    Act(view, command);
    emit Control<QMenu>(view, "SortBy1")->aboutToShow();
    std::string seen = Shown() + std::to_string(list->Selected_Row());
    for (const QAction* action : Control<QMenu>(view, "SortBy1")->actions())
      if (action->isChecked()) seen += " " + action->text().toStdString();
    return seen;
  };
  if (view->findChild<QWidget*>(QStringLiteral("EventTitlePanel"))) {
    EXPECT_EQ(after("SortDescLabel"), "a b1 &Description A&scending");
    EXPECT_EQ(after("SortPrtyLabel"), "b a0 &Priority A&scending");
    EXPECT_EQ(after("SortPrtyLabel"), "a b1 &Priority D&escending");
  } else {
    EXPECT_EQ(after("Sort4|Descending1"), "a b1 &Priority D&escending");
  }
  form.Get()->Close_Form();
  Display();
  EXPECT_EQ(Shown(), "a b") << "the order outlives the page";
  EXPECT_EQ(after("Ascending1"), "b a-1 &Priority A&scending");
  EXPECT_EQ(after("Sort3"), "a b-1 &Description A&scending");
}

TEST_P(Entry_Commands_On_A_Page, Add_Open_And_Delete_By_Keys_And_Tools) {
  Display();
  const auto double_click = [this](const std::function<void(QWidget*)>& act, const QPoint& place) {
    With_Dialog(act, [&] { QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, place); });
  };
  Answer(Confirm_With("Edit1=added"), Qt::Key_Insert);
  QTest::keyClick(list, Qt::Key_Delete);  // nothing is selected
  EXPECT_EQ(Shown(), "added");
  list->Select_Row(0);
  Answer(Confirm_With("Edit1=edited"), Qt::Key_Return);
  EXPECT_EQ(Shown() + std::to_string(list->Selected_Row()), "edited0") << "still selected";
  double_click(Cancel, At(0, 60));
  Answer(Cancel, Qt::Key_Delete);
  EXPECT_EQ(list->Selected_Row(), 0) << "nothing was refreshed";
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(Shown(), "");
  Add("c", 0.3);
  Display(true, 0);
  double_click(Confirm_With("Edit1=beside"), At(0, 60) + QPoint(0, 100));
  Add("task", 0.1, "EventType = 3");
  Add("private", 0.9, Hidden);
  Display(true, 0);
  EXPECT_EQ(Shown(), "task c beside private");
  QString looks;
  const auto look = [&](QWidget* editor) {
    looks +=
        editor->objectName() +
        (Control<QLineEdit>(editor, "Edit1")->isReadOnly() ? QLatin1String(" read ") : QLatin1String(" "));
    Cancel(editor);
  };
  Answer(look, "PropsMenu");
  list->Select_Row(3);
  QTest::keyClick(list, Qt::Key_Delete);  // not allowed
  Answer(look, "PropsBtn");
  EXPECT_EQ(looks, QStringLiteral("Task_Frm Reminder_Frm read "));
}

TEST_P(Entry_Commands_On_A_Page, Select_The_Next_After_A_Deletion_And_Keep_Up_With_The_Database) {
  for (const auto& [title, time] : {std::pair("a", 0.1), {"b", 0.2}, {"c", 0.3}, {"d", 0.4}})
    Add(title, time);
  Display(true, 1);
  const auto seen = [this] { return Shown() + std::to_string(list->Selected_Row()); };
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(seen(), "a c d1");
  list->Select_Row(2);
  Answer(Confirm, Qt::Key_Delete);
  EXPECT_EQ(seen(), "a c1") << "the last one's place is taken by the one before";
  // An editor that wrote before it was cancelled.
  Answer(
      [this](QWidget* editor) {
        In_Update([] { Run_Sql("UPDATE KT_Events SET Title = 'e' WHERE Title = 'a'"); });
        Write(New_Event("first", Monday));
        Cancel(editor);
      },
      Qt::Key_Enter);
  EXPECT_EQ(seen(), "first e c2");
  TDatabase another;
  another.Open(database.Path(), TDatabase::TMode::Must_Exist);
  another.Engine().Execute("UPDATE KT_Events SET Title = 'changed' WHERE Title = 'c'");
  QWidget other_window;
  Show(other_window);
  home.activateWindow();
  EXPECT_TRUE(QTest::qWaitFor([&] { return seen() == "first e changed2"; })) << seen();
  auto* popup = Control<QMenu>(view, "PopupMenu1");
  popup->popup({});
  Add("under a menu", 0.6);
  QEvent activated(QEvent::WindowActivate);
  QApplication::sendEvent(view, &activated);
  Settle();
  EXPECT_EQ(seen(), "first e changed2");
  popup->close();
  for (int i = 0; i < 60; ++i) Add("more", 0.6);
  Display(true, 0);
  list->scrollTo(list->model()->index(30, 0), QAbstractItemView::PositionAtTop);
  Add("last", 0.9);
  view->Look_At_Rows();
  EXPECT_EQ(Shown().substr(Shown().size() - 4), "last");
  EXPECT_TRUE(list->Top_Row() == 30 && list->Selected_Row() == 0) << "scrolled as it was";
}

TEST_P(Entry_Commands_On_A_Page, Let_The_Page_Be_Closed_Or_Freed_While_Their_Dialogs_Are_Open) {
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
  EXPECT_EQ(Counts(), "2 2 0") << "two added, one deleted";
  Display(true, 0);
  const auto free_and_confirm = [this](QWidget* dialog) {
    delete view;  // as its parent does
    Confirm(dialog);
  };
  Answer(free_and_confirm, Qt::Key_Delete);
  EXPECT_EQ(Counts(), "1 1 0");
}

INSTANTIATE_TEST_SUITE_P(Views, Entry_Commands_On_A_Page, testing::ValuesIn(Pages),
                         [](const auto& page) { return page.param.Name; });

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
  for (const double time : {0.1, 1.1, 1.2}) Write(New_Event("x", Monday + time));
  TTwo_Days page(database.Book());
  Show(page);
  page.Lists[1]->setFocus(Qt::TabFocusReason);
  page.Lists[0]->Select_Row(0);
  page.Lists[1]->Select_Row(1);
  page.Mark.trigger();
  EXPECT_EQ(
      page.Mark.text().toStdString() + Query_Text("SELECT EventDate FROM KT_Events_Data WHERE Actioned"),
      "Mark Outstanding45307.2");
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
  EXPECT_EQ(page.Lists[0]->Selected_Row(), 0) << "selected by coming to it";
  EXPECT_EQ(page.Lists[1]->Selected_Row(), -1) << "Delete in one list must not reach another one's entry";
  page.Lists[1]->Select_Row(0);
  QTest::mouseClick(page.Lists[0]->viewport(), Qt::LeftButton, {}, page.Lists[0]->rect().bottomLeft());
  EXPECT_EQ(page.Commands.Selected(), nullptr);
  EXPECT_EQ(told(Confirm_With("Edit1=x"), [&] { QTest::keyClick(page.Lists[0], Qt::Key_Insert); }),
            "before 1-1")
      << "adds no events";
}

}  // namespace
