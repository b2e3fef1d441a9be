#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Conversions into a folder that has results of another one.
class OldResults : public ConsoleConvert {
 protected:
  OldResults() {
    addTwo();
    fs::create_directory(place.path() / "out");
  }
  /// The lines of a conversion about old results.
  std::string linesAfter(const Names& more = {}) const {
    Names arguments = {"convert", "x1.mus", "x2.mus", "-o", "out/"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 0) << ended.error;
    std::istringstream text(ended.error);
    std::string lines;
    for (std::string line; std::getline(text, line);) {
      const bool isAbout = line.find("old result") != std::string::npos || line.find("this run") != std::string::npos;
      lines += isAbout ? line + "\n" : "";
    }
    return lines;
  }
  void addOld(const std::string& name) const { addPage("out/" + name, bass); }
};

TEST_F(OldResults, ThatAreAllReplacedAreCountedInANote) {
  EXPECT_EQ(linesAfter(), "");
  EXPECT_EQ(linesAfter(), "kivsys: note: 2 old results were replaced\n");
  fs::remove(place.path() / "out/WORK0002.MUS");
  EXPECT_EQ(linesAfter(), "kivsys: note: 1 old result was replaced\n");
  EXPECT_EQ(linesAfter({"-q"}), "");
}

TEST_F(OldResults, ThatRemainAreNamedInAWarning) {
  addOld("WORK0003.MUS");
  EXPECT_EQ(linesAfter(), "kivsys: warning: out/WORK0003.MUS remains, and is not of this run\n");
  for (const char* name : {"WORK0004.MUS", "work0009.mus", "WORK12345.MUS"}) {
    addOld(name);
  }
  EXPECT_EQ(linesAfter(),
            "kivsys: warning: 2 old results were replaced; out/WORK0003.MUS to out/WORK0004.MUS, out/work0009.mus, "
            "out/WORK12345.MUS remain, and are not of this run\n");
}

TEST_F(OldResults, AreNoFilesOfOtherNames) {
  for (const char* name : {"OTHER0003.MUS", "WORK0003.PAG", "WORK003.MUS", "WORK00003.MUS"}) {
    addOld(name);
  }
  EXPECT_EQ(linesAfter(), "");
}

TEST_F(OldResults, OfADryRunAreThoseThatARunWouldReplaceOrLeave) {
  EXPECT_EQ(linesAfter(), "");
  addOld("WORK0003.MUS");
  EXPECT_EQ(linesAfter({"--dry-run"}),
            "kivsys: warning: 2 old results would be replaced; out/WORK0003.MUS would remain, not of this run\n");
}

TEST_F(OldResults, AreInJson) {
  EXPECT_EQ(linesAfter(), "");
  addOld("WORK0003.MUS");
  const Names arguments = {"convert", "x1.mus", "x2.mus", "-o", "out/", "--json"};
  const Json object = Json::parse(place.kivsys(arguments).out);
  EXPECT_EQ(object["old_results"]["replaced"], 2);
  EXPECT_EQ(object["old_results"]["left"], Json({(place.path() / "out/WORK0003.MUS").string()}));
}

TEST_F(OldResults, AreNotLookedForLikeThePanel) {
  EXPECT_EQ(linesAfter(), "");
  addOld("WORK0003.MUS");
  EXPECT_EQ(linesAfter({"--like-panel"}), "");
}

}  // namespace
}  // namespace kiv::test
