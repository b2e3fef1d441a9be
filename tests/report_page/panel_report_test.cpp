#include "report_page/panel_report.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report_page/report_page.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::report::test {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;

/// A group that the panel has analyzed, in C:\M.
class PanelReport : public ::testing::Test {
 protected:
  void addPage(const std::string& name, const std::string& text) {
    host.addFile("C:\\M\\" + name, kiv::test::page(text));
    group.files.push_back("C:\\M\\" + name);
    host.folderEntries.push_back({name, false});
  }
  GatheredReport gather() {
    const auto same = [](const std::string& text) { return text; };
    return panelReport({host, host, host, same, same}, group, [](const std::string& text) { return "<" + text + ">"; },
                       {"head\n", [](const Correction& correction) { return correction.at.file + "\n"; }});
  }

  kiv::test::FakeHost host;
  AnalyzedGroup group;
  const std::string duo = "staff 2 at 0 instrument 101\nstaff 1 at 0 instrument 102\nbarline 1 at 0 spans 2\n";
  const std::string solo = "staff 1 at 0 instrument 102\nbarline 1 at 0 spans 1\n";
  const std::string nameless = "staff 1 at 0\nbarline 1 at 0 spans 1\n";
};

TEST_F(PanelReport, IsAboutTheAnalyzedPagesAndLeavesNothingBehind) {
  addPage("X1.MUS", duo);
  addPage("X2.MUS", solo);
  host.addFile("KivSystem1.TXT", "verdict");
  host.addFile("KivSystem2.TXT", "report");
  const auto before = host.files();
  const GatheredReport gathered = gather();
  EXPECT_EQ(gathered.ended, std::nullopt);
  EXPECT_EQ(gathered.data.systems, 2U);
  EXPECT_EQ(gathered.data.kind, VerdictKind::needsConversion);
  EXPECT_EQ(host.files(), before);
  EXPECT_THAT(host.messages, IsEmpty());
  EXPECT_THAT(host.progress, Not(IsEmpty()));
}

TEST_F(PanelReport, SaysWhatToDoInTheWindowFirst) {
  addPage("X1.MUS", duo);
  addPage("X2.MUS", solo);
  const GatheredReport gathered = gather();
  EXPECT_EQ(gathered.data.next.command,
            "kivsys convert --result <C:\\M\\converted\\WORK0001.MUS> <C:\\M\\X1.MUS> <C:\\M\\X2.MUS>");
  const std::string page = reportPage(gathered.data);
  const std::size_t steps = page.find("<li>Press Convert in the KivSystem window.");
  const std::size_t other = page.find("<summary>With the console program instead</summary>");
  EXPECT_LT(steps, other);
  EXPECT_LT(other, page.find("id=\"next-command\""));
}

TEST_F(PanelReport, NamesManyPagesByAPattern) {
  for (const char* name : {"X1.MUS", "X2.MUS", "X3.MUS", "X4.MUS"}) {
    addPage(name, duo);
  }
  addPage("X5.MUS", solo);
  EXPECT_THAT(gather().data.next.command, HasSubstr(" <C:\\M\\X*.MUS>"));
  host.folderEntries.push_back({"x6.mus", false});
  EXPECT_THAT(gather().data.next.command, HasSubstr(" <C:\\M\\X1.MUS> <C:\\M\\X2.MUS>"));
}

TEST_F(PanelReport, KeepsAnOrderThatIsNotThatOfTheNumbers) {
  addPage("X2.MUS", duo);
  addPage("X1.MUS", solo);
  EXPECT_THAT(gather().data.next.command, HasSubstr(" --keep-order <C:\\M\\X2.MUS> <C:\\M\\X1.MUS>"));
}

TEST_F(PanelReport, NamesAFolderForResultsThatIsNotThereYet) {
  addPage("X1.MUS", duo);
  addPage("X2.MUS", solo);
  host.folderEntries.push_back({"CONVERTED", true});
  EXPECT_THAT(gather().data.next.command, HasSubstr(" --result <C:\\M\\converted2\\WORK0001.MUS>"));
}

TEST_F(PanelReport, AllowsWhatTheAnalysisAllowed) {
  addPage("X1.MUS", nameless);
  EXPECT_EQ(gather().data.kind, VerdictKind::hasProblems);
  EXPECT_THAT(gather().data.next.command, Not(HasSubstr("--allow-zero-id")));
  group.allowZeroInstrId = true;
  EXPECT_EQ(gather().data.kind, VerdictKind::usable);
  addPage("X2.MUS", duo);
  EXPECT_THAT(gather().data.next.command, HasSubstr("kivsys convert --result"));
  EXPECT_THAT(gather().data.next.command, HasSubstr(" --allow-zero-id "));
}

TEST_F(PanelReport, DoesNotShowResultsOfOtherPages) {
  addPage("X1.MUS", duo);
  addPage("X2.MUS", solo);
  group.firstResult = "C:\\M\\WORK0001.MUS";
  host.addFile("C:\\M\\WORK0001.MUS", kiv::test::page(duo));
  const GatheredReport gathered = gather();
  EXPECT_EQ(gathered.data.kind, VerdictKind::unfitResults);
  EXPECT_THAT(gathered.data.misfits, ElementsAre("C:\\M\\WORK0002.MUS is missing, the result of system 2."));
  EXPECT_FALSE(gathered.data.pictures.systems.front().after);
}

TEST_F(PanelReport, ShowsTheResultsOfAConversionForAsLongAsTheyAreThere) {
  addPage("X1.MUS", duo);
  addPage("X2.MUS", solo);
  group.firstResult = "C:\\M\\WORK0001.MUS";
  EXPECT_EQ(gather().data.kind, VerdictKind::needsConversion);
  host.addFile("C:\\M\\WORK0001.MUS", kiv::test::page(duo));
  host.addFile("C:\\M\\WORK0002.MUS", kiv::test::page(duo));
  const GatheredReport gathered = gather();
  EXPECT_EQ(gathered.data.kind, VerdictKind::converted);
  ASSERT_EQ(gathered.data.pictures.systems.size(), 2U);
  EXPECT_TRUE(gathered.data.pictures.systems[1].after);
}

TEST_F(PanelReport, EndsWhenAPageHasBeenMoved) {
  addPage("X1.MUS", duo);
  group.files.emplace_back("C:\\M\\X2.MUS");
  EXPECT_TRUE(gather().ended);
  EXPECT_THAT(host.messages, IsEmpty());
}

TEST_F(PanelReport, ToleratesAnyNameOfAResult) {
  addPage("X1.MUS", duo);
  for (const char* name : {"", "A", ".MUS", "RESULT.MUS", "C:\\M\\"}) {
    group.firstResult = name;
    EXPECT_EQ(gather().data.kind, VerdictKind::usable) << name;
  }
}

}  // namespace
}  // namespace kiv::report::test
