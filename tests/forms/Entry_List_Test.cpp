#include "Entry_List.h"

#include "Editor_Fixture.h"
#include "Kt_labels.h"
#include "Reminder_Utils.h"
#include "Sort_Header.h"

namespace {

constexpr double Day = 45306;
constexpr double Noon = Day + 0.5;  // which is now
constexpr int Image_Width = 16, Text_Left = 2 * Image_Width + 4;

struct TShown {
  const char* Title = "Entry";
  double Date = Noon + 0.1;
  int Image = Image_Open_Event;
  // Sets what is out of the ordinary.
  void (*Change)(TEventKey&) = [](TEventKey&) {};
};

struct Entry_List : TEditor_Fixture {
  Entry_List() : tester(list.model(), QAbstractItemModelTester::FailureReportingMode::Fatal) {
    SortKey = 2;
    SortAscending = true;
    list.resize(400, 300);
  }
  void Fill(const std::vector<TShown>& rows) {
    list.Items().Begin_Update();
    list.Items().Clear();
    for (const TShown& row : rows) {
      auto item = std::make_unique<TList_Item>();
      item->Image = row.Image;
      item->Data = std::make_unique<TEventKey>();
      TEventKey& entry = *item->Data;
      entry.Key = entry.Description = entry.FirstText = row.Title;
      entry.EventDate = row.Date;
      entry.Priority = 5;
      entry.User = User_Key();
      row.Change(entry);
      list.Items().Add(std::move(item));
    }
    list.Items().End_Update();
  }
  void Show_List() {
    Show(list);
    list.setFocus();
    drawn = list.viewport()->grab().toImage();
  }
  QRect Row(int row) const { return list.visualRect(list.model()->index(row, 0)); }
  QPoint At(int row, int x) const { return {x, Row(row).center().y()}; }
  /// How many dots of a row, in a column or in all from there on, are like this.
  int Dots(int row, int left, int right, const std::function<bool(const QColor&)>& like) const {
    int dots = 0;
    for (int x = left; x < right; ++x)
      for (int y = Row(row).top(); y <= Row(row).bottom(); ++y) dots += like(drawn.pixelColor(x, y));
    return dots;
  }
  /// The first column from `left` in which a row has ink.
  int First_Ink(int row, int left) const {
    const QColor base = list.palette().color(QPalette::Base);
    while (left < drawn.width() && !Dots(row, left, left + 1, [&](auto& dot) { return dot != base; })) ++left;
    return left < drawn.width() ? left : -1;
  }
  /// The colours that a row's text has much of, leaving aside what smoothing adds.
  std::string Ink(int row) const {
    std::string inks;
    const bool dark = list.palette().color(QPalette::Base).lightness() < 128;
    for (const auto& [name, colour] : {std::pair("red", QColor(dark ? 0xFFFF7070 : 0xFFFF0000)),
                                       {"silver", QColor(0xFFC0C0C0)},
                                       {"text", list.palette().color(QPalette::Text)},
                                       {"highlighted", list.palette().color(QPalette::HighlightedText)}}) {
      const auto near = [ink = colour](const QColor& dot) {
        return std::abs(dot.red() - ink.red()) + std::abs(dot.green() - ink.green()) +
                   std::abs(dot.blue() - ink.blue()) <
               30;
      };
      if (Dots(row, Text_Left, drawn.width(), near) > 20) inks += name;
    }
    return inks;
  }

