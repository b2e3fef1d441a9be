#include <algorithm>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>

#include "tests/console/convert_fixture.h"
#include "tests/console/damaged_page.h"

namespace kiv::test {
namespace {

/// Folders and files whose names hold a backslash, which the core takes for a separator, beside those that it would
/// take them for.
class BackslashNames : public ConsoleConvert {
 protected:
  BackslashNames() {
    for (const std::string folder : {"a\\b/", "a/b/"}) {
      addTwo(folder);
      place.write(folder + "c.csv", "file,staff,new_id\nX1.MUS,1,7\n");
      place.write(folder + "list", "x1.mus\nx2.mus\n");
    }
    addTwo();
  }

  /// Nothing is read or written.
  void expectRefused(const Names& arguments, const std::string& folder = ".") const {
    const Names before = everything();
    const Ended ended = place.kivsys(arguments, folder);
    const std::string line = ::testing::PrintToString(arguments);
    EXPECT_EQ(ended.status, 2) << line;
    EXPECT_EQ(ended.out, "") << line;
    EXPECT_NE(ended.error.find("whose name holds a backslash cannot be used: "), std::string::npos)
        << line << ended.error;
    EXPECT_EQ(everything(), before) << line;
  }
  /// All names with their contents.
  Names everything() const {
    Names all;
    for (const auto& entry : fs::recursive_directory_iterator(place.path())) {
      const std::string name = fs::relative(entry.path(), place.path()).string();
      all.push_back(entry.is_regular_file() ? name + ": " + place.read(name) : name);
    }
    std::sort(all.begin(), all.end());
    return all;
  }
};

TEST_F(BackslashNames, ACurrentFolderIsRefused) {
  for (const Names& command : {Names{"analyze", "x1.mus"},
                               {"convert", "x1.mus", "x2.mus"},
                               {"sort", "x1.mus"},
                               {"recover", "x1.mus"},
                               {"dump", "x1.mus"},
                               {"draw", "x1.mus"},
                               {"build", "c.csv", "n1.mus"},
                               {"chart", "."},
                               {"survey", "."},
                               {"suggest", "x1.mus", "-o", "s.csv"},
                               {"fix", "x1.mus", "--map", "101=7", "-o", "out"},
                               {"verify", "x1.mus", "x2.mus"},
                               {"instruments", "--names", "list"},
                               {"analyze", (place.path() / "x1.mus").string()}}) {
    expectRefused(command, "a\\b");
  }
}

TEST_F(BackslashNames, AFolderBehindALinkIsRefusedWhereItsOwnNameCounts) {
  fs::create_directory_symlink("a\\b", place.path() / "link");
  fs::create_directory(place.path() / "a\\b/k");
  fs::create_directory_symlink("a\\b/k", place.path() / "deep");
  expectRefused({"analyze", "x1.mus"}, "link");
  expectRefused({"instruments", "deep/../x1.mus"});
  expectRefused({"recover", "deep/../x1.mus"});
  EXPECT_EQ(place.kivsys({"instruments", "link/x1.mus"}).status, 0) << "by the name of the link";
}

TEST_F(BackslashNames, InputsAreRefused) {
  for (const Names& command : {Names{"instruments", "a\\b"},
                               {"recover", "a\\b/x1.mus"},
                               {"analyze", "--names", "a\\b/list"},
                               {"fix", "x1.mus", "--corrections", "a\\b/c.csv", "-o", "f"},
                               {"suggest", "x1.mus", "--layout", "a\\b/c.csv"},
                               {"analyze", "x1.mus", "--folder", "a\\b"},
                               {"verify", "x1.mus", "--result", "a\\b/WORK0001.MUS"},
                               {"survey", "a\\b"}}) {
    expectRefused(command);
  }
}

TEST_F(BackslashNames, OutputsAreRefusedBeforeTheyAreThere) {
  place.write("d1.mus", damagedPage(bass));
  place.write("text", bass);
  for (const std::string name : {"a\\b/new", "a\\new"}) {
    for (const Names& command : {Names{"recover", "d1.mus", "-o", name},
                                 {"draw", "x1.mus", "-o", name},
                                 {"chart", "x1.mus", "-o", name},
                                 {"suggest", "x1.mus", "-o", name},
                                 {"verify", "x1.mus", "--manifest", name},
                                 {"survey", ".", "--resume", name},
                                 {"fix", "x1.mus", "--map", "101=7", "-o", name},
                                 {"build", "text", name},
                                 {"convert", "x1.mus", "x2.mus", "--result", name + "/WORK0001.MUS"},
                                 {"convert", "x1.mus", "x2.mus", "--result", name + "0001.MUS"},
                                 {"analyze", "x1.mus", "--folder", name}}) {
      expectRefused(command);
    }
  }
}

TEST_F(BackslashNames, ASurveyNamesThem) {
  addPage("lib/c\\d/x1.mus", bass);
  addPage("lib/c/d/x1.mus", bass);
  addPage("lib/c\\y1.mus", bass);
  place.write("lib/c\\notes", "no page");
  const Ended ended = place.kivsys({"survey", "lib", "--csv"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find("kivsys: a folder or page whose name holds a backslash cannot be used: lib/c\\d\n"),
            std::string::npos)
      << ended.error;
  EXPECT_NE(ended.error.find("cannot be used: lib/c\\y1.mus\n"), std::string::npos) << ended.error;
  EXPECT_EQ(ended.error.find("notes"), std::string::npos);
  EXPECT_EQ(std::count(ended.out.begin(), ended.out.end(), '\n'), 2) << ended.out;
}

}  // namespace
}  // namespace kiv::test
