#include <QApplication>

#include "Editor_Fixture.h"
#include "KTReminds.h"

using namespace KTReminds;

namespace {

/// The editors in the locale, dark or light, that the parameter names.
class Editor_Looks : public TEditor_Fixture,
                     public testing::WithParamInterface<std::pair<const char*, bool>> {
 protected:
  Editor_Looks() : light(QApplication::palette()) {
    Kt_util_01::Install_Locale(GetParam().first);
    if (GetParam().second) QApplication::setPalette(Dark_Palette());
  }
  ~Editor_Looks() override { QApplication::setPalette(light); }

  static std::string Every_Page(QWidget& form, const QString& name) {
    Show(form);
    std::string wrong = Make_Checks(&form);
    auto* tabs = form.findChild<QTabWidget*>();
    for (int page = 0; page < (tabs ? tabs->count() : 0); ++page) {
      if (!tabs->isTabVisible(page)) continue;
      tabs->setCurrentIndex(page);
      wrong += Make_Checks(&form);
      Take(form, name + QString::number(page));
    }
    if (!tabs) Take(form, name);
    return wrong;
  }
  static void Take(QWidget& form, const QString& name) {
    Picture(&form, QStringLiteral("look_%1_%2_%3")
                       .arg(name, QString::fromLatin1(GetParam().first),
                            GetParam().second ? QStringLiteral("dark") : QStringLiteral("light")));
  }

  const QPalette light;
};

TEST_P(Editor_Looks, Nothing_Is_Clipped_Unnamed_Or_Ambiguous) {
  for (const bool task : {false, true}) {
    TAlarm_Props_Frm form(Monday + 1.5, {true, 30, "", task ? 0 : Monday}, task, false);
    EXPECT_EQ(Every_Page(form, task ? QStringLiteral("alarm_task") : QStringLiteral("alarm")), "");
  }
  TReminder_Rules set;
  Open(set, Make(5));
  set.Open_Whole_Set();
  for (const int freq : {1, 2, 3, 4}) {
    set.Pages.Freq = static_cast<TFrequency>(freq);
    set.Pages.Daily_Every = set.Pages.Monthly_Every = set.Pages.Yearly_Every = false;
    set.Alarm.On = true;
    TReminder_Frm form(set);
    EXPECT_EQ(Every_Page(form, QStringLiteral("set_%1_").arg(freq)), "");
  }
  TTask_Rules task;
  Open(task, Make(1, 3));
  task.Alarm.On = true;
  task.Status = TTask_Status::Completed;
  task.Set_Status();
  TTask_Frm form(task);
  EXPECT_EQ(Every_Page(form, QStringLiteral("task_")), "");
}

INSTANTIATE_TEST_SUITE_P(Of, Editor_Looks,
                         testing::Values(std::pair("en_US", false), std::pair("de_DE", false),
                                         std::pair("en_US", true), std::pair("de_DE", true)));

}  // namespace
