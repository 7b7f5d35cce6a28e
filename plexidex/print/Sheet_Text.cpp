#include "Sheet_Text.h"

#include <QFontMetricsF>
#include <QObject>
#include <QTextLayout>

#include "Kt_util_01.h"

namespace Plexidex {

namespace {

constexpr double Points_Per_Inch = 72;

}  // namespace

QString Shown_Text(std::string_view text) {
  constexpr qsizetype longest = 2000;
  QString shown = QString::fromStdString(Kt_util_01::Valid_UTF8(text.substr(0, 4 * longest))).simplified();
  if (shown.size() > longest) shown = shown.left(longest) + QChar(0x2026);
  for (QChar& one : shown) {
    if (one.category() == QChar::Other_Control) one = QChar(QChar::ReplacementCharacter);
  }
  return shown;
}

QString What_Text(const TSheet_Line& line) {
  const QString text = Shown_Text(line.Text.View()), location = Shown_Text(line.Location.View());
  return location.isEmpty() ? text : text + QStringLiteral(", ") + location;
}

QString Time_Words(const TSheet_Line& line) {
  if (line.Holiday) return QObject::tr("holiday");
  if (!line.All_Day) return QString::fromStdString(line.Time);
  return line.Task ? QObject::tr("due") : QObject::tr("all day");
}

TSheet_Text::TSheet_Text(const QPaintDevice& device)
    : device(device), dots_per_point(device.logicalDpiY() / Points_Per_Inch) {}

QFont TSheet_Text::Font(qreal points, bool bold) const {
  QFont font(QStringLiteral("Sans Serif"));
  font.setStyleHint(QFont::SansSerif);
  font.setPointSizeF(points);
  font.setBold(bold);
  return font;
}

qreal TSheet_Text::Height(const QFont& font) const {
  return QFontMetricsF(font, &device).height();
}

qreal TSheet_Text::Width(const QString& text, const QFont& font) const {
  return QFontMetricsF(font, &device).horizontalAdvance(text);
}

void TSheet_Text::Draw_Row(QPainter& painter, const QRectF& place, Qt::AlignmentFlag side,
                           const QString& text, const QFont& font) const {
  const QFontMetricsF metrics(font, &device);
  const QString shown = metrics.elidedText(text, Qt::ElideRight, place.width());
  const qreal spare = side == Qt::AlignRight     ? place.width() - metrics.horizontalAdvance(shown)
                      : side == Qt::AlignHCenter ? (place.width() - metrics.horizontalAdvance(shown)) / 2
                                                 : 0;
  Draw_Text(&painter, place.adjusted(qMax(0.0, spare), 0, Points(1), 0), shown, font, 1);
}

qreal TSheet_Text::Draw_Line(QPainter* painter, const QRectF& place, const TSheet_Line& line,
                             const TLine_Style& style) const {
  QFont font = style.Font;
  font.setItalic(line.Holiday);
  const qreal row = Height(style.Font);
  QRectF rest = place;
  QString text = What_Text(line);
  const QString time = style.In_Words ? Time_Words(line) : QString::fromStdString(line.Time);
  if (style.Time_Width > 0 && !time.isEmpty()) {
    if (painter)
      Draw_Row(*painter, {rest.topLeft(), QSizeF(style.Time_Width, row)}, Qt::AlignLeft, time, font);
    rest.setLeft(rest.left() + style.Time_Width);
  } else if (!time.isEmpty()) {
    text = time + QLatin1Char(' ') + text;
  }
  if (line.Task) {
    const qreal side = row * 0.55;
    if (painter) Draw_Box(*painter, {rest.left(), rest.top() + (row - side) / 2, side, side}, line.Done);
    rest.setLeft(rest.left() + row * 0.85);
  }
  // Without colours a line through it says that it is done.
  font.setStrikeOut(line.Done);
  return Draw_Text(painter, rest, text, font, style.Most_Rows);
}

// From the left also where a text runs from the right, so that it stays beside its time.
qreal TSheet_Text::Draw_Text(QPainter* painter, const QRectF& place, const QString& text, const QFont& font,
                             int most_rows) const {
  const qreal hanging = Points(5);
  QTextOption option(Qt::AlignLeft | Qt::AlignAbsolute);
  option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  option.setTextDirection(text.isRightToLeft() ? Qt::RightToLeft : Qt::LeftToRight);
  qreal height = 0;
  const auto lay_out = [&](const QString& shown, int rows) {
    QTextLayout layout(shown, font, &device);
    layout.setTextOption(option);
    layout.setCacheEnabled(true);
    layout.beginLayout();
    int end = 0;
    for (int i = 0; i < rows; ++i) {
      QTextLine row = layout.createLine();
      if (!row.isValid()) break;
      const qreal left = height > 0 ? hanging : 0;
      row.setLineWidth(qMax(1.0, place.width() - left));
      row.setPosition({left, height});
      height += row.height();
      end = row.textStart() + row.textLength();
    }
    layout.endLayout();
    if (painter) layout.draw(painter, place.topLeft());
    return end;
  };
  // The last row is cut where more follows.
  const int upper = most_rows - 1;
  const int rest = upper > 0 ? lay_out(text, upper) : 0;
  if (rest < text.size() || text.isEmpty())
    lay_out(QFontMetricsF(font, &device)
                .elidedText(text.mid(rest), Qt::ElideRight, place.width() - (height > 0 ? hanging : 0)),
            1);
  return height;
}

void TSheet_Text::Draw_Box(QPainter& painter, const QRectF& place, bool ticked) const {
  painter.setPen(QPen(Qt::black, Points(0.6)));
  painter.setBrush(Qt::NoBrush);
  painter.drawRect(place);
  if (!ticked) return;
  painter.drawPolyline(QPolygonF{place.topLeft() + QPointF(place.width() * 0.2, place.height() * 0.5),
                                 place.topLeft() + QPointF(place.width() * 0.42, place.height() * 0.78),
                                 place.topLeft() + QPointF(place.width() * 0.85, place.height() * 0.2)});
}

void TSheet_Text::Rule(QPainter& painter, QPointF from, QPointF to, qreal points) const {
  painter.setPen(QPen(Qt::black, Points(points)));
  painter.drawLine(from, to);
}

}  // namespace Plexidex
