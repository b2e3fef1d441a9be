#include <cctype>
#include <cstdio>
#include <set>
#include <sstream>

#include <gtest/gtest.h>

#include "tests/console/run_program.h"

namespace kiv::test {
namespace {

using Words = std::vector<std::string>;

/// What a command of the Bourne shell prints, errors included.
std::string printedBy(const std::string& command) {
  std::FILE* pipe = ::popen(("{ " + command + "\n} 2>&1").c_str(), "r");
  std::string text;
  for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
    text += static_cast<char>(c);
  }
  const int status = ::pclose(pipe);
  return status == 0 ? text : text + "(the command failed)";
}

Words linesOf(const std::string& text) {
  std::istringstream stream(text);
  Words lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// The names in the help's list of options: words at the begin of a line that begin with a dash.
Words optionsIn(const std::string& help) {
  Words options;
  for (const std::string& line : linesOf(help)) {
    if (line.starts_with("  -")) {
      std::istringstream words(line.substr(0, line.find("  ", 2)));
      for (std::string word; words >> word;) {
        if (word.starts_with('-')) {
          options.push_back(word.substr(0, word.find(',')));
        }
      }
    }
  }
  return options;
}

/// The commands that the help lists.
Words commandsIn(const std::string& help) {
  Words commands;
  bool listed = false;
  for (const std::string& line : linesOf(help)) {
    if (listed && line.starts_with("  ") && std::isalpha(static_cast<unsigned char>(line[2])) != 0) {
      commands.push_back(line.substr(2, line.find(' ', 2) - 2));
    }
    listed = line == "Commands:" || (listed && line.starts_with("  "));
  }
  return commands;
}

std::set<std::string> asSet(const Words& words) {
  return {words.begin(), words.end()};
}

class ManAndCompletions : public ::testing::Test {
 protected:
  std::string help(const std::string& command) const { return place.kivsys({command, "--help"}).out; }
  Words commands() const { return commandsIn(place.kivsys({"--help"}).out); }

  std::string printed(const Words& arguments) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_EQ(ended.error, "");
    return ended.out;
  }

  /// What a command of the Bourne shell prints in the workplace.
  std::string inPlace(const std::string& command) const {
    return printedBy("cd " + place.path().string() + " && " + command);
  }

  /// Leaves a script, and some files to be offered.
  void prepare(const std::string& shell) const {
    if (place.read("script") != "(no file)") {
      return;
    }
    place.write("script", printed({"completions", shell}));
    for (const char* file : {"files/P1.MUS", "files/P 2.mus", "files/names.txt", "files/out/P3.MUS"}) {
      place.write(file, "");
    }
  }

  /// What bash offers for the last word. Bash itself splits the line at '='.
  std::set<std::string> bash(const Words& words) const {
    prepare("bash");
    std::string line;
    for (const std::string& word : words) {
      line += " '" + word + "'";
    }
    place.write("run.sh", "source ./script\ncd files\nCOMP_WORDS=(kivsys" + line +
                              ")\nCOMP_CWORD=" + std::to_string(words.size()) +
                              "\n_kivsys\n((${#COMPREPLY[@]} == 0)) || printf '%s\\n' \"${COMPREPLY[@]}\"\n");
    return asSet(linesOf(inPlace("bash --noprofile --norc run.sh")));
  }

  /// What fish offers after this line.
  std::set<std::string> fish(const std::string& line) const {
    prepare("fish");
    place.write("run.fish",
                "source ./script\ncd files\ncomplete -C '" + line + "' | string replace -r '\\t.*' ''\ntrue\n");
    return asSet(linesOf(inPlace("HOME=$PWD/home fish --no-config run.fish")));
  }

  Workplace place;
};

using Offered = std::set<std::string>;

TEST_F(ManAndCompletions, TheHelpIsUnderstood) {
  EXPECT_EQ(commands(),
            (Words{"analyze", "convert", "verify", "survey", "trace", "sort", "draw", "chart", "instruments", "suggest",
                   "report", "recover", "fix", "undo", "dump", "build", "help", "completions", "man"}));
  EXPECT_EQ(optionsIn(help("draw")), (Words{"-h", "--help", "-o", "--out", "--output", "-q", "--quiet"}));
}

TEST_F(ManAndCompletions, ThePageHasEveryCommandAndOption) {
  const std::string page = printed({"man"});
  for (const std::string& command : commands()) {
    const std::size_t begin = page.find(".SS " + command + "\n");
    ASSERT_NE(begin, std::string::npos) << command;
    const std::string section = page.substr(begin, page.find("\n.S", begin + 1) - begin);
    for (const std::string& option : optionsIn(help(command))) {
      std::string name;
      for (const char c : option) {
        name += c == '-' ? "\\-" : std::string(1, c);
      }
      EXPECT_NE(section.find("\\fB" + name + "\\fR"), std::string::npos) << command << " " << option;
    }
  }
  for (const std::string head : {"NAME", "SYNOPSIS", "DESCRIPTION", "OPTIONS", "COMMANDS", "\"EXIT STATUS\"", "FILES",
                                 "ENVIRONMENT", "EXAMPLES"}) {
    EXPECT_NE(page.find("\n.SH " + head + "\n"), std::string::npos) << head;
  }
}

TEST_F(ManAndCompletions, ThePageIsFormattedWithoutAWarning) {
  place.write("kivsys.1", printed({"man"}));
  EXPECT_EQ(inPlace("groff -man -ww -Tutf8 -Z kivsys.1 >/dev/null"), "");
  const std::string shown = inPlace("GROFF_NO_SGR=1 groff -man -Tutf8 -P-cbou kivsys.1");
  EXPECT_NE(shown.find("kivsys analyze --folder out --names names.txt --json\n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("\n           source <(kivsys completions bash)\n"), std::string::npos) << shown;
  EXPECT_NE(shown.find("  kivsys \"CALLEDBY=KIV,FUNCTION=ANALYZE,NAMES=names.txt\"\n"), std::string::npos) << shown;
}

TEST_F(ManAndCompletions, OnlyKnownShellsHaveAScript) {
  EXPECT_EQ(place.kivsys({"completions"}).status, 2);
  const Ended ended = place.kivsys({"completions", "csh"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("bash, zsh, fish and powershell"), std::string::npos) << ended.error;
}

TEST_F(ManAndCompletions, BashOffersCommandsAndOptions) {
  EXPECT_EQ(bash({""}), asSet(commands()));
  EXPECT_EQ(bash({"con"}), Offered{"convert"});
  EXPECT_EQ(bash({"--"}), (Offered{"--help", "--version"}));
  for (const std::string& command : commands()) {
    EXPECT_EQ(bash({command, "-"}), asSet(optionsIn(help(command)))) << command;
  }
  EXPECT_EQ(bash({"completions", ""}), (Offered{"bash", "zsh", "fish", "powershell"}));
  EXPECT_EQ(bash({"help", ""}), asSet(commands()));
  EXPECT_EQ(bash({"help", "an"}), Offered{"analyze"});
}

TEST_F(ManAndCompletions, BashOffersTheFilesThatFit) {
  EXPECT_EQ(bash({"analyze", ""}), (Offered{"P1.MUS", "P 2.mus", "out"}));
  EXPECT_EQ(bash({"analyze", "--json", "P1.MUS", "out/"}), Offered{"out/P3.MUS"});
  EXPECT_EQ(bash({"analyze", "--names", "n"}), Offered{"names.txt"});
  EXPECT_EQ(bash({"analyze", "--folder", ""}), Offered{"out"});
  EXPECT_EQ(bash({"analyze", "--folder", "=", "o"}), Offered{"out"});
  EXPECT_EQ(bash({"analyze", "--folder", "="}), Offered{"out"});
  EXPECT_EQ(bash({"survey", ""}), Offered{"out"});
  EXPECT_EQ(bash({"survey", "--jobs", ""}), Offered{});
  EXPECT_EQ(bash({"man", ""}), Offered{});
}

TEST_F(ManAndCompletions, BashCountsWhatIsNoOption) {
  EXPECT_EQ(bash({"build", "n"}), Offered{"names.txt"});
  EXPECT_EQ(bash({"build", "names.txt", ""}), (Offered{"P1.MUS", "P 2.mus", "out"}));
  EXPECT_EQ(bash({"build", "names.txt", "P1.MUS", ""}), Offered{});
  EXPECT_EQ(bash({"draw", "--out", "x.svg", "P1"}), Offered{"P1.MUS"});
  EXPECT_EQ(bash({"draw", "--out", "=", "x.svg", "P1"}), Offered{"P1.MUS"});
  EXPECT_EQ(bash({"draw", "P1.MUS", ""}), Offered{});
}

TEST_F(ManAndCompletions, FishOffersCommandsOptionsAndFiles) {
  EXPECT_EQ(fish("kivsys "), asSet(commands()));
  for (const std::string& command : commands()) {
    EXPECT_EQ(fish("kivsys " + command + " -"), asSet(optionsIn(help(command)))) << command;
  }
  EXPECT_EQ(fish("kivsys completions "), (Offered{"bash", "zsh", "fish", "powershell"}));
  EXPECT_EQ(fish("kivsys help "), asSet(commands()));
  EXPECT_EQ(fish("kivsys analyze "), (Offered{"P1.MUS", "P 2.mus", "out/"}));
  EXPECT_EQ(fish("kivsys analyze --folder "), Offered{"out/"});
  EXPECT_EQ(fish("kivsys analyze --names n"), Offered{"names.txt"});
  EXPECT_EQ(fish("kivsys man "), Offered{});
}

TEST_F(ManAndCompletions, ZshAcceptsTheScript) {
  prepare("zsh");
  EXPECT_EQ(inPlace("zsh -f -n script"), "");
  EXPECT_TRUE(place.read("script").starts_with("#compdef kivsys\n"));
  // What the script hands to zsh's own functions, an argument a line.
  place.write("run.zsh",
              "functions[_arguments]='print -rl -- \"$@\"; state=$KIV_STATE'\n"
              "functions[_describe]='print -rl -- $commands'\ncompdef() { : }\nsource ./script\n"
              "words=($KIV_COMMAND)\n_kivsys\n");
  const std::string listed = inPlace("KIV_STATE=command zsh -f run.zsh");
  for (const std::string& command : commands()) {
    EXPECT_NE(("\n" + listed).find("\n" + command + ":"), std::string::npos) << listed;
    const std::string handed = inPlace("KIV_STATE=argument KIV_COMMAND=" + command + " zsh -f run.zsh");
    const std::string own = handed.substr(handed.find("*::argument:->argument\n"));
    for (const std::string& option : optionsIn(help(command))) {
      const std::string valued = option + (option.starts_with("--") ? "=[" : "+[");
      EXPECT_TRUE(own.find(option + "[") != std::string::npos || own.find(valued) != std::string::npos)
          << command << " " << option << "\n"
          << own;
    }
  }
  const std::string analyze = inPlace("KIV_STATE=argument KIV_COMMAND=analyze zsh -f run.zsh");
  EXPECT_NE(analyze.find("\n*:PAGE:_files -g \"*.[Mm][Uu][Ss]\"\n"), std::string::npos) << analyze;
  EXPECT_NE(analyze.find("(default\\: the current folder)]:DIR:_files -/\n"), std::string::npos) << analyze;
}

TEST_F(ManAndCompletions, PowerShellKnowsEveryCommandAndOption) {
  const std::string script = printed({"completions", "powershell"});
  std::vector<char> open;
  bool text = false;
  for (const char c : script.substr(script.find("Register-"))) {
    text = text != (c == '\'');
    const std::string opening = "({[";
    const std::string closing = ")}]";
    if (!text && opening.find(c) != std::string::npos) {
      open.push_back(closing[opening.find(c)]);
    } else if (!text && closing.find(c) != std::string::npos) {
      ASSERT_FALSE(open.empty());
      EXPECT_EQ(open.back(), c);
      open.pop_back();
    }
  }
  EXPECT_TRUE(open.empty());
  EXPECT_FALSE(text) << "an apostrophe is left open";
  for (const std::string& command : commands()) {
    EXPECT_NE(script.find("        '" + command + "' = '"), std::string::npos) << command;
    const std::size_t begin = script.find("        '" + command + "' = @(\n");
    ASSERT_NE(begin, std::string::npos) << command;
    const std::string own = script.substr(begin, script.find("\n        )", begin) - begin);
    for (const std::string& option : optionsIn(help(command))) {
      EXPECT_NE(own.find(", @('" + option + "', '"), std::string::npos) << command << " " << option;
    }
  }
}

}  // namespace
}  // namespace kiv::test
