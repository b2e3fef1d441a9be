#include "diagnostics/problem_codes.h"

#include <filesystem>
#include <fstream>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

namespace fs = std::filesystem;

std::string contentOf(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  std::ostringstream content;
  content << stream.rdbuf();
  return content.str();
}

/// The texts that messages begin with where the sources show them.
std::set<std::string> textsShownIn(const std::string& folder) {
  static const std::regex shown(
      R"((?:fatal|inform|refuse)\(\s*(?:std::string\()?\"((?:[^\"\\]|\\.)*)|message\(Icon::\w+,\s*\"((?:[^\"\\]|\\.)*))");
  std::set<std::string> texts;
  for (const auto& entry : fs::recursive_directory_iterator(fs::path(SOURCE_FOLDER) / folder)) {
    if (entry.path().extension() != ".cpp") {
      continue;
    }
    const std::string source = contentOf(entry.path());
    for (auto match = std::sregex_iterator(source.begin(), source.end(), shown); match != std::sregex_iterator();
         ++match) {
      texts.insert((*match)[1].matched ? (*match)[1].str() : (*match)[2].str());
    }
  }
  return texts;
}

TEST(ProblemCodes, EveryMessageInTheSourcesHasItsOwn) {
  // Of the panel alone, where nothing of this is asked.
  const std::set<std::string> ofThePanel = {"Convert?"};
  std::size_t seen = 0;
  for (const std::string folder : {"analysis", "conversion", "input", "mus", "sort"}) {
    for (const std::string& text : textsShownIn(folder)) {
      EXPECT_NE(codeOf(text), code::other) << folder << ": " << text;
      ++seen;
    }
  }
  for (const std::string& text : textsShownIn("shell")) {
    const bool isModules = text.starts_with("Module ") || text.starts_with("Drop error") ||
                           text == "Failed to open output folder" || ofThePanel.contains(text);
    EXPECT_TRUE(isModules || codeOf(text) != code::other) << text;
    ++seen;
  }
  EXPECT_GT(seen, 25U) << "the messages are no longer found in the sources";
}

TEST(ProblemCodes, OfMessagesThatDifferInTheirHeads) {
  EXPECT_EQ(codeOf("Duplicate instrument Id in file: X"), code::duplicateInstrumentId);
  EXPECT_EQ(codeOf("Duplicate staff number in multipage files. Top file is: X"), code::duplicateStaffNumber);
  EXPECT_EQ(codeOf("Run-time error: Overflow\r\nX"), code::overflow);
  EXPECT_EQ(codeOf("Run-time error: Disk full\r\nX"), code::runTimeError);
  EXPECT_EQ(codeOf("Name in names file [A:\\X1.MUS]"), code::namesFileMissing);
  EXPECT_EQ(codeOf(""), code::other);
}

TEST(ProblemCodes, NoHeadIsHiddenByAnEarlierOne) {
  const auto heads = messageHeads();
  for (std::size_t i = 0; i < heads.size(); ++i) {
    EXPECT_EQ(codeOf(heads[i].text), heads[i].code) << heads[i].text;
  }
}

}  // namespace
}  // namespace kiv::test
