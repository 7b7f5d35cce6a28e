#pragma once

#include <QFont>
#include <QStyledItemDelegate>
#include <optional>

#include "Entry_Columns.h"
#include "Image_List.h"
#include "Kt_lists.h"

namespace KTReminds {

class TEntry_Model;

/// Draws the rows of a TEntry_Model column by column, as a description of the columns says.
class TEntry_Painter : public QStyledItemDelegate {
  Q_OBJECT

 public:
  /// The model outlives the painter, which stores in it how far each text reaches that it has drawn.
  explicit TEntry_Painter(TEntry_Model& model, QObject* parent = nullptr);

  void Set_Columns(const TEntry_Columns& new_columns);
  const TEntry_Columns& Columns() const { return columns; }

  /// To be called before the rows of a list are painted: reads what they have in common.
  void Begin_Paint(const QWidget& list);
  /// Whether a place lies on a row's state image.
  bool On_State_Image(const QRect& row, QPoint place) const;

  struct TSpan {
    int Left, Right;  // the first place that belongs to the column, and the first one that does not any more
    TSide Side;
  };
  /// Where the column with a heading lies in the rows of a list that are so wide; the text's begins where it
  /// does in a row without a time. Nothing when no column has that heading, or there is no room for it.
  std::optional<TSpan> Span_Of(int sort, const QWidget& list, int row_width);

  void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// The same height for every row, and no width: a row is as wide as its list.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

 private:
  // What is left of the row between the columns drawn so far.
  struct TRow {
    QPainter& Painter;
    QRect Rest;
    bool Selected;
    QPalette Palette;
  };

  void Measure(const QWidget& list);
  /// Behind the last column that a row shows: where the text has hardly any room, it gets that of the last
  /// ones.
  std::size_t End_For(int row_width) const;
  void Set_Style(TRow& row, const Kt_data_01::TEventKey& entry) const;
  void Draw_Image(TRow& row, const Kt_data_01::TList_Item& item, std::size_t column) const;
  void Draw_From_Left(TRow& row, const Kt_data_01::TList_Item& item, std::size_t column) const;
  void Draw_From_Right(TRow& row, const Kt_data_01::TList_Item& item, std::size_t column) const;

  TEntry_Model& model;
  const TImage_List images;
  TEntry_Columns columns;
  std::size_t images_end = 0, text_column = 0;
  // What the widths were measured for, and the width of each column.
  QFont font;
  QString time_sample, date_sample;
  std::vector<int> widths;
  int letter = 0;  // width of an average one
  double now = 0;
  bool strike_completed = true;
};

}  // namespace KTReminds
