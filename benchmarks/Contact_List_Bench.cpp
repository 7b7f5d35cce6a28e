// The list of a book's contacts, 100,000 in folders and with categories, against one bare SQL statement of
// the same columns; and how long it takes to narrow it by a letter.

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <algorithm>

#include "Bench_Database.h"
#include "Bench_Windows.h"
#include "Contact_List.h"
#include "Contacts_Page.h"
#include "Kt_util_01.h"
#include "Ratio_Main.h"

namespace {

using namespace Bench;
using Kt_data_01::TContact_Row;

const std::string& Contact_Database() {
  static const std::string file = [] {
    const std::string& path = Database_File({0, 0, 100'000, 1, 0});
    sqlite3* connection = nullptr;
    sqlite3_open(path.c_str(), &connection);
    Execute(connection, R"(
        BEGIN;
        INSERT INTO KT_Templates (Key, Book, Name) VALUES ('t0', 'book', 'Person'), ('t1', 'book', 'Company');
        WITH RECURSIVE n (i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM n WHERE i < 200) INSERT INTO KT_Contacts
          (Key, DisplayName, Type, Book, Parent) SELECT 'folder-' || i, 'Folder number ' || i, 1, 'book',
          iif(i > 20, 'folder-' || (i / 10), '') FROM n;
        WITH RECURSIVE n (i) AS (SELECT 10 UNION ALL SELECT i + 1 FROM n WHERE i < 49) INSERT INTO KT_Categories
          (Key, Book, Name) SELECT 'category-' || i, 'book', 'Category ' || i FROM n;
        UPDATE KT_Contacts SET Parent = iif(row_id % 5 < 2, '', 'folder-' || (1 + row_id % 200)), DisplayName =
          substr('AnnaBertCarlDoraEmilFinnGretHans', 1 + row_id % 8 * 4, 4) || ' ' ||
          substr(hex(row_id * 7919 % 100003), 3) || ' of number ' || row_id WHERE Type = 0;
        INSERT INTO KT_Contacts_Data (Contact, Template, Field12, Field13, Field17) SELECT Key, 't' || row_id % 2,
          iif(row_id % 3, '030 5550 ' || row_id, ''), '0160 55' || row_id,
          iif(row_id % 4, 'contact' || row_id || '@example.org', '') FROM KT_Contacts WHERE Type = 0;
        INSERT INTO KT_Categories_InUse SELECT 'category-' || (10 + row_id % 20), Key, NULL FROM KT_Contacts
          WHERE Type = 0 AND row_id % 3 > 0;
        INSERT INTO KT_Categories_InUse SELECT 'category-' || (30 + row_id % 20), Key, NULL FROM KT_Contacts
          WHERE Type = 0 AND row_id % 3 > 1;
        INSERT INTO KT_Flags SELECT (SELECT Value FROM KT_Settings WHERE Name = 'Owner'), Key, NULL FROM
          KT_Contacts WHERE Type = 0 AND row_id % 50 = 0;
        COMMIT;
        PRAGMA wal_checkpoint(TRUNCATE))");
    sqlite3_close(connection);
    return path;
  }();
  return file;
}

std::vector<TContact_Row> Read_Ours() {
  Use_Database(Contact_Database());
  return Kt_data_01::Read_Contact_Rows(Book, false);
}

std::string Text(sqlite3_stmt* row, int column) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(row, column));
  return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(row, column)))
              : std::string();
}

// The categories as they come: this statement does not sort them.
std::vector<TContact_Row> Read_Bare(bool ordered) {
  static const auto prepare = [](const char* order) {
    const std::string first = "coalesce(nullif(", next = ", ''), nullif(", last = ", ''), '')";
    return Prepare(
        Bare_Connection(Contact_Database()),
        "SELECT d.Key, d.DisplayName, " + first + "l.Field12" + next + "l.Field13" + next + "l.Field14" +
            next + "l.Field15" + next + "l.Field16" + last + ", " + first + "l.Field17" + next + "l.Field18" +
            last +
            ", t.Name, f.DisplayName, (SELECT group_concat(c.Name, ', ') FROM KT_Categories_InUse u JOIN "
            "KT_Categories c ON c.Key = u.Category WHERE u.Contact = d.Key), EXISTS (SELECT 1 FROM KT_Flags "
            "g "
            "WHERE g.User = (SELECT Value FROM KT_Settings WHERE Name = 'Owner') AND g.Contact = d.Key) FROM "
            "KT_Contacts d LEFT JOIN KT_Contacts_Data l ON l.Contact = d.Key LEFT JOIN KT_Templates t ON "
            "t.Key = "
            "l.Template LEFT JOIN KT_Contacts f ON f.Key = d.Parent WHERE d.Type = 0 AND d.Book = 'book' AND "
            "d.Deleted = 0" +
            order);
  };
  static sqlite3_stmt *const plain = prepare(""), *const by_name =
                                                      prepare(" ORDER BY d.DisplayName COLLATE NOCASE");
  sqlite3_stmt* row = ordered ? by_name : plain;
  std::vector<TContact_Row> rows;
  while (sqlite3_step(row) == SQLITE_ROW) {
    rows.push_back({Text(row, 0), Text(row, 1), Text(row, 2), Text(row, 3), Text(row, 4), Text(row, 5),
                    Text(row, 6), sqlite3_column_int(row, 7) != 0});
  }
  sqlite3_reset(row);
  return rows;
}

