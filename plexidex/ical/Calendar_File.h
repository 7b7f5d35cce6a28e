#pragma once

#include <libical/ical.h>

#include <memory>
#include <string>
#include <vector>

#include "Import_Budget.h"
#include "Report.h"

namespace Plexidex {

/// A calendar file as a tree of components, read whole.
class TCalendar_File {
 public:
  /// Throws EImport_Error for a file that cannot be read, is too large, is not a calendar, holds more
  /// components than the budget allows entries, or has a damaged structure: a component without an end, or an
  /// end without a beginning.
  TCalendar_File(const std::string& file, const TImport_Budget& budget);

  /// Events, tasks and all else but time zones, in the order of the file, whichever calendar of it they are
  /// in.
  const std::vector<icalcomponent*>& Components() const { return components; }
  const std::vector<icalcomponent*>& Zones() const { return zones; }

 private:
  struct TFree {
    void operator()(icalcomponent* component) const { icalcomponent_free(component); }
  };

  void Add_Calendar(icalcomponent* calendar);

  std::unique_ptr<icalcomponent, TFree> root;
  std::vector<icalcomponent*> components, zones;
};

/// The structure of a calendar text: every component ends where it should, and nothing stands outside a
/// calendar or too deep inside of others. Throws EImport_Error with the line; `name` is how the file is
/// called in the message. Returns how many components begin.
std::size_t Check_Structure(const std::string& name, const std::string& text, const TImport_Budget& budget);

}  // namespace Plexidex
