#pragma once

#include <gtest/gtest.h>

#include <fstream>
#include <initializer_list>
#include <string>
#include <vector>

#include "Calendar_Import.h"
#include "Kt_util_01.h"
#include "Temporary_Database.h"
#include "Test_Seams.h"

namespace Kt_test {

/// Noon of 15 January 2024 in Berlin, with an empty book.
class Import_Fixture : public ::testing::Test {
 protected:
  using TLines = std::initializer_list<const char*>;

  static std::string Component(const char* kind, TLines lines) {
    std::string text = std::string("BEGIN:") + kind + "\r\n";
    for (const char* line : lines) text += std::string(line) + "\r\n";
    return text + "END:" + kind + "\r\n";
  }
  static std::string Event(TLines lines) { return Component("VEVENT", lines); }
  static std::string Task(TLines lines) { return Component("VTODO", lines); }
  static std::string Calendar(const std::string& components) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + components + "END:VCALENDAR\r\n";
  }

  std::string File(const std::string& text) {
    std::ofstream(m_Folder.File("in.ics"), std::ios::binary) << text;
    return m_Folder.File("in.ics");
  }
  Plexidex::TImport_Report Import(const std::string& components) {
    return Plexidex::Import_Calendar(File(Calendar(components)), m_Options);
  }

  /// All rows of a query, their first column.
  static std::vector<std::string> Rows(const std::string& query) {
    std::vector<std::string> rows;
    const auto statement = Kt_data_01::Shared_Database().Engine().Prepare(query);
    while (statement->Step()) rows.emplace_back(statement->Text(0));
    return rows;
  }
  /// The dates of all events of a title, in order.
  static std::vector<std::string> Dates(const std::string& title) {
    std::vector<std::string> dates;
    const auto statement = Kt_data_01::Shared_Database().Engine().Prepare(
        "SELECT EventDate FROM KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event WHERE Title = ? ORDER BY "
        "1");
    statement->Bind(0, std::string_view(title));
    while (statement->Step()) dates.push_back(Kt_util_01::ISO_DateTime(statement->Real(0)));
    return dates;
  }
  static std::string Of(const std::string& title, const char* column) {
    return Query_Text(std::string("SELECT ") + column + " FROM KT_Events WHERE Title = '" + title + "'");
  }

  /// Every row of every table.
  static std::string Dump() {
    std::string dump;
    for (const std::string& table : Rows("SELECT name FROM sqlite_schema WHERE type = 'table' ORDER BY 1")) {
      const std::string columns = Query_Text(
          "SELECT group_concat('quote(\"' || name || '\")', ' || '','' || ') "
          "FROM pragma_table_info('" +
          table + "')");
      for (const std::string& row : Rows("SELECT " + columns + " FROM " + table + " ORDER BY 1")) {
        dump += table + ": " + row + "\n";
      }
    }
    return dump;
  }

  /// Occurrences without an event, alarms without an occurrence, events without an occurrence.
  static std::int64_t Unsound_Rows() {
    return Query_Number(
        "SELECT (SELECT count(*) FROM KT_Events_Data WHERE Event NOT IN (SELECT Key FROM KT_Events)) + "
        "(SELECT count(*) FROM KT_Alarms WHERE Key NOT IN (SELECT Key FROM KT_Events_Data)) + "
        "(SELECT count(*) FROM KT_Events WHERE Key NOT IN (SELECT Event FROM KT_Events_Data))");
  }

  static std::string Remarks(const std::vector<Plexidex::TImport_Remark>& remarks) {
    std::string text;
    for (const auto& remark : remarks) text += remark.What + ": " + remark.Why + "\n";
    return text;
  }

  TTest_Seams m_Seams;
  TTemporary_Database m_Database;
  TTemporary_Folder m_Folder;
  Plexidex::TImport_Options m_Options;
};

}  // namespace Kt_test
