#include "Transfer.h"

#include <fstream>

#include "Editor_Fixture.h"

namespace {

using Transfer = TEditor_Fixture;

TEST_F(Transfer, A_File_From_The_Desktop_Goes_Into_The_Book_That_Is_Chosen) {
  In_Update([] { Create_Book("Club"); });
  const TTemporary_Folder folder;
  const std::string file = folder.File("a.ics");
  std::ofstream(file) << "BEGIN:VCALENDAR\r\nBEGIN:VEVENT\r\nUID:a\r\nDTSTART:20240105T100000\r\n"
                         "SUMMARY:Match\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
  QWidget window;
  const auto import = [&] { return Plexidex::Import_Into_Chosen_Book(&window, To_Qt(file)); };
  EXPECT_FALSE(With_Dialog(Cancel, import));
  EXPECT_EQ(Counts(), "0 0 0");
  seams.Prompts.Answer_All = Answer_Yes;
  const auto choose = [](QWidget* dialog) {
    EXPECT_EQ(dialog->findChild<QLabel*>()->text(), "Import the entries of \"a.ics\" into the book:");
    QTest::keyClicks(dialog->findChild<QComboBox*>(), "Club");
    Confirm(dialog);
  };
  EXPECT_TRUE(With_Dialog(choose, import));
  EXPECT_EQ(Query_Rows("BookName, Title", "KT_Events, KT_Events_Data d JOIN KT_Books b ON b.Key = d.Book"),
            "Club|Match");

  const std::string cards = folder.File("b.vcf");
  std::ofstream(cards) << "BEGIN:VCARD\r\nFN:Ann\r\nEND:VCARD\r\n";
  EXPECT_TRUE(With_Dialog(
      [](QWidget* dialog) {
        EXPECT_EQ(dialog->findChild<QLabel*>()->text(), "Import the contacts of \"b.vcf\" into the book:");
        QTest::keyClicks(dialog->findChild<QComboBox*>(), "Club");
        Confirm(dialog);
      },
      [&] { return Plexidex::Import_Into_Chosen_Book(&window, To_Qt(cards)); }));
  EXPECT_EQ(List_Contacts(Find_Book("Club")->Key, false).at(0).Name, "Ann");
}

}  // namespace
