#include "Welcome.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>

#include "Host_Dialog.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TWelcome : public THost_Dialog {
 public:
  explicit TWelcome(const std::string& database)
      : THost_Dialog(tr("Welcome to Plexidex"), nullptr),
        empty(new QRadioButton(tr("with an &empty address book"))),
        sample(new QRadioButton(tr("with some &sample entries, to look around"))),
        calendar(new QRadioButton(tr("with the entries of a &calendar file:"))),
        name(new QLineEdit(QStringLiteral("My Calendar"))),
        file(new QLineEdit),
        browse(new QPushButton(tr("&Browse..."))) {
    setObjectName(QStringLiteral("Welcome"));
    empty->setObjectName(QStringLiteral("Empty"));
    sample->setObjectName(QStringLiteral("Sample"));
    calendar->setObjectName(QStringLiteral("Calendar"));
    name->setObjectName(QStringLiteral("Name"));
    file->setObjectName(QStringLiteral("File"));
    file->setPlaceholderText(tr("an .ics file"));
    file->setAccessibleName(tr("Calendar file"));
    auto* text = new QLabel(tr("There is no database yet. It will be made here:\n%1")
                                .arg(QDir::toNativeSeparators(To_Qt(database))));
    text->setWordWrap(true);
    empty->setChecked(true);
    auto* row = new QHBoxLayout;
    row->addSpacing(22);
    row->addWidget(file, 1);
    row->addWidget(browse);
    Form()->addRow(text);
    Form()->addRow(tr("&Name of the first book:"), name);
    Form()->addRow(new QLabel(tr("Begin")));
    for (QRadioButton* choice : {empty, sample, calendar}) Form()->addRow(choice);
    Form()->addRow(row);
    Buttons()->button(QDialogButtonBox::Ok)->setText(tr("S&tart"));
    Buttons()->button(QDialogButtonBox::Cancel)->setText(tr("&Quit"));
    for (QWidget* control : {static_cast<QWidget*>(file), static_cast<QWidget*>(browse)}) {
      control->setEnabled(false);
      connect(calendar, &QRadioButton::toggled, control, &QWidget::setEnabled);
    }
    connect(browse, &QPushButton::clicked, this, [this] {
      const QString chosen = QFileDialog::getOpenFileName(this, tr("Choose a Calendar"), {},
                                                          tr("Calendars (*.ics);;All files (*)"));
      if (!chosen.isEmpty()) file->setText(QDir::toNativeSeparators(chosen));
    });
    setMinimumWidth(fontMetrics().averageCharWidth() * 70);
    Finish();
  }

  TFirst_Book Choice() const {
    return {
        From_Qt(name->text().trimmed()), sample->isChecked(),
        calendar->isChecked() ? From_Qt(QDir::fromNativeSeparators(file->text().trimmed())) : std::string()};
  }

 protected:
  bool Save() override {
    if (Choice().Name.empty()) return Refuse("A book needs a name.", name);
    if (!calendar->isChecked()) return true;
    const QFileInfo chosen(To_Qt(Choice().Calendar_File));
    if (chosen.isFile() && chosen.isReadable()) return true;
    return Refuse(Choice().Calendar_File.empty()
                      ? "Name the calendar file to begin with."
                      : "The calendar file \"" + Choice().Calendar_File + "\" cannot be read.",
                  file);
  }

 private:
  static bool Refuse(const std::string& text, QLineEdit* control) {
    Kt_util_01::Raise_Error("Welcome", text);
    control->setFocus();
    control->selectAll();
    return false;
  }

  QRadioButton *empty, *sample, *calendar;
  QLineEdit *name, *file;
  QPushButton* browse;
};

}  // namespace

std::optional<TFirst_Book> Welcome(const std::string& file) {
  TWelcome dialog(file);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Choice();
}

}  // namespace Plexidex
