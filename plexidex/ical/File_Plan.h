#pragma once

// Planning a whole calendar file.

#include <functional>
#include <string>

#include "Calendar_File.h"
#include "Import_Budget.h"
#include "Kt_lists.h"
#include "Planned.h"
#include "Report.h"

namespace Plexidex {

struct TPlan_Options {
  TDateTime Until = 0;
  bool Until_Was_Given = false;
  Kt_data_01::TProgress_Bar* Progress = nullptr;
};

/// Plans the objects of a file one by one.
class TFile_Plan {
 public:
  /// File, budget and report must outlive the plan. What cannot be used goes to the report, which also counts
  /// what was read and what is unchanged. The budget's pulse moves the progress on.
  TFile_Plan(const TCalendar_File& file, const TPlan_Options& options, TImport_Budget& budget,
             TImport_Report& report);

  using TIs_Unchanged = std::function<bool(const std::string& uid, const std::string& digest)>;

  /// Whether an earlier import has brought all of the file as it is. Reads nothing but what says so.
  bool Is_Unchanged(const TIs_Unchanged& is_unchanged) const;
  /// Gives each object that is not unchanged, and that has something to write or to withdraw, to `take`.
  /// Throws EImport_Error for a component that cannot be read.
  void Run(const TIs_Unchanged& is_unchanged, const std::function<void(TPlanned_Object&)>& take);

 private:
  std::string Digest_Of_Cut(const std::string& digest) const;
  bool Is_Unchanged(const std::string& uid, const std::string& digest,
                    const TIs_Unchanged& is_unchanged) const;
  void Show_Objects() const;
  void Show(std::size_t object) const;
  std::string Digest(const std::vector<const TIndexed_Component*>& components) const;

  const TCalendar_File& file;
  const TPlan_Options options;
  TImport_Budget& budget;
  TImport_Report& report;
};

}  // namespace Plexidex
