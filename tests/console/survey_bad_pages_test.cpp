#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/json_schema.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string head =
    "folder,prefix,pages,systems,instruments,consistent,multifile,problems,files,names,bad_pages,needs_conversion,"
    "reasons\n";

/// Surveys of pieces with pages that cannot be analyzed.
class SurveyOfBadPages : public ::testing::Test {
 protected:
  std::string survey(std::vector<std::string> options = {"--csv"}) const {
    options.insert(options.begin(), {"survey", "lib"});
    const Ended ended = place.kivsys(options);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.error, "");
    return ended.out;
  }

  Workplace place;
  const std::string solo = page("staff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 1\n");
  const std::string duo =
      page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
};

TEST_F(SurveyOfBadPages, NamesThem) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/A2.MUS", "broken");
  place.write("lib/A3A.MUS", duo);
  place.write("lib/A3B.MUS", "broken");
  EXPECT_EQ(survey(), head + "lib,A,3,-,-,-,-,1,4,,A2.MUS,-,A2.MUS (item 1: Structural error in MUS file)\n");
  EXPECT_EQ(survey({"--csv", "--keep-going"}), head +
                                                   "lib,A,3,1,1,yes,no,2,4,,\"A2.MUS, A3B.MUS, A3A.MUS\",no,"
                                                   "\"A2.MUS (item 1: Structural error in MUS file), A3B.MUS, A3A.MUS "
                                                   "(item 1: Structural error in MUS file)\"\n");
  EXPECT_EQ(
      survey({"--keep-going"}),
      "folder  prefix  pages  systems  instruments  consistent  multifile  convert  problems  files  names, bad pages\n"
      "lib     A           3        1            1         yes         no       no         2      4"
      "  bad: A2.MUS (item 1: Structural error in MUS file), A3B.MUS, A3A.MUS (item 1: Structural error in MUS "
      "file)\n1 piece, 0 need a conversion, 1 bad\n");
}

TEST_F(SurveyOfBadPages, HasThemInJsonWithTheirReasons) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/A2.MUS", "broken");
  const auto object = nlohmann::json::parse(survey({"--json", "--keep-going"}));
  EXPECT_EQ(schemaErrors(object, "survey"), std::vector<std::string>());
  const auto& piece = object.at("pieces").at(0);
  EXPECT_EQ(piece.at("files"), 2);
  EXPECT_EQ(piece.at("pages"), 2);
  EXPECT_EQ(piece.at("systems"), 1);
  ASSERT_EQ(piece.at("bad_pages").size(), 1U);
  EXPECT_EQ(piece.at("bad_pages").at(0).at("files"), nlohmann::json::array({"A2.MUS"}));
  EXPECT_EQ(piece.at("bad_pages").at(0).at("reason"), piece.at("problems").at(0));
}

TEST_F(SurveyOfBadPages, TriesThemAgain) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/A2.MUS", "broken");
  const std::vector<std::string> resumed = {"--csv", "--keep-going", "--resume", "state"};
  EXPECT_EQ(survey(resumed),
            head + "lib,A,2,1,1,yes,no,1,2,,A2.MUS,no,A2.MUS (item 1: Structural error in MUS file)\n");
  EXPECT_EQ(survey({"--csv", "--resume", "state"}),
            head + "lib,A,2,-,-,-,-,1,2,,A2.MUS,-,A2.MUS (item 1: Structural error in MUS file)\n");
}

}  // namespace
}  // namespace kiv::test
