#pragma once

#include <QWidget>
#include <functional>
#include <optional>

#include "Month_Rules.h"

namespace KTReminds {

/// A month as a grid of days, of which one is selected. It draws the days; what is in them, and in which
/// colours, its owner draws. The keyboard and the mouse move the date and ask for commands; after a signal
/// the grid does not touch itself, so the handler may free it.
class TEPCalendar : public QWidget {
  Q_OBJECT

 public:
  struct TColours {
    QColor Text, Ground;
  };
  struct TDay {
    Kt_util_01::TDateTime Date;
    QRect Place;  // without the lines of the grid
    QRect Band;   // at the top, in which its number stands
    TColours Colours;
  };
  /// What the owner does for a day. Any may be missing.
  struct TEvents {
    std::function<TColours(Kt_util_01::TDateTime date)> Choose_Colours;
    std::function<void(QPainter& painter, const TDay& day)> Draw_Date;
    std::function<QString(Kt_util_01::TDateTime date)> Get_Tip;  // plain text
  };

  explicit TEPCalendar(QWidget* parent = nullptr);
  void Set_Events(TEvents new_events);

  const TMonth_Grid& Grid() const { return grid; }
  /// Midnight of the day that is selected.
  Kt_util_01::TDateTime Date() const { return grid.Date(); }
  /// Selects a date without a signal; one outside the years 1 to 9999 counts as the nearest in them.
  void Set_Date(Kt_util_01::TDateTime date);
  /// As the user does it: with the signal.
  void Step_Months(int months);

  /// Nothing beside the days, and in those behind the year 9999.
  std::optional<Kt_util_01::TDateTime> Date_At(QPoint place) const;
  /// Empty for a day that is not in the grid.
  QRect Place_Of(Kt_util_01::TDateTime date) const;
  /// The rows and columns at their natural sizes.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 signals:
  /// The user has selected another date.
  void Changed();
  /// A click on a day, and the colour at that place when the button went down; the date is selected by now.
  void Clicked(Kt_util_01::TDateTime date, const QColor& colour);
  /// A double click on a day, or Enter.
  void Opened(Kt_util_01::TDateTime date);
  void Insert_Pressed();
  void Menu_Asked(const QPoint& global);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;

 private:
  /// Where the button went down.
  struct TPress {
    QPoint Place;
    Kt_util_01::TDateTime Date;
    QColor Colour;
  };

  void Select(Kt_util_01::TDateTime date);
  bool Was_Pressed_At(QPoint place) const;
  QColor Colour_At(QPoint place);
  QFont Heading_Font() const;
  int Heading_Height() const;
  QRect Cell_Place(TGrid_Cell cell) const;
  void Draw_Headings(QPainter& painter) const;
  void Draw_Cell(QPainter& painter, TGrid_Cell cell) const;
  void Draw_Number(QPainter& painter, const TDay& day) const;

  TMonth_Grid grid;
  TEvents events;
  std::optional<TPress> press;
  int wheel_turned = 0;
};

}  // namespace KTReminds
