#include <filesystem>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/console/example_pages.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using Lines = std::vector<std::string>;

/// A system of staves with these ids, from the top down.
std::string systemOf(const std::vector<int>& ids) {
  std::string text;
  std::size_t number = ids.size();
  for (const int id : ids) {
    const std::string n = std::to_string(number--);
    text += "staff " + n + " at 10 lines 5 instrument " + std::to_string(id) + "\nclef " + n + " at 12\n";
    text += "timesignature " + n + " at 14 upper 4 lower 4\n";
    text += "note " + n + " at 20 height 3 duration 4\nbarline " + n + " at 30 spans 1\n";
  }
  return text + "barline 1 at 10 spans " + std::to_string(ids.size()) + "\n";
}

/// The command line that a report shows; "" when it shows none.
std::string commandIn(const std::string& page) {
  const std::string opening = "<code id=\"next-command\">";
  const std::size_t start = page.find(opening);
  if (start == std::string::npos) {
    return "";
  }
  std::string command = page.substr(start + opening.size(), page.find("</code>", start) - start - opening.size());
  for (const auto& [entity, text] : {std::pair("&#39;", "'"), std::pair("&apos;", "'"), std::pair("&quot;", "\""),
                                     std::pair("&lt;", "<"), std::pair("&gt;", ">"), std::pair("&amp;", "&")}) {
    command = with(command, entity, text);
  }
  return command;
}

/// The next step of reports: its command line is run as it stands there.
class ReportSteps : public ::testing::Test {
 protected:
  void write(const std::string& name, const std::vector<int>& ids) const { place.write(name, page(systemOf(ids))); }
  /// The report of the pages, whatever is wrong with them.
  std::string report(Lines arguments) const {
    arguments.insert(arguments.begin(), {"report", "-o", "report.html"});
    const Ended ended = place.kivsys(arguments);
    EXPECT_LT(ended.status, 2) << ended.error;
    return place.read("report.html");
  }
  std::string stepOf(const Lines& arguments) const { return commandIn(report(arguments)); }
  /// Runs a command that must succeed.
  std::string run(const std::string& command) const {
    const Ended ended = place.shell(command);
    EXPECT_EQ(ended.status, 0) << command << ":\n" << ended.out;
    return ended.out;
  }
  const Workplace place;
};

TEST_F(ReportSteps, AcceptStavesWithoutAnIdOnlyWhereACommandCan) {
  write("x1.mus", {101, 0});
  write("x2.mus", {101});
  EXPECT_EQ(stepOf({"x1.mus", "x2.mus", "--allow-zero-id"}),
            "kivsys convert --result converted/WORK0001.MUS --allow-zero-id x1.mus x2.mus");
  run(stepOf({"x1.mus", "x2.mus", "--allow-zero-id"}));
  const std::string verify = stepOf({"x1.mus", "x2.mus", "--allow-zero-id", "--result", "converted"});
  EXPECT_EQ(verify, "kivsys verify --result converted/WORK0001.MUS x1.mus x2.mus");
  EXPECT_THAT(run(verify), HasSubstr("PROVED=YES"));
}

TEST_F(ReportSteps, CorrectIdsWithoutAnOptionThatOnlyAnalysesHave) {
  for (int number = 1; number <= 4; ++number) {
    write("x" + std::to_string(number) + ".mus", {101, 110, 112});
  }
  write("x5.mus", {101, 112, 112});
  write("x6.mus", {101, 0, 112});
  const Lines pages = {"x1.mus", "x2.mus", "x3.mus", "x4.mus", "x5.mus", "x6.mus", "--allow-zero-id"};
  const std::string fix = stepOf(pages);
  EXPECT_EQ(fix, "kivsys fix --corrections corrections.csv -o corrected x*.mus");
  place.write("corrections.csv", "file,staff,new_id\nx5.mus,2,110\n");
  run(fix);
}

TEST_F(ReportSteps, KeepTheOrderOfThePages) {
  write("x1.mus", {101, 110});
  write("x2.mus", {101});
  const std::string convert = stepOf({"--keep-order", "x2.mus", "x1.mus"});
  EXPECT_EQ(convert, "kivsys convert --result converted/WORK0001.MUS --keep-order x2.mus x1.mus");
  run(convert);
  EXPECT_THAT(run(stepOf({"--keep-order", "x2.mus", "x1.mus", "--result", "converted"})), HasSubstr("PROVED=YES"));
}

TEST_F(ReportSteps, OfAnAnalysisKeepTheOrderOfThePages) {
  write("x1.mus", {101, 110});
  write("x2.mus", {101});
  EXPECT_THAT(place.kivsys({"analyze", "--keep-order", "x2.mus", "x1.mus"}).error,
              HasSubstr("Next: kivsys convert --keep-order x2.mus x1.mus --result converted/WORK0001.MUS\n"));
}

