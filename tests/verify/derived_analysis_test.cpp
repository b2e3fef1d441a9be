#include "verify/derived_analysis.h"

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string separator = "* " + std::string(87, '=') + "\n";
const std::string columnHeads =
    "* Nr          Par1          Staff         Cue/Id        System        Staves        Bottom        Filename\n";

/// Page files in C:\M, and what is derived from them.
class DerivedAnalysisTest : public ::testing::Test {
 protected:
  void add(const std::string& name, const std::string& text) {
    host.addFile("C:\\M\\" + name, page(text));
    inputs.push_back("C:\\M\\" + name);
  }
  proof::DerivedAnalysis derive() {
    proof::LoadedPages files;
    for (const std::string& input : inputs) {
      files[input] = proof::loadPage(host, input);
    }
    derivedReport.clear();
    return proof::deriveAnalysis(
        host, proof::SelectedPages(host, inputs),
        [&](const proof::PageFiles&) -> const proof::LoadedPages& { return files; },
        [this](std::string_view lines) { derivedReport += lines; });
  }
  /// The report from its second line on, with lines that end with LF.
  std::string report() {
    derive();
    std::string text = derivedReport;
    std::erase(text, '\r');
    return text.substr(text.find('\n') + 1);
  }
  /// The records alone, up to their file.
  std::string records() {
    std::string text = report();
    std::string records;
    for (std::size_t at = text.find("\nSYSTEM="); at != std::string::npos; at = text.find("\nSYSTEM=", at + 1)) {
      records += text.substr(at + 1, text.find(",FILE=", at) - at - 1) + "\n";
    }
    return records;
  }
  std::string failure() {
    const auto failure = derive().failure;
    return failure ? failure->file + ", item " + std::to_string(failure->item) + ": " + failure->what : "";
  }

  FakeHost host;
  std::vector<std::string> inputs;
  std::string derivedReport;
};

TEST_F(DerivedAnalysisTest, TheFilesOfAPageAreOneSystem) {
  add("P1A.MUS", "staff 1 at 0 instrument 101\nbarline 1 at 1 spans 1\n");
  add("P1B.MUS", "staff 1 at 0 instrument -102\nbarline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n");
  EXPECT_EQ(report(),
            "* P1.MUS      AB            C:\\M\\\n" + separator + columnHeads +
                "*  1           8             2             101           1             0             0            "
                "STAFF=1,FILE=C:\\M\\P1A.MUS\n"
                "*  2           14            2             0                                         1 \n"
                "*  3           8             1             102           1             2             1            "
                "STAFF=1,FILE=C:\\M\\P1B.MUS\n"
                "*  4           14            1             1                                         1 \n" +
                separator + "SYSTEM=1,INSTRID=101,NEWSTAFF=2,STAVESUP=0,STAFF=1,FILE=C:\\M\\P1A.MUS\n" +
                "SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\P1B.MUS\n" + separator);
  EXPECT_EQ(derive().verdict, "CONSISTENCY=YES\r\nMULTIFILE=YES\r\n");
}

TEST_F(DerivedAnalysisTest, CueMarkersAreListed) {
  add("P1.MUS",
      "rest 1 at 9 kind -2 cue 104\nrest 1 at 9 kind -12 height 2.5 cue 104\nrest 1 at 9 kind -12 height -6 cue 0.5\n"
      "rest 1 at 9 kind -2 p6 -1 cue 104\nrest 1 at 9 kind -3 cue 104\nstaff 1 at 20 instrument 1\n");
  EXPECT_EQ(report(),
            "* P1.MUS                    C:\\M\\\n" + separator + columnHeads +
                "*  1           2             1             0.5 \n" +
                "*  2           2             1             104 \n" +
                "*  3           8             1             1             1             1             1            "
                "STAFF=1,FILE=C:\\M\\P1.MUS\n" +
                separator + "SYSTEM=1,INSTRID=1,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\P1.MUS\n" + separator);
}

