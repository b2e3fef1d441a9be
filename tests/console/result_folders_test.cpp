#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Folders that take results, and folders that have some.
class ResultFolders : public ConsoleConvert {
 protected:
  ResultFolders() { addTwo("w/"); }

  void expectError(const Names& arguments, const std::string& expected) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_NE(ended.error.find(expected), std::string::npos) << ended.error;
  }
};

TEST_F(ResultFolders, CanBeNamedForTheFirstResult) {
  ASSERT_EQ(place.kivsys({"convert", "w", "-o", "out/"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
  for (const std::string option : {"-o", "--result", "--out", "--output"}) {
    EXPECT_EQ(place.kivsys({"convert", "--no-undo", "w", option, "out"}).status, 0) << option;
    EXPECT_EQ(filesIn(place.path() / "out"), (Names{"WORK0001.MUS", "WORK0002.MUS"})) << option;
  }
  EXPECT_EQ(place.kivsys({"verify", "w", "--result", "out"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "w", "--result", "out/"}).status, 0);
  EXPECT_EQ(place.kivsys({"report", "w", "--result", "out", "-o", "r.html"}).status, 0);
  EXPECT_EQ(place.kivsys({"convert", "w", "-o", "missing"}).status, 2) << "it may be meant as a file";
}

TEST_F(ResultFolders, ThatHaveTheNameOfAResultAreInItsWay) {
  fs::create_directories(place.path() / "out/WORK0001.MUS");
  EXPECT_NE(place.kivsys({"convert", "w", "-o", "out/WORK0001.MUS"}).status, 0);
  EXPECT_TRUE(fs::is_empty(place.path() / "out/WORK0001.MUS"));
}

TEST_F(ResultFolders, ThatAreThoseOfThePagesLeaveTheResultsOut) {
  ASSERT_EQ(place.kivsys({"convert", "w"}).status, 0);
  const std::string note =
      "kivsys: note: w/WORK0001.MUS to w/WORK0002.MUS are left out, as the name WORK0001.MUS is reserved for results\n";
  const Ended verified = place.kivsys({"verify", "w"});
  EXPECT_EQ(verified.status, 0) << verified.out;
  EXPECT_EQ(verified.error, note);
  EXPECT_EQ(place.kivsys({"verify", "-q", "w"}).error, "");
  const Ended survey = place.kivsys({"survey", "w", "--csv"});
  EXPECT_EQ(survey.error, note);
  EXPECT_EQ(survey.out.find("WORK"), std::string::npos) << survey.out;
}

TEST_F(ResultFolders, OfResultsAloneSayWhichCommandsReadResults) {
  ASSERT_EQ(place.kivsys({"convert", "w", "-o", "out/"}).status, 0);
  for (const std::string command : {"analyze", "convert", "verify", "chart", "instruments", "suggest", "sort"}) {
    const Ended ended = place.kivsys({command, "out"});
    EXPECT_EQ(ended.status, 2) << command;
    EXPECT_EQ(
        ended.error,
        "kivsys: no pages in the folder out, only results (WORK0001.MUS to WORK0002.MUS), which 'kivsys draw' and "
        "'kivsys verify --result' read; pages of your own need another name than WORK0001.MUS\n");
  }
  fs::create_directory(place.path() / "empty");
  EXPECT_EQ(place.kivsys({"analyze", "empty"}).error, "kivsys: no pages in the folder empty\n");
  fs::remove(place.path() / "out/WORK0001.MUS");
  EXPECT_EQ(place.kivsys({"analyze", "out"}).status, 0) << "only the first name is reserved";
}

}  // namespace
}  // namespace kiv::test
