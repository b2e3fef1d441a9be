#include <cstdlib>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/wait.h>

#include "tests/faults/program/pages.h"
#include "tests/faults/program/working_folder.h"

namespace kiv::test {
namespace {

/// A conversion of a small group by a shell that has set a limit.
class Limits : public testing::Test {
 protected:
  Limits() {
    const WorkingFolder maker({});
    place.reset({{"m/X001.MUS", maker.page(duo)}, {"m/X002.MUS", maker.page(solo)}});
  }

  /// The exit status; minus the signal when one has killed the program. What it says is in the file "error".
  int run(const std::string& limit, const std::string& arguments = "", const std::string& out = "out.txt") const {
    return runCommand(limit, "convert --folder run --result out/WORK0001.MUS m/X001.MUS m/X002.MUS " + arguments, out);
  }
  int runCommand(const std::string& limit, const std::string& arguments, const std::string& out = "out.txt") const {
    // The shell itself needs more files to redirect output.
    const std::string command = "cd '" + place.path().string() + "' && exec >" + out + " 2>error && ulimit " + limit +
                                " && TMPDIR='" + (place.path() / "tmp").string() + "' XDG_STATE_HOME='" +
                                (place.path() / "state").string() + "' exec '" + KIVSYS_PROGRAM + "' " + arguments;
    const int status = std::system(("bash -c \"" + command + "\"").c_str());
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }
  /// Fills the folder m with pages of 96 KB.
  void makeLargePages(int count) const {
    std::string notes;
    for (int i = 0; i < 3000; ++i) {
      notes += "note 1 at " + std::to_string(20 + i) + " duration 3\n";
    }
    place.write("m/X001.MUS", place.page(duo + notes));
    place.write("m/X002.MUS", place.page(solo + notes));
    for (int i = 3; i <= count; ++i) {
      const std::string number = std::to_string(1000 + i).substr(1);
      std::filesystem::create_hard_link(place.path() / ("m/X00" + std::to_string(2 - i % 2) + ".MUS"),
                                        place.path() / ("m/X" + number + ".MUS"));
    }
  }
  /// Nothing is left half done.
  void expectNoStrays() const {
    for (const auto& [name, content] : place.files()) {
      EXPECT_EQ(name.find(".kiv-"), std::string::npos) << name;
      EXPECT_FALSE(name.starts_with("tmp/")) << name;
    }
  }

