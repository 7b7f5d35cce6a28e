#pragma once

#include <QPagedPaintDevice>
#include <vector>

#include "Sheet_Text.h"

namespace Plexidex {

/// A sheet laid out on a device's paper, always in black: a day and a list as lines one below the other, a
/// week as a diary, a month as a grid; in larger letters where there is room for them. What a box of the
/// diary does not hold follows as lines on further pages; a cell of the grid says how much it does not. Sheet
/// and device must outlive it.
class TSheet_Pages {
 public:
  TSheet_Pages(const TSheet& sheet, const QPagedPaintDevice& device);

  int Count() const { return static_cast<int>(pages.size()); }
  /// A page, from 0, by a painter on the device.
  void Draw(QPainter& painter, int page) const;

 private:
  // A line of a day, or a heading.
  struct TRow {
    static constexpr int Heading = -1, Continued = -2;
    std::size_t Day;
    int Line;
    qreal Top;
  };
  using TPage = std::vector<TRow>;
  // A day of a diary or grid, with so many rows to a line at most, and so many lines.
  struct TBox {
    std::size_t Day;
    QRectF Place, Lines;
    int Most_Rows = 1;
    std::size_t Shown = 0;
    bool Is_Full = true;  // and no text is cut
  };

  void Lay_Out();
  void Set_Styles(qreal points);
  bool Fits_Well() const;
  void Lay_Out_Week();
  void Lay_Out_Month();
  void Add_Box(std::size_t day, const QRectF& place, qreal heading, int most_rows);
  void Fit(TBox& box, int most_rows) const;
  void Add_Day(std::size_t day, std::size_t first_line);
  void Add_Heading(std::size_t day, int kind);
  void New_Page();

  void Draw_Frame(QPainter& painter, int page) const;
  void Draw_Box(QPainter& painter, const TBox& box) const;
  void Draw_Grid(QPainter& painter) const;
  void Draw_Rows(QPainter& painter, const TPage& page) const;
  void Draw_Heading(QPainter& painter, const TRow& row) const;
  qreal Line_Height(const TSheet_Line& line, qreal width, const TLine_Style& style) const;

  const TSheet& sheet;
  const TSheet_Text text;
  const QSizeF paper;
  const QFont detail_font, footer_font;
  QFont title_font, heading_font, box_font;
  TLine_Style row_style, box_style;
  qreal row_gap = 0, heading_height = 0;
  QRectF body, grid;  // the grid is a month's, below the names of its days
  int weeks = 0;
  std::vector<TBox> boxes;  // of the first page
  std::vector<TPage> pages;
  qreal bottom = 0;  // of what stands on the last page
};

}  // namespace Plexidex
