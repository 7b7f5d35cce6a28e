#include "Contact_Search.h"

#include <memory>
#include <utility>
#include <vector>

#include "Contact_Criteria.h"
#include "Current_Search.h"
#include "Kt_update.h"
#include "Kt_util_01.h"
#include "Search_Pace.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

std::string Doubled_Quotes(std::string_view text) {
  std::string made;
  for (const char c : text) made.append(c == '\'' ? 2 : 1, c);
  return made;
}

using TNodes = std::vector<std::unique_ptr<TTree_Node>>;

class TContact_Search {
 public:
  TContact_Search(const TSearchRecord& criteria, const std::string& book, const std::string& user,
                  TProgress_Bar* progress)
      : search(criteria),
        book(book),
        user(user.empty() ? User_Key() : user),
        pace(progress),
        criteria(search, Now(), this->user),
        contacts(this->criteria.Contacts()) {}

  /// False when it was stopped.
  bool Run(int type, TNodes& found) {
    // Said in the negative, so that the engine goes through the table and by no index: one that leads to most
    // of the rows is slower, and they would have to be sorted.
    const std::string not_other = "(Deleted = False) and not (Type <> " + std::to_string(type) + ")";
    try {
      if (search.Group.empty()) {
        contacts.Set_Filter(not_other + " and not (Book <> '" + Doubled_Quotes(book) + "')");
        Walk(found);
        return true;
      }
      contacts.Set_Filter(not_other);
      contacts.Set_Index("ParentandGroup");
      Walk_Folder(search.Group, found);
      if (!search.SubGroups) return true;
      for (const std::string& below : Get_SubGroups(search.Group)) Walk_Folder(below, found);
      return true;
    } catch (const EAlready_Reported&) {
      return false;
    }
  }

 private:
  void Walk_Folder(const std::string& folder, TNodes& found) {
    contacts.SetRange({folder}, {folder});
    Walk(found);
  }

  void Walk(TNodes& found) {
    const TField key = contacts.Field("Key"), name = contacts.Field("DisplayName");
    if (pace.Is_Shown()) pace.Begin(contacts.Record_Count());
    std::string before;
    for (contacts.First(); !contacts.Eof(); contacts.Next()) {
      pace.Pass(criteria.Take_Passed());
      // A contact with details more than once, as from another program, comes with each of them.
      if (before == contacts.Text(key)) continue;
      before = contacts.Text(key);
      if (!criteria.Meets() || !Access_Allowed(before, Access_See, user)) continue;
      auto node = std::make_unique<TTree_Node>();
      node->Text = contacts.Shared_Text(name);
      node->Key = TText(before);
      found.push_back(std::move(node));
    }
  }

  const TSearchRecord search;  // a copy: messages are serviced meanwhile
  const std::string& book;
  const std::string user;
  TSearch_Pace pace;
  const TSnapshot snapshot;
  TContact_Criteria criteria;
  TTable& contacts;
};

}  // namespace

bool SearchContacts(const std::string& Book, const std::string& User, TTree_Node& Parent, TTree& Tree,
                    std::int64_t& Elapsed, int ContactType, TProgress_Bar* Progress) {
  auto start = TSearch_Pace::TSteady::now();
  TNodes found;
  const auto done = Read("Search_Engine:SearchContacts [KT_Contacts/KT_Contacts_Data]", [&] {
    if (CurrentSearch) CurrentSearch->PreProcess_Criteria(Book);
    const TSearchRecord none;
    TContact_Search search(CurrentSearch ? *CurrentSearch : none, Book, User, Progress);
    start = TSearch_Pace::TSteady::now();
    return search.Run(ContactType, found);
  });
  if (done) {
    Tree.Begin_Update(Parent);
    for (auto& node : found) Tree.Add(Parent, std::move(node));
    Tree.Sort(Parent);
    Tree.End_Update();
  }
  Elapsed = TSearch_Pace::Milliseconds_Since(start);
  return done.value_or(false);
}

}  // namespace KTReminds
