#include "Output_File.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "Database_Test.h"

namespace {

namespace fs = std::filesystem;

struct Output_File : TDatabase_Test {
  static void Write(const std::string& path, const char* text = "new") {
    TOutput_File output(path);
    output.Stream() << text;
    output.Keep();
  }
  static std::string Refusal(const std::string& path) {
    try {
      Write(path);
    } catch (const EOutput_Error& e) {
      return std::string(e.what()).substr(path.size() + 2);
    }
    return "written";
  }
  std::size_t Files() const {
    const fs::directory_iterator files(folder.File("."));
    return static_cast<std::size_t>(std::distance(begin(files), end(files)));
  }

  TTemporary_Folder folder;
  const std::string out = folder.File("out");
};

TEST_F(Output_File, Takes_The_Place_Of_A_File_When_Complete_And_Stays_Private) {
  constexpr auto own = fs::perms::owner_read | fs::perms::owner_write;
  {
    TOutput_File output(out);
    const fs::path written = fs::directory_iterator(folder.File("."))->path();
    EXPECT_EQ(fs::status(written).permissions(), own);
    TOutput_File(folder.File("out")).Stream() << "other";
    EXPECT_TRUE(fs::exists(written)) << "somebody still writes it";
    output.Stream() << "never kept";
  }
  EXPECT_EQ(Files(), 0u);
  const std::string leftover = out + ".new-" + Get_GUID();
  std::ofstream(leftover) << "of a program that was killed";
  Write(out);
  EXPECT_EQ(fs::status(out).permissions(), own);
  EXPECT_EQ(Files(), 1u);

  fs::permissions(out, fs::perms(0644));
  fs::create_symlink("out", folder.File("link"));
  Write(folder.File("link"), "newer");
  EXPECT_TRUE(fs::is_symlink(folder.File("link")));
  EXPECT_EQ(File_Content(out), "newer");
  EXPECT_EQ(fs::status(out).permissions(), fs::perms(0644)) << "as it was";
}

TEST_F(Output_File, Never_Overwrites_A_Database) {
  const std::string database_file = database.Path(), why = " cannot be written: it belongs to a database.";
  fs::create_symlink(database_file, folder.File("link.ics"));
  fs::create_hard_link(database_file + "-wal", folder.File("hard.ics"));
  TDatabase().Open(folder.File("closed.db"), TDatabase::TMode::Create_If_Missing);
  const std::string before = File_Content(database_file);
  for (const std::string& path :
       {database_file, database_file + "-wal", database_file + "-shm", folder.File("link.ics"),
        folder.File("hard.ics"), folder.File("closed.db"), folder.File("closed.db-journal")})
    EXPECT_EQ(Refusal(path), why) << path;
  EXPECT_EQ(File_Content(database_file), before);
}

TEST_F(Output_File, Says_What_Cannot_Be_Written) {
  EXPECT_EQ(Refusal(folder.File(".")), " cannot be written: it is a folder.");
  EXPECT_EQ(Refusal(folder.File("none/x")), " cannot be written: No such file or directory.");
  EXPECT_EQ(Refusal(folder.File(std::string(300, 'x'))), " cannot be written: File name too long.");
  EXPECT_EQ(Refusal("/dev/full"), " cannot be written: No space left on device.");
}

TEST_F(Output_File, A_Pipe_Is_Written_To_Itself) {
  const std::string pipe = folder.File("pipe");
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  const int reader = open(pipe.c_str(), O_RDONLY | O_NONBLOCK);
  Write(pipe, "through");
  EXPECT_TRUE(fs::is_fifo(pipe));
  char read_back[7] = {};
  EXPECT_EQ(read(reader, read_back, sizeof read_back), 7);
  EXPECT_EQ(std::string(read_back, sizeof read_back), "through");
  close(reader);
}

}  // namespace
