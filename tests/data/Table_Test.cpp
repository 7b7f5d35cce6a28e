#include <sqlite3.h>

#include <algorithm>
#include <random>

#include "Database_Test.h"
#include "Row_Sets.h"

namespace {

struct Table : TDatabase_Test {
  Table() { Add_Event(); }

  template <class... TFields>
  static void Add(TTable& table, TFields... fields) {
    In_Update([&] {
      table.Insert();
      table.SetFields({fields...});
      PostUpdate(table);
    });
  }
  void Add_Event() {
    event = Get_GUID();
    Run_Sql("INSERT INTO KT_Events (Key, Title) VALUES ('" + event + "', 'Set')");
  }
  std::vector<std::string> Add_Events(int count) {
    std::vector<std::string> keys;
    In_Update([&] {
      for (int i = 0; i < count; ++i) {
        Add_Event();
        keys.push_back(event);
        Add_Occurrence(i);
      }
    });
    return keys;
  }
  std::string Add_Occurrence(double at, const std::string& contact = "c") {
    const std::string fresh = Get_GUID();
    Add(occurrences, fresh, contact, database.Book().Key, event, false, at);
    return fresh;
  }
  // Changes one field of the row at which the table stands.
  static void Change(TTable& table, TField field, const TValue& value) {
    table.Edit();
    table.Set(field, value);
    PostUpdate(table);
  }

