#include "Vcard_Import.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "Birthdays.h"
#include "Card_Plan.h"
#include "Card_Writer.h"
#include "Categories.h"
#include "Event_Rows.h"
#include "Journal.h"
#include "Kt_util_01.h"
#include "Transfer_Books.h"
#include "Vcard_File.h"

namespace Plexidex {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

// What was kept of a contact's card.
struct TKept {
  std::string UID, Digest, Contact, Birthday, Text;
};
using TFound = std::optional<TKept>;

class TImporter {
 public:
  TImporter(const TVcard_File& file, const std::string& path, const TImport_Options& options,
            TVcard_Report& report)
      : file(file),
        name(options.Book),
        title(std::filesystem::path(path).filename().string()),
        until(Import_Until(options)),
        kept_cards("KT_Cards", "BookandUID"),
        of_contacts(kept_cards, "Contact", {"Book", "UID", "Digest", "Birthday"}),
        report(report) {}

  void Choose() {
    book = Import_Book(name, TImported::Contacts);
    templates = book.Key.empty() ? std::vector<TTemplate>() : List_Templates(book.Key);
    labels = Other_Labels(book.Key);
    places.clear();
    categories.clear();
  }

  bool Is_Unchanged(const TIndexed_Card& card) { return Is_Unchanged(card, Find_Kept(file.UID_Of(card))); }

  void Take(const TIndexed_Card& indexed) {
    const std::string where = "the card of line " + std::to_string(indexed.Line);
    if (!indexed.Is_Last) {
      report.Notes.push_back({where, "stands in the file once more, with the same UID; the last one counts"});
      return;
    }
    const std::string uid = file.UID_Of(indexed);
    const TFound kept = Find_Kept(uid);
    if (Is_Unchanged(indexed, kept)) {
      ++report.Unchanged;
      const auto contact = Find_Contact(kept->Contact);
      if (contact && contact->Deleted) Note_Deleted(Shown_Name(*contact, where));
      return;
    }
    try {
      TKept now{uid, indexed.Content.Text(), {}, {}, file.Text_Of(indexed)};
      const TCard card(now.Text, indexed.Line);
      const std::string contact = Name_Of(card);
      if (contact.empty()) throw ECard_Error("has nothing that could be its name");
      if (!card.Strange_Lines.empty())
        report.Notes.push_back({contact, "line " + std::to_string(card.Strange_Lines.front()) +
                                             " is no property; it is kept, but not used"});
      Write(card, kept, std::move(now));
    } catch (const ECard_Error& e) {
      report.Unused.push_back({where, e.what()});
    }
  }

 private:
  static bool Is_Unchanged(const TIndexed_Card& card, const TFound& kept) {
    return kept && kept->Digest == card.Content.Text();
  }

  // All but the text. A contact that was written here is known by its key.
  TFound Find_Kept(const std::string& uid) {
    if (book.Key.empty()) return std::nullopt;
    const bool is_known = kept_cards.FindKey({book.Key, uid});
    if (!is_known && !(of_contacts.FindKey({uid}) && of_contacts.Text(of_contacts.Field("Book")) == book.Key))
      return std::nullopt;
    const TTable& found = is_known ? kept_cards : of_contacts;
    const auto text = [&](const char* column) { return std::string(found.Text(found.Field(column))); };
    return TKept{text("UID"), text("Digest"), text("Contact"), text("Birthday"), {}};
  }

  void Keep(const TKept& kept) {
    if (kept_cards.FindKey({book.Key, kept.UID})) {
      kept_cards.Edit();
    } else {
      kept_cards.Insert();
    }
    kept_cards.SetFields({book.Key, kept.UID, kept.Contact, kept.Digest, kept.Birthday});
    kept_cards.Set_Blob(kept_cards.Field("Content"), kept.Text);
    PostUpdate(kept_cards);
  }

  const TField_Places& Places_Of(const std::string& key) {
    const auto found = places.find(key);
    if (found != places.end()) return found->second;
    auto of = Find_Template(key);
    if (!of && !templates.empty()) of = templates.front();
    return places.try_emplace(key, of.value_or(TTemplate()), labels).first->second;
  }

