#pragma once

#include <fstream>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

#include "Calendar_Import.h"
#include "Database_Test.h"
#include "Store_Check.h"

using namespace Plexidex;

/// In Berlin, with an empty book.
struct Import_Fixture : TDatabase_Test {
  static std::string Replaced(const std::string& text, const char* what, const char* by) {
    return std::regex_replace(text, std::regex(what), by);
  }
  /// A component of lines between bars.
  static std::string Component(const std::string& kind, const std::string& lines) {
    return "BEGIN:" + kind + "\r\n" + Replaced(lines, "\\|", "\r\n") + "\r\nEND:" + kind + "\r\n";
  }
  static std::string Event(const std::string& lines) { return Component("VEVENT", lines); }
  static std::string Task(const std::string& lines) { return Component("VTODO", lines); }
  static std::string Calendar(const std::string& components) {
    return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + components + "END:VCALENDAR\r\n";
  }
  /// A calendar of the folder data, with the line ends of the format.
  static std::string Data(const std::string& name) {
    return Replaced(File_Content(KT_TEST_DATA "/" + name + ".ics"), "\n", "\r\n");
  }

  /// A sound in the folder of sounds.
  std::string Sound_File(const std::string& name) const {
    Kt_util_01::Install_Sound_Folder(folder.File(""));
    std::ofstream(folder.File(name)) << "RIFF";
    return folder.File(name);
  }
  std::string File(const std::string& text) const {
    std::ofstream(folder.File("in.ics"), std::ios::binary) << text;
    return folder.File("in.ics");
  }
  TImport_Report Import_Text(const std::string& text) const { return Import_Calendar(File(text), options); }
  TImport_Report Import(const std::string& components) const { return Import_Text(Calendar(components)); }

  static std::string As_In_File(double date) { return FormatDateTime("yyyymmdd\"T\"hhnnss", date); }
  /// The dates of all events of a title in order.
  static std::string Dates_Of(const std::string& title) {
    std::string dates;
    const auto statement = Shared_Database().Engine().Prepare(
        "SELECT EventDate FROM KT_Events_Data d JOIN KT_Events e ON e.Key = d.Event WHERE Title = ? ORDER BY "
        "1");
    statement->Bind(0, std::string_view(title));
    while (statement->Step()) dates += (dates.empty() ? "" : " ") + As_In_File(statement->Real(0));
    return dates;
  }
  static std::string Of(const std::string& title, const std::string& columns) {
    return Query_Rows(columns, "KT_Events WHERE Title = '" + title + "'");
  }

  /// Every row of every table.
  static std::string Dump() {
    std::string dump;
    for (const TTable_Def& table : Schema()) {
      const std::string name(table.Name);
      const std::string columns = Query_Text(
          "SELECT group_concat('quote(\"' || name || '\")', ', ') FROM "
          "pragma_table_info('" +
          name + "')");
      dump += name + ": " + Query_Rows(columns, name + " ORDER BY 1") + "\n";
    }
    return dump;
  }
  static bool Is_Sound() { return Check_Store().empty(); }

  static std::string Remarks(const std::vector<TImport_Remark>& remarks) {
    std::string text;
    for (const auto& remark : remarks) text += remark.What + ": " + remark.Why + "\n";
    return text;
  }
  /// What a report counts, but for zeros: "read 2, sets 1, events 1, tasks 1, occurrences 9".
  static std::string Told(const TImport_Report& report) {
    std::string told;
    for (const auto& [name, count] : {std::pair<const char*, std::int64_t>("read ", report.Read),
                                      {"sets ", report.Sets},
                                      {"events ", report.Events},
                                      {"tasks ", report.Tasks},
                                      {"occurrences ", report.Occurrences},
                                      {"unchanged ", report.Unchanged},
                                      {"replaced ", report.Replaced}}) {
      if (count != 0) told += (told.empty() ? "" : ", ") + (name + std::to_string(count));
    }
    return told;
  }

  TTemporary_Folder folder;
  TImport_Options options;
};
