#include "Entry_Painter.h"

#include <QPainter>

#include "Colours.h"
#include "Entry_Model.h"
#include "Entry_Rows.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"

namespace KTReminds {

using Kt_data_01::TEventKey;
using Kt_data_01::TList_Item;
using Kt_forms::To_Qt;
using Kt_util_01::FormatDateTime;

namespace {

constexpr int Image_Reminder = 12;
constexpr int Image_Indent = 2;
constexpr int Image_Gap = 4;
constexpr int Column_Gap = 5;
constexpr int Row_Gap = 4;
constexpr int Right_Margin = 8;

constexpr QRgb Red = qRgb(0xFF, 0x00, 0x00);
constexpr QRgb Red_On_Dark = qRgb(0xFF, 0x70, 0x70);

QPalette::ColorGroup Group(QStyle::State state) {
  if (!(state & QStyle::State_Enabled)) return QPalette::Disabled;
  return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

bool Is_Image(TCell cell) {
  return cell == TCell::State_Image || cell == TCell::Reminder_Mark;
}

QString Cell_Text(const TEntry_Column& column, const TList_Item& item) {
  const TEventKey& entry = *item.Data;
  switch (column.Cell) {
    case TCell::Time:
      return To_Qt(FormatDateTime("t", entry.EventDate));
    case TCell::Date:
    case TCell::Due_Date:
      return To_Qt(FormatDateTime("ddddd", entry.EventDate));
    case TCell::Start_Date:
      return To_Qt(FormatDateTime("ddddd", entry.FirstDate));
    case TCell::Text:
      return To_Qt(Row_Text(entry));
    case TCell::Status:
      return To_Qt(entry.FirstText);
    case TCell::Percent:
      return QString::number(entry.Percentage) + QLatin1Char('%');
    case TCell::Priority:
      return entry.EventType == Kt_data_01::TEntry_Type::Other ? QString() : QString::number(entry.Priority);
    case TCell::Sub_Item: {
      const auto at = static_cast<std::size_t>(column.Sub_Item);
      return at < item.SubItems.size() ? To_Qt(item.SubItems[at]) : QString();
    }
    case TCell::State_Image:
    case TCell::Reminder_Mark:
      break;
  }
  return {};
}

void Draw_Cell(QPainter& painter, const QRect& place, Qt::Alignment side, const QString& text) {
  painter.drawText(place, static_cast<int>(side) | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

}  // namespace

const TEntry_Columns& Day_Columns() {
  static const TEntry_Columns columns = {
      {{TCell::State_Image},
       {TCell::Reminder_Mark},
       {TCell::Time},
       {TCell::Text, 3},
       {TCell::Priority, 4, TSide::Under_Middle, Kt_forms::From_Qt(TEntry_Painter::tr("Priority"))}}};
  return columns;
}

const TEntry_Columns& All_Columns() {
  static const TEntry_Columns columns = [] {
    TEntry_Columns all = Day_Columns();
    all.Columns.insert(all.Columns.begin() + 2, {TCell::Date, 2});
    return all;
  }();
  return columns;
}

TEntry_Painter::TEntry_Painter(TEntry_Model& model, QObject* parent)
    : QStyledItemDelegate(parent), model(model), images("P3_Enabled") {
  Set_Columns(Day_Columns());
}

void TEntry_Painter::Set_Columns(const TEntry_Columns& new_columns) {
  columns = new_columns;
  widths.clear();
  images_end = text_column = 0;
  while (images_end < columns.Columns.size() && Is_Image(columns.Columns[images_end].Cell)) ++images_end;
  while (columns.Columns[text_column].Cell != TCell::Text) ++text_column;
}

void TEntry_Painter::Measure(const QWidget& list) {
  const QString time = To_Qt(FormatDateTime("t", (22.0 * 60 + 55) / (24 * 60)));
  const QString date = To_Qt(FormatDateTime("ddddd", Kt_util_01::Encode_Date(2000, 12, 28)));
  if (!widths.empty() && time == time_sample && date == date_sample && list.font() == font) return;
  time_sample = time;
  date_sample = date;
  font = list.font();
  const QFontMetrics metrics(font, &list);
  letter = metrics.averageCharWidth();
  widths.clear();
  for (const TEntry_Column& column : columns.Columns) {
    int width = metrics.horizontalAdvance(To_Qt(column.Sample));
    switch (column.Cell) {
      case TCell::State_Image:
        width = TImage_List::Size + Image_Gap;
        break;
      case TCell::Reminder_Mark:
        width = TImage_List::Size;
        break;
      case TCell::Time:
        width = qMax(width, metrics.horizontalAdvance(time));
        break;
      case TCell::Date:
      case TCell::Start_Date:
      case TCell::Due_Date:
        width = qMax(width, metrics.horizontalAdvance(date));
        break;
      default:
        break;
    }
    // Halves, so that its middle is a whole place.
    widths.push_back(column.Side == TSide::Under_Middle ? width / 2 * 2 : width);
  }
}

void TEntry_Painter::Begin_Paint(const QWidget& list) {
  now = Kt_util_01::Now();
  strike_completed = Kt_util_01::UseCompleteStyle();
  Measure(list);
}

bool TEntry_Painter::On_State_Image(const QRect& row, QPoint place) const {
  int left = row.left();
  for (std::size_t i = 0; i < images_end; ++i) {
    if (columns.Columns[i].Cell == TCell::State_Image)
      return QRect(left + Image_Indent, row.top(), TImage_List::Size, row.height()).contains(place);
    left += TImage_List::Size;
  }
  return false;
}

std::optional<TEntry_Painter::TSpan> TEntry_Painter::Span_Of(int sort, const QWidget& list, int row_width) {
  Measure(list);
  std::optional<std::size_t> found;
  for (std::size_t i = 0; i < columns.Columns.size(); ++i) {
    if (columns.Columns[i].Sort == sort) found = i;
  }
  if (!found || sort < 0) return {};
  const TSide side = columns.Columns[*found].Side;
  int left = 0, right = row_width - Right_Margin;
  for (std::size_t i = 0; i < text_column && i < *found; ++i) {
    if (columns.Columns[i].Cell != TCell::Time) left += widths[i] + (i < images_end ? 0 : Column_Gap);
  }
  if (*found < text_column) return TSpan{left, left + widths[*found], side};
  const std::size_t end = End_For(row_width);
  if (*found >= end) return {};
  for (std::size_t i = end - 1; i > *found; --i) right -= widths[i] + Column_Gap;
  return TSpan{*found == text_column ? left : right - widths[*found], right, side};
}

std::size_t TEntry_Painter::End_For(int row_width) const {
  constexpr int least_letters = 10;
  int room = row_width - Right_Margin;
  for (std::size_t i = 0; i < widths.size(); ++i) {
    if (i != text_column) room -= widths[i] + (i < images_end ? 0 : Column_Gap);
  }
  std::size_t end = columns.Columns.size();
  while (end > text_column + 1 && room < least_letters * letter) room += widths[--end] + Column_Gap;
  return end;
}

QSize TEntry_Painter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  return {0, qMax(option.fontMetrics.height(), TImage_List::Size) + Row_Gap};
}

void TEntry_Painter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  const TList_Item* item = TEntry_Model::Item(index);
  if (!item || !item->Data || widths.empty()) return QStyledItemDelegate::paint(painter, option, index);
  const TEventKey& entry = *item->Data;
  painter->save();
  painter->setFont(option.font);
  TRow row{*painter, option.rect.adjusted(0, 0, -Right_Margin, 0),
           bool(option.state & QStyle::State_Selected), option.palette};
  row.Palette.setCurrentColorGroup(Group(option.state));
  for (std::size_t i = 0; i < images_end; ++i) Draw_Image(row, *item, i);
  if (row.Selected) {
    painter->fillRect(row.Rest, row.Palette.highlight());
  } else if (option.state & QStyle::State_HasFocus) {
    QStyleOptionFocusRect focus;
    static_cast<QStyleOption&>(focus) = option;
    focus.rect = row.Rest;
    option.widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
  }
  Set_Style(row, entry);
  for (std::size_t i = images_end; i < text_column; ++i) Draw_From_Left(row, *item, i);
  for (std::size_t i = End_For(option.rect.width()) - 1; i > text_column; --i) Draw_From_Right(row, *item, i);
  const QString text = Cell_Text(columns.Columns[text_column], *item);
  model.Set_Text_Right(index.row(), row.Rest.left() + painter->fontMetrics().horizontalAdvance(text));
  if (row.Rest.width() > 0) Draw_Cell(*painter, row.Rest, Qt::AlignLeft, text);
  painter->restore();
}

void TEntry_Painter::Draw_Image(TRow& row, const TList_Item& item, std::size_t column) const {
  const QColor ink = row.Palette.color(QPalette::Text);
  const int top = row.Rest.top() + (row.Rest.height() - TImage_List::Size) / 2;
  const int left = row.Rest.left();
  const TEventKey& entry = *item.Data;
  if (columns.Columns[column].Cell == TCell::State_Image) {
    if (item.Image >= 0) images.Draw(row.Painter, {left + Image_Indent, top}, item.Image, ink);
  } else if (entry.Alarm && !entry.Private && entry.User == Kt_util_01::User_Key()) {
    images.Draw(row.Painter, {left, top}, Image_Reminder, ink);
  }
  row.Rest.setLeft(left + widths[column]);
}

void TEntry_Painter::Set_Style(TRow& row, const TEventKey& entry) const {
  QColor ink = row.Palette.color(row.Selected ? QPalette::HighlightedText : QPalette::Text);
  switch (State_Of(entry, now)) {
    case TEntry_State::Done:
      if (!row.Selected) ink = QColor(Silver);
      if (strike_completed) {
        QFont struck = row.Painter.font();
        struck.setStrikeOut(true);
        row.Painter.setFont(struck);
      }
      break;
    case TEntry_State::Overdue:
      if (!row.Selected) ink = QColor(Is_Dark(row.Palette.color(QPalette::Base)) ? Red_On_Dark : Red);
      break;
    case TEntry_State::None:
    case TEntry_State::Outstanding:
      break;
  }
  row.Painter.setPen(ink);
}

void TEntry_Painter::Draw_From_Left(TRow& row, const TList_Item& item, std::size_t column) const {
  const TEntry_Column& what = columns.Columns[column];
  if (what.Cell == TCell::Time && item.Data->Timeless) return;
  QRect place = row.Rest;
  place.setWidth(qMin(widths[column] + Column_Gap, row.Rest.width()));
  if (what.Side == TSide::Left) {
    Draw_Cell(row.Painter, place, Qt::AlignLeft, Cell_Text(what, item));
  } else {
    place.setWidth(what.Side == TSide::Right ? widths[column] : widths[column] / 2);
    Draw_Cell(row.Painter, place, Qt::AlignRight, Cell_Text(what, item));
  }
  row.Rest.setLeft(row.Rest.left() + widths[column] + Column_Gap);
}

void TEntry_Painter::Draw_From_Right(TRow& row, const TList_Item& item, std::size_t column) const {
  const TEntry_Column& what = columns.Columns[column];
  // What stands at the right of its column may reach out of it to the left.
  QRect place = row.Rest;
  if (what.Side == TSide::Left) place.setLeft(place.right() - widths[column] + 1);
  if (what.Side == TSide::Under_Middle) place.setRight(place.right() - widths[column] / 2);
  Draw_Cell(row.Painter, place, what.Side == TSide::Left ? Qt::AlignLeft : Qt::AlignRight,
            Cell_Text(what, item));
  row.Rest.setRight(row.Rest.right() - widths[column] - Column_Gap);
}

}  // namespace KTReminds
