#include <chrono>
#include <csignal>
#include <thread>

#include "tests/console/convert_fixture.h"
#include "tests/console/running_program.h"

namespace kiv::test {
namespace {

/// Runs over a large group, stopped at many moments: also in those parts of a run that a bad page does not end.
class StoppedParts : public ConsoleConvert {
 protected:
  StoppedParts() {
    constexpr int count = 700;
    fs::create_directory(place.path() / "big");
    addPage("big/x1.mus", fluteAndBass);
    addPage("big/x2.mus", bass);
    for (int i = 3; i <= count; ++i) {
      fs::create_hard_link(place.path() / ("big/x" + std::to_string(2 - i % 2) + ".mus"),
                           place.path() / ("big/x" + std::to_string(i) + ".mus"));
    }
  }

  /// Stops the run after ever longer times, until it is too late. Every time, it must end with the signal's status and
  /// the line that says what was written. What is checked after each stop gets that line.
  template <typename Check>
  void stop(const Names& arguments, Check check) const {
    int stops = 0;
    for (int wait = 1; stops < 12; wait += 1 + wait / 2) {
      RunningProgram run(place.path(), arguments);
      if (run.handlesSignals()) {
        std::this_thread::sleep_for(std::chrono::milliseconds(wait));
        run.signal(SIGINT);
      }
      const int status = run.end();
      if (status == 0 || status == 1 || status == 3) {
        break;
      }
      ASSERT_EQ(status, 128 + SIGINT) << run.error();
      check(run.error());
      ++stops;
    }
    EXPECT_GT(stops, 1) << "no run was stopped";
  }
};

TEST_F(StoppedParts, AReportIsNotWritten) {
  stop({"report", "big", "-o", "big.html"}, [&](const std::string& error) {
    if (!fs::exists(place.path() / "big.html")) {
      EXPECT_NE(error.find("; written: nothing\n"), std::string::npos) << error;
    }
    fs::remove(place.path() / "big.html");
  });
}

TEST_F(StoppedParts, ASurveyWritesThePageOfTheFinishedPieces) {
  for (int i = 1; i <= 5; ++i) {
    const std::string folder = "library/" + std::to_string(i);
    fs::create_directories(place.path() / folder);
    for (const auto& page : fs::directory_iterator(place.path() / "big")) {
      fs::create_hard_link(page.path(), place.path() / folder / page.path().filename());
    }
  }
  stop({"survey", "library", "--html", "library.html"}, [&](const std::string& error) {
    EXPECT_NE(error.find("kivsys: interrupted with "), std::string::npos) << error;
    EXPECT_NE(place.read("library.html").find("The survey was interrupted"), std::string::npos);
  });
}

TEST_F(StoppedParts, NoResultIsMadeOfPagesThatWereNotLookedAt) {
  for (const std::string option : {"--keep-going", "--strict"}) {
    stop({"convert", option, "--no-undo", "big", "--result", "out/WORK0001.MUS"}, [&](const std::string& error) {
      const bool isCompleteList = error.find("skipped") == std::string::npos;
      EXPECT_TRUE(isCompleteList) << error;
      if (fs::exists(place.path() / "out") && !filesIn(place.path() / "out").empty()) {
        EXPECT_LT(filesIn(place.path() / "out").size(), 699U) << "the run went on to its end";
        EXPECT_NE(error.find(" of 700 systems"), std::string::npos) << error;
      }
      fs::remove_all(place.path() / "out");
    });
  }
}

}  // namespace
}  // namespace kiv::test
