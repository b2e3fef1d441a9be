#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/run_program.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;
using Json = nlohmann::json;

/// Two systems, of which the second has a bar that is shorter than the time, and no staff for one instrument.
class ConsoleFitMarks : public ::testing::Test {
 protected:
  void SetUp() override {
    place.write("X1.MUS",
                page("staff 2 at 0 lines 5 instrument 101\nclef 2 at 2\ntimesignature 2 at 9 upper 4 lower 4\n"
                     "note 2 at 20 duration 4\nbarline 2 at 50 spans 1\nstaff 1 at 0 lines 5 instrument 102\n"
                     "clef 1 at 2\nnote 1 at 20 duration 4\nbarline 1 at 0 spans 2\nbarline 1 at 50 spans 1\n"));
    place.write("X2.MUS", page("staff 1 at 0 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 20 duration 3\n"
                               "barline 1 at 0 spans 1\nbarline 1 at 50 spans 1\n"));
    ASSERT_EQ(place.kivsys({"convert", "X1.MUS", "X2.MUS", "--result", "plain/WORK0001.MUS"}).status, 0);
    ASSERT_EQ(place.kivsys({"convert", "--fit", "X1.MUS", "X2.MUS", "--result", "fit/WORK0001.MUS"}).status, 0);
  }
  std::string drawn(const std::string& page) const { return place.kivsys({"draw", page}).out; }
  std::string report(const std::string& result) const {
    place.kivsys({"report", "X1.MUS", "X2.MUS", "--result", result, "-o", "report.html"});
    return place.read("report.html");
  }

  const std::string mark = "class=\"mark\"";
  const Workplace place;
};

TEST_F(ConsoleFitMarks, DrawFramesBarsWhoseRestsDoNotFitTheMusic) {
  const std::string page = drawn("plain/WORK0002.MUS");
  EXPECT_THAT(page, HasSubstr(mark));
  EXPECT_THAT(page, HasSubstr("<title>rest 4, music 3</title>"));
  EXPECT_THAT(drawn("plain/WORK0001.MUS"), Not(HasSubstr(mark))) << "all instruments play";
  EXPECT_THAT(drawn("X2.MUS"), Not(HasSubstr(mark))) << "no result";
}

TEST_F(ConsoleFitMarks, DrawKnowsARestStaffWithoutRestAndNumber) {
  place.write("X2.MUS", page("staff 1 at 0 lines 5 instrument 101\nclef 1 at 2\nnote 1 at 20 duration 4\n"));
  place.kivsys({"convert", "--no-instr-number", "X1.MUS", "X2.MUS", "--result", "plain/WORK0001.MUS"});
  const std::string page = drawn("plain/WORK0002.MUS");
  EXPECT_THAT(page, HasSubstr("class=\"made\""));
  EXPECT_THAT(page, HasSubstr("<title>no rest</title>"));
  EXPECT_THAT(drawn("plain/WORK0001.MUS"), Not(HasSubstr("class=\"made\"")));
}

TEST_F(ConsoleFitMarks, FittingRestStavesAreTintedAndHaveNoFrame) {
  const std::string page = drawn("fit/WORK0002.MUS");
  EXPECT_THAT(page, HasSubstr("class=\"made\""));
  EXPECT_THAT(page, Not(HasSubstr(mark)));
}

TEST_F(ConsoleFitMarks, AReportListsThemAndMarksTheBars) {
  const std::string page = report("plain/WORK0001.MUS");
  EXPECT_THAT(page, HasSubstr("Rest of another length"));
  EXPECT_THAT(page, HasSubstr("WORK0002.MUS, bar 1: "));
  const std::string opening = R"(id="data">)";
  const std::size_t start = page.find(opening) + opening.size();
  const Json data = Json::parse(page.substr(start, page.find("</script>", start) - start));
  ASSERT_EQ(data["problems"].size(), 1U);
  EXPECT_EQ(data["problems"][0], Json({"Rest of another length", 1, {2}}));
  const Json after = data["pictures"]["systems"].back()[2];
  ASSERT_EQ(after[4].size(), 1U);
  const int origin = after[2];
  EXPECT_EQ(after[4][0], Json({0, origin, 0, origin + 300})) << "staff, begin of the bar, problem, end of the bar";
}

TEST_F(ConsoleFitMarks, AReportOfFittingResultsHasNone) {
  EXPECT_THAT(report("fit/WORK0001.MUS"), Not(HasSubstr("Rest of another length")));
}

}  // namespace
}  // namespace kiv::test
