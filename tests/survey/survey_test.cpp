#include "survey/survey.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv {

void PrintTo(const Piece& piece, std::ostream* out) {
  *out << piece.prefix << ":";
  for (const std::string& file : piece.files) {
    *out << " " << file;
  }
}

bool operator==(const Piece& a, const Piece& b) {
  return a.prefix == b.prefix && a.files == b.files;
}

namespace test {
namespace {

using Pieces = std::vector<Piece>;

TEST(PiecesOf, PagesThatDifferInNumberAndLetterAreAPiece) {
  FakeHost host;
  EXPECT_EQ(piecesOf(host, {"B2.MUS", "A1.MUS", "B1A.MUS", "B1B.MUS"}),
            (Pieces{{"A", {"A1.MUS"}}, {"B", {"B1A.MUS", "B1B.MUS", "B2.MUS"}}}));
}

TEST(PiecesOf, PagesAreSortedByTheValueOfTheirNumbers) {
  FakeHost host;
  EXPECT_EQ(piecesOf(host, {"a10.mus", "A9.MUS", "A011.MUS", "A0.MUS"}),
            (Pieces{{"A", {"A0.MUS", "A9.MUS", "a10.mus", "A011.MUS"}}}));
}

TEST(PiecesOf, OtherFilesAreIgnored) {
  FakeHost host;
  EXPECT_EQ(piecesOf(host, {"A1.PAG", "notes.txt", "MUS", "A1.MUS.bak"}), Pieces{});
}

TEST(PiecesOf, AnotherSuffixIsAnotherPiece) {
  FakeHost host;
  EXPECT_EQ(piecesOf(host, {"A1.OLD.MUS", "A1.MUS"}), (Pieces{{"A", {"A1.MUS"}}, {"A", {"A1.OLD.MUS"}}}));
}

TEST(PiecesOf, AFileOutsideTheConventionIsAPieceOfItsOwn) {
  FakeHost host;
  EXPECT_EQ(piecesOf(host, {"README.MUS", "A1XY.MUS", "A B1.MUS"}),
            (Pieces{{"A B1.MUS", {"A B1.MUS"}}, {"A1XY.MUS", {"A1XY.MUS"}}, {"README.MUS", {"README.MUS"}}}));
}

class SurveyPiece : public ::testing::Test {
 protected:
  FakeHost host;
  const std::string solo = page("staff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 1\n");
  const std::string duo =
      page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
};

TEST_F(SurveyPiece, HasTheResultsOfAnAnalysis) {
  host.addFile("C:\\M\\A1.MUS", solo);
  host.addFile("C:\\M\\A2.MUS", duo);
  EXPECT_EQ(surveyPiece(host, host, {"C:\\M\\A1.MUS", "C:\\M\\A2.MUS"}),
            (PieceFindings{2, 2, 2, 2, false, false, {}, {}, {}, {"11", "01"}}));
}

TEST_F(SurveyPiece, PagesAreCountedNotFiles) {
  host.addFile("C:\\M\\A1A.MUS", solo);
  host.addFile("C:\\M\\A1B.MUS", solo);
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1A.MUS", "C:\\M\\A1B.MUS"});
  EXPECT_EQ(findings.files, 2U);
  EXPECT_EQ(findings.pages, 1U);
  EXPECT_EQ(findings.multifile, true);
  EXPECT_EQ(findings.problems.size(), 1U);  // one instrument on two staves
}

TEST_F(SurveyPiece, HasTheNamesOfItsInstruments) {
  host.addFile("C:\\M\\A1.MUS", page("staff 2 at 10 instrument 8\ntext 2 at 2 \"Fl.\"\nstaff 1 at 10 instrument 7\n"
                                     "barline 1 at 10 spans 2\n"));
  host.addFile("C:\\M\\A2.MUS", page("staff 1 at 10 instrument 8\ntext 1 at 2 \"Flute\"\nbarline 1 at 10 spans 1\n"));
  EXPECT_EQ(surveyPiece(host, host, {"C:\\M\\A1.MUS", "C:\\M\\A2.MUS"}).names, (InstrumentNames{{8, "Flute"}}));
}

TEST_F(SurveyPiece, WhatEndsTheAnalysisIsAProblem) {
  host.addFile("C:\\M\\A1.MUS", "x");
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1.MUS"});
  EXPECT_EQ(findings.pages, 1U);
  EXPECT_EQ(findings.systems, std::nullopt);
  EXPECT_EQ(findings.consistent, std::nullopt);
  ASSERT_EQ(findings.problems.size(), 1U);
  EXPECT_TRUE(findings.problems[0].starts_with("Structural error in MUS file: C:\\M\\A1.MUS"));
}

TEST_F(SurveyPiece, PagesOfAnAnalysisThatEndsEarlyAreCountedInTheSameWay) {
  host.addFile("C:\\M\\A1A.MUS", solo);
  host.addFile("C:\\M\\A1B.MUS", "x");
  host.addFile("C:\\M\\A2.MUS", solo);
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1A.MUS", "C:\\M\\A1B.MUS", "C:\\M\\A2.MUS"});
  EXPECT_EQ(findings.systems, std::nullopt);
  EXPECT_EQ(findings.files, 3U);
  EXPECT_EQ(findings.pages, 2U);
}

TEST_F(SurveyPiece, ThePageThatEndsTheAnalysisIsNamed) {
  host.addFile("C:\\M\\A1.MUS", solo);
  host.addFile("C:\\M\\A2.MUS", "x");
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1.MUS", "C:\\M\\A2.MUS"});
  ASSERT_EQ(findings.badPages.size(), 1U);
  EXPECT_EQ(findings.badPages[0],
            (BadPage{{"A2.MUS"}, findings.problems.at(0), "A2.MUS (Structural error in MUS file)"}));
}

TEST_F(SurveyPiece, BadPagesAreSkippedWhereThatIsWanted) {
  host.addFile("C:\\M\\A1.MUS", "x");
  host.addFile("C:\\M\\A2.MUS", duo);
  host.addFile("C:\\M\\A3A.MUS", "x");
  host.addFile("C:\\M\\A3B.MUS", solo);
  const std::vector<std::string> pages = {"C:\\M\\A1.MUS", "C:\\M\\A2.MUS", "C:\\M\\A3A.MUS", "C:\\M\\A3B.MUS"};
  const PieceFindings findings = surveyPiece(host, host, pages, BadPages::skipped);
  EXPECT_EQ(findings.systems, 1U);
  EXPECT_EQ(findings.instruments, 2U);
  EXPECT_EQ(findings.files, 4U);
  EXPECT_EQ(findings.pages, 3U);
  ASSERT_EQ(findings.badPages.size(), 2U);
  EXPECT_EQ(findings.badPages[0].files, std::vector<std::string>{"A1.MUS"});
  EXPECT_EQ(findings.badPages[1].files, (std::vector<std::string>{"A3B.MUS", "A3A.MUS"}));
  EXPECT_EQ(findings.problems.size(), 2U) << "a reason for each";
}

TEST_F(SurveyPiece, OfBadPagesAloneNothingIsKnown) {
  host.addFile("C:\\M\\A1.MUS", "x");
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1.MUS"}, BadPages::skipped);
  EXPECT_EQ(findings.systems, std::nullopt);
  EXPECT_EQ(findings.pages, 1U);
  EXPECT_EQ(findings.badPages.size(), 1U);
}

TEST_F(SurveyPiece, ChangesNothingOnTheDisk) {
  host.addFile("C:\\M\\A1.MUS", solo);
  host.addFile("KivSystem2.TXT", "old");
  surveyPiece(host, host, {"C:\\M\\A1.MUS"});
  EXPECT_EQ(host.file("KivSystem2.TXT"), "old");
  EXPECT_FALSE(host.hasFile("KivSystem1.TXT"));
  EXPECT_TRUE(host.messages.empty());
  EXPECT_TRUE(host.calls.empty());
}

TEST_F(SurveyPiece, NamesThatDifferInCaseOnlyAreAProblem) {
  host.addFile("C:\\M\\A1.MUS", solo);
  const PieceFindings findings = surveyPiece(host, host, {"C:\\M\\A1.MUS", "C:\\M\\a1.mus"});
  EXPECT_EQ(findings.systems, std::nullopt);
  EXPECT_EQ(findings.problems,
            std::vector<std::string>{"A1.MUS and a1.mus differ in case only, and cannot be in one group"});
}

TEST_F(SurveyPiece, ANameThatCannotBeListedIsAProblem) {
  EXPECT_EQ(surveyPiece(host, host, {"C:\\M\\A\n1.MUS"}).problems.size(), 1U);
}

TEST(SmallMap, HasARowForEachInstrumentAndACharacterForEachSystem) {
  EXPECT_EQ(smallMap({{101, 103}, {102, 101}, {103}}), (SmallMap{"110", "010", "101"}));
  EXPECT_EQ(smallMap({}), SmallMap{});
}

TEST(SmallMap, PutsSeveralIntoOneWhereThereAreMany) {
  std::vector<std::vector<std::int16_t>> ids(2 * mostMapColumns);
  for (std::size_t s = 0; s < ids.size(); ++s) {
    for (std::int16_t id = 1; id <= 2 * static_cast<std::int16_t>(mostMapRows); ++id) {
      const bool isFirst = id <= 2;
      if (!isFirst || s % 2 == 0) {
        ids[s].push_back(id);
      }
    }
  }
  const SmallMap map = smallMap(ids);
  ASSERT_EQ(map.size(), mostMapRows);
  EXPECT_EQ(map[0], std::string(mostMapColumns, '2'));
  EXPECT_EQ(map[1], std::string(mostMapColumns, '1'));
}

}  // namespace
}  // namespace test
}  // namespace kiv
