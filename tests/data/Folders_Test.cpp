#include "Folders.h"

#include <gmock/gmock.h>

#include "Categories.h"
#include "Contact_List.h"
#include "Database_Test.h"
#include "Store_Check.h"
#include "Tags.h"

using namespace testing;

namespace {

struct Folders : TDatabase_Test {
  // Friends with Club, in which is Choir; Work.
  Folders() {
    In_Update([&] {
      work = Make("Work", {});
      friends = Make("friends", {});
      club = Make("Club", friends);
      choir = Make("Choir", club);
      anna = Create_Contact(book, "Anna", club);
    });
  }
  std::string Make(const char* name, const std::string& in) const {
    return Create_Contact(book, name, in, Contact_Type_Folder);
  }
  std::string Shown() const {
    std::string shown;
    for (const TFolder& one : List_Folders(book))
      shown += std::string(static_cast<std::size_t>(one.Depth), '.') + one.Name + " ";
    return shown;
  }
  static TMove Move(const std::string& key, const std::string& folder) {
    TMove result{};
    In_Update([&] { result = Move_To_Folder(key, folder); });
    return result;
  }

  const std::string book = database.Book().Key;
  std::string work, friends, club, choir, anna;
};

TEST_F(Folders, Lie_In_Each_Other_And_Move_With_What_They_Hold) {
  EXPECT_EQ(Shown(), "friends .Club ..Choir Work ");
  EXPECT_THAT(Get_SubGroups(friends), ElementsAre(club, choir));
  EXPECT_TRUE(Get_SubGroups(choir).empty() && Get_SubGroups(anna).empty() && Get_SubGroups("gone").empty());
  EXPECT_TRUE(Is_Folder_Name_Taken(book, friends, "CLUB", {}));
  EXPECT_FALSE(Is_Folder_Name_Taken(book, friends, "CLUB", club) ||
               Is_Folder_Name_Taken(book, {}, "Club", {}));
  TBook other;
  In_Update([&] { other = Create_Book("Other"); });
  const std::string calendar = database.Book().Calendar;
  for (const auto& [key, folder, result] : {std::tuple(friends, choir, TMove::Into_Itself),
                                            {club, club, TMove::Into_Itself},
                                            {club, anna, TMove::Gone},
                                            {calendar, work, TMove::Gone},
                                            {std::string("gone"), work, TMove::Gone},
                                            {club, work, TMove::Done},
                                            {choir, std::string(), TMove::Done}})
    EXPECT_EQ(Move(key, folder), result);
  EXPECT_EQ(Shown(), "Choir friends Work .Club ");
  EXPECT_EQ(Find_Contact(anna)->Folder, club);
  for (const std::string& folder : {choir, std::string()}) EXPECT_EQ(Move(anna, folder), TMove::Done);
  EXPECT_EQ(Query_Rows("Description", "KT_Log ORDER BY row_id"),
            ", Moved to the folder \"Choir\", Moved to no folder");
  std::string elsewhere;
  In_Update([&] { elsewhere = Create_Contact(other.Key, "There", {}, Contact_Type_Folder); });
  EXPECT_EQ(Move(anna, elsewhere), TMove::Other_Book);
}

TEST_F(Folders, A_Removed_One_Leaves_What_It_Held_To_The_One_Above) {
  EXPECT_EQ(Content_Of_Folder(club).Contacts, 1);
  EXPECT_EQ(Content_Of_Folder(club).Folders, 1);
  In_Update([&] {
    Set_Rights(club, Global_User, {});
    EXPECT_TRUE(Remove_Folder(club));
    EXPECT_FALSE(Remove_Folder(club) || Remove_Folder(anna));
  });
  EXPECT_EQ(Shown() + Query_Text("SELECT count(*) FROM KT_Rights"), "friends .Choir Work 0");
  EXPECT_EQ(Find_Contact(anna)->Folder, friends);
  EXPECT_EQ(Check_Store(), std::vector<std::string>());
}

TEST_F(Folders, The_List_Of_One_Has_What_Lies_Below_With_Folder_Categories_And_Tag) {
  In_Update([&] {
    const std::string bert = Create_Contact(book, "Bert", choir);
    Create_Contact(book, "Zoe", work);
    for (const std::string& one : {anna, bert})
      Set_Categories(one, {Find_Or_Add_Category(book, "Sings"), Find_Or_Add_Category(book, "friend")});
    Set_Tagged(bert, true);
  });
  const auto shown = [&](const std::string& folder) {
    std::string texts;
    TContact_List list;
    list.Set_Rows(Read_Contact_Rows(book, false, folder));
    list.Sort(TContact_Column::Folder, true);
    for (std::size_t i = 0; i < list.Count(); ++i) {
      const TContact_Row& row = list.Row(i);
      texts += row.Name + (row.Tagged ? "!" : "") + "/" + row.Folder + "/" + row.Categories + " ";
    }
    return texts;
  };
  const std::string below = "Bert!/Choir/friend, Sings Anna/Club/friend, Sings ";
  EXPECT_EQ(shown(friends), below);
  EXPECT_EQ(shown({}), below + "Zoe/Work/ ");
}

TEST_F(Folders, Damage_And_Missing_Rights_Hide_None_That_May_Be_Seen) {
  In_Update([&] {
    Run_Sql("UPDATE KT_Contacts SET Parent = '" + choir + "' WHERE Key = '" + friends + "'");
    Run_Sql("UPDATE KT_Contacts SET Parent = 'gone' WHERE Key = '" + work + "'");
  });
  EXPECT_EQ(Shown(), "Work Choir .friends ..Club ");
  EXPECT_THAT(Get_SubGroups(club), ElementsAre(choir, friends));
  EXPECT_EQ(Check_Store().size(), 4U);
  In_Update([&] {
    Run_Sql("UPDATE KT_Contacts SET Parent = '' WHERE Key = '" + friends + "'");
    Set_User_Key(Create_User("Bert", false));
    Set_Rights(choir, Global_User, {.See = true});
  });
  EXPECT_EQ(Shown(), "Choir ");
}

}  // namespace
