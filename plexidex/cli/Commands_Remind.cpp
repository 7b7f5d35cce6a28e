#include <chrono>
#include <thread>

#include "Alert_Watch.h"
#include "Commands_Run.h"
#include "Console_Text.h"
#include "Kt_util_01.h"

namespace Plexidex {

int Run_Remind(const TConsole& console, bool once) {
  TAlert_Watch watch;
  for (bool said = false;;) {
    const bool looked = watch.Look();
    if (watch.Is_Elsewhere() && !said)
      console.Err << "Another program shows the reminders of this database now.\n" << std::flush;
    said = watch.Is_Elsewhere();
    if (looked && !watch.Entries().empty()) {
      for (const TAlert_Entry& entry : watch.Entries())
        console.Out << Printable(Alert_Text(entry, Kt_util_01::Now())) << '\n';
      // What was not told is not answered: a reader that is gone is told at the next time.
      if (!console.Out.flush() || !TAlert_Watch::Dismiss(watch.Entries())) return 1;
    }
    if (once) return 0;
    std::this_thread::sleep_for(std::chrono::milliseconds(watch.Wait()));
  }
}

}  // namespace Plexidex
