#include "Export_Entry.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "Export_Rule.h"
#include "Kt_util_01.h"
#include "Reminder_Utils.h"

namespace Plexidex {

using namespace Kt_util_01;

namespace {

constexpr int Status_Completed = 2;

std::string Stamp(TDateTime local) {
  return Moment_Text(Local_To_UTC(local), false) + "Z";
}

class TComponent_Writer {
 public:
  TComponent_Writer(const TStored_Entry& written, TCalendar_Lines& to, TExport_Report& told)
      : entry(written), lines(to), report(told), now(Stamp(Now())) {}

  void Write_Event() {
    const TStored_Occurrence& usual = Usual_Alarm();
    std::vector<TDateTime> dates, done;
    std::vector<const TStored_Occurrence*> others, doubles;
    for (const TStored_Occurrence& occurrence : entry.Occurrences) {
      if (!dates.empty() && dates.back() == occurrence.Date) {
        doubles.push_back(&occurrence);
        continue;
      }
      dates.push_back(occurrence.Date);
      if (occurrence.Done) done.push_back(occurrence.Date);
      if (!Same_Alarm(occurrence, usual)) others.push_back(&occurrence);
    }
    const TWritten_Dates written = Written_Dates(entry.Pattern, entry.FirstDate, dates, entry.AllDay);
    ++(dates.size() == 1 ? report.Events : written.Rule.empty() ? report.Dates : report.Rules);

    Begin("VEVENT", entry.UID);
    lines.Moment("DTSTART", written.Start, entry.AllDay);
    if (!written.Rule.empty()) lines.Raw("RRULE", written.Rule);
    lines.Moments("EXDATE", written.Missing, entry.AllDay);
    lines.Moments("RDATE", written.Further, entry.AllDay);
    Contents();
    Done(done);
    Alarm(usual, "TRIGGER");
    lines.End("VEVENT");

    for (const TStored_Occurrence* occurrence : others) {
      Begin("VEVENT", entry.UID);
      lines.Moment("RECURRENCE-ID", occurrence->Date, entry.AllDay);
      Single(*occurrence);
    }
    // A second occurrence at one moment is beyond the format's sets.
    for (const TStored_Occurrence* occurrence : doubles) {
      Begin("VEVENT", occurrence->Key);
      Single(*occurrence);
      ++report.Events;
    }
  }

  void Write_Tasks() {
    for (const TStored_Occurrence& occurrence : entry.Occurrences) {
      const bool is_first = &occurrence == &entry.Occurrences.front();
      Begin("VTODO", is_first ? entry.UID : occurrence.Key);
      lines.Moment("DTSTART", entry.FirstDate, true);
      lines.Moment("DUE", occurrence.Date, true);
      Contents();
      Progress();
      Alarm(occurrence, "TRIGGER;RELATED=END");
      lines.End("VTODO");
      ++report.Tasks;
    }
  }

 private:
  void Begin(const char* component, const std::string& uid) {
    lines.Begin(component);
    lines.Text("UID", uid);
    lines.Raw("DTSTAMP", now);
  }

  void Contents() {
    lines.Text("SUMMARY", entry.Title);
    lines.Text("LOCATION", entry.Location);
    lines.Text("DESCRIPTION", entry.Notes);
    if (entry.Priority >= 1 && entry.Priority <= 9) lines.Raw("PRIORITY", std::to_string(entry.Priority));
    if (entry.Private) lines.Raw("CLASS", "PRIVATE");
    if (entry.Activity >= 0) lines.Raw("X-PLEXIDEX-ACTIVITY", std::to_string(entry.Activity));
  }

  void Single(const TStored_Occurrence& occurrence) {
    lines.Moment("DTSTART", occurrence.Date, entry.AllDay);
    Contents();
    Done(occurrence.Done ? std::vector<TDateTime>{occurrence.Date} : std::vector<TDateTime>());
    Alarm(occurrence, "TRIGGER");
    lines.End("VEVENT");
  }

  void Done(const std::vector<TDateTime>& dates) {
    std::string list;
    for (const TDateTime date : dates) list += (list.empty() ? "" : ",") + Moment_Text(date, entry.AllDay);
    if (!list.empty()) lines.Raw("X-PLEXIDEX-DONE", list);
  }

  void Progress() {
    constexpr const char* words[] = {"NEEDS-ACTION", "IN-PROCESS", "COMPLETED",
                                     "IN-PROCESS",   "IN-PROCESS", "CANCELLED"};
    const auto number = [this](const char* name, std::int64_t value) {
      if (value != 0) lines.Raw(name, std::to_string(value));
    };
    if (entry.Status >= 0 && entry.Status <= 5) lines.Raw("STATUS", words[entry.Status]);
    if (entry.Status == 3 || entry.Status == 4) number("X-PLEXIDEX-STATUS", entry.Status);
    number("PERCENT-COMPLETE", entry.Percentage);
    // The middle of the day is on that day in most zones that may read it.
    if (entry.Status == Status_Completed && entry.Completed > 0) {
      lines.Raw("COMPLETED", Stamp(static_cast<TDateTime>(entry.Completed) + 0.5));
    }
    number("X-PLEXIDEX-STARTED", entry.Started);
    number("X-PLEXIDEX-BUDGET", entry.Budget);
    number("X-PLEXIDEX-WORKED", entry.Worked);
  }

  void Alarm(const TStored_Occurrence& occurrence, const char* trigger) {
    if (!occurrence.Alarm) return;
    lines.Begin("VALARM");
    lines.Raw("ACTION", "DISPLAY");
    lines.Text("DESCRIPTION", entry.Title.empty() ? "Reminder" : entry.Title);
    const bool before = occurrence.Offset >= 0;
    lines.Raw(trigger,
              (before ? "-PT" : "PT") + std::to_string(std::abs(std::int64_t{occurrence.Offset})) + "M");
    lines.Text("X-PLEXIDEX-SOUND", occurrence.Sound);
    lines.End("VALARM");
  }

  static auto Alarm_Of(const TStored_Occurrence& occurrence) {
    return std::tie(occurrence.Alarm, occurrence.Offset, occurrence.Sound);
  }
  static bool Same_Alarm(const TStored_Occurrence& a, const TStored_Occurrence& b) {
    return Alarm_Of(a) == Alarm_Of(b);
  }

  // An occurrence with the alarm that most of them have.
  const TStored_Occurrence& Usual_Alarm() const {
    std::map<std::tuple<bool, int, std::string>, std::size_t> counts;
    for (const TStored_Occurrence& occurrence : entry.Occurrences) ++counts[Alarm_Of(occurrence)];
    return *std::max_element(
        entry.Occurrences.begin(), entry.Occurrences.end(),
        [&](const auto& a, const auto& b) { return counts[Alarm_Of(a)] < counts[Alarm_Of(b)]; });
  }

  const TStored_Entry& entry;
  TCalendar_Lines& lines;
  TExport_Report& report;
  const std::string now;
};

}  // namespace

void Write_Entry(const TStored_Entry& entry, TCalendar_Lines& lines, TExport_Report& report) {
  TComponent_Writer writer(entry, lines, report);
  if (entry.EventType == KTReminds::Event_Type_Task) {
    writer.Write_Tasks();
  } else {
    writer.Write_Event();
  }
}

}  // namespace Plexidex
