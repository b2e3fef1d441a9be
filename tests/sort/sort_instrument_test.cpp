#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "mus/reader.h"
#include "sort/sort_on_instrument.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string sortProblem = "Sort problem";
const std::string barlineProblem = "System barline problem.";

class SortInstrument : public ::testing::Test {
 protected:
  void addPage(const std::string& file, std::string_view text) {
    host.addFile("C:\\M\\" + file, page(text));
    list(file);
  }
  void list(const std::string& file) {
    ((namesFile += "C:\\M\\") += file) += " 1\r\n";
    host.addFile("C:\\N.TXT", namesFile);
  }
  void click() {
    end = endOf(host, [&] { lastResult = cmdSortInstrument_Click(host, "C:\\N.TXT", names, table); });
  }
  /// The items of a page in C:\M.
  std::string itemsOf(const std::string& file) {
    FakeHost reading;
    reading.addFile("C:\\P", host.file("C:\\M\\" + file));
    ItemTable items;
    EXPECT_EQ(endOf(reading, [&] { readFile(reading, "C:\\P", items); }), std::nullopt) << file;
    return asText(items);
  }
  /// The program ended over a critical box, the pointer still being the hourglass.
  void expectEnd(const std::string& text) {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
    EXPECT_EQ(host.calls, std::vector<std::string>{"pointer hourglass"});
  }

  FakeHost host;
  NamesTable names;
  ItemTable table;
  std::string lastResult;
  std::string namesFile;
  std::optional<int> end;

  const std::string unsortedPage =
      "staff 1 at 0 instrument 1\nstaff 2 at 0 instrument 2\nbarline 1 at 9 spans 2\nnote 2 at 5\n";
  const std::string sortedPage =
      "staff 1 at 0 instrument 2\nnote 1 at 5\nbarline 1 at 9 spans 2\nstaff 2 at 0 instrument 1\n";
  const std::string brokenPage = "Structural error in MUS file. Try to recover with KivValid/KivRecover.";
};

TEST_F(SortInstrument, WritesEverySelectedPageSortedBesideIt) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", "staff 1 at 0 p4 6 instrument 7\nbarline 1 at 5 spans 1\ncountedtext 1 at 2 \"dolce\"\n");
  click();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
  EXPECT_EQ(itemsOf("X2.PAG"),
            "staff 1 at 0 instrument 7\ncountedtext 1 at 2 characters 5 \"dolce\"\nbarline 1 at 5 spans 1\n");
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
}

TEST_F(SortInstrument, LeavesTheInputsAsTheyAre) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage + "note 1 at 7\n");
  click();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.file("C:\\M\\X1.MUS"), page(unsortedPage));
  EXPECT_EQ(host.file("C:\\M\\X2.MUS"), page(unsortedPage + "note 1 at 7\n"));
  EXPECT_EQ(host.file("C:\\N.TXT"), namesFile);
}

TEST_F(SortInstrument, ReplacesAnOldResult) {
  host.addFile("C:\\M\\X1.PAG", "an old result that is longer than the new one" + std::string(500, '!'));
  addPage("X1.MUS", unsortedPage);
  click();
  EXPECT_TRUE(host.file("C:\\M\\X1.PAG") == page(sortedPage)) << itemsOf("X1.PAG");
}

TEST_F(SortInstrument, ReplacesTheLastThreeCharactersByPag) {
  addPage("SONG12A.XY", unsortedPage);
  addPage("SONG.MUSIC", unsortedPage);
  click();
  EXPECT_EQ(itemsOf("SONG12APAG"), sortedPage) << "the period counts like any other";
  EXPECT_EQ(itemsOf("SONG.MUPAG"), sortedPage);
}

TEST_F(SortInstrument, ReturnsTheNameOfTheLastResult) {
  addPage("X1.MUS", unsortedPage);
  addPage("x2.mus", unsortedPage);
  click();
  EXPECT_EQ(lastResult, "C:\\M\\X2.PAG");
}

TEST_F(SortInstrument, ShowsTheHourglassUntilItIsFinished) {
  addPage("X1.MUS", unsortedPage);
  bool asked = false;
  host.whileShown = [&](const Message&) {
    asked = true;
    EXPECT_EQ(host.calls, (std::vector<std::string>{"pointer hourglass", "pointer normal"}));
    EXPECT_TRUE(host.hasFile("C:\\M\\X1.PAG"));
  };
  click();
  EXPECT_TRUE(asked);
}