  TEntry_List list;
  QAbstractItemModelTester tester;
  QImage drawn;
};

TEST_F(Entry_List, Selection_Survives_Changes_Of_Rows_But_Not_Refilling) {
  Fill({{"a"}, {"b"}, {"c"}});
  const auto selected = [this] {
    return (list.Selected() ? list.Selected()->Data->Key.Str() : "") + std::to_string(list.Selected_Row());
  };
  list.Select_Row(2);
  list.Items().Remove(1);
  EXPECT_EQ(selected(), "c1");
  list.Items().Insert(0, std::make_unique<TList_Item>()).Data = std::make_unique<TEventKey>();
  EXPECT_EQ(selected(), "c2");
  list.Items().Remove(2);
  EXPECT_NE(selected()[0], 'c');
  list.Select_Row(0);
  Fill({{"a"}, {"b"}});
  EXPECT_EQ(selected(), "-1");
  list.Select_Row(7);
  EXPECT_EQ(selected(), "-1") << "there is no such row";
  Show_List();
  list.Select_Row(1);
  list.Items().Begin_Update();
  list.Items().Clear();
  list.grab();
  EXPECT_EQ(list.Selected(), nullptr) << "can be painted while it is filled";
  list.Items().End_Update();
  Show_List();
  EXPECT_EQ(drawn.pixelColor(10, 10), list.palette().color(QPalette::Base));
}

TEST_F(Entry_List, Tips_Belong_To_The_Text) {
  Fill({{"<b>Bold & short</b>", Noon, Image_Open_Event, [](auto& entry) { entry.Timeless = true; }},
        {"secret", Noon, 10, [](auto& entry) { entry.Timeless = entry.Private = true; }}});
  Show_List();
  const int right = list.Items()[0].Data->TextRight;
  EXPECT_EQ(right, Text_Left + list.fontMetrics().horizontalAdvance(QStringLiteral("<b>Bold & short</b>")));
  EXPECT_TRUE(list.Tip_At(At(0, right - 1)).startsWith(QStringLiteral("<b>Bold & short</b>\n")));
  EXPECT_EQ(list.Tip_At(At(0, right)) + list.Tip_At(At(1, 5)) + list.Tip_At({5, 290}),
            QStringLiteral("Private"));
  QHelpEvent asked(QEvent::ToolTip, At(0, 50), list.viewport()->mapToGlobal(At(0, 50)));
  QApplication::sendEvent(list.viewport(), &asked);
  EXPECT_TRUE(QToolTip::text().contains(QStringLiteral("&lt;b&gt;Bold &amp; short"))) << "not as markup";
  QToolTip::hideText();
}

TEST_F(Entry_List, Rows_Show_Their_State_In_Colour_And_Style) {
  const char* title = "IIIIIIIIIIIIIIIIIII";
  Fill({{title, Noon - 0.001},
        {title, Noon},
        {title, Noon - 1, Image_Done_Event, [](auto& entry) { entry.Done = true; }},
        {title, Noon - 1, Image_Holiday, [](auto& entry) { entry.EventType = TEntry_Type::Other; }}});
  QPalette palette = list.palette();
  palette.setColor(QPalette::HighlightedText, Qt::yellow);
  list.setPalette(palette);
  Show_List();
  const auto inks = [this](int select) {
    list.Select_Row(select);
    drawn = list.viewport()->grab().toImage();
    return Ink(0) + ", " + Ink(1) + ", " + Ink(2) + ", " + Ink(3);
  };
  EXPECT_EQ(inks(-1), "red, text, silver, text");
  const QImage struck = drawn;
  EXPECT_EQ(inks(2), "red, text, highlighted, text");
  Write_Bool("General", "Completed Style", false);
  inks(-1);
  EXPECT_NE(drawn.copy(Row(2)), struck.copy(Row(2)));
  EXPECT_EQ(drawn.copy(Row(1)), struck.copy(Row(1)));
  EXPECT_EQ(inks(0), "highlighted, text, silver, text");
  EXPECT_EQ(drawn.pixelColor(Text_Left, Row(0).top() + 1), list.palette().color(QPalette::Highlight));
  EXPECT_EQ(drawn.pixelColor(Text_Left - 1, Row(0).top() + 1), list.palette().color(QPalette::Base));

  palette.setColor(QPalette::Base, QColor(0x23, 0x23, 0x23));
  list.setPalette(palette);
  EXPECT_EQ(inks(-1).substr(0, 4), "red,") << "lighter, as red is too dark to read";
}

TEST_F(Entry_List, Columns_Stand_Under_Each_Other) {
  Fill(
      {{"H one", Day + 0.55},
       {"H two", Day + 0.955, Image_Open_Event, [](auto& entry) { entry.Alarm = true; }},
       {"H three", Noon, Image_Open_Event, [](auto& entry) { entry.Priority = 123, entry.Timeless = true; }},
       {"H four", Noon, -1, [](auto& entry) { entry.Timeless = true, entry.EventType = TEntry_Type::Other; }},
       {"H five", Noon, Image_Open_Event,
        [](auto& entry) { entry.Timeless = entry.Private = entry.Alarm = true; }}});
  Show_List();
  const int text_after_time =
      Text_Left + list.fontMetrics().horizontalAdvance(QStringLiteral("10:55 PM")) + 5;
  for (const int row : {0, 1}) {
    EXPECT_NEAR(First_Ink(row, text_after_time - 3), text_after_time + 1.5, 1.5) << row;
  }
  for (const int row : {2, 3, 4}) EXPECT_NEAR(First_Ink(row, Text_Left), Text_Left + 1, 2) << row;
  EXPECT_EQ(First_Ink(3, 0), First_Ink(3, Text_Left)) << "without an image";
  EXPECT_LT(First_Ink(1, Image_Width + 4), Text_Left) << "the reminder mark";
  EXPECT_GE(First_Ink(4, Image_Width + 4), Text_Left) << "no mark for a private one";
  const int half = list.fontMetrics().horizontalAdvance(QStringLiteral("Priority")) / 2;
  const int right = drawn.width() - 8 - half;
  EXPECT_GT(First_Ink(2, right - half - 5), 0) << "the priority";
  EXPECT_EQ(First_Ink(2, right), -1);
  EXPECT_EQ(First_Ink(3, 200), -1) << "an entry that is no event has none";
}

TEST_F(Entry_List, Headings_Stand_Over_The_Columns_Of_A_Description) {
  QWidget page;
  page.setGeometry(0, 0, 600, 300);
  auto* header = new TSort_Header(new QLabel(&page));
  for (int sort = 0; sort < 6; ++sort) (new TWebLabel(QStringLiteral("H"), header))->setProperty("Tag", sort);
  list.Set_Columns({{{TCell::State_Image},
                     {TCell::Start_Date, 0},
                     {TCell::Due_Date, 1},
                     {TCell::Text, 2},
                     {TCell::Status, 3, TSide::Left, "In Progress"},
                     {TCell::Percent, 4, TSide::Right, "Percent"},
                     {TCell::Priority, 5, TSide::Under_Middle, "Priority"}},
                    false});
  header->Stand_Over(&list);
  EXPECT_TRUE(header->isHidden()) << "while there is nothing to sort";
  list.resize(600, 200);
  Fill({{"Task", Noon, Image_Open_Task, [](auto& task) {
           task.EventType = TEntry_Type::Task;
           task.FirstDate = Noon - 20;
           task.FirstText = "Pending";
           task.Percentage = 40;
         }}});
  Show_List();
  EXPECT_FALSE(header->isHidden());
  int sort = 0, last = -1;
  for (const auto* label : header->findChildren<TWebLabel*>()) {
    const auto span = list.Column_Span(sort++);
    ASSERT_TRUE(span);
    EXPECT_GT(span->Left, last);
    for (const int left : {label->x(), First_Ink(0, span->Left)})
      EXPECT_TRUE(left >= span->Left && left < span->Right) << sort;
    last = span->Left;
  }
  EXPECT_FALSE(list.Column_Span(6));
  EXPECT_NE(list.Tip_At(At(0, 590)), QString()) << "not on its text alone";
  for (int width = 440; width > 200 && list.Column_Span(5); --width) list.resize(width, 200);
  EXPECT_TRUE(list.Column_Span(4) && !list.Column_Span(5)) << "the last column goes first";
}

}  // namespace
