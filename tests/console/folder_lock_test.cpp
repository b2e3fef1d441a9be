#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/running_program.h"

namespace kiv::test {
namespace {

/// Another run that works in a folder, as far as the program can see: this process.
class HeldFolder {
 public:
  explicit HeldFolder(const fs::path& folder) : file_(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
    EXPECT_EQ(::flock(file_, LOCK_EX | LOCK_NB), 0);
  }
  HeldFolder(const HeldFolder&) = delete;
  HeldFolder& operator=(const HeldFolder&) = delete;
  ~HeldFolder() { ::close(file_); }

 private:
  int file_;
};

std::string self() {
  return "another run (process " + std::to_string(::getpid()) + ")";
}

class FolderLockOfRuns : public ConsoleConvert {
 protected:
  void SetUp() override {
    addTwo();
    fs::create_directory(place.path() / "out");
  }
  Names convert() const { return {"convert", "x1.mus", "x2.mus", "--result", "out/WORK0001.MUS"}; }
};

TEST_F(FolderLockOfRuns, ASecondRunInTheFolderOfTheReportSaysWhoIsThereAndChangesNothing) {
  place.write("KivSystem2.TXT", "theirs");
  const HeldFolder held(place.path());
  const std::vector<Names> commands = {{"analyze", "x1.mus"}, convert(), {"trace", "x1.mus"}, {"sort", "x1.mus"}};
  for (const Names& command : commands) {
    const Ended run = place.kivsys(command);
    EXPECT_EQ(run.status, 4) << command.front();
    EXPECT_EQ(run.out, "");
    EXPECT_NE(run.error.find("kivsys: " + self() + " is at work in the folder "), std::string::npos) << run.error;
    EXPECT_EQ(run.error.find('\n'), run.error.size() - 1) << "one line";
  }
  EXPECT_EQ(place.read("KivSystem2.TXT"), "theirs");
  EXPECT_TRUE(fs::is_empty(place.path() / "out"));
}

TEST_F(FolderLockOfRuns, ASecondRunInTheFolderOfTheResultsEndsToo) {
  const HeldFolder held(place.path() / "out");
  EXPECT_EQ(place.kivsys(convert()).status, 4);
  EXPECT_EQ(place.kivsys({"analyze", "x1.mus", "x2.mus"}).status, 0) << "it writes no results";
}

TEST_F(FolderLockOfRuns, ARunThatEndsSoMakesNoFolder) {
  const HeldFolder held(place.path() / "out");
  Names command = convert();
  command.insert(command.end(), {"--folder", "new"});
  EXPECT_EQ(place.kivsys(command).status, 4);
  EXPECT_FALSE(fs::exists(place.path() / "new"));
}

TEST_F(FolderLockOfRuns, ResultsBesideThePagesAreFoundFromANamesFile) {
  addTwo("pages/");
  place.write("names.txt", "* a comment\r\n" + place.corePath("pages/x1.mus") + " 1\r\n" +
                               place.corePath("pages/x2.mus") + " 1\r\n");
  const HeldFolder held(place.path() / "pages");
  EXPECT_EQ(place.kivsys({"convert", "--names", "names.txt"}).status, 4);
  EXPECT_EQ(place.kivsys({"sort", "--names", "names.txt"}).status, 4);
  EXPECT_EQ(place.kivsys({"analyze", "--names", "names.txt"}).status, 0);
}

TEST_F(FolderLockOfRuns, WhatOnlyLooksAndASiblingsCallNeedNoLock) {
  place.write("names.txt", place.corePath("x1.mus") + " 1\r\n");
  const HeldFolder held(place.path());
  EXPECT_EQ(place.kivsys({"convert", "--dry-run", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"dump", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt"}).status, 0);
}

TEST_F(FolderLockOfRuns, WithWaitTheSecondRunFollowsTheFirst) {
  auto held = std::make_unique<HeldFolder>(place.path());
  Names command = convert();
  command.emplace_back("--wait");
  RunningProgram run(place.path(), command);
  EXPECT_TRUE(run.says("kivsys: waiting for " + self() + " in the folder " + place.path().string()));
  EXPECT_EQ(place.read("KivSystem2.TXT"), "(no file)");
  held.reset();
  EXPECT_EQ(run.end(), 0) << run.error();
  EXPECT_NE(place.read("out/WORK0002.MUS"), "(no file)");
}

TEST_F(FolderLockOfRuns, ResultsAreComparedWithInputsAgainAfterTheWait) {
  const std::string page = place.read("x2.mus");
  auto held = std::make_unique<HeldFolder>(place.path() / "out");
  Names command = convert();
  command.emplace_back("--wait");
  RunningProgram run(place.path(), command);
  EXPECT_TRUE(run.says("kivsys: waiting for " + self() + " in the folder " + (place.path() / "out/").string()));
  fs::create_symlink("../x2.mus", place.path() / "out/WORK0002.MUS");
  held.reset();
  EXPECT_EQ(run.end(), 2) << run.error();
  EXPECT_EQ(place.read("x2.mus"), page);
}

TEST_F(FolderLockOfRuns, APageThatIsGoneAfterTheWaitIsNotSorted) {
  auto held = std::make_unique<HeldFolder>(place.path());
  RunningProgram run(place.path(), {"sort", "x1.mus", "--wait"});
  EXPECT_TRUE(run.says("kivsys: waiting for " + self() + " in the folder " + place.path().string() + "/"));
  fs::remove(place.path() / "x1.mus");
  held.reset();
  EXPECT_EQ(run.end(), 1) << run.error();
  EXPECT_TRUE(run.error().ends_with("kivsys: only 0 of 1 pages were sorted\n")) << run.error();
}

TEST_F(FolderLockOfRuns, APageThatIsGoneAfterTheWaitIsNotAnalyzed) {
  auto held = std::make_unique<HeldFolder>(place.path());
  RunningProgram run(place.path(), {"analyze", "x1.mus", "x2.mus", "--wait"});
  EXPECT_TRUE(run.says("kivsys: waiting for " + self() + " in the folder " + place.path().string()));
  fs::remove(place.path() / "x2.mus");
  held.reset();
  EXPECT_EQ(run.end(), 1) << run.error();
  EXPECT_NE(run.error().find("x2.mus"), std::string::npos) << run.error();
  EXPECT_EQ(place.read("KivSystem1.TXT"), "(no file)") << "nothing has been read";
}

TEST_F(FolderLockOfRuns, APageThatHasChangedAfterTheWaitIsReadAsItIsThen) {
  auto held = std::make_unique<HeldFolder>(place.path());
  RunningProgram run(place.path(), {"analyze", "x1.mus", "x2.mus", "--wait"});
  EXPECT_TRUE(run.says("kivsys: waiting for " + self() + " in the folder " + place.path().string()));
  place.write("x2.mus", place.read("x2.mus") + " ");
  held.reset();
  EXPECT_EQ(run.end(), place.kivsys({"analyze", "x1.mus", "x2.mus"}).status) << run.error();
  EXPECT_EQ(run.error().find("another program"), std::string::npos) << run.error();
}

TEST_F(FolderLockOfRuns, NothingOfTheLockStays) {
  EXPECT_EQ(place.kivsys(convert()).status, 0);
  EXPECT_EQ(filesIn(place.path()), (Names{"KivSystem1.TXT", "KivSystem2.TXT", "out", "x1.mus", "x2.mus"}));
  EXPECT_EQ(filesIn(place.path() / "out"), (Names{"WORK0001.MUS", "WORK0002.MUS"}));
}

TEST_F(FolderLockOfRuns, RunsAtTheSameTimeInOneFolderDoNotMix) {
  constexpr int runs = 12;
  std::vector<std::unique_ptr<RunningProgram>> all;
  for (int i = 0; i < runs; ++i) {
    const std::string number = std::to_string(i);
    const std::string instrument = std::to_string(50 + i);
    addPage("g" + number + "/x1.mus",
            "staff 2 at 0 instrument " + instrument + "\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n");
    addPage("g" + number + "/x2.mus", bass);
    all.push_back(std::make_unique<RunningProgram>(
        place.path(),
        Names{"convert", "--wait", "--no-instr-number", "g" + number + "/x1.mus", "g" + number + "/x2.mus"}));
  }
  for (int i = 0; i < runs; ++i) {
    EXPECT_EQ(all[static_cast<std::size_t>(i)]->end(), 0) << all[static_cast<std::size_t>(i)]->error();
    EXPECT_EQ(dumped("g" + std::to_string(i) + "/WORK0002.MUS"),
              asDumped("staff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\nstaff 2 at 0 instrument " +
                       std::to_string(50 + i) + "\nclef 2 at 2\n"));
  }
}

}  // namespace
}  // namespace kiv::test
