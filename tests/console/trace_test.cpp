#include <cstddef>
#include <filesystem>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

using ConsoleTrace = ConsoleConvert;

/// A line whose fields stand in zones of 14 columns.
std::string zoned(const Names& fields) {
  constexpr std::size_t width = 14;
  std::string line;
  for (const std::string& field : fields) {
    line.resize((line.size() + width - 1) / width * width, ' ');
    line += field;
  }
  return line + "\r\n";
}

TEST_F(ConsoleTrace, LeavesTheTablesOfTheLastSystem) {
  addTwo();
  const Ended ended = place.kivsys({"trace", "--no-instr-number", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(place.read("KivSystemDump.txt"),
            "File " + place.capitals("WORK0002.MUS") +
                "\r\nItem 1\r\n 8 1 0 0 0 0 0 0 102\r\nItem 2\r\n 999 1 0 1\r\nItem 3\r\n 14 1 0 2\r\n"
                "Item 4\r\n 8 2 0 0 0 0 0 0 101\r\nItem 5\r\n 3 2 2\r\n"
                "============= order table ===============\r\n" +
                zoned({"index", "instr", "size", "lines", "par11", "clef", "hite", "key", "type", "timeUp", "timeDn"}) +
                zoned({" 1 ", " 101 ", " 1000 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 "}) +
                zoned({" 2 ", " 102 ", " 1000 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 ", " 0 "}));
}

TEST_F(ConsoleTrace, DoesWhatConvertDoesOtherwise) {
  addTwo();
  const Ended converted = place.kivsys({"convert", "x1.mus", "x2.mus"});
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  const Names pages = {place.read("WORK0001.MUS"), place.read("WORK0002.MUS")};
  EXPECT_EQ(place.kivsys({"undo"}).status, 0);
  const Ended traced = place.kivsys({"trace", "x1.mus", "x2.mus"});
  EXPECT_EQ(traced.status, 0);
  EXPECT_EQ(traced.out, converted.out);
  EXPECT_EQ(traced.error, converted.error);
  EXPECT_EQ((Names{place.read("WORK0001.MUS"), place.read("WORK0002.MUS")}), pages);
}

TEST_F(ConsoleTrace, TheDumpIsInTheRunsFolderAndReplacesAnOldOne) {
  addTwo();
  place.write("out/KivSystemDump.txt", "a dump of another day");
  EXPECT_EQ(place.kivsys({"trace", "--folder", "out", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_TRUE(place.read("out/KivSystemDump.txt").starts_with("File " + place.capitals("WORK0002.MUS") + "\r\n"));
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
}

TEST_F(ConsoleTrace, ACriticalEndLeavesNoDump) {
  addTwo();
  fs::create_directory(place.path() / "WORK0001.MUS");
  EXPECT_EQ(place.kivsys({"trace", "x1.mus", "x2.mus"}).status, 1);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  EXPECT_EQ(place.kivsys({"trace", "--force", "none1.mus"}).status, 2);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
}

TEST_F(ConsoleTrace, InputThatQualifiesLeavesADumpByForceOnly) {
  addPage("x1.mus", bass);
  EXPECT_EQ(place.kivsys({"trace", "x1.mus"}).status, 0);
  EXPECT_EQ(place.read("KivSystemDump.txt"), "(no file)");
  EXPECT_EQ(place.kivsys({"trace", "--force", "x1.mus"}).status, 0);
  EXPECT_TRUE(place.read("KivSystemDump.txt").starts_with("File " + place.capitals("WORK0001.MUS") + "\r\n"));
}

TEST_F(ConsoleTrace, ADumpThatCannotBeWrittenIsReportedAndIsNoSuccess) {
  addTwo();
  fs::create_directory(place.path() / "KivSystemDump.txt");
  const Ended ended = place.kivsys({"trace", "--json", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.error.ends_with("kivsys: cannot write KivSystemDump.txt\n")) << ended.error;
  EXPECT_EQ(Json::parse(ended.out)["created"].size(), 2U);
}

}  // namespace
}  // namespace kiv::test
