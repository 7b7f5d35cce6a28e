#pragma once

#include <QDateEdit>
#include <QLineEdit>
#include <optional>

#include "Kt_dates.h"

namespace KTReminds {

/// The day of a date; and back, midnight.
QDate To_QDate(Kt_util_01::TDateTime value);
Kt_util_01::TDateTime From_QDate(const QDate& date);

/// The user's first day of the week.
Qt::DayOfWeek First_Day_Of_Week();

/// A date in the user's short format, or from a calendar that drops down. It is typed as a text, which is
/// read when the field is left: whatever Str2Date reads will do. A text that is no date stays, for its form
/// to refuse. Coming to the field selects all of it; Up and Down step the part under the cursor.
class TDate_Edit : public QDateEdit {
  Q_OBJECT

 public:
  explicit TDate_Edit(QWidget* parent = nullptr);

  void Set_Day(Kt_util_01::TDateTime day);
  /// Also while it is still being typed. The last one there was while the text is no date.
  Kt_util_01::TDateTime Day() const;
  bool Is_Valid() const { return Typed().isValid(); }
  /// Whether it is another day than the first that was set.
  bool Was_Moved() const { return Typed() != first_set; }

  void stepBy(int steps) override;

 protected:
  QValidator::State validate(QString& input, int& pos) const override;
  void fixup(QString& /*input*/) const override {}
  QString textFromDateTime(const QDateTime& value) const override;
  QDateTime dateTimeFromText(const QString& text) const override;
  StepEnabled stepEnabled() const override;
  bool focusNextPrevChild(bool next) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct TPart {
    Section Kind;
    int Start, Length;
  };
  QDate Date_Of(const QString& text) const;
  QDate Typed() const { return Date_Of(lineEdit()->text()); }
  void Take_Typed();
  /// Of the text, which is that of the date.
  QList<TPart> Parts() const;

  QDate first_set;
  bool clicked_into = false, calendar_prepared = false;
};

}  // namespace KTReminds
