#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Files that are to be written into a folder that is not there.
class MissingFolders : public ConsoleConvert {
 protected:
  MissingFolders() {
    addTwo();
    addPage("lib/a1.mus", bass);
    place.write("damaged1.mus", page("bytes FF FF FF FF\n") + page(bass));
    place.write("text.txt", bass);
  }
};

TEST_F(MissingFolders, AreNamedInOneLineWithTheFileTheReasonAndWhatToDo) {
  EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
  const std::vector<Names> commands = {
      {"draw", "x1.mus", "-o", "no/file"},
      {"chart", "x1.mus", "-o", "no/file"},
      {"report", "x1.mus", "-o", "no/file"},
      {"suggest", "x1.mus", "-o", "no/file"},
      {"verify", "x1.mus", "x2.mus", "--result", "WORK0001.MUS", "--manifest", "no/file"},
      {"build", "text.txt", "no/file"},
      {"survey", "lib", "--html", "no/file"}};
  for (const Names& command : commands) {
    const Ended ended = place.kivsys(command);
    EXPECT_EQ(ended.status, 1) << command.front();
    EXPECT_EQ(ended.error,
              "kivsys: cannot write no/file: No such file or directory; make the folder no first, or name a file in "
              "another one\n")
        << command.front();
    EXPECT_FALSE(fs::exists(place.path() / "no")) << command.front();
  }
}

TEST_F(MissingFolders, AreNotThoughtToBeTheReasonOfAnotherFailure) {
  fs::create_directories(place.path() / "taken.svg");
  const Ended ended = place.kivsys({"draw", "x1.mus", "-o", "taken.svg"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.starts_with("kivsys: cannot write taken.svg: ")) << ended.error;
  EXPECT_EQ(ended.error.find("make the folder"), std::string::npos) << ended.error;
}

}  // namespace
}  // namespace kiv::test