TEST_F(DerivedAnalysisTest, TheTopSystemOfAPageHasTheLowestNumber) {
  add("P1.MUS",
      "staff 1 at 0 instrument 1\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument 2\nstaff 3 at 0 instrument 3\n"
      "barline 3 at 1.5 spans 9\nstaff 5 at 0 lines -1 instrument 5\n");
  add("P2.MUS", "staff 7 at 0 instrument 4\n");
  EXPECT_EQ(records(),
            "SYSTEM=1,INSTRID=3,NEWSTAFF=3,STAVESUP=9,STAFF=3\nSYSTEM=2,INSTRID=2,NEWSTAFF=2,STAVESUP=0,STAFF=2\n"
            "SYSTEM=2,INSTRID=1,NEWSTAFF=1,STAVESUP=2,STAFF=1\nSYSTEM=3,INSTRID=4,NEWSTAFF=7,STAVESUP=1,STAFF=7\n");
  EXPECT_EQ(derive().verdict, "CONSISTENCY=NO\r\nMULTIFILE=NO\r\n");
}

TEST_F(DerivedAnalysisTest, AVerdictReadsWhatTheRecordsShow) {
  add("P1.MUS", "staff 1 at 0 instrument 100.50001\n");
  add("P2.MUS", "staff 1 at 0 instrument 100\n");
  EXPECT_EQ(derive().verdict, "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n") << "100.5 is rounded to 100";
}

TEST_F(DerivedAnalysisTest, WithoutStavesSystemsAreConsistent) {
  add("P1.MUS", "note 1 at 5\n");
  EXPECT_EQ(derive().verdict, "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
}

TEST_F(DerivedAnalysisTest, AnErrorEndsIt) {
  add("P1.MUS", "staff 1 at 0 instrument 1\nitem 99 1\n");
  EXPECT_EQ(failure(), "C:\\M\\P1.MUS, item 0: has a structural error at item 2");
  inputs.clear();
  add("P2.MUS", "note 1 at 1\nstaff 40000 at 0 instrument 1\n");
  EXPECT_EQ(failure(), "C:\\M\\P2.MUS, item 2: has a staff number that 16 bits do not hold");
  inputs.clear();
  add("P3.MUS", "staff 1 at 0 instrument 40000\n");
  EXPECT_EQ(failure(), "C:\\M\\P3.MUS, item 1: is of an instrument whose number 16 bits do not hold");
  inputs.clear();
  add("P4.MUS", "staff 1 at 0 instrument 1\nbarline 1 at 9 spans 40000\n");
  EXPECT_EQ(failure(), "C:\\M\\P4.MUS, item 2: spans more staves than 16 bits hold");
  inputs.clear();
  add("P5A.MUS", "staff 1 at 0 instrument 1\n");
  add("P5B.MUS", "staff 1 at 0 instrument 2\n");
  EXPECT_EQ(failure(), "C:\\M\\P5A.MUS, item 0: is of a page whose lowest staff has no barline at its left end");
}

TEST_F(DerivedAnalysisTest, APageHasAtMost5000ItemsThatCount) {
  std::string text = "staff 1 at 0 instrument 1\n";
  for (int i = 1; i < 5000; ++i) {
    text += "barline 1 at 5\n";
  }
  add("P1.MUS", text);
  EXPECT_EQ(failure(), "");
  add("P2.MUS", text + "barline 1 at 6\n");
  EXPECT_EQ(failure(), "C:\\M\\P2.MUS, item 5001: is one item more than an analysis of a page can hold");
  inputs.clear();
  text.replace(text.find("barline"), 7, "rest 1 at 1 kind -2 cue 4\nbarline");
  add("P3.MUS", text.substr(0, text.rfind("barline")));
  EXPECT_EQ(failure(), "C:\\M\\P3.MUS, item 2: is a cue marker of a page with as many items as an analysis can hold");
}

TEST_F(DerivedAnalysisTest, CueMarkersOfItsOwnInstrumentsAreCounted) {
  std::string text;
  for (int i = 1; i <= 200; ++i) {
    text += "staff " + std::to_string(i) + " at 0 instrument 7\nrest 1 at 2 kind -2 cue 7\n";
  }
  add("P1.MUS", text);
  EXPECT_EQ(failure().substr(failure().find(": ")), ": is of an instrument with more cue markers than 16 bits count");
}

}  // namespace
}  // namespace kiv::test
