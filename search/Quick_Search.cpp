#include "Quick_Search.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <unordered_map>

#include "Entry_Walk.h"
#include "Event_Record.h"
#include "Kt_util_01.h"
#include "Search_Buffer.h"

namespace KTReminds {

using namespace Kt_data_01;
using namespace Kt_util_01;

namespace {

using TSteady = std::chrono::steady_clock;
constexpr std::chrono::milliseconds One_Step{8};

// The texts of a table in one, line by line, so that all of them are gone through at once.
struct TLines {
  std::string Texts;
  std::vector<std::size_t> Ends{};  // behind the end of the line
  std::vector<std::string> Keys{};

  void Add(std::string_view key, std::string_view text) {
    Texts.append(First_Characters(text, Searched_Characters)).append("\n");
    Ends.push_back(Texts.size());
    Keys.emplace_back(key);
  }
  std::string_view Line(std::size_t row) const {
    const std::size_t start = row == 0 ? 0 : Ends[row - 1];
    return std::string_view(Texts).substr(start, Ends[row] - start - 1);
  }
  std::size_t Row_At(std::size_t position) const {
    return static_cast<std::size_t>(std::upper_bound(Ends.begin(), Ends.end(), position) - Ends.begin());
  }
};

struct TMaster {
  TQuick_Search::TGroup Group;
  bool Timeless;
};

}  // namespace

class TQuick_Search::TImpl {
 public:
  TImpl() {
    const auto is_in = [this](std::string_view line) { return Is_In(line); };
    early_events.Set_Text_Test(Event_Columns().Title, is_in);
    early_contacts.Set_Text_Test(name_field, is_in);
  }

  void Look_For(std::string_view new_text) {
    text = Trimmed(new_text);
    wanted.reset();
    if (!text.empty()) wanted.emplace(text, false, false);
    found = early = {};
    early_phase = TEarly::Begin;
    hits = {};
    looked_up = {};
    position = 0;
    if (phase > TPhase::Match_Titles) phase = TPhase::Match_Titles;
  }

  bool Step() {
    if (const auto changes = Change_Numbers().All; changes != shown_changes || user != User_Key()) {
      shown_changes = changes;
      user = User_Key();
      phase = TPhase::Begin;
      Look_For(std::string(text));
    }
    const auto end = TSteady::now() + One_Step;
    while (phase != TPhase::Done && TSteady::now() < end) {
      if (wanted && phase < TPhase::Match_Titles && early_phase != TEarly::Done) Look_Early();
      Go_On();
    }
    return phase != TPhase::Done;
  }

  const TFound& Found(TGroup group) const {
    return found[group].Rows.empty() && phase <= TPhase::Look_Up ? early[group] : found[group];
  }

 private:
  // In this order, each a few rows at a time.
  enum class TPhase {
    Begin,
    Read_Titles,
    Read_Names,
    Match_Titles,
    Match_Names,
    Look_Up,
    Begin_Notes,
    Match_Notes,
    Done
  };

  // What is found while the texts are still being read, which would be too long to wait for.
  enum class TEarly { Begin, Titles, Names, Done };

  bool Is_In(std::string_view line) const {
    return wanted->Find(First_Characters(line, Searched_Characters)).has_value();
  }

  void Look_Early() {
    const TEvent_Columns& column = Event_Columns();
    switch (early_phase) {
      case TEarly::Begin:
        early_contacts.Set_Filter(Live_Contacts());
        early_events.First();
        early_contacts.First();
        early_phase = TEarly::Titles;
        break;
      case TEarly::Titles:
        if (early_events.Eof() || early[Events].Count + early[Tasks].Count >= Most_Rows) {
          early_phase = TEarly::Names;
          break;
        }
        if (const auto master = Master_At(early_events); master && Is_In(early_events.Text(column.Title))) {
          Look_Up(early[master->Group], early_events.Text(column.Key), early_events.Text(column.Title),
                  master->Timeless);
        }
        early_events.Next();
        break;
      case TEarly::Names:
        if (early_contacts.Eof() || early[Contacts].Count >= Most_Rows) {
          early_phase = TEarly::Done;
          break;
        }
        if (Is_In(early_contacts.Text(name_field)))
          Add_Contact(early[Contacts], early_contacts.Text(key_field), early_contacts.Text(book_field),
                      early_contacts.Text(name_field), true);
        early_contacts.Next();
        break;
      case TEarly::Done:
        break;
    }
  }

