#include "Vcard_Export.h"

#include <algorithm>
#include <map>
#include <vector>

#include "Birthdays.h"
#include "Card_Plan.h"
#include "Card_Writer.h"
#include "Kt_util_01.h"
#include "Output_File.h"
#include "Transfer_Books.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

// In the order in which they were made.
std::vector<std::string> Contacts_Of(const TBook& book) {
  std::vector<std::string> keys;
  TTable contacts(Contacts_Table, "TypeBookandParent", {"Key", "Deleted"});
  const TField key = contacts.Field("Key"), deleted = contacts.Field("Deleted");
  contacts.SetRange({Contact_Type_Contact, book.Key}, {Contact_Type_Contact, book.Key});
  for (contacts.First(); !contacts.Eof(); contacts.Next()) {
    if (!contacts.Boolean(deleted) && Access_Allowed(contacts.Text(key), Access_See))
      keys.emplace_back(contacts.Text(key));
  }
  std::sort(keys.begin(), keys.end());
  return keys;
}

class TWriter {
 public:
  TWriter(const TBook& book, std::optional<TVcard_Version> version)
      : version(version),
        templates(List_Templates(book.Key)),
        labels(Other_Labels(book.Key)),
        contacts(Contacts_Table, "Key"),
        cards("KT_Cards", "Contact") {}

  std::string Card_Of(const std::string& key) {
    const auto contact = Find_Contact(key);
    if (!contact || !contacts.FindKey({key})) return {};
    const TContact_Details details = Read_Contact_Details(key);
    const TField_Places& of = Places_Of(details.Template);
    TWritten_Contact written{key,
                             {},
                             contacts.DateTime(contacts.Field("ModifiedAt")),
                             !templates.empty() && of.Template().Key == templates.front().Key};
    if (!cards.FindKey({key})) {
      written.Texts = Texts_Of(*contact, details);
      return Own_Card(written, of, version.value_or(TVcard_Version::V4_0));
    }
    const std::string text = cards.Blob(cards.Field("Content"));
    const TContact_Texts then = Plan_Card(TCard(text), of).Texts;
    written.Texts = Texts_Of(*contact, details, then[Slot::Categories]);
    written.Texts[Slot::Birthday] =
        Current_Birthday(std::string(cards.Text(cards.Field("Birthday"))), then[Slot::Birthday]);
    return Kept_Card(text, written, of, version);
  }

 private:
  const TField_Places& Places_Of(const std::string& key) {
    const auto found = places.find(key);
    if (found != places.end()) return found->second;
    const auto of = std::find_if(templates.begin(), templates.end(),
                                 [&](const TTemplate& one) { return one.Key == key; });
    return places.try_emplace(key, of == templates.end() ? TTemplate() : *of, labels).first->second;
  }

  const std::optional<TVcard_Version> version;
  const std::vector<TTemplate> templates;
  const TOther_Texts labels;
  TTable contacts, cards;
  std::map<std::string, TField_Places> places;
};

}  // namespace

std::int64_t Export_Vcards(const std::string& file, const std::string& book_name,
                           std::optional<TVcard_Version> version, TProgress_Bar* progress) {
  std::int64_t written = 0;
  try {
    const TBook book = Export_Book(book_name);
    TOutput_File output(file);
    const TSnapshot snapshot;
    const std::vector<std::string> keys = Contacts_Of(book);
    if (progress) progress->Set_Max(static_cast<std::int64_t>(keys.size()));
    TWriter writer(book, version);
    for (const std::string& key : keys) {
      output.Stream() << writer.Card_Of(key);
      ++written;
      if (progress) progress->Set_Position(written);
      if (!output.Stream()) break;
    }
    output.Keep();
  } catch (const EOutput_Error& e) {
    throw EExport_Error(e.what());
  } catch (const EData_Error& e) {
    throw EExport_Error("\"" + file + "\" cannot be written: the data could not be read (" + e.Reason + ").");
  }
  return written;
}

}  // namespace Plexidex
