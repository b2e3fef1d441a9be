#include <filesystem>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/json_schema.h"
#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

/// A page of ten notes, the third of which has lost its length; offset and length of an item are in bytes.
constexpr std::size_t itemBytes = 32;
constexpr std::size_t thirdNote = 2 + 2 * itemBytes;

std::string notes(int first, int last) {
  std::string text;
  for (int i = first; i <= last; ++i) {
    text += "note 1 at " + std::to_string(10 * i) + " height 5 p5 2 duration 1\n";
  }
  return text;
}

std::string damagedPage() {
  std::string bytes = page(notes(1, 10));
  return bytes.replace(thirdNote, 4, std::string(4, '\xFF'));
}

std::string recoveredNotes() {
  return page(notes(1, 2) + notes(4, 10));
}

class ConsoleRecover : public ::testing::Test {
 protected:
  ConsoleRecover() { place.write("X001.MUS", damagedPage()); }
  std::string pathOf(const std::string& file) const { return (place.path() / file).string(); }

  Workplace place;
};

TEST_F(ConsoleRecover, WritesBesideThePageWhatItStillHoldsAndSaysWhatWasLost) {
  const Ended ended = place.kivsys({"recover", "X001.MUS"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out,
            "X001.MUS: kept 9 items\n"
            "header: 86 words stated, 78 recovered\nmissing: 8 of 86 words, about 9 % of the page\n"
            "lost 32 bytes at offset 66, between item 2 (note, staff 1) and item 3 (note, staff 1)\n"
            "written: RECOVERED-X001.MUS\n");
  EXPECT_EQ(place.read("RECOVERED-X001.MUS"), recoveredNotes());
  EXPECT_EQ(place.read("X001.MUS"), damagedPage());
}

TEST_F(ConsoleRecover, ADryRunWritesNothing) {
  const Ended ended = place.kivsys({"recover", "X001.MUS", "--dry-run"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_NE(ended.out.find("would write RECOVERED-X001.MUS\n"), std::string::npos) << ended.out;
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{"X001.MUS"});
}

TEST_F(ConsoleRecover, AWholePageIsNotWrittenAgain) {
  place.write("Y001.MUS", page(notes(1, 3)));
  const Ended ended = place.kivsys({"recover", "Y001.MUS", "-o", "Z001.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, "Y001.MUS is undamaged: 3 items; nothing to recover\n");
  EXPECT_EQ(place.read("Z001.MUS"), "(no file)");
}

TEST_F(ConsoleRecover, OfAFileThatIsNoPageNothingIsWritten) {
  place.write("Y001.MUS", std::string(500, '\xFF'));
  const Ended ended = place.kivsys({"recover", "Y001.MUS", "-o", "Z001.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "Y001.MUS holds no item that can be recovered\n");
  EXPECT_EQ(place.read("Z001.MUS"), "(no file)");
}

TEST_F(ConsoleRecover, NeverReplacesItsInput) {
  const Ended ended = place.kivsys({"recover", "X001.MUS", "-o", "X001.MUS", "--force"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_NE(ended.error.find("is the same file as the input"), std::string::npos) << ended.error;
  EXPECT_EQ(place.read("X001.MUS"), damagedPage());
}

TEST_F(ConsoleRecover, ReplacesAnotherPageOnlyByForce) {
  place.write("Z001.MUS", page(notes(1, 1)));
  EXPECT_EQ(place.kivsys({"recover", "X001.MUS", "-o", "Z001.MUS"}).status, 2);
  EXPECT_EQ(place.read("Z001.MUS"), page(notes(1, 1)));
  EXPECT_EQ(place.kivsys({"recover", "X001.MUS", "-o", "Z001.MUS", "--force"}).status, 0);
  EXPECT_EQ(place.read("Z001.MUS"), recoveredNotes());
}

TEST_F(ConsoleRecover, ReplacesNoFileThatIsNoPage) {
  place.write("notes.txt", "not a page");
  place.write("Z001.MUS", damagedPage());
  for (const char* file : {"notes.txt", "Z001.MUS"}) {
    const std::string before = place.read(file);
    const Ended ended = place.kivsys({"recover", "X001.MUS", "-o", file, "--force"});
    EXPECT_EQ(ended.status, 2) << file;
    EXPECT_EQ(ended.error, "kivsys: " + pathOf(file) + " is not a page, and is not replaced; name another file\n");
    EXPECT_EQ(place.read(file), before);
  }
}

TEST_F(ConsoleRecover, ReplacesItsInputUnderNoName) {
  std::filesystem::create_hard_link(place.path() / "X001.MUS", place.path() / "same.mus");
  std::filesystem::create_symlink("X001.MUS", place.path() / "link.mus");
  for (const char* file : {"same.mus", "link.mus", "./X001.MUS"}) {
    EXPECT_EQ(place.kivsys({"recover", "X001.MUS", "-o", file, "--force"}).status, 2) << file;
  }
  EXPECT_EQ(place.read("X001.MUS"), damagedPage());
}

TEST_F(ConsoleRecover, AVeryLargeFileIsNotRead) {
  const std::string large(std::size_t{17} * 1024 * 1024, 'x');
  place.write("Y001.MUS", large);
  const Ended ended = place.kivsys({"recover", "Y001.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, "kivsys: Y001.MUS has more than 16777216 bytes, the limit for a damaged page\n");
  EXPECT_EQ(place.kivsys({"recover", "-"}, ".", large).status, 1);
}

TEST_F(ConsoleRecover, APageThatOtherBytesFollowIsSaved) {
  place.write("X001.MUS", damagedPage() + std::string(300'000, '\xFF'));
  EXPECT_EQ(place.kivsys({"recover", "X001.MUS"}).status, 0);
  EXPECT_EQ(place.read("RECOVERED-X001.MUS"), recoveredNotes());
}

TEST_F(ConsoleRecover, NamesAreEscaped) {
  place.write("X\x1B[2J\n001.MUS", damagedPage());
  const Ended ended = place.kivsys({"recover", "X\x1B[2J\n001.MUS"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with("X\\x1B[2J\\n001.MUS: kept 9 items\n")) << ended.out;
  EXPECT_NE(ended.out.find("written: RECOVERED-X\\x1B[2J\\n001.MUS\n"), std::string::npos) << ended.out;
}

TEST_F(ConsoleRecover, StandardStreamsCarryThePageAndErrorsTheReport) {
  const Ended ended = place.kivsys({"recover", "-"}, ".", damagedPage());
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(ended.out, recoveredNotes());
  EXPECT_NE(ended.error.find("standard input: kept 9 items"), std::string::npos) << ended.error;
}

TEST_F(ConsoleRecover, JsonFollowsTheSchema) {
  for (const char* file : {"X001.MUS", "EMPTY.MUS", "Y001.MUS"}) {
    place.write("EMPTY.MUS", "");
    place.write("Y001.MUS", page(notes(1, 3)));
    const Json object = Json::parse(place.kivsys({"recover", file, "--json", "--force"}).out);
    EXPECT_EQ(schemaErrors(object, "recover"), std::vector<std::string>()) << object;
  }
  const Json object = Json::parse(place.kivsys({"recover", "X001.MUS", "--json", "--force"}).out);
  EXPECT_EQ(object["items"], 9);
  EXPECT_EQ(object["losses"][0]["offset"], 66);
  EXPECT_EQ(object["losses"][0]["bytes"], 32);
  EXPECT_EQ(object["losses"][0]["after"]["item"], 2);
  EXPECT_EQ(object["written"], pathOf("RECOVERED-X001.MUS"));
}

TEST_F(ConsoleRecover, AFileThatCannotBeReadOrWrittenIsNamed) {
  EXPECT_EQ(place.kivsys({"recover", "none.mus"}).error, "kivsys: cannot read none.mus: No such file or directory\n");
  const Ended ended = place.kivsys({"recover", "X001.MUS", "-o", "nowhere/X001.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.error.find("No such file or directory"), std::string::npos) << ended.error;
}

}  // namespace
}  // namespace kiv::test
