#include "analysis/page_checks.h"

#include <cstdint>
#include <optional>
#include <ostream>
#include <vector>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv {

void PrintTo(const PageProblems& problems, std::ostream* out) {
  *out << "ids " << problems.dupIdCount << " [" << problems.duplicateIds << "] staves " << problems.dupStaffCount
       << " [" << problems.duplicateStaves << "] recursive " << problems.recursiveCueCount << " zero "
       << problems.zeroIdCount << " undefined " << problems.undefinedCueCount << " [" << problems.undefinedCues << "]";
}

}  // namespace kiv

namespace kiv::test {
namespace {

const std::string file = "C:\\M\\X1.MUS";

class CheckPage : public ::testing::Test {
 protected:
  /// Checks a page whose staves carry their system numbers (p18) in the text.
  PageProblems check(std::string_view text, PageSystems systems = {1, 9}) {
    table = tableOf(host, text);
    return checkAgain(systems);
  }
  PageProblems checkAgain(PageSystems systems = {1, 9}) {
    PageProblems problems;
    end = endOf(host, [&] { problems = checkPage(table, TableRows(table), systems); });
    return problems;
  }

  FakeHost host;
  ItemTable table;
  std::optional<int> end;
};

TEST_F(CheckPage, SameIdentifierTwiceInASystemIsADuplicate) {
  const PageProblems problems = check(
      "staff 3 at 0 instrument 101 p18 1\nstaff 2 at 0 instrument 102 p18 1\nstaff 1 at 0 instrument 101 p18 1\n");
  EXPECT_EQ(problems.dupIdCount, 1);
  EXPECT_EQ(problems.duplicateIds, "101,");
}

TEST_F(CheckPage, SameIdentifierInTwoSystemsIsNone) {
  const PageProblems problems = check(
      "staff 4 at 0 instrument 101 p18 1\nstaff 3 at 0 instrument 102 p18 1\n"
      "staff 2 at 0 instrument 102 p18 2\nstaff 1 at 0 instrument 101 p18 2\n");
  EXPECT_EQ(problems, PageProblems{});
}

TEST_F(CheckPage, DuplicatesAreListedSystemBySystem) {
  const PageProblems problems = check(
      "staff 6 at 0 instrument 5 p18 2\nstaff 5 at 0 instrument 5 p18 2\n"
      "staff 4 at 0 instrument 7 p18 1\nstaff 3 at 0 instrument 7 p18 1\nstaff 2 at 0 instrument 7 p18 1\n");
  EXPECT_EQ(problems.dupIdCount, 3);
  EXPECT_EQ(problems.duplicateIds, "7,7,5,");
}

TEST_F(CheckPage, DuplicatesOfASystemAreListedInTheOrderOfTheTable) {
  const PageProblems problems = check(
      "staff 4 at 0 instrument 7 p18 1\nstaff 3 at 0 instrument 7 p18 1\n"
      "staff 2 at 0 instrument 5 p18 1\nstaff 1 at 0 instrument 5 p18 1\n");
  EXPECT_EQ(problems.duplicateIds, "7,5,");
}

TEST_F(CheckPage, UnusualIdentifiersOfOtherSystemsAreNoDuplicatesEither) {
  EXPECT_EQ(check("staff 4 at 0 instrument 2.5 p18 1\nstaff 3 at 0 instrument 5000 p18 1\n"
                  "staff 2 at 0 instrument 2.5 p18 2\nstaff 1 at 0 instrument 5000 p18 2\n"),
            PageProblems{});
}

TEST_F(CheckPage, ZeroIdentifiersAreCountedAndNeverDuplicates) {
  const PageProblems problems = check("staff 2 at 0 p18 1\nstaff 1 at 0 p18 1\n");
  EXPECT_EQ(problems.zeroIdCount, 2);
  EXPECT_EQ(problems.dupIdCount, 0);
}

TEST_F(CheckPage, ZeroIdentifiersOfNoWholeSystemHaveNoSystem) {
  const PageProblems problems =
      check("staff 4 at 0 p18 1\nstaff 3 at 0 p18 1.5\nstaff 2 at 0 p18 0x7FC00000\nstaff 1 at 0 p18 40000\n");
  std::vector<std::optional<std::int16_t>> systems;
  for (const Location& place : problems.zeroIdPlaces) {
    systems.push_back(place.system);
  }
  EXPECT_EQ(systems, (std::vector<std::optional<std::int16_t>>{1, std::nullopt, std::nullopt, std::nullopt}));
}

TEST_F(CheckPage, SameStaffNumberTwiceInASystemIsADuplicate) {
  const PageProblems problems =
      check("staff 2 at 0 instrument 1 p18 1\nstaff 2 at 9 instrument 2 p18 1\nstaff 2.5 at 9 instrument 3 p18 1\n");
  EXPECT_EQ(problems.dupStaffCount, 1);
  EXPECT_EQ(problems.duplicateStaves, "2,");
}

TEST_F(CheckPage, IdentifiersAreComparedByTheirTexts) {
  // Two neighbouring singles whose seven significant digits are the same.
  const PageProblems problems = check("staff 2 at 0 instrument 1.0000001 p18 1\nstaff 1 at 0 instrument 1 p18 1\n");
  EXPECT_EQ(problems.duplicateIds, "1,");
}

TEST_F(CheckPage, IdentifiersOfOneTextAreDuplicatesWhicheverComesFirstAndHoweverLarge) {
  const auto duplicates = [this](const std::string& first, const std::string& second) {
    return check("staff 2 at 0 instrument " + first + " p18 1\nstaff 1 at 0 instrument " + second + " p18 1\n")
        .duplicateIds;
  };
  EXPECT_EQ(duplicates("1", "1.0000001"), "1,");
  EXPECT_EQ(duplicates("1023", "1023"), "1023,");
  EXPECT_EQ(duplicates("1023", "1023.00006"), "1023,");
  EXPECT_EQ(duplicates("1023.00006", "1023"), "1023,");
  EXPECT_EQ(duplicates("1024", "1024"), "1024,");
  EXPECT_EQ(duplicates("1024", "1024.0001"), "1024,");
  EXPECT_EQ(duplicates("1023.99994", "1024"), "1024,");
  EXPECT_EQ(duplicates("-1", "-1"), "-1,");
  EXPECT_EQ(duplicates("2.5", "2.5"), "2.5,");
  EXPECT_EQ(duplicates("1e20", "1e20"), "1E+20,");
  EXPECT_EQ(duplicates("0x7FC00000", "0x7FC00000"), "NAN,");
  EXPECT_EQ(duplicates("2", "2.0001"), "");
  EXPECT_EQ(duplicates("3", "1027"), "");
  EXPECT_EQ(duplicates("1", "2"), "");
}

TEST_F(CheckPage, StavesOutsideTheSystemsOfThePageAreNotCompared) {
  const PageProblems problems = check(
      "staff 4 at 0 instrument 1 p18 3\nstaff 4 at 0 instrument 1 p18 3\n"
      "staff 3 at 0 instrument 1 p18 1.5\nstaff 3 at 0 instrument 1 p18 1.5\n"
      "staff 2 at 0 instrument 1 p18 0x7FC00000\nstaff 2 at 0 instrument 1 p18 0x7FC00000\n",
      {1, 2});
  EXPECT_EQ(problems, PageProblems{});
}

TEST_F(CheckPage, RecursiveCuesAreCountedForEveryStaffOfTheirInstrument) {
  const PageProblems problems = check(
      "staff 2 at 0 instrument 101 p18 1\nrest 2 at 5 kind -2 cue 101\nrest 2 at 9 kind -2 cue 101\n"
      "staff 1 at 0 instrument 101 p18 2\nrest 1 at 9 kind -2 cue 105\n");
  EXPECT_EQ(problems.recursiveCueCount, 4);
}

TEST_F(CheckPage, AsManyRecursiveCuesAs16BitsCountAreNoError) {
  std::string text;
  for (int staff = 1; staff <= 31; ++staff) {
    text += "staff 1 at 0 instrument 7 p18 1\n";
  }
  for (int cue = 1; cue <= 1057; ++cue) {
    text += "rest 1 at 0 kind -2 cue 7\n";
  }
  EXPECT_EQ(check(text).recursiveCueCount, 32767);
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(CheckPage, MoreRecursiveCuesThan16BitsCountIsARunTimeError) {
  std::string text;
  for (int i = 0; i < 200; ++i) {
    text += "staff 1 at 0 instrument 7 p18 1\nrest 1 at 0 kind -2 cue 7\n";
  }
  check(text);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\TABLE.MUS, item 327")});
}

TEST_F(CheckPage, InANewTableEveryCueIsUndefined) {
  const PageProblems problems = check(
      "staff 2 at 0 instrument 101 p18 1\nrest 2 at 5 kind -2 cue 102\n"
      "staff 1 at 0 instrument 102 p18 1\nrest 1 at 5 kind -2 cue 999\n");
  EXPECT_EQ(problems.undefinedCueCount, 2);
  EXPECT_EQ(problems.undefinedCues, "102 in staff 2, 999 in staff 1, ");
}

TEST_F(CheckPage, ACueOfNoNumberIsUndefinedEvenWhereAStaffHasNoneEither) {
  const PageProblems problems =
      check("staff 1 at 0 instrument 0x7FC00000 p18 1\nrest 1 at 5 kind -2 cue 0x7FC00000\nrest 1 at 6 kind -2\n");
  EXPECT_EQ(problems.undefinedCues, "NAN in staff 1, ");
  EXPECT_EQ(problems.recursiveCueCount, 0);
}

TEST_F(CheckPage, RowAfterTheLastItemNamesTheSystemThatDefinesCues) {
  table = tableOf(host,
                  "staff 2 at 0 instrument 101 p18 1\nstaff 1 at 0 instrument 102 p18 2\n"
                  "rest 1 at 5 kind -2 cue 101\nrest 1 at 5 kind -2 cue 102\n");
  table.itemPar(5, par::system) = 2;
  EXPECT_EQ(checkAgain().undefinedCues, "101 in staff 1, ");
  table.itemPar(5, par::system) = 1;
  EXPECT_EQ(checkAgain().undefinedCues, "102 in staff 1, ");
}

TEST_F(CheckPage, RowOfALongerPageReadBeforeIsStillThere) {
  host.addFile("C:\\LONG.MUS", page("staff 1 at 0\nstaff 2 at 0\nstaff 3 at 0 p18 6\n"));
  host.addFile("C:\\SHORT.MUS", page("staff 1 at 0 instrument 5 p18 6\nrest 1 at 5 kind -2 cue 5\n"));
  readFile(host, "C:\\LONG.MUS", table);
  readFile(host, "C:\\SHORT.MUS", table);
  EXPECT_EQ(checkAgain().undefinedCueCount, 0);
}

TEST_F(CheckPage, WithTheTableFullACueIsARunTimeError) {
  std::string text = "rest 1 at 5 kind -2 cue 5\n";
  for (int i = 0; i < 4999; ++i) {
    text += "barline 1 at 0\n";
  }
  check(text);
  EXPECT_EQ(end, 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Subscript out of range\r\nC:\\TABLE.MUS, item 1")});
}

TEST_F(CheckPage, WithTheTableFullAndNoCueThereIsNoError) {
  std::string text;
  for (int i = 0; i < 5000; ++i) {
    text += "barline 1 at 0\n";
  }
  check(text);
  EXPECT_EQ(end, std::nullopt);
}

class ShowProblems : public ::testing::Test {
 protected:
  std::vector<Message> shown(const PageProblems& problems, bool multifile, bool allowZeroInstrId = false) {
    host.messages.clear();
    showProblems(host, problems, {multifile, file}, allowZeroInstrId);
    return host.messages;
  }

  /// One problem or more of each kind.
  static PageProblems all() {
    PageProblems problems;
    problems.dupIdCount = 2;
    problems.dupStaffCount = 1;
    problems.recursiveCueCount = 3;
    problems.zeroIdCount = 1;
    problems.undefinedCueCount = 2;
    problems.duplicateIds = "101,104,";
    problems.duplicateStaves = "2,";
    problems.undefinedCues = "105 in staff 3, 106 in staff 1, ";
    return problems;
  }

  FakeHost host;
};

TEST_F(ShowProblems, TextsOfASingleFilePageInOrder) {
  EXPECT_EQ(shown(all(), false),
            (std::vector{
                information("Duplicate instrument Id in file: C:\\M\\X1.MUS\r\nInstrId(s): 101,104\r\n\r\n"
                            "Results are unpredictable."),
                information("Duplicate staff number in file: C:\\M\\X1.MUS\r\nStaff/staves: 2\r\n\r\n"
                            "Results are unpredictable."),
                information("Zero instrId(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable."),
                information("Recursive cue(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable."),
                information("Reference to undefined instrId(s) in same system in file: C:\\M\\X1.MUS\r\n\r\n"
                            "Cues found for undefined instrument(s): 105 in staff 3, 106 in staff 1\r\n"
                            "Results are unpredictable."),
            }));
}

TEST_F(ShowProblems, TextsOfAMultifilePageInOrder) {
  EXPECT_EQ(shown(all(), true),
            (std::vector{
                information("Duplicate instrument Id in multipage files. Top file is: C:\\M\\X1.MUS\r\n"
                            "InstrId(s): 101,104\r\n\r\nResults are unpredictable."),
                information("Duplicate staff number in multipage files. Top file is: C:\\M\\X1.MUS\r\n"
                            "Staff/staves(s): 2\r\n\r\nResults are unpredictable."),
                information(
                    "Zero instrId(s) in multipage files. Top file is: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable."),
                information("Recursive cue(s) in multipage files. Top file is: C:\\M\\X1.MUS\r\n\r\n"
                            "Results are unpredictable."),
                information("Reference to undefined instrId(s) in same system in multipage files. Top file is: "
                            "C:\\M\\X1.MUS\r\n\r\nResults are unpredictable."),
            }));
}

TEST_F(ShowProblems, AllowedZeroIdentifiersAreNotReported) {
  PageProblems zero;
  zero.zeroIdCount = 3;
  EXPECT_EQ(shown(zero, false, true), std::vector<Message>{});
  EXPECT_EQ(shown(zero, false, false).size(), 1U);
}

TEST_F(ShowProblems, NothingIsShownForAPageWithoutProblems) {
  EXPECT_EQ(shown({}, false), std::vector<Message>{});
}

}  // namespace
}  // namespace kiv::test
