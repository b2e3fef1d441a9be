#include <filesystem>

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

std::string staffOf(int number, int id, const std::string& music) {
  const std::string n = std::to_string(number);
  return "staff " + n + " at 10 lines 5 instrument " + std::to_string(id) + "\nclef " + n + " at 12\ntimesignature " +
         n + " at 14 upper 4 lower 4\n" + music + "barline " + n + " at 60 spans 1\n";
}

std::string note(int staff, const std::string& duration) {
  return "note " + std::to_string(staff) + " at 20 height 3 duration " + duration + "\n";
}

/// Three pages of one system each; the last one lacks an instrument.
class ReportResults : public ::testing::Test {
 protected:
  void SetUp() override {
    const std::string both =
        staffOf(2, 101, note(2, "4")) + staffOf(1, 102, note(1, "4")) + "barline 1 at 10 spans 2\n";
    place.write("x1.mus", page(both));
    place.write("x2.mus", page(both));
    place.write("x3.mus", page(staffOf(1, 101, note(1, "4")) + "barline 1 at 10 spans 1\n"));
    EXPECT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus", "x3.mus", "--result", "out/WORK0001.MUS"}).status, 0);
  }
  /// The report of pages with the results in the folder.
  std::string report(std::vector<std::string> pages = {"x1.mus", "x2.mus", "x3.mus"},
                     const std::string& result = "out/WORK0001.MUS") const {
    pages.insert(pages.begin(), {"report", "-o", "report.html", "--all", "--result", result});
    const Ended ended = place.kivsys(pages);
    EXPECT_LT(ended.status, 2) << ended.error;
    return place.read("report.html");
  }
  static Json dataOf(const std::string& page) {
    const std::string opening = R"(id="data">)";
    const std::size_t start = page.find(opening) + opening.size();
    return Json::parse(page.substr(start, page.find("</script>", start) - start));
  }
  static std::size_t resultsShownIn(const std::string& page) {
    std::size_t shown = 0;
    const Json data = dataOf(page);
    for (const Json& system : data["pictures"]["systems"]) {
      shown += system[2].is_array() ? 1U : 0U;
    }
    return shown;
  }
  void expectUnfit(const std::string& page, const std::string& reason) const {
    EXPECT_THAT(page, HasSubstr("The results do not fit the pages</h2>"));
    EXPECT_THAT(page, HasSubstr("class=\"verdict unfit-results\""));
    EXPECT_THAT(page, HasSubstr(reason));
    EXPECT_THAT(page, Not(HasSubstr("The pages have been converted")));
    EXPECT_EQ(resultsShownIn(page), 0U);
  }
  const Workplace place;
};

TEST_F(ReportResults, AreShownWhenTheyFit) {
  EXPECT_THAT(report(), HasSubstr("The pages have been converted</h2>"));
  EXPECT_EQ(resultsShownIn(report()), 3U);
}

TEST_F(ReportResults, OfManyLayoutsAreShortAsEachHasOnlyItsIds) {
  EXPECT_EQ(dataOf(report())["chart"]["layouts"]["labels"], Json::parse(R"([["A", []], ["B", [[102]]]])"));
}

TEST_F(ReportResults, DoNotFitWhenOneIsMissing) {
  std::filesystem::remove(place.path() / "out/WORK0002.MUS");
  expectUnfit(report(), "WORK0002.MUS is missing, the result of system 2.");
  EXPECT_THAT(report(), Not(HasSubstr("The conversion has ended before")));
}

TEST_F(ReportResults, OfAConversionThatHasEndedEarlyLeadToOneThatFitsTheMusic) {
  std::filesystem::remove(place.path() / "out/WORK0003.MUS");
  const std::string page = report();
  expectUnfit(page, "WORK0003.MUS is missing, the result of system 3.");
  EXPECT_THAT(page, HasSubstr("The conversion has ended before system 3."));
  EXPECT_THAT(page, HasSubstr("kivsys convert --fit --result converted/WORK0001.MUS x1.mus x2.mus x3.mus</code>"));
  std::filesystem::remove(place.path() / "out/WORK0002.MUS");
  EXPECT_THAT(report(), HasSubstr("The conversion has ended before system 2."));
}

