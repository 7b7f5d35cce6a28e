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
  const auto import = [&](const std::function<void(QInputDialog&)>& act) {
    return With_Dialog([&](QWidget* dialog) { act(*qobject_cast<QInputDialog*>(dialog)); },
                       [&] { return Plexidex::Import_Into_Chosen_Book(&window, To_Qt(file)); });
  };
  EXPECT_FALSE(import([](QInputDialog& dialog) { dialog.reject(); }));
  EXPECT_EQ(Counts(), "0 0 0");
  seams.Prompts.Answer_All = Answer_Yes;
  EXPECT_TRUE(import([](QInputDialog& dialog) {
    EXPECT_EQ(dialog.labelText(), "Import the entries of \"a.ics\" into the book:");
    QTest::keyClicks(dialog.findChild<QComboBox*>(), "Club");
    QTest::keyClick(&dialog, Qt::Key_Return);
  }));
  EXPECT_EQ(
      Query_Text("SELECT BookName || ': ' || Title FROM KT_Events_Data d JOIN KT_Books b ON b.Key = d.Book "
                 "JOIN KT_Events e ON e.Key = d.Event"),
      "Club: Match");
}

}  // namespace
