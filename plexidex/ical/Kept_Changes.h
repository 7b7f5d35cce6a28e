#pragma once

// Putting what was changed here into the text of imported components.

#include <cstdint>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include "Component.h"
#include "Component_Writer.h"
#include "File_Times.h"
#include "Kept_Text.h"

namespace Plexidex {

/// An imported calendar object: the components as they came, and what became of the events made of them.
struct TKept_Object {
  std::string UID;
  TDateTime Until = 0;  // the last day of endless rules, and the day of the import
  TDateTime Imported = 0;
  bool Cut = false;  // by the budget of the import, so that it had only its first date
  std::vector<TKept_Component> Parts;
  std::vector<std::vector<TStored_Event>> Events;  // by part
};

/// How moments are written: as days, in local time, where a zone is named that of the file, or in UTC.
struct TMoment_Form {
  enum class TKind { Day, Local, UTC };
  TKind Kind = TKind::Local;
  std::string Zone = {};
};

/// What is put into the components of one object. `part` is the one that a text was made of; what was not
/// changed is left as it is.
class TKept_Changes {
 public:
  struct TSource {
    const TKept_Object& Object;
    const std::vector<TComponent>& Components;  // of its parts, read
    const std::set<std::int64_t>& Done;         // as it was imported
    TZones& Zones;
  };
  /// The source must outlive this.
  explicit TKept_Changes(TSource source) : source(source) {}

  void Contents(TKept_Component& kept, const KTReminds::TEvent_Record& then,
                const KTReminds::TEvent_Record& now) const;
  void Alarm(TKept_Component& kept, std::size_t part, const KTReminds::TEvent_Record& now,
             const KTReminds::TAlarm& then, KTReminds::TAlarm alarm) const;
  /// The same where the dates are others than before: an alarm may hang on a moment that is no more.
  void Alarm_Anew(TKept_Component& kept, std::size_t part, const KTReminds::TEvent_Record& now,
                  const KTReminds::TAlarm& alarm) const;
  void Done(TKept_Component& kept, const std::vector<const TStored_Occurrence*>& occurrences,
            bool are_days) const;
  /// The end keeps its distance from the start; all-day events cover so many days.
  void Start(TKept_Component& kept, std::size_t part, bool all_day, TDateTime start, const TMoment_Form& form,
             int days = 1) const;
  /// All dates of an event, by a rule of our own where it recurs: then it may take further components.
  void Dates(TKept_Component& kept, std::size_t part, const TStored_Event& now,
             std::vector<TKept_Component>& further) const;
  void Rule(TKept_Component& kept, std::size_t part, const TStored_Event& now,
            std::vector<TKept_Component>& further) const;

  /// That of the start of a part; the other one for what it is now.
  TMoment_Form Form_Of(std::size_t part) const;
  TMoment_Form Form_Of(std::size_t part, const KTReminds::TEvent_Record& now) const;

 private:
  const TSource source;
};

/// Lines of properties.
std::string Lines_Of(const std::function<void(TLine_Writer&)>& write);
std::string UID_Lines(const std::string& uid);
std::string Moments(const std::string& name, const std::vector<TDateTime>& dates, const TMoment_Form& form);

/// Properties that say which dates a component has besides its start.
inline constexpr const char* Rule_Names[] = {"RRULE", "EXRULE", "RDATE", "EXDATE", "RECURRENCE-ID"};

/// Whether two records say the same in a file, whatever their dates and alarms.
bool Same_Contents(const KTReminds::TEvent_Record& one, const KTReminds::TEvent_Record& other);
/// How many days an event covers that is nothing but these days, with one alarm at its beginning; 0 for a
/// recurring one.
int Days_In_A_Row(const TStored_Event& event);
std::vector<const TStored_Occurrence*> All_Of(const TStored_Event& event);

}  // namespace Plexidex
