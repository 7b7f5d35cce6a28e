#include "Alerts.h"

#include "Kt_data_01.h"
#include "Kt_util_01.h"
#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

constexpr const char* By_Moment = "UserandDue";
constexpr double Forever = 1e9;

bool Find_Unanswered(TTable& alerts, const TAlert& alert) {
  return alerts.FindKey({alert.Occurrence}) && alerts.Integer(alerts.Field("Dismissed")) == Alert_Open &&
         alerts.DateTime(alerts.Field("Due")) == alert.Due &&
         alerts.Text(alerts.Field("User")) == Kt_util_01::User_Key();
}

bool Write_Delay(const TAlert& alert, TDateTime until) {
  TTable alarms(Alarms_Table, "Key");
  if (!alarms.FindKey({alert.Occurrence})) return false;
  alarms.Edit();
  alarms.Set(alarms.Field("NextTime"), until);
  PostUpdate(alarms);
  return true;
}

}  // namespace

std::vector<TAlert> Due_Alerts(TDateTime now) {
  std::vector<TAlert> due;
  const std::string& user = Kt_util_01::User_Key();
  TTable alerts("KT_Alerts", By_Moment);
  const TField occurrence = alerts.Field("Occurrence"), moment = alerts.Field("Due");
  alerts.SetRange({user, Alert_Open, -Forever}, {user, Alert_Open, now});
  for (alerts.First(); !alerts.Eof(); alerts.Next())
    due.push_back({std::string(alerts.Text(occurrence)), alerts.DateTime(moment)});
  return due;
}

std::optional<TDateTime> Next_Alert(TDateTime now) {
  const std::string& user = Kt_util_01::User_Key();
  TTable alerts("KT_Alerts", By_Moment);
  const TField moment = alerts.Field("Due");
  alerts.SetRange({user, Alert_Open, now}, {user, Alert_Open, Forever});
  for (alerts.First(); !alerts.Eof(); alerts.Next()) {
    if (alerts.DateTime(moment) > now) return alerts.DateTime(moment);
  }
  return {};
}

void Dismiss_Alert(const TAlert& alert) {
  TTable alerts("KT_Alerts", "Occurrence");
  if (!Find_Unanswered(alerts, alert)) return;
  if (alerts.DateTime(alerts.Field("NextTime")) != 0) Write_Delay(alert, 0);
  alerts.Edit();
  alerts.Set(alerts.Field("Dismissed"), Alert_Answered);
  PostUpdate(alerts);
}

bool Put_Off_Alert(const TAlert& alert, TDateTime until) {
  TTable alerts("KT_Alerts", "Occurrence");
  return Find_Unanswered(alerts, alert) && Write_Delay(alert, until);
}

std::optional<TWaiting_Alert> Find_Waiting_Alert(std::string_view occurrence) {
  TTable alerts("KT_Alerts", "Occurrence");
  if (!alerts.FindKey({occurrence}) || alerts.Boolean(alerts.Field("Dismissed"))) return {};
  const TWaiting_Alert waiting{alerts.DateTime(alerts.Field("Moment")),
                               alerts.DateTime(alerts.Field("NextTime"))};
  if (waiting.Moment > Kt_util_01::Now()) return {};
  return waiting;
}

void Keep_Waiting_Alert(std::string_view occurrence, const TWaiting_Alert& waiting) {
  TTable alerts("KT_Alerts", "Occurrence"), alarms(Alarms_Table, "Key");
  if (!alerts.FindKey({occurrence}) || alerts.DateTime(alerts.Field("Moment")) != waiting.Moment ||
      !alarms.FindKey({occurrence}))
    return;
  if (waiting.NextTime != 0) {
    alarms.Edit();
    alarms.Set(alarms.Field("NextTime"), waiting.NextTime);
    PostUpdate(alarms);
    if (!alerts.FindKey({occurrence})) return;
  }
  alerts.Edit();
  alerts.Set(alerts.Field("Dismissed"), false);
  PostUpdate(alerts);
}

}  // namespace Kt_data_01
