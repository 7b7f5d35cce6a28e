#pragma once

// One component of a calendar file as we understand it.

#include <libical/ical.h>

#include <optional>
#include <string>
#include <vector>

#include "File_Times.h"
#include "Planned.h"
#include "Report.h"

namespace Plexidex {

struct TComponent {
  icalcomponent* Ical = nullptr;  // not owned
  std::string UID;                // made from the content where the file gives none, or a very long one
  std::string What;               // for remarks: the title, and the UID; not long
  int Sequence = 0;
  bool Cancelled = false;

  bool Is_Task() const { return Content.Is_Task(); }

  bool Has_Start = false;
  TFile_Time Start;  // DTSTART; for tasks without one the due moment
  bool Has_Due = false;
  TFile_Time Due;
  bool Undated = false;  // a task that the file gives no date; it is due today
  TDateTime End = 0;     // in local time

  bool Has_Recurrence_Id = false;
  TFile_Time Recurrence_Id;
  bool And_Future = false;

  std::vector<std::string> Rules, Exclusion_Rules;
  std::vector<TFile_Time> Dates, Excluded;
  std::vector<TDateTime> Done;

  TPlanned_Content Content;
};

/// Only what identifies a component: Ical, its type, UID, What, Sequence and Has_Recurrence_Id. `uid` is its
/// UID, or what stands for one.
TComponent Identify(icalcomponent* component, const std::string& uid);

/// Fills in the rest. What is left out goes to the remarks.
void Read_Component(TComponent& component, TZones& zones, std::vector<TImport_Remark>& remarks);

/// The earliest alarm of a component that goes off no later than the start, or for a task on the due day.
KTReminds::TAlarm Read_Alarms(const TComponent& component, TZones& zones,
                              std::vector<TImport_Remark>& remarks);

/// The moment of a property of type date, date-time or period. Nothing when it has none. A zone that is not
/// known is remarked, and taken for the user's own.
std::optional<TFile_Time> Read_Time(icalproperty* property, TZones& zones, const std::string& what,
                                    std::vector<TImport_Remark>& remarks);

/// At most so many bytes of a text in UTF-8, and whole characters.
std::string Beginning_Of(const std::string& text, std::size_t most);
/// The text of a property as it is meant, in UTF-8.
std::string Text_Of(icalproperty* property);
/// The value of a property as it is written.
std::string Raw_Value(icalproperty* property);
/// Null when the component has no property of that name beginning with X-, in capitals.
icalproperty* Find_X_Property(icalcomponent* component, const char* name);

}  // namespace Plexidex
