#include "tests/console/example_pages.h"

#include <fstream>

#include <gtest/gtest.h>

namespace kiv::test {

namespace fs = std::filesystem;

std::vector<std::string> buildExample(const Workplace& place, const std::string& folder) {
  std::vector<std::string> pages;
  for (const std::string& file : filesIn(EXAMPLE_FOLDER)) {
    if (file.starts_with("SYMPH")) {
      pages.push_back(file.substr(0, file.rfind('.')) + ".MUS");
      const Ended built = place.kivsys({"build", (fs::path(EXAMPLE_FOLDER) / file).string(), pages.back()}, folder);
      EXPECT_EQ(built.status, 0) << built.error;
    }
  }
  return pages;
}

std::string shownAfter(const std::string& document, const std::string& command) {
  const std::string indent = "    ";
  std::ifstream lines(fs::path(DOCS_FOLDER) / document);
  std::string shown;
  bool inside = false;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with(indent + "$ ") || !line.starts_with(indent)) {
      inside = line == indent + "$ " + command;
    } else if (inside) {
      shown += line.substr(indent.size()) + "\n";
    }
  }
  return shown;
}

std::string shownInReference(const std::string& command) {
  return shownAfter("cli.md", command) + shownAfter("cli-rules.md", command) + shownAfter("cli-pages.md", command);
}

std::string with(std::string text, const std::string& name, const std::string& other) {
  for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + other.size())) {
    text.replace(at, name.size(), other);
  }
  return text;
}

}  // namespace kiv::test
