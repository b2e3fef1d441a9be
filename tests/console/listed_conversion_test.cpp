#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "base/sha256.h"
#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

const std::string fluteInBars =
    "staff 1 at 0 size 1 lines 5 instrument 101\nclef 1 at 2\ntimesignature 1 at 9 upper 3 lower 4\n"
    "note 1 at 20 duration 3\nbarline 1 at 0 spans 1\nbarline 1 at 60 spans 1\n";

/// Pages of a flute and a bass, and a table that has a harp and a piccolo as well.
class ListedConversionRun : public ConsoleConvert {
 protected:
  void SetUp() override {
    fs::create_directory(place.path() / "out");
    place.write("l.csv", head + "90,Piccolo,,,,\n101,Flute,,,,\n102,Bass,treble,1,3,7#\n105,Harp,bass-2,1,0.75,3b\n");
  }
  Ended convert(Names options) const {
    options.insert(options.begin(), "convert");
    options.insert(options.end(), {"--result", "out/WORK0001.MUS", "--no-instr-number"});
    return place.kivsys(options);
  }
  void expectNothingWritten(const Names& files) const {
    EXPECT_EQ(filesIn(place.path()), files);
    EXPECT_EQ(filesIn(place.path() / "out"), Names{});
  }

  const std::string head = "id,name,clefs,lines,size,keys\n";
};

