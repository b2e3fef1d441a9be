#include "conversion/conversion.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string file = "C:\\M\\X1.MUS";

/// A staff of a page file, by its number there and in the system.
struct ReportedStaff {
  int number = 0;
  int newNumber = 0;
  std::string fileName = file;
};

/// One system, converted in an order of the instruments 101, 102, 103.
class ConvertSystem : public ::testing::Test {
 protected:
  ConvertSystem() {
    setInstrumentOrder(instruments, order);
    order.entry(1).timeUp = 4;
    order.entry(1).timeDn = 4;
  }
  /// The system made of these staves of the page, as page text. What is discarded is left out.
  std::string convert(std::string_view pageText, const std::vector<ReportedStaff>& staves) {
    host.addFile(file, page(pageText));
    writeReport(staves);
    end = endOf(host, [&] {
      conversion.emplace(host, ConversionTables{items, order, firstClefs});
      conversion->convertSystem(convertedSystem);
    });
    std::string kept;
    const std::string all = asText(items);
    for (std::size_t at = 0; at < all.size();) {
      const std::size_t next = all.find('\n', at) + 1;
      kept += all.compare(at, 9, "item 999 ") == 0 ? "" : all.substr(at, next - at);
      at = next;
    }
    return kept;
  }
  /// The whole table after the system is finished.
  std::string finished() {
    end = endOf(host, [&] { conversion->finishSystem(); });
    return asText(items);
  }
  void expectEnd(const std::string& text) const {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
  }

  FakeHost host;
  std::vector<std::int16_t> instruments = {101, 102, 103};
  ItemTable items;
  OrderTable order;
  FirstClefTable firstClefs;
  std::optional<Conversion> conversion;
  std::optional<int> end;
  const std::string bass = "staff 1 at 3 instrument 103\nnote 1 at 20\n";

 private:
  /// The first records give the order of the instruments; the others give the staves and no further instrument.
  void writeReport(const std::vector<ReportedStaff>& staves) {
    std::string report;
    for (const std::int16_t instr : instruments) {
      report += "SYSTEM=-1,INSTRID=" + std::to_string(instr) + "\r\n";
    }
    for (const ReportedStaff& staff : staves) {
      report += "SYSTEM=" + std::to_string(convertedSystem) + ",INSTRID=" + std::to_string(instruments.front()) +
                ",NEWSTAFF=" + std::to_string(staff.newNumber) + ",STAVESUP=0,STAFF=" + std::to_string(staff.number) +
                ",FILE=" + staff.fileName + "\r\n";
    }
    host.addFile("KivSystem2.TXT", report);
  }

  static constexpr std::int16_t convertedSystem = 7;
};

TEST_F(ConvertSystem, StavesAreNumberedFromOne) {
  instruments = {103};
  const std::string system = convert(
      "staff 4 at 3 lines 5 instrument 103\nbarline 4 at 3 spans 1\nnote 4 at 20\n"
      "barline 4 at 60 spans 1\n",
      {{4, 3}});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(system,
            "staff 1 at 3 lines 5 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, TheLowestStaffMayBeALoneItemThatComesFirstOrLast) {
  instruments = {101, 103};
  const std::string two = "staff 2 at 3 instrument 101\nstaff 1 at 3 instrument 103\n";
  EXPECT_EQ(convert(two, {{2, 3}, {1, 4}}).substr(0, 56), "staff 1 at 3 instrument 101\nstaff 2 at 3 instrument 103\n");
  EXPECT_EQ(convert(two, {{2, 4}, {1, 3}}).substr(0, 56), "staff 2 at 3 instrument 101\nstaff 1 at 3 instrument 103\n");
}

TEST_F(ConvertSystem, StavesFromNewNumberOneStay) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 1 at 3 spans 1\n", {{1, 1}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, AStaffWithoutItemsIsNotTheLowest) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 1 at 3 spans 1\n", {{9, 1}, {1, 2}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, NumbersAboveTheHighestSearchedAreLoweredByIt) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 1 at 3 spans 1\n", {{1, 10000}}).substr(0, 8), "staff 2 ");
}