  static std::string Shown_Name(const TContact& contact, const std::string& otherwise) {
    return Access_Allowed(contact.Key, Access_See) ? contact.Name : otherwise;
  }

  void Note_Deleted(const std::string& contact) {
    report.Notes.push_back({contact, "was deleted here, and stays so until it is restored"});
  }

  void Write(const TCard& card, const TFound& kept, TKept now) {
    const auto contact = Find_Contact(kept ? kept->Contact : now.UID);
    if (!contact || contact->Book != book.Key) return Add(card, std::move(now));
    if (contact->Deleted) {
      ++report.Unchanged;
      return Note_Deleted(Shown_Name(*contact, Name_Of(card)));
    }
    if (!Access_Allowed(contact->Key, Access_Update))
      throw ECard_Error("belongs to " + Shown_Name(*contact, "a contact") + ", which you may not change");
    now.Contact = contact->Key;
    Update(card, *contact, kept, std::move(now));
  }

  void Add(const TCard& card, TKept now) {
    if (book.Key.empty()) {
      book = Create_Book(book.Name);
      Choose();
    }
    const std::string of =
        templates.empty() ? std::string() : templates[Choose_Template(card, templates)].Key;
    const TCard_Plan plan = Plan_Card(card, Places_Of(of));
    const std::string& contact = plan.Texts[Slot::Name];
    TContact_Details details;
    details.Template = of;
    Put_Into(plan.Texts, details);
    now.Contact = Create_Contact(book.Key, contact, details);
    if (!plan.Texts[Slot::Categories].empty())
      Set_Categories(now.Contact, Keys_Of(plan.Texts[Slot::Categories]));
    if (!plan.Texts[Slot::Birthday].empty()) Write_Birthday(plan.Texts, now, User_Key());
    Keep(now);
    Tell(plan, now.Contact);
    ++report.Added;
  }

  // What the file says otherwise than it did before goes to the contact; what was changed here, and not
  // there, stays.
  void Update(const TCard& card, const TContact& contact, const TFound& kept, TKept now) {
    TContact_Details details = Read_Contact_Details(contact.Key);
    const TField_Places& of = Places_Of(details.Template);
    const TCard_Plan plan = Plan_Card(card, of);
    TContact_Texts before;
    if (kept) {
      if (kept_cards.FindKey({book.Key, kept->UID}))
        before = Plan_Card(TCard(kept_cards.Blob(kept_cards.Field("Content"))), of).Texts;
      now.Birthday = kept->Birthday;
      // An export may have given a card without UID one; the file that it came from is still to be known.
      now.UID = kept->UID;
    }
    const TContact_Texts mine =
        Texts_Of(contact, details, kept ? before[Slot::Categories] : plan.Texts[Slot::Categories]);
    if (!kept) before = mine;
    TContact_Texts merged = mine;
    for (std::size_t slot = 0; slot < Slot::Count; ++slot) {
      // A card that was made of the contact elsewhere need not hold all of it.
      const bool is_lost = !kept && plan.Texts[slot].empty();
      if (Leading_Slot(slot) == slot && !is_lost && !Same_Slot(plan.Texts, before, slot))
        Copy_Slot(plan.Texts, merged, slot);
    }
    if (!kept && merged == mine && Is_Own_Card(now, contact, of)) {
      ++report.Unchanged;
      return;
    }
    Put_Into(merged, details);
    Write_Contact(contact.Key, merged[Slot::Name], details);
    if (merged[Slot::Categories] != mine[Slot::Categories])
      Change_Categories(contact.Key, Keys_Of(merged[Slot::Categories]));
    const bool is_renamed = plan.Texts[Slot::Name] != before[Slot::Name];
    const bool is_moved = plan.Texts[Slot::Birthday] != before[Slot::Birthday];
    if (is_moved || (is_renamed && Is_There(now.Birthday)))
      Replace_Birthday(merged, plan.Texts[Slot::Birthday], now);
    Keep(now);
    Tell(plan, contact.Key);
    ++report.Updated;
  }