TEST_F(ReportSteps, NeverMixResultsOfTwoGroups) {
  write("a1.mus", {101, 110});
  write("a2.mus", {101});
  write("b1.mus", {201, 210});
  write("b2.mus", {201});
  run(stepOf({"a1.mus", "a2.mus"}));
  const std::string second = stepOf({"b1.mus", "b2.mus"});
  EXPECT_EQ(second, "kivsys convert --result converted2/WORK0001.MUS b1.mus b2.mus");
  run(second);
  EXPECT_EQ(filesIn(place.path() / "converted2").size(), 2U);
}

TEST_F(ReportSteps, SaveWhatDamagedPagesStillHoldAsAnalysesDo) {
  std::size_t recovered = 0;
  run("for p in \"$examples\"/broken-minuet/*.txt; do kivsys build \"$p\" \"$(basename \"$p\" .txt).MUS\"; done");
  for (const auto& entry : std::filesystem::directory_iterator(place.path())) {
    const std::string name = entry.path().filename().string();
    if (!name.ends_with(".MUS")) {
      continue;
    }
    const std::string error = place.kivsys({"analyze", name}).error;
    const std::size_t next = error.find("Next: kivsys recover");
    const std::string written = report({name});
    if (next != std::string::npos) {
      EXPECT_EQ(commandIn(written), error.substr(next + 6, error.find('\n', next) - next - 6));
      EXPECT_THAT(written, HasSubstr("save what it still holds with kivsys recover.</dd>")) << "as the problem says";
      ++recovered;
    }
  }
  EXPECT_GT(recovered, 0U);
}

TEST_F(ReportSteps, SayWhatAFileIsThatIsNoPage) {
  place.write("x1.txt", systemOf({101}));
  place.write("list.txt", "x2.mus\n");
  write("x2.mus", {101});
  for (const std::string name : {"x1.txt", "list.txt"}) {
    const std::string error = place.kivsys({"analyze", name}).error;
    const std::size_t next = error.find("Next: ");
    ASSERT_NE(next, std::string::npos) << error;
    const std::string written = report({name});
    EXPECT_EQ("Next: " + commandIn(written) + "\n", error.substr(next));
    EXPECT_THAT(written, HasSubstr(error.substr(8, error.find('\n') - 8)));
    EXPECT_THAT(written, Not(HasSubstr("Save what the damaged page still holds")));
  }
}

TEST_F(ReportSteps, AreNotCommandsWhenNoOtherRunCanReadThePages) {
  write("x1.mus", {101, 110});
  write("x2.mus", {101});
  const Ended ended = place.kivsys({"report", "--names", "-", "-o", "report.html"}, ".", "x1.mus\nx2.mus\n");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_THAT(place.read("report.html"), HasSubstr("The pages need a conversion"));
  EXPECT_EQ(commandIn(place.read("report.html")), "");
}

TEST_F(ReportSteps, AreNotCommandsWithNamesThatCannotBeShown) {
  std::filesystem::create_directory(place.path() / "a\x1B b");
  write("a\x1B b/x1.mus", {101, 110});
  write("a\x1B b/x2.mus", {101});
  EXPECT_EQ(stepOf({"a\x1B b/x1.mus", "a\x1B b/x2.mus"}), "");
}

TEST_F(ReportSteps, MakeTheSameReportAgain) {
  write("x1.mus", {101, 101});
  place.write("none.csv", "file,staff,new_id\n");
  const Ended ended = place.kivsys({"report", "x1.mus", "-o", "my report.html", "--all", "--corrections", "none.csv"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  const std::string again = commandIn(place.read("my report.html"));
  EXPECT_EQ(again, "kivsys report -o 'my report.html' --corrections none.csv --all x1.mus");
  run(again);
}

TEST_F(ReportSteps, NameTheOptionsOfTheConversionToBeProved) {
  write("x1.mus", {101, 110});
  write("x2.mus", {101});
  run("kivsys convert --fit --result fit/WORK0001.MUS x1.mus x2.mus");
  EXPECT_THAT(report({"x1.mus", "x2.mus", "--result", "fit"}),
              HasSubstr("with the options that it had, such as --fit."));
}

TEST_F(ReportSteps, OfASurveyAreAboutOnePiece) {
  std::filesystem::create_directory(place.path() / "my music");
  for (int number = 1; number <= 6; ++number) {
    write("my music/a" + std::to_string(number) + ".mus", number == 6 ? std::vector{101} : std::vector{101, 110});
    write("my music/b" + std::to_string(number) + ".mus", number == 6 ? std::vector{201} : std::vector{201, 210});
  }
  ASSERT_EQ(place.kivsys({"survey", "my music", "--html", "library.html", "--reports", "reports"}).status, 0);
  for (const std::string& file : filesIn(place.path() / "reports")) {
    run(commandIn(place.read("reports/" + file)));
  }
  std::size_t results = 0;
  for (const auto& entry : std::filesystem::directory_iterator(place.path())) {
    const bool isOfResults = entry.path().filename().string().starts_with("converted-");
    results += isOfResults ? filesIn(entry.path()).size() : 0;
  }
  EXPECT_EQ(results, 12U);
}

}  // namespace
}  // namespace kiv::test
