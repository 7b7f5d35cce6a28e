#pragma once

// KTDATA01: the host's shared database as the calendar module sees it. To be used by one thread.

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>
#include <vector>

#include "Kt_event_key.h"
#include "Kt_lists.h"
#include "Kt_text.h"

namespace Kt_data_01 {

using Kt_util_01::TDateTime;

/// A failed table operation: the operation, the table, and the reason as the database states it.
class EData_Error : public std::runtime_error {
 public:
  EData_Error(std::string operation, std::string table, std::string reason);
  const std::string Operation, Table, Reason;
};

/// Thrown inside a bracket or a read when a part of it has failed and has been reported, or when the user has
/// stopped it: FailUpdate then undoes, and FailRead is silent, without a second report.
class EAlready_Reported : public std::exception {
 public:
  const char* what() const noexcept override {
    return "a part of it failed and was reported, or was stopped";
  }
};

/// A value of a row or a key. Texts are not copied and must outlive it.
class TValue {
 public:
  enum class TKind { Integer, Real, Text };

  TValue(bool value) : kind(TKind::Integer), integer(value ? 1 : 0) {}
  TValue(int value) : kind(TKind::Integer), integer(value) {}
  TValue(std::int64_t value) : kind(TKind::Integer), integer(value) {}
  TValue(double value) : kind(TKind::Real), real(value) {}
  TValue(const char* value) : kind(TKind::Text), text(value) {}
  TValue(std::string_view value) : kind(TKind::Text), text(value) {}
  TValue(const std::string& value) : kind(TKind::Text), text(value) {}
  TValue(const TText& value) : kind(TKind::Text), text(value.View()) {}

  TKind Kind() const { return kind; }
  std::int64_t Integer() const { return kind == TKind::Real ? static_cast<std::int64_t>(real) : integer; }
  double Real() const { return kind == TKind::Real ? real : static_cast<double>(integer); }
  std::string_view Text() const { return text; }

 private:
  TKind kind;
  union {
    std::int64_t integer = 0;
    double real;
  };
  std::string_view text;
};

using TValues = std::initializer_list<TValue>;

/// A column of a table, by position from 0. Look it up once and keep it: it is valid for every cursor on that
/// table until the program ends.
struct TField {
  int Position = -1;
};

/// A positioned view of one table, which reads rows in batches; no statement stays open between two calls.
/// Every operation may throw EData_Error; inside an update bracket that also marks the bracket as failed.
class TTable {
 public:
  /// A table of the shared database, ordered as by Set_Index. May be created while no database is open.
  explicit TTable(std::string_view name, std::string_view index = {});
  /// A cursor of its own on the same table, without range, filter or cache, ordered as by Set_Index or in
  /// natural order. With column names it reads only these, the table's first column and those of its index;
  /// access to another throws. A blob column that is named is read along as a text.
  explicit TTable(TTable& table, std::initializer_list<std::string_view> columns = {});
  explicit TTable(TTable& table, std::string_view index,
                  std::initializer_list<std::string_view> columns = {});
  ~TTable();
  TTable(TTable&& other) noexcept;
  TTable(const TTable&) = delete;
  TTable& operator=(const TTable&) = delete;

  const std::string& Name() const;
  /// Throws EData_Error for an unknown column; case-insensitive.
  TField Field(std::string_view column) const;

  /// Orders by an index, and rows with equal keys by insertion; "" is the natural order, by insertion. Clears
  /// range and position. Throws EData_Error for an unknown index; case-insensitive.
  void Set_Index(std::string_view index);
  /// Positions on the first row whose leading index columns equal the values; if there is none, returns false
  /// and positions at the end. Ignores the range, but not the filter.
  bool FindKey(TValues key);
  /// Restricts the view to keys from `low` to `high`, both included, compared by their leading columns.
  /// Clears the position: call First or Last.
  void SetRange(TValues low, TValues high);
  void CancelRange();
  /// Restricts the view to rows that meet an expression such as "(Deleted = False) and (Type = 0)": columns
  /// compared by =, <>, <, <=, > or >= with numbers, quoted texts, True or False, combined by and, or, not
  /// and parentheses. "" removes the filter. Throws EData_Error for an expression that cannot be parsed.
  void Set_Filter(std::string_view expression);

