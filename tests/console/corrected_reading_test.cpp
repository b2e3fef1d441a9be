#include <algorithm>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Two pages of a flute over a bass, and one of the bass alone, whose ids are wrong on the second page.
class CorrectedReading : public ConsoleConvert {
 protected:
  void SetUp() override {
    addPage("x1.mus", fluteAndBass);
    addPage("x2.mus", withoutIds);
    addPage("x3.mus", bass);
    place.write("c.csv", head + "X2.MUS,2,1,2,staff,zero,0,102,sure,\nX2.MUS,2,2,1,staff,rare,9,101,likely,\n");
    fs::create_directory(place.path() / "out");
  }
  Ended run(const std::string& command, Names options) const {
    options.insert(options.begin(), {command, "x1.mus", "x2.mus", "x3.mus", "--corrections", "c.csv"});
    return place.kivsys(options);
  }
  Ended convert(Names options = {}) const {
    options.insert(options.begin(), {"--result", "out/WORK0001.MUS", "--no-instr-number"});
    return run("convert", options);
  }
  void expectPagesUnchanged() const {
    EXPECT_EQ(place.read("x1.mus"), page(fluteAndBass));
    EXPECT_EQ(place.read("x2.mus"), page(withoutIds));
  }
  void expectNothingWritten() const {
    EXPECT_EQ(filesIn(place.path()), (Names{"c.csv", "out", "x1.mus", "x2.mus", "x3.mus"}));
    EXPECT_EQ(filesIn(place.path() / "out"), Names{});
  }

  const std::string head = "file,system,staff,item,what,problem,old_id,new_id,confidence,reason\n";
  const std::string withoutIds = "staff 2 at 0 instrument 9\nstaff 1 at 0\nbarline 1 at 0 spans 2\n";
  const std::string note = "kivsys: note: 2 ids in 1 page corrected on reading; no page is changed\n";
};

TEST_F(CorrectedReading, AConversionIsThatOfCorrectedPages) {
  const Ended ended = convert();
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.error.starts_with(note)) << ended.error;
  EXPECT_TRUE(ended.out.starts_with("CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 3\nSystems: 3\nInstruments: 2\n"));
  EXPECT_EQ(dumped("out/WORK0002.MUS"), asDumped(plainFluteAndBass));
  EXPECT_EQ(dumped("out/WORK0003.MUS"), asDumped(plainBass));
  expectPagesUnchanged();
}

TEST_F(CorrectedReading, RowsThatAreLeftOutAreCounted) {
  place.write("c.csv", place.read("c.csv") + "X1.MUS,1,1,2,staff,zero,,,,\nX1.MUS,1,1,2,staff,zero,,77,guess,\n");
  const Ended ended = run("analyze", {"--only", "likely"});
  EXPECT_TRUE(ended.error.starts_with(
      "kivsys: note: 2 ids in 1 page corrected on reading, 2 rows left out; no page is changed\n"))
      << ended.error;
}

TEST_F(CorrectedReading, AnAnalysisIsThatOfCorrectedPages) {
  EXPECT_NE(place.kivsys({"analyze", "x1.mus", "x2.mus", "x3.mus"}).error.find("Zero instrId"), std::string::npos);
  const Ended ended = run("analyze", {"--json"});
  EXPECT_EQ(ended.error, note);
  const Json object = Json::parse(ended.out);
  EXPECT_EQ(object["instruments"], 2);
  EXPECT_EQ(object["problems"], Json::array());
  EXPECT_EQ(object["corrected_by"], (Json{{"tables",
                                           {{{"file", "c.csv"},
                                             {"path", (place.path() / "c.csv").string()},
                                             {"sha256", sha256(place.read("c.csv"))},
                                             {"count", 2}}}},
                                          {"ids", 2},
                                          {"pages", 1}}));
  expectPagesUnchanged();
}

TEST_F(CorrectedReading, OneThatDoesNotFitRefusesTheRunBeforeAnythingIsWritten) {
  place.write("c.csv",
              head + "X2.MUS,2,1,2,staff,zero,66,102,sure,\nX2.MUS,2,7,,staff,,,102,sure,\nY.MUS,2,1,,,,,5,,\n");
  for (const char* const command :
       {"analyze", "convert", "verify", "chart", "instruments", "suggest", "sort", "trace"}) {
    const Ended ended = run(command, {});
    EXPECT_EQ(ended.status, 2) << command;
    EXPECT_EQ(ended.out, "") << command;
    EXPECT_EQ(ended.error,
              "kivsys: c.csv:2: staff 1 at item 2 of X2.MUS has the id 0, not 66\n"
              "kivsys: c.csv:3: X2.MUS has no staff 7\nkivsys: c.csv:4: Y.MUS is none of the pages\n")
        << command;
    expectNothingWritten();
  }
}

TEST_F(CorrectedReading, ADamagedPageWithACorrectionRefusesTheRun) {
  place.write("x2.mus", place.read("x2.mus").substr(0, 50));
  const Ended ended = convert();
  EXPECT_EQ(ended.status, 2);
  EXPECT_TRUE(ended.error.ends_with("x2.mus is damaged; kivsys recover saves what it still holds\n")) << ended.error;
  expectNothingWritten();
}

TEST_F(CorrectedReading, PagesThatAreSkippedNeedNoCorrection) {
  place.write("x2.mus", place.read("x2.mus").substr(0, 50));
  const Ended ended = convert({"--keep-going"});
  EXPECT_EQ(ended.status, 1) << ended.error;
  EXPECT_NE(ended.out.find("2 pages analyzed, 1 skipped: X2.MUS"), std::string::npos) << ended.out;
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
}

