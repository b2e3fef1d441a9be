#include <string>

#include <gtest/gtest.h>

#include "tests/console/fit_fixture.h"

namespace kiv::test {
namespace {

/// The command line after "Next: "; "" for none.
std::string stepIn(const std::string& error) {
  const std::size_t begin = error.find("Next: ");
  return begin == std::string::npos ? "" : error.substr(begin + 6, error.find('\n', begin) - begin - 6);
}

TEST_F(ConsoleFitAfterAFailure, WhatIsWrittenIsWarnedOfAndFitIsNext) {
  const Ended ended = place.kivsys(words);
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find("kivsys: Logical error 3 in setRestDurations\n" + wrongRest), std::string::npos)
      << ended.error;
  EXPECT_NE(ended.error.find("Next: kivsys convert --fit x1.mus x2.mus x3.mus\n"), std::string::npos) << ended.error;
  EXPECT_EQ(place.kivsys({"convert", "--fit", "x1.mus", "x2.mus", "x3.mus"}).status, 0);
}

TEST_F(ConsoleFitAfterAFailure, TheNextStepHasTheOptionsOfTheRun) {
  words.insert(words.end(), {"--json", "--result", "new/", "--no-instr-number"});
  for (const std::string flag : {"--verify", "--dry-run"}) {
    Names typed = words;
    typed.push_back(flag);
    const Json object = Json::parse(place.kivsys(typed).out);
    EXPECT_EQ(object["next"],
              "kivsys convert --fit x1.mus x2.mus x3.mus --result new/WORK0001.MUS --no-instr-number " + flag);
    EXPECT_EQ(object["problems"].back()["code"], "bar-rest-length");
  }
}

TEST_F(ConsoleFitAfterAFailure, StrictRefusesWhatItWouldWrite) {
  words.insert(words.end(), {"--strict"});
  const Ended ended = place.kivsys(words);
  EXPECT_EQ(ended.status, 3);
  EXPECT_NE(ended.error.find(wrongRest), std::string::npos) << ended.error;
  EXPECT_EQ(place.read("WORK0001.MUS"), "(no file)");
}

TEST_F(ConsoleFitAfterAFailure, ARunLikeThePanelSaysNothingOfThem) {
  words.insert(words.end(), {"--like-panel"});
  const Ended ended = place.kivsys(words);
  EXPECT_EQ(ended.error.find("warning"), std::string::npos) << ended.error;
  EXPECT_EQ(ended.error.find("Next:"), std::string::npos) << ended.error;
}

class ConsoleFitStep : public ConsoleFitAfterAFailure {
 protected:
  /// The step after the failing conversion with more options; it must work, with no result left of the run before.
  std::string stepAfter(const Names& options) const {
    Names typed = words;
    typed.insert(typed.end(), options.begin(), options.end());
    const Ended ended = place.kivsys(typed);
    EXPECT_EQ(ended.status, 1);
    return stepIn(ended.error);
  }
};

TEST_F(ConsoleFitStep, IsNoneWithATableOfInstruments) {
  place.write("l.csv", "id\n101\n102\n");
  words.insert(words.end(), {"--layout", "l.csv"});
  const Ended ended = place.kivsys(words);
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find(wrongRest), std::string::npos) << ended.error;
  EXPECT_EQ(stepIn(ended.error), "") << "--fit excludes --layout";
  EXPECT_EQ(ended.error.find(hint), std::string::npos) << ended.error;
}

TEST_F(ConsoleFitStep, OfAConversionWithATableHasNoNoteAboutFit) {
  place.write("l.csv", "id\n101\n102\n");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus", "--layout", "l.csv"});
  EXPECT_NE(ended.error.find(wrongRest), std::string::npos) << ended.error;
  EXPECT_EQ(ended.error.find(hint), std::string::npos) << ended.error;
}

TEST_F(ConsoleFitStep, KeepsTheFolderOfTheReport) {
  fs::create_directory(place.path() / "f");
  EXPECT_EQ(stepAfter({"--folder", "f", "--result", "new/"}),
            "kivsys convert --fit --folder f x1.mus x2.mus x3.mus --result new/WORK0001.MUS");
}

TEST_F(ConsoleFitStep, HasTheOrderOfThePagesOnce) {
  EXPECT_EQ(stepAfter({"--keep-order"}), "kivsys convert --fit --keep-order x1.mus x2.mus x3.mus");
}

TEST_F(ConsoleFitStep, AfterARunThatMayNotOverwriteTakesAnotherFolder) {
  EXPECT_EQ(stepAfter({"--no-overwrite", "--result", "new/"}),
            "kivsys convert --fit x1.mus x2.mus x3.mus --result converted/WORK0001.MUS");
  EXPECT_EQ(stepAfter({"--no-overwrite", "--dry-run", "--result", "other/"}),
            "kivsys convert --fit x1.mus x2.mus x3.mus --result other/WORK0001.MUS --no-overwrite --dry-run");
}

TEST_F(ConsoleFitStep, AfterARefusalByStrictIsFitIfThatIsNotRefused) {
  const Ended ended = place.kivsys({"convert", "--strict", "--no-overwrite", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 3);
  EXPECT_EQ(stepIn(ended.error), "kivsys convert --fit x1.mus x2.mus --no-overwrite --strict");
  const Json object = Json::parse(place.kivsys({"convert", "--strict", "--json", "x1.mus", "x2.mus"}).out);
  EXPECT_EQ(object["next"], "kivsys convert --fit x1.mus x2.mus --strict");
  EXPECT_EQ(place.kivsys({"convert", "--fit", "x1.mus", "x2.mus", "--no-overwrite", "--strict"}).status, 0);
}

TEST_F(ConsoleFitStep, AfterARefusalByStrictIsNoneIfFitIsRefusedToo) {
  addPage("x2.mus",
          "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\nnote 2 at 30 duration 4\nbarline 2 at 60\n"
          "staff 1 at 0 size 1 lines 5 instrument 103\nclef 1 at 2\nnote 1 at 30 duration 3\nbarline 1 at 0 spans 2\n"
          "barline 1 at 60\n");
  const Ended ended = place.kivsys({"convert", "--strict", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 3);
  EXPECT_NE(ended.error.find("[staves-disagree]"), std::string::npos) << ended.error;
  EXPECT_EQ(stepIn(ended.error), "");
}

class ConsoleStrictBeforeAnError : public ConsoleFitAfterAFailure {
 protected:
  void SetUp() override {
    ConsoleFitAfterAFailure::SetUp();
    addPage("x2.mus", duo);
  }
};

TEST_F(ConsoleStrictBeforeAnError, NothingIsWritten) {
  for (const std::string option : {"--force", "--json"}) {
    const Ended ended = place.kivsys({"convert", "--strict", option, "x1.mus", "x2.mus", "x3.mus", "--result", "new/"});
    EXPECT_EQ(ended.status, 1);
    EXPECT_FALSE(fs::exists(place.path() / "new"));
    EXPECT_EQ(place.read("KivSystem2.TXT"), "(no file)");
    if (option == "--json") {
      const Json object = Json::parse(ended.out);
      EXPECT_EQ(object["created"], Json::array());
      EXPECT_EQ(object["problems"].back()["code"], "logical-error");
    } else {
      EXPECT_EQ(ended.error,
                needsConversionNote + "kivsys: Logical error 3 in setRestDurations\n" +
                    "kivsys: nothing is written, as the conversion ends with an error and --strict is given\n" +
                    "Next: kivsys convert --fit --force x1.mus x2.mus x3.mus --result new/WORK0001.MUS --strict\n");
    }
  }
}

}  // namespace
}  // namespace kiv::test