TEST_F(ReportResults, DoNotFitWhenOneIsDamaged) {
  const std::string whole = place.read("out/WORK0003.MUS");
  for (const std::string& cut : {whole.substr(0, whole.size() / 2), std::string()}) {
    place.write("out/WORK0003.MUS", cut);
    expectUnfit(report(), "WORK0003.MUS is damaged.");
  }
}

TEST_F(ReportResults, DoNotFitWhenThereAreMoreThanSystems) {
  expectUnfit(report({"x1.mus", "x3.mus"}), "WORK0003.MUS is there, but the pages have only 2 systems.");
}

TEST_F(ReportResults, DoNotFitWhenThereIsOneAfterAGap) {
  place.write("out/WORK0009.MUS", place.read("out/WORK0003.MUS"));
  expectUnfit(report(), "WORK0009.MUS is there, but the pages have only 3 systems.");
}

TEST_F(ReportResults, AreNoPlaceForTheReportItself) {
  const Ended ended = place.kivsys({"report", "x1.mus", "-o", "out/WORK0009.MUS"});
  EXPECT_EQ(ended.status, 2);
  EXPECT_THAT(ended.error, HasSubstr("out/WORK0009.MUS has the name of a page; name a file that ends in .html"));
}

TEST_F(ReportResults, DoNotFitWhenTheyAreOfOtherInstruments) {
  place.write("y1.mus",
              page(staffOf(2, 201, note(2, "4")) + staffOf(1, 102, note(1, "4")) + "barline 1 at 10 spans 2\n"));
  place.write("y2.mus", page(staffOf(1, 102, note(1, "4")) + "barline 1 at 10 spans 1\n"));
  place.write("y3.mus", page(staffOf(1, 102, note(1, "4")) + "barline 1 at 10 spans 1\n"));
  const std::string page = report({"y1.mus", "y2.mus", "y3.mus"});
  expectUnfit(page, "WORK0001.MUS has no staff of 201.");
  EXPECT_THAT(page, HasSubstr("kivsys convert --result converted/WORK0001.MUS y1.mus y2.mus y3.mus</code>"));
}

TEST_F(ReportResults, AreNotShownWithOtherSystemsWhenAPageCannotBeRead) {
  place.write("x1.mus", place.read("x1.mus").substr(0, 60));
  const std::string page = report();
  EXPECT_THAT(page, HasSubstr("1 page cannot be read</h2>"));
  EXPECT_THAT(page, HasSubstr("The results of the conversion are not shown: without the pages left out"));
  EXPECT_EQ(resultsShownIn(page), 0U);
  EXPECT_EQ(dataOf(page)["results"], 0);
}

TEST_F(ReportResults, OfTheReadablePagesAreShownWithTheirSystems) {
  place.write("x1.mus", place.read("x1.mus").substr(0, 60));
  place.kivsys({"convert", "--keep-going", "x1.mus", "x2.mus", "x3.mus", "--result", "rest/WORK0001.MUS"});
  const std::string page = report({"x1.mus", "x2.mus", "x3.mus"}, "rest/WORK0001.MUS");
  EXPECT_EQ(resultsShownIn(page), 2U);
  EXPECT_THAT(page, Not(HasSubstr("are not shown")));
}

TEST_F(ReportResults, HaveAFrameOnAllStavesWhereTheyLastUnequallyLong) {
  place.write("x2.mus",
              page(staffOf(2, 101, note(2, "4")) + staffOf(1, 102, note(1, "2")) + "barline 1 at 10 spans 2\n"));
  place.write("x3.mus",
              page(staffOf(2, 103, note(2, "4")) + staffOf(1, 101, note(1, "4")) + "barline 1 at 10 spans 2\n"));
  ASSERT_EQ(place.kivsys({"convert", "--fit", "x1.mus", "x2.mus", "x3.mus", "--result", "fit/WORK0001.MUS"}).status, 0);
  const std::string page = report({"x1.mus", "x2.mus", "x3.mus"}, "fit/WORK0001.MUS");
  ASSERT_THAT(page, HasSubstr("Staves of unequal length"));
  bool isMarked = false;
  const Json data = dataOf(page);
  for (const Json& system : data["pictures"]["systems"]) {
    if (system[0] == 2) {
      EXPECT_EQ(system[2][3].size(), 3U);
      EXPECT_EQ(system[2][4].size(), 3U);
      isMarked = true;
    }
  }
  EXPECT_TRUE(isMarked);
}

