#include "conversion/convert_system.h"

#include <algorithm>

#include <gtest/gtest.h>

#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

const std::string file = "C:\\M\\X1.MUS";

/// One system, converted in an order of the instruments 101, 102, 103.
class ConvertSystem : public ::testing::Test {
 protected:
  void SetUp() override {
    setInstrumentOrder(host, {101, 102, 103}, order);
    order.entry(1).timeUp = 4;
    order.entry(1).timeDn = 4;
  }
  /// The system made of these staves of the page, as page text. What is discarded is left out.
  std::string convert(std::string_view pageText, const std::vector<StaffRecord>& staves) {
    host.addFile(file, page(pageText));
    end = endOf([&] { convertSystem(host, 7, staves, musFileName, items, order, braces, firstClefs, files); });
    std::string kept;
    const std::string all = asText(items);
    for (std::size_t at = 0; at < all.size();) {
      const std::size_t next = all.find('\n', at) + 1;
      kept += all.compare(at, 9, "item 999 ") == 0 ? "" : all.substr(at, next - at);
      at = next;
    }
    return kept;
  }
  static StaffRecord staff(std::int16_t instr, std::int16_t number, std::int16_t newNumber) {
    return {instr, 0, number, file, newNumber};
  }
  void expectEnd(const std::string& text) const {
    EXPECT_EQ(end, 1);
    EXPECT_EQ(host.messages, std::vector{critical(text)});
  }
  void only(std::int16_t instrument) { setInstrumentOrder(host, {instrument}, order); }

  FakeHost host;
  std::string musFileName;
  ItemTable items;
  OrderTable order;
  BraceTable braces;
  FirstClefTable firstClefs;
  KeptFiles files;
  std::optional<int> end;
  const std::string bass = "staff 1 at 3 instrument 103\nnote 1 at 20\n";
};

