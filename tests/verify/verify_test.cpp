#include "verify/verify.h"

#include <algorithm>
#include <utility>

#include <gtest/gtest.h>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "base/sha256.h"
#include "tests/support/pages.h"
#include "tests/verify/converted_group.h"

namespace kiv::test {
namespace {

// Two pages: on the first both instruments play, on the second 102 is silent.
const std::string bothPlay =
    "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\ntimesignature 2 at 9 upper 3 lower 4\n"
    "note 2 at 20 height 4 duration 3\ntext 2 at 25 \"Allegro\"\nbarline 2 at 60 spans 1\n"
    "staff 1 at 0 size 0.75 lines 1 instrument 102\nclef 1 at 2 kind 4\nkeysignature 1 at 6 key 2 type 1\n"
    "timesignature 1 at 9 upper 3 lower 4\nnote 1 at 20 duration 3\nbarline 1 at 0 spans 2\nbarline 1 at 0 spans 1 "
    "kind 8\n"
    "barline 1 at 60 spans 1\nnote 9 at 5\n";
const std::string onePlays =
    "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 14 height 6 duration 3\nshorttext 1 at 14 "
    "\"p\"\n"
    "countedtext 1 at 15 \"dolce\"\nbarline 1 at 0 spans 1\nbarline 1 at 50 spans 1\nnote 1 at 55 height 1 duration 3\n"
    "barline 1 at 100 spans 1\n";

class Verify : public ::testing::Test {
 protected:
  ConvertedGroup group{{{"DUO001.MUS", page(bothPlay)}, {"DUO002.MUS", page(onePlays)}}};

