#include "Temporary_Database.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <sstream>

#include "Kt_util_01.h"

using namespace Kt_data_01;

TTemporary_Folder::TTemporary_Folder()
    : path((std::filesystem::temp_directory_path() / ("kt_" + Kt_util_01::Get_GUID())).string()) {
  std::filesystem::create_directories(path);
}

TTemporary_Folder::~TTemporary_Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path, ignored);
}

std::string File_Content(const std::string& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

TTemporary_Database::TTemporary_Database() {
  Open_Database(Path(), TDatabase::TMode::Create_If_Missing);
  In_Update([this] { book = Create_Book("Home"); });
}

TTemporary_Database::~TTemporary_Database() {
  Close_Database();
}

void TTemporary_Database::Reopen(const TSqlite_Options& options) {
  Open_Database(Path(), TDatabase::TMode::Must_Exist, options);
}

std::int64_t Query_Number(const std::string& sql) {
  const auto statement = Shared_Database().Engine().Prepare(sql);
  return statement->Step() ? statement->Integer(0) : 0;
}

std::string Query_Text(const std::string& sql) {
  const auto statement = Shared_Database().Engine().Prepare(sql);
  return statement->Step() ? std::string(statement->Text(0)) : std::string();
}

void Run_Sql(const std::string& sql) {
  Shared_Database().Engine().Execute(sql);
}

std::string Query_Rows(const std::string& columns, const std::string& from) {
  const std::string row = std::regex_replace(columns, std::regex(", "), ", '') || '|' || coalesce(");
  return Query_Text("SELECT coalesce(group_concat(row, ', '), '') FROM (SELECT coalesce(" + row +
                    ", '') AS row FROM " + from + ")");
}

std::string Counts() {
  return Query_Text(
      "SELECT (SELECT count(*) FROM KT_Events) || ' ' || (SELECT count(*) FROM KT_Events_Data) || ' ' || "
      "(SELECT count(*) FROM KT_Alarms) || coalesce((SELECT ' +' || nullif(count(*), 0) FROM "
      "KT_Open_Editors), '')");
}

std::string Dates() {
  return Query_Text(
      "SELECT coalesce(group_concat(round(EventDate - 45306, 3) || iif(Actioned, '!', ''), ' '), '') FROM "
      "(SELECT * FROM KT_Events_Data ORDER BY EventDate)");
}

void Plant(const std::string& when) {
  Unplant();
  Run_Sql("CREATE TRIGGER planted BEFORE " + when + " BEGIN SELECT RAISE(ABORT, 'planted fault'); END");
}

void Unplant() {
  Run_Sql("DROP TRIGGER IF EXISTS planted");
}
