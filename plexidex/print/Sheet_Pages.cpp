#include "Sheet_Pages.h"

#include <QObject>
#include <QSet>
#include <algorithm>

#include "Kt_util_01.h"

namespace Plexidex {

namespace {

constexpr int Days_Of_Week = 7;
constexpr qreal Most_For_Name = 0.36;  // of the paper's width
constexpr qreal Box_Gap = 1.2;         // between lines, in points
constexpr qreal Size_Of_A_List = 9.5;

// Of the letters in points, the largest first.
std::vector<qreal> Sizes_Of(TSheet_Kind kind) {
  switch (kind) {
    case TSheet_Kind::Day:
      return {14, 12.5, 11};
    case TSheet_Kind::Week:
      return {11, 10, 9};
    case TSheet_Kind::Month:
      return {9, 8.25, 7.5, 7};
    case TSheet_Kind::List:
      break;
  }
  return {Size_Of_A_List};
}

// Monday is 0.
int Column_Of(TDateTime date) {
  return (Kt_util_01::Day_Of_Week(Kt_util_01::Whole_Day(date)) + 5) % Days_Of_Week;
}

QString To_Qt(const std::string& text) {
  return Shown_Text(text);
}

}  // namespace

TSheet_Pages::TSheet_Pages(const TSheet& sheet, const QPagedPaintDevice& device)
    : sheet(sheet),
      text(device),
      paper(device.width(), device.height()),
      detail_font(text.Font(10)),
      footer_font(text.Font(8)) {
  const qreal beside = qMin(text.Width(To_Qt(sheet.Whose), detail_font), paper.width() * Most_For_Name);
  for (const qreal points : {16.0, 14.5, 13.0, 12.0, 11.0}) {
    title_font = text.Font(points, true);
    if (text.Width(To_Qt(sheet.Title), title_font) + text.Points(12) <= paper.width() - beside) break;
  }
  const qreal head =
      text.Height(title_font) + (sheet.Range.empty() ? 0 : text.Height(detail_font)) + text.Points(11);
  const qreal foot = text.Height(footer_font) + text.Points(8);
  body = QRectF(0, head, paper.width(), paper.height() - head - foot);
  for (const qreal points : Sizes_Of(sheet.Kind)) {
    Set_Styles(points);
    Lay_Out();
    if (Fits_Well()) break;
  }
}

void TSheet_Pages::Lay_Out() {
  boxes.clear();
  pages.assign(1, {});
  bottom = 0;
  if (sheet.Kind == TSheet_Kind::Month) {
    Lay_Out_Month();
  } else if (sheet.Kind == TSheet_Kind::Week) {
    Lay_Out_Week();
  } else {
    for (std::size_t day = 0; day < sheet.Days.size(); ++day) Add_Day(day, 0);
  }
}

bool TSheet_Pages::Fits_Well() const {
  return pages.size() == 1 &&
         std::all_of(boxes.begin(), boxes.end(), [](const TBox& box) { return box.Is_Full; });
}

void TSheet_Pages::Set_Styles(qreal points) {
  const bool day = sheet.Kind == TSheet_Kind::Day,
             boxed = sheet.Kind == TSheet_Kind::Week || sheet.Kind == TSheet_Kind::Month;
  heading_font = text.Font(10.5, true);
  box_font = text.Font(points + 1, true);
  row_style = {.Font = text.Font(boxed ? Size_Of_A_List : points), .Most_Rows = 6, .In_Words = true};
  box_style = {.Font = text.Font(points)};
  row_gap = text.Points(day ? 4 : 2);
  heading_height = day ? 0 : text.Height(heading_font) + text.Points(3);
  qreal row_width = 0, box_width = 0;
  QSet<QString> seen;
  for (const TSheet_Day& each : sheet.Days) {
    for (const TSheet_Line& line : each.Lines) {
      const QString time = Time_Words(line);
      if (seen.contains(time)) continue;
      seen.insert(time);
      row_width = qMax(row_width, text.Width(time, row_style.Font));
      if (!line.Time.empty()) box_width = qMax(box_width, text.Width(time, box_style.Font));
    }
  }
  row_style.Time_Width = row_width + text.Points(8);
  if (sheet.Kind == TSheet_Kind::Week && box_width > 0) box_style.Time_Width = box_width + text.Points(5);
}

qreal TSheet_Pages::Line_Height(const TSheet_Line& line, qreal width, const TLine_Style& style) const {
  return text.Draw_Line(nullptr, {0, 0, width, 0}, line, style);
}

// ---- boxes ---------------------------------------------------------------------------------------------

void TSheet_Pages::Add_Box(std::size_t day, const QRectF& place, qreal heading, int most_rows) {
  const qreal inset = text.Points(3);
  TBox box{.Day = day, .Place = place, .Lines = place.adjusted(inset, heading, -inset, -text.Points(1))};
  Fit(box, most_rows);
  boxes.push_back(box);
}

// Long texts take as many rows as there is room for; where even single rows are too many, the last row says
// how many lines there are besides.
void TSheet_Pages::Fit(TBox& box, int most_rows) const {
  const auto& lines = sheet.Days[box.Day].Lines;
  TLine_Style style = box_style;
  for (int rows = most_rows; rows > 0; --rows) {
    box.Most_Rows = style.Most_Rows = rows;
    box.Shown = 0;
    const qreal more = text.Height(style.Font);
    qreal used = 0;
    std::size_t fit = 0;
    for (; fit < lines.size(); ++fit) {
      used += Line_Height(lines[fit], box.Lines.width(), style) + text.Points(Box_Gap);
      if (used > box.Lines.height()) break;
      if (used + more <= box.Lines.height()) box.Shown = fit + 1;
    }
    box.Is_Full = false;
    if (fit < lines.size()) continue;
    box.Shown = lines.size();
    box.Is_Full = rows == most_rows;
    return;
  }
}

// As a paper diary: two days beside each other, and the weekend in the place of one.
void TSheet_Pages::Lay_Out_Week() {
  constexpr int most_rows = 4;
  const qreal width = body.width() / 2, height = body.height() / 3;
  const qreal heading = text.Height(box_font) + text.Points(5);
  for (std::size_t day = 0; day < sheet.Days.size(); ++day) {
    const bool weekend = day >= 5;
    const auto row = static_cast<qreal>(weekend ? 2 : day / 2),
               column = static_cast<qreal>(weekend ? 1 : day % 2);
    QRectF place(body.left() + column * width, body.top() + row * height, width, height);
    if (day == 5) place.setHeight(height / 2);
    if (day == 6) place.setTop(place.top() + height / 2);
    Add_Box(day, place, heading, most_rows);
  }
  for (const TBox& box : boxes) {
    if (box.Shown < sheet.Days[box.Day].Lines.size()) Add_Day(box.Day, box.Shown);
  }
}

void TSheet_Pages::Lay_Out_Month() {
  constexpr int most_rows = 3;
  const int first = Column_Of(sheet.Days.front().Date), days = static_cast<int>(sheet.Days.size());
  weeks = (first + days + Days_Of_Week - 1) / Days_Of_Week;
  grid = body.adjusted(0, text.Height(box_font) + text.Points(3), 0, 0);
  const qreal width = grid.width() / Days_Of_Week, height = grid.height() / weeks;
  const qreal heading = text.Height(box_font) + text.Points(2);
  for (int day = 0; day < days; ++day) {
    const int cell = first + day;
    const int column = cell % Days_Of_Week, row = cell / Days_Of_Week;
    const QPointF at(grid.left() + column * width, grid.top() + row * height);
    Add_Box(static_cast<std::size_t>(day), {at, QSizeF(width, height)}, heading, most_rows);
  }
}

void TSheet_Pages::Draw_Box(QPainter& painter, const TBox& box) const {
  const TSheet_Day& day = sheet.Days[box.Day];
  const bool month = sheet.Kind == TSheet_Kind::Month;
  if (!month) {
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(Qt::black, text.Points(0.5)));
    painter.drawRect(box.Place);
  }
  const QRectF heading = box.Place.adjusted(text.Points(3), text.Points(month ? 1 : 2), -text.Points(3), 0);
  text.Draw_Row(painter, heading, Qt::AlignLeft, To_Qt(day.Heading), box_font);
  if (!month) {
    const qreal below = box.Lines.top() - text.Points(1.5);
    text.Rule(painter, {heading.left(), below}, {heading.right(), below}, 0.3);
  }
  TLine_Style style = box_style;
  style.Most_Rows = box.Most_Rows;
  QRectF rest = box.Lines;
  for (std::size_t i = 0; i < box.Shown; ++i)
    rest.setTop(rest.top() + text.Draw_Line(&painter, rest, day.Lines[i], style) + text.Points(Box_Gap));
  const std::size_t hidden = day.Lines.size() - box.Shown;
  if (hidden == 0) return;
  QFont italic = style.Font;
  italic.setItalic(true);
  const QString more = QObject::tr("+%1 more").arg(hidden);
  text.Draw_Row(painter, rest, Qt::AlignRight, month ? more : QObject::tr("%1, on the next pages").arg(more),
                italic);
}

