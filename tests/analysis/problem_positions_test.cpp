#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "analysis/page_checks.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Places = std::vector<Location>;

/// The places that the messages about a page count.
class ProblemPositions : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) { host.addFile("C:\\M\\" + file, page(text)); }

  /// Checks the page of one file, C:\M\X1.MUS.
  void check(std::string_view text) {
    addPage("X1.MUS", text);
    check(PageEntry{"X1.MUS", "", "C:\\M\\"});
  }
  /// Checks the page whose files C:\M\X1A.MUS and C:\M\X1B.MUS have these texts.
  void checkMultifile(std::string_view upper, std::string_view lower) {
    addPage("X1A.MUS", upper);
    addPage("X1B.MUS", lower);
    check(PageEntry{"X1.MUS", "AB", "C:\\M\\"});
  }

  /// Of the only message of this code.
  Places placesOf(std::string_view code) const {
    Places places;
    int count = 0;
    for (const kiv::Message& message : host.shown) {
      if (message.code == code) {
        places = message.places;
        ++count;
      }
    }
    EXPECT_EQ(count, 1) << code;
    return places;
  }

  static Location place(const std::string& file, int item, double instrument, std::int16_t system, int repeats = 1) {
    return {.file = "C:\\M\\" + file, .item = item, .instrument = instrument, .system = system, .repeats = repeats};
  }

  FakeHost host;
  std::int16_t systemBase = 0;

 private:
  void check(const PageEntry& entry) {
    ItemTable table;
    FirstClefTable firstClefs;
    const std::string topFile = PageReader(host, host, host).read(entry, "C:\\M\\", table, firstClefs);
    const TableRows rows(table);
    const PageSystems systems = numberSystems(table, rows.staves, systemBase);
    showProblems(host, checkPage(table, rows, systems), {entry.isMultifile(), topFile}, false);
  }
};

TEST_F(ProblemPositions, OfDuplicateInstrumentIdsAreTheLaterStaves) {
  check(
      "note 1 at 5\n"
      "staff 1 at 0 instrument 101\n"
      "staff 2 at 0 instrument 102\n"
      "staff 3 at 0 instrument 101\n"
      "barline 1 at 0 spans 3\n");
  EXPECT_EQ(placesOf("duplicate-instrument-id"), (Places{place("X1.MUS", 2, 101, 1)}))
      << "from the top of the page, staff 1 is the second of 101";
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = "C:\\M\\X1.MUS"}));
}

TEST_F(ProblemPositions, AreListedSystemBySystemWithTheirNumbersInTheGroup) {
  systemBase = 6;
  check(
      "staff 1 at 0 instrument 5\nstaff 2 at 0 instrument 5\n"
      "staff 3 at 0 instrument 7\nstaff 4 at 0 instrument 7\n"
      "barline 1 at 0 spans 2\nbarline 3 at 0 spans 2\n");
  EXPECT_EQ(placesOf("duplicate-instrument-id"), (Places{place("X1.MUS", 3, 7, 7), place("X1.MUS", 1, 5, 8)}));
}

TEST_F(ProblemPositions, OfDuplicateStaffNumbersAreTheLaterStaves) {
  check(
      "staff 2 at 9 instrument 103\n"
      "staff 1 at 0 instrument 101\n"
      "staff 2 at 0 instrument 102\n"
      "barline 1 at 0 spans 2\n");
  EXPECT_EQ(placesOf("duplicate-staff-number"), (Places{place("X1.MUS", 1, 103, 1)}));
}

TEST_F(ProblemPositions, OfZeroInstrumentIdsAreAllSuchStaves) {
  check("staff 1 at 0\nstaff 2 at 0 instrument 102\nstaff 3 at 0\nbarline 1 at 0 spans 3\n");
  EXPECT_EQ(placesOf("zero-instrument-id"), (Places{place("X1.MUS", 3, 0, 1), place("X1.MUS", 1, 0, 1)}));
}