/// The page in a window.
struct TContact_Page {
  TContact_Page() {
    Need_Windows();
    Use_Database(Contact_Database());
    Page.Set_Keys(Book, Calendar);
    Page.Reload();
    Page.resize(1000, 600);
    Page.show();
    Page.grab();
  }
  Plexidex::TContacts_Page Page;
};

void ContactList_Read(benchmark::State& state) {
  auto rows = Read_Ours();
  for (auto _ : state) {
    rows = Read_Ours();
    benchmark::DoNotOptimize(rows.data());
  }
}
BENCHMARK(ContactList_Read)->Unit(benchmark::kMillisecond);

void ContactList_Shown(benchmark::State& state) {
  TContact_Page shown;
  for (auto _ : state) shown.Page.Reload();
}
BENCHMARK(ContactList_Shown)->Unit(benchmark::kMillisecond);

void Bare(benchmark::State& state, bool ordered) {
  auto rows = Read_Bare(ordered);
  for (auto _ : state) {
    rows = Read_Bare(ordered);
    benchmark::DoNotOptimize(rows.data());
  }
}
BENCHMARK_CAPTURE(Bare, ContactList_Select, false)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(Bare, ContactList_Ordered_Select, true)->Unit(benchmark::kMillisecond);

// Letters typed and taken back, each painted; the first makes the texts that are looked through.
std::pair<double, double> Longest_Narrowing() {
  TContact_Page shown;
  auto* filter = shown.Page.findChild<QLineEdit*>(QStringLiteral("Filter"));
  filter->setText(QStringLiteral("a"));
  double longest = 0;
  for (const char* typed : {"an", "ann", "anna", "anna ", "anna 1", "anna 12", "anna 1", "anna", "an", "a",
                            "", "4", "43", "e", "ex", "exa", "", "z"}) {
    QElapsedTimer timer;
    timer.start();
    filter->setText(QLatin1String(typed));
    QApplication::processEvents();
    longest = std::max(longest, static_cast<double>(timer.nsecsElapsed()) / 1e6);
  }
  return {longest, 16};
}

[[maybe_unused]] const bool Checks =
    Ratio_Bench::Check_First("ContactList reads what the statement reads", []() -> std::string {
      auto ours = Read_Ours(), bare = Read_Bare(false);
      if (ours.size() != 100'000 || bare.size() != ours.size()) return "the lists differ in length";
      const auto by_key = [](const TContact_Row& a, const TContact_Row& b) { return a.Key < b.Key; };
      std::sort(ours.begin(), ours.end(), by_key);
      std::sort(bare.begin(), bare.end(), by_key);
      const auto all = [](const TContact_Row& row) {
        return row.Key + row.Name + row.Telephone + row.Mail + row.Template + row.Folder + row.Categories +
               (row.Tagged ? "!" : "");
      };
      for (std::size_t i = 0; i < ours.size(); ++i) {
        if (all(ours[i]) != all(bare[i])) return all(ours[i]) + " is " + all(bare[i]);
      }
      return {};
    });

using Ratio_Bench::TBound;
[[maybe_unused]] const bool Ratios =
    Ratio_Bench::Expect_Ratio("ContactList, 100,000 / bare select", "ContactList_Read",
                              "Bare/ContactList_Select", 1.2, TBound::At_Most) &
    Ratio_Bench::Expect_Ratio("ContactList, sorted and shown / bare ordered select", "ContactList_Shown",
                              "Bare/ContactList_Ordered_Select", 1.2, TBound::At_Most) &
    Ratio_Bench::Expect_Amounts("ContactList longest narrowing / 16 ms", Longest_Narrowing, 1.0,
                                TBound::At_Most);

}  // namespace
