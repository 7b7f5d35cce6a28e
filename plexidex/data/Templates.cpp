#include "Templates.h"

#include <algorithm>

#include "Contacts.h"
#include "Kt_util_01.h"

namespace Kt_data_01 {

namespace {

constexpr int Style_Column = 25;

TField Column(int counted_from_1) {
  return {counted_from_1 - 1};
}

TTemplate Read(const TTable& table) {
  TTemplate read{std::string(table.Text(table.Field("Key"))),
                 std::string(table.Text(table.Field("Book"))),
                 std::string(table.Text(table.Field("Name"))),
                 {},
                 {}};
  for (std::size_t i = 0; i < Template_Fields.size(); ++i)
    read.Labels[i] = table.Text(Column(Template_Fields[i].Label_Column));
  const std::int64_t style = table.Integer(Column(Style_Column));
  for (const TAddress_Style known : {TAddress_Style::US, TAddress_Style::UK}) {
    if (style == static_cast<std::int64_t>(known)) read.Address_Style = known;
  }
  return read;
}

std::vector<std::string> Contacts_Of(std::string_view key) {
  std::vector<std::string> contacts;
  TTable details(Contacts_Data, {"Contact", "Template"});
  const TField contact = details.Field("Contact"), of = details.Field("Template");
  for (details.First(); !details.Eof(); details.Next()) {
    if (details.Text(of) == key) contacts.emplace_back(details.Text(contact));
  }
  return contacts;
}

}  // namespace

std::string Field_Name(const TTemplate& of, std::size_t field) {
  if (!of.Labels[field].empty()) return of.Labels[field];
  const TField_Kind kind = Template_Fields[field].Kind;
  static constexpr const char* names[] = {"Text", "Telephone", "E-mail", "Web page", "Address"};
  std::size_t first = field;
  while (first > 0 && Template_Fields[first - 1].Kind == kind) --first;
  std::string name = names[static_cast<std::size_t>(kind)];
  if (kind != TField_Kind::Address && kind != TField_Kind::Web)
    name += ' ' + std::to_string(field - first + 1);
  return name;
}

std::vector<TTemplate> List_Templates(std::string_view book) {
  std::vector<TTemplate> list;
  TTable table(Templates_Table);
  const TField of = table.Field("Book");
  for (table.First(); !table.Eof(); table.Next()) {
    if (table.Text(of) == book) list.push_back(Read(table));
  }
  return list;
}

std::optional<TTemplate> Find_Template(std::string_view key) {
  TTable table(Templates_Table, "Key");
  if (!table.FindKey({key})) return {};
  return Read(table);
}

void Add_First_Templates(std::string_view book) {
  const std::string of(book);
  TTemplate person{{},
                   of,
                   "Person",
                   {"Title", "Company", "Job title", "", "", "Home", "Mobile", "Work", "Fax", "", "E-mail",
                    "E-mail at work", "Web page", "Address"},
                   {}};
  TTemplate company{{},
                    of,
                    "Company",
                    {"Contact person", "Line of business", "Customer number", "", "", "Telephone", "Mobile",
                     "", "Fax", "", "E-mail", "", "Web page", "Address"},
                    {}};
  Write_Template(person);
  Write_Template(company);
}

bool Is_Template_Name_Taken(std::string_view book, std::string_view name, std::string_view own_key) {
  const auto all = List_Templates(book);
  return std::any_of(all.begin(), all.end(), [&](const TTemplate& one) {
    return one.Key != own_key && Kt_util_01::CompareText(one.Name, name) == 0;
  });
}

bool Write_Template(TTemplate& written) {
  if (Is_Template_Name_Taken(written.Book, written.Name, written.Key))
    throw EData_Error("name", "KT_Templates", "there is a template \"" + written.Name + "\" already");
  TTable table(Templates_Table, "Key");
  if (written.Key.empty()) {
    written.Key = Kt_util_01::Get_GUID();
    table.Insert();
    table.Set(table.Field("Key"), written.Key);
    table.Set(table.Field("Book"), written.Book);
  } else {
    if (!table.FindKey({written.Key})) return false;
    table.Edit();
  }
  table.Set(table.Field("Name"), written.Name);
  for (std::size_t i = 0; i < Template_Fields.size(); ++i)
    table.Set(Column(Template_Fields[i].Label_Column), written.Labels[i]);
  table.Set(Column(Style_Column), static_cast<int>(written.Address_Style));
  PostUpdate(table);
  return true;
}

std::int64_t Contacts_With(std::string_view key) {
  return static_cast<std::int64_t>(Contacts_Of(key).size());
}

void Remove_Template(const TTemplate& removed, const TTemplate& instead) {
  for (const std::string& contact : Contacts_Of(removed.Key)) {
    TContact_Details details = Read_Contact_Details(contact);
    const TFitted fitted = Fit(details.Fields, removed, instead);
    details.Template = instead.Key;
    details.Fields = fitted.Fields;
    details.Notes = Notes_With(std::move(details.Notes), fitted);
    Write_Contact_Details(contact, details);
  }
  TTable table(Templates_Table, "Key");
  if (table.FindKey({removed.Key})) table.Delete();
}

TFitted Fit(const TContact_Fields& fields, const TTemplate& from, const TTemplate& to) {
  constexpr std::size_t count = Template_Fields.size();
  TFitted fitted;
  const auto try_to_place = [&](std::size_t field, std::size_t place) {
    const TTemplate_Field &source = Template_Fields[field], &target = Template_Fields[place];
    if (source.Kind != target.Kind || to.Labels[place].empty() || !fitted.Fields[target.Code].empty())
      return false;
    fitted.Fields[target.Code] = fields[source.Code];
    return true;
  };
  std::vector<std::size_t> unplaced;
  // The labels first, so that no other field has taken the place.
  for (std::size_t field = 0; field < count; ++field) {
    const TTemplate_Field& source = Template_Fields[field];
    if (source.Kind == TField_Kind::Address || fields[source.Code].empty()) continue;
    bool placed = false;
    for (std::size_t place = 0; place < count && !placed; ++place) {
      placed =
          Kt_util_01::CompareText(to.Labels[place], from.Labels[field]) == 0 && try_to_place(field, place);
    }
    if (!placed) unplaced.push_back(field);
  }
  for (const std::size_t field : unplaced) {
    bool placed = false;
    if (Template_Fields[field].Kind != TField_Kind::Text) {
      placed = try_to_place(field, field);
      for (std::size_t place = 0; place < count && !placed; ++place) placed = try_to_place(field, place);
    }
    if (!placed) fitted.Left.emplace_back(Field_Name(from, field), fields[Template_Fields[field].Code]);
  }
  constexpr std::size_t address = count - 1;
  const TContact_Fields in_style = With_Address_In(fields, to.Address_Style);
  if (!to.Labels[address].empty()) {
    for (int code = Field_Address; code <= Field_Postcode; ++code) fitted.Fields[code] = in_style[code];
    fitted.Fields[Field_Country] = in_style[Field_Country];
  } else if (!in_style[Field_Address].empty()) {
    fitted.Left.emplace_back(Field_Name(from, address), in_style[Field_Address]);
  }
  return fitted;
}

std::string Notes_With(std::string notes, const TFitted& fitted) {
  for (const auto& [name, text] : fitted.Left) {
    if (!notes.empty() && notes.back() != '\n') notes += '\n';
    notes += name + ": " + text;
  }
  return notes;
}

}  // namespace Kt_data_01
