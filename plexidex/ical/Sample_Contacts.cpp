#include "Sample_Contacts.h"

#include <utility>
#include <vector>

#include "Contacts.h"
#include "Event_Creation.h"
#include "Kt_util_01.h"
#include "Templates.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

struct TSample_Event {
  const char *Title = "", *Location = "";
  double In_Days = 0;
};
struct TSample_Contact {
  const char *Name, *Template;
  std::vector<std::pair<int, const char*>> Fields;
  const char* Notes = "";
  TSample_Event Event{};
  std::vector<const char*> Others{};
};

constexpr const char *Person = "Person", *Company = "Company", *US = "US Contact", *UK = "UK Contact";
constexpr int Home = 12, Mobile = 13, Work = 14, Fax = 15, Mail = 17, Work_Mail = 18, Web = 19;

std::vector<TSample_Contact> Contacts() {
  return {
      {"Maria Lind",
       Person,
       {{1, "Ms"},
        {2, "Lind & Partner"},
        {3, "Architect"},
        {Home, "030 5550 142"},
        {Mobile, "0160 555 0142"},
        {Work, "+49 (0)30 5550 9000"},
        {Fax, "030 5550 9001"},
        {Mail, "maria@example.org"},
        {Work_Mail, "m.lind@lind-partner.example"},
        {Web, "www.lind-partner.example"},
        {Field_Address, "Am Mühlenbach 7\n12345 Altdorf\nGermany"}},
       "Runs the book club.\nHer sister Eva waters the plants.",
       {"Lunch with Maria", "Corner café", 1 + 12.5 / 24},
       {"Books, rowing", "The evening class"}},
      {"Jonas Weber",
       Person,
       {{Mobile, "0160 555 0187"}, {Mail, "jonas@example.org"}},
       "Likes dark chocolate.",
       {"Call Jonas about the trip", "", 18.0 / 24},
       {"Cycling"}},
      {"Susan Miller",
       US,
       {{1, "Prof."},
        {2, "Lakeside College"},
        {3, "Historian"},
        {Home, "+1 555 010 0199"},
        {Work, "+1 555 010 0120"},
        {Mail, "susan.miller@example.com"},
        {Web, "https://www.example.com/~miller"},
        {Field_Street, "1200 Lake Shore Drive\nApartment 4B"},
        {Field_City, "Springfield"},
        {Field_State, "IL"},
        {Field_ZIP, "62701"},
        {Field_Country, "USA"}},
       "Seven hours behind."},
      {"Ann Carter",
       UK,
       {{2, "Carter Gardens"},
        {3, "Gardener"},
        {Home, "+44 20 7946 0018"},
        {Mobile, "+44 7700 900123"},
        {Mail, "ann@example.net"},
        {Web, "carter-gardens.example"},
        {Field_Street, "Rose Cottage\n14 Mill Lane\nLittle Marlow"},
        {Field_Postcode, "SL7 3XX"},
        {Field_Country, "United Kingdom"}},
       "",
       {},
       {"Running"}},
      {"Corner Café",
       Company,
       {{Home, "030 5550 177"}, {Field_Address, "Marktplatz 2\n12345 Altdorf"}},
       "Closed on Mondays."},
      {"City Library",
       Company,
       {{3, "L-20417"},
        {Home, "030 5550 100"},
        {Mail, "desk@library.example"},
        {Web, "library.example/catalogue"},
        {Field_Address, "Schulstraße 11\n12345 Altdorf"}},
       "Open until eight on Thursdays."},
      {"Lindner Heating",
       Company,
       {{1, "Mr Lindner"}, {2, "Heating and plumbing"}, {Home, "030 5550 310"}, {Mobile, "0160 555 0310"}},
       "Serviced the boiler last autumn."},
      {"Dr Ernst Vogel",
       Person,
       {{1, "Dr"},
        {3, "Dentist"},
        {Work, "030 5550 220"},
        {Field_Address, "Bahnhofstraße 3\n12345 Altdorf"}}},
      {"Aunt Rosa", Person, {{Home, "040 5550 12"}}},
      {"Tom Becker", Person, {{Mail, "tom.becker@example.org"}}},
  };
}

// The templates of the book, with those that the contacts need.
std::vector<TTemplate> Sample_Templates(const std::string& book) {
  std::vector<TTemplate> templates = List_Templates(book);
  for (const auto& [name, style] : {std::pair(Person, TAddress_Style::International),
                                    {Company, TAddress_Style::International},
                                    {US, TAddress_Style::US},
                                    {UK, TAddress_Style::UK}}) {
    if (Is_Template_Name_Taken(book, name, {})) continue;
    TTemplate made;
    if (!templates.empty()) made.Labels = templates.front().Labels;
    made.Book = book;
    made.Name = name;
    made.Address_Style = style;
    Write_Template(made);
    templates.push_back(std::move(made));
  }
  return templates;
}

void Write_Event(const TSample_Event& sample, const KTReminds::TOwner& owner, Kt_util_01::TDateTime today) {
  KTReminds::TNew_Event event;
  event.Owner = owner;
  event.Record.Title = sample.Title;
  event.Record.Location = sample.Location;
  event.Record.User = Kt_util_01::User_Key();
  event.Record.FirstDate = event.Record.Pattern.LastDate = today + sample.In_Days;
  std::string master;
  KTReminds::Create_Event(event, master);
}

}  // namespace

TSample_Contacts Write_Sample_Contacts(const TBook& book, Kt_util_01::TDateTime today) {
  TSample_Contacts written;
  const auto templates = Sample_Templates(book.Key);
  TOther_Texts labels = Other_Labels(book.Key);
  if (labels == Other_Labels({})) {
    labels[0] = "Hobbies";
    labels[1] = "Known from";
    Set_Other_Labels(book.Key, labels);
  }
  for (const TSample_Contact& sample : Contacts()) {
    TContact_Details details;
    for (const TTemplate& one : templates) {
      if (Kt_util_01::CompareText(one.Name, sample.Template) == 0) details.Template = one.Key;
    }
    for (const auto& [code, text] : sample.Fields) details.Fields[code] = text;
    for (std::size_t i = 0; i < sample.Others.size(); ++i) details.Other[i] = sample.Others[i];
    details.Notes = sample.Notes;
    const std::string contact = Create_Contact(book.Key, sample.Name);
    Write_Contact(contact, sample.Name, details);
    ++written.Contacts;
    if (!*sample.Event.Title) continue;
    Write_Event(sample.Event, {book.Key, contact}, today);
    ++written.Entries;
  }
  return written;
}

}  // namespace Plexidex
