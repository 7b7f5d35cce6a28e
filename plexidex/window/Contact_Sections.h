#pragma once

#include <QWidget>
#include <map>

#include "Contacts.h"
#include "Templates.h"

class QLineEdit;
class QPlainTextEdit;
class QFormLayout;
class QVBoxLayout;

namespace Plexidex {

/// The inputs of a contact's details in sections, as its template says: fields that have a label or are
/// filled.
class TContact_Sections : public QWidget {
  Q_OBJECT

 public:
  /// `others` are the labels of the book's "Other" fields.
  TContact_Sections(const Kt_data_01::TTemplate& kind, Kt_data_01::TContact_Details details,
                    const Kt_data_01::TOther_Texts& others);
  /// What the inputs hold.
  Kt_data_01::TContact_Details Details() const;
  void Set_Read_Only();

 private:
  QFormLayout* Add_Section(const QString& title);
  void Add_Lines(QFormLayout* form, const QString& label, QPlainTextEdit* input, const std::string& text,
                 int lines);
  void Add_Field(QFormLayout* form, int code, const std::string& label, const std::string& text,
                 bool has_lines);

  QVBoxLayout* sections;
  const Kt_data_01::TTemplate kind;
  std::map<int, QLineEdit*> fields;
  std::map<int, QPlainTextEdit*> blocks;
  std::array<QLineEdit*, Kt_data_01::Other_Fields> other_fields{};
  QPlainTextEdit* notes;
};

}  // namespace Plexidex
