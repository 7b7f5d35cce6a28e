#pragma once

// Moments of a calendar file and the zones they are given in.

#include <libical/ical.h>

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Calendar_File.h"
#include "Kt_dates.h"

namespace Plexidex {

using Kt_util_01::TDateTime;

/// The time zone of a moment in a file.
class TZone {
 public:
  /// The user's own: nothing is converted.
  TZone() = default;
  static TZone UTC();
  /// A zone that the system knows by its IANA name.
  static TZone Named(const std::string& name);
  /// As a component of a file defines it; nothing for an invalid definition.
  static std::optional<TZone> Defined(icalcomponent* definition);

  /// Whether it is the user's own.
  bool Is_Local() const { return kind == TKind::Local; }
  /// The user's local time at a wall time of this zone.
  TDateTime To_Local(TDateTime wall) const;

 private:
  enum class TKind { Local, UTC, Named, Defined };
  struct TFree {
    void operator()(icaltimezone* zone) const { icaltimezone_free(zone, 1); }
  };

  TKind kind = TKind::Local;
  std::string name;
  std::shared_ptr<icaltimezone> defined;
};

/// A date or moment as a file gives it.
struct TFile_Time {
  TDateTime Wall = 0;
  bool Is_Date = false;
  TZone Zone;

  TDateTime Local() const { return Is_Date ? Wall : Zone.To_Local(Wall); }
};

/// The zones that a file's moments can name.
class TZones {
 public:
  /// The definitions must outlive this.
  explicit TZones(const std::vector<TRead_Component>& definitions);

  /// Null for a name that neither the file nor the system defines.
  const TZone* Find(const std::string& tzid);

 private:
  std::map<std::string, icalcomponent*> definitions;
  int defined = 0;  // that were looked up; those after the first hundred count as not known
  std::map<std::string, std::optional<TZone>> found;
};

/// Whether a name means a zone of the system, whatever a file defines by it.
bool Is_System_Zone(const std::string& tzid);
/// By which moments refer to a time zone's definition.
std::string Zone_Name(icalcomponent* definition);

/// Nothing for a date that does not exist, or lies outside the years 1 to 9999.
std::optional<TDateTime> Read_Wall_Time(const icaltimetype& time);
icaltimetype Floating_Time(TDateTime wall, bool is_date);

/// Whether a date-time can be formed of this value.
bool In_Date_Range(TDateTime value);

}  // namespace Plexidex