  /// Lets walks leave out most of the rows whose text in a column fails a test; some come nevertheless, so
  /// that whoever walks stays in control. The column must be among those that the view reads. The test runs
  /// within a statement of the engine: it must touch no table and not throw. Null removes it.
  void Set_Text_Test(TField field, std::function<bool(std::string_view)> test);

  /// Reads rows of another table along with this view's batches: those whose key, by the index of
  /// `looked_up`, equals this view's column `via`. Inside a snapshot or bracket, looked_up.FindKey then finds
  /// the row that belongs to this view's current row without a query; it is valid until this view moves.
  /// Where the index is not unique, which one of the prefetched tables may have, a walk through this view
  /// meets a row once with each that belongs to it, as long as neither table changes, or once without any;
  /// Record_Count counts it once. Both views must live equally long and keep their indexes.
  void Prefetch(TField via, TTable& looked_up);

  void First();
  void Last();
  void Next();
  void Prior();
  bool Eof() const;
  bool Bof() const;
  /// The number of rows in range and filter.
  std::int64_t Record_Count() const;

  std::string_view Text(TField field) const;  // valid until the view moves
  TText Shared_Text(TField field) const;      // shared with the cache where the row is cached
  std::int64_t Integer(TField field) const;
  bool Boolean(TField field) const;
  TDateTime DateTime(TField field) const;
  /// The content of a blob column; empty when none was ever written.
  std::string Blob(TField field) const;

  /// Begin a new row, or a change of the current one; written by PostUpdate, discarded by Cancel or by
  /// moving. Edit reads the row again and throws if it has been deleted.
  void Insert();
  void Edit();
  void Cancel();
  void Set(TField field, const TValue& value);
  void Set_Blob(TField field, std::string_view bytes);
  /// Sets the columns in their physical order, from the first.
  void SetFields(TValues values);
  /// Deletes the current row and moves to the next one.
  void Delete();

 private:
  friend void PostUpdate(TTable& table);
  friend void Set_Cache(TTable& table);
  friend void Cache_Off(TTable& table);
  class TImpl;
  std::unique_ptr<TImpl> impl;
};

/// Reads and writes a blob column of a table's current or pending row as a stream.
class TBlob_Stream {
 public:
  enum class TMode { Read, Write };
  /// Opening for writing empties the column; the table must be inserting or editing. The destructor puts what
  /// was written into the pending row.
  TBlob_Stream(TTable& table, TField field, TMode mode);
  ~TBlob_Stream();
  TBlob_Stream(const TBlob_Stream&) = delete;
  TBlob_Stream& operator=(const TBlob_Stream&) = delete;
  void Write(std::string_view bytes) { data.append(bytes); }
  const std::string& Data() const { return data; }

 private:
  TTable& table;
  TField field;
  TMode mode;
  std::string data;
};

/// Bytes in memory with a position.
class TMemory_Stream {
 public:
  TMemory_Stream() = default;
  explicit TMemory_Stream(std::string bytes) : data(std::move(bytes)) {}
  std::size_t Position = 0;
  std::size_t Size() const { return data.size(); }
  void Write(std::string_view bytes);
  /// From the position to the end; leaves the position at the end.
  std::string_view Read_All();

