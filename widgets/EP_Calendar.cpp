#include "EP_Calendar.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QWheelEvent>

#include "Colours.h"
#include "Kt_forms.h"
#include "Kt_util_01.h"
#include "Plain_Tip.h"

namespace KTReminds {

using Kt_forms::To_Qt;
using Kt_util_01::TDateTime;

namespace {

// At its natural size the columns are 53 wide and the rows 62 high; the last ones get what is left.
constexpr QSize Natural_Size(377, 394);
constexpr int Natural_Heading = 17, Heading_Pixels = 13;
constexpr QRgb Grey = qRgb(0x80, 0x80, 0x80), Grey_On_Dark = qRgb(0xB8, 0xB8, 0xB8);
// Below the number there is always room for the sign of more entries.
constexpr int Band_Margin = 2, Band_Height = 19, Least_Below = 11;
constexpr int Wheel_Notch = 120;

// Seen on every palette, and less than a text.
QColor Between(const QColor& ground, const QColor& text) {
  const auto part = [](int from, int to) { return from + (to - from) / 4; };
  return {part(ground.red(), text.red()), part(ground.green(), text.green()),
          part(ground.blue(), text.blue())};
}

// The weekdays from Monday in the longest form in which all of them fit.
QStringList Weekdays(const QFontMetrics& metrics, int room) {
  const auto& settings = Kt_util_01::Format_Settings();
  QStringList names;
  for (const auto* form : {&settings.LongDayNames, &settings.ShortDayNames}) {
    names.clear();
    int widest = 0;
    for (std::size_t day = 0; day < form->size(); ++day) {
      names << To_Qt((*form)[(day + 1) % form->size()]);
      widest = qMax(widest, metrics.horizontalAdvance(names.back()));
    }
    if (widest <= room) return names;
  }
  for (QString& name : names) name.truncate(2);
  return names;
}

}  // namespace

TEPCalendar::TEPCalendar(QWidget* parent) : QWidget(parent), grid(Kt_util_01::CurrentDate) {
  setFocusPolicy(Qt::StrongFocus);
  setMouseTracking(true);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);
}

void TEPCalendar::Set_Events(TEvents new_events) {
  events = std::move(new_events);
}

void TEPCalendar::Set_Date(TDateTime date) {
  grid = TMonth_Grid(date);
  update();
}

void TEPCalendar::Select(TDateTime date) {
  const TDateTime before = Date();
  Set_Date(date);
  if (Date() != before) emit Changed();
}

void TEPCalendar::Step_Months(int months) {
  Select(Add_Months(Date(), months));
}

QFont TEPCalendar::Heading_Font() const {
  QFont heading = font();
  heading.setBold(true);
  heading.setPixelSize(qMax(Heading_Pixels, fontInfo().pixelSize()));
  return heading;
}

int TEPCalendar::Heading_Height() const {
  return qMax(Natural_Heading, QFontMetrics(Heading_Font(), this).height());
}

QSize TEPCalendar::sizeHint() const {
  return {Natural_Size.width(), Natural_Size.height() - Natural_Heading + Heading_Height()};
}

QSize TEPCalendar::minimumSizeHint() const {
  constexpr int margins = 2 * Band_Margin + 1;
  QFont today = font();
  today.setBold(true);
  const QFontMetrics metrics(today, this);
  return {TMonth_Grid::Columns * (metrics.horizontalAdvance(QStringLiteral("00")) + margins + 1),
          Heading_Height() + (TMonth_Grid::Rows - 1) * (metrics.height() + Least_Below + margins)};
}

// With the lines at its right and bottom.
QRect TEPCalendar::Cell_Place(TGrid_Cell cell) const {
  constexpr int last_column = TMonth_Grid::Columns - 1, last_row = TMonth_Grid::Rows - 1;
  const int heading = Heading_Height(), column_width = width() / TMonth_Grid::Columns,
            row_height = (height() - heading) / last_row;
  const int left = cell.Column * column_width,
            top = cell.Row == 0 ? 0 : heading + (cell.Row - 1) * row_height;
  const int right = cell.Column == last_column ? width() : left + column_width;
  const int bottom = cell.Row == 0 ? heading : cell.Row == last_row ? height() : top + row_height;
  return {left, top, right - left, bottom - top};
}

