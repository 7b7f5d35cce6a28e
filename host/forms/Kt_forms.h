#pragma once

// The forms half of the host: what pages and editors derive from, and how they talk.

#include <QDialog>
#include <QEvent>
#include <QList>
#include <QPointer>
#include <QWidget>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

class QAction;
class QMenu;
class QMenuBar;

namespace Kt_forms {

/// Messages between host and pages. The numbers are fixed.
inline constexpr int umAddContact = 0x401;
inline constexpr int umRefreshDisplay = 0x402;
inline constexpr int umSelectNode = 0x405;
inline constexpr int umSettingsCommand = 0x407;  // LParam is one of the commands below
inline constexpr int umDisplayForm = 0x40B;
inline constexpr int umDateChanged = 0x40D;
inline constexpr int umAddContactEvent = 0x411;
inline constexpr int umAddTask = 0x412;
inline constexpr int umEnterPressed = 0x41B;
inline constexpr int umSetActiveControl = 0x41D;
inline constexpr int umGetFormName = 0x423;
/// What the settings command asks the main form for.
inline constexpr int Settings_Preferences = 6;
inline constexpr int Settings_Book = 7;
inline constexpr int Settings_Security = 8;
inline constexpr int Settings_Users = 9;

inline constexpr int First_Message = 0x401;
inline constexpr int Last_Message = 0x423;

/// A message travels as a user event of the same number.
class TMessage : public QEvent {
 public:
  TMessage(int number, qintptr w_param, qintptr l_param)
      : QEvent(static_cast<QEvent::Type>(number)), WParam(w_param), LParam(l_param) {}
  int Number() const { return static_cast<int>(type()); }
  const qintptr WParam, LParam;
};

/// Keeps the numbers from being given to anybody else. To be called once the application object is there.
void Reserve_Messages();
/// Delivers when the event loop gets to it; drops the message when the form is null.
void Post_Message(QWidget* form, int number, qintptr w_param, qintptr l_param);
/// Delivers at once.
void Send_Message(QWidget* form, int number, qintptr w_param, qintptr l_param);

/// A page: embedded in a panel of another form, replaced by other pages.
class TForm : public QWidget {
  Q_OBJECT

 public:
  explicit TForm(QWidget* parent = nullptr);
  ~TForm() override;

  /// Asks FormCloseQuery; when that allows it, runs FormClose once, empties all references to the page, hides
  /// it, takes its menus out of the menu bar, and frees it when none of its handlers is on the stack, nor any
  /// modal form that one of them may be waiting for. False when closing was refused.
  bool Close_Form();
  bool Is_Closed() const { return closed; }
  /// Asks FormCloseQuery alone, upon which a page saves what it holds.
  bool Ask_Close() { return FormCloseQuery(); }
  /// Has a page that shows rows build them anew when the database has changed since they were shown, by
  /// whomever. Happens by itself when the page's window becomes active.
  void Look_At_Rows();
  /// Runs what changes the database and shows the change by itself, so that the rows need not be built anew
  /// for it, unless another program has changed something too.
  void Change_In_Place(const std::function<void()>& change);

 protected:
  /// To be called before rows of the database are read to be shown.
  void Rows_Are_Shown();
  /// Builds them anew and keeps what is selected.
  virtual void Rows_Changed() {}
  virtual bool FormCloseQuery() { return true; }
  virtual void FormClose() {}
  /// The page becomes, or ceases to be, the one shown.
  virtual void FormActivate() {}
  virtual void FormDeactivate() {}
  /// A message for this page; a closed page gets none. An exception that escapes is reported and goes no
  /// further.
  virtual void Handle_Message(const TMessage& /*message*/) {}

  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void hideEvent(QHideEvent* event) override;

 private:
  bool closed = false, active = false;
  std::optional<std::uint64_t> shown_rows;  // of which change number
};

/// A caller's reference to the page it owns; empty as soon as the page is closed, whoever closed it.
class TForm_Reference {
 public:
  TForm* Get() const { return form && !form->Is_Closed() ? form.data() : nullptr; }
  void Set(TForm* new_form) { form = new_form; }
  /// The page when it is of this class, otherwise null.
  template <class T>
  T* As() const {
    return qobject_cast<T*>(Get());
  }
  /// The page of this class: the one it holds, otherwise a new one in the place of the page it held, which is
  /// closed first. Null, and nothing is made, when that one refuses to close.
  template <class T>
  T* Reuse_Or_Replace() {
    if (T* page = As<T>()) return page;
    if (TForm* other = Get(); other && !other->Close_Form()) return nullptr;
    T* page = new T;
    Set(page);
    return page;
  }

