#include <algorithm>
#include <cstdlib>
#include <sstream>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

const Names everyCommand = {"analyze", "convert", "verify", "survey", "trace",       "sort", "draw",
                            "chart",   "dump",    "build",  "help",   "completions", "man"};

Names linesOf(const std::string& text) {
  std::istringstream stream(text);
  Names lines;
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(line);
  }
  return lines;
}

/// The command line as a user types it: options, help and errors.
class Usage : public ConsoleConvert {
 protected:
  void expectWrong(const Names& arguments, const std::string& error) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, error);
  }
  std::string help(const Names& arguments) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 0);
    EXPECT_EQ(ended.error, "");
    return ended.out;
  }
};

TEST_F(Usage, AMisspelledCommandGetsASuggestion) {
  const std::string hint = "; did you mean 'analyze'?\n'kivsys --help' lists the commands.\n";
  expectWrong({"analyse"}, "kivsys: unknown command: analyse" + hint);
  expectWrong({"anaylze", "--json", "x1.mus"}, "kivsys: unknown command: anaylze" + hint);
  expectWrong({"help", "analyse"}, "kivsys: unknown command: analyse" + hint);
  expectWrong({"Analyze"}, "kivsys: unknown command: Analyze" + hint);
}

TEST_F(Usage, AMisspelledOptionGetsASuggestion) {
  const std::string hint = "'kivsys analyze --help' lists the options.\n";
  expectWrong({"analyze", "--jsno", "x1.mus"},
              "kivsys: analyze: unknown option: --jsno; did you mean '--json'?\n" + hint);
  expectWrong({"analyze", "x1.mus", "--folders=out"},
              "kivsys: analyze: unknown option: --folders; did you mean '--folder'?\n" + hint);
  expectWrong({"--versoin"},
              "kivsys: unknown option: --versoin; did you mean '--version'?\n'kivsys --help' lists the options.\n");
}

TEST_F(Usage, WhatIsLikeNothingGetsNoSuggestion) {
  expectWrong({"frobnicate"}, "kivsys: unknown command: frobnicate\n'kivsys --help' lists the commands.\n");
  expectWrong({"dump", "-x", "x1.mus"}, "kivsys: dump: unknown option: -x\n'kivsys dump --help' lists the options.\n");
  expectWrong({"x1.mus"}, "kivsys: unknown command: x1.mus\n'kivsys --help' lists the commands.\n");
}

TEST_F(Usage, AValueIsNeverTakenForAnOption) {
  expectWrong({"analyze", "--folder", "--jsno", "--jsonn", "x1.mus"},
              "kivsys: analyze: unknown option: --jsonn; did you mean '--json'?\n'kivsys analyze --help' lists the "
              "options.\n");
}

TEST_F(Usage, AnOptionWithoutItsObjectIsNamedWithIt) {
  const std::string hint = "\nTry 'kivsys survey --help'.\n";
  expectWrong({"survey", ".", "--jobs"}, "kivsys: survey: --jobs needs N" + hint);
  expectWrong({"survey", ".", "-qj"}, "kivsys: survey: -j needs N" + hint);
  expectWrong({"survey", ".", "--resume="}, "kivsys: survey: --resume needs FILE" + hint);
}

TEST_F(Usage, AnOptionBeforeItsCommandGetsAHint) {
  const std::string hint = "\nOptions come after the command: kivsys analyze ";
  expectWrong({"--json", "analyze", "x1.mus"}, "kivsys: unknown option: --json" + hint + "--json\n");
  expectWrong({"-q", "analyze", "x1.mus"}, "kivsys: unknown option: -q" + hint + "-q\n");
  expectWrong({"--csv", "analyze", "x1.mus"}, "kivsys: unknown option: --csv\n'kivsys --help' lists the options.\n");
}

