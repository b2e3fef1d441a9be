#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "pagetext/page_text.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;
using Json = nlohmann::json;
using Names = std::vector<std::string>;

const std::string fluteAndBass = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
const std::string bass = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";

/// The results of fluteAndBass and of bass behind it, without instrument numbers.
const std::string plainFluteAndBass =
    "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument 101\n";
const std::string plainBass = plainFluteAndBass + "clef 2 at 2\n";

/// The same with their instrument numbers.
const std::string numberedFluteAndBass =
    "item 10 1 -4 0 102 0.7\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n"
    "item 10 2 -4 0 101 0.7\nstaff 2 at 0 instrument 101\n";
const std::string numberedBass = numberedFluteAndBass + "clef 2 at 2\n";

const std::string qualifies =
    "Input qualifies for conversion to one file per system.\r\n"
    "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.";
const std::string doesNotQualify =
    "Result of the Analysis.\r\nNumber of files processed: 2\r\nNumber of staves (instruments) per system: 2\r\n\r\n"
    "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n\r\nInput does NOT qualify for conversion\r\n"
    "Use Convert button to create consistent input for KivScore2XML or KivSpli6.";
const std::string verdictOfTwo = "CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 2\nSystems: 2\nInstruments: 2\n";
const std::string verdictOfOne = "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 1\nSystems: 1\nInstruments: 1\n";

/// A message as standard error shows it.
std::string shown(const std::string& severity, const std::string& text) {
  std::string lines = severity + ": ";
  for (const char c : text) {
    lines += c == '\r' ? "" : c == '\n' ? "\n  " : std::string(1, c);
  }
  return lines + "\n";
}

std::string created(int count, const std::string& first, const std::string& last) {
  return "Created " + std::to_string(count) + " files.\r\nFirst is " + first + "\r\nLast is " + last;
}

Json message(const std::string& icon, const std::string& text, const std::string& answer = "ok") {
  return {{"icon", icon}, {"text", text}, {"answer", answer}};
}

class ConsoleConvert : public ::testing::Test {
 protected:
  void addPage(const std::string& file, const std::string& text) const { place.write(file, page(text)); }
  /// Two pages that do not qualify.
  void addTwo(const std::string& folder = "") const {
    addPage(folder + "x1.mus", fluteAndBass);
    addPage(folder + "x2.mus", bass);
  }
  /// The page file as text, to be compared with asDumped.
  std::string dumped(const std::string& file) const { return dumpPage(place.read(file)); }
  static std::string asDumped(const std::string& text) { return dumpPage(page(text)); }

  Workplace place;
};
using ConsoleTrace = ConsoleConvert;

// --- what is written, and where ---

TEST_F(ConsoleConvert, WritesAPageForEverySystemBesideTheFirstInput) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfTwo + place.capitals("WORK0001.MUS") + "\n" + place.capitals("WORK0002.MUS") + "\n");
  EXPECT_EQ(ended.error,
            shown("information", doesNotQualify) +
                shown("information", created(2, place.capitals("WORK0001.MUS"), place.capitals("WORK0002.MUS"))));
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(numberedBass));
}

