#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"
#include "tests/console/json_schema.h"

namespace kiv::test {
namespace {

/// Three pages of a flute, with a cue, over a staff without an id.
class ConsoleFix : public ConsoleConvert {
 protected:
  void SetUp() override {
    for (const char* file : {"x1.mus", "x2.mus", "x3.mus"}) {
      addPage(file, text("101", ""));
    }
  }
  static std::string text(const std::string& flute, const std::string& lower) {
    return "staff 2 at 0 instrument " + flute + "\nstaff 1 at 0" + (lower.empty() ? "" : " instrument " + lower) +
           "\nbarline 1 at 0 spans 2\nitem 2 1 30 1 -2 0 1 0 0 0 0 0 " + flute + "\nitem 10 2 -4 0 " + flute + " 0.7\n";
  }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
  void expectUnchanged() const {
    for (const char* file : {"x1.mus", "x2.mus", "x3.mus"}) {
      EXPECT_EQ(place.read(file), page(text("101", ""))) << file;
    }
  }

  const std::string head = "file,system,staff,item,what,problem,old_id,new_id,confidence,reason\n";
};

TEST_F(ConsoleFix, WritesCorrectedCopiesAndSaysWhatHasChanged) {
  place.write("c.csv", head +
                           "X1.MUS,1,1,2,staff,zero,0,102,sure,\"below 101, as everywhere\"\n"
                           "X2.MUS,2,1,4,cue,undefined,101,102,likely,\n");
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--corrections", "c.csv", "-o", "fixed"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.error, "kivsys: made the folder fixed\n");
  EXPECT_EQ(ended.out,
            "x1.mus: 1 id changed, written to fixed/x1.mus\n  item 2: staff 1: 0 -> 102\n"
            "x2.mus: 1 id changed, written to fixed/x2.mus\n  item 4: cue in staff 1: 101 -> 102\n"
            "2 ids changed in 2 pages\n");
  EXPECT_EQ(place.read("fixed/x1.mus"), page(text("101", "102")));
  EXPECT_EQ(filesIn(place.path() / "fixed"), (Names{"x1.mus", "x2.mus"}));
  expectUnchanged();
}

TEST_F(ConsoleFix, AMappedIdChangesEverywhereItIsReferredTo) {
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "101=7", "--set", "x1.mus:1=5", "-o", "f"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(place.read("f/x1.mus"), page(text("7", "5")));
  EXPECT_EQ(place.read("f/x2.mus"), page(text("7", "")));
}

TEST_F(ConsoleFix, WarnsOfIdsThatStandTwiceInASystemNow) {
  for (const Names& how : {Names{"-o", "f"}, Names{"--dry-run", "-o", "g"}}) {
    Names command = {"fix", "x1.mus", "x2.mus", "--set", "x1.mus:1=5", "--set", "x2.mus:1=101"};
    command.insert(command.end(), how.begin(), how.end());
    const Ended ended = place.kivsys(command);
    EXPECT_EQ(ended.status, 0);
    const std::string words =
        how.front() == "-o" ? "id 101 stands twice in 1 system now" : "id 101 would stand twice in 1 system";
    EXPECT_NE(ended.error.find("kivsys: warning: " + words + ", first in x2.mus: system 2\n"), std::string::npos)
        << ended.error;
  }
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "0=101", "-o", "h", "--json"});
  Json all = Json::parse(ended.out);
  EXPECT_EQ(schemaErrors(all, "fix"), Names());
  ASSERT_EQ(all["warnings"].size(), 1U) << all;
  EXPECT_EQ(all["warnings"][0]["text"], "id 101 stands twice in 2 systems now, first in x1.mus: system 1");
  EXPECT_EQ(all["warnings"][0]["systems"], 2);
}