  WorkingFolder place{{}};
};

TEST_F(Limits, TooFewOpenFilesAreTheReasonThatIsGiven) {
  for (const std::string command : {"analyze m/X001.MUS m/X002.MUS", "analyze --json m/X001.MUS m/X002.MUS",
                                    "convert m/X001.MUS m/X002.MUS", "trace m/X001.MUS m/X002.MUS"}) {
    EXPECT_EQ(runCommand("-n 4", command), 1) << command;
    EXPECT_NE(place.files().at("error").find("Too many open files"), std::string::npos)
        << command << ": " << place.files().at("error");
    EXPECT_EQ(place.files().at("error").find("No such file"), std::string::npos) << place.files().at("error");
    expectNoStrays();
  }
}

TEST_F(Limits, ASurveyGivesItAsTheProblemOfAPieceAndEndsWithStatus1) {
  for (int run = 0; run < 5; ++run) {  // how many files are open at once differs from run to run
    const int status = runCommand("-n 4", "survey m --jobs 8 --json");
    EXPECT_EQ(status == 1, place.files().at("out.txt").find("Too many open files") != std::string::npos);
    EXPECT_EQ(status == 1, place.files().at("error").find("Too many open files") != std::string::npos);
    EXPECT_TRUE(status == 0 || status == 1) << status;
  }
}

TEST_F(Limits, AStateThatCannotBeWrittenHasThatReason) {
  EXPECT_EQ(runCommand("-n 4", "survey m --jobs 1 --resume state"), 1);
  EXPECT_NE(place.files().at("error").find("Too many open files"), std::string::npos) << place.files().at("error");
}

TEST_F(Limits, ARunThatHasSomeOpenFilesEndsWellOrSaysWhy) {
  for (int files = 4; files <= 8; ++files) {
    const int status = run("-n " + std::to_string(files));
    const std::string error = place.files().at("error");
    EXPECT_TRUE(status == 0 || (status == 1 && error.find("Too many open files") != std::string::npos))
        << files << ": " << status << " " << error;
    expectNoStrays();
  }
}

TEST_F(Limits, FortyMegabytesOfMemorySuffice) {
  EXPECT_EQ(run("-v 40960"), 0) << place.files().at("error");
}

/// Far less than their pages, of some 40 MB, or their items take.
TEST_F(Limits, TwentyMegabytesSufficeForHundredsOfLargePages) {
  makeLargePages(400);
  for (const std::string command :
       {"analyze --jobs 1 --json --folder run m", "convert --jobs 1 --no-undo --folder run --result out/WORK0001.MUS m",
        "verify --folder run --result out/WORK0001.MUS m"}) {
    EXPECT_EQ(runCommand("-v 20480", command), 0) << command << ": " << place.files().at("error");
  }
}

/// How often the system has had to find memory for the commands that have ended.
long pagesOfMemoryFound() {
  rusage usage{};
  EXPECT_EQ(getrusage(RUSAGE_CHILDREN, &usage), 0);
  return usage.ru_minflt;
}

/// A page of memory has 4 KB, so the bytes of one page file alone fill 24, and its items ten times as many.
TEST_F(Limits, MemoryIsUsedAgainForTheNextPage) {
#ifndef __GLIBC__
  GTEST_SKIP() << "another C library decides this by itself";
#endif
  constexpr int pageCount = 100;
  makeLargePages(pageCount);
  ASSERT_EQ(runCommand("-n 64", "convert --no-undo --folder run --result out/WORK0001.MUS m"), 0);
  const long before = pagesOfMemoryFound();
  ASSERT_EQ(runCommand("-n 64", "verify --folder run --result out/WORK0001.MUS m"), 0);
  EXPECT_LT(pagesOfMemoryFound() - before, 60L * pageCount);
}

/// How little is too little depends on the size of the program. With less still, it cannot start. Large pages take much
/// more than the start.
TEST_F(Limits, TooLittleMemoryIsSaid) {
  makeLargePages(2);
  int said = 0;
  for (int kilobytes = 6000; kilobytes <= 12000; kilobytes += 50) {
    const std::string limit = "-v " + std::to_string(kilobytes);
    if (runCommand(limit, "--version") != 0) {
      continue;
    }
    const int status = run(limit);
    if (status == 0) {
      break;
    }
    EXPECT_EQ(status, 1) << kilobytes;
    EXPECT_TRUE(place.files().at("error").ends_with("kivsys: out of memory\n"))
        << kilobytes << place.files().at("error");
    expectNoStrays();
    ++said;
  }
  EXPECT_GT(said, 5);
}

TEST_F(Limits, AFileThatGrowsBeyondItsLimitIsAMessageAndNoSignal) {
  std::string notes;
  for (int i = 0; i < 200; ++i) {
    notes += "note 1 at " + std::to_string(20 + i) + " duration 3\n";
  }
  place.write("m/X001.MUS", place.page(duo + notes));
  EXPECT_EQ(run("-f 2"), 1);
  EXPECT_TRUE(place.files().at("error").ends_with("/WORK0001.MUS: Open of output MUS file failed in " +
                                                  (place.path() / "out").string() + ": File too large\n"))
      << place.files().at("error");
  expectNoStrays();
}

TEST_F(Limits, AFullDiskUnderStandardOutputIsSaid) {
  EXPECT_EQ(run("-n 64", "--no-instr-number", "/dev/full"), 1);
  EXPECT_TRUE(place.files().at("error").ends_with("kivsys: cannot write to standard output\n"));
}

}  // namespace
}  // namespace kiv::test
