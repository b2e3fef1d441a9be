#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

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
      {"created", {first, last}},
      {"next", nullptr},
      {"old_results", {{"replaced", 0}, {"left", Json::array()}}}};
  Json object = Json::parse(ended.out);
  for (const char* insight : {"paths", "problems", "schema_version"}) {
    EXPECT_EQ(object.erase(insight), 1U) << insight;
  }
  EXPECT_EQ(object, expected);
}

TEST_F(ConsoleConvert, JsonReportsThatNothingWasCreated) {
  addPage("x1.mus", bass);
  const Json object = Json::parse(place.kivsys({"convert", "--json", "x1.mus"}).out);
  EXPECT_EQ(object["end"], "normal");
  EXPECT_EQ(object["messages"], Json::array({message("information", qualifies)}));
  EXPECT_EQ(object["consistency"], true);
  EXPECT_EQ(object["created"], Json::array());
}

TEST_F(ConsoleConvert, JsonReportsHowAQuestionWasAnswered) {
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

}  // namespace
}  // namespace kiv::test
