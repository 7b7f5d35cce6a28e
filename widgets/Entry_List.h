#pragma once

#include <QListView>
#include <QPersistentModelIndex>

#include "Entry_Painter.h"
#include "Kt_lists.h"

namespace KTReminds {

class TEntry_Model;

/// A list of events and tasks, one to a row, of which one can be selected. It says what the user does; its
/// owner decides what that means. Coming to it by Tab selects the first row if none is selected. After a
/// signal about a click or a key the list does not touch itself, so the handler may free it.
class TEntry_List : public QListView {
  Q_OBJECT

 public:
  /// With the columns of a day.
  explicit TEntry_List(QWidget* parent = nullptr);
  void Set_Columns(const TEntry_Columns& columns);

  /// Owned by the list; fill, sort and mark it here.
  Kt_data_01::TItem_List& Items();
  /// Null without a selection. Valid until the list changes.
  Kt_data_01::TList_Item* Selected();
  /// -1 without a selection.
  int Selected_Row() const;
  /// -1 when no row has the key.
  int Row_Of(std::string_view key) const;
  /// Selects a row and scrolls it into view; one that does not exist selects nothing.
  void Select_Row(int row);
  /// Which row is the topmost, and to have it so again after the rows were built anew.
  int Top_Row() const;
  void Scroll_To_Top(int row);
  /// The info tip at a place of the viewport: the entry's; empty where there is none, which the columns
  /// decide.
  QString Tip_At(QPoint place) const;
  /// Where in the viewport the column lies that a heading sorts by; nothing without such a column.
  std::optional<TEntry_Painter::TSpan> Column_Span(int sort) const;

 signals:
  void Selection_Changed();
  /// The mouse went down in the list, or the keyboard came to it from another control.
  void Entered();
  /// A row, which is selected by now, was clicked on its state image, or the space bar was pressed on it.
  void State_Clicked(int row);
  /// A double click, also beside the rows, or Enter.
  void Opened();
  void Insert_Pressed();
  void Delete_Pressed();
  void Menu_Asked(const QPoint& global);
  void Resized();

 protected:
  void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  bool viewportEvent(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// Invalid where there is no state image.
  QModelIndex State_Image_At(QPoint place) const;

  TEntry_Model* entries;
  TEntry_Painter* painter;
  QPersistentModelIndex pressed;  // the row on whose state image the button went down
};

}  // namespace KTReminds
