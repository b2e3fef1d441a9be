#include <fstream>

#include "tests/console/undo_fixture.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

/// What an undo says when there is nothing that it can undo.
class UndoReasons : public Undo {
 protected:
  /// The line without times, and with "PLACE" for the folder of the test.
  std::string reasonFor(const std::string& folder) const {
    const Ended ended = place.kivsys({"undo", folder});
    EXPECT_EQ(ended.status, 2) << ended.out;
    std::string line = replaceMatches(ended.error, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)", "DATE");
    const std::string path = place.path().string();
    if (const std::size_t at = line.find(path); at != std::string::npos) {
      line.replace(at, path.size(), "PLACE");
    }
    return line;
  }
};

const std::string start = "kivsys: no run in the folder ";
const std::string onlyTheLast = "; only the last run of a folder can be undone\n";

TEST_F(UndoReasons, ALaterRunInAnotherOfItsFoldersIsNamedWithThatFolder) {
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"sort", "x1.mus"}).status, 0);
  EXPECT_EQ(reasonFor("out"), start +
                                  "out can be undone: the convert of DATE was followed by the sort of DATE in the "
                                  "folder PLACE" +
                                  onlyTheLast);
}

TEST_F(UndoReasons, ALaterConversionThatReplacedTheReportIsNamed) {
  fs::create_directory(place.path() / "other");
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "-o", "other/"}).status, 0);
  EXPECT_EQ(reasonFor("out"), start +
                                  "out can be undone: the convert of DATE was followed by the convert of DATE in "
                                  "the folder PLACE" +
                                  onlyTheLast);
  EXPECT_EQ(place.kivsys({"undo", "other"}).status, 0);
  EXPECT_EQ(reasonFor("other"),
            start + "other can be undone: its last run, the convert of DATE, is undone" + onlyTheLast);
}

TEST_F(UndoReasons, AnUndoneRunIsNamed) {
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"undo", "out"}).status, 0);
  EXPECT_EQ(reasonFor("."), start + ". can be undone: its last run, the convert of DATE, is undone" + onlyTheLast);
}

TEST_F(UndoReasons, ARunWithoutAJournalIsNotKnown) {
  const std::string unknown = "no run that wrote into it is known, or it was made with --no-undo or --like-panel\n";
  EXPECT_EQ(reasonFor("."), start + ". can be undone: " + unknown);
  EXPECT_EQ(convert({"--no-undo"}).status, 0);
  EXPECT_EQ(reasonFor("out"), start + "out can be undone: " + unknown);
  EXPECT_EQ(reasonFor("none"), start + "none can be undone: there is no such folder\n");
}

TEST_F(UndoReasons, ADamagedListOfEndedRunsIsIgnored) {
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  std::ofstream(place.stateFolder() / "kivsys/ended-runs") << "[1]\n{\"folder\":5}\nno JSON\n";
  EXPECT_TRUE(reasonFor(".").ends_with(" or --like-panel\n"));
  EXPECT_EQ(convert().status, 0);
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  EXPECT_TRUE(reasonFor(".").ends_with(onlyTheLast));
}

TEST_F(UndoReasons, TheListOfEndedRunsIsBounded) {
  EXPECT_EQ(convert().status, 0);
  const fs::path file = place.stateFolder() / "kivsys/ended-runs";
  for (int line = 0; line < 300; ++line) {
    std::ofstream(file, std::ios::app) << "{\"folder\":\"none\",\"run\":\"sort\",\"follower\":\"\",\"where\":\"\"}\n";
  }
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  std::ifstream list(file);
  int lines = 0;
  for (std::string line; std::getline(list, line);) {
    ++lines;
  }
  EXPECT_EQ(lines, 200);
}

}  // namespace
}  // namespace kiv::test
