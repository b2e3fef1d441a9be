#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// --out, --manifest and --resume.
class SafeOutputs : public ConsoleConvert {
 protected:
  void SetUp() override {
    addTwo();
    EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
    addPage("lib/A1.MUS", bass);
  }
  /// Every way to name an output file.
  std::vector<Names> allWith(const std::string& output) const {
    return {{"draw", "x1.mus", "--out", output},
            {"chart", "x1.mus", "x2.mus", "--out", output},
            {"verify", "x1.mus", "x2.mus", "--result", "WORK0001.MUS", "--manifest", output},
            {"survey", "lib", "--resume", output}};
  }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
};

TEST_F(SafeOutputs, APageIsNeverReplaced) {
  addPage("other.mus", bass);
  for (const std::string file : {"other.mus", "WORK0001.MUS", "OTHER.MUS"}) {
    const std::string before = place.read(file);
    for (const Names& arguments : allWith(file)) {
      const Ended ended = place.kivsys(arguments);
      EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
      EXPECT_TRUE(ended.error.ends_with(" is a page, and is not replaced; name another file\n") ||
                  ended.error.ends_with(" has the name of a page; name another file\n"))
          << ended.error;
      EXPECT_EQ(place.read(file), before);
    }
  }
}

TEST_F(SafeOutputs, AnEmptyPageIsAPage) {
  place.write("empty.mus", "");
  for (const Names& arguments : allWith("empty.mus")) {
    EXPECT_EQ(place.kivsys(arguments).status, 2) << ::testing::PrintToString(arguments);
    EXPECT_EQ(place.read("empty.mus"), "");
  }
  fs::create_hard_link(place.path() / "lib/A1.MUS", place.path() / "state");
  EXPECT_EQ(place.kivsys({"survey", "lib", "--resume", "state"}).error,
            "kivsys: state is a page of the library; name another file\n");
}

TEST_F(SafeOutputs, StandardOutputThatIsAFileIsAddedTo) {
  place.write("app.svg", "<svg>mine</svg>\n");
  const std::string command =
      "cd '" + place.path().string() + "' && '" + KIVSYS_PROGRAM + "' draw x1.mus --out /dev/stdout >>app.svg";
  EXPECT_EQ(std::system(command.c_str()), 0);
  EXPECT_TRUE(place.read("app.svg").starts_with("<svg>mine</svg>\n<svg "));
}

TEST_F(SafeOutputs, AnInputIsNeverReplaced) {
  EXPECT_EQ(place.kivsys({"draw", "x1.mus", "--out", "x1.mus"}).error,
            "kivsys: the drawing x1.mus is the same file as the input x1.mus\n");
  fs::create_symlink("x1.mus", place.path() / "chart.svg");
  EXPECT_EQ(place.kivsys({"chart", "x1.mus", "x2.mus", "--out", "chart.svg"}).error,
            "kivsys: the drawing " + path("chart.svg") + " is the same file as the input " + path("x1.mus") + "\n");
  EXPECT_EQ(place.kivsys({"verify", "x1.mus", "--result", "WORK0001.MUS", "--manifest", "x1.mus"}).status, 2);
}

TEST_F(SafeOutputs, AFileOfAnotherKindIsNotReplaced) {
  place.write("notes.txt", "my notes\n");
  for (const Names& arguments : allWith("notes.txt")) {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 2) << ::testing::PrintToString(arguments);
    EXPECT_NE(ended.error.find("notes.txt is not "), std::string::npos) << ended.error;
    EXPECT_EQ(place.read("notes.txt"), "my notes\n");
  }
}

TEST_F(SafeOutputs, AFileOfTheSameKindIsReplacedAndAnEmptyOneToo) {
  for (std::size_t kind = 0; kind < allWith("").size(); ++kind) {
    const std::string file = "output" + std::to_string(kind);
    place.write(file, "");
    EXPECT_EQ(place.kivsys(allWith(file)[kind]).status, 0) << kind;
    const std::string first = place.read(file);
    EXPECT_NE(first, "");
    EXPECT_EQ(place.kivsys(allWith(file)[kind]).status, 0) << kind;
    EXPECT_EQ(place.read(file), first);
  }
  EXPECT_EQ(place.kivsys(allWith("output1")[2]).status, 2) << "a drawing is no manifest";
}

TEST_F(SafeOutputs, DevicesAreWrittenTo) {
  const std::string device = path("device");
  const bool isRoot = ::geteuid() == 0 && ::mknod(device.c_str(), S_IFCHR | 0666, makedev(1, 3)) == 0;
  for (const Names& arguments : allWith(isRoot ? "device" : "/dev/null")) {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_TRUE(!isRoot || fs::is_character_file(device)) << ::testing::PrintToString(arguments);
  }
}

TEST_F(SafeOutputs, PipesAreWrittenTo) {
  const std::string pipe = path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  const std::string command = "timeout 20 cat '" + pipe + "' > '" + path("read") + "' 2>/dev/null &";
  ASSERT_EQ(std::system(command.c_str()), 0);
  const Ended ended = place.kivsys({"draw", "x1.mus", "--out", "pipe"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(fs::is_fifo(pipe));
}

TEST_F(SafeOutputs, ADashIsStandardOutput) {
  EXPECT_TRUE(place.kivsys(allWith("-")[0]).out.starts_with("<svg "));
  EXPECT_TRUE(place.kivsys(allWith("-")[1]).out.starts_with("<svg "));
  const Ended verified = place.kivsys(allWith("-")[2]);
  EXPECT_EQ(verified.status, 0);
  EXPECT_EQ(verified.out.find("  "), 64U) << verified.out;
  EXPECT_TRUE(verified.error.starts_with("PROVED=YES\n")) << verified.error;
  EXPECT_EQ(place.kivsys(allWith("-")[3]).status, 2) << "its lines are there already";
  EXPECT_FALSE(fs::exists(place.path() / "-"));
}

TEST_F(SafeOutputs, WhatOnlyLooksWritesNoReportAndWorksInAReadOnlyFolder) {
  fs::remove(place.path() / "KivSystem1.TXT");
  place.write("KivSystem2.TXT", "old");
  const Names before = filesIn(place.path());
  const fs::perms mayRead = fs::perms::owner_read | fs::perms::owner_exec;
  fs::permissions(place.path(), mayRead);
  fs::permissions(place.path() / "lib", mayRead);
  EXPECT_EQ(place.kivsysAsOwner({"sort", "x1.mus"}).status, 1) << "the folder is not read-only";
  EXPECT_EQ(place.kivsysAsOwner({"chart", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"convert", "--dry-run", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"survey", "lib"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"draw", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"report", "x1.mus", "x2.mus", "-o", "-"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"dump", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsysAsOwner({"verify", "--result", "WORK0001.MUS", "x1.mus", "x2.mus"}).status, 1);
  fs::permissions(place.path(), fs::perms::owner_all);
  fs::permissions(place.path() / "lib", fs::perms::owner_all);
  EXPECT_EQ(place.read("KivSystem2.TXT"), "old");
  EXPECT_EQ(filesIn(place.path()), before);
}

TEST_F(SafeOutputs, AChartOfOnePageDoesNotDisturbAProof) {
  EXPECT_EQ(place.kivsys({"chart", "x1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "--result", "WORK0001.MUS", "x1.mus", "x2.mus"}).status, 0);
}

}  // namespace
}  // namespace kiv::test
