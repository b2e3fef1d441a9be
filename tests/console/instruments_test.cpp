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

/// A staff that begins at 10, with its name.
std::string staff(int number, int instrument, const std::string& name) {
  const std::string n = std::to_string(number);
  return "staff " + n + " at 10 size 1 lines 5 instrument " + std::to_string(instrument) + "\nclef " + n +
         " at 12\nkeysignature " + n + " at 15 key -2\n" +
         (name.empty() ? "" : "text " + n + " at 2 p4 4 \"" + name + "\"\n");
}

std::string joined(int staves) {
  return "barline 1 at 10 spans " + std::to_string(staves) + "\n";
}

/// Instruments with names, in all commands that show them.
class NamedInstruments : public ::testing::Test {
 protected:
  void SetUp() override {
    place.write("X1.MUS", page(staff(2, 101, "Fl\xC3\xB6te") + staff(1, 108, "Viola") + joined(2)));
    place.write("X2.MUS",
                page(staff(2, 101, "Fl.") + staff(1, 108, "") + "rest 1 at 30 kind -2 cue 101\n" + joined(2)));
    place.write("X3.MUS", page(staff(1, 108, "Vla") + joined(1)));
  }
  Ended onPages(Lines arguments) const {
    arguments.insert(arguments.end(), {"X1.MUS", "X2.MUS", "X3.MUS"});
    return place.kivsys(arguments);
  }
  std::string shown(const Lines& arguments) const {
    const Ended ended = onPages(arguments);
    EXPECT_EQ(ended.status, 0) << ended.error;
    return ended.out;
  }
  Json object(const Lines& arguments) const { return Json::parse(shown(arguments)); }

  Workplace place;
};

TEST_F(NamedInstruments, AreListedInATable) {
  EXPECT_EQ(shown({"instruments"}),
            "order   id  name         systems  first           last            clefs   lines  size  keys  cued_by\n"
            "    1  101  Fl\xC3\xB6te (Fl.)  1, 2     X1.MUS staff 2  X2.MUS staff 2  treble  5      1     2b    108\n"
            "    2  108  Viola (Vla)  1 to 3   X1.MUS staff 1  X3.MUS staff 1  treble  5      1     2b    -\n");
}

TEST_F(NamedInstruments, AreListedAsCommaSeparatedValues) {
  EXPECT_EQ(shown({"instruments", "--csv"}),
            "order,id,name,abbreviation,systems,staves,first_file,first_system,first_staff,first_item,last_file,"
            "last_system,last_staff,last_item,clefs,lines,size,keys,cued_by\n"
            "1,101,Fl\xC3\xB6te,Fl.,\"1, 2\",2,X1.MUS,1,2,1,X2.MUS,2,2,1,treble,5,1,2b,108\n"
            "2,108,Viola,Vla,1 to 3,3,X1.MUS,1,1,5,X3.MUS,3,1,1,treble,5,1,2b,\n");
}

TEST_F(NamedInstruments, AreListedAsJson) {
  const Json all = object({"instruments", "--json"});
  EXPECT_EQ(schemaErrors(all, "instruments"), Lines());
  EXPECT_EQ(all["schema_version"], 2);
  EXPECT_EQ(all["instruments"], 2) << "the number, as in all commands";
  ASSERT_EQ(all["instrument_list"].size(), 2U);
  const Json& flute = all["instrument_list"][0];
  EXPECT_EQ(flute["order"], 1);
  EXPECT_EQ(flute["id"], 101);
  EXPECT_EQ(flute["name"], "Fl\xC3\xB6te");
  EXPECT_EQ(flute["abbreviation"], "Fl.");
  EXPECT_EQ(flute["systems"], Json::parse(R"([{"first": 1, "last": 2}])"));
  EXPECT_EQ(flute["last"]["file"], place.capitals("X2.MUS"));
  EXPECT_EQ(flute["last"]["system"], 2);
  EXPECT_EQ(flute["last"]["staff"], 2);
  EXPECT_EQ(flute["last"]["item"], 1);
  EXPECT_EQ(flute["clefs"], Json::parse(R"([{"name": "treble", "kind": 0, "height": 0}])"));
  EXPECT_EQ(flute["keys"], Json::parse("[-2]"));
  EXPECT_EQ(flute["cued_by"], Json::parse("[108]"));
}

