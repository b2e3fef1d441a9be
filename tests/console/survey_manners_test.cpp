#include <array>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

const std::string solo = page("staff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 1\n");
const std::string duo =
    page("staff 2 at 0 lines 5 instrument 8\nstaff 1 at 0 lines 5 instrument 7\nbarline 1 at 0 spans 2\n");

/// What a survey of "lib" writes to a terminal while somebody reads its lines only after this time: so long it lasts,
/// as it has more lines than fit into a pipe.
std::string shownOnATerminal(const fs::path& folder, std::chrono::milliseconds time) {
  std::array<int, 2> lines{};
  int keeper = -1;
  int terminal = -1;
  EXPECT_EQ(::pipe(lines.data()), 0);
  EXPECT_EQ(::openpty(&keeper, &terminal, nullptr, nullptr, nullptr), 0);
  const pid_t child = ::fork();
  if (child == 0) {
    ::dup2(lines[1], STDOUT_FILENO);
    ::dup2(terminal, STDERR_FILENO);
    ::close(lines[0]);
    ::close(keeper);
    if (::chdir(folder.c_str()) == 0) {
      ::execl(KIVSYS_PROGRAM, KIVSYS_PROGRAM, "survey", "lib", "--csv", "--jobs", "1", nullptr);
    }
    ::_exit(127);
  }
  ::close(lines[1]);
  ::close(terminal);
  std::this_thread::sleep_for(time);
  std::string shown;
  std::array<char, 4096> buffer{};
  std::array<pollfd, 2> sources{{{lines[0], POLLIN, 0}, {keeper, POLLIN, 0}}};
  while (sources[0].fd >= 0 || sources[1].fd >= 0) {
    ::poll(sources.data(), sources.size(), -1);
    for (pollfd& source : sources) {
      const ssize_t got = source.revents == 0 ? 1 : ::read(source.fd, buffer.data(), buffer.size());
      if (source.revents != 0 && got > 0 && source.fd == keeper) {
        shown.append(buffer.data(), static_cast<std::size_t>(got));
      }
      source.fd = got <= 0 ? -1 : source.fd;
    }
  }
  ::close(lines[0]);
  ::close(keeper);
  EXPECT_EQ(::waitpid(child, nullptr, 0), child);
  return shown;
}

class SurveyManners : public ::testing::Test {
 protected:
  Ended survey(std::vector<std::string> options = {}) const {
    options.insert(options.begin(), {"survey", "lib"});
    return place.kivsys(options);
  }
  std::string table(const std::vector<std::string>& options = {}) const {
    const Ended ended = survey(options);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.error, "");
    return ended.out;
  }

  Workplace place;
};

TEST_F(SurveyManners, TheRateOfItsProgressIsThatOfAllPiecesSinceItBegan) {
  constexpr int pieces = 1200;
  for (int i = 0; i < pieces; ++i) {
    const std::string letters = {static_cast<char>('A' + i / 26 / 26), static_cast<char>('A' + i / 26 % 26),
                                 static_cast<char>('A' + i % 26)};
    place.write("lib/" + std::string(200, 'x') + "/" + letters + "1.MUS", solo);
  }
  const std::string shown = shownOnATerminal(place.path(), 800ms);
  const auto lines = matchesIn(shown, "(\\d+) of 1200 pieces, ([0-9.]+) a second");
  for (const auto& line : lines) {
    // Nothing is shown in the first half second.
    EXPECT_LE(std::stod(line.at(2)), 2 * std::stod(line.at(1)) + 1) << line.front();
  }
  EXPECT_FALSE(lines.empty()) << shown;
}

TEST_F(SurveyManners, HiddenFoldersOfUndoAreNoPartOfTheLibrary) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/.kivsys/B1.MUS", solo);
  EXPECT_EQ(survey({"--csv"}).out.find("B,"), std::string::npos);
}

TEST_F(SurveyManners, AFolderOfUndoThatCannotBeListedIsNoError) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/.kivsys/B1.MUS", solo);
  fs::permissions(place.path() / "lib/.kivsys", fs::perms::none);
  const Ended ended = place.kivsysAsOwner({"survey", "lib", "--csv"});
  fs::permissions(place.path() / "lib/.kivsys", fs::perms::owner_all);
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.error, "");
}

TEST_F(SurveyManners, TheTableSaysWhyAPageIsBadInTheSpellingOfItsName) {
  place.write("lib/My1.mus", solo);
  place.write("lib/My2.mus", "broken");
  EXPECT_EQ(
      table({"--keep-going"}),
      "folder  prefix  pages  systems  instruments  consistent  multifile  convert  problems  files  names, bad pages\n"
      "lib     My          2        1            1         yes         no       no         1      2"
      "  bad: My2.mus (item 1: Structural error in MUS file)\n"
      "1 piece, 0 need a conversion, 1 bad\n");
}

