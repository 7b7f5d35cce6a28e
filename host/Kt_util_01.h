#pragma once

// KTUTIL01: what the calendar module asks of its host besides data. Everything runs on one thread.

#include <array>
#include <cstdint>
#include <map>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "Kt_dates.h"

namespace Kt_util_01 {

/// An invalid date: a day that does not exist in its month, or a year outside 1..9999.
class EConvert_Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// ---- dates ---------------------------------------------------------------------------------------------

/// Midnight of a date. Throws EConvert_Error when the date does not exist.
TDateTime Encode_Date(int year, int month, int day);
/// A fraction of a day. Throws EConvert_Error outside 00:00:00.000 .. 23:59:59.999.
TDateTime Encode_Time(int hour, int minute, int second, int msec);
TDateTime SubtractMins(TDateTime value, std::int64_t minutes);
TDateTime SubtractSecs(TDateTime value, std::int64_t seconds);
/// Whole days from the day of `from` to the day of `to`; negative when `to` lies before.
std::int64_t TimeApartInDays(TDateTime from, TDateTime to);
/// Minutes from the alarm to the reference, rounded towards zero; negative when the alarm is later.
std::int64_t Get_Alarm_Offset(TDateTime reference, TDateTime alarm);

/// -1, 0 or 1, by whole milliseconds as To_Msecs rounds them: an order that sorting may rely on.
int CompareDates(TDateTime a, TDateTime b);
int CompareInteger(std::int64_t a, std::int64_t b);
/// false sorts before true.
int CompareBool(bool a, bool b);

// ---- the user's formats --------------------------------------------------------------------------------

/// How the user writes dates, times and numbers. Patterns are those of FormatDateTime.
struct TFormat_Settings {
  std::string ShortDateFormat = "yyyy-MM-dd";  // letters of either case; "/" stands for DateSeparator
  std::string LongDateFormat = "dddd, d mmmm yyyy";
  std::string ShortTimeFormat = "hh:nn";  // ":" stands for TimeSeparator
  std::string LongTimeFormat = "hh:nn:ss";
  std::string DateSeparator = "-";
  std::string TimeSeparator = ":";
  std::string TimeAMString = "AM";
  std::string TimePMString = "PM";
  std::string DecimalSeparator = ".";
  std::string ThousandSeparator = ",";
  std::array<std::string, 12> ShortMonthNames, LongMonthNames;  // January first
  std::array<std::string, 7> ShortDayNames, LongDayNames;       // Sunday first
  int FirstDayOfWeek = 2;                                       // 1 Sunday .. 7 Saturday
};

/// Fills the settings from a locale such as "de_DE"; "" takes the environment's, "C" and "POSIX" give ISO
/// dates and 24-hour times. An unknown name falls back the same way. Texts are UTF-8 without direction marks.
TFormat_Settings Settings_From_Locale(const std::string& locale);
/// Makes a locale the user's: formats, comparison and upper-casing. Until the first call it is the
/// environment's.
void Install_Locale(const std::string& locale);
const TFormat_Settings& Format_Settings();

/// Renders by a pattern: d, dd, ddd, dddd (names), ddddd (short date), dddddd (long date), m, mm, mmm, mmmm,
/// yy, yyyy, h, hh, n, nn, s, ss, z, zzz, t (short time), tt (long time), am/pm and a/p (in the letters of
/// the pattern), ampm (in the user's words), c (short date, and long time unless it is midnight), "/" and ":"
/// as the user's separators, texts in double or single quotes as they stand. Letters of either case. m and mm
/// as the field after an hour are minutes; an hour is of 12 when the pattern has AM or PM anywhere. Other
/// characters, blanks included, stand for themselves. Never fails; a value outside the years 1..9999 gives an
/// empty text.
std::string FormatDateTime(std::string_view format, TDateTime value,
                           const TFormat_Settings& settings = Format_Settings());

/// A pattern as users know it from their platform, as in dd/MM/yyyy, HH:mm or h:mm AP, with the user's
/// separators and years of four digits; letters that stand for themselves are in single quotes.
std::string Shown_Format(std::string_view pattern, const TFormat_Settings& settings = Format_Settings());

/// Reads a date in the user's short date order: any separators or, with two digits for day and month, none,
/// month names in the user's language, and yyyy-mm-dd whatever the locale; also the user's long date.
/// Digits may be of any script. Two-digit years lie within 50 years before and 49 after the current one; no
/// year means the current one. False leaves `value` unchanged. Never throws; nothing may follow but blanks,
/// and a dot where dots separate.
bool Str2Date(std::string_view text, TDateTime& value, const TFormat_Settings& settings = Format_Settings());
/// Reads a time of day: h, h:mm, h:mm:ss, with the user's separator, ":" or ".", and AM or PM in the user's
/// or the English form, before or after it; also hmm and hhmm. False leaves `value` unchanged.
bool Str2Time(std::string_view text, TDateTime& value, const TFormat_Settings& settings = Format_Settings());
/// A date, optionally followed by a blank or "T" and a time.
bool Str2DateTime(std::string_view text, TDateTime& value,
                  const TFormat_Settings& settings = Format_Settings());
/// Reads a whole number: blanks around it, a sign, digits; no separators. False on anything else and on
/// overflow.
bool Str2Int(std::string_view text, std::int64_t& value);
/// Reads a number with the user's decimal separator, without exponent or thousands. False on anything else
/// and when it is too large.
bool Str2Float(std::string_view text, double& value, const TFormat_Settings& settings = Format_Settings());

/// yyyy-mm-ddThh:mm:ss; empty outside the years 1..9999.
std::string ISO_DateTime(TDateTime value);

// ---- texts ---------------------------------------------------------------------------------------------

/// Case-insensitive comparison under the user's locale: -1, 0 or 1.
int CompareText(std::string_view a, std::string_view b);
/// A byte string whose order is the order of CompareText: sort by these instead of comparing texts over and
/// over.
std::string Sort_Key(std::string_view text);
/// Full upper-casing under the user's locale; a text may grow ("ß").
std::string UpperCase(std::string_view text);
/// Upper-cases each code point that has a one-to-one counterpart and leaves the others, so lengths in code
/// points never change.
std::string Simple_UpperCase(std::string_view text);
/// The text as valid UTF-8: unchanged when it is, otherwise read as Windows-1252.
std::string Valid_UTF8(std::string_view text);
/// Columns a terminal needs for the text: wide characters take two, combining marks none.
int Display_Width(std::string_view text);

/// A fresh globally unique identifier in text form, 36 characters, lower case: UUID version 7 (RFC 9562), so
/// keys made later sort later, also within one millisecond of one process.
std::string Get_GUID();

// ---- the user and the clock ----------------------------------------------------------------------------

/// Key of the current user; set by the data package when a database is opened.
const std::string& User_Key();
void Set_User_Key(const std::string& key);

/// The date that all calendar pages show; 0 until the host sets it.
extern TDateTime CurrentDate;

class TClock {
 public:
  virtual ~TClock() = default;
  virtual TDateTime Now() = 0;
};

/// Replaces the clock, which is not owned. Null restores the system clock.
void Install_Clock(TClock* clock);
TDateTime Now();
/// Midnight of the current day.
TDateTime Today();

/// The user's time zone as an IANA name such as "Europe/Berlin". Never empty.
std::string Time_Zone();
/// Replaces the time zone; "" restores the system's. False, and no change, for a name that is unknown.
bool Install_Time_Zone(const std::string& name);
/// Takes over a zone that the system has got meanwhile, as on a journey, unless one was named.
void Follow_Time_Zone();
/// Converts by the user's time zone. A local time in a gap is read as the later one, an ambiguous one as the
/// first.
TDateTime UTC_To_Local(TDateTime utc);
TDateTime Local_To_UTC(TDateTime local);
/// The user's local time of a local time in any IANA zone; false when the zone is unknown.
bool Zone_To_Local(const std::string& zone, TDateTime value, TDateTime& local);

/// What a journal entry can be recorded as. Codes are stored: never renumber.
struct TActivity {
  int Code;
  std::string Name;
};
/// All activities, in the order in which lists show them.
const std::vector<TActivity>& Populate_Activities();

/// Whether the user wants completed entries struck through; a preference, on unless switched off.
bool UseCompleteStyle();

// ---- prompts, sounds, settings: seams that a host or a test replaces -------------------------------------

inline constexpr int Answer_Yes = 6;
inline constexpr int Answer_No = 7;

class TPrompts {
 public:
  virtual ~TPrompts() = default;
  virtual void Error(const std::string& caption, const std::string& text) = 0;
  virtual void Info(const std::string& caption, const std::string& text) = 0;
  /// Answer_Yes or Answer_No.
  virtual int Question(const std::string& caption, const std::string& text) = 0;
  /// Something the user should know but need not answer.
  virtual void Notice(const std::string& text) = 0;
};

/// Not owned; null restores the default, which writes one line to standard error and answers No.
void Install_Prompts(TPrompts* prompts);
/// Installs the question whether an update bracket is open; no prompt may be shown inside one (asserted).
void Install_Bracket_Check(bool (*bracket_is_open)());
void Raise_Error(const std::string& caption, const std::string& text);
void Raise_Info(const std::string& caption, const std::string& text);
int Raise_Question(const std::string& caption, const std::string& text);
void Raise_Notice(const std::string& text);

class TSounds {
 public:
  virtual ~TSounds() = default;
  /// 1 cleared, 2 opened, 3 set, 5 refused.
  virtual void Play(int number) = 0;
};

/// Not owned; null restores the default, which is silent.
void Install_Sounds(TSounds* sounds);
void Sound(int number);

/// The system's folder of .wav files, from which alarms choose their sound when they have none yet. "" until
/// a host names one.
const std::string& Sound_Folder();
void Install_Sound_Folder(const std::string& folder);

class TSettings_Store {
 public:
  virtual ~TSettings_Store() = default;
  /// False when there is no such value.
  virtual bool Read(const std::string& section, const std::string& name, std::string& value) = 0;
  virtual void Write(const std::string& section, const std::string& name, const std::string& value) = 0;
};

/// Not owned; null restores the default, which remembers for the life of the process.
void Install_Settings(TSettings_Store* store);
std::string Read_String(const std::string& section, const std::string& name, const std::string& fallback);
std::int64_t Read_Integer(const std::string& section, const std::string& name, std::int64_t fallback);
bool Read_Bool(const std::string& section, const std::string& name, bool fallback);
void Write_String(const std::string& section, const std::string& name, const std::string& value);
void Write_Integer(const std::string& section, const std::string& name, std::int64_t value);
void Write_Bool(const std::string& section, const std::string& name, bool value);

}  // namespace Kt_util_01