TEST_F(Usage, EveryErrorIsOneLineAndAHint) {
  const std::vector<Names> wrong = {{},
                                    {"analyze"},
                                    {"analyze", "--names"},
                                    {"analyze", "--names", "n", "x1.mus"},
                                    {"analyze", "--json", "--jsonl", "x1.mus"},
                                    {"dump"},
                                    {"dump", "x1.mus", "x2.mus"},
                                    {"build", "x"},
                                    {"convert", "--dry-run", "--verify", "x1.mus"},
                                    {"survey", "--jobs", "many", "."},
                                    {"survey", "--jobs", "0", "."},
                                    {"verify"},
                                    {"completions", "csh"},
                                    {"two\nlines"},
                                    {"analyze", "--two\nlines"}};
  for (const Names& arguments : wrong) {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
    EXPECT_EQ(ended.out, "");
    const Names lines = linesOf(ended.error);
    ASSERT_EQ(lines.size(), 2U) << ended.error;
    EXPECT_TRUE(lines[0].starts_with("kivsys: ")) << ended.error;
    const bool isKnown = !arguments.empty() && std::count(everyCommand.begin(), everyCommand.end(), arguments[0]) == 1;
    EXPECT_NE(lines[1].find("kivsys" + (isKnown ? " " + arguments[0] : "") + " --help'"), std::string::npos)
        << ended.error;
  }
  expectWrong({"analyze"},
              "kivsys: analyze: name page files, or a names file with --names\nTry 'kivsys analyze --help'.\n");
  expectWrong({"dump", "x1.mus", "x2.mus"}, "kivsys: dump: unexpected argument: x2.mus\nTry 'kivsys dump --help'.\n");
  expectWrong({}, "kivsys: name a command\nTry 'kivsys --help'.\n");
}

TEST_F(Usage, HelpOfACommandIsFoundBothWays) {
  EXPECT_EQ(help({"help"}), help({"--help"}));
  for (const std::string& command : everyCommand) {
    const std::string text = help({command, "--help"});
    EXPECT_EQ(help({"help", command}), text);
    EXPECT_EQ(help({command, "-h"}), text);
    EXPECT_NE(text.find("Usage: kivsys " + command), std::string::npos) << text;
  }
}

TEST_F(Usage, HelpFitsEightyColumns) {
  std::string all = help({"--help"});
  for (const std::string& command : everyCommand) {
    EXPECT_NE(all.find("\n  " + command + " "), std::string::npos) << command;
  }
  for (const std::string& command : everyCommand) {
    all += help({command, "--help"});
  }
  for (const std::string& line : linesOf(all)) {
    EXPECT_LE(line.size(), 80U) << line;
    EXPECT_FALSE(line.ends_with(' ')) << line;
  }
}

TEST_F(Usage, HelpNamesTheObjectOfEveryOption) {
  const std::string analyze = help({"analyze", "--help"});
  for (const std::string line : {"\n  -h, --help  ", "\n  --folder DIR  ", "\n  --names FILE  ", "\n  PAGE...  "}) {
    EXPECT_NE(analyze.find(line), std::string::npos) << line << analyze;
  }
  EXPECT_NE(help({"survey", "--help"}).find("\n  -j, --jobs N  "), std::string::npos);
  EXPECT_NE(help({"survey", "--help"}).find("\nUsage: kivsys survey [OPTION]... FOLDER...\n"), std::string::npos);
  EXPECT_NE(help({"draw", "--help"}).find("\n  -o, --out, --output FILE.svg"), std::string::npos);
  EXPECT_NE(help({"verify", "--help"}).find("\nUsage: kivsys verify [OPTION]... [PAGE...]\n"), std::string::npos);
}

TEST_F(Usage, VersionHasAShortForm) {
  EXPECT_TRUE(help({"--version"}).starts_with("kivsys v"));
  EXPECT_EQ(help({"-V"}), help({"--version"}));
}

TEST_F(Usage, OutputHasAShortAndALongForm) {
  addPage("x1.mus", bass);
  const std::string drawing = help({"draw", "x1.mus"});
  for (const std::string command : {"draw", "chart"}) {
    for (const std::string option : {"-o", "--out", "--output"}) {
      EXPECT_EQ(help({command, "x1.mus", option, "x.svg"}), "") << option;
      EXPECT_TRUE(place.read("x.svg").find("<svg") != std::string::npos) << option;
      fs::remove(place.path() / "x.svg");
    }
  }
  EXPECT_EQ(place.kivsys({"convert", "--force", "x1.mus", "-o", "out/R0001.MUS"}).status, 0);
  EXPECT_EQ(filesIn(place.path() / "out"), Names{"R0001.MUS"});
}

