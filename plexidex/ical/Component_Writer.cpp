#include "Component_Writer.h"

#include <algorithm>
#include <map>
#include <tuple>

#include "Kt_util_01.h"
#include "Rule_Text.h"

namespace Plexidex {

using namespace Kt_util_01;
using KTReminds::TEvent_Record;
using KTReminds::TTask_Status;

namespace {

std::string Stamp(TDateTime local) {
  return Moment_Text(Local_To_UTC(local), false) + "Z";
}

using TTold = std::tuple<bool, int, std::string>;

TTold Told_Of(const KTReminds::TAlarm& alarm) {
  return alarm.On ? TTold(true, alarm.Offset, alarm.WAVFile) : TTold();
}

void Write_Progress(const KTReminds::TTask_Progress& progress, TLine_Writer& lines) {
  constexpr const char* words[] = {"NEEDS-ACTION", "IN-PROCESS", "COMPLETED",
                                   "IN-PROCESS",   "IN-PROCESS", "CANCELLED"};
  const auto number = [&lines](const char* name, std::int64_t value) {
    if (value != 0) lines.Raw(name, std::to_string(value));
  };
  const int status = static_cast<int>(progress.Status);
  if (status >= 0 && status < static_cast<int>(std::size(words))) lines.Raw("STATUS", words[status]);
  if (progress.Status == TTask_Status::Pending || progress.Status == TTask_Status::Postponed)
    number("X-PLEXIDEX-STATUS", status);
  number("PERCENT-COMPLETE", progress.Percentage);
  // The middle of the day is on that day in most zones that may read it.
  if (progress.Status == TTask_Status::Completed && progress.Completed > 0) {
    lines.Raw("COMPLETED", Stamp(static_cast<TDateTime>(progress.Completed) + 0.5));
  }
  number("X-PLEXIDEX-STARTED", progress.Started);
  number("X-PLEXIDEX-BUDGET", progress.Budget);
  number("X-PLEXIDEX-WORKED", progress.Worked);
}

}  // namespace

bool Tell_The_Same(const KTReminds::TAlarm& one, const KTReminds::TAlarm& other) {
  return Told_Of(one) == Told_Of(other);
}

const KTReminds::TAlarm& Usual_Alarm(const TStored_Event& event) {
  std::map<TTold, std::size_t> counts;
  for (const TStored_Occurrence& occurrence : event.Occurrences) ++counts[Told_Of(occurrence.Alarm)];
  const auto count_of = [&counts](const TStored_Occurrence& o) { return counts[Told_Of(o.Alarm)]; };
  return std::max_element(event.Occurrences.begin(), event.Occurrences.end(),
                          [&](const auto& a, const auto& b) { return count_of(a) < count_of(b); })
      ->Alarm;
}

void Write_Contents(const TEvent_Record& record, TLine_Writer& lines) {
  lines.Text("SUMMARY", record.Title);
  lines.Text("LOCATION", record.Location);
  lines.Text("DESCRIPTION", record.Notes);
  if (record.Priority >= 1 && record.Priority <= 9) lines.Raw("PRIORITY", std::to_string(record.Priority));
  if (record.Private) lines.Raw("CLASS", "PRIVATE");
  if (record.Activity >= 0) lines.Raw("X-PLEXIDEX-ACTIVITY", std::to_string(record.Activity));
  if (record.EventType == Kt_data_01::TEntry_Type::Task) Write_Progress(record.Progress, lines);
}

void Write_Alarm(const TEvent_Record& record, const KTReminds::TAlarm& alarm, TLine_Writer& lines) {
  if (!alarm.On) return;
  lines.Begin("VALARM");
  lines.Raw("ACTION", "DISPLAY");
  lines.Text("DESCRIPTION", record.Title.empty() ? "Reminder" : record.Title);
  const bool before = alarm.Offset >= 0;
  lines.Raw(record.EventType == Kt_data_01::TEntry_Type::Task ? "TRIGGER;RELATED=END" : "TRIGGER",
            (before ? "-PT" : "PT") + std::to_string(std::abs(std::int64_t{alarm.Offset})) + "M");
  lines.Text("X-PLEXIDEX-SOUND", alarm.WAVFile);
  lines.End("VALARM");
}

void Write_Done(const std::vector<TDateTime>& dates, bool are_days, TLine_Writer& lines) {
  std::string list;
  for (const TDateTime date : dates) list += (list.empty() ? "" : ",") + Moment_Text(date, are_days);
  if (!list.empty()) lines.Raw("X-PLEXIDEX-DONE", list);
}

std::string Time_Stamp() {
  return Stamp(Now());
}

namespace {

class TComponent_Writer {
 public:
  TComponent_Writer(const TStored_Event& event, TLine_Writer& lines, TExport_Report& report)
      : event(event), record(event.Record), lines(lines), report(report), now(Time_Stamp()) {}

