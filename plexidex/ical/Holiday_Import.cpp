#include "Holiday_Import.h"

#include <set>
#include <utility>

#include "File_Plan.h"
#include "Import_Update.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"
#include "Rule_Dates.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

using THolidays = std::set<std::pair<std::int64_t, std::string>>;  // day and name

void Add_Days(const TPlanned_Event& event, THolidays& holidays) {
  const auto add = [&](TDateTime date) {
    for (int i = 0; i < event.Days; ++i) holidays.emplace(Whole_Day(date) + i, event.Record.Title);
  };
  for (const TDateTime date : event.Extra) add(date);
  for (const TDateTime first : event.Dates) {
    Walk_Pattern(event.Record.Pattern, first, [&](TDateTime date) {
      const auto change = event.Changes.find(To_Msecs(date));
      if (change == event.Changes.end()) return add(date);
      if (!change->second.Deleted) add(change->second.To);
    });
  }
}

}  // namespace

THoliday_Report Import_Holidays(const std::string& file, const std::string& country,
                                const TImport_Options& options) {
  if (country.empty()) throw EImport_Error("Holidays need the name of their country; nothing was imported.");
  const TCalendar_File calendar(file, options.Progress);
  TPlan_Options plan;
  plan.Until = Import_Until(options);
  plan.Progress = options.Progress;
  TImport_Report planned;
  THolidays holidays;
  TFile_Plan(calendar, plan, planned).Run(nullptr, [&](const TPlanned_Object& object) {
    for (const TPlanned_Event& event : object.Events) {
      if (event.Is_Task()) {
        planned.Unused.push_back({event.Record.Title + " (" + object.UID + ")", "is a task, not a holiday"});
      } else {
        Add_Days(event, holidays);
      }
    }
  });

  THoliday_Report report;
  report.Read = planned.Read;
  report.Unused = std::move(planned.Unused);
  if (holidays.empty()) return report;
  Write_Import(file, [&] {
    TTable table("KT_Holidays", "CountryandDate");
    for (const auto& [day, name] : holidays) {
      const auto date = static_cast<TDateTime>(day);
      if (table.FindKey({country, date, name})) {
        ++report.Known;
        continue;
      }
      table.Insert();
      table.SetFields({date, name, country});
      PostUpdate(table);
      ++report.Added;
    }
  });
  return report;
}

}  // namespace Plexidex
