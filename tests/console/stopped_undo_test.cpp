#include <chrono>
#include <csignal>
#include <functional>
#include <thread>

#include "tests/console/convert_fixture.h"
#include "tests/console/running_program.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

/// Runs that a signal stops in the middle say how far they came, and how to undo what they have written.
class StoppedUndo : public ConsoleConvert {
 protected:
  static constexpr int pages = 400;

  Names withPages(Names arguments) const {
    for (int i = 1; i <= pages; ++i) {
      const std::string name = "x" + std::to_string(i) + ".mus";
      arguments.push_back(name);
      addPage(name, fluteAndBass);
    }
    return arguments;
  }
  /// What the run says that is stopped as soon as this file is there.
  std::string stopped(const Names& arguments, const std::string& file) const {
    RunningProgram run(place.path(), arguments);
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!fs::exists(place.path() / file) && std::chrono::steady_clock::now() < deadline) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    run.signal(SIGINT);
    EXPECT_EQ(run.end(), 128 + SIGINT);
    return run.error();
  }
  static std::string ending(const std::string& plural, const std::string& folder) {
    return "kivsys: ended by SIGINT after [1-9][0-9]* of 400 " + plural + "; written: [^\n]*\nNext: kivsys undo " +
           folder + "\n$";
  }
};

TEST_F(StoppedUndo, OfAConversionIsNamedWithTheFolderOfTheResults) {
  fs::create_directory(place.path() / "my out");
  const Names arguments = withPages({"convert", "--force", "-o", "my out/"});
  const std::string error = stopped(arguments, "my out/WORK0003.MUS");
  EXPECT_FALSE(matchesIn(error, ending("systems", "'my out'")).empty()) << error;
}

TEST_F(StoppedUndo, OfARunInTheCurrentFolderIsNamedWithADot) {
  const std::string error = stopped(withPages({"sort"}), "X3.PAG");
  EXPECT_FALSE(matchesIn(error, ending("pages", "\\.")).empty()) << error;
}

TEST_F(StoppedUndo, OfACorrectionIsNamedWithTheFolderOfThePages) {
  const std::string error = stopped(withPages({"fix", "--map", "102=7", "-o", "fixed"}), "fixed/x3.mus");
  EXPECT_FALSE(matchesIn(error, ending("pages", "fixed")).empty()) << error;
}

TEST_F(StoppedUndo, IsNotNamedWithoutAJournalOrWhenTheRunIsQuiet) {
  for (const std::string option : {"--no-undo", "-q"}) {
    const std::string error = stopped(withPages({"sort", option}), "X3.PAG");
    EXPECT_FALSE(matchesIn(error, "kivsys: ended by SIGINT after [0-9]* of 400 pages; [^\n]*\n$").empty()) << error;
    for (const auto& file : filesIn(place.path())) {
      if (file.ends_with(".PAG")) {
        fs::remove(place.path() / file);
      }
    }
  }
}

}  // namespace
}  // namespace kiv::test
