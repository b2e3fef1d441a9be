#include <filesystem>
#include <fstream>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// The pages that a document shows: a line with the page's name, then its text, indented.
std::map<std::string, std::string> pagesIn(const std::string& document) {
  std::map<std::string, std::string> pages;
  std::ifstream lines(std::filesystem::path(DOCS_FOLDER) / document);
  const std::string indent = "    ";
  std::string name;
  for (std::string line; std::getline(lines, line);) {
    if (line.starts_with('`') && line.ends_with(".MUS`:")) {
      name = line.substr(1, line.size() - std::string("``:").size());
    } else if (line.starts_with(indent) && !name.empty()) {
      pages[name] += line.substr(indent.size()) + "\n";
    } else if (!line.empty()) {
      name.clear();
    }
  }
  return pages;
}

TEST(Documents, TheConversionShownIsTheOneThatHappens) {
  const auto pages = pagesIn("conversion.md");
  ASSERT_EQ(pages.size(), 3U);
  const Workplace place;
  place.write("TRIO001.MUS", page(pages.at("TRIO001.MUS")));
  place.write("TRIO002.MUS", page(pages.at("TRIO002.MUS")));
  std::filesystem::create_directory(place.path() / "out");
  const Ended ended = place.kivsys({"convert", "TRIO001.MUS", "TRIO002.MUS", "--result", "out/WORK0001.MUS"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  place.write("shown.MUS", page(pages.at("WORK0002.MUS")));
  EXPECT_EQ(place.kivsys({"dump", "out/WORK0002.MUS"}).out, place.kivsys({"dump", "shown.MUS"}).out);
}

}  // namespace
}  // namespace kiv::test