QRect TEPCalendar::Place_Of(TDateTime date) const {
  const auto cell = grid.Cell_Of(date);
  return cell && Has_Date(date) ? Cell_Place(*cell).adjusted(0, 0, -1, -1) : QRect();
}

std::optional<TDateTime> TEPCalendar::Date_At(QPoint place) const {
  for (int i = 0; i < TMonth_Grid::Days; ++i) {
    const TDateTime day = grid.First_Day() + i;
    if (Has_Date(day) && Cell_Place(*grid.Cell_Of(day)).contains(place)) return day;
  }
  return {};
}

void TEPCalendar::paintEvent(QPaintEvent* event) {
  QPainter painter(this);
  painter.setFont(font());
  painter.fillRect(event->rect(), palette().base());
  Draw_Headings(painter);
  for (int i = 0; i < TMonth_Grid::Days; ++i) {
    const TGrid_Cell cell = *grid.Cell_Of(grid.First_Day() + i);
    if (Cell_Place(cell).intersects(event->rect())) Draw_Cell(painter, cell);
  }
}

void TEPCalendar::Draw_Headings(QPainter& painter) const {
  const bool on_dark = Is_Dark(palette().color(QPalette::Base));
  painter.save();
  painter.setFont(Heading_Font());
  painter.setPen(QColor(on_dark ? Grey_On_Dark : Grey));
  const QStringList names = Weekdays(painter.fontMetrics(), Cell_Place({0, 0}).width() - 2 * Band_Margin);
  for (int column = 0; column < TMonth_Grid::Columns; ++column) {
    const QRect place = Cell_Place({column, 0});
    painter.fillRect(place, on_dark ? palette().color(QPalette::Button) : QColor(Silver));
    painter.drawText(place, Qt::AlignCenter | Qt::TextSingleLine, names[column]);
  }
  painter.restore();
}

void TEPCalendar::Draw_Cell(QPainter& painter, TGrid_Cell cell) const {
  const QRect whole = Cell_Place(cell), place = whole.adjusted(0, 0, -1, -1);
  const QColor line = Between(palette().color(QPalette::Base), palette().color(QPalette::Text));
  painter.fillRect(QRect(place.right() + 1, whole.top(), 1, whole.height()), line);
  painter.fillRect(QRect(whole.left(), place.bottom() + 1, whole.width(), 1), line);
  const TDateTime date = grid.Day_In(cell);
  if (!Has_Date(date)) return;
  const int band_height =
      qMin(qMax(Band_Height, fontMetrics().height()), place.height() - Band_Margin - Least_Below);
  const QRect band(place.left() + Band_Margin, place.top() + Band_Margin, place.width() - 2 * Band_Margin,
                   band_height);
  TDay day{date, place, band, {palette().color(QPalette::Text), palette().color(QPalette::Base)}};
  if (events.Choose_Colours) day.Colours = events.Choose_Colours(date);
  painter.save();
  painter.setClipRect(place, Qt::IntersectClip);
  painter.fillRect(place, Beside_Overflow(day.Colours.Ground));
  Draw_Number(painter, day);
  painter.setPen(Beside_Overflow(day.Colours.Text));
  if (events.Draw_Date) events.Draw_Date(painter, day);
  if (date == Date() && hasFocus()) {
    painter.setPen(Beside_Overflow(palette().color(QPalette::Highlight)));
    painter.drawRect(place.adjusted(0, 0, -1, -1));
  }
  painter.restore();
}

void TEPCalendar::Draw_Number(QPainter& painter, const TDay& day) const {
  QColor ink = day.Colours.Text;
  QFont number = font();
  if (day.Date == Kt_util_01::Today()) {
    ink = palette().color(QPalette::Highlight);
    number.setBold(true);
    painter.fillRect(QRect(day.Place.topLeft(), QSize(day.Place.width(), Band_Margin)), Beside_Overflow(ink));
  }
  if (day.Date == Date()) {
    painter.fillRect(day.Band, QColor(Silver));
    // On silver a dark palette's texts are too light.
    const QColor text = palette().color(QPalette::Text);
    ink = Is_Dark(text) ? text : QColor(Qt::black);
  }
  painter.setFont(number);
  painter.setPen(Beside_Overflow(ink));
  painter.drawText(day.Band.adjusted(0, 0, -1, 0), Qt::AlignRight | Qt::AlignVCenter,
                   QString::number(Kt_util_01::Decode_Date(day.Date).Day));
  painter.setFont(font());
}

