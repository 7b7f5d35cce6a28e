#pragma once

// Recurrence rules of calendar files: their dates, and the pattern of ours that gives the same ones.

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "File_Times.h"
#include "Import_Budget.h"
#include "Recurrence.h"
#include "Rule_Walk.h"

namespace Plexidex {

/// A rule that cannot be followed; says why, as the end of a sentence about it.
class ERule_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The dates of one rule in the user's local time, in the order of their moments, without those excluded
/// elsewhere. Where a clock was changed, two moments may have one local time. A start that does not meet the
/// rule is not among them.
class TRule_Dates {
 public:
  /// `rule` is the text of the property. A rule without an end of its own ends with the day of `until`, but
  /// gives its first date in any case. Throws ERule_Error. The budget must outlive this.
  TRule_Dates(const std::string& rule, const TFile_Time& start, TDateTime until, TImport_Budget& budget);

  /// Nothing at the end. Throws ERule_Error when a date cannot be formed, and ELimit_Error.
  std::optional<TDateTime> Next();

 private:
  struct TFree {
    void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
  };

  std::optional<TDateTime> Next_Wall();
  std::int64_t Last_Day() const;
  bool Is_Beyond_End(TDateTime wall, TDateTime local) const;

  TFile_Time start;
  TDateTime until;
  icalrecurrencetype rule;
  TImport_Budget& budget;
  std::optional<TRule_Walk> walk;
  std::unique_ptr<icalrecur_iterator, TFree> iterator;  // of another calendar, instead of the walk
  std::int64_t walked = 0, given = 0;
  TDateTime last = 0;  // in the rule's own zone
};

struct TTranslated_Rule {
  bool Agrees = false;  // Pattern with First gives exactly the rule's dates, as creation writes them
  KTReminds::TRecurrence_Pattern Pattern;
  TDateTime First = 0, Last = 0;
  std::int64_t Count = 0;
};

/// Looks for a pattern that gives the dates of a rule, and reports each date on the way. Rules of a single
/// date agree with no pattern. Throws as TRule_Dates does.
TTranslated_Rule Translate_Rule(const std::string& rule, const TFile_Time& start, TDateTime until,
                                TImport_Budget& budget, const std::function<void(TDateTime)>& on_date);

/// Calls `on_date` for every date that creation writes for a set.
void Walk_Pattern(const KTReminds::TRecurrence_Pattern& pattern, TDateTime first,
                  const std::function<void(TDateTime)>& on_date);

}  // namespace Plexidex
