#include <algorithm>
#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;
using Json = nlohmann::json;
using Lines = std::vector<std::string>;

/// A system of three staves with names; the ids from the top down.
std::string systemOf(int flute, int viola, int bass, const std::string& name = "Fl\xC3\xB6te") {
  const auto staff = [](int number, int id, int clef, const std::string& text) {
    const std::string n = std::to_string(number);
    return "staff " + n + " at 10 lines 5 instrument " + std::to_string(id) + "\nclef " + n + " at 12 kind " +
           std::to_string(clef) + "\ntext " + n + " at 1 p4 3 \"" + text + "\"\n";
  };
  return staff(3, flute, 0, name) + staff(2, viola, 2, "Viola") + staff(1, bass, 1, "Bass") +
         "barline 1 at 10 spans 3\n";
}

class ConsoleReport : public ::testing::Test {
 protected:
  /// Six pages alike, and one with the ids given.
  void group(int flute, int viola, int bass, const std::string& name = "Fl\xC3\xB6te") const {
    for (int number = 1; number <= 6; ++number) {
      place.write("x" + std::to_string(number) + ".mus", page(systemOf(101, 110, 112, name)));
    }
    place.write("x7.mus", page(systemOf(flute, viola, bass, name)));
  }
  Ended report(Lines options) const {
    options.insert(options.begin(), "report");
    for (int number = 1; number <= 7; ++number) {
      options.push_back("x" + std::to_string(number) + ".mus");
    }
    return place.kivsys(options);
  }
  std::string written(Lines options = {}) const {
    options.insert(options.end(), {"-o", "report.html"});
    const Ended ended = report(options);
    EXPECT_EQ(ended.status, 0) << ended.error;
    return place.read("report.html");
  }
  /// What the script of a page reads.
  static Json dataOf(const std::string& page) {
    const std::string opening = R"(id="data">)";
    const std::size_t start = page.find(opening) + opening.size();
    return Json::parse(page.substr(start, page.find("</script>", start) - start));
  }
  const Workplace place;
};

