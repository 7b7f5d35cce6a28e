#pragma once

#include <QWidget>

#include "Alert_Watch.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTreeWidget;

namespace Plexidex {

/// The reminders that wait for an answer, with the answers. A window of its own, so that no dialog of the
/// program stands in its way, and it never takes the keyboard by itself.
class TAlert_Window : public QWidget {
  Q_OBJECT

 public:
  TAlert_Window();

  /// Shows other entries, keeps what is selected, and hides when there are none.
  void Set_Entries(const std::vector<TAlert_Entry>& shown);
  /// Says anew how late each is.
  void Update_Lateness();
  /// Comes to the front without the keyboard.
  void Appear();
  /// The same with it, as somebody asked for it.
  void Come_Forward();

 signals:
  /// Something was answered, or may have been changed.
  void Answered();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  std::vector<TAlert_Entry> Selected() const;
  void Set_Buttons();
  void Open();
  void Snooze();
  void Mark_Done();
  void Dismiss(const std::vector<TAlert_Entry>& which);

  void Show_Failure(bool answered);

  QLabel *heading, *failure;
  QTreeWidget* list;
  QComboBox* delay;
  QPushButton *open, *done, *dismiss, *dismiss_all, *snooze;
  std::vector<TAlert_Entry> entries;
};

/// Plays what an alarm plays, "" and the text of the default sound for the user's.
void Play_Alert_Sound(const std::string& sound);

}  // namespace Plexidex
