#pragma once

#include <QFrame>

namespace Kt_forms {
class TWebLabel;
}

namespace KTReminds {

class TEntry_List;

/// The headings of an entry list, by which it is sorted: its labels, each of which has the code of a column
/// as its "Tag" and stands over that column. Lies in a panel that says something else while the list is
/// empty.
class TSort_Header : public QFrame {
  Q_OBJECT

 public:
  explicit TSort_Header(QWidget* parent = nullptr);

  /// Follows the columns of a list from now on, and is shown while it has rows. The panel around the header
  /// gets the height of a heading. A label that reaches into the next one is cut.
  void Stand_Over(TEntry_List* new_list);

 signals:
  /// A label was clicked.
  void Sort_Asked(int column);

 private:
  void Place_Labels();

  TEntry_List* list = nullptr;
  struct TLabel {
    Kt_forms::TWebLabel* Label;
    QString Text;  // the whole of it
  };
  QList<TLabel> labels;
};

}  // namespace KTReminds
