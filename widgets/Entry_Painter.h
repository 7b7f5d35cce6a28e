#pragma once

#include <QFont>
#include <QStyledItemDelegate>

#include "Image_List.h"
#include "Kt_lists.h"

namespace KTReminds {

/// Draws the rows of a TEntry_Model column by column: state image, reminder mark, time, text and priority.
class TEntry_Painter : public QStyledItemDelegate {
  Q_OBJECT

 public:
  explicit TEntry_Painter(QObject* parent = nullptr);

  /// To be called before the rows of a list are painted: reads what they have in common.
  void Begin_Paint(const QWidget& list);
  /// Whether a place lies on a row's state image.
  static bool On_State_Image(const QRect& row, QPoint place);

  /// Stores in the entry how far to the right its text reaches.
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

  void Set_Style(TRow& row, const Kt_data_01::TEventKey& entry) const;
  void Draw_Images(TRow& row, const Kt_data_01::TList_Item& item) const;
  void Draw_Time(TRow& row, const Kt_data_01::TEventKey& entry) const;
  void Draw_Priority(TRow& row, const Kt_data_01::TEventKey& entry) const;
  void Draw_Text(TRow& row, Kt_data_01::TEventKey& entry) const;

  const TImage_List images;
  QFont font;
  QString sample_time;
  int time_width = 0, priority_width = 0;
  double now = 0;
  bool strike_completed = true;
};

}  // namespace KTReminds
