#include "Sample_Contacts.h"

#include <utility>
#include <vector>

#include "Categories.h"
#include "Contacts.h"
#include "Event_Creation.h"
#include "Folders.h"
#include "Journal.h"
#include "Kt_util_01.h"
#include "Links.h"
#include "Tags.h"
#include "Templates.h"

namespace Plexidex {

using namespace Kt_data_01;

namespace {

struct TSample_Event {
  const char *Title = "", *Location = "";
  double In_Days = 0;
};
struct TSample_Entry {
  int Activity, Days_Ago;
  const char* Text;
};
// What a contact has besides its fields.
struct TSample_Parts {
  std::vector<const char*> Categories{};
  std::vector<TLink> Links{};
  std::vector<TSample_Entry> Journal{};
  bool Tagged = false;
};
struct TSample_Contact {
  const char *Name, *Template, *Folder;
  std::vector<std::pair<int, const char*>> Fields;
  const char* Notes = "";
  TSample_Event Event{};
  std::vector<const char*> Others{};
  TSample_Parts Parts{};
};

constexpr const char *Person = "Person", *Company = "Company", *US = "US Contact", *UK = "UK Contact";
// One behind a slash lies in the folder before it.
constexpr const char *Family = "Family", *Friends = "Friends", *Choir = "Friends/Choir", *Office = "Work",
                     *Services = "Services";
constexpr const char *Christmas = "Christmas Cards", *Birthday = "Birthdays", *Neighbours = "Neighbours",
                     *Customers = "Customers";
constexpr int Call_Made = 0, Mail_Sent = 1, Mail_Received = 13, Letter_Sent = 16, Meeting = 18,
              Call_Received = 19, Conversation = 20;
constexpr int Home = 12, Mobile = 13, Work = 14, Fax = 15, Mail = 17, Work_Mail = 18, Web = 19;

std::vector<TSample_Contact> Contacts() {
  return {
      {"Maria Lind",
       Person,
       Friends,
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
       {"Books, rowing", "The evening class"},
       {{Birthday, Christmas},
        {{"Book club", "https://www.example.org/books"}, {"Reading list", "~/Documents/reading list.odt"}},
        {{Call_Made, 12, "Chose the next book together."},
         {Mail_Received, 9, "Sent the guest list for her birthday."},
         {Meeting, 3, "Coffee after the evening class; she borrowed the atlas."}},
        true}},
      {"Jonas Weber",
       Person,
       Friends,
       {{Mobile, "0160 555 0187"}, {Mail, "jonas@example.org"}},
       "Likes dark chocolate.",
       {"Call Jonas about the trip", "", 18.0 / 24},
       {"Cycling"},
       {{Birthday},
        {{"Route of the trip", "https://www.example.org/routes/42"}},
        {{Conversation, 5, "The trip goes along the river."}}}},
      {"Susan Miller",
       US,
       Office,
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
       "Seven hours behind.",
       {},
       {},
       {{Customers},
        {{"Her page at the college", "www.example.com/~miller"}},
        {{Mail_Sent, 20, "Asked for the maps."}, {Mail_Received, 18, "She sends them next month."}}}},
      {"Ann Carter",
       UK,
       Friends,
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
       {"Running"},
       {{Neighbours, Christmas}, {}, {{Call_Received, 2, "The roses need cutting."}}, true}},
      {"Corner Café",
       Company,
       "",
       {{Home, "030 5550 177"}, {Field_Address, "Marktplatz 2\n12345 Altdorf"}},
       "Closed on Mondays."},
      {"City Library",
       Company,
       Services,
       {{3, "L-20417"},
        {Home, "030 5550 100"},
        {Mail, "desk@library.example"},
        {Web, "library.example/catalogue"},
        {Field_Address, "Schulstraße 11\n12345 Altdorf"}},
       "Open until eight on Thursdays."},
      {"Lindner Heating",
       Company,
       Services,
       {{1, "Mr Lindner"}, {2, "Heating and plumbing"}, {Home, "030 5550 310"}, {Mobile, "0160 555 0310"}},
       "Serviced the boiler last autumn."},
      {"Dr Ernst Vogel",
       Person,
       Services,
       {{1, "Dr"},
        {3, "Dentist"},
        {Work, "030 5550 220"},
        {Field_Address, "Bahnhofstraße 3\n12345 Altdorf"}}},
      {"Aunt Rosa",
       Person,
       Family,
       {{Home, "040 5550 12"}},
       "",
       {},
       {},
       {{Birthday, Christmas}, {}, {{Letter_Sent, 30, "Holiday photographs."}}}},
      {"Tom Becker", Person, Office, {{Mail, "tom.becker@example.org"}}, "", {}, {}, {{Customers}}},
      {"Eva Lind", Person, Friends, {{Mobile, "0160 555 0143"}}, "Maria's sister.", {}, {}, {{Neighbours}}},
      {"Uncle Georg", Person, Family, {{Home, "040 5550 13"}}, "", {}, {}, {{Birthday, Christmas}}},
      {"Lena Hofer",
       Person,
       Choir,
       {{1, "Ms"}, {Mobile, "0160 555 0211"}, {Mail, "lena.hofer@example.net"}},
       "Conducts.",
       {},
       {"Singing", "The choir"},
       {{}, {{"Programme of the concert", "~/Documents/concert.pdf"}}}},
      {"Paul Adler", Person, Choir, {{Home, "030 5550 231"}}, "Bass; has the key to the hall."},
      {"Rita Sommer", Person, Choir, {{Mail, "rita@example.net"}}},
      {"Nina Falk",
       Person,
       Office,
       {{2, "Falk Printing"},
        {3, "Printer"},
        {Work, "030 5550 410"},
        {Work_Mail, "nina@falk-printing.example"}},
       "",
       {},
       {},
       {{Customers},
        {{"Price list", "https://falk-printing.example/prices"}},
        {{Call_Made, 1, "The leaflets are ready on Friday."}}}},
      {"Miller & Sons",
       US,
       Office,
       {{2, "Timber"},
        {Work, "+1 555 010 0177"},
        {Field_Street, "8 Harbor Road"},
        {Field_City, "Portland"},
        {Field_State, "ME"},
        {Field_ZIP, "04101"},
        {Field_Country, "USA"}}},
      {"Station Taxi", Company, Services, {{Home, "030 5550 900"}}, "Cash alone."},
      {"Old Mill Theatre",
       Company,
       "",
       {{Home, "030 5550 640"}, {Web, "www.old-mill.example"}, {Field_Address, "Mühlenweg 1\n12345 Altdorf"}},
       "",
       {},
       {},
       {{}, {{"Season", "https://www.old-mill.example/season"}}}},
      {"Beate Kern",
       Person,
       Friends,
       {{Mobile, "0160 555 0298"}, {Mail, "beate.kern@example.org"}},
       "",
       {},
       {},
       {{Birthday}}},
  };
}

// The templates of the book, with those that the contacts need.
std::vector<TTemplate> Sample_Templates(const std::string& book) {
  std::vector<TTemplate> templates = List_Templates(book);
  const bool may_change = Access_Allowed(book, Access_Update);
  for (const auto& [name, style] : {std::pair(Person, TAddress_Style::International),
                                    {Company, TAddress_Style::International},
                                    {US, TAddress_Style::US},
                                    {UK, TAddress_Style::UK}}) {
    if (!may_change || Is_Template_Name_Taken(book, name, {})) continue;
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

// The key of a folder of the sample, which is made where it is not there.
std::string Sample_Folder(const std::string& book, const std::string& path) {
  if (path.empty()) return {};
  const auto slash = path.rfind('/');
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1),
                    parent = slash == std::string::npos ? std::string()
                                                        : Sample_Folder(book, path.substr(0, slash));
  for (const TFolder& one : List_Folders(book)) {
    if (one.Parent == parent && one.Name == name && Access_Allowed(one.Key, Access_Create)) return one.Key;
  }
  return Create_Contact(book, name, parent, Contact_Type_Folder);
}

void Write_Parts(const TSample_Parts& parts, const std::string& book, const std::string& contact,
                 Kt_util_01::TDateTime today) {
  std::vector<std::string> categories;
  for (const char* name : parts.Categories) categories.push_back(Find_Or_Add_Category(book, name));
  Set_Categories(contact, categories);
  for (const TLink& link : parts.Links) Add_Link(contact, link);
  constexpr double morning = 10.0 / 24;
  for (const TSample_Entry& entry : parts.Journal) {
    const Kt_util_01::TDateTime date = today - entry.Days_Ago + morning;
    Add_Journal_Entry(contact, {entry.Activity, date, date, {}, entry.Text});
  }
  if (parts.Tagged) Set_Tagged(contact, true);
}

}  // namespace

TSample_Contacts Write_Sample_Contacts(const TBook& book, Kt_util_01::TDateTime today) {
  TSample_Contacts written;
  const auto templates = Sample_Templates(book.Key);
  TOther_Texts labels = Other_Labels(book.Key);
  if (labels == Other_Labels({}) && Access_Allowed(book.Key, Access_Update)) {
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
    const std::string contact = Create_Contact(book.Key, sample.Name, Sample_Folder(book.Key, sample.Folder));
    Write_Contact_Details(contact, details);
    Write_Parts(sample.Parts, book.Key, contact, today);
    ++written.Contacts;
    if (!*sample.Event.Title) continue;
    Write_Event(sample.Event, {book.Key, contact}, today);
    ++written.Entries;
  }
  return written;
}

}  // namespace Plexidex
