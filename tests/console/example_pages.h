#pragma once

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/console/run_program.h"

namespace kiv::test {

/// Builds the pages of the bundled piece in the workplace and returns their names.
inline std::vector<std::string> buildExample(const Workplace& place) {
  std::vector<std::string> pages;
  for (const std::string& file : filesIn(EXAMPLE_FOLDER)) {
    if (file.starts_with("SYMPH")) {
      pages.push_back(file.substr(0, file.rfind('.')) + ".MUS");
      const Ended built =
          place.kivsys({"build", (std::filesystem::path(EXAMPLE_FOLDER) / file).string(), pages.back()});
      EXPECT_EQ(built.status, 0) << built.error;
    }
  }
  return pages;
}

/// What a document shows behind an indented command line: "" when it does not show it.
inline std::string shownBehind(const std::string& document, const std::string& command) {
  std::ifstream lines(std::filesystem::path(DOCS_FOLDER) / document);
  const std::string indent = "    ";
  std::string shown;
  bool isShown = false;
  for (std::string line; std::getline(lines, line);) {
    if (isShown && line.starts_with(indent)) {
      shown += line.substr(indent.size()) + "\n";
    } else {
      isShown = line == indent + "$ " + command;
    }
  }
  return shown;
}

/// The text with one name put for another, everywhere.
inline std::string with(std::string text, const std::string& name, const std::string& other) {
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + other.size())) {
    text.replace(at, name.size(), other);
  }
  return text;
}

}  // namespace kiv::test