/// Results in numbers and instruments like those of the pages, with other contents.
class ReportOtherResults : public ReportResults {
 protected:
  void SetUp() override {
    writeGroup("x", 1);
    writeGroup("y", 5);
    convert({"x1.mus", "x2.mus", "x3.mus"}, "out");
    convert({"y1.mus", "y2.mus", "y3.mus"}, "other");
  }
  /// Three pages whose notes differ by their heights; the second one lacks an instrument.
  void writeGroup(const std::string& name, int height) const {
    const auto notes = [&](int staff, int h) {
      return "note " + std::to_string(staff) + " at 20 height " + std::to_string(h) + " duration 4\n";
    };
    const std::string joined = "barline 1 at 10 spans 2\n";
    const std::string one = staffOf(2, 101, notes(2, height)) + staffOf(1, 102, notes(1, height + 1)) + joined;
    const std::string two = staffOf(1, 102, notes(1, height + 2)) + "barline 1 at 10 spans 1\n";
    const std::string three = staffOf(2, 101, notes(2, height + 3)) + staffOf(1, 102, notes(1, height)) + joined;
    place.write(name + "1.mus", page(one));
    place.write(name + "2.mus", page(two));
    place.write(name + "3.mus", page(three));
  }
  void convert(std::vector<std::string> arguments, const std::string& folder) const {
    arguments.insert(arguments.begin(), "convert");
    arguments.insert(arguments.end(), {"--result", folder + "/WORK0001.MUS"});
    EXPECT_EQ(place.kivsys(arguments).status, 0);
  }
};

TEST_F(ReportOtherResults, AreThoseOfTheGroupWhenTheyHoldItsItems) {
  EXPECT_EQ(resultsShownIn(report()), 3U);
}

TEST_F(ReportOtherResults, DoNotFitWhenTheyAreOfAnotherGroupWithTheSameIds) {
  expectUnfit(report({"x1.mus", "x2.mus", "x3.mus"}, "other/WORK0001.MUS"),
              "WORK0001.MUS lacks 1 item that the staff of 101 in system 1 has.");
}

TEST_F(ReportOtherResults, DoNotFitWhenTwoAreSwapped) {
  const std::string second = place.read("out/WORK0002.MUS");
  place.write("out/WORK0002.MUS", place.read("out/WORK0003.MUS"));
  place.write("out/WORK0003.MUS", second);
  expectUnfit(report(), "WORK0002.MUS has notes of 101, which does not play in system 2.");
}

TEST_F(ReportOtherResults, DoNotFitWhenTheyAreInAnotherOrder) {
  convert({"--keep-order", "x3.mus", "x2.mus", "x1.mus"}, "order");
  expectUnfit(report({"x1.mus", "x2.mus", "x3.mus"}, "order/WORK0001.MUS"), "WORK0001.MUS lacks 1 item");
  EXPECT_EQ(resultsShownIn(report({"--keep-order", "x3.mus", "x2.mus", "x1.mus"}, "order/WORK0001.MUS")), 3U);
}

TEST_F(ReportOtherResults, DoNotFitWhenTheyHaveAnInstrumentThatThePagesLack) {
  place.write("x2.mus", page(staffOf(1, 103, note(1, "4")) + "barline 1 at 10 spans 1\n"));
  convert({"x1.mus", "x2.mus", "x3.mus"}, "more");
  writeGroup("x", 1);
  expectUnfit(report({"x1.mus", "x2.mus", "x3.mus"}, "more/WORK0001.MUS"),
              "WORK0002.MUS has a staff of 103, which no page has.");
}

TEST_F(ReportOtherResults, MayHaveSilentInstrumentsOfAList) {
  place.write("list.csv", "id,name,clef\n101,Flute,treble\n102,Bass,bass\n110,Harp,treble\n");
  convert({"--layout", "list.csv", "x1.mus", "x2.mus", "x3.mus"}, "listed");
  EXPECT_EQ(resultsShownIn(report({"x1.mus", "x2.mus", "x3.mus"}, "listed/WORK0001.MUS")), 3U);
}

}  // namespace
}  // namespace kiv::test
