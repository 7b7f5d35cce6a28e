#pragma once

// Texts and measures on paper. All of it is in the device's own pixels.

#include <QFont>
#include <QPainter>
#include <QRectF>
#include <QString>

#include "Sheet.h"

namespace Plexidex {

/// How the lines of a sheet look in one place of it.
struct TLine_Style {
  QFont Font;
  qreal Time_Width = 0;   // of a column of times, with the gap behind it; without one the time leads the text
  int Most_Rows = 1;      // a longer text is cut with an ellipsis
  bool In_Words = false;  // says "all day" and the like where there is no time
};

/// Draws on a device, or without a painter only measures.
class TSheet_Text {
 public:
  explicit TSheet_Text(const QPaintDevice& device);

  qreal Points(qreal points) const { return points * dots_per_point; }
  QFont Font(qreal points, bool bold = false) const;
  qreal Height(const QFont& font) const;
  qreal Width(const QString& text, const QFont& font) const;

  /// One row of text at a side of a place, cut to its width.
  void Draw_Row(QPainter& painter, const QRectF& place, Qt::AlignmentFlag side, const QString& text,
                const QFont& font) const;
  /// An entry from the top of a place, in rows of its width; how high it is.
  qreal Draw_Line(QPainter* painter, const QRectF& place, const TSheet_Line& line,
                  const TLine_Style& style) const;
  void Rule(QPainter& painter, QPointF from, QPointF to, qreal points) const;

 private:
  qreal Draw_Text(QPainter* painter, const QRectF& place, const QString& text, const QFont& font,
                  int most_rows) const;
  void Draw_Box(QPainter& painter, const QRectF& place, bool ticked) const;

  const QPaintDevice& device;
  const qreal dots_per_point;
};

/// The text as it may stand in a line: without breaks, and no longer than anybody reads.
QString Shown_Text(std::string_view text);
/// Text and location.
QString What_Text(const TSheet_Line& line);
/// The time, or what stands in its place: "all day", "due" for a task, "holiday".
QString Time_Words(const TSheet_Line& line);

}  // namespace Plexidex
