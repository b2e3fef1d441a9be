#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "analysis/report_record.h"
#include "tests/console/run_program.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// The bundled piece, built and analyzed as a user would.
class Example : public ::testing::Test {
 protected:
  void SetUp() override {
    for (const std::string& file : filesIn(EXAMPLE_FOLDER)) {
      if (!file.starts_with("SYMPH")) {
        continue;
      }
      const std::string page = file.substr(0, file.rfind('.')) + ".MUS";
      const Ended built = place.kivsys({"build", (fs::path(EXAMPLE_FOLDER) / file).string(), page});
      ASSERT_EQ(built.status, 0) << built.error;
      pages.push_back(page);
    }
  }
  Ended analyze() const { return onAllPages({"analyze"}); }
  Ended onAllPages(std::vector<std::string> arguments) const {
    arguments.insert(arguments.end(), pages.begin(), pages.end());
    return place.kivsys(arguments);
  }
  /// The identifiers of each system from the top staff down, as the report's records have them.
  std::map<int, std::string> systems() const {
    std::map<int, std::string> lists;
    std::istringstream report(place.read("KivSystem2.TXT"));
    for (std::string line; std::getline(report, line);) {
      if (!line.starts_with('*')) {
        lists[std::stoi(std::string(getElt(line, "SYSTEM")))] += std::string(getElt(line, ",INSTRID")) + " ";
      }
    }
    return lists;
  }

  Workplace place;
  std::vector<std::string> pages;
};

TEST_F(Example, HasNoErrorsAndNeedsAConversion) {
  const Ended ended = analyze();
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.error.starts_with("Next: kivsys convert SYMPH001.MUS ")) << ended.error;
  EXPECT_EQ(std::count(ended.error.begin(), ended.error.end(), '\n'), 1) << ended.error;
  EXPECT_TRUE(ended.out.starts_with("CONSISTENCY=NO\nMULTIFILE=YES\nFiles: 6\nSystems: 7\nInstruments: 12\n"))
      << ended.out;
}

TEST_F(Example, SystemsDifferInTheirInstruments) {
  analyze();
  const std::string strings = "107 108 109 110 111 112 ";
  const std::string all = "101 102 103 104 105 106 " + strings;
  const std::string basses = "111 112 ";
  EXPECT_EQ(systems(), (std::map<int, std::string>{
                           {1, all}, {2, strings}, {3, all}, {4, basses}, {5, basses}, {6, basses}, {7, basses}}));
}

TEST_F(Example, EveryPageSurvivesDumpAndBuild) {
  for (const std::string& page : pages) {
    place.write("again.txt", place.kivsys({"dump", page}).out);
    EXPECT_EQ(place.kivsys({"build", "--force", "again.txt", "AGAIN1.MUS"}).status, 0);
    EXPECT_EQ(place.read("AGAIN1.MUS"), place.read(page)) << page;
  }
}

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

TEST_F(Example, ConvertsToThePagesBesideIt) {
  const fs::path expected = fs::path(EXAMPLE_FOLDER) / "results";
  fs::create_directory(place.path() / "results");
  ASSERT_EQ(onAllPages({"convert", "--result", "results/WORK0001.MUS"}).status, 0);
  std::vector<std::string> written;
  for (const std::string& page : filesIn(place.path() / "results")) {
    const std::string text = page.substr(0, page.rfind('.')) + ".txt";
    EXPECT_EQ(place.kivsys({"dump", "results/" + page}).out, contentOf(expected / text)) << page;
    written.push_back(text);
  }
  EXPECT_EQ(written, filesIn(expected));
}

TEST_F(Example, ItsResultsNeedNoConversion) {
  fs::create_directory(place.path() / "results");
  onAllPages({"convert", "--result", "results/WORK0001.MUS"});
  std::vector<std::string> again = {"analyze", "--exit-code"};
  for (const std::string& page : filesIn(place.path() / "results")) {
    // The name of the first result is reserved for results.
    const std::string renamed = "results/JOY" + page.substr(std::string("WORK").size());
    fs::rename(place.path() / "results" / page, place.path() / renamed);
    again.push_back(renamed);
  }
  const Ended ended = place.kivsys(again);
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out,
            "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 7\nSystems: 7\nInstruments: 12\n"
            "Layouts: all alike in 7 systems: 101 to 112\nThe pages can be used as they are.\n");
}

}  // namespace
}  // namespace kiv::test
