#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/json_schema.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

/// What an analysis says to do next.
class NextStep : public ::testing::Test {
 protected:
  void addPage(const std::string& file, int upper, int lower, const std::string& more = "") const {
    place.write(file, page("staff 2 at 0 instrument " + std::to_string(upper) + "\nstaff 1 at 0 instrument " +
                           std::to_string(lower) + "\nbarline 1 at 0 spans 2\n" + more));
  }
  /// The command line in JSON, which the human output has, too; "" for none.
  std::string after(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), "analyze");
    const std::string human = place.kivsys(arguments).error;
    arguments.emplace_back("--json");
    const Json all = Json::parse(place.kivsys(arguments).out);
    EXPECT_EQ(schemaErrors(all, "analyze"), std::vector<std::string>());
    const std::string next = all["next"].is_null() ? "" : all["next"].get<std::string>();
    EXPECT_EQ(human.find("Next: ") != std::string::npos, !next.empty()) << human;
    EXPECT_TRUE(next.empty() || human.find("Next: " + next + "\n") != std::string::npos) << human;
    return next;
  }

  Workplace place;
};

TEST_F(NextStep, IsNoneWhenThePagesCanBeUsed) {
  addPage("x1.mus", 101, 102);
  addPage("x2.mus", 102, 101);
  EXPECT_EQ(after({"x1.mus"}), "");
  EXPECT_EQ(after({"x1.mus", "x2.mus"}), "kivsys convert x1.mus x2.mus --result converted/WORK0001.MUS");
}

/// What an analysis says to people: whether the pages can be used, and the command line that helps.
TEST_F(NextStep, OfPagesThatNeedAConversionIsThatConversionForPeople) {
  addPage("x1.mus", 101, 102);
  addPage("x2.mus", 102, 101);
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_TRUE(ended.out.ends_with("\nThe pages need a conversion.\n")) << ended.out;
  EXPECT_EQ(ended.error, "Next: kivsys convert x1.mus x2.mus --result converted/WORK0001.MUS\n");
  EXPECT_EQ(place.kivsys({"analyze", "-q", "x1.mus", "x2.mus"}).error, "");
  const Ended usable = place.kivsys({"analyze", "x1.mus"});
  EXPECT_TRUE(usable.out.ends_with("\nThe pages can be used as they are.\n")) << usable.out;
  EXPECT_EQ(usable.error, "");
  EXPECT_EQ(place.kivsys({"analyze", "--like-panel", "x1.mus"}).out.find("can be used"), std::string::npos);
}

TEST_F(NextStep, OfPagesWithProblemsIsNoConversion) {
  addPage("x1.mus", 0, 102);
  addPage("x2.mus", 0, 0);
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_TRUE(ended.out.ends_with("\n3 problems must be corrected first.\n")) << ended.out;
  EXPECT_EQ(ended.error.find("kivsys convert"), std::string::npos) << ended.error;
  place.kivsys({"report", "x1.mus", "x2.mus", "-o", "r.html"});
  EXPECT_NE(place.read("r.html").find("3 problems must be corrected first"), std::string::npos) << "in the same words";
}

TEST_F(NextStep, IsASuggestionForWrongIds) {
  addPage("x1.mus", 0, 102);
  EXPECT_EQ(after({"x1.mus"}), "kivsys suggest x1.mus");
  EXPECT_EQ(after({"x1.mus", "--allow-zero-id"}), "");
  addPage("x2.mus", 102, 102);
  EXPECT_EQ(after({"x2.mus"}), "kivsys suggest x2.mus");
  addPage("x3.mus", 101, 102, "rest 1 at 20 kind -2 cue 105\n");
  EXPECT_EQ(after({"x3.mus"}), "kivsys suggest x3.mus");
}

TEST_F(NextStep, IsNoneForACueOfAnInstrumentOfItsSystem) {
  addPage("x1.mus", 101, 102, "rest 2 at 20 kind -2 cue 102\n");
  EXPECT_NE(place.kivsys({"analyze", "x1.mus"}).error.find("Reference to undefined instrId(s)"), std::string::npos);
  EXPECT_EQ(after({"x1.mus"}), "");
}

TEST_F(NextStep, QuotesNamesForTheShell) {
  addPage("x$1.mus", 0, 102);
  addPage("-x2.mus", 101, 102);
  EXPECT_EQ(after({"x$1.mus", "./-x2.mus"}), "kivsys suggest 'x$1.mus' ./-x2.mus");
}