void TSheet_Pages::Draw_Grid(QPainter& painter) const {
  const qreal width = grid.width() / Days_Of_Week, height = grid.height() / weeks;
  for (int column = 0; column < Days_Of_Week; ++column) {
    const TDateTime date = sheet.Days.front().Date + column;
    const QRectF place(grid.left() + Column_Of(date) * width, body.top(), width, 0);
    text.Draw_Row(painter, place, Qt::AlignHCenter, To_Qt(Kt_util_01::FormatDateTime("dddd", date)),
                  box_font);
  }
  for (int i = 0; i <= Days_Of_Week; ++i) {
    const qreal x = grid.left() + i * width;
    text.Rule(painter, {x, grid.top()}, {x, grid.bottom()}, 0.5);
  }
  for (int i = 0; i <= weeks; ++i) {
    const qreal y = grid.top() + i * height;
    text.Rule(painter, {grid.left(), y}, {grid.right(), y}, 0.5);
  }
}

// ---- rows ----------------------------------------------------------------------------------------------

void TSheet_Pages::New_Page() {
  pages.emplace_back();
  bottom = 0;
}

void TSheet_Pages::Add_Heading(std::size_t day, int kind) {
  pages.back().push_back({day, kind, bottom});
  bottom += heading_height;
}

// A day stays on one page where it can. A longer one begins with some lines at least.
void TSheet_Pages::Add_Day(std::size_t day, std::size_t first_line) {
  constexpr std::size_t some = 3;
  const auto& lines = sheet.Days[day].Lines;
  std::vector<qreal> heights;
  qreal whole = heading_height, beginning = heading_height;
  for (std::size_t i = first_line; i < lines.size(); ++i) {
    heights.push_back(Line_Height(lines[i], body.width(), row_style) + row_gap);
    whole += heights.back();
    if (heights.size() <= some) beginning += heights.back();
  }
  if (!boxes.empty() && pages.size() == 1) New_Page();
  if (bottom > 0) bottom += text.Points(9);
  if (bottom > 0 && bottom + (whole <= body.height() ? whole : beginning) > body.height()) New_Page();
  Add_Heading(day, first_line > 0 ? TRow::Continued : TRow::Heading);
  for (std::size_t i = 0; i < heights.size(); ++i) {
    if (bottom + heights[i] > body.height() && i > 0) {
      New_Page();
      Add_Heading(day, TRow::Continued);
    }
    pages.back().push_back({day, static_cast<int>(first_line + i), bottom});
    bottom += heights[i];
  }
}

