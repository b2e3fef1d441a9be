#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/console/example_pages.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class SurveyState : public ::testing::Test {
 protected:
  Ended survey(const std::vector<std::string>& folders = {"lib"}, const std::string& state = "state") const {
    std::vector<std::string> arguments = {"survey", "--csv", "--resume", state};
    arguments.insert(arguments.end(), folders.begin(), folders.end());
    return place.kivsys(arguments);
  }
  /// The lines of the pieces.
  std::string lines() const {
    const Ended ended = survey();
    EXPECT_EQ(ended.status, 0) << ended.error;
    return ended.out.substr(ended.out.find('\n') + 1);
  }
  void setAge(const std::string& file, std::chrono::seconds age) const {
    fs::last_write_time(place.path() / file, now - age);
  }

  Workplace place;
  const fs::file_time_type now = fs::file_time_type::clock::now();
  const std::string duo =
      page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
  const std::string twice =
      page("staff 2 at 0 lines 5 instrument 7\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
};

TEST_F(SurveyState, AFileOfAnotherKindStaysAsItIs) {
  place.write("lib/A1.MUS", duo);
  const std::vector<std::string> contents = {"\n",
                                             "notes\n",
                                             "{}\n",
                                             "[1]",
                                             duo,
                                             "{\"kivsys_survey_state\":2,\"folders\":[]}\n",
                                             "{\"kivsys_survey_state\":1,\"folders\":7}\n",
                                             "{\"kivsys_survey_state\":1, my own notes without a line end",
                                             "{\"key\":\"\\\\A1.MUS\",\"stamp\":\"A1.MUS|1|2\"}\n"};
  for (const std::string& content : contents) {
    place.write("state", content);
    const Ended ended = survey();
    EXPECT_EQ(ended.status, 2) << content;
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, "kivsys: state is not the state of a survey; name another file\n");
    EXPECT_EQ(place.read("state"), content);
  }
}

TEST_F(SurveyState, AnEmptyFileAndAHeadThatWasCutShortAreReplaced) {
  place.write("lib/A1.MUS", duo);
  const std::string expected = lines();
  const std::string state = place.read("state");
  for (const std::string& content : {std::string(), state.substr(0, state.find('\n'))}) {
    place.write("state", content);
    EXPECT_EQ(lines(), expected);
    EXPECT_EQ(place.read("state"), state);
  }
}

TEST_F(SurveyState, TheStateOfAnotherLibraryIsRefused) {
  place.write("lib/A1.MUS", duo);
  place.write("other/A1.MUS", duo);
  EXPECT_EQ(survey({"lib"}).status, 0);
  const std::string state = place.read("state");
  for (const std::vector<std::string>& folders : {std::vector<std::string>{"other"}, {"lib", "other"}, {"."}}) {
    const Ended ended = survey(folders);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error,
              "kivsys: state is the state of a survey of " + (place.path() / "lib").string() + "; name another file\n");
    EXPECT_EQ(place.read("state"), state);
  }
}

TEST_F(SurveyState, TheSameFoldersByOtherNamesAreTheSameLibrary) {
  place.write("lib/A1.MUS", duo);
  place.write("other/A1.MUS", duo);
  EXPECT_EQ(survey({"lib", "other"}).status, 0);
  EXPECT_EQ(survey({"other", "./lib", (place.path() / "lib").string()}).status, 0);
}

