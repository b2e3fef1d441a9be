#include <filesystem>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

class ConsoleSort : public ::testing::Test {
 protected:
  /// A page whose lowest staff plays instrument 101, and the same with the highest identifier at the bottom.
  const std::string upsideDown =
      page("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 2\nnote 1 at 9 height 3\nstaff 2 at 0 instrument 102\n");
  const std::string sorted =
      page("staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument 101\nnote 2 at 9 height 3\n");

  Workplace place;
};

TEST_F(ConsoleSort, WritesTheSortedPageBesideItsInput) {
  place.write("X1.MUS", upsideDown);
  const Ended ended = place.kivsys({"sort", "X1.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "X1.PAG\nX1.PAG: staff 1 is now staff 2, staff 2 is now staff 1\n")
      << "as the user would type it";
  EXPECT_EQ(ended.error, "");
  EXPECT_EQ(place.kivsys({"sort", "--like-panel", "X1.MUS"}).out, place.capitals("X1.PAG") + "\n");
  EXPECT_EQ(place.read("X1.PAG"), sorted);
  EXPECT_EQ(place.read("X1.MUS"), upsideDown);
}

TEST_F(ConsoleSort, OldResultsOfAnAnalysisStay) {
  place.write("X1.MUS", upsideDown);
  place.write("KivSystem1.TXT", "verdict");
  place.kivsys({"sort", "X1.MUS"});
  EXPECT_EQ(place.read("KivSystem1.TXT"), "verdict");
}

TEST_F(ConsoleSort, TwoPagesNeverHaveOneSortedPage) {
  place.write("x1.mus", upsideDown);
  place.write("X1.MUS", upsideDown);
  const auto refused = [&](const std::string& first, const std::string& second) {
    return "kivsys: " + (place.path() / first).string() + " and " + (place.path() / second).string() +
           " have the same sorted page, X1.PAG\n";
  };
  const Ended ended = place.kivsys({"sort", "x1.mus"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, refused("X1.MUS", "x1.mus"));
  std::filesystem::rename(place.path() / "X1.MUS", place.path() / "X1.OLD");
  EXPECT_EQ(place.kivsys({"sort", "x1.mus", "X1.OLD"}).error, refused("X1.OLD", "x1.mus"));
  EXPECT_EQ(place.read("X1.PAG"), "(no file)");
  EXPECT_EQ(place.kivsys({"sort", "x1.mus", "x1.mus"}).status, 0) << "a page listed twice is one page";
}

TEST_F(ConsoleSort, APipeIsNotReplaced) {
  place.write("X1.MUS", upsideDown);
  const std::string pipe = (place.path() / "X1.PAG").string();
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const Ended ended = place.kivsys({"sort", "X1.MUS"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: the sorted page " + pipe + " is a device or a pipe, and is not replaced\n");
  EXPECT_TRUE(std::filesystem::is_fifo(pipe));
}

TEST_F(ConsoleSort, JsonListsWhatWasWrittenBeforeACriticalEnd) {
  place.write("X1.MUS", upsideDown);
  place.write("X2.MUS", "broken");
  const Ended ended = place.kivsys({"sort", "--json", "X1.MUS", "X2.MUS"});
  EXPECT_EQ(ended.status, 1);
  const auto object = nlohmann::json::parse(ended.out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["created"], nlohmann::json::array({place.capitals("X1.PAG")}));
  EXPECT_EQ(object["messages"][0]["text"], "Structural error in MUS file. Try to recover with KivValid/KivRecover.");
  EXPECT_EQ(place.read("X1.PAG"), sorted);
  EXPECT_EQ(place.read("X2.PAG"), "(no file)");
}

TEST_F(ConsoleSort, WrongUsageEndsWithStatus2) {
  EXPECT_EQ(place.kivsys({"sort"}).status, 2);
  EXPECT_EQ(place.kivsys({"sort", "--allow-zero-id", "X1.MUS"}).status, 2);
}

}  // namespace
}  // namespace kiv::test
