#pragma once

#include <gtest/gtest.h>

#include <string>

#include "Books.h"
#include "Contacts.h"
#include "Database.h"
#include "Rights.h"

/// A folder of its own for one test, removed with everything in it.
class TTemporary_Folder {
 public:
  TTemporary_Folder();
  ~TTemporary_Folder();
  TTemporary_Folder(const TTemporary_Folder&) = delete;
  TTemporary_Folder& operator=(const TTemporary_Folder&) = delete;
  std::string File(const std::string& name) const { return path + "/" + name; }

 private:
  std::string path;
};

/// The shared database on a new file, with one book.
class TTemporary_Database {
 public:
  TTemporary_Database();
  ~TTemporary_Database();
  TTemporary_Database(const TTemporary_Database&) = delete;
  TTemporary_Database& operator=(const TTemporary_Database&) = delete;

  std::string Path() const { return folder.File("test.db"); }
  const Kt_data_01::TBook& Book() const { return book; }
  /// Closes and opens again.
  void Reopen(const Kt_data_01::TSqlite_Options& options = {});

 private:
  TTemporary_Folder folder;
  Kt_data_01::TBook book;
};

/// First column of the first row of a query on the shared database, bypassing the table layer; 0 without a
/// row.
std::int64_t Query_Number(const std::string& sql);
std::string Query_Text(const std::string& sql);
void Run_Sql(const std::string& sql);

/// Runs a body in an update bracket that must open and close well.
template <class TBody>
void In_Update(TBody body) {
  ASSERT_TRUE(Kt_data_01::Start_Update());
  body();
  ASSERT_NO_THROW(Kt_data_01::EndUpdate());
}