TEST_F(SurveyState, EntriesThatCannotBeAreNotUsed) {
  place.write("lib/A1.MUS", duo);
  const std::string expected = lines();
  const std::string state = place.read("state");
  const std::vector<std::pair<std::string, std::string>> changes = {
      {"\"pages\":1", "\"pages\":2"},
      {"\"pages\":1", "\"pages\":0"},
      {"\"pages\":1", "\"pages\":-1"},
      {"\"systems\":1", "\"systems\":70000"},
      {"\"systems\":1", "\"systems\":null"},
      {"\"instruments\":2", "\"instruments\":\"2\""},
      {"\"instruments\":2", "\"instruments\":99999999999999999999"},
      {"\"instruments\":2", "\"instruments\":1.5"},
      {"\"changed\":", "\"changed\":1e300, \"x\":"},
      {"\"multifile\":false", "\"multifile\":null"},
      {"\"bytes\":" + std::to_string(duo.size()), "\"bytes\":" + std::to_string(duo.size() + 1)},
      {"\"sha256\":\"", "\"sha256\":\"0"}};
  for (const auto& [before, after] : changes) {
    const std::string changed = with(with(state, before, after), "\"consistent\":true", "\"consistent\":false");
    ASSERT_NE(changed, with(state, "\"consistent\":true", "\"consistent\":false")) << before;
    place.write("state", changed);
    EXPECT_EQ(lines(), expected) << after;
  }
}

TEST_F(SurveyState, WhatEndedAnAnalysisIsTriedAgain) {
  place.write("lib/A1.MUS", std::string(duo.size(), 'x'));
  setAge("lib/A1.MUS", 1h);
  EXPECT_EQ(lines(), "lib,A,1,-,-,-,-,1,1,,A1.MUS,-,A1.MUS (item 1: Structural error in MUS file)\n");
  place.write("lib/A1.MUS", duo);
  setAge("lib/A1.MUS", 1h);
  EXPECT_EQ(lines(), "lib,A,1,1,2,yes,no,0,1,,,no,\n");
}

TEST_F(SurveyState, APageThatChangedWithinTheTimeOfItsDiskIsNoticed) {
  place.write("lib/A1.MUS", duo);
  setAge("lib/A1.MUS", 0s);
  EXPECT_EQ(lines(), "lib,A,1,1,2,yes,no,0,1,,,no,\n");
  place.write("lib/A1.MUS", twice);
  ASSERT_EQ(twice.size(), duo.size());
  setAge("lib/A1.MUS", 0s);
  EXPECT_EQ(lines(), "lib,A,1,1,1,yes,no,1,1,,,no,\n");
}

TEST_F(SurveyState, OnlyPagesThatHaveJustChangedAreReadAgain) {
  place.write("lib/A1.MUS", duo);
  setAge("lib/A1.MUS", 60s);
  EXPECT_EQ(lines(), "lib,A,1,1,2,yes,no,0,1,,,no,\n");
  EXPECT_EQ(place.read("state").find("sha256"), std::string::npos);
  setAge("lib/A1.MUS", -60s);  // a clock that is ahead
  EXPECT_EQ(lines(), "lib,A,1,1,2,yes,no,0,1,,,no,\n");
  EXPECT_NE(place.read("state").find("sha256"), std::string::npos);
}

TEST_F(SurveyState, FoldersWhoseNamesAreNoTextStayDifferent) {
  for (const auto& [folder, content] : {std::pair("lib/\xE4", duo), std::pair("lib/\xF6", twice)}) {
    place.write(std::string(folder) + "/A1.MUS", content);
    setAge(std::string(folder) + "/A1.MUS", 60s);
  }
  const std::string expected = lines();
  EXPECT_EQ(expected, "lib/\xE4,A,1,1,2,yes,no,0,1,,,no,\nlib/\xF6,A,1,1,1,yes,no,1,1,,,no,\n");
  EXPECT_EQ(lines(), expected);
}

TEST_F(SurveyState, ADeviceIsWrittenAndNotRead) {
  place.write("lib/A1.MUS", duo);
  EXPECT_EQ(survey({"lib"}, "/dev/null").status, 0);
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  const Ended full = survey({"lib"}, "/dev/full");
  EXPECT_EQ(full.status, 1);
  EXPECT_TRUE(full.error.starts_with("kivsys: cannot write to /dev/full")) << full.error;
}

}  // namespace
}  // namespace kiv::test
