#pragma once

#include <QLineEdit>
#include <functional>
#include <string>

#include "Host_Dialog.h"
#include "Passwords.h"

namespace Plexidex {

/// An input that does not show what is typed, by its name.
QLineEdit* New_Password_Input(const char* name);
/// What is typed into it; the input is empty then, and the memory wiped as far as it can be reached.
Kt_data_01::TSecret Take_Secret(QLineEdit* input);
/// Runs what hashes a password, which takes a while: shows the hourglass. False when it failed, which has
/// been reported with the tag.
bool Run_With_Hourglass(const char* tag, const std::function<void()>& body);

/// The two inputs in which a new password is typed.
class TNew_Password {
 public:
  explicit TNew_Password(QFormLayout* form);
  bool Is_Empty() const { return password->text().isEmpty() && again->text().isEmpty(); }
  /// Empties the inputs, and hashes what was typed. Says why it cannot be a password, or "".
  std::string Take(std::string& hash);
  QLineEdit* Input() const { return password; }

 private:
  QLineEdit *password, *again;
};

}  // namespace Plexidex
