#include "Alerts.h"

#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

constexpr const char* By_Moment = "UserandDue";
constexpr double Forever = 1e9;

}  // namespace

std::vector<TAlert> Due_Alerts(TDateTime now) {
  std::vector<TAlert> due;
  const std::string& user = Kt_util_01::User_Key();
  TTable alerts("KT_Alerts", By_Moment);
  const TField occurrence = alerts.Field("Occurrence"), moment = alerts.Field("Due");
  alerts.SetRange({user, false, -Forever}, {user, false, now});
  for (alerts.First(); !alerts.Eof(); alerts.Next())
    due.push_back({std::string(alerts.Text(occurrence)), alerts.DateTime(moment)});
  return due;
}

std::optional<TDateTime> Next_Alert(TDateTime now) {
  const std::string& user = Kt_util_01::User_Key();
  TTable alerts("KT_Alerts", By_Moment);
  const TField moment = alerts.Field("Due");
  alerts.SetRange({user, false, now}, {user, false, Forever});
  for (alerts.First(); !alerts.Eof(); alerts.Next()) {
    if (alerts.DateTime(moment) > now) return alerts.DateTime(moment);
  }
  return {};
}

void Dismiss_Alert(const TAlert& alert) {
  TTable alerts("KT_Alerts", "Occurrence");
  if (!alerts.FindKey({alert.Occurrence}) || alerts.DateTime(alerts.Field("Due")) != alert.Due ||
      alerts.Text(alerts.Field("User")) != Kt_util_01::User_Key())
    return;
  alerts.Edit();
  alerts.Set(alerts.Field("Dismissed"), true);
  PostUpdate(alerts);
}

bool Put_Off_Alert(const TAlert& alert, TDateTime until) {
  TTable alarms(Alarms_Table, "Key");
  if (!alarms.FindKey({alert.Occurrence}) || alarms.Text(alarms.Field("User")) != Kt_util_01::User_Key())
    return false;
  alarms.Edit();
  alarms.Set(alarms.Field("NextTime"), until);
  PostUpdate(alarms);
  return true;
}

}  // namespace Kt_data_01