  // Whether it says what an export would say now.
  bool Is_Own_Card(const TKept& now, const TContact& contact, const TField_Places& of) const {
    const TWritten_Contact written{contact.Key, Texts_Of(contact, Read_Contact_Details(contact.Key)), 0,
                                   !templates.empty() && of.Template().Key == templates.front().Key};
    return Own_Card(written, of, TVcard_Version::V4_0) == now.Text ||
           Own_Card(written, of, TVcard_Version::V3_0) == now.Text;
  }

  // Of the book's categories, each made when it is first wanted.
  std::vector<std::string> Keys_Of(const std::string& names) {
    std::vector<std::string> keys;
    for (const std::string& category : Category_Names(names)) {
      std::string& key = categories[category];
      if (key.empty()) key = Find_Or_Add_Category(book.Key, category);
      if (std::find(keys.begin(), keys.end(), key) == keys.end()) keys.push_back(key);
    }
    return keys;
  }

  bool Is_There(const std::string& event) { return !event.empty() && events.FindKey({event}); }

  void Write_Birthday(const TContact_Texts& texts, TKept& now, const std::string& user,
                      bool is_private = false) {
    now.Birthday = Create_Birthday({book.Key, now.Contact}, texts[Slot::Name], texts[Slot::Birthday], until,
                                   user, is_private);
    ++report.Birthdays;
  }

  // It stays whose it was; what another has made private stays as it is.
  void Replace_Birthday(TContact_Texts texts, const std::string& birthday, TKept& now) {
    std::string user = User_Key();
    bool is_private = false;
    if (Is_There(now.Birthday)) {
      if (KTReminds::Is_Hidden(events)) {
        report.Notes.push_back(
            {texts[Slot::Name], "has a birthday that is private to another user, and stays"});
        return;
      }
      user = events.Text(KTReminds::Event_Columns().User);
      is_private = events.Boolean(KTReminds::Event_Columns().Private);
      KTReminds::Delete_Set(now.Birthday);
    }
    now.Birthday.clear();
    texts[Slot::Birthday] = birthday;
    if (!birthday.empty()) Write_Birthday(texts, now, user, is_private);
  }

  void Tell(const TCard_Plan& plan, const std::string& contact) {
    const std::string& of = plan.Texts[Slot::Name];
    Log_Contact(contact, TJournal_Type::Imported, of, title);
    for (const std::string& property : plan.Too_Long)
      report.Notes.push_back({of, "its " + property + " is too long for a field, and is only kept"});
  }

  const TVcard_File& file;
  const std::string name, title;
  const TDateTime until;
  TBook book;
  std::vector<TTemplate> templates;
  TOther_Texts labels;
  std::map<std::string, TField_Places> places;
  std::map<std::string, std::string> categories;  // keys by name
  TTable kept_cards, of_contacts, events{Events_Table, "Key", {"Private", "User"}};
  TVcard_Report& report;
};

TVcard_Report Read_And_Write(const std::string& path, const TImport_Options& options) {
  TVcard_Report report;
  const TVcard_File file(path, Import_Budget(options), options.Progress);
  TImporter importer(file, path, options, report);
  importer.Choose();
  report.Unused = file.Damaged();
  report.Read = static_cast<std::int64_t>(file.Cards().size() + file.Damaged().size());
  const auto run = [&] {
    if (options.Progress) options.Progress->Set_Max(static_cast<std::int64_t>(file.Cards().size()));
    std::int64_t taken = 0;
    for (const TIndexed_Card& card : file.Cards()) {
      importer.Take(card);
      if (options.Progress) options.Progress->Set_Position(++taken);
    }
  };
  bool is_unchanged = true;
  for (const TIndexed_Card& card : file.Cards())
    is_unchanged = is_unchanged && (!card.Is_Last || importer.Is_Unchanged(card));
  Run_Import(
      path, is_unchanged, [&] { importer.Choose(); }, run);
  return report;
}

}  // namespace

TVcard_Report Import_Vcards(const std::string& file, const TImport_Options& options) {
  return Reading_Data(file, [&] { return Read_And_Write(file, options); });
}

}  // namespace Plexidex
