#pragma once

#include <QElapsedTimer>
#include <QString>
#include <QWidget>
#include <functional>
#include <ostream>

/// Acts on the dialog that the running call opens, from inside its modal loop. A dialog that does not come,
/// or is still there when the time is up, fails the running test and is rejected, so that no test hangs.
class TModal_Driver : public QObject {
 public:
  explicit TModal_Driver(std::function<void(QWidget*)> act);
  ~TModal_Driver() override;

 private:
  void Look();
  void Look_Later();

  const std::function<void(QWidget*)> act;
  QElapsedTimer since;
  bool acted = false;
};

/// Makes a call and acts on the dialog that it opens; what the call gives.
template <class TCall>
auto With_Dialog(std::function<void(QWidget*)> act, TCall call) {
  const TModal_Driver driver(std::move(act));
  return call();
}

/// A control by its name; fails the running test and throws when there is none.
template <class T>
T* Control(QWidget* form, const char* name) {
  T* found = form->findChild<T*>(QString::fromLatin1(name));
  if (!found) throw std::runtime_error(std::string("there is no control ") + name);
  return found;
}

/// Acts on controls in turn as a hand does: "Edit1=Lunch|EventDate=2024-01-15|OKBtn" types over a text
/// or a date, which it leaves then, chooses an item ("" for none) or a tab (by its number), clicks all else,
/// and gives the commands of menus.
void Act(QWidget* form, const std::string& inputs);
void Confirm(QWidget* dialog);
void Cancel(QWidget* dialog);
/// For a dialog: acts on its controls and confirms.
std::function<void(QWidget*)> Confirm_With(const std::string& inputs);

/// What controls and commands show, with | between: a text, + or - for what can be checked, "hidden", and in
/// brackets what cannot be changed or given. Their names stand with blanks between.
std::string Seen(QWidget* form, const char* names);
/// The same after acting on controls.
std::string Seen_After(const std::string& inputs, QWidget* form, const char* names);

/// Runs what is due, deferred deletions included.
void Settle();

inline void PrintTo(const QString& text, std::ostream* stream) {
  *stream << '"' << text.toStdString() << '"';
}
