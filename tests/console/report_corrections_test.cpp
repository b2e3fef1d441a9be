#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;
using Lines = std::vector<std::string>;

/// Reports with the reader's own table of corrections, before and after a conversion. Every command line that one shows
/// is run.
class ReportCorrections : public ::testing::Test {
 protected:
  /// Three pages of one system each: the first two are alike, the third has other ids; the last of them is 0 for none.
  void group(int first, int second) const {
    for (const std::string name : {"x1.mus", "x2.mus"}) {
      place.write(name, page(staffOf(2, 101) + staffOf(1, 102) + "barline 1 at 10 spans 2\n"));
    }
    const std::string lower = second < 0 ? "" : staffOf(1, second);
    const std::string count = second < 0 ? "1" : "2";
    const std::string upper = staffOf(second < 0 ? 1 : 2, first);
    place.write("x3.mus", page(upper + lower + "barline 1 at 10 spans " + count + "\n"));
  }
  static std::string staffOf(int number, int id) {
    const std::string n = std::to_string(number);
    return "staff " + n + " at 10 lines 5 instrument " + std::to_string(id) + "\nclef " + n + " at 12\ntimesignature " +
           n + " at 14 upper 4 lower 4\nnote " + n + " at 20 height " + n + " duration 4\nbarline " + n +
           " at 60 spans 1\n";
  }
  std::string report(Lines options) const {
    options.insert(options.begin(), {"report", "-o", "report.html", "--corrections", "mine.csv"});
    options.insert(options.end(), {"x1.mus", "x2.mus", "x3.mus"});
    const Ended ended = place.kivsys(options);
    EXPECT_EQ(ended.status, 0) << ended.error;
    return place.read("report.html");
  }
  /// The command line of the next step, which must succeed, and what it prints.
  std::pair<std::string, std::string> run(const std::string& page) const {
    const std::string opening = "<code id=\"next-command\">";
    const std::size_t start = page.find(opening) + opening.size();
    const std::string command = page.substr(start, page.find("</code>", start) - start);
    const Ended ended = place.shell(command);
    EXPECT_EQ(ended.status, 0) << command << ":\n" << ended.out;
    return {command, ended.out};
  }
  static Json dataOf(const std::string& page) {
    const std::string opening = R"(id="data">)";
    const std::size_t start = page.find(opening) + opening.size();
    return Json::parse(page.substr(start, page.find("</script>", start) - start));
  }
  /// The staves that are tinted as inserted in the result of a system, counted from the bottom, from 0.
  static std::vector<std::size_t> insertedIn(const std::string& page, int system) {
    std::vector<std::size_t> staves;
    const Json data = dataOf(page);
    for (const Json& one : data["pictures"]["systems"]) {
      for (std::size_t s = 0; one[0] == system && s < one[2][3].size(); ++s) {
        if (one[2][3][s][7] == 1) {
          staves.push_back(s);
        }
      }
    }
    return staves;
  }
  const Workplace place;
};

TEST_F(ReportCorrections, AreInTheConversionThatAReportProposes) {
  group(139, -1);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,1,101\n");
  const std::string before = report({});
  EXPECT_THAT(before, HasSubstr("The pages are to be corrected and converted</h2>"));
  EXPECT_EQ(run(before).first,
            "kivsys convert --result converted/WORK0001.MUS x1.mus x2.mus x3.mus --corrections mine.csv");
  const std::string after = report({"--all", "--result", "converted"});
  EXPECT_THAT(after, HasSubstr("The pages have been converted</h2>"));
  EXPECT_THAT(after, HasSubstr("The results are those of the pages with the corrections of mine.csv."));
  const auto [command, proof] = run(after);
  EXPECT_EQ(command, "kivsys verify --result converted/WORK0001.MUS x1.mus x2.mus x3.mus --corrections mine.csv");
  EXPECT_THAT(proof, HasSubstr("PROVED=YES"));
  EXPECT_EQ(insertedIn(after, 3), std::vector<std::size_t>{0});
}

TEST_F(ReportCorrections, ThatLeaveNothingToConvertAreMadeInCopies) {
  group(101, 139);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,1,102\n");
  const std::string before = report({});
  EXPECT_THAT(before, HasSubstr("The pages are to be corrected</h2>"));
  EXPECT_EQ(run(before).first, "kivsys fix --corrections mine.csv -o corrected x1.mus x2.mus x3.mus");
}

TEST_F(ReportCorrections, OfAProblemAreThoseOfTheGivenTable) {
  group(101, 0);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,1,102\n");
  const std::string before = report({});
  EXPECT_THAT(before, HasSubstr("1 problem must be corrected first</h2>"));
  EXPECT_EQ(run(before).first, "kivsys fix --corrections mine.csv -o corrected x1.mus x2.mus x3.mus");
  EXPECT_THAT(before, Not(HasSubstr("suggest -o")));
}

TEST_F(ReportCorrections, AreKnownInResultsOfPagesWithAProblem) {
  group(0, -1);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,1,102\n");
  const Lines convert = {"convert",       "x1.mus",   "x2.mus",   "x3.mus",
                         "--corrections", "mine.csv", "--result", "out/WORK0001.MUS"};
  ASSERT_EQ(place.kivsys(convert).status, 0);
  const std::string after = report({"--all", "--result", "out"});
  EXPECT_THAT(after, HasSubstr("The pages have been converted</h2>"));
  EXPECT_THAT(after, HasSubstr("The problems listed below are those before the corrections."));
  EXPECT_THAT(run(after).second, HasSubstr("PROVED=YES"));
  EXPECT_EQ(insertedIn(after, 3), std::vector<std::size_t>{1});
}

TEST_F(ReportCorrections, ThatResultsLackAreCalledSo) {
  group(139, -1);
  ASSERT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "x3.mus", "--result", "out/WORK0001.MUS"}).status, 0);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,1,101\n");
  const std::string after = report({"--all", "--result", "out"});
  EXPECT_THAT(after, HasSubstr("The results are those of the pages without the corrections of mine.csv."));
  EXPECT_THAT(run(after).second, HasSubstr("PROVED=YES"));
}

TEST_F(ReportCorrections, ThatChangeNothingAreNotShown) {
  group(139, 102);
  place.write("mine.csv", "file,staff,new_id\nx3.mus,2,101\nx3.mus,1,102\nx1.mus,1,102\n");
  const Json data = dataOf(report({}));
  ASSERT_EQ(data["proposals"].size(), 1U);
  EXPECT_EQ(data["proposals"][0][1], "139 \xE2\x86\x92 101");
}

TEST_F(ReportCorrections, ThatLeaveProblemsSayHowMany) {
  group(0, 101);
  place.write("x2.mus", page(staffOf(2, 101) + staffOf(1, 0) + "barline 1 at 10 spans 2\n"));
  place.write("mine.csv", "file,staff,new_id\nx3.mus,2,102\n");
  const std::string before = report({});
  EXPECT_THAT(before, HasSubstr("They leave 1 problem."));
  run(before);
}

}  // namespace
}  // namespace kiv::test
