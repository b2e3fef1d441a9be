#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// The meaning of every exit status, by the table of the document, without the marks of code.
std::map<std::string, std::string> documented() {
  std::ifstream document(fs::path(DOCS_FOLDER) / "cli-rules.md");
  std::map<std::string, std::string> statuses;
  bool isTable = false;
  for (std::string line; std::getline(document, line);) {
    isTable = line == "## Exit status" || (isTable && !line.starts_with("## "));
    const std::size_t second = line.find(" | ");
    if (isTable && line.starts_with("| ") && second != std::string::npos && line[2] >= '0' && line[2] <= '9') {
      std::string meaning = line.substr(second + 3, line.rfind(" |") - second - 3);
      std::erase(meaning, '`');
      EXPECT_FALSE(statuses.contains(line.substr(2, second - 2))) << "one row for a status: " << line;
      statuses[line.substr(2, second - 2)] = meaning;
    }
  }
  return statuses;
}

/// The words of a text with one blank between them.
std::string onOneLine(const std::string& text) {
  std::istringstream words(text);
  std::string line;
  for (std::string word; words >> word;) {
    line += (line.empty() ? "" : " ") + word;
  }
  return line;
}

class ExitStatus : public ConsoleConvert {
 protected:
  /// The manual page as a terminal shows it.
  std::string shownManPage() const {
    place.write("kivsys.1", place.kivsys({"man"}).out);
    const std::string command =
        "GROFF_NO_SGR=1 groff -man -Tutf8 -P-cbou '" + (place.path() / "kivsys.1").string() + "' 2>&1";
    std::FILE* pipe = ::popen(command.c_str(), "r");
    std::string text;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
      text += static_cast<char>(c);
    }
    EXPECT_EQ(::pclose(pipe), 0) << text;
    return text;
  }
  int status(const Names& arguments) const { return place.kivsys(arguments).status; }
};

TEST_F(ExitStatus, IsDocumentedInOneTableWhichTheManualPageHasToo) {
  const auto statuses = documented();
  ASSERT_EQ(statuses.size(), 6U);
  const std::string page = onOneLine(shownManPage());
  const std::size_t begin = page.find("EXIT STATUS");
  ASSERT_NE(begin, std::string::npos) << page;
  const std::string section = page.substr(begin, page.find(" FILES ", begin) - begin);
  for (const auto& [number, meaning] : statuses) {
    EXPECT_NE(section.find(" " + number + " " + onOneLine(meaning)), std::string::npos) << number << "\n" << section;
  }
}

TEST_F(ExitStatus, Is0WhenARunIsDone) {
  addTwo();
  addPage("bad2.mus", "words 99\n");
  EXPECT_EQ(status({"analyze", "x1.mus", "x2.mus"}), 0) << "although they need a conversion";
  EXPECT_EQ(status({"convert", "x1.mus", "x2.mus", "-o", "out/R0001.MUS"}), 0);
  EXPECT_EQ(status({"verify", "x1.mus", "x2.mus", "--result", "out/R0001.MUS"}), 0);
  EXPECT_EQ(status({"survey", "."}), 0) << "although a piece has problems";
}

TEST_F(ExitStatus, Is1AfterACriticalEnd) {
  addTwo();
  addPage("bad2.mus", "words 99\n");
  place.write("bad.txt", "words\n");
  EXPECT_EQ(status({"analyze", "bad2.mus"}), 1);
  EXPECT_EQ(status({"analyze", "--keep-going", "x1.mus", "bad2.mus"}), 1);
  EXPECT_EQ(status({"convert", "bad2.mus"}), 1);
  EXPECT_EQ(status({"sort", "bad2.mus"}), 1);
  EXPECT_EQ(status({"chart", "bad2.mus"}), 1);
  EXPECT_EQ(status({"draw", "bad2.mus"}), 1);
  EXPECT_EQ(status({"build", "bad.txt", "new1.mus"}), 1);
  EXPECT_EQ(status({"verify", "x1.mus", "x2.mus", "--result", "none/R0001.MUS"}), 1);
  EXPECT_EQ(place.kivsysIntoFullDevice({"analyze", "x1.mus", "x2.mus"}).status, 1);
}

TEST_F(ExitStatus, Is2OnWrongUsage) {
  addTwo();
  EXPECT_EQ(status({}), 2);
  EXPECT_EQ(status({"analyze", "--nothing", "x1.mus"}), 2);
  EXPECT_EQ(status({"analyze", "gone1.mus"}), 2);
  EXPECT_EQ(status({"convert", "x1.mus", "-o", "x0001.txt"}), 2);
  EXPECT_EQ(status({"survey", "gone"}), 2);
  EXPECT_EQ(status({"dump", "gone1.mus"}), 2);
}

TEST_F(ExitStatus, Is3ForWhatIsNotUsableAsItStands) {
  addTwo();
  addPage("y1.mus", fluteAndBass + "note 7 at 5\n");
  addPage("y2.mus", bass);
  EXPECT_EQ(status({"analyze", "--exit-code", "x1.mus", "x2.mus"}), 3);
  EXPECT_EQ(status({"analyze", "--strict", "y1.mus", "y2.mus"}), 3);
  EXPECT_EQ(status({"convert", "--strict", "y1.mus", "y2.mus"}), 3);
}

}  // namespace
}  // namespace kiv::test
