#include <chrono>
#include <csignal>
#include <memory>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/running_program.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

/// A run that is at work for as long as it takes: it waits for a folder that this process has locked.
class StoppedRun : public ConsoleConvert {
 protected:
  StoppedRun() {
    addTwo();
    folder_ = ::open(place.path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    EXPECT_EQ(::flock(folder_, LOCK_EX | LOCK_NB), 0);
  }
  ~StoppedRun() override { ::close(folder_); }

  std::string waiting() const {
    return "kivsys: waiting for another run (process " + std::to_string(::getpid()) + ") in the folder " +
           place.path().string();
  }
  void unlock() const { EXPECT_EQ(::flock(folder_, LOCK_UN), 0); }

 private:
  int folder_ = -1;
};

TEST_F(StoppedRun, EverySignalEndsItWithItsStatusAndALineOfWhatWasWritten) {
  for (const auto& [signal, name] :
       {std::pair(SIGINT, "INT"), std::pair(SIGTERM, "TERM"), std::pair(SIGHUP, "HUP"), std::pair(SIGXFSZ, "XFSZ")}) {
    RunningProgram run(place.path(), {"convert", "--wait", "x1.mus", "x2.mus"});
    ASSERT_TRUE(run.says(waiting()));
    run.signal(signal);
    EXPECT_EQ(run.end(), 128 + signal);
    EXPECT_EQ(run.error(), waiting() + "\nkivsys: ended by SIG" + name + "; written: nothing\n");
    EXPECT_EQ(filesIn(place.path()), (Names{"tmp", "x1.mus", "x2.mus"}));
    EXPECT_TRUE(fs::is_empty(place.path() / "tmp"));
  }
}

TEST_F(StoppedRun, ASignalThatTheProgramWasStartedToIgnoreStaysIgnored) {
  auto* const before = std::signal(SIGHUP, SIG_IGN);
  RunningProgram run(place.path(), {"analyze", "--wait", "x1.mus", "x2.mus"});
  static_cast<void>(std::signal(SIGHUP, before));
  ASSERT_TRUE(run.says(waiting()));
  run.signal(SIGHUP);
  unlock();
  EXPECT_EQ(run.end(), 0) << run.error();
}

using Signals = ConsoleConvert;

/// Wherever the signal meets the run, results are whole or not there.
TEST_F(Signals, ResultsAreWholeOrNotThereAndNothingElseStays) {
  addPage("x1.mus", fluteAndBass);
  Names command = {"convert", "--no-instr-number", "x1.mus"};
  for (int i = 2; i <= 200; ++i) {
    command.push_back("x" + std::to_string(i) + ".mus");
    addPage(command.back(), bass);
  }
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    RunningProgram run(place.path(), command);
    // The result of the analysis is said before the first page is converted.
    ASSERT_TRUE(run.says("kivsys: note: the pages need a conversion: CONSISTENCY=NO, MULTIFILE=NO")) << run.error();
    run.signal(signal);
    const int status = run.end();
    EXPECT_EQ(status, 128 + signal) << run.error();
    EXPECT_NE(run.error().find("; written: KivSystem1.TXT, KivSystem2.TXT"), std::string::npos) << run.error();
    EXPECT_TRUE(fs::is_empty(place.path() / "tmp"));
    for (const std::string& name : filesIn(place.path())) {
      EXPECT_FALSE(name.starts_with(".kiv-")) << name;
      if (name.starts_with("WORK")) {
        EXPECT_EQ(dumped(name), asDumped(name == "WORK0001.MUS" ? plainFluteAndBass : plainBass)) << name;
        fs::remove(place.path() / name);
      }
    }
  }
}

TEST_F(Signals, ARunThatWaitsForStandardInputEnds) {
  addTwo();
  for (const auto& [signal, name] : {std::pair(SIGINT, "INT"), std::pair(SIGTERM, "TERM")}) {
    RunningProgram run(place.path(), {"analyze", "--names", "-"});
    ASSERT_TRUE(run.waits());
    run.signal(signal);
    EXPECT_EQ(run.end(), 128 + signal);
    EXPECT_EQ(run.error(), "kivsys: ended by SIG" + std::string(name) + "; written: nothing\n");
  }
}

TEST_F(Signals, ARunThatWaitsForTheReaderOfAPipeEnds) {
  addTwo();
  ASSERT_EQ(::mkfifo((place.path() / "pipe").c_str(), 0600), 0);
  RunningProgram run(place.path(), {"chart", "x1.mus", "--out", "pipe"});
  ASSERT_TRUE(run.waits());
  run.signal(SIGINT);
  EXPECT_EQ(run.end(), 128 + SIGINT) << run.error();
}

TEST_F(Signals, TheLastLineSaysHowFarTheRunHasCome) {
  Names command = {"convert", "--force"};
  for (int i = 1; i <= 400; ++i) {
    command.push_back("x" + std::to_string(i) + ".mus");
    addPage(command.back(), bass);
  }
  RunningProgram run(place.path(), command);
  const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
  while (!fs::exists(place.path() / "WORK0002.MUS") && std::chrono::steady_clock::now() < deadline) {
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  run.signal(SIGINT);
  EXPECT_EQ(run.end(), 128 + SIGINT);
  EXPECT_FALSE(matchesIn(run.error(), "kivsys: ended by SIGINT after [1-9][0-9]* of 400 systems; written: ").empty())
      << run.error();
}

TEST_F(Signals, ABrokenPipeLeavesNoNamesFile) {
  addTwo();
  const std::string command = "cd '" + place.path().string() + "' && mkdir -p tmp && TMPDIR=tmp bash -c \"'" +
                              KIVSYS_PROGRAM + "' analyze x1.mus x2.mus 2>error | true; exit \\${PIPESTATUS[0]}\"";
  static_cast<void>(std::system(command.c_str()));
  EXPECT_TRUE(fs::is_empty(place.path() / "tmp"));
}

}  // namespace
}  // namespace kiv::test