  void Write_Event() {
    const KTReminds::TAlarm& usual = Usual_Alarm(event);
    std::vector<TDateTime> dates, done;
    std::vector<const TStored_Occurrence*> others, doubles;
    for (const TStored_Occurrence& occurrence : event.Occurrences) {
      if (!dates.empty() && dates.back() == occurrence.EventDate) {
        doubles.push_back(&occurrence);
        continue;
      }
      dates.push_back(occurrence.EventDate);
      if (occurrence.Actioned) done.push_back(occurrence.EventDate);
      if (!Tell_The_Same(occurrence.Alarm, usual)) others.push_back(&occurrence);
    }
    const TWritten_Dates written = Written_Dates(record.Pattern, record.FirstDate, dates, record.AllDay);
    ++(dates.size() == 1 ? report.Events : written.Rule.empty() ? report.Dates : report.Rules);

    Begin("VEVENT", event.UID);
    lines.Moment("DTSTART", written.Start, record.AllDay);
    if (!written.Rule.empty()) lines.Raw("RRULE", written.Rule);
    lines.Moments("EXDATE", written.Missing, record.AllDay);
    lines.Moments("RDATE", written.Further, record.AllDay);
    Write_Contents(record, lines);
    Write_Done(done, record.AllDay, lines);
    Write_Alarm(record, usual, lines);
    lines.End("VEVENT");

    for (const TStored_Occurrence* occurrence : others) {
      Begin("VEVENT", event.UID);
      lines.Moment("RECURRENCE-ID", occurrence->EventDate, record.AllDay);
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
    for (const TStored_Occurrence& occurrence : event.Occurrences) {
      const bool is_first = &occurrence == &event.Occurrences.front();
      Begin("VTODO", is_first ? event.UID : occurrence.Key);
      lines.Moment("DTSTART", record.FirstDate, true);
      lines.Moment("DUE", occurrence.EventDate, true);
      Write_Contents(record, lines);
      Write_Alarm(record, occurrence.Alarm, lines);
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

  void Single(const TStored_Occurrence& occurrence) {
    lines.Moment("DTSTART", occurrence.EventDate, record.AllDay);
    Write_Contents(record, lines);
    if (occurrence.Actioned) Write_Done({occurrence.EventDate}, record.AllDay, lines);
    Write_Alarm(record, occurrence.Alarm, lines);
    lines.End("VEVENT");
  }

  const TStored_Event& event;
  const KTReminds::TEvent_Record& record;
  TLine_Writer& lines;
  TExport_Report& report;
  const std::string now;
};

}  // namespace

void Write_Components(const TStored_Event& event, TLine_Writer& lines, TExport_Report& report) {
  TComponent_Writer writer(event, lines, report);
  if (event.Record.EventType == Kt_data_01::TEntry_Type::Task) {
    writer.Write_Tasks();
  } else {
    writer.Write_Event();
  }
}

}  // namespace Plexidex