  void change(std::size_t item, int parameter, float value) {
    group.changeResult(2, [&](std::vector<Item>& items) { items[item - 1][parameter] = value; });
  }
};

TEST_F(Verify, AConversionIsProved) {
  EXPECT_EQ(group.findings(), "");
  EXPECT_TRUE(group.verify().proved());
}

TEST_F(Verify, EveryItemIsCountedOnce) {
  const proof::Counts counts = group.verify().counts;
  EXPECT_EQ(counts.inputs, 2U);
  EXPECT_EQ(counts.results, 2U);
  EXPECT_EQ(counts.carried, 16U);
  EXPECT_EQ(counts.barlines, 7U);
  EXPECT_EQ(counts.leftOut, 1U);
  // Ids, barlines, system barlines and braces; on the rest staff staff, clef, key and rests.
  EXPECT_EQ(counts.added, 2U + 2 + 1 + 1 + 2 + 4 + 1 + 1 + 3 + 2);
}

TEST_F(Verify, ResultsWithoutInstrumentIdsAreProvedToo) {
  ConvertedGroup plain({{"DUO001.MUS", page(bothPlay)}, {"DUO002.MUS", page(onePlays)}}, false);
  EXPECT_EQ(plain.findings(), "");
  plain.conversion.showNumbers = true;
  EXPECT_FALSE(plain.verify().proved());
}

TEST_F(Verify, EveryFileHasItsDigest) {
  const auto files = group.verify().files;
  std::vector<std::string> names;
  for (const DigestedFile& file : files) {
    names.push_back(file.name);
    EXPECT_EQ(file.sha256, sha256(group.host.file(file.name))) << file.name;
  }
  EXPECT_EQ(names, (std::vector<std::string>{"KivSystem2.TXT", "KivSystem1.TXT", "C:\\M\\DUO001.MUS",
                                             "C:\\M\\DUO002.MUS", "C:\\OUT\\WORK0001.MUS", "C:\\OUT\\WORK0002.MUS"}));
}

// In result 2 the rest staff lies below; on the staff that was there the note follows the short text, which is lower.
constexpr std::size_t noteAt = 14;

TEST_F(Verify, AChangedItemIsNamedWithItsOrigin) {
  group.changeResult(2, [](std::vector<Item>& items) {
    const auto note = std::find_if(items.begin(), items.end(), [](const Item& item) {
      return item.type() == ItemType::note && item[par::position] == 14;
    });
    (*note)[par::height] = 5;
  });
  EXPECT_EQ(group.findings(),
            "WORK0002.MUS, item 15: differs from item 3 of C:\\M\\DUO002.MUS (note): P4 is 5, not 6\n");
}

TEST_F(Verify, AChangedTextIsShown) {
  group.changeResult(2, [](std::vector<Item>& items) {
    for (Item& item : items) {
      if (item.text == "dolce") {
        item.text = "dolcE";
      }
    }
  });
  EXPECT_EQ(
      group.findings(),
      "WORK0002.MUS, item 16: differs from item 5 of C:\\M\\DUO002.MUS (counted text): the text is \"dolcE\", not "
      "\"dolce\"\n");
}

TEST_F(Verify, AnInputThatChangesAfterwardsIsNoticed) {
  std::string changed = onePlays;
  changed.replace(changed.find("height 6"), 8, "height 7");
  group.replaceInput("DUO002.MUS", page(changed));
  EXPECT_EQ(group.findings(),
            "WORK0002.MUS, item 15: differs from item 3 of C:\\M\\DUO002.MUS (note): P4 is 6, not 7\n");
}

TEST_F(Verify, ADroppedItemIsReported) {
  group.changeResult(2, [](std::vector<Item>& items) { items.erase(items.begin() + noteAt); });
  EXPECT_EQ(group.findings(), "WORK0002.MUS: lacks item 3 of C:\\M\\DUO002.MUS (note) on staff 2\n");
}

TEST_F(Verify, ADuplicatedItemIsReported) {
  group.changeResult(2, [](std::vector<Item>& items) { items.insert(items.begin() + noteAt, items[noteAt]); });
  EXPECT_EQ(group.findings(), "WORK0002.MUS, item 16: is item 3 of C:\\M\\DUO002.MUS (note) once more\n");
}

TEST_F(Verify, AnUnknownItemIsReported) {
  group.changeResult(2, [](std::vector<Item>& items) {
    Item clef(ItemType::clef, 2, 500);
    clef[par::kind] = 3;
    clef[par::height] = 2;
    clef[8] = 7;
    items.push_back(clef);
  });
  EXPECT_EQ(group.findings(),
            "WORK0002.MUS, item 20: is a clef on staff 2 that neither the input holds nor a conversion adds\n");
}

TEST_F(Verify, AnItemOnAnotherStaffIsReported) {
  change(noteAt + 1, par::staff, 1);
  EXPECT_EQ(
      group.findings(),
      "WORK0002.MUS, item 15: is item 3 of C:\\M\\DUO002.MUS (note), which belongs on staff 2 and stands on staff "
      "1\n");
}

TEST_F(Verify, AnItemInAnotherResultIsReported) {
  Item moved;
  group.changeResult(2, [&](std::vector<Item>& items) {
    moved = items[noteAt];
    items.erase(items.begin() + noteAt);
  });
  group.changeResult(1, [&](std::vector<Item>& items) { items.push_back(moved); });
  EXPECT_EQ(group.findings(),
            "WORK0001.MUS, item 17: is item 3 of C:\\M\\DUO002.MUS (note), which belongs in C:\\OUT\\WORK0002.MUS\n");
}

TEST_F(Verify, AnAddedItemMustBeAsTheRulesSay) {
  change(5, par::keyType, 4);
  EXPECT_EQ(group.findings(),
            "WORK0002.MUS, item 5: differs from the key signature that a conversion adds at 9: P6 is 4, not 1\n");
}

TEST_F(Verify, OtherInstrumentsOrBarsAreReported) {
  group.changeResult(2, [](std::vector<Item>& items) {
    for (Item& item : items) {
      if (item.type() == ItemType::staff && item[par::staff] == 1) {
        item[par::instrument] = 103;
      }
      if (item.type() == ItemType::barline && item[par::staff] == 2 && item[par::position] == 50) {
        item[par::position] = 51;
      }
    }
  });
  const std::string findings = group.findings();
  EXPECT_NE(findings.find("has the instruments 103,101 where C:\\OUT\\WORK0001.MUS has 102,101"), std::string::npos);
  EXPECT_NE(findings.find("has other bars on staff 2 than on staff 1"), std::string::npos);
}

TEST_F(Verify, ItemsInAnotherOrderAreReported) {
  group.changeResult(2, [](std::vector<Item>& items) { std::swap(items[noteAt], items[noteAt - 1]); });
  EXPECT_EQ(group.findings(), "WORK0002.MUS, item 14: stands where another item belongs\n");
}

TEST_F(Verify, BytesBetweenTheItemsAreReportedToo) {
  std::string bytes = group.result(2);
  bytes.back() = 'x';
  group.replaceResult(2, bytes);
  EXPECT_EQ(group.findings(),
            "WORK0002.MUS: differs at byte " + std::to_string(bytes.size() - 1) + ", which is part of no item\n");
}

TEST_F(Verify, AMissingResultIsReported) {
  group.host.deleteFile("C:\\OUT\\WORK0002.MUS");
  EXPECT_EQ(group.findings().substr(0, 29), "WORK0002.MUS: cannot be read\n");
}

TEST_F(Verify, ASurplusResultIsReportedUnlessItIsAnInput) {
  group.host.folderEntries = {{"WORK0001.MUS", false}, {"work0002.mus", false}, {"WORK0003.MUS", false},
                              {"WORK0004.MUS", true},  {"WORKSHOP.MUS", false}, {"WORK12345.MUS", false}};
  EXPECT_EQ(group.findings(),
            "WORK0003.MUS: is a result, and the report has no system for it\n"
            "WORK12345.MUS: is a result, and the report has no system for it\n");
}

TEST_F(Verify, AChangedReportIsReported) {
  std::string report = group.host.file(reportFile);
  report.replace(report.find("STAVESUP=2"), 10, "STAVESUP=1");
  group.host.addFile(reportFile, report);
  EXPECT_EQ(
      group.findings(),
      "KivSystem2.TXT: line 11 is \"SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\DUO001.MUS\"; by "
      "an analysis of the inputs it is \"SYSTEM=1,INSTRID=102,NEWSTAFF=1,STAVESUP=2,STAFF=1,FILE=C:\\M\\"
      "DUO001.MUS\"\n");
}

TEST_F(Verify, AReportOfAnotherDayIsTheSame) {
  std::string report = group.host.file(reportFile);
  report.replace(report.find("03-07-1994"), 10, "12-31-2001");
  group.host.addFile(reportFile, report);
  EXPECT_EQ(group.findings(), "");
}

TEST_F(Verify, AMissingReportProvesNothing) {
  group.host.deleteFile(reportFile);
  EXPECT_EQ(group.findings().substr(0, 31), "KivSystem2.TXT: cannot be read\n");
}

TEST_F(Verify, AReportThatListsAStaffTwiceIsReported) {
  std::string report = group.host.file(reportFile);
  report += "SYSTEM=3,INSTRID=101,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\DUO002.MUS\r\n";
  group.host.addFile(reportFile, report);
  EXPECT_EQ(group.findings(),
            "KivSystem2.TXT: line 19 is \"SYSTEM=3,INSTRID=101,NEWSTAFF=1,STAVESUP=1,STAFF=1,FILE=C:\\M\\DUO002.MUS\"; "
            "by an analysis of the inputs it is missing\n");
}

TEST_F(Verify, AChangedVerdictIsReported) {
  group.host.addFile(verdictFile, "CONSISTENCY=YES\r\nMULTIFILE=NO\r\n");
  EXPECT_EQ(group.findings(),
            "KivSystem1.TXT: line 1 is \"CONSISTENCY=YES\"; by an analysis of the inputs it is \"CONSISTENCY=NO\"\n");
}

TEST_F(Verify, AnInputThatCannotBeReadIsReported) {
  group.host.deleteFile("C:\\M\\DUO002.MUS");
  EXPECT_EQ(group.findings(), "DUO002.MUS: cannot be read\n");
}

TEST_F(Verify, AResultWithoutAnyMusicIsNotProved) {
  group.replaceResult(1, "");
  EXPECT_NE(group.findings().find("WORK0001.MUS: has a structural error at item 0"), std::string::npos);
}

TEST_F(Verify, NothingIsWrittenAndNoMessageShown) {
  group.host.messages.clear();
  group.host.calls.clear();
  const std::string before = group.everythingWritten();
  group.verify();
  EXPECT_EQ(group.everythingWritten(), before);
  EXPECT_TRUE(group.host.messages.empty());
  EXPECT_EQ(group.host.calls, std::vector<std::string>{"list C:\\OUT\\"});
}

TEST(VerifyStrangeGroups, TwoStavesOfOneInstrumentAreNoProof) {
  ConvertedGroup group(
      {{"A1.MUS",
        page("staff 2 at 0 lines 5 instrument 7\nnote 2 at 5\nstaff 1 at 0 lines 5 instrument 7\nnote 1 at 5\n"
             "barline 1 at 0 spans 2\nbarline 1 at 9 spans 1\n")},
       {"A2.MUS", page("staff 1 at 0 lines 5 instrument 8\nnote 1 at 5\nbarline 1 at 0 spans 1\n")}});
  EXPECT_NE(group.findings().find("cannot be converted: it has two staves of instrument 7"), std::string::npos);
}

TEST(VerifyStrangeGroups, TwoStavesOfOneNumberAreNoProof) {
  ConvertedGroup group({{"A1.MUS", page("staff 1 at 0 instrument 7\nnote 1 at 5\nbarline 1 at 0 spans 1\n"
                                        "staff 1 at 0 instrument 8\n")}});
  EXPECT_NE(group.findings().find("KivSystem2.TXT: lists staff 1 of C:\\M\\A1.MUS more than once"), std::string::npos);
}

// No system reaches a staff below all others, so that it keeps the system that its file gives it.
TEST(VerifyStrangeGroups, AReportWithAGapIsNoProof) {
  ConvertedGroup group({{"A1.MUS", page("staff 0 at 0 instrument 9 p18 -3\nstaff 1 at 0 instrument 7\nnote 1 at 5\n"
                                        "barline 1 at 0 spans 1\n")},
                        {"A2.MUS", page("staff 1 at 0 instrument 8\nnote 1 at 5\nbarline 1 at 0 spans 1\n")}});
  EXPECT_NE(group.findings().find("KivSystem2.TXT: has a system 5, which no conversion reaches"), std::string::npos)
      << group.findings();
}

}  // namespace
}  // namespace kiv::test
