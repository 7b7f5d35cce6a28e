#include "Preferences.h"

#include <QFileInfo>
#include <QTabWidget>

#include "Host_Dialog.h"
#include "Kt_util_01.h"
#include "Preference_Groups.h"
#include "User_Formats.h"

namespace Plexidex {

using namespace Kt_forms;

namespace {

class TPreferences : public THost_Dialog {
 public:
  TPreferences(const std::string& database, QWidget* parent)
      : THost_Dialog(tr("User Preferences"), parent), tabs(new QTabWidget), data(new TData_Group(database)) {
    setObjectName(QStringLiteral("Preferences"));
    tabs->setObjectName(QStringLiteral("Groups"));
    tabs->addTab(Make_General_Group(), tr("General"));
    tabs->addTab(Make_Calendar_Group(), tr("Calendar"));
    tabs->addTab(Make_Reminders_Group(), tr("Reminders"));
    tabs->addTab(Make_Look_Group(), tr("Look"));
    // Last: its check opens another database, and may make or migrate it, which only all else may forbid.
    tabs->addTab(data, tr("Data"));
    Form()->addRow(tabs);
    setMinimumWidth(fontMetrics().averageCharWidth() * 95);
    Finish();
  }

  std::string Database() const { return data->Database(); }

 protected:
  bool Save() override {
    for (int i = 0; i < tabs->count(); ++i) {
      const auto wrong = Group(i)->Check();
      if (!wrong) continue;
      tabs->setCurrentIndex(i);
      if (!wrong->Why.empty()) Kt_util_01::Raise_Error("User Preferences", wrong->Why);
      wrong->Input->setFocus();
      return false;
    }
    try {
      for (int i = 0; i < tabs->count(); ++i) Group(i)->Save();
    } catch (const std::exception& e) {
      // Only the first one's first step can fail.
      tabs->setCurrentIndex(0);
      Kt_util_01::Raise_Error("User Preferences", e.what() + std::string(" No preferences have been saved."));
      return false;
    }
    Kt_util_01::Apply_User_Formats();
    return true;
  }

 private:
  TPreference_Group* Group(int index) const { return qobject_cast<TPreference_Group*>(tabs->widget(index)); }

  QTabWidget* tabs;
  TData_Group* data;
};

}  // namespace

std::optional<std::string> Edit_Preferences(QWidget* window, const std::string& database) {
  TPreferences dialog(database, window);
  if (dialog.exec() != QDialog::Accepted) return std::nullopt;
  return dialog.Database() != From_Qt(QFileInfo(To_Qt(database)).absoluteFilePath()) ? dialog.Database()
                                                                                     : database;
}

}  // namespace Plexidex