  std::string event;
  TTable occurrences{Events_Data};
  const TField key = Events_Data.Field("Key"), date = Events_Data.Field("EventDate"),
               done = Events_Data.Field("Actioned"), title = Events_Table.Field("Title");
};

// A cursor against a sorted vector, while rows come, go and move under it.
TEST_F(Table, A_Walk_Agrees_With_A_Sorted_List_Whatever_Happens_Meanwhile) {
  struct TRow {
    double Date;
    std::int64_t Age;
    std::string Key;
    bool operator<(const TRow& other) const { return std::tie(Date, Age) < std::tie(other.Date, other.Age); }
  };
  std::mt19937 random(7);
  std::vector<TRow> model;
  std::int64_t age = 0;
  ASSERT_TRUE(Start_Update());
  const auto add = [&] {
    const double at = 1000 + static_cast<double>(random() % 60) / 2;  // many equal dates
    model.push_back({at, ++age, Add_Occurrence(at)});
    std::sort(model.begin(), model.end());
  };
  for (int i = 0; i < 300; ++i) add();

  TTable walk(Events_Data, "BookandDate", {"Actioned"});
  constexpr double low = 1002, high = 1026;
  walk.SetRange({database.Book().Key, low}, {database.Book().Key, high});
  const auto in_range = [&](const TRow& row) { return row.Date >= low && row.Date <= high; };
  TRow at{};
  bool standing = false;
  const auto compare = [&](const std::vector<TRow>::iterator& expected) {
    standing = expected != model.end() && in_range(*expected);
    if (standing) {
      at = *expected;
      ASSERT_EQ(walk.Text(key), at.Key);
      ASSERT_EQ(walk.DateTime(date), at.Date);
    }
  };
  for (int step = 0; step < 20'000; ++step) {
    const unsigned choice = random() % 20;
    if (!standing || choice == 0) {
      if (random() % 2) {
        walk.First();
        compare(std::find_if(model.begin(), model.end(), in_range));
        ASSERT_EQ(walk.Eof(), !standing);
      } else {
        walk.Last();
        const auto last = std::find_if(model.rbegin(), model.rend(), in_range);
        compare(last == model.rend() ? model.end() : last.base() - 1);
      }
    } else if (choice < 12) {
      walk.Next();
      compare(std::upper_bound(model.begin(), model.end(), at));
      ASSERT_EQ(walk.Eof(), !standing);
    } else if (choice < 17) {
      walk.Prior();
      const auto here = std::lower_bound(model.begin(), model.end(), at);
      compare(here == model.begin() ? model.end() : here - 1);
      ASSERT_EQ(walk.Bof(), !standing);
    } else if (choice == 17) {
      add();
    } else if (choice == 18) {
      const auto next = model.erase(std::lower_bound(model.begin(), model.end(), at));
      walk.Delete();
      compare(next);
      ASSERT_EQ(walk.Eof(), !standing);
    } else {
      walk.Edit();
      if (random() % 2) {
        walk.Set(done, true);
        PostUpdate(walk);
        ASSERT_TRUE(walk.Boolean(done));
      } else {
        TRow moved = at;
        moved.Date = low + static_cast<double>(random() % 20);
        walk.Set(date, moved.Date);
        PostUpdate(walk);
        model.erase(std::lower_bound(model.begin(), model.end(), at));
        model.insert(std::upper_bound(model.begin(), model.end(), moved), moved);
        at = moved;
      }
      ASSERT_EQ(walk.Text(key), at.Key);
    }
  }
  EXPECT_EQ(walk.Record_Count(), std::count_if(model.begin(), model.end(), in_range));
  EndUpdate();
}

TEST_F(Table, Finds_By_Leading_Columns_And_Keeps_The_Walk_From_There) {
  for (const double at : {5.0, 3.0, 4.0}) Add_Occurrence(at, "a");
  Add_Occurrence(1.0, "b");
  occurrences.Set_Index("ContactandDate");
  ASSERT_TRUE(occurrences.FindKey({"a"}));
  for (const double at : {3.0, 4.0, 5.0, 1.0}) {
    EXPECT_EQ(occurrences.DateTime(date), at);
    EXPECT_TRUE(at != 4.0 || occurrences.FindKey({"a", 4.0}));
    occurrences.Next();
  }
  EXPECT_TRUE(!occurrences.FindKey({"a", 6.0}) && occurrences.Eof());
  EXPECT_THROW(occurrences.FindKey({"a", 6.0, 1}), EData_Error);
  EXPECT_THROW(occurrences.Set_Index("NoSuchIndex"), EData_Error);
  occurrences.Set_Index("");
  occurrences.First();
  EXPECT_EQ(occurrences.DateTime(date), 5.0) << "natural order is by age";
}

TEST_F(Table, Filters_Are_Checked_And_Applied) {
  for (int i = 0; i < 10; ++i) Add_Occurrence(i, i % 2 ? "o'dd" : "even");
  const auto count = [&](const std::string& filter) {
    occurrences.Set_Filter(filter);
    return occurrences.Record_Count();
  };
  EXPECT_EQ(count("(Contact = 'o''dd') and (EventDate >= 3)"), 4);
  EXPECT_EQ(count("not (eventdate < 8) or EventDate = 0 and Actioned = False"), 3);
  EXPECT_EQ(count(""), 10);
  for (const char* bad :
       {"Contact", "Contact =", "Contact = 1", "NoColumn = 1", "EventDate = 'x'", "Actioned = Maybe",
        "(EventDate = 1", "EventDate = 1)", "EventDate = 1; DROP TABLE KT_Events", "EventDate == 1",
        "EventDate = 1 and", "Contact = 'open", "EventDate = 1.2.3", "= 1"}) {
    EXPECT_THROW(occurrences.Set_Filter(bad), EData_Error) << bad;
  }
  EXPECT_THROW(occurrences.Set_Filter(std::string(100'000, '(')), EData_Error);
  EXPECT_EQ(occurrences.Record_Count(), 10) << "a refused filter leaves the old one";
}

TEST_F(Table, Refuses_What_Does_Not_Fit) {
  EXPECT_THROW(occurrences.Field("NoColumn"), EData_Error);
  EXPECT_THROW(occurrences.Text(key), EData_Error) << "no row";
  EXPECT_THROW(occurrences.Set(key, "x"), EData_Error) << "not editing";
  occurrences.Insert();
  EXPECT_THROW(occurrences.Set(key, 1), EData_Error);
  EXPECT_THROW(occurrences.Set(date, "text"), EData_Error);
  occurrences.Set(key, "x");
  EXPECT_THROW(PostUpdate(occurrences), EData_Error) << "no bracket";
  occurrences.Cancel();
  Add_Occurrence(1);
  TTable narrow(Events_Data, "Key", {"Key"});
  narrow.First();
  EXPECT_NO_THROW(narrow.Text(key));
  EXPECT_THROW(narrow.DateTime(date), EData_Error) << "not among its columns";
}

TEST_F(Table, Notices_That_A_Row_Has_Gone_Under_It) {
  const std::string gone = Add_Occurrence(1);
  TTable other(Events_Data, "Key");
  ASSERT_TRUE(other.FindKey({gone}));
  In_Update([&] {
    occurrences.Set_Index("Key");
    ASSERT_TRUE(occurrences.FindKey({gone}));
    occurrences.Delete();
    Add_Occurrence(2);  // gets the number of the row that went
  });
  ASSERT_TRUE(Start_Update());
  EXPECT_THROW(other.Edit(), EData_Error);
  seams.Prompts.Expect_Undone("no reason was given", "tag");
  FailUpdate("tag");
}

TEST_F(Table, Changes_Rows_That_Begin_With_A_Number) {
  TTable holidays("KT_Holidays", "HolidayDate");
  for (const double day : {2.0, 1.0}) Add(holidays, day, "New", "X");
  In_Update([&] {
    holidays.First();
    Change(holidays, holidays.Field("Name"), "Changed");
    holidays.Next();
    holidays.Delete();
    EXPECT_TRUE(holidays.Eof());
  });
  EXPECT_EQ(Query_Rows("HolidayDate, Name", "KT_Holidays"), "1.0|Changed");
}

TEST_F(Table, Blobs_Are_Kept_Byte_For_Byte) {
  std::string bytes;
  for (int i = 0; i < 1000; ++i) bytes += static_cast<char>(i);
  TTable events(Events_Table, "Key");
  const TField notes = events.Field("Notes");
  ASSERT_TRUE(events.FindKey({event}));
  In_Update([&] {
    events.Edit();
    {
      TBlob_Stream stream(events, notes, TBlob_Stream::TMode::Write);
      stream.Write(bytes.substr(0, 300));
      stream.Write(bytes.substr(300));
    }
    EXPECT_EQ(events.Blob(notes), bytes) << "already of the pending row";
    PostUpdate(events);
  });
  EXPECT_EQ(TBlob_Stream(events, notes, TBlob_Stream::TMode::Read).Data(), bytes);
}

TEST_F(Table, Caches_Never_Show_What_Is_No_Longer_So) {
  const std::vector<std::string> keys = Add_Events(500);
  TTable events(Events_Table, "Key", {"Title"});
  Set_Cache(events);
  const auto titles_are = [&](const std::string& expected) {
    for (const std::string& one : keys) {
      if (!events.FindKey({one}) || events.Text(title) != expected) return false;
    }
    return !events.FindKey({"nobody"});
  };
  {
    TSnapshot snapshot;
    EXPECT_TRUE(titles_are("Set"));
    TDatabase second;
    second.Open(database.Path(), TDatabase::TMode::Must_Exist);
    second.Engine().Execute("UPDATE KT_Events SET Title = 'Second'");
    EXPECT_TRUE(titles_are("Set")) << "one snapshot shows one state";
  }
  {
    TSnapshot snapshot;
    EXPECT_TRUE(titles_are("Second"));
  }
  In_Update([&] {
    EXPECT_TRUE(titles_are("Second"));
    TTable writer(Events_Table);
    for (writer.First(); !writer.Eof(); writer.Next()) Change(writer, title, "Third");
    EXPECT_TRUE(titles_are("Third"));
  });
  Cache_Off(events);
  EXPECT_TRUE(titles_are("Third"));
}

TEST_F(Table, Prefetched_Rows_Never_Show_What_Is_No_Longer_So) {
  const std::vector<std::string> keys = Add_Events(10);
  const TField event_field = Events_Data.Field("Event");
  const std::string& book = database.Book().Key;
  TTable walk(Events_Data, "BookandDate", {"Event"}), along(Events_Table, "Key", {"Title"});
  walk.SetRange({book}, {book});
  walk.Prefetch(event_field, along);
  // The key and title of the event that the walk's row belongs to.
  const auto found = [&] {
    if (!along.FindKey({walk.Text(event_field)})) return std::string();
    return std::string(along.Text(Events_Table.Field("Key"))).append(along.Text(title));
  };
  TSnapshot snapshot;
  walk.First();
  EXPECT_EQ(found(), keys[0] + "Set");
  EXPECT_TRUE(along.FindKey({keys[7]})) << "other keys are asked for";
  EXPECT_FALSE(along.FindKey({"nobody"}));
  In_Update([&] {
    TTable writer(Events_Table, "Key");
    ASSERT_TRUE(writer.FindKey({keys[0]}));
    Change(writer, title, "Other");
    EXPECT_EQ(found(), keys[0] + "Other");
    walk.SetRange({book, 3.0}, {book, 3.0});
    walk.First();
    Change(walk, event_field, keys[9]);
    EXPECT_EQ(found(), keys[9] + "Set");
    walk.First();
    ASSERT_TRUE(walk.FindKey({book, 5.0})) << "outside the range";
    EXPECT_EQ(found(), keys[5] + "Set");
  });
}

TEST_F(Table, A_Row_Is_Met_Once_With_Each_That_Belongs_To_It) {
  // More than a batch of them belong to one event, none to the next but one.
  std::string expected;
  In_Update([&] {
    for (const int count : {1, 100, 0, 2}) {
      Add_Event();
      Run_Sql("UPDATE KT_Events SET EventType = 3, Title = '" + std::to_string(count) + "' WHERE Key = '" +
              event + "'");
      for (int i = 0; i < count; ++i) Add_Occurrence(i, "c" + std::to_string(i));
      for (int i = 0; i < std::max(count, 1); ++i)
        expected += std::to_string(count) + (count ? "c" + std::to_string(i) : "") + " ";
    }
  });
  TTable walk(Events_Table, "EventType", {"Title"}), along(Events_Data, "Event", {"Contact"});
  walk.SetRange({3}, {3});
  walk.Prefetch(walk.Field("Key"), along);
  TSnapshot snapshot;
  const auto met = [&] {
    std::string found(walk.Text(title));
    if (along.FindKey({walk.Text(walk.Field("Key"))})) found += along.Text(along.Field("Contact"));
    return found + " ";
  };
  std::string onward, back;
  for (walk.First(); !walk.Eof(); walk.Next()) onward += met();
  for (walk.Last(); !walk.Bof(); walk.Prior()) back = met() + back;
  EXPECT_EQ(onward, expected);
  EXPECT_EQ(back, expected);
  EXPECT_EQ(walk.Record_Count(), 4);
}

TEST_F(Table, Keys_Are_Found_By_Their_Exact_Ending) {
  Run_Sql("INSERT INTO KT_Books (Key) VALUES ('abc-1234'), ('xyz-1234'), ('x-99%4')");
  using TKeys = std::vector<std::string>;
  EXPECT_EQ(Keys_Ending_In("KT_Books", "c-1234", 2), TKeys{"abc-1234"});
  EXPECT_EQ(Keys_Ending_In("KT_Books", "%4", 2), TKeys{"x-99%4"});
  for (const std::size_t most : {1u, 2u}) EXPECT_EQ(Keys_Ending_In("KT_Books", "-1234", most).size(), most);
  for (const char* none : {"C-1234", "_1234", "0abc-1234"})
    EXPECT_EQ(Keys_Ending_In("KT_Books", none, 2), TKeys{}) << none;
}

// What is asked of every database that is opened from now on.
std::set<std::string> Asked;

int Listen(sqlite3* connection, const char**, const sqlite3_api_routines*) {
  const auto hear = [](unsigned, void*, void* statement, void*) {
    Asked.emplace(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
  };
  return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, hear, nullptr);
}

TEST_F(Table, A_Long_Walk_Over_A_Range_Uses_Its_Index) {
  Add_Events(300);
  const auto listen = reinterpret_cast<void (*)()>(Listen);
  sqlite3_auto_extension(listen);
  database.Reopen();
  sqlite3_cancel_auto_extension(listen);
  for (const auto& [index, owner] :
       {std::pair("BookandDate", database.Book().Key), {"ContactandDate", "c"}}) {
    TTable walk(Events_Data, index, {"Key"});
    walk.SetRange({owner, 10.0}, {owner, 290.0});
    Asked.clear();
    int rows = 0;
    for (walk.First(); !walk.Eof(); walk.Next()) ++rows;
    for (walk.Last(); !walk.Bof(); walk.Prior()) ++rows;
    EXPECT_EQ(rows, 2 * 281);
    EXPECT_GE(Asked.size(), 4u) << "the first rows and those after a key, in both directions";
    for (const std::string& sql : std::exchange(Asked, {})) {
      const auto plan = Shared_Database().Engine().Prepare("EXPLAIN QUERY PLAN " + sql);
      while (plan->Step()) {
        const std::string step(plan->Text(3));
        EXPECT_TRUE(step.find("TEMP B-TREE") == step.npos && step.find("EventDate>") < step.npos) << step;
      }
    }
  }
}

}  // namespace