TEST_F(Usage, JobsHaveAShortForm) {
  addPage("x1.mus", bass);
  EXPECT_EQ(help({"survey", "-j", "2", "."}), help({"survey", "--jobs", "2", "."}));
}

TEST_F(Usage, QuietRunsPrintNoNotes) {
  addPage("x1.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  for (const std::string command : {"analyze", "convert", "chart"}) {
    const Ended loud = place.kivsys({command, "x1.mus"});
    EXPECT_NE(loud.error, "") << command;
    for (const std::string option : {"-q", "--quiet"}) {
      const Ended quiet = place.kivsys({command, option, "x1.mus"});
      EXPECT_EQ(quiet.error, "") << command;
      EXPECT_EQ(quiet.out, loud.out) << command;
      EXPECT_EQ(quiet.status, loud.status) << command;
    }
  }
  const Json object = Json::parse(place.kivsys({"analyze", "-q", "--json", "x1.mus"}).out);
  EXPECT_EQ(object["messages"].size(), 1U) << "messages are still in the object";
}

TEST_F(Usage, TheHelpSaysWhenANamesFileIsDeletedAndWhatIsReplaced) {
  const auto help = [&](const std::string& command) {
    std::istringstream words(place.kivsys({command, "--help"}).out + place.kivsys({"--help"}).out);
    std::string text;
    for (std::string word; words >> word;) {
      text += word + " ";
    }
    return text;
  };
  EXPECT_NE(help("analyze").find("In such a call, and with --like-panel, a names file that cannot be used is shown and "
                                 "then deleted"),
            std::string::npos);
  for (const std::string command : {"convert", "trace"}) {
    EXPECT_NE(help(command).find("Ask before a result replaces a file"), std::string::npos) << command;
    EXPECT_NE(help(command).find("files are replaced with it and without it"), std::string::npos) << command;
  }
  for (const std::string command : {"suggest", "recover", "fix", "build"}) {
    EXPECT_TRUE(help(command).find("never replaced") != std::string::npos) << command;
  }
  EXPECT_NE(help("fix").find("--set PAGE:STAFF=ID "), std::string::npos);
}

TEST_F(Usage, QuietRunsPrintErrors) {
  addPage("x1.mus", "words 99\n");
  const Ended loud = place.kivsys({"analyze", "x1.mus"});
  const Ended quiet = place.kivsys({"analyze", "-q", "x1.mus"});
  EXPECT_NE(loud.error, "");
  EXPECT_EQ(quiet.error + "Next: kivsys recover x1.mus\n", loud.error);
  EXPECT_EQ(quiet.status, 1);
}

TEST_F(Usage, OutputThatCannotBeWrittenIsStatus1) {
  addPage("x1.mus", bass);
  std::vector<Names> all = {{"--help"},
                            {"-V"},
                            {"help"},
                            {"help", "sort"},
                            {"man"},
                            {"completions", "bash"},
                            {"dump", "x1.mus"},
                            {"analyze", "x1.mus"},
                            {"analyze", "--json", "x1.mus"},
                            {"analyze", "--jsonl", "x1.mus"},
                            {"convert", "--dry-run", "--force", "x1.mus"},
                            {"convert", "--force", "--json", "x1.mus"},
                            {"verify", "x1.mus", "--result", "WORK0001.MUS"},
                            {"verify", "x1.mus", "--result", "WORK0001.MUS", "--manifest", "-"},
                            {"chart", "x1.mus"},
                            {"draw", "x1.mus"},
                            {"sort", "x1.mus"},
                            {"survey", "."}};
  for (const std::string& command : everyCommand) {
    all.push_back({command, "--help"});
  }
  for (const Names& arguments : all) {
    const Ended ended = place.kivsysIntoFullDevice(arguments);
    EXPECT_EQ(ended.status, 1) << ::testing::PrintToString(arguments);
    EXPECT_NE(ended.error.find("cannot write to standard output\n"), std::string::npos)
        << ::testing::PrintToString(arguments) << ended.error;
  }
}

}  // namespace
}  // namespace kiv::test
