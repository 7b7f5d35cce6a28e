#pragma once

// The recurrence page of an editor as plain values, and the stored pattern it stands for.

#include <array>
#include <string>

#include "Recurrence.h"
#include "Refusal.h"

namespace KTReminds {

/// What the user sees of a pattern. Numbers are texts, as typed. All four pages are always filled, so that
/// changing the frequency shows a proposal.
struct TRecurrence_Pages {
  struct TKind {
    int Instance = 0;  // position in "first" .. "last"
    int Pattern = 0;   // position in "day", "weekday", "weekend day", "Sunday" .. "Saturday"
  };

  TFrequency Freq = TFrequency::Daily;
  TDateTime Until = 0;  // last day

  bool Daily_Every = true;  // every so many days, otherwise on the checked ones
  std::string Daily_Number = "1";
  std::array<bool, 7> Daily_Days{};  // Monday first

  std::string Weekly_Number = "1";
  std::array<bool, 7> Weekly_Days{};

  bool Monthly_Every = true;
  std::string Monthly_Number = "1", Monthly_Kind_Number = "1";
  TKind Monthly_Kind;

  bool Yearly_Every = true;
  std::string Yearly_Number = "1", Yearly_Kind_Number = "1";
  TKind Yearly_Kind;
  int Yearly_Month = 0;  // January first

  friend bool operator==(const TRecurrence_Pages&, const TRecurrence_Pages&);
};

/// Proposals for an entry on a date: daily, every 1, until one year on, if there is such a year; days,
/// instance, pattern and month are the date's.
TRecurrence_Pages Propose_Pages(TDateTime date);

/// Takes the monthly and yearly instance and pattern anew from a date, as when the user moves the entry.
void Follow_Date(TRecurrence_Pages& pages, TDateTime date);

/// The pages for a stored pattern; what it does not use, or an unknown frequency, is proposed from the
/// date.
TRecurrence_Pages Pages_From_Pattern(const TRecurrence_Pattern& pattern, TDateTime date);

/// The pattern that the page of the chosen frequency stands for. Whatever that page does not show is kept
/// from `stored`, so that pages nobody touched give the stored pattern back.
TRefusal Pattern_From_Pages(const TRecurrence_Pages& pages, const TRecurrence_Pattern& stored,
                            TRecurrence_Pattern& pattern);

}  // namespace KTReminds
