#include <sys/stat.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// What users type who do not know the program yet.
class EverydayMistakes : public ConsoleConvert {
 protected:
  EverydayMistakes() { addTwo(); }

  void expectRefused(const Names& arguments, const std::string& expected) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2) << expected;
    EXPECT_TRUE(holds(ended.error, expected)) << ended.error;
  }
  static bool holds(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }
};

TEST_F(EverydayMistakes, AWholePageGoesThroughARecoveryToStandardOutput) {
  const Ended ended = place.kivsys({"recover", "x1.mus", "-o", "-"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, place.read("x1.mus"));
  EXPECT_TRUE(holds(ended.error, "x1.mus")) << ended.error;
  EXPECT_FALSE(holds(place.kivsys({"recover", "x1.mus"}).out, place.read("x1.mus"))) << "it is not asked for";
}

TEST_F(EverydayMistakes, APageThatMayNotBeWrittenIsNotFixedInPlace) {
  addPage("x3.mus", bass);
  fs::permissions(place.path() / "x2.mus", fs::perms::owner_read);
  const Ended ended = place.kivsysAsOwner({"fix", "x1.mus", "x2.mus", "x3.mus", "--map", "102=7", "--in-place"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: cannot write " + (place.path() / "x2.mus").string() + ": Permission denied\n");
  EXPECT_EQ(dumped("x1.mus"), asDumped(fluteAndBass));
  EXPECT_EQ(place.kivsysAsOwner({"fix", "x1.mus", "x2.mus", "--set", "x1.mus:1=7", "--in-place"}).status, 0)
      << "x2.mus does not change";
}

TEST_F(EverydayMistakes, AnOptionIsNotTakenForTheFileOfTheOptionBefore) {
  expectRefused({"survey", ".", "--html", "-q"}, "a name is missing before -q");
  expectRefused({"analyze", "--folder", "--json", "x1.mus"}, "a name is missing before --json");
  expectRefused({"convert", "x1.mus", "--result", "-q"}, "a name is missing before -q");
  EXPECT_EQ(place.kivsys({"chart", "x1.mus", "--out", "-"}).status, 0);
  EXPECT_FALSE(fs::exists(place.path() / "-q"));
  addPage("-x3.mus", bass);
  EXPECT_EQ(place.kivsys({"draw", "./-x3.mus", "--out", "./-x3.svg"}).status, 0);
}

TEST_F(EverydayMistakes, APictureOfAnotherFormatIsRefusedWithWhatToDo) {
  for (const std::string suffix : {"png", "PDF", "jpg"}) {
    expectRefused({"draw", "x1.mus", "-o", "p." + suffix},
                  "draw writes SVG; open it in a browser to print it or save it as PDF\n");
    expectRefused({"chart", "x1.mus", "-o", "p." + suffix}, "chart writes SVG; open it in a browser");
    expectRefused({"report", "x1.mus", "-o", "p." + suffix}, "report writes HTML; open it in a browser");
    EXPECT_FALSE(fs::exists(place.path() / ("p." + suffix)));
  }
}

TEST_F(EverydayMistakes, APageThatIsNamedTwiceIsSaidToCountTwice) {
  const std::string warning = "kivsys: warning: x1.mus is named more than once, and counts as a page each time\n";
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x1.mus", "x1.mus"});
  EXPECT_TRUE(ended.error.starts_with(warning)) << ended.error;
  EXPECT_EQ(ended.error.find(warning, 1), std::string::npos) << "it is said once";
  place.write("names.txt", "x1.mus\nx1.mus\n");
  EXPECT_TRUE(holds(place.kivsys({"analyze", "--names", "names.txt"}).error, warning));
  EXPECT_FALSE(holds(place.kivsys({"fix", "x1.mus", "x1.mus", "--map", "102=7", "-o", "f"}).error, "more than once"));
}

TEST_F(EverydayMistakes, AListOfPagesIsNotAPage) {
  place.write("n.txt", "x1.mus\nx2.mus\n");
  place.write("n1.txt", place.corePath("x1.mus") + " 1\r\n");
  for (const std::string list : {"n.txt", "n1.txt"}) {
    const Ended ended = place.kivsys({"analyze", list});
    EXPECT_EQ(ended.error,
              "kivsys: " + list + ": this is a list of pages, not a page\nNext: kivsys analyze --names " + list + "\n");
    EXPECT_EQ(place.kivsys({"analyze", "--names", list}).status, 0);
  }
}

TEST_F(EverydayMistakes, ProposalsAreChosenByConfidenceWhereTheyAreUsed) {
  expectRefused({"suggest", "--only", "sure", "x1.mus"},
                "suggest: --only chooses rows of --corrections; to use proposals of suggest by their confidence, write "
                "them with suggest -o FILE, and give fix or convert --corrections FILE --only sure\n");
}

TEST_F(EverydayMistakes, TheHelpHasTheExitStatuses) {
  const std::string help = place.kivsys({"--help"}).out;
  EXPECT_TRUE(holds(help, "\nExit status:\n  0        Done\n")) << help;
  EXPECT_TRUE(holds(help, "\n  128 + n  Signal n ended the run: 130 is Ctrl-C\n")) << help;
}

TEST_F(EverydayMistakes, AFolderOfNamesThatArePagesNoneSaysHowPagesAreNamed) {
  addPage("w/Gr\u00fc\u00dfe an A 001.mus", bass);
  addPage("w/Gr\u00fc\u00dfe an A 002.mus", bass);
  expectRefused({"analyze", "w"},
                "; names of pages are letters, digits, optionally one letter, and the suffix, as PIECE012B.MUS\n");
  EXPECT_TRUE(holds(place.kivsys({"analyze", "--help"}).out, "PIECE012B.MUS"));
}

TEST_F(EverydayMistakes, AGapInTheNumbersOfPagesIsNamed) {
  for (const std::string name : {"w/miss001.mus", "w/miss003A.mus", "w/miss003B.mus", "w/miss004.mus", "w/miss9.mus"}) {
    addPage(name, bass);
  }
  const std::string notes =
      "kivsys: note: no page 2 between miss001.mus and miss003A.mus\n"
      "kivsys: note: no pages 5 to 8 between miss004.mus and miss9.mus\n";
  EXPECT_TRUE(place.kivsys({"analyze", "w"}).error.starts_with(notes));
  EXPECT_TRUE(place.kivsys({"convert", "w", "-o", "out/"}).error.starts_with(notes));
  EXPECT_FALSE(holds(place.kivsys({"analyze", "--json", "w"}).error, "no page"));
  EXPECT_FALSE(holds(place.kivsys({"analyze", "x1.mus", "x2.mus"}).error, "no page"));
  Json survey = Json::parse(place.kivsys({"survey", "w", "--json"}).out);
  EXPECT_EQ(survey["pieces"][0]["missing_pages"][0], "no page 2 between miss001.mus and miss003A.mus");
  EXPECT_TRUE(holds(place.kivsys({"survey", "w"}).out, "no page 2 between miss001.mus and miss003A.mus"));
}

TEST_F(EverydayMistakes, AnUndoLeavesFilesThatHaveChangedSinceOnRequest) {
  ASSERT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "-o", "out/"}).status, 0);
  ASSERT_EQ(place.kivsys({"analyze", "x1.mus"}).status, 0);
  const std::string report = place.read("KivSystem2.TXT");
  const std::string changed = (place.path() / "KivSystem2.TXT").string() + ": has changed since, ";
  expectRefused({"undo"}, "kivsys: nothing is undone\nNext: kivsys undo --keep-changed\n");
  EXPECT_TRUE(holds(place.kivsys({"undo", "--keep-changed", "--dry-run"}).out, changed + "would stay as it is\n"));
  Json undone = Json::parse(place.kivsys({"undo", "--keep-changed", "--dry-run", "--json"}).out);
  EXPECT_EQ(undone["left"].size(), 2U) << undone;
  const Ended ended = place.kivsys({"undo", "--keep-changed"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(holds(ended.out, changed + "left as it is\n")) << ended.out;
  EXPECT_EQ(place.read("KivSystem2.TXT"), report);
  EXPECT_FALSE(fs::exists(place.path() / "out"));
  EXPECT_EQ(place.kivsys({"undo"}).status, 2) << "it is done";
}

TEST_F(EverydayMistakes, CommandsOfOtherProgramsLeadToThoseOfThisOne) {
  for (const auto& [typed, meant] :
       {std::pair("list", "survey"), std::pair("check", "analyze"), std::pair("info", "analyze"),
        std::pair("status", "analyze"), std::pair("rename", "fix")}) {
    expectRefused({typed}, std::string("unknown command: ") + typed + "; did you mean '" + meant + "'?\n");
  }
}

}  // namespace
}  // namespace kiv::test
