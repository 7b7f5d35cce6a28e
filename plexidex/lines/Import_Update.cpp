#include "Import_Update.h"

#include <algorithm>

#include "Kt_update.h"
#include "Kt_util_01.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

constexpr int Default_Years = 10;

}  // namespace

TImport_Budget Import_Budget(const TImport_Options& options) {
  TImport_Budget budget(options.Most_Entries);
  if (!options.How_To_Raise.empty()) budget.How_To_Raise = options.How_To_Raise;
  return budget;
}

TDateTime Import_Until(const TImport_Options& options) {
  if (options.Has_Until) return options.Until;
  const TDate_Parts today = Decode_Date(Today());
  const int year = std::min(today.Year + Default_Years, Max_Year);
  return static_cast<TDateTime>(
      Day_From_Date(year, today.Month, std::min(today.Day, Days_In_Month(year, today.Month))));
}

void Write_Import(const std::string& file, const std::function<void()>& write) {
  const std::string nothing = "Nothing was imported from \"" + file + "\": ";
  std::exception_ptr ended;
  const TUpdate_Result result = Update_Unreported([&] {
    try {
      write();
    } catch (const EData_Error&) {
      throw;
    } catch (const EAlready_Reported&) {
      throw;
    } catch (...) {
      ended = std::current_exception();
      throw;
    }
  });
  if (ended) std::rethrow_exception(ended);
  if (result.End == TUpdate_Result::TEnd::Refused)
    throw EImport_Error(nothing + "the database cannot be changed now.");
  if (!result) throw EImport_Error(nothing + result.Reason + ".");
}

void Run_Import(const std::string& file, bool is_unchanged, const std::function<void()>& choose_book,
                const std::function<void()>& run) {
  if (is_unchanged) return run();
  Write_Import(file, [&] {
    choose_book();
    run();
  });
}

}  // namespace Plexidex