TEST_F(ListedConversionRun, ASilentInstrumentHasACompleteRestStaffInEveryResult) {
  addPage("x1.mus", fluteInBars);
  place.write("l.csv", head + "101,Flute,,,,\n105,Harp,bass-2,1,0.75,3b\n");
  const Ended ended = convert({"x1.mus", "--layout", "l.csv"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.error.starts_with("kivsys: note: silent on all pages: 105 Harp\n")) << ended.error;
  EXPECT_EQ(
      dumped("out/WORK0001.MUS"),
      asDumped("staff 1 at 0 size 0.75 lines 1 instrument 105\nbarline 1 at 0 spans 2\nclef 1 at 2 height -2 kind 1\n"
               "keysignature 1 at 9 key -3\ntimesignature 1 at 9 upper 3 lower 4\n"
               "rest 1 at 20 kind -2 duration 3 p9 -1\nbarline 1 at 60 spans 1 p10 5 p11 1\n"
               "staff 2 at 0 size 1 lines 5 instrument 101\nclef 2 at 2\n"
               "timesignature 2 at 9 upper 3 lower 4\nnote 2 at 20 duration 3\nbarline 2 at 60 spans 1\n"))
      << "also though the page could be used as it is";
}

TEST_F(ListedConversionRun, ResultsHaveAllListedInstrumentsInTheOrderOfTheIds) {
  addTwo();
  const Ended ended = convert({"x1.mus", "x2.mus", "--layout", "l.csv", "--dry-run"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(ended.out.find(": rest 90, real 101 102, rest 105\n"), std::string::npos) << ended.out;
  EXPECT_NE(ended.out.find(": rest 90 101, real 102, rest 105\n"), std::string::npos) << ended.out;
  EXPECT_TRUE(ended.out.ends_with("Names: 90 (Piccolo), 105 (Harp)\n")) << ended.out;
}

TEST_F(ListedConversionRun, AnInstrumentThatSomePageHasLooksAsItsStavesDo) {
  addTwo();
  EXPECT_EQ(convert({"x1.mus", "x2.mus"}).status, 0);
  const std::string first = place.read("out/WORK0001.MUS");
  const std::string second = place.read("out/WORK0002.MUS");
  place.write("l.csv", head + "101,Flute,bass,1,3,7#\n102,Bass,treble,1,3,7#\n");
  const Ended ended = convert({"x1.mus", "x2.mus", "--layout", "l.csv"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error.find("silent"), std::string::npos);
  EXPECT_EQ(place.read("out/WORK0001.MUS"), first);
  EXPECT_EQ(place.read("out/WORK0002.MUS"), second);
}

TEST_F(ListedConversionRun, AnInstrumentThatIsNotListedRefusesTheRunWithItsPlaces) {
  addTwo();
  addPage("x3.mus", "staff 1 at 0 instrument 66\nstaff 2 at 0\nbarline 1 at 0 spans 2\n");
  const std::string table = (place.path() / "l.csv").string();
  for (const char* const folder : {".", "new"}) {
    const Ended ended = convert({"x1.mus", "x2.mus", "x3.mus", "--layout", "l.csv", "--folder", folder});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, "kivsys: staves have no id: x3.mus staff 2\nkivsys: instrument 66 is not in " + table +
                               ": x3.mus staff 1\nkivsys: every staff needs an id of " + table +
                               ": add to it what is missing, or correct the ids; kivsys suggest --layout proposes "
                               "some\n");
    expectNothingWritten({"l.csv", "out", "x1.mus", "x2.mus", "x3.mus"});
  }
}

TEST_F(ListedConversionRun, StavesWithoutAnIdMayBeAllowed) {
  addPage("x1.mus", "staff 2 at 0 instrument 101\nstaff 1 at 0\nbarline 1 at 0 spans 2\n");
  EXPECT_EQ(convert({"x1.mus", "--layout", "l.csv", "--dry-run"}).status, 2);
  EXPECT_EQ(convert({"x1.mus", "--layout", "l.csv", "--dry-run", "--allow-zero-id"}).status, 0);
}

TEST_F(ListedConversionRun, AHiddenStaffIsNotThere) {
  addPage("x1.mus", "staff 2 at 0 lines -1 instrument 66\nstaff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n");
  const Ended ended = convert({"x1.mus", "--layout", "l.csv", "--dry-run"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(ended.out.find("rest 90, real 101, rest 102 105"), std::string::npos) << ended.out;
}

TEST_F(ListedConversionRun, IdsAreComparedAfterTheirCorrections) {
  addTwo();
  addPage("x3.mus", "staff 1 at 0 instrument 66\nbarline 1 at 0 spans 1\n");
  place.write("c.csv", "file,staff,new_id\nx3.mus,1,102\n");
  EXPECT_EQ(convert({"x1.mus", "x2.mus", "x3.mus", "--layout", "l.csv", "--corrections", "c.csv"}).status, 0);
}

TEST_F(ListedConversionRun, AnErrorInTheTableIsOneOfItsLine) {
  addTwo();
  const std::string table = (place.path() / "l.csv").string();
  for (const auto& [text, error] : {std::pair{"id,clefs\n101,\n102,soprano\n", ":3: \"soprano\" is no clef"},
                                    std::pair{"id\n101\n101\n", ":3: the id 101 is listed twice"}}) {
    place.write("l.csv", text);
    const Ended ended = convert({"x1.mus", "x2.mus", "--layout", "l.csv"});
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error, "kivsys: " + table + error + "\n");
    expectNothingWritten({"l.csv", "out", "x1.mus", "x2.mus"});
  }
}

TEST_F(ListedConversionRun, AProofNeedsTheTableAndStatesIt) {
  addTwo();
  EXPECT_EQ(convert({"x1.mus", "x2.mus", "--layout", "l.csv", "--verify"}).status, 0);
  const Names verify = {"verify", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"};
  EXPECT_TRUE(place.kivsys(verify).out.starts_with("PROVED=NO\n"));
  Names listed = verify;
  listed.insert(listed.end(), {"--layout", "l.csv"});
  Names withSums = listed;
  withSums.insert(withSums.end(), {"--manifest", "sums.txt"});
  EXPECT_TRUE(place.kivsys(withSums).out.starts_with("PROVED=YES\n"));
  const std::string table = (place.path() / "l.csv").string();
  const std::string digest = sha256(place.read("l.csv"));
  EXPECT_TRUE(place.read("sums.txt").starts_with("# layout: " + table + ", SHA-256 " + digest + "\n"));
  EXPECT_TRUE(place.read("sums.txt").ends_with(digest + "  " + table + "\n"));
  listed.emplace_back("--json");
  EXPECT_EQ(Json::parse(place.kivsys(listed).out)["layout"],
            (Json{{"path", table}, {"sha256", digest}, {"instruments", 4}, {"silent", {90, 105}}}));
  place.write("l.csv", head + "90,Piccolo,,,,\n101,Flute,,,,\n105,Harp,bass-2,1,0.75,3b\n");
  EXPECT_NE(place.kivsys(listed).out.find("has staff 1 of instrument 102, which is not listed"), std::string::npos);
}

TEST_F(ListedConversionRun, JsonHasTheTable) {
  addTwo();
  const Json object = Json::parse(convert({"x1.mus", "x2.mus", "--layout", "l.csv", "--dry-run", "--json"}).out);
  EXPECT_EQ(object["layout"]["silent"], (Json{90, 105}));
  EXPECT_EQ(object["planned"][0]["staves"].size(), 4U);
}

TEST_F(ListedConversionRun, AnotherOrderThanThatOfTheIdsIsNoted) {
  addTwo();
  place.write("l.csv", "id\n102\n101\n");
  EXPECT_TRUE(convert({"x1.mus", "x2.mus", "--layout", "l.csv"})
                  .error.starts_with("kivsys: note: results have their instruments in the order of the ids, not in "
                                     "that of l.csv; kivsys fix --renumber changes the ids\n"));
}

TEST_F(ListedConversionRun, ListedInstrumentsCountTowardsTheStavesThatAResultCanHave) {
  addTwo();
  std::string table = "id\n";
  for (int id = 101; id <= 133; ++id) {
    table += std::to_string(id) + "\n";
  }
  place.write("l.csv", table);
  const Ended strict = convert({"x1.mus", "x2.mus", "--layout", "l.csv", "--strict"});
  EXPECT_EQ(strict.status, 3);
  EXPECT_NE(strict.error.find("33 staves"), std::string::npos) << strict.error;
  EXPECT_EQ(filesIn(place.path() / "out"), Names{});
  const Ended warned = convert({"x1.mus", "x2.mus", "--layout", "l.csv", "--json"});
  EXPECT_NE(warned.out.find("too-many-staves"), std::string::npos) << warned.out;
}

TEST_F(ListedConversionRun, TheTableIsNoOutputAndThePanelHasNone) {
  addTwo();
  fs::rename(place.path() / "l.csv", place.path() / "KivSystem1.TXT");
  EXPECT_EQ(convert({"x1.mus", "x2.mus", "--layout", "KivSystem1.TXT"}).status, 2);
  EXPECT_EQ(convert({"x1.mus", "x2.mus", "--layout", "KivSystem1.TXT", "--like-panel"}).status, 2);
  EXPECT_TRUE(place.read("KivSystem1.TXT").starts_with("id,name"));
}

}  // namespace
}  // namespace kiv::test