 private:
  QPointer<TForm> form;
};

/// Parents a page and has it fill the parent, whose layout must be a box or none.
void Embed_Page(TForm* page, QWidget* parent);

/// Alive while a modal form runs: pages that are closed meanwhile are freed only after the last one has
/// ended, since a handler of theirs may wait for it.
class TModal_Scope {
 public:
  TModal_Scope();
  ~TModal_Scope();
  TModal_Scope(const TModal_Scope&) = delete;
  TModal_Scope& operator=(const TModal_Scope&) = delete;
};

/// False while something is open or going on that a page must not change its rows under: a dialog, a menu, a
/// click or drag.
bool Rows_May_Change();
/// Has every page of a window look at its rows, unless they may not change or a long step is going on.
void Look_At_Rows(QWidget* window);

/// Alive during a long step of a page: the hourglass is shown, and what the user types or clicks waits, but
/// for what is meant for a dialog. Pages that are closed meanwhile are freed afterwards.
class TBusy_Scope : private QObject {
 public:
  TBusy_Scope();
  ~TBusy_Scope() override;
  /// Repaints, handles what is due, and lets the user close windows. Whoever calls it looks whether its page
  /// is still open.
  void Service();
  /// Whether the user has pressed Escape meanwhile, which ends a step that can be stopped.
  bool Was_Escaped() const { return escaped; }

 private:
  bool eventFilter(QObject* receiver, QEvent* event) override;

  const TModal_Scope modal;
  bool escaped = false;
  std::vector<std::pair<QPointer<QObject>, std::unique_ptr<QEvent>>> waiting;
};

/// Runs what may open a modal form or a message, during which a form may be closed or even freed. True when
/// it is still there and, if it is a page, open.
bool Outlives(QWidget* form, const std::function<void()>& call);

/// An editor: modal, made for one call of its entry function. Enter presses its default button, Escape
/// leaves it.
class TDialog_Form : public QDialog {
  Q_OBJECT

 public:
  explicit TDialog_Form(QWidget* parent = nullptr);
  /// Whether it has been shown: handlers that make a sound stay silent before.
  bool Was_Shown() const { return shown; }
  int exec() override;
  /// Escape and the window's close: ask first when guarded inputs were changed.
  void reject() override;

 protected:
  /// Guards what the inputs hold now.
  void Guard_Inputs();
  /// Something else was changed, which no input shows.
  void Note_Change() {
    if (guarded) guarded = QString();
  }
  /// The cancel button: asks nothing.
  void Cancel_Form() { QDialog::reject(); }
  /// Runs once, when the dialog is shown for the first time.
  virtual void FormShow() {}
  virtual void Handle_Message(const TMessage& /*message*/) {}
  bool event(QEvent* event) override;
  void showEvent(QShowEvent* event) override;

 private:
  bool shown = false;
  std::optional<QString> guarded;
};

/// What all forms have in common: plain texts, accessible names taken from labels and captions where a
/// control has none, long halves of hints ("short|long") sent to the status bar and short halves as tool
/// tips.
void Initialise_Form(QWidget* form);
/// Gives a tool its hint: the short half names it, and also the buttons that show it, the long half, or the
/// whole, goes to the status bar.
void Set_Hint(QAction* tool, const QString& hint);
/// Answers umGetFormName: writes the form's name and its property "Tag" in decimal, 0 without one, into the
/// character buffer that the message's LParam points to.
void Copy_Form_Name(const TForm& form, const TMessage& message);
/// Answers it with another text.
void Answer_Form_Name(const QByteArray& name, const TMessage& message);
/// Centres a dialog over the window it belongs to, or on the screen, and keeps it on the screen.
void CentreForm(QWidget* form);
/// The nearest enclosing page, or null.
TForm* Get_ParentForm(QWidget* control);
/// The application's active window, for an entry function that is given none; while none is active, as just
/// after the start, the main one if it is shown. May be null.
QWidget* Active_Window();
/// The host's main window, which gets the settings commands; null until the host names it, and after its end.
QWidget* Main_Form();
void Install_Main_Form(QWidget* form);

/// Where pages merge their menus: before the action, or at the end without one. Null for no menu bar.
void Install_Menu_Bar(QMenuBar* bar, QAction* before);
/// Puts a page's menus into the main window's menu bar, those of any other page being taken out first. Does
/// nothing when they are there already. The page owns the menus.
void Merge_Menu(TForm* page, const QList<QMenu*>& menus);
/// Takes them out again; nothing happens when they are not in.
void Unmerge_Menu(const TForm* page);

/// Gives a control found by its name the focus, first making every page of a tab widget or stack around it
/// the current one. Selects the text of an input. Ignores an unknown name.
void Focus_Control(QWidget* form, const std::string& name);

/// Plays a .wav file once, without waiting for its end. False when this machine has no sound or there is no
/// such file; one that proves not to be playable gives the system's beep.
bool Play_Sound_File(const std::string& path);
/// Sounds the system's beep. False when this machine has nothing to play it on.
bool Message_Beep();

/// How the host opens its contacts; the empty one, as at the start, opens none.
struct TContact_Opener {
  std::function<bool(const std::string& contact)> Can_Open;
  std::function<void(const std::string& contact)> Open;
};
void Install_Contact_Opener(TContact_Opener opener);
/// Whether the host has something to show for the key: not every owner of entries is a contact.
bool Can_Open_Contact(const std::string& contact);
/// Does nothing for what cannot be opened.
void Open_Contact(const std::string& contact);

QString To_Qt(std::string_view text);
std::string From_Qt(const QString& text);

}  // namespace Kt_forms
