#pragma once

#include "Editor_Form.h"
#include "Task_Rules.h"

namespace Ui {
class Task_Frm;
}

namespace KTReminds {

/// The window of one task.
class TTask_Frm : public TEditor_Form {
  Q_OBJECT

 public:
  explicit TTask_Frm(TTask_Rules& rules, QWidget* parent = nullptr);
  ~TTask_Frm() override;

 protected:
  void Store() override;
  void Show_Alarm_Dependents(bool on) override;
  bool Configure_Alarm(TAlarm& alarm) override;
  TAlarm Shown_Alarm() const override { return rules.Shown_Alarm(); }
  void Show_Alarm() override;
  std::string Unit() const override { return "fm_Task"; }

 private:
  void Load();
  void Connect();
  void Show_State();
  void EventDateChange();
  void StatusChange();
  void PercentageChange();
  void BudgetChange();

  TTask_Rules& rules;
  std::unique_ptr<Ui::Task_Frm> ui;
};

/// Opens a task for editing, a new one when `EventKey` is empty. An empty `HostKey` stands for the book's
/// calendar. True when the window was closed with OK, which for one that is only to be read changes nothing;
/// a new task that was not saved leaves nothing behind.
bool Task_Properties(const std::string& EventKey, const std::string& HostKey, const std::string& BookKey,
                     const std::string& Subject, bool NoContact);

}  // namespace KTReminds
