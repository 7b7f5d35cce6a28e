#include <algorithm>
#include <cctype>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "Commands.h"
#include "Console_Prompts.h"
#include "Kt_util_01.h"
#include "Qt_Settings.h"
#include "Sheet_Output.h"
#include "User_Formats.h"
#include "Window_Program.h"

#if defined(__unix__) || defined(__APPLE__)
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace {

bool Errors_Go_To_A_Terminal() {
#if defined(__unix__) || defined(__APPLE__)
  return isatty(STDERR_FILENO) == 1;
#else
  return false;
#endif
}

// Whether all output has arrived. A reader that has seen enough and left is no failure.
bool Output_Is_Complete() {
  if (std::cout.flush()) return true;
  // The reason is asked for by writing again; what went wrong has left errno long ago.
  std::cout.clear();
  errno = 0;
  std::cout << '\n' << std::flush;
  if (errno == EPIPE) return true;
  std::cerr << "The output could not be written in full: "
            << (errno != 0 ? std::strerror(errno) : "unknown error") << ".\n";
  return false;
}

bool Is_File_To_Import(std::string name) {
  std::transform(name.begin(), name.end(), name.begin(), [](unsigned char c) { return std::tolower(c); });
  const bool is_known = name.ends_with(".ics") || name.ends_with(".vcf") || name.ends_with(".vcard");
  return is_known && name.front() != '-';
}

// Without a command the program opens its window. False when the arguments are those of the command line.
bool Wants_Window(const std::vector<std::string>& args, Plexidex::TWindow_Options& options) {
  for (std::size_t i = 0; i < args.size(); ++i) {
    std::string* value = args[i] == "--database"      ? &options.Database
                         : args[i] == "--user"        ? &options.User
                         : args[i] == "--screenshots" ? &options.Screenshots
                                                      : nullptr;
    if (args[i] == "--tray") {
      options.Hidden = true;
    } else if (value && i + 1 < args.size()) {
      *value = args[++i];
    } else if (Is_File_To_Import(args[i])) {
      options.Files.push_back(args[i]);
    } else {
      return false;
    }
  }
  return true;
}

// Beside the program, as where it is built, or where it is installed; "" when there is none.
std::string Sounds_Of(const char* program) {
  std::error_code error;
  std::filesystem::path file = std::filesystem::read_symlink("/proc/self/exe", error);
  if (error) file = std::filesystem::weakly_canonical(program, error);
  for (const char* place : {"sounds", "../share/plexidex/sounds"}) {
    const std::filesystem::path folder = std::filesystem::weakly_canonical(file.parent_path() / place, error);
    if (std::filesystem::is_directory(folder, error)) return folder.string();
  }
  return {};
}

}  // namespace

int main(int argc, char** argv) {
  std::ios::sync_with_stdio(false);
#if defined(__unix__) || defined(__APPLE__)
  // An import goes on when the reader of its report has left; a file that grows too large is an error.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);
  // What the program makes, from the database to its settings, is for the user alone.
  umask(S_IRWXG | S_IRWXO);
#endif
  Kt_util_01::Install_Locale("");
  Kt_util_01::Install_Sound_Folder(argc > 0 ? Sounds_Of(argv[0]) : "");
  const std::vector<std::string> args(argv + 1, argv + argc);
  if (Plexidex::TWindow_Options window; Wants_Window(args, window)) {
    if (Plexidex::Has_Display() || !window.Screenshots.empty())
      return Plexidex::Run_Window(argc, argv, window);
    std::cerr << "There is no display to open a window on; --help lists the commands.\n";
    return 1;
  }
  Kt_forms::TQt_Settings settings;
  Kt_util_01::Install_Settings(&settings);
  Kt_util_01::Apply_User_Formats();
  if (!settings.Damage().empty()) std::cerr << settings.Damage() << '\n';
  std::unique_ptr<Plexidex::TConsole_Progress> progress;
  if (Errors_Go_To_A_Terminal()) progress = std::make_unique<Plexidex::TConsole_Progress>(std::cerr);
  const int status =
      Plexidex::Run_Program(args, std::cout, std::cerr, progress.get(), &Plexidex::Write_Pdf_Without_Display);
  Kt_util_01::Install_Settings(nullptr);
  return Output_Is_Complete() ? status : 1;
}