TEST_F(ConvertSystem, StavesAreNumberedFromOne) {
  only(103);
  const std::string system = convert(
      "staff 4 at 3 lines 5 instrument 103\nbarline 4 at 3 spans 1\nnote 4 at 20\n"
      "barline 4 at 60 spans 1\n",
      {staff(103, 4, 3)});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(system,
            "staff 1 at 3 lines 5 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, TheLowestStaffMayBeALoneItemThatComesFirstOrLast) {
  setInstrumentOrder(host, {101, 103}, order);
  const std::string two = "staff 2 at 3 instrument 101\nstaff 1 at 3 instrument 103\n";
  EXPECT_EQ(convert(two, {staff(101, 2, 3), staff(103, 1, 4)}).substr(0, 56),
            "staff 1 at 3 instrument 101\nstaff 2 at 3 instrument 103\n");
  EXPECT_EQ(convert(two, {staff(101, 2, 4), staff(103, 1, 3)}).substr(0, 56),
            "staff 2 at 3 instrument 101\nstaff 1 at 3 instrument 103\n");
}

TEST_F(ConvertSystem, StavesFromNewNumberOneStay) {
  only(103);
  EXPECT_EQ(convert(bass + "barline 1 at 3 spans 1\n", {staff(103, 1, 1)}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, NumbersAboveTheHighestSearchedAreLoweredByIt) {
  only(103);
  EXPECT_EQ(convert(bass + "barline 1 at 3 spans 1\n", {staff(103, 1, 10000)}).substr(0, 8), "staff 2 ");
}

TEST_F(ConvertSystem, ASingleStaffGetsTheBarlineAtItsLeftEdge) {
  only(103);
  EXPECT_EQ(convert(bass + "barline 1 at 60 spans 1\n", {staff(103, 1, 1)}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, TheBarlineAtTheLeftEdgeMayBeTheFirstItem) {
  only(103);
  EXPECT_EQ(convert("barline 1 at 3 spans 1\n" + bass, {staff(103, 1, 1)}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
}

TEST_F(ConvertSystem, ABarlineOfAnotherStaffNumberIsNotTheSingleStaffs) {
  only(103);
  EXPECT_EQ(convert(bass + "barline 2 at 3 spans 1\n", {staff(103, 1, 1), staff(102, 2, 2)}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, ABraceAtTheLeftEdgeOfASingleStaffPassesForTheBarline) {
  only(103);
  convert(bass + "barline 1 at 3 spans 1 kind 8\n", {staff(103, 1, 1)});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS");
}

TEST_F(ConvertSystem, ASingleStaffAboveAStrayItemGetsNoBarline) {
  only(103);
  EXPECT_EQ(convert("note 1 at 20\nbarline 1 at 60 spans 1\nstaff 2 at 3 lines 5 instrument 103\n",
                    {staff(0, 1, 1), staff(103, 2, 2)}),
            "note 1 at 20\nstaff 2 at 3 lines 5 instrument 103\nbarline 1 at 60 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, ABarlineOfAnotherStaffAtTheLeftEdgeIsNotTheSingleStaffs) {
  only(103);
  EXPECT_EQ(convert(bass + "barline 2 at 3 spans 1\n", {staff(103, 1, 1), staff(0, 2, 2)}),
            "staff 1 at 3 instrument 103\nnote 1 at 20\nbarline 1 at 3 spans 1\n");
  EXPECT_EQ(end, std::nullopt);
}

TEST_F(ConvertSystem, TheBarlineOfASingleStaffComesBeforeTheLinesOfItsFirstSystemAreKnown) {
  only(103);
  convert("staff 1 at 3 lines 1 instrument 103\nnote 1 at 20\n", {staff(103, 1, 1)});
  EXPECT_NE(asText(items).find("item 999 1 at 3 p4 1\n"), std::string::npos) << asText(items);
  EXPECT_EQ(order.entry(1).lines, 1);
}

TEST_F(ConvertSystem, TheBarlineOfASingleStaffFollowsTheLinesOfItsOwnInstrument) {
  setInstrumentOrder(host, {102, 103}, order);
  const std::string oneLine = "staff 1 at 3 lines 1 instrument 103\nnote 1 at 20\nbarline 1 at 60 spans 1\n";
  // The staff that is counted last has five lines.
  convert(oneLine + "barline 1 at 3 spans 2\nstaff 2 at 3 lines 5 instrument 102\n",
          {staff(103, 1, 1), staff(102, 2, 2)});
  files.dropAll();
  convert(oneLine, {staff(103, 1, 1)});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_NE(asText(items).find("item 999 1 at 3 p4 1 p10 5 p11 1\n"), std::string::npos) << asText(items);
}

TEST_F(ConvertSystem, SeveralStavesGetNoBarlineOfTheirOwn) {
  setInstrumentOrder(host, {102, 103}, order);
  convert(bass + "staff 2 at 3 instrument 102\n", {staff(102, 2, 2), staff(103, 1, 1)});
  expectEnd("Run-time error: Subscript out of range\r\nC:\\M\\X1.MUS");
}

TEST_F(ConvertSystem, WithoutAStaffItEndsTheProgram) {
  convert("note 1 at 20\n", {staff(103, 1, 1)});
  expectEnd("No staves encountered on this page. System = 7");
}

TEST_F(ConvertSystem, AStaffWhoseInstrumentIsNotInTheOrderEndsTheProgram) {
  convert("staff 1 at 3 instrument 104\nbarline 1 at 3 spans 1\n", {staff(103, 1, 1)});
  expectEnd("Serious logic error - Instrument not in order table: 104");
}

TEST_F(ConvertSystem, IdentifiersAreRoundedWhenTheyAreCounted) {
  setInstrumentOrder(host, {100}, order);
  convert("staff 1 at 3 instrument 100.5\nbarline 1 at 3 spans 1\n", {staff(100, 1, 1)});
  EXPECT_EQ(end, std::nullopt) << "half to even";
}

TEST_F(ConvertSystem, ANegativeIdentifierIsNotInTheOrder) {
  setInstrumentOrder(host, {100}, order);
  convert("staff 1 at 3 instrument -100\nbarline 1 at 3 spans 1\n", {staff(100, 1, 1)});
  expectEnd("Serious logic error - Instrument not in order table: -100");
}

TEST_F(ConvertSystem, AnIdentifierBeyond16BitsIsAnOverflow) {
  convert("staff 1 at 3 instrument 40000\nstaff 2 at 3 instrument 1\nbarline 1 at 3 spans 1\n",
          {staff(103, 1, 1), staff(103, 2, 2)});
  expectEnd("Run-time error: Overflow\r\nC:\\M\\X1.MUS, item 1");
}

TEST_F(ConvertSystem, MissingInstrumentsAreInsertedInTheirOrder) {
  const std::string system = convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 60 spans 1\n", {staff(103, 1, 1)});
  EXPECT_EQ(end, std::nullopt);
  const auto first = system.find("instrument 101");
  const auto second = system.find("instrument 102");
  EXPECT_LT(first, second);
  EXPECT_LT(second, std::string::npos);
  EXPECT_TRUE(system.ends_with("barline 1 at 3 spans 3\n")) << system;
}

TEST_F(ConvertSystem, PresenceIsCountedAnewForEverySystem) {
  convert(bass + "barline 1 at 3 spans 1\n", {staff(103, 1, 1)});
  EXPECT_EQ(order.entry(1).present, 0);
  EXPECT_EQ(order.entry(3).present, 1);
  convert(bass, {staff(103, 1, 1)});
  EXPECT_EQ(order.entry(3).present, 1);
}

TEST_F(ConvertSystem, FilesAreReadInTheOrderOfTheRecords) {
  host.addFile("C:\\M\\X2.MUS", page("staff 1 at 3 instrument 102\n"));
  setInstrumentOrder(host, {102, 103}, order);
  const std::string system =
      convert(bass + "barline 1 at 3 spans 2\n", {{102, 0, 1, "C:\\M\\X2.MUS", 2}, staff(103, 1, 1)});
  EXPECT_TRUE(system.starts_with("staff 2 at 3 instrument 102\nstaff 1 at 3 instrument 103\n")) << system;
  EXPECT_EQ(musFileName, file);
}

TEST_F(ConvertSystem, BracesAreRememberedForTheInstrumentsThatCarryThem) {
  only(103);
  convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 9 spans 2 kind 9\n", {staff(103, 1, 1)});
  EXPECT_EQ(braces.kinds, (std::unordered_map<float, std::int16_t>{{103.0F, std::int16_t{2}}}));
}

TEST_F(ConvertSystem, BracesAreRememberedBeforeMissingInstrumentsAreInserted) {
  setInstrumentOrder(host, {102, 103}, order);
  convert(bass + "barline 1 at 3 spans 1\nbarline 1 at 60 spans 1\nbarline 1 at 9 spans 0 kind 8\n",
          {staff(103, 1, 1)});
  EXPECT_EQ(end, std::nullopt);
  EXPECT_EQ(braces.kinds, (std::unordered_map<float, std::int16_t>{{103.0F, std::int16_t{0}}}))
      << "the insertion makes a span of 1 of it";
}

TEST(ShowInstrumentNumbers, PutsOneLeftOfEveryStaff) {
  FakeHost host;
  ItemTable items = tableOf(host, "staff 1 at 3 instrument 103\nnote 1 at 9\nstaff 2 at -1.5 instrument 0\n");
  showInstrumentNumbers({host, file, items});
  EXPECT_EQ(asText(items),
            "staff 1 at 3 instrument 103\nnote 1 at 9\nstaff 2 at -1.5\n"
            "item 10 1 at -1 p5 103 p6 0.7\nitem 10 2 at -5.5 p6 0.7\n");
}

}  // namespace
}  // namespace kiv::test
