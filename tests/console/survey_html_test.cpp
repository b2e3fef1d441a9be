#include <algorithm>
#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/console/example_pages.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::string systemOf(int first, int second) {
  return "staff 2 at 10 lines 5 instrument " + std::to_string(first) + "\nstaff 1 at 10 lines 5 instrument " +
         std::to_string(second) + "\nbarline 1 at 10 spans 2\n";
}

/// A library with a piece of each verdict.
class SurveyHtml : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directories(place.path() / "music/a b");
    write("good", systemOf(101, 102), systemOf(101, 102));
    write("odd", systemOf(101, 102), systemOf(101, 103));
    write("zero", systemOf(101, 0), systemOf(101, 102));
    place.write("music/a b/bad1.mus", "no page");
  }
  void write(const std::string& name, const std::string& first, const std::string& second) const {
    place.write("music/a b/" + name + "1.mus", page(first));
    place.write("music/a b/" + name + "2.mus", page(second));
  }
  Ended survey(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"survey", "music", "--html", "library.html"});
    return place.kivsys(options);
  }
  const Workplace place;
};

TEST_F(SurveyHtml, WritesARowForEachPieceBesideItsLines) {
  const Ended ended = survey();
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out, place.kivsys({"survey", "music"}).out);
  const std::string page = place.read("library.html");
  EXPECT_THAT(page, StartsWith("<!DOCTYPE html>\n"));
  EXPECT_THAT(page, HasSubstr("<tr data-verdict=\"unreadable\"><th scope=\"row\"><bdi>BAD</bdi></th>"));
  EXPECT_THAT(page, HasSubstr("<tr data-verdict=\"usable\"><th scope=\"row\"><bdi>GOOD</bdi></th>"));
  EXPECT_THAT(page, HasSubstr("<tr data-verdict=\"needs-conversion\"><th scope=\"row\"><bdi>ODD</bdi></th>"));
  EXPECT_THAT(page, HasSubstr("<tr data-verdict=\"has-problems\"><th scope=\"row\"><bdi>ZERO</bdi></th>"));
  EXPECT_THAT(page, HasSubstr("data-map=\"11,10,01\""));
}

TEST_F(SurveyHtml, LinksAReportForEachPiece) {
  const Ended ended = survey({"--reports", "the reports"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  const auto files = filesIn(place.path() / "the reports");
  ASSERT_EQ(files.size(), 4U);
  EXPECT_THAT(files.front(), StartsWith("BAD-"));
  const std::string page = place.read("library.html");
  for (const std::string& file : files) {
    EXPECT_THAT(page, HasSubstr("<a href=\"the%20reports/" + file + "\">"));
  }
  EXPECT_THAT(place.read("the reports/" + files[1]), HasSubstr("The pages can be used as they are"));
  EXPECT_THAT(place.read("the reports/" + files[0]), HasSubstr("1 page cannot be read"));
}

TEST_F(SurveyHtml, IsTheSameWithAStateOfAnEarlierRun) {
  survey({"--reports", "reports", "--resume", "state"});
  const std::string page = place.read("library.html");
  const auto files = filesIn(place.path() / "reports");
  std::filesystem::remove(place.path() / "reports" / files[2]);
  survey({"--reports", "reports", "--resume", "state"});
  EXPECT_EQ(filesIn(place.path() / "reports"), files) << "a missing report is written again";
  const auto withoutTime = [](std::string text) { return text.erase(text.find("<p class=\"made\">"), 60); };
  EXPECT_EQ(withoutTime(place.read("library.html")), withoutTime(page));
}

TEST_F(SurveyHtml, MakesAReportAgainAfterItsPiecesHaveChanged) {
  const auto report = [&] { return place.read("reports/" + filesIn(place.path() / "reports")[1]); };
  survey({"--reports", "reports", "--resume", "state"});
  EXPECT_THAT(report(), HasSubstr("The pages can be used as they are"));
  write("good", systemOf(101, 102), systemOf(101, 103));
  place.kivsys({"survey", "music", "--resume", "state"});  // knows the new pages from now on
  survey({"--reports", "reports", "--resume", "state"});
  EXPECT_THAT(report(), HasSubstr("The pages need a conversion"));
}

TEST_F(SurveyHtml, LinksNoReportOfAPieceThatWasNotAnalyzed) {
  survey({"--reports", "reports"});
  EXPECT_THAT(place.read("library.html"), HasSubstr("reports/GOOD-"));
  place.write("music/a b/GOOD1.MUS", page(systemOf(1, 2)));
  survey({"--reports", "reports"});
  EXPECT_THAT(place.read("library.html"), Not(HasSubstr("reports/GOOD-")));
  std::filesystem::remove_all(place.path() / "reports");
  survey({"--reports", "reports"});
  EXPECT_EQ(filesIn(place.path() / "reports").size(), 3U);
}

TEST_F(SurveyHtml, RefusesOutputsThatWouldReplaceOneAnother) {
  survey({"--reports", "reports"});
  const std::string report = "reports/" + filesIn(place.path() / "reports")[1];
  const std::vector<std::vector<std::string>> all = {
      {"--html", report, "--reports", "reports"},
      {"--html", "new", "--reports", "new"},
      {"--html", "new", "--reports", "new/reports"},
      {"--html", "new.html", "--reports", "reports", "--resume", "new.html"},
      {"--html", "new.html", "--reports", "reports", "--resume", report}};
  for (std::vector<std::string> options : all) {
    options.insert(options.begin(), {"survey", "music"});
    EXPECT_EQ(place.kivsys(options).status, 2) << options[3] << " " << options[5];
  }
  EXPECT_FALSE(std::filesystem::exists(place.path() / "new"));
  EXPECT_FALSE(std::filesystem::exists(place.path() / "new.html"));
}

TEST_F(SurveyHtml, NeverReplacesAPageOrAnotherFile) {
  place.write("mine.html", "<!DOCTYPE html>\n<html>my own");
  EXPECT_EQ(place.kivsys({"survey", "music", "--html", "mine.html"}).status, 2);
  EXPECT_EQ(place.read("mine.html"), "<!DOCTYPE html>\n<html>my own");
  const std::string piece = place.read("music/a b/good1.mus");
  EXPECT_EQ(place.kivsys({"survey", "music", "--html", "music/a b/good1.mus"}).status, 2);
  EXPECT_EQ(place.read("music/a b/good1.mus"), piece);
  EXPECT_EQ(place.kivsys({"survey", "music", "--html", "library.html", "--reports", "mine.html"}).status, 2);
}

TEST_F(SurveyHtml, NeedsAPageForItsReports) {
  EXPECT_EQ(place.kivsys({"survey", "music", "--reports", "reports"}).status, 2);
  EXPECT_EQ(place.kivsys({"survey", "music", "--html", "-"}).status, 2);
  EXPECT_FALSE(std::filesystem::exists(place.path() / "reports"));
}

}  // namespace
}  // namespace kiv::test
