#pragma once

// A day of the week view: its header and its list.

#include <functional>
#include <string>

#include "Entry_List.h"
#include "Kt_labels.h"

namespace KTReminds {

/// The header over a day's list: bold on the day that is selected, with a line below on today's.
class TWeek_Header : public Kt_forms::TTitle_Label {
  Q_OBJECT

 public:
  explicit TWeek_Header(QWidget* parent = nullptr);
  void Show_Day(const QStringList& titles, bool today);
  void Set_Bold(bool bold);

 signals:
  void Clicked();
  void Double_Clicked();

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool is_today = false;
};

/// The list of one day, from and to which entries can be dragged, by their keys.
class TWeek_List : public TEntry_List {
  Q_OBJECT

 public:
  explicit TWeek_List(QWidget* parent = nullptr);
  /// Whether the selected entry may be dragged, and whether one with that key may be dropped here.
  std::function<bool()> May_Drag;
  std::function<bool(const std::string& key)> May_Drop;

 signals:
  void Dropped(const QString& key);
  /// The key to the list of the day before, -1, or after, 1.
  void Step_Asked(int days);

 protected:
  void startDrag(Qt::DropActions actions) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Mark_As_Target(bool target);

  bool is_target = false;  // of the drag that is over it
};

}  // namespace KTReminds
