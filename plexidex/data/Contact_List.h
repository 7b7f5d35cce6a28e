#pragma once

// The contacts of a book as rows, sorted and narrowed.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace Kt_data_01 {

enum class TContact_Column { Name, Telephone, Mail, Template, Folder, Categories };
inline constexpr int Contact_Columns = 6;

struct TContact_Row {
  std::string Key, Name;
  std::string Telephone, Mail;  // the first that the contact has
  std::string Template;         // its name
  std::string Folder;           // the name of one that the user may see
  std::string Categories{};     // by name: "Club, Friends"
  bool Tagged = false;          // by the current user
  const std::string& Text(TContact_Column column) const;
};

/// The deleted or the other contacts of a book, or of one of its folders and all below it, that the current
/// user may see, in no order. Throws EData_Error.
std::vector<TContact_Row> Read_Contact_Rows(std::string_view book, bool deleted,
                                            std::string_view folder = {});
/// Those of these contacts of a book that are not deleted, as far as the current user may see them, in no
/// order. Throws EData_Error.
std::vector<TContact_Row> Read_Rows_Of_Contacts(std::string_view book, const std::vector<std::string>& keys);

class TContact_List {
 public:
  /// Begins by name and not narrowed.
  void Set_Rows(std::vector<TContact_Row> new_rows);
  /// By the user's order of texts without regard to case, rows with equal texts by name; empty texts last.
  void Sort(TContact_Column column, bool ascending);
  /// Leaves those in which each word of the text occurs, in any case, in name, telephone, also by its digits
  /// alone, or e-mail. Not in template, folder and categories, whose names many rows share.
  void Narrow(std::string_view text);

  std::size_t Count() const { return shown.size(); }
  std::size_t Count_Of_All() const { return rows.size(); }
  const TContact_Row& Row(std::size_t position) const { return rows[shown[position]]; }
  void Set_Tagged(const std::unordered_set<std::string>& keys, bool tagged);
  /// The number of a row, which it keeps in every order until others are set.
  std::uint32_t Number(std::size_t position) const { return shown[position]; }
  /// Nothing when it is not there or not shown.
  std::optional<std::size_t> Position_Of(std::string_view key) const;

 private:
  using TNumbers = std::vector<std::uint32_t>;
  void Fold();
  bool Has_Words(std::uint32_t row) const;

  std::vector<TContact_Row> rows;
  TNumbers by_name;        // of all rows
  TNumbers sorted, shown;  // all rows, and those that are left, in the order chosen
  std::vector<std::string> words;
  // All texts in upper case, by name as they are mostly walked, and where those of each row lie; made when
  // they are first needed.
  struct TPlace {
    std::size_t Start = 0, Length = 0;
  };
  std::string folded;
  std::vector<TPlace> places;
};

}  // namespace Kt_data_01
