#pragma once

#include <cstdlib>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

#include "Commands.h"
#include "Database_Test.h"

// A meeting on Mondays with a reminder, private days off, a task for the 18th, and a journal entry.
inline std::string Calendar() {
  return File_Content(KT_CLI_TEST_DATA "/calendar.ics");
}

struct TResult {
  int Status;
  std::string Out, Err;
};

inline TResult Run_With(const std::vector<std::string>& args) {
  std::ostringstream out, err;
  const int status = Plexidex::Run_Program(args, out, err);
  return {status, out.str(), err.str()};
}

/// Runs commands on databases in a folder of its own.
struct Commands_Test : TSeams_Test {
  Commands_Test() { setenv("XDG_DATA_HOME", folder.File("home").c_str(), 1); }
  ~Commands_Test() override { unsetenv("XDG_DATA_HOME"); }

  std::string Write(const std::string& name, const std::string& text = Calendar()) {
    std::ofstream(folder.File(name)) << text;
    return folder.File(name);
  }
  TResult On(const std::string& database, std::vector<std::string> args) {
    args.insert(args.begin(), {"--database", folder.File(database)});
    return Run_With(args);
  }
  // The weeks around the fixed clock's day.
  nlohmann::json Agenda(const std::string& database) {
    return nlohmann::json::parse(
        On(database, {"agenda", "--from", "2024-01-01", "--days", "60", "--format", "json"}).Out);
  }
  // Imports the calendar and opens the database to change it by hand.
  void Import_And_Open() {
    On("a.db", {"import", Write("a.ics")});
    Open_Database(folder.File("a.db"), TDatabase::TMode::Must_Exist);
  }

  TTemporary_Folder folder;
};
