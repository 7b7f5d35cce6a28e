#include "Criterion_Text.h"

#include <algorithm>
#include <numeric>
#include <optional>
#include <utility>
#include <vector>

#include "Criteria_Rules.h"
#include "Kt_util_01.h"

namespace KTReminds {

using namespace Kt_util_01;
using Kt_data_01::Trimmed;

namespace {

constexpr std::string_view Match_Case = "(match case)", Whole_Word = "(whole word)", Number_Place = "(x)";

// ---- names in a text -----------------------------------------------------------------------------------

std::string_view Character_At(std::string_view text, std::size_t at) {
  std::size_t end = at + 1;
  while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80) ++end;
  return text.substr(at, end - at);
}

// As names are compared; an apostrophe may be the one of a printed text.
std::string Folded(std::string_view character) {
  return character == "\u2019" ? "'" : Simple_UpperCase(character);
}

bool Is_Blank(char c) {
  return c == ' ' || c == '\t';
}

std::size_t After_Blanks(std::string_view text, std::size_t at) {
  while (at < text.size() && Is_Blank(text[at])) ++at;
  return at;
}

// Behind hyphens or dashes; `at` itself when there are none.
std::size_t After_Dashes(std::string_view text, std::size_t at) {
  while (at < text.size()) {
    const std::string_view character = Character_At(text, at);
    if (character != "-" && character != "\u2013" && character != "\u2014") break;
    at += character.size();
  }
  return at;
}

bool Ends_A_Word(std::string_view text, std::size_t at) {
  return at == text.size() || Is_Blank(text[at]) || text[at] == ':' || After_Dashes(text, at) > at;
}

// Where the number that may stand for "(x)" ends.
std::size_t After_Number(std::string_view text, std::size_t at) {
  const std::size_t digits = at < text.size() && (text[at] == '-' || text[at] == '+') ? at + 1 : at;
  std::size_t end = digits;
  while (end < text.size() && text[end] >= '0' && text[end] <= '9') ++end;
  return end > digits ? end : at;
}

struct TMatch {
  std::size_t End = 0;
  std::string Number{};
};

// A name at a place of a text, at whose end a word ends.
std::optional<TMatch> Match(std::string_view text, std::size_t at, std::string_view name) {
  TMatch match;
  name = Trimmed(name);
  for (std::size_t in = 0; in < name.size();) {
    if (Is_Blank(name[in])) {
      const std::size_t end = After_Blanks(text, at);
      if (end == at) return {};
      at = end;
      in = After_Blanks(name, in);
      continue;
    }
    if (const std::size_t end = After_Number(text, at);
        end > at && name.substr(in).starts_with(Number_Place)) {
      match.Number = text.substr(at, end - at);
      at = end;
      in += Number_Place.size();
      continue;
    }
    if (at >= text.size()) return {};
    const std::string_view wanted = Character_At(name, in), there = Character_At(text, at);
    if (Folded(wanted) != Folded(there)) return {};
    in += wanted.size();
    at += there.size();
  }
  if (!Ends_A_Word(text, at)) return {};
  match.End = at;
  return match;
}

// ---- what to say of one that is not there --------------------------------------------------------------

std::string Quoted(std::string_view text) {
  return '"' + std::string(text) + '"';
}

std::string Listed(const std::vector<std::string>& names, std::string_view last_word) {
  std::string list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    if (i > 0) list += i + 1 < names.size() ? ", " : " " + std::string(last_word) + " ";
    list += Quoted(names[i]);
  }
  return list;
}

// How many bytes tell a name from a text, or from the beginning of it that is most alike.
std::size_t Distance(std::string_view text, std::string_view name, bool only_beginning) {
  std::vector<std::size_t> row(text.size() + 1);
  std::iota(row.begin(), row.end(), std::size_t{0});
  for (std::size_t i = 0; i < name.size(); ++i) {
    std::size_t diagonal = std::exchange(row[0], i + 1);
    for (std::size_t j = 1; j < row.size(); ++j) {
      const std::size_t changed = diagonal + (name[i] == text[j - 1] ? 0 : 1);
      diagonal = row[j];
      row[j] = std::min({changed, row[j] + 1, row[j - 1] + 1});
    }
  }
  return only_beginning ? *std::min_element(row.begin(), row.end()) : row.back();
}