TEST_F(SurveyManners, TheTableSaysWhyAPieceWithoutABadPageWasNotAnalyzed) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/a1.mus", solo);
  EXPECT_NE(table().find("  not analyzed: A1.MUS and a1.mus differ in case only, and cannot be in one group\n"),
            std::string::npos);
}

TEST_F(SurveyManners, FoldersAndPiecesAreInNaturalOrder) {
  for (const char* name : {"lib/piece10/A1.MUS", "lib/piece6/A1.MUS", "lib/OP10X1.MUS", "lib/OP6X1.MUS"}) {
    place.write(name, solo);
  }
  const std::string naming =
      " (File naming problem; the form is <letter(s)><digit(s)><optionally one sequence letter>.<suffix>)\n";
  EXPECT_EQ(survey({"--csv"}).out,
            "folder,prefix,pages,systems,instruments,consistent,multifile,problems,files,names,bad_pages,needs_"
            "conversion,reasons\n"
            "lib,OP6X1.MUS,1,-,-,-,-,1,1,,OP6X1.MUS,-,OP6X1.MUS" +
                naming + "lib,OP10X1.MUS,1,-,-,-,-,1,1,,OP10X1.MUS,-,OP10X1.MUS" + naming +
                "lib/piece6,A,1,1,1,yes,no,0,1,,,no,\nlib/piece10,A,1,1,1,yes,no,0,1,,,no,\n");
}

TEST_F(SurveyManners, ALastLineCountsThePiecesAndThoseThatNeedAConversion) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/B1.MUS", solo);
  place.write("lib/B2.MUS", duo);
  place.write("lib/C1.MUS", "broken");
  const std::string lines = table();
  EXPECT_NE(lines.find("lib     B           2        2            2          no         no      yes  "),
            std::string::npos)
      << lines;
  EXPECT_TRUE(lines.ends_with("\n3 pieces, 1 needs a conversion, 1 bad\n")) << lines;
}

TEST_F(SurveyManners, JsonSaysWhichPiecesNeedAConversion) {
  place.write("lib/B1.MUS", solo);
  place.write("lib/B2.MUS", duo);
  place.write("lib/C1.MUS", "broken");
  const std::string json = survey({"--json"}).out;
  EXPECT_NE(json.find("\"needs_conversion\":true"), std::string::npos) << json;
  EXPECT_NE(json.find("\"needs_conversion\":null"), std::string::npos) << json;
}

TEST_F(SurveyManners, TheExitStatusSaysOnRequestWhetherAPieceNeedsAConversion) {
  place.write("lib/A1.MUS", solo);
  EXPECT_EQ(survey({"--exit-code"}).status, 0);
  place.write("lib/A2.MUS", duo);
  EXPECT_EQ(survey({"--exit-code"}).status, 3);
  EXPECT_EQ(survey().status, 0);
}

TEST_F(SurveyManners, CommaSeparatedValuesSayWhatNeedsAConversionAndWhy) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/A2.MUS", duo);
  place.write("lib/B1.MUS", solo);
  place.write("lib/B3.MUS", "broken");
  const std::string csv = survey({"--csv"}).out;
  EXPECT_NE(csv.find(",bad_pages,needs_conversion,reasons\n"), std::string::npos) << csv;
  EXPECT_NE(csv.find(",,yes,\n"), std::string::npos) << csv;
  EXPECT_NE(csv.find(",B3.MUS,-,\"B3.MUS (item 1: Structural error in MUS file), no page 2 between B1.MUS and "
                     "B3.MUS\"\n"),
            std::string::npos)
      << csv;
}

TEST_F(SurveyManners, AFolderInAnotherOneThatIsNamedCountsOnce) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/inner/B1.MUS", solo);
  const std::string out = place.kivsys({"survey", "lib/inner", "lib", "lib"}).out;
  EXPECT_TRUE(out.ends_with("\n2 pieces, 0 need a conversion, 0 bad\n")) << out;
}

TEST_F(SurveyManners, ThePageOfALibraryHasEachMessageOnOneLine) {
  place.write("lib/A1.MUS", page("staff 1 at 0\nbarline 1 at 0 spans 1\n"));
  survey({"--html", "library.html"});
  const std::string html = place.read("library.html");
  EXPECT_NE(html.find("A1"), std::string::npos);
  EXPECT_EQ(html.find("\\r\\n"), std::string::npos) << html.substr(html.find("\\r\\n") - 200, 300);
}

TEST_F(SurveyManners, TheExitStatusSaysOnRequestWhetherAPieceIsBad) {
  place.write("lib/A1.MUS", solo);
  place.write("lib/A2.MUS", "broken");
  EXPECT_EQ(survey({"--exit-code"}).status, 3);
  EXPECT_EQ(survey({"--exit-code", "--keep-going"}).status, 3);
}

}  // namespace
}  // namespace kiv::test
