#pragma once

#include <QStackedWidget>
#include <string>

#include "Search_Vocabulary.h"

class QComboBox;
class QLineEdit;

namespace KTReminds {

/// The value of a criterion: typed, or chosen from a list.
class TValue_Box : public QStackedWidget {
  Q_OBJECT

 public:
  explicit TValue_Box(QWidget* parent = nullptr);

  /// Has it typed, with a hint at what is expected. What it was stays.
  void Ask(const QString& hint);
  /// Has one of these chosen; what was chosen stays, and nothing is at first.
  void Offer(const TSearch_Choices& choices);
  std::string Text() const;
  /// A text that is not offered is offered from now on.
  void Set_Text(const std::string& text);
  void Select_All();

 private:
  QLineEdit* edit;
  QComboBox* list;
};

}  // namespace KTReminds
