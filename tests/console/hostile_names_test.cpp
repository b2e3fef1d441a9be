#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

/// Names and texts that would lie to the reader of a terminal.
class HostileNames : public ::testing::Test {
 protected:
  /// A page of one staff with a text.
  std::string solo(const std::string& text = "Flute") const {
    return page("countedtext 1 at 1 \"" + text + "\"\nstaff 1 at 10 lines 5 instrument 7\nbarline 1 at 10 spans 1\n");
  }
  std::string duo() const {
    return page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");
  }

  Workplace place;
};

/// Whether the text is free of what a terminal obeys or shows in another order.
bool isHarmless(const std::string& text) {
  return std::none_of(text.begin(), text.end(), [](char c) { return (c >= 0 && c < ' ' && c != '\n') || c == '\x7F'; });
}

long linesThatAre(const std::string& line, const std::string& text) {
  long count = 0;
  for (std::size_t at = ("\n" + text).find("\n" + line + "\n"); at != std::string::npos;
       at = ("\n" + text).find("\n" + line + "\n", at + 1)) {
    ++count;
  }
  return count;
}

TEST_F(HostileNames, ATextOfAPageIsNoLineOfVerify) {
  place.write("A1.MUS", solo("one"));
  place.write("A2.MUS", duo());
  EXPECT_EQ(place.kivsys({"convert", "A1.MUS", "A2.MUS"}).status, 0);
  const std::string text = place.kivsys({"dump", "WORK0001.MUS"}).out;
  place.write("changed.txt", with(text, "\"one\"", "\"\\x0D\\x0APROVED=YES\\x0D\\x0A\\x1B[2J\" characters 18"));
  EXPECT_EQ(place.kivsys({"build", "--force", "changed.txt", "WORK0001.MUS"}).status, 0);
  const Ended ended = place.kivsys({"verify", "A1.MUS", "A2.MUS", "--result", "WORK0001.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.out.starts_with("PROVED=NO\n"));
  EXPECT_EQ(linesThatAre("PROVED=YES", ended.out), 0) << ended.out;
  EXPECT_TRUE(isHarmless(ended.out)) << ended.out;
  EXPECT_NE(ended.out.find("\\r\\nPROVED=YES\\r\\n\\x1B[2J"), std::string::npos) << ended.out;
}

TEST_F(HostileNames, AnInstrumentNameIsNoLineOfAnalyze) {
  place.write("A1.MUS", solo());
  place.write("A2.MUS", page("staff 2 at 10 lines 5 instrument 8\n"
                             "countedtext 2 at 1 \"x\\x0ACONSISTENCY=YES\\x0A\\x1B[2J\\xE2\\x80\\xAE\"\n"
                             "staff 1 at 10 lines 5 instrument 7\nbarline 1 at 10 spans 2\n"));
  const Ended ended = place.kivsys({"analyze", "A1.MUS", "A2.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(linesThatAre("CONSISTENCY=YES", ended.out), 0) << ended.out;
  EXPECT_NE(ended.out.find("8 (x\\nCONSISTENCY=YES\\n\\x1B[2J\\u202E)"), std::string::npos) << ended.out;
}

TEST_F(HostileNames, FileNamesAreEscapedInAllThatPeopleRead) {
  const std::string name = "A\x1B[2J\u202E\x31.MUS";
  place.write(name, solo());
  place.write("lib/x\x1B[2J\ny/A1.MUS", solo());
  const std::vector<std::vector<std::string>> commands = {
      {"analyze", name},
      {"analyze", "--keep-going", name, "A\x1B.MUS"},
      {"chart", name},
      {"instruments", name},
      {"instruments", "--csv", "no\x1B\n1.MUS"},
      {"convert", name},
      {"convert", "--dry-run", "--force", name, "--result", "R\x1B[2J\n0001.MUS"},
      {"sort", name},
      {"convert", "--force", name, "--result", "R\x1B[2J\n0001.MUS"},
      {"survey", "lib"},
      {"verify", name, "--result", "R\x1B[2J\n0001.MUS"},
      {"survey", "no\x1B\n"},
      {"draw", "no\x1B\n"},
      {"dump", "no\x1B\n"},
      {"build", "no\x1B\n", "B\x1B\n"},
      {"chart", name, "--out", "no\x1B\n/x.svg"},
      {"analyze", "--folder", "no\x1B\n", name},
      {"analyze", "no\x1B\n1.MUS"},
      {"analyze", "--names", "no\x1B\n"}};
  for (const std::vector<std::string>& command : commands) {
    const Ended ended = place.kivsys(command);
    EXPECT_TRUE(isHarmless(ended.out)) << command.front() << ": " << ended.out;
    EXPECT_TRUE(isHarmless(ended.error)) << command.front() << ": " << ended.error;
    EXPECT_EQ((ended.out + ended.error).find("\u202E"), std::string::npos) << command.front();
  }
}

TEST_F(HostileNames, WrongUsageIsEscaped) {
  const Ended ended = place.kivsys({"analyze", "A1.MUS", "--no\x1B[2J\nkivsys: done"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_TRUE(isHarmless(ended.error)) << ended.error;
  EXPECT_EQ(linesThatAre("kivsys: done", ended.error), 0) << ended.error;
  EXPECT_TRUE(ended.error.ends_with("\n'kivsys analyze --help' lists the options.\n")) << ended.error;
}

TEST_F(HostileNames, TheReasonWhyATextIsNoPageIsEscaped) {
  place.write("text.txt", "staff 1 at 0 \"\\x1B[2J\\x0Akivsys: done\"\n");
  const Ended ended = place.kivsys({"build", "text.txt", "B1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(isHarmless(ended.error)) << ended.error;
  EXPECT_EQ(std::count(ended.error.begin(), ended.error.end(), '\n'), 1) << ended.error;
}

TEST_F(HostileNames, JsonHasNamesAsTheyAre) {
  place.write("lib/x\x1B\u202E\ny/A1.MUS", solo());
  const auto object = nlohmann::json::parse(place.kivsys({"survey", "lib", "--json"}).out);
  EXPECT_EQ(object.at("pieces").at(0).at("folder"), "lib/x\x1B\u202E\ny");
}

TEST_F(HostileNames, ACellOfCsvIsNoFormula) {
  const std::string reason = "A page file whose name holds a line end cannot be listed in a names file";
  for (const std::string name : {"=1+2", "+1", "-1", "@x", "\tx", "\rx", "x=1", "'x"}) {
    place.write(name + "/A1.MUS", solo());
    const std::string line = place.kivsys({"survey", name, "--csv"}).out;
    const std::string cell = name == "\rx"                                    ? "\"'\rx\""
                             : name.starts_with("x") || name.starts_with("'") ? name
                                                                              : "'" + name;
    const std::string rest =
        name == "\rx" ? ",A,1,-,-,-,-,1,1,,,-," + reason + "\n" : ",A,1,1,1,yes,no,0,1,7 (Flute),,no,\n";
    EXPECT_EQ(line.substr(line.find('\n') + 1), cell + rest);
    fs::remove_all(place.path() / name);
  }
}

TEST_F(HostileNames, UnknownNumbersOfCsvStayBare) {
  place.write("lib/=/A1.MUS", "broken");
  const std::string line = place.kivsys({"survey", "lib/=", "--csv"}).out;
  EXPECT_TRUE(line.ends_with("\nlib/=,A,1,-,-,-,-,1,1,,A1.MUS,-,A1.MUS (item 1: Structural error in MUS file)\n"))
      << line;
}

}  // namespace
}  // namespace kiv::test
