#pragma once

#include <functional>
#include <memory>

#include "Alarm_Input.h"
#include "Kt_forms.h"

namespace Ui {
class Alarm_Props_Frm;
}

namespace KTReminds {

/// The alarm of one event or task: whether it is set, when it fires, which sound it plays. Writes nothing but
/// the user's default sound.
class TAlarm_Props_Frm : public Kt_forms::TDialog_Form {
  Q_OBJECT

 public:
  TAlarm_Props_Frm(TDateTime event_date, const TAlarm& alarm, bool task_mode, bool read_only,
                   QWidget* parent = nullptr);
  ~TAlarm_Props_Frm() override;

  /// The alarm as it was given, or as it was when OK was pressed.
  const TAlarm& Alarm() const { return alarm; }

  /// Asks for a file; empty when the user chose none.
  std::function<QString(QWidget* over, const QString& title, const QString& folder, const QString& filter)>
      Choose_File;
  /// Both return false when this machine cannot make the sound.
  std::function<bool(const std::string& path)> Play_File = Kt_forms::Play_Sound_File;
  std::function<bool()> Beep = Kt_forms::Message_Beep;

 protected:
  void FormShow() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void Load();
  void Show_Sounds(const std::string& current);
  void Set_Time_Label();
  void Show_Dependents();
  void AlarmCheckClick(bool checked);
  void AlarmboxExit();
  void WAVBoxChange(int selected);
  void BrowseClick();
  void MakeDefaultClick();
  void Preview();
  void OKBtnClick();
  bool Is_On() const;

  std::unique_ptr<Ui::Alarm_Props_Frm> ui;
  const TDateTime event_date;
  TAlarm alarm;
  const bool task_mode, read_only;
  TSound_List sounds;
};

/// True when the user confirmed; the in-and-out values are changed only then. Read-only unless the user has
/// the right to change the owner's objects. NextTime is passed through.
bool Alarm_Properties(const std::string& Owner, TDateTime EventDate, TDateTime& NextTime, bool& AlarmOn,
                      int& Offset, std::string& WAVFile, bool TaskMode);

/// The same for an occurrence that has an alarm, whose row is written; switched off, it is deleted. False
/// without such an occurrence, when the user cancelled, and after a failure, which is reported.
bool Set_Alarm_Properties(const std::string& EventKey, const std::string& Owner, bool TaskMode);

}  // namespace KTReminds
