#pragma once

// What the windows of events and tasks share: the pages for notes, access and journal, the fields above them,
// the read-only state, and what OK does in which order.

#include <memory>

#include "Editor_Rules.h"
#include "Kt_forms.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTabWidget;

namespace Ui {
class Editor_Pages;
}

namespace KTReminds {

/// The base of both windows. It shows a record that outlives it and has been opened; whoever opened the
/// record discards it when the window did not close with OK.
class TEditor_Form : public Kt_forms::TDialog_Form {
  Q_OBJECT

 public:
  ~TEditor_Form() override;

 protected:
  /// Controls that both layouts have.
  struct TControls {
    QLineEdit *Subject, *Location;
    QComboBox* Priority;
    QLabel* Contact;
    QPushButton* Open_Contact;
    QCheckBox* Alarm;
    QPushButton* Configure;
    QCheckBox* Private;
    QTabWidget* Pages;
    QPushButton *OK, *Cancel;
  };
  struct TCaptions {
    QString Restrict, Allow, Journal;
  };

  TEditor_Form(TEditor_Rules& rules, QWidget* parent);

  /// To be called by the constructor of the form, when its layout is there: adds the shared pages behind the
  /// form's own, fills the shared controls, and connects them.
  void Set_Up_Editor(const TControls& shared, const TCaptions& captions);
  /// To be called last there: the record's read-only state and the first look of what depends on the alarm.
  void Finish_Editor();

  /// Controls to record.
  virtual void Store();
  /// Texts that the record has put into another form.
  virtual void Show_Validated() {}
  /// The questions before the update; false when nothing is to be written. `keep_open` leaves the form open
  /// after it.
  virtual bool Confirm_Update(bool& /*keep_open*/) { return true; }
  virtual void Show_Alarm_Dependents(bool on) = 0;
  /// Opens the alarm's own window; true when the alarm was changed there.
  virtual bool Configure_Alarm(TAlarm& alarm) = 0;
  virtual TAlarm Shown_Alarm() const = 0;
  /// Record to controls, after the alarm was configured.
  virtual void Show_Alarm() = 0;
  /// In the tags of reports.
  virtual std::string Unit() const = 0;

  void FormShow() override;

 private:
  void Load_Editor();
  void Fill_Lists();
  void Connect_Editor();
  void Show_Private(bool restricted);
  void AlarmCheckClick(bool checked);
  void ConfigureClick();
  void OKBtnClick();
  void Save();

  TEditor_Rules& rules;
  std::unique_ptr<Ui::Editor_Pages> pages;
  TControls controls{};
  // A memo turns line ends and hard blanks into its own: notes that nobody touched stay as they are stored.
  std::string stored_notes;
  QString shown_notes;
};

}  // namespace KTReminds
