#include <algorithm>
#include <filesystem>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;
using Lines = std::vector<std::string>;

constexpr const char* heads = "file,system,staff,item,what,problem,old_id,new_id,confidence,reason\n";

/// A system of three staves with names; the ids from the top down.
std::string groupOfIds(int flute, int viola, int bass) {
  const auto staff = [](int number, int id, int clef, const std::string& name) {
    const std::string n = std::to_string(number);
    return "staff " + n + " at 10 lines 5 instrument " + std::to_string(id) + "\nclef " + n + " at 12 kind " +
           std::to_string(clef) + "\ntext " + n + " at 1 p4 3 \"" + name + "\"\n";
  };
  return staff(3, flute, 0, "Fl\xC3\xB6te") + staff(2, viola, 2, "Viola") + staff(1, bass, 1, "Bass") +
         "barline 1 at 10 spans 3\n";
}

/// A group of eight pages. On the last two, an id is 0 and a cue refers to nobody.
class ConsoleSuggest : public ::testing::Test {
 protected:
  void SetUp() override {
    for (int number = 1; number <= 6; ++number) {
      place.write("x" + std::to_string(number) + ".mus", page(groupOfIds(101, 110, 112)));
    }
    place.write("x7.mus", page(groupOfIds(101, 0, 112)));
    place.write("x8.mus", page(groupOfIds(101, 110, 112) + "rest 3 at 30 kind -2 cue 1122\n"));
  }
  Ended suggest(Lines options) const {
    options.insert(options.begin(), "suggest");
    for (int number = 1; number <= 8; ++number) {
      options.push_back("x" + std::to_string(number) + ".mus");
    }
    return place.kivsys(options);
  }

  const std::string staffLine =
      "x7.mus,7,2,4,staff,zero,0,110,sure,\"between 101 Fl\xC3\xB6te and 112 Bass, as in 7 of 7 systems; named "
      "\"\"Viola\"\", alto clef\"\n";
  const std::string cueLine =
      "x8.mus,8,3,11,cue,undefined,1122,112,likely,\"no staff has the id 1122; 112 Bass is in the system, and one slip "
      "away\"\n";
  Workplace place;
};

TEST_F(ConsoleSuggest, PrintsATable) {
  const Ended ended = suggest({});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(
      ended.out,
      "Corrections: 2 (1 sure, 1 likely)\nUndecided: 0\n\n"
      "file    system  staff  item  what   problem    old id  new id  confidence  reason\n"
      "x7.mus       7      2     4  staff  zero       0       110     sure        between 101 Fl\xC3\xB6te and 112 "
      "Bass, as in 7 of 7 systems; named \"Viola\", alto clef\n"
      "x8.mus       8      3    11  cue    undefined  1122    112     likely      no staff has the id 1122; 112 "
      "Bass is in the system, and one slip away\n");
}

