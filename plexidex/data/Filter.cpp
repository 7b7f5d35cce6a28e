#include "Filter.h"

#include <cctype>

#include "Sql_Text.h"

namespace Kt_data_01 {

namespace {

// expression: term { "or" term }; term: factor { "and" factor };
// factor: "not" factor | "(" expression ")" | column comparison literal
class TFilter_Parser {
 public:
  TFilter_Parser(const TTable_Def& table, std::string_view text) : table(table), text(text) { Advance(); }

  std::string Parse() {
    std::string condition = Expression();
    if (!token.empty()) Refuse();
    return condition;
  }

 private:
  static constexpr int Max_Depth = 100;

  [[noreturn]] void Refuse() const {
    throw EData_Error("filter", std::string(table.Name),
                      "\"" + std::string(text) + "\" cannot be read at " +
                          (token.empty() ? std::string("its end") : "\"" + token + "\""));
  }

  static bool Is_Word(char c) { return std::isalnum(static_cast<unsigned char>(c)) || c == '_' || c == '.'; }

  void Advance() {
    while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at]))) ++at;
    token.clear();
    if (at == text.size()) return;
    const char c = text[at];
    if (c == '\'') {
      do {
        token += text[at++];
        if (at == text.size()) Refuse();
      } while (text[at] != '\'' ||
               (at + 1 < text.size() && text[at + 1] == '\'' && (token += text[at++], true)));
      token += text[at++];
    } else if (Is_Word(c) || (c == '-' && at + 1 < text.size() && Is_Word(text[at + 1]))) {
      do token += text[at++];
      while (at < text.size() && Is_Word(text[at]));
    } else {
      token += text[at++];
      if ((c == '<' || c == '>') && at < text.size() && (text[at] == '=' || (c == '<' && text[at] == '>'))) {
        token += text[at++];
      }
    }
  }

  bool Accept(std::string_view word) {
    if (!Same_Name(token, word)) return false;
    Advance();
    return true;
  }

  std::string Expression() {
    if (++depth > Max_Depth) Refuse();
    std::string condition = Term();
    while (Accept("or")) condition += " OR " + Term();
    --depth;
    return condition;
  }

  std::string Term() {
    std::string condition = Factor();
    while (Accept("and")) condition += " AND " + Factor();
    return condition;
  }

  std::string Factor() {
    if (Accept("not")) {
      if (++depth > Max_Depth) Refuse();
      const std::string operand = Factor();
      --depth;
      return "NOT " + operand;
    }
    if (Accept("(")) {
      const std::string inside = Expression();
      if (!Accept(")")) Refuse();
      return "(" + inside + ")";
    }
    return Comparison();
  }

  std::string Comparison() {
    const int column = table.Column(token);
    if (token.empty() || column < 0) Refuse();
    const TColumn_Def& def = table.Columns[static_cast<std::size_t>(column)];
    if (def.Type == TColumn_Type::Blob) Refuse();
    Advance();
    const std::string comparison = token;
    for (const std::string_view known : {"=", "<>", "<", "<=", ">", ">="}) {
      if (comparison != known) continue;
      Advance();
      return Column_Sql(table, column) + " " + comparison + " " + Literal(def.Type);
    }
    Refuse();
  }

  std::string Literal(TColumn_Type type) {
    std::string literal;
    if (type == TColumn_Type::Text) {
      if (token.size() < 2 || token.front() != '\'') Refuse();
      literal = token;
    } else if (Same_Name(token, "True") || Same_Name(token, "False")) {
      if (type != TColumn_Type::Boolean) Refuse();
      literal = Same_Name(token, "True") ? "1" : "0";
    } else {
      const std::size_t digits = token.find_first_not_of("0123456789.", token.starts_with('-') ? 1 : 0);
      if (token.empty() || token == "-" || digits != std::string::npos || token.find('.') != token.rfind('.'))
        Refuse();
      literal = token;
    }
    Advance();
    return literal;
  }

  const TTable_Def& table;
  std::string_view text;
  std::size_t at = 0;
  std::string token;
  int depth = 0;
};

}  // namespace

std::string Filter_Condition(const TTable_Def& table, std::string_view expression) {
  return TFilter_Parser(table, expression).Parse();
}

}  // namespace Kt_data_01