TEST_F(ConvertSystem, ASingleStaffGetsTheBarlineAtItsLeftEdge) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 1 at 60 spans 1\n", {{1, 1}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, TheBarlineAtTheLeftEdgeMayBeTheFirstItem) {
  instruments = {103};
  EXPECT_EQ(convert("barline 1 at 3 spans 1\n" + bass, {{1, 1}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, ABarlineOfAnotherStaffNumberIsNotTheSingleStaffs) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 2 at 3 spans 1\n", {{1, 1}, {2, 2}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, ABraceAtTheLeftEdgeOfASingleStaffCountsAsTheBarline) {
  instruments = {103};
  convert(bass + "barline 1 at 3 spans 1 kind 8\n", {{1, 1}});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS");
}

TEST_F(ConvertSystem, ASingleStaffAboveAStrayItemGetsNoBarline) {
  instruments = {103};
  EXPECT_EQ(convert("note 1 at 20\nbarline 1 at 60 spans 1\nstaff 2 at 3 lines 5 instrument 103\n", {{1, 1}, {2, 2}}),
            "note 1 at 20\nstaff 2 at 3 lines 5 instrument 103\nbarline 1 at 60 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, ABarlineOfAnotherStaffAtTheLeftEdgeIsNotTheSingleStaffs) {
  instruments = {103};
  EXPECT_EQ(convert(bass + "barline 2 at 3 spans 1\n", {{1, 1}, {2, 2}}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, TheBarlineOfASingleStaffComesBeforeTheLinesOfItsFirstSystemAreKnown) {
  instruments = {103};
  convert("staff 1 at 3 lines 1 instrument 103\nnote 1 at 20\n", {{1, 1}});
  EXPECT_NE(asText(items).find("item 999 1 at 3 p4 1\n"), std::string::npos) << asText(items);
  EXPECT_EQ(order.entry(1).lines, 1);
}

TEST_F(ConvertSystem, TheBarlineOfASingleStaffFollowsTheLinesOfItsOwnInstrument) {
  instruments = {102, 103};
  const std::string oneLine = "staff 1 at 3 lines 1 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\n";
  // The staff that is counted last has five lines.
  convert(oneLine + "barline 1 at 3 spans 2\nstaff 2 at 3 lines 5 instrument 102\n", {{1, 1}, {2, 2}});
  convert(oneLine, {{1, 1}});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_NE(asText(items).find("item 999 1 at 3 p4 1 p10 5 p11 1\n"), std::string::npos) << asText(items);
}

TEST_F(ConvertSystem, SeveralStavesGetNoBarlineOfTheirOwn) {
  instruments = {102, 103};
  convert(bass + "staff 2 at 3 instrument 102\n", {{2, 2}, {1, 1}});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS");
}

TEST_F(ConvertSystem, WithoutAStaffItEndsTheProgram) {
  convert("note 1 at 20\n", {{1, 1}});
  expectEnd("No staves encountered on this page. System = 7");
}

TEST_F(ConvertSystem, AStaffWhoseInstrumentIsNotInTheOrderEndsTheProgram) {
  convert("staff 1 at 3 instrument 104\nbarline 1 at 3 spans 1\n", {{1, 1}});
  expectEnd("Serious logic error - Instrument not in order table: 104");
}

TEST_F(ConvertSystem, IdentifiersAreRoundedWhenTheyAreCounted) {
  instruments = {100};
  convert("staff 1 at 3 instrument 100.5\nbarline 1 at 3 spans 1\n", {{1, 1}});
  EXPECT_EQ(end, std::nullopt) << "half to even";
}

TEST_F(ConvertSystem, ANegativeIdentifierIsNotInTheOrder) {
  instruments = {100};
  convert("staff 1 at 3 instrument -100\nbarline 1 at 3 spans 1\n", {{1, 1}});
  expectEnd("Serious logic error - Instrument not in order table: -100");
}

TEST_F(ConvertSystem, AnIdentifierBeyond16BitsIsAnOverflow) {
  convert("staff 1 at 3 instrument 40000\nstaff 2 at 3 instrument 1\nbarline 1 at 3 spans 1\n", {{1, 1}, {2, 2}});
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 1");
}

TEST_F(ConvertSystem, AnErrorNamesTheItemByItsNumberInItsOwnFile) {
  host.addFile("C:\\M\\X2.MUS", page("note 3 at 5\nnote 3 at 6\nstaff 2 at 3 instrument 40000\n"));
  convert(bass + "barline 1 at 3 spans 1\n", {{1, 1}, {2, 2, "C:\\M\\X2.MUS"}, {1, 3}});
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X2.MUS, item 3");
}

TEST_F(ConvertSystem, AnErrorNamesTheItemAlsoAfterMoreFilesThan16BitsCount) {
  constexpr int records = 40000;
  const std::string other = "C:\\M\\X2.MUS";
  host.addFile(other, page("staff 9 at 0 instrument 101\n"));
  std::vector<ReportedStaff> staves;
  for (int i = 0; i < records; ++i) {
    staves.push_back({7, 1, i % 2 == 0 ? file : other});  // no file has a staff 7
  }
  staves.push_back({9, 2, other});
  staves.push_back({1, 1, file});
  convert("staff 1 at 0 instrument 40000\n", staves);
  expectEnd("Run-time error: Overflow\r\n" + file + ", item 1");
}

TEST_F(ConvertSystem, MissingInstrumentsAreInsertedInTheirOrder) {
  const std::string system = convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 60 spans 1\n", {{1, 1}});
  EXPECT_EQ(end, std::nullopt);
  const auto first = system.find("instrument 101");
  const auto second = system.find("instrument 102");
  EXPECT_LT(first, second);
  EXPECT_LT(second, std::string::npos);
  EXPECT_TRUE(system.ends_with("barline 1 at 3 spans 3\n")) << system;
}

TEST_F(ConvertSystem, PresenceIsCountedForEverySystemOnItsOwn) {
  convert(bass + "barline 1 at 3 spans 1\n", {{1, 1}});
  EXPECT_EQ(order.entry(1).present, 0);
  EXPECT_EQ(order.entry(3).present, 1);
  convert(bass, {{1, 1}});
  EXPECT_EQ(order.entry(3).present, 1);
}

TEST_F(ConvertSystem, FilesAreReadInTheOrderOfTheRecords) {
  host.addFile("C:\\M\\X2.MUS", page("staff 1 at 3 instrument 102\n"));
  instruments = {102, 103};
  const std::string system = convert(bass + "barline 1 at 3 spans 2\n", {{1, 2, "C:\\M\\X2.MUS"}, {1, 1}});
  EXPECT_TRUE(system.starts_with("staff 2 at 3 instrument 102\nstaff 1 at 3 instrument 103\n")) << system;
  EXPECT_EQ(items.file(), file);
}

TEST_F(ConvertSystem, BracesAreRememberedForTheInstrumentsThatCarryThem) {
  instruments = {103};
  convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 9 spans 2 kind 9\n", {{1, 1}});
  const std::string system = finished();
  EXPECT_TRUE(system.ends_with("\nbarline 1 at 0 spans 2 kind 8\n")) << system;
}

TEST_F(ConvertSystem, BracesAreRememberedBeforeMissingInstrumentsAreInserted) {
  instruments = {102, 103};
  convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 60 spans 1\nbarline 1 at 9 spans 0 kind 8\n", {{1, 1}});
  EXPECT_EQ(end, std::nullopt);
  const std::string system = finished();
  EXPECT_TRUE(system.ends_with("\nbarline 1 at 0 kind 8\n")) << "the insertion would make a span of 1 of it\n"
                                                             << system;
}

TEST(ShowInstrumentNumbers, PutsOneLeftOfEveryStaff) {
  FakeHost host;
  ItemTable items = tableOf(host, "staff 1 at 3 instrument 103\nnote 1 at 9\nstaff 2 at -1.5 instrument 0\n");
  showInstrumentNumbers(items);
  EXPECT_EQ(asText(items),
            "staff 1 at 3 instrument 103\nnote 1 at 9\nstaff 2 at -1.5\n"
            "item 10 1 at -1 p5 103 p6 0.7\nitem 10 2 at -5.5 p6 0.7\n");
}

}  // namespace
}  // namespace kiv::test
