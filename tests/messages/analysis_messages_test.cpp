#include "messages/analysis_messages.h"

#include <gtest/gtest.h>

#include "tests/messages/expect.h"

namespace kiv::test {
namespace {

const messages::CheckedPage singleFile{false, "C:\\M\\X1.MUS"};
const messages::CheckedPage multifile{true, "C:\\M\\X1A.MUS"};
const Location ofSingleFile{.file = "C:\\M\\X1.MUS"};

TEST(Finding, DuplicateInstrumentIds) {
  expectInformation(messages::duplicateInstrumentIds(singleFile, "101,104"), "duplicate-instrument-id",
                    "Duplicate instrument Id in file: C:\\M\\X1.MUS\r\n"
                    "InstrId(s): 101,104\r\n\r\nResults are unpredictable.",
                    ofSingleFile);
  expectInformation(messages::duplicateInstrumentIds(multifile, "101,104"), "duplicate-instrument-id",
                    "Duplicate instrument Id in multipage files. Top file is: C:\\M\\X1A.MUS\r\n"
                    "InstrId(s): 101,104\r\n\r\nResults are unpredictable.");
}

TEST(Finding, DuplicateStaffNumbers) {
  expectInformation(messages::duplicateStaffNumbers(singleFile, "2"), "duplicate-staff-number",
                    "Duplicate staff number in file: C:\\M\\X1.MUS\r\n"
                    "Staff/staves: 2\r\n\r\nResults are unpredictable.",
                    ofSingleFile);
  expectInformation(messages::duplicateStaffNumbers(multifile, "2"), "duplicate-staff-number",
                    "Duplicate staff number in multipage files. Top file is: C:\\M\\X1A.MUS\r\n"
                    "Staff/staves(s): 2\r\n\r\nResults are unpredictable.");
}

TEST(Finding, ZeroInstrumentIds) {
  expectInformation(messages::zeroInstrumentIds(singleFile), "zero-instrument-id",
                    "Zero instrId(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable.", ofSingleFile);
  expectInformation(
      messages::zeroInstrumentIds(multifile), "zero-instrument-id",
      "Zero instrId(s) in multipage files. Top file is: C:\\M\\X1A.MUS\r\n\r\nResults are unpredictable.");
}

TEST(Finding, RecursiveCues) {
  expectInformation(messages::recursiveCues(singleFile), "recursive-cue",
                    "Recursive cue(s) in file: C:\\M\\X1.MUS\r\n\r\nResults are unpredictable.", ofSingleFile);
  expectInformation(
      messages::recursiveCues(multifile), "recursive-cue",
      "Recursive cue(s) in multipage files. Top file is: C:\\M\\X1A.MUS\r\n\r\nResults are unpredictable.");
}

TEST(Finding, UndefinedCues) {
  expectInformation(messages::undefinedCues(singleFile, "105 in staff 3, 106 in staff 1"), "undefined-cue",
                    "Reference to undefined instrId(s) in same system in file: C:\\M\\X1.MUS\r\n\r\n"
                    "Cues found for undefined instrument(s): 105 in staff 3, 106 in staff 1\r\n"
                    "Results are unpredictable.",
                    ofSingleFile);
  expectInformation(messages::undefinedCues(multifile, "105 in staff 3"), "undefined-cue",
                    "Reference to undefined instrId(s) in same system in multipage files. Top file is: "
                    "C:\\M\\X1A.MUS\r\n\r\nResults are unpredictable.");
}

TEST(AnalysisMessage, NoSystemBarline) {
  expectCritical(messages::noSystemBarline("C:\\M\\X1A.MUS"), "no-system-barline",
                 "No system barline encountered in multifile page. Top file is: C:\\M\\X1A.MUS",
                 {.file = "C:\\M\\X1A.MUS"});
}

TEST(AnalysisMessage, FilesOfTheAnalysis) {
  expectCritical(messages::reportNotCreated("KivSystem2.TXT"), "report-not-created",
                 "Failed to create report file: KivSystem2.TXT");
  expectCritical(messages::reportNotReadForVerdict(), "report-not-read",
                 "Could not open file KivSystem2.TXT for input.");
  expectCritical(messages::reportNotReadForCount(), "report-not-read", "Failed to open KivSystem2.txt for input.");
  expectCritical(messages::reportNotReadForConversion(), "report-not-read", "Failed to open file KivSystem2.TXT");
  expectCritical(messages::verdictNotCreated(), "verdict-not-created", "Failed to create file KivSystem1.TXT");
  expectCritical(messages::verdictNotRead(), "verdict-not-read", "Failed to open KivSystem1.TXT for input.");
}

TEST(AnalysisMessage, Results) {
  expectInformation(messages::qualifies(), "qualifies",
                    "Input qualifies for conversion to one file per system.\r\n"
                    "The resulting file(s) can be used as input to KivScore2XML and/or KivSplit.");
  expectInformation(messages::analysisResult({12, 5, "CONSISTENCY=NO", "MULTIFILE=YES"}), "analysis-result",
                    "Result of the Analysis.\r\nNumber of files processed: 12\r\n"
                    "Number of staves (instruments) per system: 5\r\n\r\n"
                    "CONSISTENCY=NO\r\nMULTIFILE=YES\r\n\r\n"
                    "Input does NOT qualify for conversion\r\n"
                    "Use Convert button to create consistent input for KivScore2XML or KivSpli6.");
  expectQuestion(messages::convertNow(), "other", "Convert?");
}

}  // namespace
}  // namespace kiv::test
