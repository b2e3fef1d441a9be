#include <string>

#include <gtest/gtest.h>

#include "tests/console/fit_fixture.h"

namespace kiv::test {
namespace {

TEST_F(ConsoleFit, AConversionWarnsOfRestStavesThatDoNotFit) {
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, needsConversionNote + createdNote(2, "WORK0001.MUS", "WORK0002.MUS") + wrongRest + hint);
}

TEST_F(ConsoleFit, ADryRunWarnsToo) {
  const Ended ended = place.kivsys({"convert", "--dry-run", "x1.mus", "x2.mus"});
  EXPECT_NE(ended.error.find(wrongRest), std::string::npos) << ended.error;
}

TEST_F(ConsoleFit, JsonHasTheWarningsWithTheirBars) {
  const Json object = Json::parse(place.kivsys({"convert", "--json", "x1.mus", "x2.mus"}).out);
  const Json& warning = object["problems"].back();
  EXPECT_EQ(warning["code"], "bar-rest-length");
  EXPECT_EQ(warning["severity"], "warning");
  EXPECT_EQ(warning["file"], place.capitals("WORK0002.MUS"));
  EXPECT_EQ(warning["system"], 2);
  EXPECT_EQ(warning["bar"], 2);
  EXPECT_EQ(warning["instrument"], 102);
}

TEST_F(ConsoleFit, ARunLikeThePanelWarnsOfNothing) {
  const Ended ended = place.kivsys({"convert", "--like-panel", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("warning"), std::string::npos) << ended.error;
}

TEST_F(ConsoleFit, StrictRefusesWhatDoesNotFit) {
  const Ended ended = place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 3);
  EXPECT_NE(ended.error.find(wrongRest), std::string::npos) << ended.error;
  EXPECT_EQ(place.read("WORK0001.MUS"), "(no file)");
  EXPECT_EQ(place.read("KivSystem2.TXT"), "(no file)");
}

TEST_F(ConsoleFit, StrictRefusesItInAFolderThatDoesNotExistYet) {
  for (const std::vector<std::string>& options : {std::vector<std::string>{}, {"--json"}, {"--dry-run"}}) {
    std::vector<std::string> words{"convert", "--strict", "x1.mus", "x2.mus", "--result", "new/"};
    words.insert(words.end(), options.begin(), options.end());
    EXPECT_EQ(place.kivsys(words).status, 3);
    EXPECT_EQ(place.read("new/WORK0001.MUS"), "(no file)");
  }
  EXPECT_EQ(place.kivsys({"convert", "--fit", "--strict", "x1.mus", "x2.mus", "--result", "new/"}).status, 0);
}

TEST_F(ConsoleFit, WithFitThereIsNothingToWarnOf) {
  const Ended ended = place.kivsys({"convert", "--fit", "--strict", "--verify", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, needsConversionNote + createdNote(2, "WORK0001.MUS", "WORK0002.MUS"));
  EXPECT_NE(ended.out.find("PROVED=YES"), std::string::npos) << ended.out;
  EXPECT_NE(dumped("WORK0002.MUS").find("rest 1 at 60 duration 2 p9 -1"), std::string::npos) << dumped("WORK0002.MUS");
}

TEST_F(ConsoleFit, VerifyProvesItWithFitOnly) {
  place.kivsys({"convert", "--fit", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.kivsys({"verify", "--fit", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "x1.mus", "x2.mus"}).status, 1);
  place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.kivsys({"verify", "--fit", "x1.mus", "x2.mus"}).status, 1);
  EXPECT_EQ(place.kivsys({"verify", "x1.mus", "x2.mus"}).status, 0);
}

TEST_F(ConsoleFit, ThePanelHasNoSuchOption) {
  EXPECT_EQ(place.kivsys({"convert", "--fit", "--like-panel", "x1.mus", "x2.mus"}).status, 2);
}

TEST_F(ConsoleFit, OfVeryManyWarningsTheFirstOnesAreShown) {
  std::string longPage = "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nbarline 1 at 0 spans 1\n";
  for (int bar = 0; bar < 50; ++bar) {
    const int x = 20 + 20 * bar;
    longPage += "note 1 at " + std::to_string(x) + " duration 3\nbarline 1 at " + std::to_string(x + 10) + " spans 1\n";
  }
  addPage("x2.mus", longPage);
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_NE(ended.error.find("(system 2, bar 40)"), std::string::npos);
  EXPECT_EQ(ended.error.find("(system 2, bar 41)"), std::string::npos);
  EXPECT_NE(ended.error.find("kivsys: warning: there are 10 more warnings about rest staves, which --json lists\n"),
            std::string::npos)
      << ended.error;
}

}  // namespace
}  // namespace kiv::test