bool TEPCalendar::event(QEvent* event) {
  if (event->type() != QEvent::ToolTip) return QWidget::event(event);
  const auto* help = static_cast<QHelpEvent*>(event);
  const auto date = Date_At(help->pos());
  Show_Plain_Tip(*help, date && events.Get_Tip ? events.Get_Tip(*date) : QString(), this,
                 date ? Place_Of(*date) : QRect());
  return true;
}

bool TEPCalendar::Was_Pressed_At(QPoint place) const {
  return press && (place - press->Place).manhattanLength() < QApplication::startDragDistance();
}

QColor TEPCalendar::Colour_At(QPoint place) {
  return grab(QRect(place, QSize(1, 1))).toImage().pixelColor(0, 0);
}

// Selecting a day of another month moves all days, so the click is meant for what was there before.

void TEPCalendar::mousePressEvent(QMouseEvent* event) {
  press.reset();
  const QPoint place = event->position().toPoint();
  const auto date = Date_At(place);
  if (!date || !(event->button() == Qt::LeftButton || event->button() == Qt::RightButton)) return;
  if (event->button() == Qt::LeftButton) press = TPress{place, *date, Colour_At(place)};
  Select(*date);
}

void TEPCalendar::mouseMoveEvent(QMouseEvent* event) {
  setCursor(Is_Overflow(Colour_At(event->position().toPoint())) ? Qt::PointingHandCursor : Qt::ArrowCursor);
}

void TEPCalendar::mouseReleaseEvent(QMouseEvent* event) {
  if (event->button() == Qt::LeftButton && Was_Pressed_At(event->position().toPoint())) {
    const TPress pressed = *press;
    emit Clicked(pressed.Date, pressed.Colour);
  }
}

void TEPCalendar::mouseDoubleClickEvent(QMouseEvent* event) {
  const QPoint place = event->position().toPoint();
  const auto date = Was_Pressed_At(place) ? press->Date : Date_At(place);
  press.reset();
  if (event->button() == Qt::LeftButton && date) emit Opened(*date);
}

void TEPCalendar::keyPressEvent(QKeyEvent* event) {
  const TAround around = Around(Date());
  const bool control = event->modifiers() & Qt::ControlModifier;
  switch (event->key()) {
    case Qt::Key_Left:
      return Select(Date() - 1);
    case Qt::Key_Right:
      return Select(Date() + 1);
    case Qt::Key_Up:
      return Select(Date() - TMonth_Grid::Columns);
    case Qt::Key_Down:
      return Select(Date() + TMonth_Grid::Columns);
    case Qt::Key_PageUp:
      return Step_Months(-1);
    case Qt::Key_PageDown:
      return Step_Months(+1);
    case Qt::Key_Home:
      return Select(control ? around.Month_Begin : around.Monday);
    case Qt::Key_End:
      return Select(control ? around.Month_End : around.Sunday);
    case Qt::Key_Return:
    case Qt::Key_Enter:
      emit Opened(Date());
      return;
    case Qt::Key_Insert:
      emit Insert_Pressed();
      return;
    default:
      QWidget::keyPressEvent(event);
  }
}

void TEPCalendar::wheelEvent(QWheelEvent* event) {
  event->accept();
  wheel_turned += event->angleDelta().y();
  const int notches = wheel_turned / Wheel_Notch;
  wheel_turned %= Wheel_Notch;
  Step_Months(-notches);
}

void TEPCalendar::contextMenuEvent(QContextMenuEvent* event) {
  const bool by_key = event->reason() == QContextMenuEvent::Keyboard;
  emit Menu_Asked(mapToGlobal(by_key ? Place_Of(Date()).center() : event->pos()));
}

}  // namespace KTReminds