TEST_F(NamedInstruments, TheListWritesNoFile) {
  const auto before = filesIn(place.path());
  for (const char* format : {"--csv", "--json"}) {
    shown({"instruments", format});
  }
  shown({"instruments"});
  EXPECT_EQ(filesIn(place.path()), before);
}

TEST_F(NamedInstruments, AreThoseOfANamesFileToo) {
  place.write("names.txt", "X1.MUS\nX2.MUS\nX3.MUS\n");
  EXPECT_EQ(place.kivsys({"instruments", "--names", "names.txt"}).out, shown({"instruments"}));
}

TEST_F(NamedInstruments, OfACriticalEndAreNotListed) {
  place.write("X4.MUS", page("words 99\n"));
  const Ended table = onPages({"instruments", "X4.MUS"});
  EXPECT_EQ(table.status, 1);
  EXPECT_EQ(table.out, "");
  const Ended json = onPages({"instruments", "--json", "X4.MUS"});
  EXPECT_EQ(json.status, 1);
  EXPECT_EQ(schemaErrors(Json::parse(json.out), "instruments"), Lines());
  EXPECT_TRUE(Json::parse(json.out)["instrument_list"].is_null());
}

TEST_F(NamedInstruments, WrongUsageIsRefused) {
  EXPECT_EQ(place.kivsys({"instruments"}).status, 2);
  EXPECT_EQ(onPages({"instruments", "--csv", "--json"}).status, 2);
  EXPECT_EQ(onPages({"instruments", "GONE1.MUS"}).status, 2);
}

TEST_F(NamedInstruments, TheHelpFitsEightyColumns) {
  const std::string help = place.kivsys({"instruments", "--help"}).out;
  std::istringstream footer(help.substr(help.find("Analyzes the pages")));
  for (std::string line; std::getline(footer, line);) {
    EXPECT_LE(line.size(), 80U) << line;
  }
}

TEST_F(NamedInstruments, AreInTheLayoutsOfAnAnalysis) {
  const std::string out = shown({"analyze"});
  EXPECT_NE(out.find("\n     101 (Fl\xC3\xB6te), 108 (Viola)\n"), std::string::npos) << out;
  EXPECT_NE(out.find("\n     A without 101 (Fl\xC3\xB6te)\n"), std::string::npos) << out;
  EXPECT_NE(
      place.kivsys({"analyze", "X1.MUS"}).out.find("Layouts: all alike in 1 system: 101 (Fl\xC3\xB6te), 108 (Viola)\n"),
      std::string::npos);
}

TEST_F(NamedInstruments, AreInTheJsonOfAnAnalysis) {
  const Json list = object({"instruments", "--json"})["instrument_list"];
  const Json analysis = object({"analyze", "--json"});
  EXPECT_EQ(schemaErrors(analysis, "analyze"), Lines());
  EXPECT_EQ(analysis["instrument_list"], list);
  Lines records;
  std::istringstream lines(shown({"analyze", "--jsonl"}));
  for (std::string line; std::getline(lines, line);) {
    Json record = Json::parse(line);
    EXPECT_EQ(schemaErrors(record, "line"), Lines());
    records.push_back(record["record"]);
    if (records.back() == "instrument") {
      record.erase("record");
      record.erase("schema_version");
      EXPECT_NE(std::find(list.begin(), list.end(), record), list.end()) << line;
    }
  }
  EXPECT_EQ(std::count(records.begin(), records.end(), "instrument"), 2);
}