  void Go_On() {
    constexpr int few_rows = 64, few_masters = 4;
    switch (phase) {
      case TPhase::Begin:
        Begin_Reading();
        break;
      case TPhase::Read_Titles:
        for (int i = 0; i < few_rows && phase == TPhase::Read_Titles; ++i) Read_Title();
        break;
      case TPhase::Read_Names:
        for (int i = 0; i < few_rows && phase == TPhase::Read_Names; ++i) Read_Name();
        break;
      case TPhase::Match_Titles:
        if (!wanted) {
          phase = TPhase::Done;
          break;
        }
        Match(masters, TPhase::Match_Names,
              [this](std::size_t row) { hits[kinds[row].Group].push_back(row); });
        break;
      case TPhase::Match_Names:
        Match(names, TPhase::Look_Up, [this](std::size_t row) { Add_Contact(row, true); });
        break;
      case TPhase::Look_Up:
        for (int i = 0; i < few_masters; ++i) Look_Up_Next();
        break;
      case TPhase::Begin_Notes:
        notes.First();
        phase = TPhase::Match_Notes;
        break;
      case TPhase::Match_Notes:
        for (int i = 0; i < few_rows && phase == TPhase::Match_Notes; ++i) Match_Note();
        break;
      case TPhase::Done:
        break;
    }
  }

  void Begin_Reading() {
    masters = names = {};
    kinds.clear();
    books.clear();
    by_key.clear();
    contacts.Set_Filter(Live_Contacts());
    events.First();
    contacts.First();
    phase = TPhase::Read_Titles;
  }

  static std::string Live_Contacts() {
    return "(Deleted = False) and not (Type <> " + std::to_string(Contact_Type_Contact) + ")";
  }

  // Nothing for an entry of another kind, and for one whose title the user may not see.
  std::optional<TMaster> Master_At(const TTable& table) const {
    const TEvent_Columns& column = Event_Columns();
    const TEntry_Type type = Read_Entry_Type(table);
    if (Is_Hidden(table) || (type != TEntry_Type::Event && type != TEntry_Type::Task)) return {};
    return TMaster{type == TEntry_Type::Task ? Tasks : Events, table.Boolean(column.AllDay)};
  }

  void Read_Title() {
    const TEvent_Columns& column = Event_Columns();
    if (events.Eof()) {
      phase = TPhase::Read_Names;
      return;
    }
    if (const auto master = Master_At(events)) {
      masters.Add(events.Text(column.Key), events.Text(column.Title));
      kinds.push_back(*master);
    }
    events.Next();
  }

  void Read_Name() {
    if (contacts.Eof()) {
      for (std::size_t row = 0; row < names.Keys.size(); ++row) by_key.emplace(names.Keys[row], row);
      phase = TPhase::Match_Titles;
      return;
    }
    names.Add(contacts.Text(key_field), contacts.Text(name_field));
    books.push_back(contacts.Shared_Text(book_field));
    contacts.Next();
  }

  // Some lines that hold the text.
  template <class TTake>
  void Match(const TLines& lines, TPhase next, TTake take) {
    constexpr int few = 256;
    for (int i = 0; i < few; ++i) {
      const auto match = wanted->Find(lines.Texts, position);
      if (!match) {
        position = 0;
        phase = next;
        return;
      }
      const std::size_t row = lines.Row_At(match->Begin);
      position = lines.Ends[row];
      take(row);
    }
  }

  void Add_Contact(std::size_t row, bool in_order) {
    Add_Contact(found[Contacts], names.Keys[row], books[row].Str(), names.Line(row), in_order);
  }
  static void Add_Contact(TFound& of, std::string_view key, std::string_view book, std::string_view text,
                          bool in_order) {
    if (!Access_Allowed(key, Access_See)) return;
    ++of.Count;
    if (of.Rows.size() == Most_Rows) return;
    const TText name(text);
    const auto place = in_order ? std::upper_bound(of.Rows.begin(), of.Rows.end(), Sort_Key(name),
                                                   [](const std::string& key, const TRow& other) {
                                                     return key < Sort_Key(other.Title);
                                                   })
                                : of.Rows.end();
    of.Rows.insert(place, {std::string(key), {}, std::string(book), name, 0, false});
  }