TEST_F(SortInstrument, ShowsTheHourglassWhileTheSelectionIsLoaded) {
  addPage("X1.MUS", unsortedPage);
  host.addFile("C:\\N.TXT", "C:\\M\\X1.MUS\r\n" + namesFile);
  std::vector<std::string> callsAtFirst;
  host.whileShown = [&](const Message&) {
    if (host.messages.size() == 1) {
      callsAtFirst = host.calls;
    }
  };
  click();
  EXPECT_EQ(callsAtFirst, std::vector<std::string>{"pointer hourglass"});
  EXPECT_EQ(host.messages,
            (std::vector{information("Filename [C:\\M\\X1.MUS] in Names file not terminated by ' 1'. Hit enter to "
                                     "continue."),
                         information("Sort finished")}));
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
}

TEST_F(SortInstrument, ShowsItsProgress) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage);
  click();
  EXPECT_EQ(host.progress, (std::vector<std::string>{"0/2 pages", "1/2 pages", "2/2 pages"}));
}

TEST_F(SortInstrument, LoadsTheSelectionAgain) {
  addPage("X1.MUS", unsortedPage);
  names.nameList = {"C:\\M\\OTHER.MUS", "C:\\M\\OTHER.MUS"};
  names.nameCount = 2;
  click();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(names.nameList, std::vector<std::string>{"C:\\M\\X1.MUS"});
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
}

TEST_F(SortInstrument, OfAnEmptySelectionJustFinishes) {
  click();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages, std::vector{information("Sort finished")});
  EXPECT_EQ(host.calls, (std::vector<std::string>{"pointer hourglass", "pointer normal"}));
  EXPECT_EQ(lastResult, "");
}

TEST_F(SortInstrument, OfASelectionThatIsRefusedJustFinishes) {
  addPage("X1.MUS", unsortedPage);
  list("GONE.MUS");
  click();
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(host.messages.size(), 2U);
  EXPECT_EQ(host.messages.back(), information("Sort finished"));
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverABrokenPageAndKeepsEarlierResults) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", unsortedPage + "words 5000\n");
  addPage("X3.MUS", unsortedPage);
  host.addFile("C:\\M\\X2.PAG", "an old result");
  click();
  expectEnd(brokenPage);
  EXPECT_EQ(itemsOf("X1.PAG"), sortedPage);
  EXPECT_EQ(host.file("C:\\M\\X2.PAG"), "an old result");
  EXPECT_FALSE(host.hasFile("C:\\M\\X3.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageThatCannotBeSorted) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nbarline 1 at 9 spans 1\nnote 2 at 5\n");
  click();
  expectEnd(sortProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageWithoutASystemBarline) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nbarline 1 at 9 spans 2\n");
  click();
  expectEnd(barlineProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X1.PAG"));
}

TEST_F(SortInstrument, EndsTheProgramOverAPageWithoutItems) {
  addPage("X1.MUS", unsortedPage);
  addPage("X2.MUS", "");
  click();
  expectEnd(barlineProblem);
  EXPECT_FALSE(host.hasFile("C:\\M\\X2.PAG"));
}

TEST_F(SortInstrument, NamesTheInputOverAStaffNumberBeyondSixteenBits) {
  addPage("X1.MUS", "staff 1 at 0 instrument 1\nnote 40000 at 5\n");
  click();
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 2");
}

TEST_F(SortInstrument, EndsTheProgramOverAResultThatCannotBeWritten) {
  addPage("X1.MUS", unsortedPage);
  host.unwritable = {"C:\\M\\X1.PAG"};
  click();
  expectEnd("Open of output MUS file failed. Hit OK to terminate.");
}

TEST_F(SortInstrument, WritesTheFirstThirtyTwoOfTheStavesThatInterleavedOnesAreSplitInto) {
  std::string split = "staff 1 at 0 instrument 5\nstaff 2 at 0 instrument 5\nbarline 2 at 99 spans 2\n";
  std::string expected = "staff 1 at 0 instrument 5\nbarline 1 at 99 spans 2\nstaff 2 at 0 instrument 5\n";
  for (int n = 1; n <= 20; ++n) {
    for (const int staff : {1, 2}) {
      const std::string position = std::to_string(2 * n + staff);
      split += "note " + std::to_string(staff) + " at " + position + "\n";
      const int newStaff = 2 * n + staff;
      expected += newStaff <= 32 ? "note " + std::to_string(newStaff) + " at " + position + "\n" : "";
    }
  }
  addPage("X1.MUS", split);
  click();
  EXPECT_EQ(itemsOf("X1.PAG"), expected);
}

TEST_F(SortInstrument, NameTooShortForASuffixEndsTheProgram) {
  FakeHost disk;
  disk.addFile("\\A", page(unsortedPage));
  disk.addFile("C:\\N.TXT", "\\A 1\r\n");
  EXPECT_EQ(endOf(disk, [&] { cmdSortInstrument_Click(disk, "C:\\N.TXT", names, table); }), 1);
  EXPECT_EQ(disk.messages, std::vector{critical("Run-time error: Invalid procedure call or argument\r\n\\A")});
}

}  // namespace
}  // namespace kiv::test