 private:
  std::string data;
};

extern TTable Events_Table, Events_Data, Alarms_Table;
extern TTable Contacts_Table, Contacts_Data, Books_Table, Filters_Table, Templates_Table, Categories_Table,
    Categories_InUse, Fields_Table, Flags_Table, Links_Table, Log_Table;

/// `Type` of a row of Contacts_Table. Stored: never renumber.
inline constexpr int Contact_Type_Contact = 0;
inline constexpr int Contact_Type_Folder = 1;
/// The book's own calendar record, one per book, without a parent.
inline constexpr int Contact_Type_Calendar = 2;

/// Key of a book's calendar record; "" for an unknown book.
std::string Calendar_Of_Book(std::string_view book);

/// A folder of contacts.
struct TFolder {
  std::string Key, Name;
  std::string Parent;  // "" at the top of the book
  int Depth = 0;       // 0 at the top
};

/// Those that the current user may see, each before those in it, by name. One that lies in none of these, or
/// in itself, is at the top. Throws EData_Error.
std::vector<TFolder> List_Folders(std::string_view book);

/// The keys of all folders below a folder, at whatever depth; without it. None for an unknown one.
std::vector<std::string> Get_SubGroups(std::string_view folder);

/// Switches record caching on and off around a long scan: rows found by a unique key are kept, and a table in
/// which much is looked up is read as a whole. The cache is used only inside a snapshot or bracket, and
/// emptied when the table changes.
void Set_Cache(TTable& table);
void Cache_Off(TTable& table);

/// While one exists, all reads see the same state of the database, until an update is started. Snapshots
/// nest.
class TSnapshot {
 public:
  TSnapshot();
  ~TSnapshot();
  TSnapshot(const TSnapshot&) = delete;
  TSnapshot& operator=(const TSnapshot&) = delete;
};

/// Numbers that move with every change of the database: All by whomever, of other connections Others alone.
struct TChange_Numbers {
  std::uint64_t All = 0, Others = 0;
};
/// Looks at no table. Throws EData_Error.
TChange_Numbers Change_Numbers();

// ---- the update bracket --------------------------------------------------------------------------------

/// Opens a bracket; brackets nest, an inner one can be undone by itself. False, with no bracket opened, when
/// the database is read-only, or remains locked by another writer beyond the busy time, or is not open; the
/// host then tells the user why, each time.
bool Start_Update();
/// Writes the table's pending insert or edit; does nothing without one.
void PostUpdate(TTable& table);
/// Closes the bracket and keeps what it wrote. If the bracket has failed (a table operation threw, or an
/// exception is being thrown through it), it undoes the bracket instead and throws EData_Error, unless an
/// exception is in flight. Throws EData_Error, with the bracket undone, when the database cannot commit.
void EndUpdate();
/// To be called from the handler of the exception that ended the bracket: undoes the bracket unless EndUpdate
/// has done so, and reports the failure once, with the tag, after the outermost bracket has closed. Cancels
/// the ranges and pending changes of the module's tables. Never throws.
void FailUpdate(std::string_view tag);
/// Reports a failed read, from the handler of its exception, unless that says it was reported. Never throws.
void FailRead(std::string_view tag);
bool Update_Is_Open();

// ---- rights, users, journal, holidays --------------------------------------------------------------------

/// Whether the host lets its user set permissions, and whether its database asks for a password.
extern bool DB_Permissions, DB_Secure;

inline constexpr int Access_Create = 1;
inline constexpr int Access_Update = 2;
inline constexpr int Access_Delete = 3;
inline constexpr int Access_See = 4;

/// Whether a user ("" is the current one) has one of the four rights on the objects of an owner: a contact or
/// calendar record, whose rights fall back to its folder and then to its book. The rights are separate, none
/// implies another. An unknown owner and an unknown level give false in a database with users.
bool Access_Allowed(std::string_view owner, int level, std::string_view user = {});
struct TUser {
  std::string Key, Name;
};
/// All users, by name; in a database without users its owner alone.
std::vector<TUser> Get_User_List();
/// "" for an unknown key.
std::string Get_UserName(std::string_view user);

/// Records, for the current user, the event that an editor has created for a new entry, so that it can be
/// removed if the program is killed; inside a bracket only.
void Note_Open_Editor(std::string_view event);
void Forget_Open_Editor(std::string_view event);
/// The events recorded for the current user.
std::vector<std::string> Noted_Editors();

/// Writes a journal entry; inside a bracket only. `minutes` is the time spent.
void LogJournal(int type, std::string_view occurrence, std::string_view contact, std::string_view title,
                TDateTime date, std::string_view text, int minutes, TDateTime second_date);
/// Removes the journal entries of an occurrence; inside a bracket only.
void RemoveLog(std::string_view occurrence);

/// Forgets from where an event was imported, and with the last event of its calendar object what was kept of
/// the file's text; inside a bracket only.
void Forget_Import(std::string_view event);

/// Appends the holidays from the day of `from` to the day of `to`, in order.
void Build_Holidays_Data(TEventKey_List& list, TDateTime from, TDateTime to);

}  // namespace Kt_data_01