// The names most alike, the best first; all, in their order, when they are few.
std::string Nearest(std::string_view text, std::vector<std::string> names, bool only_beginning = false) {
  constexpr std::size_t few = 6, shown = 3, longest_text = 200;
  std::vector<std::string> distinct;
  for (std::string& name : names) {
    if (std::find(distinct.begin(), distinct.end(), name) == distinct.end())
      distinct.push_back(std::move(name));
  }
  if (distinct.size() <= few) return Listed(distinct, "or");
  const std::string folded = Simple_UpperCase(text.substr(0, longest_text));
  std::vector<std::pair<double, std::string>> order;
  for (std::string& name : distinct) {
    const auto distance = static_cast<double>(Distance(folded, Simple_UpperCase(name), only_beginning));
    order.emplace_back(distance / static_cast<double>(name.size()), std::move(name));
  }
  std::stable_sort(order.begin(), order.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  distinct.clear();
  for (std::size_t i = 0; i < shown; ++i) distinct.push_back(std::move(order[i].second));
  return Listed(distinct, "or");
}

[[noreturn]] void Refuse(const std::string& sentence) {
  throw ECriterion_Error(sentence);
}

// ---- the field -----------------------------------------------------------------------------------------

struct TOffered {
  int Group;
  std::string Group_Name, Template;
  int Code;
  std::string Name, In_List;  // the latter without "Field", of a template
};

// A template's field as the text of a criterion has it, from what lists show. To ask each template for each
// of its names would take long.
std::string With_Field(std::string shown, int code) {
  const std::string part = std::string(" [") + Find_Template_Field(code)->Part + "]";
  const std::size_t at = shown.ends_with(part) ? shown.size() - part.size() : shown.size();
  return shown.insert(at, " Field");
}

std::vector<TOffered> Offered_Fields(const std::string& book) {
  TSearch_Choices groups, fields;
  Populate_Search_Fields(book, groups);
  for (TSearch_Choice& group : Calendar_Groups()) {
    if (std::find(groups.begin(), groups.end(), group) == groups.end()) groups.push_back(std::move(group));
  }
  std::vector<TOffered> offered;
  for (const TSearch_Choice& group : groups) {
    std::string of;
    Get_Template_Name(group.Code, group.Name, book, of, false);
    Populate_Type_Fields(group.Code, fields, book, group.Name);
    for (const TSearch_Choice& field : fields) {
      // A part of a template that has no label cannot be named.
      if (field.Name.empty() || field.Name.starts_with(" [")) continue;
      offered.push_back({group.Code, group.Name, of, field.Code,
                         of.empty() ? field.Name : With_Field(field.Name, field.Code), field.Name});
    }
  }
  return offered;
}

// The longer of two matches; either may be none.
std::optional<TMatch> Longer(std::optional<TMatch> a, std::optional<TMatch> b) {
  return !a || (b && b->End > a->End) ? std::move(b) : std::move(a);
}

std::optional<TMatch> Match_Field(std::string_view text, const TOffered& field) {
  const auto match = [&](std::size_t at) {
    return Longer(Match(text, at, field.Name), Match(text, at, field.In_List));
  };
  if (const auto group = Match(text, 0, field.Group_Name)) {
    const std::size_t colon = After_Blanks(text, group->End);
    if (colon < text.size() && text[colon] == ':') {
      if (auto found = match(After_Blanks(text, colon + 1))) return found;
    }
  }
  return match(0);
}

[[noreturn]] void Refuse_Field(std::string_view text, const std::vector<TOffered>& offered) {
  const std::size_t dashes = std::min({text.find("--"), text.find("\u2013"), text.find("\u2014")});
  const bool no_end = dashes == std::string_view::npos || dashes == 0;
  const std::string_view head = no_end ? text : Trimmed(text.substr(0, dashes));
  std::vector<std::string> groups, fields, fields_of_group;
  std::size_t behind_group = 0;
  for (const TOffered& field : offered) {
    groups.push_back(field.Group_Name);
    fields.push_back(field.Name);
    const auto group = Match(head, 0, field.Group_Name);
    if (!group || !head.substr(After_Blanks(head, group->End)).starts_with(':')) continue;
    behind_group = After_Blanks(head, group->End) + 1;
    fields_of_group.push_back(field.Name);
  }
  if (!fields_of_group.empty()) {
    const std::string_view field = Trimmed(head.substr(behind_group));
    Refuse(Quoted(field) + " is no field of " + Quoted(Trimmed(head.substr(0, behind_group - 1))) +
           "; what comes nearest is " + Nearest(field, fields_of_group, no_end) + ".");
  }
  const std::size_t colon = head.find(':');
  if (!no_end && colon != std::string_view::npos) {
    const std::string_view group = Trimmed(head.substr(0, colon));
    Refuse(Quoted(group) + " is no group of fields; what comes nearest is " + Nearest(group, groups) + ".");
  }
  Refuse(Quoted(head) + (no_end ? " begins with no field" : " is no field") +
         " to search for; what comes nearest is " + Nearest(head, fields, no_end) + ".");
}

// The field with which a text begins, and where it ends.
std::pair<TOffered, std::size_t> Read_Field(std::string_view text, const std::string& book) {
  const std::vector<TOffered> offered = Offered_Fields(book);
  std::vector<const TOffered*> found;
  std::size_t end = 0;
  for (const TOffered& field : offered) {
    const auto match = Match_Field(text, field);
    if (!match || match->End < end) continue;
    if (match->End > end) found.clear();
    end = match->End;
    found.push_back(&field);
  }
  if (found.empty()) Refuse_Field(text, offered);
  std::vector<std::string> groups;
  for (const TOffered* field : found) {
    if (groups.empty() || groups.back() != field->Group_Name) groups.push_back(field->Group_Name);
  }
  if (groups.size() > 1) {
    Refuse(Quoted(found.front()->Name) + " is a field of " + Listed(groups, "and of") +
           "; write one of these and a colon before it.");
  }
  return {*found.front(), end};
}

// ---- the action and its value --------------------------------------------------------------------------

// Days may be one day, and "the" be left out.
std::optional<TMatch> Match_Action(std::string_view text, std::size_t at, std::string_view name) {
  constexpr std::string_view the = " the", days = " Days";
  std::optional<TMatch> match = Match(text, at, name);
  if (name.ends_with(the)) match = Longer(match, Match(text, at, name.substr(0, name.size() - the.size())));
  if (name.ends_with(days)) match = Longer(match, Match(text, at, name.substr(0, name.size() - 1)));
  return match;
}

std::pair<int, TMatch> Read_Action(std::string_view text, std::size_t at, const TOffered& field) {
  TSearch_Choices actions;
  Populate_Search_Actions(actions, field.Code, field.Group);
  std::optional<TMatch> best;
  int code = 0;
  std::vector<std::string> names;
  for (const TSearch_Choice& action : actions) {
    names.push_back(action.Name);
    auto match = Match_Action(text, at, action.Name);
    if (!match || (best && best->End >= match->End)) continue;
    best = std::move(match);
    code = action.Code;
  }
  if (best) return {code, *std::move(best)};
  const std::string_view rest = text.substr(at), typed = Trimmed(rest.substr(0, rest.find(':')));
  if (typed.empty())
    Refuse(Quoted(field.Name) + " must be followed by how it is compared, such as " +
           Nearest({}, std::move(names)) + ".");
  Refuse(Quoted(typed) + " is nothing that " + Quoted(field.Name) +
         " can be compared by; what comes nearest is " + Nearest(typed, std::move(names), true) + ".");
}

// Takes a mark off the end of a value.
bool Take_Off(std::string_view& value, std::string_view mark) {
  const std::size_t at = value.rfind('(');
  const auto match = at == std::string_view::npos ? std::nullopt : Match(value, at, mark);
  if (!match || match->End != value.size()) return false;
  value = Trimmed(value.substr(0, at));
  return true;
}

// The value as it is kept; refuses one that the action cannot be asked with.
std::string Checked_Value(int action, const std::string& value, const std::string& book) {
  const auto must_be = [&](const std::string& what) {
    Refuse(Quoted(value) + " behind " + Quoted(Get_Action_Name(action)) + " is not " + what + ".");
  };
  const auto example = [](int days) { return FormatDateTime("ddddd", Today() + days); };
  std::string parsed = value;
  std::int32_t number = 0;
  TDateTime first = 0, second = 0;
  switch (Parse_Value(parsed, action, number, first, second)) {
    case TValue_Fault::No_Number:
      must_be("a whole number");
      break;
    case TValue_Fault::No_Date:
      must_be("a date such as " + example(0));
      break;
    case TValue_Fault::No_Range:
      must_be("two dates such as " + example(0) + " and " + example(1));
      break;
    default:
      break;
  }
  if (Show_Selection_Button(action)) {
    TSearch_Choices categories;
    Populate_Value_List(book, Search_Category, categories);
    std::vector<std::string> names;
    for (const TSearch_Choice& category : categories) {
      if (CompareText(category.Name, value) == 0) return category.Name;
      names.push_back(category.Name);
    }
    must_be("a category of the book, which has " +
            (names.empty() ? "none" : Nearest(value, std::move(names))));
  }
  return value;
}

}  // namespace