TEST_F(ProblemPositions, OfAStaffInNoWholeSystemHaveNoSystem) {
  // A staff below the first bottom staff keeps the system number of its file.
  check("staff 1 at 0 instrument 7\nbarline 1 at 0 spans 1\nstaff 0 at 0 p18 0.5\n");
  EXPECT_EQ(placesOf("zero-instrument-id"), (Places{{.file = "C:\\M\\X1.MUS", .item = 3, .instrument = 0}}));
}

TEST_F(ProblemPositions, OfRecursiveCuesCountEveryStaffOfTheirInstrument) {
  check(
      "staff 1 at 0 instrument 101\n"
      "rest 1 at 5 kind -2 cue 102\n"
      "staff 2 at 0 instrument 101\n"
      "rest 2 at 9 kind -2 cue 101\n"
      "rest 2 at 5 kind -2 cue 105\n"
      "staff 3 at 0 instrument 102\n");
  EXPECT_EQ(placesOf("recursive-cue"), (Places{place("X1.MUS", 2, 102, 3), place("X1.MUS", 4, 101, 2, 2)}))
      << "in the order of the file; 101 is the instrument of two staves";
}

TEST_F(ProblemPositions, OfUndefinedCuesAreTheCueMarkers) {
  check(
      "staff 1 at 0 instrument 101\n"
      "rest 1 at 9 kind -2 cue 105\n"
      "note 1 at 5\n"
      "rest 1 at 5 kind -2 cue 106\n"
      "staff 2 at 0 instrument 102\n"
      "barline 1 at 0 spans 2\n");
  EXPECT_EQ(placesOf("undefined-cue"), (Places{place("X1.MUS", 2, 105, 1), place("X1.MUS", 4, 106, 1)}));
}

TEST_F(ProblemPositions, OfACueWithoutAStaffHaveNoSystem) {
  check("staff 1 at 0 instrument 101\nrest 2 at 5 kind -2 cue 105\n");
  EXPECT_EQ(placesOf("undefined-cue"), (Places{{.file = "C:\\M\\X1.MUS", .item = 2, .instrument = 105}}));
}

// --- several files ---

TEST_F(ProblemPositions, OfAMultifilePageNameTheFileOfEach) {
  checkMultifile("note 1 at 5\nstaff 1 at 0 instrument 101\nstaff 2 at 0\n",
                 "staff 1 at 0 instrument 101\nnote 1 at 5\nstaff 2 at 0\nbarline 1 at 0 spans 2\n");
  EXPECT_EQ(placesOf("duplicate-instrument-id"), (Places{place("X1B.MUS", 1, 101, 1)}));
  EXPECT_EQ(placesOf("zero-instrument-id"), (Places{place("X1A.MUS", 3, 0, 1), place("X1B.MUS", 3, 0, 1)}));
  for (const kiv::Message& message : host.shown) {
    EXPECT_EQ(message.location, Location{}) << "the message is about no single file";
  }
}

TEST_F(ProblemPositions, OfCuesOfAMultifilePageFollowTheFilesFromTheBottom) {
  checkMultifile("staff 1 at 0 instrument 101\nrest 1 at 5 kind -2 cue 102\n",
                 "note 1 at 1\nstaff 1 at 0 instrument 102\nrest 1 at 9 kind -2 cue 101\nrest 1 at 5 kind -2 cue 101\n"
                 "barline 1 at 0 spans 1\n");
  EXPECT_EQ(placesOf("recursive-cue"),
            (Places{place("X1B.MUS", 3, 101, 1), place("X1B.MUS", 4, 101, 1), place("X1A.MUS", 2, 102, 1)}));
  EXPECT_EQ(placesOf("undefined-cue").size(), 3U);
}

TEST_F(ProblemPositions, OfDuplicateStavesOfTheLowerFileNameThatFile) {
  checkMultifile("staff 1 at 0 instrument 101\n",
                 "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n"
                 "staff 2 at 9 instrument 103\nstaff 2 at 0 instrument 104\n");
  EXPECT_EQ(placesOf("duplicate-staff-number"), (Places{place("X1B.MUS", 3, 103, 1)}));
}

}  // namespace
}  // namespace kiv::test
