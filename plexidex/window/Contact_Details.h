#pragma once

#include <QUrl>
#include <optional>
#include <string>

#include "Content_Scroll.h"

class QBoxLayout;
class QLabel;

namespace Kt_data_01 {
struct TContact;
}

namespace Plexidex {

/// What a contact has, as its template calls it, filled fields only: those in which one may click open.
class TContact_Details_View : public TContent_Scroll {
  Q_OBJECT

 public:
  explicit TContact_Details_View(QWidget* parent = nullptr);
  /// Reads them; throws EData_Error.
  void Show_Details(const Kt_data_01::TContact& contact);
  /// Shows nothing.
  void Clear();

 protected:
  /// Leaves most of its page to what is below it.
  int Most_High() const override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  /// What shows a text, by its name, and opens its link if it has one.
  QWidget* Value(const QString& name, const QString& text, const std::optional<QUrl>& link);

  /// Side by side where there is room.
  void Set_Direction();

  QBoxLayout* columns = nullptr;
};

}  // namespace Plexidex