TEST_F(ConsoleSuggest, WritesCommaSeparatedValues) {
  const Ended ended = suggest({"-o", "corrections.csv"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(place.read("corrections.csv"), heads + staffLine + cueLine);
  EXPECT_EQ(ended.out, suggest({}).out) << "the table is printed, too";
  EXPECT_EQ(suggest({"-o", "-"}).out, heads + staffLine + cueLine);
}

TEST_F(ConsoleSuggest, ReplacesOnlyATableOfCorrections) {
  ASSERT_EQ(suggest({"-o", "corrections.csv"}).status, 0);
  EXPECT_EQ(suggest({"-o", "corrections.csv"}).status, 0) << "one of its own";
  place.write("notes.txt", "do not touch");
  const Ended ended = suggest({"-o", "notes.txt"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("is not a table of corrections, and is not replaced"), std::string::npos) << ended.error;
  EXPECT_EQ(place.read("notes.txt"), "do not touch");
  EXPECT_EQ(suggest({"-o", "x1.mus"}).status, 2);
}

TEST_F(ConsoleSuggest, PrintsJson) {
  const Ended ended = suggest({"--json"});
  const Json all = Json::parse(ended.out);
  EXPECT_EQ(schemaErrors(all, "suggest"), Lines());
  EXPECT_EQ(all["schema_version"], 2);
  ASSERT_EQ(all["corrections"].size(), 2U);
  EXPECT_EQ(all["corrections"][0],
            Json::parse(R"({"file": "x7.mus", "system": 7, "staff": 2, "item": 4, "what": "staff", "problem": "zero",
                            "old_id": 0, "new_id": 110, "confidence": "sure", "reason": "between 101 Flöte and 112 Bass, as in 7 of 7 systems; named \"Viola\", alto clef"})"));
  EXPECT_EQ(all["corrections"][1]["what"], "cue");
  EXPECT_EQ(all["undecided"], Json::array());
}

TEST_F(ConsoleSuggest, ListsWhatItCannotDecide) {
  const Lines two = {"suggest", "--json", "x7.mus"};
  const Json all = Json::parse(place.kivsys(two).out);
  EXPECT_EQ(schemaErrors(all, "suggest"), Lines());
  EXPECT_EQ(all["corrections"], Json::array());
  ASSERT_EQ(all["undecided"].size(), 1U);
  EXPECT_EQ(all["undecided"][0]["staff"], 2);
  EXPECT_EQ(all["undecided"][0]["candidates"], Json::array());
  const std::string table = place.kivsys({"suggest", "x7.mus"}).out;
  EXPECT_NE(table.find("\nNot decided:\nfile "), std::string::npos) << table;
}

TEST_F(ConsoleSuggest, TakesTheInstrumentsOfAList) {
  const Ended list = place.kivsys({"instruments", "--csv", "x1.mus"});
  place.write("list.csv", list.out);
  const Json all = Json::parse(place.kivsys({"suggest", "--json", "--layout", "list.csv", "x7.mus"}).out);
  ASSERT_EQ(all["corrections"].size(), 1U) << all;
  EXPECT_EQ(all["corrections"][0]["new_id"], 110);
}

TEST_F(ConsoleSuggest, RefusesAListThatIsWrongWithItsLine) {
  place.write("list.csv", "id,name\n101,Flute\nx,Viola\n");
  const Ended ended = suggest({"--layout", "list.csv", "-o", "corrections.csv"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("list.csv:3: \"x\" is no instrument id"), std::string::npos) << ended.error;
  EXPECT_FALSE(std::filesystem::exists(place.path() / "corrections.csv"));
  EXPECT_EQ(suggest({"--layout", "gone.csv"}).status, 2);
  place.write("good.csv", "id\n101\n");
  EXPECT_EQ(suggest({"--layout", "good.csv", "-o", "good.csv"}).status, 2) << "it is an input";
  EXPECT_EQ(place.read("good.csv"), "id\n101\n");
}

TEST_F(ConsoleSuggest, OnlyLooks) {
  const auto before = filesIn(place.path());
  std::filesystem::permissions(place.path(), std::filesystem::perms::owner_write,
                               std::filesystem::perm_options::remove);
  EXPECT_EQ(suggest({}).status, 0);
  EXPECT_EQ(suggest({"--json"}).status, 0);
  std::filesystem::permissions(place.path(), std::filesystem::perms::owner_write, std::filesystem::perm_options::add);
  EXPECT_EQ(filesIn(place.path()), before);
}

TEST_F(ConsoleSuggest, EscapesTextsOfPagesInItsTableOnly) {
  place.write("x7.mus", page(groupOfIds(101, 0, 112) + "text 2 at 1 p4 3 \"=1\\x1B[31m\"\n"));
  EXPECT_EQ(suggest({}).out.find('\x1B'), std::string::npos);
}

TEST_F(ConsoleSuggest, OfACriticalEndAreNull) {
  place.write("x9.mus", page("words 99\n"));
  const Ended ended = suggest({"--json", "x9.mus"});
  EXPECT_EQ(ended.status, 1);
  const Json all = Json::parse(ended.out);
  EXPECT_EQ(schemaErrors(all, "suggest"), Lines());
  EXPECT_TRUE(all["corrections"].is_null());
  EXPECT_EQ(suggest({"x9.mus"}).out, "");
}

TEST_F(ConsoleSuggest, ATableThatWasEditedIsNotReplaced) {
  EXPECT_EQ(suggest({"-o", "c.csv"}).status, 0);
  EXPECT_EQ(suggest({"-o", "c.csv"}).status, 0) << "it is the same";
  const std::string edited = place.read("c.csv") + "x1.mus,1,1,,staff,zero,,7,sure,mine\n";
  place.write("c.csv", edited);
  const Ended ended = suggest({"-o", "c.csv"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("c.csv exists and has other corrections, perhaps your own; name another file, or replace "
                             "it with --force\n"),
            std::string::npos)
      << ended.error;
  EXPECT_EQ(place.read("c.csv"), edited);
  EXPECT_EQ(suggest({"-o", "c.csv", "--force"}).status, 0);
  EXPECT_NE(place.read("c.csv"), edited);
}

TEST_F(ConsoleSuggest, WrongUsageIsRefused) {
  EXPECT_EQ(place.kivsys({"suggest"}).status, 2);
  EXPECT_EQ(suggest({"--json", "-o", "-"}).status, 2);
}

TEST_F(ConsoleSuggest, TheHelpFitsEightyColumns) {
  const std::string help = place.kivsys({"suggest", "--help"}).out;
  std::istringstream footer(help.substr(help.find("Analyzes the pages")));
  for (std::string line; std::getline(footer, line);) {
    EXPECT_LE(line.size(), 80U) << line;
  }
}

TEST_F(ConsoleSuggest, SaysWhatCanBeDoneWithTheTableThatIsWritten) {
  const std::string pages = " x1.mus x2.mus x3.mus x4.mus x5.mus x6.mus x7.mus x8.mus --corrections c.csv";
  const std::string result = " --result converted/WORK0001.MUS";
  EXPECT_TRUE(
      suggest({"-o", "c.csv"})
          .error.ends_with("Next: kivsys convert" + pages + result + "\n  or: kivsys fix" + pages + " -o fixed\n"));
  EXPECT_EQ(Json::parse(suggest({"-o", "c.csv", "--json"}).out)["next"], "kivsys convert" + pages + result);
  EXPECT_EQ(Json::parse(suggest({"--json"}).out)["next"], nullptr) << "no table is written";
  EXPECT_EQ(suggest({"-o", "-"}).error.find("Next:"), std::string::npos);
  EXPECT_EQ(suggest({"--corrections", "c.csv", "-o", "d.csv"}).error.find("Next:"), std::string::npos)
      << "nothing is left to correct";
}

}  // namespace
}  // namespace kiv::test
