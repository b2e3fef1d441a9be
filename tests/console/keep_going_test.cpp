#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "tests/console/example_pages.h"
#include "tests/console/json_schema.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

using Json = nlohmann::json;

class KeepGoing : public ::testing::Test {
 protected:
  void addPage(const std::string& file, const std::string& text) const { place.write(file, page(text)); }
  void addMixture() const {
    addPage("X1.MUS", good);
    addPage("X2.MUS", "words 99\n");
    addPage("X3.MUS", good);
    addPage("X;4.MUS", good);
  }
  std::string reportWithoutDate() const {
    const std::string report = place.read("KivSystem2.TXT");
    return report.substr(std::min(report.find('\n'), report.size()));
  }

  const std::string good = "staff 1 at 0 instrument 101\nbarline 1 at 0 spans 1\n";
  Workplace place;
};

TEST_F(KeepGoing, NamesBadPagesAndAnalyzesTheOthers) {
  addMixture();
  const Ended ended =
      place.kivsys({"analyze", "--keep-going", "--keep-order", "X1.MUS", "X2.MUS", "X3.MUS", "X;4.MUS", "GONE5.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out,
            "CONSISTENCY=YES\nMULTIFILE=NO\nFiles: 2\nSystems: 2\nInstruments: 1\n"
            "Layouts: all alike in 2 systems: 101\n3 pages cannot be read.\n"
            "2 pages analyzed, 3 skipped: X;4.MUS, GONE5.MUS, X2.MUS\n");
  EXPECT_EQ(ended.error,
            "kivsys: X;4.MUS: File naming problem; the form is <letter(s)><digit(s)><optionally one sequence letter>"
            ".<suffix>\n"
            "kivsys: cannot read GONE5.MUS: No such file or directory\n"
            "kivsys: X2.MUS: item 1: Structural error in MUS file\nNext: kivsys recover X2.MUS\n");
  const std::string kept = reportWithoutDate();
  place.kivsys({"analyze", "X1.MUS", "X3.MUS"});
  EXPECT_EQ(kept, reportWithoutDate()) << "as if the others alone had been selected";
}

TEST_F(KeepGoing, NamesThePartsOfAPageThatAreLeftOutWithABadOne) {
  addPage("X1.MUS", good);
  place.write("X2A.MUS", "no page at all");
  addPage("X2B.MUS", good);
  const Ended ended = place.kivsys({"analyze", "--keep-going", "X1.MUS", "X2A.MUS", "X2B.MUS"});
  EXPECT_TRUE(ended.out.ends_with("1 page analyzed, 1 skipped: X2A.MUS (and with it X2B.MUS)\n")) << ended.out;
  place.kivsys({"report", "X1.MUS", "X2A.MUS", "X2B.MUS", "-o", "r.html"});
  EXPECT_NE(place.read("r.html").find("left out with it: X2B.MUS"), std::string::npos);
}

TEST_F(KeepGoing, WithoutBadPagesItIsAnAnalysisWithASum) {
  addPage("X1.MUS", good);
  const Ended ended = place.kivsys({"analyze", "--keep-going", "X1.MUS"});
  EXPECT_EQ(ended.status, 0);
  EXPECT_EQ(ended.out, place.kivsys({"analyze", "X1.MUS"}).out + "1 page analyzed, 0 skipped\n");
}

TEST_F(KeepGoing, ANamesFileStaysAsItIs) {
  addMixture();
  const std::string names = "* mine\r\n" + place.corePath("X1.MUS") + " 1\r\n" + place.corePath("X2.MUS") + " 1\r\n" +
                            place.corePath("GONE5.MUS") + " 1\r\n";
  place.write("names.txt", names);
  EXPECT_EQ(place.kivsys({"analyze", "--keep-going", "--names", "names.txt"}).status, 1);
  EXPECT_EQ(place.read("names.txt"), names);
}

TEST_F(KeepGoing, OfOnlyBadPagesNothingIsLeft) {
  addPage("X2.MUS", "words 99\n");
  place.write("KivSystem1.TXT", "old");
  const Ended ended = place.kivsys({"analyze", "--keep-going", "X2.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "0 pages analyzed, 1 skipped: X2.MUS\n");
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{"X2.MUS"});
}

TEST_F(KeepGoing, JsonReportsWhatWasSkipped) {
  addMixture();
  const Ended ended = place.kivsys({"analyze", "--keep-going", "--json", "X1.MUS", "X2.MUS", "X3.MUS"});
  EXPECT_EQ(ended.status, 1);
  const Json object = Json::parse(ended.out);
  EXPECT_EQ(schemaErrors(object, "analyze"), std::vector<std::string>());
  EXPECT_EQ(object["end"], "normal");
  EXPECT_EQ(object["pages_analysed"], 2);
  EXPECT_EQ(object["skipped"],
            Json::array({{{"files", {place.capitals("X2.MUS")}}, {"code", "structure-error"}, {"message", 0}}}));
  ASSERT_EQ(object["problems"].size(), 1U);
  EXPECT_EQ(object["problems"][0]["code"], "structure-error");
  EXPECT_EQ(object["problems"][0]["file"], place.capitals("X2.MUS"));
  EXPECT_EQ(object["problems"][0]["item"], 1);
  EXPECT_EQ(object["problems"][0]["offset"], 2);
}

TEST_F(KeepGoing, WithoutItTheFirstBadPageEndsTheRun) {
  addMixture();
  const Ended ended = place.kivsys({"analyze", "X1.MUS", "X2.MUS", "X3.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "");
  EXPECT_EQ(place.read("KivSystem1.TXT"), "(no file)");
}

TEST_F(KeepGoing, ASkippedPageIsInNoRange) {
  const std::string two = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
  for (const char* file : {"X1.MUS", "X2.MUS", "X3.MUS", "X5.MUS", "X6.MUS", "X7.MUS"}) {
    addPage(file, good);
  }
  addPage("X4.MUS", "words 99\n");
  addPage("X8.MUS", two);
  const Ended ended = place.kivsys(
      {"analyze", "--keep-going", "X1.MUS", "X2.MUS", "X3.MUS", "X4.MUS", "X5.MUS", "X6.MUS", "X7.MUS", "X8.MUS"});
  EXPECT_NE(ended.out.find("  A: systems 1 to 6 (X1.MUS to X3.MUS, X5.MUS to X7.MUS)\n"), std::string::npos)
      << ended.out;
}

TEST_F(KeepGoing, ConvertsTheOthers) {
  addMixture();
  const Ended ended =
      place.kivsys({"convert", "--keep-going", "--force", "--verify", "X1.MUS", "X2.MUS", "X3.MUS", "X;4.MUS"});
  EXPECT_EQ(ended.status, 1) << "as a page was skipped";
  EXPECT_NE(ended.error.find("kivsys: X2.MUS: item 1: Structural error in MUS file\n"), std::string::npos);
  EXPECT_NE(ended.error.find("kivsys: X;4.MUS: File naming problem"), std::string::npos);
  EXPECT_NE(ended.out.find("PROVED=YES\n"), std::string::npos) << ended.out;
  EXPECT_TRUE(ended.out.ends_with("\n2 pages analyzed, 2 skipped: X;4.MUS, X2.MUS\n")) << ended.out;
  const std::string first = place.read("WORK0001.MUS");
  const std::string second = place.read("WORK0002.MUS");
  EXPECT_EQ(place.read("WORK0003.MUS"), "(no file)");
  place.kivsys({"convert", "--force", "X1.MUS", "X3.MUS"});
  EXPECT_EQ(first, place.read("WORK0001.MUS")) << "as if the others alone had been selected";
  EXPECT_EQ(second, place.read("WORK0002.MUS"));
}

TEST_F(KeepGoing, JsonOfAConversionReportsWhatWasSkipped) {
  addMixture();
  const Json object =
      Json::parse(place.kivsys({"convert", "--keep-going", "--dry-run", "--force", "--json", "X1.MUS", "X2.MUS"}).out);
  EXPECT_EQ(schemaErrors(object, "convert"), std::vector<std::string>());
  EXPECT_EQ(object["pages_analysed"], 1);
  EXPECT_EQ(object["skipped"][0]["files"], Json::array({place.capitals("X2.MUS")}));
  EXPECT_EQ(object["planned"].size(), 1U);
}

TEST_F(KeepGoing, AConversionOfOnlyBadPagesWritesNothing) {
  addPage("X2.MUS", "words 99\n");
  const Ended ended = place.kivsys({"convert", "--keep-going", "--force", "X2.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.out, "0 pages analyzed, 1 skipped: X2.MUS\n");
  EXPECT_EQ(filesIn(place.path()), std::vector<std::string>{"X2.MUS"});
}

TEST_F(KeepGoing, AConversionOverwritesNoInputEvenIfAPageIsBad) {
  addPage("WORK0001.MUS", good);
  addPage("WORK0002.MUS", "words 99\n");
  const std::string input = place.read("WORK0001.MUS");
  addPage("WORK0003.MUS", good);
  const Ended ended = place.kivsys({"convert", "--keep-going", "--force", "WORK0003.MUS", "WORK0001.MUS",
                                    "WORK0002.MUS", "--result", "WORK0001.MUS"});
  EXPECT_EQ(ended.status, 2) << ended.error;
  EXPECT_EQ(place.read("WORK0001.MUS"), input);
}

TEST_F(KeepGoing, ShowsTheOthersInAChart) {
  addMixture();
  const Ended ended = place.kivsys({"chart", "--keep-going", "X1.MUS", "X2.MUS", "X3.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_TRUE(ended.out.starts_with("X: 2 systems on 2 pages, 1 instrument;")) << ended.out;
  EXPECT_NE(ended.out.find("\n    page  1 3\n"), std::string::npos) << ended.out;
  EXPECT_NE(ended.out.find("\nFirst page X1.MUS, last page X3.MUS\n"), std::string::npos) << "no range";
  EXPECT_TRUE(ended.out.ends_with("2 pages analyzed, 1 skipped: X2.MUS\n")) << ended.out;
  EXPECT_NE(ended.error.find("kivsys: X2.MUS: item 1: Structural error in MUS file\n"), std::string::npos);
  const Ended drawing = place.kivsys({"chart", "--keep-going", "--out", "chart.svg", "X1.MUS", "X2.MUS", "X3.MUS"});
  EXPECT_EQ(drawing.status, 1);
  EXPECT_NE(place.read("chart.svg").find("X3"), std::string::npos);
  const Ended none = place.kivsys({"chart", "--keep-going", "X2.MUS"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.out, "0 pages analyzed, 1 skipped: X2.MUS\n");
}

TEST_F(KeepGoing, ListsTheInstrumentsOfTheOthers) {
  addMixture();
  const Ended ended = place.kivsys({"instruments", "--keep-going", "--csv", "X1.MUS", "X2.MUS", "X3.MUS"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_NE(ended.out.find("\n1,101,,,\"1, 2\",2,"), std::string::npos) << ended.out;
  const Json object = Json::parse(place.kivsys({"instruments", "--keep-going", "--json", "X2.MUS"}).out);
  EXPECT_EQ(schemaErrors(object, "instruments"), std::vector<std::string>());
  EXPECT_TRUE(object["instrument_list"].is_null());
  EXPECT_EQ(object["skipped"].size(), 1U);
}

}  // namespace
}  // namespace kiv::test
