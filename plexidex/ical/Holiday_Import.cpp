#include "Holiday_Import.h"

#include <set>
#include <utility>

#include "File_Plan.h"
#include "Import_Update.h"
#include "Kt_data_01.h"
#include "Kt_util_01.h"
#include "Rights.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

using THolidays = std::set<std::pair<std::int64_t, std::string>>;  // day and name

}  // namespace

THoliday_Report Import_Holidays(const std::string& file, const std::string& country,
                                const TImport_Options& options) {
  if (country.empty()) throw EImport_Error("Holidays need the name of their country; nothing was imported.");
  if (!Access_Allowed(Whole_Database, Access_Create))
    throw EImport_Error("You may not add holidays to the database; nothing was imported.");
  TImport_Budget budget = Import_Budget(options);
  const TCalendar_File calendar(file, budget, options.Progress);
  TPlan_Options plan;
  plan.Until = Import_Until(options);
  plan.Progress = options.Progress;
  TImport_Report planned;
  THolidays holidays;
  std::vector<TImport_Remark> left_out;
  TFile_Plan(calendar, plan, budget, planned).Run(nullptr, [&](const TPlanned_Object& object) {
    if (object.Cut && !object.Events.empty() && !object.Events.front().Is_Task()) {
      left_out.insert(left_out.end(), planned.Left_Out.begin(), planned.Left_Out.end());
    }
    planned.Left_Out.clear();  // how events are written is nothing to holidays
    for (const TPlanned_Event& event : object.Events) {
      if (event.Is_Task()) {
        planned.Unused.push_back({event.Record.Title + " (" + object.UID + ")", "is a task, not a holiday"});
      } else {
        for (const TPlanned_Occurrence& day : event.Occurrences())
          holidays.emplace(Whole_Day(day.Date), event.Record.Title);
      }
    }
  });

  THoliday_Report report;
  report.Read = planned.Read;
  report.Unused = std::move(planned.Unused);
  report.Left_Out = std::move(left_out);
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
