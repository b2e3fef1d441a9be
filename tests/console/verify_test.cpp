#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/console/run_program.h"

namespace kiv::test {
namespace {

/// The bundled piece, built and converted.
class VerifyCommand : public ::testing::Test {
 protected:
  void SetUp() override {
    std::filesystem::create_directory(place.path() / "results");
    pages = buildExample(place);
    EXPECT_EQ(onAllPages("convert").status, 0);
  }
  Ended onAllPages(const std::string& command, std::vector<std::string> options = {},
                   const std::string& folder = ".") const {
    std::vector<std::string> arguments = {command};
    for (const std::string& page : pages) {
      arguments.push_back((place.path() / page).string());
    }
    arguments.insert(arguments.end(), {"--result", (place.path() / "results/WORK0001.MUS").string()});
    arguments.insert(arguments.end(), options.begin(), options.end());
    return place.kivsys(arguments, folder);
  }
  void changeByte(const std::string& file, std::size_t at) const {
    std::string bytes = place.read(file);
    bytes.at(at) = static_cast<char>(bytes.at(at) ^ 0x20);
    place.write(file, bytes);
  }

  Workplace place;
  std::vector<std::string> pages;
};

TEST_F(VerifyCommand, ProvesTheExampleAsTheReferenceShows) {
  const Ended ended = onAllPages("verify");
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, "");
  EXPECT_EQ(ended.out, shownInReference("kivsys verify SYMPH*.MUS --result results/WORK0001.MUS"));
  EXPECT_TRUE(ended.out.starts_with("PROVED=YES\n")) << ended.out;
}

TEST_F(VerifyCommand, ReportsWhatIsWrongAsTheReferenceShows) {
  constexpr std::size_t heightOfANote = 248;
  changeByte("results/WORK0004.MUS", heightOfANote);
  const Ended ended = onAllPages("verify");
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: not proved: 1 finding\nkivsys: note: verify needs the options "))
      << ended.error;
  EXPECT_EQ(ended.out.substr(ended.out.find("results/")),
            shownInReference("kivsys verify SYMPH*.MUS --result results/WORK0001.MUS | tail -n 1"));
}

TEST_F(VerifyCommand, JsonHasTheFindingsAndTheDigests) {
  changeByte("results/WORK0004.MUS", 248);
  const Ended ended = onAllPages("verify", {"--json"});
  EXPECT_EQ(ended.status, 1);
  const auto object = nlohmann::json::parse(ended.out);
  EXPECT_EQ(schemaErrors(object, "verify"), std::vector<std::string>());
  EXPECT_EQ(object.at("proved"), false);
  ASSERT_EQ(object.at("findings").size(), 1U);
  EXPECT_EQ(object.at("findings").at(0).at("file"), place.corePath("results/WORK0004.MUS"));
  EXPECT_TRUE(object.at("findings").at(0).at("item").is_number());
  EXPECT_EQ(object.at("counts").at("inputs"), 6);
  EXPECT_EQ(object.at("files").size(), 2U + 6 + 7);
  EXPECT_EQ(object.at("files").at(0).at("name"), "KivSystem2.TXT");
  EXPECT_EQ(object.at("files").at(0).at("sha256").get<std::string>().size(), 64U);
}

TEST_F(VerifyCommand, TheManifestIsOneThatOthersCanCheck) {
  EXPECT_EQ(onAllPages("verify", {"--manifest", "results/manifest.txt"}).status, 0);
  const std::string check =
      "cd / && sha256sum --strict --status -c '" + (place.path() / "results/manifest.txt").string() + "'";
  EXPECT_EQ(std::system(check.c_str()), 0);
  changeByte("SYMPH001.MUS", 100);
  EXPECT_NE(std::system(check.c_str()), 0);
}

TEST_F(VerifyCommand, AManifestThatCannotBeWrittenIsReported) {
  const Ended ended = onAllPages("verify", {"--manifest", "nowhere/manifest.txt"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_TRUE(ended.error.starts_with("kivsys: cannot write ")) << ended.error;
}

TEST_F(VerifyCommand, NothingIsWritten) {
  const auto before = filesIn(place.path());
  const std::string report = place.read("KivSystem2.TXT");
  onAllPages("verify");
  EXPECT_EQ(filesIn(place.path()), before);
  EXPECT_EQ(place.read("KivSystem2.TXT"), report);
}

TEST_F(VerifyCommand, ReportAndVerdictAreLookedForInTheFolder) {
  std::filesystem::create_directory(place.path() / "elsewhere");
  const Ended ended = onAllPages("verify", {}, "elsewhere");
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.out.find("\nKivSystem2.TXT: cannot be read\n"), std::string::npos) << ended.out;
  EXPECT_TRUE(
      ended.error.starts_with("kivsys: not proved: the report is missing, so there is nothing to compare the "
                              "results with: KivSystem2.TXT\nNext: kivsys convert "))
      << ended.error;
  EXPECT_EQ(onAllPages("verify", {"-q"}, "elsewhere").error.find("Next:"), std::string::npos);
  EXPECT_EQ(onAllPages("verify", {"--folder", ".."}, "elsewhere").status, 0);
}

TEST_F(VerifyCommand, TheReportOfOtherPagesIsReportedInOneLine) {
  EXPECT_EQ(place.kivsys({"analyze", "SYMPH001.MUS"}).status, 0);
  const Ended ended = onAllPages("verify");
  EXPECT_EQ(ended.status, 1);
  constexpr int linesOfCounts = 7;
  EXPECT_EQ(std::count(ended.out.begin(), ended.out.end(), '\n'), linesOfCounts + 1) << ended.out;
  EXPECT_NE(ended.out.find("KivSystem2.TXT: is the report of other pages: line 3 is "), std::string::npos) << ended.out;
}

TEST_F(VerifyCommand, AResultInASecondSpellingIsReported) {
  place.write("results/work0002.mus", place.read("results/WORK0002.MUS"));
  const Ended ended = onAllPages("verify");
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.out.find("WORK0002.MUS: is a result that exists in a second spelling, work0002.mus\n"),
            std::string::npos)
      << ended.out;
}

TEST_F(VerifyCommand, ANamesFileServesToo) {
  std::string names;
  for (const std::string& page : pages) {
    names += place.corePath(page) + " 1\r\n";
  }
  place.write("names.txt", names);
  EXPECT_EQ(place.kivsys({"verify", "--names", "names.txt", "--result", "results/WORK0001.MUS"}).status, 0);
}

TEST_F(VerifyCommand, WrongUsageIsRefused) {
  EXPECT_EQ(place.kivsys({"verify", "--result", "results/WORK0001.MUS"}).status, 2);
  EXPECT_EQ(onAllPages("verify", {"--folder", "nowhere"}).status, 2);
}

TEST_F(VerifyCommand, AnInputThatIsGoneIsNamed) {
  std::filesystem::remove(place.path() / "SYMPH004.MUS");
  const Ended ended = onAllPages("verify");
  EXPECT_EQ(ended.status, 2);
  EXPECT_EQ(ended.error,
            "kivsys: cannot read " + (place.path() / "SYMPH004.MUS").string() + ": No such file or directory\n");
}

TEST_F(VerifyCommand, ConvertCanProveItsOwnWork) {
  const Ended ended = onAllPages("convert", {"--verify", "--no-instr-number"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.out.find("WORK0007.MUS\nPROVED=YES\nInputs: 6\nResults: 7\n"), std::string::npos) << ended.out;
  const auto object = nlohmann::json::parse(onAllPages("convert", {"--verify", "--json"}).out);
  EXPECT_EQ(schemaErrors(object, "convert"), std::vector<std::string>());
  EXPECT_EQ(object.at("verified").at("proved"), true);
  EXPECT_EQ(object.at("created").size(), 7U);
  EXPECT_FALSE(nlohmann::json::parse(onAllPages("convert", {"--json"}).out).contains("verified"));
}

TEST_F(VerifyCommand, ConvertFailsWhenAResultOfAnEarlierRunIsLeft) {
  place.write("results/WORK0008.MUS", place.read("results/WORK0007.MUS"));
  const Ended ended = onAllPages("convert", {"--verify"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.out.find("WORK0008.MUS: is a result, and the report has no system for it\n"), std::string::npos);
}

TEST_F(VerifyCommand, WhatNeedsNoConversionHasNothingToProve) {
  const Ended ended = place.kivsys({"convert", "SYMPH001.MUS", "--verify", "--json"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_TRUE(nlohmann::json::parse(ended.out).at("verified").is_null()) << ended.out;
}

TEST_F(VerifyCommand, TheFirstResultIsByDefaultWhereAConversionPutsIt) {
  std::filesystem::create_directory(place.path() / "Mixed");
  std::vector<std::string> convert = {"convert"};
  for (const std::string& page : pages) {
    std::filesystem::copy_file(place.path() / page, place.path() / "Mixed" / page);
    convert.push_back("Mixed/" + page);
  }
  EXPECT_EQ(place.kivsys(convert).status, 0);
  std::vector<std::string> verify = convert;
  verify.front() = "verify";
  const Ended ended = place.kivsys(verify);
  EXPECT_EQ(ended.status, 0) << ended.out;
  EXPECT_TRUE(ended.out.starts_with("PROVED=YES\nInputs: 6\nResults: 7\n")) << ended.out;
  changeByte("Mixed/WORK0004.MUS", 248);
  EXPECT_EQ(place.kivsys(verify).status, 1);
}

}  // namespace
}  // namespace kiv::test