TEST_F(NamedInstruments, AreInADryRun) {
  const std::string out = shown({"convert", "--dry-run"});
  EXPECT_TRUE(out.ends_with("\nNames: 101 (Fl\xC3\xB6te), 108 (Viola)\n")) << out;
  const Json planned = object({"convert", "--dry-run", "--json"});
  EXPECT_EQ(schemaErrors(planned, "convert"), Lines());
  EXPECT_EQ(planned["instrument_list"], object({"instruments", "--json"})["instrument_list"]);
}

TEST_F(NamedInstruments, AreInAChart) {
  const std::string text = shown({"chart"});
  EXPECT_NE(text.find("\n     system  1 2 3\n"
                      "Fl\xC3\xB6te   101 |#|#|.|\n"
                      "Viola   108 |#|#|#|\n"),
            std::string::npos)
      << text;
  const std::string drawing = shown({"chart", "--out", "-"});
  EXPECT_NE(drawing.find(">Fl\xC3\xB6te 101</text>"), std::string::npos) << drawing;
}

TEST_F(NamedInstruments, AreInASurvey) {
  std::filesystem::create_directory(place.path() / "lib");
  for (const char* file : {"X1.MUS", "X2.MUS", "X3.MUS"}) {
    place.write(std::string("lib/") + file, place.read(file));
  }
  EXPECT_EQ(
      place.kivsys({"survey", "lib"}).out,
      "folder  prefix  pages  systems  instruments  consistent  multifile  convert  problems  files  names, bad pages\n"
      "lib     X           3        3            2          no         no      yes         2      3  101 "
      "(Fl\xC3\xB6te), 108 "
      "(Viola)\n1 piece, 1 needs a conversion, 0 bad\n");
  const std::string csv = place.kivsys({"survey", "lib", "--csv"}).out;
  EXPECT_NE(csv.find(",\"101 (Fl\xC3\xB6te), 108 (Viola)\",,yes,\n"), std::string::npos) << csv;
  const Json survey = Json::parse(place.kivsys({"survey", "lib", "--json", "--resume", "state"}).out);
  EXPECT_EQ(schemaErrors(survey, "survey"), Lines());
  EXPECT_EQ(survey["pieces"][0]["names"],
            Json::parse("[{\"id\": 101, \"name\": \"Fl\xC3\xB6te\"}, {\"id\": 108, \"name\": \"Viola\"}]"));
  EXPECT_EQ(Json::parse(place.kivsys({"survey", "lib", "--json", "--resume", "state"}).out), survey);
}

TEST_F(NamedInstruments, OfHostileTextsAreOneHarmlessLine) {
  place.write("Y1.MUS", page(staff(1, 101, "=Evil\\x1B[31m\\x0AFlute") + joined(1)));
  const std::string table = place.kivsys({"instruments", "Y1.MUS"}).out;
  EXPECT_NE(table.find("  =Evil\\x1B[31m\\nFlute  "), std::string::npos) << table;
  EXPECT_EQ(std::count(table.begin(), table.end(), '\n'), 2);
  const std::string csv = place.kivsys({"instruments", "--csv", "Y1.MUS"}).out;
  EXPECT_NE(csv.find(",\"'=Evil\x1B[31m\nFlute\","), std::string::npos) << csv;
  for (const Lines& arguments : {Lines{"analyze", "Y1.MUS"}, Lines{"chart", "Y1.MUS"}}) {
    const std::string out = place.kivsys(arguments).out;
    EXPECT_NE(out.find("=Evil\\x1B[31m"), std::string::npos) << out;
    EXPECT_EQ(out.find('\x1B'), std::string::npos) << out;
  }
}

TEST(InstrumentList, OfTheExampleAsTheReferenceShowsIt) {
  const Workplace place;
  Lines arguments = buildExample(place);
  arguments.insert(arguments.begin(), "instruments");
  EXPECT_EQ(place.kivsys(arguments).out, shownInReference("kivsys instruments SYMPH*.MUS"));
}

}  // namespace
}  // namespace kiv::test
