#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <set>
#include <vector>

#include "Kt_util_01.h"

namespace {

using namespace Kt_util_01;

TEST(Guid, Has_The_Form_Of_Version_7) {
  const std::string guid = Get_GUID();
  ASSERT_EQ(guid.size(), 36U);
  for (std::size_t i = 0; i < guid.size(); ++i) {
    if (i == 8 || i == 13 || i == 18 || i == 23)
      EXPECT_EQ(guid[i], '-') << guid;
    else
      EXPECT_NE(std::string("0123456789abcdef").find(guid[i]), std::string::npos) << guid;
  }
  EXPECT_EQ(guid[14], '7') << guid;
  EXPECT_NE(std::string("89ab").find(guid[19]), std::string::npos) << guid;
}

TEST(Guid, Later_Keys_Sort_Later_And_None_Comes_Twice) {
  std::vector<std::string> guids(100'000);
  std::set<std::string> random_parts;
  for (std::string& guid : guids) {
    guid = Get_GUID();
    random_parts.insert(guid.substr(19));
  }
  EXPECT_EQ(std::adjacent_find(guids.begin(), guids.end(), std::greater_equal<>()), guids.end());
  EXPECT_EQ(random_parts.size(), guids.size());
}

TEST(Guid, A_Child_Process_Does_Not_Repeat_Its_Parents_Random_Part) {
  Get_GUID();
  int pipe_ends[2];
  ASSERT_EQ(pipe(pipe_ends), 0);
  const pid_t child = fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    const std::string guid = Get_GUID();
    _exit(write(pipe_ends[1], guid.data(), guid.size()) == 36 ? 0 : 1);
  }
  const std::string mine = Get_GUID();
  std::string theirs(36, '\0');
  EXPECT_EQ(read(pipe_ends[0], theirs.data(), theirs.size()), 36);
  int status = -1;
  EXPECT_EQ(waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_NE(mine.substr(19), theirs.substr(19));
}

}  // namespace