  // Of very many events those made last are looked at; whether the user may see the others is not known.
  void Look_Up_Next() {
    constexpr std::size_t most_counted = 400, most_looked_up = 4'000;
    for (const TGroup group : {Events, Tasks}) {
      const auto& rows = hits[group];
      const std::size_t done = looked_up[group];
      if (done == rows.size()) continue;
      found[group].Is_Least = found[group].Count == most_counted || done == most_looked_up;
      if (found[group].Is_Least) continue;
      ++looked_up[group];
      const std::size_t master = rows[rows.size() - 1 - done];
      Look_Up(found[group], masters.Keys[master], masters.Line(master), kinds[master].Timeless);
      return;
    }
    phase = TPhase::Begin_Notes;
  }

  // The coming ones first, by date, and then the others, the latest first.
  static bool Is_Before(TDateTime a, TDateTime b) {
    const TDateTime today = Today();
    if ((a >= today) != (b >= today)) return a >= today;
    return a >= today ? a < b : a > b;
  }

  // Counts and adds a master with its date, if one is shown.
  void Look_Up(TFound& of, std::string_view master, std::string_view title, bool timeless) {
    const TOccurrence_Columns& column = Occurrence_Columns();
    std::optional<TRow> best;
    occurrences.SetRange({master}, {master});
    for (occurrences.First(); !occurrences.Eof(); occurrences.Next()) {
      const TDateTime date = occurrences.DateTime(column.EventDate);
      if ((best && !Is_Before(date, best->Date)) || !Is_Visible(owners, occurrences.Text(column.Contact)))
        continue;
      best = TRow{std::string(occurrences.Text(column.Key)),
                  std::string(occurrences.Text(column.Contact)),
                  std::string(occurrences.Text(column.Book)),
                  TText(title),
                  date,
                  timeless};
    }
    if (!best) return;
    ++of.Count;
    const auto place =
        std::upper_bound(of.Rows.begin(), of.Rows.end(), *best,
                         [](const TRow& a, const TRow& b) { return Is_Before(a.Date, b.Date); });
    of.Rows.insert(place, std::move(*best));
    if (of.Rows.size() > Most_Rows) of.Rows.pop_back();
  }

  void Match_Note() {
    if (notes.Eof()) {
      phase = TPhase::Done;
      return;
    }
    TNotes_Control& control = Search_Notes_Control();
    control.Set_Text(notes.Text(notes_field));
    if (control.Find(text, std::string_view::npos, false, false)) {
      const auto contact = by_key.find(notes.Text(contact_field));
      if (contact != by_key.end() && !wanted->Find(names.Line(contact->second)))
        Add_Contact(contact->second, false);
    }
    notes.Next();
  }

  TPhase phase = TPhase::Begin;
  TEarly early_phase = TEarly::Begin;
  std::uint64_t shown_changes = 0;
  std::string user, text;
  std::optional<TText_Finder> wanted;
  TLines masters{}, names{};
  std::vector<TMaster> kinds;
  std::vector<TText> books;
  std::unordered_map<std::string_view, std::size_t> by_key;  // contacts, of which the keys are those of names
  std::size_t position = 0;
  std::array<TFound, Groups> found{}, early{};
  std::array<std::vector<std::size_t>, Groups> hits{};
  std::array<std::size_t, Groups> looked_up{};
  TTable events{Events_Table, {"Title", "EventType", "User", "Private", "AllDay"}};
  TTable contacts{Contacts_Table, {"Key", "DisplayName", "Book", "Type", "Deleted"}};
  TTable early_events{events, {"Title", "EventType", "User", "Private", "AllDay"}};
  TTable early_contacts{contacts, {"Key", "DisplayName", "Book", "Type", "Deleted"}};
  TTable occurrences{Events_Data, "Event", {"Key", "Contact", "Book", "Event", "EventDate"}};
  TTable owners = Entry_Contacts();
  TTable notes{Contacts_Data, {"Contact", "Notes"}};
  const TField key_field = contacts.Field("Key"), name_field = contacts.Field("DisplayName"),
               book_field = contacts.Field("Book"), contact_field = notes.Field("Contact"),
               notes_field = notes.Field("Notes");
};

TQuick_Search::TQuick_Search() : impl(std::make_unique<TImpl>()) {}
TQuick_Search::~TQuick_Search() = default;

void TQuick_Search::Look_For(std::string_view text) {
  impl->Look_For(text);
}

bool TQuick_Search::Step() {
  return impl->Step();
}

const TQuick_Search::TFound& TQuick_Search::Found(TGroup group) const {
  return impl->Found(group);
}

}  // namespace KTReminds
