#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/console/run_program.h"
#include "tests/support/patterns.h"

namespace kiv::test {
namespace {

/// A command of a document, and what the document says that it prints.
struct Step {
  std::string command;
  std::string shown;
};

/// The commands of a section of a document, in order: indented lines, of which those that begin with $ are commands.
std::vector<Step> stepsIn(const std::string& document, const std::string& section) {
  const std::string indent = "    ";
  std::vector<Step> steps;
  std::ifstream lines(std::filesystem::path(DOCS_FOLDER) / document);
  bool inside = false;
  std::string blank;  // a line between two that are shown
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with("## ")) {
      inside = line == "## " + section;
    } else if (inside && line.starts_with(indent + "$ ")) {
      steps.push_back({line.substr(indent.size() + 2), ""});
    } else if (inside && line.starts_with(indent) && !steps.empty()) {
      steps.back().shown += blank + line.substr(indent.size()) + "\n";
    }
    blank = line.empty() ? "\n" : "";
  }
  return steps;
}

/// The text with the folder and the time of the document.
std::string asInDocument(std::string text, const std::string& folder) {
  for (std::size_t at = text.find(folder); at != std::string::npos; at = text.find(folder)) {
    text.replace(at, folder.size(), "/home/me");
  }
  return replaceMatches(text, R"(\d{4}-\d\d-\d\d \d\d:\d\d:\d\d)", "2026-11-22 10:16:11");
}

/// Performs the steps in a new place, of which the first one is "mkdir FOLDER && cd FOLDER".
void perform(const std::vector<Step>& steps, const Workplace& place, const std::string& made) {
  std::string folder = ".";
  for (const Step& step : steps) {
    const Ended ended = place.shell(step.command, folder);
    EXPECT_EQ(asInDocument(ended.out, place.path().string()), step.shown) << step.command;
    if (step.command.starts_with("mkdir " + made)) {
      folder = made;
    }
  }
}

TEST(WalkThrough, PrintsWhatTheDocumentShows) {
  const std::vector<Step> steps = stepsIn("repair.md", "A walk-through");
  ASSERT_GE(steps.size(), 10U);
  perform(steps, Workplace(), "minuet");
}

TEST(WalkThrough, OfRestStavesPrintsAndDrawsWhatTheDocumentShows) {
  const std::vector<Step> steps = stepsIn("rest-staves.md", "Try it");
  ASSERT_GE(steps.size(), 7U);
  const Workplace place;
  perform(steps, place, "march");
  const std::filesystem::path pictures = std::filesystem::path(DOCS_FOLDER) / "pictures";
  int compared = 0;
  for (const std::string kind : {"plain", "fit"}) {
    for (int system = 1; system <= 6; ++system) {
      const std::string name = "rest-staves-" + std::to_string(system) + "-" + kind + ".svg";
      std::ifstream file(pictures / name, std::ios::binary);
      if (file) {
        const std::string picture{std::istreambuf_iterator<char>(file), {}};
        const std::string page = kind + "/WORK000" + std::to_string(system) + ".MUS";
        EXPECT_EQ(place.shell("kivsys draw " + page, "march").out, picture) << name << ": ./dev screenshots retakes it";
        ++compared;
      }
    }
  }
  EXPECT_EQ(compared, 11);
}

}  // namespace
}  // namespace kiv::test
