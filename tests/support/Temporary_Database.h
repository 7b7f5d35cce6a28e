#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Books.h"
#include "Contacts.h"
#include "Database.h"
#include "Rights.h"
#include "Users.h"

/// A folder of its own for one test, removed with everything in it.
struct TTemporary_Folder {
  TTemporary_Folder();
  ~TTemporary_Folder();
  TTemporary_Folder(const TTemporary_Folder&) = delete;
  TTemporary_Folder& operator=(const TTemporary_Folder&) = delete;
  std::string File(const std::string& name) const { return path + "/" + name; }

 private:
  std::string path;
};

/// Every byte of a file; "" when it cannot be read.
std::string File_Content(const std::string& path);

/// The shared database on a new file, with one book.
struct TTemporary_Database {
  TTemporary_Database();
  ~TTemporary_Database();
  TTemporary_Database(const TTemporary_Database&) = delete;
  TTemporary_Database& operator=(const TTemporary_Database&) = delete;

  std::string Path() const { return folder.File("test.db"); }
  const Kt_data_01::TBook& Book() const { return book; }
  /// Closes and opens again.
  void Reopen(const Kt_data_01::TSqlite_Options& options = {});
  void Reopen_Read_Only() { Reopen({.Read_Only = true}); }

 private:
  TTemporary_Folder folder;
  Kt_data_01::TBook book;
};

/// First column of the first row of a query on the shared database, bypassing the table layer; 0 without a
/// row.
std::int64_t Query_Number(const std::string& sql);
std::string Query_Text(const std::string& sql);
void Run_Sql(const std::string& sql);

/// The rows of a table or more as one text, in order if `from` says so: "a|1, b|2". `columns` are separated
/// by a comma and a blank, which no single one may hold.
std::string Query_Rows(const std::string& columns, const std::string& from);
/// How many masters, occurrences and alarms there are: "1 3 3", and " +1" for a note of an open editor.
std::string Counts();
/// The dates of the occurrences in order, in days from Monday, 15 January 2024; done ones with a mark:
/// "0.0! 0.5 7.604".
std::string Dates();
/// From now on what `when` names, such as "INSERT ON KT_Log", gives the error "planted fault". One at a time.
void Plant(const std::string& when);
void Unplant();

/// Runs a body in an update bracket that must open and close well.
template <class TBody>
void In_Update(TBody body) {
  ASSERT_TRUE(Kt_data_01::Start_Update());
  body();
  ASSERT_NO_THROW(Kt_data_01::EndUpdate());
}
