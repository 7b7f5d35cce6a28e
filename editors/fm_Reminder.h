#pragma once

#include <array>

#include "Editor_Form.h"
#include "Reminder_Rules.h"

class QAbstractButton;

namespace Ui {
class Reminder_Frm;
}

namespace KTReminds {

/// The window of one event, of a recurring set, or of one occurrence of a set.
class TReminder_Frm : public TEditor_Form {
  Q_OBJECT

 public:
  explicit TReminder_Frm(TReminder_Rules& rules, QWidget* parent = nullptr);
  ~TReminder_Frm() override;

 protected:
  void Store() override;
  void Show_Validated() override;
  bool Confirm_Update(bool& keep_open) override;
  void Show_Alarm_Dependents(bool on) override;
  bool Configure_Alarm(TAlarm& alarm) override;
  TAlarm Shown_Alarm() const override { return rules.Shown_Alarm(); }
  void Show_Alarm() override;
  std::string Unit() const override { return "fm_Reminder"; }
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Set_Up_Pages();
  void Load();
  void Connect();
  void Set_Freqs();
  void Show_Kinds();
  void Store_Pages();
  void Follow_Choices();
  void Show_Recurrence();
  void EventDateChange();
  void TimeBoxClick(bool checked);
  void RecurBtnClick();
  int Chosen_Freq() const;

  TReminder_Rules& rules;
  std::unique_ptr<Ui::Reminder_Frm> ui;
  std::array<QAbstractButton*, 4> freq_buttons{};               // Daily first
  std::array<QAbstractButton*, 7> daily_days{}, weekly_days{};  // Monday first
};

/// Opens an event for editing, a new one when `EventKey` is empty. An empty `HostKey` stands for the book's
/// calendar. Of an event that belongs to a set it is asked first what to open. True when the window was
/// closed with OK, which for one that is only to be read changes nothing; a new event that was not saved
/// leaves nothing behind.
bool Reminder_Properties(const std::string& EventKey, const std::string& HostKey, const std::string& BookKey,
                         const std::string& Subject, bool NoContact);

}  // namespace KTReminds