TEST_F(ConsoleFix, WarnsOfNoIdThatStoodTwiceBefore) {
  addPage("x4.mus", "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 101\nbarline 1 at 0 spans 2\n");
  const Ended ended = place.kivsys({"fix", "x1.mus", "x4.mus", "--map", "101=7", "--set", "x1.mus:1=9", "-o", "f"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.error.find("warning: id 7 stands twice in 1 system now, first in x4.mus"), std::string::npos)
      << "it is a new id there: " << ended.error;
  EXPECT_EQ(
      place.kivsys({"fix", "x1.mus", "x4.mus", "--set", "x1.mus:1=101", "--dry-run", "-o", "g"}).error.find("system 2"),
      std::string::npos);
}

TEST_F(ConsoleFix, APageWithoutACorrectionIsCopied) {
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "x2.mus", "--set", "x1.mus:1=5", "--out", "f"}).status, 0);
  EXPECT_EQ(place.read("f/x2.mus"), place.read("x2.mus"));
}

TEST_F(ConsoleFix, ARowOfAPageInAnotherFolderRefusesTheRun) {
  place.write("c.csv", head + "/somewhere/else/X1.MUS,1,1,2,staff,zero,0,102,sure,\n");
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--corrections", "c.csv", "-o", "fixed"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: c.csv:2: /somewhere/else/X1.MUS is none of the pages\n");
  expectUnchanged();
  place.write("c.csv", head + path("x1.mus") + ",1,1,2,staff,zero,0,102,sure,\n");
  const Ended named = place.kivsys({"fix", "x1.mus", "x2.mus", "--corrections", "c.csv", "-o", "fixed"});
  EXPECT_EQ(named.status, 0) << named.error;
}

TEST_F(ConsoleFix, OneCorrectionThatDoesNotFitRefusesTheWholeRun) {
  place.write("c.csv", head +
                           "X1.MUS,1,1,2,staff,zero,0,102,sure,\n"
                           "X2.MUS,1,1,2,staff,zero,66,102,sure,\n"
                           "X2.MUS,1,9,,staff,zero,,102,sure,\n"
                           "Y2.MUS,1,1,2,staff,zero,0,102,sure,\n");
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--corrections", "c.csv", "-o", "fixed"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(ended.error,
            "kivsys: c.csv:3: staff 1 at item 2 of X2.MUS has the id 0, not 66\n"
            "kivsys: c.csv:4: X2.MUS has no staff 9\nkivsys: c.csv:5: Y2.MUS is none of the pages\n");
  EXPECT_FALSE(fs::exists(place.path() / "fixed"));
}

TEST_F(ConsoleFix, ATableIsReadAsSpreadsheetsWriteIt) {
  place.write("c.csv",
              "\xEF\xBB\xBF"
              "file;staff;new_id;confidence\r\n\"X1.MUS\";1;102;guess\r\nX2.MUS;1;;guess\r\n");
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "x2.mus", "--corrections", "c.csv", "-o", "f"}).status, 0);
  EXPECT_EQ(place.read("f/x1.mus"), page(text("101", "102")));
  const Ended sure =
      place.kivsys({"fix", "x1.mus", "--corrections", "-", "--only", "sure", "-o", "s"}, ".", place.read("c.csv"));
  EXPECT_EQ(sure.status, 0) << sure.error;
  EXPECT_TRUE(
      sure.out.ends_with("0 ids changed in 1 page\n1 row without a new id left out\n"
                         "1 row of less confidence left out\n"))
      << sure.out;
}

TEST_F(ConsoleFix, ADryRunWritesNothingAndSaysTheSame) {
  const Names command = {"fix", "x1.mus", "--map", "101=7", "-o", "f"};
  Names dry = command;
  dry.emplace_back("--dry-run");
  const Ended planned = place.kivsys(dry);
  EXPECT_EQ(planned.status, 0);
  EXPECT_EQ(planned.error, "");
  EXPECT_FALSE(fs::exists(place.path() / "f"));
  EXPECT_EQ(planned.out,
            "x1.mus: 3 ids would be changed\n  item 1: staff 2: 101 -> 7\n  item 4: cue in staff 1: 101 -> 7\n"
            "  item 5: number shown in staff 2: 101 -> 7\n3 ids would be changed in 1 page\n");
}

