#include "Tags.h"

#include "Kt_data_01.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

bool Is_Tagged(std::string_view contact) {
  return TTable(Flags_Table, "User").FindKey({Kt_util_01::User_Key(), contact});
}

void Set_Tagged(std::string_view contact, bool tagged) {
  TTable flags(Flags_Table, "User");
  const bool is_tagged = flags.FindKey({Kt_util_01::User_Key(), contact});
  if (is_tagged == tagged) return;
  if (is_tagged) return flags.Delete();
  flags.Insert();
  flags.SetFields({Kt_util_01::User_Key(), contact});
  PostUpdate(flags);
}

std::unordered_set<std::string> Tagged_Contacts() {
  std::unordered_set<std::string> contacts;
  TTable flags(Flags_Table, "User");
  const TField contact = flags.Field("Contact");
  flags.SetRange({Kt_util_01::User_Key()}, {Kt_util_01::User_Key()});
  for (flags.First(); !flags.Eof(); flags.Next()) contacts.emplace(flags.Text(contact));
  return contacts;
}

}  // namespace Kt_data_01
