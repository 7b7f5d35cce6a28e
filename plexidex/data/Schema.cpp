#include "Schema.h"

#include <algorithm>
#include <cctype>

namespace Kt_data_01 {

namespace {

constexpr TColumn_Type Text = TColumn_Type::Text;
constexpr TColumn_Type Integer = TColumn_Type::Integer;
constexpr TColumn_Type Boolean = TColumn_Type::Boolean;
constexpr TColumn_Type DateTime = TColumn_Type::DateTime;
constexpr TColumn_Type Blob = TColumn_Type::Blob;

std::vector<TColumn_Def> Template_Columns() {
  static const std::vector<std::string> names = [] {
    std::vector<std::string> made;
    for (int i = 1; i <= 40; ++i) made.push_back("Field" + std::to_string(i));
    return made;
  }();
  std::vector<TColumn_Def> columns;
  for (int i = 1; i <= 40; ++i) {
    if (i == 1) {
      columns.push_back({"Key", Text});
    } else if (i == 25) {
      columns.push_back({"AddressStyle", Integer});
    } else {
      columns.push_back({names[static_cast<std::size_t>(i - 1)], Text});
    }
  }
  columns.push_back({"Book", Text});
  columns.push_back({"Name", Text});
  return columns;
}

// Gives every book a person and a company, made in this order, and makes every contact a person. Keys are
// UUIDs of version 7, a millisecond apart.
constexpr const char* First_Templates_Sql = R"(
    CREATE TEMP TABLE first_templates AS
      SELECT 0 AS number, 'Person' AS name, 'Title' AS text1, 'Company' AS text2, 'Job title' AS text3,
        'Home' AS tel1, 'Mobile' AS tel2, 'Work' AS tel3, 'E-mail at work' AS mail2
      UNION ALL SELECT 1, 'Company', 'Contact person', 'Line of business', 'Customer number',
        'Telephone', 'Mobile', '', '';
    INSERT INTO "KT_Templates" ("Key", "Book", "Name", "Field38", "Field39", "Field40", "Field7", "Field8",
        "Field9", "Field10", "Field29", "Field30", "Field31", "Field6")
      SELECT substr(moment, 1, 8) || '-' || substr(moment, 9, 4) || '-7' || substr(chance, 1, 3) || '-8' ||
          substr(chance, 4, 3) || '-' || substr(chance, 7, 12),
        book, name, text1, text2, text3, tel1, tel2, tel3, 'Fax', 'E-mail', mail2, 'Web page', 'Address'
      FROM (SELECT b."Key" AS book, f.*, lower(hex(randomblob(9))) AS chance,
              printf('%012x', CAST(strftime('%s', 'now') AS INTEGER) * 1000 + f.number) AS moment
            FROM "KT_Books" b, first_templates f ORDER BY b.row_id, f.number);
    DROP TABLE first_templates;
    INSERT INTO "KT_Contacts_Data" ("Contact") SELECT c."Key" FROM "KT_Contacts" c
      WHERE c."Type" = 0 AND NOT EXISTS (SELECT 1 FROM "KT_Contacts_Data" d WHERE d."Contact" = c."Key");
    UPDATE "KT_Contacts_Data" SET "Template" =
      coalesce((SELECT t."Key" FROM "KT_Templates" t, "KT_Contacts" c
                WHERE c."Key" = "Contact" AND t."Book" = c."Book" AND t."Name" = 'Person'), '');)";

// Gives activities the numbers that the journal has for them; until then they had some of their own.
std::string Journal_Types_Sql(const std::string& table, const std::string& where) {
  return " UPDATE \"" + table +
         "\" SET \"Type\" = CASE \"Type\" WHEN 1 THEN 0 WHEN 2 THEN 16 WHEN 3 THEN 1 WHEN 4 THEN 14 WHEN 5 "
         "THEN 18 WHEN 6 THEN 18 WHEN 17 THEN 19 WHEN 19 THEN 21 ELSE \"Type\" END WHERE " +
         where + ";";
}

std::vector<TTable_Def> Make_Schema() {
  return {
      {"KT_Books", {{"Key", Text}, {"BookName", Text}}, {{"Key", {"Key"}, true}}},
      {"KT_Users",
       {{"Key", Text},
        {"Name", Text},
        {"Administrator", Boolean},
        {"Password", Text},     // a hash with its parameters; "" for none
        {"Failures", Integer},  // wrong passwords since the last right one
        {"FailedAt", DateTime}},
       {{"Key", {"Key"}, true}, {"Name", {"Name"}, true}}},
      {"KT_Rights",
       {{"Owner", Text},
        {"User", Text},
        {"Level1", Boolean},
        {"Level2", Boolean},
        {"Level3", Boolean},
        {"Level4", Boolean}},
       {{"OwnerandUser", {"Owner", "User"}, true}}},
      {"KT_Contacts",
       {{"Key", Text},
        {"DisplayName", Text},
        {"Type", Integer},
        {"Book", Text, 0, "KT_Books"},
        {"Parent", Text},
        {"Group", Text},
        {"User", Text},
        {"Deleted", Boolean},
        {"ModifiedBy", Text},
        {"ModifiedAt", DateTime}},
       {{"Key", {"Key"}, true},
        {"TypeBookandParent", {"Type", "Book", "Parent"}},
        {"ParentandGroup", {"Parent", "Group"}},
        {"BookandUser", {"Book", "User"}}}},
      {"KT_Contacts_Data",
       {{"Contact", Text, 0, "KT_Contacts"},
        {"Template", Text},
        {"Field1", Text},
        {"Field2", Text},
        {"Field3", Text},
        {"Field4", Text},
        {"Field5", Text},
        {"Field6", Text},
        {"Field7", Text},
        {"Field8", Text},
        {"Field9", Text},
        {"Field10", Text},
        {"Field11", Text},
        {"Field12", Text},
        {"Field13", Text},
        {"Field14", Text},
        {"Field15", Text},
        {"Field16", Text},
        {"Field17", Text},
        {"Field18", Text},
        {"Field19", Text},
        {"Field20", Text},
        {"Other_1", Text},
        {"Other_2", Text},
        {"Other_3", Text},
        {"Other_4", Text},
        {"Other_5", Text},
        {"Other_6", Text},
        {"Other_7", Text},
        {"Other_8", Text},
        {"Notes", Blob}},
       {{"Contact", {"Contact"}}, {"ContactandTemplate", {"Contact", "Template"}, true}}},
      {"KT_Events",
       {{"Key", Text},           {"FirstDate", DateTime}, {"Title", Text},
        {"Location", Text},      {"LastDate", DateTime},  {"Freq", Integer},
        {"Period", Integer},     {"Priority", Integer},   {"PeriodDefault", Boolean},
        {"User", Text},          {"AllDay", Boolean},     {"Private", Boolean},
        {"P1", Boolean},         {"P2", Boolean},         {"P3", Boolean},
        {"P4", Boolean},         {"P5", Boolean},         {"P6", Boolean},
        {"P7", Boolean},         {"P8", Boolean},         {"P9", Boolean},
        {"P10", Boolean},        {"Month", Integer},      {"Instance", Integer},
        {"EventType", Integer},  {"Started", Integer},    {"Completed", Integer},
        {"Percentage", Integer}, {"Status", Integer},     {"Budget", Integer},
        {"Worked", Integer},     {"Type", Integer, -1},   {"Notes", Blob}},
       {{"Key", {"Key"}, true}, {"EventType", {"EventType"}}}},
      {"KT_Events_Data",
       {{"Key", Text},
        {"Contact", Text},
        {"Book", Text},
        {"Event", Text, 0, "KT_Events"},
        {"Actioned", Boolean},
        {"EventDate", DateTime}},
       {{"Key", {"Key"}, true},
        {"Event", {"Event"}},
        {"ContactandDate", {"Contact", "EventDate"}},
        {"BookandDate", {"Book", "EventDate"}}}},
      {"KT_Alarms",
       {{"Key", Text, 0, "KT_Events_Data"},
        {"User", Text},
        {"Offset", Integer},
        {"WAVFile", Text},
        {"NextTime", DateTime},
        {"Actioned", Boolean}},
       {{"Key", {"Key"}, true}}},
      {"KT_Filters",
       {{"User", Text}, {"BookKey", Text}, {"Name", Text}, {"Settings", Blob}},
       {{"User", {"User", "BookKey", "Name"}, true}}},
      {"KT_Templates", Template_Columns(), {{"Key", {"Key"}, true}, {"BookandName", {"Book", "Name"}}}},
      {"KT_Categories",
       {{"Key", Text}, {"Book", Text}, {"Name", Text}},
       {{"Key", {"Key"}, true}, {"Book", {"Book"}}, {"BookandName", {"Book", "Name"}}}},
      {"KT_Categories_InUse",
       {{"Category", Text}, {"Contact", Text}},
       {{"KeyandContact", {"Category", "Contact"}, true}, {"Contact", {"Contact"}}}},
      {"KT_Fields",
       {{"Book", Text},
        {"Other_1", Text},
        {"Other_2", Text},
        {"Other_3", Text},
        {"Other_4", Text},
        {"Other_5", Text},
        {"Other_6", Text},
        {"Other_7", Text},
        {"Other_8", Text}},
       {{"Book", {"Book"}, true}}},
      {"KT_Flags", {{"User", Text}, {"Contact", Text}}, {{"User", {"User", "Contact"}, true}}},
      {"KT_Links",
       {{"Contact", Text}, {"Title", Text}, {"FileOrUrl", Text}, {"HasLink", Boolean}},
       {{"Contact", {"Contact"}}}},
      {"KT_Log",
       {{"Contact", Text},
        {"Type", Integer},
        {"LogDate", DateTime},
        {"SecondDate", DateTime},
        {"Title", Text},
        {"Description", Text},
        {"Occurrence", Text},
        {"Minutes", Integer},
        {"PrivateTo", Text}},
       {{"ContactandType", {"Contact", "Type"}}, {"Contact", {"Contact"}}, {"Occurrence", {"Occurrence"}}}},
      {"KT_Holidays",
       {{"HolidayDate", DateTime}, {"Name", Text}, {"Country", Text}},
       {{"HolidayDate", {"HolidayDate"}}, {"CountryandDate", {"Country", "HolidayDate", "Name"}, true}}},
      {"KT_Settings", {{"Name", Text}, {"Value", Text}}, {{"Name", {"Name"}, true}}},
      // What was imported, so that importing the same file again changes nothing and a changed component
      // replaces the earlier one.
      {"KT_Imports",
       {{"Book", Text},
        {"UID", Text},
        {"Digest", Text},
        {"Zone", Text},         // the user's own at that time
        {"Imported", Integer},  // the day
        {"Until", Integer},     // the last day of endless rules
        {"Cut", Boolean}},      // it was more than the import allowed
       {{"BookandUID", {"Book", "UID"}, true}}},
      // Part: the component of the text that the event was made of, from 0.
      {"KT_Import_Events",
       {{"Book", Text}, {"UID", Text}, {"Event", Text}, {"Part", Integer}},
       {{"BookandUID", {"Book", "UID"}}, {"Event", {"Event"}}}},
      // The components as they came, for what no other table holds, while one of their events is there; and
      // the time zones that they name.
      {"KT_Import_Texts",
       {{"Book", Text}, {"UID", Text}, {"Content", Blob}},
       {{"BookandUID", {"Book", "UID"}, true}}},
      {"KT_Import_Zones",
       {{"Book", Text}, {"Digest", Text}, {"Content", Blob}},
       {{"BookandDigest", {"Book", "Digest"}, true}}},
      // The cards that contacts were imported from, as they came, for what no other table holds, and to tell
      // what was changed here since. Birthday: the event made of it.
      {"KT_Cards",
       {{"Book", Text},
        {"UID", Text},
        {"Contact", Text},
        {"Digest", Text},
        {"Birthday", Text},
        {"Content", Blob}},
       {{"BookandUID", {"Book", "UID"}, true}, {"Contact", {"Contact"}, true}}},
      // When each alarm goes off: a row for a row of KT_Alarms, kept with it.
      {"KT_Alerts",
       {{"Occurrence", Text},
        {"User", Text},
        {"Moment", DateTime},     // the event's date less the alarm's offset
        {"NextTime", DateTime},   // the alarm's, when the row was written
        {"Due", DateTime},        // the one of the two that counts
        {"Dismissed", Integer}},  // Alert_Open and its like
       {{"Occurrence", {"Occurrence"}, true}, {"UserandDue", {"User", "Dismissed", "Due"}}}},
      {"KT_Open_Editors", {{"User", Text}, {"Event", Text}}, {{"UserandEvent", {"User", "Event"}, true}}},
  };
}

}  // namespace

