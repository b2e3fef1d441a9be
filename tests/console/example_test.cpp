#include <filesystem>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "analysis/report.h"
#include "tests/console/run_program.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// The bundled piece, built and analysed as its reader would.
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
  Ended analyze() const {
    std::vector<std::string> arguments = {"analyze"};
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

TEST_F(Example, HasNothingToComplainOfAndNeedsAConversion) {
  const Ended ended = analyze();
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, "");
  EXPECT_EQ(ended.out, "CONSISTENCY=NO\nMULTIFILE=YES\nFiles: 6\nSystems: 7\nInstruments: 12\n");
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
    EXPECT_EQ(place.kivsys({"build", "again.txt", "AGAIN1.MUS"}).status, 0);
    EXPECT_EQ(place.read("AGAIN1.MUS"), place.read(page)) << page;
  }
}

}  // namespace
}  // namespace kiv::test
