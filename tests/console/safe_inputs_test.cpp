#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/damaged_page.h"

namespace kiv::test {
namespace {

/// What a run was given is never written over, however it was given.
class SafeInputs : public ConsoleConvert {
 protected:
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
  std::string sameFile(const std::string& what, const std::string& output, const std::string& input) const {
    return "kivsys: the " + what + " " + path(output) + " is the same file as the input " + path(input) + "\n";
  }
};

TEST_F(SafeInputs, ASkippedPageIsAnInput) {
  addTwo("m/");
  addPage("KivSystem2.TXT", bass);
  addPage("out/W0002.MUS", bass);
  place.write("list", path("m/x1.mus") + "\n" + path("m/x2.mus") + "\n" + path("out/W0002.MUS") + "\n");
  const Ended analyzed = place.kivsys({"analyze", "--keep-going", "m/x1.mus", "m/x2.mus", "KivSystem2.TXT"});
  EXPECT_EQ(analyzed.status, 2);
  EXPECT_EQ(analyzed.error, sameFile("report", "KivSystem2.TXT", "KivSystem2.TXT"));
  EXPECT_EQ(dumped("KivSystem2.TXT"), asDumped(bass));
  for (const Names& pages : {Names{"m/x1.mus", "m/x2.mus", "out/W0002.MUS"}, Names{"--names", "list"}}) {
    Names command = {"convert", "--keep-going", "--result", "out/W0001.MUS"};
    command.insert(command.end(), pages.begin(), pages.end());
    const Ended converted = place.kivsys(command);
    EXPECT_EQ(converted.status, 2);
    EXPECT_EQ(converted.error, sameFile("result", "out/W0002.MUS", "out/W0002.MUS"));
    EXPECT_EQ(dumped("out/W0002.MUS"), asDumped(bass));
  }
}

TEST_F(SafeInputs, APageThatCannotBeReadIsAnInputAndItsReasonIsGiven) {
  addTwo();
  addPage("WORK0002.MUS", bass);
  fs::create_directory(place.path() / "rep");
  fs::permissions(place.path() / "WORK0002.MUS", fs::perms::none);
  const Ended converted =
      place.kivsysAsOwner({"convert", "--keep-going", "x1.mus", "x2.mus", "WORK0002.MUS", "--folder", "rep"});
  const Ended analyzed = place.kivsysAsOwner({"analyze", "--keep-going", "x1.mus", "WORK0002.MUS", "--folder", "rep"});
  fs::permissions(place.path() / "WORK0002.MUS", fs::perms::owner_all);
  EXPECT_EQ(converted.status, 2);
  EXPECT_EQ(converted.error, sameFile("result", "WORK0002.MUS", "WORK0002.MUS"));
  EXPECT_EQ(dumped("WORK0002.MUS"), asDumped(bass));
  EXPECT_NE(analyzed.error.find("kivsys: cannot read WORK0002.MUS: Permission denied\n"), std::string::npos)
      << analyzed.error;
}

TEST_F(SafeInputs, AFileOnStandardInputIsAnInput) {
  addTwo();
  const std::string list = "x1.mus\nx2.mus\n";
  place.write("d1.mus", damagedPage(bass));
  place.write("page.txt", bass);
  place.write("c.csv", "file,staff,new_id\nX1.MUS,1,7\n");
  fs::create_directory(place.path() / "f");
  for (const std::string& command : {std::string("analyze --names - "), std::string("convert --names - "),
                                     std::string("suggest -o list --names - ")}) {
    for (const std::string file : {"list", "KivSystem1.TXT", "KivSystem2.TXT"}) {
      place.write(file, list);
    }
    const std::string input = command.starts_with("suggest") ? "list" : "KivSystem2.TXT";
    const Ended ended = place.shell("kivsys " + command + "<" + input);
    EXPECT_NE(ended.out.find(" is the same file as the input on standard input\n"), std::string::npos)
        << command << ended.out;
    EXPECT_EQ(place.read(input), list) << command;
  }
  fs::create_hard_link(place.path() / "c.csv", place.path() / "f/x1.mus");
  const std::vector<std::pair<std::string, std::string>> others = {
      {"recover - -o d1.mus --force", "d1.mus"},
      {"draw - -o x1.mus", "x1.mus"},
      {"build --force - page.txt", "page.txt"},
      {"fix x1.mus --corrections - --force -o f", "c.csv"}};
  for (const auto& [command, input] : others) {
    const std::string before = place.read(input);
    const Ended ended = place.shell("kivsys " + command + " <" + input);
    EXPECT_EQ(ended.status, 2) << command;
    EXPECT_NE(ended.out.find(" is the same file as the input on standard input\n"), std::string::npos)
        << command << ended.out;
    EXPECT_EQ(place.read(input), before) << command;
  }
}

}  // namespace
}  // namespace kiv::test