TEST_F(NextStep, TakesTheNamesFileOfTheAnalysis) {
  addPage("x1.mus", 0, 102);
  place.write("my names.txt", "x1.mus\n");
  EXPECT_EQ(after({"--names", "my names.txt"}), "kivsys suggest --names 'my names.txt'");
}

TEST_F(NextStep, RecoversAPageThatEndsTheAnalysis) {
  addPage("x1.mus", 0, 102);
  place.write("x$2.mus", page("bytes FF FF FF FF\n"));
  EXPECT_EQ(after({"x1.mus", "x$2.mus"}), "kivsys recover 'x$2.mus'");
}

TEST_F(NextStep, RecoversAPageWithAnItemThatIsTooLong) {
  std::string zeros;
  for (int word = 0; word < 40; ++word) {
    zeros += "bytes 00 00 00 00\n";
  }
  addPage("x1.mus", 101, 102, "bytes 00 00 20 42\n" + zeros + "trailer\n");
  EXPECT_EQ(after({"x1.mus"}), "kivsys recover x1.mus");
}

TEST_F(NextStep, RecoversTheFirstSkippedPageBeforeAllElse) {
  addPage("x1.mus", 0, 102);
  place.write("x2.mus", page("bytes FF FF FF FF\n"));
  place.write("x3.mus", page("bytes FF FF FF FF\n"));
  const std::string all = place.kivsys({"analyze", "--keep-going", "--json", "x1.mus", "x2.mus", "x3.mus"}).out;
  EXPECT_EQ(Json::parse(all)["next"], "kivsys recover x2.mus");
}

TEST_F(NextStep, IsNoneAfterACriticalEndThatNoCommandMends) {
  addPage("x1.mus", 40000, 102);
  EXPECT_EQ(place.kivsys({"analyze", "x1.mus"}).status, 1);
  EXPECT_EQ(after({"x1.mus"}), "");
}

TEST_F(NextStep, IsSaidAfterAConversionToo) {
  addPage("x1.mus", 0, 102);
  addPage("x2.mus", 101, 102);
  for (const std::string option : {"--dry-run", "--strict"}) {
    const std::vector<std::string> run = {"convert", "x1.mus", "x2.mus", "--result", "WORK0001.MUS", option};
    EXPECT_NE(place.kivsys(run).error.find("Next: kivsys suggest x1.mus x2.mus\n"), std::string::npos) << option;
    std::vector<std::string> asJson = run;
    asJson.emplace_back("--json");
    const Json all = Json::parse(place.kivsys(asJson).out);
    EXPECT_EQ(all["next"], "kivsys suggest x1.mus x2.mus") << option;
    EXPECT_EQ(schemaErrors(all, "convert"), std::vector<std::string>());
  }
}

TEST_F(NextStep, IsNoneAfterAConversionInWhichNothingIsWrong) {
  addPage("x1.mus", 101, 102, "rest 2 at 20 kind -2 cue 102\n");
  addPage("x2.mus", 102, 101);
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus", "--result", "WORK0001.MUS", "--dry-run"});
  EXPECT_EQ(ended.error.find("Next: "), std::string::npos) << ended.error;
}

TEST_F(NextStep, OfAConversionHasItsTableOfInstruments) {
  addPage("x1.mus", 0, 0);
  addPage("x2.mus", 101, 102, "rest 2 at 20 kind -2 cue 105\n");
  place.write("l.csv", "id\n101\n102\n");
  EXPECT_NE(place.kivsys({"convert", "x2.mus", "--layout", "l.csv", "--result", "WORK0001.MUS", "--dry-run", "--force"})
                .error.find("Next: kivsys suggest x2.mus --layout l.csv\n"),
            std::string::npos);
}

TEST_F(NextStep, IsNotSaidLikeThePanel) {
  addPage("X1.MUS", 0, 102);
  EXPECT_EQ(place.kivsys({"analyze", "--like-panel", "X1.MUS"}).error.find("Next: "), std::string::npos);
}

TEST_F(NextStep, IsInTheLastLineOfJsonLines) {
  addPage("x1.mus", 0, 102);
  const std::string lines = place.kivsys({"analyze", "--jsonl", "x1.mus"}).out;
  const Json outcome = Json::parse(lines.substr(lines.rfind("\n", lines.size() - 2) + 1));
  EXPECT_EQ(outcome["next"], "kivsys suggest x1.mus");
}

}  // namespace
}  // namespace kiv::test