TEST_F(CorrectedReading, ADryRunPlansTheCorrectedResults) {
  const Ended ended = convert({"--dry-run"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.out.find("WORK0003.MUS new, "), std::string::npos) << ended.out;
  EXPECT_NE(ended.out.find("rest 101, real 102"), std::string::npos) << ended.out;
  expectNothingWritten();
}

TEST_F(CorrectedReading, AProofNeedsTheCorrectionsAndStatesThem) {
  EXPECT_EQ(convert({"--verify"}).status, 0);
  EXPECT_TRUE(place.kivsys({"verify", "x1.mus", "x2.mus", "x3.mus", "--result", "out/WORK0001.MUS"})
                  .out.starts_with("PROVED=NO\n"));
  const Ended ended = run("verify", {"--result", "out/WORK0001.MUS", "--manifest", "sums.txt"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with("PROVED=YES\n")) << ended.out;
  const std::string sums = place.read("sums.txt");
  const std::string table = (place.path() / "c.csv").string();
  EXPECT_TRUE(sums.starts_with("# corrections: " + table + ", SHA-256 " + sha256(place.read("c.csv")) + ", 2 used\n"));
  EXPECT_NE(sums.find(sha256(place.read("c.csv")) + "  " + table + "\n"), std::string::npos) << sums;
  EXPECT_NE(sums.find(sha256(page(withoutIds)) + "  " + (place.path() / "x2.mus").string() + "\n"), std::string::npos)
      << "the digest is that of the page on the disk\n"
      << sums;
  EXPECT_EQ(run("verify", {"--result", "out/WORK0001.MUS", "--manifest", "sums.txt"}).status, 0)
      << "a manifest is replaced";
  const Json object = Json::parse(run("verify", {"--result", "out/WORK0001.MUS", "--json"}).out);
  EXPECT_EQ(object["corrected_by"]["ids"], 2);
}

TEST_F(CorrectedReading, OnlyRowsOfThatConfidenceAreUsed) {
  const Ended ended = run("instruments", {"--csv", "--only", "sure"});
  EXPECT_EQ(ended.error, "kivsys: note: 1 id in 1 page corrected on reading, 1 row left out; no page is changed\n");
  EXPECT_NE(ended.out.find("\n1,9,"), std::string::npos) << ended.out;
  EXPECT_EQ(place.kivsys({"analyze", "x1.mus", "--only", "sure"}).status, 2) << "there is no table";
}

TEST_F(CorrectedReading, ATableMayComeFromStandardInput) {
  const Ended ended =
      place.kivsys({"analyze", "x1.mus", "x2.mus", "x3.mus", "--corrections", "-", "--json"}, ".", place.read("c.csv"));
  EXPECT_EQ(ended.status, 0) << ended.error;
  const Json object = Json::parse(ended.out);
  EXPECT_EQ(object["instruments"], 2);
  EXPECT_EQ(object["corrected_by"]["tables"][0]["path"], nullptr);
  EXPECT_EQ(place.kivsys({"analyze", "--names", "-", "--corrections", "-"}).status, 2);
}

TEST_F(CorrectedReading, TheTableIsNoOutput) {
  fs::rename(place.path() / "c.csv", place.path() / "KivSystem1.TXT");
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus", "--corrections", "KivSystem1.TXT"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("is the same file as the input"), std::string::npos) << ended.error;
  EXPECT_TRUE(place.read("KivSystem1.TXT").starts_with("file,system"));
}

TEST_F(CorrectedReading, ThePanelHasNone) {
  EXPECT_EQ(run("convert", {"--like-panel"}).status, 2);
  EXPECT_EQ(run("analyze", {"--like-panel"}).status, 2);
  expectNothingWritten();
}

TEST_F(CorrectedReading, ASortedPageIsCorrected) {
  addPage("x2.mus", "staff 2 at 0 instrument 102\nstaff 1 at 0\nbarline 1 at 0 spans 2\n");
  place.write("c.csv", head + "x2.mus,2,1,2,staff,zero,0,101,sure,\n");
  const Ended ended = place.kivsys({"sort", "x2.mus", "--corrections", "c.csv", "--json"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(Json::parse(ended.out)["corrected_by"]["ids"], 1);
  const std::string dump = dumped("X2.PAG");
  EXPECT_NE(dump.find("staff 1 at 0 instrument 102"), std::string::npos) << dump;
  EXPECT_NE(dump.find("staff 2 at 0 instrument 101"), std::string::npos) << dump;
}

TEST_F(CorrectedReading, AChartAndFurtherSuggestionsKnowTheCorrections) {
  EXPECT_EQ(run("chart", {}).out.find(" 9 "), std::string::npos);
  const Json object = Json::parse(run("suggest", {"--json"}).out);
  EXPECT_EQ(object["corrections"], Json::array());
  EXPECT_EQ(object["corrected_by"]["ids"], 2);
}

TEST_F(CorrectedReading, TheNextStepKeepsTheCorrections) {
  place.write("c.csv", head + "X2.MUS,2,2,1,staff,rare,9,101,likely,\n");
  EXPECT_EQ(Json::parse(run("analyze", {"--json"}).out)["next"],
            "kivsys suggest x1.mus x2.mus x3.mus --corrections c.csv");
}

}  // namespace
}  // namespace kiv::test
