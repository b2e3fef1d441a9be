#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Pages with a counted text of no characters, which the writer writes and no reader reads.
class ConsoleReadBack : public ConsoleConvert {
 protected:
  const std::string emptyText = "countedtext 1 at 5 \"abcd\" characters 0\n";

  std::string refused(const std::string& result, int number, const std::string& input, int item) const {
    return "kivsys: " + input + ": item " + std::to_string(item) +
           ": Output MUS file cannot be read back and is not written: " + result + ", item " + std::to_string(number) +
           "\n";
  }
};

TEST_F(ConsoleReadBack, AResultThatNoReaderReadsIsRefused) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", bass + emptyText);
  place.write("WORK0002.MUS", "old");
  const Ended ended = place.kivsys({"convert", "--no-instr-number", "x1.mus", "x2.mus"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, needsConversionNote + refused("WORK0002.MUS", 3, "x2.mus", 3) +
                             "kivsys: warning: WORK0002.MUS remains, and is not of this run\n");
  EXPECT_EQ(dumped("WORK0001.MUS"), asDumped(plainFluteAndBass));
  EXPECT_EQ(place.read("WORK0002.MUS"), "old");
}

TEST_F(ConsoleReadBack, JsonNamesTheItemOfTheInput) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", bass + emptyText);
  const Json object = Json::parse(place.kivsys({"convert", "--json", "x1.mus", "x2.mus"}).out);
  EXPECT_EQ(object["end"], "critical");
  EXPECT_EQ(object["created"], Json::array({place.capitals("WORK0001.MUS")}));
  const Json problem = object["problems"].back();
  EXPECT_EQ(problem["code"], "result-unreadable");
  EXPECT_EQ(problem["file"], place.capitals("X2.MUS"));
  EXPECT_EQ(problem["item"], 3);
}

TEST_F(ConsoleReadBack, ADryRunRefusesItToo) {
  addPage("x1.mus", fluteAndBass);
  addPage("x2.mus", bass + emptyText);
  EXPECT_EQ(place.kivsys({"convert", "--dry-run", "x1.mus", "x2.mus"}).status, 1);
}

TEST_F(ConsoleReadBack, ASortedPageThatNoReaderReadsIsRefused) {
  addPage("X1.MUS", bass + emptyText);
  const Ended ended = place.kivsys({"sort", "X1.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error, refused("X1.PAG", 3, "X1.MUS", 3));
  EXPECT_EQ(place.read("X1.PAG"), "(no file)");
}

}  // namespace
}  // namespace kiv::test
