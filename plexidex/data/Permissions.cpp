#include "Permissions.h"

#include "Books.h"
#include "In_Quotes.h"
#include "Kt_util_01.h"
#include "Users.h"

namespace Kt_data_01 {

namespace {

struct TOwned {
  std::string Name;  // 'the folder "Friends"'; "" when it is not there
  std::string User;  // who owns it
};

TOwned Owned(std::string_view owner) {
  if (owner == Whole_Database) return {"the whole database", {}};
  TTable contacts(Contacts_Table, "Key", {"DisplayName", "Type", "User"});
  const auto name = [&] { return In_Quotes(contacts.Text(contacts.Field("DisplayName"))); };
  const auto user = [&] { return std::string(contacts.Text(contacts.Field("User"))); };
  if (!contacts.FindKey({owner})) {
    const std::string calendar = Calendar_Of_Book(owner);
    if (calendar.empty() || !contacts.FindKey({calendar})) return {};
    return {"the book " + name(), user()};
  }
  switch (contacts.Integer(contacts.Field("Type"))) {
    case Contact_Type_Calendar:
      return {"the calendar of the book " + name(), user()};
    case Contact_Type_Folder:
      return {"the folder " + name(), user()};
    default:
      return {"the contact " + name(), user()};
  }
}

std::string Fault_Of(const TOwned& owned) {
  const std::string current = Kt_util_01::User_Key();
  const TAccount account = Account_Of(current);
  if (account.Administrator || (!account.Key.empty() && owned.User == current)) return {};
  const std::string name = Account_Of(owned.User).Name;
  return "Only administrators" + (name.empty() ? std::string() : ", and the owner " + In_Quotes(name) + ',') +
         " may change these permissions.";
}

TPermission_Row Row_Of(std::string_view owner, const TAccount& account) {
  TPermission_Row row{account.Key, account.Name, account.Administrator, false, {}, {}};
  if (row.Administrator) {
    row.Rights = {true, true, true, true};
    row.Remark = "administrator: may do everything";
    return row;
  }
  const auto nearest = Nearest_Rights(owner, row.User);
  if (!nearest) {
    row.Remark = "nothing is set";
    return row;
  }
  row.Rights = nearest->Rights;
  row.Own = nearest->Owner == owner && nearest->User == row.User;
  row.Remark = row.Own                                      ? "set here"
               : nearest->Owner == owner                    ? "as everybody here"
               : Access_Allowed(nearest->Owner, Access_See) ? "from " + Owned(nearest->Owner).Name
                                                            : "from above";
  return row;
}

}  // namespace

TPermissions Read_Permissions(std::string_view owner) {
  const TSnapshot snapshot;
  const TOwned owned = Owned(owner);
  TPermissions permissions{owned.Name, {}, {}};
  if (owned.Name.empty()) return permissions;
  permissions.Fault = Fault_Of(owned);
  permissions.Rows.push_back(Row_Of(owner, {std::string(Global_User), "Everybody", false, false}));
  for (const TAccount& account : List_Accounts()) permissions.Rows.push_back(Row_Of(owner, account));
  return permissions;
}

std::string Change_Permissions(std::string_view owner, std::string_view user,
                               const std::optional<TRights>& rights) {
  const TOwned owned = Owned(owner);
  if (owned.Name.empty()) return "What the permissions are for has been removed meanwhile.";
  if (std::string fault = Fault_Of(owned); !fault.empty()) return fault;
  if (user != Global_User && Account_Of(user).Key.empty()) return "The user has been removed meanwhile.";
  const bool seen = Access_Allowed(owner, Access_See);
  rights ? Set_Rights(owner, user, *rights) : Clear_Rights(owner, user);
  if (seen && !Access_Allowed(owner, Access_See))
    return "You could no longer see " + owned.Name + " then; give yourself that permission first.";
  return {};
}

}  // namespace Kt_data_01
