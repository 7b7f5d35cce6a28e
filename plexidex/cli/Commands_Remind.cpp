#include <chrono>
#include <set>
#include <thread>

#include "Alert_Watch.h"
#include "Commands_Run.h"
#include "Console_Text.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Plexidex {

int Run_Remind(const TConsole& console, bool once) {
  TAlert_Watch watch;
  std::set<std::pair<std::string, TDateTime>> told;  // also what could not be dismissed yet
  std::string trouble;
  const auto say = [&](const std::string& what) {
    if (what != trouble && !what.empty()) console.Err << what << '\n' << std::flush;
    trouble = what;
  };
  for (;;) {
    try {
      watch.Look();
      if (!watch.Is_Elsewhere()) {
        say({});
      } else if (!once) {
        say("Another program shows the reminders of this database now.");
      }
      for (const TAlert_Entry& entry : watch.Entries()) {
        if (told.emplace(entry.Key(), entry.Alert.Due).second)
          console.Out << Printable(Alert_Text(entry, Kt_util_01::Now())) << '\n';
      }
      // What was not told is not answered: a reader that is gone is told at the next time.
      if (!console.Out.flush()) return 1;
      const bool kept = watch.Entries().empty() || TAlert_Watch::Dismiss(watch.Entries());
      if (once) return kept ? 0 : 1;
    } catch (const Kt_data_01::EData_Error& e) {
      if (once) throw;
      say(std::string("The reminders cannot be read now: ") + e.what());
    }
    std::this_thread::sleep_for(std::chrono::milliseconds(watch.Wait()));
  }
}

}  // namespace Plexidex
