#include "tests/console/convert_fixture.h"

namespace kiv::test {
namespace {

/// The command lines that are proposed where results matter: none of them replaces results, or puts new ones among the
/// pages.
class NextResults : public ConsoleConvert {
 protected:
  NextResults() { addTwo(); }

  void expectError(const Names& arguments, const std::string& expected) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_NE(ended.error.find(expected), std::string::npos) << ended.error;
  }
  void expectNoNext(const Names& arguments) const {
    const Ended ended = place.kivsys(arguments);
    EXPECT_EQ(ended.error.find("Next:"), std::string::npos) << ended.error;
  }
};

TEST_F(NextResults, OfAVerificationWithoutItsReportAreInANewFolder) {
  ASSERT_EQ(place.kivsys({"convert", "x1.mus", "x2.mus"}).status, 0);
  EXPECT_EQ(place.kivsys({"verify", "x1.mus", "x2.mus"}).error, "");
  expectError({"verify", "x1.mus"},
              "kivsys: not proved: the report is of other pages, or of these before they were changed: KivSystem2.TXT\n"
              "Next: kivsys convert x1.mus --result converted/WORK0001.MUS --verify\n");
  fs::remove(place.path() / "KivSystem2.TXT");
  fs::create_directory(place.path() / "converted");
  expectError({"verify", "x1.mus", "x2.mus"},
              "kivsys: not proved: the report is missing, so there is nothing to compare the results with: "
              "KivSystem2.TXT\nNext: kivsys convert x1.mus x2.mus --result converted2/WORK0001.MUS --verify\n");
}

TEST_F(NextResults, ThatDeviateAreNotReplaced) {
  ASSERT_EQ(place.kivsys({"convert", "--fit", "x1.mus", "x2.mus", "-o", "new/WORK0001.MUS"}).status, 0);
  place.write("new/WORK0002.MUS", place.read("x2.mus"));
  const Names verify = {"verify", "x1.mus", "x2.mus", "--result", "new/WORK0001.MUS"};
  expectError(verify,
              "\nkivsys: note: verify needs the options of the conversion: add --fit, --layout or --corrections if it "
              "had them\n");
  expectNoNext(verify);
  Names fitting = verify;
  fitting.emplace_back("--fit");
  expectError(fitting,
              "\nkivsys: note: verify needs the options of the conversion: add --corrections if it had them, and leave "
              "out those that it did not have\n");
  expectNoNext(fitting);
  fs::remove(place.path() / "new/WORK0002.MUS");
  expectNoNext(verify);
}

TEST_F(NextResults, ThatAreNotThereAreMadeWhereTheyWereNamed) {
  ASSERT_EQ(place.kivsys({"analyze", "x1.mus", "x2.mus"}).status, 0);
  expectError({"verify", "x1.mus", "x2.mus", "--fit", "--result", "new/WORK0001.MUS"},
              "\nNext: kivsys convert x1.mus x2.mus --fit --result new/WORK0001.MUS --verify\n");
  expectError({"verify", "x1.mus", "x2.mus", "--result", "other0001.MUS"},
              "\nNext: kivsys convert x1.mus x2.mus --result converted/WORK0001.MUS --verify\n");
  place.write("list.csv", place.kivsys({"instruments", "--csv", "x1.mus", "x2.mus"}).out);
  expectError({"verify", "--layout", "list.csv", "x1.mus", "x2.mus"},
              "\nNext: kivsys convert x1.mus x2.mus --layout list.csv --result converted/WORK0001.MUS --verify\n");
  place.write("x2.mus", "no page at all");
  expectError({"verify", "x1.mus", "x2.mus"}, "\nNext: kivsys recover x2.mus\n");
}

TEST_F(NextResults, OfPagesThatCanBeUsedAreMadeOnRequestOnly) {
  const std::string note = "kivsys: note: no results were written, as the pages can be used without a conversion\n";
  expectError({"convert", "x1.mus"}, note + "Next: kivsys convert --force x1.mus --result converted/WORK0001.MUS\n");
  expectError({"convert", "x1.mus", "-o", "new/WORK0001.MUS", "--fit"},
              note + "Next: kivsys convert --force x1.mus --fit --result new/WORK0001.MUS\n");
  expectError({"convert", "x1.mus", "--allow-zero-id"},
              note + "Next: kivsys convert --force x1.mus --allow-zero-id --result converted/WORK0001.MUS\n");
  expectNoNext({"convert", "--force", "x1.mus"});
}

TEST_F(NextResults, OfCorrectedPagesThatCanBeUsedAreCorrectedPages) {
  addPage("x1.mus", "staff 1 at 0\nbarline 1 at 0 spans 1\n");
  place.write(
      "c.csv",
      "file,system,staff,item,what,problem,old_id,new_id,confidence,reason\nx1.mus,1,1,1,staff,zero,0,102,sure,\n");
  expectError(
      {"convert", "x1.mus", "--corrections", "c.csv", "-o", "new/WORK0001.MUS"},
      "kivsys: note: no results were written, as the corrected pages can be used without a conversion; the page "
      "files still have the old ids\nNext: kivsys fix x1.mus --corrections c.csv -o fixed\n");
  expectError({"convert", "x1.mus", "--corrections", "c.csv", "--dry-run"},
              "; no results, as the corrected pages can be used without a conversion\n");
  EXPECT_EQ(place.shell("kivsys fix x1.mus --corrections c.csv -o fixed && kivsys analyze fixed").status, 0);
}

}  // namespace
}  // namespace kiv::test