TEST_F(ConsoleConvert, ResultIsNamedAsSeenFromWhereTheUserStands) {
  addTwo();
  fs::create_directory(place.path() / "out");
  const Ended ended = place.kivsys({"convert", "--result", "out/PART0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out,
            verdictOfTwo + place.corePath("out/PART0001.MUS") + "\n" + place.corePath("out/PART0002.MUS") + "\n");
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"PART0001.MUS", "PART0002.MUS"}));
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "out", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, ResultIsNamedAsSeenFromThereWithAnotherFolderForTheRunToo) {
  addTwo("here/");
  fs::create_directories(place.path() / "reports/out");
  fs::create_directory(place.path() / "here/out");
  const Ended ended =
      place.kivsys({"convert", "--folder", "../reports", "--result", "out/WORK0001.MUS", "x1.mus", "x2.mus"}, "here");
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(filesIn(place.path() / "here/out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
  EXPECT_EQ(filesIn(place.path() / "reports"), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "out"}));
  EXPECT_EQ(filesIn(place.path() / "reports/out"), Names{});
  EXPECT_EQ(filesIn(place.path() / "here"), (Names{"out", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, WithoutAResultTheFirstPagesFolderIsTakenWhateverTheRunsFolderIs) {
  addTwo("music/");
  fs::create_directory(place.path() / "reports");
  EXPECT_EQ(place.kivsys({"convert", "--folder", "reports", "music/x1.mus", "music/x2.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "reports"), (Names{"KivSystem1.TXT", "KivSystem2.TXT"}));
  EXPECT_EQ(filesIn(place.path() / "music"), (Names{"WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, SystemNumbersTakeThePlaceOfTheLastEightCharacters) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--result", "Part 9999.pag", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "Part 0001.MUS", "Part 0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_TRUE(ended.error.ends_with(
      shown("information", created(2, place.corePath("Part 9999.pag"), place.corePath("Part 0002.MUS")))))
      << ended.error;
}

TEST_F(ConsoleConvert, AccentsAndBlanksInTheNamesOfResultsWork) {
  addTwo();
  const std::string folder =
      "St\xC3\xBC"
      "cke und \xC3\x84hnliches";
  fs::create_directory(place.path() / folder);
  const Ended ended = place.kivsys({"convert", "--result", folder + "/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(filesIn(place.path() / folder), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
}

TEST_F(ConsoleConvert, NamesFileGivesTheSameAsPages) {
  addTwo();
  place.kivsys({"convert", "x1.mus", "x2.mus"});
  const Names byPages = {dumped("WORK0001.MUS"), dumped("WORK0002.MUS")};
  fs::remove(place.path() / "WORK0001.MUS");
  fs::remove(place.path() / "WORK0002.MUS");
  place.write("names.txt", place.corePath("x1.mus") + " 1\r\n" + place.corePath("x2.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"convert", "--names", "names.txt"}).status, 0);
  EXPECT_EQ((Names{dumped("WORK0001.MUS"), dumped("WORK0002.MUS")}), byPages);
  EXPECT_NE(place.read("names.txt"), "(no file)");
}

TEST_F(ConsoleConvert, NamesFileIsLookedForWhereTheUserStandsAndThenInTheRunsFolder) {
  addTwo();
  place.write("out/names.txt", place.corePath("x1.mus") + " 1\r\n" + place.corePath("x2.mus") + " 1\r\n");
  const Ended inRunsFolder = place.kivsys({"convert", "--folder", "out", "--names", "names.txt"});
  EXPECT_TRUE(inRunsFolder.out.starts_with(verdictOfTwo)) << inRunsFolder.out;
  place.write("names.txt", place.corePath("x2.mus") + " 1\r\n");
  EXPECT_EQ(place.kivsys({"convert", "--folder", "out", "--names", "names.txt"}).out, verdictOfOne);
}

TEST_F(ConsoleConvert, FilesOfAPageBecomeOne) {
  addPage("x1a.mus", "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  addPage("x1b.mus", bass);
  const Ended ended = place.kivsys({"convert", "x1a.mus", "x1b.mus"});
  EXPECT_EQ(ended.out, "CONSISTENCY=YES\nMULTIFILE=YES\nFiles: 2\nSystems: 1\nInstruments: 2\n" +
                           place.capitals("WORK0001.MUS") + "\n");
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, InputsAreNotTouched) {
  addTwo();
  const Names before = {place.read("x1.mus"), place.read("x2.mus")};
  place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ((Names{place.read("x1.mus"), place.read("x2.mus")}), before);
}

// --- options ---

TEST_F(ConsoleConvert, InstrumentNumbersCanBeLeftOut) {
  addTwo();
  EXPECT_EQ(place.kivsys({"convert", "--no-instr-number", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(plainFluteAndBass));
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(plainBass));
}

TEST_F(ConsoleConvert, ZeroIdentifiersCanBeAllowed) {
  addPage("x1.mus", "staff 2 at 0\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
  addPage("x2.mus", bass);
  const std::string problem = shown(
      "information", "Zero instrId(s) in file: " + place.capitals("x1.mus") + "\r\n\r\nResults are unpredictable.");
  const Ended warned = place.kivsys({"convert", "x1.mus", "x2.mus"});
  const Ended allowed = place.kivsys({"convert", "--allow-zero-id", "x1.mus", "x2.mus"});
  EXPECT_EQ(warned.status, 0);
  EXPECT_EQ(allowed.status, 0);
  EXPECT_EQ(warned.error, problem + allowed.error);
  EXPECT_EQ(warned.out, allowed.out);
}

TEST_F(ConsoleConvert, OldPagesAreReplacedWithoutAQuestion) {
  addTwo();
  place.write("WORK0001.MUS", "old");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("Overwrite?"), std::string::npos);
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, AnOldPageKeepsTheSpellingOfItsName) {
  addTwo();
  place.write("Work0001.mus", "old");
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "WORK0002.MUS", "Work0001.mus", "x1.mus", "x2.mus"}));
  EXPECT_EQ(dumped("Work0001.mus"), asDumped(numberedFluteAndBass));
}

TEST_F(ConsoleConvert, WithoutATerminalNobodyAgreesToOverwrite) {
  addTwo();
  place.write("WORK0002.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"}, ".", "y\nyes\n");
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, verdictOfTwo + place.capitals("WORK0001.MUS") + "\n");
  EXPECT_EQ(ended.error,
            shown("information", doesNotQualify) +
                shown("exclamation", "File exists: " + place.capitals("WORK0002.MUS") + "\r\n\r\nOverwrite?") +
                shown("critical", "Abnormal termination forced by user."));
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(numberedFluteAndBass));
  EXPECT_EQ(place.read("WORK0002.MUS"), "old");
}

TEST_F(ConsoleConvert, NoOverwriteAsksAboutFilesUnderAnotherSpellingToo) {
  addTwo();
  place.write("work0001.mus", "old");
  EXPECT_EQ(place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"}).status, 1);
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "work0001.mus", "x1.mus", "x2.mus"}));
  EXPECT_EQ(place.read("work0001.mus"), "old");
}

TEST_F(ConsoleConvert, NoOverwriteAsksNothingWhereNothingIsReplaced) {
  addTwo();
  place.write("WORK0003.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--no-overwrite", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("Overwrite?"), std::string::npos);
  EXPECT_EQ(place.read("WORK0003.MUS"), "old");
}

// --- input that qualifies ---

TEST_F(ConsoleConvert, InputThatQualifiesIsNotConverted) {
  addPage("x1.mus", bass);
  place.write("WORK0001.MUS", "old");
  const Ended ended = place.kivsys({"convert", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfOne);
  EXPECT_EQ(ended.error, shown("information", qualifies));
  EXPECT_EQ(place.read("WORK0001.MUS"), "old");
}

TEST_F(ConsoleConvert, InputThatQualifiesIsConvertedByForceAndTheMessageStays) {
  addPage("x1.mus", bass);
  const Ended ended = place.kivsys({"convert", "--force", "x1.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, verdictOfOne + place.capitals("WORK0001.MUS") + "\n");
  EXPECT_EQ(ended.error,
            shown("information", qualifies) +
                shown("information", created(1, place.capitals("WORK0001.MUS"), place.capitals("WORK0001.MUS"))));
  EXPECT_EQ(dumped("WORK0001.MUS"),
            asDumped("item 10 1 -4 0 102 0.7\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n"));
}

TEST_F(ConsoleConvert, ForceChangesNothingForInputThatNeedsAConversion) {
  addTwo();
  const Ended plain = place.kivsys({"convert", "x1.mus", "x2.mus"});
  const Ended forced = place.kivsys({"convert", "--force", "x1.mus", "x2.mus"});
  EXPECT_EQ(forced.status, plain.status);
  EXPECT_EQ(forced.out, plain.out);
  EXPECT_EQ(forced.error, plain.error);
}

// --- as JSON ---

TEST_F(ConsoleConvert, JsonIsOneObjectWithTheMessagesAndTheFiles) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--json", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  const std::string first = place.capitals("WORK0001.MUS");
  const std::string last = place.capitals("WORK0002.MUS");
  const Json expected = {
      {"end", "normal"},
      {"messages", {message("information", doesNotQualify), message("information", created(2, first, last))}},
      {"consistency", false},
      {"multifile", false},
      {"files", 2},
      {"systems", 2},
      {"instruments", 2},
      {"created", {first, last}}};
  Json object = Json::parse(ended.out);
  for (const char* insight : {"problems", "schema_version"}) {
    EXPECT_EQ(object.erase(insight), 1U) << insight;
  }
  EXPECT_EQ(object, expected);
}

TEST_F(ConsoleConvert, JsonTellsThatNothingWasCreated) {
  addPage("x1.mus", bass);
  const Json object = Json::parse(place.kivsys({"convert", "--json", "x1.mus"}).out);
  EXPECT_EQ(object["end"], "normal");
  EXPECT_EQ(object["messages"], Json::array({message("information", qualifies)}));
  EXPECT_EQ(object["consistency"], true);
  EXPECT_EQ(object["created"], Json::array());
}

TEST_F(ConsoleConvert, JsonTellsHowAQuestionWasAnswered) {
  addTwo();
  place.write("WORK0002.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--json", "--no-overwrite", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  const Json object = Json::parse(ended.out);
  const std::string question = "File exists: " + place.capitals("WORK0002.MUS") + "\r\n\r\nOverwrite?";
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["messages"],
            Json::array({message("information", doesNotQualify), message("exclamation", question, "no"),
                         message("critical", "Abnormal termination forced by user.")}));
  EXPECT_EQ(object["created"], Json::array({place.capitals("WORK0001.MUS")}));
  EXPECT_EQ(object["consistency"], false) << "the analysis had ended";
  EXPECT_EQ(object["systems"], 2);
}

TEST_F(ConsoleConvert, JsonOfAnAnalysisThatFailsLeavesOpenWhatWasNotReached) {
  addPage("x1.mus", bass);
  place.write("x2.mus", "broken");
  const Ended ended = place.kivsys({"convert", "--json", "--force", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  const Json object = Json::parse(ended.out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["messages"].size(), 1U);
  EXPECT_TRUE(object["consistency"].is_null());
  EXPECT_TRUE(object["instruments"].is_null());
  EXPECT_EQ(object["files"], 2);
  EXPECT_EQ(object["created"], Json::array());
}

// --- runs that fail ---

TEST_F(ConsoleConvert, WithoutNamesTheRunIsACriticalEnd) {
  place.write("names.txt", "* nothing selected\r\n");
  const std::string problem = "No input files: " + place.corePath("names.txt");
  for (const std::string force : {"", "--force"}) {
    Names arguments = {"convert", "--names", "names.txt"};
    if (!force.empty()) {
      arguments.push_back(force);
    }
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 1) << force;
    EXPECT_EQ(ended.out, "") << force;
    EXPECT_EQ(ended.error, shown("critical", problem)) << force;
  }
  const Json object = Json::parse(place.kivsys({"convert", "--json", "--names", "names.txt"}).out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["messages"], Json::array({message("critical", problem)}));
  EXPECT_EQ(object["created"], Json::array());
  EXPECT_EQ(filesIn(place.path()), Names{"names.txt"});
}

TEST_F(ConsoleConvert, OldReportAndVerdictAreGoneAfterARunThatFails) {
  for (const std::string verb : {"convert", "trace"}) {
    place.write("KivSystem1.TXT", "old");
    place.write("KivSystem2.TXT", "old");
    EXPECT_EQ(place.kivsys({verb, "none1.mus"}).status, 1);
    EXPECT_EQ(filesIn(place.path()), Names{}) << verb;
  }
}

TEST_F(ConsoleConvert, OnlyTheRunsFolderLosesItsOldReportAndVerdict) {
  addTwo();
  place.write("KivSystem1.TXT", "old");
  place.write("out/KivSystem1.TXT", "old");
  place.kivsys({"convert", "--folder", "out", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.read("KivSystem1.TXT"), "old");
  EXPECT_EQ(place.read("out/KivSystem1.TXT"), "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(ConsoleConvert, ASystemThatCannotBeConvertedLeavesTheResultsBeforeIt) {
  addTwo();
  addPage("x3.mus", "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus", "x3.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "CONSISTENCY=NO\nMULTIFILE=NO\nFiles: 3\nSystems: 3\nInstruments: 2\n" +
                           place.capitals("WORK0001.MUS") + "\n" + place.capitals("WORK0002.MUS") + "\n");
  EXPECT_TRUE(ended.error.ends_with(shown("critical", "Logical error 3 in setRestDurations"))) << ended.error;
  EXPECT_EQ(ended.error.find("Created"), std::string::npos);
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(numberedBass));
  EXPECT_EQ(place.read("WORK0003.MUS"), "(no file)");
}

TEST_F(ConsoleConvert, AResultThatCannotBeWrittenEndsTheRun) {
  addTwo();
  const Ended ended = place.kivsys({"convert", "--result", "missing/WORK0001.MUS", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, verdictOfTwo);
  EXPECT_TRUE(ended.error.ends_with(shown("critical", "Open of output MUS file failed. Hit OK to terminate.")))
      << ended.error;
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "x1.mus", "x2.mus"}));
}

TEST_F(ConsoleConvert, AFolderInThePlaceOfAResultStays) {
  addTwo();
  fs::create_directory(place.path() / "WORK0002.MUS");
  const Ended ended = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(filesIn(place.path()),
            (Names{"KivSystem1.TXT", "KivSystem2.TXT", "WORK0001.MUS", "WORK0002.MUS", "x1.mus", "x2.mus"}));
  EXPECT_EQ(filesIn(place.path() / "WORK0002.MUS"), Names{});
}

TEST_F(ConsoleConvert, TheFirstPageMayNotHaveTheFirstResultsName) {
  addPage("work0001.mus", bass);
  const Ended ended = place.kivsys({"convert", "--force", "--result", "out/WORK0001.MUS", "work0001.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("critical: Input file cannot be " + place.capitals("work0001.mus") + "\n"))
      << ended.error;
  EXPECT_EQ(filesIn(place.path()), Names{"work0001.mus"});
}

TEST_F(ConsoleConvert, WrongUsageEndsWithStatus2AndNothingIsRun) {
  addTwo();
  place.write("names.txt", "");
  place.write("KivSystem1.TXT", "old");
  for (const std::string verb : {"convert", "trace"}) {
    const std::vector<Names> wrong = {{verb},
                                      {verb, "--names"},
                                      {verb, "--names", "names.txt", "x1.mus"},
                                      {verb, "--result", "WORK0001.MUS"},
                                      {verb, "x1.mus", "--result"},
                                      {verb, "--exit-code", "x1.mus", "x2.mus"},
                                      {verb, "--folder", "nowhere", "x1.mus", "x2.mus"}};
    for (const Names& arguments : wrong) {
      const Ended ended = place.kivsys(arguments);
      EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
      EXPECT_EQ(ended.out, "");
      EXPECT_NE(ended.error, "");
    }
  }
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "names.txt", "x1.mus", "x2.mus"}));
  EXPECT_EQ(place.read("KivSystem1.TXT"), "old");
}

// --- trace ---

/// A line whose fields stand in zones of 14 columns.
std::string zoned(const Names& fields) {
  constexpr std::size_t width = 14;
  std::string line;
  for (const std::string& field : fields) {
    line.resize((line.size() + width - 1) / width * width, ' ');
    line += field;
  }
  return line + "\r\n";
}

TEST_F(ConsoleTrace, LeavesTheTablesOfTheLastSystem) {
  addTwo();
  const Ended ended = place.kivsys({"trace", "--no-instr-number", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(place.read("KivSystemDump.txt"),
            "File " + place.capitals("WORK0002.MUS") +
                "\r\nItem 1\r\n 8 1 0 0 0 0 0 0 102\r\nItem 2\r\n 999 1 0 1\r\nItem 3\r\n 14 1 0 2\r\n"
                "Item 4\r\n 8 2 0 0 0 0 0 0 101\r\nItem 5\r\n 3 2 2\r\n"
                "============= order table ===============\r\n" +
                zoned({"index", "instr", "size", "lines", "par11", "clef", "hite", "key", "type", "timeUp", "timeDn"}) +
                zoned({" 1 ", " 101 ", " 1000 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 "}) +
                zoned({" 2 ", " 102 ", " 1000 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 "}));
}

TEST_F(ConsoleTrace, DoesWhatConvertDoesOtherwise) {
  addTwo();
  const Ended converted = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  const Names pages = {place.read("WORK0001.MUS"), place.read("WORK0002.MUS")};
  const Ended traced = place.kivsys({"trace", "x1.mus", "x2.mus"});
  EXPECT_EQ(traced.status, 0);
  EXPECT_EQ(traced.out, converted.out);
  EXPECT_EQ(traced.error, converted.error);
  EXPECT_EQ((Names{place.read("WORK0001.MUS"), place.read("WORK0002.MUS")}), pages);
}

TEST_F(ConsoleTrace, TheDumpLiesInTheRunsFolderAndReplacesAnOldOne) {
  addTwo();
  place.write("out/KivSystemDump.txt", "a dump of another day");
  EXPECT_EQ(place.kivsys({"trace", "--folder", "out", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_TRUE(place.read("out/KivSystemDump.txt").starts_with("File " + place.capitals("WORK0002.MUS") + "\r\n"));
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
}

TEST_F(ConsoleTrace, ACriticalEndLeavesNoDump) {
  addTwo();
  EXPECT_EQ(place.kivsys({"trace", "--result", "missing/WORK0001.MUS", "x1.mus", "x2.mus"}).status, 1);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  EXPECT_EQ(place.kivsys({"trace", "--force", "none1.mus"}).status, 1);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
}

TEST_F(ConsoleTrace, InputThatQualifiesLeavesADumpByForceOnly) {
  addPage("x1.mus", bass);
  EXPECT_EQ(place.kivsys({"trace", "x1.mus"}).status, 0);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  EXPECT_EQ(place.kivsys({"trace", "--force", "x1.mus"}).status, 0);
  EXPECT_TRUE(place.read("KivSystemDump.txt").starts_with("File " + place.capitals("WORK0001.MUS") + "\r\n"));
}

TEST_F(ConsoleTrace, ADumpThatCannotBeWrittenIsToldAndDoesNotPassForSuccess) {
  addTwo();
  fs::create_directory(place.path() / "KivSystemDump.txt");
  const Ended ended = place.kivsys({"trace", "--json", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.ends_with("kivsys: cannot write KivSystemDump.txt\n")) << ended.error;
  EXPECT_EQ(Json::parse(ended.out)["created"].size(), 2U);
}

}  // namespace
}  // namespace kiv::test
