#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/running_program.h"

namespace kiv::test {
namespace {

/// With -q nothing is printed but the results that were asked for, and errors.
class Quiet : public ConsoleConvert {
 protected:
  Quiet() {
    addTwo();
    addPage("zero1.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
    place.write("damaged1.mus", page(bass + "note 1 at 9 height 5 p5 2 duration 1\nbytes FF FF FF FF\n"));
    addPage("lib/a1.mus", bass);
    addPage("lib/a3.mus", bass);
    addPage("lib/WORK0001.MUS", bass);
  }
};

TEST_F(Quiet, RunsThatEndNormallySayNothingBesideTheirResults) {
  const std::vector<Names> commands = {{"analyze", "x2.mus", "x1.mus"},
                                       {"analyze", "zero1.mus", "--folder", "new1"},
                                       {"analyze", "lib"},
                                       {"convert", "x1.mus", "x2.mus", "-o", "new2/"},
                                       {"convert", "x1.mus", "x2.mus", "-o", "new2/"},
                                       {"convert", "lib/a1.mus"},
                                       {"convert", "x1.mus", "x2.mus", "--dry-run"},
                                       {"trace", "x1.mus", "x2.mus", "-o", "new2/"},
                                       {"verify", "x1.mus", "x2.mus", "--result", "new2/"},
                                       {"verify", "x1.mus", "x2.mus", "--result", "new2/", "--manifest", "-"},
                                       {"sort", "x1.mus"},
                                       {"chart", "x2.mus", "x1.mus"},
                                       {"instruments", "lib"},
                                       {"suggest", "zero1.mus", "-o", "table.csv"},
                                       {"report", "lib", "-o", "report.html"},
                                       {"draw", "x1.mus", "-o", "x1.svg"},
                                       {"fix", "x2.mus", "x1.mus", "--set", "x1.mus:1=101", "-o", "new3"},
                                       {"recover", "damaged1.mus"},
                                       {"recover", "damaged1.mus", "-o", "-"},
                                       {"survey", "lib", "--html", "library.html", "--reports", "new4"},
                                       {"undo", "."}};
  for (Names command : commands) {
    command.insert(command.begin() + 1, "-q");
    const Ended ended = place.kivsys(command);
    EXPECT_EQ(ended.status, 0) << ::testing::PrintToString(command) << ended.error;
    EXPECT_EQ(ended.error, "") << ::testing::PrintToString(command);
  }
}

TEST_F(Quiet, ErrorsArePrintedWithoutTheNextStep) {
  const std::string structure = "kivsys: damaged1.mus: item 4: Structural error in MUS file\n";
  for (const std::string command : {"analyze", "convert", "draw", "chart", "instruments", "suggest"}) {
    EXPECT_EQ(place.kivsys({command, "-q", "damaged1.mus"}).error, structure) << command;
  }
  EXPECT_EQ(place.kivsys({"verify", "-q", "x1.mus", "--folder", "lib"}).error,
            "kivsys: not proved: the report is missing, so there is nothing to compare the results with: "
            "KivSystem2.TXT\n");
  EXPECT_EQ(place.kivsys({"convert", "-q", "x1.mus", "x2.mus"}).status, 0);
  place.write("WORK0001.MUS", "changed");
  const Ended undone = place.kivsys({"undo", "-q"});
  EXPECT_TRUE(undone.error.ends_with(" has changed since\nkivsys: nothing is undone\n")) << undone.error;
}

TEST_F(Quiet, AFindingIsPrintedBesideAManifest) {
  const Ended ended = place.kivsys({"verify", "-q", "x1.mus", "--manifest", "-"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("PROVED=NO\n")) << ended.error;
}

TEST_F(Quiet, ARunThatWaitsForAnotherOneDoesNotSaySo) {
  const int folder = ::open(place.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  ASSERT_EQ(::flock(folder, LOCK_EX | LOCK_NB), 0);
  RunningProgram run(place.path(), {"analyze", "-q", "--wait", "x1.mus"});
  ASSERT_TRUE(run.waits());
  ::close(folder);
  EXPECT_EQ(run.end(), 0);
  EXPECT_EQ(run.error(), "");
}

TEST_F(Quiet, IsDescribedAlikeInTheHelpOfEveryCommand) {
  for (const std::string command : {"analyze", "convert", "verify", "trace", "sort", "chart", "instruments", "suggest",
                                    "report", "fix", "draw", "recover", "undo", "survey"}) {
    const std::string help = place.kivsys({command, "--help"}).out;
    const std::size_t at = help.find("-q, --quiet");
    ASSERT_NE(at, std::string::npos) << command;
    EXPECT_NE(help.find("Print only results and errors", at), std::string::npos) << help;
  }
}

}  // namespace
}  // namespace kiv::test
