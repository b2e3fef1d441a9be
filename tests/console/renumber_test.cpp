#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Three instruments, cues of each other and shown numbers, with ids that are to rise in another order.
class Renumber : public ConsoleConvert {
 protected:
  void SetUp() override {
    addPage("x1.mus", text("103", "101", "102"));
    addPage("x2.mus", text("103", "101", "102"));
    place.write("l.csv", "id,name\n103,Flute\n101,Oboe\n102,Bass\n105,Harp\n104,Organ\n");
  }
  static std::string text(const std::string& top, const std::string& middle, const std::string& bottom) {
    return "staff 3 at 0 instrument " + top + "\nstaff 2 at 0 instrument " + middle + "\nstaff 1 at 0 instrument " +
           bottom + "\nbarline 1 at 0 spans 3\nitem 2 1 30 1 -2 0 1 0 0 0 0 0 " + top +
           "\nitem 2 2 30 1 -2 0 1 0 0 0 0 0 " + bottom + "\nitem 10 2 -4 0 " + middle + " 0.7\n";
  }
  Ended fix(Names options) const {
    options.insert(options.begin(), {"fix", "x1.mus", "x2.mus", "--renumber", "l.csv"});
    return place.kivsys(options);
  }
};

TEST_F(Renumber, GivesRisingIdsInTheOrderOfTheTableThroughCyclesAndSwaps) {
  const Ended ended = fix({"-o", "fixed"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(
      ended.error.starts_with("kivsys: note: new ids: 103 -> 101, 101 -> 102, 102 -> 103, 105 -> 104, 104 -> 105\n"))
      << ended.error;
  EXPECT_TRUE(ended.out.ends_with("12 ids changed in 2 pages\n")) << ended.out;
  EXPECT_EQ(place.read("fixed/x1.mus"), page(text("101", "102", "103")));
  EXPECT_EQ(place.read("fixed/x2.mus"), page(text("101", "102", "103")));
  EXPECT_EQ(place.read("x1.mus"), page(text("103", "101", "102")));
}

TEST_F(Renumber, ResultsAreInTheOrderOfTheTableThen) {
  EXPECT_EQ(fix({"-o", "fixed"}).status, 0);
  const Ended ended = place.kivsys({"convert", "fixed/x1.mus", "--force", "--dry-run"});
  EXPECT_NE(ended.out.find("real 101 102 103"), std::string::npos) << ended.out;
  EXPECT_EQ(place.kivsys({"instruments", "fixed/x1.mus"}).status, 0);
}

TEST_F(Renumber, InPlaceItCanBeUndone) {
  EXPECT_EQ(fix({"--in-place"}).status, 0);
  EXPECT_EQ(place.read("x2.mus"), page(text("101", "102", "103")));
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  EXPECT_EQ(place.read("x2.mus"), page(text("103", "101", "102")));
}

TEST_F(Renumber, ADryRunPrintsTheChangesOnly) {
  const Ended ended = fix({"--in-place", "--dry-run"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.out.find("  item 1: staff 3: 103 -> 101\n"), std::string::npos) << ended.out;
  EXPECT_NE(ended.out.find("  item 5: cue in staff 1: 103 -> 101\n"), std::string::npos) << ended.out;
  EXPECT_NE(ended.out.find("  item 7: number shown in staff 2: 101 -> 102\n"), std::string::npos) << ended.out;
  EXPECT_EQ(place.read("x1.mus"), page(text("103", "101", "102")));
}

TEST_F(Renumber, IdsThatRiseAlreadyStay) {
  place.write("l.csv", "id\n101\n102\n103\n");
  const Ended ended = fix({"-o", "fixed"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.error.starts_with("kivsys: note: new ids: none\n")) << ended.error;
  EXPECT_EQ(place.read("fixed/x1.mus"), place.read("x1.mus"));
}

TEST_F(Renumber, AnInstrumentThatIsNotListedRefusesTheRun) {
  place.write("l.csv", "id\n103\n101\n");
  const Ended ended = fix({"-o", "fixed"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_TRUE(ended.error.starts_with("kivsys: instrument 102 is not in " + (place.path() / "l.csv").string() +
                                      ": x1.mus staff 1, x2.mus staff 1\n"))
      << ended.error;
  EXPECT_FALSE(fs::exists(place.path() / "fixed"));
}

TEST_F(Renumber, IsTheOnlyChangeOfItsRun) {
  EXPECT_EQ(fix({"-o", "fixed", "--map", "101=5"}).status, 2);
  EXPECT_EQ(fix({"-o", "fixed", "--set", "x1.mus:1=5"}).status, 2);
  EXPECT_EQ(fix({"-o", "fixed", "--corrections", "c.csv"}).status, 2);
  EXPECT_FALSE(fs::exists(place.path() / "fixed"));
}

}  // namespace
}  // namespace kiv::test
