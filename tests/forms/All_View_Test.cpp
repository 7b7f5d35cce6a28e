#include "View_Fixture.h"
#include "fm_Contacts_Page3d.h"

namespace {

struct All_View : TView_Fixture {
  All_View() : TView_Fixture(&Display_Calendar_Allview) {}

  /// Enough entries that it shows how far it is, and what happens in the midst of that.
  void Show_Many(const std::function<void()>& meanwhile) {
    TNew_Event event = New_Event("many", Monday, 3'000);
    Write(event);
    Display();
    Add("last", 4'000);
    const auto step = [meanwhile](int value) {
      if (value > 0) meanwhile();
    };
    QObject::connect(Control<QProgressBar>(view, "PB1"), &QProgressBar::valueChanged, view, step,
                     Qt::QueuedConnection);
  }
};

TEST_F(All_View, Lists_Every_Day_And_Leaves_A_Change_Of_The_Date_Alone) {
  Add("far", 4'000.5, "Priority = 1");
  Add("contact", 0.5, {}, "Contact = '" + contact + "'");
  Add("early", -900);
  Display();
  EXPECT_EQ(Shown(), "early contact far");
  EXPECT_EQ(Seen(view, "Label1 PBPanel DailyView2 PrevBtn Today1"),
            "All Events|hidden|Daily &View|(Not Available)|(&Today)");
  EXPECT_EQ(Texts("Nextbtn"),
            "Not Available/Locates the first Calendar Event or Task after the selected date  (Not Available "
            "in this "
            "view)");
  Add("new", 0.6);
  CurrentDate = Monday + 1;
  Send_Message(view, umDateChanged, 0, 0);
  EXPECT_EQ(Shown(), "early contact far");
  Act(view, "SortDateLabel");
  EXPECT_EQ(Shown(), "far contact early");
  Display(false);
  EXPECT_EQ(Shown(), "far new early") << "the order is shared and kept";
  Act(view, "DailyView2|ToolButton11");
  Settle();
  EXPECT_EQ(home.Asked, QList<qintptr>{2});
}

TEST_F(All_View, Selects_By_Key_What_Was_Opened_And_Nothing_After_An_Addition) {
  for (const auto& [title, time] : {std::pair("a", 0.1), {"b", 0.2}, {"c", 0.3}}) Add(title, time);
  SortKey = 3;
  Display(true, 0);
  Answer(Confirm_With("Edit1=z"), Qt::Key_Return);
  EXPECT_EQ(Shown() + std::to_string(list->Selected_Row()), "b c z2");
  Answer(Confirm_With("Edit1=d"), "Addbtn");
  EXPECT_EQ(Shown() + std::to_string(list->Selected_Row()), "b c d z-1");
}

TEST_F(All_View, Shows_Its_First_Rows_And_What_Goes_On_While_It_Builds) {
  int looks = 0;
  std::size_t rows = 0;
  Show_Many([&] {
    ++looks;
    EXPECT_EQ(Seen(view, "PBPanel Label2"), "|Extracting Events. Please wait....");
    form.As<TCalendar_View>()->DoRefresh();
    rows = static_cast<std::size_t>(list->model()->rowCount());
    EXPECT_TRUE(rows > 0 && rows < 3'001);
    QTest::keyClick(home.windowHandle(), Qt::Key_Down);
    EXPECT_EQ(list->Selected_Row(), -1) << "keys wait";
  });
  list->setFocus();
  const QAbstractItemModelTester tester(list->model(), QAbstractItemModelTester::FailureReportingMode::Fatal);
  form.As<TCalendar_View>()->DoRefresh();
  EXPECT_GT(looks, 0);
  EXPECT_EQ(list->model()->rowCount(), 3'001);
  EXPECT_EQ(list->Items()[3'000].Data->Description.Str(), "last");
  Settle();
  EXPECT_EQ(list->Selected_Row(), looks - 1) << "and are not lost";
}

TEST_F(All_View, A_Dialog_That_Opens_While_It_Builds_Can_Be_Answered) {
  QPointer<QMessageBox> asked;
  Show_Many([&] {
    if (asked) return;
    asked = new QMessageBox(&home);
    With_Dialog([](QWidget* box) { QTest::keyClick(box->windowHandle(), Qt::Key_Return); },
                [&] { return asked->exec(); });
  });
  form.As<TCalendar_View>()->DoRefresh();
  EXPECT_TRUE(asked && asked->result() == QMessageBox::Ok);
  EXPECT_EQ(list->model()->rowCount(), 3'001);
}

TEST_F(All_View, Is_Closed_While_It_Builds) {
  const auto close_page = [this] { EXPECT_TRUE(form.Get()->Close_Form()); };
  const auto close_window = [this] { home.close(); };
  bool window_first = true;
  Show_Many([&] { window_first ? void(close_window()) : close_page(); });
  form.As<TCalendar_View>()->DoRefresh();
  EXPECT_EQ(list->Items().Count(), 0U);
  window_first = false;
  home.show();
  const QPointer<TForm> alive = view;
  form.As<TCalendar_View>()->DoRefresh();
  EXPECT_TRUE(alive && list->Items().Count() == 0);
  Settle();
  EXPECT_FALSE(alive);
}

}  // namespace
