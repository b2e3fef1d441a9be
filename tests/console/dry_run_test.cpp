#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;
namespace fs = std::filesystem;

class DryRun : public ::testing::Test {
 protected:
  Ended convertExample(std::vector<std::string> options) {
    std::vector<std::string> arguments = {"convert", "--result", "results/WORK0001.MUS"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.insert(arguments.end(), pages.begin(), pages.end());
    return place.kivsys(arguments);
  }

  Workplace place;
  std::vector<std::string> pages;
};

TEST_F(DryRun, TheExampleAsTheReferenceShowsItAndNothingIsTouched) {
  pages = buildExample(place);
  fs::create_directory(place.path() / "results");
  const auto before = filesIn(place.path());
  const Ended ended = convertExample({"--dry-run"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, shownAfter("cli.md", "kivsys convert --dry-run SYMPH*.MUS --result results/WORK0001.MUS"));
  EXPECT_EQ(ended.error.find("Created"), std::string::npos) << ended.error;
  EXPECT_EQ(filesIn(place.path()), before);
  EXPECT_EQ(filesIn(place.path() / "results"), std::vector<std::string>{});
}

TEST_F(DryRun, PredictsWhatAConversionWrites) {
  pages = buildExample(place);
  place.write("results/WORK0003.MUS", "old");
  place.write("KivSystem2.TXT", "old report");
  const Json planned = Json::parse(convertExample({"--dry-run", "--json"}).out);
  EXPECT_EQ(place.read("results/WORK0003.MUS"), "old");
  EXPECT_EQ(place.read("KivSystem2.TXT"), "old report");
  EXPECT_EQ(schemaErrors(planned, "convert"), std::vector<std::string>());
  EXPECT_EQ(planned["created"], Json::array());
  EXPECT_EQ(planned["dry_run"], true);
  const Json real = Json::parse(convertExample({"--json"}).out);
  EXPECT_EQ(schemaErrors(real, "convert"), std::vector<std::string>());
  ASSERT_EQ(planned["planned"].size(), real["created"].size());
  for (std::size_t r = 0; r < real["created"].size(); ++r) {
    const Json& result = planned["planned"][r];
    const std::string file = "results/WORK000" + std::to_string(r + 1) + ".MUS";
    EXPECT_EQ(result["file"], real["created"][r]);
    EXPECT_EQ(result["system"], r + 1);
    EXPECT_EQ(result["bytes"], place.read(file).size());
    EXPECT_EQ(result["replaces"], r == 2) << file;
  }
}

TEST_F(DryRun, EndsAsTheConversionWould) {
  pages = buildExample(place);
  const Ended ended = convertExample({"--dry-run", "--like-panel"});
  EXPECT_EQ(ended.status, 1) << "there is no folder for the results";
  EXPECT_NE(ended.error.find("critical: Open of output MUS file failed. Hit OK to terminate.\n"), std::string::npos);
  const Ended real = convertExample({"--like-panel"});
  EXPECT_EQ(ended.status, real.status);
  EXPECT_EQ(ended.error, real.error);
  EXPECT_EQ(ended.out, real.out);
}

TEST_F(DryRun, OfPagesThatQualifyPlansNothing) {
  place.write("X1.MUS", page("staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n"));
  const Ended ended = place.kivsys({"convert", "--dry-run", "X1.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 1\nSystems: 1\nInstruments: 1\n");
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{"X1.MUS"});
}

TEST_F(DryRun, IsNoOptionOfTrace) {
  place.write("X1.MUS", page("staff 1 at 0 instrument 101\n"));
  EXPECT_EQ(place.kivsys({"trace", "--dry-run", "X1.MUS"}).status, 2);
}

}  // namespace
}  // namespace kiv::test
