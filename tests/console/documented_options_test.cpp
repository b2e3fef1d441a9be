#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/console/run_program.h"

namespace kiv::test {
namespace {

using Options = std::set<std::string>;
using OptionsOfCommands = std::map<std::string, Options>;

/// The words of a text that begin with a dash and are no lone dash, without what follows a comma or a blank.
Options dashedWords(const std::string& text) {
  std::istringstream words(text);
  Options options;
  for (std::string word; words >> word;) {
    word = word.substr(0, word.find(','));
    if (word.starts_with('-') && word.size() > 1) {
      options.insert(word);
    }
  }
  return options;
}

/// The texts between grave accents.
std::vector<std::string> codesIn(const std::string& text) {
  std::vector<std::string> codes;
  for (std::size_t at = text.find('`'); at != std::string::npos; at = text.find('`', at + 1)) {
    const std::size_t end = text.find('`', at + 1);
    codes.push_back(text.substr(at + 1, end - at - 1));
    at = end;
  }
  return codes;
}

/// The cells of a row of a table.
std::vector<std::string> cellsOf(const std::string& line) {
  std::istringstream row(line.substr(1));
  std::vector<std::string> cells;
  for (std::string cell; std::getline(row, cell, '|');) {
    cells.push_back(cell);
  }
  return cells;
}

/// The commands, and the options that a document says they have.
class DocumentedOptions : public ::testing::Test {
 protected:
  DocumentedOptions() {
    std::istringstream help(place_.kivsys({"--help"}).out);
    bool isListed = false;
    for (std::string line; std::getline(help, line);) {
      isListed = line == "Commands:" || (isListed && line.starts_with("  "));
      if (isListed && line.starts_with("  ") && line[2] != ' ') {
        commands_.push_back(line.substr(2, line.find(' ', 2) - 2));
      }
    }
  }

  /// The options of a command, as its help lists them.
  Options inHelp(const std::string& command) const {
    std::istringstream help(place_.kivsys({command, "--help"}).out);
    Options options;
    for (std::string line; std::getline(help, line);) {
      if (line.starts_with("  -")) {
        options.merge(dashedWords(line.substr(0, line.find("  ", 2))));
      }
    }
    return options;
  }

  bool isCommand(const std::string& word) const {
    return std::find(commands_.begin(), commands_.end(), word) != commands_.end();
  }

  /// The options in the tables of the sections that are named after commands.
  void readSections(const std::string& document, OptionsOfCommands& all) const {
    std::ifstream file(std::string(DOCS_FOLDER) + "/" + document);
    std::vector<std::string> described;
    for (std::string line; std::getline(file, line);) {
      if (line.starts_with("## ")) {
        described.clear();
        std::istringstream words(line.substr(3));
        for (std::string word; words >> word;) {
          if (isCommand(word)) {
            described.push_back(word);
          }
        }
      } else if (line.starts_with("| `")) {
        for (const std::string& code : codesIn(cellsOf(line).front())) {
          for (const std::string& command : described) {
            all[command].merge(dashedWords(code));
          }
        }
      }
    }
  }

  /// The options of several commands, whose last cell names them.
  OptionsOfCommands commonOnes() const {
    std::ifstream file(std::string(DOCS_FOLDER) + "/cli-rules.md");
    OptionsOfCommands all;
    bool isTable = false;
    for (std::string line; std::getline(file, line);) {
      isTable = line.starts_with("## ") ? line == "## Common options" : isTable;
      if (!isTable || !line.starts_with("| `")) {
        continue;
      }
      const std::vector<std::string> cells = cellsOf(line);
      for (const std::string& command : cells.at(2) == " all " ? commands_ : codesIn(cells.at(2))) {
        EXPECT_TRUE(isCommand(command)) << line;
        for (const std::string& code : codesIn(cells.front())) {
          all[command].merge(dashedWords(code));
        }
      }
    }
    return all;
  }

  const std::vector<std::string>& commands() const { return commands_; }

 private:
  Workplace place_;
  std::vector<std::string> commands_;
};

TEST_F(DocumentedOptions, AreThoseOfTheHelpForEveryCommand) {
  OptionsOfCommands documented;
  for (const std::string document : {"cli.md", "cli-pages.md", "cli-repair.md", "cli-report.md"}) {
    readSections(document, documented);
  }
  const OptionsOfCommands common = commonOnes();
  documented["dump"].erase("--force");  // that of build, in the same table
  ASSERT_GT(commands().size(), 15U);
  for (const std::string& command : commands()) {
    const Options real = inHelp(command);
    EXPECT_TRUE(real.contains("--help")) << command;
    Options all = documented[command];
    all.insert(common.at(command).begin(), common.at(command).end());
    EXPECT_EQ(all, real) << command;
  }
}

}  // namespace
}  // namespace kiv::test