bool Same_Name(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); });
}

int TTable_Def::Column(std::string_view name) const {
  for (std::size_t i = 0; i < Columns.size(); ++i) {
    if (Same_Name(Columns[i].Name, name)) return static_cast<int>(i);
  }
  return -1;
}

int TTable_Def::Known_Column(std::string_view name) const {
  const int column = Column(name);
  if (column < 0)
    throw EData_Error("open", std::string(Name), "there is no column \"" + std::string(name) + "\"");
  return column;
}

const TIndex_Def* TTable_Def::Index(std::string_view name) const {
  for (const TIndex_Def& index : Indexes) {
    if (Same_Name(index.Name, name)) return &index;
  }
  return nullptr;
}

const std::vector<TTable_Def>& Schema() {
  static const std::vector<TTable_Def> schema = Make_Schema();
  return schema;
}

const std::vector<TMigration>& Migrations() {
  static const std::vector<TMigration> migrations = {
      {2, R"(
        ALTER TABLE "KT_Imports" ADD COLUMN "Zone" TEXT NOT NULL DEFAULT '';
        ALTER TABLE "KT_Imports" ADD COLUMN "Imported" INTEGER NOT NULL DEFAULT 0;
        ALTER TABLE "KT_Imports" ADD COLUMN "Until" INTEGER NOT NULL DEFAULT 0;
        ALTER TABLE "KT_Imports" ADD COLUMN "Cut" INTEGER NOT NULL DEFAULT 0;
        ALTER TABLE "KT_Import_Events" ADD COLUMN "Part" INTEGER NOT NULL DEFAULT 0;
        CREATE TABLE "KT_Import_Texts" ("Book" TEXT NOT NULL DEFAULT '', "UID" TEXT NOT NULL DEFAULT '',
          "Content" BLOB, row_id INTEGER PRIMARY KEY);
        CREATE UNIQUE INDEX "KT_Import_Texts_BookandUID" ON "KT_Import_Texts" ("Book", "UID");
        CREATE TABLE "KT_Import_Zones" ("Book" TEXT NOT NULL DEFAULT '', "Digest" TEXT NOT NULL DEFAULT '',
          "Content" BLOB, row_id INTEGER PRIMARY KEY);
        CREATE UNIQUE INDEX "KT_Import_Zones_BookandDigest" ON "KT_Import_Zones" ("Book", "Digest");)"},
      {3, First_Templates_Sql},
      {4, R"(
        CREATE TABLE "KT_Cards" ("Book" TEXT NOT NULL DEFAULT '', "UID" TEXT NOT NULL DEFAULT '',
          "Contact" TEXT NOT NULL DEFAULT '', "Digest" TEXT NOT NULL DEFAULT '',
          "Birthday" TEXT NOT NULL DEFAULT '', "Content" BLOB, row_id INTEGER PRIMARY KEY);
        CREATE UNIQUE INDEX "KT_Cards_BookandUID" ON "KT_Cards" ("Book", "UID");
        CREATE UNIQUE INDEX "KT_Cards_Contact" ON "KT_Cards" ("Contact");)" +
              Journal_Types_Sql("KT_Events", "1") + Journal_Types_Sql("KT_Log", "Occurrence <> ''")},
      {5, R"(
        ALTER TABLE "KT_Users" ADD COLUMN "Failures" INTEGER NOT NULL DEFAULT 0;
        ALTER TABLE "KT_Users" ADD COLUMN "FailedAt" REAL NOT NULL DEFAULT 0;
        DROP TABLE "KT_Alerts";
        CREATE TABLE "KT_Alerts" ("Occurrence" TEXT NOT NULL DEFAULT '',
          "User" TEXT NOT NULL DEFAULT '', "Moment" REAL NOT NULL DEFAULT 0,
          "NextTime" REAL NOT NULL DEFAULT 0, "Due" REAL NOT NULL DEFAULT 0,
          "Dismissed" INTEGER NOT NULL DEFAULT 0, row_id INTEGER PRIMARY KEY);
        CREATE UNIQUE INDEX "KT_Alerts_Occurrence" ON "KT_Alerts" ("Occurrence");
        CREATE INDEX "KT_Alerts_UserandDue" ON "KT_Alerts" ("User", "Dismissed", "Due");)"},
      {6, R"(
        ALTER TABLE "KT_Log" ADD COLUMN "PrivateTo" TEXT NOT NULL DEFAULT '';
        UPDATE "KT_Log" SET "PrivateTo" = coalesce((SELECT e."User" FROM "KT_Events_Data" o
          JOIN "KT_Events" e ON e."Key" = o."Event" WHERE o."Key" = "Occurrence" AND e."Private"), '')
          WHERE "Occurrence" <> '';
        UPDATE "KT_Alarms" SET "NextTime" = 0 WHERE "Actioned";
        DELETE FROM "KT_Alerts" WHERE "Occurrence" NOT IN (SELECT "Key" FROM "KT_Alarms");
        INSERT INTO "KT_Alerts" ("Occurrence", "User", "Moment", "NextTime", "Due", "Dismissed")
          SELECT *, "Due" <= $NOW FROM (SELECT a."Key", a."User", o."EventDate" - a."Offset" / 1440.0,
            a."NextTime",
            CASE WHEN a."NextTime" = 0 THEN o."EventDate" - a."Offset" / 1440.0 ELSE a."NextTime" END AS "Due"
            FROM "KT_Alarms" a JOIN "KT_Events_Data" o ON o."Key" = a."Key") WHERE 1
          ON CONFLICT ("Occurrence") DO UPDATE SET "User" = excluded."User", "Moment" = excluded."Moment",
            "NextTime" = excluded."NextTime", "Due" = excluded."Due";
        UPDATE "KT_Alerts" SET "Dismissed" = 2 WHERE "Due" > $NOW
          AND "Occurrence" IN (SELECT "Key" FROM "KT_Alarms" WHERE "Actioned");)"}};
  return migrations;
}

const TTable_Def& Table_Def(std::string_view name) {
  for (const TTable_Def& table : Schema()) {
    if (Same_Name(table.Name, name)) return table;
  }
  throw EData_Error("open", std::string(name), "there is no such table");
}

std::size_t Table_Number(const TTable_Def& table) {
  return static_cast<std::size_t>(&table - Schema().data());
}

}  // namespace Kt_data_01
