#include "Preferences.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>

#include "Alarm_Sounds.h"
#include "Database.h"
#include "Host_Dialog.h"
#include "Import_Budget.h"
#include "Kt_util_01.h"
#include "Transfer.h"

namespace Plexidex {

using namespace Kt_forms;
using Kt_util_01::Read_Bool;
using Kt_util_01::Write_Bool;

namespace {

// The next start may be from another folder.
std::string Whole_Path(const QString& path) {
  return From_Qt(QFileInfo(path).absoluteFilePath());
}

class TPreferences : public THost_Dialog {
 public:
  TPreferences(const std::string& database, QWidget* parent)
      : THost_Dialog(tr("User Preferences"), parent),
        bars(new QCheckBox(tr("Show &navigation bars"))),
        completed(new QCheckBox(tr("&Strike through what is completed"))),
        interface_sounds(new QCheckBox(tr("&Interface sounds"))),
        default_sound(new QComboBox),
        most_entries(new QSpinBox),
        file(new QLineEdit(QDir::toNativeSeparators(To_Qt(database)))),
        current(database) {
    setObjectName(QStringLiteral("Preferences"));
    bars->setObjectName(QStringLiteral("Navigation_Bars"));
    completed->setObjectName(QStringLiteral("Completed_Style"));
    interface_sounds->setObjectName(QStringLiteral("Interface_Sounds"));
    default_sound->setObjectName(QStringLiteral("Default_Sound"));
    file->setObjectName(QStringLiteral("Database"));
    bars->setChecked(Read_Bool("General", "Navigation Bars", true));
    completed->setChecked(Kt_util_01::UseCompleteStyle());
    interface_sounds->setChecked(Read_Bool("Sounds", "Interface", true));
    // The list's first text stands for the user's default, which this is.
    sounds = KTReminds::Build_WAV_List(KTReminds::Read_Default_Sound());
    for (std::size_t i = 1; i < sounds.Items.size(); ++i)
      default_sound->addItem(To_Qt(sounds.Items[i]), static_cast<int>(i));
    default_sound->setCurrentIndex(default_sound->findData(qMax(1, sounds.Selected)));
    auto* browse = new QPushButton(tr("&Browse..."));
    auto* row = new QHBoxLayout;
    row->addWidget(file, 1);
    row->addWidget(browse);
    Form()->addRow(bars);
    Form()->addRow(completed);
    Form()->addRow(interface_sounds);
    Form()->addRow(tr("&Default alarm sound:"), default_sound);
    most_entries->setObjectName(QStringLiteral("Most_Entries"));
    most_entries->setRange(1000, static_cast<int>(Highest_Entries));
    most_entries->setSingleStep(50'000);
    most_entries->setGroupSeparatorShown(true);
    most_entries->setValue(static_cast<int>(Read_Most_Entries()));
    Form()->addRow(tr("&Entries of an import at most:"), most_entries);
    Form()->addRow(tr("Database &file:"), row);
    qobject_cast<QLabel*>(Form()->labelForField(row))->setBuddy(file);
    connect(browse, &QPushButton::clicked, this, [this] {
      const QString chosen = QFileDialog::getSaveFileName(this, tr("Choose a Database"), file->text(),
                                                          tr("Databases (*.db);;All files (*)"), nullptr,
                                                          QFileDialog::DontConfirmOverwrite);
      if (!chosen.isEmpty()) file->setText(QDir::toNativeSeparators(chosen));
    });
    setMinimumWidth(fontMetrics().averageCharWidth() * 70);
    Finish();
  }

  // "" when none is named.
  std::string Database() const {
    const QString path = QDir::fromNativeSeparators(file->text().trimmed());
    return path.isEmpty() ? std::string() : Whole_Path(path);
  }

 protected:
  bool Save() override {
    if (Database().empty()) {
      return Refuse("Name the file that holds the database.");
    }
    if (Database() != Whole_Path(To_Qt(current)) && !(May_Be_Made() && Can_Be_Opened())) return false;
    Write_Bool("General", "Navigation Bars", bars->isChecked());
    Write_Bool("General", "Completed Style", completed->isChecked());
    Write_Bool("Sounds", "Interface", interface_sounds->isChecked());
    Write_Most_Entries(most_entries->value());
    sounds.Selected = default_sound->currentData().toInt();
    KTReminds::Write_Default_Sound(sounds.Default_Value());
    return true;
  }

 private:
  bool Refuse(const std::string& why) {
    Kt_util_01::Raise_Error("User Preferences", why);
    file->setFocus();
    return false;
  }
  // A name that is mistyped is not to become an empty database.
  bool May_Be_Made() {
    if (QFileInfo::exists(To_Qt(Database())) ||
        Kt_util_01::Raise_Question("User Preferences", "There is no database \"" + Database() +
                                                           "\". Make a new one?") == Kt_util_01::Answer_Yes)
      return true;
    file->setFocus();
    return false;
  }
  // The one in use stays open until it is known that the other can be: it may not open a second time.
  bool Can_Be_Opened() {
    try {
      Kt_data_01::TDatabase().Open(Database(), Kt_data_01::TDatabase::TMode::Create_If_Missing);
      return true;
    } catch (const std::exception& e) {
      return Refuse(e.what());
    }
  }

  QCheckBox *bars, *completed, *interface_sounds;
  QComboBox* default_sound;
  QSpinBox* most_entries;
  QLineEdit* file;
  const std::string current;
  KTReminds::TSound_List sounds;
};

}  // namespace

std::optional<std::string> Edit_Preferences(QWidget* window, const std::string& database) {
  TPreferences dialog(database, window);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Database() != Whole_Path(To_Qt(database)) ? dialog.Database() : database;
}

}  // namespace Plexidex
