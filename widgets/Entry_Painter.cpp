#include "Entry_Painter.h"

#include <QPainter>

#include "Entry_Model.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "View_Rules.h"

namespace KTReminds {

using Kt_data_01::TEventKey;
using Kt_data_01::TList_Item;

namespace {

constexpr int Image_Reminder = 12;
constexpr int Image_Indent = 2;
constexpr int Image_Gap = 4;
constexpr int Column_Gap = 5;
constexpr int Row_Gap = 4;
constexpr int Right_Margin = 8;

constexpr QRgb Silver = qRgb(0xC0, 0xC0, 0xC0);
constexpr QRgb Red = qRgb(0xFF, 0x00, 0x00);
constexpr QRgb Red_On_Dark = qRgb(0xFF, 0x70, 0x70);

bool Is_Dark(const QColor& base) {
  return base.lightness() < 128;
}

QPalette::ColorGroup Group(QStyle::State state) {
  if (!(state & QStyle::State_Enabled)) return QPalette::Disabled;
  return state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

void Draw_Cell(QPainter& painter, const QRect& place, Qt::Alignment side, const QString& text) {
  painter.drawText(place, static_cast<int>(side) | Qt::AlignVCenter | Qt::TextSingleLine,
                   painter.fontMetrics().elidedText(text, Qt::ElideRight, place.width()));
}

}  // namespace

TEntry_Painter::TEntry_Painter(QObject* parent) : QStyledItemDelegate(parent), images("P3_Enabled") {}

void TEntry_Painter::Begin_Paint(const QWidget& list) {
  now = Kt_util_01::Now();
  strike_completed = Kt_util_01::UseCompleteStyle();
  const QString sample = Kt_forms::To_Qt(Kt_util_01::FormatDateTime("t", (22.0 * 60 + 55) / (24 * 60)));
  if (sample == sample_time && list.font() == font) return;
  sample_time = sample;
  font = list.font();
  const QFontMetrics metrics(font, &list);
  time_width = metrics.horizontalAdvance(sample_time);
  priority_width = metrics.horizontalAdvance(tr("Priority"));
}

bool TEntry_Painter::On_State_Image(const QRect& row, QPoint place) {
  return QRect(row.left() + Image_Indent, row.top(), TImage_List::Size, row.height()).contains(place);
}

QSize TEntry_Painter::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& /*index*/) const {
  return {0, qMax(option.fontMetrics.height(), TImage_List::Size) + Row_Gap};
}

void TEntry_Painter::paint(QPainter* painter, const QStyleOptionViewItem& option,
                           const QModelIndex& index) const {
  const TList_Item* item = TEntry_Model::Item(index);
  if (!item || !item->Data) return QStyledItemDelegate::paint(painter, option, index);
  painter->save();
  painter->setFont(option.font);
  TRow row{*painter, option.rect.adjusted(0, 0, -Right_Margin, 0),
           bool(option.state & QStyle::State_Selected), option.palette};
  row.Palette.setCurrentColorGroup(Group(option.state));
  Draw_Images(row, *item);
  if (row.Selected) {
    painter->fillRect(row.Rest, row.Palette.highlight());
  } else if (option.state & QStyle::State_HasFocus) {
    QStyleOptionFocusRect focus;
    static_cast<QStyleOption&>(focus) = option;
    focus.rect = row.Rest;
    option.widget->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, painter, option.widget);
  }
  Set_Style(row, *item->Data);
  if (!item->Data->Timeless) Draw_Time(row, *item->Data);
  Draw_Priority(row, *item->Data);
  Draw_Text(row, *item->Data);
  painter->restore();
}

void TEntry_Painter::Draw_Images(TRow& row, const TList_Item& item) const {
  const QColor ink = row.Palette.color(QPalette::Text);
  const int top = row.Rest.top() + (row.Rest.height() - TImage_List::Size) / 2;
  int left = row.Rest.left();
  if (item.Image >= 0) images.Draw(row.Painter, {left + Image_Indent, top}, item.Image, ink);
  left += TImage_List::Size + Image_Gap;
  const TEventKey& entry = *item.Data;
  if (entry.Alarm && !entry.Private && entry.User == Kt_util_01::User_Key())
    images.Draw(row.Painter, {left, top}, Image_Reminder, ink);
  row.Rest.setLeft(left + TImage_List::Size);
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

void TEntry_Painter::Draw_Time(TRow& row, const TEventKey& entry) const {
  QRect place = row.Rest;
  place.setWidth(qMin(time_width + Column_Gap, row.Rest.width()));
  Draw_Cell(row.Painter, place, Qt::AlignLeft,
            Kt_forms::To_Qt(Kt_util_01::FormatDateTime("t", entry.EventDate)));
  row.Rest.setLeft(row.Rest.left() + time_width + Column_Gap);
}

void TEntry_Painter::Draw_Priority(TRow& row, const TEventKey& entry) const {
  // The number stands under the middle of its heading.
  row.Rest.setRight(row.Rest.right() - priority_width / 2);
  if (entry.EventType != Kt_data_01::TEntry_Type::Other)
    Draw_Cell(row.Painter, row.Rest, Qt::AlignRight, QString::number(entry.Priority));
  row.Rest.setRight(row.Rest.right() - priority_width / 2 - Column_Gap);
}

void TEntry_Painter::Draw_Text(TRow& row, TEventKey& entry) const {
  const QString text = Kt_forms::To_Qt(Row_Text(entry));
  entry.TextRight = row.Rest.left() + row.Painter.fontMetrics().horizontalAdvance(text);
  if (row.Rest.width() > 0) Draw_Cell(row.Painter, row.Rest, Qt::AlignLeft, text);
}

}  // namespace KTReminds
