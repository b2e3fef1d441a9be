#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/damaged_page.h"
#include "tests/console/running_program.h"

namespace kiv::test {
namespace {

const std::string table = "file,staff,new_id\nX1.MUS,1,7\n";

/// Files that come while a run is at work stay, unless it is to replace them.
class Latecomers : public ConsoleConvert {
 protected:
  Latecomers() { addTwo(); }

  std::string path(const std::string& file) const { return (place.path() / file).string(); }
  /// Runs two commands at once, again and again. Whether both have ended with 0 at least once.
  bool bothSucceed(const std::string& first, const std::string& second, const std::string& cleanUp) const {
    const std::string line = "for i in $(seq 40); do " + cleanUp + "; " + first + " >/dev/null 2>&1 & " + second +
                             " >/dev/null 2>&1; s=$?; wait $!; t=$?; [ $s = 0 ] && [ $t = 0 ] && echo both; done; :";
    return !place.shell(line).out.empty();
  }
};

TEST_F(Latecomers, APageThatComesWhileFixReadsItsTableStays) {
  fs::create_directory(place.path() / "there");
  for (const std::string folder : {"there", "new"}) {
    RunningProgram run(place.path(), {"fix", "x1.mus", "x2.mus", "--corrections", "-", "-o", folder});
    ASSERT_TRUE(run.waits());
    place.write(folder + "/x2.mus", "my only copy");
    run.give(table);
    EXPECT_EQ(run.end(), 2);
    EXPECT_EQ(run.error(), "kivsys: " + path(folder + "/x2.mus") + " exists; --force replaces it\n");
    EXPECT_EQ(place.read(folder + "/x2.mus"), "my only copy");
    EXPECT_EQ(place.read(folder + "/x1.mus"), "(no file)");
  }
}

TEST_F(Latecomers, OfTwoRunsWithoutForceOneOnlyWritesThePage) {
  place.write("a.mus", damagedPage(fluteAndBass));
  place.write("c.mus", damagedPage(bass));
  place.write("a.txt", fluteAndBass);
  place.write("c.txt", bass);
  EXPECT_FALSE(bothSucceed("kivsys recover a.mus -o r.mus", "kivsys recover c.mus -o r.mus", "rm -f r.mus"));
  EXPECT_FALSE(bothSucceed("kivsys build a.txt b.mus", "kivsys build c.txt b.mus", "rm -f b.mus"));
  EXPECT_FALSE(bothSucceed("kivsys fix x1.mus --map 101=7 -o f", "kivsys fix x1.mus --map 102=8 -o f", "rm -rf f"));
}

TEST_F(Latecomers, WhatFixHasWrittenIsReportedWhenAPageCannotBe) {
  fs::create_directory(place.path() / "f");
  fs::create_symlink("x2.mus", place.path() / "f/x2.mus");
  const Ended ended = place.kivsys({"fix", "x1.mus", "x2.mus", "--map", "102=7", "-o", "f"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: cannot write " + path("f/x2.mus") + ": Too many levels of symbolic links\n");
  EXPECT_EQ(ended.out,
            "x1.mus: 1 id changed, written to f/x1.mus\n  item 2: staff 1: 102 -> 7\n"
            "1 id changed in 1 page; 1 page not written\n");
  EXPECT_TRUE(fs::is_symlink(place.path() / "f/x2.mus")) << "links that lead to themselves stay";
}

TEST_F(Latecomers, AFolderInThePlaceOfACorrectedPageIsFoundAtOnce) {
  fs::create_directories(place.path() / "f/x2.mus");
  for (const Names& more : {Names{}, Names{"--force"}}) {
    Names command = {"fix", "x1.mus", "x2.mus", "--map", "102=7", "-o", "f"};
    command.insert(command.end(), more.begin(), more.end());
    const Ended ended = place.kivsys(command);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.error, "kivsys: " + path("f/x2.mus") + " is a folder, and is not replaced\n");
    EXPECT_EQ(filesIn(place.path() / "f"), Names{"x2.mus"});
  }
}

TEST_F(Latecomers, ADrawingDoesNotReplaceLinksThatLeadToThemselves) {
  fs::create_symlink("loop.svg", place.path() / "loop.svg");
  EXPECT_EQ(place.kivsys({"draw", "x1.mus", "-o", "loop.svg"}).status, 1);
  EXPECT_TRUE(fs::is_symlink(place.path() / "loop.svg"));
}

TEST_F(Latecomers, ACopyIsForNobodyWhoMayNotReadThePage) {
  place.write("d1.mus", damagedPage(bass));
  addPage("y1.mus", bass);
  for (const std::string file : {"x1.mus", "d1.mus", "y1.mus"}) {
    fs::permissions(place.path() / file, fs::perms::owner_read);
  }
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "102=7", "-o", "f"}).status, 0);
  EXPECT_EQ(place.kivsys({"recover", "d1.mus", "-o", "r1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"sort", "y1.mus"}).status, 0);
  for (const std::string file : {"f/x1.mus", "r1.mus", "Y1.PAG"}) {
    EXPECT_EQ(fs::status(place.path() / file).permissions(), fs::perms::owner_read | fs::perms::owner_write) << file;
  }
}

}  // namespace
}  // namespace kiv::test
