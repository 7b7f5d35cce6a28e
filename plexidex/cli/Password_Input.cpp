#include "Password_Input.h"

#include <cerrno>
#include <cstring>
#include <limits>

#include "Commands_Run.h"
#include "Console_Text.h"
#include "Kt_util_01.h"

#if defined(__unix__) || defined(__APPLE__)
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>
#endif

namespace Plexidex {

using Kt_data_01::TSecret;

#if defined(__unix__) || defined(__APPLE__)

namespace {

// The user's terminal, wherever input and output of the program go, without echo and giving each key at once.
class TTerminal {
 public:
  TTerminal() : file(open("/dev/tty", O_RDWR | O_NOCTTY | O_CLOEXEC)) {
    if (file < 0 || tcgetattr(file, &before) != 0) {
      Close();
      throw ECommand_Error(
          "There is no terminal to ask for a password on; --password-fd names a file descriptor to read it "
          "from.");
    }
    termios quiet = before;
    quiet.c_lflag &= ~static_cast<tcflag_t>(ECHO | ECHONL | ICANON | ISIG);
    quiet.c_cc[VMIN] = 1;
    quiet.c_cc[VTIME] = 0;
    tcsetattr(file, TCSAFLUSH, &quiet);
  }
  ~TTerminal() {
    tcsetattr(file, TCSAFLUSH, &before);
    Close();
  }
  TTerminal(const TTerminal&) = delete;
  TTerminal& operator=(const TTerminal&) = delete;

  TSecret Ask(const std::string& prompt) const {
    constexpr char backspace = '\b', erase = 127, stop = 3, end = 4, kill_line = 21;
    Show(prompt);
    TSecret typed;
    for (char key = 0;;) {
      if (read(file, &key, 1) != 1 || key == stop || key == end || key == '\n' || key == '\r') {
        Show("\n");
        if (key != '\n' && key != '\r') throw ECommand_Error("No password was given.");
        return typed;
      }
      if (key == kill_line) {
        typed = TSecret();
      } else if (key == backspace || key == erase) {
        typed.Remove_Last();
      } else {
        typed.Add(key);
      }
    }
  }

 private:
  void Close() const {
    if (file >= 0) close(file);
  }
  void Show(const std::string& text) const {
    if (write(file, text.data(), text.size()) < 0) return;
  }

  const int file;
  termios before{};
};

TSecret Read_Line(const std::string& descriptor) {
  std::int64_t number = 0;
  if (!Kt_util_01::Str2Int(descriptor, number) || number < 0 || number > std::numeric_limits<int>::max())
    throw ECommand_Error("--password-fd: \"" + descriptor + "\" is not the number of a file descriptor.");
  TSecret line;
  ssize_t got = 0;
  bool any = false;
  for (char byte = 0; (got = read(static_cast<int>(number), &byte, 1)) == 1; any = true) {
    if (byte == '\n') return line;
    if (byte != '\r') line.Add(byte);
  }
  if (got < 0)
    throw ECommand_Error("The file descriptor " + descriptor + " cannot be read: " + std::strerror(errno) +
                         ".");
  if (!any) throw ECommand_Error("The file descriptor " + descriptor + " gives no password.");
  return line;
}

}  // namespace

TSecret TPassword_Input::Read(const std::string& prompt) const {
  return descriptor.empty() ? TTerminal().Ask(prompt) : Read_Line(descriptor);
}

#else

TSecret TPassword_Input::Read(const std::string& /*prompt*/) const {
  throw ECommand_Error("Passwords can be given in the window only on this system.");
}

#endif

TSecret TPassword_Input::Read_New(const std::string& user) const {
  TSecret password = Read("New password of " + Printable(user) + ": ");
  if (const std::string fault = Kt_data_01::Password_Fault(password); !fault.empty())
    throw ECommand_Error(fault);
  if (descriptor.empty() && !(Read("The same again: ") == password))
    throw ECommand_Error("The two passwords differ; nothing was changed.");
  return password;
}

}  // namespace Plexidex