void TSheet_Pages::Draw_Heading(QPainter& painter, const TRow& row) const {
  if (sheet.Kind == TSheet_Kind::Day) return;
  QString heading = To_Qt(sheet.Days[row.Day].Heading);
  if (row.Line == TRow::Continued) heading += QLatin1Char(' ') + QObject::tr("(continued)");
  const QRectF place = body.adjusted(0, row.Top, 0, 0);
  text.Draw_Row(painter, place, Qt::AlignLeft, heading, heading_font);
  const qreal below = place.top() + text.Height(heading_font) + text.Points(0.5);
  text.Rule(painter, {body.left(), below}, {body.right(), below}, 0.4);
}

void TSheet_Pages::Draw_Rows(QPainter& painter, const TPage& page) const {
  for (const TRow& row : page) {
    if (row.Line < 0) {
      Draw_Heading(painter, row);
    } else {
      text.Draw_Line(&painter, body.adjusted(0, row.Top, 0, 0),
                     sheet.Days[row.Day].Lines[static_cast<std::size_t>(row.Line)], row_style);
    }
  }
}

// ---- pages ---------------------------------------------------------------------------------------------

void TSheet_Pages::Draw_Frame(QPainter& painter, int page) const {
  const qreal title = text.Height(title_font), detail = text.Height(detail_font);
  const QString name = To_Qt(sheet.Whose);
  const qreal beside = qMin(text.Width(name, detail_font) + text.Points(1), paper.width() * Most_For_Name);
  text.Draw_Row(painter, {0, 0, paper.width() - beside - text.Points(10), title}, Qt::AlignLeft,
                To_Qt(sheet.Title), title_font);
  text.Draw_Row(painter, {paper.width() - beside, (title - detail) * 0.75, beside, detail}, Qt::AlignRight,
                name, detail_font);
  text.Draw_Row(painter, {0, title, paper.width(), detail}, Qt::AlignLeft, To_Qt(sheet.Range), detail_font);
  const qreal above = body.top() - text.Points(7), below = body.bottom() + text.Points(4);
  text.Rule(painter, {0, above}, {paper.width(), above}, 1);
  const QRectF footer(0, below + text.Points(2), paper.width(), text.Height(footer_font));
  text.Draw_Row(painter, footer, Qt::AlignLeft, QObject::tr("Printed on %1").arg(To_Qt(sheet.Printed)),
                footer_font);
  text.Draw_Row(painter, footer, Qt::AlignRight, QObject::tr("Page %1 of %2").arg(page + 1).arg(Count()),
                footer_font);
}

void TSheet_Pages::Draw(QPainter& painter, int page) const {
  painter.setPen(Qt::black);
  painter.setLayoutDirection(Qt::LeftToRight);
  Draw_Frame(painter, page);
  if (page == 0) {
    if (sheet.Kind == TSheet_Kind::Month) Draw_Grid(painter);
    for (const TBox& box : boxes) Draw_Box(painter, box);
  }
  Draw_Rows(painter, pages[static_cast<std::size_t>(page)]);
  const bool listed = sheet.Kind == TSheet_Kind::Day || sheet.Kind == TSheet_Kind::List;
  const bool empty = std::all_of(sheet.Days.begin(), sheet.Days.end(),
                                 [](const TSheet_Day& day) { return day.Lines.empty(); });
  if (listed && empty) text.Draw_Row(painter, body, Qt::AlignLeft, QObject::tr("No entries"), row_style.Font);
}

}  // namespace Plexidex