TEST_F(ConsoleReport, SaysThatAlikePagesCanBeUsed) {
  group(101, 110, 112);
  const Ended ended = report({"-o", "report.html"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out, "report.html: The pages can be used as they are\n");
  const std::string page = place.read("report.html");
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n"));
  EXPECT_THAT(page, HasSubstr("<title>X: KivSystem report</title>"));
  EXPECT_THAT(page, HasSubstr("All 7 systems have the same instruments in the same order."));
  EXPECT_THAT(page, HasSubstr("<dt>Pages</dt><dd>7</dd>"));
  EXPECT_THAT(page, Not(HasSubstr("id=\"next-command\"")));
}

TEST_F(ConsoleReport, WritesNothingButTheReport) {
  group(101, 110, 115);
  written();
  EXPECT_EQ(filesIn(place.path()),
            (Lines{"report.html", "x1.mus", "x2.mus", "x3.mus", "x4.mus", "x5.mus", "x6.mus", "x7.mus"}));
}

TEST_F(ConsoleReport, NamesTheConversionAsTheNextStep) {
  place.write("x1.mus", page(systemOf(101, 110, 112)));
  place.write("x2.mus", page("staff 1 at 10 lines 5 instrument 101\nbarline 1 at 10 spans 1\n"));
  EXPECT_EQ(place.kivsys({"report", "x1.mus", "x2.mus", "-o", "report.html"}).out,
            "report.html: The pages need a conversion\n");
  const std::string page = place.read("report.html");
  EXPECT_THAT(page, HasSubstr("kivsys convert --result converted/WORK0001.MUS x1.mus x2.mus</code>"));
  EXPECT_THAT(page, HasSubstr("As A, but without 110 Viola, 112 Bass"));
}

TEST_F(ConsoleReport, GroupsProblemsByTheirCodeWithEveryPlace) {
  group(101, 0, 112);
  const std::string page = written();
  EXPECT_THAT(page, HasSubstr("Staff without an instrument id"));
  EXPECT_THAT(page, HasSubstr("A staff has the instrument id 0, which stands for no instrument."));
  EXPECT_THAT(page, HasSubstr("<a href=\"#system-7\">System 7</a>, x7.mus, staff 2, item 4"));
}

TEST_F(ConsoleReport, ShowsProposalsWithTheirLinesOfTheTable) {
  group(101, 0, 112);
  const Json data = dataOf(written());
  ASSERT_EQ(data["proposals"].size(), 1U);
  EXPECT_EQ(data["proposals"][0][0], 7);
  EXPECT_EQ(data["proposals"][0][1], "0 \xE2\x86\x92 110");
  report({"-o", "again.html"});
  Lines suggest = {"suggest", "-o", "-"};
  for (int number = 1; number <= 7; ++number) {
    suggest.push_back("x" + std::to_string(number) + ".mus");
  }
  EXPECT_EQ(data["csvHead"].get<std::string>() + data["proposals"][0][3].get<std::string>(), place.kivsys(suggest).out);
}

TEST_F(ConsoleReport, ShowsTheCorrectionsOfATable) {
  group(101, 0, 112);
  place.write("mine.csv", "file,staff,new_id,reason\nx7.mus,2,111,it is a cello\n");
  const Json data = dataOf(written({"--corrections", "mine.csv"}));
  ASSERT_EQ(data["proposals"].size(), 1U);
  EXPECT_EQ(data["proposals"][0][0], 7);
  EXPECT_EQ(data["proposals"][0][3], "x7.mus,,2,,,,,111,,it is a cello\n");
}

TEST_F(ConsoleReport, ShowsTheIdOfThePageWhereATableHasNone) {
  group(101, 0, 112);
  place.write("mine.csv", "file,staff,new_id\nx7.mus,2,111\n");
  EXPECT_EQ(dataOf(written({"--corrections", "mine.csv"}))["proposals"][0][1], "0 \xE2\x86\x92 111");
}

TEST_F(ConsoleReport, RefusesCorrectionsThatDoNotFitAsFixDoes) {
  group(101, 0, 112);
  place.write("mine.csv",
              "file,staff,old_id,new_id\nx7.mus,2,0,110\nx7.mus,9,0,110\nx6.mus,2,5,110\nother.mus,1,0,5\n");
  const Ended ended = report({"-o", "report.html", "--corrections", "mine.csv"});
  EXPECT_EQ(ended.status, 2);
  Lines fix = {"fix", "--corrections", "mine.csv", "-o", "corrected"};
  for (int number = 1; number <= 7; ++number) {
    fix.push_back("x" + std::to_string(number) + ".mus");
  }
  EXPECT_EQ(ended.error, place.kivsys(fix).error);
  EXPECT_THAT(ended.error, HasSubstr("mine.csv:3: "));
  EXPECT_THAT(ended.error, HasSubstr("mine.csv:5: "));
  EXPECT_EQ(place.read("report.html"), "(no file)");
}

TEST_F(ConsoleReport, NamesNoSystemForWhatIsOnNoStaffOfAPageWithSeveral) {
  const std::string staff = " at 10 lines 5 instrument 101\nbarline ";
  place.write("x1.mus",
              page("staff 2" + staff + "2 at 10 spans 1\nstaff 1" + staff + "1 at 10 spans 1\nnote 9 at 20\n"));
  place.write("x2.mus", page("staff 1" + staff + "1 at 10 spans 1\nnote 9 at 20\n"));
  place.write("x3.mus", page("staff 1 at 10 lines 5 instrument 102\nbarline 1 at 10 spans 1\n"));
  ASSERT_EQ(place.kivsys({"report", "x1.mus", "x2.mus", "x3.mus", "-o", "report.html"}).status, 0);
  const std::string page = place.read("report.html");
  EXPECT_THAT(page, HasSubstr("<li>x1.mus"));
  EXPECT_THAT(page, HasSubstr(">System 3</a>, x2.mus"));
}

TEST_F(ConsoleReport, IsolatesNamesThatAreWrittenFromRightToLeft) {
  const std::string name = "\xD7\x97\xD7\x9C\xD7\x99\xD7\x9C";
  group(101, 110, 115, name);
  place.write("x6.mus", page("staff 1 at 10 lines 5 instrument 110\nbarline 1 at 10 spans 1\n"));
  EXPECT_THAT(written(), HasSubstr("without 101 \xE2\x81\xA8" + name + "\xE2\x81\xA9, 112 Bass"));
}

TEST_F(ConsoleReport, RefusesATableThatIsNone) {
  group(101, 0, 112);
  place.write("mine.csv", "a,b\n1,2\n");
  const Ended ended = report({"-o", "report.html", "--corrections", "mine.csv"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.error, HasSubstr("mine.csv:1: has no column file"));
  EXPECT_EQ(place.read("report.html"), "(no file)");
}

TEST_F(ConsoleReport, LeavesOutADamagedPageAndSaysSo) {
  group(101, 110, 112);
  place.write("x3.mus", page(systemOf(101, 110, 112)).substr(0, 100));
  const Ended ended = report({"-o", "report.html"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_THAT(ended.error, HasSubstr("x3.mus"));
  EXPECT_EQ(ended.out, "report.html: 1 page cannot be read\n");
  const std::string page = place.read("report.html");
  EXPECT_THAT(page, HasSubstr("kivsys recover x3.mus</code>"));
  EXPECT_THAT(page, HasSubstr("<dt>Systems</dt><dd>6</dd>"));
}

TEST_F(ConsoleReport, IsWrittenWhenNoPageCanBeRead) {
  place.write("x1.mus", "no page");
  EXPECT_EQ(place.kivsys({"report", "x1.mus", "-o", "report.html"}).status, 1);
  EXPECT_THAT(place.read("report.html"), HasSubstr("No page could be analyzed."));
}

TEST_F(ConsoleReport, ShowsSystemsBeforeAndAfterAConversion) {
  place.write("x1.mus", page(systemOf(101, 110, 112)));
  place.write("x2.mus",
              page("staff 1 at 10 lines 5 instrument 101\nclef 1 at 12\ntimesignature 1 at 14 upper 4 lower 4\n"
                   "rest 1 at 20 kind -2 duration 4\nbarline 1 at 30 spans 1\nbarline 1 at 10 spans 1\n"));
  ASSERT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"}).status, 0);
  const Ended ended = place.kivsys({"report", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS", "-o", "report.html"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  const std::string page = place.read("report.html");
  EXPECT_THAT(page, HasSubstr("kivsys verify --result out/WORK0001.MUS x1.mus x2.mus</code>"));
  const Json data = dataOf(page);
  const Json& second = data["pictures"]["systems"].back();
  EXPECT_EQ(second[0], 2);
  EXPECT_EQ(second[1][3].size(), 1U);
  ASSERT_EQ(second[2][3].size(), 3U);
  const auto inserted =
      std::count_if(second[2][3].begin(), second[2][3].end(), [](const Json& staff) { return staff[7] == 1; });
  EXPECT_EQ(inserted, 2);
}

TEST_F(ConsoleReport, NeverReplacesAnInputAResultOrAnotherFile) {
  group(101, 110, 112);
  place.write("other.html", "<!DOCTYPE html>\n<html>my own");
  place.write("mine.csv", "file,staff,new_id\nx7.mus,2,111\n");
  for (const Lines& options :
       {Lines{"-o", "x1.mus"}, Lines{"-o", "other.html"}, Lines{"-o", "mine.csv", "--corrections", "mine.csv"}}) {
    const Ended ended = report(options);
    EXPECT_EQ(ended.status, 2) << options[1];
    EXPECT_THAT(ended.error, HasSubstr(options[1]));
  }
  EXPECT_EQ(place.read("other.html"), "<!DOCTYPE html>\n<html>my own");
  written();
  written();
}

TEST_F(ConsoleReport, IsNotWrittenInPlaceOfAPageThatIsMissing) {
  group(101, 110, 112);
  const Ended ended = place.kivsys({"report", "x1.mus", "x99.mus", "-o", "x99.mus"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.error, HasSubstr("x99.mus"));
  EXPECT_EQ(place.read("x99.mus"), "(no file)");
}

TEST_F(ConsoleReport, GoesToStandardOutput) {
  group(101, 110, 112);
  const Ended ended = report({"-o", "-"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_THAT(ended.out, StartsWith("<!DOCTYPE html>\n"));
  EXPECT_THAT(ended.out, EndsWith("</html>\n"));
}

TEST_F(ConsoleReport, NeedsAFileOrOpens) {
  group(101, 110, 112);
  EXPECT_EQ(report({}).status, 2);
  EXPECT_EQ(report({"-o", "-", "--open"}).status, 2);
  EXPECT_EQ(report({"-o", "r.html", "--result", "nowhere/WORK0001.MUS"}).status, 2);
}

TEST_F(ConsoleReport, EndsWithStatusThreeWhenStrict) {
  group(101, 0, 112);
  EXPECT_EQ(report({"-o", "report.html", "--strict"}).status, 3);
  EXPECT_THAT(place.read("report.html"), HasSubstr("</html>"));
  group(101, 110, 112);
  EXPECT_EQ(report({"-o", "report.html", "--strict"}).status, 0);
}

TEST_F(ConsoleReport, OpensTheReportWithTheSystem) {
  group(101, 110, 112);
  std::filesystem::create_directory(place.path() / "bin");
  place.write("bin/xdg-open", "#!/bin/sh\nprintf '%s' \"$1\" >\"$(dirname \"$0\")/opened\"\n");
  std::filesystem::permissions(place.path() / "bin/xdg-open", std::filesystem::perms::owner_all);
  const std::string path = std::getenv("PATH");
  setenv("PATH", ((place.path() / "bin").string() + ":" + path).c_str(), 1);
  const Ended ended = report({"-o", "report.html", "--open"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(place.read("bin/opened"), (place.path() / "report.html").string());
  EXPECT_EQ(report({"--open"}).status, 0);
  const std::filesystem::path opened = place.read("bin/opened");
  EXPECT_EQ(opened.filename(), "report.html");
  EXPECT_TRUE(std::filesystem::exists(opened));
  EXPECT_EQ(std::filesystem::status(opened.parent_path()).permissions(), std::filesystem::perms::owner_all);
  std::filesystem::remove_all(opened.parent_path());
  place.write("bin/xdg-open", "#!/bin/sh\nexit 3\n");
  EXPECT_EQ(report({"-o", "report.html", "--open"}).status, 1);
  setenv("PATH", path.c_str(), 1);
}

TEST_F(ConsoleReport, EscapesHostileTexts) {
  group(101, 110, 112, "</script><img src=x onerror=alert(1)>\xE2\x80\xAE");
  const std::string page = written({"--all"});
  EXPECT_THAT(page, Not(HasSubstr("<img")));
  EXPECT_THAT(page, Not(HasSubstr("\xE2\x80\xAE")));
  EXPECT_EQ(page.find("</script>", page.find("id=\"data\"")), page.find("</script>\n  <script>"));
  EXPECT_THAT(dataOf(page)["chart"]["instruments"][0][1].get<std::string>(), StartsWith("</script><img"));
}

TEST_F(ConsoleReport, ShowsPicturesOfAllSystemsWhenAsked) {
  group(101, 110, 112);
  EXPECT_EQ(dataOf(written())["pictures"]["systems"].size(), 1U);
  EXPECT_EQ(dataOf(written({"--all"}))["pictures"]["systems"].size(), 7U);
}

}  // namespace
}  // namespace kiv::test
