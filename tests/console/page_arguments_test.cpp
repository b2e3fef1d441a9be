#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Pages as they are named on the command line: in any order, by their folder, by a pattern, as standard input.
class PageArguments : public ConsoleConvert {
 protected:
  /// The pages of a run, in their order.
  Names order(const Names& arguments) const {
    const Json object = Json::parse(place.kivsys(arguments).out);
    Names pages;
    for (const Json& page : object["paths"]) {
      pages.push_back(fs::path(page["path"].get<std::string>()).filename().string());
    }
    return pages;
  }
  void expectRefused(const Names& arguments, const std::string& error) const {
    const Ended ended = place.kivsysAsOwner(arguments);
    EXPECT_EQ(ended.status, 2);
    EXPECT_EQ(ended.out, "");
    EXPECT_EQ(ended.error, "kivsys: " + error + "\n");
  }
  void addPages(const Names& names) const {
    for (const std::string& name : names) {
      addPage(name, bass);
    }
  }
};

TEST_F(PageArguments, AreTakenInNaturalOrderWithANote) {
  addPages({"P1.mus", "P2.mus", "P10.mus"});
  const Names natural = {"P1.mus", "P2.mus", "P10.mus"};
  const std::string gap = "kivsys: note: no pages 3 to 9 between P2.mus and P10.mus\n";
  EXPECT_EQ(order({"analyze", "--json", "P1.mus", "P10.mus", "P2.mus"}), natural);
  EXPECT_EQ(
      place.kivsys({"analyze", "P1.mus", "P10.mus", "P2.mus"}).error,
      "kivsys: note: the pages are taken in natural order: P1.mus, P2.mus, P10.mus; --keep-order keeps theirs\n" + gap);
  EXPECT_EQ(place.kivsys({"analyze", "P1.mus", "P2.mus", "P10.mus"}).error, gap);
  EXPECT_EQ(place.kivsys({"analyze", "-q", "P10.mus", "P1.mus"}).error, "");
}

TEST_F(PageArguments, StayInTheirOrderOnRequest) {
  addPages({"P1.mus", "P2.mus", "P10.mus"});
  const Names typed = {"P10.mus", "P1.mus", "P2.mus"};
  EXPECT_EQ(order({"analyze", "--json", "--keep-order", "P10.mus", "P1.mus", "P2.mus"}), typed);
  EXPECT_EQ(place.kivsys({"analyze", "--keep-order", "P10.mus", "P1.mus", "P2.mus"}).error, "");
}

