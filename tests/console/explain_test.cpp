#include <algorithm>

#include <gtest/gtest.h>

#include "tests/console/example_pages.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// What analyze prints after the counts.
class Explain : public ::testing::Test {
 protected:
  void addStaves(const std::vector<int>& instruments) {
    std::string text;
    for (std::size_t i = 0; i < instruments.size(); ++i) {
      text += "staff " + std::to_string(instruments.size() - i) + " at 0 instrument " + std::to_string(instruments[i]) +
              "\n";
    }
    addPage(text + "barline 1 at 0 spans " + std::to_string(instruments.size()) + "\n");
  }
  void addPage(const std::string& text) {
    pages.push_back("X" + std::to_string(pages.size() + 1) + ".MUS");
    place.write(pages.back(), page(text));
  }
  std::string explained() {
    std::vector<std::string> arguments = {"analyze"};
    arguments.insert(arguments.end(), pages.begin(), pages.end());
    std::string out = place.kivsys(arguments).out;
    if (out.ends_with(".\n")) {  // the sentence that says whether the pages can be used
      out.resize(out.rfind('\n', out.size() - 2) + 1);
    }
    return out.substr(std::min(out.find("Layouts: "), out.size()));
  }

  Workplace place;
  std::vector<std::string> pages;
};

TEST_F(Explain, TheExampleAsTheReferenceShowsIt) {
  std::vector<std::string> arguments = buildExample(place);
  arguments.insert(arguments.begin(), "analyze");
  const Ended ended = place.kivsys(arguments);
  EXPECT_EQ(ended.out, shownAfter("cli.md", "kivsys analyze SYMPH*.MUS"));
  EXPECT_TRUE(ended.error.starts_with("Next: kivsys convert ")) << ended.error;
}

TEST_F(Explain, AConsistentPieceInOneLine) {
  addStaves({101, 102, 110});
  EXPECT_EQ(explained(), "Layouts: all alike in 1 system: 101, 102, 110\n");
  addStaves({101, 102, 110});
  EXPECT_EQ(explained(), "Layouts: all alike in 2 systems: 101, 102, 110\n");
}

TEST_F(Explain, InstrumentsThatRunDownAreOneWordToo) {
  addStaves({105, 104, 103, 104, 105, 107, 106});
  EXPECT_EQ(explained(), "Layouts: all alike in 1 system: 105 to 103, 104, 105, 107, 106\n");
}

TEST_F(Explain, PagesWithoutSystems) {
  addPage("note 1 at 0\n");
  EXPECT_EQ(explained(), "Layouts: no systems\n");
}

TEST_F(Explain, EveryKindOfDifferenceInWords) {
  addStaves({101, 102, 103, 105, 108});
  addStaves({101, 102, 103, 105, 108});
  addStaves({103, 101, 102, 105, 105, 106});
  EXPECT_EQ(
      explained(),
      "Layouts: 2 in 3 systems\n"
      "  A: systems 1, 2 (X1.MUS, X2.MUS)\n"
      "     101 to 103, 105, 108\n"
      "  B: system 3 (X3.MUS)\n"
      "     A without 108, with 106, with 105 twice, with 103 moved\n"
      "     in system 3: 103 in X3.MUS staff 6 item 1, 105 in X3.MUS staff 2 item 5, 106 in X3.MUS staff 1 item 6\n");
}

TEST_F(Explain, RunsOfSystemsAndPagesAreOneWord) {
  for (int i = 0; i < 12; ++i) {
    addStaves({101});
  }
  addStaves({102});
  addStaves({101});
  EXPECT_EQ(explained(),
            "Layouts: 2 in 14 systems\n"
            "  A: systems 1 to 12, 14 (X1.MUS to X12.MUS, X14.MUS)\n"
            "     101\n"
            "  B: system 13 (X13.MUS)\n"
            "     A without 101, with 102\n"
            "     in system 13: 102 in X13.MUS staff 1 item 1\n");
}

TEST_F(Explain, NamesThatThePagesGive) {
  addStaves({102});
  addPage(
      "staff 2 at 9 instrument 101\ntext 2 at 1 \"Flute 2\"\nstaff 1 at 9 instrument 102\nbarline 1 at 9 spans 2\n");
  addStaves({102});
  const std::string text = explained();
  EXPECT_NE(text.find("     A with 101 (Flute 2)\n"), std::string::npos) << text;
}

TEST_F(Explain, ManyLayoutsStayOnOneScreen) {
  for (int i = 0; i < 300; ++i) {
    addStaves(i % 2 == 0 ? std::vector<int>{1, 2, 3} : std::vector<int>{1, 500 + i, 3});
  }
  const std::string text = explained();
  EXPECT_LE(std::count(text.begin(), text.end(), '\n'), 40) << text;
  EXPECT_NE(text.find("systems 1, 3, 5, 7, 9, 11, 13, 15 and 142 more"), std::string::npos) << text;
  EXPECT_TRUE(text.ends_with("  and 141 more layouts in 141 systems; --json lists all\n")) << text;
}

TEST_F(Explain, NothingOfARunThatFails) {
  addStaves({101});
  addPage("words 99\n");
  EXPECT_EQ(explained(), "");
}

TEST_F(Explain, ColorsNothing) {
  addStaves({101});
  addStaves({102});
  EXPECT_EQ(explained().find('\x1B'), std::string::npos);
}

}  // namespace
}  // namespace kiv::test
