#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <regex>
#include <set>
#include <vector>

#include "Kt_util_01.h"

namespace {

using namespace Kt_util_01;

TEST(Guid, Later_Keys_Of_Version_7_Sort_Later_And_None_Comes_Twice) {
  std::vector<std::string> guids(100'000);
  std::generate(guids.begin(), guids.end(), Get_GUID);
  const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-7[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
  EXPECT_TRUE(std::regex_match(guids[0], form)) << guids[0];
  EXPECT_EQ(std::adjacent_find(guids.begin(), guids.end(), std::greater_equal<>()), guids.end());
  std::set<std::string> random_parts;
  for (const std::string& guid : guids) random_parts.insert(guid.substr(19));
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
  std::string theirs(36, '\0');
  EXPECT_EQ(read(pipe_ends[0], theirs.data(), theirs.size()), 36);
  EXPECT_EQ(waitpid(child, nullptr, 0), child);
  close(pipe_ends[0]);
  close(pipe_ends[1]);
  EXPECT_NE(Get_GUID().substr(19), theirs.substr(19));
}

}  // namespace