std::string Criterion_Text(const TSearchRecord& record, int index, const std::string& book) {
  std::string text = record.Get_Search_Criteria(index, book);
  const int action = record.Get_Action(index);
  const auto add = [&text](std::string_view mark) { (text += ' ') += mark; };
  if (record.Get_MatchCase(index) && Show_MatchCase_Box(action)) add(Match_Case);
  if (record.Get_WholeWord(index) && Show_WholeWord_Box(action)) add(Whole_Word);
  return text;
}

TSearchItem Read_Criterion(std::string_view typed, const std::string& book) {
  const std::string valid = Valid_UTF8(typed);
  const std::string_view text = Trimmed(valid);
  if (text.empty()) Refuse("A criterion is empty; one reads like \"Contact Name -- Contains: Jonas\".");
  const auto [field, end_of_field] = Read_Field(text, book);
  const std::size_t dashes = After_Dashes(text, After_Blanks(text, end_of_field));
  const auto [action, match] = Read_Action(text, After_Blanks(text, dashes), field);

  std::size_t at = After_Blanks(text, match.End);
  if (at < text.size() && text[at] == ':') ++at;
  std::string_view rest = Trimmed(text.substr(at));
  bool match_case = false, whole_word = false;
  for (int mark = 0; mark < 2; ++mark) {
    match_case = Take_Off(rest, Match_Case) || match_case;
    whole_word = Take_Off(rest, Whole_Word) || whole_word;
  }
  const std::string name = Get_Action_Name(action);
  if ((match_case && !Show_MatchCase_Box(action)) || (whole_word && !Show_WholeWord_Box(action)))
    Refuse(Quoted(whole_word && !Show_WholeWord_Box(action) ? Whole_Word : Match_Case) +
           " does not go with " + Quoted(name) + ".");
  if (!rest.empty() && !match.Number.empty())
    Refuse(Quoted(rest) + " is one value too many behind " + Quoted(text.substr(0, match.End)) + ".");
  std::string value = match.Number.empty() ? std::string(rest) : match.Number;
  if (Show_Value_Field(action)) {
    if (value.empty()) Refuse(Quoted(name) + " needs a value behind it.");
    value = Checked_Value(action, value, book);
  } else if (!value.empty()) {
    Refuse(Quoted(name) + " takes no value, but " + Quoted(value) + " stands behind it.");
  }
  return TSearchItem(field.Group, field.Code, action, std::move(value), field.Template, match_case,
                     whole_word);
}

}  // namespace KTReminds
