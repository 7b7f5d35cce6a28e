#include <unicode/basictz.h>
#include <unicode/timezone.h>

#include <algorithm>
#include <chrono>
#include <map>
#include <memory>

#include "ICU_Texts.h"
#include "UTC_Clock.h"

namespace Kt_util_01 {

TDateTime CurrentDate = 0;

namespace {

constexpr std::int64_t Unix_Epoch_Msecs = Unix_Epoch_Day * Msecs_Per_Day;

/// Null when there is no zone of that name. Zones are kept: a calendar file names the same few over and over.
const icu::BasicTimeZone* Find_Zone(const std::string& name) {
  static std::map<std::string, std::unique_ptr<icu::BasicTimeZone>> known;
  if (const auto found = known.find(name); found != known.end()) return found->second.get();

  const icu::UnicodeString id = To_ICU(name);
  icu::UnicodeString canonical;
  UBool is_system = false;
  UErrorCode status = U_ZERO_ERROR;
  icu::TimeZone::getCanonicalID(id, canonical, is_system, status);
  // ICU also knows "GMT+3:30" and a name for "unknown"; neither is a place.
  if (U_FAILURE(status) || !is_system || id == icu::UnicodeString(UCAL_UNKNOWN_ZONE_ID)) return nullptr;
  std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(id));
  if (dynamic_cast<icu::BasicTimeZone*>(zone.get()) == nullptr) return nullptr;
  auto& kept = known[name];
  kept.reset(static_cast<icu::BasicTimeZone*>(zone.release()));
  return kept.get();
}

std::string System_Zone_Name() {
  const std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::detectHostTimeZone());
  icu::UnicodeString id;
  std::string name = From_ICU(zone->getID(id));
  return Find_Zone(name) == nullptr ? "UTC" : name;
}

struct TUser_Zone {
  std::string Name;
  const icu::BasicTimeZone* Zone;
  bool Is_System = true;
};

TUser_Zone& User_Zone() {
  static TUser_Zone user_zone = [] {
    const std::string name = System_Zone_Name();
    return TUser_Zone{name, Find_Zone(name)};
  }();
  return user_zone;
}

/// Milliseconds from UTC to local time at a moment given in either of them. What lies outside the years of
/// dates takes the offset at their end.
std::int64_t Offset_Msecs(const icu::BasicTimeZone& zone, std::int64_t msecs, bool is_local) {
  constexpr std::int64_t first = Day_From_Date(Min_Year, 1, 2) * Msecs_Per_Day;
  constexpr std::int64_t last = Day_From_Date(Max_Year, 12, 30) * Msecs_Per_Day;
  const auto date = static_cast<UDate>(std::clamp(msecs, first, last) - Unix_Epoch_Msecs);
  std::int32_t raw = 0;
  std::int32_t saving = 0;
  UErrorCode status = U_ZERO_ERROR;
  // The offset from before a change turns a skipped hour into the later moment and a repeated one into the
  // first.
  if (is_local)
    zone.getOffsetFromLocal(date, UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_FORMER, raw, saving, status);
  else
    zone.getOffset(date, false, raw, saving, status);
  return U_FAILURE(status) ? 0 : std::int64_t{raw} + saving;
}

TDateTime To_UTC(const icu::BasicTimeZone& zone, TDateTime local) {
  const std::int64_t msecs = To_Msecs(local);
  return From_Msecs(msecs - Offset_Msecs(zone, msecs, true));
}

class TSystem_Clock : public TUTC_Clock {
 public:
  TDateTime UTC() override {
    using std::chrono::milliseconds;
    const auto since_epoch = std::chrono::system_clock::now().time_since_epoch();
    return From_Msecs(std::chrono::floor<milliseconds>(since_epoch).count() + Unix_Epoch_Msecs);
  }
};

TSystem_Clock System_Clock;
TClock* Installed_Clock = &System_Clock;
TUTC_Clock* Installed_UTC_Clock = &System_Clock;  // the same, if it is one

}  // namespace

void Install_Clock(TClock* clock) {
  Installed_Clock = clock != nullptr ? clock : &System_Clock;
  Installed_UTC_Clock = dynamic_cast<TUTC_Clock*>(Installed_Clock);
}

TDateTime Now() {
  return Installed_Clock->Now();
}

TDateTime UTC_Now() {
  return Installed_UTC_Clock != nullptr ? Installed_UTC_Clock->UTC() : Local_To_UTC(Now());
}

TDateTime Local_Time_In(int minutes) {
  constexpr std::int64_t of_a_minute = 60'000;
  const TDateTime now = UTC_Now(), then = From_Msecs(To_Msecs(now) + minutes * of_a_minute);
  const TDateTime local = UTC_To_Local(then), first = Local_To_UTC(local);
  if (first == then || (first <= now && local > Now())) return local;
  return From_Msecs(To_Msecs(local) + To_Msecs(then) - To_Msecs(first));
}

TDateTime Today() {
  return static_cast<TDateTime>(Whole_Day(Now()));
}

std::string Time_Zone() {
  return User_Zone().Name;
}

bool Install_Time_Zone(const std::string& name) {
  const std::string wanted = name.empty() ? System_Zone_Name() : name;
  const icu::BasicTimeZone* zone = Find_Zone(wanted);
  if (zone == nullptr) return false;
  User_Zone() = {wanted, zone, name.empty()};
  return true;
}

void Follow_Time_Zone() {
  if (User_Zone().Is_System) Install_Time_Zone({});
}

TDateTime UTC_To_Local(TDateTime utc) {
  const std::int64_t msecs = To_Msecs(utc);
  return From_Msecs(msecs + Offset_Msecs(*User_Zone().Zone, msecs, false));
}

TDateTime Local_To_UTC(TDateTime local) {
  return To_UTC(*User_Zone().Zone, local);
}

bool Zone_To_Local(const std::string& zone, TDateTime value, TDateTime& local) {
  const icu::BasicTimeZone* from = Find_Zone(zone);
  if (from == nullptr) return false;
  local = UTC_To_Local(To_UTC(*from, value));
  return true;
}

}  // namespace Kt_util_01
