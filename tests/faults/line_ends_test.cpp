#include <functional>

#include <gtest/gtest.h>

#include "analysis/verdict.h"
#include "pagetext/page_text.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "shell/load_globals.h"
#include "shell/result_folder.h"
#include "tests/faults/program/pages.h"
#include "tests/faults/runs.h"

namespace kiv::test {
namespace {

/// The text, whose lines end with CR LF, with each kind of line end, and with each also without the last one.
std::vector<std::string> variantsOf(const std::string& text) {
  std::vector<std::string> variants;
  for (const std::string end : {"\r\n", "\n", "\r"}) {
    std::string variant = text;
    for (std::size_t at = 0; (at = variant.find("\r\n", at)) != std::string::npos; at += end.size()) {
      variant.replace(at, 2, end);
    }
    variants.push_back(variant);
    variants.push_back(variant.substr(0, variant.size() - end.size()));
  }
  return variants;
}

/// What a run on the disk left: its files without the one that is written in several variants, and what it showed.
struct Left {
  Disk files;
  std::vector<Message> messages;
  std::optional<int> end;

  bool operator==(const Left&) const = default;
};

using Run = std::function<void(FakeHost& host)>;

/// Runs on the file written in every way, and compares what is left. The name is that of the disk.
void expectTheSame(const std::string& name, const std::string& text, const Run& run) {
  ASSERT_NE(text.find("\r\n"), std::string::npos);
  std::optional<Left> first;
  for (const std::string& variant : variantsOf(text)) {
    FakeHost host;
    prepareDisk(host);
    host.addFile(name, variant);
    const auto end = endOf(host, [&] { run(host); });
    Left left{host.files(), host.messages, end};
    if (left.files.contains(name) && left.files.at(name) == variant) {
      left.files.erase(name);
    }
    if (!first) {
      first = left;
    }
    EXPECT_EQ(left.files, first->files) << testing::PrintToString(variant);
    EXPECT_EQ(left.messages, first->messages) << testing::PrintToString(variant);
    EXPECT_EQ(left.end, first->end);
  }
}

std::string onPreparedDisk(const std::string& name) {
  FakeHost host;
  prepareDisk(host);
  return host.file(name);
}

Disk analyzed() {
  FakeHost host;
  prepareDisk(host);
  static_cast<void>(perform(RunKind::analysis, host));
  return host.files();
}

TEST(LineEnds, OfTheNamesFile) {
  expectTheSame(namesFile, onPreparedDisk(namesFile), [](FakeHost& host) {
    static_cast<void>(perform(RunKind::panel, host));
    EXPECT_TRUE(host.hasFile("C:\\OUT\\WORK0003.MUS"));
  });
}

TEST(LineEnds, OfTheSettings) {
  expectTheSame(settingsFile, onPreparedDisk(settingsFile), [](FakeHost& host) {
    Settings settings;
    settings.projectFile = settingsFile;
    loadGlobals(host, settings);
    EXPECT_EQ(settings.musFolder, "C:\\M");
    EXPECT_EQ(settings.namesFile, namesFile);
  });
}

TEST(LineEnds, OfTheAnswerFile) {
  expectTheSame("C:\\KIV\\KIVFOLDR.KIV", onPreparedDisk(answerFile),
                [](FakeHost& host) { EXPECT_EQ(SetFolderResult(host, answerFile), "C:\\OUT"); });
}

TEST(LineEnds, OfTheReport) {
  expectTheSame("C:\\KIV\\KIVSYSTEM2.TXT", analyzed().at("C:\\KIV\\KIVSYSTEM2.TXT"), [](FakeHost& host) {
    SystemTable systems;
    phase5(host, 1, systems);
    EXPECT_EQ(systems.systemCount(), 3U);
    EXPECT_EQ(numberOfInstruments(host), 2);
    KivSystem program(host);
    program.panel.txtFirstResultFile.text = "C:\\OUT\\WORK0001.MUS";
    cmdConvert_Click(program);
    EXPECT_TRUE(host.hasFile("C:\\OUT\\WORK0003.MUS"));
  });
}

TEST(LineEnds, OfTheVerdict) {
  expectTheSame("C:\\KIV\\KIVSYSTEM1.TXT", analyzed().at("C:\\KIV\\KIVSYSTEM1.TXT"), [](FakeHost& host) {
    EXPECT_EQ(readVerdict(host), (Verdict{"CONSISTENCY=NO", "MULTIFILE=YES"}));
  });
}

TEST(LineEnds, OfPageText) {
  std::string text;
  for (const char* c = duo; *c != '\0'; ++c) {
    text += *c == '\n' ? "\r\n" : std::string(1, *c);
  }
  const auto built = buildPage(duo);
  ASSERT_TRUE(std::holds_alternative<std::string>(built));
  for (const std::string& variant : variantsOf(text)) {
    const auto page = buildPage(variant);
    ASSERT_TRUE(std::holds_alternative<std::string>(page)) << std::get<PageTextError>(page).reason;
    EXPECT_EQ(std::get<std::string>(page), std::get<std::string>(built)) << testing::PrintToString(variant);
  }
}

}  // namespace
}  // namespace kiv::test
