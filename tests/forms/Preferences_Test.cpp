#include "Preferences.h"

#include <fstream>

#include "Backup.h"
#include "Editor_Fixture.h"
#include "Holidays.h"
#include "Login_Start.h"

namespace {

struct Preferences : TEditor_Fixture {
  Preferences() { qputenv("XDG_CONFIG_HOME", folder.File("config").c_str()); }
  ~Preferences() override { qunsetenv("XDG_CONFIG_HOME"); }

  void Edit(const std::function<void(QWidget*)>& act) {
    With_Dialog(act, [&] { Plexidex::Edit_Preferences(&window, database.Path()); });
  }

  TTemporary_Folder folder;
  QWidget window;
};

TEST_F(Preferences, Of_Every_Group_Are_Kept_And_Used) {
  const char* const inputs =
      "Start_Page Tray Login_Start Interface_Sounds First_Day New_Reminder Default_Sound Date_Format "
      "Time_Format "
      "Example Daily_Backup Backup_Folder Backups_Kept Most_Entries";
  const auto seen = [&] {
    std::string text;
    Edit([&](QWidget* form) {
      for (const QString& name : QString::fromLatin1(inputs).split(QLatin1Char(' '))) {
        for (int group = 0; !Control<QWidget>(form, name.toLatin1())->isVisible(); ++group)
          Act(form, "Groups=" + std::to_string(group));
        text += (text.empty() ? "" : "|") + Seen(form, name.toLatin1());
      }
      Cancel(form);
    });
    return text;
  };
  const std::string beside = Backup_Folder_Of(database.Path());
  EXPECT_EQ(
      seen(),
      "What was shown last time|-|(-)|+|As usual in the country (Sunday)|No reminder|<Standard Beep>|As "
      "usual in the "
      "country (M/d/yyyy)|As usual in the country (h:mm AP)|1/15/2024  12:00 PM|+|" +
          beside + "|7|250,000");
  const std::string backups = folder.File("to/backups");
  Edit([&](QWidget* form) {
    Act(form, "Start_Page=The tasks|Tray|Login_Start|Interface_Sounds|Groups=1|First_Day=Saturday");
    auto* countries = Control<QListWidget>(form, "Countries");
    for (const int row : {3, 1}) {
      countries->setCurrentRow(row);
      QTest::keyClick(countries, Qt::Key_Space);
    }
    Confirm_With(
        "Groups=2|New_Reminder=2 hours before|Groups=3|Date_Format=d MMM yyyy|Time_Format=HH.mm|Groups=4|"
        "Daily_Backup|Backup_Folder=" +
        backups + "|Backups_Kept=3|Most_Entries=5000")(form);
  });
  EXPECT_EQ(seen(),
            "The tasks|+|+|-|Saturday|2 hours before|<Standard Beep>|d MMM yyyy|HH.mm|15 Jan 2024  "
            "12.00|-|" +
                backups + "|3|5,000");
  EXPECT_EQ(FormatDateTime("ddddd t", Monday + 0.5), "15 Jan 2024 12.00");
  EXPECT_EQ(Format_Settings().FirstDayOfWeek, 7);
  EXPECT_EQ(Plexidex::Chosen_Countries(), (std::vector<std::string>{"AT", "BR"}));
  EXPECT_TRUE(Read_Bool("General", "Tray", false));
}

TEST_F(Preferences, That_Cannot_Be_Are_Refused_Where_They_Stand) {
  const std::string file = folder.File("file");
  std::ofstream(file) << "x";
  std::ofstream(folder.File("config")) << "x";
  for (const auto& [inputs, why, where] :
       {std::tuple(
            std::string("Groups=3|Date_Format=today|Groups=0"),
            std::string("\"today\" does not say how a date is written; dd/MM/yyyy or d MMM yyyy would."),
            "Look/Date_Format"),
        {"Groups=3|Time_Format=", "\"\" does not say how a time is written; HH:mm or h:mm AP would.",
         "Look/Time_Format"},
        {"Login_Start", "The folder \"" + folder.File("config/autostart") + "\" cannot be made.",
         "General/Login_Start"},
        {"Groups=4|Backup_Folder=" + file + "/x", "Backups cannot be written to \"" + file + "/x\".",
         "Data/Backup_Folder"},
        {"Groups=4|Backup_Folder=" + file, "\"" + file + "\" is no folder; backups need one.",
         "Data/Backup_Folder"}}) {
    Edit([&, inputs = inputs, why = why, where = where](QWidget* form) {
      seams.Prompts.Expect_Error("User Preferences", why);
      Confirm_With("Tray|" + inputs)(form);
      EXPECT_EQ(Where(form), where);
      Cancel(form);
    });
  }
  EXPECT_FALSE(Read_Bool("General", "Tray", false)) << "nothing is saved";
}

TEST_F(Preferences, Starting_At_Login_Is_An_Entry_Of_The_Desktop) {
  const std::string entry = folder.File("config/autostart/plexidex.desktop");
  Plexidex::Set_Start_At_Login(true);
  EXPECT_NE(File_Content(entry).find("\nExec=\"" + From_Qt(QCoreApplication::applicationFilePath()) +
                                     "\" --tray\n"),
            std::string::npos)
      << File_Content(entry);
  std::ofstream(entry, std::ios::app) << "Hidden = true\n";
  EXPECT_FALSE(Plexidex::Starts_At_Login());
  Plexidex::Set_Start_At_Login(true);
  EXPECT_TRUE(Plexidex::Starts_At_Login());
  Write_Bool("General", "Tray", true);
  Edit(Confirm_With("Interface_Sounds"));
  EXPECT_TRUE(Plexidex::Starts_At_Login());
  Edit(Confirm_With("Tray"));
  EXPECT_FALSE(std::filesystem::exists(entry));
}

}  // namespace
