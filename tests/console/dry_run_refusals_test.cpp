#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// Dry runs where a run would be refused, as its output is there: they say so, and print the rest.
class DryRunRefusals : public ConsoleConvert {
 protected:
  DryRunRefusals() {
    addTwo();
    place.write("damaged1.mus", page(bass + "note 1 at 9 height 5 p5 2 duration 1\nbytes FF FF FF FF\n"));
  }
  std::string path(const std::string& file) const { return (place.path() / file).string(); }
};

TEST_F(DryRunRefusals, OfARecoveryNameThePageThatIsThere) {
  ASSERT_EQ(place.kivsys({"recover", "damaged1.mus"}).status, 0);
  const std::string before = place.read("RECOVERED-damaged1.mus");
  const std::string reason = path("RECOVERED-damaged1.mus") + " exists; --force replaces it";
  EXPECT_EQ(place.kivsys({"recover", "damaged1.mus"}).error, "kivsys: " + reason + "\n");
  const Ended ended = place.kivsys({"recover", "damaged1.mus", "--dry-run"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_TRUE(ended.out.starts_with("damaged1.mus: kept 1 item\n")) << ended.out;
  EXPECT_TRUE(ended.out.ends_with(
      "nothing written, as this is a dry run; without --dry-run it would not be written either:\n  " + reason + "\n"))
      << ended.out;
  EXPECT_EQ(place.read("RECOVERED-damaged1.mus"), before);
  const Json object = Json::parse(place.kivsys({"recover", "damaged1.mus", "--dry-run", "--json"}).out);
  EXPECT_EQ(object["refusals"], Json({reason}));
  const std::string forced = place.kivsys({"recover", "damaged1.mus", "--dry-run", "--force"}).out;
  EXPECT_TRUE(forced.ends_with("; would write RECOVERED-damaged1.mus\n")) << forced;
}

TEST_F(DryRunRefusals, OfACorrectionNameThePagesThatAreThere) {
  const Names fix = {"fix", "x1.mus", "x2.mus", "--map", "102=7", "-o", "f"};
  ASSERT_EQ(place.kivsys(fix).status, 0);
  const std::string before = place.read("f/x1.mus");
  const std::string first = path("f/x1.mus") + " exists; --force replaces it";
  const std::string second = path("f/x2.mus") + " exists; --force replaces it";
  EXPECT_EQ(place.kivsys(fix).error, "kivsys: " + first + "\nkivsys: " + second + "\n");
  Names dry = fix;
  dry.emplace_back("--dry-run");
  const Ended ended = place.kivsys(dry);
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_NE(ended.out.find("2 ids would be changed in 2 pages\nwithout --dry-run nothing would be written:\n  " +
                           first + "\n  " + second + "\n"),
            std::string::npos)
      << ended.out;
  EXPECT_EQ(place.read("f/x1.mus"), before);
  dry.emplace_back("--json");
  EXPECT_EQ(Json::parse(place.kivsys(dry).out)["refusals"], Json({first, second}));
  dry.back() = "--force";
  EXPECT_EQ(place.kivsys(dry).out.find("without --dry-run"), std::string::npos);
}

TEST_F(DryRunRefusals, OfAnOutputThatIsAnInputStay) {
  EXPECT_EQ(place.kivsys({"recover", "damaged1.mus", "-o", "damaged1.mus", "--dry-run"}).status, 2);
  EXPECT_EQ(place.kivsys({"fix", "x1.mus", "--map", "102=7", "-o", ".", "--dry-run"}).status, 2);
}

}  // namespace
}  // namespace kiv::test