TEST_F(PageArguments, OfEveryCommandForGroupsAreInNaturalOrder) {
  addPages({"P1.mus", "P2.mus", "P10.mus"});
  for (const std::string command : {"analyze", "convert", "trace", "sort", "chart"}) {
    const Ended ended = place.kivsys({command, "P10.mus", "P2.mus", "P1.mus"});
    EXPECT_NE(ended.error.find(": P1.mus, P2.mus, P10.mus;"), std::string::npos) << command << ended.error;
    EXPECT_EQ(place.kivsys({command, "--keep-order", "P1.mus"}).status, 0) << command;
  }
  EXPECT_EQ(place.kivsys({"convert", "--force", "P10.mus", "P2.mus", "P1.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "P10.mus", "P2.mus", "P1.mus", "--result", "WORK0001.MUS"}).status, 0);
}

TEST_F(PageArguments, OfOnePageAreInTheOrderOfTheirLetters) {
  addPages({"P1.mus", "P2a.mus", "P2b.mus", "P10.mus"});
  EXPECT_EQ(order({"analyze", "--json", "P10.mus", "P2b.mus", "P2a.mus", "P1.mus"}),
            (Names{"P1.mus", "P2a.mus", "P2b.mus", "P10.mus"}));
}

TEST_F(PageArguments, AreAsTheyAreTypedLikeThePanel) {
  addPage("P1.mus", fluteAndBass);
  addPage("P10.mus", fluteAndBass);
  const Ended ended = place.kivsys({"sort", "--like-panel", "--json", "P10.mus", "P1.mus"});
  EXPECT_EQ(Json::parse(ended.out)["created"], (Names{place.capitals("P10.PAG"), place.capitals("P1.PAG")}));
  EXPECT_EQ(ended.error.find("order"), std::string::npos) << ended.error;
}

TEST_F(PageArguments, OfAListStayInItsOrder) {
  addPages({"P1.mus", "P10.mus"});
  place.write("list", "P10.mus\nP1.mus\n");
  EXPECT_EQ(order({"analyze", "--json", "--names", "list"}), (Names{"P10.mus", "P1.mus"}));
  EXPECT_EQ(place.kivsys({"analyze", "--names", "list"}).error, "");
}

TEST_F(PageArguments, ThatAreManyAreNotAllNamedInTheNote) {
  Names arguments = {"analyze"};
  for (int page = 20; page > 0; --page) {
    arguments.push_back("P" + std::to_string(page) + ".mus");
    addPage(arguments.back(), bass);
  }
  EXPECT_EQ(
      place.kivsys(arguments).error,
      "kivsys: note: the pages are taken in natural order: P1.mus, P2.mus, P3.mus ... P20.mus; --keep-order keeps "
      "theirs\n");
}

TEST_F(PageArguments, AFolderMeansAllPagesInIt) {
  addPage("music/P2.mus", bass);
  addPage("music/P10.MUS", bass);
  addPage("music/P1.mus", fluteAndBass);
  addPage("music/below/X1.mus", bass);
  place.write("music/notes.txt", "no page");
  fs::create_directory(place.path() / "music/X2.mus");
  fs::create_symlink("gone", place.path() / "music/X3.mus");
  const Names all = {"P1.mus", "P2.mus", "P10.MUS"};
  EXPECT_EQ(order({"analyze", "--json", "music"}), all);
  EXPECT_EQ(order({"analyze", "--json", "music/"}), all);
  EXPECT_EQ(place.kivsys({"analyze", "music"}).error.find("natural order"), std::string::npos)
      << "no other order was named";
  for (const std::string command : {"convert", "trace", "chart"}) {
    EXPECT_EQ(place.kivsys({command, "music"}).status, 0) << command;
    EXPECT_EQ(place.kivsys({command, "."}, "music").status, 0) << command << ": results are no pages";
    for (const std::string& page : filesIn(place.path() / "music")) {
      if (page.starts_with("WORK")) {
        fs::remove(place.path() / "music" / page);
      }
    }
  }
  EXPECT_EQ(place.kivsys({"convert", "music", "--result", "out/R0001.MUS"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "music", "--result", "out/R0001.MUS"}).status, 0);
}

TEST_F(PageArguments, AFolderOfSeveralGroupsIsRefusedWithTheirNames) {
  addPages({"music/P1.mus", "music/P2.mus", "music/Symph001.mus", "music/12.mus"});
  place.write("music/notes.MUS", "");
  for (const std::string command : {"analyze", "convert", "trace", "sort", "chart"}) {
    expectRefused(
        {command, "music"},
        "music has pages of several groups, name those of one (as in music/P*.mus): 12.mus, NOTES.MUS, P, SYMPH; "
        "names of pages are letters, digits, optionally one letter, and the suffix, as PIECE012B.MUS");
  }
  expectRefused(
      {"analyze", "--keep-going", "music"},
      "music has pages of several groups, name those of one (as in music/P*.mus): 12.mus, NOTES.MUS, P, SYMPH; "
      "names of pages are letters, digits, optionally one letter, and the suffix, as PIECE012B.MUS");
}

TEST_F(PageArguments, AFolderWithoutPagesIsNamed) {
  fs::create_directory(place.path() / "music");
  fs::create_directory(place.path() / "x2.mus");
  addPage("x1.mus", bass);
  expectRefused({"analyze", "x1.mus", "music"}, "no pages in the folder music");
  expectRefused({"analyze", "--keep-going", "x1.mus", "music"}, "no pages in the folder music");
  expectRefused({"analyze", "x1.mus", "x2.mus"}, "cannot read x2.mus: Is a directory");
  const Ended kept = place.kivsys({"analyze", "--keep-going", "x1.mus", "x2.mus"});
  EXPECT_EQ(kept.status, 1);
  EXPECT_EQ(kept.error, "kivsys: cannot read x2.mus: Is a directory\n");
  EXPECT_TRUE(kept.out.ends_with("1 page analyzed, 1 skipped: X2.MUS\n")) << kept.out;
}

TEST_F(PageArguments, AFolderThatCannotBeListedIsNamedWithTheReason) {
  addPage("music/P1.mus", bass);
  fs::permissions(place.path() / "music", fs::perms::owner_write | fs::perms::owner_exec);
  expectRefused({"analyze", "music"}, "cannot list the folder music: Permission denied");
  fs::permissions(place.path() / "music", fs::perms::owner_all);
}

TEST_F(PageArguments, APageThatMayNotBeReadIsNamedWithTheReason) {
  addPage("x1.mus", bass);
  fs::permissions(place.path() / "x1.mus", fs::perms::none);
  for (const std::string command : {"analyze", "convert", "trace", "sort", "chart", "draw", "dump"}) {
    expectRefused({command, "x1.mus"}, "cannot read x1.mus: Permission denied");
  }
}

TEST_F(PageArguments, APatternThatTheShellLeftAsItIsMatchesNothing) {
  addPage("x1.mus", bass);
  for (const std::string command : {"analyze", "convert", "trace", "sort", "chart"}) {
    expectRefused({command, "NO*.mus"}, "no page matches NO*.mus: No such file or directory");
    expectRefused({command, "x1.mus", "gone/P?.mus"}, "no page matches gone/P?.mus: No such file or directory");
  }
  expectRefused({"analyze", "--keep-going", "NO*.mus"}, "no page matches NO*.mus: No such file or directory");
  expectRefused({"dump", "NO*.mus"}, "no page matches NO*.mus: No such file or directory");
  expectRefused({"draw", "NO*.mus"}, "no page matches NO*.mus: No such file or directory");
  addPage("P*1.mus", bass);
  EXPECT_EQ(place.kivsys({"dump", "P*1.mus"}).status, 0) << "a name may have an asterisk";
}

TEST_F(PageArguments, ThatCanBeNoPageAreExplained) {
  expectRefused({"analyze", "-"}, "pages are read from files, and their list from standard input with --names -");
  EXPECT_EQ(place.kivsys({"analyze", ""}).error,
            "kivsys: analyze: page: the value is empty\nTry 'kivsys analyze --help'.\n");
}

TEST_F(PageArguments, APageMayComeFromStandardInput) {
  addPage("x1.mus", fluteAndBass);
  const std::string bytes = place.read("x1.mus");
  EXPECT_EQ(place.kivsys({"dump", "-"}, ".", bytes).out, place.kivsys({"dump", "x1.mus"}).out);
  const Ended drawn = place.kivsys({"draw", "-"}, ".", bytes);
  EXPECT_EQ(drawn.status, 0) << drawn.error;
  EXPECT_NE(drawn.out.find("<title>standard input</title>"), std::string::npos) << drawn.out.substr(0, 500);
  EXPECT_EQ(place.kivsys({"draw", "-", "-o", "x.svg"}, ".", bytes).status, 0);
  EXPECT_EQ(place.read("x.svg"), drawn.out);
  EXPECT_EQ(place.kivsys({"draw", "-"}, ".", "no page").status, 1);
}

TEST_F(PageArguments, StandardInputThatIsTooLargeIsRefused) {
  const std::string large(300000, ' ');
  for (const std::string command : {"dump", "draw"}) {
    const Ended ended = place.kivsys({command, "-"}, ".", large);
    EXPECT_EQ(ended.status, 1);
    EXPECT_EQ(ended.error, "kivsys: - has more than 262142 bytes, the limit for a page\n");
  }
}

TEST_F(PageArguments, ABuiltPageMayGoToStandardOutput) {
  place.write("x1.txt", bass);
  const Ended ended = place.kivsys({"build", "x1.txt", "-"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out, page(bass));
  EXPECT_EQ(filesIn(place.path()), Names{"x1.txt"});
  EXPECT_EQ(place.kivsysIntoFullDevice({"build", "x1.txt", "-"}).status, 1);
}

TEST_F(PageArguments, AFileThatIsNoTextIsNamedWithTheReason) {
  expectRefused({"build", "gone.txt", "x1.mus"}, "cannot read gone.txt: No such file or directory");
  expectRefused({"build", ".", "x1.mus"}, "cannot read .: Is a directory");
  expectRefused({"dump", "."}, "cannot read .: Is a directory");
  expectRefused({"draw", "."}, "cannot read .: Is a directory");
}

}  // namespace
}  // namespace kiv::test
