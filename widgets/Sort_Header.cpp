#include "Sort_Header.h"

#include <QAbstractItemModel>

#include "Entry_List.h"
#include "Entry_Painter.h"
#include "Kt_labels.h"

namespace KTReminds {

using Kt_forms::TWebLabel;

TSort_Header::TSort_Header(QWidget* parent) : QFrame(parent) {}

void TSort_Header::Stand_Over(TEntry_List* new_list) {
  constexpr int least_height = 21, room = 4;
  list = new_list;
  labels = findChildren<TWebLabel*>();
  QWidget* panel = parentWidget();
  panel->setFixedHeight(qMax(least_height, panel->fontMetrics().height() + room));
  for (const TWebLabel* label : labels)
    connect(label, &TWebLabel::Clicked, this,
            [this, label] { emit Sort_Asked(label->property("Tag").toInt()); });
  connect(list, &TEntry_List::Resized, this, &TSort_Header::Place_Labels);
  const auto follow = [this] { setVisible(list->model()->rowCount() > 0); };
  connect(list->model(), &QAbstractItemModel::modelReset, this, follow);
  connect(list->model(), &QAbstractItemModel::rowsInserted, this, follow);
  connect(list->model(), &QAbstractItemModel::rowsRemoved, this, follow);
  follow();
}

void TSort_Header::Place_Labels() {
  constexpr int indent = 4, right_margin = 2, focus_frame = 4;
  for (TWebLabel* label : labels) {
    const auto span = list->Column_Span(label->property("Tag").toInt());
    label->setVisible(span.has_value());
    if (!span) continue;
    const int width = label->fontMetrics().horizontalAdvance(label->text());
    const int left = span->Side == TSide::Left ? span->Left + indent : span->Right - right_margin - width;
    label->setGeometry(list->viewport()->x() + left, 0, width + focus_frame, parentWidget()->height());
  }
}

}  // namespace KTReminds
