#pragma once

// What the fuzzers of imports share.

#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <iostream>

#include "Import_Update.h"
#include "Kt_util_01.h"
#include "Store_Check.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

/// A database that is emptied before each import, and ends of the program.
struct TImport_Frame {
  explicit TImport_Frame(std::int64_t most_entries) {
    Options.Most_Entries = most_entries;
    Options.Has_Until = true;
    Options.Until = Kt_util_01::Encode_Date(2025, 12, 31);
  }
  /// What the fuzzer thinks of, as a file; its path.
  std::string Write(const char* name, const std::uint8_t* data, std::size_t size) const {
    std::string file = Folder.File(name);
    std::ofstream(file, std::ios::binary)
        .write(reinterpret_cast<const char*>(data), static_cast<std::streamsize>(size));
    return file;
  }
  void Empty(const std::string& deletions) {
    Run_Sql("BEGIN; " + deletions + "; COMMIT");
    Database.Reopen();  // no view may keep what it has read
    Run_Sql("PRAGMA synchronous = OFF");
  }
  /// False when it was refused.
  template <class TImport>
  bool Take(TImport import, const std::string& file) const {
    try {
      import(file, Options);
      return true;
    } catch (const Plexidex::EImport_Error&) {
      return false;
    }
  }
  static void Check(const std::string& what, bool holds) {
    if (holds) return;
    std::cerr << what << std::endl;
    std::abort();
  }
  static void Check_Store() {
    for (const std::string& finding : Kt_data_01::Check_Store()) Check(finding, false);
    Check("an update is open", !Kt_data_01::Update_Is_Open());
  }

  TTest_Seams Seams;
  TTemporary_Database Database;
  TTemporary_Folder Folder;
  Plexidex::TImport_Options Options;
};