TEST_F(ConsoleFix, NoPageIsReplacedUnlessItIsForced) {
  place.write("f/x1.mus", "mine");
  const Names command = {"fix", "x1.mus", "--map", "101=7", "-o", "f"};
  EXPECT_EQ(place.kivsys(command).status, 2);
  EXPECT_EQ(place.read("f/x1.mus"), "mine");
  Names forced = command;
  forced.emplace_back("--force");
  EXPECT_EQ(place.kivsys(forced).status, 0);
  EXPECT_EQ(place.read("f/x1.mus"), page(text("7", "")));
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "101=7", "-o", ".", "--force"}).status, 2) << "over its input";
  expectUnchanged();
}

TEST_F(ConsoleFix, ADamagedPageRefusesTheRun) {
  place.write("x2.mus", place.read("x2.mus").substr(0, 60));
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "101=7", "-o", "f"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error, "kivsys: " + path("x2.mus") + " is damaged; kivsys recover saves what it still holds\n");
}

TEST_F(ConsoleFix, WrongUsageIsNamed) {
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "-o", "f"}).status, 2);
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "101=7"}).status, 2);
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "101=0", "--set", "x1.mus", "-o", "f"}).error,
            "kivsys: --set x1.mus: not PAGE:STAFF=ID with an id from 1 to 32767\n"
            "kivsys: --map 101=0: not OLD=NEW with a new id from 1 to 32767\n");
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "40000=5", "-o", "f"}).error,
            "kivsys: --map 40000=5: the old id is no whole number from -32768 to 32767\n");
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--corrections", "none.csv", "-o", "f"}).error,
            "kivsys: cannot read none.csv: No such file or directory\n");
}

TEST_F(ConsoleFix, ASetIdIsThatOfTheFileThatIsNamed) {
  place.write("old/x1.mus", place.read("x1.mus"));
  const Ended other = place.kivsys({"fix", "x1.mus", "--set", "old/x1.mus:1=99", "-o", "f"});
  EXPECT_EQ(other.status, 2);
  EXPECT_EQ(other.error, "kivsys: --set old/x1.mus:1=99: old/x1.mus is none of the pages\n");
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--set", "nowhere/x1.mus:1=99", "-o", "f"}).status, 2);
  EXPECT_FALSE(fs::exists(place.path() / "f"));
  EXPECT_EQ(place.kivsys({"fix", "old/x1.mus", "--set", "old/X1.MUS:1=99", "-o", "f"}).status, 0);
  EXPECT_EQ(place.kivsys({"fix", "old/x1.mus", "--set", "X1.MUS:1=99", "-o", "g"}).status, 0);
}

TEST_F(ConsoleFix, OnlySureCorrectionsAreUsedHoweverTheOthersAreWritten) {
  for (const std::string word : {"Guess", "LIKELY"}) {
    const std::string table = "file,staff,new_id,Confidence\nX1.MUS,1,99," + word + "\n";
    const Ended ended = place.kivsys({"fix", "x1.mus", "--corrections", "-", "--only", "sure", "-o", word}, ".", table);
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_TRUE(ended.out.ends_with("0 ids changed in 1 page\n1 row of less confidence left out\n")) << ended.out;
  }
  const Ended unknown = place.kivsys({"fix", "x1.mus", "--corrections", "-", "--only", "sure", "-o", "f"}, ".",
                                     "file,staff,new_id,confidence\nX1.MUS,1,99,unsure\n");
  EXPECT_EQ(unknown.status, 2);
  EXPECT_EQ(unknown.error, "kivsys: -:2: confidence is \"unsure\", not sure, likely or guess\n");
}

TEST_F(ConsoleFix, JsonHasEveryChange) {
  const Ended ended = place.kivsys({"fix", "--json", "x1.mus", "--set", "x1.mus:1=5", "-o", "f"});
  const auto object = Json::parse(ended.out);
  EXPECT_EQ(schemaErrors(object, "fix"), Names());
  EXPECT_EQ(object["pages"][0]["written"], path("f/x1.mus"));
  EXPECT_EQ(object["pages"][0]["changes"],
            Json::parse(R"([{"item": 2, "what": "staff", "staff": 1, "old_id": 0, "new_id": 5}])"));
}

}  // namespace
}  // namespace kiv::test
