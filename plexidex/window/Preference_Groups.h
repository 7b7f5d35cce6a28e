#pragma once

// The pages of the preferences, each with what belongs together.

#include <QCheckBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QSpinBox>
#include <QWidget>
#include <optional>
#include <string>

namespace Plexidex {

/// A page shows what the settings say when it is made.
class TPreference_Group : public QWidget {
  Q_OBJECT

 public:
  TPreference_Group() : form(new QFormLayout(this)) {
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
  }

  /// An input that cannot be, and why: one sentence, or "" when the user knows already.
  struct TWrong {
    QWidget* Input;
    std::string Why;
  };
  virtual std::optional<TWrong> Check() { return {}; }
  /// Keeps what was checked; throws std::exception with a sentence for what cannot be kept.
  virtual void Save() = 0;

 protected:
  QFormLayout* Form() { return form; }
  /// Adds a labelled input with further controls behind it.
  void Add_Row(const QString& label, QWidget* input, const QList<QWidget*>& behind);

 private:
  QFormLayout* form;
};

TPreference_Group* Make_General_Group();
TPreference_Group* Make_Calendar_Group();
TPreference_Group* Make_Reminders_Group();
TPreference_Group* Make_Look_Group();

/// The database in use, another one, and backups.
class TData_Group : public TPreference_Group {
 public:
  /// `database` is the one in use.
  explicit TData_Group(const std::string& database);
  std::optional<TWrong> Check() override;
  void Save() override;
  /// The file that the user wants to work with, with its whole path; "" when none is named.
  std::string Database() const;

 private:
  std::optional<TWrong> Check_Database();

  const std::string current;
  QLineEdit *file, *folder;
  QSpinBox *most_entries, *kept;
  QCheckBox* daily;
};

}  // namespace Plexidex
