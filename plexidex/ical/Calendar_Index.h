#pragma once

// Where the components of a calendar file lie, and which of them belong together.

#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "Content_Lines.h"
#include "Digest.h"
#include "Import_Budget.h"

namespace Plexidex {

/// A component that stands directly in a calendar.
struct TIndexed_Component {
  std::uint64_t Offset = 0, Name = 0;  // in the file, and of its UID among the names
  std::uint32_t Length = 0, Name_Length = 0;
  std::uint32_t Line = 0;
  std::uint32_t Begun = 1;  // components that begin in it, itself included
  std::uint32_t Calendar = 0;
  TDigest Object;           // of the UID; without one, and for what is neither event nor task, of its own
  TDigest Content;          // without the time of its export
  bool Is_Used = false;     // is an event or a task
  bool Is_Endless = false;  // a rule of it has no end
  bool Depends_On_Zone = false;  // a time of it is not simply local
  std::vector<TDigest> Zones;    // the names of those that its times are in
};

/// Takes the lines of a calendar one by one, checks its structure, that every component ends where it should
/// and nothing stands outside a calendar, and notes its components.
class TCalendar_Index {
 public:
  /// `name` is how the file is called in messages.
  /// Refuses more components than the budget allows entries.
  TCalendar_Index(std::string name, const TImport_Budget& budget) : name(std::move(name)), budget(budget) {}

  /// Throws EImport_Error with the line.
  void Take(const TContent_Line& line);
  /// To be called after the last line. Throws EImport_Error.
  void End();

  /// Events, tasks and all else but time zones, in the order of the file; and the time zones.
  std::vector<TIndexed_Component> Components, Zones;
  /// As the component gives it, otherwise made of its content.
  std::string UID_Of(const TIndexed_Component& component) const;
  /// Differs with all that decides what becomes of the component: what it says, whether that is taken back,
  /// and what its zones are where only the file knows them.
  std::string Meaning_Of(const TIndexed_Component& component) const;
  /// Whether a calendar, by its number, takes back what it holds.
  std::vector<bool> Cancels;

 private:
  struct TOpen {
    std::string Name;
    std::size_t Line;
  };

  void Begin(const TContent_Line& line, const std::string& frame);
  void Close(const TContent_Line& line, std::string frame);
  void Note(const std::string& line);
  void Note_Zone(const std::string& line);
  std::string Innermost() const;
  void Damage(const char* what, const std::string& where) const;

  const std::string name;
  const TImport_Budget budget;
  std::vector<TOpen> open;
  bool any_text = false, any_calendar = false;
  TIndexed_Component current;
  std::string uid, zone_name, zone_location;
  std::map<TDigest, TDigest> defined;  // what the file says of zones that the system does not know, by name
  std::string names;                   // all UIDs, one after the other
};

}  // namespace Plexidex
