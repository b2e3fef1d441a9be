#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";

class ConsoleAnalyze : public ::testing::Test {
 protected:
  void addPage(const std::string& file, const std::string& text) const { place.write(file, page(text)); }
  std::string reportWithoutDate(const std::string& file = "KivSystem2.TXT") const {
    const std::string report = place.read(file);
    return report.substr(std::min(report.find('\n'), report.size()));
  }

  Workplace place;
};

TEST_F(ConsoleAnalyze, PrintsVerdictAndCounts) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", bass);
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(ended.out.starts_with("CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 2\nSystems: 2\nInstruments: 2\nLayouts: "))
      << ended.out;
  EXPECT_EQ(ended.error, "Next: kivsys convert x1.mus x2.mus --result converted/WORK0001.MUS\n");
  EXPECT_EQ(place.read("KivSystem1.TXT"), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(ConsoleAnalyze, NamesInTheReportAreBackslashedAndInCapitals) {
  addPage("x1.mus", bass);
  place.kivsys({"analyze", "x1.mus"});
  EXPECT_NE(place.read("KivSystem2.TXT")
                .find("SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=" + place.capitals("x1.mus") + "\r\n"),
            std::string::npos);
}

TEST_F(ConsoleAnalyze, NamesFileGivesTheSameAsPages) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2a.mus", bass);
  addPage("x2b.mus", bass);
  place.kivsys({"analyze", "x1.mus", "x2a.mus", "x2b.mus"});
  const std::string byPages = reportWithoutDate();
  place.write("names.txt", place.corePath("x1.mus") + " 1\n" + place.corePath("x2a.mus") + " 1\n" +
                               place.corePath("x2b.mus") + " 1\n");
  const Ended ended = place.kivsys({"analyze", "--names", "names.txt"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(reportWithoutDate(), byPages);
  EXPECT_NE(place.read("names.txt"), "(no file)");
}

TEST_F(ConsoleAnalyze, FolderIsWhereReportAndVerdictGo) {
  addPage("music/x1.mus", bass);
  place.write("out/KivSystem1.TXT", "old");
  const Ended ended = place.kivsys({"analyze", "--folder", "out", "music/x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(place.read("out/KivSystem1.TXT"), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_EQ(filesIn(place.path() / "out"), (std::vector<std::string>{"KivSystem1.TXT", "KivSystem2.TXT"}));
  EXPECT_EQ(place.read("KivSystem1.TXT"), "(no file)");
}

TEST_F(ConsoleAnalyze, NamesFileIsLookedForInTheRunsFolderToo) {
  addPage("x1.mus", bass);
  place.write("out/names.txt", place.corePath("x1.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"analyze", "--folder", "out", "--names", "names.txt"}).status, 0);
}

TEST_F(ConsoleAnalyze, AccentsAndBlanksInNamesWork) {
  addPage(
      "Zw\xC3\xB6lf St\xC3\xBC"
      "cke/Gro\xC3\x9F und klein/x1.mus",
      bass);
  const Ended ended = place.kivsys({"analyze",
                                    "Zw\xC3\xB6lf St\xC3\xBC"
                                    "cke/Gro\xC3\x9F und klein/x1.mus"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(place.read("KivSystem2.TXT")
                .find("\\ZW\xC3\x96LF ST\xC3\x9C"
                      "CKE\\GRO\xC3\x9F UND KLEIN\\X1.MUS\r\n"),
            std::string::npos);
}

TEST_F(ConsoleAnalyze, OldResultsAreGoneAfterARunThatFails) {
  place.write("KivSystem1.TXT", "old");
  place.write("KivSystem2.TXT", "old");
  EXPECT_EQ(place.kivsys({"analyze", "--like-panel", "none1.mus"}).status, 1);
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{});
}

TEST_F(ConsoleAnalyze, MessagesGoToStandardErrorWithTheirSeverity) {
  addPage("x1.mus", "staff 1 at 0\n");
  addPage("x2.mus", "words 99\n");
  const Ended ended = place.kivsys({"analyze", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.error,
            "kivsys: x1.mus: note: Zero instrId(s); Results are unpredictable\n"
            "kivsys: x2.mus: item 1: Structural error in MUS file\nNext: kivsys recover x2.mus\n"
            "kivsys: note: --keep-going skips bad pages and uses the others\n");
  const Ended like = place.kivsys({"analyze", "--like-panel", "x1.mus", "x2.mus"});
  EXPECT_EQ(like.error, "information: Zero instrId(s) in file: " + place.capitals("x1.mus") +
                            "\n  \n  Results are unpredictable.\ncritical: Structural error in MUS file: " +
                            place.capitals("x2.mus") +
                            "\n  Try to recover with KivValid/KivRecover.\n  Current folder = " + place.corePath("") +
                            "\n  Item number = 1\n");
}

TEST_F(ConsoleAnalyze, ZeroIdentifiersCanBeAllowed) {
  addPage("x1.mus", "staff 1 at 0\n");
  EXPECT_EQ(place.kivsys({"analyze", "--allow-zero-id", "x1.mus"}).error, "");
}

TEST_F(ConsoleAnalyze, ExitCodeReportsInputThatNeedsAConversion) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", bass);
  addPage("y1a.mus", bass);
  addPage("y1b.mus", bass);
  EXPECT_EQ(place.kivsys({"analyze", "--exit-code", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"analyze", "--exit-code", "x1.mus", "x2.mus"}).status, 3);
  EXPECT_EQ(place.kivsys({"analyze", "--exit-code", "y1a.mus", "y1b.mus"}).status, 3) << "multifile";
  EXPECT_EQ(place.kivsys({"analyze", "--exit-code", "none1.mus"}).status, 2);
}

TEST_F(ConsoleAnalyze, JsonIsOneObjectWithTextsAsTheyAre) {
  addPage("x1.mus", "staff 1 at 0\n");
  const Ended ended = place.kivsys({"analyze", "--json", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  const Json expected = {
      {"end", "normal"},
      {"messages",
       {{{"icon", "information"},
         {"text", "Zero instrId(s) in file: " + place.capitals("x1.mus") + "\r\n\r\nResults are unpredictable."},
         {"answer", "ok"}}}},
      {"consistency", true},
      {"multifile", false},
      {"files", 1},
      {"systems", 1},
      {"instruments", 1}};
  Json object = Json::parse(ended.out);
  for (const char* insight : {"paths", "problems", "layouts", "instrument_list", "next", "schema_version"}) {
    EXPECT_EQ(object.erase(insight), 1U) << insight;
  }
  EXPECT_EQ(object, expected);
}

TEST_F(ConsoleAnalyze, JsonOfACriticalEndLeavesOpenWhatWasNotReached) {
  addPage("x1.mus", bass);
  const Ended ended = place.kivsys({"analyze", "--json", "--like-panel", "x1.mus", "none2.mus"});
  EXPECT_EQ(ended.status, 1);
  const Json object = Json::parse(ended.out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["messages"].size(), 2U);
  EXPECT_EQ(object["messages"][1]["icon"], "critical");
  EXPECT_EQ(object["messages"][1]["text"].get<std::string>().substr(0, 16), "No input files: ");
  EXPECT_TRUE(object["consistency"].is_null());
  EXPECT_TRUE(object["multifile"].is_null());
  EXPECT_EQ(object["files"], 0);
  EXPECT_TRUE(object["systems"].is_null());
  EXPECT_TRUE(object["instruments"].is_null());
}

TEST_F(ConsoleAnalyze, JsonStaysOneObjectWithNamesThatAreNoUtf8) {
  addPage("f\xFFr/x1.mus", "staff 1 at 0\n");
  const Ended ended = place.kivsys({"analyze", "--json", "f\xFFr/x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(Json::accept(ended.out)) << ended.out;
}

TEST_F(ConsoleAnalyze, WrongUsageEndsWithStatus2AndSaysWhy) {
  addPage("x1.mus", bass);
  place.write("names.txt", "");
  const std::vector<std::vector<std::string>> wrong = {
      {},
      {"analyse"},
      {"analyze"},
      {"analyze", "--names"},
      {"analyze", "--names", "names.txt", "x1.mus"},
      {"analyze", "--colour", "x1.mus"},
      {"analyze", "--folder", "nowhere/at all", "x1.mus"},
      {"analyze", "two\nlines1.mus"},
      {"dump"},
      {"build", "names.txt"},
  };
  for (const auto& arguments : wrong) {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
    EXPECT_EQ(ended.out, "");
    EXPECT_NE(ended.error, "");
  }
  EXPECT_EQ(filesIn(place.path()), (std::vector<std::string>{"names.txt", "x1.mus"})) << "nothing was run";
}

TEST_F(ConsoleAnalyze, HelpAndVersion) {
  for (const std::vector<std::string>& arguments :
       {std::vector<std::string>{"--help"}, {"analyze", "--help"}, {"dump", "--help"}, {"build", "--help"}}) {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 0);
    EXPECT_NE(ended.out.find("Usage: kivsys"), std::string::npos) << ended.out;
    EXPECT_EQ(ended.error, "");
  }
  EXPECT_TRUE(place.kivsys({"--version"}).out.starts_with("kivsys v"));
}

TEST_F(ConsoleAnalyze, SiblingsCallWorks) {
  addPage("x1.mus", bass);
  place.write("names.txt", place.corePath("x1.mus") + " 1\r\n");
  const Ended ended = place.kivsys(
      {"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=" + (place.path() / "names.txt").string() + ",ALLOWZEROID=YES"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 1\nSystems: 1\nInstruments: 1\n");
  EXPECT_EQ(place.read("KivSystem1.TXT"), "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(ConsoleAnalyze, OtherSiblingsCallsAreRefused) {
  const Ended ended = place.kivsys({"CALLEDBY=KIV,FUNCTION=MAIN"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "critical: Invalid call to KivSystem:\n  CALLEDBY=KIV,FUNCTION=MAIN\n");
}

TEST_F(ConsoleAnalyze, LikeThePanelABadNamesFileIsDeletedWithoutAViewer) {
  place.write("names.txt", "x1.mus 1\r\n");
  const Ended ended = place.kivsys({"analyze", "--like-panel", "--names", "names.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find("Name must have a path prefix:\n  X1.MUS\n"), std::string::npos);
  EXPECT_EQ(ended.error.find("Some problem calling"), std::string::npos);
  EXPECT_EQ(place.read("names.txt"), "(no file)");
}

TEST_F(ConsoleAnalyze, InputsAreNotTouched) {
  addPage("x1.mus", fluteAndBass);
  const std::string before = place.read("x1.mus");
  place.kivsys({"analyze", "x1.mus"});
  EXPECT_EQ(place.read("x1.mus"), before);
  EXPECT_EQ(filesIn(place.path()), (std::vector<std::string>{"KivSystem1.TXT", "KivSystem2.TXT", "x1.mus"}));
}

}  // namespace
}  // namespace kiv::test
